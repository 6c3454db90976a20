// The trial planes of the sweep and what lies on them: geometry and loads, no strengths.
#pragma once

#include "pressures/wedge_pieces.h"
#include "state/pressure_details.h"
#include "state/state.h"
#include "state/wedge_side.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace korvane {

/// A part of the ground between two places, FT from the wall; empty by itself.
struct Reach {
    double from = 0;
    double to = 0;
};

/// Where a piece of the planes from begin to end lies, FT from the wall.
struct PieceEnds {
    std::size_t begin = 0;
    std::size_t end = 0;
    const double* x1 = nullptr; ///< of all planes of the row, as are x2
    const double* x2 = nullptr;
    bool ascending = false; ///< no x1 or x2 is less than that of the plane before
};

/// The planes of one side at one level: from each point of the wall those from 23 degrees off the
/// vertical in steps of 2 degrees, and last the one 2 degrees short of the flattest line of sight
/// to a ground point. In an analysis planes are kept from trial to trial as long as the side is
/// described alike. Planes of a row count from 0.
class SweepPlanes {
  public:
    SweepPlanes(State& state, int side, int level);

    /// Goes down to the point of the wall at `elev` (FT), in `layer`.
    void enterRow(double elev, int layer);
    /// Works out the next planes of the row, at most `most` and at least one: they go from the last
    /// call's end() to end(). False behind the last plane. RuntimeError 9 where the next plane
    /// never reaches the ground.
    bool next(std::size_t most);
    std::size_t end() const { return end_; }
    /// Keeps the planes of the row that were worked out.
    void leaveRow();

    /// Sine and cosine of the planes' angles from the vertical.
    const double* sin() const { return sin_.data(); }
    const double* cos() const { return cos_.data(); }
    const TrialPlane& plane(std::size_t n) const { return rowPlanes_[n]; }
    /// The end of the planes from n on that pass through the same layers.
    std::size_t runEnd(std::size_t n) const {
        const TrialPlane* const last = rowPlanes_ + end_;
        const TrialPlane first = rowPlanes_[n];
        return static_cast<std::size_t>(
            std::find_if(rowPlanes_ + n, last, [first](TrialPlane p) { return !(p == first); }) -
            rowPlanes_);
    }
    /// Loads (LB) on a piece of the planes, counted from the wall and from 0, and its lengths (FT).
    const double* loads(int piece) const { return column(2 * piece); }
    const double* lengths(int piece) const { return column(2 * piece + 1); }
    /// The pieces of a plane as they lie, from the ground to the wall, with what rests on each;
    /// strengths and forces are left to the caller.
    [[gnu::cold]] std::vector<WedgePiece> describePieces(std::size_t n) const;

  private:
    static constexpr std::size_t MaxColumns = 22; ///< load and length in each of 11 layers
    using Column = PlaneColumn;

    void forgetPlanes();
    double sightGround();
    void countPlanes();
    void setTopDirection();
    void continueKnownRow();
    void planUpTo(std::size_t end);
    std::size_t cutGround(std::size_t begin, std::size_t end);
    std::size_t nameLayers(std::size_t begin, std::size_t end);
    double groundOf(double slope) const;
    bool planThrough(double groundX, TrialPlane& plane) const;
    Reach reachAround(double groundX) const;
    std::size_t cutRun(std::size_t begin, std::size_t end);
    void addColumn(int piece, const PieceEnds& ends);
    const double* column(int number) const {
        return rowColumns_ + static_cast<std::size_t>(number) * stride_;
    }

    WedgePlanes& kept_;
    const WedgeSide& side_;
    bool recording_ = false; ///< rows that are not known yet are kept
    std::size_t nextRow_ = 0;

    // Of the present row
    double y0_ = 0; ///< FT
    int layer_ = 1;
    double topAngle_ = 0;
    std::size_t allPlanes_ = 0;             ///< of the row
    std::size_t planeCount_ = 0;            ///< worked out so far
    std::size_t end_ = 0;                   ///< handed out so far
    PlaneRow* known_ = nullptr;             ///< the row as it was kept
    const TrialPlane* rowPlanes_ = nullptr; ///< kept ones or planes_
    const double* rowColumns_ = nullptr;    ///< kept ones or columns_
    std::size_t stride_ = MaxSweepPlanes;   ///< of rowColumns_
    std::size_t groundPoint_ = 1;  ///< where the walk over the ground for the next plane starts
    std::array<double, 51> sight_; ///< slope of the line from the wall point to each ground point
    Column angle_;
    Column sin_;
    Column cos_;
    Column slope_;
    std::size_t topPlane_ = 0;   ///< the last plane to which the top of a range was given
    Column groundX_;             ///< FT, where the planes reach the ground
    bool groundAscends_ = false; ///< none nearer than that of the plane before
    std::array<Column, 2> cuts_; ///< FT, the ends of one piece and the next
    Column atWall_{};            ///< where the last pieces end
    std::array<TrialPlane, MaxSweepPlanes> planes_;
    std::array<double, MaxColumns * MaxSweepPlanes> columns_;
};

} // namespace korvane
