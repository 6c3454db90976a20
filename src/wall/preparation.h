// What every later stage of a solution takes as given.
#pragma once

#include "state/state.h"

namespace korvane {

/// Coefficients, or a wedge where only that can follow the ground, adhesion or sloping layers.
PressureMethod sideMethod(const Problem& problem, int side);

/// True where coefficients could follow a side, whatever number of points its ground has: level
/// ground, no adhesion, no sloping layer.
bool coefficientsCanFollow(const Problem& problem, int side);

/// A factor of safety and where it comes from.
struct GivenFactor {
    double value;
    FactorSource source;
};

/// The factor of a layer: its own before its side's before that of the whole problem.
GivenFactor givenActiveFactor(const Problem& problem, int side, int layer);
GivenFactor givenPassiveFactor(const Problem& problem, int side, int layer);

/// Method of each side, seepage values, gradient limit, wedge regions, grid, water pressures and in
/// a design the factors of each layer. Starts from zeroed pressures, marks and no-solution flags.
/// Three refusals are failures.
void PrepareSolution(State& state);

} // namespace korvane
