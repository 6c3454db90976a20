// What stands in the report of a problem, and in which order.
#pragma once

#include "runtime/function_ref.h"
#include "runtime/print_lines.h"
#include "solution/solution.h"

namespace korvane {

/// The parts of a report in their order.
enum class ReportPart {
    Echo, ///< of the input
    Pressures,
    Results,
    Reduction,
    End, ///< behind all parts
};

/// Where the report of a solution begins, behind the echo.
inline constexpr ReportPart FirstOfSolution = ReportPart::Pressures;

/// Hands over the parts from `next` on that a solution has come to, one behind the other, and moves
/// `next` behind those that were taken. A part may have no lines: an analysis has no pressures.
void writeReport(ReportPart& next, const Problem& problem, const PileSections& sections,
                 const Solved& solved, FunctionRef<void(const PrintLines&)> take);

} // namespace korvane
