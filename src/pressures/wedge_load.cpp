#include "pressures/wedge_load.h"

#include "runtime/arithmetic.h"

#include <cstddef>

namespace korvane {

namespace {

/// A straight lower border of an area: a piece of plane or a layer's bottom. Heights count from
/// the origin of the area sums.
struct LowerBorder {
    double x;      ///< FT, a point on it
    double height; ///< FT at that point
    double slope;  ///< FT/FT

    double at(double distance) const { return height + slope * (distance - x); }
};

/// The vertical strip between two distances from the wall, with the origin of its heights.
struct Strip {
    double x1; ///< FT
    double x2; ///< FT
    double y0; ///< FT elevation
};

/// Twice the area between two verticals `width` apart, above a border that an edge leaves by
/// `left` and `right`; where the edge runs below the border there is no area.
double doubleTrapezoid(double width, double left, double right) {
    if (left >= 0 && right >= 0) {
        return width * (left + right);
    }
    if (left <= 0 && right <= 0) {
        return 0;
    }
    const double positive = MaxOf(left, right);
    return width * positive * positive / (MaxOf(left, -left) + MaxOf(right, -right));
}

/// Twice the area within the strip between an upper edge and a lower border: one walk along the
/// edge from the strip's left end to its right end.
double doubleAreaUnderEdge(std::span<const LinePoint> edge, const Strip& strip,
                           const LowerBorder& border) {
    const std::size_t points = edge.size();
    std::size_t p = 1;
    while (p < points && edge[p].x <= strip.x1) {
        ++p;
    }
    if (p >= points) {
        return 0;
    }
    const auto heightOver = [&](const LinePoint& ahead, double x) {
        const double level = ahead.y - strip.y0;
        const double height = ahead.rise == 0
                                  ? level
                                  : (ahead.y + ahead.rise * ((x - ahead.x) / ahead.run)) - strip.y0;
        return height - border.at(x);
    };
    double area = 0;
    double left = strip.x1;
    double leftHeight = heightOver(edge[p - 1], left);
    for (; p < points && edge[p].x < strip.x2; ++p) {
        const double x = edge[p].x;
        const double rightHeight = (edge[p].y - strip.y0) - border.at(x);
        area += doubleTrapezoid(x - left, leftHeight, rightHeight);
        left = x;
        leftHeight = rightHeight;
    }
    if (p < points) {
        area += doubleTrapezoid(strip.x2 - left, leftHeight, heightOver(edge[p - 1], strip.x2));
    }
    return area;
}

/// Twice the weight of one layer's soil in the strip above `border`, which is the plane in the
/// plane's own layer and else the layer's bottom; `flowWeight` is that of soil in the seepage.
double doubleLayerWeight(const WedgeSide& side, const WedgeLayer& layer, const Strip& strip,
                         const LowerBorder& border, double flowWeight) {
    const auto areaUnder = [&](const Stretch& edge) {
        return doubleAreaUnderEdge(edgePoints(side, edge), strip, border);
    };
    /// A part that is its whole parent need not be walked again.
    const auto partArea = [&](const Stretch& edge, const Stretch& parent, double parentArea) {
        return edge.count == 0 ? 0 : edge == parent ? parentArea : areaUnder(edge);
    };
    const double all = areaUnder(layer.edge);
    if (layer.wet.count == 0) {
        return all * layer.moist;
    }
    const double wet = partArea(layer.wet, layer.edge, all);
    const double seep = partArea(layer.seep, layer.wet, wet);
    const double deep = partArea(layer.deep, layer.seep, seep);
    const double dry = all - wet;
    const double flow = seep - deep;
    const double still = wet - flow;
    return dry * layer.moist + still * layer.still + flow * flowWeight;
}

/// Area under a straight load between x1 and x2.
double loadArea(const StraightLoad& load, double x1, double x2) {
    const double left = MaxOf(load.x1, x1);
    const double right = MinOf(load.x2, x2);
    return right > left ? (right - left) * (load.p1 + load.rate * ((left + right) / 2 - load.x1))
                        : 0;
}

} // namespace

// Weight of the soil above a piece of plane: layer by layer from the ground down to the piece's own
// layer, each by its moist weight above the water, its buoyant weight below it, and with the share
// of the seepage where that acts. FT, PCF, LB per foot of wall. Areas by the trapezoid rule, exact
// for straight edges; halved once at the end. Sums from the wall outward would be faster, but they
// round otherwise and so move printed digits of walls in clay, where pressures are round numbers.
double WedgeWeight(const WedgeSide& side, double y0, double slope, double x1, double y1, double x2,
                   int layer) {
    if (!(x2 > x1)) {
        return 0;
    }
    const Strip strip{x1, x2, y0};
    double sum = 0;
    for (int number = 1; number < layer; ++number) {
        const WedgeLayer& above = layerOf(side, number);
        const LowerBorder bottom{0, above.bottomElev - y0, above.bottomSlope};
        sum += doubleLayerWeight(side, above, strip, bottom, above.flowAbove);
    }
    const WedgeLayer& own = layerOf(side, layer);
    return (sum + doubleLayerWeight(side, own, strip, {x1, y1 - y0, slope}, own.flow)) / 2;
}

// Vertical surcharges on the ground from x1 to x2 (FT): all six kinds as loads on the wedge below.
double WedgeSurchargeLoad(const WedgeSide& side, double x1, double x2) {
    if (!(x2 > x1)) {
        return 0;
    }
    double sum = 0;
    for (const auto& [x, load] : side.lineLoads) {
        sum += x1 <= x && x < x2 ? load : 0;
    }
    sum += (x2 - x1) * side.uniformLoad;
    for (const StraightLoad& load : side.loads) {
        sum += loadArea(load, x1, x2);
    }
    return sum;
}

} // namespace korvane
