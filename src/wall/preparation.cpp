#include "wall/preparation.h"

#include "pressures/elevation_grid.h"
#include "pressures/water_pressures.h"
#include "pressures/wedge_regions.h"
#include "problem/loads.h"
#include "runtime/arithmetic.h"
#include "state/rows.h"
#include "state/tolerances.h"

namespace korvane {

namespace {

constexpr double LargestGradient = 0.9999; ///< FT/FT

/// Equal input gives equal results, whatever was solved before. Polygons are cleared by their
/// counts.
void clearWorkingValues(State& state) {
    const int rows = state.TouchedRows;
    Pressures& pressures = state.pressures;
    for (auto* diagram : {&pressures.ActivePressures, &pressures.PassivePressures}) {
        clearSideRows(*diagram, rows);
    }
    clearSideRows(pressures.SurchargePressures, rows);
    clearSideRows(pressures.ActiveMark, rows);
    clearSideRows(pressures.PassiveMark, rows);
    for (auto* diagram : {&pressures.WaterPressures, &state.net.NetActive, &state.net.NetPassive,
                          &state.wedge.WedgeActiveForce, &state.wedge.WedgePassiveForce}) {
        clearRows(*diagram, rows);
    }
    clearRows(state.wedge.MidActiveForce, rows);
    clearRows(state.wedge.MidPassiveForce, rows);
    state.wedge.PieceForce.fill(0);
    state.wedge.WedgeNoSolution.fill(0);
    for (RegionFamily* family :
         {&state.regions.Layer, &state.regions.Wet, &state.regions.Seep, &state.regions.Deep}) {
        family->Count.fill(0);
        family->Kind.fill(0);
    }
    state.regions.WedgeSurfaceCount.fill(0);
    state.net.NetZeroIndex = 0;
    state.net.DrivingForce = state.net.DrivingMoment = 0;
    state.grid = {};
    state.preparation = {};
    state.TouchedRows = 0;
}

/// Coefficients, or a wedge where only that can follow the ground, adhesion or sloping layers.
PressureMethod sideMethod(const Problem& problem, int side) {
    if (problem.SurfacePointCount(side) > 1) {
        return PressureMethod::Wedge;
    }
    if (problem.SoilDataKind(side) == SoilData::Strengths) {
        const int layers = problem.SoilLayerCount(side);
        for (int layer = 1; layer <= layers; ++layer) {
            const bool slopes = layer < layers && problem.SoilBottomSlope(side, layer) != 0;
            if (problem.SoilAdhesion(side, layer) > 0 || slopes) {
                return PressureMethod::Wedge;
            }
        }
    }
    return PressureMethod::Coefficients;
}

/// Refuses a layer that ends at or above the ground of its side, then a side whose coefficients no
/// wedge can use; the first fault only.
bool refuseSoilData(State& state) {
    const Problem& problem = *state.problem;
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer < problem.SoilLayerCount(side); ++layer) {
            if (problem.SoilBottomElev(side, layer) >= problem.SurfaceElev(side, 1)) {
                fail(state, {.code = FailureCode::LayerAboveSurface, .side = side, .layer = layer});
                return true;
            }
        }
    }
    for (const int side : {Right, Left}) {
        if (problem.SoilDataKind(side) == SoilData::Coefficients &&
            state.preparation.SideMethod(side) == PressureMethod::Wedge) {
            fail(state, {.code = FailureCode::CoefficientsForWedge, .side = side});
            return true;
        }
    }
    return false;
}

/// The seepage of the first pass, the same for both levels.
void startSeepage(State& state) {
    const Problem& problem = *state.problem;
    auto& SeepageGradient = state.preparation.SeepageGradient;
    auto& SeepageEndElev = state.preparation.SeepageEndElev;

    if (state.preparation.SeepageKind == Seepage::Automatic) {
        SeepageGradient(1) = problem.ProgramMode == Mode::Design
                                 ? StartGradient
                                 : seepageGradientForBottom(problem, problem.WallBottomElev);
    }
    SeepageGradient(2) = SeepageGradient(1);
    SeepageEndElev(1) = SeepageEndElev(2) = seepageEndElevation(problem, SeepageGradient(1));
}

/// Refuses a given gradient that has used up the head before the water leaves the left soil.
bool refuseGradient(State& state) {
    const Problem& problem = *state.problem;
    if (state.preparation.SeepageKind != Seepage::Given ||
        state.preparation.SeepageEndElev(1) <= seepageExitElev(problem) + SamePoint) {
        return false;
    }
    fail(state, {.code = FailureCode::GradientTooLarge});
    return true;
}

/// Surcharges and regions of the sides that need a wedge.
void prepareWedgeSides(State& state) {
    const Problem& problem = *state.problem;
    for (const int side : {Right, Left}) {
        if (state.preparation.SideMethod(side) != PressureMethod::Wedge) {
            continue;
        }
        int& surcharges = state.preparation.NumSurchargesOnSide(side);
        surcharges = 0;
        for (const LoadRules& load : GroundLoads) {
            surcharges += load.load == Load::Uniform ? 0 : load.rows(problem, side);
        }
        BuildWedgeRegions(state, side);
        if (state.preparation.SeepageKind != Seepage::None) {
            BuildSeepageEndRegions(state, side, 1);
        }
    }
}

/// The largest gradient of a design search: short of 1, of the head over the shortest path, and of
/// the critical gradient of the left soil.
double gradientLimit(const Problem& problem) {
    const double drop = problem.SeepageElev - seepageExitElev(problem);
    double lightest = 100000.0;
    for (int layer = 1; layer <= problem.SoilLayerCount(Left); ++layer) {
        lightest = MinOf(lightest, problem.SoilSatWeight(Left, layer));
    }
    const double byPath = drop > 0 ? divide(seepageHead(problem), drop) : LargestGradient;
    const double critical = divide(lightest, problem.WaterUnitWeight) - 1.0;
    return MinOf(MinOf(LargestGradient, byPath), critical);
}

/// The factors of a design: the layer's own, else its side's, else the problem's; equal for both
/// levels.
void setDesignFactors(State& state) {
    const Problem& problem = *state.problem;
    const auto firstGiven = [](double own, double otherwise) { return own > 0 ? own : otherwise; };

    for (const int side : {Right, Left}) {
        const double a = firstGiven(problem.Level2FSActive(side), problem.FSActive);
        const double p = firstGiven(problem.Level2FSPassive(side), problem.FSPassive);
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            for (const int level : {1, 2}) {
                state.preparation.LayerFSActive(side, layer, level) =
                    firstGiven(problem.SoilFSActive(side, layer), a);
                state.preparation.LayerFSPassive(side, layer, level) =
                    firstGiven(problem.SoilFSPassive(side, layer), p);
            }
        }
    }
}

} // namespace

// Derives from the problem what every later stage takes as given: each side's method, the seepage
// of the first pass and its limit, wedge regions, the grid, water pressures and the factors of a
// design. An analysis sets its factors itself.
void PrepareSolution(State& state) {
    const Problem& problem = *state.problem;

    state.stage = {};
    clearWorkingValues(state);
    state.preparation.SeepageKind = problem.SeepageKind;
    state.preparation.SeepageGradient = problem.SeepageGradient;
    for (const int side : {Right, Left}) {
        state.preparation.SideMethod(side) = sideMethod(problem, side);
    }
    if (refuseSoilData(state)) {
        return;
    }
    if (problem.WaterDataKind != WaterData::Elevations) {
        state.preparation.SeepageKind = Seepage::None;
    }
    const bool seeps = state.preparation.SeepageKind != Seepage::None;
    if (seeps) {
        startSeepage(state);
        if (refuseGradient(state)) {
            return;
        }
    }
    prepareWedgeSides(state);
    BuildElevationGrid(state, 1);
    ComputeWaterPressures(state, 1);
    if (seeps) {
        state.preparation.SeepageGradientLimit = gradientLimit(problem);
    }
    if (problem.ProgramMode == Mode::Design) {
        setDesignFactors(state);
    }
}

} // namespace korvane
