#include "comparison/rear_actions.h"

#include "problem/counts.h"
#include "problem/loads.h"
#include "runtime/arithmetic.h"
#include "state/tolerances.h"
#include "wall/preparation.h"

#include <array>
#include <cmath>

namespace korvane {

namespace {

/// The layer of a side that `elev` (FT) lies in ends there and goes on below as one more. False
/// where there is no room for it.
bool endLayerAt(Problem& problem, int side, double elev) {
    int& count = problem.SoilLayerCount(side);
    int layer = 1;
    while (layer < count && problem.SoilBottomElev(side, layer) > elev + SameElevation) {
        ++layer;
    }
    if (elev >= problem.SurfaceElev(side, 1) - SameElevation ||
        (layer < count && problem.SoilBottomElev(side, layer) >= elev - SameElevation)) {
        return true;
    }
    if (count == mostOf(ProblemCount::SoilLayerCount)) {
        return false;
    }
    for (int field = static_cast<int>(ProblemField::SoilSatWeight);
         field <= static_cast<int>(ProblemField::SoilCoefPassive); ++field) {
        const FieldRules& rules = rulesOf(static_cast<ProblemField>(field));
        for (int row = count; row >= layer; --row) {
            rules.at(problem, side, row + 1) = rules.at(problem, side, row);
        }
    }
    problem.SoilBottomElev(side, layer) = elev;
    ++count;
    return true;
}

/// Soil below the water weighs what it weighs in water. False where nothing is left.
bool takeBuoyantWeights(Problem& problem, int side) {
    const double water = problem.WaterElev(side);
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const double top =
            layer == 1 ? problem.SurfaceElev(side, 1) : problem.SoilBottomElev(side, layer - 1);
        if (top <= water + SameElevation) {
            problem.SoilMoistWeight(side, layer) =
                problem.SoilSatWeight(side, layer) - problem.WaterUnitWeight;
            if (problem.SoilMoistWeight(side, layer) <= 0) {
                return false;
            }
        }
    }
    return true;
}

/// FT, as low as the grid of elevations has its regular rows; no wall ends below.
double lowestRow(const Problem& problem) {
    constexpr double mostRows = 200; // 1 FT apart
    const double top = problem.WallTopElev;
    const double lower = MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
    const double below = MinOf(lower - 5 * (top - lower), lower - 50);
    return top - MinOf(mostRows, std::floor(top - below));
}

/// Net pressures (PSF) of the water of both sides, that of the right side times a factor.
void tabulateWater(Problem& problem, double factor) {
    const auto head = [&problem](int side, double elev) {
        return MaxOf(0, problem.WaterElev(side) - elev) * problem.WaterUnitWeight;
    };
    const auto onWall = [&problem](double elev) { return MinOf(elev, problem.WallTopElev); };
    const double right = onWall(problem.WaterElev(Right));
    const double left = onWall(problem.WaterElev(Left));
    const std::array<double, 3> points{MaxOf(right, left), MinOf(right, left),
                                       MinOf(lowestRow(problem), MinOf(right, left) - 1)};
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 0;
    for (const double elev : points) {
        int& count = problem.WaterPressCount;
        if (count > 0 && elev > problem.WaterPressElev(count) - SameElevation) {
            continue;
        }
        ++count;
        problem.WaterPressElev(count) = elev;
        problem.WaterPressure(count) = factor * head(Right, elev) - head(Left, elev);
    }
}

} // namespace

std::string raiseRearActions(Problem& problem, double factor) {
    if (problem.SoilDataKind(Right) != SoilData::Coefficients) {
        return "Ka of the retained side is not given";
    }
    if (problem.WaterDataKind == WaterData::Pressures) {
        return "the water is a table of net pressures: that behind the wall stands in none";
    }
    if (problem.WaterDataKind == WaterData::Elevations) {
        if (problem.SeepageKind != Seepage::None) {
            return "water that seeps is no table of pressures";
        }
        for (const int side : {Right, Left}) {
            if (sideMethod(problem, side) != PressureMethod::Coefficients) {
                return "a side is not by coefficients: its water is part of the wedges";
            }
            if (!endLayerAt(problem, side, problem.WaterElev(side))) {
                return "there is no room for a layer that ends at the water";
            }
            if (!takeBuoyantWeights(problem, side)) {
                return "a layer weighs no more than the water";
            }
        }
        tabulateWater(problem, factor);
    }
    for (int layer = 1; layer <= problem.SoilLayerCount(Right); ++layer) {
        problem.SoilCoefActive(Right, layer) *= factor;
    }
    for (const LoadRules& load : GroundLoads) {
        const bool byCoefficient = load.load == Load::Uniform;
        for (int row = 1; row <= load.rows(problem, Right) && !byCoefficient; ++row) {
            rulesOf(load.last).at(problem, Right, row) *= factor;
        }
    }
    return {};
}

} // namespace korvane
