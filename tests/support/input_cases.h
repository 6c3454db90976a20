// Input files with one change each and what the reader must say of them, from a plain-text table.
#pragma once

#include "problem/input_reader.h"

#include <filesystem>
#include <string>
#include <vector>

namespace korvane::test {

/// One file and its outcome; `tests/data/bad-input/faults.txt` explains the outcomes.
struct InputCase {
    std::string name;
    std::string base; ///< name of the file that was changed
    std::string text; ///< the file, lines parted by one line feed
    std::string outcome;
    std::string line; ///< the cleaned line that a message shows

    bool accepted() const { return outcome == "accepted"; }
    /// Number of the run-time error, 0 for none.
    int runtimeError() const;
    /// The message of a file of this name, and completeness.
    ReadResult expected(const std::string& fileName) const;
};

/// All rows of a table; the base files lie beside it. Throws std::runtime_error where a row fits no
/// line of its base or more than one.
std::vector<InputCase> inputCases(const std::filesystem::path& table);

} // namespace korvane::test
