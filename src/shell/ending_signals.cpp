#include "shell/ending_signals.h"

#include <QSocketNotifier>

#include <csignal>
#include <utility>

#include <sys/signalfd.h>
#include <unistd.h>

namespace korvane {

namespace {

constexpr int Ending[] = {SIGINT, SIGTERM, SIGHUP};

/// Those of the ending signals that are blocked in this thread.
sigset_t blockedSignals() {
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : Ending) {
        if (sigismember(&blocked, signal) == 1) {
            sigaddset(&ending, signal);
        }
    }
    return ending;
}

} // namespace

void blockEndingSignals() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : Ending) {
        struct sigaction present {};
        if (sigaction(signal, nullptr, &present) == 0 && present.sa_handler != SIG_IGN) {
            sigaddset(&ending, signal);
        }
    }
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);
}

EndingSignals::EndingSignals(std::function<void()> rescue) : rescue_(std::move(rescue)) {
    const sigset_t ending = blockedSignals();
    handle_ = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
    if (handle_ < 0) {
        pthread_sigmask(SIG_UNBLOCK, &ending, nullptr); // they end the process on the spot
        return;
    }
    auto* notifier = new QSocketNotifier(handle_, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { take(); });
}

EndingSignals::~EndingSignals() {
    if (handle_ >= 0) {
        ::close(handle_);
    }
}

void EndingSignals::take() {
    signalfd_siginfo told{};
    if (::read(handle_, &told, sizeof told) != static_cast<ssize_t>(sizeof told)) {
        return;
    }
    rescue_();
    const int signal = static_cast<int>(told.ssi_signo);
    sigset_t itself;
    sigemptyset(&itself);
    sigaddset(&itself, signal);
    std::signal(signal, SIG_DFL);
    pthread_sigmask(SIG_UNBLOCK, &itself, nullptr);
    std::raise(signal);
}

} // namespace korvane
