// Pressures of vertical surcharges by the theory of elasticity.
#pragma once

#include "state/state.h"

namespace korvane {

/// Fills SurchargePressures(side, i), PSF, from all surcharges of the side but the uniform one, on
/// the grid as it stands: rows inserted later do not carry it along.
void ComputeSurchargePressures(State& state, int side);

} // namespace korvane
