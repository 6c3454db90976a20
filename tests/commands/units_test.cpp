// Problems from metric files: what is told of them, in which units they are saved.
#include "commands/problem_name.h"
#include "problem/input_reader.h"
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

using Titles = std::vector<std::string>;

const char* const MetricInput = "UNITS SI\n"
                                "'A WALL IN METRES\n"
                                "CONTROL CANTILEVER DESIGN 1 1.5\n"
                                "WALL 3\n"
                                "SURFACE RIGHTSIDE 1 0 3\n"
                                "SURFACE LEFTSIDE 1 0 0\n"
                                "SOIL BOTH STRENGTHS 1\n"
                                " 20 18 30 0 0 0\n"
                                "FINISHED\n";
const std::string UnitsTitle = "UNITS OF THE INPUT FILE";

struct MetricProblem : testing::Test, Office {
    MetricProblem() { open(write("wall.dat", MetricInput)); }

    /// A wall top of 4 m is typed in.
    void edit() {
        Problem changed = session->problem;
        changed.WallTopElev = 4 / 0.3048;
        enter(changed);
        desktop.boxes.clear();
    }
    std::string title() const { return titleText(*session); }
    void save(const std::string& name, std::deque<Answer> answers) {
        desktop.chosenFiles = {userFile(name)};
        desktop.answers = std::move(answers);
        saveInput(*session, desktop);
    }
};

/// What a file holds and in which units.
struct Held {
    Problem problem;
    UnitSystem units = UnitSystem::US;
};

Held held(const std::string& file) {
    Held result;
    clearProblemData(result.problem);
    const ReadResult read = readProblem(result.problem, readFile(file), file);
    EXPECT_TRUE(read.complete) << read.text;
    result.units = read.units;
    return result;
}

// ---- opened ----

TEST_F(MetricProblem, IsHeldInFeetWithARemarkInTitleAndStatusLine) {
    EXPECT_NEAR(session->problem.WallTopElev, 3 / 0.3048, 1e-12);
    EXPECT_EQ(title(), "wall.dat (metric file) - KORVANE");
    EXPECT_EQ(statusLine(*session), "wall.dat: metric file, shown in feet and pounds");
    EXPECT_EQ(inputFileView(*session).text + "\n", MetricInput);
    EXPECT_EQ(session->units, UnitSystem::SI);
}

TEST_F(MetricProblem, TheSolutionFollowsTheRemark) {
    solveProblem(*session, desktop);
    EXPECT_EQ(statusLine(*session).rfind("wall.dat: notes: ", 0), 0U); // the review
    continueSolution(*session, desktop);
    acceptResults(*session);
    EXPECT_EQ(statusLine(*session).rfind("wall.dat: metric file, shown in feet and pounds; "
                                         "cantilever wall, design; bottom -",
                                         0),
              0U)
        << statusLine(*session);
}

TEST_F(MetricProblem, OpeningAPlainFileForgetsTheUnitsAndNewTheFilesAlone) {
    newProblem(*session, desktop);
    EXPECT_EQ(session->fileUnits, UnitSystem::US);
    EXPECT_EQ(session->units, UnitSystem::SI); // what the menu tells
    EXPECT_EQ(title(), "KORVANE");
    EXPECT_EQ(statusLine(*session), "");
    open("cantilever-dry-sand");
    EXPECT_EQ(session->units, UnitSystem::US);
    EXPECT_EQ(title(), "cantilever-dry-sand.dat - KORVANE");
}

TEST_F(MetricProblem, AFileThatIsRefusedOrGoneChangesNoUnits) {
    open(userFile("missing.dat"));
    EXPECT_EQ(desktop.titles().back(), "FILE ERROR");
    EXPECT_EQ(title(), "wall.dat (metric file) - KORVANE");
    open(write("bad.dat", std::string(80, '(') + "\nNOTHING\n"));
    EXPECT_EQ(title(), "KORVANE");
    EXPECT_EQ(session->units, UnitSystem::SI);
}

// 20E307 kN/m3 are more PCF than a double holds.
TEST_F(MetricProblem, ANumberBeyondAllDoublesIsToldLikeAnyWrongOne) {
    std::string text = MetricInput;
    text.replace(text.find(" 20 18"), 3, " 20E307");
    open(write("large.dat", text));
    EXPECT_EQ(desktop.titles().back(), "DATA ERROR IN INPUT FILE: " + userFile("large.dat"));
    EXPECT_EQ(title(), "KORVANE");
}

TEST_F(MetricProblem, ARescueFileIsInFeetAndPoundsAndLosesNothing) {
    edit();
    const std::string file = rescueInput(*session);
    const Held rescued = held(file);
    fs::remove(file);
    EXPECT_EQ(rescued.units, UnitSystem::US);
    EXPECT_EQ(inputFileText(rescued.problem), inputFileText(session->problem));
    EXPECT_EQ(rescued.problem.WallTopElev, 4 / 0.3048);
}

TEST_F(MetricProblem, APrintHasTheUnitsOfTheFileThatIsViewed) {
    printInput(*session, desktop);
    EXPECT_EQ(desktop.prints.back().lines.front(), "UNITS SI");
    edit();
    printInput(*session, desktop);
    EXPECT_EQ(desktop.prints.back().documentName, session->CurrentInputName);
    EXPECT_EQ(desktop.prints.back().lines.front(), "'A WALL IN METRES ");
    EXPECT_EQ(desktop.prints.back().lines, splitLines(readFile(session->CurrentInputName)));
}

// ---- saved ----

TEST_F(MetricProblem, SavingAsksForTheUnitsBehindTheName) {
    edit();
    EXPECT_EQ(title(), "wall.dat* (metric file) - KORVANE");
    save("wall.dat", {Answer::Yes, Answer::Yes});
    ASSERT_EQ(desktop.titles(), (Titles{"OVERWRITE?", UnitsTitle}));
    EXPECT_EQ(desktop.boxes[1],
              (MessageBox{.text = "The problem came from a metric file.\n"
                                  "Do you want to write it in metres and kilonewtons?\n\n"
                                  "No writes it in feet and pounds.",
                          .title = UnitsTitle,
                          .buttons = Buttons::YesNoCancel,
                          .icon = Icon::Question}));
    const std::string text = readFile(userFile("wall.dat"));
    EXPECT_EQ(text.rfind("UNITS SI\n'A WALL IN METRES \n", 0), 0U) << text;
    EXPECT_NE(text.find("\nWALL   4 "), std::string::npos) << text;
    EXPECT_NE(text.find("\n   20    18    30 "), std::string::npos) << text; // kN/m3, as typed
    const Held file = held(userFile("wall.dat"));
    EXPECT_EQ(file.units, UnitSystem::SI);
    EXPECT_NEAR(file.problem.WallTopElev, 4 / 0.3048, 1e-12);
    EXPECT_EQ(title(), "wall.dat (metric file) - KORVANE");
    EXPECT_FALSE(session->menus.saveInput.enabled);
}

TEST_F(MetricProblem, NoWritesFeetAndPoundsAndTheProblemIsPlainFromThen) {
    edit();
    save("plain.dat", {Answer::No});
    EXPECT_EQ(desktop.titles(), Titles{UnitsTitle});
    EXPECT_EQ(readFile(userFile("plain.dat")), inputFileText(session->problem));
    EXPECT_EQ(held(userFile("plain.dat")).units, UnitSystem::US);
    EXPECT_EQ(readFile(userFile("wall.dat")), MetricInput);
    EXPECT_EQ(title(), "plain.dat - KORVANE");
    EXPECT_EQ(session->units, UnitSystem::SI); // the choice of the menu stays
    edit();
    save("plain.dat", {Answer::Yes});
    EXPECT_EQ(desktop.titles(), Titles{"OVERWRITE?"});
}

TEST_F(MetricProblem, CancelAbandonsTheSave) {
    edit();
    const std::string current = session->CurrentInputName;
    save("wall.dat", {Answer::Yes, Answer::Cancel});
    EXPECT_EQ(readFile(userFile("wall.dat")), MetricInput);
    EXPECT_EQ(session->CurrentInputName, current);
    EXPECT_EQ(session->InputFileName, "");
    EXPECT_TRUE(fs::exists(current));
    EXPECT_TRUE(session->menus.saveInput.enabled);
    EXPECT_EQ(title(), "wall.dat* (metric file) - KORVANE");
    save("new.dat", {Answer::Cancel});
    EXPECT_FALSE(fs::exists(userFile("new.dat")));
}

TEST_F(MetricProblem, ARefusedOverwriteAsksForAnotherNameFirst) {
    edit();
    desktop.chosenFiles = {userFile("wall.dat"), userFile("other.dat")};
    desktop.answers = {Answer::No, Answer::Yes};
    saveInput(*session, desktop);
    EXPECT_EQ(desktop.titles(), (Titles{"OVERWRITE?", UnitsTitle}));
    EXPECT_EQ(readFile(userFile("wall.dat")), MetricInput);
    EXPECT_EQ(held(userFile("other.dat")).units, UnitSystem::SI);
}

TEST_F(MetricProblem, AFaultWhileWritingKeepsTheUnits) {
    edit();
    save("no-such-folder/wall.dat", {Answer::No});
    EXPECT_EQ(desktop.titles(), (Titles{UnitsTitle, "FILE ERROR"}));
    EXPECT_EQ(title(), "wall.dat* (metric file) - KORVANE");
}

TEST_F(MetricProblem, TheSaveQuestionsTakeTheSameRoad) {
    const Command openOther = [](Session& of, Desktop& by) {
        openNamedFile(of, by, examplePath("cantilever-dry-sand"));
    };
    for (const Command command : {newProblem, openOther, exitProgram}) {
        open(write("wall.dat", MetricInput));
        edit();
        fs::remove(userFile("kept.dat"));
        // Cancelled at the units the question for saving comes back.
        desktop.chosenFiles = {userFile("kept.dat"), userFile("kept.dat")};
        desktop.answers = {Answer::Yes, Answer::Cancel, Answer::Yes, Answer::Yes, Answer::No};
        command(*session, desktop);
        Titles titles = desktop.titles();
        titles.resize(5);
        EXPECT_EQ(titles, (Titles{"SAVE INPUT DATA?", UnitsTitle, "SAVE INPUT DATA?", UnitsTitle,
                                  "SAVE OUTPUT DATA?"}));
        EXPECT_EQ(held(userFile("kept.dat")).units, UnitSystem::SI);
    }
}

TEST_F(MetricProblem, EditAsksBeforeAndKeepsTheUnits) {
    edit();
    desktop.chosenFiles = {userFile("kept.dat")};
    desktop.answers = {Answer::Yes, Answer::Yes, Answer::No};
    editData(*session, desktop);
    EXPECT_EQ(desktop.titles(), (Titles{"SAVE INPUT DATA?", UnitsTitle, "SAVE OUTPUT DATA?"}));
    EXPECT_EQ(title(), "kept.dat (metric file) - KORVANE");
    desktop.onScreen = [](Screen screen, Session& of) {
        if (screen == Screen::KEYIN) {
            of.SolutionFailed = 1; // cancelled
        }
    };
    editData(*session, desktop);
    EXPECT_EQ(session->fileUnits, UnitSystem::US);
    EXPECT_EQ(title(), "KORVANE");
}

TEST(PlainProblem, IsSavedWithoutAQuestionForUnitsWhateverTheMenuTells) {
    Office office;
    office.session->units = UnitSystem::SI;
    office.enter(plainCantilever());
    office.desktop.boxes.clear();
    office.desktop.chosenFiles = {office.userFile("typed.dat")};
    saveInput(*office.session, office.desktop);
    EXPECT_TRUE(office.desktop.boxes.empty());
    EXPECT_EQ(readFile(office.userFile("typed.dat")), inputFileText(plainCantilever()));
}

// ---- menu ----

TEST_F(MetricProblem, ToolsAreOffDuringASolutionAlone) {
    EXPECT_TRUE(session->menus.tools.enabled);
    solveProblem(*session, desktop);
    EXPECT_FALSE(session->menus.tools.enabled);
    EXPECT_FALSE(desktop.mirrored.tools.enabled);
    continueSolution(*session, desktop);
    EXPECT_FALSE(session->menus.tools.enabled); // the last panel
    acceptResults(*session);
    EXPECT_TRUE(session->menus.tools.enabled);
    newProblem(*session, desktop);
    EXPECT_TRUE(session->menus.tools.enabled);
    EXPECT_TRUE(session->menus.unitsUS.enabled);
    EXPECT_TRUE(session->menus.unitsSI.enabled);
}

} // namespace
} // namespace korvane::test
