// Every state of the menus, reached by the commands that lead to it.
#include "scripted_desktop.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

/// One row of the table of states; a state that a row leaves open stands in `asItWas`.
struct Row {
    bool open = true; ///< New and Open
    bool save = false;
    bool print = false;
    bool edit = true;
    std::string caption;
    bool view = false;
    bool files = false; ///< View 0, 1, 2
    bool cantilever = false;
    bool anchored = false; ///< View 4, 5
    bool rowe = false;
    bool solve = false;
};

void expectRow(const Menus& menus, const Row& row) {
    EXPECT_EQ(menus.mnuFileItem(0).enabled, row.open);
    EXPECT_EQ(menus.mnuFileItem(1).enabled, row.open);
    EXPECT_EQ(menus.mnuFileItem(3).enabled, row.save);
    EXPECT_EQ(menus.mnuFileItem(5).enabled, row.print);
    EXPECT_TRUE(menus.mnuFileItem(7).enabled);
    EXPECT_TRUE(menus.mnuFile.enabled);
    EXPECT_EQ(menus.mnuEdit.enabled, row.edit);
    EXPECT_EQ(menus.mnuEditItem(0).caption, row.caption);
    EXPECT_TRUE(menus.mnuEditItem(0).enabled);
    EXPECT_EQ(menus.mnuView.enabled, row.view);
    for (const int item : {0, 1, 2}) {
        EXPECT_EQ(menus.mnuViewItem(item).enabled, row.files) << item;
    }
    EXPECT_EQ(menus.mnuViewItem(3).enabled, row.cantilever);
    EXPECT_EQ(menus.mnuViewItem(4).enabled, row.anchored);
    EXPECT_EQ(menus.mnuViewItem(5).enabled, row.anchored);
    EXPECT_EQ(menus.mnuViewItem(6).enabled, row.rowe);
    EXPECT_EQ(menus.mnuSolve.enabled, row.solve);
}

const Row afterStart{.caption = "&Enter Input data"};
const Row afterNew{.caption = "&Enter Input Data"};
const Row afterOpen{.save = true,
                    .print = true,
                    .caption = "&Edit Input Data",
                    .view = true,
                    .files = true,
                    .solve = true};
const Row afterFailedOpen{.edit = false, .caption = "&Enter Input Data"};
const Row afterEdit{
    .save = true, .caption = "Edit Input Data", .view = true, .files = true, .solve = true};

Row finished(Row row) {
    row.solve = false;
    return row;
}

void enterProblem(Office& office) {
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.DataChanged = 1;
        }
    };
}

void cancelEntry(Office& office) {
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.SolutionFailed = 1;
        }
    };
}

} // namespace

TEST(MenuStates, CaptionsAndMnemonicsStandAtTheirIndices) {
    const Menus menus;
    EXPECT_EQ(menus.mnuFile.caption, "&File");
    const char* const file[] = {"&New", "&Open", "", "&Save", "", "&Print", "", "E&xit"};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(menus.mnuFileItem(i).caption, file[i]) << i;
    }
    const char* const view[] = {"Current &Input File",
                                "&OutPut File",
                                "Input &Plots",
                                "&Cantilever Wall Results Plots",
                                "&Free Earth Method Results Plots",
                                "F&ixed Earth Method Results Plots",
                                "&Rowe's Moment Reduction Curves"};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(menus.mnuViewItem(i).caption, view[i]) << i;
    }
    EXPECT_EQ(menus.mnuEditItem(0).caption, "&Edit Input Data");
    EXPECT_EQ(menus.mnuSaveItem(1).caption, "&Output Data");
    EXPECT_EQ(menus.mnuPrintItem(0).caption, "&Input File");
    EXPECT_EQ(menus.mnuSolveItem(0).caption, "&Continue Solution");
    EXPECT_EQ(menus.mnuHelpItem(3).caption, "&About KORVANE");
    EXPECT_THROW(menus.mnuFileItem(8), RuntimeError);
}

TEST(MenuStates, AfterStart) {
    const Office office;
    expectRow(office.session->menus, afterStart);
    EXPECT_FALSE(office.session->menus.mnuSaveItem(0).enabled);
    EXPECT_TRUE(office.session->panels.Image1Visible);
    EXPECT_FALSE(office.session->panels.fraSoilOutVisible);
    EXPECT_FALSE(office.session->panels.panDoneVisible);
    EXPECT_TRUE(office.temporaryFiles().empty());
}

TEST(MenuStates, AfterNewTheCaptionEndsInACapitalWord) {
    Office office;
    mnuFileItem_Click(*office.session, office.desktop, 0);
    expectRow(office.session->menus, afterNew);
}

TEST(MenuStates, AfterOpenThereIsNoInputToSave) {
    Office office;
    office.open("cantilever-dry-sand");
    expectRow(office.session->menus, afterOpen);
    EXPECT_FALSE(office.session->menus.mnuSaveItem(0).enabled);
    EXPECT_TRUE(office.session->menus.mnuSaveItem(1).enabled);
}

TEST(MenuStates, AfterFailedOpenOnlyNewOpenAndExitRemain) {
    Office office;
    office.open("cantilever-dry-sand");
    office.open(office.write("bad.dat", std::string(80, '(') + "\nNOTHING\n"));
    expectRow(office.session->menus, afterFailedOpen);
    EXPECT_EQ(office.session->problem.NumHeadingLines, 0);
    EXPECT_EQ(office.session->CurrentInputName, "");
    EXPECT_EQ(office.outputName(), "");
}

TEST(MenuStates, AfterRefusedShortFileOnlyNewOpenAndExitRemain) {
    Office office;
    office.desktop.answers = {Answer::No};
    office.open(office.write("short.dat", "'A\n"));
    ASSERT_EQ(office.desktop.boxes.size(), 1U);
    EXPECT_EQ(office.desktop.boxes[0].text,
              "File: " + office.userFile("short.dat") +
                  " does not appear to be a complete input file.\n\nDo you want to continue?");
    EXPECT_EQ(office.desktop.boxes[0].title, "INCOMPLETE INPUT FILE!");
    EXPECT_EQ(office.desktop.boxes[0].icon, Icon::Question);
    expectRow(office.session->menus, afterFailedOpen);
}

TEST(MenuStates, AfterCancelledOpenTheMenusAreThoseOfAnEmptyProblem) {
    Office office;
    office.open("cantilever-dry-sand");
    mnuFileItem_Click(*office.session, office.desktop, 1);
    expectRow(office.session->menus, afterNew);
}

TEST(MenuStates, NewAfterFailedOpenBringsEditBack) {
    Office office;
    office.open(office.write("bad.dat", std::string(80, '(') + "\nNOTHING\n"));
    mnuFileItem_Click(*office.session, office.desktop, 0);
    expectRow(office.session->menus, afterNew);
}

TEST(MenuStates, AfterEditOfANewProblemPrintStaysOff) {
    Office office;
    enterProblem(office);
    mnuEditItem_Click(*office.session, office.desktop);
    expectRow(office.session->menus, afterEdit);
    EXPECT_TRUE(office.session->menus.mnuSaveItem(0).enabled);
    EXPECT_TRUE(office.session->menus.mnuSaveItem(1).enabled);
}

TEST(MenuStates, AfterEditOfAnOpenedFilePrintStaysOn) {
    Office office;
    office.open("cantilever-dry-sand");
    enterProblem(office);
    mnuEditItem_Click(*office.session, office.desktop);
    Row row = afterEdit;
    row.print = true;
    expectRow(office.session->menus, row);
}

TEST(MenuStates, AfterFailedEditTheCaptionIsTheOneOfNew) {
    Office office;
    office.open("cantilever-dry-sand");
    cancelEntry(office);
    mnuEditItem_Click(*office.session, office.desktop);
    expectRow(office.session->menus, afterNew);
    EXPECT_EQ(office.session->problem.NumHeadingLines, 0);
}

TEST(MenuStates, DuringASolutionAllTopMenusAreOff) {
    Office office;
    office.open("sloping-backfill-sweep");
    Menus atWedgePrompt;
    office.desktop.onScreen = [&](Screen screen, const Session& session) {
        if (screen == Screen::WEDGMETH) {
            atWedgePrompt = session.menus;
        }
    };
    const auto expectTopMenusOff = [](const Menus& menus) {
        for (const MenuItem* menu :
             {&menus.mnuFile, &menus.mnuEdit, &menus.mnuView, &menus.mnuSolve}) {
            EXPECT_FALSE(menu->enabled) << menu->caption;
        }
        EXPECT_TRUE(menus.mnuHelp.enabled);
    };
    mnuSolveItem_Click(*office.session, office.desktop);
    expectTopMenusOff(office.desktop.mirrored);
    expectTopMenusOff(atWedgePrompt);
    expectTopMenusOff(office.session->menus); // the stop for review
    cmdContinue_Click(*office.session, office.desktop);
    expectTopMenusOff(office.session->menus); // panDone
}

TEST(MenuStates, AfterACantileverSolutionItsPlotsAreOn) {
    Office office;
    office.open("cantilever-dry-sand");
    office.solve();
    Row row = finished(afterOpen);
    row.cantilever = true;
    expectRow(office.session->menus, row);
}

TEST(MenuStates, AfterAnAnchoredSolutionBothMethodsArePlotted) {
    Office office;
    office.open("anchored-layered-water"); // friction and cohesion on the left: no reduction
    office.solve();
    Row row = finished(afterOpen);
    row.anchored = true;
    expectRow(office.session->menus, row);
}

TEST(MenuStates, RoweCurvesAreOnOnlyWhereTheReductionFoundASoil) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    ASSERT_EQ(office.session->workspace.reduction().RoweSoilType, 1);
    Row row = finished(afterOpen);
    row.anchored = true;
    row.rowe = true;
    expectRow(office.session->menus, row);
}

TEST(MenuStates, AfterASolutionOfEnteredDataPrintStaysOff) {
    Office office;
    enterProblem(office);
    mnuEditItem_Click(*office.session, office.desktop);
    office.solve();
    Row row = finished(afterEdit);
    row.cantilever = true;
    expectRow(office.session->menus, row);
}

TEST(MenuStates, AfterAFailedSolutionNoResultPlotIsOn) {
    Office office;
    // Soil on the left as high as on the right: nothing drives the wall.
    office.open(office.write("level.dat", "'LEVEL GROUND ON BOTH SIDES OF THE WALL\n"
                                          "CONTROL CANTILEVER DESIGN 1.00 1.50\n"
                                          "WALL 10\nSURFACE RIGHTSIDE 1 0 10\n"
                                          "SURFACE LEFTSIDE 1 0 10\n"
                                          "SOIL BOTH STRENGTHS 1\n 120 110 30 0 0 0\n"
                                          "FINISHED\n"));
    office.solve();
    EXPECT_NE(office.session->SolutionFailed, 0);
    expectRow(office.session->menus, finished(afterOpen));
}

TEST(MenuStates, AfterADiscontinuedDesignNoResultPlotIsOn) {
    Office office;
    office.open("anchored-sand");
    mnuSolveItem_Click(*office.session, office.desktop);
    cmdDiscontinue_Click(*office.session);
    expectRow(office.session->menus, finished(afterOpen));
}

} // namespace korvane::test
