#include "wall/design.h"

#include "pressures/elevation_grid.h"
#include "wall/beam.h"
#include "wall/cantilever_search.h"
#include "wall/fixed_earth_search.h"
#include "wall/free_earth_search.h"
#include "wall/result_diagrams.h"
#include "wall/trial_pressures.h"

namespace korvane {

int levelCountOf(const Problem& problem) {
    return problem.WallType == WallKind::Anchored ? 2 : 1;
}

int anchorRow(const State& state) {
    const bool anchored = state.problem->WallType == WallKind::Anchored;
    return anchored ? firstRowAt(state.grid, state.problem->AnchorElev) : 0;
}

bool takeDrivingForces(State& state, int level) {
    state.stage = {Doing::WallBottom, 0, level};
    if (!shiftDrivingMoment(state)) {
        fail(state, {.code = FailureCode::ImproperRotation, .level = level});
    }
    return !state.failed();
}

void SolveBottom(State& state, int& anchorIndex, int level) {
    if (state.problem->WallType == WallKind::Cantilever) {
        SolveCantileverBottom(state);
    } else if (level == 1) {
        SolveFreeEarthBottom(state, anchorIndex);
    } else {
        SolveFixedEarthBottom(state, anchorIndex);
    }
}

// Both methods of an anchored wall on the same grid and net pressures, unless seepage passes
// rebuild them.
void SolveDesign(State& state, const LevelDone& levelDone) {
    if (!takeDrivingForces(state, 1)) {
        return;
    }
    int anchorIndex = anchorRow(state);
    for (int level = 1; level <= levelCountOf(*state.problem); ++level) {
        SolveBottom(state, anchorIndex, level);
        if (state.failed()) {
            return;
        }
        finishLevel(state, anchorIndex, level);
        levelDone(level);
    }
}

void finishLevel(State& state, int anchorIndex, int level) {
    state.stage = {Doing::Bending, 0, level};
    const bool rotationRestrained = state.problem->WallType == WallKind::Cantilever || level == 2;
    const Beam beam = SolveBeam(state, anchorIndex, state.solution.BottomIndex(level),
                                rotationRestrained ? 2 : 1, level);
    BuildResultDiagrams(state, beam, level);
}

} // namespace korvane
