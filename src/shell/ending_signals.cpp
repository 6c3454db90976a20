#include "shell/ending_signals.h"

#include "runtime/run_guarded.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
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

/// By the signal itself, as if nobody had waited for it.
void endBy(int signal) {
    sigset_t itself;
    sigemptyset(&itself);
    sigaddset(&itself, signal);
    std::signal(signal, SIG_DFL);
    pthread_sigmask(SIG_UNBLOCK, &itself, nullptr);
    std::raise(signal);
}

/// Waits until one of the handles can be read, or for `limit` milliseconds; true where the first
/// can.
bool firstCanBeRead(pollfd* handles, nfds_t count, int limit) {
    while (::poll(handles, count, limit) < 0 && errno == EINTR) {
    }
    return handles[0].revents != 0;
}

/// Takes a waiting signal; 0 where there is none.
int takeSignal(int handle) {
    signalfd_siginfo told{};
    const bool isThere = ::read(handle, &told, sizeof told) == static_cast<ssize_t>(sizeof told);
    return isThere ? static_cast<int>(told.ssi_signo) : 0;
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
    end_ = eventfd(0, EFD_CLOEXEC);
    if (end_ >= 0) {
        runGuarded([this] { watcher_ = std::thread([this] { watch(); }); });
    }
}

EndingSignals::~EndingSignals() {
    if (watcher_.joinable()) {
        eventfd_write(end_, 1);
        watcher_.join();
    }
    for (const int handle : {handle_, end_}) {
        if (handle >= 0) {
            ::close(handle);
        }
    }
}

void EndingSignals::take() {
    if (const int signal = takeSignal(handle_); signal != 0) {
        signal_ = signal;
        rescue_();
        endBy(signal);
    }
}

/// In a thread of its own, which touches nothing of the program's data.
void EndingSignals::watch() {
    constexpr int forEver = -1;
    const int limit = static_cast<int>(LongestWait.count());
    pollfd handles[] = {{end_, POLLIN, 0}, {handle_, POLLIN, 0}};
    if (!firstCanBeRead(handles, 2, forEver) && !firstCanBeRead(handles, 1, limit)) {
        const int signal = takeSignal(handle_);
        endBy(signal != 0 ? signal : signal_.load());
    }
}

} // namespace korvane
