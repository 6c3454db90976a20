// korvane-study in a process of its own.
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace korvane::study::test {

/// Starts the program; its messages go to a file, or nowhere.
pid_t start(std::vector<std::string> arguments, const std::string& messages = "/dev/null");

/// A pipe with room for one message: who writes the next waits until the first is read, so that a
/// program is held where it tells what it does.
class NarrowPipe {
  public:
    NarrowPipe();
    ~NarrowPipe();
    NarrowPipe(const NarrowPipe&) = delete;
    NarrowPipe& operator=(const NarrowPipe&) = delete;

    /// Starts the program with its messages into the pipe.
    pid_t start(std::vector<std::string> arguments);
    /// Until a message is there or the writer has ended.
    void awaitOne() const;
    /// Takes the next message; false where the writer has ended.
    bool take(std::string& message);

  private:
    int ends_[2] = {-1, -1};
};

/// How it ended, as waitpid tells it.
int waitFor(pid_t child);

/// Whether it has not ended yet. It stays to be waited for.
bool isRunning(pid_t child);

} // namespace korvane::study::test
