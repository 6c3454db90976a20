// The outputs of an input: all of this run or all of an earlier one.
#include "batch_run.h"
#include "runtime/file_text.h"
#include "support/faulty_machine.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <new>

#include <sys/stat.h>

namespace {

std::atomic<long> allocations{0};
std::atomic<long> failing{-1}; ///< the number of the first allocation that fails
std::atomic<long> inRow{1};    ///< how many fail one after the other

bool fails(long allocation) {
    return failing >= 0 && allocation >= failing && allocation < failing + inRow;
}

} // namespace

// Some allocations of this program can be made to fail.
void* operator new(std::size_t size) {
    void* room = fails(allocations++) ? nullptr : std::malloc(size);
    if (room == nullptr) {
        throw std::bad_alloc();
    }
    return room;
}

void operator delete(void* room) noexcept {
    std::free(room);
}

void operator delete(void* room, std::size_t /*size*/) noexcept {
    std::free(room);
}

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

/// The user's files but the input.
std::map<std::string, std::string> outputs(const BatchOffice& office) {
    std::map<std::string, std::string> all;
    for (const std::string& name : office.files()) {
        if (name != "a.dat") {
            all[name] = fs::is_directory(office.file(name)) ? "a folder" : office.read(name);
        }
    }
    return all;
}

} // namespace

TEST(BatchOutputs, AFullDiskLeavesThoseOfAnEarlierRunWhole) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--json", "--plots", input}).status, 0);
    const auto before = outputs(office);
    ASSERT_GT(before.size(), 5U);
    fs::copy_file(sourceFile("examples/cantilever-clay.dat"), input,
                  fs::copy_options::overwrite_existing);
    for (const rlim_t bytes : {rlim_t{0}, rlim_t{1000}, rlim_t{10000}}) { // no file, plot, JSON
        const SmallDisk disk(bytes);
        const BatchRun run = office.run({"--json", "--plots", input});
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.err.find("Disk full"), std::string::npos) << bytes;
        EXPECT_TRUE(outputs(office) == before) << bytes;
    }
    EXPECT_EQ(office.run({"--json", "--plots", input}).status, 0);
    EXPECT_FALSE(outputs(office) == before);
}

TEST(BatchOutputs, AnInputThatCannotBeReadLeavesThoseOfAnEarlierRunWhole) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--json", input}).status, 0);
    const auto before = outputs(office);
    fs::resize_file(input, 64 * 1024 * 1024 + 1);
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("/ Larger than 64 MiB"), std::string::npos);
    EXPECT_TRUE(outputs(office) == before);
}

TEST(BatchOutputs, OneOfAnEarlierRunThatCannotBeReadLeavesAllWholeAndIsTold) {
    const OrdinaryUser user;
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--json", "--plots", input}).status, 0);
    const auto before = outputs(office);
    fs::copy_file(sourceFile("examples/cantilever-clay.dat"), input,
                  fs::copy_options::overwrite_existing);
    for (const char* unreadable : {"a-moment.svg", "a.json"}) {
        fs::permissions(office.file(unreadable), fs::perms(0000));
        const BatchRun run = office.run({input}); // neither is made anew
        fs::permissions(office.file(unreadable), fs::perms(0644));
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(
            run.err.find("[FILE ERROR] File: " + office.file(unreadable) + " / Permission denied"),
            std::string::npos)
            << run.err;
        EXPECT_TRUE(outputs(office) == before) << unreadable;
    }
    ASSERT_EQ(office.run({input}).status, 0);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out"}));
}

TEST(BatchOutputs, AFileThatCouldNotBeRemovedIsTold) {
    const OrdinaryUser user;
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    const TemporaryFolder other;
    const fs::path left = other.path() / ".korvane-1-0";
    writeFile(left, "");
    {
        const LockedFolder locked(other.path());
        removeOwnFile(left);
    }
    const BatchRun run = office.run({"--jobs", "1", input});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.err.find("[FILE ERROR] Temporary files could not be removed: / File: " +
                           left.string() + " / Permission denied"),
              std::string::npos)
        << run.err;
    EXPECT_TRUE(takeFilesLeft().empty());
}

// In a folder like /tmp one removes files of one's own alone.
TEST(BatchOutputs, OneOfAnEarlierRunThatCannotBeRemovedKeepsNewOnesFromTheirPlaces) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--json", "--plots", input}).status, 0);
    const auto before = outputs(office);
    const fs::path folder = fs::path(input).parent_path();
    fs::permissions(folder, fs::perms(01777));
    fs::permissions(input, fs::perms(0644));
    if (geteuid() == 0) { // the administrator alone can be another user
        const OrdinaryUser user;
        const BatchRun run = office.run({"--json", input}); // would take the figures away
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.err.find("[FILE ERROR] File: "), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("Permission denied"), std::string::npos) << run.err;
        EXPECT_TRUE(outputs(office) == before); // old figures beside the old report
    }
    EXPECT_EQ(office.run({"--json", input}).status, 0);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out", "a.json"}));
}

TEST(BatchOutputs, PlotsAndJsonOfAnEarlierRunGoWhereThisOneMakesNone) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--json", "--plots", input}).status, 0);
    ASSERT_TRUE(office.files().contains("a-moment.svg"));
    ASSERT_EQ(office.run({"--json", input}).status, 0);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out", "a.json"}));
    ASSERT_EQ(office.run({input}).status, 0);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out"}));
}

TEST(BatchOutputs, FilesOfTheirNamesThatAreOfAnotherHandStay) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    office.write("a.json", "{\"mine\": 1}\n");
    office.write("a-moment.svg", "<svg/>\n");
    office.write("ab-moment.svg", "<svg/>\n");
    ASSERT_EQ(office.run({input}).status, 0);
    EXPECT_EQ(office.read("a.json"), "{\"mine\": 1}\n");
    EXPECT_EQ(office.read("a-moment.svg"), "<svg/>\n");
    EXPECT_EQ(office.files().size(), 5U);
}

TEST(BatchOutputs, AnInputUnderTheNameOfAnOutputIsNeverTakenAway) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "w.dat");
    ASSERT_EQ(office.run({"--json", "--plots", input}).status, 0);
    const std::string json = office.read("w.json");
    const std::string figure = office.read("w-moment.svg");
    EXPECT_EQ(office.run({"--jobs", "1", input, office.file("w-moment.svg")}).status, 1);
    EXPECT_EQ(office.read("w-moment.svg"), figure);
    ASSERT_EQ(office.run({"--json", input}).status, 0);
    EXPECT_EQ(office.run({office.file("w.json")}).status, 1); // refused, and it stays
    EXPECT_EQ(office.read("w.json"), json);
}

TEST(BatchOutputs, APipeUnderTheNameOfAnOutputStopsNothing) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "w.dat");
    ASSERT_EQ(::mkfifo(office.file("w.json").c_str(), 0600), 0);
    EXPECT_EQ(office.run({input}).status, 0);
    EXPECT_TRUE(fs::is_fifo(office.file("w.json")));
}

TEST(BatchOutputs, ALinkThatLeadsNowhereUnderTheNameOfAnOutputStopsNothing) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "w.dat");
    for (const char* name : {"w.json", "w-shear.svg", "w.html"}) {
        fs::create_symlink("/nowhere/x", office.file(name));
    }
    EXPECT_EQ(office.run({input}).status, 0);
    EXPECT_TRUE(fs::exists(office.file("w.out")));
    EXPECT_TRUE(fs::is_symlink(office.file("w.json")));
}

TEST(BatchOutputs, AFolderInThePlaceOfOneStopsNoOther) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--json", "--plots", input}).status, 0);
    const auto whole = outputs(office);
    const auto solved = nlohmann::json::parse(whole.at("a.json"));
    ASSERT_FALSE(solved["levels"].empty());
    for (const char* blocked : {"a.out", "a-moment.svg", "a.json"}) {
        for (const auto& [name, text] : whole) {
            fs::remove(office.file(name));
        }
        fs::create_directory(office.file(blocked));
        const BatchRun run = office.run({"--json", "--plots", input});
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.err.find("File: " + office.file(blocked)), std::string::npos);
        auto now = outputs(office);
        EXPECT_EQ(now.size(), whole.size());
        if (now["a.json"] != "a folder") {
            const auto json = nlohmann::json::parse(now["a.json"]);
            EXPECT_EQ(json["status"], "failed");
            EXPECT_EQ(json["failure"]["code"], "file-fault");
            EXPECT_EQ(json["messages"].back()["title"], "FILE ERROR");
            for (const char* result : {"levels", "right", "left", "grid", "rowe", "notes"}) {
                EXPECT_EQ(json[result], solved[result]) << result; // the wall is solved
            }
        }
        for (const auto& [name, text] : whole) {
            EXPECT_TRUE(name == blocked || name == "a.json" || now[name] == text) << name;
        }
        fs::remove(office.file(blocked));
    }
}

TEST(BatchOutputs, ALinkStaysALinkWithPlotsAndJson) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    fs::create_directory(office.file("far"));
    for (const char* name : {"a.json", "a-moment.svg"}) {
        office.write(std::string("far/") + name, "old");
        fs::create_symlink(std::string("far/") + name, office.file(name));
    }
    EXPECT_EQ(office.run({"--json", "--plots", input}).status, 0);
    for (const char* name : {"a.json", "a-moment.svg"}) {
        EXPECT_TRUE(fs::is_symlink(office.file(name)));
        EXPECT_NE(office.read(std::string("far/") + name), "old");
    }
}

/// Runs an input while `row` allocations in a row fail, at 150 places of the run.
void expectAllOldOrAllNew(long row) {
    inRow = row;
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    const std::vector<std::string> arguments{"--json", "--plots", input};
    const long start = allocations;
    ASSERT_EQ(office.run(arguments).status, 0);
    const long all = allocations - start;
    const auto whole = outputs(office);
    int told = 0;
    for (long n = 0; n < all; n += std::max(1L, all / 150)) {
        for (const auto& [name, text] : whole) {
            office.write(name, "old");
        }
        int status = 70;
        failing = allocations + n;
        try {
            const BatchRun run = office.run(arguments);
            failing = -1;
            status = run.status;
            told += run.err.find("Out of memory") != std::string::npos ? 1 : 0;
        } catch (const std::bad_alloc&) { // outside the input, as `main` tells it
            failing = -1;
        }
        const auto now = outputs(office);
        const bool isNew = now.at("a.out") != "old";
        EXPECT_TRUE(status == 70 || (status == 0 && now == whole)) << n << " status " << status;
        for (const auto& [name, text] : now) {
            EXPECT_TRUE(isNew ? whole.count(name) == 1 && whole.at(name) == text : text == "old")
                << n << " " << name;
        }
    }
    EXPECT_GT(told, row == 1 ? 10 : -1); // the telling needs memory, too
}

TEST(BatchOutputs, MemoryThatIsMissingAnywhereLeavesAllOldOrAllNew) {
    expectAllOldOrAllNew(1);
}

TEST(BatchOutputs, MemoryThatStaysMissingEndsNoProcess) {
    expectAllOldOrAllNew(30);
}

} // namespace korvane::test
