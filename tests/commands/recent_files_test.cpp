// Recent files, opening by name, and what the session calls its problem.
#include "commands/recent_files.h"

#include "commands/problem_name.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

using Paths = std::vector<std::string>;

/// An office whose recent files are kept in the user's folder.
struct KeepingOffice : Office {
    KeepingOffice() { session->recentStore = userFile("state/korvane/recent"); }

    Paths kept() const { return readRecent(session->recentStore); }
};

void enterProblem(Office& office) {
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.DataChanged = 1;
        }
    };
    editData(*office.session, office.desktop);
}

} // namespace

// ---- where they are kept ----

TEST(RecentStore, IsInTheUsersStateFolder) {
    const EnvironmentVariable state("XDG_STATE_HOME", "/state");
    EXPECT_EQ(recentStore(), "/state/korvane/recent");
}

TEST(RecentStore, IsBelowTheHomeFolderByDefault) {
    const EnvironmentVariable home("HOME", "/home/engineer");
    for (const std::optional<std::string>& value :
         {std::optional<std::string>(), std::optional<std::string>("not/a/whole/path")}) {
        const EnvironmentVariable state("XDG_STATE_HOME", value);
        EXPECT_EQ(recentStore(), "/home/engineer/.local/state/korvane/recent");
    }
}

TEST(RecentStore, IsNowhereWithoutAHomeFolder) {
    const EnvironmentVariable state("XDG_STATE_HOME", {});
    const EnvironmentVariable home("HOME", {});
    EXPECT_EQ(recentStore(), "");
}

// ---- the list ----

TEST(RecentFiles, OpenedAndSavedInputsComeToTheFrontOnce) {
    KeepingOffice office;
    const std::string a = office.write("a.dat", twoLayerInput);
    const std::string b = office.write("b.dat", twoLayerInput);
    office.open(a);
    office.open(b);
    EXPECT_EQ(office.session->recentFiles, (Paths{b, a}));
    office.open(a);
    EXPECT_EQ(office.session->recentFiles, (Paths{a, b}));
    enterProblem(office);
    const std::string saved = office.userFile("saved.dat");
    office.desktop.chosenFiles = {saved};
    saveInput(*office.session, office.desktop);
    EXPECT_EQ(office.session->recentFiles, (Paths{saved, a, b}));
    EXPECT_EQ(office.kept(), office.session->recentFiles);
}

TEST(RecentFiles, TenPathsAreAllThatIsStored) {
    KeepingOffice office;
    std::string lines;
    for (int i = 11; i >= 1; --i) {
        const std::string path = office.userFile("wall" + std::to_string(i) + ".dat");
        noteRecent(*office.session, path);
        lines = i > 10 ? "" : path + "\n" + lines;
    }
    EXPECT_EQ(readFile(office.session->recentStore), lines);
    EXPECT_EQ(office.kept().size(), 10U);
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(office.userFile("state"))) {
        files += entry.is_regular_file() ? 1 : 0;
    }
    EXPECT_EQ(files, 1);
}

TEST(RecentFiles, AFileThatIsRefusedOrAReportIsNone) {
    KeepingOffice office;
    office.open(office.write("bad.dat", std::string(100, 'x') + "\n"));
    office.open("cantilever-dry-sand");
    office.desktop.chosenFiles = {office.userFile("report.out")};
    saveReport(*office.session, office.desktop);
    EXPECT_EQ(office.kept(), (Paths{examplePath("cantilever-dry-sand")}));
}

TEST(RecentFiles, WhatAnotherProgramNotedMeanwhileStays) {
    KeepingOffice office;
    noteRecent(*office.session, "/walls/a.dat");
    writeFile(office.session->recentStore, "/walls/other.dat\n/walls/a.dat\n");
    noteRecent(*office.session, "/walls/b.dat");
    EXPECT_EQ(office.kept(), (Paths{"/walls/b.dat", "/walls/other.dat", "/walls/a.dat"}));
}

TEST(RecentFiles, AStoreThatHoldsAnythingElseGivesItsWholePathsAlone) {
    const KeepingOffice office;
    const std::string store =
        office.write("odd", std::string("\0\xFF\n\nrelative.dat\n/a.dat\r\n/a.dat\n", 31));
    EXPECT_EQ(readRecent(store), (Paths{"/a.dat"}));
    EXPECT_EQ(readRecent(office.userFile("missing")), Paths());
    EXPECT_EQ(readRecent(office.user.path().string()), Paths()); // a folder
}

TEST(RecentFiles, AStoreThatCannotBeWrittenIsNoFault) {
    KeepingOffice office;
    office.write("state", "a file where the folder should be");
    office.open("cantilever-dry-sand");
    EXPECT_EQ(office.desktop.titles(), (std::vector<std::string>{"INPUT COMPLETE"}));
    EXPECT_EQ(office.session->recentFiles, (Paths{examplePath("cantilever-dry-sand")}));
}

TEST(RecentFiles, WithoutAStoreNothingIsWritten) {
    Office office;
    office.open("cantilever-dry-sand");
    EXPECT_EQ(office.session->recentFiles.size(), 1U);
    EXPECT_TRUE(fs::is_empty(office.user.path()));
}

// ---- opening by name ----

TEST(OpenNamed, AsksTheSaveQuestionsAndShowsNoDialog) {
    Office office;
    enterProblem(office);
    office.desktop.boxes.clear();
    openNamedFile(*office.session, office.desktop, examplePath("cantilever-dry-sand"));
    EXPECT_EQ(
        office.desktop.titles(),
        (std::vector<std::string>{"SAVE INPUT DATA?", "SAVE OUTPUT DATA?", "INPUT COMPLETE"}));
    EXPECT_TRUE(office.desktop.dialogs.empty());
    EXPECT_EQ(office.session->CurrentInputName, examplePath("cantilever-dry-sand"));
    EXPECT_EQ(office.session->DialogFolder,
              fs::path(examplePath("cantilever-dry-sand")).parent_path().string());
    EXPECT_TRUE(office.session->menus.solve.enabled);
}

TEST(OpenNamed, AFileThatIsNotThereIsToldAsByOpenAndTheProblemStays) {
    Office office;
    office.open("cantilever-dry-sand");
    const std::string report = office.outputName();
    office.desktop.boxes.clear();
    office.desktop.chosenFiles = {office.userFile("missing.dat")};
    openFile(*office.session, office.desktop);
    const std::vector<MessageBox> byOpen = office.desktop.boxes;
    office.desktop.boxes.clear();
    openNamedFile(*office.session, office.desktop, office.userFile("missing.dat"));
    ASSERT_EQ(office.desktop.boxes.size(), byOpen.size());
    EXPECT_EQ(office.desktop.boxes.back().title, "FILE ERROR");
    EXPECT_EQ(office.desktop.boxes.back().text, byOpen.back().text);
    EXPECT_EQ(office.session->CurrentInputName, examplePath("cantilever-dry-sand"));
    EXPECT_EQ(office.outputName(), report);
    EXPECT_EQ(titleText(*office.session), "cantilever-dry-sand.dat - KORVANE");
}

// ---- what the problem is called ----

TEST(Title, TellsTheFileAndUnsavedInput) {
    Office office;
    EXPECT_EQ(titleText(*office.session), "KORVANE");
    office.open(office.write("wall.dat", twoLayerInput));
    EXPECT_EQ(titleText(*office.session), "wall.dat - KORVANE");
    enterProblem(office);
    EXPECT_EQ(titleText(*office.session), "wall.dat* - KORVANE");
    office.desktop.chosenFiles = {office.userFile("other.in")};
    saveInput(*office.session, office.desktop);
    EXPECT_EQ(titleText(*office.session), "other.in - KORVANE");
    EXPECT_EQ(problemStem(*office.session), "other");
    newProblem(*office.session, office.desktop);
    EXPECT_EQ(titleText(*office.session), "KORVANE");
    enterProblem(office);
    EXPECT_EQ(titleText(*office.session), "Untitled* - KORVANE");
    EXPECT_EQ(problemStem(*office.session), "wall");
}

TEST(Title, OfAPrintIsTheFileAndTheFirstHeading) {
    Office office;
    EXPECT_EQ(documentTitle(*office.session), "KORVANE");
    office.open(office.write("wall.dat", twoLayerInput));
    EXPECT_EQ(documentTitle(*office.session), "wall.dat: TWO LAYERS");
    office.session->ProblemFile.clear();
    EXPECT_EQ(documentTitle(*office.session), "TWO LAYERS");
}

TEST(StatusLine, StandsAtRestAfterASolutionUntilTheProblemChanges) {
    Office office;
    office.open("cantilever-dry-sand");
    EXPECT_EQ(statusLine(*office.session), "");
    solveProblem(*office.session, office.desktop);
    const std::string notes = "cantilever-dry-sand.dat: notes: ";
    EXPECT_EQ(statusLine(*office.session).rfind(notes, 0), 0U); // the review
    continueSolution(*office.session, office.desktop);
    EXPECT_EQ(statusLine(*office.session).rfind(notes, 0), 0U); // the last panel
    acceptResults(*office.session);
    const std::string line = statusLine(*office.session);
    EXPECT_EQ(line.rfind("cantilever-dry-sand.dat: cantilever wall, design; bottom ", 0), 0U);
    // The words and numbers of the report.
    const std::string report = office.report();
    const auto numberBehind = [&](const std::string& words) {
        const std::size_t at = report.find(words);
        EXPECT_NE(at, std::string::npos) << words;
        const std::size_t start = report.find_first_not_of(" :", at + words.size());
        return report.substr(start, report.find('\n', start) - start);
    };
    EXPECT_NE(line.find("bottom " + numberBehind("WALL BOTTOM ELEV. (FT)") + " FT"),
              std::string::npos);
    EXPECT_NE(line.find("moment " + numberBehind("MAX. BEND. MOMENT (LB-FT)") + " LB-FT"),
              std::string::npos);
    newProblem(*office.session, office.desktop);
    EXPECT_EQ(statusLine(*office.session), "");
}

TEST(StatusLine, OfAnAnchoredWallHasBothMethods) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    const std::string line = statusLine(*office.session);
    EXPECT_NE(line.find("anchored wall, design; free earth method: bottom "), std::string::npos);
    EXPECT_NE(line.find("; fixed earth method: bottom "), std::string::npos);
}

} // namespace korvane::test
