// Notes at the stops of a solution: status line, box and window's text.
#include "commands/problem_name.h"
#include "commands/wall_notes.h"
#include "notes/note_texts.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test {
namespace {

/// Water of 70 PCF is unsafe on the input; the planes on a wall as rough as its soil are unsafe
/// once the wall is solved.
std::string roughWall(const std::string& water) {
    return "'A WALL WHOSE PLANES MEET A ROUGH BACK\n"
           "CONTROL CANTILEVER DESIGN 1.00 1.00\n"
           "WALL 10\n"
           "SURFACE RIGHTSIDE 1 0 10\n"
           "SURFACE LEFTSIDE 2 0 0\n 50 0\n"
           "SOIL BOTH STRENGTHS 1\n 125 115 30 0 30 0\n"
           "WATER ELEVATIONS " +
           water + " -5 -5\nFINISHED\n";
}

struct NotesOfWall : testing::Test, Office {
    void openRough(const std::string& water) { open(write("wall.dat", roughWall(water))); }
    std::size_t noteBoxes() const {
        const auto titles = desktop.titles();
        return static_cast<std::size_t>(std::count(titles.begin(), titles.end(), "NOTES"));
    }
    std::string lastBox() const { return desktop.boxes.back().text; }
    std::string view() { return notesView(*session, desktop).text; }
    /// An edit that leaves the problem or takes another one.
    void edit(const Problem* problem = nullptr) {
        desktop.onScreen = [problem](Screen screen, Session& of) {
            if (screen == Screen::KEYIN && problem != nullptr) {
                of.problem = *problem;
                of.DataChanged = 1;
            }
        };
        editData(*session, desktop);
        desktop.onScreen = nullptr;
    }
};

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// ---- the box ----

TEST_F(NotesOfWall, UnsafeOnesComeOnceInABoxAtTheStopWhereTheyAreNew) {
    openRough("70");
    desktop.boxes.clear();
    solveProblem(*session, desktop);
    ASSERT_EQ(desktop.titles(), std::vector<std::string>{"NOTES"});
    EXPECT_EQ(desktop.boxes[0].icon, Icon::Exclamation);
    EXPECT_EQ(desktop.boxes[0].buttons, Buttons::Ok);
    EXPECT_TRUE(has(lastBox(), "Water weighs 70.00 PCF"));
    EXPECT_EQ(session->stage, FlowStage::Review);
    EXPECT_TRUE(session->panels.fraSoilOutVisible);

    continueSolution(*session, desktop);
    ASSERT_EQ(noteBoxes(), 2U);
    EXPECT_TRUE(has(lastBox(), "Planes overestimate passive pressure"));
    EXPECT_FALSE(has(lastBox(), "Water weighs"));
    EXPECT_TRUE(session->panels.panDoneVisible);
    EXPECT_EQ(session->panels.panDoneText, "SOLUTION COMPLETE");
    acceptResults(*session);
    EXPECT_TRUE(session->menus.cantileverPlots.enabled);
    EXPECT_EQ(noteBoxes(), 2U);
}

TEST_F(NotesOfWall, ThePanelIsOnShowAndThePointerAtRestBehindTheBox) {
    openRough("70");
    std::vector<FlowStage> stages;
    desktop.onBox = [&](const MessageBox& box) {
        if (box.title == "NOTES") {
            stages.push_back(session->stage);
            EXPECT_FALSE(desktop.busy);
            EXPECT_FALSE(desktop.mirrored.tools.enabled);
        }
    };
    solve();
    EXPECT_EQ(stages, (std::vector<FlowStage>{FlowStage::Review, FlowStage::Finished}));
}

TEST_F(NotesOfWall, AnotherSolutionTellsWhatIsNewInItAlone) {
    openRough("70");
    solve();
    ASSERT_EQ(noteBoxes(), 2U);
    edit();
    solve();
    EXPECT_EQ(noteBoxes(), 2U);
    Problem lighter = session->problem;
    lighter.WaterUnitWeight = 62.4;
    edit(&lighter);
    solve();
    const std::size_t before = noteBoxes(); // the planes' values have changed with the water
    EXPECT_FALSE(has(lastBox(), "Water weighs"));
    Problem heavy = lighter;
    heavy.WaterUnitWeight = 70;
    edit(&heavy);
    solveProblem(*session, desktop);
    EXPECT_EQ(noteBoxes(), before + 1); // a note that comes back is new
    EXPECT_TRUE(has(lastBox(), "Water weighs"));
}

TEST_F(NotesOfWall, AProblemThatIsOpenedAgainIsToldAgain) {
    openRough("70");
    solve();
    openRough("70");
    solve();
    EXPECT_EQ(noteBoxes(), 4U);
}

TEST_F(NotesOfWall, AWallWithoutUnsafeOnesHasNoBox) {
    open("cantilever-dry-sand");
    solve();
    EXPECT_EQ(noteBoxes(), 0U);
    EXPECT_FALSE(session->notes.list.empty());
}

TEST_F(NotesOfWall, AFailedSolutionHasItsNotesToo) {
    // 4 c = 1800 PSF is not above the overburden of 15 x 120 PSF: no depth holds the wall.
    open(write("clay.dat", "'CLAY WITHOUT A DEPTH, IN WATER THAT IS TOO HEAVY\n"
                           "CONTROL C D 1 1\nWALL 0\nSURFACE R 1 0 0\nSURFACE L 1 0 -15\n"
                           "SOIL B S 1\n 120 120 0 450 0 0\nWATER E 70 -60 -60\nFINISHED\n"));
    solve();
    EXPECT_EQ(noteBoxes(), 1U);
    EXPECT_EQ(session->panels.panDoneText, "SOLUTION ABORTED DUE TO CALCULATION ERRORS");
    EXPECT_TRUE(has(statusLine(*session), "notes: 1 unsafe")) << statusLine(*session);
    EXPECT_TRUE(has(view(), "Notes on the input and the failed solution: 1 unsafe")) << view();
}

// ---- the status line ----

TEST_F(NotesOfWall, TheLineTellsNumbersAtTheReviewAndAfterTheSolution) {
    openRough("70");
    EXPECT_EQ(statusLine(*session), "");
    solveProblem(*session, desktop);
    EXPECT_EQ(statusLine(*session),
              "wall.dat: notes: " + notesSummary(notesOnInput({.problem = session->problem})));
    EXPECT_EQ(statusLine(*session).rfind("wall.dat: notes: 1 unsafe, ", 0), 0U);
    continueSolution(*session, desktop);
    const std::string done = statusLine(*session);
    EXPECT_EQ(done.rfind("wall.dat: notes: ", 0), 0U) << done;
    EXPECT_GT(countOf(session->notes.list, Severity::Unsafe), 1);
    EXPECT_TRUE(
        has(done, std::to_string(countOf(session->notes.list, Severity::Unsafe)) + " unsafe, "));
    acceptResults(*session);
    EXPECT_TRUE(has(statusLine(*session), "wall.dat: cantilever wall, design; bottom "));
    EXPECT_TRUE(has(statusLine(*session), "; notes: ")) << statusLine(*session);
    edit();
    EXPECT_EQ(statusLine(*session), "");
}

TEST_F(NotesOfWall, OfADiscontinuedSolutionThoseOnTheInputStay) {
    openRough("70");
    solveProblem(*session, desktop);
    const std::string line = statusLine(*session);
    discontinueSolution(*session);
    EXPECT_EQ(statusLine(*session), line);
    EXPECT_TRUE(has(view(), "Notes on the input: 1 unsafe")) << view();
}

TEST_F(NotesOfWall, WhereTheyCannotBeWorkedOutTheLineSaysSo) {
    session->notes.fault = true;
    EXPECT_EQ(statusLine(*session), "the notes could not be worked out");
    session->notes.fault = false;
    session->notes.taken = true;
    EXPECT_EQ(statusLine(*session), "no notes");
}

// ---- the window's text ----

TEST_F(NotesOfWall, TheTextHasAllWithTheirSources) {
    openRough("70");
    EXPECT_TRUE(has(view(), "wall.dat: A WALL WHOSE PLANES MEET A ROUGH BACK\n"
                            "Notes on the input: 1 unsafe"))
        << view();
    solve();
    const std::string text = view();
    EXPECT_EQ(text, "wall.dat: A WALL WHOSE PLANES MEET A ROUGH BACK\n"
                    "Notes on the input and the solution: " +
                        notesSummary(session->notes.list) + "\n\n" +
                        notesText(session->notes.list));
    EXPECT_TRUE(has(text, "unsafe: Water weighs 70.00 PCF"));
    EXPECT_TRUE(has(text, "\nSource: "));
    EXPECT_FALSE(desktop.busy);
}

TEST_F(NotesOfWall, TheTextHasTheUnitsChosen) {
    openRough("70");
    solve();
    const std::size_t count = session->notes.list.size();
    session->units = UnitSystem::SI;
    const std::string text = view();
    EXPECT_TRUE(has(text, "Water weighs 10.996 kN/m3")) << text; // 70 x 0.157087
    EXPECT_FALSE(has(text, "PCF"));
    std::size_t sources = 0;
    for (std::size_t at = text.find("\nSource: "); at != std::string::npos;
         at = text.find("\nSource: ", at + 1)) {
        ++sources;
    }
    EXPECT_EQ(sources, count);
}

TEST_F(NotesOfWall, AnEmptyProblemHasNone) {
    EXPECT_FALSE(session->menus.notes.enabled);
    openRough("62.4");
    EXPECT_TRUE(session->menus.notes.enabled);
    newProblem(*session, desktop);
    EXPECT_FALSE(session->menus.notes.enabled);
    EXPECT_TRUE(session->notes.list.empty());
    enter(plainCantilever());
    EXPECT_TRUE(session->menus.notes.enabled);
}

// ---- the reader's remarks ----

TEST_F(NotesOfWall, TheReadersRemarksStayUntilTheProblemIsChanged) {
    std::string text = twoLayerInput;
    text.replace(text.find("WALL 10"), 7, "WALL 10 STRAY WORDS");
    open(write("words.dat", text));
    EXPECT_TRUE(has(view(), "(words-ignored)")) << view();
    edit();
    EXPECT_TRUE(has(view(), "(words-ignored)"));
    Problem changed = session->problem;
    changed.WallTopElev += 1;
    edit(&changed);
    EXPECT_FALSE(has(view(), "(words-ignored)"));
    open(write("words.dat", text));
    EXPECT_TRUE(has(view(), "(words-ignored)"));
    open(write("two.dat", twoLayerInput));
    EXPECT_FALSE(has(view(), "(words-ignored)"));
}

TEST_F(NotesOfWall, AFailedCommandLeavesThemAsTheyWere) {
    openRough("70");
    solve();
    const std::string before = view();
    const std::string line = statusLine(*session);
    open(userFile("missing.dat"));
    EXPECT_EQ(desktop.titles().back(), "FILE ERROR");
    EXPECT_EQ(view(), before);
    EXPECT_EQ(statusLine(*session), line);
}

} // namespace
} // namespace korvane::test
