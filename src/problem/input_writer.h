// Writes a problem as a keyword input file.
#pragma once

#include "problem/problem.h"
#include "problem/quantities.h"

#include <string>

namespace korvane {

/// The text of the input file, each line with its line feed, for a file or the printer. A missing
/// value leaves its blanks. In SI units numbers have at most 10 significant digits. What the format
/// cannot hold: see save_losses.h.
std::string inputFileText(const Problem& problem, UnitSystem units = UnitSystem::US);

} // namespace korvane
