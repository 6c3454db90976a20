#include "plots/plot_screen.h"

#include "drawing.h"
#include "plots/input_plots.h"
#include "plots/result_plots.h"
#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace korvane::test {

namespace {

using Name = PlotScreenName;

struct PlotScreens : testing::Test, SmallWall {
    PlotView opened(Name name) const { return openPlotScreen(data(), name); }
};

/// "mnuPresItem(0)", "mnuShear".
std::string fullName(const PlotEntry& entry) {
    return entry.index < 0 ? entry.objectName
                           : entry.objectName + ("(" + std::to_string(entry.index) + ")");
}

/// "name caption number" of every entry; those in a menu begin with a blank.
std::vector<std::string> listed(Name name) {
    std::vector<std::string> list;
    for (const PlotEntry& entry : plotScreen(name).entries) {
        const std::string indent = *entry.menu == '\0' ? "" : " ";
        list.push_back(indent + fullName(entry) + " " + entry.caption + " " +
                       std::to_string(entry.plotNumber));
    }
    return list;
}

std::vector<std::string> enabledEntries(const PlotView& view) {
    std::vector<std::string> list;
    for (const PlotEntry& entry : plotScreen(view.screen).entries) {
        if (isEnabled(view, entry)) {
            list.push_back(fullName(entry));
        }
    }
    return list;
}

using Names = std::vector<std::string>;

TEST_F(PlotScreens, MenusOfTheResultScreensDifferInThreeCaptions) {
    EXPECT_EQ(
        listed(Name::CANPLOT),
        (Names{"mnuDefl &Deflections 1", "mnuMoment &Moment Diagram 2", "mnuShear &Shear Diagram 3",
               "mnuPres Design &Pressures 0", " mnuPresItem(0) &Net Soil Pressure 4",
               " mnuPresItem(1) &Leftside Soil Pressures 5",
               " mnuPresItem(2) &Rightside Soil Pressures 6",
               " mnuPresItem(3) Net &Water Pressures 7", "mnuFinished &Finished 0"}));
    const auto captions = [](Name name) {
        const auto list = listed(name);
        return Names{list.at(3), list.at(4), list.at(7)};
    };
    EXPECT_EQ(captions(Name::FREEPLOT),
              (Names{"mnuPres &Pressures 0", " mnuPresItem(0) &Net Soil Pressures 4",
                     " mnuPresItem(3) Net &Water Pressures 7"}));
    EXPECT_EQ(captions(Name::FIXDPLOT),
              (Names{"mnuPres &Pressures 0", " mnuPresItem(0) &Net Soil Pressure 4",
                     " mnuPresItem(3) Net &Water Pressure 7"}));
}

TEST_F(PlotScreens, MenusOfInitialPressuresAndInput) {
    EXPECT_EQ(listed(Name::VUSOLPLT),
              (Names{"mnuLeftside &Leftside Press 1", "mnuRightside &Rightside Press 2",
                     "mnuNetSoil &Net Soil Press 3", "mnuNetWater Net &Water Press 4",
                     "mnuFinished &Finished 0"}));
    EXPECT_EQ(
        listed(Name::VUINPLOT),
        (Names{"mnuSystem &System 1", "mnuSurch S&urcharges 0", " mnuSurchItem(0) &Line Loads 2",
               " mnuSurchItem(1) &Unif. Loads 3", " mnuSurchItem(2) &Strip Loads 4",
               " mnuSurchItem(3) &Ramp Loads 5", " mnuSurchItem(4) &Triang. Loads 6",
               " mnuSurchItem(5) &Variable Loads 7", "mnuHoriz &Horizontal Loads 0",
               " mnuHorizItem(0) &Line Loads 8", " mnuHorizItem(1) &Distributed Loads 9",
               " mnuHorizItem(2) &Input Water Pres. 10", "mnuFinished &Finished 0"}));
    EXPECT_TRUE(listed(Name::ROWECURV).empty());
}

TEST_F(PlotScreens, WindowTitlesAndPictures) {
    const auto described = [](Name name) {
        const PlotScreen& screen = plotScreen(name);
        EXPECT_EQ(screen.name, name);
        return screen.title + (" " + std::to_string(screen.pictureCount));
    };
    EXPECT_EQ(described(Name::CANPLOT), "CANTILEVER WALL RESULTS 7");
    EXPECT_EQ(described(Name::FREEPLOT), "ANCHORED WALL RESULTS BY FREE EARTH METHOD 7");
    EXPECT_EQ(described(Name::FIXDPLOT), "ANCHORED WALL RESULTS BY FIXED EARTH METHOD 7");
    EXPECT_EQ(described(Name::VUSOLPLT), "INITIAL SOIL PRESSURES 4");
    EXPECT_EQ(described(Name::VUINPLOT), "INPUT DATA 10");
    EXPECT_EQ(described(Name::ROWECURV), "ROWE'S MOMENT REDUCTION FOR PILES IN SAND 1");
}

TEST_F(PlotScreens, OpensInTheMenuStateWithPreparedScales) {
    const PlotView view = opened(Name::CANPLOT);
    EXPECT_FALSE(view.showing);
    EXPECT_EQ(view.scales.PassiveScale, 800);
    EXPECT_EQ(view.scales.ActiveScale, 400);
    EXPECT_EQ(view.scales.WaterScaleMax, 300);
    EXPECT_EQ(view.scales.moment.largest, 4000);
    EXPECT_EQ(enabledEntries(view).size(), plotScreen(Name::CANPLOT).entries.size());
}

TEST_F(PlotScreens, ShowingDisablesTheMenusAndDoneEnablesThemAgain) {
    PlotView view = opened(Name::FREEPLOT);
    choosePlot(view, ShearPlot);
    EXPECT_TRUE(view.showing);
    EXPECT_EQ(view.PlotNumber, 3);
    EXPECT_TRUE(enabledEntries(view).empty());
    choosePlot(view, MomentPlot); // its entry is disabled
    EXPECT_EQ(view.PlotNumber, 3);
    EXPECT_FALSE(finishPlot(view));
    EXPECT_FALSE(view.showing);
    EXPECT_EQ(enabledEntries(view).size(), plotScreen(Name::FREEPLOT).entries.size());
    choosePlot(view, MomentPlot);
    EXPECT_EQ(view.PlotNumber, 2);
}

TEST_F(PlotScreens, FrameCloseIsDoneWhileShowingAndFinishedInTheMenu) {
    PlotView view = opened(Name::VUINPLOT);
    choosePlot(view, SystemPlot);
    EXPECT_FALSE(closePlotFrame(view));
    EXPECT_FALSE(view.showing);
    EXPECT_TRUE(closePlotFrame(view));
}

TEST_F(PlotScreens, RoweShowsAtOnceAndDoneClosesIt) {
    problem.NumHeadingLines = 4;
    PlotView view = opened(Name::ROWECURV);
    EXPECT_TRUE(view.showing);
    EXPECT_EQ(view.headings.size(), 4U);
    EXPECT_TRUE(finishPlot(view));
    view = opened(Name::ROWECURV);
    EXPECT_TRUE(closePlotFrame(view));
}

TEST_F(PlotScreens, NoWaterDataDisableTheWaterEntry) {
    problem.WaterDataKind = WaterData::None;
    PlotView solved = opened(Name::CANPLOT);
    EXPECT_EQ(enabledEntries(solved),
              (Names{"mnuDefl", "mnuMoment", "mnuShear", "mnuPres", "mnuPresItem(0)",
                     "mnuPresItem(1)", "mnuPresItem(2)", "mnuFinished"}));
    choosePlot(solved, NetWaterPlot);
    EXPECT_FALSE(solved.showing);
    EXPECT_EQ(enabledEntries(opened(Name::VUSOLPLT)),
              (Names{"mnuLeftside", "mnuRightside", "mnuNetSoil", "mnuFinished"}));
}

TEST_F(PlotScreens, WaterPressuresBelowTheThresholdDisableTheWaterEntry) {
    problem.WaterDataKind = WaterData::Pressures;
    water().fill(-0.0001);
    EXPECT_FALSE(opened(Name::CANPLOT).hasPlot(NetWaterPlot));
    water()(2, 2) = -0.00011;
    EXPECT_TRUE(opened(Name::CANPLOT).hasPlot(NetWaterPlot));
}

TEST_F(PlotScreens, AProblemWithoutLoadsKeepsItsLoadMenusDisabled) {
    EXPECT_EQ(enabledEntries(opened(Name::VUINPLOT)), (Names{"mnuSystem", "mnuFinished"}));
}

TEST_F(PlotScreens, LoadEntriesAreEnabledByTheirCountsOnEitherSide) {
    problem.VLineCount(Left) = 1;
    problem.VVarCount(Right) = 2;
    problem.HDistCount = 2;
    EXPECT_EQ(enabledEntries(opened(Name::VUINPLOT)),
              (Names{"mnuSystem", "mnuSurch", "mnuSurchItem(0)", "mnuSurchItem(5)", "mnuHoriz",
                     "mnuHorizItem(1)", "mnuFinished"}));
    problem.VLineCount(Left) = 0;
    problem.VVarCount(Right) = 0;
    problem.HDistCount = 0;
    problem.VUniformCount(Right) = 1;
    problem.VStripCount(Left) = 1;
    problem.VRampCount(Left) = 1;
    problem.VTriCount(Right) = 1;
    problem.HLineCount = 1;
    EXPECT_EQ(
        enabledEntries(opened(Name::VUINPLOT)),
        (Names{"mnuSystem", "mnuSurch", "mnuSurchItem(1)", "mnuSurchItem(2)", "mnuSurchItem(3)",
               "mnuSurchItem(4)", "mnuHoriz", "mnuHorizItem(0)", "mnuFinished"}));
}

TEST_F(PlotScreens, WaterPressuresGivenOpenTheirView) {
    problem.WaterDataKind = WaterData::Pressures;
    PlotView view = opened(Name::VUINPLOT);
    EXPECT_EQ(enabledEntries(view),
              (Names{"mnuSystem", "mnuHoriz", "mnuHorizItem(2)", "mnuFinished"}));
    choosePlot(view, InputWaterPlot);
    EXPECT_EQ(view.PlotNumber, 10);
}

TEST_F(PlotScreens, AnEmptyNumberIsNoDiagram) {
    PlotView view = opened(Name::VUSOLPLT);
    EXPECT_THROW(choosePlot(view, 0), RuntimeError);
    choosePlot(view, 5); // in range, but no diagram of this screen
    EXPECT_FALSE(view.showing);
}

TEST_F(PlotScreens, AtMostTwoHeadingLinesStandAsTheyAre) {
    problem.NumHeadingLines = 3;
    problem.HeadingLines(1) = "'FIRST ";
    problem.HeadingLines(2) = "'SECOND";
    problem.HeadingLines(3) = "'THIRD";
    EXPECT_EQ(opened(Name::CANPLOT).headings, (Names{"'FIRST ", "'SECOND"}));
    EXPECT_EQ(opened(Name::VUINPLOT).headings.size(), 2U);
    EXPECT_EQ(opened(Name::ROWECURV).headings.size(), 3U);
}

Drawing drawn(const PlotData& data, PlotView& view, int plotNumber, Medium medium) {
    view.showing = false;
    choosePlot(view, plotNumber);
    RecordingSurface surface;
    drawPlot(surface, data, view, medium);
    return surface.primitives();
}

TEST_F(PlotScreens, PaperHasHeadingsAndOuterFrameBeforeTheDiagram) {
    problem.NumHeadingLines = 2;
    problem.HeadingLines(2) = "'SECOND";
    PlotView view = opened(Name::CANPLOT);
    const Drawing paper = drawn(data(), view, ShearPlot, Medium::Paper);
    expectDrawing({paper.begin(), paper.begin() + 4},
                  {textAt(1440, 3744, "'PLAIN CANTILEVER "), textAt(1440, 4032, "'SECOND"),
                   box(1440, 4320, 11160, 9720, Black, 2), box(3600, 5328, 9360, 9648, Black, 2)});
    EXPECT_EQ(paper.size(), drawn(data(), view, ShearPlot, Medium::Screen).size() + 3);
}

TEST_F(PlotScreens, InputAndRoweHaveNoOuterFrame) {
    for (const Name name : {Name::VUINPLOT, Name::ROWECURV}) {
        PlotView view = opened(name);
        const Drawing paper = drawn(data(), view, 1, Medium::Paper);
        expectDrawing({paper.front()}, {textAt(1440, 3744, "'PLAIN CANTILEVER ")});
        EXPECT_EQ(paper.size(), drawn(data(), view, 1, Medium::Screen).size() + 1);
    }
}

TEST_F(PlotScreens, RoweWithFourHeadingsKeepsTheLastLineAboveTheDrawing) {
    problem.NumHeadingLines = 4;
    for (int i = 1; i <= 4; ++i) {
        problem.HeadingLines(i) = "'LINE";
    }
    PlotView view = opened(Name::ROWECURV);
    const Drawing paper = drawn(data(), view, 1, Medium::Paper);
    expectDrawing({paper.begin(), paper.begin() + 4},
                  {textAt(1440, 3168, "'LINE"), textAt(1440, 3456, "'LINE"),
                   textAt(1440, 3744, "'LINE"), textAt(1440, 4032, "'LINE")});
}

TEST_F(PlotScreens, PrintingLeavesTheDiagramOnShow) {
    PlotView view = opened(Name::VUSOLPLT);
    choosePlot(view, 3);
    RecordingSurface surface;
    drawPlot(surface, data(), view, Medium::Paper);
    EXPECT_TRUE(view.showing);
    EXPECT_EQ(view.PlotNumber, 3);
}

TEST_F(PlotScreens, OpeningTwiceGivesTheSameScales) {
    const PlotScales once = opened(Name::CANPLOT).scales;
    const PlotScales again = opened(Name::CANPLOT).scales;
    for (Range PlotScales::*range : {&PlotScales::deflection, &PlotScales::moment,
                                     &PlotScales::shear, &PlotScales::pressure}) {
        EXPECT_EQ((once.*range).largest, (again.*range).largest);
        EXPECT_EQ((once.*range).smallest, (again.*range).smallest);
    }
}

} // namespace

} // namespace korvane::test
