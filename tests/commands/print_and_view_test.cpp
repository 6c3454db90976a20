// The Print and View commands and the two text windows.
#include "commands/report.h"
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

void enterProblem(Office& office) {
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.DataChanged = 1;
        }
    };
    editData(*office.session, office.desktop);
}

/// Makes the report longer than the text window takes.
void lengthenReport(Office& office, std::size_t bytes) {
    PrintLines lines;
    while (office.report().size() + lines.content().size() < bytes) {
        lines.line(0, std::string(70, 'x'));
    }
    appendReport(*office.session, lines);
}

} // namespace

TEST(Print, TheInputIsPrintedAsItWouldBeWritten) {
    Office office;
    office.open("anchored-all-loads");
    printInput(*office.session, office.desktop);
    ASSERT_EQ(office.desktop.prints.size(), 1U);
    EXPECT_EQ(office.desktop.prints[0].documentName, examplePath("anchored-all-loads"));
    EXPECT_EQ(office.desktop.prints[0].lines, splitLines(inputFileText(office.session->problem)));
    EXPECT_FALSE(office.desktop.busy);
}

TEST(Print, PrintingTheInputResetsTheLineCount) {
    Office office;
    enterProblem(office);
    EXPECT_GT(office.session->FileLineCount, 3);
    printInput(*office.session, office.desktop);
    EXPECT_EQ(office.session->FileLineCount, 3); // one heading, control, wall
}

TEST(Print, ACancelledPrintChangesNothing) {
    Office office;
    enterProblem(office);
    const int count = office.session->FileLineCount;
    office.desktop.printerAccepts = false;
    printInput(*office.session, office.desktop);
    printReport(*office.session, office.desktop);
    EXPECT_EQ(office.session->FileLineCount, count);
}

TEST(Print, TheOutputIsPrintedWhole) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    printReport(*office.session, office.desktop);
    ASSERT_EQ(office.desktop.prints.size(), 1U);
    EXPECT_EQ(office.desktop.prints[0].documentName, office.outputName());
    EXPECT_EQ(office.desktop.prints[0].lines, splitLines(office.report()));
}

TEST(Print, AReportShorterThanItsCountIsAFileError) {
    Office office;
    office.open("cantilever-dry-sand");
    ++office.session->report.OutputLineCount;
    office.desktop.boxes.clear();
    printReport(*office.session, office.desktop);
    ASSERT_EQ(office.desktop.boxes.size(), 1U);
    EXPECT_EQ(office.desktop.boxes[0].text,
              "File: " + office.outputName() + "\nInput past end of file\n\nYour data are kept.");
    EXPECT_TRUE(office.desktop.prints.empty());
    EXPECT_FALSE(office.desktop.busy);
}

TEST(View, ShowsTheScreenThatIsAskedFor) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    office.desktop.screens.clear();
    viewScreen(*office.session, office.desktop, Screen::VUINPLOT);
    viewScreen(*office.session, office.desktop, Screen::ROWECURV);
    EXPECT_EQ(office.desktop.screens, (std::vector<Screen>{Screen::VUINPLOT, Screen::ROWECURV}));
}

TEST(View, ThePlotsOfAnAnchoredWallShowTheirOwnLevelAndLeaveBothAlone) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    const Results& results = office.session->workspace.results();
    const Array<LevelResult, 2> before = results.levels;
    // What a screen scales its moments by holds the range of its own level.
    const auto viewed = [&](const PlotView& view, int level) {
        const Range& range = results.levels(level).diagrams.MomentRange;
        const Range rounded = roundedRange(range);
        EXPECT_EQ(view.scales.moment.largest, rounded.largest) << level;
        EXPECT_EQ(view.scales.moment.smallest, rounded.smallest) << level;
    };
    office.desktop.onScreen = [&](Screen screen, const Session& session) {
        const bool free = screen == Screen::FREEPLOT;
        viewed(openPlotScreen(session.plotData(),
                              free ? PlotScreenName::FREEPLOT : PlotScreenName::FIXDPLOT),
               free ? 1 : 2);
    };
    for (const int level : {1, 2, 1}) {
        viewScreen(*office.session, office.desktop,
                   level == 1 ? Screen::FREEPLOT : Screen::FIXDPLOT);
        const ResultDiagrams& shown = results.levels(level).diagrams;
        const int rows = shown.RowCount;
        EXPECT_EQ(rows, results.levels(level).bottomIndex + 1); // the anchor's shear has two rows
        for (int i = 1; i <= rows; ++i) {
            EXPECT_EQ(shown.ResultElev(i), before(level).diagrams.ResultElev(i));
            EXPECT_EQ(shown.ResultMoment(i), before(level).diagrams.ResultMoment(i));
        }
    }
    EXPECT_EQ(office.desktop.shown(Screen::FREEPLOT), 2);
    EXPECT_EQ(office.desktop.shown(Screen::FIXDPLOT), 1);
}

TEST(View, TheInputIsShownWithoutItsLastCharacter) {
    Office office;
    office.open(office.write("wall.dat", twoLayerInput));
    const TextView view = inputFileView(*office.session);
    EXPECT_EQ(view.title, office.userFile("wall.dat"));
    EXPECT_EQ(view.text + "\n", twoLayerInput);
}

TEST(View, AnOutputOfExactlyTheLimitIsShownWhole) {
    Office office;
    office.open("cantilever-dry-sand");
    std::string text = office.report();
    text.resize(48000, 'x');
    writeFile(office.outputName(), text);
    office.desktop.boxes.clear();
    EXPECT_EQ(outputFileView(*office.session, office.desktop).text, text);
    EXPECT_TRUE(office.desktop.boxes.empty());
}

TEST(View, ALongOutputIsShownInPartYetPrintsAndSavesWhole) {
    Office office;
    office.open("cantilever-dry-sand");
    lengthenReport(office, 48001);
    office.desktop.boxes.clear();
    const TextView view = outputFileView(*office.session, office.desktop);
    EXPECT_EQ(view.title, office.outputName());
    EXPECT_EQ(view.text, office.report().substr(0, 48000));
    ASSERT_EQ(office.desktop.boxes.size(), 1U);
    EXPECT_EQ(office.desktop.boxes[0].text,
              "The current output file: " + office.outputName() +
                  "\n  is too long to display in its entirety.\n"
                  "To see the entire file, save the file as a permanent\n"
                  "file and view it after after exiting KORVANE.");
    printReport(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.prints.at(0).lines, splitLines(office.report()));
    const std::string text = office.report();
    office.desktop.chosenFiles = {office.userFile("long.out")};
    saveReport(*office.session, office.desktop);
    EXPECT_EQ(readFile(office.userFile("long.out")), text);
}

} // namespace korvane::test
