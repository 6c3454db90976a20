// Result rows and extremes from the beam solution.
#pragma once

#include "state/state.h"
#include "wall/beam.h"

namespace korvane {

/// Fills the result rows and the extremes of `level`.
void BuildResultDiagrams(State& state, const Beam& beam, int level);

} // namespace korvane
