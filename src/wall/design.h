// Design of a wall: searches, beam and result diagrams of each level.
#pragma once

#include "state/state.h"

namespace korvane {

/// Runs after the soil pressures of a design. Failure is SolutionFailed.
void SolveDesign(State& state);

/// Shows the box "IMPROPER WALL ROTATION" and sets SolutionFailed to 1.
void FailRotation(State& state);

} // namespace korvane
