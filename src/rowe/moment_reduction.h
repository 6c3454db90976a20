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

/// Rowe's flexibility number log10(H^4 / EI): wall height in FT, moment of inertia in IN^4 per foot
/// of wall, modulus of elasticity in PSI; feet and inches are not brought together, as in Rowe's
/// curves. RuntimeError 11 or 5 where EI is not above zero.
double pileLogRigidity(double height, double inertia, double modulus);

/// Forgets all results of an earlier reduction; the sections stay.
void clearReduction(RoweData& rowe);

} // namespace korvane
