// Text files: line ends, failures as run-time errors, saves that leave the old file whole.
#include "runtime/file_text.h"

#include "runtime/runtime_error.h"
#include "support/faulty_machine.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>

namespace korvane {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using test::LockedFolder;
using test::OrdinaryUser;
using test::SmallDisk;
using test::TemporaryFolder;

/// The run-time error of an action, which must name `path`; 0 where there is none.
int faultOf(const fs::path& path, const auto& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.fileName(), path.string());
        EXPECT_TRUE(error.isFileFault());
        return error.number();
    }
    return 0;
}

int entriesIn(const fs::path& folder) {
    int count = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder)) {
        ++count;
    }
    return count;
}

int modeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return static_cast<int>(status.st_mode & 07777);
}

struct CodeRow {
    int code;
    int number;
};

TEST(FileErrorNumber, IsTheReasonThatTheSystemGives) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a";
    for (const CodeRow& row :
         {CodeRow{ENOENT, 53}, CodeRow{ENOTDIR, 76}, CodeRow{EACCES, 70}, CodeRow{EPERM, 70},
          CodeRow{EROFS, 70}, CodeRow{ENOSPC, 61}, CodeRow{EDQUOT, 61}, CodeRow{EFBIG, 61},
          CodeRow{EIO, 57}, CodeRow{ENXIO, 71}, CodeRow{ENODEV, 71}, CodeRow{ENAMETOOLONG, 52},
          CodeRow{EINVAL, 52}, CodeRow{EISDIR, 75}, CodeRow{EMFILE, 67}, CodeRow{ENFILE, 67}}) {
        EXPECT_EQ(fileErrorNumber(row.code, path), row.number) << row.code;
    }
    EXPECT_EQ(fileErrorNumber(ENOENT, path / "b"), 76);
}

TEST(SplitLines, TakesEveryKindOfLineEnd) {
    EXPECT_EQ(splitLines("a\nb\nc\n"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(splitLines("a\r\nb\r\nc\r\n"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(splitLines("a\rb\rc\r"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(splitLines("a\nb\r\nc\rd"), (Lines{"a", "b", "c", "d"}));
}

TEST(SplitLines, KeepsEmptyLines) {
    EXPECT_EQ(splitLines("\n"), (Lines{""}));
    EXPECT_EQ(splitLines("\n\na\n\n"), (Lines{"", "", "a", ""}));
    EXPECT_EQ(splitLines("\r\n\r\na"), (Lines{"", "", "a"}));
    EXPECT_EQ(splitLines("\n\r"), (Lines{"", ""}));
}

TEST(SplitLines, ALastLineNeedsNoLineEnd) {
    EXPECT_EQ(splitLines("a\nb"), (Lines{"a", "b"}));
    EXPECT_EQ(splitLines(""), Lines{});
}

TEST(SplitLines, DropsAMarkAtTheStartAlone) {
    EXPECT_EQ(splitLines("\xEF\xBB\xBF"
                         "a\nb"),
              (Lines{"a", "b"}));
    EXPECT_EQ(splitLines("a\n\xEF\xBB\xBF"
                         "b"),
              (Lines{"a", "\xEF\xBB\xBF"
                          "b"}));
    EXPECT_EQ(splitLines("\xEF\xBB\xBF"), Lines{});
    EXPECT_EQ(splitLines("\xEF\xBB"), (Lines{"\xEF\xBB"}));
}

TEST(SplitLines, PassesAllOtherBytesUnchanged) {
    const std::string odd("\x01\x00\xFC\xFF\t", 5);
    EXPECT_EQ(splitLines(odd + "\n"), (Lines{odd}));
}

TEST(ReadFile, GivesTheBytesAsTheyStand) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.dat";
    std::string text("\xEF\xBB\xBF line\r\n\x00\xFF", 11);
    for (int i = 0; i < 20000; ++i) {
        text += "0123456789\n";
    }
    writeFile(path, text);
    EXPECT_EQ(readFile(path), text);
    writeFile(path, "");
    EXPECT_EQ(readFile(path), "");
}

TEST(ReadFile, TellsAMissingFileFromAMissingFolder) {
    const TemporaryFolder folder;
    const fs::path missing = folder.path() / "none.dat";
    const fs::path lost = folder.path() / "none" / "a.dat";
    EXPECT_EQ(faultOf(missing, [&] { readFile(missing); }), 53);
    EXPECT_EQ(faultOf(lost, [&] { readFile(lost); }), 76);
    EXPECT_EQ(faultOf("none.dat", [] { readFile("none.dat"); }), 53);
    writeFile(missing, "a file");
    EXPECT_EQ(faultOf(missing / "a.dat", [&] { readFile(missing / "a.dat"); }), 76);
}

TEST(ReadFile, RefusesAFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(faultOf(folder.path(), [&] { readFile(folder.path()); }), 75);
}

TEST(WriteFile, EmptiesWhatIsThere) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.out";
    writeFile(path, "a long first text\n");
    writeFile(path, "short\n");
    EXPECT_EQ(readFile(path), "short\n");
}

TEST(ReadFile, TellsThatTooManyFilesAreOpen) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.dat";
    writeFile(path, "x");
    rlimit old{};
    getrlimit(RLIMIT_NOFILE, &old);
    rlimit none = old;
    none.rlim_cur = 0;
    setrlimit(RLIMIT_NOFILE, &none);
    const int fault = faultOf(path, [&] { readFile(path); });
    setrlimit(RLIMIT_NOFILE, &old);
    EXPECT_EQ(fault, 67);
    EXPECT_STREQ(runtimeErrorText(67), "Too many open files");
}

TEST(ReadInputFile, RefusesFoldersDevicesAndLargeFilesUnread) {
    const TemporaryFolder folder;
    EXPECT_EQ(faultOf(folder.path(), [&] { readInputFile(folder.path()); }), FolderAsInput);
    EXPECT_EQ(faultOf("/dev/zero", [] { readInputFile("/dev/zero"); }), DeviceAsInput);
    const fs::path path = folder.path() / "a.dat";
    writeFile(path, "'A\n");
    EXPECT_EQ(readInputFile(path), "'A\n");
    fs::resize_file(path, 64 * 1024 * 1024 + 1);
    EXPECT_EQ(faultOf(path, [&] { readInputFile(path); }), InputTooLarge);
}

// Nobody writes to the pipe: whoever opened it to read would wait for ever.
TEST(ReadInputFile, RefusesAPipeOrSocketWhereNobodyIsToWait) {
    const TemporaryFolder folder;
    const fs::path pipe = folder.path() / "pipe.dat";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(faultOf(pipe, [&] { readInputFile(pipe, Pipes::Refuse); }), PipeAsInput);
    const fs::path link = folder.path() / "link.dat";
    fs::create_symlink(pipe, link);
    EXPECT_EQ(faultOf(link, [&] { readInputFile(link, Pipes::Refuse); }), PipeAsInput);
}

TEST(ReadPlainFile, RefusesLinksWhereToldAndWaitsAtNoPipe) {
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "a.ooo";
    const fs::path link = folder.path() / "link.ooo";
    const fs::path pipe = folder.path() / "pipe.ooo";
    writeFile(file, "report\n");
    fs::create_symlink(file, link);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(readPlainFile(file, Links::Refuse), "report\n");
    EXPECT_EQ(readPlainFile(link, Links::Follow), "report\n");
    EXPECT_EQ(faultOf(link, [&] { readPlainFile(link, Links::Refuse); }), 75);
    EXPECT_EQ(faultOf(pipe, [&] { readPlainFile(pipe, Links::Follow); }), 75);
    EXPECT_EQ(faultOf(folder.path(), [&] { readPlainFile(folder.path(), Links::Follow); }), 75);
    EXPECT_EQ(faultOf("/none/a", [] { readPlainFile("/none/a", Links::Follow); }), 76);
}

TEST(SaveFile, DoesNotWaitForTheReaderOfAPipe) {
    const TemporaryFolder folder;
    const fs::path pipe = folder.path() / "pipe.out";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(faultOf(pipe, [&] { saveFile(pipe, "text"); }), 71);
    EXPECT_EQ(faultOf(pipe, [&] { appendFile(pipe, "text"); }), 71);
}

TEST(ReadInputFile, TakesAPipe) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    ASSERT_EQ(::write(ends[1], "'A\n", 3), 3);
    ::close(ends[1]);
    EXPECT_EQ(readInputFile("/dev/fd/" + std::to_string(ends[0])), "'A\n");
    ::close(ends[0]);
}

TEST(AppendFile, AddsAtTheEndAndMakesNoFile) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.out";
    EXPECT_EQ(faultOf(path, [&] { appendFile(path, "one\n"); }), 53);
    writeFile(path, "one\n");
    appendFile(path, "two\n");
    EXPECT_EQ(readFile(path), "one\ntwo\n");
}

TEST(AppendFile, AFullDiskLeavesTheFileAsItWas) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.out";
    const std::string before(60000, 'o');
    writeFile(path, before);
    {
        const SmallDisk disk(1 << 16); // takes 5536 bytes more
        EXPECT_EQ(faultOf(path, [&] { appendFile(path, std::string(10000, 'n')); }), 61);
        appendFile(path, "short"); // for which there is room
    }
    EXPECT_EQ(readFile(path), before + "short");
}

TEST(AppendFile, TellsOfADeviceThatTakesNothing) {
    EXPECT_EQ(faultOf("/dev/full", [&] { appendFile("/dev/full", "text"); }), 61);
}

TEST(AppendFile, FollowsALinkOnlyWhereItMay) {
    const TemporaryFolder folder;
    const fs::path link = folder.path() / "link";
    writeFile(folder.path() / "a.out", "one\n");
    fs::create_symlink("a.out", link);
    EXPECT_EQ(faultOf(link, [&] { appendFile(link, "x", Links::Refuse); }), 75);
    appendFile(link, "two\n");
    EXPECT_EQ(readFile(folder.path() / "a.out"), "one\ntwo\n");
}

TEST(RewriteFile, FollowsNoLinkAndMakesNothing) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "TEMP0.iii";
    EXPECT_EQ(faultOf(path, [&] { rewriteFile(path, "x"); }), 53);
    EXPECT_EQ(entriesIn(folder.path()), 0);
    writeFile(path, "a long text");
    rewriteFile(path, "short");
    EXPECT_EQ(readFile(path), "short");
    const fs::path link = folder.path() / "TEMP1.iii";
    fs::create_symlink("TEMP0.iii", link);
    EXPECT_EQ(faultOf(link, [&] { rewriteFile(link, "x"); }), 75);
    EXPECT_EQ(readFile(path), "short");
}

TEST(OverwriteFile, ChangesOnlyTheBytesFromThePositionOn) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "ZZ10";
    writeFile(path, "0123456789");
    overwriteFile(path, 4, "ab");
    EXPECT_EQ(readFile(path), "0123ab6789");
    overwriteFile(path, 9, "xyz");
    EXPECT_EQ(readFile(path), "0123ab678xyz");
}

TEST(OverwriteFile, MakesNoFile) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "none";
    EXPECT_EQ(faultOf(path, [&] { overwriteFile(path, 0, "x"); }), 53);
    EXPECT_FALSE(fs::exists(path));
}

TEST(WriteFile, ReportsAFullDisk) {
    const fs::path full = "/dev/full";
    EXPECT_EQ(faultOf(full, [&] { writeFile(full, "x"); }), 61);
    EXPECT_EQ(faultOf(full, [&] { appendFile(full, "x"); }), 61);
    EXPECT_EQ(faultOf(full, [&] { saveFile(full, "x"); }), 61);
    EXPECT_TRUE(fs::is_character_file(full)); // the device itself is not replaced
}

TEST(WriteFile, ReportsAMissingFolderAndAFolderInTheWay) {
    const TemporaryFolder folder;
    const fs::path lost = folder.path() / "none" / "a.out";
    for (const auto write : {&writeFile, &rewriteFile, &saveFile}) {
        EXPECT_EQ(faultOf(lost, [&] { write(lost, "x"); }), 76);
        EXPECT_EQ(faultOf(folder.path(), [&] { write(folder.path(), "x"); }), 75);
    }
    EXPECT_EQ(entriesIn(folder.path()), 0);
}

TEST(WriteFile, ReportsAForbiddenFolder) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.out";
    fs::permissions(folder.path(), fs::perms(0555));
    {
        const OrdinaryUser user;
        for (const auto write : {&writeFile, &saveFile}) {
            EXPECT_EQ(faultOf(path, [&] { write(path, "x"); }), 70);
        }
        EXPECT_EQ(faultOf(path, [&] { createExclusively(path); }), 70);
    }
    fs::permissions(folder.path(), fs::perms(0755));
}

TEST(WriteFile, ReportsANameThatTheSystemCannotTake) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / std::string(300, 'n');
    EXPECT_EQ(faultOf(path, [&] { writeFile(path, "x"); }), 52);
    EXPECT_EQ(faultOf(path, [&] { saveFile(path, "x"); }), 52);
    EXPECT_EQ(entriesIn(folder.path()), 0);
}

TEST(SaveFile, MakesAndReplacesAndLeavesNothingBeside) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.dat";
    saveFile(path, "one\n");
    EXPECT_EQ(readFile(path), "one\n");
    saveFile(path, "two\n");
    EXPECT_EQ(readFile(path), "two\n");
    EXPECT_EQ(entriesIn(folder.path()), 1);
}

TEST(SaveFile, AFullDiskLeavesTheOldFileWhole) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.dat";
    saveFile(path, "the old file\n");
    const std::string large(1 << 20, 'x');
    int fault = 0;
    {
        const SmallDisk disk(1 << 16);
        fault = faultOf(path, [&] { saveFile(path, large); });
    }
    EXPECT_EQ(fault, 61);
    EXPECT_EQ(readFile(path), "the old file\n");
    EXPECT_EQ(entriesIn(folder.path()), 1);

    // The same disk does harm to a file that is written in place, so the limit was at work.
    {
        const SmallDisk disk(1 << 16);
        fault = faultOf(path, [&] { writeFile(path, large); });
    }
    EXPECT_EQ(fault, 61);
    EXPECT_EQ(fs::file_size(path), 1U << 16);
}

TEST(SaveFile, AFullDiskLeavesNoNewFile) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.dat";
    {
        const SmallDisk disk(1 << 16);
        EXPECT_EQ(faultOf(path, [&] { saveFile(path, std::string(1 << 20, 'x')); }), 61);
    }
    EXPECT_EQ(entriesIn(folder.path()), 0);
}

TEST(SaveFile, KeepsThePermissionsOfTheOldFile) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.dat";
    writeFile(path, "one\n");
    for (const int mode : {0600, 0640, 0664}) {
        fs::permissions(path, fs::perms(mode));
        saveFile(path, "two\n");
        EXPECT_EQ(modeOf(path), mode);
    }
}

TEST(SaveFile, DoesNotReplaceAFileThatMayNotBeWritten) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.dat";
    fs::permissions(folder.path(), fs::perms(0777));
    writeFile(path, "kept\n");
    fs::permissions(path, fs::perms(0444));
    {
        const OrdinaryUser user;
        EXPECT_EQ(faultOf(path, [&] { saveFile(path, "x"); }), 70);
    }
    EXPECT_EQ(readFile(path), "kept\n");
    EXPECT_EQ(entriesIn(folder.path()), 1);
}

TEST(SaveFile, ALinkStaysALinkAndItsTargetIsReplaced) {
    const TemporaryFolder folder;
    const fs::path data = folder.path() / "data";
    fs::create_directory(data);
    writeFile(data / "a.dat", "one\n");
    fs::create_symlink("data/a.dat", folder.path() / "link");
    fs::create_symlink(folder.path() / "link", folder.path() / "second");
    saveFile(folder.path() / "second", "two\n");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "link"));
    EXPECT_TRUE(fs::is_symlink(folder.path() / "second"));
    EXPECT_FALSE(fs::is_symlink(data / "a.dat"));
    EXPECT_EQ(readFile(data / "a.dat"), "two\n");
    EXPECT_EQ(entriesIn(data), 1);
}

TEST(SaveFile, ALinkToNothingGetsItsTarget) {
    const TemporaryFolder folder;
    const fs::path link = folder.path() / "link";
    fs::create_symlink("new.dat", link);
    saveFile(link, "one\n");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(readFile(folder.path() / "new.dat"), "one\n");
}

TEST(SaveFile, APipeThatOnlyTheSystemsOwnLinkNamesIsWrittenTo) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    saveFile("/dev/fd/" + std::to_string(ends[1]), "one\n");
    std::array<char, 8> block{};
    EXPECT_EQ(::read(ends[0], block.data(), block.size()), 4);
    EXPECT_STREQ(block.data(), "one\n");
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(SaveFile, LinksInACircleAreAFault) {
    const TemporaryFolder folder;
    const fs::path link = folder.path() / "a";
    fs::create_symlink("b", link);
    fs::create_symlink("a", folder.path() / "b");
    EXPECT_EQ(faultOf(link, [&] { saveFile(link, "x"); }), 75);
}

TEST(PendingFile, LeavesTheOldFileUntilItIsPlacedAndGoesWithoutThat) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.out";
    writeFile(path, "old\n");
    {
        const PendingFile pending(path, "new\n", Flush::None);
        EXPECT_EQ(readFile(path), "old\n");
        EXPECT_EQ(entriesIn(folder.path()), 2);
    }
    EXPECT_EQ(readFile(path), "old\n");
    EXPECT_EQ(entriesIn(folder.path()), 1);
    PendingFile pending(path, "new\n", Flush::None);
    pending.clearPlace();
    EXPECT_FALSE(fs::exists(path));
    pending.place();
    EXPECT_EQ(readFile(path), "new\n");
    EXPECT_EQ(entriesIn(folder.path()), 1);
}

TEST(PendingFile, ClearsNothingWhereNothingStoodInItsPlace) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.out";
    PendingFile pending(path, "new\n", Flush::None);
    writeFile(path, "of another program\n");
    pending.clearPlace();
    EXPECT_EQ(readFile(path), "of another program\n");
    pending.place();
    EXPECT_EQ(readFile(path), "new\n");
}

TEST(PendingFile, FindsAFolderInItsPlaceWhenItIsPlaced) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a.out";
    fs::create_directory(path);
    {
        PendingFile pending(path, "new\n", Flush::None);
        pending.clearPlace();
        EXPECT_EQ(faultOf(path, [&] { pending.place(); }), 75);
    }
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_EQ(entriesIn(folder.path()), 1);
}

TEST(OwnFiles, ThatCannotBeRemovedAreNotedOnce) {
    const OrdinaryUser user;
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "TEMP0.iii";
    writeFile(path, "x");
    {
        const LockedFolder locked(folder.path());
        removeOwnFile(path);
        removeOwnFile(folder.path() / "none");
        removeOwnFile(folder.path()); // a folder is no file of ours
    }
    const auto left = takeFilesLeft();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].fileName(), path.string());
    EXPECT_EQ(left[0].number(), 70);
    EXPECT_TRUE(takeFilesLeft().empty());
    removeOwnFile(path);
    EXPECT_TRUE(takeFilesLeft().empty());
    EXPECT_EQ(entriesIn(folder.path()), 0);
}

TEST(PendingFile, ThatCannotBeRemovedIsNoted) {
    const OrdinaryUser user;
    const TemporaryFolder folder;
    {
        const PendingFile pending(folder.path() / "a.out", "new\n", Flush::None);
        fs::permissions(folder.path(), fs::perms(0555));
    }
    const auto left = takeFilesLeft();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].number(), 70);
    EXPECT_EQ(readFile(left[0].fileName()), "new\n");
    fs::permissions(folder.path(), fs::perms(0755));
}

TEST(PendingFile, ThoseAbandonedThatCannotBeRemovedAreNoted) {
    const OrdinaryUser user;
    const TemporaryFolder folder;
    const PendingFile pending(folder.path() / "a.out", "new\n", Flush::None);
    EXPECT_EXIT( // no file can be made any more in that process
        {
            const LockedFolder locked(folder.path());
            abandonPendingFiles();
            const auto left = takeFilesLeft();
            std::_Exit(left.size() == 1 && left[0].number() == 70 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    fs::permissions(folder.path(), fs::perms(0755));
}

TEST(CreateExclusively, MakesAnEmptyFileForTheUserAlone) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "TEMP1.iii";
    EXPECT_TRUE(createExclusively(path));
    EXPECT_EQ(fs::file_size(path), 0U);
    EXPECT_EQ(modeOf(path), 0600);
}

TEST(CreateExclusively, TakesNoNameThatIsTaken) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "a";
    writeFile(path, "kept");
    EXPECT_FALSE(createExclusively(path));
    EXPECT_EQ(readFile(path), "kept");
    EXPECT_FALSE(createExclusively(folder.path()));
}

TEST(CreateExclusively, FollowsNoLink) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "a", "kept");
    fs::create_symlink("a", folder.path() / "link");
    fs::create_symlink("nothing", folder.path() / "dangling");
    EXPECT_FALSE(createExclusively(folder.path() / "link"));
    EXPECT_FALSE(createExclusively(folder.path() / "dangling"));
    EXPECT_EQ(readFile(folder.path() / "a"), "kept");
    EXPECT_FALSE(fs::exists(folder.path() / "nothing"));
}

TEST(CreateExclusively, AMissingFolderIsAFault) {
    const TemporaryFolder folder;
    const fs::path path = folder.path() / "none" / "a";
    EXPECT_EQ(faultOf(path, [&] { createExclusively(path); }), 76);
}

} // namespace
} // namespace korvane
