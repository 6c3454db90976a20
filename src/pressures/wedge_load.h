// The vertical load on a piece of a trial failure plane.
#pragma once

#include "state/state.h"

namespace korvane {

/// Soil weight (LB per foot of wall) above a straight piece of plane from (x1, y1) to (x2, y2) of
/// slope `slope` that lies within `layer`; x1 < x2 in FT from the wall. `y0` is an origin for the
/// area sums alone.
double WedgeWeight(const State& state, double y0, double slope, int side, int level, double x1,
                   double y1, double x2, double y2, int layer);

/// Vertical surcharge (LB per foot of wall) on the ground between x1 and x2.
double WedgeSurchargeLoad(const Problem& problem, int side, double x1, double x2);

} // namespace korvane
