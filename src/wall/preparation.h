// What every later stage of a solution takes as given.
#pragma once

#include "state/state.h"

namespace korvane {

/// Method of each side, seepage values, gradient limit, wedge regions, grid, water pressures and in
/// a design the factors of each layer. Starts from zeroed pressures, marks and no-solution flags.
/// Three refusals are failures.
void PrepareSolution(State& state);

} // namespace korvane
