// The output file that all reports are appended to.
#pragma once

#include "runtime/print_lines.h"
#include "state/state.h"

namespace korvane {

/// Appends finished lines to CurrentOutputName, flushed, and adds their number to OutputLineCount.
/// File faults are RuntimeErrors.
void appendReport(State& state, const PrintLines& lines);

} // namespace korvane
