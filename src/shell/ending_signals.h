// Signals that end the desktop program.
#pragma once

#include <QObject>

#include <functional>

namespace korvane {

/// SIGINT, SIGTERM and SIGHUP, unless they were ignored at the start, wait from now on until
/// EndingSignals takes them. Before any thread starts.
void blockEndingSignals();

/// While it stands, a signal that was blocked calls `rescue` in the window's thread, from its event
/// loop, and then ends the process as it does by itself.
class EndingSignals : public QObject {
  public:
    explicit EndingSignals(std::function<void()> rescue);
    ~EndingSignals() override;

  private:
    void take();

    std::function<void()> rescue_;
    int handle_ = -1;
};

} // namespace korvane
