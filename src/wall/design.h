// Design of a wall: searches, beam and result diagrams of each level.
#pragma once

#include "state/state.h"

namespace korvane {

/// Runs after the soil pressures of a design. Failure is SolutionFailed.
void SolveDesign(State& state);

/// Beam and result diagrams of a level whose bottom has been found, kept in `solved`;
/// `anchorIndex` 0 means no anchor.
void finishLevel(State& state, int anchorIndex, int level);

/// Shows the box "IMPROPER WALL ROTATION" and sets SolutionFailed to 1.
void FailRotation(State& state);

} // namespace korvane
