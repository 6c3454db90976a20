// KEYIN: highlights, sections, and the tests across the sections.
#include "looks.h"

#include <QAction>

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

const std::vector<QString> panels = {"panHeadCont",  "panSurface",   "panLayerData",
                                     "panWaterData", "panSurcharge", "panHorizontal"};

class KeyinTest : public testing::Test {
  protected:
    Desk desk;

    /// A design that passes all tests.
    void hold() {
        desk.problem = plainCantilever();
        desk.session->HeadContDataValid = 1;
    }
    /// Opens the screen on the data as they are and chooses Finished.
    void finish() {
        desk.open(Screen::KEYIN);
        desk.click("cmdFinished");
    }
    std::string highlighted() {
        std::string names;
        for (const QString& panel : panels) {
            names += desk.isHighlighted(panel) ? panel.toStdString() + " " : "";
        }
        return names;
    }
};

std::string missing(const std::string& list) {
    return okCancel("DATA MISSING", "The following required data have not been provided.\n\n" +
                                        list +
                                        "\n\nChoose OK to continue data entry."
                                        "\nChoose CANCEL to abort this run.");
}

const std::string choices = "\n\n     Choose OK to continue data entry."
                            "\n     Choose CANCEL to abort this run.";
const std::string wallTitle = "INCONSISTENT WALL/SURFACE ELEVATION DATA";
const std::string bottomFault =
    okCancel(wallTitle, "Wall bottom has been specified above the soil surface." + choices);

} // namespace

TEST_F(KeyinTest, ANewProblemListsAllFourMissingSections) {
    finish();
    EXPECT_EQ(desk.lastBox(), missing("     HEADING, CONTROL, AND WALL DATA."
                                      "\n     SOIL SURFACE DATA."
                                      "\n     RIGHT SIDE SOIL LAYER DATA."
                                      "\n     LEFT SIDE SOIL LAYER DATA."));
    EXPECT_TRUE(desk.isOpen());
    EXPECT_EQ(desk.session->SolutionFailed, 0);
    EXPECT_EQ(desk.text("panKeyIn"), "Select Data Section to be Entered");
    EXPECT_EQ(highlighted(), "");
}

TEST_F(KeyinTest, AListWithoutTheHeadingBeginsWithALineEnd) {
    hold();
    desk.problem.SoilLayerCount(Left) = 0;
    finish();
    EXPECT_EQ(desk.lastBox(), missing("\n     LEFT SIDE SOIL LAYER DATA."));
}

TEST_F(KeyinTest, OneSurfaceOfEitherSideIsEnoughForTheListOfMissingSections) {
    hold();
    desk.problem.SurfacePointCount(Right) = 0;
    finish();
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_FALSE(desk.isOpen());
}

TEST_F(KeyinTest, CancelFailsTheRunAndKeepsTheData) {
    hold();
    desk.problem.SoilLayerCount.fill(0);
    const Problem before = desk.problem;
    desk.answers = {Answer::Cancel};
    finish();
    EXPECT_EQ(desk.session->SolutionFailed, 1);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(desk.problem, before);
}

TEST_F(KeyinTest, FinishedClearsAFailureThatASectionLeft) {
    hold();
    desk.open(Screen::KEYIN);
    desk.session->SolutionFailed = 1; // as a Cancel among the line loads does
    desk.click("cmdFinished");
    EXPECT_EQ(desk.session->SolutionFailed, 0);
    EXPECT_FALSE(desk.isOpen());
}

TEST_F(KeyinTest, OpeningClearsTheFlagsAndTakesTheMainWindowsPlace) {
    desk.session->SolutionFailed = 1;
    desk.session->DataChanged = 1;
    desk.open(Screen::KEYIN);
    EXPECT_EQ(desk.session->SolutionFailed, 0);
    EXPECT_EQ(desk.session->DataChanged, 0);
    EXPECT_EQ(desk.top().geometry(), desk.mainWindow.geometry());
}

TEST_F(KeyinTest, ControlsStandInTheirOrderFromTopToBottom) {
    desk.open(Screen::KEYIN);
    QWidget* canvas = desk.find("canvas");
    const auto topOf = [&](const QString& name) {
        return desk.find(name)->mapTo(canvas, QPoint(0, 0)).y();
    };
    int above = -1;
    for (const char* name :
         {"panKeyIn", "panHeadCont", "panSurface", "panLayerData", "panWaterData", "panSurcharge",
          "panHorizontal", "cmdFinished", "Label2", "Label5"}) {
        EXPECT_GT(topOf(name), above) << name;
        above = topOf(name);
    }
    const QWidget* frame = desk.find("fraInputSects");
    const QPoint middle = frame->mapTo(canvas, frame->rect().center());
    EXPECT_NEAR(middle.x(), canvas->rect().center().x(), 1);
}

TEST_F(KeyinTest, AProblemFromAFileShowsTheRequiredSectionsWhateverTheirCounts) {
    hold();
    desk.session->HeadContDataValid = 0;
    desk.problem.SoilLayerCount.fill(0);
    desk.problem.SurfacePointCount.fill(0);
    desk.open(Screen::KEYIN);
    EXPECT_EQ(highlighted(), "panHeadCont panSurface panLayerData ");
    EXPECT_EQ(desk.session->HeadContDataValid, 1);
    EXPECT_EQ(desk.text("panKeyIn"), "Select Data Section to be Edited");
    desk.click("cmdFinished");
    EXPECT_EQ(desk.lastBox(), missing("\n     SOIL SURFACE DATA."
                                      "\n     RIGHT SIDE SOIL LAYER DATA."
                                      "\n     LEFT SIDE SOIL LAYER DATA."));
}

TEST_F(KeyinTest, EverySectionWithDataIsHighlightedOnOpening) {
    desk.problem = fullProblem();
    desk.open(Screen::KEYIN);
    EXPECT_EQ(highlighted(),
              "panHeadCont panSurface panLayerData panWaterData panSurcharge panHorizontal ");
}

TEST_F(KeyinTest, EachKindOfSurchargeOnEitherSideCounts) {
    for (const auto count : {&Problem::VLineCount, &Problem::VUniformCount, &Problem::VStripCount,
                             &Problem::VRampCount, &Problem::VTriCount, &Problem::VVarCount}) {
        for (const int side : {Right, Left}) {
            Desk other;
            other.problem = plainCantilever();
            (other.problem.*count)(side) = 1;
            other.open(Screen::KEYIN);
            EXPECT_TRUE(other.isHighlighted("panSurcharge"));
            EXPECT_FALSE(other.isHighlighted("panHorizontal"));
        }
    }
}

TEST_F(KeyinTest, ButtonsOpenTheirScreensAndPaintTheirPanelAnew) {
    struct Row {
        const char* button;
        Screen screen;
        const char* panel;
        void (*enter)(Session&);
        void (*empty)(Session&);
    };
    const Row rows[] = {
        {"cmdHeadCont", Screen::HEADCONT, "panHeadCont",
         [](Session& session) { session.HeadContDataValid = 1; },
         [](Session& session) { session.HeadContDataValid = 0; }},
        {"cmdSurface", Screen::SURFACE, "panSurface",
         [](Session& session) { session.problem.SurfacePointCount(Right) = 1; },
         [](Session& session) { session.problem.SurfacePointCount(Right) = 0; }},
        {"cmdLayerData", Screen::LAYRDATA, "panLayerData",
         [](Session& session) { session.problem.SoilLayerCount(Right) = 1; },
         [](Session& session) { session.problem.SoilLayerCount(Right) = 0; }},
        {"cmdWaterData", Screen::WATER, "panWaterData",
         [](Session& session) { session.problem.WaterDataKind = WaterData::Pressures; },
         [](Session& session) { session.problem.WaterDataKind = WaterData::None; }},
        {"cmdSurcharge", Screen::SURCHCON, "panSurcharge",
         [](Session& session) { session.problem.VTriCount(Left) = 1; },
         [](Session& session) { session.problem.VTriCount(Left) = 0; }},
        {"cmdHorizontal", Screen::HORCON, "panHorizontal",
         [](Session& session) { session.problem.HDistCount = 2; },
         [](Session& session) { session.problem.HDistCount = 0; }},
    };
    desk.open(Screen::KEYIN);
    for (const Row& row : rows) {
        desk.onShow = [&](Screen) { row.enter(*desk.session); };
        desk.click(row.button);
        EXPECT_EQ(desk.shown.back(), row.screen);
        EXPECT_TRUE(desk.isHighlighted(row.panel)) << row.panel;
        desk.onShow = [&](Screen) { row.empty(*desk.session); };
        desk.click(row.button);
        EXPECT_FALSE(desk.isHighlighted(row.panel)) << row.panel;
    }
}

TEST_F(KeyinTest, TheLeftSidesLayersAloneDoNotHighlightTheLayers) {
    hold();
    desk.open(Screen::KEYIN);
    desk.onShow = [&](Screen) { desk.problem.SoilLayerCount(Right) = 0; };
    desk.click("cmdLayerData");
    EXPECT_GT(desk.problem.SoilLayerCount(Left), 0);
    EXPECT_FALSE(desk.isHighlighted("panLayerData"));
}

TEST_F(KeyinTest, SeepageMayEqualTheLowerOfSurfaceAndWaterButNotExceedIt) {
    hold();
    desk.problem.WaterDataKind = WaterData::Elevations;
    desk.problem.SeepageKind = Seepage::Automatic;
    desk.problem.WaterElev(Right) = -4;
    desk.problem.WaterElev(Left) = -12; // below the left surface at -10
    desk.problem.SeepageElev = -12;
    finish();
    EXPECT_EQ(desk.lastBox(), noBox);
    const std::string fault =
        okCancel("INCONSISTENT SEEPAGE DATA", "Seepage elevation is inconsistent with Surface"
                                              "\nand/or water elevations." +
                                                  choices);
    desk.problem.SeepageElev = -11.99;
    finish();
    EXPECT_EQ(desk.lastBox(), fault);
    desk.problem.WaterElev(Left) = -5; // now the left surface is the lower one
    desk.problem.SeepageElev = -9.99;
    finish();
    EXPECT_EQ(desk.lastBox(), fault);
    desk.problem.SeepageElev = -10;
    finish();
    EXPECT_EQ(desk.lastBox(), noBox);
    desk.problem.SeepageElev = -9.99;
    desk.problem.SeepageKind = Seepage::None;
    finish();
    EXPECT_EQ(desk.lastBox(), noBox);
}

TEST_F(KeyinTest, ASurfaceAboveTheWallTopIsRefusedOnEitherSide) {
    const std::string fault = okCancel(wallTitle, "Right or left side surface has been specified"
                                                  "\nabove the top of the wall." +
                                                      choices);
    hold();
    for (const int side : {Right, Left}) {
        const double surface = desk.problem.SurfaceElev(side, 1);
        desk.problem.SurfaceElev(side, 1) = 0; // level with the top
        finish();
        EXPECT_EQ(desk.lastBox(), noBox);
        desk.problem.SurfaceElev(side, 1) = 0.01;
        finish();
        EXPECT_EQ(desk.lastBox(), fault);
        desk.problem.SurfaceElev(side, 1) = surface;
    }
}

TEST_F(KeyinTest, TheWallBottomIsComparedWithTheRightSidesFirstTwoPoints) {
    hold();
    desk.problem.ProgramMode = Mode::Analysis;
    desk.problem.SurfaceElev(Right, 2) = -8;
    desk.problem.WallBottomElev = -8; // at the second point; the left surface lies at -10
    finish();
    EXPECT_EQ(desk.lastBox(), bottomFault);
    desk.problem.WallBottomElev = -8.01;
    finish();
    EXPECT_EQ(desk.lastBox(), noBox);
    desk.problem.ProgramMode = Mode::Design;
    desk.problem.WallBottomElev = 5;
    finish();
    EXPECT_EQ(desk.lastBox(), noBox);
}

TEST_F(KeyinTest, ASecondPointThatWasNeverEnteredCountsAsZero) {
    desk.problem = plainCantilever();
    desk.session->HeadContDataValid = 1;
    desk.problem.ProgramMode = Mode::Analysis;
    desk.problem.WallTopElev = 30;
    desk.problem.SurfaceElev(Right, 1) = 30;
    desk.problem.SurfaceElev(Left, 1) = 20;
    ASSERT_EQ(desk.problem.SurfacePointCount(Right), 1);
    ASSERT_EQ(desk.problem.SurfaceElev(Right, 2), 0);
    desk.problem.WallBottomElev = 2; // below all ground, but above the record's zero
    finish();
    EXPECT_EQ(desk.lastBox(), bottomFault);
    desk.problem.WallBottomElev = -0.01;
    finish();
    EXPECT_EQ(desk.lastBox(), noBox);
}

TEST_F(KeyinTest, TheFirstFailingTestAloneIsTold) {
    hold();
    desk.problem.SoilLayerCount(Right) = 0;
    desk.problem.SeepageKind = Seepage::Automatic;
    desk.problem.SeepageElev = 100;
    desk.problem.SurfaceElev(Right, 1) = 50;
    finish();
    EXPECT_EQ(desk.lastBox(), missing("\n     RIGHT SIDE SOIL LAYER DATA."));
    desk.problem.SoilLayerCount(Right) = 1;
    desk.click("cmdFinished");
    EXPECT_EQ(desk.boxes.back().title, "INCONSISTENT SEEPAGE DATA");
    desk.problem.SeepageKind = Seepage::None;
    desk.click("cmdFinished");
    EXPECT_EQ(desk.boxes.back().title, wallTitle);
}

TEST_F(KeyinTest, TheFramesCrossIsFinished) {
    desk.open(Screen::KEYIN);
    desk.closeFrame();
    EXPECT_TRUE(desk.isOpen());
    ASSERT_EQ(desk.boxes.size(), 1U);
    EXPECT_EQ(desk.boxes.back().title, "DATA MISSING");
    hold();
    desk.closeFrame();
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(desk.session->SolutionFailed, 0);
}

TEST_F(KeyinTest, TheHelpMenuPassesOnWhatIsAskedFor) {
    desk.open(Screen::KEYIN);
    for (const int item : {0, 1, 3}) {
        desk.top().findChild<QAction*>(QString("mnuHelpItem_%1").arg(item))->trigger();
    }
    EXPECT_EQ(desk.helpItems, (std::vector<Help>{Help::Contents, Help::Search, Help::About}));
}

} // namespace korvane::test
