// What only a process of its own shows.
#include "batch_run.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace korvane::test {

TEST(BatchProcess, AReaderOfTheMessagesThatGoesAwayStopsNoInput) {
    const BatchOffice office;
    std::string inputs;
    for (const char* name : {"a", "b", "c", "d"}) {
        const std::string file = std::string(name) + ".dat";
        inputs += " '" + office.copy("examples/cantilever-dry-sand.dat", file) + "'";
    }
    // The pipe has no reader any more when the first message is written.
    const std::string command = "mkfifo '" + office.file("pipe") + "'; exec 3<>'" +
                                office.file("pipe") + "' 4>'" + office.file("pipe") +
                                "' 3<&-; '" KORVANE_BATCH "' --jobs 1" + inputs + " 2>&4";
    const int end = std::system(command.c_str()); // NOLINT(concurrency-mt-unsafe): one thread
    ASSERT_TRUE(WIFEXITED(end));
    EXPECT_EQ(WEXITSTATUS(end), 0);
    for (const char* report : {"a.out", "b.out", "c.out", "d.out"}) {
        EXPECT_EQ(office.files().count(report), 1U) << report;
    }
    EXPECT_EQ(office.temporaryFileCount(), 0);
}

namespace {

/// The exit status of the program with `arguments` behind and before parts of a shell line.
int shellStatus(const std::string& before, const std::string& arguments,
                const std::string& after = {}) {
    const std::string line = before + " '" KORVANE_BATCH "' " + arguments + " " + after;
    const int end = std::system(("bash -c \"" + line + "\"").c_str()); // NOLINT: one thread
    return WIFEXITED(end) ? WEXITSTATUS(end) : -1;
}

bool hiddenFileIn(const BatchOffice& office) {
    const std::set<std::string> files = office.files();
    const auto found = files.lower_bound(".korvane-");
    return found != files.end() && found->rfind(".korvane-", 0) == 0;
}

/// The program with one input, its report on a pipe that nobody reads.
pid_t startBlocked(const BatchOffice& office, int signal) {
    const std::string report = office.file("r.out");
    const std::string input = office.file("a.dat");
    const pid_t child = fork();
    if (child == 0) {
        std::signal(signal, SIG_DFL);
        execl(KORVANE_BATCH, KORVANE_BATCH, "--json", "-o", report.c_str(), input.c_str(), nullptr);
        _exit(127);
    }
    return child;
}

} // namespace

TEST(BatchProcess, StandardStreamsThatAreClosedTakeNothingOfTheOutputs) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(shellStatus("", "--json " + input), 0);
    const std::string usual = office.read("a.out") + office.read("a.json");
    for (const char* closed : {"0<&-", "1>&-", "2>&-", "0<&- 1>&- 2>&-"}) {
        EXPECT_EQ(shellStatus("", "--json " + input, closed), 0) << closed;
        EXPECT_EQ(office.read("a.out") + office.read("a.json"), usual) << closed;
    }
    EXPECT_EQ(shellStatus("", "-o - " + input, "1>&-"), 1); // the report is lost, and told
}

TEST(BatchProcess, ASignalEndsItAndLeavesNoFileBehind) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const BatchOffice office;
        office.copy("examples/cantilever-dry-sand.dat", "a.dat");
        ASSERT_EQ(mkfifo(office.file("r.out").c_str(), 0600), 0);
        const pid_t child = startBlocked(office, signal);
        for (int i = 0; i < 3000 && !hiddenFileIn(office); ++i) {
            usleep(10000);
        }
        EXPECT_TRUE(hiddenFileIn(office)); // the JSON waits for the report
        kill(child, signal);
        int end = 0;
        ASSERT_EQ(waitpid(child, &end, 0), child);
        EXPECT_TRUE(WIFSIGNALED(end) && WTERMSIG(end) == signal) << end;
        EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "r.out"}));
    }
}

// The sanitizers' memory has no bounds, and they need the shared library.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(BatchProcess, ThreadsThatCannotStartStopNothing) {
    const BatchOffice office;
    std::string inputs;
    for (const char* name : {"a.dat", "b.dat", "c.dat"}) {
        inputs += " " + office.copy("examples/cantilever-dry-sand.dat", name);
    }
    // Stacks of 1 GiB in 2.5 GiB, then of 4 GiB in 2.
    for (const char* limits : {"ulimit -s 1048576 -v 2500000;", "ulimit -s 4194304 -v 2000000;"}) {
        EXPECT_EQ(shellStatus(limits, "--jobs 3" + inputs), 0) << limits;
        for (const char* report : {"a.out", "b.out", "c.out"}) {
            EXPECT_NE(office.read(report).find("COMPLETE OF RESULTS"), std::string::npos);
            std::filesystem::remove(office.file(report));
        }
    }
}

TEST(BatchProcess, TheProgramBringsItsLibrary) {
    const std::string library = "readelf -W -d '" KORVANE_BATCH "' | grep -q 'NEEDED.*libstdc'";
    EXPECT_NE(std::system(library.c_str()), 0); // NOLINT: one thread
}
#endif

} // namespace korvane::test
