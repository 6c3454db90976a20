#include "wall/free_earth_search.h"

#include "runtime/number_text.h"
#include "search_bench.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::test {
namespace {

using Texts = std::vector<std::string>;

/// Anchor at 10 FT, net active -100 PSF below the zero point; with a force R and a moment M0 about
/// the anchor from above, a penetration D leaves the moment M0 - 100 D (10 + D / 2) and the anchor
/// force R - 100 D.
HandMadeWall uniformWall(double R, double M0) {
    HandMadeWall wall(WallKind::Anchored);
    wall.setUniformActive(-100);
    wall.setDriving(R, M0);
    return wall;
}

double penetration(double M0) {
    return -10 + std::sqrt(100 + M0 / 50);
}

Solution& solveBottom(HandMadeWall& wall) {
    int anchorIndex = 1;
    SolveFreeEarthBottom(*wall.state, anchorIndex);
    EXPECT_EQ(anchorIndex, 1);
    return wall.state->solution;
}

TEST(FreeEarthSearch, BottomAndAnchorForceMeetTheClosedForm) {
    for (const double M0 : {2500.0, 5000.0, 31000.0}) {
        HandMadeWall wall = uniformWall(3000, M0);
        const Solution& solution = solveBottom(wall);
        const double D = penetration(M0);
        const double within = 1.0 / 1000; // 1 LB-FT over a moment slope of more than 1000 LB
        EXPECT_NEAR(solution.SolvedBottomElev(1), -D, within);
        EXPECT_NEAR(solution.AnchorForce(1), 3000 - 100 * D, 100 * within);
        EXPECT_EQ(solution.BottomPressure(1), -100);
        EXPECT_EQ(solution.BottomIndex(1), HandMadeWall::rowAt(static_cast<int>(-std::ceil(D))));
        EXPECT_TRUE(wall.told().empty());
    }
}

TEST(FreeEarthSearch, TheBottomPressureStandsOnTheStraightLine) {
    HandMadeWall wall(WallKind::Anchored);
    wall.setActive(0, -40, 0, -2000); // -50 PSF a foot
    wall.setDriving(3000, 20000);
    const Solution& solution = solveBottom(wall);
    EXPECT_NEAR(solution.BottomPressure(1), 50 * solution.SolvedBottomElev(1), 1e-9);
    // M0 - 25 D^2 (10 + 2 D / 3) = 0
    const double D = -solution.SolvedBottomElev(1);
    EXPECT_NEAR(25 * D * D * (10 + 2 * D / 3), 20000, 1.0);
    EXPECT_NEAR(solution.AnchorForce(1), 3000 - 25 * D * D, 1e-6);
}

TEST(FreeEarthSearch, AMomentWithinOneAtAGridPointMakesThatPointTheBottom) {
    for (const double rest : {-1.0, -0.4, 0.0, 0.4, 1.0}) {
        HandMadeWall wall = uniformWall(1000, 4800 + rest); // 100 x 4 x 12 = 4800
        const Solution& solution = solveBottom(wall);
        EXPECT_EQ(solution.SolvedBottomElev(1), -4);
        EXPECT_EQ(solution.BottomIndex(1), HandMadeWall::rowAt(-4));
        EXPECT_EQ(solution.AnchorForce(1), 600);
    }
}

TEST(FreeEarthSearch, TheBottomPressureOfAGridPointIsTheOneAboveIt) {
    HandMadeWall wall = uniformWall(1000, 4800);
    wall.setActive(-4, -40, -700, -700);
    EXPECT_EQ(solveBottom(wall).BottomPressure(1), -100);
}

TEST(FreeEarthSearch, ALineLoadAtTheTrialBottomIsLeftOut) {
    HandMadeWall wall = uniformWall(1000, 4800);
    wall.addLineLoad(-4, 5000);
    const Solution& solution = solveBottom(wall);
    EXPECT_EQ(solution.SolvedBottomElev(1), -4);
    EXPECT_EQ(solution.AnchorForce(1), 600);
}

TEST(FreeEarthSearch, ALineLoadAtTheUpperEndOfASegmentIsCounted) {
    HandMadeWall wall = uniformWall(1000, 3800); // and 100 x 10 from the load at the zero point
    wall.addLineLoad(0, 100);
    const Solution& solution = solveBottom(wall);
    EXPECT_EQ(solution.SolvedBottomElev(1), -4);
    EXPECT_EQ(solution.AnchorForce(1), 700);
}

TEST(FreeEarthSearch, ABottomInTheFirstSegmentIsRefinedFromTheDrivingMoment) {
    HandMadeWall wall = uniformWall(1000, 500);
    const Solution& solution = solveBottom(wall);
    EXPECT_NEAR(solution.SolvedBottomElev(1), -penetration(500), 1.0 / 1000);
    EXPECT_EQ(solution.BottomIndex(1), HandMadeWall::ZeroRow + 1);
}

TEST(FreeEarthSearch, ABottomOnTheRowAboveIsThatRow) {
    // A driving moment of next to nothing: the secant ends 1E-11 FT below the zero point.
    HandMadeWall wall = uniformWall(1000, 1e-8);
    wall.state->net.NetActive(HandMadeWall::ZeroRow, 2) = 123;
    const Solution& solution = solveBottom(wall);
    EXPECT_EQ(solution.SolvedBottomElev(1), 0);
    EXPECT_EQ(solution.BottomIndex(1), HandMadeWall::ZeroRow);
    EXPECT_EQ(solution.BottomPressure(1), 123);
    EXPECT_NEAR(solution.AnchorForce(1), 1000, 1e-6);
}

TEST(FreeEarthSearch, ABottomFartherBelowTheRowAboveKeepsItsPlace) {
    HandMadeWall wall = uniformWall(1000, 1e-5); // 1E-8 FT
    const Solution& solution = solveBottom(wall);
    EXPECT_LT(solution.SolvedBottomElev(1), -1e-9);
    EXPECT_EQ(solution.BottomIndex(1), HandMadeWall::ZeroRow + 1);
}

TEST(FreeEarthSearch, AMomentThatJumpsUpwardIsRefinedByHalving) {
    // 1.5 is left at -1, and the load there adds 50 x 11 below it. Secants that hold 1.5 run away:
    // the moment falls by 1100 a foot.
    HandMadeWall wall = uniformWall(1000, 1050 + 1.5);
    wall.addLineLoad(-1, 50);
    const Solution& solution = solveBottom(wall);
    // 551.5 - 100 d (11 + d / 2) = 0
    const double d = -11 + std::sqrt(121 + 551.5 / 50);
    EXPECT_NEAR(solution.SolvedBottomElev(1), -1 - d, 1.0 / 1100);
    EXPECT_NEAR(solution.AnchorForce(1), 1000 + 50 - 100 * (1 + d), 0.1);
}

TEST(FreeEarthSearch, AMomentThatJumpsOverZeroDoesNotConverge) {
    // 450 is left at -1, and the load there takes 100 x 11: no depth below has no moment.
    HandMadeWall wall = uniformWall(1000, 1050 + 450);
    wall.addLineLoad(-1, -100);
    solveBottom(wall);
    EXPECT_TRUE(wall.state->failed());
    ASSERT_EQ(wall.told().size(), 1U);
    EXPECT_EQ(wall.told()[0], (MessageBox{.text = "REFINEMENT OF WALL BOTTOM DOES NOT CONVERGE\n"
                                                  "FOR ANCHORED WALL BY FREE EARTH METHOD.\n\n"
                                                  "     UNABLE TO CONTINUE.",
                                          .title = "KORVANE"}));
}

TEST(FreeEarthSearch, ADiagramThatNeverResistsIsMessageE) {
    HandMadeWall wall = uniformWall(1000, 5000);
    wall.setUniformActive(1);
    solveBottom(wall);
    EXPECT_TRUE(wall.state->failed());
    EXPECT_EQ(textsOf(wall),
              Texts{"A SOLUTION FOR PENETRATION HAS NOT BEEN FOUND FOR AN ELEVATION\n"
                    "DOWN TO EL -50040.00 FT.\n\n     UNABLE TO CONTINUE."});
}

/// A sand wall with water on both sides, whose seepage follows the bottom.
Problem seepageWall() {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.WallTopElev = 4.5; // a top of its own keeps the anchor off the rows of whole feet
    problem.AnchorElev = -1.7;
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = -2;
    problem.WaterElev(Left) = -10;
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -2;
    return problem;
}

TEST(FreeEarthSearch, SeepageFollowsTheBottomAndTheAnchorsRowTheGrid) {
    Bench bench;
    bench.problem = seepageWall();
    State& state = *bench.state;
    computePressures(state);
    state.net.DrivingMoment -= (4.5 + 1.7) * state.net.DrivingForce;
    int anchorIndex = 999; // the rebuilt grid alone tells it
    SolveFreeEarthBottom(state, anchorIndex);
    EXPECT_FALSE(state.failed());
    EXPECT_EQ(state.grid.ElevGrid(anchorIndex), -1.7);
    // The gradient belongs to the bottom of the pass before, at most 0.1 FT away.
    const double previous = (-12 - 8 / bench.state->preparation.SeepageGradient(1)) / 2;
    EXPECT_NEAR(previous, state.solution.SolvedBottomElev(1), 0.1);
    EXPECT_NEAR(state.preparation.SeepageEndElev(1), previous, 1e-9);
    EXPECT_EQ(bench.state->preparation.SeepageGradient(2), 0.0001); // level 2 has its own
}

TEST(FreeEarthSearch, ABottomThatSeepageNeverSettlesIsMessageF) {
    Bench bench;
    Problem& problem = bench.problem = seepageWall();
    problem.WallTopElev = -14.5;
    problem.AnchorElev = -19.5;
    problem.FSActive = 1.5;
    problem.FSPassive = 1.5;
    problem.SurfaceElev(Right, 1) = -17.5;
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    problem.SoilSatWeight(Right, 1) = 114;
    problem.SoilMoistWeight(Right, 1) = 115;
    problem.SoilCoefActive(Right, 1) = 0.45;
    problem.SoilCoefPassive(Right, 1) = 5.7;
    problem.SurfaceElev(Left, 1) = -23.5;
    problem.SoilLayerCount(Left) = 2;
    problem.SoilBottomElev(Left, 1) = -30;
    problem.SoilBottomElev(Left, 2) = NoLayerBottom;
    problem.SoilSatWeight(Left, 1) = 108;
    problem.SoilMoistWeight(Left, 1) = 113;
    problem.SoilFriction(Left, 1) = 34;
    problem.SoilSatWeight(Left, 2) = 116;
    problem.SoilMoistWeight(Left, 2) = 107;
    problem.SoilFriction(Left, 2) = 30;
    problem.WaterElev(Right) = -14.5;
    problem.WaterElev(Left) = -16.5;
    problem.SeepageElev = -22;
    problem.HLineCount = 1;
    problem.HLineElev(1) = -29.5;
    problem.HLineLoad(1) = 2500;
    solve(bench);
    EXPECT_TRUE(bench.state->failed());
    const double Zb = bench.state->solution.SolvedBottomElev(1);
    EXPECT_EQ(textsOf(bench),
              Texts{"DESIGN PENETRATION FOR ANCHORED WALL APPEARS\nOSCILLATING ABOUT ELEVATION = " +
                    formatNumber(Zb, "####0.00") + " FT.\n\nUNABLE TO CONTINUE."});
}

/// Clay that stands by itself behind a wall that a distributed load and water push and a line load
/// at the anchor pulls; the water, and with it the moment about the anchor, goes with the seepage.
Problem wallThatTurns() {
    Problem problem = seepageWall();
    problem.WallTopElev = 38;
    problem.AnchorElev = 34;
    problem.FSPassive = 1.75;
    problem.SurfaceElev(Right, 1) = 38;
    problem.SoilLayerCount(Right) = 2;
    problem.SoilBottomElev(Right, 1) = 33.5;
    problem.SoilBottomElev(Right, 2) = NoLayerBottom;
    for (const int layer : {1, 2}) {
        problem.SoilSatWeight(Right, layer) = layer == 1 ? 117 : 106;
        problem.SoilMoistWeight(Right, layer) = layer == 1 ? 114 : 112;
        problem.SoilFriction(Right, layer) = 0;
        problem.SoilCohesion(Right, layer) = layer == 1 ? 1150 : 1000;
    }
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 150;
    problem.SurfaceElev(Left, 1) = 30.5;
    problem.SoilSatWeight(Left, 1) = 116;
    problem.SoilMoistWeight(Left, 1) = 112;
    problem.SoilFriction(Left, 1) = 28;
    problem.SoilWallFriction(Left, 1) = 9;
    problem.WaterElev(Right) = 38;
    problem.WaterElev(Left) = 33.5;
    problem.SeepageElev = 37;
    problem.HLineCount = 1;
    problem.HLineElev(1) = 34;
    problem.HLineLoad(1) = -1200;
    problem.HDistCount = 2;
    problem.HDistElev(1) = 37;
    problem.HDistLoad(1) = 200;
    problem.HDistElev(2) = 32;
    problem.HDistLoad(2) = 250;
    return problem;
}

TEST(FreeEarthSearch, SeepageThatTurnsTheWallIsMessageG) {
    Bench bench;
    bench.problem = wallThatTurns();
    solve(bench);
    EXPECT_TRUE(bench.state->failed());
    EXPECT_EQ(textsOf(bench), Texts{"CONDITIONS ENCOUNTERED WHERE ANCHORED WALL TENDS\n"
                                    "TO ROTATE COUNTERCLOCKWISE ABOUT ANCHOR OR\n"
                                    "ANCHOR FORCE IS COMPRESSION.\n\n"
                                    "     UNABLE TO CONTINUE."});
    EXPECT_LE(bench.state->net.DrivingMoment, 0);
}

} // namespace
} // namespace korvane::test
