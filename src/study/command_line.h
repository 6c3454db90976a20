// The command line of korvane-study.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace korvane::study {

/// Exit statuses.
inline constexpr int StatusDone = 0;
inline constexpr int StatusFault = 1;   ///< a fault; a missing or damaged part
inline constexpr int StatusUsage = 2;   ///< wrong usage, a wrong study file, another study's folder
inline constexpr int StatusStopped = 3; ///< by a signal that the caller raises again

/// Runs a command; `arguments` are those behind the program's name. Progress is told on `errors`,
/// on one line where that is a terminal.
int runCommand(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors,
               bool terminal);

} // namespace korvane::study
