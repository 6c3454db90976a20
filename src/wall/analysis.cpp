#include "wall/analysis.h"

#include "pressures/elevation_grid.h"
#include "pressures/water_pressures.h"
#include "runtime/arithmetic.h"
#include "state/tolerances.h"
#include "wall/design.h"
#include "wall/factor_search.h"
#include "wall/preparation.h"
#include "wall/trial_pressures.h"

#include <cmath>

namespace korvane {

namespace {

constexpr int MaxTrials = 10000;

/// The given active factor of each layer, both levels.
void takeGivenActiveFactors(State& state) {
    const Problem& problem = *state.problem;
    if (problem.FSActive <= NoFactor) {
        return;
    }
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const double factor = givenActiveFactor(problem, side, layer).value;
            for (const int level : {1, 2}) {
                state.preparation.LayerFSActive(side, layer, level) = factor;
            }
        }
    }
}

void takeTrialFactor(State& state, int level, double factor) {
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= state.problem->SoilLayerCount(side); ++layer) {
            state.preparation.LayerFSPassive(side, layer, level) = factor;
            if (state.problem->FSKind == FactorKind::OneForBoth) {
                state.preparation.LayerFSActive(side, layer, level) = factor;
            }
        }
    }
}

void clearMarks(State& state, int side) {
    for (int i = 1; i <= 301; ++i) {
        state.pressures.ActiveMark(side, i) = false;
        state.pressures.PassiveMark(side, i) = false;
    }
}

/// The bottom that the level's design search finds under the present factors, in
/// SolvedBottomElev(level). Returns the anchor's row, 0 for a cantilever wall; a failure stands in
/// the state.
int solveTrial(State& state, int level) {
    state.stage = {Doing::FactorOfSafety, 0, level};
    BuildElevationGrid(state, level);
    ComputeWaterPressures(state, level);
    ComputeSoilPressures(state, level, [&state](int side) { clearMarks(state, side); });
    if (state.failed() || !takeDrivingForces(state, level)) {
        return 0;
    }
    int anchorIndex = anchorRow(state);
    SolveBottom(state, anchorIndex, level);
    return anchorIndex;
}

/// The factor of one level, with its results. Failure stands in the state.
void analyseLevel(State& state, int level, const FactorLimit& limit) {
    const double W = state.problem->WallBottomElev;
    FactorSearch search;
    for (int trial = 1; trial <= MaxTrials; ++trial) {
        takeTrialFactor(state, level, search.FS);
        const int anchorIndex = solveTrial(state, level);
        if (state.failed()) {
            return;
        }
        const double Z = finite(state.solution.SolvedBottomElev(level));
        if (std::abs(Z - W) <= BottomTolerance) {
            state.solution.FactorOfSafety(level) = search.FS;
            finishLevel(state, anchorIndex, level);
            return;
        }
        if (!takeNextFactor(state, level, search, limit, Z, W)) {
            return;
        }
    }
    fail(state, {.code = FailureCode::FactorNotFound, .level = level});
}

} // namespace

// Purpose: the factor of safety at which the design search of each level ends at the wall's bottom.
//   The bottom found is taken as a function of the factor; its root by steps of 0.2 from 1.0, then
//   a straight line between the steps, then Lagrange's interpolation through three points.
// Reads: WallBottomElev (FT), FSKind, the given active factors.
// Writes: LayerFSPassive and (one factor for both) LayerFSActive of each level, and all that a
//   design leaves behind.
// Stops: the bottom within 0.1 FT of WallBottomElev.
void SolveAnalysis(State& state, const FactorLimit& limit, const LevelDone& levelDone) {
    takeGivenActiveFactors(state);
    for (int level = 1; level <= levelCountOf(*state.problem); ++level) {
        analyseLevel(state, level, limit);
        if (state.failed()) {
            return;
        }
        levelDone(level);
    }
}

} // namespace korvane
