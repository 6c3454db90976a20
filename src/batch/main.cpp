// korvane-batch: solves input files without windows.
#include "batch/options.h"
#include "batch/run_batch.h"
#include "batch/signals.h"
#include "runtime/run_guarded.h"
#include "runtime/standard_streams.h"

#include <csignal>
#include <iostream>

#include <unistd.h>

int main(int argc, char** argv) {
    if (!korvane::openStandardStreams()) {
        return korvane::batch::StatusError;
    }
    // A reader that goes away or a limit on the size of files is a fault like any other: the other
    // inputs are solved all the same.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    korvane::batch::watchSignals();
    int status = korvane::batch::StatusError;
    const auto fault = korvane::runGuarded([&] {
        status = korvane::batch::runBatch({argv + 1, argv + argc}, std::cout, std::cerr,
                                          ::isatty(STDERR_FILENO) != 0);
    });
    if (fault) {
        std::cerr << "korvane-batch: " << fault->what() << "\n";
    }
    return status;
}
