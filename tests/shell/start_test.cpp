// The command line, files that come from outside, recent files, the title and the shortcuts.
#include "person.h"
#include "screenshots.h"

#include "commands/recent_files.h"
#include "runtime/file_text.h"
#include "screens/screens.h"
#include "shell/command_line.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>
#include <QTextBrowser>
#include <QUrl>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace korvane::test {
namespace {

// ---- command line ----

CommandLine readWords(std::vector<const char*> words) {
    words.insert(words.begin(), "korvane");
    return readCommandLine(static_cast<int>(words.size()), words.data());
}

std::string answerTo(std::vector<const char*> words) {
    words.insert(words.begin(), "korvane");
    return answerAlone(static_cast<int>(words.size()), words.data()).answer;
}

TEST(CommandLine, TakesOneFile) {
    EXPECT_EQ(readWords({}).file, "");
    EXPECT_EQ(readWords({"wall.dat"}).file, "wall.dat");
    EXPECT_EQ(readWords({"--", "--help"}).file, "--help");
    EXPECT_EQ(readWords({"caf\xE9.dat"}).file, "caf\xE9.dat"); // bytes as they stand
    EXPECT_EQ(readWords({"wall.dat"}).answer, "");
}

TEST(CommandLine, AnswersHelpAndVersionBeforeItStarts) {
    EXPECT_EQ(answerTo({"--help"}).rfind("Usage: korvane [FILE]\n", 0), 0U);
    EXPECT_EQ(answerTo({"wall.dat", "-h"}), answerTo({"--help"}));
    EXPECT_EQ(answerTo({"--version"}).rfind("KORVANE ", 0), 0U);
    EXPECT_EQ(answerTo({"wall.dat"}), "");
    EXPECT_EQ(answerTo({"--", "--version"}), "");
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
    const std::vector<std::vector<const char*>> wrong{
        {"--solve"}, {"-x"}, {"a.dat", "b.dat"}, {""}};
    for (const auto& words : wrong) {
        const CommandLine line = readWords(words);
        EXPECT_TRUE(line.refused) << words.front();
        EXPECT_EQ(line.answer.rfind("korvane: ", 0), 0U);
    }
    EXPECT_EQ(readWords({"--\x1b[31mred"}).answer,
              "korvane: unknown option --\\x1B[31mred\nTry 'korvane --help'.\n");
}

// ---- the file of the command line ----

constexpr int ShortTitle = 60; // milliseconds

/// Runs the program from its title on with a file: accepts, lets `atMainWindow` act once the boxes
/// of the file are answered by their first buttons, and ends it. The titles of the boxes.
std::vector<std::string> runWith(const std::string& file,
                                 const std::function<void(ShellWindow&)>& atMainWindow) {
    std::vector<std::string> titles;
    QTimer look;
    int quiet = 0;
    QObject::connect(&look, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal); box != nullptr && box->isVisible()) {
            titles.push_back(box->windowTitle().toStdString());
            box->buttons().front()->click();
            quiet = 0;
            return;
        }
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* accept = window->findChild<QAbstractButton*>("okbutton_0");
                accept != nullptr && accept->isVisible()) {
                accept->click();
            }
            auto* main = qobject_cast<ShellWindow*>(window);
            if (main != nullptr && main->isVisible() && modal == nullptr && ++quiet == 5) {
                look.stop();
                atMainWindow(*main);
                main->endWithoutQuestion();
                main->close();
                QApplication::quit();
            }
        }
    });
    look.start(20);
    EXPECT_EQ(runProgram(dataScreens(), ShortTitle, file), 0);
    return titles;
}

TEST(StartFile, IsOpenedAfterAccept) {
    const TemporaryFolder folder;
    const EnvironmentVariable temp("temp", folder.path().string());
    const EnvironmentVariable state("XDG_STATE_HOME", folder.path().string());
    const auto titles = runWith(examplePath("cantilever-dry-sand"), [](ShellWindow& window) {
        EXPECT_EQ(window.windowTitle(), "cantilever-dry-sand.dat - KORVANE");
        EXPECT_TRUE(window.findChild<QAction*>("mnuSolveItem_0")->isEnabled());
    });
    EXPECT_EQ(titles, (std::vector<std::string>{"INPUT COMPLETE"}));
}

TEST(StartFile, ThatIsNotThereIsToldAndTheProgramStarts) {
    const TemporaryFolder folder;
    const EnvironmentVariable temp("temp", folder.path().string());
    const EnvironmentVariable state("XDG_STATE_HOME", folder.path().string());
    const auto titles = runWith((folder.path() / "missing.dat").string(), [](ShellWindow& window) {
        EXPECT_EQ(window.windowTitle(), "KORVANE");
        EXPECT_TRUE(window.findChild<QAction*>("mnuEditItem_0")->isEnabled());
    });
    EXPECT_EQ(titles, (std::vector<std::string>{"FILE ERROR"}));
}

TEST(StartFile, ThatIsNoInputIsToldInTheBoxesOfOpenAndTheProgramStarts) {
    const TemporaryFolder folder;
    const EnvironmentVariable temp("temp", folder.path().string());
    const EnvironmentVariable state("XDG_STATE_HOME", folder.path().string());
    const std::string poem = (folder.path() / "poem.txt").string();
    writeFile(poem, "The sea, the sea.\n");
    const auto titles = runWith(poem, [](ShellWindow& window) {
        EXPECT_EQ(window.windowTitle(), "KORVANE");
        EXPECT_TRUE(window.findChild<QAction*>("mnuEditItem_0")->isEnabled());
    });
    EXPECT_EQ(titles, (std::vector<std::string>{"INCOMPLETE INPUT FILE!", "INPUT DATA ERRORS"}));
}

TEST(StartFile, ThatIsAPipeWithoutAWriterIsToldAndTheProgramStarts) {
    const TemporaryFolder folder;
    const EnvironmentVariable temp("temp", folder.path().string());
    const EnvironmentVariable state("XDG_STATE_HOME", folder.path().string());
    const std::string pipe = (folder.path() / "pipe.dat").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const auto titles = runWith(pipe, [](ShellWindow& window) {
        EXPECT_EQ(window.windowTitle(), "KORVANE");
        EXPECT_TRUE(window.findChild<QAction*>("mnuEditItem_0")->isEnabled());
    });
    EXPECT_EQ(titles, (std::vector<std::string>{"FILE ERROR"}));
}

// ---- files dropped on the window ----

bool isTaken(QWidget& window, const QMimeData& data) {
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(&window, &enter);
    return enter.isAccepted();
}

void drop(QWidget& window, const QMimeData& data) {
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &event);
    QTest::qWait(1);
}

QUrl urlOf(const std::string& path) {
    return QUrl::fromLocalFile(QString::fromStdString(path));
}

TEST(DroppedFile, IsOpenedWithTheSaveQuestions) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    QMimeData data;
    data.setUrls({urlOf(examplePath("anchored-sand"))});
    ASSERT_TRUE(isTaken(person.window(), data));
    person.expectBox("No"); // the output of the problem before
    person.expectBox("OK");
    drop(person.window(), data);
    person.expectNothingLeft();
    EXPECT_EQ(person.window().windowTitle(), "anchored-sand.dat - KORVANE");
}

TEST(DroppedFile, ThatCannotBeOneInputIsRefused) {
    Person person;
    QMimeData two;
    two.setUrls({urlOf(examplePath("cantilever-dry-sand")), urlOf(examplePath("anchored-sand"))});
    EXPECT_FALSE(isTaken(person.window(), two));
    QMimeData page;
    page.setUrls({QUrl("https://walls.example/wall.dat")});
    EXPECT_FALSE(isTaken(person.window(), page));
    QMimeData text;
    text.setText("'A WALL");
    EXPECT_FALSE(isTaken(person.window(), text));
    // Nor while a solution stands at its review.
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    QMimeData one;
    one.setUrls({urlOf(examplePath("anchored-sand"))});
    EXPECT_FALSE(isTaken(person.window(), one));
}

// ---- recent files ----

TEST(RecentMenu, OpensWhatWasOpenedBefore) {
    Person person;
    const auto* first = person.window().findChild<QAction*>("mnuRecentItem_0");
    EXPECT_EQ(first->text(), "None yet");
    EXPECT_FALSE(first->isEnabled());
    person.open(examplePath("cantilever-dry-sand"));
    person.expectBox("No");
    person.expectFile(examplePath("anchored-sand"));
    person.expectBox("OK");
    person.choose("mnuFileItem_1");
    EXPECT_EQ(first->text().toStdString(), "&1 " + examplePath("anchored-sand"));
    person.expectBox("No");
    person.expectBox("OK");
    person.choose("mnuRecentItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(person.window().windowTitle(), "cantilever-dry-sand.dat - KORVANE");
    EXPECT_EQ(first->text().toStdString(), "&1 " + examplePath("cantilever-dry-sand"));
    EXPECT_EQ(readRecent(person.recentStore()).size(), 2U);
    EXPECT_FALSE(person.canChoose("mnuRecentItem_2"));
    EXPECT_EQ(person.window().findChild<QMenu*>("mnuFileItem_9")->title(), "&Recent Files");
}

TEST(RecentMenu, ShowsTheLettersOfANameAsTheyStand) {
    Person person;
    const std::string path = person.userFile("sheet & pile.dat");
    writeFile(path, readFile(examplePath("cantilever-dry-sand")));
    person.open(path);
    const QString text = person.window().findChild<QAction*>("mnuRecentItem_0")->text();
    EXPECT_TRUE(text.endsWith("sheet && pile.dat")) << text.toStdString();
}

// ---- title and outcome ----

TEST(WindowTitle, FollowsFileAndUnsavedChanges) {
    Person person;
    EXPECT_EQ(person.window().windowTitle(), "KORVANE");
    person.open(examplePath("cantilever-dry-sand"));
    EXPECT_EQ(person.window().windowTitle(), "cantilever-dry-sand.dat - KORVANE");
    person.expectBox("No"); // output
    person.expectScreen("KEYIN", [&](QDialog& keyin) {
        person.session().DataChanged = 1;
        pushButton(keyin, "cmdFinished");
    });
    person.choose("mnuEditItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.window().windowTitle(), "cantilever-dry-sand.dat* - KORVANE");
    person.expectFile(person.userFile("wall.dat"));
    person.choose("mnuSaveItem_0");
    EXPECT_EQ(person.window().windowTitle(), "wall.dat - KORVANE");
}

TEST(Outcome, StandsBelowThePictureAtRest) {
    Person person;
    auto* line = person.window().findChild<QLabel*>("lblSolution");
    EXPECT_FALSE(line->isVisible());
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    person.push("cmdContinue");
    EXPECT_FALSE(line->text().contains("bottom")); // the notes alone
    person.push("cmdOK");
    EXPECT_TRUE(line->isVisible());
    EXPECT_TRUE(line->text().contains("cantilever wall, design; bottom "));
    keepScreenshot(person.window(), "CKORVANE-solved");
    person.expectBox("No");
    person.choose("mnuFileItem_0");
    EXPECT_FALSE(line->isVisible());
}

TEST(Title, OfAMetricFileSaysSoUntilItIsSavedInFeetAndPounds) {
    Person person;
    const std::string wall = person.userFile("wall.dat");
    writeFile(wall, "UNITS SI\n'A WALL IN METRES\nCONTROL C D 1 1.5\nWALL 3\n"
                    "SURFACE R 1 0 3\nSURFACE L 1 0 0\nSOIL B S 1\n 20 18 30 0 0 0\nFINISHED\n");
    person.open(wall);
    auto* line = person.window().findChild<QLabel*>("lblSolution");
    EXPECT_EQ(person.window().windowTitle(), "wall.dat (metric file) - KORVANE");
    EXPECT_TRUE(line->isVisible());
    EXPECT_EQ(line->text(), "wall.dat: metric file, shown in feet and pounds");
    keepScreenshot(person.window(), "CKORVANE-metric");
    person.expectBox("No");
    person.expectScreen("KEYIN", [&](QDialog& keyin) {
        person.session().DataChanged = 1;
        pushButton(keyin, "cmdFinished");
    });
    person.choose("mnuEditItem_0");
    person.expectFile(wall);
    person.expectBox("Yes"); // to write over it
    person.expectScreen("messageBox", [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    person.choose("mnuSaveItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.window().windowTitle(), "wall.dat* (metric file) - KORVANE");
    person.expectFile(person.userFile("feet.dat"));
    person.expectBox("No");
    person.choose("mnuSaveItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "UNITS OF THE INPUT FILE");
    EXPECT_EQ(person.boxes.back().buttons, (std::vector<std::string>{"Yes", "No", "Cancel"}));
    EXPECT_EQ(person.window().windowTitle(), "feet.dat - KORVANE");
    EXPECT_FALSE(line->isVisible());
}

TEST(Outcome, AnAbortedSolutionLooksUnlikeACompleteOne) {
    Person person;
    const auto panel = [&] {
        keepScreenshot(person.window(),
                       "panDone-" + person.window().findChild<QLabel*>("panDoneText")->text());
        return person.window().findChild<QLabel*>("panDoneSign")->pixmap().toImage();
    };
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    person.push("cmdContinue");
    const QImage complete = panel();
    person.push("cmdOK");
    // The right ground falls below the left one: nothing drives the wall.
    const std::string bad = person.userFile("bad.dat");
    writeFile(bad, "'A WALL THAT TURNS THE WRONG WAY, WITH A HEADING OF SOME LENGTH IN IT\n"
                   "CONTROL C D 1 1\nWALL 0\nSURFACE R 1 0 -10\nSURFACE L 1 0 0\n"
                   "SOIL B S 1\n 120 120 30 0 0 0\nFINISHED\n");
    person.expectBox("No");
    person.expectFile(bad);
    person.expectBox("OK");
    person.choose("mnuFileItem_1");
    person.choose("mnuSolveItem_0");
    person.answer("IMPROPER WALL ROTATION", "OK");
    person.push("cmdContinue");
    EXPECT_TRUE(person.window().findChild<QLabel*>("panDoneText")->text().contains("ABORTED"));
    EXPECT_NE(panel(), complete);
    EXPECT_TRUE(person.window().findChild<QLabel*>("panDoneText")->font().bold());
}

// ---- shortcuts ----

void press(Person& person, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    person.window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&person.window()));
    QTest::keyClick(&person.window(), key, modifiers);
}

TEST(Shortcuts, LeadToTheCommandsOfTheFileMenu) {
    Person person;
    const Qt::KeyboardModifiers control = Qt::ControlModifier;
    const Qt::KeyboardModifiers shifted = Qt::ControlModifier | Qt::ShiftModifier;
    person.expectFile(examplePath("cantilever-dry-sand"));
    person.expectBox("OK");
    press(person, Qt::Key_O, control);
    person.expectNothingLeft();
    person.expectFile(person.userFile("report.out"));
    press(person, Qt::Key_S, shifted);
    person.expectFile(person.userFile("report.pdf"));
    press(person, Qt::Key_P, control);
    person.expectFile(person.userFile("input.pdf"));
    press(person, Qt::Key_P, shifted);
    person.expectNothingLeft();
    EXPECT_NE(readFile(person.userFile("report.out")), "");
    EXPECT_EQ(readFile(person.userFile("input.pdf")).rfind("%PDF", 0), 0U);
    press(person, Qt::Key_S, control); // nothing to save: no dialog
    person.expectScreen("KEYIN", [&](QDialog& keyin) {
        person.session().DataChanged = 1;
        pushButton(keyin, "cmdFinished");
    });
    person.choose("mnuEditItem_0");
    person.expectFile(person.userFile("wall.dat"));
    press(person, Qt::Key_S, control);
    person.expectNothingLeft();
    person.expectBox("No"); // output
    press(person, Qt::Key_N, control);
    person.expectNothingLeft();
    EXPECT_EQ(person.window().windowTitle(), "KORVANE");
}

TEST(Shortcuts, AreOffWhereTheirEntriesAre) {
    Person person;
    for (const Qt::Key key : {Qt::Key_S, Qt::Key_P}) { // nothing to save or print
        press(person, key, Qt::ControlModifier);
        press(person, key, Qt::ControlModifier | Qt::ShiftModifier);
    }
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0"); // the review: the File menu is off
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_O, Qt::Key_P}) {
        press(person, key, Qt::ControlModifier);
    }
    EXPECT_TRUE(person.isShown("fraSoilOut"));
    EXPECT_EQ(person.boxes.size(), 1U); // that the input is complete
}

/// The heading at which the guide stands over a window; empty where it does not.
std::string guideOver(const QWidget& window) {
    for (const QWidget* other : QApplication::topLevelWidgets()) {
        if (other->objectName() == "helpViewer" && other->isVisible() &&
            other->parentWidget() == &window) {
            const auto* page = other->findChild<QTextBrowser*>("helpPage");
            return page->textCursor().block().text().toStdString();
        }
    }
    return {};
}

TEST(Shortcuts, F1OpensTheGuideOverFileDialogsAndTheAboutBox) {
    Person person;
    const auto pressF1 = [](QDialog& dialog) {
        ASSERT_TRUE(takesKeys(dialog));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_F1);
    };
    person.expectFile("", [&](QFileDialog& dialog) {
        pressF1(dialog);
        EXPECT_EQ(guideOver(dialog), "File");
        dialog.activateWindow();
    });
    person.choose("mnuFileItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(guideOver(person.window()), "File"); // stays open
    person.expectScreen("splash_form", [&](QDialog& about) {
        pressF1(about);
        EXPECT_EQ(guideOver(about), "Help");
        EXPECT_TRUE(about.isVisible());
        about.close();
    });
    person.choose("mnuHelpItem_3");
    person.expectNothingLeft();
    EXPECT_EQ(guideOver(person.window()), "Help");
    person.open(examplePath("cantilever-dry-sand"));
    person.program->desktop.printServices.hasPrinter = [] { return true; };
    person.expectScreen("printDialog", [&](QDialog& dialog) {
        pressF1(dialog);
        EXPECT_EQ(guideOver(dialog), "File");
        dialog.reject();
    });
    person.choose("mnuPrintItem_1");
    person.expectNothingLeft();
    EXPECT_EQ(guideOver(person.window()), "File");
}

TEST(Shortcuts, F1OpensTheGuideAtTheSectionOfTheWindowItsScreensAndBoxes) {
    Person person;
    press(person, Qt::Key_F1, Qt::NoModifier);
    EXPECT_EQ(guideOver(person.window()), "The menus");
    person.expectFile(examplePath("cantilever-dry-sand"));
    person.expectScreen("messageBox", [](QDialog& box) {
        QTest::keyClick(box.focusWidget(), Qt::Key_F1);
        EXPECT_EQ(guideOver(box), "Messages and what to do");
        box.accept();
    });
    person.choose("mnuFileItem_1");
    EXPECT_EQ(guideOver(person.window()), "Messages and what to do"); // stays open
    person.expectScreen("VUINPTFL", [](QDialog& screen) {
        QTest::keyClick(screen.focusWidget(), Qt::Key_F1);
        EXPECT_EQ(guideOver(screen), "The input file");
        screen.close();
    });
    person.choose("mnuViewItem_0");
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == "helpViewer") {
            window->close();
        }
    }
    person.choose("mnuSolveItem_0"); // the review, whose buttons have the focus
    press(person, Qt::Key_F1, Qt::NoModifier);
    EXPECT_EQ(guideOver(person.window()), "The menus");
    person.expectNothingLeft();
}

} // namespace
} // namespace korvane::test
