// Which numbers of a wall may vary, and the low and the high one of each to begin with.
#include "survey/varying.h"

#include "problem/input_reader.h"
#include "problem/validate.h"
#include "runtime/file_text.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace korvane::study::test {
namespace {

using korvane::test::plainCantilever;

const Varying& find(const std::vector<Varying>& all, const std::string& name) {
    const auto found = std::find_if(all.begin(), all.end(), [&](const Varying& varying) {
        return addressName(varying.address) == name;
    });
    if (found == all.end()) {
        throw std::runtime_error("no " + name);
    }
    return *found;
}

std::size_t findingsOf(const Problem& problem) {
    const auto all = validate(problem);
    return static_cast<std::size_t>(
        std::count_if(all.begin(), all.end(), [](const Finding& finding) {
            return finding.isFatal() || (finding.by & ByReader) != 0;
        }));
}

} // namespace

TEST(Varying, StandsByItsSectionWithEndsThatSuitItsQuantity) {
    const Problem problem = plainCantilever();
    const std::vector<Varying> all = varyingIn(problem, UnitSystem::US);
    const Varying& friction = find(all, "SoilFriction.right.1");
    EXPECT_EQ(friction.section, "Soil, right side, layer 1");
    EXPECT_EQ(friction.present, 30);
    EXPECT_EQ(friction.low, 28);
    EXPECT_EQ(friction.high, 32);
    EXPECT_TRUE(friction.hasTwin);
    EXPECT_FALSE(find(all, "SoilFriction.left.1").hasTwin); // it is the twin
    const Varying& ground = find(all, "SurfaceElev.left.1");
    EXPECT_EQ(ground.section, "Soil surface, left side");
    EXPECT_EQ(ground.low, -11);
    EXPECT_EQ(ground.high, -9);
    EXPECT_FALSE(find(all, "SurfaceElev.right.1").hasTwin); // the grounds differ
    const Varying& weight = find(all, "SoilMoistWeight.left.1");
    EXPECT_EQ(weight.low, 114); // 5 % of 120 PCF
    EXPECT_EQ(weight.high, 126);
    const Varying& cohesion = find(all, "SoilCohesion.right.1");
    EXPECT_EQ(cohesion.low, 0); // never below
    EXPECT_EQ(cohesion.high, 50);
}

TEST(Varying, TellsEveryNumberOnce) {
    const Problem problem = plainCantilever();
    std::vector<Varying> all = varyingIn(problem, UnitSystem::US);
    EXPECT_EQ(all.size(), addressesIn(problem).size());
    std::vector<std::string> sections;
    for (const Varying& varying : all) {
        if (sections.empty() || sections.back() != varying.section) {
            sections.push_back(varying.section);
        }
    }
    std::sort(sections.begin(), sections.end());
    EXPECT_EQ(std::adjacent_find(sections.begin(), sections.end()), sections.end());
}

TEST(Varying, StopsAtTheLimits) {
    Problem problem = plainCantilever();
    problem.SoilFriction(Right, 1) = 44;
    problem.SoilFriction(Left, 1) = 45;
    problem.SoilWallFriction(Left, 1) = 44.5;
    const std::vector<Varying> all = varyingIn(problem, UnitSystem::US);
    EXPECT_EQ(find(all, "SoilFriction.right.1").high, 45); // 46 is none, half the way is
    EXPECT_EQ(find(all, "SoilFriction.left.1").high, 45);
    EXPECT_EQ(find(all, "SoilFriction.left.1").low, 44.5); // not below the wall friction
    const Limits limits = limitsOf(problem, {ProblemField::SoilFriction, Right, 1}, UnitSystem::US);
    EXPECT_EQ(limits.low, 0);
    EXPECT_EQ(limits.high, 45);
}

TEST(Varying, TakesAFactorThatIsTheWallsFromThere) {
    Problem problem = plainCantilever();
    problem.FSPassive = 1.5;
    problem.Level2FSPassive(Left) = 2;
    const std::vector<Varying> all = varyingIn(problem, UnitSystem::US);
    EXPECT_EQ(find(all, "SoilFSPassive.right.1").present, 0);
    EXPECT_DOUBLE_EQ(find(all, "SoilFSPassive.right.1").low, 1.35);
    EXPECT_DOUBLE_EQ(find(all, "SoilFSPassive.right.1").high, 1.65);
    EXPECT_DOUBLE_EQ(find(all, "SoilFSPassive.left.1").high, 2.2);
}

TEST(Varying, IsInTheUnitsAskedFor) {
    const Problem problem = plainCantilever();
    const std::vector<Varying> all = varyingIn(problem, UnitSystem::SI);
    const Varying& ground = find(all, "SurfaceElev.left.1");
    EXPECT_DOUBLE_EQ(ground.present, -3.048); // -10 FT
    EXPECT_DOUBLE_EQ(ground.low, -3.348);     // 0.3 m below
    EXPECT_DOUBLE_EQ(ground.high, -2.748);
}

TEST(Varying, KeepsEveryExampleAWallThatAFileCanHold) {
    int walls = 0;
    for (const auto& entry : std::filesystem::directory_iterator(
             std::filesystem::path(korvane::test::examplePath("anchored-sand")).parent_path())) {
        if (entry.path().extension() != ".dat") {
            continue;
        }
        auto problem = std::make_unique<Problem>();
        clearProblemData(*problem);
        readProblem(*problem, readFile(entry.path()), entry.path().string());
        const std::size_t before = findingsOf(*problem);
        for (const Varying& varying : varyingIn(*problem, UnitSystem::US)) {
            for (const double value : {varying.low, varying.high}) {
                auto moved = std::make_unique<Problem>(*problem);
                setValueAt(*moved, varying.address, value);
                EXPECT_LE(findingsOf(*moved), before)
                    << entry.path() << " " << addressName(varying.address) << " " << value;
            }
            EXPECT_LE(varying.low, varying.high) << addressName(varying.address);
        }
        ++walls;
    }
    EXPECT_GT(walls, 10);
}

} // namespace korvane::study::test
