#include "plots/initial_plots.h"

#include "drawing.h"
#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

/// The small wall before its solution. The lower ground is at -8: three times 8 is not more than
/// 30, so that the depth would be -38; the grid's last row but two raises it to -10.
struct InitialPressures : testing::Test, SmallWall {
    PressureDiagrams& table = results.review.diagrams;

    /// Rows at 0, -5, -10, -20, -30, -45, -50, -60.
    void deepenGrid() { setElevations(table.grid, {0, -5, -10, -20, -30, -45, -50, -60}); }

    InitialPlots opened() const { return openInitialPlots(problem, results.review); }

    Drawing drawn(int plotNumber, Medium medium = Medium::Screen) {
        RecordingSurface surface;
        drawInitialPlot(surface, problem, results.review, opened(), plotNumber, medium);
        return surface.primitives();
    }
};

TEST_F(InitialPressures, RetainedHeightOfTenFeetShowsThirtyFeetBelowTheLowerGround) {
    deepenGrid();
    problem.SurfaceElev(Left, 1) = -10;
    EXPECT_EQ(opened().PlotBottomElev, -40);
}

TEST_F(InitialPressures, RetainedHeightOfFifteenFeetShowsThreeTimesAsMuch) {
    deepenGrid();
    problem.SurfaceElev(Left, 1) = -15; // -15 - 45 = -60
    table.grid.ElevGrid(6) = -70;       // the last row but two
    EXPECT_EQ(opened().PlotBottomElev, -60);
}

TEST_F(InitialPressures, TheLowerOfBothGroundsCounts) {
    deepenGrid();
    problem.SurfaceElev(Left, 1) = 0;
    problem.SurfaceElev(Right, 1) = -6;
    EXPECT_EQ(opened().PlotBottomElev, -36);
}

TEST_F(InitialPressures, AShorterGridRaisesTheDepthToItsLastRowButTwo) {
    EXPECT_EQ(opened().PlotBottomElev, -10);
}

TEST_F(InitialPressures, AGridWithoutThreeRowsIsOutOfRange) {
    table.grid.NumElevs = 2;
    EXPECT_THROW(opened(), RuntimeError);
}

/// What the net diagram shows down to -10: y = 1008 + 432 per foot.
void setNetPressures(PressureDiagrams& table) {
    auto& active = table.NetActive;
    auto& passive = table.NetPassive;
    active(1, 1) = 50;
    active(2, 2) = 350;
    active(2, 1) = 100;
    active(3, 2) = -95;
    active(3, 1) = -7000; // below the bottom: not looked at
    passive(1, 1) = 10;
    passive(2, 2) = 150;
    passive(2, 1) = 250;
    passive(3, 2) = 860;
    passive(3, 1) = 9000;
}

Drawing netFrame(double zero, const std::string& largest, const std::string& title,
                 const std::string& second) {
    // Left ground -8 at y 4464, layer -5 at 3168, water -4 at 2736; -10 and below are not inside.
    return {box(2160, 1008, 7920, 5328, Black, 2),
            line(zero, 1008, zero, 5328, Black, 2),
            middle(7920, 864, largest),
            middle(2160, 864, "100"),
            middle(zero, 864, "0"),
            centred(5040, 216, title),
            centred(5040, 432, second),
            centred(864, 288, "ELEV."),
            centred(864, 504, "(FT)"),
            middle(864, 1008, "0.00"),
            lowerEdge(864, 5364, "-10.00"),
            middle(864, 3168, "-5.00"),
            line(2160, 3168, 7920, 3168, Black, 2),
            lowerEdge(864, 2736, "-4.00"),
            line(2160, 2736, 7920, 2736, Blue, 2),
            lowerEdge(864, 4464, "-8.00"),
            line(2160, 4464, 7920, 4464, Black, 2)};
}

TEST_F(InitialPressures, NetDiagramOfACantileverWallShowsBothCurves) {
    setNetPressures(table);
    // M = 900 of the passive, N = 100 of the active curve: x = 2736 + 5.76 v
    expectDrawing(
        drawn(InitialNetSoilPlot),
        joined(
            {netFrame(2736, "900", "INITIAL NET PRESSURES (PSF)", "FOR CANTILEVER WALL DESIGN"),
             {point(3024, 1008, StartGrey, 3)},
             strokes({{3024, 1008}, {4752, 3168}, {3312, 3168}, {2188.8, 5328}}, Red, 3),
             {point(2793.6, 1008, StartGrey, 3)},
             strokes({{2793.6, 1008}, {3600, 3168}, {4176, 3168}, {7689.6, 5328}}, PassiveGreen, 3),
             {line(2736, 720, 3456, 720, Red, 3), textAt(3600, 720 - 97.5, "NET ACTIVE"),
              line(5472, 720, 6192, 720, PassiveGreen, 3),
              textAt(6312, 720 - 97.5, "NET PASSIVE")}}));
}

TEST_F(InitialPressures, NetDiagramOfAnAnchoredWallHasNoPassiveCurveAndNoPassiveKey) {
    setNetPressures(table);
    problem.WallType = WallKind::Anchored;
    // M = 400 of the active curve: x = 2160 + (v + 100) x 11.52; anchor -2 at y 1872
    expectDrawing(
        drawn(InitialNetSoilPlot),
        joined({netFrame(3312, "400", "INITIAL NET ACTIVE PRESSURES (PSF)",
                         "FOR ANCHORED WALL DESIGN"),
                {middle(864, 1872, "-2.00"), line(2160, 1872, 7920, 1872, Red, 2),
                 point(3888, 1008, StartGrey, 3)},
                strokes({{3888, 1008}, {7344, 3168}, {4464, 3168}, {2217.6, 5328}}, Red, 3),
                {line(2736, 720, 3456, 720, Red, 3), textAt(3600, 720 - 97.5, "NET ACTIVE")}}));
}

TEST_F(InitialPressures, NetDiagramOnPaperIsMoved) {
    setNetPressures(table);
    Drawing expected = drawn(InitialNetSoilPlot);
    for (Primitive& p : expected) {
        if (p.text == "-10.00") {
            p.a.y += 36; // 9720 in place of 5364 + 4320
        }
        if (p.kind == Primitive::Kind::Point) {
            p.colour = White;
        }
    }
    expectDrawing(drawn(InitialNetSoilPlot, Medium::Paper), onPaper(expected));
}

TEST_F(InitialPressures, NetActiveNeverNegativeTakesTheSizeOfItsSmallest) {
    setNetPressures(table);
    table.NetActive(3, 2) = 62; // the smallest is 50, of the first row
    const auto texts = textsOf(drawn(InitialNetSoilPlot));
    EXPECT_EQ(texts.at(0), "900");
    EXPECT_EQ(texts.at(1), "50");
}

TEST_F(InitialPressures, NetActiveFromZeroOnHasNoScaleBelowZero) {
    setNetPressures(table);
    table.NetActive(1, 1) = 0;
    table.NetActive(3, 2) = 0;
    const Drawing all = drawn(InitialNetSoilPlot);
    EXPECT_EQ(textsOf(all).at(1), "0"); // N, and with it the zero line at the left edge
    EXPECT_EQ(all.at(1).a.x, 2160);
    EXPECT_EQ(linesOf(all, Red, 3).size(), 4U);
}

TEST_F(InitialPressures, NetPressuresOfZeroDrawFrameAndKeyWithoutCurves) {
    table.NetActive.fill(0);
    table.NetPassive.fill(0);
    const Drawing all = drawn(InitialNetSoilPlot);
    EXPECT_TRUE(isFinite(all));
    expectDrawing({all.begin(), all.begin() + 3},
                  {box(2160, 1008, 7920, 5328, Black, 2), line(2160, 1008, 2160, 5328, Black, 2),
                   middle(2160, 864, "0")});
    EXPECT_EQ(linesOf(all, Red, 3).size(), 1U);          // the key
    EXPECT_EQ(linesOf(all, PassiveGreen, 3).size(), 1U); // the key
}

TEST_F(InitialPressures, SideDiagramsRunToThePlotBottom) {
    // Scales down to -10, where the value below that row still counts: active 250 -> 300 with
    // x = 960 + 9.6 a, passive 600; y = 1008 + 432 per foot.
    const Drawing all = drawn(InitialRightPlot);
    EXPECT_EQ(textsOf(all).at(0), "800"); // the row below, at -20, counts above itself: 780 left
    expectDrawing(
        linesOf(all, Red, 3),
        joined({strokes({{960, 1008}, {960, 1008}, {1680, 3168}, {960, 3168}}, Red, 3),
                strokes({{960, 3168}, {2040, 3168}, {2760, 5328}, {960, 5328}}, Red, 3)}));
    const auto texts = textsOf(all);
    EXPECT_EQ(texts.at(6), "RIGHTSIDE INITIAL PRESSURES (PSF)");
    EXPECT_EQ(texts.at(7), "FOR CANTILEVER WALL DESIGN");
    problem.ProgramMode = Mode::Analysis;
    problem.WallType = WallKind::Anchored;
    const auto left = textsOf(drawn(InitialLeftPlot));
    EXPECT_EQ(left.at(6), "LEFTSIDE INITIAL PRESSURES (PSF)");
    EXPECT_EQ(left.at(7), "FOR ANCHORED WALL ANALYSIS");
}

TEST_F(InitialPressures, WaterDiagramStopsAtThePlotBottom) {
    // 300 psf at -10: x = 2160 + 19.2 v
    const Drawing all = drawn(InitialNetWaterPlot);
    EXPECT_EQ(textsOf(all).at(3), "INITIAL NET WATER PRESSURES (PSF)");
    expectDrawing(linesOf(all, Blue, 3),
                  strokes({{2160, 1008}, {3600, 3168}, {3600, 3168}, {7920, 5328}}, Blue, 3));
}

TEST_F(InitialPressures, WaterDiagramOfAnAnchoredWallHasTheAnchorLine) {
    EXPECT_TRUE(linesOf(drawn(InitialNetWaterPlot), Red, 2).empty());
    problem.WallType = WallKind::Anchored; // anchor -2 at 432 twips a foot
    expectDrawing(linesOf(drawn(InitialNetWaterPlot), Red, 2),
                  {line(2160, 1872, 7920, 1872, Red, 2)});
}

TEST_F(InitialPressures, SideDiagramsOnPaperKeepTheirOwnBottomText) {
    const Drawing screen = drawn(InitialLeftPlot);
    const Drawing paper = drawn(InitialLeftPlot, Medium::Paper);
    ASSERT_EQ(screen.size(), paper.size());
    Drawing expected = onPaper(screen);
    for (Primitive& p : expected) {
        if (p.text == "-10.00") {
            p.a.y = 9648 - 195;
        }
    }
    expectDrawing(paper, expected);
}

TEST_F(InitialPressures, AnUnknownNumberIsRefused) {
    EXPECT_THROW(drawn(5), RuntimeError);
}

} // namespace

} // namespace korvane::test
