#include "commands/run_record.h"

#include "runtime/file_text.h"
#include "runtime/run_guarded.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <optional>
#include <set>
#include <sstream>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvane {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view RecordName = "KORVANE-RUN-";
constexpr std::string_view CopyName = "KORVANE-RECOVERY-";
constexpr std::string_view CopyExtension = ".txt";
constexpr std::string_view AsideName = ".korvane-aside-"; // as CommandScope makes them
constexpr std::string_view PendingName = ".korvane-";     // as PendingFile makes them

fs::path recordPath(const fs::path& folder, int number) {
    return folder / (std::string(RecordName) + std::to_string(number));
}

fs::path copyPath(const fs::path& folder, int number) {
    return folder / (std::string(CopyName) + std::to_string(number) + std::string(CopyExtension));
}

/// Without a slash at its end, as the parent of a file's path.
fs::path plainFolder(const fs::path& folder) {
    return (folder / "").parent_path();
}

/// The number between a name's beginning and end, if that is all there is.
std::optional<int> numberIn(std::string_view name, std::string_view start, std::string_view end) {
    if (name.size() <= start.size() + end.size() || name.substr(0, start.size()) != start ||
        name.substr(name.size() - end.size()) != end) {
        return std::nullopt;
    }
    name.remove_prefix(start.size());
    name.remove_suffix(end.size());
    int number = 0;
    const auto [stopped, fault] = std::from_chars(name.data(), name.data() + name.size(), number);
    const bool whole = fault == std::errc() && stopped == name.data() + name.size();
    return whole && number >= 0 ? std::optional(number) : std::nullopt;
}

/// A plain file of this user and no link.
bool isOwnFile(const fs::path& path, struct stat& found) {
    return ::lstat(path.c_str(), &found) == 0 && S_ISREG(found.st_mode) &&
           found.st_uid == ::geteuid();
}

bool isOwnFile(const fs::path& path) {
    struct stat found {};
    return isOwnFile(path, found);
}

/// A folder of this user and no link.
bool isOwnFolder(const fs::path& path, struct stat& found) {
    return ::lstat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode) &&
           found.st_uid == ::geteuid();
}

enum class Make { No, New };

/// The lock of a record; nothing where a living process has it, where it is not this user's, or
/// where it cannot be made because it is there.
std::optional<RunClaim> claim(const fs::path& folder, int number, Make make) {
    const fs::path path = recordPath(folder, number);
    const int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    const int handle = ::open(path.c_str(), make == Make::New ? flags | O_CREAT | O_EXCL : flags,
                              S_IRUSR | S_IWUSR);
    if (handle < 0) {
        if (make == Make::New && errno != EEXIST && errno != ELOOP) {
            throw RuntimeError(fileErrorNumber(errno, path), path.string());
        }
        return std::nullopt;
    }
    RunClaim claimed(handle, folder, number);
    struct stat held {};
    struct stat named {};
    // Between opening and locking another program may have swept the file away.
    const bool mine = ::fstat(handle, &held) == 0 && ::flock(handle, LOCK_EX | LOCK_NB) == 0 &&
                      isOwnFile(path, named) && held.st_dev == named.st_dev &&
                      held.st_ino == named.st_ino;
    return mine ? std::optional(std::move(claimed)) : std::nullopt;
}

/// What a record tells.
struct Listing {
    struct File { ///< or folder
        unsigned long long device;
        unsigned long long inode;
        std::string name;
    };
    long process = 0;
    std::vector<File> files;
};

std::string listingText(const TemporaryFiles& files) {
    std::string text = std::to_string(::getpid()) + "\n";
    const auto add = [&text](const struct stat& found, const std::string& name) {
        text +=
            std::to_string(found.st_dev) + " " + std::to_string(found.st_ino) + " " + name + "\n";
    };
    struct stat found {};
    for (const std::string& name : files.ScratchFileList) {
        if (!name.empty() && isOwnFile(name, found)) {
            add(found, name);
        }
    }
    if (!files.StudyFolder.empty() && isOwnFolder(files.StudyFolder, found)) {
        add(found, files.StudyFolder);
    }
    return text;
}

Listing readListing(const fs::path& record) {
    Listing listing;
    std::istringstream lines(readPlainFile(record, Links::Refuse));
    std::string line;
    std::getline(lines, line);
    std::istringstream(line) >> listing.process;
    while (std::getline(lines, line) && !lines.eof()) { // a line without its end is unfinished
        std::istringstream words(line);
        Listing::File file{};
        words >> file.device >> file.inode;
        words.get();
        if (std::getline(words, file.name)) {
            listing.files.push_back(file);
        }
    }
    return listing;
}

/// What must stay: of the programs that live.
struct Living {
    std::set<std::string> files;
    std::set<long> processes;

    void add(const Listing& listing) {
        processes.insert(listing.process);
        for (const auto& file : listing.files) {
            files.insert(file.name);
        }
    }
};

/// Files that a process has set aside in a command that it did not end, and those that it has not
/// brought to their places.
void removeAside(const fs::path& folder, long process) {
    for (const std::string_view kind : {AsideName, PendingName}) {
        const std::string start = std::string(kind) + std::to_string(process) + "-";
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().filename().string().starts_with(start) && isOwnFile(entry.path())) {
                removeOwnFile(entry.path());
            }
        }
    }
}

void sweep(const fs::path& folder, const Listing& dead, const Living& living) {
    for (const auto& file : dead.files) {
        if (fs::path(file.name).parent_path() != folder || living.files.count(file.name) != 0) {
            continue;
        }
        struct stat found {};
        const bool isFolder = isOwnFolder(file.name, found);
        if ((!isFolder && !isOwnFile(file.name, found)) || found.st_dev != file.device ||
            found.st_ino != file.inode) {
            continue;
        }
        if (isFolder) {
            std::error_code left; // in the way of nothing
            fs::remove_all(file.name, left);
        } else {
            removeOwnFile(file.name.c_str());
        }
    }
    if (dead.process > 0 && living.processes.count(dead.process) == 0) {
        removeAside(folder, dead.process);
    }
}

/// The numbers of all records and copies in a folder.
std::set<int> numbersIn(const fs::path& folder) {
    std::set<int> numbers;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        for (const auto& number :
             {numberIn(name, RecordName, ""), numberIn(name, CopyName, CopyExtension)}) {
            if (number) {
                numbers.insert(*number);
            }
        }
    }
    return numbers;
}

RunClaim newClaim(const fs::path& folder) {
    for (int number = 0;; ++number) {
        struct stat ignored {};
        if (::lstat(copyPath(folder, number).c_str(), &ignored) == 0) {
            continue; // somebody's recovery copy
        }
        if (auto claimed = claim(folder, number, Make::New)) {
            return std::move(*claimed);
        }
    }
}

void writeListing(int handle, const std::string& text) {
    if (::ftruncate(handle, 0) != 0 ||
        ::pwrite(handle, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) {
        throw RuntimeError(fileErrorNumber(errno, {}));
    }
}

} // namespace

// ---- claims ----

RunClaim::RunClaim(int handle, const fs::path& folder, int number)
    : handle_(handle), record_(recordPath(folder, number)), copy_(copyPath(folder, number)) {}

RunClaim::RunClaim(RunClaim&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)), record_(std::move(other.record_)),
      copy_(std::move(other.copy_)) {}

RunClaim::~RunClaim() {
    if (handle_ >= 0) {
        ::close(handle_);
    }
}

void RunClaim::removeAll() const noexcept {
    removeOwnFile(copy_);
    removeRecord();
}

void RunClaim::removeRecord() const noexcept {
    removeOwnFile(record_);
}

std::vector<DeadRun> claimDeadRuns(const fs::path& temporaryFolder) {
    const fs::path folder = plainFolder(temporaryFolder);
    std::vector<RunClaim> claims;
    std::vector<Listing> dead;
    Living living;
    for (const int number : numbersIn(folder)) {
        const fs::path record = recordPath(folder, number);
        const bool recorded = isOwnFile(record);
        auto claimed = claim(folder, number, recorded ? Make::No : Make::New);
        if (!claimed && !recorded) {
            continue; // another user's
        }
        Listing listing;
        runGuarded([&] { listing = readListing(record); });
        if (claimed) {
            claims.push_back(std::move(*claimed));
            dead.push_back(std::move(listing));
        } else {
            living.add(listing);
        }
    }
    for (const Listing& listing : dead) {
        sweep(folder, listing, living);
    }
    std::vector<DeadRun> runs;
    for (RunClaim& claimed : claims) {
        std::string text;
        const bool sound = isOwnFile(claimed.copy()) && !runGuarded([&] {
                               text = readPlainFile(claimed.copy(), Links::Refuse);
                           });
        if (sound) {
            runs.push_back({std::move(claimed), std::move(text)});
        } else {
            claimed.removeRecord();
        }
    }
    return runs;
}

// ---- the record of this process ----

RunRecord::RunRecord(const fs::path& folder)
    : folder_(plainFolder(folder)), claim_(newClaim(folder_)) {
    list({});
}

RunRecord::~RunRecord() {
    claim_.removeAll();
}

void RunRecord::list(const TemporaryFiles& files) {
    std::string text = listingText(files);
    if (text != listed_) {
        writeListing(claim_.handle(), text);
        listed_ = std::move(text);
    }
}

void RunRecord::keep(std::string_view head, const std::string& text) {
    if (hasCopy_ && text == kept_) {
        return;
    }
    const fs::path& copy = claim_.copy();
    const std::string whole = std::string(head) + text;
    std::string now = text;
    hasCopy_ = hasCopy_ && isOwnFile(copy); // it may have been cleaned away
    if (!hasCopy_ && !createExclusively(copy)) {
        throw RuntimeError(75, copy.string()); // a link, perhaps, which would be followed
    }
    if (const auto fault = runGuarded([&] { saveFile(copy, whole); })) {
        if (!hasCopy_) {
            removeOwnFile(copy); // an empty one is no copy
        }
        throw RuntimeError(*fault);
    }
    hasCopy_ = true;
    isStuck_ = false;
    kept_ = std::move(now);
}

void RunRecord::dropCopy() noexcept {
    if (hasCopy_ && !isStuck_) {
        removeOwnFile(claim_.copy());
        hasCopy_ = isOwnFile(claim_.copy());
        isStuck_ = hasCopy_;
    }
}

void RunRecord::endEarly() noexcept {
    runGuarded([&] {
        std::istringstream lines(listed_);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t name = line.find(' ', line.find(' ') + 1);
            if (name != std::string::npos) {
                removeOwnFile(line.c_str() + name + 1);
            }
        }
        removeAside(folder_, ::getpid());
    });
    if (!hasCopy_) {
        claim_.removeRecord();
    }
}

} // namespace korvane
