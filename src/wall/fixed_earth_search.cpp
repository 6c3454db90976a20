#include "wall/fixed_earth_search.h"

#include "runtime/arithmetic.h"
#include "wall/anchored_search.h"
#include "wall/trial_pressures.h"

namespace korvane {

namespace {

/// The forces above a lower end, taken on a cantilever that is built in there (EI = 1).
struct CantileverSums {
    double L = 0;  ///< FT from the anchor down to the lower end
    double Vn = 0; ///< minus the sum of the forces, PLF
    double Mn = 0; ///< their moment about the lower end, LB-FT per foot
    double Dn = 0; ///< deflection at anchor level, LB-FT^3 per foot

    /// The moment left at the lower end with the anchor force that brings the anchor back to zero
    /// deflection; not finite where the lower end stands at the anchor.
    double momentBalance() const { return Mn - L * (3 * Dn / (L * L * L)); }
};

/// Adds the piece of the diagram between rows i and i + 1, both at or above the lower end `E`.
void addPieceAboveZero(const State& state, int i, int anchorIndex, double E, CantileverSums& sums) {
    const auto& ElevGrid = state.grid.ElevGrid;
    const double p1 = state.net.NetActive(i, 1);
    const double p2 = state.net.NetActive(i + 1, 2);
    const double d = ElevGrid(i) - ElevGrid(i + 1);
    const double a = ElevGrid(i + 1) - E;
    const double f = (p2 + p1) * d / 2;
    const double m = (2 * p1 + p2) * d * d / 6;
    const double L = sums.L;
    sums.Mn += a * f + m;
    sums.Vn -= f;
    if (i < anchorIndex) {
        sums.Dn += ((3 * a - L) * f + 3 * m) * L * L / 6;
    } else {
        const double c = L - a;
        const double d3 = d * d * d;
        sums.Dn += c * (a * f + 2 * m) * a / 2 + (2 * f * a + 3 * m) * a * a / 6 +
                   d3 * d * (11 * p1 + 4 * p2) / 120 + (c - d) * d3 * (3 * p1 + p2) / 24;
    }
}

/// The sums of all forces above the point of zero net active pressure.
CantileverSums sumsToZero(const State& state, int anchorIndex) {
    const Problem& problem = *state.problem;
    const double E = state.grid.ElevGrid(state.net.NetZeroIndex);
    CantileverSums sums;
    sums.L = problem.AnchorElev - E;
    for (int i = 1; i < state.net.NetZeroIndex; ++i) {
        addPieceAboveZero(state, i, anchorIndex, E, sums);
    }
    for (int j = 1; j <= problem.HLineCount; ++j) {
        const double elev = problem.HLineElev(j);
        if (elev <= E) {
            continue;
        }
        const double P = problem.HLineLoad(j);
        const double a = elev - E;
        const double L = sums.L;
        sums.Mn += a * P;
        sums.Vn -= P;
        sums.Dn +=
            elev <= problem.AnchorElev ? (L - a / 3) * P * a * a / 2 : (3 * a - L) * P * L * L / 6;
    }
    return sums;
}

/// The sums carried from row - 1 down to a point of the segment above `row`.
CantileverSums sumsTo(const State& state, int row, const CantileverSums& above,
                      const DiagramPoint& point) {
    const Problem& problem = *state.problem;
    const auto& [L, Vn, Mn, Dn] = above;
    const double top = state.grid.ElevGrid(row - 1);
    const double p1 = state.net.NetActive(row - 1, 1);
    const auto [Zb, Pb] = point;
    const double d = top - Zb;
    const double s1 = (2 * Mn - d * Vn) * d / 2;
    const double s2 = (3 * Mn - 2 * Vn * d) * d * d / 6;
    const double s3 = d * d * d * (3 * p1 + Pb) / 24;
    const double s4 = d * d * d * d * (11 * p1 + 4 * Pb) / 120;
    CantileverSums sums;
    sums.L = d + L;
    sums.Vn = Vn - (p1 + Pb) * d / 2;
    sums.Mn = (2 * p1 + Pb) * d * d / 6 + Mn - d * Vn;
    sums.Dn = Dn + s2 + s4 + (s1 + s3) * L;
    for (int j = 1; j <= problem.HLineCount; ++j) {
        const double elev = problem.HLineElev(j);
        if (elev <= top && elev > Zb) {
            const double P = problem.HLineLoad(j);
            const double a = elev - Zb;
            sums.Vn -= P;
            sums.Mn += a * P;
            sums.Dn += a * a * (sums.L - a / 3) * P / 2;
        }
    }
    return sums;
}

/// Bottom and anchor force under the pressures now on the grid; false after a failure. The grid's
/// end is not tested: RuntimeError 9 where the search comes to it.
bool solvePass(State& state, int anchorIndex) {
    const auto& ElevGrid = state.grid.ElevGrid;
    CantileverSums sums = sumsToZero(state, anchorIndex);
    double previous = 0; // balance at the row above; none is known at the zero point
    for (int i = state.net.NetZeroIndex + 1; i <= state.grid.NumElevs; ++i) {
        const CantileverSums above = sums;
        DiagramPoint bottom{ElevGrid(i), state.net.NetActive(i, 2)};
        sums = sumsTo(state, i, above, bottom);
        state.solution.AnchorForce(2) = divide(3 * sums.Dn, sums.L * sums.L * sums.L);
        const double balance = finite(sums.momentBalance());
        if (balance > AnchoredMomentTolerance) {
            previous = balance;
            continue;
        }
        if (balance < -AnchoredMomentTolerance) {
            const auto point = refineInSegment(
                {segmentAbove(state, i), previous, balance, AnchoredMomentTolerance},
                [&](const DiagramPoint& trial) {
                    return sumsTo(state, i, above, trial).momentBalance();
                });
            if (!point) {
                failRefinement(state, 2);
                return false;
            }
            bottom = *point;
            sums = sumsTo(state, i, above, bottom);
            state.solution.AnchorForce(2) = divide(3 * sums.Dn, sums.L * sums.L * sums.L);
        }
        setAnchoredBottom(state, 2, i, bottom);
        return true;
    }
    throw RuntimeError(9);
}

} // namespace

// Purpose: bottom and anchor force of an anchored wall that is built in at its foot: for a trial
//   bottom the anchor force comes from zero deflection at the anchor, and the moment at the bottom
//   vanishes (fixed earth support method, closed-form moment areas with EI = 1).
// Reads: ElevGrid, NetActive, NetZeroIndex, horizontal line loads.
// Writes: SolvedBottomElev(2), BottomPressure(2), BottomIndex(2), AnchorForce(2); with automatic
//   seepage SeepageGradient(2), SeepageEndElev(2), all pressures and the anchor's row.
// Stops: moment within 1 LB-FT; the bottom within 0.1 FT from one seepage pass to the next.
void SolveFixedEarthBottom(State& state, int& anchorIndex) {
    settleAnchoredBottom(state, 2, anchorIndex, solvePass);
}

} // namespace korvane
