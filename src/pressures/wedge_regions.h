// The soil of a wedge side as polygons.
#pragma once

#include "state/state.h"

namespace korvane {

/// Values of RegionFamily::Kind: how much of its parent polygon (a layer, its wet or its seep
/// region) a region holds.
inline constexpr int NoRegion = 0;
inline constexpr int WholeRegion = 1; ///< all of the parent
inline constexpr int CutRegion = 2;   ///< the part below the dividing line

/// Fills the layer, wet and seep regions and the ground line of a side.
void BuildWedgeRegions(State& state, int side);

/// Fills the deep regions of a side for the level's SeepageEndElev; clears their kinds first and
/// does no more unless water is given by elevations and SeepageGradient(level) is above
/// StartGradient.
void BuildSeepageEndRegions(State& state, int side, int level);

} // namespace korvane
