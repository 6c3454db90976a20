// Data that no file of the user's holds whole: after a fault at the end of Edit, after a print,
// with the temporary files gone. Nothing of them is lost on any road.
#include "commands/problem_name.h"
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"
#include "support/faulty_machine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

constexpr rlim_t fewBytes = 16; // room on a full disk
const char* const oldText = "AN OLD FILE OF THE USER'S\n";

/// Data are entered on the screens, and the disk is full when they are to be written.
void failToFinish(Office& office) {
    std::optional<SmallDisk> full;
    office.desktop.onScreen = [&](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.problem.HeadingLines(1) = "'TYPED BY HAND ";
            session.HeadContDataValid = 1;
            session.DataChanged = 1;
            full.emplace(fewBytes);
        }
    };
    editData(*office.session, office.desktop);
    full.reset();
    office.desktop.onScreen = nullptr;
    ASSERT_FALSE(office.desktop.boxes.empty());
    ASSERT_EQ(office.desktop.boxes.back().title, "FILE ERROR");
}

struct Case {
    const char* name;
    void (*reach)(Office& office);
};

const Case cases[] = {
    {"a new problem without a file", failToFinish},
    {"an opened file that was changed",
     [](Office& office) {
         office.open("anchored-layered-water");
         failToFinish(office);
     }},
    {"an entered problem that was printed",
     [](Office& office) {
         office.enter(plainCantilever());
         printInput(*office.session, office.desktop);
         ASSERT_EQ(office.session->FileLineCount, 3);
     }},
    {"an entered problem whose temporary file is gone",
     [](Office& office) {
         office.enter(plainCantilever());
         fs::remove(office.session->CurrentInputName);
     }},
};

struct Road {
    const char* name;
    Command command;
    bool asks = true;
};

const Road roads[] = {{"New", newProblem},
                      {"Open", openFile},
                      {"Exit", exitProgram},
                      {"Edit", editData},
                      {"Save", saveInput, false}};

/// Takes a road, with a Yes to its question, into a file.
void take(Office& office, const Road& road, const std::string& target) {
    office.desktop.boxes.clear();
    office.desktop.answers.clear();
    if (road.asks) {
        office.desktop.answers = {Answer::Yes};
    }
    office.desktop.chosenFiles = {target};
    road.command(*office.session, office.desktop);
    if (road.asks) {
        ASSERT_FALSE(office.desktop.boxes.empty());
        EXPECT_EQ(office.desktop.boxes.front().title, "SAVE INPUT DATA?");
    }
}

template <class Body>
void forEachCaseAndRoad(const Body& body) {
    for (const Case& each : cases) {
        for (const Road& road : roads) {
            SCOPED_TRACE(std::string(each.name) + ", " + road.name);
            Office office;
            ASSERT_NO_FATAL_FAILURE(each.reach(office));
            ASSERT_TRUE(hasUnsavedInput(*office.session));
            body(office, road);
        }
    }
}

} // namespace

TEST(UnsavedData, AreWrittenWholeOnEveryRoadIntoANewAndOverAnExistingFile) {
    forEachCaseAndRoad([](Office& office, const Road& road) {
        const std::string text = inputFileText(office.session->problem);
        const std::string fresh = office.userFile("fresh.dat");
        take(office, road, fresh);
        EXPECT_EQ(readFile(fresh), text);
        EXPECT_EQ(office.desktop.ended, road.command == exitProgram);
    });
    forEachCaseAndRoad([](Office& office, const Road& road) {
        const std::string text = inputFileText(office.session->problem);
        const std::string old = office.write("old.dat", oldText);
        take(office, road, old);
        EXPECT_EQ(readFile(old), text);
    });
}

TEST(UnsavedData, SurviveASaveThatFailsAndSoDoesTheOldFile) {
    forEachCaseAndRoad([](Office& office, const Road& road) {
        const Problem problem = office.session->problem;
        const Menus menus = office.session->menus;
        const std::string name = office.session->CurrentInputName;
        const std::string old = office.write("old.dat", oldText);
        std::optional<SmallDisk> full;
        office.desktop.onBox = [&](const MessageBox& box) {
            if (box.title == "OVERWRITE?") {
                full.emplace(fewBytes);
            }
        };
        take(office, road, old);
        full.reset();
        office.desktop.onBox = nullptr;
        EXPECT_EQ(office.desktop.boxes.back().title, "FILE ERROR");
        EXPECT_EQ(readFile(old), oldText);
        EXPECT_EQ(office.session->problem, problem);
        EXPECT_EQ(office.session->menus, menus);
        EXPECT_EQ(office.session->CurrentInputName, name);
        EXPECT_FALSE(office.desktop.ended);
        take(office, road, old); // with room again
        EXPECT_EQ(readFile(old), inputFileText(problem));
    });
}

TEST(UnsavedData, AreDroppedByNoAlone) {
    forEachCaseAndRoad([](Office& office, const Road& road) {
        if (!road.asks) {
            return;
        }
        office.desktop.boxes.clear();
        office.desktop.answers = {Answer::No};
        road.command(*office.session, office.desktop);
        ASSERT_FALSE(office.desktop.boxes.empty());
        EXPECT_EQ(office.desktop.boxes.front().text,
                  road.command == editData
                      ? "DO YOU WANT TO SAVE CURRENT INPUT DATA BEFORE EDITING?"
                      : "DO YOU WANT TO SAVE CURRENT INPUT DATA?");
        EXPECT_EQ(office.desktop.ended, road.command == exitProgram);
    });
}

TEST(UnsavedData, CanBeSavedButNeitherSolvedNorPlottedUntilTheyAreWritten) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    ASSERT_TRUE(office.session->menus.freeEarthPlots.enabled);
    failToFinish(office);
    const Menus& menus = office.session->menus;
    EXPECT_TRUE(menus.save.enabled);
    EXPECT_TRUE(menus.saveInput.enabled);
    EXPECT_TRUE(menus.saveReport.enabled); // the report of before
    EXPECT_FALSE(menus.solve.enabled);
    for (const MenuItem* item : {&menus.cantileverPlots, &menus.freeEarthPlots,
                                 &menus.fixedEarthPlots, &menus.roweCurves}) {
        EXPECT_FALSE(item->enabled) << item->caption;
    }
    EXPECT_EQ(titleText(*office.session), "anchored-sand.dat* - KORVANE");
    editData(*office.session, office.desktop);
    EXPECT_TRUE(menus.solve.enabled);
    EXPECT_EQ(readFile(office.session->CurrentInputName), inputFileText(office.session->problem));
}

TEST(UnsavedData, OfANewProblemHaveNoReportToSave) {
    Office office;
    office.open("anchored-sand"); // leaves the entry for the report on
    newProblem(*office.session, office.desktop);
    failToFinish(office);
    const Menus& menus = office.session->menus;
    EXPECT_TRUE(menus.save.enabled);
    EXPECT_TRUE(menus.saveInput.enabled);
    EXPECT_FALSE(menus.saveReport.enabled);
    EXPECT_EQ(titleText(*office.session), "Untitled* - KORVANE");
}

TEST(UnsavedData, OnceSavedAreNotAskedAboutAndCanBeSolvedAfterAnEdit) {
    Office office;
    failToFinish(office);
    const std::string target = office.userFile("wall.dat");
    take(office, {"Save", saveInput, false}, target);
    EXPECT_FALSE(hasUnsavedInput(*office.session));
    EXPECT_FALSE(office.session->menus.saveInput.enabled);
    editData(*office.session, office.desktop);
    EXPECT_TRUE(office.desktop.boxes.empty());
    office.solve();
    EXPECT_EQ(office.session->SolutionFailed, 0);
    newProblem(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.titles(), std::vector<std::string>{"SAVE OUTPUT DATA?"});
}

TEST(UnsavedData, CanGoOverTheVeryFileThatWasOpened) {
    Office office;
    const std::string own = office.userFile("own.dat");
    fs::copy_file(examplePath("anchored-sand"), own);
    office.open(own);
    failToFinish(office);
    take(office, {"Save", saveInput, false}, own);
    EXPECT_EQ(readFile(own), inputFileText(office.session->problem));
    EXPECT_NE(readFile(own).find("TYPED BY HAND"), std::string::npos);
}

TEST(UnsavedData, AreThoseOfTheTemporaryFileAfterASolutionToo) {
    // A solution notes the seepage that it found in the problem.
    for (const char* name : {"cantilever-water-seepage", "anchored-layered-water"}) {
        Office office;
        office.open(name);
        const Problem problem = office.session->problem;
        office.enter(problem);
        const std::string text = readFile(office.session->CurrentInputName);
        office.solve();
        take(office, {"Save", saveInput, false}, office.userFile("wall.dat"));
        EXPECT_EQ(readFile(office.userFile("wall.dat")), text) << name;
    }
}

TEST(UnsavedReport, IsSavedThoughItsTemporaryFileIsGone) {
    for (const Road& road : roads) {
        SCOPED_TRACE(road.name);
        Office office;
        office.open("anchored-sand");
        office.solve();
        const std::string report = office.report();
        fs::remove(office.outputName());
        office.desktop.answers = {Answer::Yes};
        office.desktop.chosenFiles = {office.write("old.out", oldText)};
        if (road.asks) {
            road.command(*office.session, office.desktop);
        } else {
            saveReport(*office.session, office.desktop);
        }
        EXPECT_EQ(readFile(office.userFile("old.out")), report);
    }
}

TEST(UnsavedReport, ReplacesASavedOneThatHasBeenSpoilt) {
    Office office;
    office.open("anchored-sand");
    const std::string target = office.userFile("wall.out");
    office.desktop.chosenFiles = {target, target};
    saveReport(*office.session, office.desktop);
    const std::string echo = readFile(target);
    fs::resize_file(target, echo.size() / 2); // a line that breaks off
    saveReport(*office.session, office.desktop);
    EXPECT_EQ(readFile(target), echo);
}

TEST(UnsavedReport, OfTheOldProblemSurvivesAFaultOfTheEdit) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    const std::string report = office.report();
    failToFinish(office);
    office.desktop.chosenFiles = {office.userFile("wall.out")};
    saveReport(*office.session, office.desktop);
    EXPECT_EQ(readFile(office.userFile("wall.out")), report);
}

TEST(SavedThroughALink, TheTextOutlivesTheTemporaryFiles) {
    Office office;
    office.enter(plainCantilever());
    const std::string input = readFile(office.session->CurrentInputName);
    const std::string report = office.report();
    fs::create_symlink(office.session->CurrentInputName, office.userFile("link.dat"));
    fs::create_symlink(office.outputName(), office.userFile("link.out"));
    office.desktop.chosenFiles = {office.userFile("link.dat"), office.userFile("link.out")};
    saveInput(*office.session, office.desktop);
    saveReport(*office.session, office.desktop);
    newProblem(*office.session, office.desktop);
    EXPECT_EQ(readFile(office.userFile("link.dat")), input);
    EXPECT_EQ(readFile(office.userFile("link.out")), report);
}

} // namespace korvane::test
