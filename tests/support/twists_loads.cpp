// Twists of the water and of the loads.
#include "support/twists.h"

#include <algorithm>
#include <cmath>

namespace korvane::test {

namespace {

void takeWaterElevations(Problem& problem) {
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterPressCount = 0;
    problem.SeepageKind = Seepage::None;
}

void lineLoads(Draws& draws, Problem& problem, int side) {
    problem.VLineCount(side) = 5;
    for (int load = 1; load <= 5; ++load) {
        problem.VLineDist(side, load) = draws.chance(0.2) ? 0 : draws.value(0.01, 60, 100);
        problem.VLineLoad(side, load) = draws.chance(0.2) ? 20000 : draws.value(0.5, 3000, 2);
    }
}

void strips(Draws& draws, Problem& problem, int side) {
    problem.VStripCount(side) = 5;
    for (int load = 1; load <= 5; ++load) {
        const double start = draws.chance(0.3) ? 0 : draws.value(0.01, 40, 100);
        const double width = draws.chance(0.3) ? 0.01 : draws.value(0.5, 60, 2);
        problem.VStripStart(side, load) = start;
        problem.VStripEnd(side, load) = start + width;
        problem.VStripLoad(side, load) = draws.whole(1, 1500);
    }
}

void ramp(Draws& draws, Problem& problem, int side) {
    problem.VRampCount(side) = 1;
    problem.VRampStart(side) = draws.chance(0.4) ? 0 : draws.value(0.25, 40, 4);
    const double width = draws.chance(0.4) ? 0 : draws.value(0.25, 60, 4);
    problem.VRampEnd(side) = problem.VRampStart(side) + width;
    problem.VRampLoad(side) = draws.whole(1, 800);
}

/// One flank in two is upright, never both of a load.
void triangles(Draws& draws, Problem& problem, int side) {
    problem.VTriCount(side) = 5;
    for (int load = 1; load <= 5; ++load) {
        const int upright = draws.whole(0, 3); // 1 the near flank, 2 the far one
        const double start = draws.chance(0.3) ? 0 : draws.value(0.25, 30, 4);
        const double rise = upright == 1 ? 0 : draws.value(0.25, 20, 4);
        const double fall = upright == 2 ? 0 : draws.value(0.25, 20, 4);
        problem.VTriStart(side, load) = start;
        problem.VTriPeak(side, load) = start + rise;
        problem.VTriEnd(side, load) = start + rise + fall;
        problem.VTriLoad(side, load) = draws.whole(0, 1500);
    }
}

/// Some points share their distance: a step of the load.
void variableLoad(Draws& draws, Problem& problem, int side) {
    problem.VVarCount(side) = 11;
    double distance = draws.chance(0.5) ? 0 : draws.value(0.5, 10, 2);
    for (int point = 1; point <= 11; ++point) {
        problem.VVarDist(side, point) = distance;
        problem.VVarLoad(side, point) = draws.whole(0, 600);
        distance += draws.chance(0.2) ? 0 : draws.value(0.25, 12, 4);
    }
}

} // namespace

bool flooded(Draws& draws, Problem& problem) {
    takeWaterElevations(problem);
    problem.WaterElev(Right) = problem.WallTopElev + draws.value(0.25, 12, 4);
    const bool both = draws.chance(0.5);
    problem.WaterElev(Left) =
        both ? problem.WaterElev(Right) - (draws.chance(0.5) ? 0 : draws.value(0.25, 3, 4))
             : problem.SurfaceElev(Left, 1) + draws.value(-2, 8, 4);
    return true;
}

/// `keepReadable` of the caller brings the seepage elevation to its limits.
bool largeHead(Draws& draws, Problem& problem) {
    takeWaterElevations(problem);
    const double ground = problem.SurfaceElev(Left, 1);
    problem.WaterElev(Right) = problem.SurfaceElev(Right, 1) + draws.value(-2, 2, 4);
    problem.WaterElev(Left) = ground + draws.value(-6, 1, 4);
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev =
        problem.WaterElev(Right) - (draws.chance(0.5) ? 0 : draws.value(0, 30, 4));
    return true;
}

bool waterTable(Draws& draws, Problem& problem) {
    takeWaterElevations(problem);
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = draws.whole(2, 11);
    const double highest = draws.chance(0.3) ? 2000 : 300;
    const bool thin = draws.chance(0.3);
    double elevation = problem.WallTopElev + draws.value(-8, 5, 2);
    for (int point = 1; point <= problem.WaterPressCount; ++point) {
        problem.WaterPressElev(point) = std::round(elevation * 100) / 100;
        problem.WaterPressure(point) =
            draws.chance(0.2) ? 0 : draws.value(-highest / 4, highest, 10);
        elevation -= thin ? draws.value(0.02, 1, 100) : draws.value(0.5, 8, 2);
    }
    return true;
}

bool loadsAtTheLimits(Draws& draws, Problem& problem) {
    using LoadSide = void (*)(Draws&, Problem&, int side);
    const int only = draws.whole(0, 2); // 0 both sides
    for (const int side : {Right, Left}) {
        if (only != 0 && only != side) {
            continue;
        }
        for (const LoadSide load : {lineLoads, strips, ramp, triangles, variableLoad}) {
            if (draws.chance(0.5)) {
                load(draws, problem, side);
            }
        }
        problem.VUniformCount(side) = 1;
        problem.VUniformLoad(side) = draws.chance(0.1) ? 5000 : draws.whole(1, 600);
    }
    return true;
}

bool horizontalLoads(Draws& draws, Problem& problem) {
    const double top = problem.WallTopElev;
    const double ground = problem.SurfaceElev(Left, 1);
    problem.HLineCount = draws.whole(1, 5);
    for (int load = 1; load <= problem.HLineCount; ++load) {
        const int place = draws.whole(0, 3);
        problem.HLineElev(load) = place == 0   ? top
                                  : place == 1 ? ground
                                               : top + draws.value(-25, 2, 4);
        problem.HLineLoad(load) = draws.value(-800, 2000, 1);
    }
    problem.HDistCount = draws.chance(0.5) ? 11 : 0;
    double elevation = top + draws.value(-3, 3, 2);
    for (int point = 1; point <= problem.HDistCount; ++point) {
        problem.HDistElev(point) = std::round(elevation * 100) / 100;
        problem.HDistLoad(point) = draws.value(-100, 300, 1);
        elevation -= draws.chance(0.3) ? draws.value(0.01, 0.5, 100) : draws.value(0.5, 3, 2);
    }
    return true;
}

/// Stiff clay that does not press, water that does, and a pull on the wall that all but holds the
/// water: where seepage lessens its pressure, the wall may turn the other way in a later pass.
bool barelyDriven(Draws& draws, Problem& problem) {
    const double height = problem.SurfaceElev(Right, 1) - problem.SurfaceElev(Left, 1);
    if (problem.ProgramMode != Mode::Design || height < 3) {
        return false;
    }
    for (const int side : {Right, Left}) {
        problem.SoilDataKind(side) = SoilData::Strengths;
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            problem.SoilFriction(side, layer) = problem.SoilWallFriction(side, layer) = 0;
            problem.SoilCohesion(side, layer) = std::ceil(150 * height);
            problem.SoilAdhesion(side, layer) = 0;
        }
    }
    for (auto* counts : {&problem.VLineCount, &problem.VUniformCount, &problem.VStripCount,
                         &problem.VRampCount, &problem.VTriCount, &problem.VVarCount}) {
        counts->fill(0);
    }
    takeWaterElevations(problem);
    problem.WaterElev(Right) = problem.SurfaceElev(Right, 1);
    problem.WaterElev(Left) = problem.SurfaceElev(Left, 1);
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = problem.WaterElev(Right);
    const double force = problem.WaterUnitWeight * height * height / 2; // PLF, of still water
    problem.HDistCount = 0;
    problem.HLineCount = 1;
    problem.HLineElev(1) = std::round(100 * (problem.WaterElev(Left) + height / 3)) / 100;
    problem.HLineLoad(1) = -std::round(force * draws.value(0.7, 1, 100));
    return true;
}

} // namespace korvane::test
