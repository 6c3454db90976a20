#include "support/pressure_bench.h"

#include <cmath>

namespace korvane::test {
namespace {

constexpr double Gamma = 62.4; // PCF

/// Wall top and right ground at 0, left ground at -10.
class WaterPressuresTest : public testing::Test {
  protected:
    void setWater(double right, double left) {
        problem.WaterDataKind = WaterData::Elevations;
        problem.WaterUnitWeight = Gamma;
        problem.WaterElev(Right) = right;
        problem.WaterElev(Left) = left;
    }
    void setSeepage(double elevation, double gradient) {
        problem.SeepageKind = Seepage::Given;
        problem.SeepageElev = elevation;
        problem.SeepageGradient.fill(gradient);
    }
    /// Both values of a row.
    void expectWater(double elevation, double expected) {
        // Sums of products of round numbers: exact but for rounding.
        EXPECT_NEAR(bench.water(elevation, 1), expected, 1e-9) << elevation;
        EXPECT_NEAR(bench.water(elevation, 2), expected, 1e-9) << elevation;
    }

    PressureBench bench;
    Problem& problem = bench.problem;
    ElevationGrid& grid = bench.state->grid;
    Array<double, 301, 2>& WaterPressures = bench.state->pressures.WaterPressures;
};

TEST_F(WaterPressuresTest, WithoutWaterEveryRowIsZero) {
    WaterPressures.fill(99);
    bench.build();
    EXPECT_EQ(WaterPressures, (Array<double, 301, 2>{}));
}

TEST_F(WaterPressuresTest, EqualWaterElevationsCancelExactly) {
    setWater(-5.3, -5.3);
    bench.build();
    EXPECT_EQ(WaterPressures, (Array<double, 301, 2>{}));
}

TEST_F(WaterPressuresTest, HydrostaticPressureOfBothSides) {
    setWater(-3, -12);
    bench.build();
    expectWater(-2, 0);
    expectWater(-3, 0);
    expectWater(-4, Gamma);
    expectWater(-12, 9 * Gamma);
    expectWater(-13, 9 * Gamma); // constant below the lower water
    expectWater(-60, 9 * Gamma);
}

TEST_F(WaterPressuresTest, LeftWaterUnderAllSoilPushesBackOnlyBelowItself) {
    setWater(-3, -500);
    bench.build();
    expectWater(-60, 57 * Gamma);
    expectWater(-500, 497 * Gamma);
    expectWater(-50500, 497 * Gamma);
}

TEST_F(WaterPressuresTest, HigherWaterOnTheLeftPushesToTheRight) {
    setWater(-12, -8);
    bench.build();
    expectWater(-10, -2 * Gamma);
    expectWater(-20, -4 * Gamma);
}

TEST_F(WaterPressuresTest, WaterAboveTheWallTopStartsAtTheFirstRowBelowThePointOnly) {
    setWater(3, -10);
    bench.build();
    EXPECT_DOUBLE_EQ(WaterPressures(1, 1), 3 * Gamma);
    EXPECT_EQ(WaterPressures(1, 2), 0);
    expectWater(-4, 7 * Gamma);
    expectWater(-20, 13 * Gamma);
}

TEST_F(WaterPressuresTest, AWaterRowThatASearchHasOverwrittenAddsNothing) {
    setWater(-3.5, -12);
    bench.build();
    grid.ElevGrid(bench.row(-3.5)) = -3.25;
    ComputeWaterPressures(*bench.state, 1);
    expectWater(-4, 0);
    expectWater(-20, -8 * Gamma); // the left side alone
}

// Head 8 FT, seepage from -4 down the right face and up the left one to -10, gradient 0.4:
// it ends at (-4 - 10 - 8 / 0.4) / 2 = -17.
TEST_F(WaterPressuresTest, SeepageTakesOffTheHeadLostAlongBothFaces) {
    setWater(-2, -10);
    setSeepage(-4, 0.4);
    bench.build();
    EXPECT_DOUBLE_EQ(bench.state->preparation.SeepageEndElev(1), -17);
    expectWater(-4, 2 * Gamma);
    expectWater(-6, (4 - 0.4 * 2) * Gamma);
    expectWater(-10, (8 - 0.4 * 6) * Gamma);
    expectWater(-12, (8 - 0.4 * (8 + 2)) * Gamma);
    expectWater(-16, (8 - 0.4 * (12 + 6)) * Gamma);
    expectWater(-17, 0);
    for (int i = bench.row(-17) + 1; i <= grid.NumElevs; ++i) {
        EXPECT_EQ(WaterPressures(i, 1), 0);
        EXPECT_EQ(WaterPressures(i, 2), 0);
    }
}

TEST_F(WaterPressuresTest, NetWaterIsZeroAtAndBelowTheEndOfSeepageBetweenRegularPoints) {
    setWater(-2, -10);
    for (const double gradient : {0.0001, 0.17, 0.35, 0.9}) {
        setSeepage(-4, gradient);
        bench.build();
        const int end = grid.SeepageEndIndex(1);
        EXPECT_DOUBLE_EQ(grid.ElevGrid(end), (-4 - 10 - 8 / gradient) / 2);
        EXPECT_NEAR(WaterPressures(end, 1), 0, 1e-7); // rounding of products up to 2.5E6
        EXPECT_GT(WaterPressures(end - 1, 1), 0);
        for (int i = end + 1; i <= grid.NumElevs; ++i) {
            EXPECT_EQ(WaterPressures(i, 1), 0);
            EXPECT_EQ(WaterPressures(i, 2), 0);
        }
    }
}

TEST_F(WaterPressuresTest, LeftWaterAboveItsGroundLosesHeadFromTheGroundOnly) {
    setWater(-2, -8);
    setSeepage(-4, 0.25);
    bench.build();
    EXPECT_EQ(seepageExitElev(problem), -10);
    EXPECT_EQ(seepageHead(problem), 6); // of the true water, not of the ground
    EXPECT_DOUBLE_EQ(bench.state->preparation.SeepageEndElev(1), (-4 - 10 - 24) / 2.0);
    expectWater(-9, (6 - 0.25 * 5) * Gamma);
    expectWater(-11, (6 - 0.25 * (7 + 1)) * Gamma);
    expectWater(-19, 0);
}

TEST_F(WaterPressuresTest, LeftWaterBelowItsGroundLosesHeadFromTheWater) {
    setWater(-2, -12);
    setSeepage(-4, 0.5);
    bench.build();
    EXPECT_EQ(seepageExitElev(problem), -12);
    expectWater(-11, (9 - 0.5 * 7) * Gamma);
    expectWater(-13, (10 - 0.5 * (9 + 1)) * Gamma);
}

// A row at exactly 0.1 FT from the end stops the first pass and not the second: elevations around 0
// make that distance exact.
TEST_F(WaterPressuresTest, ARowAtATenthOfAFootEndsTheRightFaceLossButNotTheLeftOne) {
    problem.WallTopElev = problem.SurfaceElev(Right, 1) = 20;
    problem.SurfaceElev(Left, 1) = 10;
    problem.HLineCount = 1;
    problem.HLineElev(1) = 0.1;
    setWater(18, 10);
    setSeepage(16, 8.0 / 26.0); // 16 + 10 - 8 / (8 / 26) = 0
    bench.takeSeepage();
    bench.state->preparation.SeepageEndElev(1) = 0;
    BuildElevationGrid(*bench.state, 1);
    ComputeWaterPressures(*bench.state, 1);
    const double g = 8.0 / 26.0;
    expectWater(0.1, (8 - g * (15.9 + 9.9)) * Gamma);
    expectWater(0, (8 - g * 10) * Gamma); // the left face alone
    expectWater(-1, 0);
}

TEST_F(WaterPressuresTest, WithoutARowNearTheEndNothingIsCleared) {
    setWater(-2, -10);
    setSeepage(-4, 0.4);
    bench.build();
    bench.state->preparation.SeepageEndElev(1) = -17.5;
    ComputeWaterPressures(*bench.state, 1);
    expectWater(-20, (8 - 0.4 * (16 + 10)) * Gamma);
}

TEST_F(WaterPressuresTest, ASeepagePassWithoutItsRowStartsAtTheFirstRow) {
    setWater(-2, -10);
    setSeepage(-4.5, 0.4);
    bench.build();
    grid.ElevGrid(bench.row(-4.5)) = -4.25;
    ComputeWaterPressures(*bench.state, 1);
    expectWater(0, 0.4 * 4.5 * Gamma);
    expectWater(-6, (4 - 0.4 * 1.5) * Gamma);
}

TEST_F(WaterPressuresTest, EachLevelHasItsOwnSeepage) {
    setWater(-2, -10);
    setSeepage(-4, 0.4);
    problem.SeepageGradient(2) = 0.2; // ends at (-14 - 40) / 2 = -27
    bench.build(2);
    expectWater(-12, (8 - 0.2 * (8 + 2)) * Gamma);
    expectWater(-27, 0);
}

TEST_F(WaterPressuresTest, ATableStartsWithAStepAndKeepsItsLastValueBelow) {
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 3;
    const double elevations[] = {-2, -6, -9};
    const double values[] = {100, 300, 60};
    for (int i = 1; i <= 3; ++i) {
        problem.WaterPressElev(i) = elevations[i - 1];
        problem.WaterPressure(i) = values[i - 1];
    }
    bench.build();
    expectWater(-1, 0);
    EXPECT_EQ(bench.water(-2, 2), 0);
    EXPECT_EQ(bench.water(-2, 1), 100);
    expectWater(-3, 150);
    expectWater(-6, 300);
    expectWater(-7, 220);
    expectWater(-9, 60);
    expectWater(-10, 60);
    expectWater(-50060, 60);
}

TEST_F(WaterPressuresTest, SeepageValuesOfATrialBottom) {
    setWater(-2, -10);
    setSeepage(-4, 0.4);
    problem.SeepageKind = Seepage::Automatic;
    bench.state->preparation.SeepageGradientLimit = 0.9999;
    bench.takeSeepage();
    // Head 8 over the way from -4 down to -20 and up to -10; it ends at the bottom itself.
    setSeepageForBottom(*bench.state, 2, -20);
    EXPECT_DOUBLE_EQ(bench.state->preparation.SeepageGradient(2), 8.0 / 26.0);
    EXPECT_DOUBLE_EQ(bench.state->preparation.SeepageEndElev(2), -20);
    EXPECT_EQ(bench.state->preparation.SeepageGradient(1), 0.4);

    // Cut to the limit it ends further down: (-4 - 10 - 8 / 0.2) / 2.
    bench.state->preparation.SeepageGradientLimit = 0.2;
    setSeepageForBottom(*bench.state, 1, -20);
    EXPECT_EQ(bench.state->preparation.SeepageGradient(1), 0.2);
    EXPECT_DOUBLE_EQ(bench.state->preparation.SeepageEndElev(1), -27);
}

TEST_F(WaterPressuresTest, AWayOrAGradientOfZeroIsADivisionByZero) {
    setWater(-2, -10);
    setSeepage(-4, 0);
    EXPECT_EQ(errorOf([&] { seepageEndElevation(problem, 0); }), 11);
    EXPECT_EQ(errorOf([&] { seepageGradientForBottom(problem, -7); }), 11);
}

} // namespace
} // namespace korvane::test
