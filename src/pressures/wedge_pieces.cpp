#include "pressures/wedge_pieces.h"

#include "pressures/wedge_load.h"
#include "runtime/arithmetic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <type_traits>

namespace korvane {

namespace {

/// Fewer pieces are weighed one by one.
constexpr std::size_t WorthALoop = 8;

using Column = PlaneColumn;

/// Stands for what has to be worked out piece by piece.
constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();

/// Where an edge is expected to run below a border; elsewhere it costs a second look.
enum class Crossing { Nowhere, AtEnds, Anywhere };

/// The pieces themselves as lower borders of areas. Heights count from the pieces' wall point.
struct PieceBorder {
    /// Rounding can set a piece's end on the ground a little above it.
    static constexpr Crossing Edge = Crossing::AtEnds;
    const double* x;
    const double* height;
    const double* slope;

    double at(std::size_t piece, double distance) const {
        return height[piece] + slope[piece] * (distance - x[piece]);
    }
};

/// A layer's bottom as lower border.
struct BottomBorder {
    static constexpr Crossing Edge = Crossing::Nowhere;
    double height;
    double slope;

    double at(std::size_t /*piece*/, double distance) const { return height + slope * distance; }
};

/// Twice the area between two verticals `width` apart, above a border that an edge leaves by
/// `left` and `right`; Unknown where the edge runs below the border unless it may cross it.
template <bool MayCross>
double doubleTrapezoid(double width, double left, double right) {
    double below = Unknown;
    if constexpr (MayCross) {
        const double positive = MaxOf(left, right);
        below = width * positive * positive / (MaxOf(left, -left) + MaxOf(right, -right));
        const double belowLeft = left <= 0 ? 0 : below;
        below = right <= 0 ? belowLeft : below;
    }
    const double above = width * (left + right);
    const double aboveLeft = left >= 0 ? above : below;
    return right >= 0 ? aboveLeft : below;
}

/// A part of the pieces.
struct PieceRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Adds twice the areas between some pieces and one segment of an edge, which begins at `ahead`.
/// Starts: a piece may start within the segment; Ends: it may end there; Level: it has no rise.
template <bool Starts, bool Ends, bool Level, bool MayCross, class Border>
void addSegmentAreas(const LinePoint& ahead, const LinePoint& next, const PlanePieces& pieces,
                     PieceRange range, const Border& border, Column& areas) {
    const double y0 = pieces.y0;
    const double* const x1 = pieces.x1;
    const double* const x2 = pieces.x2;
    const LinePoint start = ahead;
    const double end = next.x;
    const double endElev = next.y;
    const auto elevAt = [&start](double x) {
        return Level ? start.y : start.y + start.rise * ((x - start.x) / start.run);
    };
    for (std::size_t n = range.begin; n < range.end; ++n) {
        const bool startsHere = Starts && x1[n] >= start.x;
        const bool endsHere = Ends && x2[n] <= end;
        const double left = startsHere ? x1[n] : start.x;
        const double right = endsHere ? x2[n] : end;
        const double leftElev = startsHere ? elevAt(x1[n]) : start.y;
        const double rightElev = endsHere ? elevAt(x2[n]) : endElev;
        const double leftHeight = (leftElev - y0) - border.at(n, left);
        const double rightHeight = (rightElev - y0) - border.at(n, right);
        const double area = doubleTrapezoid<MayCross>(right - left, leftHeight, rightHeight);
        areas[n] += right > left ? area : 0;
    }
}

/// Hands a choice to code that is compiled for either.
template <class Code>
void either(bool choice, const Code& code) {
    if (choice) {
        code(std::true_type{});
    } else {
        code(std::false_type{});
    }
}

/// Twice the areas within the pieces' strips between an upper edge and the borders: segment by
/// segment from the wall outward, each for the pieces that reach it.
template <Crossing Where, class Border>
void areasUnderEdge(std::span<const LinePoint> edge, const PlanePieces& pieces,
                    const Border& border, Column& areas) {
    for (std::size_t n = 0; n < pieces.count; ++n) {
        areas[n] = 0;
    }
    PieceRange reached{0, pieces.count};
    for (std::size_t p = 1; p < edge.size(); ++p) {
        const LinePoint& ahead = edge[p - 1];
        const LinePoint& next = edge[p];
        while (reached.begin < reached.end && !(pieces.x2[reached.begin] > ahead.x)) {
            ++reached.begin;
        }
        PieceRange range = reached;
        while (range.begin < range.end && !(pieces.x1[range.end - 1] < next.x)) {
            --range.end;
        }
        std::size_t through = range.end; // from here on no piece ends before the segment does
        while (range.begin < through && pieces.x2[through - 1] > next.x) {
            --through;
        }
        const bool starts =
            !pieces.atWall && std::any_of(pieces.x1 + range.begin, pieces.x1 + range.end,
                                          [&](double x) { return x > ahead.x; });
        either(starts, [&](auto Starts) {
            either(ahead.rise == 0, [&](auto Level) {
                addSegmentAreas<Starts, true, Level, Where != Crossing::Nowhere>(
                    ahead, next, pieces, {range.begin, through}, border, areas);
                addSegmentAreas<Starts, false, Level, Where == Crossing::Anywhere>(
                    ahead, next, pieces, {through, range.end}, border, areas);
            });
        });
    }
}

/// Adds twice the weight of one layer's soil above each border.
template <class Border>
void addLayerWeights(const WedgeSide& side, const WedgeLayer& layer, const PlanePieces& pieces,
                     const Border& border, double flowWeight, Column& sums) {
    Column all;
    areasUnderEdge<Border::Edge>(edgePoints(side, layer.edge), pieces, border, all);
    if (layer.wet.count == 0) {
        for (std::size_t n = 0; n < pieces.count; ++n) {
            sums[n] += all[n] * layer.moist;
        }
        return;
    }
    /// A part that is its whole parent need not be walked again.
    const auto partAreas = [&](const Stretch& edge, const Stretch& parent,
                               const Column& parentAreas, Column& areas) {
        if (edge.count == 0) {
            areas.fill(0);
        } else if (edge == parent) {
            areas = parentAreas;
        } else {
            areasUnderEdge<Crossing::Anywhere>(edgePoints(side, edge), pieces, border, areas);
        }
    };
    Column wet;
    Column seep;
    Column deep;
    partAreas(layer.wet, layer.edge, all, wet);
    partAreas(layer.seep, layer.wet, wet, seep);
    partAreas(layer.deep, layer.seep, seep, deep);
    for (std::size_t n = 0; n < pieces.count; ++n) {
        const double dry = all[n] - wet[n];
        const double flow = seep[n] - deep[n];
        const double still = wet[n] - flow;
        sums[n] += dry * layer.moist + still * layer.still + flow * flowWeight;
    }
}

/// The surcharge on each piece.
void surchargeLoads(const WedgeSide& side, const PlanePieces& pieces, Column& sums) {
    const double* const x1 = pieces.x1;
    const double* const x2 = pieces.x2;
    for (std::size_t n = 0; n < pieces.count; ++n) {
        sums[n] = 0;
    }
    for (const PointLoad line : side.lineLoads) {
        for (std::size_t n = 0; n < pieces.count; ++n) {
            const double begun = x1[n] <= line.x ? line.load : 0;
            sums[n] += line.x < x2[n] ? begun : 0;
        }
    }
    const double uniformLoad = side.uniformLoad;
    for (std::size_t n = 0; n < pieces.count; ++n) {
        sums[n] += (x2[n] - x1[n]) * uniformLoad;
    }
    for (const StraightLoad load : side.loads) {
        for (std::size_t n = 0; n < pieces.count; ++n) {
            const double left = MaxOf(load.x1, x1[n]);
            const double right = MinOf(load.x2, x2[n]);
            const double area =
                (right - left) * (load.p1 + load.rate * ((left + right) / 2 - load.x1));
            sums[n] += right > left ? area : 0;
        }
    }
}

/// Soil and surcharge on one of the pieces.
double weighPiece(const WedgeSide& side, const PlanePieces& pieces, int layer, std::size_t n) {
    const double slope = pieces.slope[n];
    const double x1 = pieces.x1[n];
    const double x2 = pieces.x2[n];
    return WedgeWeight(side, pieces.y0, slope, x1, slope * x1 + pieces.y0, x2, layer) +
           WedgeSurchargeLoad(side, x1, x2);
}

} // namespace

// The same operations as for a single piece, in the same order, so that every sum rounds alike; a
// step is done for all pieces before the next one.
void weighPieces(const WedgeSide& side, const PlanePieces& pieces, int layer, double* loads) {
    if (pieces.count < WorthALoop) {
        for (std::size_t n = 0; n < pieces.count; ++n) {
            loads[n] = weighPiece(side, pieces, layer, n);
        }
        return;
    }
    Column sums;
    Column heights;
    for (std::size_t n = 0; n < pieces.count; ++n) {
        sums[n] = 0;
        heights[n] = (pieces.slope[n] * pieces.x1[n] + pieces.y0) - pieces.y0;
    }
    for (int number = 1; number < layer; ++number) {
        const WedgeLayer& above = layerOf(side, number);
        const BottomBorder bottom{above.bottomElev - pieces.y0, above.bottomSlope};
        addLayerWeights(side, above, pieces, bottom, above.flowAbove, sums);
    }
    const WedgeLayer& own = layerOf(side, layer);
    const PieceBorder border{pieces.x1, heights.data(), pieces.slope};
    addLayerWeights(side, own, pieces, border, own.flow, sums);

    Column surcharge;
    surchargeLoads(side, pieces, surcharge);
    for (std::size_t n = 0; n < pieces.count; ++n) {
        const double load = sums[n] / 2 + surcharge[n];
        loads[n] = pieces.x2[n] > pieces.x1[n] ? load : Unknown;
    }
    for (std::size_t n = 0; n < pieces.count; ++n) {
        if (std::isnan(loads[n])) {
            loads[n] = weighPiece(side, pieces, layer, n);
        }
    }
}

} // namespace korvane
