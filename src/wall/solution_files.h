// Scratch files that keep the solution of each level.
#pragma once

#include "state/state.h"

namespace korvane {

/// Writes the scratch file of a level under the first free name ZZ + level + number in TempFolder
/// and lists it for deletion. RuntimeError 9 where the list is full (no file is made then), a file
/// fault with the file's name.
void WriteSolutionFile(State& state, int level);

/// Brings result rows, grid, soil pressures and marks of a level back. The water pressures in
/// memory stay and are written into the file. A file fault carries the file's name.
void LoadResultLevel(State& state, int level);

/// Keeps a copy of the level's values in memory as they were solved.
void KeepSolvedLevel(State& state, int level);

/// Marks all levels as not solved, at the start of a solution.
void forgetSolvedLevels(State& state);

} // namespace korvane
