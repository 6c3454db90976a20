// Analysis of a wall of given length: the factor of safety.
#pragma once

#include "state/state.h"

namespace korvane {

/// Searches for the factor at which the design search ends at WallBottomElev, for each level.
/// Failure is SolutionFailed.
void SolveAnalysis(State& state);

} // namespace korvane
