// Design of a wall: searches, beam and result diagrams of each level.
#pragma once

#include "state/state.h"

#include <functional>

namespace korvane {

/// Called when a level has its results in the state: before the next level overwrites them.
using LevelDone = std::function<void(int level)>;

/// Runs after the soil pressures of a design and calls `levelDone` when a level has its results.
/// Failure stands in the state.
void SolveDesign(State& state, const LevelDone& levelDone);

/// Beam and result diagrams of a level whose bottom has been found; `anchorIndex` 0 means no
/// anchor.
void finishLevel(State& state, int anchorIndex, int level);

/// Ends the solution of a wall that does not turn as its method wants.
void failRotation(State& state, int level);

} // namespace korvane
