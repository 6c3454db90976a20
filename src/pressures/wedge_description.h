// The soil and the loads of a wedge side in the form in which planes are weighed.
#pragma once

#include "state/state.h"
#include "state/wedge_side.h"

namespace korvane {

/// Describes a side; `described` need not be empty. Reads the regions, the layers, the surcharges,
/// the water and the seepage of the level.
void describeWedgeSide(const State& state, int side, int level, WedgeSide& described);

} // namespace korvane
