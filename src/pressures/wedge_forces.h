// Forces of soil wedges on the wall.
#pragma once

#include "state/state.h"

namespace korvane {

/// WedgeActiveForce and WedgePassiveForce of a side by trying planes from 23 degrees off the
/// vertical in steps of 2 degrees; marks the rows at which no extreme was found.
void SweepSearchForces(State& state, int side, int level);

/// The same by planes whose angle each layer's developed friction fixes.
void FixedSurfaceForces(State& state, int side, int level);

} // namespace korvane
