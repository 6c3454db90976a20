// Net pressures on the wall and the driving force above the point of zero net active pressure.
#pragma once

#include "state/state.h"

namespace korvane {

/// Fills NetActive, NetPassive, NetZeroIndex, DrivingForce and DrivingMoment; inserts grid rows. A
/// diagram that does not change sign is a failure.
void ComputeNetPressures(State& state);

} // namespace korvane
