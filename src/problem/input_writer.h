// Writes a problem as a keyword input file.
#pragma once

#include "problem/problem.h"

#include <string>

namespace korvane {

/// The text of the input file, each line with its line feed, for a file or the printer. A missing
/// value leaves its blanks. What the format cannot hold: a factor of safety of 0 before a given one
/// (the reader takes the later one in its place), more than two decimals of the control line's
/// factors, the slopes of layer bottoms, a given seepage gradient and a variable load of one point
/// (written, never read back), and the level 2 factors of a side given by coefficients.
std::string inputFileText(const Problem& problem);

} // namespace korvane
