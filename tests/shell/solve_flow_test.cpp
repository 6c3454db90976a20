// Whole problems through the main window: from the example file to the saved report.
#include "person.h"

#include "runtime/file_text.h"

#include <QPlainTextEdit>
#include <QProcess>

#include <gtest/gtest.h>

#include <ostream>

namespace korvane::test {
namespace {

/// The report that the batch command writes for an input.
std::string batchReport(const std::string& input, const QStringList& options) {
    const TemporaryFolder folder;
    const std::string report = (folder.path() / "batch.out").string();
    QProcess batch;
    batch.start(KORVANE_BATCH, QStringList{"--quiet", "--output", QString::fromStdString(report)} +
                                   options + QStringList{QString::fromStdString(input)});
    if (!batch.waitForFinished() || batch.exitCode() != 0) {
        throw std::runtime_error("the batch command fails");
    }
    return readFile(report);
}

struct Example {
    const char* name;
    bool design;
    bool anchored;
    const char* wedgeButton; ///< pushed at the wedge prompt; nullptr where none comes
};

/// Names the case in the list of tests.
void PrintTo(const Example& one, std::ostream* out) {
    *out << one.name;
}

class WholeProblems : public testing::TestWithParam<Example> {};

void acceptSections(QDialog& screen) {
    pushButton(screen, "cmdDefAccept");
    pushButton(screen, "cmdDone");
}

void review(Person& person) {
    EXPECT_TRUE(person.isShown("fraSoilOut"));
    EXPECT_FALSE(person.isShown("Image1"));
    for (const char* item : {"mnuFileItem_0", "mnuEditItem_0", "mnuViewItem_1", "mnuSolveItem_0"}) {
        EXPECT_FALSE(person.canChoose(item)) << item;
    }
    std::string shown;
    person.expectScreen("VUINECHO", [&](QDialog& screen) {
        shown = screen.findChild<QPlainTextEdit*>("txtINECHO")->toPlainText().toStdString();
        chooseAction(screen, "mnuFinished");
    });
    person.push("cmdVuOutFile");
    EXPECT_NE(shown.find("*   SOIL PRESSURES FOR   *"), std::string::npos);
    EXPECT_TRUE(person.isShown("fraSoilOut"));
}

TEST_P(WholeProblems, TheSavedReportIsThatOfTheBatchCommand) {
    const Example& example = GetParam();
    Person person;
    person.open(examplePath(example.name));
    if (example.wedgeButton != nullptr) {
        person.expectScreen("WEDGMETH", [&](QDialog& prompt) {
            prompt.close(); // only its buttons end it
            EXPECT_TRUE(prompt.isVisible());
            pushButton(prompt, example.wedgeButton);
        });
    }
    person.choose("mnuSolveItem_0");
    if (example.design) {
        review(person);
        if (example.anchored) {
            person.expectScreen("ROWEPILE", acceptSections);
        }
        person.push("cmdContinue");
    }
    EXPECT_TRUE(person.isShown("panDone"));
    EXPECT_EQ(person.session().panels.panDoneText, "SOLUTION COMPLETE");
    person.push("cmdOK");
    EXPECT_TRUE(person.isShown("Image1"));
    EXPECT_FALSE(person.canChoose("mnuSolveItem_0"));
    EXPECT_EQ(person.canChoose("mnuViewItem_3"), !example.anchored);
    EXPECT_EQ(person.canChoose("mnuViewItem_4"), example.anchored);
    EXPECT_EQ(person.canChoose("mnuViewItem_5"), example.anchored);

    const std::string saved = person.userFile("saved.out");
    person.expectFile(saved);
    person.choose("mnuSaveItem_1");
    person.expectNothingLeft();
    QStringList options;
    if (example.wedgeButton != nullptr) {
        options = {"--wedge", QString(example.wedgeButton) == "cmdFixed" ? "fixed" : "sweep"};
    }
    EXPECT_EQ(readFile(saved), batchReport(examplePath(example.name), options));
}

std::string exampleName(const testing::TestParamInfo<Example>& parameter) {
    std::string name = parameter.param.name;
    std::erase(name, '-');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Examples, WholeProblems,
                         testing::Values(Example{"cantilever-dry-sand", true, false, nullptr},
                                         Example{"cantilever-water-seepage", true, false, nullptr},
                                         Example{"anchored-sand", true, true, nullptr},
                                         Example{"anchored-all-loads", true, true, nullptr},
                                         Example{"analysis-cantilever", false, false, nullptr},
                                         Example{"analysis-anchored", false, true, nullptr},
                                         Example{"sloping-backfill-sweep", true, false, "cmdSweep"},
                                         Example{"sloping-both-sides-fixed", true, true,
                                                 "cmdFixed"}),
                         exampleName);

TEST(Review, DiscontinueLeavesNoResultPlotsAndAFileWithEchoAndPressures) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    person.push("cmdDiscontinue");
    EXPECT_TRUE(person.isShown("Image1"));
    for (const char* item :
         {"mnuViewItem_3", "mnuViewItem_4", "mnuViewItem_5", "mnuViewItem_6", "mnuSolveItem_0"}) {
        EXPECT_FALSE(person.canChoose(item)) << item;
    }
    EXPECT_TRUE(person.canChoose("mnuEditItem_0"));
    const std::string report = readFile(person.session().report.CurrentOutputName);
    EXPECT_NE(report.find("*  INPUT DATA  *"), std::string::npos);
    EXPECT_NE(report.find("SOIL PRESSURES FOR"), std::string::npos);
    EXPECT_EQ(report.find("SUMMARY OF RESULTS"), std::string::npos);
}

TEST(Review, TabGoesThroughTheFourButtonsInTheirOrder) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    person.window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&person.window()));
    std::vector<std::string> order;
    for (int button = 0; button < 4; ++button) {
        ASSERT_NE(person.window().focusWidget(), nullptr);
        order.push_back(person.window().focusWidget()->objectName().toStdString());
        QTest::keyClick(person.window().focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"cmdVuOutFile", "cmdPlotPres", "cmdContinue",
                                               "cmdDiscontinue"}));
}

TEST(Review, PlotsOpenFromTheStopAndReturnToIt) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    for (int time = 0; time < 2; ++time) {
        person.expectScreen("VUSOLPLT",
                            [](QDialog& screen) { chooseAction(screen, "mnuFinished"); });
        person.push("cmdPlotPres");
        EXPECT_TRUE(person.isShown("fraSoilOut"));
    }
}

TEST(Failure, AFailedSolutionShowsTheAbortWordsAndKeepsResultPlotsOff) {
    Person person;
    const std::string input = person.userFile("clay.dat");
    // 4 c = 1800 PSF is not above the overburden of 15 x 120 PSF: no depth holds the wall.
    writeFile(input, "'CLAY WITHOUT A DEPTH, AND A LONG HEADING FOR THE FILE'S LENGTH\n"
                     "CONTROL C D 1 1\nWALL 0\nSURFACE R 1 0 0\nSURFACE L 1 0 -15\n"
                     "SOIL B S 1\n 120 120 0 450 0 0\nFINISHED\n");
    person.open(input);
    person.choose("mnuSolveItem_0");
    person.expectBox("OK");
    person.push("cmdContinue");
    EXPECT_FALSE(person.boxes.back().busy);
    EXPECT_EQ(person.session().panels.panDoneText, "SOLUTION ABORTED DUE TO CALCULATION ERRORS");
    EXPECT_TRUE(person.isShown("panDone"));
    person.push("cmdOK");
    EXPECT_FALSE(person.canChoose("mnuViewItem_3"));
    for (const char* item : {"mnuViewItem_0", "mnuViewItem_1", "mnuViewItem_2"}) {
        EXPECT_TRUE(person.canChoose(item)) << item;
    }
}

} // namespace
} // namespace korvane::test
