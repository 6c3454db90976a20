// The whole record as text, for files that only this program reads.
#pragma once

#include "problem/problem.h"

#include <optional>
#include <string>
#include <string_view>

namespace korvane {

/// One line for each member in the order of the record: its name and its values, each number such
/// that it reads back to the same one. Unlike an input file it keeps everything, unfinished data
/// and what no input file can tell included.
std::string problemText(const Problem& problem);

/// The record of such a text; nothing where it is none.
std::optional<Problem> readProblemText(std::string_view text);

} // namespace korvane
