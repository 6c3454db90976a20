#include "reports/solution_report.h"

#include "reports/input_echo.h"
#include "reports/reduction_report.h"
#include "reports/results_report.h"
#include "reports/soil_pressure_report.h"

namespace korvane {

void writeReport(ReportPart& next, const Problem& problem, const PileSections& sections,
                 const Solved& solved, FunctionRef<void(const PrintLines&)> take) {
    if (next == ReportPart::Echo) {
        take(inputEcho(problem));
        next = ReportPart::Pressures;
    }
    if (next == ReportPart::Pressures && solved.review != nullptr) {
        take(soilPressureReport(problem, *solved.review));
        next = ReportPart::Results;
    }
    if (next == ReportPart::Results && solved.results != nullptr) {
        take(resultsReport(problem, *solved.results));
        next = ReportPart::Reduction;
    }
    if (next == ReportPart::Reduction && solved.reduction != nullptr) {
        take(reductionReport(problem, sections, *solved.reduction));
        next = ReportPart::End;
    }
}

} // namespace korvane
