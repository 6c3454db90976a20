// The bottom of an anchored wall that is free at its foot.
#pragma once

#include "state/state.h"

namespace korvane {

/// Finds bottom, pressure, index and anchor force of level 1. `anchorIndex` is the anchor's grid
/// row and follows the grid. Needs DrivingMoment shifted to the anchor.
void SolveFreeEarthBottom(State& state, int& anchorIndex);

} // namespace korvane
