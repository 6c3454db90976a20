#include "wall/design.h"

#include "pressures/elevation_grid.h"
#include "wall/beam.h"
#include "wall/cantilever_search.h"
#include "wall/fixed_earth_search.h"
#include "wall/free_earth_search.h"
#include "wall/result_diagrams.h"
#include "wall/solution_files.h"
#include "wall/trial_pressures.h"

namespace korvane {

namespace {

void designCantilever(State& state) {
    SolveCantileverBottom(state);
    if (state.SolutionFailed == 0) {
        finishLevel(state, 0, 1);
    }
}

/// Both methods on the same grid and net pressures, unless seepage passes rebuild them.
void designAnchored(State& state) {
    int anchorIndex = firstRowAt(state.grid, state.problem.AnchorElev);
    for (const int level : {1, 2}) {
        if (level == 1) {
            SolveFreeEarthBottom(state, anchorIndex);
        } else {
            SolveFixedEarthBottom(state, anchorIndex);
        }
        if (state.SolutionFailed != 0) {
            return;
        }
        finishLevel(state, anchorIndex, level);
        WriteSolutionFile(state, level);
    }
}

} // namespace

void SolveDesign(State& state) {
    forgetSolvedLevels(state);
    if (!shiftDrivingMoment(state)) {
        FailRotation(state);
    } else if (state.problem.WallType == WallKind::Cantilever) {
        designCantilever(state);
    } else {
        designAnchored(state);
    }
}

void finishLevel(State& state, int anchorIndex, int level) {
    const bool rotationRestrained = state.problem.WallType == WallKind::Cantilever || level == 2;
    SolveBeam(state, anchorIndex, state.solution.BottomIndex(level), rotationRestrained ? 2 : 1,
              level, 0);
    BuildResultDiagrams(state, level);
    KeepSolvedLevel(state, level);
}

void FailRotation(State& state) {
    const bool cantilever = state.problem.WallType == WallKind::Cantilever;
    const std::string wall = cantilever ? "CANTILEVER" : "ANCHORED";
    const std::string turn = cantilever ? "CLOCKWISE" : "COUNTERCLOCKWISE";
    failSolution(state, {.text = "Conditions encountered where impending rotation\nof" + wall +
                                 " wall is " + turn +
                                 "\nor driving force of retained soil above left side surface"
                                 "is zero.\n\n     Unable to continue.",
                         .title = "IMPROPER WALL ROTATION"});
}

} // namespace korvane
