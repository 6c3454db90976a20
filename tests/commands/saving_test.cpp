// The two save questions, the save dialogs and the copies.
#include "runtime/file_text.h"
#include "scripted_desktop.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

/// A problem entered on the screens: both files are temporary.
void enterProblem(Office& office) {
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.DataChanged = 1;
        }
    };
    editData(*office.session, office.desktop);
    office.desktop.boxes.clear();
}

void save(Office& office, Command command) {
    command(*office.session, office.desktop);
}

} // namespace

TEST(SaveInput, TheDialogCarriesItsTitleAndFilter) {
    Office office;
    enterProblem(office);
    save(office, saveInput);
    ASSERT_EQ(office.desktop.dialogs.size(), 1U);
    const FileDialog& dialog = office.desktop.dialogs[0];
    EXPECT_EQ(dialog.kind, FileDialog::Kind::Save);
    EXPECT_EQ(dialog.title, "OPEN SAVE-INPUT-DATA FILE");
    EXPECT_EQ(dialog.filter,
              "Input Files (*.dat)|*.dat|Input Files (*.in)|*.in|All Files (*.*)|*.*");
    EXPECT_EQ(dialog.filterIndex, 1);
    EXPECT_EQ(dialog.initialFolder, office.temporary.path().string());
    EXPECT_EQ(dialog.fileName, "");
}

TEST(SaveInput, CopiesTheTemporaryFileAndDeletesIt) {
    Office office;
    enterProblem(office);
    const std::string temporary = office.session->CurrentInputName;
    const std::string text = readFile(temporary);
    const std::string target = office.userFile("wall.dat");
    office.desktop.chosenFiles = {target};
    save(office, saveInput);
    EXPECT_EQ(readFile(target), text);
    EXPECT_FALSE(fs::exists(temporary));
    EXPECT_EQ(office.session->CurrentInputName, target);
    EXPECT_EQ(office.session->InputSavedFlag, 1);
    EXPECT_EQ(office.session->DataChanged, 0);
    EXPECT_FALSE(office.session->menus.saveInput.enabled);
    EXPECT_EQ(office.session->DialogFolder, office.user.path().string());
    EXPECT_EQ(office.temporaryFiles(), std::set<std::string>{"TEMP0.ooo"});
}

TEST(SaveInput, ANameThatEndsInIiiIsRefusedInAnyCase) {
    Office office;
    enterProblem(office);
    const std::string lower = office.userFile("wall.iii");
    const std::string upper = office.userFile("wall.III");
    const std::string mixed = office.userFile("wall.IiI");
    office.desktop.chosenFiles = {lower, upper, mixed, office.userFile("wall.dat")};
    save(office, saveInput);
    ASSERT_EQ(office.desktop.boxes.size(), 3U);
    EXPECT_EQ(office.desktop.boxes[0],
              (MessageBox{.text = "File:  " + lower +
                                  "  is a temporary file in use.\n"
                                  "Please choose another file name for saving input data."}));
    EXPECT_EQ(office.desktop.dialogs.size(), 4U);
    for (const std::string& name : {lower, upper, mixed}) {
        EXPECT_FALSE(fs::exists(name));
    }
    EXPECT_TRUE(fs::exists(office.userFile("wall.dat")));
}

TEST(SaveInput, AnExistingFileIsWrittenOverOnlyAfterYes) {
    Office office;
    enterProblem(office);
    const std::string old = office.write("old.dat", "old");
    office.desktop.chosenFiles = {old, old};
    office.desktop.answers = {Answer::No, Answer::Yes};
    save(office, saveInput);
    ASSERT_EQ(office.desktop.boxes.size(), 2U);
    EXPECT_EQ(office.desktop.boxes[0],
              (MessageBox{.text = "File: " + old + " exists.\nDo you want to write over it?",
                          .title = "OVERWRITE?",
                          .buttons = Buttons::YesNo,
                          .icon = Icon::Question}));
    EXPECT_EQ(office.desktop.dialogs.size(), 2U);
    EXPECT_NE(readFile(old), "old");
}

TEST(SaveInput, ACancelledDialogChangesNothing) {
    Office office;
    enterProblem(office);
    const std::string name = office.session->CurrentInputName;
    save(office, saveInput);
    EXPECT_EQ(office.session->InputFileName, "");
    EXPECT_EQ(office.session->CurrentInputName, name);
    EXPECT_EQ(office.session->DataChanged, 1);
    EXPECT_TRUE(office.session->menus.saveInput.enabled);
}

TEST(SaveOutput, TheDialogCarriesItsTitleAndFilter) {
    Office office;
    office.open("cantilever-dry-sand");
    save(office, saveReport);
    const FileDialog& dialog = office.desktop.dialogs.back();
    EXPECT_EQ(dialog.title, "OPEN SAVE-OUTPUT-DATA FILE");
    EXPECT_EQ(dialog.filter,
              "Output Files (*.out)|*.out|Output Files (*.dat)|*.dat|All Files (*.*)|*.*");
    EXPECT_EQ(office.session->OutputSavedFlag, 0);
}

TEST(SaveOutput, CopiesTheWholeReportAndKeepsTheTemporaryOneOfAnOpenedFile) {
    Office office;
    office.open("cantilever-dry-sand");
    office.solve();
    const std::string temporary = office.outputName();
    const std::string text = office.report();
    const std::string target = office.userFile("wall.out");
    office.desktop.chosenFiles = {target};
    save(office, saveReport);
    EXPECT_EQ(readFile(target), text);
    EXPECT_EQ(office.outputName(), target);
    EXPECT_EQ(office.session->OutputSavedFlag, 1);
    EXPECT_TRUE(fs::exists(temporary));
    newProblem(*office.session, office.desktop);
    EXPECT_FALSE(fs::exists(temporary));
    EXPECT_EQ(readFile(target), text);
}

TEST(SaveOutput, DeletesTheTemporaryReportWhenTheInputIsTemporary) {
    Office office;
    enterProblem(office);
    const std::string temporary = office.outputName();
    office.desktop.chosenFiles = {office.userFile("wall.out")};
    save(office, saveReport);
    EXPECT_FALSE(fs::exists(temporary));
}

TEST(SaveOutput, ASecondSaveDoesNotDeleteTheUsersFirstFile) {
    Office office;
    enterProblem(office);
    const std::string first = office.userFile("first.out");
    office.desktop.chosenFiles = {first};
    save(office, saveReport);
    office.desktop.chosenFiles = {office.userFile("second.out")};
    save(office, saveReport);
    EXPECT_TRUE(fs::exists(first));
    EXPECT_EQ(readFile(first), readFile(office.userFile("second.out")));
}

TEST(SaveOutput, ANameThatEndsInOooIsRefusedWithTheWordsForInput) {
    Office office;
    office.open("cantilever-dry-sand");
    office.desktop.boxes.clear();
    office.desktop.chosenFiles = {office.userFile("wall.Ooo")};
    save(office, saveReport);
    ASSERT_EQ(office.desktop.boxes.size(), 1U);
    EXPECT_NE(office.desktop.boxes[0].text.find("for saving input data."), std::string::npos);
    EXPECT_EQ(office.session->SavedOutputName, "");
}

TEST(SaveOutput, OntoTheCurrentFileItselfSucceedsAndTouchesNothing) {
    Office office;
    office.open("cantilever-dry-sand");
    const std::string target = office.userFile("wall.out");
    office.desktop.chosenFiles = {target};
    save(office, saveReport);
    const std::string text = readFile(target);
    const auto stamp = fs::last_write_time(target);
    office.desktop.chosenFiles = {target};
    save(office, saveReport);
    EXPECT_EQ(readFile(target), text);
    EXPECT_EQ(fs::last_write_time(target), stamp);
    EXPECT_EQ(office.outputName(), target);
    EXPECT_EQ(office.session->SavedOutputName, target);
}

TEST(SaveOutput, ThroughALinkToTheTemporaryReportItselfLosesNothing) {
    Office office;
    enterProblem(office);
    const std::string text = office.report();
    const std::string link = office.userFile("link.out");
    fs::create_symlink(office.outputName(), link);
    office.desktop.chosenFiles = {link};
    save(office, saveReport);
    EXPECT_EQ(readFile(link), text);
}

TEST(SaveQuestions, NewAsksForBothTemporaryFilesInOrder) {
    Office office;
    enterProblem(office);
    newProblem(*office.session, office.desktop);
    ASSERT_EQ(office.desktop.boxes.size(), 2U);
    EXPECT_EQ(office.desktop.boxes[0],
              (MessageBox{.text = "DO YOU WANT TO SAVE CURRENT INPUT DATA?",
                          .title = "SAVE INPUT DATA?",
                          .buttons = Buttons::YesNo}));
    EXPECT_EQ(office.desktop.boxes[1],
              (MessageBox{.text = "DO YOU WANT TO SAVE CURRENT OUTPUT DATA?",
                          .title = "SAVE OUTPUT DATA?",
                          .buttons = Buttons::YesNo}));
    EXPECT_TRUE(office.temporaryFiles().empty());
}

TEST(SaveQuestions, AfterASavedInputNewAndExitDoNotAskAboutIt) {
    for (const Command command : {newProblem, exitProgram}) {
        Office office;
        enterProblem(office);
        office.desktop.chosenFiles = {office.userFile("wall.dat")};
        save(office, saveInput);
        office.desktop.boxes.clear();
        command(*office.session, office.desktop);
        EXPECT_EQ(office.desktop.titles(), std::vector<std::string>{"SAVE OUTPUT DATA?"});
    }
}

TEST(SaveQuestions, AnOpenedFileIsNeverAskedAbout) {
    Office office;
    office.open("cantilever-dry-sand");
    office.desktop.boxes.clear();
    exitProgram(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.titles(), std::vector<std::string>{"SAVE OUTPUT DATA?"});
}

TEST(SaveQuestions, CancellingTheDialogBringsTheQuestionBack) {
    Office office;
    enterProblem(office);
    office.desktop.answers = {Answer::Yes, Answer::Yes, Answer::No, Answer::Yes, Answer::No};
    newProblem(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.titles(),
              (std::vector<std::string>{"SAVE INPUT DATA?", "SAVE INPUT DATA?", "SAVE INPUT DATA?",
                                        "SAVE OUTPUT DATA?", "SAVE OUTPUT DATA?"}));
    EXPECT_EQ(office.desktop.dialogs.size(), 3U);
}

TEST(SaveQuestions, YesSavesBothAndTheCommandGoesOn) {
    Office office;
    enterProblem(office);
    office.desktop.answers = {Answer::Yes, Answer::Yes};
    office.desktop.chosenFiles = {office.userFile("wall.dat"), office.userFile("wall.out")};
    newProblem(*office.session, office.desktop);
    EXPECT_TRUE(fs::exists(office.userFile("wall.dat")));
    EXPECT_TRUE(fs::exists(office.userFile("wall.out")));
    EXPECT_TRUE(office.temporaryFiles().empty());
    EXPECT_EQ(office.session->CurrentInputName, "");
}

TEST(SaveQuestions, NoToTheOutputDeletesItsTemporaryFile) {
    Office office;
    office.open("cantilever-dry-sand");
    const std::string temporary = office.outputName();
    AskSaveOutput(*office.session, office.desktop);
    EXPECT_EQ(office.outputName(), "");
    EXPECT_FALSE(fs::exists(temporary));
}

TEST(SaveQuestions, NoToTheInputChangesNothing) {
    Office office;
    enterProblem(office);
    const std::string name = office.session->CurrentInputName;
    AskSaveInput(*office.session, office.desktop);
    EXPECT_EQ(office.session->CurrentInputName, name);
    EXPECT_EQ(office.session->InputFileName, "");
    EXPECT_EQ(office.session->DataChanged, 1);
    EXPECT_TRUE(fs::exists(name));
}

TEST(Open, TheDialogCarriesItsTitleAndFilterAndTheSuccessIsTold) {
    Office office;
    office.open("cantilever-dry-sand");
    const FileDialog& dialog = office.desktop.dialogs.at(0);
    EXPECT_EQ(dialog.kind, FileDialog::Kind::Open);
    EXPECT_EQ(dialog.title, "OPEN INPUT FILE.");
    EXPECT_EQ(dialog.filter,
              "Input files(*.dat)|*.dat|Input files (*.in)|*.in|All files (*.*)|*.*");
    ASSERT_EQ(office.desktop.boxes.size(), 1U);
    EXPECT_EQ(office.desktop.boxes[0],
              (MessageBox{.text = "Input file processed: " + examplePath("cantilever-dry-sand") +
                                  "\n\n     No errors detected.",
                          .title = "INPUT COMPLETE",
                          .icon = Icon::Information}));
    EXPECT_EQ(office.session->CurrentInputName, examplePath("cantilever-dry-sand"));
    const auto lines = splitLines(office.report());
    EXPECT_EQ(office.session->report.OutputLineCount, static_cast<int>(lines.size()));
    EXPECT_EQ(office.session->DialogFolder, std::string(KORVANE_SOURCE_DIR) + "/examples");
}

} // namespace korvane::test
