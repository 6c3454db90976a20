// Net pressures on the wall and the driving force above the point of zero net active pressure.
#pragma once

#include "state/state.h"

namespace korvane {

/// Fills NetActive, NetPassive, NetZeroIndex, DrivingForce and DrivingMoment; inserts grid rows. A
/// diagram that does not change sign shows its box and sets SolutionFailed to 2.
void ComputeNetPressures(State& state);

} // namespace korvane
