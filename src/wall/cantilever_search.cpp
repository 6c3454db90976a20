#include "wall/cantilever_search.h"

#include "pressures/elevation_grid.h"
#include "pressures/row_insertion.h"
#include "pressures/water_pressures.h"
#include "runtime/arithmetic.h"
#include "wall/trial_pressures.h"

#include <cmath>

namespace korvane {

namespace {

constexpr double ForceTolerance = 0.1;  // PLF
constexpr double MomentTolerance = 1.0; // LB-FT per foot
constexpr int CurvePoints = 3;
constexpr int MaxCurveStages = 25;
constexpr int MaxHalvings = 200;

/// Where net active pressure ends: the grid row at or below it, and the point itself.
struct Transition {
    int row;
    DiagramPoint point;
    double moment; // of the trial, as IntegrateNetPressure gives it
};

/// Moment of the trials over their bottoms. The outer points come from the grid and stay once the
/// curve stands; each later trial replaces the middle one. Where that does not come to rest they
/// close in by halving.
struct MomentCurve {
    int stage = 0;
    int halvings = 0;
    bool hasFirst = false;
    double Z1 = 0, M1 = 0; // the last trial of negative moment
    double Z2 = 0, M2 = 0; // the first of positive moment, later the last trial
    double Z3 = 0, M3 = 0; // the second of positive moment
};

void failNoSolution(State& state) {
    fail(state, {.code = FailureCode::NoCantileverBottom,
                 .level = 1,
                 .elev = state.grid.ElevGrid(state.grid.NumElevs - 1)});
}

void failOscillation(State& state) {
    fail(state, {.code = FailureCode::CantileverOscillates,
                 .level = 1,
                 .elev = state.solution.SolvedBottomElev(1)});
}

/// The first grid row to try as bottom: one below the row at which the force of the net active
/// diagram alone turns negative. 0 after a failure.
int firstTrialRow(State& state) {
    const auto& ElevGrid = state.grid.ElevGrid;
    const auto& NetActive = state.net.NetActive;
    const int zero = state.net.NetZeroIndex;
    int row = state.grid.NumElevs + 2;
    double force = state.net.DrivingForce;
    for (int j = zero + 1; j <= state.grid.NumElevs; ++j) {
        force += (NetActive(j, 2) + NetActive(j - 1, 1)) * (ElevGrid(j - 1) - ElevGrid(j)) / 2;
        if (finite(force) <= 0) {
            row = force < 0 ? j : j + 1;
            break;
        }
    }
    if (row == zero + 1) {
        fail(state,
             {.code = FailureCode::CantileverBottomAbove, .level = 1, .elev = ElevGrid(zero + 1)});
        return 0;
    }
    return row + 1;
}

/// Takes a grid row as the bottom of the next trial; false where the grid has come to its end.
bool tryBottomAt(State& state, int row) {
    if (row >= state.grid.NumElevs) {
        failNoSolution(state);
        return false;
    }
    state.solution.SolvedBottomElev(1) = state.grid.ElevGrid(row);
    state.solution.BottomPressure(1) = state.net.NetPassive(row, 2);
    return true;
}

/// The diagram of a trial from `startIndex` downward, with its sums carried from row to row.
class TrialDiagram {
  public:
    TrialDiagram(const State& state, int startIndex)
        : state_(state), startIndex_(startIndex), row_(startIndex),
          Zb_(state.solution.SolvedBottomElev(1)), Pb_(state.solution.BottomPressure(1)) {}

    /// Adds the net active diagram down to the next row.
    void passRow() {
        const int next = row_ + 1;
        addPiece(above_, elevAt(row_), state_.net.NetActive(row_, 1), elevAt(next),
                 state_.net.NetActive(next, 2));
        row_ = next;
    }
    /// Force and moment with a transition at or below the row that was passed last.
    TrialResultant resultant(double drivingForce, double drivingMoment,
                             const DiagramPoint& transition) const;

  private:
    double elevAt(int row) const { return state_.grid.ElevGrid(row); }

    /// One trapezoid from `top` (pressure a) down to `bottom` (pressure b).
    void addPiece(TrialResultant& sums, double top, double a, double bottom, double b) const {
        const double d = top - bottom;
        const double f = (b + a) * d / 2;
        sums.force += f;
        sums.moment = sums.moment - (bottom - Zb_) * f - (2 * a + b) * d * d / 6;
    }

    const State& state_;
    int startIndex_;
    int row_;                    ///< the sums go down to here
    double Zb_;                  ///< FT, bottom of the trial
    double Pb_;                  ///< PSF there
    TrialResultant above_{0, 0}; ///< of the net active diagram from the start to the row
};

TrialResultant TrialDiagram::resultant(double drivingForce, double drivingMoment,
                                       const DiagramPoint& transition) const {
    const Problem& problem = *state_.problem;
    const auto [Z, pZ] = transition;
    TrialResultant sums = above_;
    addPiece(sums, elevAt(row_), state_.net.NetActive(row_, 1), Z, pZ);
    addPiece(sums, Z, pZ, Zb_, Pb_);

    auto& [F, M] = sums;
    const double start = elevAt(startIndex_);
    for (int j = 1; j <= problem.HLineCount; ++j) {
        const double elev = problem.HLineElev(j);
        if (elev <= start && elev > Zb_) {
            F += problem.HLineLoad(j);
            M -= (elev - Zb_) * problem.HLineLoad(j);
        }
    }
    F += drivingForce;
    M = M - (start - Zb_) * drivingForce + drivingMoment;
    return sums;
}

/// The transition at which the force of the present trial vanishes: the first grid row that makes
/// it negative, then the place between that row and the one above. `lastPositive` is the force at
/// the row above; it outlives a trial, and the first row of a trial takes what the last one left.
std::optional<Transition> findTransition(State& state, double& lastPositive) {
    const NetPressures& net = state.net;
    TrialDiagram diagram(state, net.NetZeroIndex);
    const auto resultantAt = [&](const DiagramPoint& point) {
        return diagram.resultant(net.DrivingForce, net.DrivingMoment, point);
    };
    for (int i = net.NetZeroIndex + 1; i < state.grid.NumElevs - 1; ++i) {
        const DiagramPoint row{state.grid.ElevGrid(i), net.NetActive(i, 2)};
        const auto [force, moment] = resultantAt(row);
        if (std::abs(finite(force)) < ForceTolerance) {
            return Transition{i, row, finite(moment)};
        }
        if (force < 0) {
            const auto point = refineInSegment(
                {segmentAbove(state, i), lastPositive, force, ForceTolerance},
                [&](const DiagramPoint& trial) { return resultantAt(trial).force; });
            if (!point) {
                failRefinement(state, 1);
                return std::nullopt;
            }
            return Transition{i, *point, finite(resultantAt(*point).moment)};
        }
        lastPositive = force;
        diagram.passRow();
    }
    failNoSolution(state);
    return std::nullopt;
}

/// Halfway between the outer points, of which the one with the sign of the last halving's moment
/// moves to its bottom. False after a failure.
bool tryHalfway(State& state, MomentCurve& curve, double moment) {
    double& Zb = state.solution.SolvedBottomElev(1);
    if (curve.halvings > 0) {
        (moment <= 0 ? curve.Z1 : curve.Z3) = Zb;
    }
    if (++curve.halvings > MaxHalvings) {
        failOscillation(state);
        return false;
    }
    Zb = (curve.Z1 + curve.Z3) / 2;
    state.solution.BottomPressure(1) = passivePressureAt(state, Zb);
    return true;
}

/// Notes the moment of the present trial and moves the bottom to the next one: down the grid until
/// the curve has its points, then to the root of the parabola, and halfway where that swings. False
/// after a failure.
bool tryNextBottom(State& state, MomentCurve& curve, int& row, double moment) {
    double& Zb = state.solution.SolvedBottomElev(1);
    if (curve.stage < CurvePoints && moment <= 0) {
        curve.Z1 = Zb;
        curve.M1 = moment;
        curve.hasFirst = true;
        return tryBottomAt(state, ++row);
    }
    ++curve.stage;
    if (curve.stage == 1) {
        curve.Z2 = Zb;
        curve.M2 = moment;
        return tryBottomAt(state, ++row);
    }
    if (curve.stage == 2) {
        curve.Z3 = Zb;
        curve.M3 = moment;
        curve.stage = CurvePoints;
        if (!curve.hasFirst) {
            curve.Z1 = state.grid.ElevGrid(state.net.NetZeroIndex);
            curve.M1 = state.net.DrivingMoment;
        }
    } else {
        if (curve.stage > MaxCurveStages) {
            return tryHalfway(state, curve, moment);
        }
        curve.Z2 = Zb;
        curve.M2 = moment;
    }
    Zb = curve.Z3 +
         parabolaRoot({curve.Z1 - curve.Z3, curve.M1}, {curve.Z2 - curve.Z3, curve.M2}, curve.M3);
    state.solution.BottomPressure(1) = passivePressureAt(state, Zb);
    return true;
}

/// Bottom and transition under the pressures now on the grid; nothing after a failure.
std::optional<Transition> solvePass(State& state, double& lastPositive) {
    int row = firstTrialRow(state);
    if (row == 0 || !tryBottomAt(state, row)) {
        return std::nullopt;
    }
    MomentCurve curve;
    for (;;) {
        const auto transition = findTransition(state, lastPositive);
        if (!transition || std::abs(transition->moment) < MomentTolerance) {
            return transition;
        }
        if (!tryNextBottom(state, curve, row, transition->moment)) {
            return std::nullopt;
        }
    }
}

/// A grid row for a transition between two rows. NetPassive and WaterPressures stay where they are.
void insertTransition(State& state, const Transition& transition) {
    auto& ElevGrid = state.grid.ElevGrid;
    auto& NetActive = state.net.NetActive;
    auto& ActivePressures = state.pressures.ActivePressures;
    auto& PassivePressures = state.pressures.PassivePressures;
    const int i = transition.row;

    openRow(state, i, Left);
    shiftRows(NetActive, i, state.grid.NumElevs);
    ElevGrid(i) = transition.point.elev;
    NetActive(i, 1) = NetActive(i, 2) = transition.point.pressure;

    const double t = divide(ElevGrid(i - 1) - ElevGrid(i), ElevGrid(i - 1) - ElevGrid(i + 1));
    interpolateRow(ActivePressures, i, t, Right);
    interpolateRow(PassivePressures, i, t, Right);
    interpolateRow(PassivePressures, i, t, Left);
    // Left active pressure alone takes the value below the next row: deliberate.
    ActivePressures(Left, i, 1) = ActivePressures(Left, i, 2) =
        (1 - t) * ActivePressures(Left, i - 1, 1) + t * ActivePressures(Left, i + 1, 1);
}

/// The diagram of the wall as found: a row at the transition, then the straight line down to the
/// bottom, which takes the place of the first row at or below it.
void finishDiagram(State& state, const Transition& transition) {
    auto& ElevGrid = state.grid.ElevGrid;
    auto& NetActive = state.net.NetActive;
    auto& BottomIndex = state.solution.BottomIndex;
    const double Zb = state.solution.SolvedBottomElev(1);
    const double Pb = state.solution.BottomPressure(1);
    const auto [Z, pZ] = transition.point;

    state.solution.TransitionRow = 0;
    if (std::abs(Z - ElevGrid(transition.row)) > SameElevation) {
        insertTransition(state, transition);
        state.solution.TransitionRow = transition.row;
    }
    BottomIndex(1) = transition.row + 1;
    state.solution.BottomRowElev = ElevGrid(BottomIndex(1));
    if (Z <= Zb) {
        return;
    }
    for (int r = transition.row + 1; r <= state.grid.NumElevs; ++r) {
        if (ElevGrid(r) <= Zb) {
            BottomIndex(1) = r;
            state.solution.BottomRowElev = ElevGrid(r);
            ElevGrid(r) = Zb;
            NetActive(r, 2) = Pb;
            ComputeWaterPressures(state, 1);
            state.net.WaterLagRow = 0;
            return;
        }
        NetActive(r, 1) = NetActive(r, 2) = pZ + (Pb - pZ) / (Z - Zb) * (Z - ElevGrid(r));
    }
    throw RuntimeError(9);
}

} // namespace

TrialResultant IntegrateNetPressure(const State& state, double drivingForce, double drivingMoment,
                                    int startIndex, int endIndex, const DiagramPoint& transition) {
    TrialDiagram diagram(state, startIndex);
    for (int i = startIndex + 1; i <= endIndex - 1; ++i) {
        diagram.passRow();
    }
    return diagram.resultant(drivingForce, drivingMoment, transition);
}

// Elevations less that of the third point keep their digits on any datum.
double parabolaRoot(const TrialMoment& first, const TrialMoment& second, double M3) {
    const auto [z1, M1] = first;
    const auto [z2, M2] = second;
    const double D = z1 * z2 * (z1 - z2);
    const double A = divide(z2 * M1 - z1 * M2 + (z1 - z2) * M3, D);
    const double B = divide(z1 * z1 * M2 - z2 * z2 * M1 + (z2 * z2 - z1 * z1) * M3, D);
    return divide(-B - squareRoot(B * B - 4 * A * M3), 2 * A);
}

double passivePressureAt(const State& state, double elev) {
    const auto& ElevGrid = state.grid.ElevGrid;
    const auto& NetPassive = state.net.NetPassive;
    for (int k = state.net.NetZeroIndex; k <= state.grid.NumElevs; ++k) {
        if (elev == ElevGrid(k)) {
            return NetPassive(k, 2);
        }
        if (ElevGrid(k) < elev) {
            const double slope =
                divide(NetPassive(k, 2) - NetPassive(k - 1, 2), ElevGrid(k - 1) - ElevGrid(k));
            return NetPassive(k - 1, 1) + slope * (ElevGrid(k - 1) - elev);
        }
    }
    throw RuntimeError(9);
}

// Purpose: bottom and transition of a cantilever wall whose diagram is NetActive from the top to
//   the transition and a straight line from there to NetPassive at the bottom (the conventional
//   method for cantilever sheet piles).
// Reads: ElevGrid, NetActive, NetPassive, NetZeroIndex, DrivingForce (PLF), DrivingMoment (LB-FT
// per
//   foot about the zero point), horizontal line loads.
// Writes: SolvedBottomElev(1), BottomPressure(1), BottomIndex(1), ElevGrid and NetActive down to
//   the bottom; with automatic seepage SeepageGradient(1), SeepageEndElev(1) and all pressures.
// Stops: force within 0.1 PLF by the transition, moment within 1 LB-FT by the bottom, from three
//   trials on the grid and then by a parabola through them, after 25 stages by halving; the bottom
//   within 0.1 FT from one seepage pass to the next.
void SolveCantileverBottom(State& state) {
    const Problem& problem = *state.problem;
    const double& Zb = state.solution.SolvedBottomElev(1);
    double lastPositive = 0;
    double previousBottom = 0;
    for (int pass = 1;; ++pass) {
        state.stage = {Doing::WallBottom, 0, 1};
        state.solution.SeepagePasses = pass;
        const auto transition = solvePass(state, lastPositive);
        if (!transition) {
            return;
        }
        const bool settled = pass > 1 && std::abs(Zb - previousBottom) <= BottomTolerance;
        if (!seepageFollowsBottom(problem) || settled) {
            state.solution.TransitionElev = transition->point.elev;
            finishDiagram(state, *transition);
            return;
        }
        if (pass > MaxSeepagePasses) {
            failOscillation(state);
            return;
        }
        previousBottom = Zb;
        setSeepageForBottom(state, 1, Zb);
        RebuildForSeepage(state, 1);
        if (state.failed()) {
            return;
        }
        if (!shiftDrivingMoment(state)) {
            fail(state, {.code = FailureCode::CantileverTurnsAround, .level = 1});
            return;
        }
    }
}

} // namespace korvane
