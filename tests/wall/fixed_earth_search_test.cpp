#include "wall/fixed_earth_search.h"

#include "runtime/number_text.h"
#include "search_bench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace korvane::test {
namespace {

using Texts = std::vector<std::string>;

/// The same wall by a second method: small steps down the elastic line. Net pressure over the depth
/// below the anchor, which stands at the wall top, and one line load.
struct ElasticLine {
    std::function<double(double)> pressure;
    double loadDepth = 0;
    double load = 0;

    struct Result {
        double
            anchorForce; ///< that keeps the anchor in place when the wall is built in at the depth
        double balance;  ///< the moment left at the bottom
    };

    Result solve(double depth) const {
        constexpr int steps = 5000;
        const double h = depth / steps;
        const auto ofLoad = [this](double x) { return load * std::max(0.0, x - loadDepth); };
        double shear = 0;
        double moment = 0;
        double area = 0; // first moment about the anchor of the moment diagram without the anchor
        for (int i = 0; i < steps; ++i) {
            const double x = (i + 0.5) * h;
            const double q = pressure(x);
            area += (moment + shear * h / 2 + q * h * h / 8 + ofLoad(x)) * x * h;
            moment += shear * h + q * h * h / 2;
            shear += q * h;
        }
        const double force = 3 * area / (depth * depth * depth);
        return {force, moment + ofLoad(depth) - force * depth};
    }

    /// The depth without moment at the bottom, by halving.
    double depth(double low, double high) const {
        for (int pass = 0; pass < 60; ++pass) {
            const double middle = (low + high) / 2;
            (solve(middle).balance > 0 ? low : high) = middle;
        }
        return low;
    }
};

/// Anchor at the wall top; net active pressure rises to 300 PSF at the zero point 10 FT below and
/// falls by `slope` PSF a foot from 0 there.
HandMadeWall sandWall(double slope) {
    HandMadeWall wall(WallKind::Anchored);
    wall.state->net.NetActive(HandMadeWall::ZeroRow, 2) = 300;
    wall.setActive(0, -40, 0, -40 * slope);
    return wall;
}

ElasticLine elasticLine(double slope) {
    return {[slope](double x) { return x < 10 ? 30 * x : -slope * (x - 10); }};
}

Solution& solveBottom(HandMadeWall& wall) {
    int anchorIndex = 1;
    SolveFixedEarthBottom(*wall.state, anchorIndex);
    return wall.state->solution;
}

TEST(FixedEarthSearch, BottomAndAnchorForceMeetTheElasticLine) {
    for (const double slope : {50.0, 100.0, 300.0}) {
        HandMadeWall wall = sandWall(slope);
        const Solution& solution = solveBottom(wall);
        const ElasticLine line = elasticLine(slope);
        const double depth = line.depth(11, 45);
        EXPECT_NEAR(10 - solution.SolvedBottomElev(2), depth, 0.002);
        EXPECT_NEAR(solution.AnchorForce(2), line.solve(depth).anchorForce, 0.5);
        EXPECT_NEAR(line.solve(10 - solution.SolvedBottomElev(2)).balance, 0, 1.1);
        EXPECT_NEAR(solution.BottomPressure(2), slope * solution.SolvedBottomElev(2), 1e-9);
        EXPECT_EQ(solution.BottomIndex(2),
                  HandMadeWall::rowAt(static_cast<int>(std::floor(solution.SolvedBottomElev(2)))));
        EXPECT_TRUE(wall.told().empty());
    }
}

TEST(FixedEarthSearch, LineLoadsAboveAndBelowTheZeroPointMeetTheElasticLine) {
    for (const double depthOfLoad : {4.0, 10.0, 13.0}) {
        HandMadeWall wall = sandWall(100);
        wall.addLineLoad(10 - depthOfLoad, 800);
        ElasticLine line = elasticLine(100);
        line.loadDepth = depthOfLoad;
        line.load = 800;
        const double depth = line.depth(11, 45);
        const Solution& solution = solveBottom(wall);
        EXPECT_NEAR(10 - solution.SolvedBottomElev(2), depth, 0.002);
        EXPECT_NEAR(solution.AnchorForce(2), line.solve(depth).anchorForce, 0.5);
    }
}

TEST(FixedEarthSearch, ALineLoadAtTheAnchorGoesStraightIntoIt) {
    HandMadeWall plain = sandWall(100);
    HandMadeWall loaded = sandWall(100);
    loaded.addLineLoad(10, 777);
    const Solution& without = solveBottom(plain);
    const Solution& with = solveBottom(loaded);
    EXPECT_NEAR(with.SolvedBottomElev(2), without.SolvedBottomElev(2), 1e-9);
    EXPECT_NEAR(with.AnchorForce(2), without.AnchorForce(2) + 777, 1e-6);
}

TEST(FixedEarthSearch, ALineLoadAtTheTrialBottomIsNotCounted) {
    // Without any pressure the first trial has no moment; a load on it would have one.
    HandMadeWall wall(WallKind::Anchored);
    wall.addLineLoad(-1, 1e6);
    const Solution& solution = solveBottom(wall);
    EXPECT_EQ(solution.SolvedBottomElev(2), -1);
    EXPECT_EQ(solution.AnchorForce(2), 0);
}

TEST(FixedEarthSearch, ABalanceNegativeAtTheFirstPointReturnsToTheZeroPoint) {
    // Nothing acts above the zero point, so that there is no moment there either: the first secant,
    // which holds 0, leads to it.
    HandMadeWall wall(WallKind::Anchored);
    wall.setActive(0, -40, -100, -100);
    const Solution& solution = solveBottom(wall);
    EXPECT_FALSE(wall.state->failed());
    EXPECT_EQ(solution.SolvedBottomElev(2), 0);
    EXPECT_EQ(solution.BottomIndex(2), HandMadeWall::ZeroRow);
    EXPECT_EQ(solution.BottomPressure(2), 0); // above the row, not the -100 below it
}

TEST(FixedEarthSearch, ABottomInTheFirstSegmentIsFoundByHalving) {
    // A moment of some 80 LB-FT at the zero point, which 1000 PSF below it turns within a foot.
    HandMadeWall wall(WallKind::Anchored);
    wall.state->net.NetActive(1, 1) = 6;
    wall.state->net.NetActive(HandMadeWall::ZeroRow, 2) = 6;
    wall.setActive(0, -40, -1000, -1000);
    const ElasticLine line{[](double x) { return x < 10 ? 6.0 : -1000.0; }};
    ASSERT_GT(line.solve(10).balance, 50);
    ASSERT_LT(line.solve(11).balance, -100);
    const Solution& solution = solveBottom(wall);
    EXPECT_FALSE(wall.state->failed());
    EXPECT_NEAR(line.solve(10 - solution.SolvedBottomElev(2)).balance, 0, 1.5);
    EXPECT_NEAR(10 - solution.SolvedBottomElev(2), line.depth(10, 11), 0.01);
    EXPECT_EQ(solution.BottomIndex(2), HandMadeWall::ZeroRow + 1);
}

TEST(FixedEarthSearch, ABalanceNegativeAtBothEndsDoesNotConverge) {
    HandMadeWall wall(WallKind::Anchored);
    wall.state->net.NetActive(1, 1) = -6; // the moment at the zero point is negative too
    wall.state->net.NetActive(HandMadeWall::ZeroRow, 2) = -6;
    wall.setActive(0, -40, -1000, -1000);
    solveBottom(wall);
    EXPECT_TRUE(wall.state->failed());
    ASSERT_EQ(wall.told().size(), 1U);
    EXPECT_EQ(wall.told()[0], (MessageBox{.text = "REFINEMENT OF WALL BOTTOM DOES NOT CONVERGE\n"
                                                  "FOR ANCHORED WALL BY FIXED EARTH METHOD.\n\n"
                                                  "     UNABLE TO CONTINUE.",
                                          .title = "KORVANE"}));
}

TEST(FixedEarthSearch, TheEndOfTheGridIsASubscriptError) {
    HandMadeWall wall = sandWall(-1);
    EXPECT_EQ(errorOf([&] { solveBottom(wall); }), 9);
    EXPECT_TRUE(wall.told().empty());
}

TEST(FixedEarthSearch, ATrialBottomAtTheAnchorIsADivisionByZero) {
    HandMadeWall wall = sandWall(100);
    wall.problem.AnchorElev = -1;
    EXPECT_EQ(errorOf([&] { solveBottom(wall); }), 11);
}

TEST(FixedEarthSearch, ANegativeAnchorForceIsNoFailure) {
    HandMadeWall wall(WallKind::Anchored);
    wall.setActive(0, -40, -0.5, -0.5); // a moment of a quarter at the first trial
    const Solution& solution = solveBottom(wall);
    EXPECT_EQ(solution.SolvedBottomElev(2), -1);
    EXPECT_LT(solution.AnchorForce(2), 0);
    EXPECT_FALSE(wall.state->failed());
    EXPECT_TRUE(wall.told().empty());
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

TEST(FixedEarthSearch, SeepageFollowsTheBottomInItsOwnLevel) {
    Bench bench;
    bench.problem = seepageWall();
    State& state = *bench.state;
    computePressures(state);
    int anchorIndex = firstRowAt(state.grid, -1.7);
    SolveFixedEarthBottom(state, anchorIndex);
    EXPECT_FALSE(state.failed());
    EXPECT_EQ(state.grid.ElevGrid(anchorIndex), -1.7);
    const double previous = (-12 - 8 / bench.state->preparation.SeepageGradient(2)) / 2;
    EXPECT_NEAR(previous, state.solution.SolvedBottomElev(2), 0.1);
    EXPECT_NEAR(state.preparation.SeepageEndElev(2), previous, 1e-9);
    EXPECT_EQ(bench.state->preparation.SeepageGradient(1), 0.0001);
}

TEST(FixedEarthSearch, ABottomThatSeepageNeverSettlesIsMessageH) {
    Bench bench;
    Problem& problem = bench.problem = seepageWall();
    problem.WallTopElev = 3.5;
    problem.AnchorElev = 1;
    problem.FSPassive = 1.25;
    const double top[2] = {3.5, -1.5};
    const double upper[2][5] = {{106, 107, 29, 5, 0.5}, {133, 108, 34, 8, -5}};
    const double lower[2][3] = {{126, 111, 900}, {118, 104, 1200}};
    for (const int side : {Right, Left}) {
        problem.SurfaceElev(side, 1) = top[side - 1];
        problem.SoilLayerCount(side) = 2;
        problem.SoilSatWeight(side, 1) = upper[side - 1][0];
        problem.SoilMoistWeight(side, 1) = upper[side - 1][1];
        problem.SoilFriction(side, 1) = upper[side - 1][2];
        problem.SoilWallFriction(side, 1) = upper[side - 1][3];
        problem.SoilBottomElev(side, 1) = upper[side - 1][4];
        problem.SoilSatWeight(side, 2) = lower[side - 1][0];
        problem.SoilMoistWeight(side, 2) = lower[side - 1][1];
        problem.SoilCohesion(side, 2) = lower[side - 1][2];
        problem.SoilBottomElev(side, 2) = NoLayerBottom;
    }
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 700;
    problem.WaterElev(Right) = 3;
    problem.WaterElev(Left) = -1;
    problem.SeepageElev = -3;
    problem.HLineCount = 1;
    problem.HLineElev(1) = -7;
    problem.HLineLoad(1) = 2700;
    solve(bench);
    EXPECT_TRUE(bench.state->failed());
    EXPECT_TRUE(bench.solved(1));
    EXPECT_FALSE(bench.solved(2));
    const double Zb = bench.state->solution.SolvedBottomElev(2);
    EXPECT_EQ(textsOf(bench), Texts{"DESIGN PENETRATION FOR ANCHORED WALL APPEARS\n"
                                    "TO BE OSCILLATING ABOUT ELEVATION = " +
                                    formatNumber(Zb, "####0.00") + " FT.\n\nUNABLE TO CONTINUE."});
}

/// Both sides clay that is only just strong enough under 10 FT of ground: 1200 PSF.
Bench clayWall(double cohesion) {
    Bench bench;
    bench.problem = plainCantilever();
    bench.problem.WallType = WallKind::Anchored;
    bench.problem.AnchorElev = -2;
    for (const int side : {Right, Left}) {
        bench.problem.SoilFriction(side, 1) = 0;
        bench.problem.SoilCohesion(side, 1) = cohesion;
    }
    return bench;
}

// The grid has rows down to -60, 50 FT below the lower ground, then one at -50060.
TEST(FixedEarthSearch, ABottomBelowTheRegularGridEndsItsTableItself) {
    Bench bench = clayWall(302); // a net resistance of 8 PSF: a bottom near -71
    solve(bench);
    ASSERT_TRUE(bench.solved(2));
    const LevelResult& level = bench.results->levels(2);
    EXPECT_LT(level.bottomElev, -60);
    EXPECT_EQ(level.solved.grid.ElevGrid(level.bottomIndex), -50060);
    const ResultDiagrams& diagrams = level.diagrams;
    EXPECT_EQ(diagrams.ResultElev(diagrams.RowCount), level.bottomElev);
    EXPECT_EQ(diagrams.ResultElev(diagrams.RowCount - 1), -60);
    // The last rows in balance: the shear at -60, 8 PSF over the rest, the toe's reaction.
    EXPECT_NEAR(diagrams.ResultShear(diagrams.RowCount),
                diagrams.ResultShear(diagrams.RowCount - 1) - 8 * (-60 - level.bottomElev), 0.1);
    EXPECT_NEAR(resultant(bench, 2).force, diagrams.ResultShear(diagrams.RowCount), 1.0);
}

TEST(FixedEarthSearch, ABottomWithinTheRegularGridEndsItsTableAtTheRowBelow) {
    Bench bench = clayWall(305); // 20 PSF: a bottom between -45 and -46
    solve(bench);
    ASSERT_TRUE(bench.solved(2));
    const LevelResult& level = bench.results->levels(2);
    EXPECT_GT(level.bottomElev, -46);
    EXPECT_EQ(level.diagrams.ResultElev(level.diagrams.RowCount), -46);
}

} // namespace
} // namespace korvane::test
