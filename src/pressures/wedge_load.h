// The vertical load on a piece of a trial failure plane.
#pragma once

#include "state/state.h"

namespace korvane {

/// Describes the soil and the surcharges of a side as loads over the distance from the wall, for
/// the two functions below; `side` need not be empty. Reads the regions, the layers, the water and
/// the seepage of the level.
void describeWedgeSide(const State& state, int side, int level, WedgeSide& described);

/// The layer of a number from 1 on; RuntimeError 9 outside.
const WedgeLayer& layerOf(const WedgeSide& side, int layer);

/// Soil weight (LB per foot of wall) above a straight piece of plane from (x1, y1) to x2 of slope
/// `slope` that lies within `layer`; x1 < x2 in FT from the wall. `y0` is an origin for the area
/// sums alone.
double WedgeWeight(const WedgeSide& side, double y0, double slope, double x1, double y1, double x2,
                   int layer);

/// Vertical surcharge (LB per foot of wall) on the ground between x1 and x2.
double WedgeSurchargeLoad(const WedgeSide& side, double x1, double x2);

} // namespace korvane
