#include "wall/design.h"

#include "pressures/elevation_grid.h"
#include "wall/beam.h"
#include "wall/cantilever_search.h"
#include "wall/fixed_earth_search.h"
#include "wall/free_earth_search.h"
#include "wall/result_diagrams.h"
#include "wall/trial_pressures.h"

namespace korvane {

namespace {

void designCantilever(State& state, const LevelDone& levelDone) {
    SolveCantileverBottom(state);
    if (!state.failed()) {
        finishLevel(state, 0, 1);
        levelDone(1);
    }
}

/// Both methods on the same grid and net pressures, unless seepage passes rebuild them.
void designAnchored(State& state, const LevelDone& levelDone) {
    int anchorIndex = firstRowAt(state.grid, state.problem->AnchorElev);
    for (const int level : {1, 2}) {
        if (level == 1) {
            SolveFreeEarthBottom(state, anchorIndex);
        } else {
            SolveFixedEarthBottom(state, anchorIndex);
        }
        if (state.failed()) {
            return;
        }
        finishLevel(state, anchorIndex, level);
        levelDone(level);
    }
}

} // namespace

void SolveDesign(State& state, const LevelDone& levelDone) {
    state.stage = {Doing::WallBottom, 0, 1};
    if (!shiftDrivingMoment(state)) {
        failRotation(state, 1);
    } else if (state.problem->WallType == WallKind::Cantilever) {
        designCantilever(state, levelDone);
    } else {
        designAnchored(state, levelDone);
    }
}

void finishLevel(State& state, int anchorIndex, int level) {
    state.stage = {Doing::Bending, 0, level};
    const bool rotationRestrained = state.problem->WallType == WallKind::Cantilever || level == 2;
    const Beam beam = SolveBeam(state, anchorIndex, state.solution.BottomIndex(level),
                                rotationRestrained ? 2 : 1, level, 0);
    BuildResultDiagrams(state, beam, level);
}

void failRotation(State& state, int level) {
    fail(state, {.code = FailureCode::ImproperRotation, .level = level});
}

} // namespace korvane
