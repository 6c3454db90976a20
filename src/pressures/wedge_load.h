// The vertical load on a piece of a trial failure plane.
#pragma once

#include "runtime/runtime_error.h"
#include "state/wedge_side.h"

#include <cstddef>
#include <span>

namespace korvane {

/// The layer of a number from 1 on; RuntimeError 9 outside.
inline const WedgeLayer& layerOf(const WedgeSide& side, int layer) {
    if (layer < 1 || layer > static_cast<int>(side.layers.size())) {
        throwRuntimeError(9);
    }
    return side.layers[static_cast<std::size_t>(layer - 1)];
}

inline std::span<const LinePoint> edgePoints(const WedgeSide& side, const Stretch& edge) {
    return {side.points.data() + edge.first, static_cast<std::size_t>(edge.count)};
}

/// Soil weight (LB per foot of wall) above a straight piece of plane from (x1, y1) to x2 of slope
/// `slope` that lies within `layer`; x1 < x2 in FT from the wall. `y0` is an origin for the area
/// sums alone.
double WedgeWeight(const WedgeSide& side, double y0, double slope, double x1, double y1, double x2,
                   int layer);

/// Vertical surcharge (LB per foot of wall) on the ground between x1 and x2.
double WedgeSurchargeLoad(const WedgeSide& side, double x1, double x2);

} // namespace korvane
