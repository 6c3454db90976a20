// The trial planes of the sweep and what lies on them: geometry and loads, no strengths.
#pragma once

#include "state/state.h"

#include <span>

namespace korvane {

/// The planes of one side at one level: from each point of the wall those from 23 degrees off the
/// vertical in steps of 2 degrees, and last the one 2 degrees short of the flattest line of sight
/// to a ground point. In an analysis planes are kept from trial to trial as long as the side is
/// described alike.
class SweepPlanes {
  public:
    SweepPlanes(State& state, int side, int level);
    ~SweepPlanes() { dropSpare(); }
    SweepPlanes(const SweepPlanes&) = delete;
    SweepPlanes& operator=(const SweepPlanes&) = delete;

    /// Goes down to the point of the wall at `elev` (FT), in `layer`.
    void enterRow(double elev, int layer);
    /// Takes the next flatter plane of the row; false behind the last one. RuntimeError 9 where a
    /// plane never reaches the ground.
    bool next();

    const Direction& direction() const { return direction_; }
    const TrialPlane& plane() const { return plane_; }
    /// Pieces of the plane, from the ground to the wall.
    std::span<const PlanePiece> pieces() const {
        return {planes_.pieces.data() + plane_.firstPiece,
                static_cast<std::size_t>(plane_.pieceCount)};
    }

  private:
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

    void forgetPlanes();
    void dropSpare();
    double sightGround();
    int planNext();
    GroundCut cutGround(double slope);
    BoundaryScan scanBoundaries(double groundX) const;
    void addPieces(TrialPlane& plane, double slope, const GroundCut& ground);
    void addPiece(double slope, double x1, double x2, int layer);
    PlaneRow& row() { return planes_.rows[row_]; }

    WedgePlanes& planes_;
    const WedgeSide& side_;
    bool recording_ = false; ///< every row is kept
    bool hasSpare_ = false;  ///< the present row is not kept
    std::size_t keptPlanes_ = 0;
    std::size_t keptPieces_ = 0;
    std::size_t nextRow_ = 0;

    // Of the present row and plane
    std::size_t row_ = 0;
    double y0_ = 0; ///< FT
    int layer_ = 1;
    bool sighted_ = false;
    Array<double, 51> sight_; ///< slope of the line from the wall point to each ground point
    int step_ = 0;
    bool last_ = false;
    Direction direction_;
    TrialPlane plane_;
    int planeIndex_ = -1;
};

} // namespace korvane
