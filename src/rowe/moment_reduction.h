// Rowe's moment reduction for sheet pile walls in sand and clay.
#pragma once

#include "state/state.h"

#include <functional>

namespace korvane {

/// Decides on sand or clay from the left side's soil, lets `showSections` settle the section table,
/// and appends the report. Nothing is reported where SolutionFailed is set afterwards, where the
/// soil is neither, or where both friction and cohesion occur (then no sections are shown).
/// Faults are RuntimeErrors; none leaves a part of a report.
void ReduceRoweMoments(State& state, const std::function<void()>& showSections);

/// Coefficients, ratios and report for sand and for clay. RoweHeight, RoweAlpha and RoweBeta stand.
/// RoweSoilType becomes 0 where the reduction does not apply to the wall.
void ReportRoweSand(State& state);
void ReportRoweClay(State& state);

/// Forgets all results of an earlier reduction; the sections stay.
void clearReduction(RoweData& rowe);

} // namespace korvane
