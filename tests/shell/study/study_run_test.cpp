// The window of studies, worked as a person does, with the korvane-study of this build.
#include "contrast.h"
#include "screenshots.h"
#include "study_hand.h"
#include "study_program.h"

#include "problem/field_address.h"
#include "problem/input_reader.h"
#include "runtime/file_text.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace korvane::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// PATH with the program that was built.
std::string withProgram() {
    return pathWith(std::filesystem::path(KORVANE_STUDY).parent_path());
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
    const EnvironmentVariable path("PATH", withProgram());
    Person person;
    EXPECT_FALSE(person.canChoose(StudyEntryName));
    person.open(examplePath("anchored-sand"));
    EXPECT_TRUE(person.canChoose(StudyEntryName));
    EXPECT_EQ(person.caption(StudyEntryName), "S&tudy...");
}

// ---- the run ------------------------------------------------------------------------------------

TEST(StudyWindow, MakesATornadoWithTheNumbersOfSingleSolutions) {
    const EnvironmentVariable path("PATH", withProgram());
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
        expectFits(answerOf(window));
        expectFigureInReach(window);
        expectReadable(window);
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
    person.choose(StudyEntryName);
    person.expectNothingLeft();
    EXPECT_THAT(readFile(person.userFile("tornado.svg")),
                HasSubstr("<title>penetration, fixed earth</title>"));
    person.answer("SAVE OUTPUT DATA?", "No");
    person.choose("mnuFileItem_7");
    EXPECT_TRUE(person.leftNothing());
}

TEST(StudyWindow, MakesTheCurvesOfAGridInTheUnitsOfTheMenu) {
    const EnvironmentVariable path("PATH", withProgram());
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
        expectFits(table);
        expectFigureInReach(window);
        expectReadable(window);
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
    person.choose(StudyEntryName);
    person.expectNothingLeft();
}

TEST(StudyWindow, TellsWhatHasNoSolution) {
    const EnvironmentVariable path("PATH", withProgram());
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
        expectFits(answerOf(window), {3}); // the reason, which its tip tells in full
        EXPECT_THAT(answerOf(window).item(1, 3)->toolTip().toStdString(),
                    HasSubstr("must be above 0"));
        expectFigureInReach(window);
        keepScreenshot(window, "STUDY failed");
        window.close();
    });
    person.choose(StudyEntryName);
    person.expectNothingLeft();
}

TEST(StudyWindow, SavesTheReport) {
    const EnvironmentVariable path("PATH", withProgram());
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
    person.choose(StudyEntryName);
    person.expectNothingLeft();
    EXPECT_THAT(readFile(file), HasSubstr("</html>"));
}

} // namespace korvane::test
