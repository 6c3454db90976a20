#include "wall/free_earth_search.h"

#include "runtime/arithmetic.h"
#include "wall/anchored_search.h"
#include "wall/trial_pressures.h"

namespace korvane {

namespace {

/// Force (PLF) and moment about the anchor (LB-FT per foot) of the diagram above a point.
struct AnchorSums {
    double force;
    double moment;
};

/// The sums carried from row - 1 down to a point of the segment above `row`.
AnchorSums sumsTo(const State& state, int row, AnchorSums above, const DiagramPoint& point) {
    const Problem& problem = *state.problem;
    const double anchor = problem.AnchorElev;
    const double top = state.grid.ElevGrid(row - 1);
    const double a = state.net.NetActive(row - 1, 1);
    const auto [Zb, Pb] = point;
    const double d = top - Zb;
    const double f = (a + Pb) * d / 2;
    AnchorSums sums{above.force + f, above.moment + (anchor - top) * f + (2 * Pb + a) * d * d / 6};
    for (int j = 1; j <= problem.HLineCount; ++j) {
        const double elev = problem.HLineElev(j);
        if (elev <= top && elev > Zb) {
            sums.force += problem.HLineLoad(j);
            sums.moment += (anchor - elev) * problem.HLineLoad(j);
        }
    }
    return sums;
}

/// Bottom and anchor force under the pressures now on the grid; false after a failure.
bool solvePass(State& state, int) {
    const auto& ElevGrid = state.grid.ElevGrid;
    const auto& net = state.net;
    AnchorSums sums{net.DrivingForce, net.DrivingMoment};
    for (int i = net.NetZeroIndex + 1; i < state.grid.NumElevs; ++i) {
        const AnchorSums above = sums;
        DiagramPoint bottom{ElevGrid(i), net.NetActive(i, 2)};
        sums = sumsTo(state, i, above, bottom);
        if (finite(sums.moment) > AnchoredMomentTolerance) {
            continue;
        }
        if (sums.moment < -AnchoredMomentTolerance) {
            const auto point = refineInSegment(
                {segmentAbove(state, i), above.moment, sums.moment, AnchoredMomentTolerance},
                [&](const DiagramPoint& trial) { return sumsTo(state, i, above, trial).moment; });
            if (!point) {
                failRefinement(state, 1);
                return false;
            }
            bottom = *point;
            sums = sumsTo(state, i, above, bottom);
        }
        setAnchoredBottom(state, 1, i, bottom);
        state.solution.AnchorForce(1) = finite(sums.force);
        return true;
    }
    fail(state, {.code = FailureCode::NoFreeEarthBottom,
                 .level = 1,
                 .elev = ElevGrid(state.grid.NumElevs - 1)});
    return false;
}

} // namespace

// Purpose: bottom and anchor force of an anchored wall that is free to turn at its foot: the moment
//   of the net active diagram about the anchor vanishes, the anchor takes its resultant (free earth
//   support method).
// Reads: ElevGrid, NetActive, NetZeroIndex, DrivingForce (PLF), DrivingMoment (LB-FT per foot about
//   the anchor), horizontal line loads.
// Writes: SolvedBottomElev(1), BottomPressure(1), BottomIndex(1), AnchorForce(1); with automatic
//   seepage SeepageGradient(1), SeepageEndElev(1), all pressures and the anchor's row.
// Stops: moment within 1 LB-FT; the bottom within 0.1 FT from one seepage pass to the next.
void SolveFreeEarthBottom(State& state, int& anchorIndex) {
    settleAnchoredBottom(state, 1, anchorIndex, solvePass);
}

} // namespace korvane
