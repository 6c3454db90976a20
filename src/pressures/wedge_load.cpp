#include "pressures/wedge_load.h"

#include "pressures/wedge_regions.h"
#include "runtime/arithmetic.h"

#include <cstddef>
#include <span>

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

/// Twice the area within the strip between a polygon's upper edge and a lower border: one walk
/// along the edge from the strip's left end to its right end.
double doubleAreaUnderEdge(const RegionFamily& family, int side, int layer, int edgePoints,
                           const Strip& strip, const LowerBorder& border) {
    const int count = family.Count(side, layer);
    if (!(family.X(side, layer, count + 1) > strip.x1)) {
        return 0;
    }
    const auto points = static_cast<std::size_t>(edgePoints);
    const std::span<const double> X(&family.X(side, layer, 1), points);
    const std::span<const double> Y(&family.Y(side, layer, 1), points);
    const auto heightOver = [&](std::size_t p, double x) {
        const double edge = Y[p - 1] + (Y[p] - Y[p - 1]) * ((x - X[p - 1]) / (X[p] - X[p - 1]));
        return (edge - strip.y0) - border.at(x);
    };

    std::size_t p = 1;
    while (p < points && X[p] <= strip.x1) {
        ++p;
    }
    if (p == points) {
        return 0;
    }
    double area = 0;
    double left = strip.x1;
    double leftHeight = heightOver(p, left);
    for (; p < points && X[p] < strip.x2; ++p) {
        const double rightHeight = (Y[p] - strip.y0) - border.at(X[p]);
        area += doubleTrapezoid(X[p] - left, leftHeight, rightHeight);
        left = X[p];
        leftHeight = rightHeight;
    }
    if (p < points) {
        area += doubleTrapezoid(strip.x2 - left, leftHeight, heightOver(p, strip.x2));
    }
    return area;
}

/// Twice the weight of one layer's soil in the strip above `border`, which is the plane in the
/// plane's own layer and else the layer's bottom.
double doubleLayerWeight(const State& state, int side, int level, int layer, const Strip& strip,
                         const LowerBorder& border, bool ownLayer) {
    const Problem& problem = state.problem;
    const WedgeRegions& regions = state.regions;
    const bool hasBottom = layer < problem.SoilLayerCount(side);
    const auto area = [&](const RegionFamily& family) {
        // The last point of a closed polygon is its bottom's end at the wall.
        const int edgePoints = family.Count(side, layer) - (hasBottom ? 1 : 0);
        return doubleAreaUnderEdge(family, side, layer, edgePoints, strip, border);
    };
    /// A part that is its whole parent need not be walked again.
    const auto partArea = [&](const RegionFamily& family, double parent) {
        const int kind = family.Kind(side, layer);
        return kind == NoRegion ? 0 : kind == WholeRegion ? parent : area(family);
    };

    const double all = area(regions.Layer);
    const double moist = problem.SoilMoistWeight(side, layer);
    if (regions.Wet.Kind(side, layer) == NoRegion) {
        return all * moist;
    }
    const double wet = partArea(regions.Wet, all);
    const double seep = partArea(regions.Seep, wet);
    const double deep = partArea(regions.Deep, seep);

    const double dry = all - wet;
    const double flow = seep - deep;
    const double still = wet - flow;
    const double water = problem.WaterUnitWeight;
    const double saturated = problem.SoilSatWeight(side, layer);
    // Only the plane's own layer loses the water's weight in the seepage zone: a deliberate
    // difference. The layers above it lose or gain the gradient's share alone.
    const double waterShare = (ownLayer ? 1 : 0) + (2 * side - 3) * problem.SeepageGradient(level);
    return dry * moist + still * (saturated - water) + flow * (saturated - waterShare * water);
}

/// Area under a load that runs straight from p1 at d1 to p2 at d2, between x1 and x2. Without
/// length it has no area.
double loadArea(double d1, double p1, double d2, double p2, double x1, double x2) {
    const double left = MaxOf(d1, x1);
    const double right = MinOf(d2, x2);
    if (!(right > left)) {
        return 0;
    }
    const double rate = (p2 - p1) / (d2 - d1);
    return (right - left) * (p1 + rate * ((left + right) / 2 - d1));
}

} // namespace

// Weight of the soil above a piece of plane: layer by layer from the ground down to the piece's own
// layer, each by its moist weight above the water, its buoyant weight below it, and with the share
// of the seepage where that acts. Reads the regions of the side and level; FT, PCF, LB per foot of
// wall. Areas by the trapezoid rule, exact for straight edges; halved once at the end.
double WedgeWeight(const State& state, double y0, double slope, int side, int level, double x1,
                   double y1, double x2, double /*y2*/, int layer) {
    const Problem& problem = state.problem;
    if (!(x2 > x1)) {
        return 0;
    }
    const Strip strip{x1, x2, y0};
    double sum = 0;
    for (int above = 1; above < layer; ++above) {
        const LowerBorder bottom{0, problem.SoilBottomElev(side, above) - y0,
                                 problem.SoilBottomSlope(side, above)};
        sum += doubleLayerWeight(state, side, level, above, strip, bottom, false);
    }
    const LowerBorder plane{x1, y1 - y0, slope};
    sum += doubleLayerWeight(state, side, level, layer, strip, plane, true);
    return sum / 2;
}

// Vertical surcharges on the ground from x1 to x2 (FT): all six kinds as loads on the wedge below.
double WedgeSurchargeLoad(const Problem& problem, int side, double x1, double x2) {
    if (!(x2 > x1)) {
        return 0;
    }
    double load = 0;
    for (int i = 1; i <= problem.VLineCount(side); ++i) {
        if (x1 <= problem.VLineDist(side, i) && problem.VLineDist(side, i) < x2) {
            load += problem.VLineLoad(side, i);
        }
    }
    if (problem.VUniformCount(side) != 0) {
        load += (x2 - x1) * problem.VUniformLoad(side);
    }
    for (int i = 1; i <= problem.VStripCount(side); ++i) {
        const double strip = problem.VStripLoad(side, i);
        load += loadArea(problem.VStripStart(side, i), strip, problem.VStripEnd(side, i), strip, x1,
                         x2);
    }
    if (problem.VRampCount(side) != 0) {
        const double full = problem.VRampLoad(side);
        const double end = problem.VRampEnd(side);
        load += loadArea(problem.VRampStart(side), 0, end, full, x1, x2);
        load += full * MaxOf(0, x2 - MaxOf(end, x1));
    }
    for (int i = 1; i <= problem.VTriCount(side); ++i) {
        const double peak = problem.VTriPeak(side, i);
        const double full = problem.VTriLoad(side, i);
        load += loadArea(problem.VTriStart(side, i), 0, peak, full, x1, x2);
        load += loadArea(peak, full, problem.VTriEnd(side, i), 0, x1, x2);
    }
    for (int i = 1; i < problem.VVarCount(side); ++i) {
        load += loadArea(problem.VVarDist(side, i), problem.VVarLoad(side, i),
                         problem.VVarDist(side, i + 1), problem.VVarLoad(side, i + 1), x1, x2);
    }
    return load;
}

} // namespace korvane
