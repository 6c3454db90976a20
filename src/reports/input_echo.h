// The input as read, in readable form.
#pragma once

#include "state/state.h"

namespace korvane {

/// Writes the echo to the newly made output file; OutputLineCount starts from 0.
void WriteInputEcho(State& state);

} // namespace korvane
