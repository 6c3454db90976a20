#include "support/random_problem.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace korvane::test {

/// The drawn kind and the geometry of the wall, elevations in FT.
struct RandomProblems::Site {
    bool anchored = false;
    bool analysis = false;
    RandomKind::Soil soil = RandomKind::Soil::Sand;
    RandomKind::Water water = RandomKind::Water::None;
    bool layered = false;
    bool friction = false;
    bool adhesion = false;
    bool factors = false;
    Array<bool, 2> coefficients;
    Array<bool, 2> sloping;
    double top = 0;
    double height = 0; ///< of the wall above the left ground
    Array<double, 2> ground;
};

Problem RandomProblems::next(const RandomKind& kind) {
    using Soil = RandomKind::Soil;
    using Water = RandomKind::Water;

    Site site;
    site.anchored = kind.anchored.value_or(chance(0.5));
    site.analysis = kind.analysis.value_or(chance(0.3));
    site.soil = kind.soil.value_or(static_cast<Soil>(whole(0, 3)));
    site.water = kind.water.value_or(static_cast<Water>(whole(0, 4)));
    site.layered = kind.layered.value_or(chance(0.6));
    site.friction = kind.friction.value_or(chance(0.5));
    site.adhesion = kind.adhesion.value_or(chance(0.2));
    site.factors = kind.factors.value_or(chance(0.3));
    const int oneSide = whole(0, 2); // 0 both sides
    const bool sloping = kind.sloping.value_or(chance(0.3));
    for (const int side : {Right, Left}) {
        site.coefficients(side) =
            site.soil == Soil::Coefficients && (oneSide == 0 || oneSide == side);
        site.sloping(side) = sloping && !site.coefficients(side) &&
                             (oneSide == 0 || site.coefficients(3 - side) || oneSide == side);
    }
    site.top = value(-10, 90, 4);
    site.height = site.anchored ? value(12, 24, 4) : value(6, 13, 4);
    site.ground(Right) = site.top - (chance(0.5) ? 0 : value(0, 2, 4));
    site.ground(Left) = site.top - site.height;

    Problem problem;
    heading(problem);
    wall(problem, site);
    for (const int side : {Right, Left}) {
        surface(problem, site, side);
    }
    for (const int side : {Right, Left}) {
        soil(problem, site, side);
    }
    water(problem, site);
    if (kind.surcharge.value_or(chance(0.4))) {
        surcharges(problem, Right);
        if (chance(0.3)) {
            surcharges(problem, Left);
        }
    }
    if (kind.horizontal.value_or(chance(0.25))) {
        horizontalLoads(problem, site);
    }
    return problem;
}

void RandomProblems::heading(Problem& problem) {
    problem.NumHeadingLines = whole(1, 4);
    for (int line = 1; line <= problem.NumHeadingLines; ++line) {
        // One draw a statement: the order of draws within an expression is the compiler's choice.
        const std::string station = std::to_string(whole(10, 99));
        problem.HeadingLines(line) =
            "'RANDOM WALL  STA. " + station + "+" + std::to_string(whole(10, 99)) + " ";
    }
}

/// In an analysis the wall reaches well below the depth that it needs in ordinary ground.
void RandomProblems::wall(Problem& problem, const Site& site) {
    problem.WallType = site.anchored ? WallKind::Anchored : WallKind::Cantilever;
    problem.ProgramMode = site.analysis ? Mode::Analysis : Mode::Design;
    problem.WallTopElev = site.top;
    if (site.anchored) {
        problem.AnchorElev = site.top - value(0.1 * site.height, 0.3 * site.height, 4);
    }
    if (site.analysis) {
        problem.FSKind = chance(0.5) ? FactorKind::ActiveGiven : FactorKind::OneForBoth;
        problem.FSActive = problem.FSKind == FactorKind::ActiveGiven ? value(1, 1.2, 20) : 1.0;
        const double depth = site.anchored ? value(0.6, 1.1, 20) : value(1.5, 2.2, 20);
        problem.WallBottomElev = site.ground(Left) - std::round(depth * site.height);
        problem.WallModulus = chance(0.5) ? 2.9e7 : 3e7;
        problem.WallInertia = value(100, 600, 10);
    } else {
        problem.FSActive = value(1, 1.2, 20);
        problem.FSPassive = value(1, 1.6, 20);
    }
}

/// Ground rises away from the wall on the right side and falls on the left side.
void RandomProblems::surface(Problem& problem, const Site& site, int side) {
    auto& SurfaceDist = problem.SurfaceDist;
    auto& SurfaceElev = problem.SurfaceElev;

    problem.SurfacePointCount(side) = site.sloping(side) ? whole(2, 5) : 1;
    SurfaceDist(side, 1) = chance(0.8) ? 0 : value(0.5, 1.5, 2);
    SurfaceElev(side, 1) = site.ground(side);
    for (int point = 2; point <= problem.SurfacePointCount(side); ++point) {
        const double step = value(8, 25, 2);
        const double rise = value(0, step / 6, 4);
        SurfaceDist(side, point) = SurfaceDist(side, point - 1) + step;
        SurfaceElev(side, point) = SurfaceElev(side, point - 1) + (side == Right ? rise : -rise);
    }
}

void RandomProblems::soil(Problem& problem, const Site& site, int side) {
    using Soil = RandomKind::Soil;
    const int layers = site.layered ? whole(1, 4) : 1;
    const bool coefficients = site.coefficients(side);

    problem.SoilDataKind(side) = coefficients ? SoilData::Coefficients : SoilData::Strengths;
    problem.SoilLayerCount(side) = layers;
    if (site.factors && !coefficients && chance(0.5)) {
        problem.Level2FSActive(side) = value(1, 1.2, 20);
        problem.Level2FSPassive(side) = value(1, 1.6, 20);
    }
    double bottom = site.ground(side);
    for (int layer = 1; layer <= layers; ++layer) {
        problem.SoilSatWeight(side, layer) = whole(114, 132);
        problem.SoilMoistWeight(side, layer) = whole(100, 113);
        bottom -= value(2, 8, 2);
        problem.SoilBottomElev(side, layer) = layer < layers ? bottom : NoLayerBottom;
        if (coefficients) {
            problem.SoilCoefActive(side, layer) = value(0.22, 0.4, 100);
            problem.SoilCoefPassive(side, layer) = value(2.5, 5.5, 100);
            continue;
        }
        const bool isClay = site.soil == Soil::Clay || (site.soil == Soil::Mixed && chance(0.4));
        isClay ? clay(problem, site, side, layer) : sand(problem, site, side, layer);
        if (site.factors && chance(0.5)) {
            problem.SoilFSActive(side, layer) = value(1, 1.2, 20);
            problem.SoilFSPassive(side, layer) = chance(0.5) ? value(1, 1.6, 20) : 0;
        }
    }
}

void RandomProblems::sand(Problem& problem, const Site& site, int side, int layer) {
    problem.SoilFriction(side, layer) = value(28, 38, 2);
    if (site.friction && chance(0.7)) {
        problem.SoilWallFriction(side, layer) = value(5, problem.SoilFriction(side, layer) / 2, 10);
    }
    if (chance(0.1)) {
        problem.SoilCohesion(side, layer) = whole(20, 200);
    }
}

/// Clay is stiff enough for the wall's height, above all below the left ground.
void RandomProblems::clay(Problem& problem, const Site& site, int side, int layer) {
    const double overburden = 125 * site.height; // PSF
    problem.SoilCohesion(side, layer) =
        side == Right
            ? whole(static_cast<int>(0.15 * overburden), static_cast<int>(0.5 * overburden))
            : whole(static_cast<int>(0.5 * overburden), static_cast<int>(1.2 * overburden));
    if (site.adhesion && chance(0.7)) {
        problem.SoilAdhesion(side, layer) =
            std::floor(problem.SoilCohesion(side, layer) * value(0.2, 0.8, 10));
    }
}

void RandomProblems::water(Problem& problem, const Site& site) {
    using Water = RandomKind::Water;
    auto& WaterElev = problem.WaterElev;

    if (site.water == Water::None) {
        return;
    }
    if (site.water == Water::Pressures) {
        waterPressures(problem, site);
        return;
    }
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = chance(0.7) ? 62.4 : (chance(0.5) ? 62.43 : 64);
    WaterElev(Left) = site.ground(Left) + value(-3, 0.5 * site.height, 4);
    WaterElev(Right) = WaterElev(Left);
    if (site.water != Water::Level) {
        WaterElev(Right) += value(0.5, 0.4 * site.height, 4);
    }
    if (site.water == Water::Seepage) {
        const auto lower = [&](int side) {
            return std::min(WaterElev(side), problem.SurfaceElev(side, 1));
        };
        problem.SeepageKind = Seepage::Automatic;
        problem.SeepageElev = value(lower(Left), lower(Right), 4);
    }
}

/// A net pressure diagram that rises from zero and falls back to zero.
void RandomProblems::waterPressures(Problem& problem, const Site& site) {
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = whole(3, 6);
    double elevation = site.top - value(0, 0.5 * site.height, 2);
    for (int point = 1; point <= problem.WaterPressCount; ++point) {
        const bool end = point == 1 || point == problem.WaterPressCount;
        problem.WaterPressElev(point) = elevation;
        problem.WaterPressure(point) = end ? 0 : value(20, 250, 10);
        elevation -= value(2, 7, 2);
    }
}

void RandomProblems::surcharges(Problem& problem, int side) {
    if (chance(0.4)) {
        problem.VLineCount(side) = whole(1, 5);
        for (int load = 1; load <= problem.VLineCount(side); ++load) {
            problem.VLineDist(side, load) = value(2, 25, 2);
            problem.VLineLoad(side, load) = 25 * whole(4, 40);
        }
    }
    if (chance(0.5)) {
        problem.VUniformCount(side) = 1;
        problem.VUniformLoad(side) = 25 * whole(1, 12);
    }
    if (chance(0.4)) {
        problem.VStripCount(side) = whole(1, 5);
        for (int load = 1; load <= problem.VStripCount(side); ++load) {
            problem.VStripStart(side, load) = value(0, 20, 2);
            problem.VStripEnd(side, load) = problem.VStripStart(side, load) + value(1, 15, 2);
            problem.VStripLoad(side, load) = 25 * whole(1, 16);
        }
    }
    if (chance(0.3)) {
        problem.VRampCount(side) = 1;
        problem.VRampStart(side) = value(0, 30, 2);
        problem.VRampEnd(side) = problem.VRampStart(side) + value(0, 15, 2);
        problem.VRampLoad(side) = 25 * whole(1, 12);
    }
    if (chance(0.4)) {
        problem.VTriCount(side) = whole(1, 5);
        for (int load = 1; load <= problem.VTriCount(side); ++load) {
            problem.VTriStart(side, load) = value(0, 20, 2);
            problem.VTriPeak(side, load) = problem.VTriStart(side, load) + value(0, 6, 2);
            problem.VTriEnd(side, load) = problem.VTriPeak(side, load) + value(0.5, 8, 2);
            problem.VTriLoad(side, load) = 12.5 * whole(1, 30);
        }
    }
    if (chance(0.4)) {
        problem.VVarCount(side) = whole(2, 11);
        double distance = value(0, 10, 2);
        for (int point = 1; point <= problem.VVarCount(side); ++point) {
            problem.VVarDist(side, point) = distance;
            problem.VVarLoad(side, point) = 12.5 * whole(0, 16);
            distance += value(0.5, 10, 2);
        }
    }
}

/// Mostly toward the left; a line load may pull the other way.
void RandomProblems::horizontalLoads(Problem& problem, const Site& site) {
    const bool lines = chance(0.6);
    if (lines) {
        problem.HLineCount = whole(1, 5);
        for (int load = 1; load <= problem.HLineCount; ++load) {
            problem.HLineElev(load) = site.top - value(0, 0.8 * site.height, 4);
            problem.HLineLoad(load) = 50 * whole(-2, 10);
        }
    }
    if (!lines || chance(0.4)) {
        problem.HDistCount = whole(2, 6);
        double elevation = site.top - value(0, 3, 2);
        for (int point = 1; point <= problem.HDistCount; ++point) {
            problem.HDistElev(point) = elevation;
            problem.HDistLoad(point) = 5 * whole(0, 16);
            elevation -= value(0.5, 3, 2);
        }
    }
}

} // namespace korvane::test
