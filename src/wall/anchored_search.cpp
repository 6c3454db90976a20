#include "wall/anchored_search.h"

#include "pressures/elevation_grid.h"
#include "pressures/water_pressures.h"
#include "state/tolerances.h"
#include "wall/trial_pressures.h"

#include <cmath>

namespace korvane {

namespace {

/// Seepage values for the bottom just found, then pressures, DrivingMoment and the anchor's row
/// anew. False after a failure.
bool rebuildForBottom(State& state, int level, int& anchorIndex) {
    setSeepageForBottom(state, level, state.solution.SolvedBottomElev(level));
    RebuildForSeepage(state, level);
    if (state.failed()) {
        return false;
    }
    const bool turns = shiftDrivingMoment(state);
    anchorIndex = firstRowAt(state.grid, state.problem->AnchorElev);
    if (!turns || anchorIndex == 0) {
        fail(state, {.code = FailureCode::AnchoredTurnsAround, .level = level});
        return false;
    }
    return true;
}

} // namespace

void settleAnchoredBottom(State& state, int level, int& anchorIndex, AnchoredPass solvePass) {
    const double& Zb = state.solution.SolvedBottomElev(level);
    double previousBottom = 0;
    for (int pass = 1;; ++pass) {
        state.stage = {Doing::WallBottom, 0, level};
        state.solution.SeepagePasses = pass;
        if (!solvePass(state, anchorIndex)) {
            return;
        }
        const bool settled = pass > 1 && std::abs(Zb - previousBottom) <= BottomTolerance;
        if (!seepageFollowsBottom(*state.problem) || settled) {
            return;
        }
        if (pass >= MaxSeepagePasses) {
            fail(state, {.code = FailureCode::AnchoredOscillates, .level = level, .elev = Zb});
            return;
        }
        previousBottom = Zb;
        if (!rebuildForBottom(state, level, anchorIndex)) {
            return;
        }
    }
}

void setAnchoredBottom(State& state, int level, int row, const DiagramPoint& bottom) {
    auto& solution = state.solution;
    const double upperElev = state.grid.ElevGrid(row - 1);
    const bool onRowAbove = std::abs(bottom.elev - upperElev) <= SamePoint;
    solution.BottomIndex(level) = onRowAbove ? row - 1 : row;
    solution.SolvedBottomElev(level) = onRowAbove ? upperElev : bottom.elev;
    solution.BottomPressure(level) = onRowAbove ? state.net.NetActive(row - 1, 2) : bottom.pressure;
}

} // namespace korvane
