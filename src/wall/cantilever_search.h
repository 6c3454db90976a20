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

/// NetPassive (PSF) at the elevation of a trial bottom: of a row the value above it, between rows a
/// line that starts from the value below the upper row with the slope of the values above both
/// rows, deliberately. RuntimeError 9 below the last row.
double passivePressureAt(const State& state, double elev);

/// Finds SolvedBottomElev(1), BottomPressure(1), BottomIndex(1) and the final NetActive diagram.
/// Needs DrivingMoment shifted to the zero point. A failure stands in the state.
void SolveCantileverBottom(State& state);

} // namespace korvane
