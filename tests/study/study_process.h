// korvane-study in a process of its own.
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace korvane::study::test {

/// Starts the program; its messages go to a file, or nowhere.
pid_t start(std::vector<std::string> arguments, const std::string& messages = "/dev/null");

/// How it ended, as waitpid tells it.
int waitFor(pid_t child);

/// Whether it has not ended yet. It stays to be waited for.
bool isRunning(pid_t child);

} // namespace korvane::study::test
