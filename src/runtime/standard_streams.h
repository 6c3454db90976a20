// The standard streams of a process that was started without them.
#pragma once

namespace korvane {

/// Opens those of the descriptors 0 to 2 that are closed on the null device, so that no file of the
/// program gets their number. What is then written to standard output or read from standard input
/// is a fault, not lost in silence. First thing in `main`; false where the device is missing.
bool openStandardStreams();

} // namespace korvane
