#include "rowe/clay_reduction.h"

#include "rowe/reduction_tables.h"
#include "runtime/arithmetic.h"
#include "state/tolerances.h"

#include <cmath>

namespace korvane {

namespace {

/// Unit weight (PCF) of the right side's soil below grid elevation z, less what the water carries.
double effectiveWeight(const Problem& problem, const LevelResult& freeEarth, int layer, double z) {
    if (problem.WaterDataKind != WaterData::Elevations || z > problem.WaterElev(Right)) {
        return problem.SoilMoistWeight(Right, layer);
    }
    double water = problem.WaterUnitWeight;
    if (problem.SeepageKind != Seepage::None && z <= problem.SeepageElev &&
        z > freeEarth.seepageEndElev) {
        water = (1 - freeEarth.seepageGradient) * problem.WaterUnitWeight;
    }
    return problem.SoilSatWeight(Right, layer) - water;
}

/// Uniform surcharge and effective weight (PSF) of the right side from its surface down to the left
/// surface.
double overburden(const Problem& problem, const Results& results) {
    // The grid of the level solved last, deliberately.
    const ElevationGrid& grid = results.levels(results.levelCount).solved.grid;
    const auto& ElevGrid = grid.ElevGrid;
    const double leftSurface = problem.SurfaceElev(Left, 1);
    double p = problem.VUniformCount(Right) > 0 ? problem.VUniformLoad(Right) : 0.0;

    int i = 1;
    while (ElevGrid(i) > problem.SurfaceElev(Right, 1)) {
        ++i;
    }
    int layer = 1;
    for (;; ++i) {
        if (i >= grid.NumElevs) {
            throw RuntimeError(9);
        }
        if (std::fabs(ElevGrid(i) - problem.SoilBottomElev(Right, layer)) <= SameElevation) {
            ++layer;
        }
        const double weight = effectiveWeight(problem, results.levels(1), layer, ElevGrid(i));
        if (ElevGrid(i + 1) <= leftSurface) {
            return p + (ElevGrid(i) - leftSurface) * weight;
        }
        p += (ElevGrid(i) - ElevGrid(i + 1)) * weight;
    }
}

struct Strength {
    double cohesion = 0; ///< PSF, less its factor of safety
    double adhesion = 0; ///< PSF
};

Strength layerStrength(const Problem& problem, const LevelResult& freeEarth, int layer) {
    return {divide(problem.SoilCohesion(Left, layer), freeEarth.layers(Left, layer).fsPassive),
            problem.SoilAdhesion(Left, layer)};
}

/// Of the left side, averaged over its surface down to the bottom of the wall.
Strength averageStrength(const Problem& problem, const LevelResult& freeEarth) {
    if (problem.SoilLayerCount(Left) == 1) {
        return layerStrength(problem, freeEarth, 1);
    }
    const double surface = problem.SurfaceElev(Left, 1);
    const double wallBottom = freeEarth.bottomElev;
    Strength sum;
    double top = surface;
    for (int layer = 1; layer <= problem.SoilLayerCount(Left) && top > wallBottom; ++layer) {
        const double bottom = MaxOf(problem.SoilBottomElev(Left, layer), wallBottom);
        const Strength strength = layerStrength(problem, freeEarth, layer);
        sum.cohesion += strength.cohesion * (top - bottom);
        sum.adhesion += strength.adhesion * (top - bottom);
        top = bottom;
    }
    const double depth = surface - wallBottom;
    return {divide(sum.cohesion, depth), divide(sum.adhesion, depth)};
}

/// A row of the table: the values at the six stability points.
using TableRow = const double (&)[6];

/// Straight line in S between the points at 1.5 and 2.0.
double between(TableRow T, double S) {
    const double u = 2 * S - 3;
    return (1 - u) * T[4] + u * T[5];
}

/// Polynomial in S through the six points by Lagrange's rule.
double sixPointValue(TableRow T, double S) {
    const double L1 = (S - .75) * (S - 1) * (S - 1.25) * (S - 1.5) * (S - 2);
    const double L2 = (S - .5) * (S - 1) * (S - 1.25) * (S - 1.5) * (S - 2);
    const double L3 = (S - .5) * (S - .75) * (S - 1.25) * (S - 1.5) * (S - 2);
    const double L4 = (S - .5) * (S - .75) * (S - 1) * (S - 1.5) * (S - 2);
    // Deliberate: 1.75 stands where .75 would, so that at S = .75 the fifth point still counts.
    const double L5 = (S - .5) * (S - 1.75) * (S - 1) * (S - 1.25) * (S - 2);
    const double L6 = (S - .5) * (S - .75) * (S - 1) * (S - 1.25) * (S - 1.5);
    return 2560 * (-L1 * T[0] / 360 + L2 * T[1] / 75 - L3 * T[2] / 40 + L4 * T[3] / 45 -
                   L5 * T[4] / 120 + L6 * T[5] / 1800);
}

/// Value of table row a (1 to 3) of a group (1 to 3) at stability number S.
double rowValue(int group, int a, double S) {
    TableRow T = RoweClayTable[group - 1][a - 1];
    if (S >= 2.0) {
        return T[5];
    }
    if (S >= 1.5) {
        // Deliberate: in group 3 only the first row follows the line, the others stand at S = 2.0.
        return group == 3 && a > 1 ? T[5] : between(T, S);
    }
    if (group == 2 && a == 1) {
        // Deliberate: a line that takes the points of S = .5 and 1.25 at S = 1.25 and 2.0.
        return ((S - 1.25) * T[3] + (2 - S) * T[0]) / 0.75;
    }
    return sixPointValue(T, S);
}

/// Value of a group at ALPHA, from the rows at 0.8, 0.7 and 0.6.
double groupValue(int group, double S, double alpha) {
    const double r1 = rowValue(group, 1, S);
    const double r2 = rowValue(group, 2, S);
    const double r3 = rowValue(group, 3, S);
    // Deliberate: the term of the middle row is added, where a parabola would subtract it.
    return 50 * (alpha - .8) * (alpha - .7) * r3 + 100 * (alpha - .8) * (alpha - .6) * r2 +
           50 * (alpha - .7) * (alpha - .6) * r1;
}

} // namespace

double stabilityNumber(const Problem& problem, const Results& results) {
    const auto [c, a] = averageStrength(problem, results.levels(1));
    return finite(divide(c, overburden(problem, results)) * squareRoot(1 + divide(a, c)));
}

bool inClayRange(double x) {
    return -3.1 <= x && x <= -2.0;
}

// Source: P. W. Rowe, sheet-pile walls in clay, moment reduction curves at x = -3.1, -2.6, -2.0.
double clayCoefficient(double S, double alpha, double x) {
    const double G1 = groupValue(1, S, alpha);
    const double G2 = groupValue(2, S, alpha);
    const double G3 = groupValue(3, S, alpha);
    // Deliberate: the term of the middle group is added, where a parabola would subtract it.
    return (x + 3.1) * (x + 2) * G2 / 0.3 + (x + 2.6) * (x + 2) * G1 / 0.55 +
           (x + 2.6) * (x + 3.1) * G3 / 0.66;
}

} // namespace korvane
