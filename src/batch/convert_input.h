// An input file in other units.
#pragma once

#include "batch/options.h"

#include <iosfwd>

namespace korvane::batch {

/// Writes the input in other units to the job's report path, or to `out` where it has none;
/// comments, headings and words stay. `err` takes the box of an input that is refused, the numbers
/// that the other units do not give back, and those that the reader ignores and that hence stay as
/// they are. A file that could not be read again is not written. A fault leaves an earlier output
/// whole. The exit status.
int convertInput(const Job& job, UnitSystem to, std::ostream& out, std::ostream& err);

} // namespace korvane::batch
