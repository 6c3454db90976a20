// The whole record as text, for files that only this program reads.
#pragma once

#include "problem/problem.h"
#include "runtime/value_text.h"

#include <optional>
#include <string>

namespace korvane {

/// The headings and then one line for each choice, count and field: its name and its values, each
/// number such that it reads back to the same one. Unlike an input file it keeps everything,
/// unfinished data and what no input file can tell included.
std::string problemText(const Problem& problem);

/// The record of such a text at the front of `reader`; nothing where there is none.
std::optional<Problem> readProblemText(ValueReader& reader);

} // namespace korvane
