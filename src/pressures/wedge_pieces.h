// The loads on many pieces of planes at once.
#pragma once

#include "state/wedge_side.h"

#include <cstddef>

namespace korvane {

/// Pieces of planes through one point (0, y0) of the wall, all within one layer; at most
/// MaxSweepPlanes of them.
struct PlanePieces {
    double y0 = 0; ///< FT
    std::size_t count = 0;
    const double* slope = nullptr; ///< FT/FT, of each piece
    const double* x1 = nullptr;    ///< FT from the wall, the inner end
    const double* x2 = nullptr;    ///< FT, the outer end
};

/// Soil and surcharge (LB per foot of wall) on each piece in `layer`: to the last bit what
/// WedgeWeight and WedgeSurchargeLoad give one by one.
void weighPieces(const WedgeSide& side, const PlanePieces& pieces, int layer, double* loads);

} // namespace korvane
