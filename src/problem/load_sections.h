// The optional sections of an input file for loads. Each finds the line that may be its first
// already read and leaves the first line that is not its own.
#pragma once

#include "problem/reading.h"

namespace korvane {

/// The six kinds of vertical surcharge in their fixed order: line, uniform, strip, ramp,
/// triangular, variable. A "V" line that is none of them there ends the reading under the last
/// section's name; one without a second word is RuntimeError 5.
bool readVerticalLoads(Reading& reading);

/// Horizontal line loads, then the horizontal distributed load. They have no section name of their
/// own. An "H" line that is neither is left over.
bool readHorizontalLoads(Reading& reading);

} // namespace korvane
