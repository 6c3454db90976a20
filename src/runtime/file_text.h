// Text files: reading with any line end, writing that never damages what is there.
// Every failure is a RuntimeError (53, 61, 70, 75, 76 ...) that carries the file's name.
#pragma once

#include "runtime/runtime_error.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

/// Of a chain of symbolic links, as the system itself follows.
inline constexpr int MostLinks = 40;

/// The run-time error number of a failed system call on a path.
int fileErrorNumber(int code, const std::filesystem::path& path);

/// The whole file as bytes.
std::string readFile(const std::filesystem::path& path);

/// Whether a link is followed where a file of our own is expected.
enum class Links { Follow, Refuse };

/// The same of a plain file alone: at a pipe or device that has taken its place nobody waits.
std::string readPlainFile(const std::filesystem::path& path, Links links);

/// The first `bytes` of a file, or all of a shorter one; nothing of what is no plain file, at which
/// it does not wait. RuntimeError where it cannot be read.
std::string readHead(const std::filesystem::path& path, std::size_t bytes);

/// Whether an input may be a pipe: not where windows would wait for its writer.
enum class Pipes { Read, Refuse };

/// A file that a user names as input. Folders, devices and files above `LargestInput` bytes are
/// refused before anything is read; a pipe likewise, or it is read up to that size.
std::string readInputFile(const std::filesystem::path& path, Pipes pipes = Pipes::Read);
inline constexpr std::size_t LargestInput = std::size_t{64} << 20;

/// A text cut at CR, LF or CRLF, without a UTF-8 mark at its start. A last line without a line end
/// counts as a line; a line end at the end of the text starts no further line.
std::vector<std::string> splitLines(std::string_view text);

/// Opens for output: makes the file or empties it, and writes.
void writeFile(const std::filesystem::path& path, std::string_view text);

/// Gives a file that this program has made new content. A link in its place is not followed, and a
/// file that is gone is not made again.
void rewriteFile(const std::filesystem::path& path, std::string_view text);

/// Appends to a file that is there, all or nothing: a full disk leaves it as long as it was.
void appendFile(const std::filesystem::path& path, std::string_view text,
                Links links = Links::Follow);

/// Writes over the bytes of an existing file from `position` on.
void overwriteFile(const std::filesystem::path& path, std::size_t position, std::string_view text);

/// Whether a save waits until the disk has the text: not for what can be made anew. A save to the
/// disk does not wait for the reader of a pipe either.
enum class Flush { ToDisk, None };

/// A finished file beside its place: `place` renames it there, and without that it goes with the
/// object (as removeOwnFile does), so that a failure leaves the old file whole. The old file's
/// permissions stay, a link stays a link (its target is replaced), and a device or pipe is written
/// to by `place` alone. A folder in the place is found by `place`.
class PendingFile {
  public:
    PendingFile(const std::filesystem::path& path, std::string_view text, Flush flush);
    ~PendingFile();
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// Removes the file that stood in the place when this one was made; what is no file stays.
    void clearPlace();
    void place();

  private:
    struct Place;
    explicit PendingFile(const Place& place);
    PendingFile(const Place& place, std::string_view text, Flush flush);
    int openBeside(unsigned mode);
    void list();
    void forget();

    std::filesystem::path path_;   ///< as named, for faults
    std::filesystem::path target_; ///< behind the links
    std::string beside_;           ///< what is there until it is placed
    std::string direct_;           ///< the text for a device
    bool isDevice_;
    bool isFree_;             ///< nothing stood in the place
    bool waits_ = false;      ///< for the reader of a pipe
    bool unfinished_ = false; ///< `beside_` may exist
};

/// Writes beside the target, reaches the disk and renames over the target, as PendingFile tells.
void saveFile(const std::filesystem::path& path, std::string_view text);

/// Removes the files beside their places, of all threads, and lets none be made any more: the
/// process is about to end. Those that cannot be removed are noted in the calling thread.
void abandonPendingFiles();

/// Removes a file that need not be there; a folder in its place stays.
void removeFile(const std::filesystem::path& path);

/// Removes a file that this program has made, where nobody can be told at once: one that cannot be
/// removed is noted for takeFilesLeft. Takes no memory but for that.
void removeOwnFile(const char* path) noexcept;
inline void removeOwnFile(const std::filesystem::path& path) noexcept {
    removeOwnFile(path.c_str());
}

/// What this thread could not remove since the last call.
std::vector<RuntimeError> takeFilesLeft() noexcept;

/// Makes a new file readable by the user alone; false where the name is taken (links are not
/// followed).
bool createExclusively(const std::filesystem::path& path);

} // namespace korvane
