// The Edit command.
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

void edit(Office& office) {
    editData(*office.session, office.desktop);
}

/// KEYIN changes the first heading.
void changeHeading(Office& office) {
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem.NumHeadingLines = 1;
            session.problem.HeadingLines(1) = "'CHANGED ";
            session.DataChanged = 1;
        }
    };
}

std::string fileName(const std::string& path) {
    return fs::path(path).filename().string();
}

} // namespace

TEST(Edit, OfAnOpenedFileThatChangesNothingMakesNewTemporaryFiles) {
    Office office;
    office.open("cantilever-dry-sand");
    office.session->OutputSavedFlag = 1; // no question, so that the report keeps its name
    const std::string firstReport = office.outputName();
    edit(office);
    EXPECT_EQ(fileName(office.session->CurrentInputName), "TEMP0.iii");
    EXPECT_EQ(readFile(office.session->CurrentInputName), inputFileText(office.session->problem));
    EXPECT_NE(office.outputName(), firstReport);
    EXPECT_TRUE(office.session->menus.saveInput.enabled);
    EXPECT_EQ(office.session->DataChanged, 0);
}

TEST(Edit, ThatChangesNothingWithoutAReportMakesTheReportAlone) {
    Office office;
    office.open("cantilever-dry-sand");
    office.desktop.answers = {Answer::No}; // the report is not saved and goes
    edit(office);
    EXPECT_EQ(office.session->CurrentInputName, examplePath("cantilever-dry-sand"));
    EXPECT_EQ(fileName(office.outputName()), "TEMP0.ooo");
    EXPECT_FALSE(office.session->menus.saveInput.enabled);
    EXPECT_EQ(office.session->report.OutputLineCount,
              static_cast<int>(splitLines(office.report()).size()));
}

TEST(Edit, OfANewProblemWritesItsFileEvenWhereNothingIsMarkedAsChanged) {
    Office office;
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
        }
    };
    edit(office);
    EXPECT_EQ(fileName(office.session->CurrentInputName), "TEMP0.iii");
    const auto lines = splitLines(readFile(office.session->CurrentInputName));
    EXPECT_EQ(office.session->FileLineCount, static_cast<int>(lines.size()));
}

TEST(Edit, ThatFailsEndsWithTheEmptyProblem) {
    Office office;
    office.open("cantilever-dry-sand");
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.SolutionFailed = 1;
        }
    };
    edit(office);
    EXPECT_EQ(office.session->problem.NumHeadingLines, 0);
    EXPECT_EQ(office.session->problem.SurfacePointCount(Right), 0);
    EXPECT_EQ(office.session->SolutionFailed, 0);
    EXPECT_EQ(office.session->CurrentInputName, "");
    EXPECT_EQ(office.outputName(), "");
    EXPECT_EQ(office.session->files.ScratchFileCount, 8);
}

TEST(Edit, AsksToSaveChangedInputAndThenTheOutput) {
    Office office;
    changeHeading(office);
    edit(office);
    EXPECT_TRUE(office.desktop.boxes.empty());
    edit(office);
    ASSERT_EQ(office.desktop.boxes.size(), 2U);
    EXPECT_EQ(office.desktop.boxes[0],
              (MessageBox{.text = "DO YOU WANT TO SAVE CURRENT INPUT DATA BEFORE EDITING?",
                          .title = "SAVE INPUT DATA?",
                          .buttons = Buttons::YesNo}));
    EXPECT_EQ(office.desktop.boxes[1].title, "SAVE OUTPUT DATA?");
}

TEST(Edit, ANoToSavingTheInputKeepsTheFlagUntilTheScreenIsShown) {
    Office office;
    changeHeading(office);
    edit(office);
    int flagAtOutputQuestion = -1;
    int flagAtScreen = -1;
    office.desktop.onBox = [&](const MessageBox& box) {
        if (box.title == "SAVE OUTPUT DATA?") {
            flagAtOutputQuestion = office.session->DataChanged;
        }
    };
    office.desktop.onScreen = [&](Screen, const Session& session) {
        flagAtScreen = session.DataChanged;
    };
    edit(office);
    EXPECT_EQ(flagAtOutputQuestion, 1);
    EXPECT_EQ(flagAtScreen, 0);
}

TEST(Edit, ASavedOutputIsNotAskedAboutAgain) {
    Office office;
    office.open("cantilever-dry-sand");
    office.desktop.chosenFiles = {office.userFile("wall.out")};
    saveReport(*office.session, office.desktop);
    office.desktop.boxes.clear();
    edit(office);
    EXPECT_TRUE(office.desktop.boxes.empty());
    EXPECT_TRUE(fs::exists(office.userFile("wall.out")));
}

TEST(Edit, MakesTheSolveItemAvailableAgain) {
    Office office;
    office.open("cantilever-dry-sand");
    office.solve();
    EXPECT_FALSE(office.session->menus.solve.enabled);
    edit(office);
    EXPECT_TRUE(office.session->menus.solve.enabled);
    EXPECT_FALSE(office.session->menus.cantileverPlots.enabled);
}

TEST(Edit, EachEditAddsItsTemporaryFilesToTheList) {
    Office office;
    changeHeading(office);
    office.desktop.answers.assign(100, Answer::No);
    edit(office);
    edit(office);
    // The refused report is gone, so that its number is free again.
    EXPECT_EQ(office.temporaryFiles(),
              (std::set<std::string>{"TEMP0.iii", "TEMP1.iii", "TEMP0.ooo"}));
    EXPECT_EQ(office.session->files.ScratchFileCount, 12);
}

} // namespace korvane::test
