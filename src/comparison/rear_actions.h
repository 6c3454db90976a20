// The active pressure and the water behind a wall times a factor, where both can be told apart from
// what holds the wall.
#pragma once

#include "problem/problem.h"

#include <string>

namespace korvane {

/// Multiplies the active coefficients of the right side, its loads beside the wall and its water by
/// a factor. Water given by elevations becomes a table of net pressures, the soil below it then has
/// its buoyant weight as moist weight. With a factor of 1 the wall stays the same wall.
///
/// Why that cannot be, with the problem in any state: strengths on the right, seepage, a table of
/// net pressures already, no room for a layer that ends at the water. Else empty.
std::string raiseRearActions(Problem& problem, double factor);

} // namespace korvane
