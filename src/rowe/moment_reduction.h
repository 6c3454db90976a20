// Rowe's moment reduction for sheet pile walls in sand and clay.
#pragma once

#include "state/state.h"

#include <functional>

namespace korvane {

/// Decides on sand or clay, lets `showSections` settle the section table, and appends the report.
/// Nothing is reported where SolutionFailed is set afterwards.
void ReduceRoweMoments(State& state, const std::function<void()>& showSections);

} // namespace korvane
