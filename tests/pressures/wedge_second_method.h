// The forces of both wedge methods worked out a second time, from free bodies: each wedge's forces
// as vectors, the geometry from the points of the ground instead of polygons.
#pragma once

#include "wedge_ground.h"

namespace korvane::test {

/// A piece of plane within one layer, from the ground toward the wall: (x1, y1) is its inner end.
struct PlanePiece {
    double x1, y1, x2, y2;
    int layer;
};

/// Mean wall friction (radians) and total adhesion (LB) from the surface down to an elevation.
struct WallMean {
    double friction;
    double adhesion;
};

class FreeBodies {
  public:
    FreeBodies(const WedgeBench& bench, int side)
        : bench_(bench), problem_(bench.problem), side_(side), soil_(*bench.state, side, 1),
          described_(bench.described(side)) {}

    /// Extremes and marks of one row of the sweep.
    struct Row {
        double active, passive;
        bool activeMarked, passiveMarked;
        int severalLayers; ///< planes that passed through more than one layer
    };
    Row sweep(double y0, bool lastRow) const;

    /// Horizontal force of the straight plane at `angle` (radians from the vertical), s = +1
    /// active, -1 passive; far below zero (active) or 0 (passive) where it has none.
    double onPlane(double y0, double angle, int s) const;
    /// The flattest plane of a row, radians from the vertical.
    double flattestPlane(double y0) const;

    /// Force on the wall from the surface to `y` by planes of fixed angle; s = +1 active, -1
    /// passive.
    double fixed(double y, int s) const;

    /// The pieces of a straight plane of slope `k` from (0, y0), from the ground to the wall.
    std::vector<PlanePiece> straightPieces(double y0, double k) const;

  private:
    double factor(int layer, int s) const;
    double tangent(int layer, int s) const;
    WallMean wall(double y, int s) const;
    double loadOn(const PlanePiece& piece) const;
    double groundHit(double x, double y, double k) const;
    double sweepForce(const std::vector<PlanePiece>& pieces, double angle, double y0, int s) const;

    const WedgeBench& bench_;
    const Problem& problem_;
    int side_;
    PointGround soil_;
    WedgeSide described_;
};

} // namespace korvane::test
