// Pressures rebuilt for a trial of a search.
#pragma once

#include "state/state.h"

namespace korvane {

/// Soil pressures of one side by its SideMethod.
void ComputeSidePressures(State& state, int side, int level);

/// Grid, water, soil and net pressures anew for the level's present seepage values; wedge sides get
/// their deep regions first. Stops where SolutionFailed is set.
void RebuildForSeepage(State& state, int level);

} // namespace korvane
