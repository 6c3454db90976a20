// The output file that all reports of a problem are appended to.
#pragma once

#include "commands/session.h"
#include "runtime/print_lines.h"

namespace korvane {

/// Starts the newly made output file with the echo of the input; OutputLineCount starts from 0.
void startReport(Session& session);

/// Appends what the solution has come to since the last part was written.
void continueReport(Session& session);

/// Appends finished lines to CurrentOutputName, flushed, and to the report's text in memory, and
/// adds their number to OutputLineCount.
/// File faults are RuntimeErrors.
void appendReport(Session& session, const PrintLines& lines);

} // namespace korvane
