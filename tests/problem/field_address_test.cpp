// Numbers of a problem by name: what may be named, what it reaches, and what is said of the rest.

#include "problem/field_address.h"
#include "support/random_problem.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace korvane;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Walls that use every field between them.
std::vector<Problem> wallsOfAllKinds() {
    using Kind = test::RandomKind;
    std::vector<Problem> walls;
    test::RandomProblems problems(13);
    for (const auto soil : {Kind::Soil::Mixed, Kind::Soil::Coefficients}) {
        for (const auto water : {Kind::Water::Pressures, Kind::Water::Seepage}) {
            for (const bool analysis : {false, true}) {
                for (int n = 0; n < 6; ++n) {
                    Kind kind;
                    kind.anchored = true;
                    kind.analysis = analysis;
                    kind.soil = soil;
                    kind.water = water;
                    kind.surcharge = true;
                    kind.horizontal = true;
                    kind.factors = true;
                    walls.push_back(problems.next(kind));
                }
            }
        }
    }
    walls.back().SeepageKind = Seepage::Given;
    walls.back().SeepageGradient(1) = 0.2;
    return walls;
}

/// The fault of a text, which must have one.
std::string faultOf(std::string_view text) {
    const ReadAddress read = readAddress(text);
    EXPECT_NE(read.fault, "") << text;
    return read.fault;
}

FieldAddress addressOf(std::string_view text) {
    const ReadAddress read = readAddress(text);
    EXPECT_EQ(read.fault, "") << text;
    return read.address;
}

} // namespace

TEST(FieldAddress, EveryFieldOfTheTableIsReadAndWrittenByItsName) {
    std::set<ProblemField> reached;
    for (Problem& problem : wallsOfAllKinds()) {
        std::set<std::string> names;
        for (const FieldAddress& address : addressesIn(problem)) {
            const std::string name = addressName(address);
            ASSERT_EQ(addressOf(name), address) << name;
            ASSERT_EQ(absence(address, problem), "") << name;
            EXPECT_TRUE(names.insert(name).second) << name;
            const Problem before = problem;
            setValueAt(problem, address, 7.25);
            EXPECT_EQ(valueAt(problem, address), 7.25) << name;
            EXPECT_EQ(rulesOf(address.field).value(problem, address.side, address.row), 7.25);
            setValueAt(problem, address, valueAt(before, address));
            EXPECT_EQ(problem, before) << name << " changes something else";
            reached.insert(address.field);
        }
    }
    EXPECT_EQ(reached.size(), static_cast<std::size_t>(FieldCount));
}

TEST(FieldAddress, ReachesTheNumberThatTheRecordKeepsThere) {
    Problem problem = test::plainCantilever();
    problem.SoilLayerCount(Left) = 2;
    setValueAt(problem, addressOf("SoilFriction.left.2"), 33);
    setValueAt(problem, addressOf("WallTopElev"), 4);
    setValueAt(problem, addressOf("SurfaceElev.right.1"), 3);
    setValueAt(problem, addressOf("Level2FSPassive.right"), 1.3);
    EXPECT_EQ(problem.SoilFriction(Left, 2), 33);
    EXPECT_EQ(problem.WallTopElev, 4);
    EXPECT_EQ(problem.SurfaceElev(Right, 1), 3);
    EXPECT_EQ(problem.Level2FSPassive(Right), 1.3);
}

TEST(FieldAddress, TakesAndGivesTheUnitsAskedFor) {
    Problem problem = test::plainCantilever();
    const FieldAddress top = addressOf("WallTopElev");
    const FieldAddress weight = addressOf("SoilSatWeight.right.1");
    EXPECT_EQ(quantityOf(top), Quantity::Length);
    EXPECT_EQ(quantityOf(weight), Quantity::UnitWeight);
    EXPECT_EQ(quantityOf(addressOf("SoilFriction.right.1")), Quantity::Angle);
    setValueAt(problem, top, 3.048, UnitSystem::SI);
    EXPECT_DOUBLE_EQ(problem.WallTopElev, 10);
    EXPECT_DOUBLE_EQ(valueAt(problem, top, UnitSystem::SI), 3.048);
    // 19 kN/m3 are 19 / 0.157087463 PCF, by the definitions of foot and pound.
    setValueAt(problem, weight, 19, UnitSystem::SI);
    EXPECT_NEAR(problem.SoilSatWeight(Right, 1), 19 / 0.1570874638, 1e-6);
}

TEST(FieldAddress, TellsWhatIsKnownInsteadOfAnUnknownField) {
    EXPECT_THAT(faultOf("SoilFricton.left.1"),
                StartsWith("'SoilFricton.left.1' names no number of a problem; near it: "
                           "SoilFriction"));
    EXPECT_THAT(faultOf("anchorelev"), HasSubstr("near it: AnchorElev"));
    EXPECT_EQ(faultOf("zzzz"), "'zzzz' names no number of a problem");
    EXPECT_EQ(faultOf(""), "'' names no number of a problem");
    EXPECT_THAT(nearestNames("kitten", {"sitting", "mitten", "smitten", "kit"}),
                ElementsAre("mitten", "smitten", "sitting")); // 1, 2 and 3 changes
}

TEST(FieldAddress, TellsTheFormThatAFieldTakes) {
    const std::string layers = "SoilFriction takes a side and an entry: SoilFriction.right.1, "
                               "SoilFriction.left.1";
    for (const char* text :
         {"SoilFriction", "SoilFriction.left", "SoilFriction.1", "SoilFriction.middle.1",
          "SoilFriction.left.0", "SoilFriction.left.x", "SoilFriction.left.1.2",
          "SoilFriction.left.1.", "SoilFriction.left.-1", "SoilFriction.left.99999999999",
          "SoilFriction..1"}) {
        EXPECT_EQ(faultOf(text), "'" + std::string(text) + "': " + layers);
    }
    EXPECT_EQ(faultOf("WaterElev"),
              "'WaterElev': WaterElev takes a side: WaterElev.right, WaterElev.left");
    EXPECT_EQ(faultOf("HLineLoad"), "'HLineLoad': HLineLoad takes an entry: HLineLoad.1");
    EXPECT_EQ(faultOf("AnchorElev.1"), "'AnchorElev.1': AnchorElev takes neither side nor entry");
}

TEST(FieldAddress, TellsWhatAWallHasNot) {
    Problem problem = test::plainCantilever();
    const auto missing = [&problem](std::string_view text) {
        return absence(addressOf(text), problem);
    };
    EXPECT_EQ(missing("SoilFriction.left.1"), "");
    EXPECT_EQ(missing("SoilFriction.left.2"), "the wall has 1 entry on its left side");
    EXPECT_EQ(missing("SoilBottomElev.left.1"), "the wall has no entries on its left side");
    EXPECT_EQ(missing("VUniformLoad.right"), "the wall has no entries on its right side");
    EXPECT_EQ(missing("HLineLoad.1"), "the wall has no entries");
    for (const char* unused : {"AnchorElev", "WallBottomElev", "SoilCoefActive.right.1",
                               "WaterElev.left", "SeepageElev", "SeepageGradient.1"}) {
        EXPECT_EQ(missing(unused), "the wall does not use it") << unused;
    }
    problem.WaterDataKind = WaterData::Elevations;
    problem.VUniformCount(Right) = 1;
    EXPECT_EQ(missing("WaterElev.left"), "");
    EXPECT_EQ(missing("VUniformLoad.right"), "");
    EXPECT_EQ(missing("SeepageElev"), "the wall does not use it");
    problem.SeepageKind = Seepage::Automatic;
    EXPECT_EQ(missing("SeepageElev"), "");
    EXPECT_EQ(missing("SeepageGradient.1"), "the wall has no entries");
}
