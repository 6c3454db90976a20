// The window of studies, worked as a person does, with a program in the place of korvane-study.
#include "contrast.h"
#include "screenshots.h"
#include "study_hand.h"
#include "study_program.h"

#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "shell/study_process.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace korvane::test {

using testing::HasSubstr;
using testing::StartsWith;

// ---- the entry ----------------------------------------------------------------------------------

TEST(StudyEntry, NeedsTheProgram) {
    const TemporaryFolder empty;
    const EnvironmentVariable path("PATH", empty.path().string());
    ASSERT_EQ(studyProgram(), "");
    Person person;
    person.open(examplePath("anchored-sand"));
    EXPECT_FALSE(person.canChoose(StudyEntryName));
}

// ---- the question -------------------------------------------------------------------------------

TEST(StudyWindow, ShowsTheNumbersOfTheWallAndCountsTheVariants) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    askStudy(person, [](QDialog& window) {
        EXPECT_EQ(stateOf(window), "Tick the numbers that are to vary.");
        EXPECT_FALSE(window.findChild<QPushButton*>("cmdRun")->isEnabled());
        EXPECT_EQ(cell(window, "AnchorElev", Present), "15.5");
        EXPECT_EQ(cell(window, "AnchorElev", UnitName), "FT");
        EXPECT_EQ(cell(window, "AnchorElev", Low), "14.5");
        EXPECT_EQ(cell(window, "SoilFriction.right.1", High), "32");
        EXPECT_EQ(numbersOf(window).item(rowOf(window, "AnchorElev") - 2, 0)->text(), "Wall");
        EXPECT_TRUE(numbersOf(window).isColumnHidden(Steps));
        tick(window, "AnchorElev");
        EXPECT_THAT(stateOf(window).toStdString(), StartsWith("3 variants, "));
        tick(window, "SoilFriction.right.1", Both);
        EXPECT_TRUE(isTicked(window, "SoilFriction.right.1"));
        EXPECT_FALSE(numbersOf(window)
                         .item(rowOf(window, "SoilFriction.left.1"), 0)
                         ->flags()
                         .testFlag(Qt::ItemIsEnabled)); // it moves with the other
        EXPECT_THAT(stateOf(window).toStdString(), StartsWith("5 variants, "));
        window.findChild<QRadioButton*>("optGrid")->setChecked(true);
        EXPECT_FALSE(numbersOf(window).isColumnHidden(Steps));
        EXPECT_THAT(stateOf(window).toStdString(), StartsWith("25 variants, "));
        type(window, "AnchorElev", Steps, "3");
        EXPECT_THAT(stateOf(window).toStdString(), StartsWith("15 variants, "));
        expectFits(numbersOf(window));
        type(window, "AnchorElev", High, "15.9375"); // longer than all that stand there
        EXPECT_EQ(cell(window, "AnchorElev", High), "15.9375");
        expectFits(numbersOf(window));
        expectReadable(window);
        keepScreenshot(window, "STUDY question");
        for (int row = 0; row < window.findChild<QListWidget*>("lstOutputs")->count(); ++row) {
            window.findChild<QListWidget*>("lstOutputs")->item(row)->setCheckState(Qt::Unchecked);
        }
        EXPECT_EQ(stateOf(window), "Tick the outputs to look at.");
        chooseAction(window, "mnuFinished");
    });
}

TEST(StudyWindow, TakesNoNumberThatTheWallCannotHave) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    askStudy(person, [](QDialog& window) {
        type(window, "SoilFriction.right.1", High, "46");
        EXPECT_EQ(stateOf(window), "SoilFriction.right.1 must be at least 0 and at most 45 deg.");
        EXPECT_EQ(cell(window, "SoilFriction.right.1", High), "32");
        EXPECT_FALSE(isTicked(window, "SoilFriction.right.1"));
        type(window, "SoilFriction.right.1", High, "soft");
        EXPECT_EQ(stateOf(window), "\"soft\" is no number.");
        type(window, "SoilFriction.right.1", High, "45");
        EXPECT_EQ(cell(window, "SoilFriction.right.1", High), "45");
        EXPECT_TRUE(isTicked(window, "SoilFriction.right.1"));
        type(window, "SoilFriction.right.1", Low, "45");
        EXPECT_EQ(stateOf(window),
                  "SoilFriction.right.1: the low number must be below the high one.");
        EXPECT_FALSE(window.findChild<QPushButton*>("cmdRun")->isEnabled());
        window.close();
    });
}

TEST(StudyWindow, SavesTheStudyWithItsWall) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    const std::string file = person.userFile("my.toml");
    askStudy(person, [&](QDialog& window) {
        EXPECT_FALSE(window.findChild<QAction*>("mnuSaveStudy")->isEnabled());
        tick(window, "AnchorElev");
        person.expectFile(file);
        chooseAction(window, "mnuSaveStudy");
        writeFile(person.userFile("other.dat"), "of somebody else\n");
        person.expectFile(person.userFile("other.toml"));
        person.expectBox("No");
        chooseAction(window, "mnuSaveStudy");
        window.close();
    });
    EXPECT_THAT(readFile(file), HasSubstr("base = \"my.dat\"\n"));
    EXPECT_THAT(readFile(file), HasSubstr("fields = [\"AnchorElev\"]\nlow = 14.5\nhigh = 16.5\n"));
    Problem saved;
    clearProblemData(saved);
    EXPECT_TRUE(readProblem(saved, readFile(person.userFile("my.dat")), "my.dat").complete);
    EXPECT_EQ(saved.AnchorElev, 15.5);
    EXPECT_EQ(readFile(person.userFile("other.dat")), "of somebody else\n");
    EXPECT_FALSE(std::filesystem::exists(person.userFile("other.toml")));
}

// ---- faults -------------------------------------------------------------------------------------

TEST(StudyWindow, TellsTheFaultOfTheProgramAndGoesOn) {
    const StandIn program("echo 'wall.dat: line 3 is refused' >&2; exit 2");
    Person person;
    person.open(examplePath("anchored-sand"));
    askStudy(person, [&](QDialog& window) {
        tick(window, "AnchorElev");
        person.expectBox("OK");
        run(window);
        atState(person, "wall.dat: line 3 is refused", [](QDialog& same) {
            EXPECT_TRUE(same.findChild<QPushButton*>("cmdRun")->isEnabled());
            EXPECT_FALSE(same.findChild<QAction*>("mnuCopy")->isEnabled());
            same.close();
        });
    });
    ASSERT_EQ(person.boxes.size(), 2U); // the first is of the opened file
    EXPECT_EQ(person.boxes[1].title, "STUDY");
    EXPECT_EQ(person.boxes[1].text, "wall.dat: line 3 is refused");
}

TEST(StudyWindow, TellsEndsWithoutWordsAndResultsThatAreMissingOrWrong) {
    const struct {
        const char* lines;
        const char* told;
    } cases[] = {
        {"exit 1", "korvane-study ended with status 1."},
        {"kill -9 $$", "korvane-study was ended from outside."},
        {"mkdir -p \"$4\"; printf 'id,outcome\\r\\n0,solved\\r\\n' > \"$4/results.csv\"",
         "The results have no column \"AnchorElev\"."},
    };
    for (const auto& [lines, told] : cases) {
        const StandIn program(lines);
        Person person;
        person.open(examplePath("anchored-sand"));
        askStudy(person, [&person, told = told](QDialog& window) {
            tick(window, "AnchorElev");
            person.expectBox("OK");
            run(window);
            atState(person, told, [](QDialog& same) { same.close(); });
        });
        EXPECT_EQ(person.boxes.back().text, told);
    }
}

TEST(StudyWindow, TellsWhereTheResultsAreNotThere) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    askStudy(person, [&](QDialog& window) {
        tick(window, "AnchorElev");
        person.expectBox("OK");
        run(window);
        atState(person, "3 variants", [](QDialog& same) { same.close(); });
    });
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
}

TEST(StudyWindow, IsCancelledAndGoesOn) {
    const StandIn program(endless(""));
    Person person;
    person.open(examplePath("anchored-sand"));
    askStudy(person, [&](QDialog& window) {
        tick(window, "AnchorElev");
        run(window);
        person.expectScreen("STUDY", [&](QDialog& same) {
            pushButton(same, "cmdCancel");
            atState(person, "Cancelled. 3 variants, ", [&](QDialog& again) {
                EXPECT_FALSE(again.findChild<QTabWidget*>("tabPages")->isTabEnabled(1));
                run(again); // once more
                person.expectScreen("STUDY", [](QDialog& last) { last.close(); });
            });
        });
    }); // closes in the midst of the second run
    person.answer("SAVE OUTPUT DATA?", "No");
    person.choose("mnuFileItem_7");
    EXPECT_TRUE(person.leftNothing());
}

TEST(StudyWindow, LeavesNoFolderWhereASignalEndsTheProgram) {
    const StandIn program("exit 1");
    Person person;
    person.open(examplePath("anchored-sand"));
    askStudy(person, [&](QDialog& window) {
        tick(window, "AnchorElev");
        person.expectBox("OK");
        run(window);
        const std::string folder = person.session().files.StudyFolder;
        EXPECT_TRUE(std::filesystem::exists(folder + "/study.toml"));
        atState(person, "korvane-study ended", [&person, folder](QDialog& same) {
            removeTemporaryFiles(person.session().files); // as the end by a signal does
            EXPECT_FALSE(std::filesystem::exists(folder));
            same.close();
        });
    });
    EXPECT_EQ(person.session().files.StudyFolder, "");
}

TEST(StudyWindow, ListsItsFolderForTheNextStartShouldTheProgramDie) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    askStudy(person, [&](QDialog& window) {
        const std::string folder = person.session().files.StudyFolder;
        EXPECT_TRUE(std::filesystem::is_directory(folder));
        EXPECT_THAT(readFile(person.temporary.path() / "KORVANE-RUN-0"),
                    HasSubstr(" " + folder + "\n"));
        window.close();
    });
}

// ---- keys and names -----------------------------------------------------------------------------

TEST(StudyWindow, HasALetterOfItsOwnForEachControlAndANameForEachTable) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    askStudy(person, [](QDialog& window) {
        QStringList captions;
        for (const QAction* action : window.findChild<QMenuBar*>()->actions()) {
            captions.append(action->text());
        }
        for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
            captions.append(button->text());
        }
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            captions.append(label->buddy() != nullptr || label->text().startsWith('&')
                                ? label->text()
                                : QString());
        }
        const auto* pages = window.findChild<QTabWidget*>("tabPages");
        captions.append(pages->tabText(0));
        captions.append(pages->tabText(1));
        std::set<QChar> letters;
        int count = 0;
        for (const QString& caption : captions) {
            const qsizetype mark = caption.indexOf('&');
            if (mark >= 0) {
                ++count;
                EXPECT_TRUE(letters.insert(caption[mark + 1].toLower()).second)
                    << caption.toStdString();
            }
        }
        EXPECT_EQ(count, 18);
        for (const char* name : {"tblNumbers", "tblAnswer", "lstOutputs", "barVariants"}) {
            EXPECT_FALSE(window.findChild<QWidget*>(name)->accessibleName().isEmpty()) << name;
        }
        EXPECT_EQ(window.focusWidget(), &numbersOf(window));
        numbersOf(window).setCurrentCell(rowOf(window, "AnchorElev"), 0);
        QTest::keyClick(&numbersOf(window), Qt::Key_Space);
        EXPECT_TRUE(isTicked(window, "AnchorElev"));
        window.close();
    });
}

} // namespace korvane::test
