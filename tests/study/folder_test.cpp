// Folders that kills, full disks and other processes leave: whose they are, and that no row is
// lost.
#include "study_desk.h"
#include "study_process.h"

#include "study/command_line.h"
#include "study/folder.h"
#include "study/store.h"

#include "support/faulty_machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sqlite3.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include <sys/wait.h>

namespace korvane::study::test {

using testing::AnyOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

namespace fs = std::filesystem;

std::string sample(int size, int seed = 1) {
    return head("sample", "size = " + std::to_string(size) + "\nseed = " + std::to_string(seed)) +
           friction("distribution = \"Normal(32, 2)\"");
}

std::vector<std::string> words(const StudyDesk& desk, const std::string& study,
                               const std::string& output, const std::string& part = "1/1") {
    return {"run", desk.file(study), "--output", desk.file(output), "--quiet", "--jobs",
            "1",   "--part",         part};
}

/// The rows of a run in one piece.
std::vector<TextRow> wholeRows(const std::string& text) {
    const StudyDesk desk;
    desk.runStudy(text, "o");
    return desk.variants("o");
}

std::string partFile(int part, int parts) {
    return "o/" + fileOfPart(static_cast<std::uint64_t>(part), static_cast<std::uint64_t>(parts));
}

} // namespace

TEST(Folder, AnEmptyFileIsAsGoodAsNone) {
    const std::string text = sample(50);
    for (const char* part : {"1/1", "1/2"}) {
        const StudyDesk desk;
        desk.write("s.toml", text);
        fs::create_directory(desk.file("o"));
        desk.write(std::string(part) == "1/1" ? "o/results.sqlite" : partFile(1, 2), "");
        const CommandRun run = StudyDesk::run(words(desk, "s.toml", "o", part));
        EXPECT_EQ(run.status, StatusDone) << run.err;
    }
    // Another task of the study that sees it is not disturbed, and the collection names it.
    const StudyDesk desk;
    desk.write("s.toml", text);
    fs::create_directory(desk.file("o"));
    desk.write(partFile(1, 2), "");
    EXPECT_EQ(StudyDesk::run(words(desk, "s.toml", "o", "2/2")).status, StatusDone);
    const CommandRun collected = StudyDesk::run({"collect", desk.file("o")});
    EXPECT_EQ(collected.status, StatusFault);
    EXPECT_THAT(collected.err, HasSubstr("part-1-of-2.sqlite is not finished"));
    EXPECT_EQ(StudyDesk::run(words(desk, "s.toml", "o", "1/2")).status, StatusDone);
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("o")}).status, StatusDone);
    EXPECT_EQ(desk.variants("o"), wholeRows(text));
}

TEST(Folder, KilledAsItsFilesAreMadeItGoesOn) {
    const std::string text = sample(500);
    const auto expected = wholeRows(text);
    // The program takes some milliseconds to its first file: kills spread over all of that.
    for (int wait = 0; wait < 10; ++wait) {
        const StudyDesk desk;
        desk.write("s.toml", text);
        const pid_t child = start(words(desk, "s.toml", "o"));
        while (!fs::exists(desk.file("o")) && isRunning(child)) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::microseconds(1000 * wait * wait));
        kill(child, SIGKILL);
        waitFor(child);
        const CommandRun run = StudyDesk::run(words(desk, "s.toml", "o"));
        ASSERT_EQ(run.status, StatusDone) << wait << " " << run.err;
        ASSERT_EQ(desk.variants("o"), expected) << wait;
    }
}

TEST(Folder, ANumberThatHasChangedIsDamage) {
    const StudyDesk desk;
    const std::string text = sample(300);
    desk.runStudy(text, "o");
    desk.rows("o", "UPDATE variants SET penetration = 99 WHERE id = 250");
    desk.write("s.toml", text);
    const std::vector<std::vector<std::string>> commands{words(desk, "s.toml", "o"),
                                                         {"report", desk.file("o")}};
    for (const std::vector<std::string>& command : commands) {
        const CommandRun run = StudyDesk::run(command);
        EXPECT_EQ(run.status, StatusFault);
        EXPECT_THAT(run.err, HasSubstr("results.sqlite is damaged (rows have changed)"));
    }
    // Of a part the collection tells it.
    desk.runStudy(text, "parts", {"--part", "1/2"});
    desk.runStudy(text, "parts", {"--part", "2/2"});
    desk.rows("parts", "UPDATE variants SET outcome = 'failed' WHERE id = 3", "part-1-of-2.sqlite");
    const CommandRun run = StudyDesk::run({"collect", desk.file("parts")});
    EXPECT_EQ(run.status, StatusFault);
    EXPECT_THAT(run.err, HasSubstr("part-1-of-2.sqlite is damaged (rows have changed)"));
}

TEST(Folder, ADiskThatIsFullFromTheStartLeavesNothingInTheWay) {
    for (const long bytes : {0L, 100L, 5000L, 20000L}) {
        const StudyDesk desk;
        desk.write("s.toml", sample(2000));
        {
            const korvane::test::SmallDisk disk(static_cast<rlim_t>(bytes));
            const CommandRun run = StudyDesk::run(words(desk, "s.toml", "o"));
            EXPECT_EQ(run.status, StatusFault) << bytes;
            for (const fs::directory_entry& entry : fs::directory_iterator(desk.file("o"))) {
                EXPECT_FALSE(entry.path().filename().string().starts_with("study.id."));
            }
        }
        const CommandRun run = StudyDesk::run(words(desk, "s.toml", "o"));
        EXPECT_EQ(run.status, StatusDone) << run.err;
        EXPECT_EQ(desk.variants("o"), wholeRows(sample(2000)));
    }
}

TEST(Folder, PartsStartedTogetherAllEndWell) {
    const std::string text = sample(800);
    const auto expected = wholeRows(text);
    for (int round = 0; round < 5; ++round) {
        const StudyDesk desk;
        desk.write("s.toml", text);
        std::vector<pid_t> children;
        for (int part = 1; part <= 8; ++part) {
            children.push_back(start(words(desk, "s.toml", "o", std::to_string(part) + "/8")));
        }
        for (const pid_t child : children) {
            EXPECT_EQ(waitFor(child), 0);
        }
        EXPECT_EQ(StudyDesk::run({"collect", desk.file("o")}).status, StatusDone);
        EXPECT_EQ(desk.variants("o"), expected);
    }
}

TEST(Folder, AnotherStudyIsKeptOutByADamagedPartAsWell) {
    const StudyDesk desk;
    desk.runStudy(sample(50), "o", {"--part", "1/4"});
    desk.write(partFile(1, 4), "This is no database at all, although it has the name of one.");
    desk.write("b.toml", sample(50, 2));
    const CommandRun run = StudyDesk::run(words(desk, "b.toml", "o", "4/4"));
    EXPECT_EQ(run.status, StatusUsage);
    EXPECT_THAT(run.err, HasSubstr("holds rows of another study"));
    EXPECT_FALSE(fs::exists(desk.file(partFile(4, 4))));
}

TEST(Folder, AnotherStudyIsKeptOutByAPartThatItsRunHolds) {
    const StudyDesk desk;
    desk.runStudy(sample(50), "o", {"--part", "1/4"});
    desk.write("b.toml", sample(50, 2));
    sqlite3* holder = nullptr;
    sqlite3_open(desk.file(partFile(1, 4)).c_str(), &holder);
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    const CommandRun run = StudyDesk::run(words(desk, "b.toml", "o", "4/4"));
    sqlite3_close(holder);
    EXPECT_EQ(run.status, StatusUsage);
    EXPECT_FALSE(fs::exists(desk.file(partFile(4, 4))));
}

TEST(Folder, AnotherStudyIsKeptOutByTheSecondPartWhereTheFirstIsDamaged) {
    // Parts that were copied into a folder, which has no file that tells whose it is.
    const StudyDesk desk;
    desk.runStudy(sample(50), "o", {"--part", "1/4"});
    desk.runStudy(sample(50), "o", {"--part", "2/4"});
    fs::remove(desk.file("o/study.id"));
    desk.write("b.toml", sample(50, 2));
    for (const int damaged : {1, 2}) {
        const std::string bytes = desk.read(partFile(damaged, 4));
        desk.write(partFile(damaged, 4), "no database");
        EXPECT_EQ(StudyDesk::run(words(desk, "b.toml", "o", "4/4")).status, StatusUsage);
        desk.write(partFile(damaged, 4), bytes);
    }
    EXPECT_FALSE(fs::exists(desk.file(partFile(4, 4))));
}

TEST(Folder, AFolderWithoutRowsCanBeTakenOver) {
    const StudyDesk desk;
    desk.runStudy(sample(50), "o");
    fs::remove(desk.file("o/results.sqlite"));
    desk.runStudy(sample(60, 2), "o");
    EXPECT_EQ(desk.variants("o").size(), 60U);
    desk.write("o/study.id", "KORVANE stu"); // written by half
    desk.runStudy(sample(60, 2), "o");
}

TEST(Folder, MissingRowsAreDamage) {
    const StudyDesk desk;
    for (const char* part : {"1/2", "2/2"}) {
        desk.runStudy(sample(1000), "o", {"--part", part});
    }
    const std::string file = "part-1-of-2.sqlite";
    const std::string whole = desk.read("o/" + file);
    for (const char* lost : {"id IN (7, 8, 9)", "id = 0", "id = 499"}) {
        desk.rows("o", std::string("DELETE FROM variants WHERE ") + lost, file);
        const CommandRun run = StudyDesk::run({"collect", desk.file("o")});
        EXPECT_EQ(run.status, StatusFault) << lost;
        EXPECT_THAT(run.err, HasSubstr(file + " is damaged (rows are missing)")) << lost;
        EXPECT_FALSE(fs::exists(desk.file("o/results.sqlite")));
        desk.write("o/" + file, whole);
    }
    desk.rows("o", "UPDATE variants SET id = 5000 WHERE id = 499", file);
    const CommandRun run = StudyDesk::run({"collect", desk.file("o")});
    EXPECT_EQ(run.status, StatusFault);
    EXPECT_THAT(run.err, HasSubstr(file + " is damaged (it has rows beyond its share)"));
}

TEST(Folder, AHoleInAnUnfinishedFileIsDamage) {
    const StudyDesk desk;
    desk.runStudy(sample(1000), "o");
    desk.rows("o", "UPDATE provenance SET value = 'no' WHERE key = 'complete'");
    desk.rows("o", "DELETE FROM variants WHERE id > 600 OR id = 5");
    const CommandRun run = StudyDesk::run(words(desk, "o.toml", "o"));
    EXPECT_EQ(run.status, StatusFault);
    EXPECT_THAT(run.err, HasSubstr("results.sqlite is damaged (rows are missing)"));
}

TEST(Folder, AMissingTableIsDamage) {
    for (const std::string table : {"variants", "variables", "statistics"}) {
        const StudyDesk desk;
        desk.runStudy(sample(10), "o");
        desk.rows("o", "DROP TABLE " + table);
        for (const std::vector<std::string>& arguments :
             {words(desk, "o.toml", "o"), std::vector<std::string>{"report", desk.file("o")}}) {
            const CommandRun run = StudyDesk::run(arguments);
            EXPECT_EQ(run.status, StatusFault) << table;
            EXPECT_THAT(run.err, HasSubstr("is damaged (it has no table " + table));
        }
    }
}

TEST(Folder, TwoCollectionsAtOnceDoNotSpoilEachOther) {
    const std::string text = sample(6000);
    const auto expected = wholeRows(text);
    const StudyDesk desk;
    for (const char* part : {"1/2", "2/2"}) {
        desk.runStudy(text, "o", {"--part", part});
    }
    for (int round = 0; round < 6; ++round) {
        fs::remove(desk.file("o/results.sqlite"));
        const pid_t first = start({"collect", desk.file("o")});
        std::this_thread::sleep_for(std::chrono::milliseconds(15 * round));
        const pid_t second = start({"collect", desk.file("o")});
        const int ends[] = {waitFor(first), waitFor(second)};
        EXPECT_TRUE(ends[0] == 0 || ends[1] == 0) << round;
        for (const int end : ends) {
            ASSERT_TRUE(WIFEXITED(end));
            EXPECT_THAT(WEXITSTATUS(end), AnyOf(StatusDone, StatusFault));
        }
        EXPECT_EQ(desk.variants("o"), expected) << round;
        EXPECT_FALSE(fs::exists(desk.file("o/collect.lock")));
    }
}

TEST(Folder, ACollectionIsKeptOutByAnother) {
    const StudyDesk desk;
    desk.runStudy(sample(10), "o", {"--part", "1/2"});
    desk.runStudy(sample(10), "o", {"--part", "2/2"});
    {
        const CollectionLock lock(desk.file("o"));
        const CommandRun run = StudyDesk::run({"collect", desk.file("o")});
        EXPECT_EQ(run.status, StatusFault);
        EXPECT_THAT(run.err, HasSubstr("is being collected by another run"));
    }
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("o")}).status, StatusDone);
}

TEST(Folder, AKilledCollectionIsBegunAnew) {
    const std::string text = sample(6000);
    const auto expected = wholeRows(text);
    const StudyDesk desk;
    for (const char* part : {"1/2", "2/2"}) {
        desk.runStudy(text, "o", {"--part", part});
    }
    for (int wait = 0; wait < 6; ++wait) {
        fs::remove(desk.file("o/results.sqlite"));
        const pid_t child = start({"collect", desk.file("o")});
        while (!fs::exists(desk.file("o/collecting.sqlite")) && isRunning(child)) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10 * wait));
        kill(child, SIGKILL);
        waitFor(child);
        EXPECT_EQ(StudyDesk::run({"collect", desk.file("o")}).status, StatusDone) << wait;
        EXPECT_EQ(desk.variants("o"), expected) << wait;
        EXPECT_FALSE(fs::exists(desk.file("o/collecting.sqlite")));
    }
}

TEST(Folder, AFullDiskInTheCollectionLeavesTheParts) {
    const std::string text = sample(6000);
    const StudyDesk desk;
    for (const char* part : {"1/2", "2/2"}) {
        desk.runStudy(text, "o", {"--part", part});
    }
    {
        const korvane::test::SmallDisk disk(100000);
        const CommandRun run = StudyDesk::run({"collect", desk.file("o")});
        EXPECT_EQ(run.status, StatusFault);
        EXPECT_THAT(run.err, HasSubstr("collecting.sqlite: "));
        EXPECT_FALSE(fs::exists(desk.file("o/results.sqlite")));
    }
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("o")}).status, StatusDone);
    EXPECT_EQ(desk.variants("o"), wholeRows(text));
}

TEST(Folder, AFullDiskInTheStatisticsLeavesTheRows) {
    // Statistics of 13 values need pages of their own, behind those of the rows.
    const std::string text =
        head("fragility", "size = 20\noutputs = \"penetration\"\nalong = \"factor\"") +
        friction("distribution = \"Normal(32, 2)\"") +
        variable("factor", "fields = \"FSPassive\"\nrange = [1, 1.6, 0.05]") +
        limit("deep", "penetration > 14");
    const std::string statistics = "SELECT * FROM statistics ORDER BY rowid";
    const StudyDesk whole;
    whole.runStudy(text, "o");
    constexpr std::uintmax_t Page = 4096;
    const auto room = static_cast<rlim_t>(fs::file_size(whole.file("o/results.sqlite")) - Page);
    const auto expectRefused = [&](const StudyDesk& desk, const std::vector<std::string>& command,
                                   const std::string& file) {
        const korvane::test::SmallDisk disk(room);
        const CommandRun run = StudyDesk::run(command);
        EXPECT_EQ(run.status, StatusFault);
        EXPECT_THAT(run.err, StartsWith("korvane-study: " + desk.file(file) + ": "));
    };
    const auto expectWhole = [&](const StudyDesk& desk, const std::vector<std::string>& command) {
        const CommandRun run = StudyDesk::run(command);
        EXPECT_EQ(run.status, StatusDone) << run.err;
        EXPECT_EQ(desk.variants("o"), whole.variants("o"));
        EXPECT_EQ(desk.rows("o", statistics), whole.rows("o", statistics));
    };

    const StudyDesk desk;
    desk.write("s.toml", text);
    expectRefused(desk, words(desk, "s.toml", "o"), "o/results.sqlite");
    EXPECT_EQ(desk.variants("o"), whole.variants("o"));
    EXPECT_TRUE(desk.rows("o", statistics).empty());
    expectWhole(desk, words(desk, "s.toml", "o"));

    const StudyDesk parts;
    for (const char* part : {"1/2", "2/2"}) {
        parts.runStudy(text, "o", {"--part", part});
    }
    const std::vector<std::string> collect{"collect", parts.file("o"), "--quiet"};
    expectRefused(parts, collect, "o/collecting.sqlite");
    EXPECT_FALSE(fs::exists(parts.file("o/results.sqlite")));
    expectWhole(parts, collect);
}

} // namespace korvane::study::test
