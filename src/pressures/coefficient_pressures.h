// Soil pressures of a side by earth pressure coefficients.
#pragma once

#include "state/state.h"

#include <optional>

namespace korvane {

/// Fills ActivePressures and PassivePressures of a side by coefficients, with its
/// surcharge pressures and the tension cut-off; inserts a grid row at each zero crossing. A
/// failure stands in the state.
void ComputeCoefficientPressures(State& state, int side, int level);

/// The pressure diagrams of the soil alone: points from the surface down at which they change slope
/// or jump, with the pressures (PSF) just below (k = 1) and just above (k = 2) each. The first
/// point has no k = 2 values and the last no k = 1 values.
struct BreakPressures {
    int NumBreakPoints = 0;
    Array<double, 20> BreakElev; ///< FT, descending
    Array<double, 20, 2> BreakActive;
    Array<double, 20, 2> BreakPassive;
};

/// The break list of a side; nothing after a failure, which stands in the state.
std::optional<BreakPressures> ComputeBreakPressures(State& state, int side, int level);

/// Coulomb's active coefficient for level ground behind a vertical wall; developed soil and wall
/// friction in radians. The pressure on the wall is the coefficient times cos(wallFriction).
double coulombActive(double friction, double wallFriction);

/// True where the passive coefficient is that of Coulomb's plane: 2 x wall friction is at most the
/// soil friction (within 1E-9 radians).
bool isCoulombPassive(double friction, double wallFriction);

/// The passive coefficient: Coulomb's where isCoulombPassive, else the table for curved failure
/// surfaces. Radians. Nothing where the table is asked for a friction above 45 degrees;
/// RuntimeError 9 for one from 44.5 to 45 degrees, for which it has no column.
std::optional<double> passiveCoefficient(double friction, double wallFriction);

/// True where passiveCoefficient has a value. Radians.
bool hasPassiveCoefficient(double friction, double wallFriction);

} // namespace korvane
