// The bottom of a cantilever wall.
#pragma once

#include "state/state.h"

namespace korvane {

/// Finds SolvedBottomElev(1), BottomPressure(1), BottomIndex(1) and the final NetActive diagram.
/// Needs DrivingMoment shifted to the zero point. Failure: a box and SolutionFailed 1.
void SolveCantileverBottom(State& state);

} // namespace korvane
