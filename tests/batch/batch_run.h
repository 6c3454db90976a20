// Runs the batch command in process.
#pragma once

#include "support/support.h"

#include <set>
#include <string>
#include <vector>

namespace korvane::test {

/// What a run of the batch command left.
struct BatchRun {
    int status = -1;
    std::string out;
    std::string err;
};

/// A folder for the temporary files and one for the user's files.
struct BatchOffice {
    BatchOffice();

    BatchRun run(const std::vector<std::string>& arguments, bool terminal = false) const;
    /// Copies a file of examples/, cases/ or tests/ (named from the source folder) to the user's
    /// folder.
    std::string copy(const std::string& source, const std::string& name) const;
    std::string write(const std::string& name, const std::string& text) const;
    std::string file(const std::string& name) const;
    std::string read(const std::string& name) const;
    /// Names in the user's folder.
    std::set<std::string> files() const;
    int temporaryFileCount() const;

    TemporaryFolder temporary;
    TemporaryFolder user;
};

std::string sourceFile(const std::string& name);

/// An input that is refused, one whose solution fails, one that ends the reader with error 5.
extern const char* const refusedInput;
extern const char* const failingInput;
extern const char* const fatalInput;

} // namespace korvane::test
