// The bottom of an anchored wall that is built in at its foot.
#pragma once

#include "state/state.h"

namespace korvane {

/// Finds bottom, pressure, index and anchor force of level 2. `anchorIndex` as for the free earth
/// search.
void SolveFixedEarthBottom(State& state, int& anchorIndex);

} // namespace korvane
