// The tables of counts and loads against the names of the record, and limits between sections.
#include "problem/loads.h"
#include "problem/validate.h"

#include <gtest/gtest.h>

#include <string>

namespace korvane::test {
namespace {

TEST(Loads, TheListsBelongToTheirCountAndEndWithTheLoad) {
    for (const LoadRules& load : LoadTable) {
        const CountRules& count = rulesOf(load.count);
        const std::string name = count.name;
        const std::string stem = name.substr(0, name.find("Count"));
        for (int column = 0; column < load.width(); ++column) {
            const FieldRules& field = rulesOf(load.field(column));
            EXPECT_EQ(std::string(field.name).rfind(stem, 0), 0U) << field.name;
            EXPECT_EQ(field.hasSides, count.sides == 2) << field.name;
            EXPECT_EQ(field.hasRows, count.places > 1) << field.name;
        }
        EXPECT_EQ(rulesOf(load.last).name, stem + "Load");
    }
}

TEST(Loads, EveryLoadOfTheRecordIsInTheTable) {
    int place = static_cast<int>(ProblemField::VLineDist);
    for (const LoadRules& load : LoadTable) {
        EXPECT_EQ(static_cast<int>(load.first), place) << load.word;
        place += load.width();
    }
    EXPECT_EQ(place, FieldCount);
    EXPECT_EQ(GroundLoads.back().load, Load::Variable);
    EXPECT_EQ(WallLoads.front().load, Load::HorizontalLine);
}

TEST(Loads, AKindIsGivenByEitherSide) {
    for (const LoadRules& load : LoadTable) {
        for (int side = 1; side <= load.sides(); ++side) {
            Problem problem;
            EXPECT_FALSE(load.isGiven(problem)) << load.word;
            rulesOf(load.count).at(problem, side) = 1;
            EXPECT_TRUE(load.isGiven(problem)) << load.word;
            clearProblemData(problem);
            EXPECT_FALSE(load.isGiven(problem)) << load.word;
        }
    }
}

TEST(Counts, NeverReachBeyondTheLists) {
    Problem problem;
    for (const auto& [count, entries] : {std::pair{-3, 0}, {7, 7}, {40, 21}}) {
        problem.WaterPressCount = count;
        EXPECT_EQ(entriesOf(ProblemCount::WaterPressCount, problem, Right), entries);
    }
    EXPECT_EQ(leastOf(ProblemCount::VVarCount, ByReader), 2);
    EXPECT_EQ(leastOf(ProblemCount::VVarCount, ByScreen), 1);
}

/// Ground of 1 FT and water of 4 FT on the right, ground of -3 FT and water of -9 FT on the left, a
/// wall from 5 to -20 FT.
TEST(LimitsBetween, SeepageAndGround) {
    Problem problem;
    problem.WallTopElev = 5;
    problem.WallBottomElev = -20;
    problem.SurfaceElev(Right, 1) = 1;
    problem.SurfaceElev(Left, 1) = -3;
    problem.WaterElev(Right) = 4;
    problem.WaterElev(Left) = -9;
    const auto limits = [&](ProblemField field, StatedBy who, int side = Right, int row = 1) {
        return limitsBetween(field, who, problem, side, row);
    };
    EXPECT_EQ(limits(ProblemField::SeepageElev, ByReader).low, -9);
    EXPECT_EQ(limits(ProblemField::SeepageElev, ByReader).high, 1);
    EXPECT_EQ(limits(ProblemField::SeepageElev, ByScreen).high, -9);
    EXPECT_TRUE(limits(ProblemField::SeepageElev, ByScreen).hold(-1e6));
    EXPECT_TRUE(limits(ProblemField::WaterElev, ByScreen, Left).hold(3.9));
    EXPECT_FALSE(limits(ProblemField::WaterElev, ByScreen, Left).hold(4));
    EXPECT_TRUE(limits(ProblemField::WaterElev, ByScreen, Right).hold(1e6));
    EXPECT_EQ(limits(ProblemField::SurfaceElev, ByScreen, Right, 1).high, 5);
    EXPECT_EQ(limits(ProblemField::SurfaceElev, ByScreen, Right, 2).low, -20);
    EXPECT_TRUE(limits(ProblemField::SurfaceElev, ByScreen, Left, 1).hold(-21));
    EXPECT_FALSE(limits(ProblemField::SurfaceElev, ByReader, Left, 1).hold(-20));
}

} // namespace
} // namespace korvane::test
