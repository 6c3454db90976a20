// The bottom of a cantilever wall.
#pragma once

#include "state/state.h"
#include "wall/refinement.h"

namespace korvane {

/// Force (PLF) and the negative of the moment about the bottom (LB-FT per foot) of a trial.
struct TrialResultant {
    double force;
    double moment;
};

/// Resultant of the whole diagram of a trial with bottom SolvedBottomElev(1) and BottomPressure(1):
/// `drivingForce` and `drivingMoment` (about `startIndex`) above row `startIndex`, NetActive from
/// there to the transition above row `endIndex`, the straight line from the transition to the
/// bottom, and the line loads below `startIndex`.
TrialResultant IntegrateNetPressure(const State& state, double drivingForce, double drivingMoment,
                                    int startIndex, int endIndex, const DiagramPoint& transition);

/// A trial on the moment curve.
struct TrialMoment {
    double z; ///< FT, its bottom less that of the third trial
    double M; ///< as in TrialResultant
};

/// The root (FT, less the third trial's bottom) of the parabola M(z) = A z^2 + B z + M3 through
/// three trials of which the third has the moment `M3`: always that with the minus before the
/// square root. RuntimeError 11 for a straight line or two trials in one place, 5 without a root.
double parabolaRoot(const TrialMoment& first, const TrialMoment& second, double M3);

/// NetPassive (PSF) at the elevation of a trial bottom: of a row the value above it, between rows a
/// line that starts from the value below the upper row with the slope of the values above both
/// rows, deliberately. RuntimeError 9 below the last row.
double passivePressureAt(const State& state, double elev);

/// Finds SolvedBottomElev(1), BottomPressure(1), BottomIndex(1) and the final NetActive diagram.
/// Needs DrivingMoment shifted to the zero point. A failure stands in the state.
void SolveCantileverBottom(State& state);

} // namespace korvane
