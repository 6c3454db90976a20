// Reads a problem from a keyword input file.
#pragma once

#include "problem/problem.h"

#include <string>
#include <string_view>

namespace korvane {

/// What the reader tells: nothing where the problem is complete, else one message.
struct ReadResult {
    bool complete = false;
    std::string title; ///< of the message box; empty when complete
    std::string text;  ///< lines parted by one line feed

    bool operator==(const ReadResult&) const = default;
};

/// Reads `fileText` into a cleared problem. `fileName` stands in the messages. On a failure the
/// fields read so far stay. Faults that no message covers are thrown: RuntimeError 5 where a token
/// is taken that does not exist, 9 for a given seepage gradient.
ReadResult readProblem(Problem& problem, std::string_view fileText, const std::string& fileName);

} // namespace korvane
