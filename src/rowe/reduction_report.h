// The report of preliminary design data.
#pragma once

#include "runtime/print_lines.h"
#include "state/state.h"

#include <string_view>
#include <vector>

namespace korvane {

/// Why the reduction does not apply: "*** REDUCTION NOT APPLICABLE DUE TO " + cause, and perhaps a
/// second line behind blanks of its own.
struct RoweNote {
    std::string_view cause;
    std::string_view secondLine;
    int blanks = 0;
};

struct RoweNotes {
    std::vector<RoweNote> broken; ///< conditions of the method; the reduction applies without any
    bool sandOutOfRange = false;  ///< it applies to sand, but not to every section
};

/// The whole report for sand (1) or clay (2) from the outcome in `state.rowe`.
PrintLines reductionReport(const State& state, int soil, const RoweNotes& notes);

/// The note below the table for sand on sections out of range.
inline constexpr std::string_view SandRangeNote[2] = {
    "* REDUCTION NOT APPLICABLE DUE TO", "  LOG(H^4/EI) LESS THAN -3.5 OR GREATER THEN -1.5."};

} // namespace korvane
