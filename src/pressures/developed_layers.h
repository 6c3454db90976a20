// Strengths and coefficients of a layer as a solution uses them.
#pragma once

#include "state/state.h"

namespace korvane {

/// A layer under the level's factors of safety. The sources of the factors are left to the caller;
/// coefficients are those of a side without wedges.
DevelopedLayer developedLayer(const State& state, int side, int layer, int level);

} // namespace korvane
