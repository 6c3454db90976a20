// Moments, shears and deflections of the wall as a beam on the grid.
#pragma once

#include "state/state.h"

namespace korvane {

/// Fills ElementForces and NodeDisplacement (EI = 1). `anchorIndex` 0 means no anchor;
/// `bottomFixity` 2 restrains the rotation at the bottom, 1 leaves it free.
void SolveBeam(State& state, int anchorIndex, int bottomIndex, int bottomFixity, int level,
               double bottomLoad);

} // namespace korvane
