// The loads on many pieces of planes at once.
#pragma once

#include "state/wedge_side.h"

#include <array>
#include <cstddef>

namespace korvane {

/// A number for each plane of a row. Subscripts are not checked: that keeps a loop from taking
/// several planes at once, and no loop goes beyond the planes of the row.
struct PlaneColumn : std::array<double, MaxSweepPlanes> {
    double& operator[](std::size_t n) { return data()[n]; }
    const double& operator[](std::size_t n) const { return data()[n]; }
};

/// Pieces of planes through one point (0, y0) of the wall, all within one layer; at most
/// MaxSweepPlanes of them.
struct PlanePieces {
    double y0 = 0; ///< FT
    std::size_t count = 0;
    const double* slope = nullptr; ///< FT/FT, of each piece
    const double* x1 = nullptr;    ///< FT from the wall, the inner end
    const double* x2 = nullptr;    ///< FT, the outer end
    bool atWall = false;           ///< all x1 are 0
    bool ascending = false;        ///< no x1 or x2 is less than that of the piece before
};

/// Soil and surcharge (LB per foot of wall) on each piece in `layer`: to the last bit what
/// WedgeWeight and WedgeSurchargeLoad give one by one.
void weighPieces(const WedgeSide& side, const PlanePieces& pieces, int layer, double* loads);

} // namespace korvane
