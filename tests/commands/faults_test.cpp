// What becomes of faults: of files in commands and in solutions, of the arithmetic, fatal ones.
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "scripted_desktop.h"
#include "support/faulty_machine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <stdexcept>

#include <sys/stat.h>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

constexpr rlim_t fewBytes = 16; // room on a full disk

/// What a command that a fault has taken back must leave alone.
struct Standing {
    explicit Standing(const Office& office)
        : problem(office.session->problem), menus(office.session->menus),
          input(office.session->CurrentInputName), output(office.outputName()),
          inputText(input.empty() ? "" : readFile(input)), report(office.report()),
          lineCount(office.session->report.OutputLineCount), files(office.temporaryFiles()) {}

    Problem problem;
    Menus menus;
    std::string input;
    std::string output;
    std::string inputText;
    std::string report;
    int lineCount;
    std::set<std::string> files;
};

void expectStill(const Office& office, const Standing& before) {
    EXPECT_EQ(office.session->problem, before.problem);
    EXPECT_EQ(office.session->menus, before.menus);
    EXPECT_EQ(office.session->CurrentInputName, before.input);
    EXPECT_EQ(office.outputName(), before.output);
    EXPECT_EQ(office.session->report.OutputLineCount, before.lineCount);
    EXPECT_EQ(office.temporaryFiles(), before.files);
    EXPECT_EQ(office.report(), before.report);
    EXPECT_EQ(readFile(office.session->CurrentInputName), before.inputText);
}

void expectFileError(const Office& office, const std::string& name, const std::string& reason) {
    ASSERT_FALSE(office.desktop.boxes.empty());
    EXPECT_EQ(office.desktop.boxes.back(),
              (MessageBox{.text = "File: " + name + "\n" + reason + "\n\nYour data are kept.",
                          .title = "FILE ERROR",
                          .buttons = Buttons::Ok,
                          .icon = Icon::Exclamation}));
}

/// A problem entered on the screens.
void enterProblem(Office& office) {
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.DataChanged = 1;
        }
    };
    editData(*office.session, office.desktop);
    office.desktop.onScreen = nullptr;
}

template <class Command>
int errorOf(const Command& command) {
    const auto fault = runGuarded(command);
    return fault ? fault->number() : 0;
}

} // namespace

TEST(RunGuarded, ExceptionsComeOutAsRunTimeErrors) {
    EXPECT_FALSE(runGuarded([] {}));
    EXPECT_EQ(errorOf([] { throw RuntimeError(11); }), 11);
    EXPECT_EQ(errorOf([] { throw std::bad_alloc(); }), 7);
    EXPECT_EQ(errorOf([] { throw std::logic_error("unforeseen"); }), 51);
    EXPECT_EQ(errorOf([] { throw 1; }), 51);
}

TEST(RunGuarded, AFaultOfTheFileSystemCarriesItsFile) {
    const auto missing = runGuarded([] { fs::resize_file("/nowhere/file", 0); });
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->number(), 76);
    EXPECT_EQ(missing->fileName(), "/nowhere/file");
    const TemporaryFolder folder;
    EXPECT_EQ(errorOf([&] { fs::resize_file(folder.path() / "file", 0); }), 53);
}

TEST(FileFaults, OpeningAMissingFileKeepsTheOldProblem) {
    Office office;
    enterProblem(office);
    const Standing before(office);
    const std::string missing = office.userFile("missing.dat");
    office.open(missing);
    expectFileError(office, missing, "File not found");
    expectStill(office, before);
}

// Nobody writes to the pipe: a window that read it would stand still for ever.
TEST(FileFaults, OpeningAPipeIsToldWithoutWaitingForItsWriter) {
    Office office;
    enterProblem(office);
    const Standing before(office);
    const std::string pipe = office.userFile("pipe.dat");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    office.open(pipe);
    expectFileError(office, pipe, "A pipe or socket, not an input file");
    openNamedFile(*office.session, office.desktop, pipe); // by argument, drop or recent files
    expectFileError(office, pipe, "A pipe or socket, not an input file");
    expectStill(office, before);
}

TEST(FileFaults, OpeningOnesOwnTemporaryFileIsRefusedAndKeepsIt) {
    Office office;
    enterProblem(office);
    const Standing before(office);
    office.open(office.session->CurrentInputName);
    expectFileError(office, before.input, "File not found");
    expectStill(office, before);
}

TEST(FileFaults, AFullDiskAtTheEchoTakesTheWholeOpenBack) {
    Office office;
    enterProblem(office);
    const Standing before(office);
    std::optional<SmallDisk> full;
    office.desktop.onBox = [&](const MessageBox& box) {
        if (box.title == "INPUT COMPLETE") {
            full.emplace(fewBytes);
        }
    };
    office.open("anchored-sand");
    full.reset();
    expectFileError(office, (office.temporary.path() / "TEMP0.ooo").string(), "Disk full");
    expectStill(office, before);
}

TEST(FileFaults, AVanishedTemporaryFolderIsToldAndKeepsTheProblem) {
    Office office;
    office.open("cantilever-dry-sand");
    const Problem problem = office.session->problem;
    const Menus menus = office.session->menus;
    const std::string output = office.outputName();
    fs::remove_all(office.temporary.path());
    office.open("anchored-sand");
    expectFileError(office, (office.temporary.path() / "TEMP0.ooo").string(), "Path not found");
    EXPECT_EQ(office.session->problem, problem);
    EXPECT_EQ(office.session->menus, menus);
    EXPECT_EQ(office.outputName(), output);
}

TEST(FileFaults, SavingToAFullDeviceLeavesEverythingAsItWas) {
    Office office;
    enterProblem(office);
    const Standing before(office);
    for (const Command save : {saveInput, saveReport}) {
        office.desktop.chosenFiles = {"/dev/full"};
        save(*office.session, office.desktop);
        expectFileError(office, "/dev/full", "Disk full");
        expectStill(office, before);
        EXPECT_EQ(office.session->DataChanged, 1);
    }
}

TEST(FileFaults, AFailedSaveLeavesTheOldFileWhole) {
    Office office;
    office.open("cantilever-dry-sand");
    office.solve();
    const std::string old = office.write("old.out", "the old report");
    office.desktop.chosenFiles = {old};
    {
        const SmallDisk full(fewBytes);
        saveReport(*office.session, office.desktop);
    }
    expectFileError(office, old, "Disk full");
    EXPECT_EQ(readFile(old), "the old report");
    EXPECT_EQ(std::distance(fs::directory_iterator(office.user.path()), {}), 1);
    EXPECT_EQ(office.session->OutputSavedFlag, 0);
}

TEST(FileFaults, AFileThatMayNotBeReadIsTold) {
    const OrdinaryUser user;
    Office office;
    enterProblem(office);
    const Standing before(office);
    const std::string locked = office.write("locked.dat", "'NOT FOR EVERYBODY\n");
    fs::permissions(locked, fs::perms::none);
    office.open(locked);
    expectFileError(office, locked, "Permission denied");
    expectStill(office, before);
}

TEST(FileFaults, AFolderThatMayNotBeWrittenToIsToldAndItsFilesStay) {
    const OrdinaryUser user;
    Office office;
    enterProblem(office);
    const std::string old = office.write("old.out", "the old report");
    const Standing before(office);
    fs::permissions(office.user.path(), fs::perms(0555));
    for (const char* name : {"old.out", "new.out"}) {
        const std::string target = office.userFile(name);
        for (const Command save : {saveInput, saveReport}) {
            office.desktop.chosenFiles = {target};
            save(*office.session, office.desktop);
            expectFileError(office, target, "Permission denied");
            expectStill(office, before);
        }
    }
    EXPECT_EQ(readFile(old), "the old report");
    fs::permissions(office.user.path(), fs::perms(0755));
}

TEST(FileFaults, SavingIntoAMissingFolderIsTold) {
    Office office;
    office.open("cantilever-dry-sand");
    const Standing before(office);
    const std::string target = office.userFile("nowhere/wall.out");
    office.desktop.chosenFiles = {target};
    saveReport(*office.session, office.desktop);
    expectFileError(office, target, "Path not found");
    expectStill(office, before);
}

TEST(FileFaults, AFaultInASaveQuestionEndsTheCommandWithNothingLost) {
    Office office;
    enterProblem(office);
    const Standing before(office);
    for (const Command command : {newProblem, openFile, exitProgram}) {
        office.desktop.answers = {Answer::Yes};
        office.desktop.chosenFiles = {office.userFile("nowhere/wall.dat")};
        command(*office.session, office.desktop);
        expectFileError(office, office.userFile("nowhere/wall.dat"), "Path not found");
        expectStill(office, before);
    }
    EXPECT_FALSE(office.desktop.ended);
}

TEST(FileFaults, WhatWasSavedStaysSavedWhenTheCommandFailsLater) {
    Office office;
    enterProblem(office);
    const std::string saved = office.userFile("wall.dat");
    office.desktop.answers = {Answer::Yes, Answer::No};
    office.desktop.chosenFiles = {saved, office.userFile("missing.dat")};
    openFile(*office.session, office.desktop);
    expectFileError(office, office.userFile("missing.dat"), "File not found");
    EXPECT_EQ(office.session->CurrentInputName, saved);
    EXPECT_TRUE(fs::exists(saved));
    EXPECT_EQ(office.temporaryFiles(), std::set<std::string>{"TEMP0.ooo"});
    EXPECT_EQ(fs::path(office.outputName()).filename(), "TEMP0.ooo");
}

TEST(FileFaults, AFailedEditKeepsWhatWasTypedAndSolvesNothingFromThere) {
    Office office;
    office.open("cantilever-dry-sand");
    const Standing before(office);
    std::optional<SmallDisk> full;
    office.desktop.onScreen = [&](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem.WallTopElev = 12.5;
            session.DataChanged = 1;
            full.emplace(fewBytes);
        }
    };
    editData(*office.session, office.desktop);
    full.reset();
    expectFileError(office, (office.temporary.path() / "TEMP0.iii").string(), "Disk full");
    EXPECT_EQ(office.session->problem.WallTopElev, 12.5);
    EXPECT_EQ(office.session->CurrentInputName, before.input);
    EXPECT_EQ(office.temporaryFiles(), before.files);
    EXPECT_EQ(office.report(), before.report);
    EXPECT_FALSE(office.session->menus.solve.enabled);

    // Once there is room, Edit and Finished complete the command.
    office.desktop.onScreen = nullptr;
    editData(*office.session, office.desktop);
    EXPECT_TRUE(office.session->menus.solve.enabled);
    EXPECT_EQ(readFile(office.session->CurrentInputName), inputFileText(office.session->problem));
}

TEST(FileFaults, ANameTakenByAnotherProgramMeanwhileIsNotOverwritten) {
    Office office;
    enterProblem(office);
    const std::string inputText = readFile(office.session->CurrentInputName);
    const std::string taken = office.session->CurrentInputName;
    // The command has set the file aside when the file dialog opens.
    class TakingDesktop : public ScriptedDesktop {
      public:
        explicit TakingDesktop(std::string name) : name_(std::move(name)) {}
        std::string ChooseFile(const FileDialog&) override {
            writeFile(name_, "another program's");
            return "/nowhere/missing.dat";
        }

      private:
        std::string name_;
    } desktop(taken);
    openFile(*office.session, desktop);
    EXPECT_EQ(readFile(taken), "another program's");
    EXPECT_NE(office.session->CurrentInputName, taken);
    EXPECT_EQ(readFile(office.session->CurrentInputName), inputText);
    EXPECT_TRUE(endsIn(office.session->CurrentInputName, ".III")); // still asked about
    DeleteTempFiles(*office.session, office.desktop);
    EXPECT_EQ(office.temporaryFiles(), std::set<std::string>{fs::path(taken).filename().string()});
}

TEST(FileFaults, AMissingReportIsToldWhenPrintedOrViewed) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    const std::string output = office.outputName();
    fs::remove(output);
    printReport(*office.session, office.desktop);
    expectFileError(office, output, "File not found");
    office.desktop.onScreen = [&](Screen, const Session& session) { inputFileView(session); };
    office.session->CurrentInputName = office.userFile("gone.dat");
    viewScreen(*office.session, office.desktop, Screen::VUINPTFL);
    expectFileError(office, office.userFile("gone.dat"), "File not found");
}

TEST(FileFaults, ALinkOrPipeInPlaceOfATemporaryFileIsNotRead) {
    Office office;
    enterProblem(office);
    Session& session = *office.session;
    const std::string secret = office.userFile("secret");
    writeFile(secret, std::string(1000, '\n'));
    office.desktop.onScreen = [&](Screen screen, Session& shown) {
        screen == Screen::VUINPTFL ? inputFileView(shown) : outputFileView(shown, office.desktop);
    };
    for (const bool isLink : {true, false}) {
        office.desktop.boxes.clear();
        for (const std::string& own : {session.CurrentInputName, office.outputName()}) {
            fs::remove(own);
            if (isLink) {
                fs::create_symlink(secret, own);
            } else {
                ASSERT_EQ(::mkfifo(own.c_str(), 0600), 0);
            }
        }
        viewScreen(session, office.desktop, Screen::VUINPTFL);
        expectFileError(office, session.CurrentInputName, "Path/File access error");
        viewScreen(session, office.desktop, Screen::VUINECHO);
        expectFileError(office, office.outputName(), "Path/File access error");
        printReport(session, office.desktop);
        EXPECT_EQ(office.desktop.boxes.size(), 3U);
        expectFileError(office, office.outputName(), "Path/File access error");
    }
    EXPECT_TRUE(office.desktop.prints.empty());
}

TEST(FileFaults, APrinterThatFailsLeavesTheLineCountAlone) {
    class BrokenPrinter : public ScriptedDesktop {
      public:
        bool PrintDocument(const std::string&, const std::vector<std::string>&) override {
            throw RuntimeError(57, "LPT1");
        }
    } desktop;
    Office office;
    enterProblem(office);
    const int count = office.session->FileLineCount;
    printInput(*office.session, desktop);
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0].text, "File: LPT1\nDevice I/O error\n\nYour data are kept.");
    EXPECT_EQ(office.session->FileLineCount, count);
    EXPECT_FALSE(desktop.busy);
}

TEST(FileFaults, ExitEndsTheProgramThoughItsTemporaryFolderIsGone) {
    Office office;
    office.open("cantilever-dry-sand");
    fs::remove_all(office.temporary.path());
    exitProgram(*office.session, office.desktop);
    EXPECT_TRUE(office.desktop.ended);
}

TEST(TemporaryFilesLeft, AreToldByNewWhichGoesOn) {
    const OrdinaryUser user;
    Office office;
    enterProblem(office);
    const std::string input = office.session->CurrentInputName;
    const std::string output = office.outputName();
    {
        const LockedFolder locked(office.temporary.path());
        newProblem(*office.session, office.desktop);
    }
    EXPECT_EQ(office.desktop.boxes.back(),
              (MessageBox{.text = "Temporary files could not be removed:\nFile: " + output +
                                  "\nPermission denied\nFile: " + input + "\nPermission denied",
                          .title = "FILE ERROR",
                          .icon = Icon::Exclamation}));
    EXPECT_EQ(office.session->problem.NumHeadingLines, 0);
    EXPECT_EQ(office.session->CurrentInputName, "");
    EXPECT_TRUE(fs::exists(input));
    fs::remove(input);
    fs::remove(output);
}

TEST(TemporaryFilesLeft, AreToldWhereTheyHaveBeenSetAsideAlready) {
    class LockingDesktop : public ScriptedDesktop {
      public:
        explicit LockingDesktop(fs::path folder) : folder_(std::move(folder)) {}
        void QuitHelp() override { locked_.emplace(folder_); } // the files have other names by now
        void unlock() { locked_.reset(); }

      private:
        fs::path folder_;
        std::optional<LockedFolder> locked_;
    };
    const OrdinaryUser user;
    Office office;
    enterProblem(office);
    LockingDesktop desktop(office.temporary.path());
    newProblem(*office.session, desktop);
    desktop.unlock();
    const auto files = office.temporaryFiles();
    EXPECT_EQ(files.size(), 2U);
    for (const std::string& name : files) {
        const std::string path = (office.temporary.path() / name).string();
        EXPECT_NE(desktop.boxes.back().text.find("File: " + path + "\nPermission denied"),
                  std::string::npos);
        fs::remove(path);
    }
    EXPECT_EQ(office.session->CurrentInputName, "");
}

TEST(TemporaryFilesLeft, AreToldByExitWhichEndsTheProgram) {
    const OrdinaryUser user;
    Office office;
    enterProblem(office);
    const std::string input = office.session->CurrentInputName;
    const LockedFolder locked(office.temporary.path());
    exitProgram(*office.session, office.desktop);
    EXPECT_TRUE(office.desktop.ended);
    EXPECT_EQ(office.desktop.boxes.back().text,
              "Temporary files could not be removed:\nFile: " + input + "\nPermission denied");
}

TEST(TemporaryFilesLeft, ComeBackWithACommandThatAFaultTakesBack) {
    const OrdinaryUser user;
    Office office;
    enterProblem(office);
    const Standing before(office);
    const LockedFolder locked(office.temporary.path());
    office.open("anchored-sand");
    expectFileError(office, (office.temporary.path() / "TEMP1.ooo").string(), "Permission denied");
    expectStill(office, before);
}

TEST(SolutionFaults, AFullDiskEndsTheSolutionAndKeepsTheData) {
    for (const bool atContinue : {false, true}) {
        Office office;
        office.open("anchored-sand");
        const Problem problem = office.session->problem;
        if (atContinue) {
            solveProblem(*office.session, office.desktop);
        }
        {
            const SmallDisk full(fewBytes);
            atContinue ? continueSolution(*office.session, office.desktop)
                       : solveProblem(*office.session, office.desktop);
        }
        ASSERT_FALSE(office.desktop.boxes.empty());
        EXPECT_EQ(office.desktop.boxes.back().title, "FILE ERROR");
        EXPECT_EQ(office.session->SolutionFailed, 1);
        EXPECT_TRUE(office.session->panels.panDoneVisible);
        EXPECT_EQ(office.session->panels.panDoneText, "SOLUTION ABORTED DUE TO CALCULATION ERRORS");
        EXPECT_FALSE(office.desktop.busy);
        EXPECT_EQ(office.session->problem, problem);
        acceptResults(*office.session);
        EXPECT_FALSE(office.session->menus.freeEarthPlots.enabled);
        EXPECT_TRUE(office.session->menus.edit.enabled);
    }
}

TEST(SolutionFaults, AFullDiskLeavesTheUsersReportAsItWasSaved) {
    Office office;
    office.open("anchored-sand");
    const std::string report = office.userFile("wall.out");
    office.desktop.chosenFiles = {report};
    saveReport(*office.session, office.desktop);
    ASSERT_EQ(office.outputName(), report);
    const std::string echo = readFile(report);
    {
        const SmallDisk full(echo.size() + fewBytes); // for the beginning of the pressures
        solveProblem(*office.session, office.desktop);
    }
    expectFileError(office, report, "Disk full");
    EXPECT_EQ(readFile(report), echo);
    EXPECT_EQ(office.session->report.text, echo);
    EXPECT_EQ(office.session->report.OutputLineCount, static_cast<int>(splitLines(echo).size()));
}

TEST(SolutionFaults, AZeroDivisorShowsItsBoxAndTheAbortedPanel) {
    Office office;
    office.open("anchored-sand");
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::ROWEPILE) {
            session.sections.PileModulus.fill(0); // an accepted modulus of 0
        }
    };
    solveProblem(*office.session, office.desktop);
    continueSolution(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.boxes.back(),
              (MessageBox{.text = "Run-time error '11':\n\nDivision by zero"}));
    EXPECT_EQ(office.session->SolutionFailed, 1);
    EXPECT_EQ(office.session->panels.panDoneText, "SOLUTION ABORTED DUE TO CALCULATION ERRORS");
    EXPECT_EQ(office.session->report.OutputLineCount,
              static_cast<int>(splitLines(office.report()).size()));
}

TEST(FatalFaults, TheReadersOwnLeaveTheCommandAndRescueNothing) {
    Office office;
    const int number = errorOf([&] {
        office.open(office.write("gradient.dat", "'A GIVEN SEEPAGE GRADIENT CANNOT BE READ\n"
                                                 "CONTROL CANTILEVER DESIGN 1.00 1.50\nWALL 10\n"
                                                 "SURFACE RIGHTSIDE 1 0 10\n"
                                                 "SURFACE LEFTSIDE 1 0 0\n"
                                                 "SOIL BOTH STRENGTHS 1\n 120 110 30 0 0 0\n"
                                                 "WATER ELEVATIONS 62.4 8 0 0 0.1\nFINISHED\n"));
    });
    EXPECT_EQ(number, 9);
    EXPECT_EQ(rescueInput(*office.session), "");
    EXPECT_EQ(errorOf([&] {
                  office.open(office.write("lone.dat", "'A LONE V ON A LINE\n"
                                                       "CONTROL CANTILEVER DESIGN 1.00 1.50\n"
                                                       "WALL 10\nSURFACE RIGHTSIDE 1 0 10\n"
                                                       "SURFACE LEFTSIDE 1 0 0\n"
                                                       "SOIL BOTH STRENGTHS 1\n"
                                                       " 120 110 30 0 0 0\nV\nFINISHED\n"));
              }),
              5);
    EXPECT_EQ(rescueInput(*office.session), "");
}

TEST(FatalFaults, TheNinetyThirdTemporaryNameIsRescued) {
    Office office;
    enterProblem(office);
    office.desktop.answers.assign(200, Answer::No);
    office.session->files.ScratchFileCount = 100;
    office.desktop.onScreen = [](Screen, Session& session) { session.DataChanged = 1; };
    const int number = errorOf([&] { editData(*office.session, office.desktop); });
    EXPECT_EQ(number, 9);
    const std::string kept = rescueInput(*office.session);
    EXPECT_EQ(fs::path(kept).filename(), "KORVANE-RESCUE-0.dat");
    EXPECT_EQ(readFile(kept), inputFileText(plainCantilever()));
    EXPECT_EQ(fs::path(rescueInput(*office.session)).filename(), "KORVANE-RESCUE-1.dat");
    DeleteTempFiles(*office.session, office.desktop);
    EXPECT_TRUE(fs::exists(kept)); // not listed for deletion
}

TEST(FatalFaults, AFullDiskKeepsAnEarlierRescueFileAndMakesNone) {
    Office office;
    enterProblem(office);
    const std::string kept = rescueInput(*office.session);
    ASSERT_EQ(fs::path(kept).filename(), "KORVANE-RESCUE-0.dat");
    const auto before = office.temporaryFiles();
    {
        const SmallDisk full(fewBytes);
        EXPECT_EQ(rescueInput(*office.session), "");
    }
    EXPECT_TRUE(hasRescueData(*office.session)); // which the box then says could not be kept
    EXPECT_EQ(readFile(kept), inputFileText(plainCantilever()));
    EXPECT_EQ(office.temporaryFiles(), before);
}

TEST(FatalFaults, AProblemWithoutHeadingsIsNotRescued) {
    const Office office;
    EXPECT_EQ(rescueInput(*office.session), "");
    EXPECT_TRUE(office.temporaryFiles().empty());
}

} // namespace korvane::test
