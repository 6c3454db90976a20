// What the wedge methods keep of one side while it stays the same: its soil and loads in the form
// in which planes are weighed, and the loads on the planes of the sweep.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
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

/// More planes than the sweep tries from one point of the wall: from 23 to 180 degrees.
inline constexpr std::size_t MaxSweepPlanes = 80;

/// A trial plane of the sweep: pieces from the wall to the ground, one for each layer.
struct TrialPlane {
    std::uint8_t pieceCount = 0;
    std::uint8_t layer = 1;         ///< of the piece at the wall
    std::uint8_t upward = 0;        ///< 1 where it rises into the layers above that one
    std::uint8_t alongBoundary = 0; ///< 1 where it runs along the bottom of its layer

    /// The layer of a piece, counted from the wall and from 0.
    int layerOfPiece(int piece) const { return upward != 0 ? layer - piece : layer + piece; }

    bool operator==(const TrialPlane& other) const {
        return std::memcmp(this, &other, sizeof other) == 0;
    }
};
static_assert(std::has_unique_object_representations_v<TrialPlane>);

/// The planes from one point of the wall.
struct PlaneRow {
    double elev = 0;             ///< FT
    int layer = 1;               ///< at that point
    double topAngle = 0;         ///< radians from the vertical, of the last plane
    std::size_t firstPlane = 0;  ///< in WedgePlanes::planes
    std::size_t planeCount = 0;  ///< worked out so far, the steepest ones
    std::size_t firstColumn = 0; ///< in WedgePlanes::columns
};

/// Planes of the sweep on one side.
struct WedgePlanes {
    WedgeSide side;             ///< the planes are those of this side and of no other
    WedgeSide fresh;            ///< the side of the present trial, until it is known to be the same
    bool kept = false;          ///< rows hold all planes worked out so far
    std::vector<PlaneRow> rows; ///< descending
    std::vector<TrialPlane> planes;
    /// For each row, piece by piece from the wall: the loads (LB) on that piece of all planes, then
    /// its lengths (FT).
    std::vector<double> columns;
};

} // namespace korvane
