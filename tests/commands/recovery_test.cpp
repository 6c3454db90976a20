// Records of programs that run or died, their sweep, and the offer of what was typed.
#include "commands/commands.h"
#include "commands/pile_entry.h"
#include "commands/problem_name.h"
#include "commands/recovery.h"
#include "commands/told_boxes.h"

#include "problem/input_writer.h"
#include "problem/problem_text.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"
#include "support/faulty_machine.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

using Names = std::set<std::string>;

Names namesIn(const fs::path& folder) {
    Names names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

/// A process that does something and then waits for its death.
class Process {
  public:
    explicit Process(const std::function<void()>& body) {
        int done[2];
        EXPECT_EQ(::pipe(done), 0);
        id_ = ::fork();
        if (id_ == 0) {
            body();
            EXPECT_EQ(::write(done[1], "x", 1), 1);
            for (;;) {
                ::pause();
            }
        }
        char ready = 0;
        EXPECT_EQ(::read(done[0], &ready, 1), 1);
        ::close(done[0]);
        ::close(done[1]);
    }
    ~Process() { kill(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void kill() {
        if (id_ > 0) {
            ::kill(id_, SIGKILL);
            ::waitpid(id_, nullptr, 0);
            id_ = 0;
        }
    }

  private:
    pid_t id_ = 0;
};

/// A session with a record in a temporary folder.
struct Program {
    Program() : record(office.session->files.TempFolder) { office.session->record = &record; }
    ~Program() { office.session->record = nullptr; }
    Session& session() { return *office.session; }
    fs::path folder() const { return office.temporary.path(); }

    Office office;
    RunRecord record;
};

/// What a program does that has typed a problem and made two temporary files.
void leaveData(const fs::path& folder, const Problem& problem) {
    auto* session = new Session; // never ended: the process is killed
    session->files.TempFolder = folder.string();
    session->record = new RunRecord(folder);
    session->problem = problem;
    session->DataChanged = 1;
    session->ProblemFile = "/home/a/wall.dat";
    session->fileUnits = UnitSystem::SI;
    session->sections.PileName(9) = "AZ 26";
    session->sections.PileSectionData(9, 1) = 48.4;
    session->sections.PileSectionData(9, 2) = 406.5;
    session->sections.PileAllowStress(9) = 25000.1;
    session->sections.PileModulus(9) = 3e7;
    makeTemporaryFile(*session, ".iii");
    makeTemporaryFile(*session, ".ooo");
    keepTypedData(*session);
}

TEST(RunRecord, OfAProgramThatEndsWellNothingIsLeft) {
    const TemporaryFolder folder;
    {
        RunRecord first(folder.path());
        RunRecord second(folder.path());
        first.keep("head\n", "text\n");
        EXPECT_EQ(namesIn(folder.path()),
                  (Names{"KORVANE-RUN-0", "KORVANE-RUN-1", "KORVANE-RECOVERY-0.txt"}));
        EXPECT_EQ(readFile(folder.path() / "KORVANE-RECOVERY-0.txt"), "head\ntext\n");
    }
    EXPECT_EQ(namesIn(folder.path()), Names());
}

TEST(RunRecord, ACopyIsNotPutInPlaceOfALink) {
    const TemporaryFolder folder;
    const fs::path victim = folder.path() / "victim";
    writeFile(victim, "mine");
    RunRecord record(folder.path());
    fs::create_symlink(victim, folder.path() / "KORVANE-RECOVERY-0.txt");
    EXPECT_THROW(record.keep("", "text"), RuntimeError);
    EXPECT_EQ(readFile(victim), "mine");
}

TEST(DeadRuns, FilesOfTheDeadAreSweptAndThoseOfTheLivingStay) {
    const TemporaryFolder folder;
    Process dead([&] { leaveData(folder.path(), plainCantilever()); });
    Process living([&] { leaveData(folder.path(), plainCantilever()); });
    for (const char* other : {"TEMP7.iii", "TEMPLE.dat", "KORVANE-RESCUE-0.dat"}) {
        writeFile(folder.path() / other, "somebody's");
    }
    const Names all = namesIn(folder.path());
    EXPECT_EQ(all.size(), 4U + 4U + 3U);
    EXPECT_TRUE(claimDeadRuns(folder.path()).empty());
    EXPECT_EQ(namesIn(folder.path()), all);
    dead.kill();
    {
        const auto runs = claimDeadRuns(folder.path());
        ASSERT_EQ(runs.size(), 1U);
        EXPECT_NE(runs[0].text.find("'PLAIN CANTILEVER"), std::string::npos);
        EXPECT_TRUE(claimDeadRuns(folder.path()).empty()); // another program that starts meanwhile
    }
    EXPECT_EQ(
        namesIn(folder.path()),
        (Names{"KORVANE-RUN-0", "KORVANE-RECOVERY-0.txt", "KORVANE-RUN-1", "KORVANE-RECOVERY-1.txt",
               "TEMP1.iii", "TEMP1.ooo", "TEMP7.iii", "TEMPLE.dat", "KORVANE-RESCUE-0.dat"}));
    EXPECT_EQ(claimDeadRuns(folder.path()).size(), 1U); // unanswered, it is offered again
}

TEST(DeadRuns, AnotherFileUnderAListedNameStays) {
    const TemporaryFolder folder;
    Process dead([&] { leaveData(folder.path(), plainCantilever()); });
    dead.kill();
    const fs::path listed = folder.path() / "TEMP0.iii";
    fs::rename(listed, folder.path() / "held"); // so that its number is not given again
    writeFile(listed, "somebody's");
    claimDeadRuns(folder.path());
    EXPECT_EQ(readFile(listed), "somebody's");
    EXPECT_FALSE(fs::exists(folder.path() / "TEMP0.ooo"));
}

TEST(DeadRuns, FoldersOfTheirStudiesGoAndOthersStay) {
    const TemporaryFolder folder;
    const auto study = [&](const char* name) {
        const fs::path place = folder.path() / name;
        fs::create_directories(place / "results");
        writeFile(place / "results" / "results.sqlite", "rows");
        fs::create_directory_symlink(folder.path() / "mine", place / "link");
        auto* files = new TemporaryFiles; // never ended: the process is killed
        files->StudyFolder = place.string();
        (new RunRecord(folder.path()))->list(*files);
    };
    fs::create_directory(folder.path() / "mine");
    writeFile(folder.path() / "mine" / "notes.txt", "mine");
    fs::create_directory(folder.path() / "korvane-study-dEfGhI"); // nobody's
    Process dead([&] { study("korvane-study-aaaaaa"); });
    Process replaced([&] { study("korvane-study-bbbbbb"); });
    Process living([&] { study("korvane-study-cccccc"); });
    dead.kill();
    replaced.kill();
    fs::rename(folder.path() / "korvane-study-bbbbbb", folder.path() / "held");
    fs::create_directory(folder.path() / "korvane-study-bbbbbb"); // another of the same name
    EXPECT_TRUE(claimDeadRuns(folder.path()).empty());
    EXPECT_EQ(namesIn(folder.path()),
              (Names{"KORVANE-RUN-2", "mine", "held", "korvane-study-bbbbbb",
                     "korvane-study-cccccc", "korvane-study-dEfGhI"}));
    EXPECT_EQ(readFile(folder.path() / "mine" / "notes.txt"), "mine");
}

TEST(DeadRuns, ARecordWithoutCopyAndFilesSetAsideGo) {
    const TemporaryFolder folder;
    Process dead([&] {
        new RunRecord(folder.path());
        const std::string own = std::to_string(::getpid());
        writeFile(folder.path() / (".korvane-aside-" + own + "-0.iii"), "x");
        writeFile(folder.path() / (".korvane-aside-" + own + "7-0.iii"), "another process's");
    });
    dead.kill();
    EXPECT_TRUE(claimDeadRuns(folder.path()).empty());
    EXPECT_EQ(namesIn(folder.path()).size(), 1U);
}

TEST(DeadRuns, ACopyWhoseRecordWasCleanedAwayIsStillOffered) {
    const TemporaryFolder folder;
    Process dead([&] { leaveData(folder.path(), plainCantilever()); });
    dead.kill();
    fs::remove(folder.path() / "KORVANE-RUN-0");
    EXPECT_EQ(claimDeadRuns(folder.path()).size(), 1U);
}

TEST(TypedData, AreKeptFromTheClosedScreenToTheSave) {
    Program program;
    const fs::path copy = program.folder() / "KORVANE-RECOVERY-0.txt";
    program.office.desktop.onScreen = [&](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.problem.WallTopElev = 0.1 + 0.2;
            session.DataChanged = 1;
            keepTypedData(session); // a section's screen has closed
            EXPECT_NE(readFile(copy).find("WallTopElev 0.30000000000000004\n"), std::string::npos);
        }
    };
    editData(program.session(), program.office.desktop);
    keepAtRest(program.session());
    EXPECT_TRUE(fs::exists(copy));
    program.office.desktop.chosenFiles = {program.office.userFile("a.dat")};
    program.office.desktop.answers = {Answer::Yes, Answer::No};
    newProblem(program.session(), program.office.desktop); // New saves
    keepAtRest(program.session());
    EXPECT_TRUE(fs::exists(program.office.userFile("a.dat")));
    EXPECT_FALSE(fs::exists(copy));
}

TEST(TypedData, AreKeptThroughAnotherEditThatChangesNothing) {
    Program program;
    const fs::path copy = program.folder() / "KORVANE-RECOVERY-0.txt";
    program.office.desktop.onScreen = [&](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.DataChanged = 1;
        }
    };
    editData(program.session(), program.office.desktop);
    keepAtRest(program.session());
    ASSERT_TRUE(fs::exists(copy));
    program.office.desktop.onScreen = {};
    program.office.desktop.answers = {Answer::No, Answer::No};
    editData(program.session(), program.office.desktop);
    keepAtRest(program.session());
    EXPECT_TRUE(hasUnsavedInput(program.session()));
    EXPECT_TRUE(fs::exists(copy));
}

/// What its screen does where one section is added.
void addSection(Session& session) {
    addSections(session.sections, {{{"AZ 26", "48.4", "406.5", "25000", "3E7"}}});
}

TEST(TypedData, AddedSectionsOfAWallThatIsUnchangedAreKeptWithoutASaveQuestion) {
    Program program;
    auto& desktop = program.office.desktop;
    Session& session = program.session();
    const fs::path copy = program.folder() / "KORVANE-RECOVERY-0.txt";
    program.office.open("anchored-sand");
    desktop.onScreen = [](Screen screen, Session& shown) {
        if (screen == Screen::ROWEPILE) {
            addSection(shown);
            keepTypedData(shown); // as where any screen closes
        }
    };
    solveProblem(session, desktop);
    keepAtRest(session);
    EXPECT_FALSE(fs::exists(copy));
    continueSolution(session, desktop);
    EXPECT_EQ(desktop.shown(Screen::ROWEPILE), 1);
    EXPECT_TRUE(readFile(copy).find("AZ 26\n") != std::string::npos);
    keepAtRest(session);
    EXPECT_TRUE(fs::exists(copy));
    EXPECT_EQ(session.DataChanged, 0);
    EXPECT_FALSE(hasUnsavedInput(session));
    acceptResults(session);
    desktop.boxes.clear();
    desktop.answers = {Answer::No};
    newProblem(session, desktop);
    EXPECT_EQ(desktop.titles(), std::vector<std::string>{"SAVE OUTPUT DATA?"});
    keepAtRest(session);
    EXPECT_TRUE(fs::exists(copy)); // the next wall is offered them again
}

/// Data that are typed, in a program that keeps a copy of them.
void type(Program& program, double top) {
    program.session().problem = plainCantilever();
    program.session().problem.WallTopElev = top;
    program.session().DataChanged = 1;
}

TEST(TypedData, AFullDiskKeepsTheCopyBeforeAndTheLineSaysSo) {
    Program program;
    const fs::path copy = program.folder() / "KORVANE-RECOVERY-0.txt";
    type(program, 1);
    EXPECT_TRUE(keepTypedData(program.session()));
    const std::string before = readFile(copy);
    EXPECT_EQ(statusLine(program.session()), "");
    type(program, 2);
    {
        const SmallDisk full(100);
        EXPECT_FALSE(keepAtRest(program.session()));
    }
    EXPECT_EQ(readFile(copy), before);
    EXPECT_EQ(namesIn(program.folder()), (Names{"KORVANE-RUN-0", "KORVANE-RECOVERY-0.txt"}));
    EXPECT_EQ(statusLine(program.session()), "unsaved data have no recovery copy: Disk full");
    EXPECT_TRUE(keepAtRest(program.session())); // there is room again
    EXPECT_NE(readFile(copy), before);
    EXPECT_EQ(statusLine(program.session()), "");
}

TEST(TypedData, AFullDiskMakesNoCopyThatHoldsHalf) {
    Program program;
    type(program, 1);
    {
        const SmallDisk full(100);
        EXPECT_FALSE(keepTypedData(program.session()));
    }
    EXPECT_EQ(namesIn(program.folder()), Names{"KORVANE-RUN-0"});
}

TEST(TypedData, ACopyThatCannotBeRemovedIsToldOnceAndReplacedByTheNext) {
    const OrdinaryUser user;
    Program program;
    const std::string copy = (program.folder() / "KORVANE-RECOVERY-0.txt").string();
    type(program, 1);
    keepTypedData(program.session());
    program.session().DataChanged = 0; // saved
    {
        const LockedFolder locked(program.folder());
        keepAtRest(program.session());
        tellFilesLeft(program.office.desktop);
        keepAtRest(program.session());
        tellFilesLeft(program.office.desktop);
    }
    ASSERT_EQ(program.office.desktop.boxes.size(), 1U);
    EXPECT_EQ(program.office.desktop.boxes[0].text,
              "Temporary files could not be removed:\nFile: " + copy + "\nPermission denied");
    type(program, 2);
    EXPECT_TRUE(keepTypedData(program.session()));
    EXPECT_NE(readFile(copy).find("WallTopElev 2\n"), std::string::npos);
    program.session().DataChanged = 0;
    keepAtRest(program.session());
    EXPECT_FALSE(fs::exists(copy));
}

TEST(RunRecord, ThatCannotBeRemovedAtTheEndIsNoted) {
    const OrdinaryUser user;
    const TemporaryFolder folder;
    {
        RunRecord record(folder.path());
        record.keep("", "text");
        fs::permissions(folder.path(), fs::perms(0555));
    }
    fs::permissions(folder.path(), fs::perms(0755));
    std::vector<std::string> names;
    for (const RuntimeError& fault : takeFilesLeft()) {
        names.push_back(fs::path(fault.fileName()).filename().string());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"KORVANE-RECOVERY-0.txt", "KORVANE-RUN-0"}));
}

/// What a program that starts in the folder of a dead one is offered.
struct Offer {
    explicit Offer(const Problem& problem) {
        Process dead([&] { leaveData(program.folder(), problem); });
        dead.kill();
        runs = claimDeadRuns(program.folder());
    }
    void offer() { offerRecovery(program.session(), program.office.desktop, runs); }
    bool copyStays() const { return fs::exists(program.folder() / "KORVANE-RECOVERY-1.txt"); }

    Program program;
    std::vector<DeadRun> runs;
};

TEST(RecoveryOffer, YesGoesOnLikeTheEndOfEdit) {
    Offer offer(plainCantilever());
    auto& desktop = offer.program.office.desktop;
    Session& session = offer.program.session();
    desktop.answers = {Answer::Yes};
    offer.offer();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0].title, "RECOVER INPUT DATA?");
    EXPECT_EQ(desktop.boxes[0].buttons, Buttons::YesNo);
    EXPECT_NE(desktop.boxes[0].text.find("'PLAIN CANTILEVER"), std::string::npos);
    EXPECT_EQ(session.problem, plainCantilever());
    EXPECT_EQ(session.DataChanged, 1);
    EXPECT_EQ(session.ProblemFile, "/home/a/wall.dat");
    EXPECT_EQ(session.fileUnits, UnitSystem::SI);
    EXPECT_EQ(session.units, UnitSystem::SI);
    EXPECT_EQ(session.sections.PileName(9), "AZ 26");
    EXPECT_EQ(session.sections.PileSectionData(9, 1), 48.4);
    EXPECT_EQ(session.sections.PileSectionData(9, 2), 406.5);
    EXPECT_EQ(session.sections.PileAllowStress(9), 25000.1);
    EXPECT_EQ(session.sections.PileModulus(9), 3e7);
    EXPECT_TRUE(session.menus.solve.enabled);
    EXPECT_TRUE(session.menus.view.enabled);
    EXPECT_TRUE(session.menus.saveInput.enabled);
    EXPECT_EQ(readFile(session.CurrentInputName), inputFileText(plainCantilever()));
    EXPECT_FALSE(session.report.CurrentOutputName.empty());
    EXPECT_EQ(desktop.shown(Screen::KEYIN), 0);
    EXPECT_FALSE(offer.copyStays());
    EXPECT_TRUE(fs::exists(offer.program.folder() / "KORVANE-RECOVERY-0.txt")); // its own now
}

TEST(RecoveryOffer, NoRemovesTheCopy) {
    Offer offer(plainCantilever());
    offer.program.office.desktop.answers = {Answer::No};
    offer.offer();
    EXPECT_EQ(offer.program.session().problem.NumHeadingLines, 0);
    EXPECT_FALSE(offer.copyStays());
    EXPECT_FALSE(fs::exists(offer.program.folder() / "KORVANE-RUN-1"));
}

TEST(RecoveryOffer, ACopyThatCannotBeRemovedIsTold) {
    const OrdinaryUser user;
    Offer offer(plainCantilever());
    auto& desktop = offer.program.office.desktop;
    desktop.answers = {Answer::No};
    {
        const LockedFolder locked(offer.program.folder());
        offer.offer();
    }
    EXPECT_EQ(desktop.titles(), (std::vector<std::string>{"RECOVER INPUT DATA?", "FILE ERROR"}));
    const std::string folder = offer.program.folder().string();
    EXPECT_EQ(desktop.boxes.back().text, "Temporary files could not be removed:\nFile: " + folder +
                                             "/KORVANE-RECOVERY-1.txt\nPermission denied\nFile: " +
                                             folder + "/KORVANE-RUN-1\nPermission denied");
    EXPECT_TRUE(offer.copyStays());
}

TEST(RecoveryOffer, UnfinishedDataComeBackOnTheSelectorOfSections) {
    Problem heading;
    clearProblemData(heading);
    heading.NumHeadingLines = 1;
    heading.HeadingLines(1) = "'ONLY THIS ";
    Offer offer(heading);
    auto& desktop = offer.program.office.desktop;
    desktop.answers = {Answer::Yes};
    desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            EXPECT_EQ(session.problem.HeadingLines(1), "'ONLY THIS ");
            session.problem = plainCantilever();
            session.DataChanged = 0; // as the screen leaves it where nothing more was changed
        }
    };
    offer.offer();
    EXPECT_EQ(desktop.shown(Screen::KEYIN), 1);
    EXPECT_EQ(offer.program.session().DataChanged, 1);
    EXPECT_TRUE(offer.program.session().menus.solve.enabled);
}

TEST(RecoveryOffer, TellsOfAddedSectionsAndBringsThemBackAloneWhereThereWasNoProblem) {
    const std::string added = "\nSheet pile sections that you added are among them.\n";
    Offer whole(plainCantilever());
    whole.program.office.desktop.answers = {Answer::No};
    whole.offer();
    EXPECT_NE(whole.program.office.desktop.boxes[0].text.find(added), std::string::npos);

    Problem none;
    clearProblemData(none);
    Offer offer(none);
    auto& desktop = offer.program.office.desktop;
    desktop.answers = {Answer::Yes};
    offer.offer();
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_TRUE(desktop.boxes[0].text.starts_with(
        "KORVANE ended without saving the sheet pile sections of\n"));
    EXPECT_EQ(desktop.boxes[0].text.find(added), std::string::npos);
    EXPECT_EQ(desktop.shown(Screen::KEYIN), 0);
    Session& session = offer.program.session();
    EXPECT_EQ(session.sections.PileName(9), "AZ 26");
    EXPECT_EQ(session.DataChanged, 0);
    EXPECT_FALSE(hasUnsavedInput(session));
    EXPECT_FALSE(offer.copyStays());
    EXPECT_TRUE(fs::exists(offer.program.folder() / "KORVANE-RECOVERY-0.txt")); // its own now
}

TEST(RecoveryOffer, ACopyThatCannotBeReadStaysAndIsNotOffered) {
    Offer offer(plainCantilever());
    const std::string own = offer.runs[0].text;
    const std::string first = "KORVANE RECOVERY 3\n";
    ASSERT_TRUE(own.starts_with(first));
    const std::string rest = own.substr(first.size());
    std::string broken = own;
    broken.replace(broken.find("Sections"), 8, "Elements");
    for (const std::string& text :
         {"KORVANE RECOVERY 2\n" + rest, "KORVANE RECOVERY 4\n" + rest, broken, own + "more\n",
          own.substr(0, own.size() - 1), std::string()}) {
        offer.runs[0].text = text;
        offer.offer();
        EXPECT_TRUE(offer.program.office.desktop.boxes.empty());
        EXPECT_TRUE(offer.copyStays());
    }
}

TEST(EndOfASession, TakesItsTemporaryFilesAlong) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "TEMPLE.dat", "mine");
    {
        Session session;
        session.files.TempFolder = folder.path().string();
        makeTemporaryFile(session, ".iii");
        makeTemporaryFile(session, ".ooo");
    }
    EXPECT_EQ(namesIn(folder.path()), Names{"TEMPLE.dat"});
}

} // namespace
} // namespace korvane::test
