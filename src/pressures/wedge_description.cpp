#include "pressures/wedge_description.h"

#include "pressures/wedge_regions.h"

#include <algorithm>
#include <limits>

namespace korvane {

namespace {

/// Copies a poly-line behind the points in use.
template <class X, class Y>
Stretch addLine(std::vector<LinePoint>& points, int count, X x, Y y) {
    const Stretch stretch{static_cast<int>(points.size()), std::max(count, 0)};
    for (int p = 1; p <= count; ++p) {
        const double run = p < count ? x(p + 1) - x(p) : 0;
        const double rise = p < count ? y(p + 1) - y(p) : 0;
        points.push_back({x(p), y(p), run, rise, run != 0 ? rise / run : 0});
    }
    return stretch;
}

/// The upper edge of a layer's region; `parent` where the region is all of it.
Stretch addEdge(std::vector<LinePoint>& points, const RegionFamily& family, int side, int layer,
                bool hasBottom) {
    // The last point of a closed polygon is its bottom's end at the wall.
    return addLine(
        points, family.Count(side, layer) - (hasBottom ? 1 : 0),
        [&](int p) { return family.X(side, layer, p); },
        [&](int p) { return family.Y(side, layer, p); });
}

Stretch addPart(std::vector<LinePoint>& points, const RegionFamily& family, int side, int layer,
                bool hasBottom, const Stretch& parent) {
    const int kind = family.Kind(side, layer);
    return kind == NoRegion || parent.count == 0 ? Stretch{}
           : kind == WholeRegion                 ? parent
                                                 : addEdge(points, family, side, layer, hasBottom);
}

WedgeLayer describeLayer(const State& state, int side, int level, int number,
                         std::vector<LinePoint>& points) {
    const Problem& problem = *state.problem;
    const WedgeRegions& regions = state.regions;
    const bool hasBottom = number < problem.SoilLayerCount(side);
    WedgeLayer layer;
    layer.bottomElev = problem.SoilBottomElev(side, number);
    layer.bottomSlope = problem.SoilBottomSlope(side, number);
    layer.topReach = regions.Layer.X(side, number, 2);
    layer.edge = addEdge(points, regions.Layer, side, number, hasBottom);
    layer.wet = addPart(points, regions.Wet, side, number, hasBottom, layer.edge);
    layer.seep = addPart(points, regions.Seep, side, number, hasBottom, layer.wet);
    layer.deep = addPart(points, regions.Deep, side, number, hasBottom, layer.seep);

    const double water = problem.WaterUnitWeight;
    const double gradientShare = (2 * side - 3) * state.preparation.SeepageGradient(level);
    layer.moist = problem.SoilMoistWeight(side, number);
    layer.still = problem.SoilSatWeight(side, number) - water;
    // Only the plane's own layer loses the water's weight in the seepage zone: a deliberate
    // difference. The layers above it lose or gain the gradient's share alone.
    layer.flow = problem.SoilSatWeight(side, number) - (1 + gradientShare) * water;
    layer.flowAbove = state.amendments.buoyantLayers
                          ? layer.flow
                          : problem.SoilSatWeight(side, number) - gradientShare * water;
    return layer;
}

/// The surcharges of a side.
void describeSurcharges(const Problem& problem, int side, WedgeSide& described) {
    described.lineLoads.clear();
    for (int i = 1; i <= problem.VLineCount(side); ++i) {
        described.lineLoads.push_back({problem.VLineDist(side, i), problem.VLineLoad(side, i)});
    }
    described.uniformLoad = problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) : 0;

    described.loads.clear();
    /// Without length a load has no area.
    const auto add = [&](double x1, double p1, double x2, double p2) {
        if (x2 > x1) {
            described.loads.push_back({x1, x2, p1, (p2 - p1) / (x2 - x1)});
        }
    };
    for (int i = 1; i <= problem.VStripCount(side); ++i) {
        const double strip = problem.VStripLoad(side, i);
        add(problem.VStripStart(side, i), strip, problem.VStripEnd(side, i), strip);
    }
    if (problem.VRampCount(side) != 0) {
        const double full = problem.VRampLoad(side);
        const double end = problem.VRampEnd(side);
        add(problem.VRampStart(side), 0, end, full);
        add(end, full, std::numeric_limits<double>::infinity(), full);
    }
    for (int i = 1; i <= problem.VTriCount(side); ++i) {
        const double peak = problem.VTriPeak(side, i);
        const double full = problem.VTriLoad(side, i);
        add(problem.VTriStart(side, i), 0, peak, full);
        add(peak, full, problem.VTriEnd(side, i), 0);
    }
    for (int i = 1; i < problem.VVarCount(side); ++i) {
        add(problem.VVarDist(side, i), problem.VVarLoad(side, i), problem.VVarDist(side, i + 1),
            problem.VVarLoad(side, i + 1));
    }
}

} // namespace

void describeWedgeSide(const State& state, int side, int level, WedgeSide& described) {
    const Problem& problem = *state.problem;
    const WedgeRegions& regions = state.regions;
    described.ground.clear();
    addLine(
        described.ground, regions.WedgeSurfaceCount(side),
        [&](int p) { return regions.WedgeSurfaceX(side, p); },
        [&](int p) { return regions.WedgeSurfaceY(side, p); });
    described.points.clear();
    described.layers.clear();
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        described.layers.push_back(describeLayer(state, side, level, layer, described.points));
    }
    describeSurcharges(problem, side, described);
}

} // namespace korvane
