// Scratch files that keep the solution of each level.
#pragma once

#include "state/state.h"

namespace korvane {

/// Writes the scratch file of a level under the first free name ZZ + level + number in TempFolder
/// and lists it for deletion.
void WriteSolutionFile(State& state, int level);

/// Brings result rows, grid, soil pressures and marks of a level back. The water pressures in
/// memory stay and are written into the file.
void LoadResultLevel(State& state, int level);

/// Keeps a copy of the level's values in memory as they were solved.
void KeepSolvedLevel(State& state, int level);

} // namespace korvane
