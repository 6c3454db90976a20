// Summary and full tables of a solution.
#pragma once

#include "runtime/print_lines.h"
#include "state/results.h"

namespace korvane {

/// The summary and, behind it, the complete results of all levels.
PrintLines resultsReport(const Problem& problem, const Results& results);

} // namespace korvane
