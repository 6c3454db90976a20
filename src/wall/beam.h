// Moments, shears and deflections of the wall as a beam on the grid.
#pragma once

#include "state/state.h"

namespace korvane {

/// The beam solution with EI = 1.
struct Beam {
    Array<double, 300, 4> ElementForces; ///< (e, k) shear, moment at top; shear, moment at bottom
    Array<double, 301, 2> NodeDisplacement; ///< (i, k) EI x deflection, EI x rotation
};

/// The beam down to `bottomIndex`. `anchorIndex` 0 means no anchor; `bottomFixity` 2 restrains the
/// rotation at the bottom, 1 leaves it free.
Beam SolveBeam(const State& state, int anchorIndex, int bottomIndex, int bottomFixity, int level);

} // namespace korvane
