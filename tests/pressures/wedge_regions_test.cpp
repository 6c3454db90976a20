#include "pressures/wedge_regions.h"

#include "wedge_ground.h"

#include <cmath>

namespace korvane::test {
namespace {

using Points = std::vector<std::pair<double, double>>;

class WedgeRegionsTest : public testing::Test {
  protected:
    Points polygon(const RegionFamily& family, int side, int layer) const {
        Points points;
        for (int p = 1; p <= family.Count(side, layer); ++p) {
            points.emplace_back(family.X(side, layer, p), family.Y(side, layer, p));
        }
        return points;
    }
    static double reach(const RegionFamily& family, int side, int layer) {
        return family.X(side, layer, family.Count(side, layer) + 1);
    }
    Points ground(int side) const {
        Points points;
        for (int p = 1; p <= regions.WedgeSurfaceCount(side); ++p) {
            points.emplace_back(regions.WedgeSurfaceX(side, p), regions.WedgeSurfaceY(side, p));
        }
        return points;
    }

    WedgeBench bench;
    Problem& problem = bench.problem;
    const WedgeRegions& regions = bench.state->regions;
};

void expectPoints(const Points& actual, const Points& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t p = 0; p < expected.size(); ++p) {
        EXPECT_NEAR(actual[p].first, expected[p].first, 1e-9) << "x of point " << p + 1;
        EXPECT_NEAR(actual[p].second, expected[p].second, 1e-9) << "y of point " << p + 1;
    }
}

TEST_F(WedgeRegionsTest, ASingleSurfacePointGivesALevelGroundLineOfTwoPoints) {
    bench.setGround(Right, {{5, -1}});
    bench.buildGround();
    expectPoints(ground(Right), {{0, -1}, {200005, -1}, {400005, 0}});
    expectPoints(polygon(regions.Layer, Right, 1), {{0, -1}, {200005, -1}});
    EXPECT_EQ(reach(regions.Layer, Right, 1), 200005);
}

TEST_F(WedgeRegionsTest, AFirstPointAtTheWallIsNotDoubled) {
    bench.setGround(Right, {{0, -1}, {10, 4}});
    bench.buildGround();
    expectPoints(ground(Right), {{0, -1}, {10, 4}, {200010, 4}, {400010, 0}});
}

TEST_F(WedgeRegionsTest, TheGroundIsLevelUpToAFirstPointOffTheWall) {
    bench.setGround(Right, {{3, -1}, {10, 4}});
    bench.buildGround();
    expectPoints(ground(Right), {{0, -1}, {3, -1}, {10, 4}, {200010, 4}, {400010, 0}});
}

TEST_F(WedgeRegionsTest, TheGroundLineCountsTheExtraFarPointAndNoPolygonHasIt) {
    bench.setGround(Left, {{0, -10}, {8, -12}});
    bench.buildGround();
    EXPECT_EQ(regions.WedgeSurfaceCount(Left), 4);
    EXPECT_EQ(regions.WedgeSurfaceX(Left, 4), 400008);
    EXPECT_EQ(regions.WedgeSurfaceY(Left, 4), 0);
    EXPECT_EQ(reach(regions.Layer, Left, 1), 200008);
}

TEST_F(WedgeRegionsTest, LevelLayersAreClosedStraightBelowTheFarEnd) {
    bench.setLayers(Right, {{-4, 0}, {-9, 0}});
    bench.buildGround();
    expectPoints(polygon(regions.Layer, Right, 1), {{0, 0}, {200000, 0}, {200000, -4}, {0, -4}});
    expectPoints(polygon(regions.Layer, Right, 2), {{0, -4}, {200000, -4}, {200000, -9}, {0, -9}});
}

TEST_F(WedgeRegionsTest, TheLastLayerIsItsUpperEdgeAlone) {
    bench.setLayers(Right, {{-4, 0}});
    bench.buildGround();
    expectPoints(polygon(regions.Layer, Right, 2), {{0, -4}, {200000, -4}});
}

TEST_F(WedgeRegionsTest, ABottomThatRisesToTheGroundLeavesTheGroundToTheLayerBelow) {
    // -4 + 0.5 x meets ground 0 at x = 8.
    bench.setGround(Right, {{0, 0}, {6, 0}, {20, 0}});
    bench.setLayers(Right, {{-4, 0.5}});
    bench.buildGround();
    expectPoints(polygon(regions.Layer, Right, 1), {{0, 0}, {6, 0}, {8, 0}, {0, -4}});
    EXPECT_EQ(reach(regions.Layer, Right, 1), 8);
    expectPoints(polygon(regions.Layer, Right, 2), {{0, -4}, {8, 0}, {20, 0}, {200020, 0}});
}

TEST_F(WedgeRegionsTest, AGroundPointOnTheBoundaryEndsTheLayerThere) {
    bench.setGround(Right, {{0, 0}, {8, 0}, {20, 3}});
    bench.setLayers(Right, {{-4, 0.5}});
    bench.buildGround();
    expectPoints(polygon(regions.Layer, Right, 1), {{0, 0}, {8, 0}, {0, -4}});
    expectPoints(polygon(regions.Layer, Right, 2), {{0, -4}, {8, 0}, {20, 3}, {200020, 3}});
}

TEST_F(WedgeRegionsTest, AGroundThatDipsUnderALevelBoundaryEndsTheLayerForGood) {
    // The ground falls through -4 at x = 8 and rises over it again farther out.
    bench.setGround(Right, {{0, 0}, {10, -5}, {20, 5}});
    bench.setLayers(Right, {{-4, 0}});
    bench.buildGround();
    expectPoints(polygon(regions.Layer, Right, 1), {{0, 0}, {8, -4}, {0, -4}});
    expectPoints(polygon(regions.Layer, Right, 2),
                 {{0, -4}, {8, -4}, {10, -5}, {20, 5}, {200020, 5}});
}

TEST_F(WedgeRegionsTest, TheSecondPointOfALowerLayerIsWhereItsBoundaryReachesTheGround) {
    bench.setGround(Right, {{0, 0}, {40, 0}});
    bench.setLayers(Right, {{-3, 0.3}, {-8, 0.2}, {-12, 0}});
    bench.buildGround();
    EXPECT_NEAR(regions.Layer.X(Right, 2, 2), 10, 1e-9);
    EXPECT_NEAR(regions.Layer.X(Right, 3, 2), 40, 1e-9);
    EXPECT_EQ(regions.Layer.X(Right, 4, 2), 200040); // never: the far end
    EXPECT_EQ(regions.Layer.Y(Right, 4, 2), -12);
}

TEST_F(WedgeRegionsTest, ALayerWhoseBordersCrossEndsAtTheCrossing) {
    // -3 - 0.1 x and -6 + 0.2 x cross at x = 10, y = -4.
    bench.setLayers(Right, {{-3, -0.1}, {-6, 0.2}});
    bench.buildGround();
    expectPoints(polygon(regions.Layer, Right, 2), {{0, -3}, {10, -4}, {0, -6}});
    EXPECT_NEAR(reach(regions.Layer, Right, 2), 10, 1e-9);
}

TEST_F(WedgeRegionsTest, ALayerAboveTheWaterHasNoWetRegionAndOneBelowItIsAllWet) {
    bench.setLayers(Right, {{-4, 0}, {-9, 0}});
    bench.setWater(-4, -12);
    bench.buildGround();
    EXPECT_EQ(regions.Wet.Kind(Right, 1), NoRegion);
    EXPECT_NE(regions.Wet.Kind(Right, 2), NoRegion);
    expectPoints(polygon(regions.Wet, Right, 2), polygon(regions.Layer, Right, 2));
}

TEST_F(WedgeRegionsTest, AWaterElevationAboveAllGroundMakesEachWetRegionTheLayer) {
    bench.setGround(Right, {{0, -1}, {10, 3}, {25, -2}});
    bench.setLayers(Right, {{-4, 0.1}, {-9, -0.1}});
    bench.setWater(20, 20);
    bench.buildGround();
    for (int layer = 1; layer <= 3; ++layer) {
        EXPECT_NE(regions.Wet.Kind(Right, layer), NoRegion);
        expectPoints(polygon(regions.Wet, Right, layer), polygon(regions.Layer, Right, layer));
        EXPECT_EQ(reach(regions.Wet, Right, layer), reach(regions.Layer, Right, layer));
    }
}

TEST_F(WedgeRegionsTest, WithoutWaterElevationsThereAreNoWetRegions) {
    bench.setWater(20, 20);
    bench.setSeepage(-1, 0.2);
    bench.buildGround();
    EXPECT_NE(regions.Deep.Kind(Right, 1), NoRegion);
    problem.WaterDataKind = WaterData::Pressures;
    BuildWedgeRegions(*bench.state, Right);
    for (const auto* family : {&regions.Wet, &regions.Seep, &regions.Deep}) {
        EXPECT_EQ(family->Kind(Right, 1), NoRegion);
    }
}

TEST_F(WedgeRegionsTest, AHillOverTheWaterIsCutLevel) {
    // Water at 2 cuts the hill from (0, 0) over (10, 5) to (20, 0) at x = 4 and x = 16.
    bench.setGround(Right, {{0, 0}, {10, 5}, {20, 0}});
    bench.setLayers(Right, {{-4, 0}});
    bench.setWater(2, -5);
    bench.buildGround();
    expectPoints(polygon(regions.Wet, Right, 1),
                 {{0, 0}, {4, 2}, {16, 2}, {20, 0}, {200020, 0}, {200020, -4}, {0, -4}});
}

TEST_F(WedgeRegionsTest, ARisingBottomCrossesTheWaterAtItsOwnDistance) {
    // Bottom -4 + 0.25 x passes water at -2 at x = 8; the ground at 0 stands above the water.
    bench.setGround(Right, {{0, 0}, {40, 0}});
    bench.setLayers(Right, {{-4, 0.25}});
    bench.setWater(-2, -5);
    bench.buildGround();
    expectPoints(polygon(regions.Wet, Right, 1), {{0, -2}, {8, -2}, {0, -4}});
    EXPECT_NEAR(reach(regions.Wet, Right, 1), 8, 1e-9);
}

TEST_F(WedgeRegionsTest, AFallingBottomAboveTheWaterAtTheWallStartsTheWetRegionOffTheWall) {
    // Bottom -4 - 0.25 x passes water at -6 at x = 8; up to there the edge follows the bottom.
    bench.setGround(Right, {{0, 0}});
    bench.setLayers(Right, {{-4, -0.25}});
    bench.setWater(-6, -20);
    bench.buildGround();
    expectPoints(polygon(regions.Wet, Right, 1),
                 {{0, -4}, {8, -6}, {200000, -6}, {200000, -50004}, {0, -4}});
}

TEST_F(WedgeRegionsTest, OnTheRightSeepageActsBelowItsElevation) {
    bench.setLayers(Right, {{-4, 0}});
    bench.setWater(-1, -9);
    bench.setSeepage(-3, 0.25);
    bench.buildGround();
    expectPoints(polygon(regions.Seep, Right, 1), {{0, -3}, {200000, -3}, {200000, -4}, {0, -4}});
    expectPoints(polygon(regions.Seep, Right, 2), {{0, -4}, {200000, -4}});
}

TEST_F(WedgeRegionsTest, OnTheLeftTheWetRegionIsTheSeepRegion) {
    bench.setGround(Left, {{0, -10}, {10, -6}});
    bench.setLayers(Left, {{-14, 0}});
    bench.setWater(-1, -8);
    bench.setSeepage(-3, 0.25);
    bench.buildGround();
    for (const int layer : {1, 2}) {
        EXPECT_NE(regions.Seep.Kind(Left, layer), NoRegion);
        expectPoints(polygon(regions.Seep, Left, layer), polygon(regions.Wet, Left, layer));
    }
}

TEST_F(WedgeRegionsTest, DeepRegionsLieBelowTheEndOfSeepage) {
    // (-3 + -10 - 8 / 0.25) / 2 = -22.5
    bench.setLayers(Right, {{-30, 0}});
    bench.setWater(-1, -9);
    bench.setSeepage(-3, 0.25);
    problem.SurfaceElev(Left, 1) = -10;
    bench.buildGround();
    EXPECT_NEAR(bench.state->preparation.SeepageEndElev(1), -22.5, 1e-12);
    expectPoints(polygon(regions.Deep, Right, 1),
                 {{0, -22.5}, {200000, -22.5}, {200000, -30}, {0, -30}});
    expectPoints(polygon(regions.Deep, Right, 2), {{0, -30}, {200000, -30}});
}

TEST_F(WedgeRegionsTest, AGradientOfExactly00001HasNoDeepRegions) {
    bench.setWater(-1, -9);
    bench.setSeepage(-3, 0.0001);
    bench.buildGround();
    EXPECT_EQ(regions.Deep.Kind(Right, 1), NoRegion);
    bench.state->preparation.SeepageGradient(1) = 0.00011;
    BuildSeepageEndRegions(*bench.state, Right, 1);
    EXPECT_NE(regions.Deep.Kind(Right, 1), NoRegion);
}

TEST_F(WedgeRegionsTest, DeepRegionsFollowTheLevelOfTheLastCall) {
    bench.setWater(-1, -9);
    bench.setSeepage(-3, 0.25);
    bench.buildGround();
    bench.state->preparation.SeepageEndElev(2) = -50;
    BuildSeepageEndRegions(*bench.state, Right, 2);
    EXPECT_EQ(regions.Deep.Y(Right, 1, 1), -50);
    bench.state->preparation.SeepageGradient(2) = 0;
    BuildSeepageEndRegions(*bench.state, Right, 2);
    EXPECT_EQ(regions.Deep.Kind(Right, 1), NoRegion);
}

TEST_F(WedgeRegionsTest, DeepRegionsOfAnEarlierProblemAreDropped) {
    bench.setWater(-1, -9);
    bench.setSeepage(-3, 0.25);
    bench.buildGround();
    EXPECT_NE(regions.Deep.Kind(Right, 1), NoRegion);
    bench.state->preparation.SeepageKind = Seepage::None;
    BuildWedgeRegions(*bench.state, Right);
    EXPECT_EQ(regions.Seep.Kind(Right, 1), NoRegion);
    EXPECT_EQ(regions.Deep.Kind(Right, 1), NoRegion);
}

TEST_F(WedgeRegionsTest, APolygonOfMoreThan50PointsIsASubscriptError) {
    // No input has so many points: a polygon of 50 with one more cut is forced in.
    bench.setWater(100, -9);
    bench.setSeepage(0, 0.25);
    bench.buildGround();
    auto& seep = bench.state->regions.Seep;
    seep.Count(Right, 1) = 50;
    for (int p = 1; p <= 50; ++p) {
        seep.X(Right, 1, p) = p - 1;
        seep.Y(Right, 1, p) = p % 2 == 0 ? -15 : -16; // a saw: each tooth is cut twice
    }
    bench.state->preparation.SeepageEndElev(1) = -15.5;
    EXPECT_EQ(errorOf([&] { BuildSeepageEndRegions(*bench.state, Right, 1); }), 9);
}

/// Area of a closed polygon by the shoelace rule.
double shoelace(const Points& points) {
    double sum = 0;
    for (std::size_t p = 0; p < points.size(); ++p) {
        const auto& [x1, y1] = points[p];
        const auto& [x2, y2] = points[(p + 1) % points.size()];
        sum += x1 * y2 - x2 * y1;
    }
    return std::abs(sum) / 2;
}

/// The part of any polygon on one side of a horizontal line, edge by edge.
Points clippedBelow(const Points& points, double elevation) {
    Points kept;
    for (std::size_t p = 0; p < points.size(); ++p) {
        const auto& [x1, y1] = points[p];
        const auto& [x2, y2] = points[(p + 1) % points.size()];
        if (y1 <= elevation) {
            kept.emplace_back(x1, y1);
        }
        if ((y1 <= elevation) != (y2 <= elevation)) {
            kept.emplace_back(x1 + (x2 - x1) * (elevation - y1) / (y2 - y1), elevation);
        }
    }
    return kept;
}

// Every wet, seep and deep region of 2000 random grounds against the textbook clip of its closed
// layer polygon, point after point: same areas, last point on the wall, reach as told.
TEST_F(WedgeRegionsTest, RegionsOfRandomGroundsAreClipsOfTheirLayers) {
    Dice dice(35);
    int compared = 0;
    for (int run = 0; run < 2000; ++run) {
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, true);
        drawn.buildGround();
        const WedgeRegions& r = drawn.state->regions;
        for (const int side : {Right, Left}) {
            for (int layer = 1; layer < drawn.problem.SoilLayerCount(side); ++layer) {
                const Points whole = polygon(r.Layer, side, layer);
                const auto check = [&](const RegionFamily& family, double elevation) {
                    const double expected = shoelace(clippedBelow(whole, elevation));
                    if (family.Kind(side, layer) == NoRegion) {
                        EXPECT_NEAR(expected, 0, 1e-6);
                        return;
                    }
                    const Points part = polygon(family, side, layer);
                    // Both sums carry the rounding of areas of 200000 FT by the depth.
                    EXPECT_NEAR(shoelace(part), expected, 1e-12 * shoelace(whole) + 1e-6);
                    EXPECT_EQ(part.back().first, 0);
                    double largest = 0;
                    for (std::size_t p = 1; p < part.size(); ++p) {
                        largest = std::max(largest, part[p].first);
                    }
                    EXPECT_EQ(reach(family, side, layer), largest);
                    ++compared;
                };
                const Problem& p = drawn.problem;
                if (p.WaterDataKind != WaterData::Elevations) {
                    continue;
                }
                check(r.Wet, p.WaterElev(side));
                if (p.SeepageKind == Seepage::None) {
                    continue;
                }
                const double top = side == Right ? p.SeepageElev : p.WaterElev(side);
                check(r.Seep, top);
                if (p.SeepageGradient(1) > 0.0001) {
                    check(r.Deep, std::min(top, drawn.state->preparation.SeepageEndElev(1)));
                }
            }
        }
    }
    EXPECT_GT(compared, 3000);
}

} // namespace
} // namespace korvane::test
