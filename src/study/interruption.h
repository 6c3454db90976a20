// Signals that end a run.
#pragma once

namespace korvane::study {

/// Makes SIGINT, SIGTERM and SIGHUP end a run after the rows at hand, unless they were ignored.
void watchSignals();

/// The signal that came; 0 where none did.
int signalSeen();

/// Ends a query, a check or a merge of rows that a signal has come into. Nothing is lost by it.
struct Interrupted {};

} // namespace korvane::study
