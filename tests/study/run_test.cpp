// Runs that are stopped, killed, shared and merged: the rows are always the same.
#include "study_desk.h"
#include "study_process.h"

#include "study/command_line.h"
#include "study/plan.h"
#include "study/run.h"

#include "support/faulty_machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include <sys/wait.h>

namespace korvane::study::test {

using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

std::string sample(int size, int seed = 1) {
    return head("sample", "design = \"latin-hypercube\"\nsize = " + std::to_string(size) +
                              "\nseed = " + std::to_string(seed)) +
           friction("distribution = \"Normal(32, 2)\"\nbounds = [26, 38]") +
           limit("deep", "penetration > 14");
}

std::vector<std::string> runArguments(const StudyDesk& desk, const std::string& study,
                                      const std::string& output) {
    return {"run", desk.file(study), "--output", desk.file(output), "--quiet", "--jobs", "1"};
}

/// Until the file of results holds rows; false after a minute.
bool waitForRows(const StudyDesk& desk, const std::string& output) {
    constexpr int Quiet = 20; // looks without growth: the commit that wrote the rows is through
    const fs::path file = fs::path(desk.file(output)) / "results.sqlite";
    std::uintmax_t last = 0;
    int quiet = 0;
    for (int n = 0; n < 6000; ++n) {
        std::error_code none;
        const std::uintmax_t size = fs::file_size(file, none);
        quiet = !none && size > 40000 && size == last ? quiet + 1 : 0;
        if (quiet == Quiet) {
            return true;
        }
        last = size;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

/// Variants that keep one thread busy for some seconds, so that a run can be ended on its way.
int longSize() {
    static const int size = [] {
        const Study study = studyOf(sample(1000));
        Plan plan(study);
        Evaluation evaluation(study);
        std::vector<double> numbers;
        Row row;
        int count = 0;
        const auto start = std::chrono::steady_clock::now();
        for (; std::chrono::steady_clock::now() < start + std::chrono::milliseconds(300); ++count) {
            plan.numbers(static_cast<std::uint64_t>(count) % 1000, numbers);
            evaluation.fill(numbers, row);
        }
        return 16 * count;
    }();
    return size;
}

/// The rows of a run that nothing has ended.
std::vector<TextRow> uninterrupted() {
    const StudyDesk desk;
    desk.runStudy(sample(longSize()), "o");
    return desk.variants("o");
}

std::size_t countOf(const StudyDesk& desk, const std::string& output) {
    return static_cast<std::size_t>(desk.number(output, "SELECT count(*) FROM variants"));
}

std::string bytesOf(const StudyDesk& desk, const std::string& name) {
    return desk.read(name);
}

} // namespace

TEST(Run, RowsAreTheSameForAnyNumberOfThreads) {
    const StudyDesk desk;
    std::vector<std::vector<TextRow>> rows;
    for (const char* jobs : {"1", "2", "3"}) {
        const std::string output = std::string("o") + jobs;
        desk.runStudy(sample(3000), output, {"--jobs", jobs});
        rows.push_back(desk.variants(output));
    }
    EXPECT_EQ(rows[0].size(), 3000U);
    EXPECT_EQ(rows[0], rows[1]);
    EXPECT_EQ(rows[0], rows[2]);
}

TEST(Run, PartsMergeToTheRowsOfOneRun) {
    for (const std::string method : {"sample", "importance", "sensitivity"}) {
        const StudyDesk desk;
        std::string text = sample(1000);
        if (method == "importance") {
            text = head("reliability", "algorithm = \"importance\"\nsize = 500") +
                   text.substr(text.find("[[variable]]"));
        } else if (method == "sensitivity") {
            text = head("sensitivity", "size = 300") + text.substr(text.find("[[variable]]"));
        }
        desk.runStudy(text, "whole");
        for (const char* part : {"3/3", "1/3", "2/3"}) {
            desk.runStudy(text, "parts", {"--part", part});
        }
        const CommandRun collected = StudyDesk::run({"collect", desk.file("parts")});
        EXPECT_EQ(collected.status, StatusDone) << collected.err;
        EXPECT_EQ(desk.variants("parts"), desk.variants("whole")) << method;
        const std::string all = "SELECT * FROM statistics ORDER BY rowid";
        EXPECT_EQ(desk.rows("parts", all), desk.rows("whole", all));
        const std::string variables = "SELECT * FROM variables ORDER BY rowid";
        EXPECT_EQ(desk.rows("parts", variables), desk.rows("whole", variables));
        // Again: the same.
        EXPECT_EQ(StudyDesk::run({"collect", desk.file("parts")}).status, StatusDone);
        EXPECT_EQ(desk.variants("parts"), desk.variants("whole")) << method;
    }
}

TEST(Run, MorePartsThanVariantsMergeToo) {
    const StudyDesk desk;
    desk.runStudy(sample(2), "whole");
    for (int part = 1; part <= 5; ++part) {
        desk.runStudy(sample(2), "parts", {"--part", std::to_string(part) + "/5"});
    }
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("parts")}).status, StatusDone);
    EXPECT_EQ(desk.variants("parts"), desk.variants("whole"));
}

TEST(Run, MissingDamagedAndUnfinishedPartsAreNamedAndCanBeRunAgain) {
    const StudyDesk desk;
    const std::string text = sample(400);
    for (const char* part : {"1/4", "2/4", "4/4"}) {
        desk.runStudy(text, "o", {"--part", part});
    }
    const auto part = [](int n) { return "o/part-" + std::to_string(n) + "-of-4.sqlite"; };
    desk.write(part(2), "This is no database at all, although it has the name of one.");
    desk.rows("o", "UPDATE provenance SET value = 'no' WHERE key = 'complete'",
              "part-4-of-4.sqlite");
    const CommandRun failed = StudyDesk::run({"collect", desk.file("o")});
    EXPECT_EQ(failed.status, StatusFault);
    EXPECT_THAT(failed.err, HasSubstr("part-2-of-4.sqlite is damaged"));
    EXPECT_THAT(failed.err, HasSubstr("part-3-of-4.sqlite is missing"));
    EXPECT_THAT(failed.err, HasSubstr("part-4-of-4.sqlite is not finished"));
    EXPECT_FALSE(fs::exists(desk.file("o/results.sqlite")));

    fs::remove(desk.file(part(2)));
    for (const char* again : {"2/4", "3/4", "4/4"}) {
        desk.runStudy(text, "o", {"--part", again});
    }
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("o")}).status, StatusDone);
    desk.runStudy(text, "whole");
    EXPECT_EQ(desk.variants("o"), desk.variants("whole"));
}

TEST(Run, AFolderOfAnotherStudyIsRefusedAndStaysAsItIs) {
    const StudyDesk desk;
    desk.runStudy(sample(50), "whole");
    desk.runStudy(sample(50), "parts", {"--part", "1/2"});
    desk.runStudy(sample(50), "parts", {"--part", "2/2"});
    const std::string whole = bytesOf(desk, "whole/results.sqlite");
    const std::string part = bytesOf(desk, "parts/part-1-of-2.sqlite");
    desk.write("other.toml", sample(50, 2));
    for (const char* folder : {"whole", "parts"}) {
        for (const char* share : {"1/1", "1/2", "2/2", "1/3"}) {
            auto arguments = runArguments(desk, "other.toml", folder);
            arguments.insert(arguments.end(), {"--part", share});
            const CommandRun run = StudyDesk::run(arguments);
            EXPECT_EQ(run.status, StatusUsage) << folder << " " << share;
            EXPECT_THAT(run.err, HasSubstr("holds rows of another study"));
        }
    }
    EXPECT_EQ(bytesOf(desk, "whole/results.sqlite"), whole);
    EXPECT_EQ(bytesOf(desk, "parts/part-1-of-2.sqlite"), part);
    EXPECT_FALSE(fs::exists(desk.file("parts/results.sqlite")));
    // Another base under the same name is another study as well.
    desk.write("wall.dat", example("cantilever-clay.dat"));
    EXPECT_EQ(StudyDesk::run(runArguments(desk, "whole.toml", "whole")).status, StatusUsage);
}

TEST(Run, PartsOfTwoStudiesAreNotMerged) {
    const StudyDesk desk;
    desk.runStudy(sample(50), "a", {"--part", "1/2"});
    desk.runStudy(sample(50, 2), "b", {"--part", "2/2"});
    fs::copy_file(desk.file("b/part-2-of-2.sqlite"), desk.file("a/part-2-of-2.sqlite"));
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("a")}).status, StatusUsage);
    EXPECT_FALSE(fs::exists(desk.file("a/results.sqlite")));
    // Results of another study stay.
    fs::remove(desk.file("a/part-2-of-2.sqlite"));
    desk.runStudy(sample(50), "a", {"--part", "2/2"});
    desk.runStudy(sample(50, 2), "c");
    fs::copy_file(desk.file("c/results.sqlite"), desk.file("a/results.sqlite"));
    const std::string before = bytesOf(desk, "a/results.sqlite");
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("a")}).status, StatusUsage);
    EXPECT_EQ(bytesOf(desk, "a/results.sqlite"), before);
}

TEST(Run, PartsOfDifferentCountsAreNotMerged) {
    const StudyDesk desk;
    desk.runStudy(sample(50), "o", {"--part", "1/2"});
    desk.runStudy(sample(50), "o", {"--part", "1/3"});
    const CommandRun run = StudyDesk::run({"collect", desk.file("o")});
    EXPECT_EQ(run.status, StatusFault);
    EXPECT_THAT(run.err, HasSubstr("holds parts of"));
}

TEST(Run, AFolderWithoutPartsHasNothingToCollect) {
    const StudyDesk desk;
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("nowhere")}).status, StatusFault);
}

TEST(Run, ADatabaseOfSomeoneElseIsNotTouched) {
    const StudyDesk desk;
    fs::create_directory(desk.file("o"));
    desk.write("o/results.sqlite", "");
    desk.rows("o", "CREATE TABLE photos (name TEXT)");
    const std::string before = bytesOf(desk, "o/results.sqlite");
    desk.write("s.toml", sample(5));
    const CommandRun run = StudyDesk::run(runArguments(desk, "s.toml", "o"));
    EXPECT_EQ(run.status, StatusUsage);
    EXPECT_THAT(run.err, HasSubstr("is no file of a study"));
    EXPECT_EQ(bytesOf(desk, "o/results.sqlite"), before);
}

TEST(Run, ADamagedDatabaseIsTold) {
    const StudyDesk desk;
    desk.runStudy(sample(4000), "o");
    const std::string whole = bytesOf(desk, "o/results.sqlite");
    std::string garbage = whole;
    for (std::size_t n = 0; n < garbage.size(); n += 3) {
        garbage[n] = 'x';
    }
    std::string middle = whole;
    std::fill_n(middle.begin() + static_cast<std::ptrdiff_t>(middle.size() / 2), 9000, '\x55');
    for (const std::string& bytes :
         {std::string("not a database"), whole.substr(0, whole.size() / 2), garbage, middle}) {
        desk.write("o/results.sqlite", bytes);
        const CommandRun run = StudyDesk::run(runArguments(desk, "o.toml", "o"));
        EXPECT_EQ(run.status, StatusFault);
        EXPECT_THAT(run.err, HasSubstr("results.sqlite is damaged"));
        EXPECT_EQ(bytesOf(desk, "o/results.sqlite"), bytes);
    }
}

TEST(Run, TwoRunsOnOneFolderDoNotSpoilEachOther) {
    const StudyDesk desk;
    desk.write("s.toml", sample(longSize()));
    const pid_t first = start(runArguments(desk, "s.toml", "o"));
    const bool started = waitForRows(desk, "o");
    kill(first, SIGSTOP); // longer at work than the second waits for it
    const CommandRun second = StudyDesk::run(runArguments(desk, "s.toml", "o"));
    kill(first, SIGCONT);
    EXPECT_TRUE(started);
    EXPECT_EQ(second.status, StatusFault);
    EXPECT_THAT(second.err, HasSubstr("results.sqlite is in use by another run"));
    EXPECT_EQ(waitFor(first), 0);
    EXPECT_EQ(desk.variants("o"), uninterrupted());
}

TEST(Run, KilledInTheMiddleItGoesOnToTheSameRows) {
    const StudyDesk desk;
    desk.write("s.toml", sample(longSize()));
    const pid_t child = start(runArguments(desk, "s.toml", "o"));
    ASSERT_TRUE(waitForRows(desk, "o"));
    kill(child, SIGKILL);
    const int end = waitFor(child);
    ASSERT_TRUE(WIFSIGNALED(end));
    const std::size_t stored = countOf(desk, "o");
    EXPECT_GT(stored, 0U);
    EXPECT_LT(stored, static_cast<std::size_t>(longSize()));
    EXPECT_EQ(StudyDesk::run(runArguments(desk, "s.toml", "o")).status, StatusDone);
    EXPECT_EQ(desk.variants("o"), uninterrupted());
}

TEST(Run, SignalsEndItAfterTheRowsAtHandAndItGoesOn) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const StudyDesk desk;
        desk.write("s.toml", sample(longSize()));
        const pid_t child = start(runArguments(desk, "s.toml", "o"));
        ASSERT_TRUE(waitForRows(desk, "o"));
        kill(child, signal);
        const int end = waitFor(child);
        ASSERT_TRUE(WIFSIGNALED(end));
        EXPECT_EQ(WTERMSIG(end), signal);
        const std::size_t stored = countOf(desk, "o");
        EXPECT_GT(stored, 0U);
        EXPECT_LT(stored, static_cast<std::size_t>(longSize()));
        EXPECT_FALSE(fs::exists(desk.file("o/results.sqlite-journal")));
        EXPECT_EQ(StudyDesk::run(runArguments(desk, "s.toml", "o")).status, StatusDone);
        EXPECT_EQ(desk.variants("o"), uninterrupted());
    }
}

TEST(Run, TellsItsProgressAsOftenAsAsked) {
    const StudyDesk desk;
    desk.write("s.toml", sample(300));
    const auto run = [&](const std::string& output, const std::vector<std::string>& more) {
        std::vector<std::string> arguments{"run", desk.file("s.toml"), "--output",
                                           desk.file(output)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return StudyDesk::run(arguments);
    };
    EXPECT_EQ(run("usual", {}).err, "statistics\n"); // rows are there before ten seconds are over
    EXPECT_THAT(run("often", {"--progress", "0"}).err, HasSubstr("300 of 300, "));
    EXPECT_EQ(run("never", {"--progress", "-1"}).status, StatusUsage);
}

TEST(Run, AFinishedStudyIsNotRunAgain) {
    const StudyDesk desk;
    desk.runStudy(sample(50), "o");
    const std::string before = bytesOf(desk, "o/results.sqlite");
    desk.runStudy(sample(50), "o");
    EXPECT_EQ(bytesOf(desk, "o/results.sqlite"), before);
}

TEST(Run, AFullDiskLeavesTheRowsThatWereStored) {
    const StudyDesk desk;
    desk.write("s.toml", sample(8000));
    {
        const korvane::test::SmallDisk disk(200000);
        const CommandRun run = StudyDesk::run(runArguments(desk, "s.toml", "o"));
        EXPECT_EQ(run.status, StatusFault);
        EXPECT_THAT(run.err, HasSubstr("results.sqlite: "));
    }
    EXPECT_EQ(StudyDesk::run(runArguments(desk, "s.toml", "o")).status, StatusDone);
    desk.runStudy(sample(8000), "whole");
    EXPECT_EQ(desk.variants("o"), desk.variants("whole"));
}

TEST(Run, AFolderThatCannotBeMadeIsTold) {
    const StudyDesk desk;
    desk.write("s.toml", sample(5));
    const CommandRun run = StudyDesk::run(
        {"run", desk.file("s.toml"), "--output", desk.file("s.toml") + "/o", "--quiet"});
    EXPECT_EQ(run.status, StatusFault);
    EXPECT_THAT(run.err, HasSubstr("s.toml/o: "));
}

TEST(Run, LocaleAndTimeZoneChangeNothing) {
    const StudyDesk desk;
    // Half an hour before midnight in Greenwich: another day further east.
    const korvane::test::EnvironmentVariable moment("SOURCE_DATE_EPOCH", "1790033400");
    desk.runStudy(sample(300), "plain", {"--csv"});
    ASSERT_EQ(StudyDesk::run({"report", desk.file("plain")}).status, StatusDone);
    // A locale with a decimal comma, made here where the sources of locales are.
    const std::string make =
        "localedef -i de_DE -f UTF-8 '" + desk.file("de_DE.UTF-8") + "' >/dev/null 2>&1";
    const bool isMade = std::system(make.c_str()) == 0; // NOLINT: one thread
    const korvane::test::EnvironmentVariable path("LOCPATH", desk.file("").c_str());
    const korvane::test::EnvironmentVariable locale("LC_ALL", isMade ? "de_DE.UTF-8" : "C.UTF-8");
    if (isMade) {
        const std::string comma = "test \"$(locale decimal_point)\" = ,";
        EXPECT_EQ(std::system(comma.c_str()), 0); // NOLINT: one thread
    }
    const korvane::test::EnvironmentVariable zone("TZ", "Asia/Kathmandu");
    auto arguments = runArguments(desk, "plain.toml", "other");
    arguments.push_back("--csv");
    EXPECT_EQ(waitFor(start(arguments)), 0);
    EXPECT_EQ(waitFor(start({"report", desk.file("other")})), 0);
    for (const char* file : {"/results.csv", "/report.html", "/summary.json"}) {
        EXPECT_EQ(bytesOf(desk, std::string("other") + file),
                  bytesOf(desk, std::string("plain") + file))
            << file;
    }
    EXPECT_EQ(desk.variants("other"), desk.variants("plain"));
    const std::string all = "SELECT * FROM statistics ORDER BY rowid";
    EXPECT_EQ(desk.rows("other", all), desk.rows("plain", all));
    const std::string provenance = "SELECT * FROM provenance ORDER BY key";
    EXPECT_EQ(desk.rows("other", provenance), desk.rows("plain", provenance));
}

TEST(Run, WrongUsageHasItsStatus) {
    const StudyDesk desk;
    desk.write("s.toml", sample(5));
    EXPECT_EQ(StudyDesk::run({}).status, StatusUsage);
    EXPECT_EQ(StudyDesk::run({"walk"}).status, StatusUsage);
    EXPECT_EQ(StudyDesk::run({"run", desk.file("s.toml")}).status, StatusUsage);
    for (const char* part : {"0/2", "3/2", "1", "1/", "a/b", "1/2x", "-1/2"}) {
        auto arguments = runArguments(desk, "s.toml", "o");
        arguments.insert(arguments.end(), {"--part", part});
        EXPECT_EQ(StudyDesk::run(arguments).status, StatusUsage) << part;
    }
    EXPECT_FALSE(fs::exists(desk.file("o")));
    EXPECT_EQ(StudyDesk::run({"--version"}).status, StatusDone);
    EXPECT_EQ(StudyDesk::run({"--help"}).status, StatusDone);
}

TEST(Run, ASearchCannotBeShared) {
    const StudyDesk desk;
    desk.write("s.toml", head("reliability") + friction("distribution = \"Normal(32, 2)\"") +
                             limit("deep", "penetration > 14"));
    auto arguments = runArguments(desk, "s.toml", "o");
    arguments.insert(arguments.end(), {"--part", "1/2"});
    const CommandRun run = StudyDesk::run(arguments);
    EXPECT_EQ(run.status, StatusUsage);
    EXPECT_THAT(run.err, HasSubstr("no variants to share"));
}

} // namespace korvane::study::test
