// What the wedge methods keep of one side while it stays the same: its soil and loads in the form
// in which planes are weighed, and the loads on the planes of the sweep.
#pragma once

#include <cstddef>
#include <vector>

namespace korvane {

/// A point of a line over the distance from the wall, and the segment behind it.
struct LinePoint {
    double x = 0;     ///< FT
    double y = 0;     ///< FT elevation
    double run = 0;   ///< FT to the next point, 0 behind the last one
    double rise = 0;  ///< FT to the next point
    double slope = 0; ///< FT/FT, 0 where the segment has no length

    bool operator==(const LinePoint&) const = default;
};

/// A load on one point of the ground.
struct PointLoad {
    double x = 0;    ///< FT
    double load = 0; ///< LB

    bool operator==(const PointLoad&) const = default;
};

/// A load on the ground that runs straight between two points, the second of which may be infinite.
struct StraightLoad {
    double x1 = 0;   ///< FT
    double x2 = 0;   ///< FT
    double p1 = 0;   ///< PSF at x1
    double rate = 0; ///< PSF/FT

    bool operator==(const StraightLoad&) const = default;
};

/// A part of a vector.
struct Stretch {
    int first = 0;
    int count = 0;

    bool operator==(const Stretch&) const = default;
};

/// One layer of a wedge side.
struct WedgeLayer {
    double bottomElev = 0;  ///< FT, of its bottom at the wall
    double bottomSlope = 0; ///< FT/FT
    double topReach = 0;    ///< FT from the wall, where its upper boundary reaches the ground
    Stretch edge;           ///< its upper edge, in WedgeSide::points
    Stretch wet;            ///< upper edge of its part below the water, empty where there is none
    Stretch seep;           ///< of the part in which seepage acts
    Stretch deep;           ///< of the part below the end of the seepage
    double moist = 0;       ///< PCF
    double still = 0;       ///< PCF in still water
    double flow = 0;        ///< PCF in seepage, above a plane in this layer
    double flowAbove = 0;   ///< PCF in seepage, above a plane in a lower layer

    bool operator==(const WedgeLayer&) const = default;
};

/// All that the load on a plane through the soil of one side depends on.
struct WedgeSide {
    std::vector<LinePoint> ground; ///< the far points included
    std::vector<LinePoint> points; ///< of the layers' edges
    std::vector<WedgeLayer> layers;
    std::vector<PointLoad> lineLoads;
    double uniformLoad = 0; ///< PSF
    std::vector<StraightLoad> loads;

    bool operator==(const WedgeSide&) const = default;
};

/// The direction of a plane, measured from the vertical.
struct Direction {
    double angle = 0; ///< radians
    double sin = 0;
    double cos = 1;
};

/// A piece of a trial plane within one layer.
struct PlanePiece {
    double load;   ///< LB, soil and surcharge
    double length; ///< FT
};

/// A trial plane of the sweep: pieces from the ground to the wall, one for each layer.
struct TrialPlane {
    int firstPiece = 0; ///< counts within the row
    int pieceCount = 0;
    int layer = 1;              ///< of the piece at the wall
    bool upward = false;        ///< it rises into the layers above that one
    bool alongBoundary = false; ///< it runs along the bottom of its layer
};

/// The planes from one point of the wall.
struct PlaneRow {
    double elev = 0;       ///< FT
    int layer = 1;         ///< at that point
    bool topKnown = false; ///< sine and cosine of `top` are worked out
    Direction top;         ///< of the last plane of the row
    std::size_t firstPlane = 0;
    std::size_t planeCount = 0; ///< worked out so far, the steepest ones
    std::size_t firstPiece = 0;
    std::size_t pieceCount = 0;
};

/// Planes of the sweep on one side.
struct WedgePlanes {
    WedgeSide side;             ///< the planes are those of this side and of no other
    WedgeSide fresh;            ///< the side of the present trial, until it is known to be the same
    bool kept = false;          ///< rows hold all planes worked out so far
    std::vector<PlaneRow> rows; ///< descending
    std::vector<TrialPlane> planes;
    std::vector<PlanePiece> pieces;
};

} // namespace korvane
