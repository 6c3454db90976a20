// The recent files: the last input files of the user, all that the program keeps between runs.
#pragma once

#include "commands/session.h"

#include <string>
#include <vector>

namespace korvane {

inline constexpr std::size_t RecentLimit = 10;

/// The user's file that keeps the paths, one a line: $XDG_STATE_HOME/korvane/recent, by default
/// $HOME/.local/state/korvane/recent. Empty where no variable names a whole path.
std::string recentStore();

/// The paths that a store holds, the newest first; none where it is missing or no text file. What
/// is no whole path is passed over.
std::vector<std::string> readRecent(const std::string& store);

/// Puts a path in front of the session's recent files and of its store, where another program may
/// have put its own meanwhile. A store that cannot be written is no fault: the session goes on.
void noteRecent(Session& session, const std::string& path);

} // namespace korvane
