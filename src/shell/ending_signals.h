// Signals that end the desktop program.
#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

namespace korvane {

/// SIGINT, SIGTERM and SIGHUP, unless they were ignored at the start, wait from now on until
/// EndingSignals takes them. Before any thread starts.
void blockEndingSignals();

/// While it stands, a signal that was blocked calls `rescue` in the window's thread, from its event
/// loop, and then ends the process as it does by itself. Where that has not happened within
/// `LongestWait`, because a command works or a disk does not answer, the process ends all the same.
/// What was typed then stands in the recovery copy, and the next start clears up.
class EndingSignals : public QObject {
  public:
    static constexpr std::chrono::milliseconds LongestWait{5000};

    explicit EndingSignals(std::function<void()> rescue);
    ~EndingSignals() override;

  private:
    void take();
    void watch();

    std::function<void()> rescue_;
    int handle_ = -1;             ///< readable while a signal waits
    int end_ = -1;                ///< readable once the object ends
    std::atomic<int> signal_ = 0; ///< the one that the event loop has taken
    std::thread watcher_;
};

} // namespace korvane
