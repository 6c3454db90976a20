// Soil pressures of a side from the forces of a wedge method.
#pragma once

#include "state/state.h"

namespace korvane {

/// Fills ActivePressures and PassivePressures of a side that takes the sweep search or the fixed
/// surface; inserts a grid row at each zero crossing of the active diagram.
void ComputeWedgePressures(State& state, int side, int level);

} // namespace korvane
