// The table of initial soil and water pressures of a design.
#pragma once

#include "state/state.h"

namespace korvane {

/// Appends the report to the output file.
void WriteSoilPressureReport(State& state);

} // namespace korvane
