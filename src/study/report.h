// The report of a finished study: a file for browsers and printers, and its numbers as JSON.
#pragma once

#include "study/finished.h"

#include "runtime/dates.h"

#include <string>

namespace korvane::study {

/// HTML in the style of the calculation sheet, by itself and well-formed XML too. The same rows and
/// the same moment give the same bytes.
std::string reportPage(const FinishedStudy& finished, const MomentText& moment);

/// What the report tells as a JSON document; docs/studies.md tells its members.
std::string summaryText(const FinishedStudy& finished);

/// Writes DIR/report.html and DIR/summary.json. StoreFault as FinishedStudy; RuntimeError where a
/// file cannot be written.
void writeReport(const std::string& folder);

} // namespace korvane::study
