// One new row in the grid, carried through all pressure arrays.
#pragma once

#include "state/state.h"

namespace korvane {

/// Makes room at row `row`: points row to NumElevs move down one place in ElevGrid,
/// WaterPressures, and in ActivePressures, PassivePressures and marks of both sides; NumElevs
/// grows by one; the new row's marks are empty. Row `row` still holds the values of the point that
/// is now row + 1. RuntimeError 9 beyond 301 points.
void openRow(State& state, int row);

} // namespace korvane
