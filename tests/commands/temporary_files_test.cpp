// Temporary files and their list.
#include "runtime/file_text.h"
#include "scripted_desktop.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <sys/stat.h>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

std::string listed(const Office& office, int entry) {
    return office.session->files.ScratchFileList(entry);
}

} // namespace

TEST(TemporaryFiles, TheFirstNameTakesEntryNine) {
    Office office;
    office.open("cantilever-dry-sand");
    EXPECT_EQ(office.outputName(), (office.temporary.path() / "TEMP0.ooo").string());
    for (int entry = 1; entry <= 8; ++entry) {
        EXPECT_EQ(listed(office, entry), "");
    }
    EXPECT_EQ(listed(office, 9), office.outputName());
    EXPECT_EQ(office.session->files.ScratchFileCount, 9);
}

TEST(TemporaryFiles, TheLowestFreeNumberIsTakenAndOthersFilesStay) {
    Office office;
    writeFile(office.temporary.path() / "TEMP0.ooo", "another program's");
    writeFile(office.temporary.path() / "TEMP2.ooo", "another program's");
    office.open("cantilever-dry-sand");
    EXPECT_EQ(fs::path(office.outputName()).filename(), "TEMP1.ooo");
    newProblem(*office.session, office.desktop);
    EXPECT_EQ(office.temporaryFiles(), (std::set<std::string>{"TEMP0.ooo", "TEMP2.ooo"}));
    EXPECT_EQ(readFile(office.temporary.path() / "TEMP0.ooo"), "another program's");
}

TEST(TemporaryFiles, NumbersStartFromZeroForEachExtension) {
    Office office;
    Session& session = *office.session;
    EXPECT_EQ(fs::path(makeTemporaryFile(session, ".iii")).filename(), "TEMP0.iii");
    EXPECT_EQ(fs::path(makeTemporaryFile(session, ".ooo")).filename(), "TEMP0.ooo");
    EXPECT_EQ(fs::path(makeTemporaryFile(session, ".iii")).filename(), "TEMP1.iii");
}

TEST(TemporaryFiles, ALinkIsNotFollowed) {
    Office office;
    const std::string target = office.userFile("target.txt");
    fs::create_symlink(target, office.temporary.path() / "TEMP0.ooo"); // leads nowhere yet
    office.open("cantilever-dry-sand");
    EXPECT_EQ(fs::path(office.outputName()).filename(), "TEMP1.ooo");
    EXPECT_FALSE(fs::exists(target));
}

TEST(TemporaryFiles, OnlyTheUserCanReadThem) {
    Office office;
    office.open("cantilever-dry-sand");
    struct stat status {};
    ASSERT_EQ(stat(office.outputName().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(TemporaryFiles, TheNinetyThirdNameIsASubscriptErrorAndMakesNoFile) {
    Office office;
    for (int name = 1; name <= 92; ++name) {
        makeTemporaryFile(*office.session, ".iii");
    }
    const std::size_t before = office.temporaryFiles().size();
    try {
        makeTemporaryFile(*office.session, ".iii");
        FAIL() << "the list has room for 92 names";
    } catch (const RuntimeError& fault) {
        EXPECT_EQ(fault.number(), 9);
    }
    EXPECT_EQ(office.temporaryFiles().size(), before);
}

TEST(TemporaryFiles, DeletingBlanksTheNamesSoThatALaterFileOfThatNameSurvives) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    EXPECT_EQ(office.temporaryFiles(), std::set<std::string>{"TEMP0.ooo"});
    DeleteTempFiles(*office.session, office.desktop);
    EXPECT_TRUE(office.temporaryFiles().empty());
    EXPECT_EQ(office.desktop.helpQuits, 2); // Open has deleted too
    for (const std::string& name : office.session->files.ScratchFileList) {
        EXPECT_EQ(name, "");
    }
    for (const std::string& name : office.session->ScratchFileName) {
        EXPECT_EQ(name, "");
    }
    writeFile(office.temporary.path() / "TEMP0.ooo", "another program's");
    DeleteTempFiles(*office.session, office.desktop);
    EXPECT_TRUE(fs::exists(office.temporary.path() / "TEMP0.ooo"));
}

TEST(TemporaryFiles, TwoProgramsOnOneFolderDoNotDisturbEachOther) {
    Office first;
    ScriptedDesktop desktop;
    const auto session = std::make_unique<Session>();
    Session& second = *session;
    startSession(second); // the same folder
    first.open("anchored-sand");
    desktop.chosenFiles = {examplePath("anchored-clay")};
    openFile(second, desktop);
    EXPECT_NE(first.outputName(), second.report.CurrentOutputName);
    first.solve();
    solveProblem(second, desktop);
    continueSolution(second, desktop);
    const std::string report = first.report();
    DeleteTempFiles(second, desktop);
    EXPECT_EQ(first.report(), report);
    viewScreen(*first.session, first.desktop, Screen::FREEPLOT); // its results are there as well
    EXPECT_EQ(first.desktop.shown(Screen::FREEPLOT), 1);
}

TEST(TemporaryFiles, AUsersFileNamedTempleSurvivesSavingAndNew) {
    Office office;
    const std::string temple = (office.temporary.path() / "TEMPLE.dat").string();
    fs::copy_file(examplePath("cantilever-dry-sand"), temple);
    office.open(temple);
    office.desktop.chosenFiles = {office.userFile("saved.out")};
    saveReport(*office.session, office.desktop);
    EXPECT_TRUE(fs::exists(temple));
    office.desktop.chosenFiles = {office.userFile("saved.dat")};
    saveInput(*office.session, office.desktop);
    EXPECT_TRUE(fs::exists(temple));
    newProblem(*office.session, office.desktop);
    EXPECT_TRUE(fs::exists(temple));
}

TEST(TemporaryFiles, ExitDeletesThemAllAndEndsTheProgram) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    exitProgram(*office.session, office.desktop);
    EXPECT_TRUE(office.temporaryFiles().empty());
    EXPECT_TRUE(office.desktop.ended);
}

TEST(TemporaryFiles, ExitWorksAtTheReviewAndAtTheLastPanelButNotWhileSolving) {
    for (const FlowStage stage : {FlowStage::Review, FlowStage::Finished}) {
        Office office;
        office.open("anchored-sand");
        solveProblem(*office.session, office.desktop);
        bool endedWhileSolving = false;
        office.desktop.onScreen = [&](Screen, Session& session) {
            exitProgram(session, office.desktop);
            endedWhileSolving = office.desktop.ended;
        };
        if (stage == FlowStage::Finished) {
            continueSolution(*office.session, office.desktop);
            EXPECT_EQ(office.desktop.shown(Screen::ROWEPILE), 1);
        }
        ASSERT_EQ(office.session->stage, stage);
        EXPECT_FALSE(endedWhileSolving);
        office.desktop.boxes.clear();
        exitProgram(*office.session, office.desktop);
        EXPECT_EQ(office.desktop.titles(), std::vector<std::string>{"SAVE OUTPUT DATA?"});
        EXPECT_TRUE(office.temporaryFiles().empty());
        EXPECT_TRUE(office.desktop.ended);
    }
}

TEST(SetTempFolder, TheTrimmedValueIsFolderAndStartOfTheDialogs) {
    const Office office;
    const std::string folder = office.temporary.path().string();
    setenv("temp", ("  " + folder + " ").c_str(), 1);
    SetTempFolder(*office.session);
    EXPECT_EQ(office.session->files.TempFolder, folder);
    EXPECT_EQ(office.session->CurrentFolder, folder);
    EXPECT_EQ(office.session->DialogFolder, folder);
}

TEST(SetTempFolder, WithoutTheVariableThePathIsNotFound) {
    const Office office;
    unsetenv("temp");
    try {
        SetTempFolder(*office.session);
        FAIL();
    } catch (const RuntimeError& fault) {
        EXPECT_EQ(fault.number(), 76);
    }
}

TEST(SetTempFolder, AVariableThatNamesNoFolderIsPathNotFound) {
    const Office office;
    for (const std::string& name : {office.userFile("nowhere"), office.write("file", "")}) {
        setenv("temp", name.c_str(), 1);
        try {
            SetTempFolder(*office.session);
            FAIL() << name;
        } catch (const RuntimeError& fault) {
            EXPECT_EQ(fault.number(), 76);
        }
    }
}

TEST(ProvideTempVariable, TakesTheFirstOfTheUsualVariables) {
    unsetenv("temp");
    unsetenv("TEMP");
    setenv("TMP", "/one", 1);
    setenv("TMPDIR", "/two", 1);
    provideTempVariable();
    EXPECT_STREQ(std::getenv("temp"), "/one");
    setenv("TMP", "/three", 1);
    provideTempVariable(); // one that is set stays
    EXPECT_STREQ(std::getenv("temp"), "/one");
}

TEST(ProvideTempVariable, FallsBackToTheSystemsFolder) {
    for (const char* name : {"temp", "TEMP", "TMP", "TMPDIR"}) {
        unsetenv(name);
    }
    provideTempVariable();
    EXPECT_EQ(std::getenv("temp"), fs::temp_directory_path().string());
}

// The library looks at these variables too and refuses what is no folder.
TEST(ProvideTempVariable, FallsBackToTheSystemsFolderThoughAVariableIsEmptyOrNamesNone) {
    const std::pair<const char*, const char*> useless[] = {{"TMPDIR", ""}, {"TEMPDIR", "/nowhere"}};
    for (const auto& [variable, value] : useless) {
        for (const char* name : {"temp", "TEMP", "TMP", "TMPDIR", "TEMPDIR"}) {
            unsetenv(name);
        }
        setenv(variable, value, 1);
        provideTempVariable();
        unsetenv(variable);
        ASSERT_NE(std::getenv("temp"), nullptr);
        EXPECT_STREQ(std::getenv("temp"), "/tmp") << variable;
        EXPECT_TRUE(fs::is_directory(std::getenv("temp")));
    }
}

} // namespace korvane::test
