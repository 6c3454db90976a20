// Summary and complete results of a solution.
#pragma once

#include "state/state.h"

namespace korvane {

/// Appends the summary, then the complete results of each level.
void WriteResults(State& state);

} // namespace korvane
