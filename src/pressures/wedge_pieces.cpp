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

/// Pieces of planes as lower borders of areas. Heights count from the pieces' wall point.
struct PieceBorder {
    /// Rounding can set a piece's end on the ground a little above it.
    static constexpr Crossing Edge = Crossing::AtEnds;
    static constexpr bool Alike = false;
    const double* x;
    const double* height;
    const double* slope;

    double at(std::size_t piece, double distance) const {
        return height[piece] + slope[piece] * (distance - x[piece]);
    }
    double atStart(std::size_t piece) const { return height[piece]; }
};

/// Pieces that start at the wall.
struct WallPieceBorder {
    static constexpr Crossing Edge = Crossing::AtEnds;
    static constexpr bool Alike = false;
    const double* slope;

    double at(std::size_t piece, double distance) const { return slope[piece] * distance; }
    double atStart(std::size_t /*piece*/) const { return 0; }
};

/// A layer's bottom as lower border.
struct BottomBorder {
    static constexpr Crossing Edge = Crossing::Nowhere;
    static constexpr bool Alike = true; ///< the same one below all pieces
    const double* x;                    ///< where the pieces start
    double height;
    double slope;

    double at(std::size_t /*piece*/, double distance) const { return height + slope * distance; }
    double atStart(std::size_t piece) const { return at(piece, x[piece]); }
};

/// Twice the area between two verticals `width` apart, above a border that an edge leaves by
/// `left` and `right`; Unknown where the edge runs below the border unless it may cross it.
template <bool MayCross>
double doubleTrapezoid(double width, double left, double right) {
    const double lower = MinOf(left, right);
    double below = Unknown;
    if constexpr (MayCross) {
        const double upper = MaxOf(left, right);
        const double triangle = width * upper * upper / (upper - lower);
        below = upper <= 0 ? 0 : triangle;
    }
    const double above = width * (left + right);
    return lower >= 0 ? above : below;
}

/// A part of the pieces.
struct PieceRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Adds twice the areas between some pieces and one segment of an edge, which begins at `ahead`.
/// Starts: the pieces start within the segment, else before it; Ends: they end there, else beyond
/// it; Level: the segment has no rise.
template <bool Starts, bool Ends, bool Level, bool MayCross, class Border>
void addSegmentAreas(const LinePoint& ahead, const LinePoint& next, const PlanePieces& pieces,
                     PieceRange range, const Border& border, Column& areas) {
    const double y0 = pieces.y0;
    const double* const x1 = pieces.x1;
    const double* const x2 = pieces.x2;
    const LinePoint start = ahead;
    const double end = next.x;
    const double startHeight = start.y - y0;
    const double endHeight = next.y - y0;
    const auto heightAt = [&start, startHeight, y0](double x) {
        return Level ? startHeight : (start.y + start.rise * ((x - start.x) / start.run)) - y0;
    };
    const auto areaOver = [&](std::size_t n) {
        const double left = Starts ? x1[n] : start.x;
        const double right = Ends ? x2[n] : end;
        const double leftBorder = Starts ? border.atStart(n) : border.at(n, left);
        const double leftHeight = (Starts ? heightAt(left) : startHeight) - leftBorder;
        const double rightHeight = (Ends ? heightAt(right) : endHeight) - border.at(n, right);
        return doubleTrapezoid<MayCross>(right - left, leftHeight, rightHeight);
    };
    if constexpr (Border::Alike && !Starts && !Ends) {
        const double area = areaOver(0);
        for (std::size_t n = range.begin; n < range.end; ++n) {
            areas[n] += area;
        }
    } else {
        for (std::size_t n = range.begin; n < range.end; ++n) {
            areas[n] += areaOver(n);
        }
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

/// The first of some pieces whose end lies beyond `distance`, or at it with `orAt`.
template <bool OrAt>
std::size_t firstBeyond(const double* ends, PieceRange range, double distance) {
    const auto before = [distance](double x) { return OrAt ? x < distance : x <= distance; };
    if (range.begin == range.end || before(ends[range.end - 1])) {
        return range.end;
    }
    return static_cast<std::size_t>(
        std::partition_point(ends + range.begin, ends + range.end, before) - ends);
}

/// Twice the areas within the pieces' strips between an upper edge and the borders: segment by
/// segment from the wall outward, each for the pieces that reach it.
template <Crossing Where, class Border>
void areasUnderEdge(std::span<const LinePoint> edge, const PlanePieces& pieces,
                    const Border& border, Column& areas) {
    for (std::size_t n = 0; n < pieces.count; ++n) {
        areas[n] = 0;
    }
    if (edge.empty()) {
        return;
    }
    const std::size_t count = pieces.count;
    std::size_t reaching = firstBeyond<false>(pieces.x2, {0, count}, edge[0].x);
    // Pieces up to here start before the segment; all of them at the wall.
    std::size_t before =
        pieces.atWall ? count : firstBeyond<true>(pieces.x1, {0, count}, edge[0].x);
    for (std::size_t p = 1; p < edge.size() && reaching < count; ++p) {
        const LinePoint& ahead = edge[p - 1];
        const LinePoint& next = edge[p];
        const std::size_t through = firstBeyond<false>(pieces.x2, {reaching, count}, next.x);
        const std::size_t end =
            pieces.atWall ? count : firstBeyond<true>(pieces.x1, {before, count}, next.x);
        const auto add = [&](auto Starts, auto Ends, PieceRange range) {
            constexpr bool MayCross =
                Where == Crossing::Anywhere || (Where == Crossing::AtEnds && Ends);
            if (range.begin < range.end) {
                either(ahead.rise == 0, [&](auto Level) {
                    addSegmentAreas<Starts, Ends, Level, MayCross>(ahead, next, pieces, range,
                                                                   border, areas);
                });
            }
        };
        if (next.x > ahead.x) {
            const auto yes = std::true_type{};
            const auto no = std::false_type{};
            add(no, yes, {reaching, std::min(through, before)});
            add(yes, yes, {std::max(reaching, before), through});
            add(no, no, {std::max(reaching, through), std::min(before, end)});
            add(yes, no, {std::max(through, before), end});
        }
        reaching = through;
        before = end;
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
    const PieceRange all{0, pieces.count};
    for (std::size_t n = 0; n < pieces.count; ++n) {
        sums[n] = 0;
    }
    for (const PointLoad line : side.lineLoads) {
        const std::size_t end = firstBeyond<false>(x1, all, line.x);
        for (std::size_t n = firstBeyond<false>(x2, all, line.x); n < end; ++n) {
            sums[n] += line.load;
        }
    }
    if (const double uniformLoad = side.uniformLoad; uniformLoad != 0) {
        for (std::size_t n = 0; n < pieces.count; ++n) {
            sums[n] += (x2[n] - x1[n]) * uniformLoad;
        }
    }
    for (const StraightLoad load : side.loads) {
        const auto area = [&load](double left, double right) {
            return (right - left) * (load.p1 + load.rate * ((left + right) / 2 - load.x1));
        };
        const std::size_t end = firstBeyond<true>(x1, all, load.x2);
        const std::size_t begin = firstBeyond<false>(x2, all, load.x1);
        // From here on pieces start within the load; from there on they end beyond it.
        const std::size_t within = firstBeyond<false>(x1, all, load.x1);
        const std::size_t beyond = firstBeyond<true>(x2, all, load.x2);
        const std::size_t full = std::min(within, end);
        for (std::size_t n = begin; n < std::min(full, beyond); ++n) {
            sums[n] += area(load.x1, x2[n]);
        }
        const double whole = area(load.x1, load.x2);
        for (std::size_t n = std::max(begin, beyond); n < full; ++n) {
            sums[n] += whole;
        }
        for (std::size_t n = std::max(begin, within); n < end; ++n) {
            sums[n] += area(x1[n], MinOf(load.x2, x2[n]));
        }
    }
}

/// True where all of some numbers are finite; looks at several at once.
bool allFinite(const double* numbers, std::size_t count) {
    std::array<double, 4> zeros{}; // not a number behind one that is infinite or none
    std::size_t n = 0;
    for (; n + zeros.size() <= count; n += zeros.size()) {
        for (std::size_t lane = 0; lane < zeros.size(); ++lane) {
            zeros[lane] += numbers[n + lane] * 0;
        }
    }
    for (; n < count; ++n) {
        zeros[0] += numbers[n] * 0;
    }
    return zeros[0] + zeros[1] + zeros[2] + zeros[3] == 0;
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
    if (pieces.count < WorthALoop || !pieces.ascending) {
        for (std::size_t n = 0; n < pieces.count; ++n) {
            loads[n] = weighPiece(side, pieces, layer, n);
        }
        return;
    }
    Column sums;
    for (std::size_t n = 0; n < pieces.count; ++n) {
        sums[n] = 0;
    }
    for (int number = 1; number < layer; ++number) {
        const WedgeLayer& above = layerOf(side, number);
        const BottomBorder bottom{pieces.x1, above.bottomElev - pieces.y0, above.bottomSlope};
        addLayerWeights(side, above, pieces, bottom, above.flowAbove, sums);
    }
    const WedgeLayer& own = layerOf(side, layer);
    if (pieces.atWall) {
        addLayerWeights(side, own, pieces, WallPieceBorder{pieces.slope}, own.flow, sums);
    } else {
        Column heights;
        for (std::size_t n = 0; n < pieces.count; ++n) {
            heights[n] = (pieces.slope[n] * pieces.x1[n] + pieces.y0) - pieces.y0;
        }
        const PieceBorder border{pieces.x1, heights.data(), pieces.slope};
        addLayerWeights(side, own, pieces, border, own.flow, sums);
    }

    Column surcharge;
    surchargeLoads(side, pieces, surcharge);
    const double* const x1 = pieces.x1;
    const double* const x2 = pieces.x2;
    for (std::size_t n = 0; n < pieces.count; ++n) {
        const double load = sums[n] / 2 + surcharge[n];
        loads[n] = x2[n] > x1[n] ? load : Unknown;
    }
    if (allFinite(loads, pieces.count)) {
        return;
    }
    for (std::size_t n = 0; n < pieces.count; ++n) {
        if (std::isnan(loads[n])) {
            loads[n] = weighPiece(side, pieces, layer, n);
        }
    }
}

} // namespace korvane
