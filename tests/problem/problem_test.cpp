// The problem record.

#include "reading_helpers.h"

#include <gtest/gtest.h>

#include <string>

using namespace korvane;
using namespace korvane::test;

namespace {

/// A file whose one layer on both sides has the given strengths.
Outcome readLayer(const std::string& layer) {
    return readText("'HEADING\nCONTROL C D\nWALL 10\nSURFACE B 1 0 0\nSOIL B S 1\n" + layer +
                    "\nFINISHED\n");
}

} // namespace

TEST(ProblemRecord, AfterClearingTheFactorsOfSafetyAreTheDefaults) {
    Problem problem;
    problem.FSActive = 3;
    problem.FSPassive = 4;
    clearProblemData(problem);
    EXPECT_EQ(problem.FSActive, 1.0);
    EXPECT_EQ(problem.FSPassive, 1.5);
    EXPECT_EQ(problem.WallType, WallKind::None);
    EXPECT_EQ(problem.ProgramMode, Mode::None);
}

TEST(ProblemRecord, ClearingResetsCountsKindsAndFactors) {
    Problem problem;
    problem.NumHeadingLines = 4;
    problem.WaterDataKind = WaterData::Elevations;
    problem.SeepageKind = Seepage::Automatic;
    problem.HLineCount = 5;
    problem.HDistCount = 11;
    for (auto* counts : {&problem.SurfacePointCount, &problem.SoilLayerCount, &problem.VLineCount,
                         &problem.VUniformCount, &problem.VStripCount, &problem.VRampCount,
                         &problem.VTriCount, &problem.VVarCount}) {
        counts->fill(1);
    }
    problem.SoilDataKind.fill(SoilData::Strengths);
    problem.Level2FSActive.fill(2);
    problem.Level2FSPassive.fill(2);
    problem.SoilFSActive.fill(2);
    problem.SoilFSPassive.fill(2);
    clearProblemData(problem);
    EXPECT_EQ(problem, Problem{});
}

TEST(ProblemRecord, ClearingKeepsWhatTheCountsGuard) {
    Problem problem;
    problem.WallType = WallKind::Anchored;
    problem.ProgramMode = Mode::Design;
    problem.WallTopElev = 12;
    problem.SoilBottomSlope(Left, 2) = 0.25;
    problem.SurfaceElev(Right, 3) = 7;
    problem.HeadingLines(2) = "'OLD ";
    const Problem before = problem;
    clearProblemData(problem);
    EXPECT_EQ(problem, before);
}

TEST(ProblemRecord, ALayerWithoutFrictionAndCohesionIsNotValid) {
    EXPECT_EQ(readLayer("120 110 0 0 0 0").result, dataError("SOIL LAYER DATA", "120 110 0 0 0 0"));
    EXPECT_TRUE(readLayer("120 110 0 1 0 0").result.complete);
}

TEST(ProblemRecord, FrictionOf45DegreesIsValidAndMoreIsNot) {
    EXPECT_TRUE(readLayer("120 110 45 0 0 0").result.complete);
    EXPECT_EQ(readLayer("120 110 45.01 0 0 0").result,
              dataError("SOIL LAYER DATA", "120 110 45.01 0 0 0"));
}

TEST(ProblemRecord, AUniformLoadOfZeroIsNoLoad) {
    const Problem problem = readText(plainFile("VERTICAL UNIFORM 0 100\n")).problem;
    EXPECT_EQ(problem.VUniformCount(Right), 0);
    EXPECT_EQ(problem.VUniformLoad(Right), 0);
    EXPECT_EQ(problem.VUniformCount(Left), 1);
    EXPECT_EQ(problem.VUniformLoad(Left), 100);
}

TEST(ProblemRecord, TheLastLayerHasTheMarkOfNoBottomWhateverTheFileSays) {
    // The seventh word of a last layer is its active factor of safety, never a bottom.
    const Problem problem = readLayer("120 110 30 0 0 0 1.4 1.6").problem;
    for (const int side : {Right, Left}) {
        EXPECT_EQ(problem.SoilBottomElev(side, 1), -200000.0);
    }
}

TEST(ProblemRecord, ASubscriptOutsideIsRunTimeError9) {
    Problem problem;
    EXPECT_THROW(problem.SoilSatWeight(Right, 12), RuntimeError);
    EXPECT_THROW(problem.SoilSatWeight(3, 1), RuntimeError);
    EXPECT_THROW(problem.SoilSatWeight(Right, 0), RuntimeError);
}
