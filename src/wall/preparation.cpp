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
constexpr double ExposedHeights = 10;      ///< layers must not cross within so many of them

/// True where neither adhesion nor a sloping layer asks for a wedge.
bool soilTakesCoefficients(const Problem& problem, int side) {
    if (problem.SoilDataKind(side) == SoilData::Strengths) {
        const int layers = problem.SoilLayerCount(side);
        for (int layer = 1; layer <= layers; ++layer) {
            const bool slopes = layer < layers && problem.SoilBottomSlope(side, layer) != 0;
            if (problem.SoilAdhesion(side, layer) > 0 || slopes) {
                return false;
            }
        }
    }
    return true;
}

bool isLevel(const Problem& problem, int side) {
    for (int point = 2; point <= problem.SurfacePointCount(side); ++point) {
        if (problem.SurfaceElev(side, point) != problem.SurfaceElev(side, 1)) {
            return false;
        }
    }
    return true;
}

} // namespace

PressureMethod sideMethod(const Problem& problem, int side) {
    const bool takesCoefficients =
        problem.SurfacePointCount(side) <= 1 && soilTakesCoefficients(problem, side);
    return takesCoefficients ? PressureMethod::Coefficients : PressureMethod::Wedge;
}

bool coefficientsCanFollow(const Problem& problem, int side) {
    return isLevel(problem, side) && soilTakesCoefficients(problem, side);
}

namespace {

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

/// The method of a side in a second opinion, where another one can be used.
PressureMethod amendedMethod(const State& state, int side) {
    const Problem& problem = *state.problem;
    const Amendments& amendments = state.amendments;
    const PressureMethod told = sideMethod(problem, side);
    if (amendments.methodCoefficients && coefficientsCanFollow(problem, side)) {
        return PressureMethod::Coefficients;
    }
    const bool wedge = amendments.methodSweep || amendments.methodFixed;
    return wedge && problem.SoilDataKind(side) == SoilData::Strengths ? PressureMethod::Wedge
                                                                      : told;
}

/// A layer that ends at or above the ground of its side at the wall.
Failure layerAboveSurface(const State& state, int side) {
    const Problem& problem = *state.problem;
    for (int layer = 1; layer < problem.SoilLayerCount(side); ++layer) {
        if (problem.SoilBottomElev(side, layer) >= problem.SurfaceElev(side, 1)) {
            return {.code = FailureCode::LayerAboveSurface, .side = side, .layer = layer};
        }
    }
    return {};
}

/// How far from the wall (FT) the layers of a wedge side must lie above each other: as far as its
/// surface is given, and as wedges of a wall reach.
double reachOfLayers(const Problem& problem, int side) {
    const double exposed =
        problem.WallTopElev - MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
    return MaxOf(problem.SurfaceDist(side, problem.SurfacePointCount(side)),
                 ExposedHeights * exposed);
}

/// Two neighbouring bottoms of a wedge side that cross in front of the wall within its reach: the
/// regions between them would turn inside out.
Failure layerBottomsCross(const State& state, int side) {
    const Problem& problem = *state.problem;
    if (state.preparation.SideMethod(side) != PressureMethod::Wedge) {
        return {};
    }
    const auto& Elev = problem.SoilBottomElev;
    const auto& Slope = problem.SoilBottomSlope;
    for (int layer = 1; layer + 1 < problem.SoilLayerCount(side); ++layer) {
        const double gap = Elev(side, layer) - Elev(side, layer + 1);
        const double closing = Slope(side, layer + 1) - Slope(side, layer);
        if (closing > 0 && gap > 0 && gap / closing < reachOfLayers(problem, side)) {
            return {.code = FailureCode::LayerBottomsCross,
                    .side = side,
                    .layer = layer,
                    .distance = gap / closing};
        }
    }
    return {};
}

/// Coefficients on a side that needs a wedge.
Failure coefficientsForWedge(const State& state, int side) {
    if (state.problem->SoilDataKind(side) == SoilData::Coefficients &&
        state.preparation.SideMethod(side) == PressureMethod::Wedge) {
        return {.code = FailureCode::CoefficientsForWedge, .side = side};
    }
    return {};
}

/// Soil data that no method can use; each test on both sides before the next one, the first fault
/// only.
bool refuseSoilData(State& state) {
    for (const auto test : {layerAboveSurface, layerBottomsCross, coefficientsForWedge}) {
        for (const int side : {Right, Left}) {
            if (const Failure failure = test(state, side)) {
                fail(state, failure);
                return true;
            }
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

/// The factors of a design; equal for both levels.
void setDesignFactors(State& state) {
    const Problem& problem = *state.problem;
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            for (const int level : {1, 2}) {
                state.preparation.LayerFSActive(side, layer, level) =
                    givenActiveFactor(problem, side, layer).value;
                state.preparation.LayerFSPassive(side, layer, level) =
                    givenPassiveFactor(problem, side, layer).value;
            }
        }
    }
}

GivenFactor firstGiven(double ofLayer, double ofSide, double ofAll) {
    if (ofLayer > 0) {
        return {ofLayer, FactorSource::Layer};
    }
    return ofSide > 0 ? GivenFactor{ofSide, FactorSource::Side}
                      : GivenFactor{ofAll, FactorSource::Control};
}

} // namespace

GivenFactor givenActiveFactor(const Problem& problem, int side, int layer) {
    return firstGiven(problem.SoilFSActive(side, layer), problem.Level2FSActive(side),
                      problem.FSActive);
}

GivenFactor givenPassiveFactor(const Problem& problem, int side, int layer) {
    return firstGiven(problem.SoilFSPassive(side, layer), problem.Level2FSPassive(side),
                      problem.FSPassive);
}

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
        state.preparation.SideMethod(side) = amendedMethod(state, side);
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
