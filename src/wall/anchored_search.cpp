#include "wall/anchored_search.h"

#include "pressures/elevation_grid.h"
#include "pressures/water_pressures.h"
#include "runtime/number_text.h"
#include "wall/trial_pressures.h"

#include <cmath>

namespace korvane {

namespace {

constexpr int MaxSeepagePasses = 20;

/// Seepage values for the bottom just found, then pressures, DrivingMoment and the anchor's row
/// anew. False after a failure.
bool rebuildForBottom(State& state, int level, int& anchorIndex) {
    setSeepageForBottom(state, level, state.solution.SolvedBottomElev(level));
    RebuildForSeepage(state, level);
    if (state.SolutionFailed != 0) {
        return false;
    }
    const bool turns = shiftDrivingMoment(state);
    anchorIndex = firstRowAt(state.grid, state.problem.AnchorElev);
    if (!turns || anchorIndex == 0) {
        failSearch(state, "CONDITIONS ENCOUNTERED WHERE ANCHORED WALL TENDS\n"
                          "TO ROTATE COUNTERCLOCKWISE ABOUT ANCHOR OR\n"
                          "ANCHOR FORCE IS COMPRESSION.");
        return false;
    }
    return true;
}

} // namespace

void settleAnchoredBottom(State& state, int level, int& anchorIndex, AnchoredPass solvePass,
                          const std::string& oscillating) {
    const double& Zb = state.solution.SolvedBottomElev(level);
    double previousBottom = 0;
    for (int pass = 1; solvePass(state, anchorIndex); ++pass) {
        const bool settled = pass > 1 && std::abs(Zb - previousBottom) <= BottomTolerance;
        if (!seepageFollowsBottom(state.problem) || settled) {
            return;
        }
        if (pass >= MaxSeepagePasses) {
            failSearch(state,
                       "DESIGN PENETRATION FOR ANCHORED WALL APPEARS\n" + oscillating +
                           formatNumber(Zb, "####0.00") + " FT.",
                       "UNABLE TO CONTINUE.");
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
