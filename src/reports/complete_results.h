// The full tables of a solution.
#pragma once

#include "runtime/print_lines.h"
#include "state/results.h"

namespace korvane {

/// Result rows and pressures of the one level of a cantilever wall, or of both levels of an
/// anchored wall. The water pressures are those of the last level in all tables.
void completeResults(PrintLines& lines, const Problem& problem, const Results& results);

} // namespace korvane
