// The diagrams of the small solved wall. Level 1: y = 1008 + 216 per foot below the top.
#include "plots/result_plots.h"

#include "drawing.h"
#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

Drawing drawn(const SmallWall& wall, const ResultKind& kind, int plotNumber,
              Medium medium = Medium::Screen) {
    const PlotScales scales = openResultPlots(wall.problem, wall.results, kind);
    RecordingSurface surface;
    drawResultPlot(surface, wall.problem, wall.results, kind, scales, plotNumber, medium);
    return surface.primitives();
}

struct ResultPlots : testing::Test, SmallWall {};

Drawing boxAndZeroLine(double zero) {
    return {box(2160, 1008, 7920, 5328, Black, 2), line(zero, 1008, zero, 5328, Black, 2)};
}

Drawing heads(const std::string& first, const std::string& second) {
    return {centred(5040, 216, first), centred(5040, 432, second), centred(864, 288, "ELEV."),
            centred(864, 504, "(FT)")};
}

/// The levels at level 1: -5, -4 (right side), -8, -12, -10 (left side). The right surface lies at
/// the wall top and so not inside.
Drawing levels() {
    return {middle(864, 2088, "-5.00"),     line(2160, 2088, 7920, 2088, Black, 2),
            lowerEdge(864, 1872, "-4.00"),  line(2160, 1872, 7920, 1872, Blue, 2),
            lowerEdge(864, 2736, "-8.00"),  line(2160, 2736, 7920, 2736, Black, 2),
            middle(864, 3600, "-12.00"),    line(2160, 3600, 7920, 3600, Black, 2),
            lowerEdge(864, 3168, "-10.00"), line(2160, 3168, 7920, 3168, Blue, 2)};
}

/// Wall top and bottom of level 1.
Drawing ends(double bottomEdge = 5364) {
    return {middle(864, 1008, "0.00"), lowerEdge(864, bottomEdge, "-20.00")};
}

/// Anchor at -2: y = 1008 + 432.
Drawing anchor() {
    return {middle(864, 1440, "-2.00"), line(2160, 1440, 7920, 1440, Red, 2)};
}

/// Scale 0 to 4000 and 800: x = 3120 + 1.2 v.
Drawing momentCurve(Colour start) {
    return joined(
        {{point(3120, 1008, start, 3)},
         strokes(
             {{3120, 1008}, {3120, 1008}, {4320, 2088}, {4320, 2088}, {7260, 3168}, {2220, 5328}},
             Red, 3)});
}

Drawing momentScale() {
    return {middle(7920, 864, "4.00E+03"), middle(2160, 864, "8.00E+02"), middle(3120, 864, "0")};
}

TEST_F(ResultPlots, MomentOfACantileverDesign) {
    expectDrawing(drawn(*this, CantileverResults, MomentPlot),
                  joined({boxAndZeroLine(3120), momentScale(),
                          heads("BENDING MOMENT (LB-FT)", "FOR CANTILEVER WALL DESIGN"), ends(),
                          levels(), momentCurve(StartGrey)}));
}

TEST_F(ResultPlots, MomentOnPaperIsMovedWithAWhiteStartAndALowerBottomText) {
    expectDrawing(drawn(*this, CantileverResults, MomentPlot, Medium::Paper),
                  onPaper(joined({boxAndZeroLine(3120), momentScale(),
                                  heads("BENDING MOMENT (LB-FT)", "FOR CANTILEVER WALL DESIGN"),
                                  ends(9720 - 4320), levels(), momentCurve(White)})));
}

/// Scale 3E9 at the left and 1E9 at the right: x = 2160 + (3E9 - v) / 4E9 x 5760.
Drawing deflectionCurve() {
    return joined(
        {{point(2880, 1008, Red, 3)},
         strokes(
             {{2880, 1008}, {2880, 1008}, {5040, 2088}, {5040, 2088}, {7848, 3168}, {6480, 5328}},
             Red, 3)});
}

Drawing deflectionScale() {
    return {middle(2160, 864, "3.00E+09"), middle(7920, 864, "1.00E+09"), middle(6480, 864, "0")};
}

TEST_F(ResultPlots, DeflectionOfACantileverHangsItsTopTextByTheSecondTitle) {
    // "FOR CANTILEVER WALL DESIGN" has 26 characters: x = 864 - 1300, upper edge at 1008.
    expectDrawing(drawn(*this, CantileverResults, DeflectionPlot),
                  joined({boxAndZeroLine(6480),
                          deflectionScale(),
                          heads("SCALED DEFLECTION (LB-IN^3)", "FOR CANTILEVER WALL DESIGN"),
                          {textAt(-436, 1008, "0.00"), lowerEdge(864, 5364, "-20.00")},
                          levels(),
                          deflectionCurve()}));
}

TEST_F(ResultPlots, DeflectionOfAnAnchoredWallHasItsTopTextInTheColumn) {
    expectDrawing(drawn(*this, FreeEarthResults, DeflectionPlot),
                  joined({boxAndZeroLine(6480), deflectionScale(),
                          heads("SCALED DEFLECTION (LB-IN^3)",
                                "FOR ANCHORED WALL DESIGN BY FREE EARTH METHOD"),
                          ends(), levels(), anchor(), deflectionCurve()}));
}

TEST_F(ResultPlots, ShearIsWrittenInWholePoundsWithBothEnds) {
    // scale 2000 and 1000: x = 4080 + 1.92 v
    expectDrawing(
        drawn(*this, CantileverResults, ShearPlot),
        joined({boxAndZeroLine(4080),
                {middle(7920, 864, "2000"), middle(2160, 864, "1000"), middle(4080, 864, "0")},
                heads("SHEAR (LB)", "FOR CANTILEVER WALL DESIGN"),
                ends(),
                levels(),
                {point(4080, 1008, StartGrey, 3)},
                strokes({{4080, 1008},
                         {4080, 1008},
                         {5040, 2088},
                         {7900.8, 2088},
                         {2236.8, 3168},
                         {4080, 5328}},
                        Red, 3)}));
}

/// Scale 500 and 100: x = 3120 + 9.6 v.
Drawing pressureScale() {
    return {middle(7920, 864, "500"), middle(2160, 864, "100"), middle(3120, 864, "0")};
}

Drawing pressureCurve(Colour start) {
    return joined(
        {{point(3120, 1008, start, 3)},
         strokes(
             {{3120, 1008}, {3120, 1008}, {5520, 2088}, {7440, 2088}, {2160, 3168}, {6480, 5328}},
             Red, 3)});
}

TEST_F(ResultPlots, NetSoilPressure) {
    expectDrawing(drawn(*this, CantileverResults, NetPressurePlot),
                  joined({boxAndZeroLine(3120), pressureScale(),
                          heads("NET SOIL PRESSURE (PSF)", "FOR CANTILEVER WALL DESIGN"), ends(),
                          levels(), pressureCurve(StartGrey)}));
}

TEST_F(ResultPlots, NetSoilPressureOnPaperLacksTheWordNetAndItsTitlesStandLower) {
    const Drawing paperHeads{
        centred(5040, 4608 - 4320, "SOIL PRESSURE (PSF)"),
        centred(5040, 4824 - 4320, "FOR ANCHORED WALL ANALYSIS BY FREE EARTH METHOD"),
        centred(864, 288, "ELEV."), centred(864, 504, "(FT)")};
    problem.ProgramMode = Mode::Analysis;
    expectDrawing(drawn(*this, FreeEarthResults, NetPressurePlot, Medium::Paper),
                  onPaper(joined({boxAndZeroLine(3120), pressureScale(), paperHeads, ends(5400),
                                  levels(), anchor(), pressureCurve(White)})));
}

/// Scale 300 and 0: x = 2160 + 19.2 v. The step at -10 is a horizontal stroke.
Drawing waterCurve(Colour start) {
    return joined(
        {{point(2160, 1008, start, 3), line(2160, 1008, 2160, 1008, Green, 3)},
         strokes(
             {{2160, 1008}, {3600, 2088}, {3600, 2088}, {7920, 3168}, {6480, 3168}, {5040, 5328}},
             Blue, 3)});
}

TEST_F(ResultPlots, WaterRunsOnTheGridAndStartsGreen) {
    expectDrawing(
        drawn(*this, CantileverResults, NetWaterPlot),
        joined({boxAndZeroLine(2160),
                {middle(7920, 864, "300"), middle(2160, 864, "0"), middle(2160, 864, "0")},
                heads("NET WATER PRESSURES (PSF)", "FOR CANTILEVER WALL DESIGN"),
                ends(),
                levels(),
                waterCurve(StartGrey)}));
}

TEST_F(ResultPlots, WaterStartsAtTheValueBelowTheFirstRow) {
    water()(1, 2) = 250; // above the wall top: not drawn
    water()(1, 1) = 60;
    // The smallest is 60, above zero, and counts by its size: x = 2160 + (60 + 60) / 360 x 5760.
    expectDrawing(linesOf(drawn(*this, CantileverResults, NetWaterPlot), Green, 3),
                  {line(4080, 1008, 4080, 1008, Green, 3)});
}

// ---- soil pressures of one side ---------------------------------------------------------------

/// Level lines across two boxes, surfaces first, then layers, then water.
Drawing sideLevels(double column, double left, double right) {
    const auto ruled = [&](double y, Colour colour) {
        return Drawing{line(left, y, left + 2880, y, colour, 2),
                       line(right, y, right + 2880, y, colour, 2)};
    };
    return joined({{lowerEdge(column, 2736, "-8.00")},
                   ruled(2736, Black),
                   {middle(column, 2088, "-5.00")},
                   ruled(2088, Black),
                   {middle(column, 3600, "-12.00")},
                   ruled(3600, Black),
                   {lowerEdge(column, 1872, "-4.00")},
                   ruled(1872, Blue),
                   {lowerEdge(column, 3168, "-10.00")},
                   ruled(3168, Blue)});
}

Drawing leftBoxesAndScales() {
    return {box(2160, 1008, 5040, 5328, Black, 2),
            box(5760, 1008, 8640, 5328, Black, 2),
            middle(2160, 864, "800"),
            middle(5040, 864, "0"),
            middle(5760, 864, "400"),
            middle(8640, 864, "0"),
            centred(3600, 576, "PASSIVE"),
            centred(7200, 576, "ACTIVE"),
            centred(5400, 216, "LEFTSIDE SOIL PRESSURES (PSF)"),
            centred(5400, 432, "FOR CANTILEVER WALL DESIGN"),
            centred(864, 288, "ELEV."),
            centred(864, 504, "(FT)")};
}

/// Passive x = 5040 - 3.6 p, active x = 8640 - 7.2 a, leftward.
Drawing leftStrips() {
    return joined(
        {strokes({{5040, 1008}, {5040, 1008}, {5040, 2088}, {5040, 2088}}, PassiveGreen, 3),
         strokes({{5040, 2088}, {5040, 2088}, {3960, 3168}, {5040, 3168}}, PassiveGreen, 3),
         strokes({{5040, 3168}, {3888, 3168}, {2232, 5328}, {5040, 5328}}, PassiveGreen, 3),
         strokes({{8640, 1008}, {8640, 1008}, {8640, 2088}, {8640, 2088}}, Red, 3),
         strokes({{8640, 2088}, {8640, 2088}, {8208, 3168}, {8640, 3168}}, Red, 3),
         strokes({{8640, 3168}, {8064, 3168}, {7200, 5328}, {8640, 5328}}, Red, 3)});
}

TEST_F(ResultPlots, LeftsidePressuresGrowLeftward) {
    expectDrawing(
        drawn(*this, CantileverResults, LeftPressurePlot),
        joined({leftBoxesAndScales(), ends(), sideLevels(864, 2160, 5760), leftStrips()}));
}

TEST_F(ResultPlots, LeftsidePressuresOnPaper) {
    // first box 4800 - 1200 = 3600, second 8400 - 1200 = 7200; zeros 10080 and 6480; column 2304:
    // the screen moved, but for the bottom text's lower edge
    expectDrawing(drawn(*this, CantileverResults, LeftPressurePlot, Medium::Paper),
                  onPaper(joined({leftBoxesAndScales(), ends(9648 - 4320),
                                  sideLevels(864, 2160, 5760), leftStrips()})));
}

Drawing rightBoxesAndScales() {
    return {box(960, 1008, 3840, 5328, Black, 2),
            box(4560, 1008, 7440, 5328, Black, 2),
            middle(7440, 864, "800"),
            middle(4560, 864, "0"),
            middle(3840, 864, "400"),
            middle(960, 864, "0"),
            centred(6000, 576, "PASSIVE"),
            centred(2400, 576, "ACTIVE"),
            centred(4200, 216, "RIGHTSIDE SOIL PRESSURES (PSF)"),
            centred(4200, 432, "FOR CANTILEVER WALL DESIGN"),
            centred(8736, 288, "ELEV."),
            centred(8736, 504, "(FT)")};
}

/// Passive x = 4560 + 3.6 p, active x = 960 + 7.2 a, rightward.
Drawing rightStrips() {
    return joined(
        {strokes({{4560, 1008}, {4704, 1008}, {6000, 2088}, {4560, 2088}}, PassiveGreen, 3),
         strokes({{4560, 2088}, {6360, 2088}, {6720, 3168}, {4560, 3168}}, PassiveGreen, 3),
         strokes({{4560, 3168}, {6720, 3168}, {7152, 5328}, {4560, 5328}}, PassiveGreen, 3),
         strokes({{960, 1008}, {960, 1008}, {1680, 2088}, {960, 2088}}, Red, 3),
         strokes({{960, 2088}, {2040, 2088}, {2760, 3168}, {960, 3168}}, Red, 3),
         strokes({{960, 3168}, {2760, 3168}, {3696, 5328}, {960, 5328}}, Red, 3)});
}

Drawing rightEnds(double bottomEdge) {
    return {middle(8736, 1008, "0.00"), lowerEdge(8736, bottomEdge, "-20.00")};
}

TEST_F(ResultPlots, RightsidePressuresAreMirroredWithTheColumnAtTheRight) {
    expectDrawing(drawn(*this, CantileverResults, RightPressurePlot),
                  joined({rightBoxesAndScales(), rightEnds(5364), sideLevels(8736, 960, 4560),
                          rightStrips()}));
}

TEST_F(ResultPlots, RightsidePressuresOnPaper) {
    // boxes at 2400 and 6000, zeros 2400 and 6000, column 7872 x 2 - 5568 = 10176
    expectDrawing(drawn(*this, CantileverResults, RightPressurePlot, Medium::Paper),
                  onPaper(joined({rightBoxesAndScales(), rightEnds(5328),
                                  sideLevels(8736, 960, 4560), rightStrips()})));
}

TEST_F(ResultPlots, SideDiagramsOfAnAnchoredWallHaveNoAnchorLine) {
    for (const int plot : {LeftPressurePlot, RightPressurePlot}) {
        EXPECT_TRUE(linesOf(drawn(*this, FreeEarthResults, plot), Red, 2).empty());
    }
}

// ---- words ------------------------------------------------------------------------------------

TEST_F(ResultPlots, DesignShowsScaledDeflectionAndAnalysisInches) {
    EXPECT_EQ(textsOf(drawn(*this, CantileverResults, DeflectionPlot)).at(3),
              "SCALED DEFLECTION (LB-IN^3)");
    problem.ProgramMode = Mode::Analysis;
    const auto texts = textsOf(drawn(*this, CantileverResults, DeflectionPlot));
    EXPECT_EQ(texts.at(3), "DEFLECTION (IN)");
    EXPECT_EQ(texts.at(4), "FOR CANTILEVER WALL ANALYSIS");
}

TEST_F(ResultPlots, SecondTitlesOfTheThreeScreens) {
    const auto second = [&](const ResultKind& kind) {
        return textsOf(drawn(*this, kind, ShearPlot)).at(4);
    };
    EXPECT_EQ(second(FixedEarthResults), "FOR ANCHORED WALL DESIGN BY FIXED EARTH METHOD");
    problem.ProgramMode = Mode::Analysis;
    EXPECT_EQ(second(FreeEarthResults), "FOR ANCHORED WALL ANALYSIS BY FREE EARTH METHOD");
    EXPECT_EQ(second(FixedEarthResults), "FOR ANCHORED WALL ANALYSIS BY FIXED EARTH METHOD");
}

/// The fixed earth bottom at -24 with the last regular row at -20 and far rows below it.
struct FarBottom : ResultPlots {
    void SetUp() override {
        LevelResult& level = results.levels(2);
        level.method = SolutionMethod::FixedEarth;
        ElevationGrid& grid = level.solved.grid;
        setElevations(grid, {0, -5, -10, -20, -50020, -100020});
        grid.FarElev = -50020;
        for (const int k : {1, 2}) {
            for (const int side : {Right, Left}) {
                level.solved.pressures.PassivePressures(side, 5, k) = 4e6;
                level.solved.pressures.ActivePressures(side, 5, k) = 3e5;
            }
            water()(5, k) = -3e6;
        }
    }
};

TEST_F(FarBottom, ScalesStripsAndWaterEndWithTheLastRegularRow) {
    const PlotScales scales = openResultPlots(problem, results, FixedEarthResults);
    EXPECT_EQ(scales.PassiveScale, 800); // as at -20
    EXPECT_EQ(scales.ActiveScale, 400);
    EXPECT_EQ(scales.WaterScaleMax, 300);
    EXPECT_EQ(scales.WaterScaleMin, 0);
    // y = 1008 + 180 per foot: the last strip ends at -20.
    for (const int plot : {LeftPressurePlot, RightPressurePlot}) {
        const Drawing strips = linesOf(drawn(*this, FixedEarthResults, plot), PassiveGreen, 3);
        EXPECT_EQ(strips.size(), 9U);
        EXPECT_EQ(strips.back().b.y, 4608);
    }
    EXPECT_EQ(linesOf(drawn(*this, FixedEarthResults, NetWaterPlot), Blue, 3).back().b.y, 4608);
    const PlotReadings readings =
        readResultPlot(problem, results, FixedEarthResults, LeftPressurePlot);
    EXPECT_EQ(readings.curves.front().points.back().elevation, -20);
}

TEST_F(FarBottom, ABottomAboveTheLastRegularRowAndOtherMethodsRunOn) {
    results.levels(2).bottomElev = -20;
    EXPECT_EQ(gridRows(results.levels(2)), results.levels(2).diagrams.RowCount);
    results.levels(2).bottomElev = -24;
    EXPECT_EQ(gridRows(results.levels(2)), 4);
    results.levels(2).method = SolutionMethod::FreeEarth;
    EXPECT_GT(gridRows(results.levels(2)), 4);
}

// ---- levels -----------------------------------------------------------------------------------

TEST_F(ResultPlots, FixedEarthUsesItsOwnBottom) {
    // bottom -24: y = 1008 + 180 per foot; left ground at 2448, anchor at 1368
    const Drawing fixed = drawn(*this, FixedEarthResults, ShearPlot);
    EXPECT_EQ(textsOf(fixed).at(8), "-24.00");
    expectDrawing(linesOf(fixed, Red, 2), {line(2160, 1368, 7920, 1368, Red, 2)});
    expectDrawing(linesOf(fixed, Blue, 2),
                  {line(2160, 1728, 7920, 1728, Blue, 2), line(2160, 2808, 7920, 2808, Blue, 2)});
    expectDrawing({linesOf(fixed, Red, 3).back()}, {line(2236.8, 2808, 4080, 4608, Red, 3)});
}

TEST_F(ResultPlots, AnchorIsRuledAlsoOutsideTheBox) {
    problem.AnchorElev = 5; // y = 1008 - 5 x 216
    expectDrawing(linesOf(drawn(*this, FreeEarthResults, MomentPlot), Red, 2),
                  {line(2160, -72, 7920, -72, Red, 2)});
}

TEST_F(ResultPlots, WaterDiagramsOfAnchoredWallsHaveTheAnchorLine) {
    expectDrawing(linesOf(drawn(*this, FreeEarthResults, NetWaterPlot), Red, 2),
                  {line(2160, 1440, 7920, 1440, Red, 2)});
    expectDrawing(linesOf(drawn(*this, FixedEarthResults, NetWaterPlot), Red, 2),
                  {line(2160, 1368, 7920, 1368, Red, 2)}); // 180 twips a foot
    EXPECT_TRUE(linesOf(drawn(*this, CantileverResults, NetWaterPlot), Red, 2).empty());
}

TEST_F(ResultPlots, LevelsAtTheEndsAreNotRuled) {
    problem.SurfaceElev(Left, 1) = 0;
    problem.SoilBottomElev(Right, 1) = 0; // at the top: passed over
    problem.SoilLayerCount(Right) = 4;
    problem.SoilBottomElev(Right, 2) = -3;
    problem.SoilBottomElev(Right, 3) = -20; // at the bottom: the last one looked at
    problem.SoilLayerCount(Left) = 1;
    problem.WaterElev(Right) = 0;
    problem.WaterElev(Left) = -20;
    const Drawing all = drawn(*this, CantileverResults, MomentPlot);
    expectDrawing(linesOf(all, Black, 2),
                  {line(3120, 1008, 3120, 5328, Black, 2), line(2160, 1656, 7920, 1656, Black, 2)});
    EXPECT_TRUE(linesOf(all, Blue, 2).empty());
}

TEST_F(ResultPlots, TheFirstBoundaryAtOrBelowTheBottomEndsTheLayers) {
    // Nothing holds layers in order here: what stands behind the first deep one is not reached.
    problem.SoilLayerCount(Left) = 3;
    problem.SoilBottomElev(Left, 1) = -25;
    problem.SoilBottomElev(Left, 2) = -12;
    EXPECT_EQ(linesOf(drawn(*this, CantileverResults, MomentPlot), Black, 2).size(), 3U);
}

TEST_F(ResultPlots, WaterGivenByPressuresHasNoLevelLinesButItsDiagram) {
    problem.WaterDataKind = WaterData::Pressures;
    const Drawing all = drawn(*this, CantileverResults, NetWaterPlot);
    EXPECT_TRUE(linesOf(all, Blue, 2).empty());
    EXPECT_EQ(linesOf(all, Blue, 3).size(), 5U);
}

TEST_F(ResultPlots, TheFirstRowIsTakenToLieAtTheWallTop) {
    diagrams().ResultElev(1) = -1;
    const Drawing curve = linesOf(drawn(*this, CantileverResults, MomentPlot), Red, 3);
    EXPECT_EQ(curve.front().a.y, 1008);
}

// ---- scales of zero ---------------------------------------------------------------------------

TEST_F(ResultPlots, SmallestOfZeroIsNotWrittenInMomentsButInShears) {
    diagrams().MomentRange.smallest = 0;
    diagrams().ShearRange.smallest = 0;
    const auto moment = textsOf(drawn(*this, CantileverResults, MomentPlot));
    EXPECT_EQ(moment.at(0), "4.00E+03");
    EXPECT_EQ(moment.at(1), "0");
    EXPECT_EQ(moment.at(2), "BENDING MOMENT (LB-FT)");
    const auto shear = textsOf(drawn(*this, CantileverResults, ShearPlot));
    EXPECT_EQ(shear.at(1), "0");
    EXPECT_EQ(shear.at(2), "0");
    EXPECT_EQ(shear.at(3), "SHEAR (LB)");
}

TEST_F(ResultPlots, LargestDeflectionOfFiveHundredThousandthsIsWrittenAsZeroAtTheLeftEnd) {
    diagrams().DeflectionRange.largest = 0.00005;
    const Drawing all = drawn(*this, CantileverResults, DeflectionPlot);
    expectDrawing({all.begin() + 1, all.begin() + 5},
                  {line(2160, 1008, 2160, 5328, Black, 2), middle(2160, 864, "0.00E+00"),
                   middle(7920, 864, "1.00E+09"), middle(2160, 864, "0")});
}

TEST_F(ResultPlots, MomentsOfZeroDrawTheFrameWithoutACurve) {
    diagrams().MomentRange.largest = 0;
    diagrams().MomentRange.smallest = 0;
    diagrams().ResultMoment.fill(0);
    expectDrawing(drawn(*this, CantileverResults, MomentPlot),
                  joined({boxAndZeroLine(2160),
                          {middle(2160, 864, "0")},
                          heads("BENDING MOMENT (LB-FT)", "FOR CANTILEVER WALL DESIGN"),
                          ends(),
                          levels()}));
}

TEST_F(ResultPlots, DeflectionsOfZeroHaveTheirZeroAtTheRight) {
    diagrams().DeflectionRange.largest = 0;
    diagrams().DeflectionRange.smallest = 0;
    const Drawing all = drawn(*this, FreeEarthResults, DeflectionPlot);
    expectDrawing(all, joined({boxAndZeroLine(7920),
                               {middle(7920, 864, "0")},
                               heads("SCALED DEFLECTION (LB-IN^3)",
                                     "FOR ANCHORED WALL DESIGN BY FREE EARTH METHOD"),
                               ends(),
                               levels(),
                               anchor()}));
}

TEST_F(ResultPlots, WaterOfZeroDrawsTheFrameWithoutACurve) {
    water().fill(0);
    const Drawing all = drawn(*this, CantileverResults, NetWaterPlot);
    EXPECT_TRUE(linesOf(all, Green, 3).empty());
    EXPECT_TRUE(linesOf(all, Blue, 3).empty());
    EXPECT_EQ(linesOf(all, Blue, 2).size(), 2U);
}

TEST_F(ResultPlots, ActiveScaleOfZeroKeepsBoxAndScaleWithoutStrips) {
    pressures().ActivePressures.fill(0.00005);
    const Drawing all = drawn(*this, CantileverResults, LeftPressurePlot);
    expectDrawing({all.begin(), all.begin() + 6},
                  {box(2160, 1008, 5040, 5328, Black, 2), box(5760, 1008, 8640, 5328, Black, 2),
                   middle(2160, 864, "800"), middle(5040, 864, "0"), middle(5760, 864, "0"),
                   middle(8640, 864, "0")});
    EXPECT_TRUE(linesOf(all, Red, 3).empty());
    EXPECT_EQ(linesOf(all, PassiveGreen, 3).size(), 9U);
}

TEST_F(ResultPlots, PassiveScaleOfZeroKeepsTheBoxWithoutStrips) {
    pressures().PassivePressures.fill(0);
    const Drawing all = drawn(*this, CantileverResults, RightPressurePlot);
    expectDrawing({all.begin(), all.begin() + 4},
                  {box(960, 1008, 3840, 5328, Black, 2), box(4560, 1008, 7440, 5328, Black, 2),
                   middle(7440, 864, "0"), middle(4560, 864, "0")});
    EXPECT_TRUE(linesOf(all, PassiveGreen, 3).empty());
    EXPECT_EQ(linesOf(all, Red, 3).size(), 9U);
}

TEST_F(ResultPlots, StripsEndAtTheFirstRowAtOrBelowTheBottom) {
    grid().ElevGrid(4) = -21; // the strip runs past the box: y = 1008 + 21 x 216
    const Drawing strips = linesOf(drawn(*this, CantileverResults, RightPressurePlot), Red, 3);
    EXPECT_EQ(strips.size(), 9U);
    EXPECT_DOUBLE_EQ(strips.back().b.y, 5544);
}

TEST_F(ResultPlots, AWallWithoutHeightDrawsNoLevelsAndNoCurves) {
    level1().bottomElev = 0;
    for (int plot = DeflectionPlot; plot <= NetWaterPlot; ++plot) {
        const Drawing all = drawn(*this, FreeEarthResults, plot);
        EXPECT_TRUE(isFinite(all));
        EXPECT_TRUE(linesOf(all, Red, 2).empty());
        EXPECT_TRUE(linesOf(all, Red, 3).empty());
        EXPECT_TRUE(linesOf(all, Blue, 3).empty());
        EXPECT_TRUE(linesOf(all, PassiveGreen, 3).empty());
    }
}

TEST_F(ResultPlots, AnUnknownNumberIsRefused) {
    EXPECT_THROW(drawn(*this, CantileverResults, 0), RuntimeError);
    EXPECT_THROW(drawn(*this, CantileverResults, 8), RuntimeError);
}

TEST_F(ResultPlots, OpeningRoundsTheRangesOfItsLevel) {
    diagrams().MomentRange = {100, -20};
    const PlotScales scales = openResultPlots(problem, results, FixedEarthResults);
    EXPECT_EQ(scales.moment.largest, 4000);
    EXPECT_EQ(scales.moment.smallest, 800);
    EXPECT_EQ(scales.shear.largest, 2000);
    EXPECT_EQ(scales.pressure.smallest, 100);
    EXPECT_NEAR(scales.deflection.largest, 3e9, 1);
    const PlotScales freeEarth = openResultPlots(problem, results, FreeEarthResults);
    EXPECT_EQ(freeEarth.moment.largest, 100);
    EXPECT_EQ(freeEarth.moment.smallest, 20);
}

} // namespace

} // namespace korvane::test
