#include "pressures/wedge_load.h"
#include "pressures/wedge_pieces.h"
#include "pressures/wedge_regions.h"
#include "wedge_ground.h"

#include <cmath>

namespace korvane::test {
namespace {

// ---- WedgeWeight by hand ----------------------------------------------------------------------

class WedgeWeightTest : public testing::Test {
  protected:
    /// Weights that tell the shares apart: moist 100, saturated 130, water 60.
    WedgeWeightTest() {
        for (const int side : {Right, Left}) {
            problem.SoilMoistWeight(side, 1) = 100;
            problem.SoilSatWeight(side, 1) = 130;
        }
    }

    WedgeBench bench;
    Problem& problem = bench.problem;
    Array<double, 2>& SeepageEndElev = bench.state->preparation.SeepageEndElev;
};

TEST_F(WedgeWeightTest, ATriangleOfDrySoilUnderLevelGround) {
    bench.buildGround();
    // 10 x 20 / 2 x 100
    EXPECT_DOUBLE_EQ(bench.weight(Right, 0, -20, 10, 0, 1), 10000);
}

TEST_F(WedgeWeightTest, SlopingGroundAddsItsTriangle) {
    bench.setGround(Right, {{0, 0}, {5, 2}, {10, 2}});
    bench.buildGround();
    // Below 0: 10 x 20 / 2; above: 5 x 2 / 2 + 5 x 2; and the plane ends at (10, 0).
    EXPECT_NEAR(bench.weight(Right, 0, -20, 10, 0, 1), (100 + 5 + 10) * 100, 1e-9);
}

TEST_F(WedgeWeightTest, AnOverlyingLayerWeighsByItsOwnArea) {
    bench.setLayers(Right, {{-4, 0}});
    problem.SoilMoistWeight(Right, 2) = 110;
    bench.buildGround();
    // Piece (0, -20) to (8, -4): layer 2 has 8 x 16 / 2, layer 1 has 8 x 4.
    EXPECT_NEAR(bench.weight(Right, 0, -20, 8, -4, 2), 64 * 110 + 32 * 100, 1e-9);
    // The outer piece (8, -4) to (10, 0) lies in layer 1 alone: 2 x 4 / 2.
    EXPECT_NEAR(bench.weight(Right, 8, -4, 10, 0, 1), 4 * 100, 1e-9);
}

TEST_F(WedgeWeightTest, AnOverlyingLayerEndsAtItsReach) {
    // Layer 1 is the triangle (0, 0), (8, 0), (0, -4); the piece runs farther out.
    bench.setLayers(Right, {{-4, 0.5}});
    problem.SoilMoistWeight(Right, 2) = 110;
    bench.buildGround();
    const double lower = 12.0 * 12 / 2 - 16; // below the ground, less layer 1
    EXPECT_NEAR(bench.weight(Right, 0, -12, 12, 0, 2), lower * 110 + 16 * 100, 1e-9);
    // Beyond the reach of layer 1 it weighs nothing.
    EXPECT_NEAR(bench.weight(Right, 9, -3, 12, 0, 2), 4.5 * 110, 1e-9);
}

TEST_F(WedgeWeightTest, SoilBelowTheWaterIsBuoyant) {
    bench.setWater(-8, -8);
    bench.buildGround();
    // Plane (0, -20) to (10, 0); below -8 it holds 6 x 12 / 2 = 36 of its 100 square feet.
    EXPECT_NEAR(bench.weight(Right, 0, -20, 10, 0, 1), 64 * 100 + 36 * (130 - 60), 1e-9);
}

TEST_F(WedgeWeightTest, ADividingLineAtOrBelowBothEndsGivesNoWetArea) {
    bench.setWater(-20, -30);
    bench.buildGround();
    EXPECT_NEAR(bench.weight(Right, 0, -20, 10, 0, 1), 100 * 100, 1e-9);
}

TEST_F(WedgeWeightTest, ADividingLineAtOrAboveBothEndsLeavesTheWholePieceBelow) {
    bench.setWater(-4, -30);
    bench.buildGround();
    // Piece (0, -20) to (8, -4): 8 x 16 / 2 below the water, 8 x 4 above it.
    EXPECT_NEAR(bench.weight(Right, 0, -20, 8, -4, 1), 64 * 70 + 32 * 100, 1e-9);
}

TEST_F(WedgeWeightTest, SeepageOnTheRightMakesTheOwnLayerHeavier) {
    bench.setWater(-2, -22);
    bench.setSeepage(-8, 0.5);
    bench.buildGround();
    SeepageEndElev(1) = -16;
    BuildSeepageEndRegions(*bench.state, Right, 1);
    // Plane (0, -20) to (10, 0). Below -2: 9 x 18 / 2 = 81; below -8: 36; below -16: 2 x 4 / 2 = 4.
    const double dry = 100 - 81;
    const double flow = 36 - 4;
    const double still = 81 - flow;
    EXPECT_NEAR(bench.weight(Right, 0, -20, 10, 0, 1),
                dry * 100 + still * 70 + flow * (130 - (1 - 0.5) * 60), 1e-9);
}

TEST_F(WedgeWeightTest, OnTheLeftTheSeepAreaIsTheWetAreaAndOnlyTheDeepAreaIsStill) {
    bench.setGround(Left, {{0, -10}});
    bench.setWater(-2, -12);
    bench.setSeepage(-8, 0.25);
    bench.buildGround();
    SeepageEndElev(1) = -26;
    BuildSeepageEndRegions(*bench.state, Left, 1);
    // Plane (0, -30) to (10, -10). Below -12: 9 x 18 / 2 = 81; below -26: 2 x 4 / 2 = 4.
    EXPECT_NEAR(bench.weight(Left, 0, -30, 10, -10, 1),
                (100 - 81) * 100 + 4 * 70 + (81 - 4) * (130 - (1 + 0.25) * 60), 1e-9);
}

TEST_F(WedgeWeightTest, AnOverlyingLayerInTheSeepageZoneLosesTheGradientsShareAlone) {
    bench.setLayers(Right, {{-10, 0}});
    problem.SoilSatWeight(Right, 2) = 125;
    problem.SoilMoistWeight(Right, 1) = problem.SoilMoistWeight(Right, 2) = 100;
    bench.setWater(0, -22);
    bench.setSeepage(0, 0.5);
    bench.buildGround();
    SeepageEndElev(1) = -100;
    BuildSeepageEndRegions(*bench.state, Right, 1);
    // All seeps. Piece (0, -20) to (5, -10) in layer 2: own 5 x 10 / 2, layer 1 above it 5 x 10.
    EXPECT_NEAR(bench.weight(Right, 0, -20, 5, -10, 2),
                25 * (125 - (1 - 0.5) * 60) + 50 * (130 + 0.5 * 60), 1e-9);
    // The outer piece has layer 1 as its own: (5, -10) to (10, 0).
    EXPECT_NEAR(bench.weight(Right, 5, -10, 10, 0, 1), 25 * (130 - (1 - 0.5) * 60), 1e-9);
}

TEST_F(WedgeWeightTest, AnOverlyingLayerOnTheLeftLosesTheGradientsShareAlone) {
    bench.setGround(Left, {{0, -10}});
    bench.setLayers(Left, {{-20, 0}});
    bench.setWater(0, -10);
    bench.setSeepage(0, 0.25);
    bench.buildGround();
    SeepageEndElev(1) = -100;
    BuildSeepageEndRegions(*bench.state, Left, 1);
    EXPECT_NEAR(bench.weight(Left, 0, -30, 5, -20, 2),
                25 * (130 - (1 + 0.25) * 60) + 50 * (130 - 0.25 * 60), 1e-9);
}

TEST_F(WedgeWeightTest, AGradientOfExactly00001CountsTheSeepAreaAsFlowingInFull) {
    bench.setWater(0, -22);
    bench.setSeepage(0, 0.0001);
    bench.buildGround();
    SeepageEndElev(1) = -10;
    BuildSeepageEndRegions(*bench.state, Right, 1);
    EXPECT_NEAR(bench.weight(Right, 0, -20, 10, 0, 1), 100 * (130 - (1 - 0.0001) * 60), 1e-9);
}

TEST_F(WedgeWeightTest, WhereAPieceStandsAboveTheUpperEdgeTheAreaIsZero) {
    bench.setGround(Right, {{0, 0}, {10, -10}, {20, 0}});
    bench.buildGround();
    // A level piece at -5 under the two ends of a dip: 5 x 5 / 2 on either side.
    EXPECT_NEAR(bench.weight(Right, 0, -5, 20, -5, 1), 25 * 100, 1e-9);
    EXPECT_EQ(bench.weight(Right, 6, -5, 14, -5, 1), 0);
}

TEST_F(WedgeWeightTest, NoSoilStandsBeyondTheFarEnd) {
    bench.buildGround();
    EXPECT_NEAR(bench.weight(Right, 199999, -1, 300000, -1, 1), 100, 1e-6);
    EXPECT_EQ(bench.weight(Right, 200000, -1, 300000, -1, 1), 0);
}

TEST_F(WedgeWeightTest, APieceWithoutLengthWeighsNothing) {
    bench.buildGround();
    EXPECT_EQ(WedgeWeight(bench.described(Right), -5, 1, 3, -5, 3, 1), 0);
    EXPECT_EQ(WedgeWeight(bench.described(Right), -5, 1, 3, -5, 2, 1), 0);
}

TEST_F(WedgeWeightTest, TheOriginOfTheAreaSumsDoesNotMatter) {
    Dice dice(36);
    for (int run = 0; run < 200; ++run) {
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, true);
        drawn.buildGround();
        const int layer = drawn.problem.SoilLayerCount(Right);
        const double y1 = -60 + dice.between(0, 20);
        const double y2 = y1 + 10;
        const double weight = drawn.weight(Right, 0, y1, 10, y2, layer);
        for (const double y0 : {0.0, -1e5, 1234.5}) {
            EXPECT_NEAR(WedgeWeight(drawn.described(Right), y0, 1, 0, y1, 10, layer), weight,
                        1e-9 * weight);
        }
    }
}

TEST_F(WedgeWeightTest, LargeCoordinatesKeepTheirDigits) {
    // A plane from the last row of the grid, 100000 FT down, over three layers and water; areas by
    // hand in whole numbers: k = 2, so the plane reaches level 0 at x = 50000.
    bench.setLayers(Right, {{-4, 0}, {-10, 0}});
    problem.SoilMoistWeight(Right, 2) = 110;
    problem.SoilSatWeight(Right, 2) = 131;
    problem.SoilSatWeight(Right, 3) = 128;
    bench.setWater(-6, -6);
    bench.buildGround();
    const double x2 = 49995; // at -10
    const double own = x2 * (100000.0 - 10) / 2;
    const double expected = own * (128 - 60) + x2 * (4 * (131 - 60) + 2 * 110) + x2 * 4 * 100;
    EXPECT_NEAR(bench.weight(Right, 0, -100000, x2, -10, 3), expected, 1e-12 * expected);
    // And a small piece far out: (199000, -3) to (199001, -2) in layer 1.
    EXPECT_NEAR(bench.weight(Right, 199000, -3, 199001, -2, 1), 2.5 * 100, 1e-7);
}

// ---- WedgeWeight against slices ---------------------------------------------------------------

// Random pieces in thousands of layered, sloping, partly submerged grounds with seepage, against
// vertical slices that ask of every point which layer it is in and what it weighs. A midpoint rule
// is exact but for the slices with a kink; there it errs by at most (change of slope) x width^2 / 8
// x unit weight. With at most 30 kinks, changes of slope up to 2 and 160 PCF that is 1200 width^2.
void compareWithSlices(bool slopingLayers, std::uint64_t seed, int wanted) {
    Dice dice(seed);
    int compared = 0;
    int inLowerLayers = 0;
    int wet = 0;
    while (compared < wanted) {
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, slopingLayers);
        drawn.buildGround();
        for (const int side : {Right, Left}) {
            const PointGround soil(*drawn.state, side, 1);
            const double x1 = dice.chance(0.4) ? 0 : dice.between(0, 30);
            const double x2 = x1 + dice.between(1, 40);
            const double y1 = soil.surface(x1) - dice.between(0, 30);
            const double y2 = std::min(y1 + (x2 - x1) * dice.between(-0.3, 1.5), soil.surface(x2));
            const int layer = soil.layerAt(x1, y1 - 1e-6);
            bool inside = true;
            for (int i = 1; i <= 400 && inside; ++i) {
                const double share = i / 400.0 * (1 - 1e-9);
                const double x = x1 + (x2 - x1) * share;
                const double y = y1 + (y2 - y1) * share;
                inside = y <= soil.surface(x) && soil.layerAt(x, y) == layer;
            }
            if (!inside) {
                continue;
            }
            constexpr int slices = 400;
            const double width = (x2 - x1) / slices;
            const double sliced = soil.slicedWeight(x1, y1, x2, y2, layer, slices);
            ASSERT_NEAR(drawn.weight(side, x1, y1, x2, y2, layer), sliced,
                        1200 * width * width + 1e-9 * sliced)
                << "seed " << seed << " piece " << compared;
            ++compared;
            inLowerLayers += layer > 1 ? 1 : 0;
            wet += drawn.problem.WaterDataKind == WaterData::Elevations &&
                           y1 < drawn.problem.WaterElev(side)
                       ? 1
                       : 0;
        }
    }
    EXPECT_GT(inLowerLayers, wanted / 4);
    EXPECT_GT(wet, wanted / 4);
}

TEST(WedgeWeightSlices, LevelLayers) {
    compareWithSlices(false, 37, 2000);
}

TEST(WedgeWeightSlices, SlopingLayers) {
    compareWithSlices(true, 38, 3000);
}

// ---- weighPieces ------------------------------------------------------------------------------

// Many pieces at once get the loads that each gets alone, to the last bit: pieces in the ground, up
// to it, through it, beyond it and without length.
TEST(WeighPieces, GivesEachPieceWhatItGetsAlone) {
    Dice dice(62);
    int loaded = 0;
    for (int run = 0; run < 400; ++run) {
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, dice.chance(0.5));
        drawn.buildGround();
        const int side = dice.whole(Right, Left);
        const WedgeSide described = drawn.described(side);
        const int layer = dice.whole(1, drawn.problem.SoilLayerCount(side));
        const double y0 = drawn.problem.SurfaceElev(side, 1) - dice.between(0.5, 40);
        const auto count = static_cast<std::size_t>(dice.whole(1, 80));
        std::vector<double> slope(count);
        std::vector<double> x1(count);
        std::vector<double> x2(count);
        std::vector<double> loads(count);
        for (std::size_t n = 0; n < count; ++n) {
            slope[n] = dice.between(0.05, 2.4);
            x1[n] = dice.chance(0.3) ? 0 : dice.between(0, 40);
            x2[n] = x1[n] + (dice.chance(0.05) ? 0 : dice.between(-1, 60));
        }
        weighPieces(described, {y0, count, slope.data(), x1.data(), x2.data()}, layer,
                    loads.data());
        for (std::size_t n = 0; n < count; ++n) {
            const double y1 = slope[n] * x1[n] + y0;
            ASSERT_EQ(loads[n], WedgeWeight(described, y0, slope[n], x1[n], y1, x2[n], layer) +
                                    WedgeSurchargeLoad(described, x1[n], x2[n]))
                << run << " " << n;
            loaded += loads[n] != 0 ? 1 : 0;
        }
    }
    EXPECT_GT(loaded, 5000);
}

// ---- WedgeSurchargeLoad -----------------------------------------------------------------------

class WedgeSurchargeTest : public testing::Test {
  protected:
    double load(double x1, double x2) const {
        return WedgeSurchargeLoad(bench.described(Right), x1, x2);
    }

    WedgeBench bench;
    Problem& problem = bench.problem;
};

TEST_F(WedgeSurchargeTest, ALineLoadCountsFromItsPlaceOn) {
    problem.VLineCount(Right) = 1;
    problem.VLineDist(Right, 1) = 5;
    problem.VLineLoad(Right, 1) = 300;
    EXPECT_EQ(load(0, 4), 0);
    EXPECT_EQ(load(0, 5), 0);   // x1 <= distance < x2
    EXPECT_EQ(load(5, 6), 300); // so that no line counts in two pieces
    EXPECT_EQ(load(0, 6), 300);
    EXPECT_EQ(WedgeSurchargeLoad(bench.described(Left), 0, 6), 0);
}

TEST_F(WedgeSurchargeTest, AUniformLoadCountsOnlyWhereThereIsOne) {
    problem.VUniformLoad(Right) = 40;
    EXPECT_EQ(load(2, 12), 0); // a value left from before
    problem.VUniformCount(Right) = 1;
    EXPECT_EQ(load(2, 12), 400);
}

TEST_F(WedgeSurchargeTest, AStripCountsByItsOverlap) {
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 4;
    problem.VStripEnd(Right, 1) = 10;
    problem.VStripLoad(Right, 1) = 50;
    EXPECT_EQ(load(0, 4), 0);
    EXPECT_EQ(load(0, 6), 100);
    EXPECT_EQ(load(6, 20), 200);
    EXPECT_EQ(load(5, 7), 100);
    EXPECT_EQ(load(10, 20), 0);
}

TEST_F(WedgeSurchargeTest, ARampRisesAndStays) {
    problem.VRampCount(Right) = 1;
    problem.VRampStart(Right) = 4;
    problem.VRampEnd(Right) = 8;
    problem.VRampLoad(Right) = 100;
    EXPECT_EQ(load(0, 4), 0);
    EXPECT_DOUBLE_EQ(load(0, 6), 50);    // 2 x 50 / 2
    EXPECT_DOUBLE_EQ(load(0, 8), 200);   // 4 x 100 / 2
    EXPECT_DOUBLE_EQ(load(0, 18), 1200); // and 10 x 100 beyond
    EXPECT_DOUBLE_EQ(load(5, 7), 100);   // 2 x 50
    EXPECT_DOUBLE_EQ(load(6, 10), 150 + 200);
    EXPECT_DOUBLE_EQ(load(9, 11), 200);
}

TEST_F(WedgeSurchargeTest, ARampWithoutLengthIsAUniformLoadFromThere) {
    problem.VRampCount(Right) = 1;
    problem.VRampStart(Right) = problem.VRampEnd(Right) = 4;
    problem.VRampLoad(Right) = 100;
    EXPECT_EQ(load(0, 4), 0);
    EXPECT_EQ(load(0, 6), 200);
}

TEST_F(WedgeSurchargeTest, ATriangleCountsByItsArea) {
    problem.VTriCount(Right) = 1;
    problem.VTriStart(Right, 1) = 2;
    problem.VTriPeak(Right, 1) = 6;
    problem.VTriEnd(Right, 1) = 8;
    problem.VTriLoad(Right, 1) = 80;
    EXPECT_DOUBLE_EQ(load(0, 10), 6 * 80 / 2.0);
    EXPECT_DOUBLE_EQ(load(0, 4), 40);       // 2 x 40 / 2
    EXPECT_DOUBLE_EQ(load(4, 7), 120 + 60); // 2 x 60 and 1 x 60
    EXPECT_EQ(load(8, 12), 0);
}

TEST_F(WedgeSurchargeTest, ATriangleMayStartOrEndUpright) {
    problem.VTriCount(Right) = 2;
    problem.VTriStart(Right, 1) = problem.VTriPeak(Right, 1) = 2;
    problem.VTriEnd(Right, 1) = 6;
    problem.VTriLoad(Right, 1) = 80;
    problem.VTriStart(Right, 2) = 10;
    problem.VTriPeak(Right, 2) = problem.VTriEnd(Right, 2) = 14;
    problem.VTriLoad(Right, 2) = 40;
    EXPECT_DOUBLE_EQ(load(0, 8), 160);
    EXPECT_DOUBLE_EQ(load(8, 20), 80);
}

TEST_F(WedgeSurchargeTest, AVariableLoadCountsBetweenItsFirstAndLastPoint) {
    problem.VVarCount(Right) = 3;
    problem.VVarDist(Right, 1) = 2;
    problem.VVarLoad(Right, 1) = 10;
    problem.VVarDist(Right, 2) = 4;
    problem.VVarLoad(Right, 2) = 30;
    problem.VVarDist(Right, 3) = 10;
    problem.VVarLoad(Right, 3) = 30;
    EXPECT_DOUBLE_EQ(load(0, 50), 40 + 180); // 2 x 20 and 6 x 30
    EXPECT_DOUBLE_EQ(load(3, 6), 25 + 60);   // 1 x 25 and 2 x 30
    EXPECT_EQ(load(10, 50), 0);
}

TEST_F(WedgeSurchargeTest, AVariableLoadPieceBetweenTwoPointsAtOneDistanceAddsNothing) {
    problem.VVarCount(Right) = 4;
    const double dist[] = {2, 4, 4, 6};
    const double psf[] = {10, 10, 90, 90};
    for (int i = 1; i <= 4; ++i) {
        problem.VVarDist(Right, i) = dist[i - 1];
        problem.VVarLoad(Right, i) = psf[i - 1];
    }
    EXPECT_DOUBLE_EQ(load(0, 50), 20 + 180);
}

// All kinds at once against the sum of fine slices. A slice errs only where the load kinks or
// jumps: at most 40 places, each by no more than width x 1500 PSF.
TEST(WedgeSurchargeSlices, RandomLoads) {
    Dice dice(39);
    int loaded = 0;
    for (int run = 0; run < 1500; ++run) {
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, false);
        Problem& problem = drawn.problem;
        const double x1 = dice.chance(0.3) ? 0 : dice.between(0, 25);
        const double x2 = x1 + dice.between(0.5, 30);
        const PointGround ground(*drawn.state, Right, 1);
        constexpr int slices = 4000;
        const double width = (x2 - x1) / slices;
        double sum = 0;
        for (int i = 0; i < slices; ++i) {
            sum += width * ground.surchargeAt(x1 + (i + 0.5) * width);
        }
        for (int i = 1; i <= problem.VLineCount(Right); ++i) {
            const double distance = problem.VLineDist(Right, i);
            sum += distance >= x1 && distance < x2 ? problem.VLineLoad(Right, i) : 0;
        }
        ASSERT_NEAR(WedgeSurchargeLoad(drawn.described(Right), x1, x2), sum, 40 * 1500 * width);
        loaded += sum > 0 ? 1 : 0;
    }
    EXPECT_GT(loaded, 300);
}

} // namespace
} // namespace korvane::test
