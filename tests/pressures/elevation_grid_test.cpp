#include "support/pressure_bench.h"

#include <algorithm>
#include <random>

namespace korvane::test {
namespace {

class ElevationGridTest : public testing::Test {
  protected:
    void setGround(double wallTop, double right, double left) {
        problem.WallTopElev = wallTop;
        problem.SurfaceElev(Right, 1) = right;
        problem.SurfaceElev(Left, 1) = left;
    }
    /// Water with seepage that ends at `end`.
    void setSeepage(double end) {
        problem.WaterDataKind = WaterData::Elevations;
        problem.WaterUnitWeight = 62.4;
        problem.WaterElev(Right) = -2;
        problem.WaterElev(Left) = -12;
        problem.SeepageKind = Seepage::Given;
        problem.SeepageElev = -4;
        problem.SeepageGradient(1) = problem.SeepageGradient(2) = 0.2;
        bench.state->preparation.SeepageEndElev.fill(end);
    }
    void build(int level = 1) {
        bench.takeSeepage();
        BuildElevationGrid(*bench.state, level);
    }
    /// How many rows lie within 1E-6 FT of an elevation.
    int rowsAt(double elevation) const {
        int count = 0;
        for (int i = 1; i <= grid.NumElevs; ++i) {
            count += std::abs(grid.ElevGrid(i) - elevation) < 1e-6;
        }
        return count;
    }
    double last(int back = 0) const { return grid.ElevGrid(grid.NumElevs - back); }

    PressureBench bench;
    Problem& problem = bench.problem;
    ElevationGrid& grid = bench.state->grid;
};

TEST_F(ElevationGridTest, LevelGroundAtTheTopGivesFootPointsDownFiftyFeetAndTwoFarPoints) {
    setGround(0, 0, 0);
    build();
    ASSERT_EQ(grid.NumElevs, 51 + 2);
    for (int i = 1; i <= 51; ++i) {
        EXPECT_EQ(grid.ElevGrid(i), 1 - i);
    }
    EXPECT_EQ(last(1), -50.0 - 50000.0);
    EXPECT_EQ(last(), -50.0 - 100000.0);
}

TEST_F(ElevationGridTest, FiveExposedHeightsBelowTheLowerSurfaceWhereThatIsLower) {
    setGround(0, 0, -20); // -20 - 5 x 20
    build();
    EXPECT_EQ(grid.NumElevs, 121 + 2);
    EXPECT_EQ(last(2), -120);
}

TEST_F(ElevationGridTest, PointsCountFromTheWallTopBesideTheElevationsOfTheData) {
    setGround(10.5, 10.5, 8);
    build();
    EXPECT_EQ(grid.ElevGrid(1), 10.5);
    EXPECT_EQ(grid.ElevGrid(2), 9.5);
    EXPECT_EQ(grid.ElevGrid(3), 8.5);
    EXPECT_EQ(grid.ElevGrid(4), 8.0);
    EXPECT_EQ(grid.ElevGrid(5), 7.5);
    EXPECT_EQ(grid.ElevGrid(6), 7.0); // a foot below the lower surface
    EXPECT_EQ(grid.ElevGrid(7), 6.5);
}

TEST_F(ElevationGridTest, WaterAboveTheWallTopIsNoPoint) {
    setSeepage(-17);
    problem.SeepageKind = Seepage::None;
    problem.WaterElev(Right) = 3.3;
    problem.WaterElev(Left) = -4.25;
    build();
    EXPECT_EQ(rowsAt(3.3), 0);
    EXPECT_EQ(rowsAt(-4.25), 1);
    EXPECT_EQ(grid.ElevGrid(1), 0);
}

TEST_F(ElevationGridTest, AnAnchorAtASurfaceElevationGivesOnePoint) {
    setGround(0, -2.5, -10);
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -2.5;
    build();
    EXPECT_EQ(rowsAt(-2.5), 1);

    problem.AnchorElev = -3.25;
    build();
    EXPECT_EQ(rowsAt(-3.25), 1);
    problem.WallType = WallKind::Cantilever; // without an anchor its elevation counts for nothing
    build();
    EXPECT_EQ(rowsAt(-3.25), 0);
}

TEST_F(ElevationGridTest, AHundredFootWallEndsAtTwoHundredStepsAndNotAtTheElevationLimit) {
    setGround(0, 0, -100);
    build();
    EXPECT_EQ(grid.NumElevs, 201 + 2);
    EXPECT_EQ(last(2), -200);
    EXPECT_EQ(last(1), -200.0 - 50000.0);
    EXPECT_EQ(last(), -200.0 - 100000.0);
}

TEST_F(ElevationGridTest, SeepageEndBelowTheLowestWorkingPointLandsBetweenThatAndTheFarPoints) {
    setSeepage(-1234.5);
    build();
    EXPECT_EQ(last(2), -1234.5);
    EXPECT_EQ(grid.SeepageEndIndex(1), grid.NumElevs - 2);
    EXPECT_EQ(last(3), -60);             // 10 FT exposed: 50 FT below the lower surface
    EXPECT_EQ(last(1), -60.0 - 50000.0); // the far points do not follow it
}

TEST_F(ElevationGridTest, SeepageEndBelowEveryPointBecomesTheLastOne) {
    setSeepage(-150000);
    build();
    EXPECT_EQ(last(), -150000);
    EXPECT_EQ(last(1), -60.0 - 100000.0);
    EXPECT_EQ(grid.SeepageEndIndex(1), grid.NumElevs);
}

TEST_F(ElevationGridTest, SeepageEndBetweenPointsIsInsertedInItsPlaceForItsLevelAlone) {
    setSeepage(-17.4);
    grid.SeepageEndIndex(1) = 77;
    bench.state->preparation.SeepageEndElev(1) = -33.3;
    build(2);
    EXPECT_EQ(rowsAt(-17.4), 1);
    EXPECT_EQ(grid.ElevGrid(grid.SeepageEndIndex(2)), -17.4);
    EXPECT_EQ(rowsAt(-33.3), 0);
    EXPECT_EQ(grid.SeepageEndIndex(1), 77);
}

TEST_F(ElevationGridTest, SeepageEndOnAPointOrNoiseAwayFromItIsThatPoint) {
    for (const double noise : {0.0, 8e-10, -8e-10}) {
        setSeepage(-17 + noise);
        build();
        EXPECT_EQ(rowsAt(-17), 1);
        EXPECT_EQ(bench.state->preparation.SeepageEndElev(1), -17.0);
        EXPECT_EQ(grid.ElevGrid(grid.SeepageEndIndex(1)), -17.0);
    }
    setSeepage(-17.00001);
    build();
    EXPECT_EQ(grid.ElevGrid(grid.SeepageEndIndex(1)), -17.00001);
    EXPECT_EQ(grid.ElevGrid(grid.SeepageEndIndex(1) - 1), -17.0);
}

TEST_F(ElevationGridTest, WithoutSeepageOrGradientTheEndIsNoPointAndItsIndexStays) {
    setSeepage(-17.4);
    grid.SeepageEndIndex(1) = 77;
    problem.SeepageGradient(1) = 0;
    build();
    EXPECT_EQ(rowsAt(-17.4), 0);
    problem.SeepageGradient(1) = 0.2;
    problem.SeepageKind = Seepage::None;
    build();
    EXPECT_EQ(rowsAt(-17.4), 0);
    EXPECT_EQ(rowsAt(-4), 1); // a regular point
    EXPECT_EQ(grid.SeepageEndIndex(1), 77);
}

TEST_F(ElevationGridTest, ElevationsOfTheDataMergeOnlyWhereTheyAreExactlyEqual) {
    setGround(12, 10.0, 10.00001);
    problem.HLineCount = 2;
    problem.HLineElev(1) = 10.0;
    problem.HLineElev(2) = 9.25;
    build();
    int near = 0;
    for (int i = 1; i <= grid.NumElevs; ++i) {
        near += std::abs(grid.ElevGrid(i) - 10.0) < 0.001;
    }
    EXPECT_EQ(near, 2); // 10.0 and 10.00001; the regular point and the line load are 10.0
    EXPECT_EQ(rowsAt(9.25), 1);
}

TEST_F(ElevationGridTest, FloatingPointNoiseMakesNoSecondRow) {
    // 10.1 - 3 and 7.1, 10.1 - 6 and 5.1 - 1 differ in their last bits.
    setGround(10.1, 10.1, 5.1);
    problem.HLineCount = 1;
    problem.HLineElev(1) = 7.1;
    problem.HDistCount = 2;
    problem.HDistElev(1) = 8.1;
    problem.HDistElev(2) = 3.1;
    build();
    for (int i = 2; i <= grid.NumElevs; ++i) {
        EXPECT_GT(grid.ElevGrid(i - 1) - grid.ElevGrid(i), 0.5);
    }
    // The data's own values stand, so that later exact comparisons with them hold.
    for (const double own : {5.1, 7.1, 8.1, 3.1}) {
        EXPECT_NE(std::find(grid.ElevGrid.begin(), grid.ElevGrid.end(), own), grid.ElevGrid.end());
    }
}

TEST_F(ElevationGridTest, LayerBottomsAndLoadsArePointsButTheLastBottomNever) {
    setLayerBottoms(problem, Right, {-3.3, -7.7});
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -5.6;
    problem.WaterPressElev(2) = -6.6;
    problem.WaterPressElev(3) = -6.9; // stale
    build();
    for (const double elevation : {-3.3, -7.7, -5.6, -6.6}) {
        EXPECT_EQ(rowsAt(elevation), 1) << elevation;
    }
    EXPECT_EQ(rowsAt(-6.9), 0);
    EXPECT_EQ(rowsAt(NoLayerBottom), 0);
}

TEST_F(ElevationGridTest, RowsAreFoundWithinTheToleranceFirstAndLast) {
    setGround(0, 0, -10);
    problem.HLineCount = 2;
    problem.HLineElev(1) = -4.00005;
    problem.HLineElev(2) = -4.0003;
    build();
    EXPECT_EQ(firstRowAt(grid, -4), 5);
    EXPECT_EQ(lastRowAt(grid, -4), 6);
    EXPECT_EQ(firstRowAt(grid, -4.5), 0);
    EXPECT_EQ(lastRowAt(grid, -4.5), 0);
}

TEST_F(ElevationGridTest, RandomProblemsGiveAStrictlyDescendingGridOfAllTheirElevations) {
    std::mt19937 random(17);
    const auto between = [&](double low, double high) {
        const double x = std::uniform_real_distribution<>(low, high)(random);
        return std::round(x * 10) / 10; // as users type them, so that elevations meet often
    };
    for (int run = 0; run < 2000; ++run) {
        problem = plainCantilever();
        const double top = between(-100, 500);
        setGround(top, top - between(0, 5), top - between(0, 60));
        std::vector<double> own{top, problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1)};
        problem.WallType = WallKind::Anchored;
        own.push_back(problem.AnchorElev = top - between(0, 10));
        problem.HLineCount = 5;
        for (int i = 1; i <= 5; ++i) {
            own.push_back(problem.HLineElev(i) = top - between(-5, 40));
        }
        setSeepage(top - between(20, 2000));
        problem.WaterElev(Right) = top - between(-5, 10);
        problem.WaterElev(Left) = top - between(11, 60);
        own.push_back(problem.WaterElev(Left));
        own.push_back(problem.SeepageElev = top - between(5, 20));
        build();
        own.push_back(bench.state->preparation.SeepageEndElev(1));

        ASSERT_LE(grid.NumElevs, 301);
        for (int i = 2; i <= grid.NumElevs; ++i) {
            ASSERT_GT(grid.ElevGrid(i - 1), grid.ElevGrid(i)) << "run " << run;
        }
        for (const double elevation : own) {
            auto* const end = grid.ElevGrid.begin() + grid.NumElevs;
            ASSERT_NE(std::find(grid.ElevGrid.begin(), end, elevation), end) << elevation;
        }
    }
}

TEST_F(ElevationGridTest, ElevationsBeyondADoubleAreAnOverflow) {
    setGround(-1.7e308, -1.7e308, -1.7e308);
    EXPECT_EQ(errorOf([&] { build(); }), 6);
}

} // namespace
} // namespace korvane::test
