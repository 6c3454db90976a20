// Signals that end the batch command.
#pragma once

namespace korvane::batch {

/// From now on SIGINT, SIGTERM and SIGHUP, unless they were ignored at the start, remove the files
/// that are not in their places yet and then end the process as they do. Before other threads
/// start.
void watchSignals();

} // namespace korvane::batch
