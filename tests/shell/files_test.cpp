// Opening, saving, ending and faults, at the main window.
#include "person.h"
#include "screenshots.h"

#include "runtime/file_text.h"

#include <QAbstractItemView>
#include <QDir>
#include <QProcess>
#include <QUrl>

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/inotify.h>
#include <unistd.h>

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

/// Leaves the section list by its button, with boxes expected before.
void finishKeyin(QDialog& keyin) {
    pushButton(keyin, "cmdFinished");
}

TEST(Saving, ACancelledDialogBringsTheQuestionBack) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectBox("Yes");
    person.expectFile("");
    person.expectBox("Yes");
    const std::string saved = person.userFile("saved"); // completed by the filter's extension
    person.expectFile(saved);
    person.choose("mnuFileItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "SAVE OUTPUT DATA?");
    EXPECT_TRUE(fs::exists(saved + ".out"));
}

TEST(Saving, TemporaryExtensionsAreRefusedAndOverwritingIsAsked) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string existing = person.userFile("old.out");
    writeFile(existing, "OLD\n");
    person.expectFile(person.userFile("x.OoO"));
    person.expectBox("OK");
    person.expectFile(existing);
    person.expectBox("No");
    person.expectFile(existing);
    person.expectBox("Yes");
    person.choose("mnuSaveItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes[1].text, "File:  " + person.userFile("x.OoO") +
                                        "  is a temporary file in use.\nPlease choose another file "
                                        "name for saving input data.");
    EXPECT_EQ(person.boxes[2].title, "OVERWRITE?");
    EXPECT_EQ(person.boxes[2].buttons, (std::vector<std::string>{"Yes", "No"}));
    EXPECT_NE(readFile(existing), "OLD\n");
}

TEST(Saving, SavedInputIsNotAskedForAgain) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectBox("Yes");
    person.expectFile(person.userFile("first.out"));
    person.expectScreen("KEYIN", finishKeyin);
    person.choose("mnuEditItem_0");
    person.expectFile(person.userFile("mine.dat"));
    person.choose("mnuSaveItem_0");
    person.expectBox("No"); // the output alone
    person.choose("mnuFileItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "SAVE OUTPUT DATA?");
    EXPECT_TRUE(fs::exists(person.userFile("mine.dat")));
}

// ---- file dialogs ----

TEST(FileDialogs, OpenNoFileToGuessItsKind) {
    Person person;
    for (const char* name : {"wall", "wall.dat", "notes"}) { // names that tell no kind
        writeFile(person.userFile(name), "'A WALL\n");
    }
    const int watch = ::inotify_init1(IN_NONBLOCK);
    ASSERT_GE(watch, 0);
    ASSERT_GE(::inotify_add_watch(watch, person.user.path().c_str(), IN_OPEN | IN_ACCESS), 0);
    person.expectFile("", [&](QFileDialog& dialog) {
        dialog.setNameFilter("All files (*)");
        dialog.setDirectory(QString::fromStdString(person.user.path().string()));
        const auto* list = dialog.findChild<QAbstractItemView*>("listView");
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 3; }, 5000));
        QTest::qWait(300); // the kinds follow the names
    });
    person.choose("mnuFileItem_1");
    person.expectNothingLeft();
    alignas(inotify_event) char events[4096];
    std::string opened;
    for (ssize_t got = 0; (got = ::read(watch, events, sizeof events)) > 0;) {
        for (char* at = events; at < events + got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(at);
            opened += event->len > 0 ? std::string(event->name) + " " : ""; // else the folder
            at += sizeof(inotify_event) + event->len;
        }
    }
    ::close(watch);
    std::erase_if(opened, [](char c) { return c == '\0'; });
    EXPECT_EQ(opened, "");
}

TEST(FileDialogs, OfferTheExamplesAndAHomeFolder) {
    Person person;
    person.expectFile("", [](QFileDialog& dialog) {
        QStringList folders;
        for (const QUrl& url : dialog.sidebarUrls()) {
            folders.append(url.toLocalFile());
        }
        EXPECT_TRUE(folders.contains(QDir::homePath()));
        const QString examples =
            QFileInfo(QString::fromStdString(examplePath("anchored-sand"))).absolutePath();
        EXPECT_TRUE(folders.contains(examples)) << folders.join(' ').toStdString();
        keepScreenshot(dialog, "open-dialog");
    });
    person.choose("mnuFileItem_1");
    person.expectNothingLeft();
}

TEST(FileDialogs, KeepNothingInTheUsersSettings) {
    Person person;
    person.expectFile(examplePath("cantilever-dry-sand"));
    person.expectBox("OK");
    person.choose("mnuFileItem_1");
    person.expectNothingLeft();
    const fs::path settings = qEnvironmentVariable("XDG_CONFIG_HOME").toStdString();
    ASSERT_TRUE(fs::is_directory(settings));
    EXPECT_FALSE(fs::exists(settings / "QtProject.conf"));
}

TEST(Ending, TheFramesCrossAsksAndDeletesTheTemporaryFiles) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    EXPECT_TRUE(fs::exists(person.temporary.path() / "TEMP0.ooo"));
    person.expectBox("No");
    person.window().close();
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "SAVE OUTPUT DATA?");
    EXPECT_FALSE(person.window().isVisible());
    EXPECT_TRUE(person.leftNothing());
}

TEST(Ending, ACloseAtTheStopForReviewTakesTheSameWay) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    person.expectBox("No");
    person.window().close();
    person.expectNothingLeft();
    EXPECT_FALSE(person.window().isVisible());
}

TEST(Ending, ACloseWhileSolvingIsIgnored) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.session().stage = FlowStage::Solving;
    person.window().close();
    EXPECT_TRUE(person.window().isVisible());
    person.session().stage = FlowStage::Rest;
}

TEST(Faults, AFileThatIsGoneTellsAndKeepsTheProblem) {
    Person person;
    const std::string input = person.userFile("input.dat");
    fs::copy_file(examplePath("cantilever-dry-sand"), input);
    person.open(input);
    fs::remove(input);
    person.expectBox("OK");
    person.choose("mnuViewItem_0");
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
    EXPECT_EQ(person.boxes.back().text,
              "File: " + input + "\nFile not found\n\nYour data are kept.");
    EXPECT_EQ(person.session().problem.NumHeadingLines, 1);
    EXPECT_TRUE(person.canChoose("mnuSolveItem_0"));
}

TEST(Faults, AFullDiskTellsAndKeepsTheOutput) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string full = person.userFile("full.out");
    fs::create_symlink("/dev/full", full);
    person.expectFile(full);
    person.expectBox("Yes"); // it exists
    person.expectBox("OK");
    person.choose("mnuSaveItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
    EXPECT_NE(person.boxes.back().text.find("Disk full"), std::string::npos);
    EXPECT_TRUE(person.canChoose("mnuSolveItem_0"));
    EXPECT_TRUE(fs::exists(person.session().report.CurrentOutputName));
}

TEST(Faults, AVanishedTemporaryFolderFailsTheSolutionAndKeepsTheData) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    fs::remove_all(person.temporary.path());
    person.expectBox("OK");
    person.choose("mnuSolveItem_0");
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
    EXPECT_EQ(person.session().panels.panDoneText, "SOLUTION ABORTED DUE TO CALCULATION ERRORS");
    person.push("cmdOK");
    EXPECT_EQ(person.session().problem.NumHeadingLines, 1);
    fs::create_directories(person.temporary.path());
}

TEST(Faults, TwoProgramsAtOnceDoNotDisturbEachOther) {
    Person first;
    const auto outputOf = [](Person& person) { return person.session().report.CurrentOutputName; };
    const auto solveIt = [](Person& person) {
        person.choose("mnuSolveItem_0");
        person.push("cmdContinue");
        person.push("cmdOK");
        person.expectNothingLeft();
    };
    first.open(examplePath("cantilever-dry-sand"));
    {
        Person second(first.temporary.path());
        second.open(examplePath("cantilever-clay"));
        EXPECT_EQ(fs::path(outputOf(first)).filename(), "TEMP0.ooo");
        EXPECT_EQ(fs::path(outputOf(second)).filename(), "TEMP1.ooo");
        EXPECT_EQ(fs::path(outputOf(first)).parent_path(),
                  fs::path(outputOf(second)).parent_path());
        solveIt(first);
        const std::string report = readFile(outputOf(first));
        solveIt(second);
        second.expectBox("No");
        second.window().close();
        second.expectNothingLeft();
        EXPECT_EQ(readFile(outputOf(first)), report);
    }
    first.expectScreen("CANPLOT", [](QDialog& screen) { screen.close(); });
    first.choose("mnuViewItem_3"); // its solution can still be read
    first.expectBox("No");
    first.window().close();
    first.expectNothingLeft();
    EXPECT_TRUE(first.leftNothing());
}

/// A run-time error in a screen above a screen ends the process at once with its box and status.
TEST(Faults, RunTimeError9InANestedScreenKeepsTheInputAndEndsWithStatus70) {
    const TemporaryFolder folder;
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("temp", QString::fromStdString(folder.path().string()));
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    program.setProcessEnvironment(environment);
    program.start(KORVANE_FAULT, QStringList());
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 70);
    const std::string kept = (folder.path() / "KORVANE-RESCUE-0.dat").string();
    EXPECT_EQ(program.readAllStandardOutput().toStdString(),
              "KORVANE\nRun-time error '9':\n\nSubscript out of range\nYour input was kept in " +
                  kept + "\n");
    EXPECT_NE(readFile(kept).find("'KEEP THIS "), std::string::npos);
    fs::remove(kept);
    EXPECT_TRUE(fs::is_empty(folder.path())); // neither record nor temporary file
}

} // namespace
} // namespace korvane::test
