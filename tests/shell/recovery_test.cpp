// What is left of a program that was killed, and what the next start makes of it: real processes.
#include "person.h"

#include "runtime/file_text.h"
#include "shell/ending_signals.h"
#include "support/faulty_machine.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <set>

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

constexpr int Patience = 60000; // milliseconds

/// A program in a temporary folder that it may share with others.
class RunningProgram {
  public:
    RunningProgram(const fs::path& temporary, const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("temp", QString::fromStdString(temporary.string()));
        environment.insert("XDG_STATE_HOME", QString::fromStdString(temporary.string() + "-none"));
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        process_.setProcessEnvironment(environment);
        process_.start(KORVANE_TYPING, arguments);
    }
    ~RunningProgram() {
        process_.kill();
        process_.waitForFinished(Patience);
    }

    /// The next line that it tells; empty where none comes.
    std::string line() {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(Patience)) {
                return {};
            }
        }
        return process_.readLine().trimmed().toStdString();
    }
    /// Sends a signal and waits for the end; the number of the signal that ended it, 0 for none.
    int endBy(int signal) {
        ::kill(static_cast<pid_t>(process_.processId()), signal);
        EXPECT_TRUE(process_.waitForFinished(Patience));
        return process_.exitStatus() == QProcess::CrashExit ? process_.exitCode() : 0;
    }
    void endWell() {
        process_.write("\n");
        EXPECT_TRUE(process_.waitForFinished(Patience));
        EXPECT_EQ(process_.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process_.exitCode(), 0);
    }

  private:
    QProcess process_;
};

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

using Names = std::set<std::string>;

/// "BOX RECOVER INPUT DATA? ..." about the typed heading.
bool offersTyped(const std::string& line) {
    return line.rfind("BOX RECOVER INPUT DATA? KORVANE ended without saving", 0) == 0 &&
           line.find("'KEEP THIS") != std::string::npos;
}

TEST(Recovery, WhatWasTypedSurvivesAKill) {
    const TemporaryFolder folder;
    {
        RunningProgram killed(folder.path(), {"Yes", "type"});
        EXPECT_EQ(killed.line().rfind("KEYIN ", 0), 0U); // the heading's screen has closed
        killed.endBy(SIGKILL);
    }
    EXPECT_EQ(namesIn(folder.path()), (Names{"KORVANE-RUN-0", "KORVANE-RECOVERY-0.txt"}));
    const fs::perms none = fs::perms::group_all | fs::perms::others_all;
    EXPECT_EQ(fs::status(folder.path() / "KORVANE-RECOVERY-0.txt").permissions() & none,
              fs::perms::none);
    {
        // Yes leads to the sections, as the others are missing. Killed there, it is offered again.
        RunningProgram again(folder.path(), {"Yes"});
        EXPECT_TRUE(offersTyped(again.line()));
        EXPECT_EQ(again.line().rfind("KEYIN ", 0), 0U);
        again.endBy(SIGKILL);
    }
    {
        RunningProgram refused(folder.path(), {"No"});
        EXPECT_TRUE(offersTyped(refused.line()));
        EXPECT_EQ(refused.line(), "REST KORVANE");
        EXPECT_EQ(namesIn(folder.path()).count("KORVANE-RECOVERY-0.txt"), 0U);
        refused.endWell();
    }
    EXPECT_EQ(namesIn(folder.path()), Names());
}

TEST(Recovery, ACopyThatCannotBeRemovedIsToldBehindTheSave) {
    const OrdinaryUser user;
    Person person;
    person.expectScreen("KEYIN", [&](QDialog& keyin) {
        person.session().problem = plainCantilever();
        person.session().DataChanged = 1;
        person.session().HeadContDataValid = 1;
        pushButton(keyin, "cmdFinished");
    });
    person.choose("mnuEditItem_0");
    const std::string copy = (person.temporary.path() / "KORVANE-RECOVERY-0.txt").string();
    ASSERT_TRUE(fs::exists(copy));
    {
        const LockedFolder locked(person.temporary.path());
        person.expectFile(person.userFile("wall.dat"));
        person.expectBox("OK"); // the temporary input file
        person.expectBox("OK");
        person.choose("mnuSaveItem_0");
        person.expectNothingLeft();
        person.choose("mnuUnitsItem_0"); // not told again
    }
    ASSERT_EQ(person.boxes.size(), 2U);
    EXPECT_EQ(person.boxes[1].title, "FILE ERROR");
    EXPECT_EQ(person.boxes[1].text,
              "Temporary files could not be removed:\nFile: " + copy + "\nPermission denied");
    EXPECT_EQ(person.window().windowTitle(), "wall.dat - KORVANE");
}

TEST(Recovery, ALivingProgramKeepsItsCopyToItself) {
    const TemporaryFolder folder;
    RunningProgram living(folder.path(), {"Yes", "type"});
    EXPECT_EQ(living.line().rfind("KEYIN ", 0), 0U);
    RunningProgram other(folder.path(), {"Yes"});
    EXPECT_EQ(other.line(), "REST KORVANE"); // no box
    other.endWell();
    EXPECT_EQ(namesIn(folder.path()), (Names{"KORVANE-RUN-0", "KORVANE-RECOVERY-0.txt"}));
}

TEST(Recovery, ASignalLeavesTheRescueFileAndTheCopy) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const TemporaryFolder folder;
        RunningProgram ended(folder.path(), {"Yes", "type"});
        EXPECT_EQ(ended.line().rfind("KEYIN ", 0), 0U);
        EXPECT_EQ(ended.endBy(signal), signal);
        EXPECT_EQ(namesIn(folder.path()),
                  (Names{"KORVANE-RESCUE-0.dat", "KORVANE-RUN-0", "KORVANE-RECOVERY-0.txt"}));
        EXPECT_NE(readFile(folder.path() / "KORVANE-RESCUE-0.dat").find("'KEEP THIS"),
                  std::string::npos);
    }
}

TEST(Recovery, ASignalEndsAProgramThatWorksAfterAWhileAndLeavesTheCopy) {
    const TemporaryFolder folder;
    RunningProgram working(folder.path(), {"Yes", "work"});
    EXPECT_EQ(working.line().rfind("KEYIN ", 0), 0U);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(working.endBy(SIGTERM), SIGTERM);
    EXPECT_GE(std::chrono::steady_clock::now() - start, EndingSignals::LongestWait);
    EXPECT_EQ(namesIn(folder.path()), (Names{"KORVANE-RUN-0", "KORVANE-RECOVERY-0.txt"}));
    RunningProgram next(folder.path(), {"No"});
    EXPECT_TRUE(offersTyped(next.line()));
    EXPECT_EQ(next.line(), "REST KORVANE");
    next.endWell();
    EXPECT_EQ(namesIn(folder.path()), Names());
}

TEST(Recovery, ASignalAtRestLeavesNothing) {
    const TemporaryFolder folder;
    RunningProgram ended(folder.path(), {"Yes"});
    EXPECT_EQ(ended.line(), "REST KORVANE");
    EXPECT_EQ(ended.endBy(SIGTERM), SIGTERM);
    EXPECT_EQ(namesIn(folder.path()), Names());
}

} // namespace
} // namespace korvane::test
