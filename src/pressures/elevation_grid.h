// The common elevation grid of both sides.
#pragma once

#include "state/state.h"
#include "state/tolerances.h"

namespace korvane {

/// Fills ElevGrid, NumElevs and SeepageEndIndex(level) from the problem and the level's
/// SeepageEndElev: data elevations, points at 1 FT from the wall top downward, two far points.
/// RuntimeError 9 where the grid would pass 301 points.
void BuildElevationGrid(State& state, int level);

/// True for the two far points, which stand for "below any wall".
bool isFarRow(const ElevationGrid& grid, int row);

/// First and last row within SameElevation of `elevation`; 0 where there is none.
int firstRowAt(const ElevationGrid& grid, double elevation);
int lastRowAt(const ElevationGrid& grid, double elevation);

} // namespace korvane
