#include "runtime/standard_streams.h"

#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace korvane {

bool openStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) >= 0) {
            continue;
        }
        // The lowest descriptor that is free, hence this one.
        if (::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != stream) {
            return false;
        }
    }
    return true;
}

} // namespace korvane
