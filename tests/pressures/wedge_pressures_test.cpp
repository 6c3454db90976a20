#include "pressures/wedge_pressures.h"

#include "wedge_ground.h"

#include <cmath>
#include <numbers>

namespace korvane::test {
namespace {

constexpr double Degree = std::numbers::pi / 180;

class WedgePressuresTest : public testing::Test {
  protected:
    /// A grid of hand-made rows for a force curve of hand-made points: no search runs.
    void setForces(const std::vector<double>& elevations, const std::vector<double>& active,
                   const std::vector<double>& passive, int side = Right) {
        state.grid.NumElevs = static_cast<int>(elevations.size());
        for (int i = 1; i <= state.grid.NumElevs; ++i) {
            const auto at = static_cast<std::size_t>(i - 1);
            state.grid.ElevGrid(i) = elevations[at];
            state.wedge.WedgeActiveForce(i, side) = active[at];
            state.wedge.WedgePassiveForce(i, side) = passive[at];
        }
    }
    void pressHandMade(int side = Right) { bench.press(PressureMethod::Wedge, side); }
    double a(int i, int k, int side = Right) { return state.pressures.ActivePressures(side, i, k); }
    double p(int i, int k, int side = Right) {
        return state.pressures.PassivePressures(side, i, k);
    }

    WedgeBench bench;
    Problem& problem = bench.problem;
    State& state = *bench.state;
};

// ---- the surface ------------------------------------------------------------------------------

TEST_F(WedgePressuresTest, ACohesionlessSoilWithNoUniformLoadHasZeroPressureAtTheSurface) {
    bench.setGround(Right, {{0, 0}, {10, 2}});
    bench.buildGround();
    bench.press(PressureMethod::Sweep);
    const int s = bench.row(0);
    for (const int k : {1, 2}) {
        EXPECT_EQ(a(s, k), 0);
        EXPECT_EQ(p(s, k), 0);
    }
}

// 2 c sqrt(Kp) with Kp = 3, of a cohesion that counts.
TEST_F(WedgePressuresTest, ACohesionOfHalfATenThousandthIsNoneAndOneOfFiveIsSome) {
    for (const double cohesion : {0.00005, 0.0005}) {
        WedgeBench wall;
        wall.problem.SoilCohesion(Right, 1) = cohesion;
        wall.buildGround();
        wall.press(PressureMethod::FixedSurface);
        const double passive = wall.state->pressures.PassivePressures(Right, wall.row(0), 1);
        EXPECT_NEAR(passive, cohesion < 0.0001 ? 0 : 2 * cohesion * std::sqrt(3.0), 1e-9);
    }
}

TEST_F(WedgePressuresTest, LevelGroundTakesRankinesPressuresAtTheSurface) {
    problem.SoilCohesion(Right, 1) = 50;
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 300;
    bench.buildGround();
    bench.press(PressureMethod::FixedSurface);
    const int s = bench.row(0);
    EXPECT_NEAR(a(s, 1), 300 / 3.0 - 100 / std::sqrt(3.0), 1e-9);
    EXPECT_NEAR(p(s, 1), 300 * 3 + 100 * std::sqrt(3.0), 1e-9);
    EXPECT_EQ(a(s, 2), 0);
    EXPECT_EQ(p(s, 2), 0);
}

TEST_F(WedgePressuresTest, FactorsOfSafetyReduceTheSurfacePressuresButNotTheWallFriction) {
    problem.SoilCohesion(Right, 1) = 50;
    problem.SoilWallFriction(Right, 1) = 15;
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 300;
    bench.setFactors(1.2, 1.6);
    bench.buildGround();
    bench.press(PressureMethod::FixedSurface);
    const int s = bench.row(0);
    const double w = 15 * Degree;
    const double pa = std::atan(std::tan(30 * Degree) / 1.2);
    const double pp = std::atan(std::tan(30 * Degree) / 1.6);
    const double ra = std::sqrt(std::sin(w + pa) * std::sin(pa) / std::cos(w));
    const double Ka = std::pow(std::cos(pa) / (1 + ra), 2) / std::cos(w);
    const double rp = std::sqrt(std::sin(w + pp) * std::sin(pp) / std::cos(w));
    const double Kp = std::pow(std::cos(pp) / (1 - rp), 2) / std::cos(w);
    EXPECT_NEAR(a(s, 1), Ka * 300 - 100 / 1.2 * std::sqrt(Ka), 1e-9);
    EXPECT_NEAR(p(s, 1), Kp * 300 + 100 / 1.6 * std::sqrt(Kp), 1e-9);
}

TEST_F(WedgePressuresTest, ActivePressureAtTheSurfaceIsNotNegative) {
    problem.SoilCohesion(Right, 1) = 50;
    bench.buildGround();
    bench.press(PressureMethod::Sweep);
    EXPECT_EQ(a(bench.row(0), 1), 0);
    EXPECT_NEAR(p(bench.row(0), 1), 100 * std::sqrt(3.0), 1e-9);
}

TEST_F(WedgePressuresTest, WithoutAUniformLoadTheSurfaceValuesUseZero) {
    problem.SoilCohesion(Right, 1) = 50;
    problem.VUniformLoad(Right) = 999; // left from an earlier problem
    bench.buildGround();
    bench.press(PressureMethod::FixedSurface);
    EXPECT_EQ(a(bench.row(0), 1), 0);
    EXPECT_NEAR(p(bench.row(0), 1), 100 * std::sqrt(3.0), 1e-9);
}

TEST_F(WedgePressuresTest, TheRisesArctangentIsDividedByTheDistance) {
    // A rise of 500 on 1000: not atan(0.5) but atan(500) / 1000 = 0.0015688 radians.
    bench.setGround(Right, {{0, 0}, {1000, 500}});
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 300;
    bench.buildGround();
    bench.press(PressureMethod::FixedSurface);
    const double e = std::atan(500.0) / 1000;
    EXPECT_NEAR(e, 0.0015688, 1e-7);
    const double phi = 30 * Degree;
    const double ra = std::sqrt(std::sin(phi) * std::sin(phi - e) / std::cos(e));
    const double rp = std::sqrt(std::sin(phi) * std::sin(phi + e) / std::cos(e));
    EXPECT_NEAR(a(bench.row(0), 1), 300 * std::pow(std::cos(phi) / (1 + ra), 2), 1e-9);
    EXPECT_NEAR(p(bench.row(0), 1), 300 * std::pow(std::cos(phi) / (1 - rp), 2), 1e-9);
}

TEST_F(WedgePressuresTest, ASteepRiseCountsAsTheFrictionAngle) {
    // A rise of 2 on 2: atan(2) / 2 = 0.55 is more than 30 degrees, 0.52: e = phi, so r = 0.
    bench.setGround(Right, {{0, 0}, {2, 2}});
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 300;
    bench.buildGround();
    bench.press(PressureMethod::FixedSurface);
    EXPECT_NEAR(a(bench.row(0), 1), 300 * 0.75, 1e-9); // cos^2
}

TEST_F(WedgePressuresTest, FallingGroundCountsAsTheFrictionAngleForPassivePressure) {
    // b = atan(-2) / 10 < 0 < phi: e = phi, r^2 = sin(phi) sin(2 phi) / cos(phi) = 2 sin^2 = 0.5.
    bench.setGround(Right, {{0, 0}, {10, -2}});
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 300;
    bench.buildGround();
    bench.press(PressureMethod::FixedSurface);
    const double Kp = std::pow(std::cos(30 * Degree) / (1 - std::sqrt(0.5)), 2);
    EXPECT_NEAR(p(bench.row(0), 1), 300 * Kp, 1e-9);
    const double b = std::atan(-2.0) / 10;
    const double r = std::sqrt(std::sin(30 * Degree) * std::sin(30 * Degree - b) / std::cos(b));
    EXPECT_NEAR(a(bench.row(0), 1), 300 * std::pow(std::cos(30 * Degree) / (1 + r), 2), 1e-9);
}

// ---- below the surface ------------------------------------------------------------------------

TEST_F(WedgePressuresTest, PressureIsTheSlopeOfTheForceCurve) {
    // Force 20 z^2 on uneven rows: the parabola through three points has the slope 40 z.
    bench.buildGround();
    setForces({1, 0, -1, -3, -4.5, -10}, {0, 0, 20, 180, 405, 2000},
              {0, 0, 400, 3600, 8100, 40000});
    pressHandMade();
    // At the first row below the surface by hand: slopes 20 above and 80 below, heights 1 and 2.
    EXPECT_NEAR(a(3, 1), (2 * 20.0 + 1 * 80.0) / 3, 1e-9);
    EXPECT_NEAR(a(3, 1), 40, 1e-9);
    EXPECT_NEAR(a(4, 1), 120, 1e-9);
    EXPECT_NEAR(a(5, 2), 180, 1e-9);
    EXPECT_NEAR(p(5, 1), 20 * 180, 1e-9);
    for (int i = 3; i <= 5; ++i) {
        EXPECT_EQ(a(i, 1), a(i, 2));
        EXPECT_EQ(p(i, 1), p(i, 2));
    }
    // Last row: ga0 = (405 - 180) / 1.5 = 150, ga = 1595 / 5.5 = 290,
    // 150 + (5.5 + 1.5 + 5.5) x 140 / 7 = 400, again 40 z.
    EXPECT_NEAR(a(6, 2), 400, 1e-9);
}

TEST_F(WedgePressuresTest, TheLastRowsValueBelowItIsLeftAsItWas) {
    bench.buildGround();
    setForces({1, 0, -1, -3}, {0, 0, 20, 180}, {0, 0, 400, 3600});
    state.pressures.ActivePressures(Right, 4, 1) = 77;
    state.pressures.PassivePressures(Right, 4, 1) = 99999;
    pressHandMade();
    EXPECT_EQ(a(4, 1), 77);
    EXPECT_EQ(p(4, 1), 99999);
}

TEST_F(WedgePressuresTest, RowsDownToTheSurfaceAreZero) {
    bench.buildGround();
    setForces({2, 1, 0, -1, -3}, {0, 0, 0, 20, 180}, {0, 0, 0, 400, 3600});
    state.pressures.ActivePressures.fill(5);
    state.pressures.PassivePressures.fill(5);
    pressHandMade();
    for (int i = 1; i <= 3; ++i) {
        for (const int k : {1, 2}) {
            EXPECT_EQ(a(i, k), 0);
            EXPECT_EQ(p(i, k), 0);
        }
    }
    EXPECT_EQ(a(1, 1, Left), 5);
}

// ---- tension ----------------------------------------------------------------------------------

TEST_F(WedgePressuresTest, AFallInTheForceCurveIsRemovedWithARowAtEachZero) {
    // Slopes of the curve on rows 1 FT apart: 100, 100, -60, -60, 40, 40. Pressures at -1 to -5 are
    // the means of neighbours: 100, 20, -60, -10, 40. Zeros: 20 / 80 = 0.25 below -2, and
    // 10 / 50 = 0.2 below -4; the first interval has 0 above it.
    bench.buildGround();
    setForces({1, 0, -1, -2, -3, -4, -5, -6}, {0, 0, 100, 200, 140, 80, 120, 160},
              {0, 0, 9000, 18000, 27000, 36000, 45000, 54000});
    for (int i = 1; i <= 8; ++i) {
        for (const int k : {1, 2}) {
            state.pressures.WaterPressures(i, k) = 10 * state.grid.ElevGrid(i);
        }
    }
    pressHandMade();
    ASSERT_EQ(state.grid.NumElevs, 10);
    const double rows[] = {1, 0, -1, -2, -2.25, -3, -4, -4.2, -5, -6};
    const double active[] = {0, 0, 100, 20, 0, 0, 0, 0, 40, 40};
    for (int i = 1; i <= 10; ++i) {
        EXPECT_NEAR(state.grid.ElevGrid(i), rows[i - 1], 1e-12);
        EXPECT_NEAR(a(i, 2), active[i - 1], 1e-9) << i;
        EXPECT_NEAR(state.pressures.WaterPressures(i, 2), 10 * rows[i - 1], 1e-9);
        EXPECT_NEAR(p(i, 2), i < 3 ? 0 : 9000, 1e-9);
        if (i < 10) {
            EXPECT_EQ(a(i, 1), a(i, 2));
        }
    }
}

TEST_F(WedgePressuresTest, ValuesOf00001OrLessAreZero) {
    // Pressures at -1, -2, -3: 0.0001 itself, -0.00005 and 4.9999: no zero to insert.
    bench.buildGround();
    setForces({1, 0, -1, -2, -3, -4}, {0, 0, 0.0001, 0.0002, 0, 10},
              {0, 0, 9000, 18000, 27000, 36000});
    pressHandMade();
    EXPECT_EQ(state.grid.NumElevs, 6);
    EXPECT_EQ(a(3, 1), 0);
    EXPECT_EQ(a(4, 1), 0);
    EXPECT_NEAR(a(5, 1), 4.9999, 1e-9);
}

// A force that grows evenly: one pressure at all rows.
TEST_F(WedgePressuresTest, PressuresOfHalfATenThousandthAreZeroAndThoseOfFiveAreNot) {
    for (const double v : {0.00005, 0.0005}) {
        WedgeBench wall;
        wall.buildGround();
        ElevationGrid& grid = wall.state->grid;
        grid.NumElevs = 6;
        for (int i = 1; i <= 6; ++i) {
            grid.ElevGrid(i) = 2 - i;
            wall.state->wedge.WedgeActiveForce(i, Right) = i < 3 ? 0 : (i - 2) * v;
            wall.state->wedge.WedgePassiveForce(i, Right) = i < 3 ? 0 : (i - 2) * 9000.0;
        }
        wall.press(PressureMethod::Wedge);
        const double pressure = wall.state->pressures.ActivePressures(Right, 4, 1);
        EXPECT_NEAR(pressure, v < 0.0001 ? 0 : v, 1e-12);
    }
}

TEST_F(WedgePressuresTest, ARowInsertedOnTheLeftGoesThroughTheRightSidesArrays) {
    problem.SurfaceElev(Left, 1) = 0;
    bench.buildGround();
    setForces({1, 0, -1, -2, -3, -4}, {0, 0, 100, 200, 140, 80}, {0, 0, 9000, 18000, 27000, 36000},
              Left);
    for (int i = 1; i <= 6; ++i) {
        for (const int k : {1, 2}) { // a step of 7 at each row
            state.pressures.ActivePressures(Right, i, k) = -30 * state.grid.ElevGrid(i) + 7 * k;
            state.pressures.PassivePressures(Right, i, k) = -300 * state.grid.ElevGrid(i) + 7 * k;
        }
    }
    state.pressures.ActiveMark(Right, 5) = true;
    pressHandMade(Left);
    // 100, 20, -60: one zero, at -2.25.
    ASSERT_EQ(state.grid.NumElevs, 7);
    EXPECT_NEAR(state.grid.ElevGrid(5), -2.25, 1e-12);
    for (const int k : {1, 2}) {
        // From 60 + 7 below -2 to 90 + 14 above -3.
        EXPECT_NEAR(a(5, k), 67 + 0.25 * 37, 1e-9);
        EXPECT_NEAR(p(5, k), 607 + 0.25 * 307, 1e-9);
        EXPECT_NEAR(a(6, k), 90 + 7 * k, 1e-9);
    }
    EXPECT_FALSE(state.pressures.ActiveMark(Right, 5));
    EXPECT_TRUE(state.pressures.ActiveMark(Right, 6));
}

// ---- the floor on passive pressure ------------------------------------------------------------

TEST_F(WedgePressuresTest, PassivePressureIsAtLeastTheVerticalEffectiveStress) {
    // Moist 120 to -2 (the water), then saturated 130 less 60; a layer of 140 / 150 from -4 on.
    problem.SoilSatWeight(Right, 1) = 130;
    bench.setLayers(Right, {{-4, 0}});
    problem.SoilMoistWeight(Right, 2) = 140;
    problem.SoilSatWeight(Right, 2) = 150;
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 25;
    bench.setWater(-2, -2);
    bench.buildGround();
    setForces({1, 0, -1, -2, -3, -4, -5}, {0, 0, 0, 0, 0, 0, 0}, {0, 0, 1, 2, 3, 4, 5});
    pressHandMade();
    const double sv[] = {145, 265, 335, 405, 495};
    for (int i = 3; i <= 7; ++i) {
        for (const int k : {1, 2}) {
            EXPECT_NEAR(p(i, k), sv[i - 3], 1e-9) << i;
        }
    }
}

TEST_F(WedgePressuresTest, OnTheFloorARowExactlyWhereSeepageEndsIsOutsideTheZone) {
    problem.SoilSatWeight(Right, 1) = 130;
    problem.SoilSatWeight(Left, 1) = 130;
    problem.SurfaceElev(Left, 1) = 0;
    bench.setWater(0, -1);
    bench.setSeepage(-1, 0.25);
    bench.buildGround();
    state.preparation.SeepageEndElev(1) = -3;
    const std::vector<double> elevations{1, 0, -1, -2, -3, -4};
    const std::vector<double> none(6, 0.0);
    setForces(elevations, none, none, Right);
    pressHandMade(Right);
    // Right: above -1 not seeping 70; to -2 seeping 130 - 45 = 85; to -3, the end itself, 70.
    EXPECT_NEAR(p(3, 1), 70, 1e-9);
    EXPECT_NEAR(p(4, 1), 70 + 85, 1e-9);
    EXPECT_NEAR(p(5, 1), 70 + 85 + 70, 1e-9);
    EXPECT_NEAR(p(6, 1), 70 + 85 + 70 + 70, 1e-9);
    setForces(elevations, none, none, Left);
    pressHandMade(Left);
    // Left: moist 120 to the water at -1; to -2 seeping 130 - 75 = 55; then 70.
    EXPECT_NEAR(p(3, 1, Left), 120, 1e-9);
    EXPECT_NEAR(p(4, 1, Left), 120 + 55, 1e-9);
    EXPECT_NEAR(p(5, 1, Left), 120 + 55 + 70, 1e-9);
}

// ---- the whole --------------------------------------------------------------------------------

TEST_F(WedgePressuresTest, TheFixedSurfaceGivesRankinesPressuresOnLevelGround) {
    // Ka (g z + q) - 2 c sqrt(Ka), zero at z = 2 c / (g sqrt(Ka)) - q / g; Kp (...) + 2 c sqrt(Kp).
    problem.SoilCohesion(Right, 1) = 150;
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 100;
    bench.buildGround();
    const int rows = state.grid.NumElevs;
    bench.press(PressureMethod::FixedSurface);
    const double root3 = std::sqrt(3.0);
    const double zero = 300 * root3 / 120 - 100 / 120.0; // 3.497
    ASSERT_EQ(state.grid.NumElevs, rows + 1);
    for (int i = bench.row(0) + 2; i < state.grid.NumElevs; ++i) {
        const double z = -state.grid.ElevGrid(i);
        const double scale = 1e-9 * (120 * z + 1000);
        EXPECT_NEAR(p(i, 1), 3 * (120 * z + 100) + 300 * root3, 3 * scale) << z;
        EXPECT_NEAR(a(i, 1), std::max(0.0, (120 * z + 100) / 3 - 300 / root3), scale) << z;
    }
    EXPECT_NEAR(-bench.elevation(bench.row(-4) - 1), zero, 1e-9);
}

TEST_F(WedgePressuresTest, TheSweepsActiveForceNeverFallsBelowZero) {
    problem.SoilFriction(Right, 1) = 0;
    problem.SoilCohesion(Right, 1) = 500;
    bench.buildGround();
    bench.press(PressureMethod::Sweep);
    const int shallow = bench.row(-5); // 4 c / g is 16.7 FT
    EXPECT_EQ(state.wedge.WedgeActiveForce(shallow, Right), 0);
    bench.buildGround();
    bench.press(PressureMethod::FixedSurface);
    EXPECT_LT(state.wedge.WedgeActiveForce(bench.row(-5), Right), 0); // the fixed surface keeps it
}

TEST_F(WedgePressuresTest, TheNoSolutionFlagIsClearedForItsSideAndLevel) {
    bench.buildGround();
    state.wedge.WedgeNoSolution.fill(1);
    bench.press(PressureMethod::FixedSurface, Left, 1);
    EXPECT_EQ(state.wedge.WedgeNoSolution(1, Left), 0);
    EXPECT_EQ(state.wedge.WedgeNoSolution(1, Right), 1);
    EXPECT_EQ(state.wedge.WedgeNoSolution(2, Left), 1);
}

TEST_F(WedgePressuresTest, AWedgeSideAfterACoefficientSideKeepsOneGrid) {
    // Right by coefficients, left in clay by a wedge: the left side's new row cuts no right
    // diagram.
    problem.SoilCohesion(Left, 1) = 200;
    bench.setGround(Left, {{0, -10}, {20, -12}});
    bench.buildGround();
    ComputeCoefficientPressures(state, Right, 1);
    const int rows = state.grid.NumElevs;
    bench.press(PressureMethod::FixedSurface, Left);
    ASSERT_GT(state.grid.NumElevs, rows);
    for (int i = bench.row(0) + 1; i <= state.grid.NumElevs - 1; ++i) {
        EXPECT_NEAR(a(i, 1), 40 * -state.grid.ElevGrid(i), 1e-6);
        EXPECT_NEAR(p(i, 1), 360 * -state.grid.ElevGrid(i), 1e-6);
    }
}

// Whatever the ground: finite pressures on a descending grid, no tension, the floor held, marks by
// the sweep alone. Faults other than the told run-time errors (none here) would end the test.
TEST(WedgePressuresInvariants, RandomProblems) {
    Dice dice(45);
    int inserted = 0;
    for (int run = 0; run < 300; ++run) {
        const PressureMethod method =
            run % 2 == 0 ? PressureMethod::Sweep : PressureMethod::FixedSurface;
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, run % 3 == 0);
        drawn.buildGround();
        State& state = *drawn.state;
        const int rowsBefore = state.grid.NumElevs;
        for (const int side : {Right, Left}) {
            drawn.press(method, side);
        }
        const int rows = state.grid.NumElevs;
        inserted += rows - rowsBefore;
        for (const int side : {Right, Left}) {
            const PointGround ground(state, side, 1);
            const int surface = firstRowAt(state.grid, drawn.problem.SurfaceElev(side, 1));
            double sv =
                drawn.problem.VUniformCount(side) != 0 ? drawn.problem.VUniformLoad(side) : 0;
            for (int i = 1; i <= rows; ++i) {
                if (i > 1) {
                    ASSERT_LT(state.grid.ElevGrid(i), state.grid.ElevGrid(i - 1)) << run;
                }
                const bool below = i > surface;
                if (below) {
                    const double top = state.grid.ElevGrid(i - 1);
                    const double end = state.grid.ElevGrid(i);
                    // What a point in the interval weighs as the plane's own layer; the interval
                    // that ends exactly where seepage ends is taken as still water.
                    double weight =
                        ground.unitWeight(0, (top + end) / 2, ground.layerAt(0, (top + end) / 2));
                    if (drawn.problem.WaterDataKind == WaterData::Elevations &&
                        drawn.problem.SeepageKind != Seepage::None &&
                        end == state.preparation.SeepageEndElev(1) &&
                        end < drawn.problem.WaterElev(side)) {
                        const int layer = ground.layerAt(0, (top + end) / 2);
                        weight = drawn.problem.SoilSatWeight(side, layer) -
                                 drawn.problem.WaterUnitWeight;
                    }
                    sv += (top - end) * weight;
                }
                for (const int k : {1, 2}) {
                    const double active = state.pressures.ActivePressures(side, i, k);
                    const double passive = state.pressures.PassivePressures(side, i, k);
                    ASSERT_TRUE(std::isfinite(active) && std::isfinite(passive)) << run;
                    ASSERT_GE(active, 0) << run;
                    if (below) {
                        ASSERT_GE(passive, sv - 1e-6 * std::abs(sv) - 1e-6) << run << " row " << i;
                    }
                }
                if (method == PressureMethod::FixedSurface) {
                    ASSERT_FALSE(state.pressures.ActiveMark(side, i));
                    ASSERT_FALSE(state.pressures.PassiveMark(side, i));
                }
            }
        }
    }
    EXPECT_GT(inserted, 0);
}

// Ground as steep as a cliff and layer boundaries that cross one another, which no method is made
// for: every run ends in finite pressures or in a told run-time error.
TEST(WedgePressuresInvariants, AnyGroundEndsInPressuresOrInAToldError) {
    Dice dice(46);
    int solved = 0;
    for (int run = 0; run < 400; ++run) {
        WedgeBench drawn;
        Problem& problem = drawn.problem;
        drawWedgeProblem(drawn, dice, true);
        for (const int side : {Right, Left}) {
            for (int layer = 1; layer < problem.SoilLayerCount(side); ++layer) {
                problem.SoilBottomSlope(side, layer) = dice.between(-2, 2);
            }
            for (int point = 2; point <= problem.SurfacePointCount(side); ++point) {
                problem.SurfaceElev(side, point) += dice.between(-30, 30);
            }
        }
        const int error = errorOf([&] {
            drawn.buildGround();
            for (const int side : {Right, Left}) {
                drawn.press(run % 2 == 0 ? PressureMethod::Sweep : PressureMethod::FixedSurface,
                            side);
            }
        });
        EXPECT_TRUE(error == 0 || error == 5 || error == 9 || error == 11) << run << " " << error;
        if (error != 0) {
            continue;
        }
        ++solved;
        const State& state = *drawn.state;
        for (const int side : {Right, Left}) {
            for (int i = 1; i <= state.grid.NumElevs; ++i) {
                for (const int k : {1, 2}) {
                    ASSERT_TRUE(std::isfinite(state.pressures.ActivePressures(side, i, k)) &&
                                std::isfinite(state.pressures.PassivePressures(side, i, k)))
                        << run;
                }
            }
        }
    }
    EXPECT_GT(solved, 300);
}

} // namespace
} // namespace korvane::test
