// The report of preliminary design data.
#pragma once

#include "runtime/print_lines.h"
#include "state/results.h"

#include <string>
#include <vector>

namespace korvane {

/// The whole report of a reduction whose `soil` is sand or clay; nothing for any other.
PrintLines reductionReport(const Problem& problem, const PileSections& sections,
                           const MomentReduction& reduction);

/// The report's notes in one line each, without their asterisks: why the reduction does not apply.
std::vector<std::string> reductionNotes(const MomentReduction& reduction);

} // namespace korvane
