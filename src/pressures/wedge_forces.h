// Forces of soil wedges on the wall.
#pragma once

#include "state/state.h"

namespace korvane {

/// WedgeActiveForce and WedgePassiveForce of a side by trying planes from 23 degrees off the
/// vertical in steps of 2 degrees; marks the rows at which no extreme was found.
void SweepSearchForces(State& state, int side, int level);

/// Forces (LB per foot of wall) at the midpoints (i) of rows i and i + 1.
struct MidForces {
    Array<double, 301> MidActiveForce;
    Array<double, 301> MidPassiveForce;
};

/// The same by planes whose angle each layer's developed friction fixes. Returns the forces from
/// which those of the rows were led.
MidForces FixedSurfaceForces(State& state, int side, int level);

} // namespace korvane
