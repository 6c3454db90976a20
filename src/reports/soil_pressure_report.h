// The table of soil pressures at the stop for review of a design.
#pragma once

#include "runtime/print_lines.h"
#include "state/results.h"

namespace korvane {

/// Net, active and passive pressures of both sides down to three retained heights below the lower
/// ground. Nothing for an analysis, whose review has no pressures.
PrintLines soilPressureReport(const Problem& problem, const Review& review);

} // namespace korvane
