#include "study/interruption.h"

#include <csignal>
#include <initializer_list>

namespace korvane::study {

namespace {

volatile std::sig_atomic_t seen = 0;

} // namespace

void watchSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction present {};
        if (sigaction(signal, nullptr, &present) == 0 && present.sa_handler != SIG_IGN) {
            std::signal(signal, [](int number) { seen = number; });
        }
    }
}

int signalSeen() {
    return seen;
}

} // namespace korvane::study
