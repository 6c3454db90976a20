// The batch command as a procedure.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace korvane::batch {

/// Runs the command line (without the program's name) and returns the exit status. `terminal`
/// tells whether `err` is one: there the progress line is redrawn in place.
int runBatch(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
             bool terminal);

} // namespace korvane::batch
