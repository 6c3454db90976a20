#include "wedge_ground.h"

#include "pressures/wedge_description.h"
#include "pressures/wedge_load.h"
#include "pressures/wedge_pressures.h"
#include "pressures/wedge_regions.h"

#include <algorithm>

namespace korvane::test {

void WedgeBench::buildGround(int level) {
    takeSeepage();
    State& s = *state;
    if (problem.SeepageKind != Seepage::None) {
        s.preparation.SeepageEndElev(level) =
            seepageEndElevation(problem, problem.SeepageGradient(level));
    }
    for (const int side : {Right, Left}) {
        s.preparation.NumSurchargesOnSide(side) =
            problem.VLineCount(side) + problem.VStripCount(side) + problem.VRampCount(side) +
            problem.VTriCount(side) + problem.VVarCount(side);
        BuildWedgeRegions(s, side);
        BuildSeepageEndRegions(s, side, level);
    }
    build(level);
}

void WedgeBench::press(PressureMethod method, int side, int level) {
    state->preparation.SideMethod(side) = method;
    ComputeWedgePressures(*state, side, level);
}

void WedgeBench::setGround(int side, const std::vector<std::pair<double, double>>& points) {
    problem.SurfacePointCount(side) = static_cast<int>(points.size());
    int p = 0;
    for (const auto& [x, y] : points) {
        ++p;
        problem.SurfaceDist(side, p) = x;
        problem.SurfaceElev(side, p) = y;
    }
}

void WedgeBench::setLayers(int side, const std::vector<std::pair<double, double>>& bottoms) {
    std::vector<double> elevations;
    elevations.reserve(bottoms.size());
    for (const auto& bottom : bottoms) {
        elevations.push_back(bottom.first);
    }
    setLayerBottoms(problem, side, elevations);
    int layer = 0;
    for (const auto& bottom : bottoms) {
        problem.SoilBottomSlope(side, ++layer) = bottom.second;
    }
}

void WedgeBench::setWater(double right, double left, double unitWeight) {
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = unitWeight;
    problem.WaterElev(Right) = right;
    problem.WaterElev(Left) = left;
}

void WedgeBench::setSeepage(double elevation, double gradient) {
    problem.SeepageKind = Seepage::Given;
    problem.SeepageElev = elevation;
    problem.SeepageGradient(1) = problem.SeepageGradient(2) = gradient;
}

WedgeSide WedgeBench::described(int side, int level) const {
    WedgeSide wedgeSide;
    describeWedgeSide(*state, side, level, wedgeSide);
    return wedgeSide;
}

double WedgeBench::weight(int side, double x1, double y1, double x2, double y2, int layer) const {
    return WedgeWeight(described(side), y1, (y2 - y1) / (x2 - x1), x1, y1, x2, layer);
}

double PointGround::surface(double x) const {
    const int count = problem_.SurfacePointCount(side_);
    double x1 = 0;
    double y1 = problem_.SurfaceElev(side_, 1);
    for (int p = 1; p <= count; ++p) {
        const double x2 = problem_.SurfaceDist(side_, p);
        const double y2 = problem_.SurfaceElev(side_, p);
        if (x <= x2 && x2 > x1) {
            return y1 + (y2 - y1) * (x - x1) / (x2 - x1);
        }
        x1 = x2;
        y1 = y2;
    }
    return y1;
}

bool PointGround::boundaryExists(int b, double x) const {
    if (surface(x) <= boundary(b, x)) {
        return false;
    }
    for (int p = 1; p <= problem_.SurfacePointCount(side_); ++p) {
        const double xp = problem_.SurfaceDist(side_, p);
        if (xp > 0 && xp <= x && problem_.SurfaceElev(side_, p) <= boundary(b, xp)) {
            return false;
        }
    }
    return true;
}

int PointGround::layerAt(double x, double y) const {
    int layer = 1;
    for (int b = 1; b < problem_.SoilLayerCount(side_); ++b) {
        if (!boundaryExists(b, x) || y < boundary(b, x)) {
            layer = b + 1;
        }
    }
    return layer;
}

double PointGround::unitWeight(double x, double y, int planeLayer) const {
    const int layer = layerAt(x, y);
    if (problem_.WaterDataKind != WaterData::Elevations || y >= problem_.WaterElev(side_)) {
        return problem_.SoilMoistWeight(side_, layer);
    }
    const double saturated = problem_.SoilSatWeight(side_, layer);
    const double water = problem_.WaterUnitWeight;
    const double gradient = problem_.SeepageGradient(level_);
    const bool seeps = problem_.SeepageKind != Seepage::None &&
                       (side_ == Left || y < problem_.SeepageElev) &&
                       (gradient <= 0.0001 || y >= state_.preparation.SeepageEndElev(level_));
    if (!seeps) {
        return saturated - water;
    }
    const double own = layer == planeLayer ? 1 : 0;
    return saturated - water * (side_ == Right ? own - gradient : own + gradient);
}

double PointGround::slicedWeight(double x1, double y1, double x2, double y2, int layer,
                                 int slices) const {
    const double width = (x2 - x1) / slices;
    double weight = 0;
    for (int slice = 0; slice < slices; ++slice) {
        const double x = x1 + (slice + 0.5) * width;
        const double bottom = y1 + (y2 - y1) * (x - x1) / (x2 - x1);
        const double top = surface(x);
        std::vector<double> levels{bottom, top};
        for (int b = 1; b < problem_.SoilLayerCount(side_); ++b) {
            levels.push_back(boundary(b, x));
        }
        levels.push_back(problem_.WaterElev(side_));
        levels.push_back(problem_.SeepageElev);
        levels.push_back(state_.preparation.SeepageEndElev(level_));
        std::sort(levels.begin(), levels.end());
        for (std::size_t i = 1; i < levels.size(); ++i) {
            const double low = std::max(levels[i - 1], bottom);
            const double high = std::min(levels[i], top);
            if (high > low) {
                weight += width * (high - low) * unitWeight(x, (low + high) / 2, layer);
            }
        }
    }
    return weight;
}

double PointGround::surchargeAt(double x) const {
    const auto within = [x](double from, double to) { return x >= from && x < to; };
    const auto between = [x](double x1, double p1, double x2, double p2) {
        return p1 + (p2 - p1) * (x - x1) / (x2 - x1);
    };
    const Problem& p = problem_;
    const int side = side_;
    double load = p.VUniformCount(side) != 0 ? p.VUniformLoad(side) : 0;
    for (int i = 1; i <= p.VStripCount(side); ++i) {
        load += within(p.VStripStart(side, i), p.VStripEnd(side, i)) ? p.VStripLoad(side, i) : 0;
    }
    if (p.VRampCount(side) != 0) {
        if (within(p.VRampStart(side), p.VRampEnd(side))) {
            load += between(p.VRampStart(side), 0, p.VRampEnd(side), p.VRampLoad(side));
        } else if (x >= p.VRampEnd(side)) {
            load += p.VRampLoad(side);
        }
    }
    for (int i = 1; i <= p.VTriCount(side); ++i) {
        const double full = p.VTriLoad(side, i);
        if (within(p.VTriStart(side, i), p.VTriPeak(side, i))) {
            load += between(p.VTriStart(side, i), 0, p.VTriPeak(side, i), full);
        } else if (within(p.VTriPeak(side, i), p.VTriEnd(side, i))) {
            load += between(p.VTriPeak(side, i), full, p.VTriEnd(side, i), 0);
        }
    }
    for (int i = 1; i < p.VVarCount(side); ++i) {
        if (within(p.VVarDist(side, i), p.VVarDist(side, i + 1))) {
            load += between(p.VVarDist(side, i), p.VVarLoad(side, i), p.VVarDist(side, i + 1),
                            p.VVarLoad(side, i + 1));
        }
    }
    return load;
}

namespace {

void drawGround(WedgeBench& bench, Dice& dice, int side, double wallElev) {
    std::vector<std::pair<double, double>> points{{0, wallElev}};
    if (dice.chance(0.3)) {
        points[0].first = dice.between(0.5, 6); // level up to a first point off the wall
    }
    const int more = dice.whole(0, 6);
    for (int p = 0; p < more; ++p) {
        const auto [x, y] = points.back();
        const double step = dice.between(1, 15);
        points.emplace_back(x + step, y + step * dice.between(-0.45, 0.45));
    }
    bench.setGround(side, points);
}

void drawLayers(WedgeBench& bench, Dice& dice, int side, double wallElev, bool sloping) {
    Problem& problem = bench.problem;
    std::vector<std::pair<double, double>> bottoms;
    double elev = wallElev;
    double slope = sloping ? dice.between(-0.2, 0.6) : 0;
    const int boundaries = dice.whole(0, 3);
    for (int b = 0; b < boundaries; ++b) {
        elev -= dice.between(0.8, 9);
        bottoms.emplace_back(elev, slope);
        slope -= sloping ? dice.between(0, 0.15) : 0; // a lower boundary never rises to a higher
    }
    bench.setLayers(side, bottoms);
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        problem.SoilMoistWeight(side, layer) = dice.between(95, 120);
        problem.SoilSatWeight(side, layer) = dice.between(118, 135);
        problem.SoilFriction(side, layer) = dice.chance(0.2) ? 0 : dice.between(8, 40);
        const bool cohesive = problem.SoilFriction(side, layer) == 0 || dice.chance(0.4);
        problem.SoilCohesion(side, layer) = cohesive ? dice.between(50, 900) : 0;
        problem.SoilWallFriction(side, layer) =
            problem.SoilFriction(side, layer) * dice.between(0, 0.8);
        problem.SoilAdhesion(side, layer) =
            problem.SoilCohesion(side, layer) * (dice.chance(0.5) ? dice.between(0, 0.8) : 0);
    }
}

void drawSurcharges(Problem& problem, Dice& dice, int side) {
    problem.VLineCount(side) = dice.whole(0, 2);
    for (int i = 1; i <= problem.VLineCount(side); ++i) {
        problem.VLineDist(side, i) = dice.between(0, 30);
        problem.VLineLoad(side, i) = dice.between(100, 900);
    }
    problem.VUniformCount(side) = dice.whole(0, 1);
    problem.VUniformLoad(side) = dice.between(20, 300);
    problem.VStripCount(side) = dice.whole(0, 2);
    for (int i = 1; i <= problem.VStripCount(side); ++i) {
        problem.VStripStart(side, i) = dice.between(0, 20);
        problem.VStripEnd(side, i) = problem.VStripStart(side, i) + dice.between(1, 10);
        problem.VStripLoad(side, i) = dice.between(50, 400);
    }
    problem.VRampCount(side) = dice.whole(0, 1);
    problem.VRampStart(side) = dice.between(0, 20);
    problem.VRampEnd(side) = problem.VRampStart(side) + (dice.chance(0.3) ? 0 : 8);
    problem.VRampLoad(side) = dice.between(50, 300);
    problem.VTriCount(side) = dice.whole(0, 2);
    for (int i = 1; i <= problem.VTriCount(side); ++i) {
        problem.VTriStart(side, i) = dice.between(0, 20);
        problem.VTriPeak(side, i) =
            problem.VTriStart(side, i) + (dice.chance(0.2) ? 0 : dice.between(1, 6));
        problem.VTriEnd(side, i) =
            problem.VTriPeak(side, i) + (dice.chance(0.2) ? 0 : dice.between(1, 6));
        problem.VTriLoad(side, i) = dice.between(50, 400);
    }
    problem.VVarCount(side) = dice.chance(0.5) ? 0 : dice.whole(2, 5);
    double distance = dice.between(0, 10);
    for (int i = 1; i <= problem.VVarCount(side); ++i) {
        problem.VVarDist(side, i) = distance;
        problem.VVarLoad(side, i) = dice.between(0, 300);
        distance += dice.chance(0.3) ? 0 : dice.between(1, 6);
    }
}

} // namespace

void drawWedgeProblem(WedgeBench& bench, Dice& dice, bool slopingLayers) {
    Problem& problem = bench.problem;
    const double rightElev = dice.between(-3, 0);
    const double leftElev = dice.between(-20, -6);
    for (const int side : {Right, Left}) {
        const double wallElev = side == Right ? rightElev : leftElev;
        drawGround(bench, dice, side, wallElev);
        drawLayers(bench, dice, side, wallElev, slopingLayers);
        if (dice.chance(0.4)) {
            drawSurcharges(problem, dice, side);
        }
        const double active = dice.between(0.9, 1.4);
        const double passive = dice.between(1, 1.8);
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            bench.state->preparation.LayerFSActive(side, layer, 1) = active;
            bench.state->preparation.LayerFSPassive(side, layer, 1) = passive;
        }
    }
    if (dice.chance(0.7)) {
        const double rightWater = dice.between(-16, 4);
        const double leftWater = rightWater - dice.between(1, 12);
        bench.setWater(rightWater, leftWater, 62.4);
        const double lowest = std::min(leftWater, leftElev);
        const double highest = std::min(rightWater, rightElev);
        if (highest > lowest && dice.chance(0.7)) {
            const double elevation = dice.between(lowest, highest);
            // At most what ends below the lower of the left ground and water.
            const double steepest = (rightWater - leftWater) / (elevation - lowest + 2);
            bench.setSeepage(elevation, dice.between(0.05, 1) * std::min(steepest, 0.5));
        }
    }
}

} // namespace korvane::test
