// A wall in a metric file gives the solution of its twin in feet and pounds.
#include "problem/input_reader.h"
#include "problem/input_writer.h"
#include "problem/unit_conversion.h"
#include "runtime/file_text.h"
#include "support/random_problem.h"
#include "walls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>

namespace korvane::test {
namespace {

// An input that is rounded to 10 digits is off by up to 5E-10 of its value.
constexpr double Near = 1e-7;

Problem read(const std::string& text) {
    Problem problem;
    clearProblemData(problem);
    EXPECT_TRUE(readProblem(problem, text, "wall.dat").complete) << text;
    return problem;
}

void expectNear(double one, double other, double size, const std::string& what) {
    EXPECT_NEAR(one, other, Near * std::abs(size)) << what;
}

void expectTwins(const LevelResult& one, const LevelResult& other, const std::string& what) {
    expectNear(one.bottomElev, other.bottomElev, one.bottomElev, what);
    expectNear(one.penetration, other.penetration, one.penetration, what);
    expectNear(one.anchorForce, other.anchorForce, one.anchorForce, what);
    expectNear(one.factorOfSafety, other.factorOfSafety, one.factorOfSafety, what);
    expectNear(one.seepageGradient, other.seepageGradient, one.seepageGradient, what);
    expectNear(one.transitionElev, other.transitionElev, one.bottomElev, what);
    expectNear(one.toeReaction, other.toeReaction, one.toeReaction, what);
    const ResultDiagrams& a = one.diagrams;
    const ResultDiagrams& b = other.diagrams;
    expectNear(a.MaxMoment.value, b.MaxMoment.value, a.MaxMoment.value, what);
    expectNear(a.MaxDeflection.value, b.MaxDeflection.value, a.MaxDeflection.value, what);
    expectNear(one.maxShear.value, other.maxShear.value, one.maxShear.value, what);
    ASSERT_EQ(a.RowCount, b.RowCount) << what;
    double largest = 0; // PSF
    for (int row = 1; row <= a.RowCount; ++row) {
        largest = std::max(largest, std::abs(a.ResultPressure(row)));
    }
    for (int row = 1; row <= a.RowCount; ++row) {
        expectNear(a.ResultElev(row), b.ResultElev(row), 1, what);
        expectNear(a.ResultPressure(row), b.ResultPressure(row), largest, what);
        expectNear(a.ResultMoment(row), b.ResultMoment(row), a.MaxMoment.value, what);
        expectNear(a.ResultShear(row), b.ResultShear(row), one.maxShear.value, what);
        expectNear(a.ResultDeflection(row), b.ResultDeflection(row), a.MaxDeflection.value, what);
    }
}

/// True where the twins have results.
bool compareTwins(const std::string& text, const std::string& what) {
    const Problem problem = read(text);
    FileNumbers numbers;
    Problem same;
    clearProblemData(same);
    readProblem(same, text, "wall.dat", nullptr, &numbers);
    const UnitSystem other = numbers.units == UnitSystem::US ? UnitSystem::SI : UnitSystem::US;
    const Problem twin = read(convertedInput(text, numbers, other));
    const PileSections sections = defaultSections();
    Workspace workspace;
    Workspace twinWorkspace;
    const Solved one = solve(problem, bySweep(), sections, workspace);
    const Solved two = solve(twin, bySweep(), sections, twinWorkspace);
    EXPECT_EQ(one.failure.code, two.failure.code) << what;
    if (one.results == nullptr || two.results == nullptr) {
        return false;
    }
    EXPECT_EQ(one.results->levelCount, two.results->levelCount) << what;
    for (int level = 1; level <= one.results->levelCount; ++level) {
        expectTwins(one.results->levels(level), two.results->levels(level), what);
    }
    if (one.reduction != nullptr && two.reduction != nullptr) {
        for (int p = 1; p <= sections.PileSectionCount; ++p) {
            const double ratio = one.reduction->reducedRatio(p, 1);
            expectNear(ratio, two.reduction->reducedRatio(p, 1), ratio, what);
        }
    }
    return true;
}

TEST(MetricTwins, OfTheExamplesHaveTheirSolutions) {
    int compared = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(std::string(KORVANE_SOURCE_DIR) + "/examples")) {
        if (file.path().extension() == ".dat") {
            compared +=
                compareTwins(readFile(file.path()), file.path().filename().string()) ? 1 : 0;
        }
    }
    EXPECT_GE(compared, 12);
}

TEST(MetricTwins, OfRandomWallsHaveTheirSolutions) {
    RandomProblems problems(2026);
    int compared = 0;
    for (int wall = 0; wall < 100; ++wall) {
        const std::string text = inputFileText(problems.next());
        compared += compareTwins(text, "wall " + std::to_string(wall) + "\n" + text) ? 1 : 0;
    }
    EXPECT_GT(compared, 60);
}

} // namespace
} // namespace korvane::test
