// The sheet of a wall without a solution: what is known up to the failure, and why it failed.
#include "sheet_bench.h"
#include "support/failing_walls.h"
#include "support/pressure_bench.h"

#include <gmock/gmock.h>

#include <utility>

namespace korvane::test {
namespace {

/// The plain cantilever in clay of one cohesion (PSF), exposed over a height (FT).
Problem clayWall(double cohesion, double height) {
    Problem problem = plainCantilever();
    problem.SurfaceElev(Left, 1) = -height;
    for (const int side : {Right, Left}) {
        problem.SoilFriction(side, 1) = 0;
        problem.SoilCohesion(side, 1) = cohesion;
    }
    return problem;
}

TEST(SheetOfFailingWalls, TellsWhatWasBeingDoneAndWhatIsKnown) {
    for (const FailingWall& wall : failingWalls()) {
        const SheetBench bench(wall.problem);
        ASSERT_TRUE(bench.solved.failure) << wall.name;
        const CalculationSheet sheet = bench.sheet();
        EXPECT_NE(sheet.html.find("ended without results"), std::string::npos) << wall.name;
        EXPECT_NE(sheet.html.find(stageText(bench.solved.failure.stage, wall.problem.WallType)),
                  std::string::npos)
            << wall.name;
        EXPECT_EQ(failedChecks(sheet), "") << wall.name;
    }
}

// 10 FT of 120 PCF load the clay behind with 1200 PSF; twice the cohesions over the factors are
// 2 * 250 / 1 + 2 * 250 / 1 = 1000: 200 PSF remain at every depth.
TEST(SheetOfClayWithoutADepth, GivesTheNumberThatShowsIt) {
    const Problem problem = clayWall(250, 10);
    const SheetBench bench(problem);
    ASSERT_TRUE(bench.solved.failure);
    const std::string html = bench.sheet().html;
    EXPECT_NE(html.find("<b>200\u00a0PSF</b>"), std::string::npos);
    EXPECT_NE(html.find("no depth holds this wall"), std::string::npos);
}

// 4 x 450 - 120 x 15 = 0: nothing is left to hold the wall.
TEST(SheetOfClayWithoutADepth, ANumberOfZeroHoldsNoWall) {
    const Problem problem = clayWall(450, 15);
    const SheetBench bench(problem);
    ASSERT_TRUE(bench.solved.failure);
    const std::string html = bench.sheet().html;
    EXPECT_NE(html.find("no depth holds this wall"), std::string::npos);
    EXPECT_EQ(html.find("would hold"), std::string::npos);
}

// 2 x 600 + 2 x 200 - 120 x 15 = -200 PSF in the second layer in front, at every depth below it.
TEST(SheetOfClayWithoutADepth, TheWeakestLayerIsTold) {
    Problem problem = clayWall(600, 15);
    setLayerBottoms(problem, Left, {-17});
    problem.SoilCohesion(Left, 2) = 200;
    const SheetBench bench(problem);
    ASSERT_TRUE(bench.solved.failure);
    const std::string html = bench.sheet().html;
    EXPECT_NE(html.find("<b>200\u00a0PSF</b>"), std::string::npos);
    EXPECT_NE(html.find("no depth holds this wall"), std::string::npos);
}

TEST(SheetOfFailingWalls, AStressBesideBreaksThousandsOfFeetDownIsStillChecked) {
    // Held at the gradient at which soil of 114 PCF floats; the review stops at the first one.
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -2;
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Left) = -10;
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -5;
    problem.SoilFriction(Left, 1) = 0;
    problem.SoilCohesion(Left, 1) = 700;
    problem.SoilSatWeight(Right, 1) = problem.SoilSatWeight(Left, 1) = 114;
    SheetBench bench(problem);
    ASSERT_FALSE(bench.isSolved());
    ASSERT_TRUE(bench.review->hasPressures);
    std::vector<StressInterval>& intervals = bench.review->details.sides(Right).stresses;
    ASSERT_LT(intervals.back().bottom.elev, -10000); // the head of 10 FT over a gradient of 0.0001
    EXPECT_EQ(failedChecks(bench.sheet()), "");
    StressPoint& end = intervals.front().bottom; // 5 FT down
    for (const auto& [value, what] : {std::pair{&end.effective, "Effective stress at breaks"},
                                      std::pair{&end.soilActive, "Active soil pressure at"},
                                      std::pair{&end.soilPassive, "Passive soil pressure at"}}) {
        const double kept = *value;
        *value *= 1.001;
        EXPECT_THAT(failedChecks(bench.sheet()), testing::HasSubstr(what));
        *value = kept;
    }
}

TEST(SheetOfFailingWalls, ASearchThatStoppedAtItsLimitTellsTheFactorThatStillHeld) {
    Problem problem = plainCantilever();
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::ActiveGiven;
    problem.FSActive = 1;
    problem.WallBottomElev = -40; // more than it needs
    problem.WallModulus = 29e6;
    problem.WallInertia = 100;
    const SheetBench bench(problem, WedgeMethod::Sweep, {.largest = 4.99, .ask = {}});
    ASSERT_EQ(bench.solved.failure.code, FailureCode::FactorDeclined);
    const CalculationSheet sheet = bench.sheet();
    EXPECT_NE(sheet.html.find("stopped at its limit: the wall still held at 5.0"),
              std::string::npos);
    EXPECT_EQ(sheet.html.find("all agree"), std::string::npos);
}

TEST(SheetWithoutNotes, SaysThatTheyWereNotWorkedOut) {
    SheetBench bench(plainCantilever());
    bench.notes.clear();
    EXPECT_NE(bench.sheet().html.find("There are no notes."), std::string::npos);
    bench.notesWorkedOut = false;
    EXPECT_EQ(bench.sheet().html.find("There are no notes."), std::string::npos);
    EXPECT_NE(bench.sheet().html.find("not worked out"), std::string::npos);
}

} // namespace
} // namespace korvane::test
