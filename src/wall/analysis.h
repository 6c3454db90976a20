// Analysis of a wall of given length: the factor of safety.
#pragma once

#include "wall/design.h"
#include "wall/factor_search.h"

namespace korvane {

/// Searches for the factor at which the design search ends at WallBottomElev, for each level, and
/// calls `levelDone` when one has its results. Failure stands in the state.
void SolveAnalysis(State& state, const FactorLimit& limit, const LevelDone& levelDone);

} // namespace korvane
