// The soil of a wedge side as polygons.
#pragma once

#include "state/state.h"

namespace korvane {

/// Fills the layer, wet and seep regions and the ground line of a side.
void BuildWedgeRegions(State& state, int side);

/// Fills the deep regions of a side for the level's SeepageEndElev; clears their kinds first and
/// does no more unless water is given by elevations and SeepageGradient(level) is above 0.0001.
void BuildSeepageEndRegions(State& state, int side, int level);

} // namespace korvane
