// The window of studies, worked as a person does, with the study program or one in its place.
#include "person.h"
#include "screenshots.h"
#include "study_program.h"

#include "problem/field_address.h"
#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "shell/study_process.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>

#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace korvane::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::filesystem::path programFolder() {
    return std::filesystem::path(KORVANE_STUDY).parent_path();
}

/// The study program that was built, else the test is left out.
#define WITH_STUDY_PROGRAM()                                                                       \
    if (!std::filesystem::exists(KORVANE_STUDY)) {                                                 \
        GTEST_SKIP() << "korvane-study is not built";                                              \
    }                                                                                              \
    const EnvironmentVariable path("PATH", pathWith(programFolder()))

QTableWidget& numbersOf(QDialog& window) {
    return *window.findChild<QTableWidget*>("tblNumbers");
}
QTableWidget& answerOf(QDialog& window) {
    return *window.findChild<QTableWidget*>("tblAnswer");
}
QString stateOf(QDialog& window) {
    return window.findChild<QLabel*>("lblState")->text();
}

/// The row of a number in the table of the question.
int rowOf(QDialog& window, const QString& name) {
    const QTableWidget& table = numbersOf(window);
    for (int row = 0; row < table.rowCount(); ++row) {
        if (table.item(row, 0)->text() == name) {
            return row;
        }
    }
    ADD_FAILURE() << "no number " << name.toStdString();
    return 0;
}

enum Column { Number, Both, Present, UnitName, Low, High, Steps };

void tick(QDialog& window, const QString& name, Column column = Number) {
    QTableWidgetItem* item = numbersOf(window).item(rowOf(window, name), column);
    ASSERT_TRUE(item->flags().testFlag(Qt::ItemIsUserCheckable)) << name.toStdString();
    item->setCheckState(Qt::Checked);
}
bool isTicked(QDialog& window, const QString& name, Column column = Number) {
    return numbersOf(window).item(rowOf(window, name), column)->checkState() == Qt::Checked;
}
QString cell(QDialog& window, const QString& name, Column column) {
    return numbersOf(window).item(rowOf(window, name), column)->text();
}
/// Types over a cell as a person does.
void type(QDialog& window, const QString& name, Column column, const QString& text) {
    QTableWidget& table = numbersOf(window);
    table.setCurrentCell(rowOf(window, name), column);
    QTest::keyClick(&table, Qt::Key_F2);
    QWidget* editor = table.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall); // what is typed comes then
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Runs the study and does something once it is over: the answer has come, or the line below the
/// question begins with a text.
void run(QDialog& window) {
    pushButton(window, "cmdRun");
}
void atAnswer(Person& person, const std::function<void(QDialog&)>& act) {
    person.expectScreen("STUDY", [&person, act](QDialog& window) {
        if (!window.findChild<QAction*>("mnuCopy")->isEnabled()) {
            atAnswer(person, act);
        } else {
            act(window);
        }
    });
}
void atState(Person& person, const QString& start, const std::function<void(QDialog&)>& act) {
    person.expectScreen("STUDY", [&person, start, act](QDialog& window) {
        if (!stateOf(window).startsWith(start)) {
            atState(person, start, act);
        } else {
            act(window);
        }
    });
}

/// The penetration of a wall with other numbers, by the road itself.
double penetrationWith(const std::string& file,
                       const std::vector<std::pair<std::string, double>>& numbers, int level = 1) {
    auto problem = std::make_unique<Problem>();
    clearProblemData(*problem);
    readProblem(*problem, readFile(file), file);
    for (const auto& [name, value] : numbers) {
        setValueAt(*problem, readAddress(name).address, value);
    }
    Options options;
    options.wedge = WedgeMethod::Sweep;
    Workspace workspace;
    return solve(*problem, options, {}, workspace).results->levels(level).penetration;
}

/// As lengths are told: with two places in FT, three in m.
QString lengthText(double value, int places = 2) {
    return QString::number(value, 'f', places);
}

} // namespace

// ---- the entry ----------------------------------------------------------------------------------

TEST(StudyEntry, NeedsAProblem) {
    WITH_STUDY_PROGRAM();
    Person person;
    EXPECT_FALSE(person.canChoose("mnuToolsItem_4"));
    person.open(examplePath("anchored-sand"));
    EXPECT_TRUE(person.canChoose("mnuToolsItem_4"));
    EXPECT_EQ(person.caption("mnuToolsItem_4"), "S&tudy...");
}

TEST(StudyEntry, NeedsTheProgram) {
    const TemporaryFolder empty;
    const EnvironmentVariable path("PATH", empty.path().string());
    ASSERT_EQ(studyProgram(), "");
    Person person;
    person.open(examplePath("anchored-sand"));
    EXPECT_FALSE(person.canChoose("mnuToolsItem_4"));
}

// ---- the question -------------------------------------------------------------------------------

TEST(StudyWindow, ShowsTheNumbersOfTheWallAndCountsTheVariants) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    person.expectScreen("STUDY", [](QDialog& window) {
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
        keepScreenshot(window, "STUDY question");
        for (int row = 0; row < window.findChild<QListWidget*>("lstOutputs")->count(); ++row) {
            window.findChild<QListWidget*>("lstOutputs")->item(row)->setCheckState(Qt::Unchecked);
        }
        EXPECT_EQ(stateOf(window), "Tick the outputs to look at.");
        chooseAction(window, "mnuFinished");
    });
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
}

TEST(StudyWindow, TakesNoNumberThatTheWallCannotHave) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    person.expectScreen("STUDY", [](QDialog& window) {
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
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
}

TEST(StudyWindow, SavesTheStudyWithItsWall) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    const std::string file = person.userFile("my.toml");
    person.expectScreen("STUDY", [&](QDialog& window) {
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
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
    EXPECT_THAT(readFile(file), HasSubstr("base = \"my.dat\"\n"));
    EXPECT_THAT(readFile(file), HasSubstr("fields = [\"AnchorElev\"]\nlow = 14.5\nhigh = 16.5\n"));
    Problem saved;
    clearProblemData(saved);
    EXPECT_TRUE(readProblem(saved, readFile(person.userFile("my.dat")), "my.dat").complete);
    EXPECT_EQ(saved.AnchorElev, 15.5);
    EXPECT_EQ(readFile(person.userFile("other.dat")), "of somebody else\n");
    EXPECT_FALSE(std::filesystem::exists(person.userFile("other.toml")));
}

// ---- the run ------------------------------------------------------------------------------------

TEST(StudyWindow, MakesATornadoWithTheNumbersOfSingleSolutions) {
    WITH_STUDY_PROGRAM();
    Person person;
    const std::string wall = examplePath("anchored-sand");
    person.open(wall);
    person.expectScreen("STUDY", [&](QDialog& window) {
        tick(window, "AnchorElev");
        tick(window, "SoilFriction.right.1", Both);
        tick(window, "WaterElev.right");
        run(window);
        EXPECT_TRUE(window.findChild<QPushButton*>("cmdCancel")->isVisible());
        EXPECT_FALSE(window.findChild<QPushButton*>("cmdRun")->isEnabled());
    });
    atAnswer(person, [&](QDialog& window) {
        EXPECT_EQ(window.findChild<QTabWidget*>("tabPages")->currentIndex(), 1);
        EXPECT_EQ(window.findChild<QLabel*>("lblOutcome")->text(), "7 variants, all solved.");
        EXPECT_EQ(window.findChild<QComboBox*>("cboOutput")->currentText(),
                  "penetration, free earth");
        keepScreenshot(window, "STUDY tornado");
        const QTableWidget& table = answerOf(window);
        ASSERT_EQ(table.rowCount(), 3);
        for (int row = 0; row < 3; ++row) {
            const QString title = table.item(row, 0)->text();
            std::vector<std::vector<std::pair<std::string, double>>> ends;
            if (title == "AnchorElev") {
                ends = {{{"AnchorElev", 14.5}}, {{"AnchorElev", 16.5}}};
            } else if (title == "WaterElev.right") {
                ends = {{{"WaterElev.right", 7}}, {{"WaterElev.right", 9}}};
            } else {
                ends = {{{"SoilFriction.right.1", 28}, {"SoilFriction.left.1", 28}},
                        {{"SoilFriction.right.1", 32}, {"SoilFriction.left.1", 32}}};
            }
            EXPECT_EQ(table.item(row, 3)->text(), lengthText(penetrationWith(wall, ends[0])));
            EXPECT_EQ(table.item(row, 4)->text(), lengthText(penetrationWith(wall, {})));
            EXPECT_EQ(table.item(row, 5)->text(), lengthText(penetrationWith(wall, ends[1])));
        }
        window.findChild<QComboBox*>("cboOutput")->setCurrentText("penetration, fixed earth");
        EXPECT_EQ(table.item(0, 4)->text(), lengthText(penetrationWith(wall, {}, 2)));
        chooseAction(window, "mnuCopy");
        EXPECT_THAT(QApplication::clipboard()->text().toStdString(),
                    StartsWith("Variable\tLow\tHigh\tpenetration, fixed earth (FT) at low\t"));
        person.expectFile(person.userFile("tornado.svg"));
        chooseAction(window, "mnuSaveFigure");
        chooseAction(window, "mnuFinished");
    });
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
    EXPECT_THAT(readFile(person.userFile("tornado.svg")),
                HasSubstr("<title>penetration, fixed earth</title>"));
    person.answer("SAVE OUTPUT DATA?", "No");
    person.choose("mnuFileItem_7");
    EXPECT_TRUE(person.leftNothing());
}

TEST(StudyWindow, MakesTheCurvesOfAGridInTheUnitsOfTheMenu) {
    WITH_STUDY_PROGRAM();
    Person person;
    const std::string wall = examplePath("anchored-sand");
    person.open(wall);
    person.choose("mnuUnitsItem_1");
    person.expectScreen("STUDY", [&](QDialog& window) {
        window.findChild<QRadioButton*>("optGrid")->setChecked(true);
        type(window, "AnchorElev", Low, "4.2672"); // 14 FT
        type(window, "AnchorElev", High, "4.8768");
        type(window, "AnchorElev", Steps, "3");
        tick(window, "SoilFriction.right.1");
        type(window, "WaterElev.left", Steps, "2");
        run(window);
    });
    atAnswer(person, [&](QDialog& window) {
        EXPECT_EQ(window.findChild<QLabel*>("lblOutcome")->text(), "30 variants, all solved.");
        const QTableWidget& table = answerOf(window);
        EXPECT_EQ(table.rowCount(), 3);
        EXPECT_EQ(table.columnCount(), 6); // and five frictions
        EXPECT_EQ(table.horizontalHeaderItem(1)->text(),
                  "penetration, free earth (m)\nSoilFriction.right.1 28 deg");
        keepScreenshot(window, "STUDY curves");
        window.findChild<QComboBox*>("cboPlace_WaterElev_left")->setCurrentIndex(0); // 0.3 m below
        const double level = 8 - 0.3 / 0.3048;
        const double penetration = penetrationWith(
            wall, {{"AnchorElev", 15}, {"SoilFriction.right.1", 32}, {"WaterElev.left", level}});
        EXPECT_EQ(table.item(1, 5)->text(), lengthText(penetration * 0.3048, 3));
        window.findChild<QComboBox*>("cboAlong")->setCurrentText("SoilFriction.right.1");
        EXPECT_EQ(table.columnCount(), 2); // a curve for each value of the axis itself is one
        EXPECT_EQ(table.rowCount(), 5);
        window.findChild<QComboBox*>("cboBy")->setCurrentText("WaterElev.left");
        EXPECT_EQ(table.columnCount(), 3);
        chooseAction(window, "mnuFinished");
    });
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
}

TEST(StudyWindow, TellsWhatHasNoSolution) {
    WITH_STUDY_PROGRAM();
    Person person;
    person.open(examplePath("anchored-sand"));
    person.expectScreen("STUDY", [&](QDialog& window) {
        type(window, "SoilWallFriction.right.1", High, "20");
        type(window, "SoilFriction.right.1", Low, "0"); // a soil of no strength
        run(window);
    });
    atAnswer(person, [&](QDialog& window) {
        EXPECT_THAT(window.findChild<QLabel*>("lblOutcome")->text().toStdString(),
                    StartsWith("5 variants, 1 without a solution:\n1: SoilCohesion of right side"));
        keepScreenshot(window, "STUDY failed");
        window.close();
    });
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
}

TEST(StudyWindow, SavesTheReport) {
    WITH_STUDY_PROGRAM();
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string file = person.userFile("report.html");
    person.expectScreen("STUDY", [&](QDialog& window) {
        tick(window, "SoilFriction.right.1", Both);
        run(window);
    });
    atAnswer(person, [&](QDialog& window) {
        person.expectFile(file);
        chooseAction(window, "mnuSaveReport");
        atAnswer(person, [](QDialog& same) { same.close(); });
    });
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
    EXPECT_THAT(readFile(file), HasSubstr("</html>"));
}

// ---- faults -------------------------------------------------------------------------------------

TEST(StudyWindow, TellsTheFaultOfTheProgramAndGoesOn) {
    const StandIn program("echo 'wall.dat: line 3 is refused' >&2; exit 2");
    Person person;
    person.open(examplePath("anchored-sand"));
    person.expectScreen("STUDY", [&](QDialog& window) {
        tick(window, "AnchorElev");
        person.expectBox("OK");
        run(window);
        atState(person, "wall.dat: line 3 is refused", [](QDialog& same) {
            EXPECT_TRUE(same.findChild<QPushButton*>("cmdRun")->isEnabled());
            EXPECT_FALSE(same.findChild<QAction*>("mnuCopy")->isEnabled());
            same.close();
        });
    });
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
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
        person.expectScreen("STUDY", [&person, told = told](QDialog& window) {
            tick(window, "AnchorElev");
            person.expectBox("OK");
            run(window);
            atState(person, told, [](QDialog& same) { same.close(); });
        });
        person.choose("mnuToolsItem_4");
        person.expectNothingLeft();
        EXPECT_EQ(person.boxes.back().text, told);
    }
}

TEST(StudyWindow, TellsWhereTheResultsAreNotThere) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    person.expectScreen("STUDY", [&](QDialog& window) {
        tick(window, "AnchorElev");
        person.expectBox("OK");
        run(window);
        atState(person, "3 variants", [](QDialog& same) { same.close(); });
    });
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
}

TEST(StudyWindow, IsCancelledAndGoesOn) {
    const StandIn program(endless(""));
    Person person;
    person.open(examplePath("anchored-sand"));
    person.expectScreen("STUDY", [&](QDialog& window) {
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
    });
    person.choose("mnuToolsItem_4"); // closes in the midst of the second run
    person.expectNothingLeft();
    person.answer("SAVE OUTPUT DATA?", "No");
    person.choose("mnuFileItem_7");
    EXPECT_TRUE(person.leftNothing());
}

TEST(StudyWindow, LeavesNoFolderWhereASignalEndsTheProgram) {
    const StandIn program("exit 1");
    Person person;
    person.open(examplePath("anchored-sand"));
    person.expectScreen("STUDY", [&](QDialog& window) {
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
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
    EXPECT_EQ(person.session().files.StudyFolder, "");
}

// ---- keys and names -----------------------------------------------------------------------------

TEST(StudyWindow, HasALetterOfItsOwnForEachControlAndANameForEachTable) {
    const StandIn program("exit 0");
    Person person;
    person.open(examplePath("anchored-sand"));
    person.expectScreen("STUDY", [](QDialog& window) {
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
    person.choose("mnuToolsItem_4");
    person.expectNothingLeft();
}

} // namespace korvane::test
