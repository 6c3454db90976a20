// korvane-study: asks one wall many times.
#include "study/command_line.h"
#include "study/interruption.h"

#include "runtime/run_guarded.h"
#include "runtime/standard_streams.h"

#include <csignal>
#include <iostream>

#include <unistd.h>

int main(int argc, char** argv) {
    namespace study = korvane::study;
    if (!korvane::openStandardStreams()) {
        return study::StatusFault;
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    study::watchSignals();
    int status = study::StatusFault;
    const auto fault = korvane::runGuarded([&] {
        status = study::runCommand({argv + 1, argv + argc}, std::cout, std::cerr,
                                   ::isatty(STDERR_FILENO) != 0);
    });
    if (fault) {
        std::cerr << "korvane-study: " << fault->fileName()
                  << (fault->fileName().empty() ? "" : ": ") << fault->what() << "\n";
    }
    if (const int signal = study::signalSeen(); signal != 0) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
    }
    return status;
}
