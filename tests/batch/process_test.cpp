// What only a process of its own shows.
#include "batch_run.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include <sys/wait.h>

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

} // namespace korvane::test
