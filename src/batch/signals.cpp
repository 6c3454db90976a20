#include "batch/signals.h"

#include "commands/told_boxes.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"

#include <csignal>
#include <thread>

namespace korvane::batch {

namespace {

sigset_t only(int signal) {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, signal);
    return set;
}

/// Waits in a thread of its own, where locks may be taken.
void endBySignal(const sigset_t& watched) {
    int signal = 0;
    if (sigwait(&watched, &signal) != 0) {
        return;
    }
    abandonPendingFiles();
    printFilesLeft("korvane-batch");
    std::signal(signal, SIG_DFL);
    const sigset_t itself = only(signal);
    pthread_sigmask(SIG_UNBLOCK, &itself, nullptr);
    std::raise(signal);
}

} // namespace

void watchSignals() {
    sigset_t watched;
    sigemptyset(&watched);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction present {};
        if (sigaction(signal, nullptr, &present) == 0 && present.sa_handler != SIG_IGN) {
            sigaddset(&watched, signal);
        }
    }
    pthread_sigmask(SIG_BLOCK, &watched, nullptr);
    if (runGuarded([&] { std::thread([watched] { endBySignal(watched); }).detach(); })) {
        pthread_sigmask(SIG_UNBLOCK, &watched, nullptr); // they end the process on the spot
    }
}

} // namespace korvane::batch
