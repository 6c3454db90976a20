// The full tables of a solution.
#pragma once

#include "runtime/print_lines.h"
#include "state/state.h"

namespace korvane {

/// Result rows and pressures of the one level of a cantilever wall, or of both levels of an
/// anchored wall, which are loaded one after the other and leave the second in memory.
void completeResults(PrintLines& lines, State& state);

} // namespace korvane
