// --verify: the cases that come with the program, run where it is installed.
#pragma once

#include <iosfwd>

namespace korvane::batch {

/// Writes the table, or the rows as JSON, to `out` and what is wrong with cases to `err`. Returns
/// the exit status: StatusSolved only where there are cases and all of them hold.
int verifyShippedCases(bool json, std::ostream& out, std::ostream& err);

} // namespace korvane::batch
