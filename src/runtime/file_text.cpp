#include "runtime/file_text.h"

#include "runtime/run_guarded.h"
#include "runtime/runtime_error.h"
#include "runtime/utf8_text.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <mutex>
#include <shared_mutex>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvane {

namespace {

namespace fs = std::filesystem;

/// The folder that a path lies in.
fs::path folderOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

[[noreturn]] void fail(int code, const fs::path& path) {
    throw RuntimeError(fileErrorNumber(code, path), path.string());
}

/// A file that is open under the handle of a system call, or the fault of that call. Closing it is
/// a step of its own, because a device may tell its fault only then. The path outlives it.
class OpenFile {
  public:
    OpenFile(const fs::path& path, int handle) : path_(path), handle_(handle) {
        if (handle_ < 0) {
            fail(errno, path_);
        }
    }
    ~OpenFile() {
        if (handle_ >= 0) {
            ::close(handle_);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int handle() const { return handle_; }

    void write(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t written = ::write(handle_, text.data(), text.size());
            if (written > 0) {
                text.remove_prefix(static_cast<std::size_t>(written));
            } else if (written == 0) {
                fail(EIO, path_); // takes nothing and tells no reason
            } else if (errno != EINTR) {
                fail(errno, path_);
            }
        }
    }

    void close() {
        if (::close(std::exchange(handle_, -1)) != 0 && errno != EINTR) {
            fail(errno, path_);
        }
    }

  private:
    const fs::path& path_;
    int handle_;
};

void writeWith(int flags, const fs::path& path, std::string_view text) {
    OpenFile file(path, ::open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666));
    file.write(text);
    file.close();
}

/// Opens a file that must not exist yet, links included; below zero where it fails.
int openNew(const char* path, mode_t mode) {
    return ::open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
}

int openToRead(const fs::path& path, int flags = 0) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags);
}

/// The file behind a chain of symbolic links, which itself may not exist yet.
fs::path behindLinks(const fs::path& path) {
    fs::path target = path;
    std::error_code ignored;
    for (int links = 0; fs::is_symlink(target, ignored); ++links) {
        if (links == MostLinks) {
            fail(ELOOP, path);
        }
        target = folderOf(target) / fs::read_symlink(target, ignored);
    }
    return target;
}

/// The finished files of all threads that are not in their places yet.
struct Unfinished {
    std::shared_mutex making; ///< shared by those that make one
    std::mutex listing;
    std::vector<const std::string*> files;
};

Unfinished& unfinished() {
    static auto& all = *new Unfinished; // a thread may still write when the process ends
    return all;
}

/// What a thread could not remove.
std::vector<RuntimeError>& filesLeft() {
    thread_local std::vector<RuntimeError> left;
    return left;
}

std::string readAtMost(const OpenFile& file, const fs::path& path, std::size_t limit) {
    std::string text;
    std::array<char, 65536> block; // NOLINT(cppcoreguidelines-pro-type-member-init): read into
    for (;;) {
        const ssize_t count = ::read(file.handle(), block.data(), block.size());
        if (count > 0) {
            text.append(block.data(), static_cast<std::size_t>(count));
        } else if (count == 0) {
            return text;
        } else if (errno != EINTR) {
            fail(errno, path);
        }
        if (text.size() > limit) {
            throw RuntimeError(InputTooLarge, path.string());
        }
    }
}

} // namespace

int fileErrorNumber(int code, const fs::path& path) {
    std::error_code ignored;
    switch (code) {
    case ENOENT:
        return fs::is_directory(folderOf(path), ignored) ? 53 : 76;
    case ENOTDIR:
        return 76;
    case EACCES:
    case EPERM:
    case EROFS:
        return 70;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return 61;
    case EMFILE:
    case ENFILE:
        return 67;
    case EIO:
        return DeviceFault;
    case ENXIO:
    case ENODEV:
        return 71;
    case ENAMETOOLONG:
    case EINVAL:
        return 52;
    default:
        return 75;
    }
}

std::string readFile(const fs::path& path) {
    const OpenFile file(path, openToRead(path));
    return readAtMost(file, path, std::string().max_size());
}

std::string readPlainFile(const fs::path& path, Links links) {
    const int noLink = links == Links::Refuse ? O_NOFOLLOW : 0;
    const OpenFile file(path, openToRead(path, O_NONBLOCK | noLink));
    struct stat status {};
    if (::fstat(file.handle(), &status) != 0 || !S_ISREG(status.st_mode)) {
        throw RuntimeError(75, path.string());
    }
    return readAtMost(file, path, std::string().max_size());
}

std::string readHead(const fs::path& path, std::size_t bytes) {
    const OpenFile file(path, openToRead(path, O_NONBLOCK));
    struct stat status {};
    std::string text(bytes, '\0');
    std::size_t length = 0;
    while (::fstat(file.handle(), &status) == 0 && S_ISREG(status.st_mode) && length < bytes) {
        const ssize_t count = ::read(file.handle(), text.data() + length, bytes - length);
        if (count < 0 && errno != EINTR) {
            fail(errno, path);
        }
        if (count == 0) {
            break;
        }
        length += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    text.resize(length);
    return text;
}

std::string readInputFile(const fs::path& path, Pipes pipes) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        fail(errno, path);
    }
    if (S_ISDIR(status.st_mode)) {
        throw RuntimeError(FolderAsInput, path.string());
    }
    if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) {
        throw RuntimeError(DeviceAsInput, path.string());
    }
    if (S_ISREG(status.st_mode) && static_cast<std::size_t>(status.st_size) > LargestInput) {
        throw RuntimeError(InputTooLarge, path.string());
    }
    const bool isPipe = S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode);
    if (isPipe && pipes == Pipes::Refuse) {
        throw RuntimeError(PipeAsInput, path.string());
    }
    // A pipe that takes the file's place at this moment gives nothing, at once.
    const OpenFile file(path, openToRead(path, isPipe ? 0 : O_NONBLOCK));
    return readAtMost(file, path, LargestInput);
}

std::vector<std::string> splitLines(std::string_view text) {
    if (text.starts_with(Utf8Mark)) {
        text.remove_prefix(Utf8Mark.size());
    }
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
        lines.emplace_back(text.substr(0, length));
        const bool pair = text.substr(length, 2) == "\r\n";
        text.remove_prefix(std::min(length + (pair ? 2 : 1), text.size()));
    }
    return lines;
}

void writeFile(const fs::path& path, std::string_view text) {
    writeWith(O_CREAT | O_TRUNC, path, text);
}

void rewriteFile(const fs::path& path, std::string_view text) {
    writeWith(O_TRUNC | O_NOFOLLOW, path, text);
}

void appendFile(const fs::path& path, std::string_view text, Links links) {
    const int noLink = links == Links::Refuse ? O_NOFOLLOW : 0;
    const int flags = O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK | noLink;
    OpenFile file(path, ::open(path.c_str(), flags));
    struct stat before {};
    const bool isPlain = ::fstat(file.handle(), &before) == 0 && S_ISREG(before.st_mode);
    try {
        file.write(text);
        // A disk elsewhere may tell its fault at a close alone, and the first one need not be last.
        OpenFile(path, ::fcntl(file.handle(), F_DUPFD_CLOEXEC, 0)).close();
    } catch (...) {
        if (isPlain) {
            [[maybe_unused]] const int told = ::ftruncate(file.handle(), before.st_size);
        }
        throw;
    }
    file.close();
}

void overwriteFile(const fs::path& path, std::size_t position, std::string_view text) {
    OpenFile file(path, ::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (::lseek(file.handle(), static_cast<off_t>(position), SEEK_SET) < 0) {
        fail(errno, path);
    }
    file.write(text);
    file.close();
}

/// What stands where a file is to be placed.
struct PendingFile::Place {
    const fs::path& path;
    fs::path target;
    struct stat old {};
    bool found = false;

    explicit Place(const fs::path& named) : path(named), target(named) {
        look(::lstat(path.c_str(), &old));
        if (found && S_ISLNK(old.st_mode)) {
            look(::stat(path.c_str(), &old));
            // That of an open pipe (/dev/stdout) leads to no name: devices keep theirs.
            target = isDevice() ? path : behindLinks(path);
        }
        if (isFile() && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
            fail(errno, path);
        }
    }
    bool isFile() const { return found && S_ISREG(old.st_mode); }
    bool isDevice() const { return found && !S_ISREG(old.st_mode) && !S_ISDIR(old.st_mode); }

  private:
    void look(int result) {
        found = result == 0;
        if (!found && errno != ENOENT) {
            fail(errno, path);
        }
    }
};

PendingFile::PendingFile(const Place& place)
    : path_(place.path), target_(place.target), isDevice_(place.isDevice()), isFree_(!place.found) {
}

PendingFile::PendingFile(const Place& place, std::string_view text, Flush flush)
    : PendingFile(place) { // from here on the destructor cleans up
    if (isDevice_) {
        direct_ = text;
        waits_ = flush == Flush::None;
        return;
    }
    OpenFile file(target_, openBeside(place.isFile() ? 0600 : 0666));
    file.write(text);
    if (place.isFile() && ::fchmod(file.handle(), place.old.st_mode & 07777) != 0) {
        fail(errno, target_);
    }
    if (flush == Flush::ToDisk && ::fsync(file.handle()) != 0) {
        fail(errno, target_);
    }
    file.close();
}

PendingFile::PendingFile(const fs::path& path, std::string_view text, Flush flush)
    : PendingFile(Place(path), text, flush) {}

PendingFile::~PendingFile() {
    if (unfinished_) {
        removeOwnFile(beside_.c_str());
        forget();
    }
}

/// Makes a file of a new name beside the target and gives its handle.
int PendingFile::openBeside(unsigned mode) {
    static std::atomic<unsigned> counter{0};
    static const std::string prefix = ".korvane-" + std::to_string(::getpid()) + "-";
    Unfinished& all = unfinished();
    for (;;) {
        const std::string& target = target_.native();
        beside_ = target.substr(0, target.rfind('/') + 1) + prefix + std::to_string(counter++);
        list(); // first, so that nothing can fail once the file is there
        const std::shared_lock making(all.making);
        const int handle = openNew(beside_.c_str(), mode);
        if (handle >= 0) {
            unfinished_ = true;
            return handle;
        }
        const int code = errno;
        forget();
        if (code != EEXIST) {
            fail(code, target_);
        }
    }
}

void PendingFile::list() {
    const std::lock_guard lock(unfinished().listing);
    unfinished().files.push_back(&beside_);
}

void PendingFile::forget() {
    const std::lock_guard lock(unfinished().listing);
    auto& files = unfinished().files;
    files.erase(std::find(files.begin(), files.end(), &beside_));
    unfinished_ = false;
}

void PendingFile::clearPlace() {
    if (!isDevice_ && !isFree_) {
        removeFile(target_);
    }
}

void PendingFile::place() {
    if (isDevice_) {
        writeWith(waits_ ? 0 : O_NONBLOCK, path_, direct_);
        return;
    }
    if (::rename(beside_.c_str(), target_.c_str()) != 0) {
        fail(errno, target_);
    }
    forget();
}

void saveFile(const fs::path& path, std::string_view text) {
    PendingFile(path, text, Flush::ToDisk).place();
}

void abandonPendingFiles() {
    Unfinished& all = unfinished();
    all.making.lock();
    const std::lock_guard lock(all.listing);
    for (const std::string* file : all.files) {
        removeOwnFile(file->c_str());
    }
}

void removeFile(const fs::path& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT && errno != EISDIR) {
        fail(errno, path);
    }
}

void removeOwnFile(const char* path) noexcept {
    if (::unlink(path) != 0 && errno != ENOENT && errno != EISDIR) {
        const int code = errno;
        runGuarded([&] { filesLeft().emplace_back(fileErrorNumber(code, path), path); });
    }
}

std::vector<RuntimeError> takeFilesLeft() noexcept {
    return std::exchange(filesLeft(), {});
}

bool createExclusively(const fs::path& path) {
    const int handle = openNew(path.c_str(), 0600);
    if (handle < 0 && (errno == EEXIST || errno == ELOOP)) {
        return false;
    }
    try {
        OpenFile(path, handle).close();
    } catch (...) {
        if (handle >= 0) {
            removeOwnFile(path);
        }
        throw;
    }
    return true;
}

} // namespace korvane
