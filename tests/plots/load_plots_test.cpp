// Surcharges and horizontal loads.
#include "plots/input_plots.h"

#include "drawing.h"
#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

Drawing drawn(const Problem& problem, int plotNumber, Medium medium = Medium::Screen) {
    RecordingSurface surface;
    drawInputPlot(surface, problem, plotNumber, medium);
    return surface.primitives();
}

/// Axis, wall and ground of the surcharges.
Drawing surchargeGround() {
    return {line(1440, 3744, 8640, 3744, Black, 2), line(1440, 3672, 1440, 3816, Black, 2),
            line(5040, 3672, 5040, 3816, Black, 2), line(8640, 3672, 8640, 3816, Black, 2),
            line(1512, 3708, 1440, 3744, Black, 2), line(8568, 3708, 8640, 3744, Black, 2),
            line(1512, 3780, 1440, 3744, Black, 2), line(8568, 3780, 8640, 3744, Black, 2),
            filledBox(4968, 3888, 5112, 5328),      line(5184, 3888, 8640, 3888, Black, 2),
            line(4896, 3888, 1440, 3888, Black, 2)};
}

/// The largest distance at both ends of the axis, and the title.
Drawing surchargeTexts(const std::string& distance, const std::string& title) {
    return {lowerEdge(6840, 3672, distance), lowerEdge(3240, 3672, distance),
            centred(5040, 852, title)};
}

TEST(SurchargePlots, LineLoadsAreArrowsOfTheirSidesColour) {
    Problem problem = plainCantilever();
    problem.VLineCount(Right) = 2;
    problem.VLineDist(Right, 1) = 10; // 10 / 20 x 3600
    problem.VLineLoad(Right, 1) = 1000;
    problem.VLineDist(Right, 2) = 20;
    problem.VLineLoad(Right, 2) = 250; // a quarter of 1440
    problem.VLineCount(Left) = 1;
    problem.VLineDist(Left, 1) = 5;
    problem.VLineLoad(Left, 1) = 500;
    const auto arrow = [](double x, double y, Colour colour) {
        return Drawing{line(x, y, x, 3024, colour, 3), line(x, 3024, x - 72, 2952, colour, 3),
                       line(x, 3024, x + 72, 2952, colour, 3)};
    };
    expectDrawing(
        drawn(problem, LineLoadPlot),
        joined({surchargeGround(),
                surchargeTexts("20.00 (FT)", "VERTICAL LINE LOADS (MAX. = 1000.00 PLF)"),
                arrow(6840, 1584, Red), arrow(8640, 2664, Red), arrow(4140, 2304, PassiveGreen)}));
}

TEST(SurchargePlots, UniformLoadsHaveWordsAndNoDistances) {
    Problem problem = plainCantilever();
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 200;
    problem.VUniformCount(Left) = 1;
    problem.VUniformLoad(Left) = 50.5; // 0.2525 x 1440 = 363.6
    expectDrawing(
        drawn(problem, UniformLoadPlot),
        joined({surchargeGround(),
                {centred(5040, 852, "UNIFORM SURCHARGE LOADS"), box(5040, 1584, 8640, 3024, Red, 3),
                 centred(6840, 1008, "RIGHTSIDE 200.00 (PSF)"),
                 box(5040, 2660.4, 1440, 3024, PassiveGreen, 3),
                 centred(3240, 1008, "LEFTSIDE 50.50 (PSF)")}}));
}

TEST(SurchargePlots, ASideWithoutUniformLoadIsNotRead) {
    Problem problem = plainCantilever();
    problem.VUniformCount(Left) = 1;
    problem.VUniformLoad(Left) = 100;
    problem.VUniformLoad(Right) = 900; // stale: its count is 0
    const Drawing all = drawn(problem, UniformLoadPlot);
    expectDrawing({all.end() - 2, all.end()}, {box(5040, 1584, 1440, 3024, PassiveGreen, 3),
                                               centred(3240, 1008, "LEFTSIDE 100.00 (PSF)")});
}

TEST(SurchargePlots, StripLoadsAreRectangles) {
    Problem problem = plainCantilever();
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 5; // 5 / 25 x 3600 = 720
    problem.VStripEnd(Right, 1) = 25;
    problem.VStripLoad(Right, 1) = 600;
    problem.VStripCount(Left) = 1;
    problem.VStripStart(Left, 1) = 2.5;
    problem.VStripEnd(Left, 1) = 10;
    problem.VStripLoad(Left, 1) = 150;
    expectDrawing(drawn(problem, StripLoadPlot),
                  joined({surchargeGround(),
                          surchargeTexts("25.00 (FT)", "VERTICAL STRIP LOADS (MAX. = 600.00 PSF)"),
                          {box(5760, 1584, 8640, 3024, Red, 3),
                           box(4680, 2664, 3600, 3024, PassiveGreen, 3)}}));
}

TEST(SurchargePlots, RampLoadsAreScaledTo2880AndRunLevelToTheEdge) {
    Problem problem = plainCantilever();
    problem.VRampCount(Right) = 1;
    problem.VRampStart(Right) = 10; // 10 / 40 x 2880 = 720
    problem.VRampEnd(Right) = 40;
    problem.VRampLoad(Right) = 400;
    problem.VRampCount(Left) = 1;
    problem.VRampStart(Left) = 0;
    problem.VRampEnd(Left) = 20;
    problem.VRampLoad(Left) = 100;
    const Drawing expected = joined(
        {surchargeGround(), surchargeTexts("40.00 (FT)", "VERTICAL RAMP LOADS (PSF)"),
         strokes({{5760, 3024}, {7920, 1584}, {8640, 1584}, {8640, 3024}}, Red, 3),
         strokes({{5040, 3024}, {3600, 2664}, {1440, 2664}, {1440, 3024}}, PassiveGreen, 3)});
    expectDrawing(drawn(problem, RampLoadPlot), expected);
    expectDrawing(drawn(problem, RampLoadPlot, Medium::Paper), onPaper(expected));
}

TEST(SurchargePlots, TriangularLoads) {
    Problem problem = plainCantilever();
    problem.VTriCount(Left) = 2;
    for (int i = 1; i <= 2; ++i) {
        problem.VTriStart(Left, i) = i == 1 ? 0 : 12;
        problem.VTriPeak(Left, i) = i == 1 ? 6 : 15;
        problem.VTriEnd(Left, i) = i == 1 ? 12 : 30;
        problem.VTriLoad(Left, i) = i == 1 ? 300 : 120;
    }
    expectDrawing(
        drawn(problem, TriangularLoadPlot),
        joined({surchargeGround(),
                surchargeTexts("30.00 (FT)", "VERTICAL TRIANGULAR LOADS (MAX. = 300.00 PSF)"),
                strokes({{5040, 3024}, {4320, 1584}, {3600, 3024}}, PassiveGreen, 3),
                strokes({{3600, 3024}, {3240, 2448}, {1440, 3024}}, PassiveGreen, 3)}));
}

TEST(SurchargePlots, VariableLoadsAreClosedAtTheFirstAndTheLastPoint) {
    Problem problem = plainCantilever();
    problem.VVarCount(Right) = 3;
    const double distances[] = {10, 20, 20};
    const double loads[] = {100, 200, 50};
    for (int i = 1; i <= 3; ++i) {
        problem.VVarDist(Right, i) = distances[i - 1];
        problem.VVarLoad(Right, i) = loads[i - 1];
    }
    expectDrawing(
        drawn(problem, VariableLoadPlot),
        joined({surchargeGround(),
                surchargeTexts("20.00 (FT)", "VERTICAL VARIABLE LOADS (MAX. = 200.00 PSF)"),
                strokes({{6840, 3024}, {6840, 2304}, {8640, 1584}, {8640, 2664}, {8640, 3024}}, Red,
                        3)}));
}

TEST(SurchargePlots, LargestLoadOfZeroLiesOnTheBaseLine) {
    Problem problem = plainCantilever();
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 5;
    problem.VStripEnd(Right, 1) = 10;
    problem.VStripLoad(Right, 1) = 0;
    expectDrawing({drawn(problem, StripLoadPlot).back()}, {box(6840, 3024, 8640, 3024, Red, 3)});
}

TEST(SurchargePlots, LargestDistanceOfZeroStandsAtTheWall) {
    Problem problem = plainCantilever();
    problem.VLineCount(Right) = 1;
    problem.VLineDist(Right, 1) = 0;
    problem.VLineLoad(Right, 1) = 100;
    const Drawing all = drawn(problem, LineLoadPlot);
    EXPECT_EQ(textsOf(all).front(), "0.00 (FT)");
    expectDrawing({linesOf(all, Red, 3).front()}, {line(5040, 1584, 5040, 3024, Red, 3)});
}

TEST(SurchargePlots, LoadsAtTheEndOfTheRangeDrawNothingAtInfinity) {
    Problem problem = plainCantilever();
    problem.VLineCount(Right) = 1;
    problem.VLineDist(Right, 1) = 1e308;
    problem.VLineLoad(Right, 1) = 1e308;
    problem.HLineCount = 1;
    problem.HLineLoad(1) = -1.7e308;
    EXPECT_TRUE(isFinite(drawn(problem, LineLoadPlot)));
    EXPECT_TRUE(isFinite(drawn(problem, HorizontalLinePlot)));
}

// ---- horizontal loads -------------------------------------------------------------------------

Drawing horizontalAxis(const std::string& largest, const std::string& title) {
    return {line(2160, 1008, 7920, 1008, Black, 2),
            line(2160, 938, 2160, 1078, Black, 2),
            centred(2160, 796, largest),
            line(7920, 938, 7920, 1078, Black, 2),
            centred(7920, 796, largest),
            line(5040, 1008, 5040, 5320, Black, 2),
            centred(5040, 432, title)};
}

/// The head of a positive load's arrow points to the left, where it pushes.
Drawing head(double y, bool positive) {
    const double tip = positive ? 4968 : 5112;
    return {line(5040, y - 72, tip, y, Red, 3), line(5040, y + 72, tip, y, Red, 3)};
}

TEST(HorizontalPlots, PositiveLineLoadsLieOnTheLeftOfTheWall) {
    Problem problem = plainCantilever();
    problem.HLineCount = 3;
    const double elevations[] = {-2, -8, -5};
    const double loads[] = {950, -500, 0};
    for (int i = 1; i <= 3; ++i) {
        problem.HLineElev(i) = elevations[i - 1];
        problem.HLineLoad(i) = loads[i - 1];
    }
    // scale 1000, y = 1008 + 480 per foot (lowest -8: 9 FT); 950 -> 2736 twips to the left
    expectDrawing(
        drawn(problem, HorizontalLinePlot),
        joined({horizontalAxis("1000", "HORIZONTAL LINE LOADS (PLF)"),
                {line(5040, 1968, 2304, 1968, Red, 3)},
                head(1968, true),
                {line(5040, 4848, 6480, 4848, Red, 3)},
                head(4848, false),
                {textAt(1080, 1968 - 97.5, "EL= -2.0"), textAt(1080, 4848 - 97.5, "EL= -8.0"),
                 textAt(1080, 3408 - 97.5, "EL= -5.0")}}));
}

TEST(HorizontalPlots, TheLargestLoadCountsByItsSize) {
    Problem problem = plainCantilever();
    problem.HLineCount = 2;
    problem.HLineElev(1) = -2;
    problem.HLineLoad(1) = 300;
    problem.HLineElev(2) = -8;
    problem.HLineLoad(2) = -950;
    EXPECT_EQ(textsOf(drawn(problem, HorizontalLinePlot)).front(), "1000");
}

TEST(HorizontalPlots, DistributedLoadsAreJoinedToTheWallAtBothEnds) {
    Problem problem = plainCantilever();
    problem.HDistCount = 3;
    const double elevations[] = {0, -3, -8};
    const double loads[] = {100, 200, -100};
    for (int i = 1; i <= 3; ++i) {
        problem.HDistElev(i) = elevations[i - 1];
        problem.HDistLoad(i) = loads[i - 1];
    }
    const Drawing expected = joined(
        {horizontalAxis("200", "HORIZONTAL DISTRIBUTED LOADS (PSF)"),
         strokes({{5040, 1008}, {3600, 1008}, {2160, 2448}, {6480, 4848}, {5040, 4848}}, Red, 3),
         head(1008, true),
         head(4848, false),
         {textAt(1080, 1008 - 97.5, "EL= 0.0"), textAt(1080, 2448 - 97.5, "EL= -3.0"),
          textAt(1080, 4848 - 97.5, "EL= -8.0")}});
    expectDrawing(drawn(problem, HorizontalDistributedPlot), expected);
    expectDrawing(drawn(problem, HorizontalDistributedPlot, Medium::Paper), onPaper(expected));
}

TEST(HorizontalPlots, InputWaterPressuresRunFromZeroWithoutAHead) {
    Problem problem = plainCantilever();
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -2;
    problem.WaterPressElev(2) = -8;
    problem.WaterPressure(1) = 0;
    problem.WaterPressure(2) = 1000.5; // rounds to 1000: runs past the axis
    const double x = 5040 - 1000.5 / 1000 * 2880;
    expectDrawing(
        drawn(problem, InputWaterPlot),
        joined({horizontalAxis("1000", "INPUT WATER PRESSURES (PSF)"),
                strokes({{5040, 1968}, {5040, 1968}, {x, 4848}, {5040, 4848}}, Red, 3),
                head(4848, true),
                {textAt(1080, 1968 - 97.5, "EL= -2.0"), textAt(1080, 4848 - 97.5, "EL= -8.0")}}));
}

TEST(HorizontalPlots, WaterPointsOfOtherKindsAreNotRead) {
    Problem problem = plainCantilever();
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterPressCount = 2;
    problem.WaterPressure(1) = 77;
    expectDrawing(drawn(problem, InputWaterPlot),
                  horizontalAxis("0", "INPUT WATER PRESSURES (PSF)"));
}

TEST(HorizontalPlots, LoadsOfZeroLieOnTheWallLine) {
    Problem problem = plainCantilever();
    problem.HDistCount = 2;
    problem.HDistElev(1) = 0;
    problem.HDistElev(2) = -8;
    const Drawing all = drawn(problem, HorizontalDistributedPlot);
    expectDrawing(linesOf(all, Red, 3),
                  strokes({{5040, 1008}, {5040, 1008}, {5040, 4848}, {5040, 4848}}, Red, 3));
    EXPECT_EQ(textsOf(all).front(), "0");
}

TEST(HorizontalPlots, LoadsAFootAboveTheWallDrawTheFrameOnly) {
    Problem problem = plainCantilever();
    problem.HLineCount = 1;
    problem.HLineElev(1) = 1; // top - lowest + 1 = 0
    problem.HLineLoad(1) = 100;
    expectDrawing(drawn(problem, HorizontalLinePlot),
                  horizontalAxis("100", "HORIZONTAL LINE LOADS (PLF)"));
}

TEST(InputPlots, AnUnknownNumberIsRefused) {
    EXPECT_THROW(drawn(plainCantilever(), 0), RuntimeError);
    EXPECT_THROW(drawn(plainCantilever(), 11), RuntimeError);
    EXPECT_THROW(hasInputPlot(plainCantilever(), 11), RuntimeError);
}

TEST(InputPlots, EachKindOfLoadHasOneView) {
    std::vector<Load> shown;
    for (int plotNumber = 0; plotNumber <= InputPlotCount + 1; ++plotNumber) {
        if (const auto load = loadOfPlot(plotNumber)) {
            shown.push_back(*load);
        }
    }
    EXPECT_TRUE(std::ranges::equal(shown, LoadTable, {}, {}, &LoadRules::load));
    EXPECT_EQ(loadOfPlot(SystemPlot), std::nullopt);
    EXPECT_EQ(loadOfPlot(InputWaterPlot), std::nullopt);
}

TEST(InputPlots, ALoadOnTheWallIsNoSurcharge) {
    RecordingSurface surface;
    EXPECT_THROW(drawSurchargePlot(surface, plainCantilever(), Load::Distributed, Medium::Screen),
                 RuntimeError);
}

} // namespace

} // namespace korvane::test
