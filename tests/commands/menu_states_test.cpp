// Every state of the menus, reached by the commands that lead to it.
#include "scripted_desktop.h"

#include <gtest/gtest.h>

#include <algorithm>

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
    bool files = false; ///< both files, the input plots, the notes and the comparison
    bool cantilever = false;
    bool anchored = false; ///< free and fixed earth plots
    bool rowe = false;
    bool solve = false;
};

void expectRow(const Menus& menus, const Row& row) {
    EXPECT_EQ(menus.newProblem.enabled, row.open);
    EXPECT_EQ(menus.open.enabled, row.open);
    EXPECT_EQ(menus.save.enabled, row.save);
    EXPECT_EQ(menus.print.enabled, row.print);
    EXPECT_TRUE(menus.exit.enabled);
    EXPECT_EQ(menus.recentFiles.enabled, row.open); // the recent files, as Open
    EXPECT_TRUE(menus.file.enabled);
    EXPECT_TRUE(menus.tools.enabled);
    EXPECT_EQ(menus.edit.enabled, row.edit);
    EXPECT_EQ(menus.editData.caption, row.caption);
    EXPECT_TRUE(menus.editData.enabled);
    EXPECT_EQ(menus.view.enabled, row.view);
    for (const MenuItem* item :
         {&menus.inputFile, &menus.report, &menus.inputPlots, &menus.notes, &menus.compare}) {
        EXPECT_EQ(item->enabled, row.files) << item->caption;
    }
    EXPECT_EQ(menus.cantileverPlots.enabled, row.cantilever);
    EXPECT_EQ(menus.freeEarthPlots.enabled, row.anchored);
    EXPECT_EQ(menus.fixedEarthPlots.enabled, row.anchored);
    EXPECT_EQ(menus.roweCurves.enabled, row.rowe);
    EXPECT_EQ(menus.solve.enabled, row.solve);
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

TEST(MenuRows, StandInTheirMenusWithCaptionsAndShortcuts) {
    const Menus menus;
    std::vector<std::string> found;
    for (const MenuRow& row : menuRows()) {
        found.push_back((row.menu == nullptr ? std::string() : std::string(row.menu) + " ") +
                        row.name + " " +
                        (row.item == nullptr ? std::string("-") : (menus.*row.item).caption) +
                        (*row.keys == '\0' ? "" : " ") + row.keys);
    }
    EXPECT_EQ(found, (std::vector<std::string>{
                         "mnuFile &File",
                         "mnuFile mnuFileItem_0 &New Ctrl+N",
                         "mnuFile mnuFileItem_1 &Open Ctrl+O",
                         "mnuFile mnuFileItem_2 -",
                         "mnuFile mnuFileItem_3 &Save",
                         "mnuFileItem_3 mnuSaveItem_0 &Input Data Ctrl+S",
                         "mnuFileItem_3 mnuSaveItem_1 &Output Data Ctrl+Shift+S",
                         "mnuFile mnuFileItem_4 -",
                         "mnuFile mnuFileItem_5 &Print",
                         "mnuFileItem_5 mnuPrintItem_0 &Input File Ctrl+Shift+P",
                         "mnuFileItem_5 mnuPrintItem_1 &Output File Ctrl+P",
                         "mnuFile mnuFileItem_6 -",
                         "mnuFile mnuFileItem_7 E&xit",
                         "mnuFile mnuFileItem_8 -",
                         "mnuFile mnuFileItem_9 &Recent Files",
                         "mnuEdit &Edit",
                         "mnuEdit mnuEditItem_0 &Edit Input Data",
                         "mnuView &View",
                         "mnuView mnuViewItem_0 Current &Input File",
                         "mnuView mnuViewItem_1 &OutPut File",
                         "mnuView mnuViewItem_2 Input &Plots",
                         "mnuView mnuViewItem_3 &Cantilever Wall Results Plots",
                         "mnuView mnuViewItem_4 &Free Earth Method Results Plots",
                         "mnuView mnuViewItem_5 F&ixed Earth Method Results Plots",
                         "mnuView mnuViewItem_6 &Rowe's Moment Reduction Curves",
                         "mnuSolve &Solve",
                         "mnuSolve mnuSolveItem_0 &Continue Solution",
                         "mnuTools &Tools",
                         "mnuTools mnuToolsItem_0 &Units",
                         "mnuToolsItem_0 mnuUnitsItem_0 &US (feet, pounds)",
                         "mnuToolsItem_0 mnuUnitsItem_1 &SI (metres, kilonewtons)",
                         "mnuTools mnuToolsItem_1 &Notes...",
                         "mnuTools mnuToolsItem_2 &Compare...",
                         "mnuTools mnuToolsItem_3 Calculation &Sheet...",
                         "mnuTools mnuToolsItem_4 S&tudy...",
                         "mnuTools mnuToolsItem_5 &Verify...",
                         "mnuHelp &Help",
                         "mnuHelp mnuHelpItem_0 &Contents",
                         "mnuHelp mnuHelpItem_1 &Search for help on ...",
                         "mnuHelp mnuHelpItem_2 -",
                         "mnuHelp mnuHelpItem_3 &About KORVANE",
                     }));
}

TEST(MenuRows, CallTheCommandOfTheirEntry) {
    const auto rowOf = [](MenuItem Menus::*item) {
        const auto rows = menuRows();
        return *std::find_if(rows.begin(), rows.end(),
                             [&](const MenuRow& row) { return row.item == item; });
    };
    EXPECT_EQ(rowOf(&Menus::newProblem).command, &newProblem);
    EXPECT_EQ(rowOf(&Menus::open).command, &openFile);
    EXPECT_EQ(rowOf(&Menus::saveInput).command, &saveInput);
    EXPECT_EQ(rowOf(&Menus::saveReport).command, &saveReport);
    EXPECT_EQ(rowOf(&Menus::printInput).command, &printInput);
    EXPECT_EQ(rowOf(&Menus::printReport).command, &printReport);
    EXPECT_EQ(rowOf(&Menus::exit).command, &exitProgram);
    EXPECT_EQ(rowOf(&Menus::editData).command, &editData);
    EXPECT_EQ(rowOf(&Menus::solveProblem).command, &solveProblem);
    EXPECT_EQ(rowOf(&Menus::inputFile).screen, Screen::VUINPTFL);
    EXPECT_EQ(rowOf(&Menus::report).screen, Screen::VUINECHO);
    EXPECT_EQ(rowOf(&Menus::inputPlots).screen, Screen::VUINPLOT);
    EXPECT_EQ(rowOf(&Menus::cantileverPlots).screen, Screen::CANPLOT);
    EXPECT_EQ(rowOf(&Menus::freeEarthPlots).screen, Screen::FREEPLOT);
    EXPECT_EQ(rowOf(&Menus::fixedEarthPlots).screen, Screen::FIXDPLOT);
    EXPECT_EQ(rowOf(&Menus::roweCurves).screen, Screen::ROWECURV);
    EXPECT_EQ(rowOf(&Menus::notes).screen, Screen::NOTES);
    EXPECT_EQ(rowOf(&Menus::compare).screen, Screen::COMPARE);
    EXPECT_EQ(rowOf(&Menus::sheet).command, &saveSheet);
    EXPECT_EQ(rowOf(&Menus::study).screen, Screen::STUDY);
    EXPECT_EQ(rowOf(&Menus::verify).screen, Screen::VERIFY);
    EXPECT_TRUE(rowOf(&Menus::units).isMenu());
    EXPECT_EQ(rowOf(&Menus::unitsUS).units, UnitSystem::US);
    EXPECT_EQ(rowOf(&Menus::unitsSI).units, UnitSystem::SI);
}

TEST(MenuStates, AfterStart) {
    const Office office;
    expectRow(office.session->menus, afterStart);
    EXPECT_FALSE(office.session->menus.saveInput.enabled);
    EXPECT_TRUE(office.session->panels.Image1Visible);
    EXPECT_FALSE(office.session->panels.fraSoilOutVisible);
    EXPECT_FALSE(office.session->panels.panDoneVisible);
    EXPECT_TRUE(office.temporaryFiles().empty());
}

TEST(MenuStates, AfterNewTheCaptionEndsInACapitalWord) {
    Office office;
    newProblem(*office.session, office.desktop);
    expectRow(office.session->menus, afterNew);
}

TEST(MenuStates, AfterOpenThereIsNoInputToSave) {
    Office office;
    office.open("cantilever-dry-sand");
    expectRow(office.session->menus, afterOpen);
    EXPECT_FALSE(office.session->menus.saveInput.enabled);
    EXPECT_TRUE(office.session->menus.saveReport.enabled);
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
    openFile(*office.session, office.desktop);
    expectRow(office.session->menus, afterNew);
}

TEST(MenuStates, NewAfterFailedOpenBringsEditBack) {
    Office office;
    office.open(office.write("bad.dat", std::string(80, '(') + "\nNOTHING\n"));
    newProblem(*office.session, office.desktop);
    expectRow(office.session->menus, afterNew);
}

TEST(MenuStates, AfterEditOfANewProblemPrintStaysOff) {
    Office office;
    enterProblem(office);
    editData(*office.session, office.desktop);
    expectRow(office.session->menus, afterEdit);
    EXPECT_TRUE(office.session->menus.saveInput.enabled);
    EXPECT_TRUE(office.session->menus.saveReport.enabled);
}

TEST(MenuStates, AfterEditOfAnOpenedFilePrintStaysOn) {
    Office office;
    office.open("cantilever-dry-sand");
    enterProblem(office);
    editData(*office.session, office.desktop);
    Row row = afterEdit;
    row.print = true;
    expectRow(office.session->menus, row);
}

TEST(MenuStates, AfterFailedEditTheCaptionIsTheOneOfNew) {
    Office office;
    office.open("cantilever-dry-sand");
    cancelEntry(office);
    editData(*office.session, office.desktop);
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
             {&menus.file, &menus.edit, &menus.view, &menus.solve, &menus.tools}) {
            EXPECT_FALSE(menu->enabled) << menu->caption;
        }
        EXPECT_TRUE(menus.help.enabled);
    };
    solveProblem(*office.session, office.desktop);
    expectTopMenusOff(office.desktop.mirrored);
    expectTopMenusOff(atWedgePrompt);
    expectTopMenusOff(office.session->menus); // the stop for review
    continueSolution(*office.session, office.desktop);
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
    ASSERT_EQ(office.session->workspace.reduction().RoweSoilType, RoweSoil::Sand);
    Row row = finished(afterOpen);
    row.anchored = true;
    row.rowe = true;
    expectRow(office.session->menus, row);
}

TEST(MenuStates, AfterASolutionOfEnteredDataPrintStaysOff) {
    Office office;
    enterProblem(office);
    editData(*office.session, office.desktop);
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
    solveProblem(*office.session, office.desktop);
    discontinueSolution(*office.session);
    expectRow(office.session->menus, finished(afterOpen));
}

} // namespace korvane::test
