// The trial planes of the sweep and what lies on them: geometry and loads, no strengths. What is
// done for each plane stands here, so that the sweep's loop holds it without calls.
#pragma once

#include "pressures/wedge_load.h"
#include "runtime/arithmetic.h"
#include "state/state.h"
#include "state/wedge_side.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace korvane {

/// The planes of one side at one level: from each point of the wall those from 23 degrees off the
/// vertical in steps of 2 degrees, and last the one 2 degrees short of the flattest line of sight
/// to a ground point. In an analysis planes are kept from trial to trial as long as the side is
/// described alike.
class SweepPlanes {
  public:
    SweepPlanes(State& state, int side, int level);

    /// Goes down to the point of the wall at `elev` (FT), in `layer`.
    void enterRow(double elev, int layer);
    /// Takes the next flatter plane of the row; false behind the last one. RuntimeError 9 where a
    /// plane never reaches the ground.
    bool next();
    /// Keeps the planes of the row that were taken.
    void leaveRow();

    const Direction& direction() const { return *direction_; }
    const TrialPlane& plane() const { return rowPlanes_[step_ - 1]; }
    /// Pieces of the plane, from the ground to the wall.
    const PlanePiece* pieces() const { return rowPieces_ + plane().firstPiece; }

  private:
    static constexpr int MaxPlanes = 80; ///< of a row: more than lead from 23 to 180 degrees
    static constexpr int MaxLayers = 11;
    using Directions = std::array<Direction, MaxPlanes>;

    /// Where a plane reaches the ground.
    struct GroundCut {
        double x; ///< FT
        double y; ///< FT
    };
    /// How a plane meets the layer boundaries.
    struct BoundaryScan {
        int kind = 4; ///< 4 no boundary starts at the row; 1 the plane stays above the one that
                      ///< does, 2 runs along it, 3 stays below it
        int up = 0;   ///< boundaries that the plane crosses upward
        int down = 0; ///< boundaries that the plane crosses downward
    };

    static const Directions& allDirections();
    void forgetPlanes();
    double sightGround();
    void continueKnownRow();
    void planNext();
    double cutGround(double slope);
    BoundaryScan scanBoundaries(double groundX) const;
    void addPiece(double slope, double x1, double x2, int layer);

    WedgePlanes& kept_;
    const WedgeSide& side_;
    const Directions& directions_;
    bool recording_ = false; ///< rows that are not known yet are kept
    std::size_t nextRow_ = 0;

    // Of the present row and plane
    double y0_ = 0; ///< FT
    int layer_ = 1;
    PlaneRow* known_ = nullptr;             ///< the row as it was kept
    const TrialPlane* rowPlanes_ = nullptr; ///< kept ones or planes_
    const PlanePiece* rowPieces_ = nullptr; ///< kept ones or pieces_
    std::size_t planeCount_ = 0;            ///< worked out so far
    std::size_t pieceCount_ = 0;            ///< in pieces_
    std::size_t step_ = 0;                  ///< number of the present plane
    bool last_ = false;
    bool topKnown_ = false; ///< sine and cosine of top_ are worked out
    Direction top_;
    const Direction* direction_ = &top_;
    std::size_t groundPoint_ = 0;  ///< where the walk over the ground for the next plane starts
    std::array<double, 51> sight_; ///< slope of the line from the wall point to each ground point
    std::array<TrialPlane, MaxPlanes> planes_;
    std::array<PlanePiece, static_cast<std::size_t>(MaxPlanes* MaxLayers)> pieces_;
};

inline bool SweepPlanes::next() {
    if (last_) {
        return false;
    }
    if (step_ == MaxPlanes) {
        throwRuntimeError(9);
    }
    const Direction& step = directions_[step_];
    last_ = step.angle > top_.angle;
    if (last_ && !topKnown_) {
        top_ = {top_.angle, std::sin(top_.angle), std::cos(top_.angle)};
        topKnown_ = true;
    }
    direction_ = last_ ? &top_ : &step;
    if (step_ == planeCount_) {
        planNext();
    }
    ++step_;
    return true;
}

/// The walk along the ground starts where that of the plane before ended: a flatter plane never
/// ends before a steeper one.
inline double SweepPlanes::cutGround(double slope) {
    const std::size_t count = side_.ground.size();
    std::size_t p = groundPoint_;
    while (p < count && sight_[p] > slope) {
        ++p;
    }
    groundPoint_ = p;
    if (p == count) {
        throwRuntimeError(9); // a plane that never reaches the ground
    }
    const LinePoint& end = side_.ground[p];
    if (sight_[p] == slope) {
        return end.x;
    }
    const double s = side_.ground[p - 1].slope;
    return divide(end.y - s * end.x - y0_, slope - s);
}

inline SweepPlanes::BoundaryScan SweepPlanes::scanBoundaries(double groundX) const {
    BoundaryScan scan;
    for (std::size_t b = 1; b < side_.layers.size(); ++b) {
        const double xb = side_.layers[b].topReach; // where the boundary reaches the ground
        const double yb = side_.layers[b - 1].bottomElev;
        if (yb == y0_) {
            scan.kind = groundX == xb ? 2 : groundX < xb ? 1 : 3;
            if (scan.kind != 3) {
                break;
            }
        } else if (yb > y0_) {
            if (groundX == xb) {
                break;
            }
            scan.up += groundX < xb ? 1 : 0;
        } else {
            if (groundX <= xb) {
                break;
            }
            ++scan.down;
        }
    }
    return scan;
}

/// Soil and surcharge on the plane between x1 and x2, in `layer`.
inline void SweepPlanes::addPiece(double slope, double x1, double x2, int layer) {
    if (pieceCount_ == pieces_.size()) {
        throwRuntimeError(9);
    }
    const double load = WedgeWeight(side_, y0_, slope, x1, slope * x1 + y0_, x2, layer) +
                        WedgeSurchargeLoad(side_, x1, x2);
    pieces_[pieceCount_++] = {load, std::abs(x2 - x1) / direction_->sin};
}

/// Works out the plane of the present direction, cut at the boundaries that it crosses.
inline void SweepPlanes::planNext() {
    if (rowPlanes_ != planes_.data()) {
        continueKnownRow();
    }
    const double slope = direction_->cos / direction_->sin;
    double x2 = cutGround(slope);
    const BoundaryScan scan = scanBoundaries(x2);
    TrialPlane& plane = planes_[planeCount_];
    plane.upward = scan.up > 0;
    plane.layer = !plane.upward && scan.kind == 3 ? layer_ + 1 : layer_;
    plane.alongBoundary = scan.kind == 2 && scan.up + scan.down == 0;
    plane.firstPiece = static_cast<int>(pieceCount_);
    plane.pieceCount = (plane.upward ? scan.up : scan.down) + 1;

    const int step = plane.upward ? 1 : -1;
    for (int layer = plane.layer - step * (plane.pieceCount - 1); layer != plane.layer;
         layer += step) {
        const WedgeLayer& above = layerOf(side_, plane.upward ? layer : layer - 1);
        const double x1 = divide(above.bottomElev - y0_, slope - above.bottomSlope);
        addPiece(slope, x1, x2, layer);
        x2 = x1;
    }
    addPiece(slope, 0, x2, plane.layer);
    ++planeCount_;
}

} // namespace korvane
