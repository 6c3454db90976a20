// Writes a problem as a keyword input file.
#pragma once

#include "problem/problem.h"

#include <string>

namespace korvane {

/// The text of the input file, each line with its line feed.
std::string inputFileText(const Problem& problem);

} // namespace korvane
