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

// What an analysis does for each of its trials too.

/// 1 of a cantilever wall, 2 of an anchored one.
int levelCountOf(const Problem& problem);

/// The anchor's grid row, 0 for a cantilever wall.
int anchorRow(const State& state);

/// Shifts the driving moment for the searches of `level`; a wall that the forces do not turn as its
/// methods assume is a failure. True without one.
bool takeDrivingForces(State& state, int level);

/// The bottom of a level under the pressures on the grid, in SolvedBottomElev(level). `anchorIndex`
/// follows the grid. Failure stands in the state.
void SolveBottom(State& state, int& anchorIndex, int level);

/// Beam and result diagrams of a level whose bottom has been found; `anchorIndex` 0 means no
/// anchor.
void finishLevel(State& state, int anchorIndex, int level);

} // namespace korvane
