// Soil pressures of a side by earth pressure coefficients.
#pragma once

#include "state/state.h"

namespace korvane {

/// Fills ActivePressures and PassivePressures of a side whose SideMethod is "C", with its
/// surcharge pressures and the tension cut-off; inserts a grid row at each zero crossing. A
/// failure shows its box and sets SolutionFailed to 1.
void ComputeCoefficientPressures(State& state, int side, int level);

/// Coulomb's active coefficient for level ground behind a vertical wall; developed soil and wall
/// friction in radians. The pressure on the wall is the coefficient times cos(wallFriction).
double coulombActive(double friction, double wallFriction);

/// The passive coefficient: Coulomb's where 2 x wall friction is at most the soil friction (within
/// 1E-9 radians), else the table for curved failure surfaces. Radians.
double passiveCoefficient(double friction, double wallFriction);

} // namespace korvane
