// Text files: reading with any line end, writing that never damages what is there.
// Every failure is a RuntimeError (53, 61, 70, 75, 76 ...) that carries the file's name.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

/// The run-time error number of a failed system call on a path.
int fileErrorNumber(int code, const std::filesystem::path& path);

/// The whole file as bytes.
std::string readFile(const std::filesystem::path& path);

/// A text cut at CR, LF or CRLF, without a UTF-8 mark at its start. A last line without a line end
/// counts as a line; a line end at the end of the text starts no further line.
std::vector<std::string> splitLines(std::string_view text);

/// Opens for output: makes the file or empties it, writes and flushes.
void writeFile(const std::filesystem::path& path, std::string_view text);

/// Appends and flushes.
void appendFile(const std::filesystem::path& path, std::string_view text);

/// Writes over the bytes of an existing file from `position` on and flushes.
void overwriteFile(const std::filesystem::path& path, std::size_t position, std::string_view text);

/// Writes beside the target and renames over it, so that a failure leaves the old file whole. The
/// old file's permissions stay, a link stays a link (its target is replaced), and a device or pipe
/// is written to as it stands.
void saveFile(const std::filesystem::path& path, std::string_view text);

/// Makes a new file readable by the user alone; false where the name is taken (links are not
/// followed).
bool createExclusively(const std::filesystem::path& path);

} // namespace korvane
