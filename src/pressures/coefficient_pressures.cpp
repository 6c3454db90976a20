#include "pressures/coefficient_pressures.h"

#include "pressures/elevation_grid.h"
#include "pressures/row_insertion.h"
#include "pressures/surcharge_pressures.h"
#include "pressures/water_pressures.h"
#include "runtime/arithmetic.h"
#include "state/pressure_details.h"
#include "state/tolerances.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace korvane {

namespace {

/// What turns the vertical stress of a layer into pressures on the wall.
struct LayerCoefficients {
    double Ka = 0, Kp = 0; ///< pressure coefficients
    double ca = 0, cp = 0; ///< developed cohesion, PSF
    double ha = 1, hp = 1; ///< horizontal share of the inclined pressure

    double active(double sv) const { return finite((Ka * sv - 2 * ca * squareRoot(Ka)) * ha); }
    double passive(double sv) const { return finite((2 * cp * squareRoot(Kp) + sv * Kp) * hp); }
};

/// Coefficients as given, or Coulomb's from strengths over the level's factors of safety.
std::optional<LayerCoefficients> layerCoefficients(State& state, int side, int L, int level) {
    const Problem& problem = *state.problem;
    LayerCoefficients layer;
    if (problem.SoilDataKind(side) != SoilData::Strengths) {
        layer.Ka = problem.SoilCoefActive(side, L);
        layer.Kp = problem.SoilCoefPassive(side, L);
        return layer;
    }
    const double Fa = state.preparation.LayerFSActive(side, L, level);
    const double Fp = state.preparation.LayerFSPassive(side, L, level);
    const double tanFriction = std::tan(problem.SoilFriction(side, L) * DegreesToRadians);
    const double tanWallFriction = std::tan(problem.SoilWallFriction(side, L) * DegreesToRadians);
    const double pa = std::atan(divide(tanFriction, Fa));
    const double pp = std::atan(divide(tanFriction, Fp));
    const double da = std::atan(divide(tanWallFriction, Fa));
    const double dp = std::atan(divide(tanWallFriction, Fp));

    const auto Kp = passiveCoefficient(pp, dp);
    if (!Kp) {
        fail(state,
             {.code = FailureCode::FrictionTooLarge, .side = side, .layer = L, .level = level});
        return std::nullopt;
    }
    layer.Ka = coulombActive(pa, da);
    layer.Kp = *Kp;
    layer.ca = divide(problem.SoilCohesion(side, L), Fa);
    layer.cp = divide(problem.SoilCohesion(side, L), Fp);
    layer.ha = std::cos(da);
    layer.hp = std::cos(dp);
    return layer;
}

/// A layer in an interval of unit weight `g` and water's share `w` (PCF) between the vertical
/// stresses `above` and `below` (PSF).
StressInterval describe(const LayerCoefficients& layer, int number, double g, double w,
                        double above, double below) {
    StressInterval interval;
    interval.layer = number;
    interval.unitWeight = g;
    interval.waterWeight = w;
    interval.Ka = layer.Ka;
    interval.Kp = layer.Kp;
    interval.ca = layer.ca;
    interval.cp = layer.cp;
    interval.cosA = layer.ha;
    interval.cosP = layer.hp;
    interval.top.effective = above;
    interval.bottom.effective = below;
    return interval;
}

/// Surface, layer bottoms, lowest grid point, and where water or seepage begins or ends.
void listBreaks(const State& state, int side, int level, BreakPressures& breaks) {
    const Problem& problem = *state.problem;
    auto& BreakElev = breaks.BreakElev;
    auto& NumBreakPoints = breaks.NumBreakPoints;
    const auto append = [&](double elevation) { BreakElev(++NumBreakPoints) = elevation; };

    append(problem.SurfaceElev(side, 1));
    for (int L = 1; L < problem.SoilLayerCount(side); ++L) {
        append(problem.SoilBottomElev(side, L));
    }
    append(state.grid.ElevGrid(state.grid.NumElevs));
    if (problem.WaterDataKind != WaterData::Elevations) {
        return; // descending as it stands
    }
    if (problem.WaterElev(side) <= BreakElev(1)) {
        append(problem.WaterElev(side));
    }
    if (state.preparation.SeepageKind != Seepage::None) {
        if (side == Right) {
            append(problem.SeepageElev);
        }
        append(seepageExitElev(problem));
        append(state.preparation.SeepageEndElev(level));
    }
    auto* const first = BreakElev.begin();
    auto* const last = first + NumBreakPoints;
    std::sort(first, last, std::greater<>());
    NumBreakPoints = static_cast<int>(std::unique(first, last) - first);
}

/// Where an interval that ends at `lowerEnd` stands in the water.
bool belowWater(const Problem& problem, int side, double lowerEnd) {
    return problem.WaterDataKind == WaterData::Elevations && lowerEnd < problem.WaterElev(side);
}

/// Whether seepage acts in an interval that ends below the water.
bool seepsAt(const State& state, int side, int level, double lowerEnd) {
    return state.preparation.SeepageKind != Seepage::None &&
           (side == Left || lowerEnd < state.problem->SeepageElev) &&
           lowerEnd >= state.preparation.SeepageEndElev(level);
}

/// The downward share w (PCF) of water's weight in an interval that ends below the water:
/// downward flow on the right makes the soil heavier, upward flow on the left lighter.
double waterShare(const State& state, int side, int level, double lowerEnd) {
    const double water = state.problem->WaterUnitWeight;
    return seepsAt(state, side, level, lowerEnd)
               ? (1 - (3 - 2 * side) * state.preparation.SeepageGradient(level)) * water
               : water;
}

/// Tells what the pressures between breaks j and j + 1 come from, as their last step.
void recordInterval(const State& state, int side, int level, int j, const BreakPressures& breaks,
                    StressInterval interval) {
    const Problem& problem = *state.problem;
    auto& stresses = state.details->sides(side).stresses;
    StressPoint& top = interval.top;
    StressPoint& bottom = interval.bottom;
    top.elev = breaks.BreakElev(j);
    bottom.elev = breaks.BreakElev(j + 1);
    top.soilWeight = stresses.empty() ? 0 : stresses.back().bottom.soilWeight;
    top.water = stresses.empty() ? 0 : stresses.back().bottom.water;
    const double height = top.elev - bottom.elev;
    bottom.soilWeight = top.soilWeight + height * interval.unitWeight;
    bottom.water = top.water + height * interval.waterWeight;
    top.uniformLoad = bottom.uniformLoad =
        problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) : 0;
    top.soilActive = breaks.BreakActive(j, 1);
    top.soilPassive = breaks.BreakPassive(j, 1);
    bottom.soilActive = breaks.BreakActive(j + 1, 2);
    bottom.soilPassive = breaks.BreakPassive(j + 1, 2);
    interval.belowWater = belowWater(problem, side, bottom.elev);
    interval.seeps = interval.belowWater && seepsAt(state, side, level, bottom.elev);
    stresses.push_back(interval);
}

/// Adds the soil's diagrams to the rows from the surface row down, by straight lines between
/// breaks. The last row has nothing below it.
void addSoilDiagram(const BreakPressures& breaks, int surfaceRow, const ElevationGrid& grid,
                    Pressures& pressures, int side) {
    const auto& BreakElev = breaks.BreakElev;
    const auto add = [&](int i, int k, double active, double passive) {
        pressures.ActivePressures(side, i, k) += active;
        pressures.PassivePressures(side, i, k) += passive;
    };

    int i = surfaceRow;
    for (int j = 1; j < breaks.NumBreakPoints; ++j) {
        add(i, 1, breaks.BreakActive(j, 1), breaks.BreakPassive(j, 1));
        const bool lastInterval = j + 1 == breaks.NumBreakPoints;
        for (++i;; ++i) {
            const double t =
                divide(BreakElev(j) - grid.ElevGrid(i), BreakElev(j) - BreakElev(j + 1));
            const double active =
                (1 - t) * breaks.BreakActive(j, 1) + t * breaks.BreakActive(j + 1, 2);
            const double passive =
                (1 - t) * breaks.BreakPassive(j, 1) + t * breaks.BreakPassive(j + 1, 2);
            add(i, 2, active, passive);
            if (i == grid.NumElevs) {
                return;
            }
            if (std::abs(1 - t) < BreakShare && !lastInterval) {
                break; // this row is break j + 1
            }
            add(i, 1, active, passive);
        }
    }
}

/// Soil cannot pull at the wall: negative active pressure becomes zero, with a new grid row where
/// the diagram crosses zero.
void cutTension(State& state, int side, int surfaceRow) {
    auto& ActivePressures = state.pressures.ActivePressures;

    int i = surfaceRow;
    while (i < state.grid.NumElevs) {
        double& a = ActivePressures(side, i, 1);
        const double b = ActivePressures(side, i + 1, 2);
        int next = i + 1;
        if ((a < 0 && b > 0) || (a > 0 && b < 0)) {
            insertActiveZeroRow(state, side, i);
            next = i + 2;
        }
        a = MaxOf(0.0, a);
        ActivePressures(side, next, 2) = MaxOf(0.0, b);
        i = next;
    }
}

/// The row of a break: of rows within the grid's tolerance the nearest; 0 without one.
int rowOfBreak(const ElevationGrid& grid, double elev) {
    int row = lastRowAt(grid, elev);
    const auto distance = [&](int i) { return std::abs(grid.ElevGrid(i) - elev); };
    while (row > 1 && distance(row - 1) < distance(row)) {
        --row;
    }
    return row;
}

/// Calls `take(point, row, k)` for each end of an interval that has a row of the grid.
template <class Take>
void forEachStressPoint(const State& state, int side, Take take) {
    for (StressInterval& interval : state.details->sides(side).stresses) {
        for (const int k : {1, 2}) {
            StressPoint& point = k == 1 ? interval.top : interval.bottom;
            if (const int row = rowOfBreak(state.grid, point.elev)) {
                take(point, row, k);
            }
        }
    }
}

/// Rows and, at the breaks, soil and surcharge before any rule.
void recordSums(const State& state, int side) {
    for (int i = 1; i <= state.grid.NumElevs; ++i) {
        state.details->sides(side).rows.push_back(state.grid.ElevGrid(i));
    }
    forEachStressPoint(state, side, [&](StressPoint& point, int row, int k) {
        point.onGrid = true;
        point.surcharge = state.pressures.SurchargePressures(side, row);
        point.activeSum = state.pressures.ActivePressures(side, row, k);
    });
}

/// What stands at the breaks after the tension rule.
void recordForce(const State& state, int side) {
    forEachStressPoint(state, side, [&](StressPoint& point, int row, int k) {
        point.active = state.pressures.ActivePressures(side, row, k);
        point.passive = state.pressures.PassivePressures(side, row, k);
        point.tensionCut = point.activeSum < 0 && !(point.active < 0);
    });
}

} // namespace

// Pressures of the soil alone from vertical effective stress and the coefficients of each layer,
// interval by interval from the surface down. Reads the layer data, the level's factors of safety
// and seepage values. An effective weight that is not above zero, or a developed friction beyond
// the tables, fails.
std::optional<BreakPressures> ComputeBreakPressures(State& state, int side, int level) {
    const Problem& problem = *state.problem;
    BreakPressures breaks;
    const auto& BreakElev = breaks.BreakElev;
    listBreaks(state, side, level, breaks);

    double sv = problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) : 0;
    double w = 0;
    int L = 1;
    for (int j = 1; j < breaks.NumBreakPoints; ++j) {
        const auto layer = layerCoefficients(state, side, L, level);
        if (!layer) {
            return std::nullopt;
        }
        breaks.BreakActive(j, 1) = layer->active(sv);
        breaks.BreakPassive(j, 1) = layer->passive(sv);

        const double lowerEnd = BreakElev(j + 1);
        double g = problem.SoilMoistWeight(side, L);
        if (belowWater(problem, side, lowerEnd)) {
            g = problem.SoilSatWeight(side, L);
            w = waterShare(state, side, level, lowerEnd);
        }
        if (g - w <= 0) {
            const bool seeps =
                belowWater(problem, side, lowerEnd) && seepsAt(state, side, level, lowerEnd);
            fail(state, {.code = FailureCode::SoilWeightNotPositive,
                         .side = side,
                         .layer = L,
                         .level = level,
                         .gradient = seeps ? state.preparation.SeepageGradient(level) : 0});
            return std::nullopt;
        }
        const double above = sv;
        sv += (BreakElev(j) - lowerEnd) * (g - w);
        breaks.BreakActive(j + 1, 2) = layer->active(sv);
        breaks.BreakPassive(j + 1, 2) = layer->passive(sv);
        if (state.details != nullptr) {
            recordInterval(state, side, level, j, breaks, describe(*layer, L, g, w, above, sv));
        }

        if (L < problem.SoilLayerCount(side) &&
            lowerEnd - problem.SoilBottomElev(side, L) < SameElevation) {
            ++L;
        }
    }
    return breaks;
}

// Active and passive pressures (PSF) of one side by coefficients: surcharge pressures and the soil
// diagrams together, without active tension. Rebuilds the side from nothing.
void ComputeCoefficientPressures(State& state, int side, int level) {
    auto& pressures = state.pressures;
    const int rows = state.TouchedRows;

    for (int i = 1; i <= rows; ++i) {
        for (const int k : {1, 2}) {
            pressures.ActivePressures(side, i, k) = pressures.PassivePressures(side, i, k) = 0;
        }
        pressures.ActiveMark(side, i) = false;
        pressures.PassiveMark(side, i) = false;
    }
    if (state.details != nullptr) {
        state.details->sides(side).clear();
    }
    const auto breaks = ComputeBreakPressures(state, side, level);
    if (!breaks) {
        return;
    }
    ComputeSurchargePressures(state, side);

    const int surfaceRow = lastRowAt(state.grid, state.problem->SurfaceElev(side, 1));
    for (int i = 1; i <= rows; ++i) {
        for (const int k : {1, 2}) {
            pressures.ActivePressures(side, i, k) = pressures.PassivePressures(side, i, k) =
                pressures.SurchargePressures(side, i);
        }
    }
    addSoilDiagram(*breaks, surfaceRow, state.grid, pressures, side);
    if (state.details != nullptr) {
        recordSums(state, side);
    }
    for (int i = 1; i <= rows; ++i) {
        for (const int k : {1, 2}) {
            double& active = pressures.ActivePressures(side, i, k);
            if (std::abs(active) < PressureNoise) {
                active = 0;
            }
        }
    }
    cutTension(state, side, surfaceRow);
    if (state.details != nullptr) {
        recordForce(state, side);
    }
}

} // namespace korvane
