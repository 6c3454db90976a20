#include "runtime/file_text.h"

#include "runtime/runtime_error.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvane {

namespace {

namespace fs = std::filesystem;

constexpr int maxLinks = 40; // of a chain of symbolic links, as the system itself follows

/// The folder that a path lies in.
fs::path folderOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

[[noreturn]] void fail(int code, const fs::path& path) {
    throw RuntimeError(fileErrorNumber(code, path), path.string());
}

/// A file that is open under the handle of a system call, or the fault of that call. Closing it is
/// a step of its own, because a device may tell its fault only then.
class OpenFile {
  public:
    OpenFile(fs::path path, int handle) : path_(std::move(path)), handle_(handle) {
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
            if (written >= 0) {
                text.remove_prefix(static_cast<std::size_t>(written));
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
    fs::path path_;
    int handle_;
};

void writeWith(int flags, const fs::path& path, std::string_view text) {
    OpenFile file(path, ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0666));
    file.write(text);
    file.close();
}

/// Opens a file that must not exist yet, links included; below zero where it fails.
int openNew(const fs::path& path, mode_t mode) {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
}

/// The file behind a chain of symbolic links, which itself may not exist yet.
fs::path behindLinks(const fs::path& path) {
    fs::path target = path;
    std::error_code ignored;
    for (int links = 0; fs::is_symlink(target, ignored); ++links) {
        if (links == maxLinks) {
            fail(ELOOP, path);
        }
        target = folderOf(target) / fs::read_symlink(target, ignored);
    }
    return target;
}

/// A name beside the target that no file has yet, opened for output.
std::pair<fs::path, int> openBeside(const fs::path& target, mode_t mode) {
    static std::atomic<unsigned> counter{0};
    for (;;) {
        fs::path beside = folderOf(target) / (".korvane-" + std::to_string(::getpid()) + "-" +
                                              std::to_string(counter++));
        const int handle = openNew(beside, mode);
        if (handle >= 0) {
            return {std::move(beside), handle};
        }
        if (errno != EEXIST) {
            fail(errno, target);
        }
    }
}

/// Replaces a regular file (or makes one) by a finished file beside it. `old` tells the file that
/// stands there, if any: its permissions are kept.
void replaceFile(const fs::path& target, std::string_view text,
                 const std::optional<struct stat>& old) {
    const auto [beside, handle] = openBeside(target, old ? 0600 : 0666);
    try {
        OpenFile file(target, handle);
        file.write(text);
        if (old && ::fchmod(file.handle(), old->st_mode & 07777) != 0) {
            fail(errno, target);
        }
        if (::fsync(file.handle()) != 0) {
            fail(errno, target);
        }
        file.close();
        if (::rename(beside.c_str(), target.c_str()) != 0) {
            fail(errno, target);
        }
    } catch (...) {
        ::unlink(beside.c_str());
        throw;
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
    case EIO:
        return 57;
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
    const OpenFile file(path, ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string text;
    std::array<char, 65536> block{};
    for (;;) {
        const ssize_t count = ::read(file.handle(), block.data(), block.size());
        if (count > 0) {
            text.append(block.data(), static_cast<std::size_t>(count));
        } else if (count == 0) {
            return text;
        } else if (errno != EINTR) {
            fail(errno, path);
        }
    }
}

std::vector<std::string> splitLines(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.substr(0, mark.size()) == mark) {
        text.remove_prefix(mark.size());
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
    writeWith(O_TRUNC, path, text);
}

void appendFile(const fs::path& path, std::string_view text) {
    writeWith(O_APPEND, path, text);
}

void overwriteFile(const fs::path& path, std::size_t position, std::string_view text) {
    OpenFile file(path, ::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (::lseek(file.handle(), static_cast<off_t>(position), SEEK_SET) < 0) {
        fail(errno, path);
    }
    file.write(text);
    file.close();
}

void saveFile(const fs::path& path, std::string_view text) {
    struct stat status {};
    const bool found = ::stat(path.c_str(), &status) == 0;
    if (!found && errno != ENOENT) {
        fail(errno, path);
    }
    if (found && !S_ISREG(status.st_mode)) {
        // A device or a pipe holds nothing that could be lost. Its links are left to the system:
        // that of an open pipe (/dev/stdout) leads to no name.
        writeFile(path, text);
        return;
    }
    const fs::path target = behindLinks(path);
    if (!found) {
        replaceFile(target, text, std::nullopt);
    } else if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
        fail(errno, path);
    } else {
        replaceFile(target, text, status);
    }
}

bool createExclusively(const fs::path& path) {
    const int handle = openNew(path, 0600);
    if (handle < 0 && (errno == EEXIST || errno == ELOOP)) {
        return false;
    }
    OpenFile(path, handle).close();
    return true;
}

} // namespace korvane
