#include "plots/input_plots.h"

#include "drawing.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

Drawing drawn(const Problem& problem, Medium medium = Medium::Screen) {
    RecordingSurface surface;
    drawInputPlot(surface, problem, SystemPlot, medium);
    return surface.primitives();
}

/// Top 0, ground 0 and -10. Upper limit 0, lower -10, extended by 1 each: H = 12, so that a foot is
/// 450 twips high and y(e) = (1 - (e + 11) / 12) x 5400 = 450 - 450 e. Each side reaches 11 FT:
/// W = 22, wall centre at 5520, edges 1920 and 9120.
TEST(SystemPlot, WallAndGroundOfThePlainestDesign) {
    expectDrawing(drawn(plainCantilever()),
                  {filledBox(5448, 450, 5592, 5400), middle(960, 450, "EL= 0.0"),
                   line(5592, 450, 9120, 450, Black, 2), middle(960, 450, "EL= 0.0"),
                   line(5448, 4950, 1920, 4950, Black, 2), middle(960, 4950, "EL= -10.0")});
}

TEST(SystemPlot, InDesignTheWallRunsToTheBottomOfTheDrawing) {
    Problem problem = plainCantilever();
    problem.WallBottomElev = -5; // no value of a design
    EXPECT_EQ(drawn(problem).front().b.y, 5400);
}

TEST(SystemPlot, InAnalysisTheWallEndsAtItsBottom) {
    Problem problem = plainCantilever();
    problem.ProgramMode = Mode::Analysis;
    problem.WallBottomElev = -24; // lower limit -25, H = 26: y = (1 - (e + 25) / 26) x 5400
    const Drawing all = drawn(problem);
    const double foot = 5400.0 / 26;
    expectDrawing({all.begin(), all.begin() + 3},
                  {filledBox(5448, foot, 5592, 25 * foot), middle(960, foot, "EL= 0.0"),
                   middle(960, 25 * foot, "EL= -24.0")});
}

TEST(SystemPlot, ASingleSurfacePointAtTheWallReachesElevenFeet) {
    Problem problem = plainCantilever();
    problem.SurfacePointCount(Right) = 2;
    problem.SurfaceDist(Right, 2) = 32; // right reach 33, left 11: W = 44, wall at 3720
    problem.SurfaceElev(Right, 2) = 0;
    const Drawing all = drawn(problem);
    EXPECT_NEAR((all.front().a.x + all.front().b.x) / 2, 3720, 1e-9);
    // the ground ends at its last point, 32 / 44 x 7200 from the wall
    expectDrawing({all.at(2)}, {line(3792, 450, 3720 + 32.0 / 44 * 7200, 450, Black, 2)});
}

TEST(SystemPlot, GroundRunsFlatToAFirstPointBeyondTheWall) {
    Problem problem = plainCantilever();
    problem.SurfacePointCount(Left) = 3;
    for (int i = 1; i <= 3; ++i) {
        problem.SurfaceDist(Left, i) = 5 * i; // 5, 10, 15: reach 16, W = 27
        problem.SurfaceElev(Left, i) = i == 3 ? -12 : -10;
    }
    // Wall at 1920 + 16 / 27 x 7200, a foot across 7200 / 27; H = 14.
    const double foot = 7200.0 / 27;
    const double wall = 1920 + 16 * foot;
    const double down = 5400.0 / 14;
    expectDrawing(linesOf(drawn(problem), Black, 2),
                  joined({{line(wall + 72, down, 9120, down, Black, 2)},
                          strokes({{wall - 72, 11 * down},
                                   {wall - 5 * foot, 11 * down},
                                   {wall - 10 * foot, 11 * down},
                                   {wall - 15 * foot, 13 * down}},
                                  Black, 2)}));
}

TEST(SystemPlot, GroundWithAFirstPointAtTheWallStartsAtItsFace) {
    Problem problem = plainCantilever();
    problem.SurfacePointCount(Right) = 2;
    problem.SurfaceDist(Right, 2) = 10;
    problem.SurfaceElev(Right, 2) = 4; // upper limit 4: H = 16, y = (5 - e) / 16 x 5400
    expectDrawing({linesOf(drawn(problem), Black, 2).front()},
                  {line(5592, 1687.5, 5520 + 10.0 / 22 * 7200, 337.5, Black, 2)});
}

/// Layer boundaries at -3 on the right: y = 450 - 450 e, the edge 11 FT from the wall.
Problem twoLayers(double slope) {
    Problem problem = plainCantilever();
    problem.SoilLayerCount(Right) = 2;
    problem.SoilBottomElev(Right, 1) = -3;
    problem.SoilBottomSlope(Right, 1) = slope;
    problem.SoilBottomElev(Right, 2) = NoLayerBottom;
    return problem;
}

TEST(SystemPlot, LayerBoundaryRunsToTheEdgeAtItsSlope) {
    const Drawing all = drawn(twoLayers(-0.5)); // -3 - 5.5 = -8.5 at the edge
    expectDrawing({all.at(4), all.at(5)},
                  {line(5592, 1800, 9120, 4275, SoilBrown, 2), middle(960, 1800, "EL= -3.0")});
}

TEST(SystemPlot, ALayerBottomThatSlopesOutOfThePictureIsCutAtTheEdge) {
    // 2 FT up a foot: 19 FT at the edge; y runs from 1800 to 450 - 8550 = -8100 over 3528 twips and
    // meets y = 0 after 1800 / 9900 of them.
    expectDrawing(linesOf(drawn(twoLayers(2)), SoilBrown, 2),
                  {line(5592, 1800, 5592 + 3528 * 1800.0 / 9900, 0, SoilBrown, 2)});
    // 2 FT down: -25 FT, y = 11700; y = 5400 after 3600 / 9900
    expectDrawing(linesOf(drawn(twoLayers(-2)), SoilBrown, 2),
                  {line(5592, 1800, 5592 + 3528 * 3600.0 / 9900, 5400, SoilBrown, 2)});
}

TEST(SystemPlot, LayersGivenByCoefficientsAreLevel) {
    Problem problem = twoLayers(0.5);
    problem.SoilDataKind(Right) = SoilData::Coefficients; // the slope is left over from other data
    expectDrawing(linesOf(drawn(problem), SoilBrown, 2),
                  {line(5592, 1800, 9120, 1800, SoilBrown, 2)});
}

TEST(SystemPlot, WaterOfBothSidesIsBlueWithItsSign) {
    Problem problem = plainCantilever();
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterElev(Right) = -4; // y 2250, from 5592 to 9120: middle 7356
    problem.WaterElev(Left) = -9;  // y 4500, from 5448 to 1920: middle 3684
    const auto water = [](double face, double edge, double x, double y) {
        return joined({{line(face, y, edge, y, Blue, 2)},
                       strokes({{x, y}, {x - 144, y - 216}, {x + 144, y - 216}, {x, y}}, Blue, 2),
                       {line(x - 144, y + 72, x + 144, y + 72, Blue, 2),
                        line(x - 72, y + 144, x + 72, y + 144, Blue, 2)}});
    };
    expectDrawing(linesOf(drawn(problem), Blue, 2),
                  joined({water(5592, 9120, 7356, 2250), water(5448, 1920, 3684, 4500)}));
    EXPECT_EQ(textsOf(drawn(problem)).at(2), "EL= -4.0");
}

TEST(SystemPlot, WaterLevelsExtendTheDrawing) {
    Problem problem = plainCantilever();
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterElev(Right) = 5;
    problem.WaterElev(Left) = -10;
    // upper limit 5, lower -11: H = 17
    EXPECT_NEAR(drawn(problem).front().a.y, (1 - 11.0 / 17) * 5400, 1e-9);
}

TEST(SystemPlot, LayerBoundariesExtendTheDrawingButNotTheLastLayer) {
    Problem problem = twoLayers(0);
    problem.SoilBottomElev(Right, 1) = -16; // limits 0 and -17: H = 18, 300 twips a foot
    EXPECT_NEAR(drawn(problem).front().a.y, 300, 1e-9);
}

TEST(SystemPlot, WaterGivenByPressuresShowsNoLines) {
    Problem problem = plainCantilever();
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterElev(Right) = 50;
    expectDrawing(drawn(problem), drawn(plainCantilever()));
}

TEST(SystemPlot, AnchorRunsToTheRightEdgeWithAnArrowHead) {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -3; // the lower limit still is the left ground, -10
    const Drawing all = drawn(problem);
    expectDrawing({all.end() - 4, all.end()},
                  {line(5592, 1800, 9120, 1800, Red, 2), line(9048, 1728, 9120, 1800, Red, 2),
                   line(9048, 1872, 9120, 1800, Red, 2), middle(960, 1800, "EL= -3.0")});
}

TEST(SystemPlot, LowerLimitOfAnAnchoredDesignIsItsAnchorUnlessSomethingLiesLower) {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -2;
    problem.SurfaceElev(Left, 1) = -1; // limits 0 and -2: H = 4, the wall top at y 1350
    EXPECT_NEAR(drawn(problem).front().a.y, 1350, 1e-9);
}

TEST(SystemPlot, OnPaperTheEdgesStandAt3600And10800AndTheColumnAt2520) {
    Problem problem = twoLayers(-0.5);
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -3;
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterElev(Right) = -4;
    problem.WaterElev(Left) = -9;
    Drawing expected = moved(drawn(problem), 1680, 4320);
    for (Primitive& p : expected) {
        if (p.kind == Primitive::Kind::Text) {
            p.a.x += 2520 - (960 + 1680);
        }
    }
    expectDrawing(drawn(problem, Medium::Paper), expected);
}

TEST(SystemPlot, AProblemWithoutSurfacesDrawsNothingAtInfinity) {
    Problem problem;
    clearProblemData(problem);
    const Drawing all = drawn(problem);
    EXPECT_FALSE(all.empty());
    EXPECT_TRUE(isFinite(all));
}

} // namespace

} // namespace korvane::test
