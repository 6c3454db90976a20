// The fixed surface method: planes whose angle each layer fixes.
#include "pressures/elevation_grid.h"
#include "pressures/wedge_description.h"
#include "pressures/wedge_forces.h"
#include "pressures/wedge_load.h"
#include "pressures/wedge_strengths.h"
#include "runtime/arithmetic.h"
#include "state/kept_work.h"
#include "state/pressure_details.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr double HalfRightAngle = 0.7853981633974485;
/// A plane along a boundary ends where the boundary does: FT per FT of distance that rounding may
/// part the two.
constexpr double BoundaryNoise = 1e-6;

/// The plane of one layer, for active or passive forces.
struct LayerPlane {
    double friction = 0; ///< developed tangent
    double sin = 0;      ///< of the angle from the horizontal
    double cos = 0;
    double slope = 0; ///< FT/FT
};

/// A point in the soil: distance from the wall and elevation, FT.
struct Point {
    double x;
    double y;
};

/// A piece of plane within one layer and the terms of its equilibrium.
struct Piece {
    double W = 0; ///< soil and surcharge, LB
    double C = 0; ///< developed cohesion, LB
    double sin = 0;
    double cos = 0;
    double U = 0;
    double V = 0;
    double surcharge = 0; ///< LB, part of W
};

/// Describes the side where the planes of the sweep may stand, which are of no use to it.
WedgeSide& describeSide(State& state, int side, int level) {
    WedgePlanes& planes = state.kept->wedgePlanes(side);
    planes.kept = false;
    describeWedgeSide(state, side, level, planes.side);
    return planes.side;
}

/// Planes of fixed angle, for active (s = +1) or passive (s = -1) forces.
class FixedPlanes {
  public:
    /// `details` may be null.
    FixedPlanes(double surfaceElev, const WedgeSide& side, const Array<LayerStrength, 11>& soils,
                int s, WedgeDetails* details);

    /// Horizontal force (LB) on the wall from the surface down to `y`, in `layer` at the wall.
    double forceAt(double y, int layer);
    /// The plane of the last force, where details are asked for.
    const WedgePlane& plane() const { return plane_; }
    /// Passes `height` (FT) of a layer on the way down the wall.
    void pass(double height, int layer) { wall_.pass(height, strength(layer)); }

  private:
    const DevelopedStrength& strength(int layer) const {
        return s_ > 0 ? soils_(layer).active : soils_(layer).passive;
    }
    Point groundPoint(const Point& from, double k) const;
    Point groundPointAlong(int boundary, const Point& from, double k) const;
    int leavesLayer(int layer, double groundX) const;
    Point boundaryPoint(int boundary, const Point& start, double k) const;
    Piece weighPiece(const Point& start, const Point& end, double k, int layer) const;
    void recordPiece(const Point& start, const Point& end, int layer, const Piece& piece);
    void recordForces(double force, double wallFriction, int outerPieces,
                      const Array<double, 15>& pieceForces);

    double surfaceElev_; ///< FT, at the wall
    const WedgeSide& side_;
    int layerCount_;
    int s_;
    const Array<LayerStrength, 11>& soils_;
    Array<LayerPlane, 11> planes_;
    WallTerms wall_;
    WedgeDetails* details_;
    WedgePlane plane_;
};

FixedPlanes::FixedPlanes(double surfaceElev, const WedgeSide& side,
                         const Array<LayerStrength, 11>& soils, int s, WedgeDetails* details)
    : surfaceElev_(surfaceElev), side_(side), layerCount_(static_cast<int>(side.layers.size())),
      s_(s), soils_(soils), details_(details) {
    for (int layer = 1; layer <= layerCount_; ++layer) {
        const double t = strength(layer).friction;
        const double th = HalfRightAngle + s * std::atan(t) / 2;
        planes_(layer) = {t, std::sin(th), std::cos(th), std::sin(th) / std::cos(th)};
    }
}

/// Where a plane of slope `k` from a point reaches the ground.
Point FixedPlanes::groundPoint(const Point& from, double k) const {
    const auto& ground = side_.ground;
    for (std::size_t p = 1; p < ground.size(); ++p) {
        const LinePoint& end = ground[p];
        if (end.x < from.x) {
            continue;
        }
        const double m = divide(end.y - from.y, end.x - from.x);
        if (m == k) {
            return {end.x, end.y};
        }
        if (k > m) {
            const double gs = ground[p - 1].slope;
            const double x = divide(end.y - gs * end.x - from.y + k * from.x, k - gs);
            return {x, (x - from.x) * k + from.y};
        }
    }
    throw RuntimeError(9); // a plane that never reaches the ground
}

/// The same for a plane along a boundary, which reaches the ground with it: without that rounding
/// could send the plane through the boundary that it runs along.
Point FixedPlanes::groundPointAlong(int boundary, const Point& from, double k) const {
    const Point ground = groundPoint(from, k);
    const WedgeLayer& below = layerOf(side_, boundary + 1);
    const LinePoint& end = side_.points[static_cast<std::size_t>(below.edge.first) + 1];
    return std::abs(ground.x - end.x) <= BoundaryNoise * MaxOf(1, end.x) ? Point{end.x, end.y}
                                                                         : ground;
}

/// -1 where a piece with its ground point at `groundX` passes upward out of `layer`, +1 where it
/// passes downward, 0 where it reaches the ground inside.
int FixedPlanes::leavesLayer(int layer, double groundX) const {
    const bool lastLayer = layer == layerCount_;
    if (layer > 1 && groundX <= layerOf(side_, layer).topReach) {
        return groundX < layerOf(side_, layer).topReach ? -1 : 0;
    }
    return !lastLayer && groundX > layerOf(side_, layer + 1).topReach ? 1 : 0;
}

/// Where a piece from `start` passes through a boundary.
Point FixedPlanes::boundaryPoint(int boundary, const Point& start, double k) const {
    const WedgeLayer& above = layerOf(side_, boundary);
    const double x = divide(above.bottomElev - start.y + k * start.x, k - above.bottomSlope);
    return {x, (x - start.x) * k + start.y};
}

Piece FixedPlanes::weighPiece(const Point& start, const Point& end, double k, int layer) const {
    const LayerPlane& plane = planes_(layer);
    const double surcharge = WedgeSurchargeLoad(side_, start.x, end.x);
    const double W = WedgeWeight(side_, start.y, k, start.x, start.y, end.x, layer) + surcharge;
    const double length = std::hypot(end.x - start.x, end.y - start.y);
    return {W,
            length * strength(layer).cohesion,
            plane.sin,
            plane.cos,
            s_ * plane.friction * plane.sin + plane.cos,
            s_ * plane.friction * plane.cos - plane.sin,
            surcharge};
}

/// Pieces come from the wall outward and are turned round when all are known.
void FixedPlanes::recordPiece(const Point& start, const Point& end, int layer, const Piece& piece) {
    WedgePiece& kept = details_->pieces.emplace_back();
    kept.layer = layer;
    kept.angle = (2 * HalfRightAngle - std::atan2(piece.sin, piece.cos)) / DegreesToRadians;
    kept.x1 = start.x;
    kept.y1 = start.y;
    kept.x2 = end.x;
    kept.y2 = end.y;
    kept.length = std::hypot(end.x - start.x, end.y - start.y);
    kept.surcharge = piece.surcharge;
    kept.soil = piece.W - piece.surcharge;
    kept.cohesion = piece.C;
    kept.friction = strength(layer).friction;
    ++plane_.pieceCount;
}

void FixedPlanes::recordForces(double force, double wallFriction, int outerPieces,
                               const Array<double, 15>& pieceForces) {
    const auto first = details_->pieces.end() - plane_.pieceCount;
    first->force = force;
    for (int piece = 1; piece <= outerPieces; ++piece) {
        first[piece].force = pieceForces(piece);
        plane_.outerForce += first[piece].force;
    }
    plane_.found = true;
    plane_.angle = first->angle;
    plane_.force = force;
    plane_.wallFriction = wallFriction / DegreesToRadians;
    plane_.wallAdhesion = wall_.adhesion;
    plane_.firstPiece = static_cast<int>(details_->pieces.size()) - plane_.pieceCount;
    std::reverse(first, details_->pieces.end());
}

double FixedPlanes::forceAt(double y, int layer) {
    Array<double, 15> PieceForce{Unset{}}; // horizontal forces of the outer pieces
    const double s = s_;
    plane_ = {};
    Piece wallPiece;
    int outerPieces = 0;
    double Hs = 0; // sum of PieceForce
    Point start{0, y};
    double k = planes_(layer).slope;
    Point ground = groundPoint(start, k);
    for (bool atWall = true;; atWall = false) {
        const int dir = leavesLayer(layer, ground.x);
        const int boundary = dir < 0 ? layer - 1 : layer;
        const Point end = dir == 0 ? ground : boundaryPoint(boundary, start, k);
        const Piece piece = weighPiece(start, end, k, layer);
        if (details_ != nullptr) {
            recordPiece(start, end, layer, piece);
        }
        if (atWall) {
            wallPiece = piece; // until the outer pieces are known
        } else {
            // A piece meets its inner neighbour without friction.
            const auto& [W, C, sinTh, cosTh, U, V, surcharge] = piece;
            PieceForce(++outerPieces) = divide((W - s * C * sinTh) * V + s * C * cosTh * U, -U);
            Hs += PieceForce(outerPieces);
        }
        if (dir == 0) {
            break;
        }
        layer += dir;
        start = end;
        k = planes_(layer).slope;
        const double boundarySlope = layerOf(side_, boundary).bottomSlope;
        if (dir < 0 ? k < boundarySlope : k > boundarySlope) {
            k = boundarySlope; // it may not lead back through the boundary just passed
            ground = groundPointAlong(boundary, start, k);
        } else {
            ground = groundPoint(start, k);
        }
    }

    const double dw = divide(wall_.friction, surfaceElev_ - y);
    const double Cd = std::cos(dw);
    const auto& [W, C, sinTh, cosTh, U, V, surcharge] = wallPiece;
    const double D = s * std::sin(dw) * V - Cd * U;
    const double P =
        divide((W - s * C * sinTh - s * wall_.adhesion) * V - (Hs - s * C * cosTh) * U, D);
    if (details_ != nullptr) {
        recordForces(P * Cd, dw, outerPieces, PieceForce);
    }
    return P * Cd;
}

/// A force (LB) at an elevation (FT).
struct Node {
    double elev;
    double force;
};

/// The parabola through three nodes of a force curve.
double parabolaAt(double y, const Node& a, const Node& b, const Node& c) {
    return a.force * divide((y - b.elev) * (y - c.elev), (a.elev - b.elev) * (a.elev - c.elev)) +
           b.force * divide((y - a.elev) * (y - c.elev), (b.elev - a.elev) * (b.elev - c.elev)) +
           c.force * divide((y - a.elev) * (y - b.elev), (c.elev - a.elev) * (c.elev - b.elev));
}

double lineAt(double y, const Node& a, const Node& b) {
    return a.force + (b.force - a.force) * divide(y - a.elev, b.elev - a.elev);
}

double midElevation(const ElevationGrid& grid, int row) {
    return (grid.ElevGrid(row) + grid.ElevGrid(row + 1)) / 2;
}

/// Forces at the rows below the surface row from those at the midpoints: the mean of the parabolas
/// with two nodes above and one below, and with one above and two below.
void interpolateRows(const ElevationGrid& grid, int surfaceRow, int side,
                     const Array<double, 301>& midForce, Array<double, 301, 2>& rowForce,
                     bool active) {
    const auto& ElevGrid = grid.ElevGrid;
    const int lastRow = grid.NumElevs;
    const auto midpoint = [&](int row) { return Node{midElevation(grid, row), midForce(row)}; };

    for (int r = surfaceRow + 1; r < lastRow; ++r) {
        const double y = ElevGrid(r);
        const Node A = r == surfaceRow + 1 ? Node{ElevGrid(surfaceRow), 0} : midpoint(r - 2);
        const Node B = midpoint(r - 1);
        const Node C = midpoint(r);
        const double F1 = parabolaAt(y, A, B, C);
        if (r == lastRow - 1) {
            rowForce(r, side) = F1;
            rowForce(lastRow, side) = parabolaAt(ElevGrid(lastRow), A, B, C);
            return;
        }
        const double F2 = parabolaAt(y, B, C, midpoint(r + 1));
        double force = (F1 + F2) / 2;
        if (active && B.force < 0 && C.force < 0 && force > 0) {
            force = lineAt(y, B, C); // no push between two pulls
        }
        rowForce(r, side) = force;
    }
}

} // namespace

// Horizontal forces of the soil on the wall, from the surface down to each row, by equilibrium of
// the wedge above one broken plane, whose angle in each layer is that of Rankine's state (45
// degrees plus or minus half the developed friction). Forces are worked out at the midpoints of the
// rows and led to the rows by parabolas. Reads the regions, the layers and their factors; writes
// the side's WedgeActiveForce and WedgePassiveForce (LB per foot of wall).
MidForces FixedSurfaceForces(State& state, int side, int level) {
    const Problem& problem = *state.problem;
    const ElevationGrid& grid = state.grid;
    WedgeForces& wedge = state.wedge;
    const int surfaceRow = firstRowAt(grid, problem.SurfaceElev(side, 1));

    for (int row = 1; row <= state.TouchedRows; ++row) {
        wedge.WedgeActiveForce(row, side) = 0;
        wedge.WedgePassiveForce(row, side) = 0;
    }
    const Array<LayerStrength, 11> soils = developedStrengths(state, side, level);
    const WedgeSide& described = describeSide(state, side, level);
    WedgeDetails* const details =
        state.details == nullptr ? nullptr : &state.details->sides(side).wedge;
    FixedPlanes active(problem.SurfaceElev(side, 1), described, soils, 1, details);
    FixedPlanes passive(problem.SurfaceElev(side, 1), described, soils, -1, details);
    const auto pass = [&](double height, int layer) {
        active.pass(height, layer);
        passive.pass(height, layer);
    };

    MidForces mid;
    int layer = 1;
    double y = problem.SurfaceElev(side, 1);
    for (int r = surfaceRow; r < grid.NumElevs; ++r) {
        pass(y - grid.ElevGrid(r), layer);
        y = midElevation(grid, r);
        if (layer < problem.SoilLayerCount(side) && y < problem.SoilBottomElev(side, layer)) {
            ++layer;
        }
        pass(grid.ElevGrid(r) - y, layer);
        mid.MidActiveForce(r) = active.forceAt(y, layer);
        mid.MidPassiveForce(r) = passive.forceAt(y, layer);
        if (details != nullptr) {
            details->rows.push_back(
                {.elev = y, .layer = layer, .active = active.plane(), .passive = passive.plane()});
        }
    }
    interpolateRows(grid, surfaceRow, side, mid.MidActiveForce, wedge.WedgeActiveForce, true);
    interpolateRows(grid, surfaceRow, side, mid.MidPassiveForce, wedge.WedgePassiveForce, false);
    return mid;
}

} // namespace korvane
