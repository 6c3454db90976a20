#include "reports/results_report.h"

#include "reports/complete_results.h"
#include "reports/report_parts.h"

#include <string_view>

namespace korvane {

namespace {

constexpr NumberFormat fixed2 = "####0.00";
constexpr std::string_view exponential = "0.0000E+00";

void summaryHead(PrintLines& lines, const Problem& problem, const Results& results) {
    lines.empty(5);
    programHead(lines);
    banner(lines, 25,
           {"****************************", "*  SUMMARY OF RESULTS FOR  *", caseRow(problem),
            "****************************"});
    headingSection(lines, problem, " I.--HEADING");
    lines.line(5, "II.--SUMMARY");
    for (const int side : {Right, Left}) {
        lines.empty();
        methodStatement(lines, problem, results.review.SideMethod(side), side);
    }
    if (results.wedgeWarning) {
        lines.empty();
        lines.line(10, "*****WARNING:  STANDARD WEDGE SOLUTION DOES NOT EXIST");
        lines.line(25, "AT ALL ELEVATIONS.  SEE COMPLETE OUTPUT.");
    }
}

/// A line of the cantilever summary.
void singleLine(PrintLines& lines, int blanks, std::string_view label, double value,
                NumberFormat format, int column = 46) {
    lines.spc(blanks).text(label).right(column, value, format).end();
}

void cantileverSummary(PrintLines& lines, const Problem& problem, const LevelResult& level) {
    const ResultDiagrams& results = level.diagrams;
    const bool design = problem.ProgramMode == Mode::Design;
    lines.empty();
    if (design) {
        singleLine(lines, 5, "WALL BOTTOM ELEV. (FT)     :", level.bottomElev, fixed2);
        singleLine(lines, 11, "PENETRATION (FT)     :", level.penetration, fixed2);
    } else {
        singleLine(lines, 5,
                   problem.FSKind == FactorKind::OneForBoth ? "FACTOR OF SAFETY           :"
                                                            : "PASSIVE FACTOR OF SAFETY   :",
                   level.factorOfSafety, "#0.00");
    }
    lines.empty();
    singleLine(lines, 5, "MAX. BEND. MOMENT (LB-FT)  :", results.MaxMoment.value, exponential);
    singleLine(lines, 11, "AT ELEVATION (FT)    :", results.MaxMoment.elev, fixed2);
    lines.empty();
    singleLine(lines, 5, design ? "MAX. SCALED DEFL. (LB-IN^3):" : "MAXIMUM DEFLECTION (IN.)   :",
               results.MaxDeflection.value, exponential);
    singleLine(lines, 11, "AT ELEVATION (FT)    :", results.MaxDeflection.elev, fixed2);
    if (hasAutomaticSeepage(problem)) {
        lines.empty();
        singleLine(lines, 5, "SEEPAGE GRADIENT           :", level.seepageGradient, "0.0000", 45);
    }
}

/// A line of the anchored summary: the free earth and the fixed earth value.
void pairLine(PrintLines& lines, int blanks, std::string_view label, double freeEarth,
              double fixedEarth, NumberFormat format, int column = 56) {
    lines.spc(blanks).text(label);
    lines.right(column, freeEarth, format).right(column + 20, fixedEarth, format).end();
}

void anchoredFactors(PrintLines& lines, const Problem& problem, const LevelResult& freeEarth,
                     const LevelResult& fixedEarth) {
    const bool same = problem.FSKind == FactorKind::OneForBoth;
    lines.spc(5).text(same ? "FACTOR OF SAFETY                   :"
                           : "PASSIVE FACTOR OF SAFETY           :");
    lines.right(56, freeEarth.factorOfSafety, fixed2);
    lines.right(76, fixedEarth.factorOfSafety, fixed2);
    if (same) {
        lines.tab(0); // an empty third column breaks the line; deliberate
    }
    lines.end();
}

void anchoredSummary(PrintLines& lines, const Problem& problem, const Results& results) {
    const LevelResult& freeEarth = results.levels(1);
    const LevelResult& fixedEarth = results.levels(2);
    const bool design = problem.ProgramMode == Mode::Design;
    lines.empty();
    lines.line(5, "METHOD                             :    FREE EARTH         FIXED EARTH");
    lines.empty();
    if (design) {
        pairLine(lines, 5, "WALL BOTTOM ELEVATION (FT)         :", freeEarth.bottomElev,
                 fixedEarth.bottomElev, fixed2);
        pairLine(lines, 11, "PENETRATION (FT)              :", freeEarth.penetration,
                 fixedEarth.penetration, fixed2);
    } else {
        anchoredFactors(lines, problem, freeEarth, fixedEarth);
    }
    lines.empty();
    pairLine(lines, 5, "MAXIMUM BENDING MOMENT (LB-FT)     :", freeEarth.diagrams.MaxMoment.value,
             fixedEarth.diagrams.MaxMoment.value, exponential);
    pairLine(lines, 11, "AT ELEVATION (FT)            :", freeEarth.diagrams.MaxMoment.elev,
             fixedEarth.diagrams.MaxMoment.elev, fixed2);
    lines.empty();
    pairLine(lines, 5,
             design ? "MAXIMUM SCALED DEFLECTION (LB-IN^3):"
                    : "MAXIMUM DEFLECTION (IN.)           :",
             freeEarth.diagrams.MaxDeflection.value, fixedEarth.diagrams.MaxDeflection.value,
             exponential);
    pairLine(lines, 11, "AT ELEVATION (FT)            :", freeEarth.diagrams.MaxDeflection.elev,
             fixedEarth.diagrams.MaxDeflection.elev, fixed2);
    lines.empty();
    pairLine(lines, 5, "ANCHOR FORCE (LB)                  :", freeEarth.anchorForce,
             fixedEarth.anchorForce, exponential);
    if (hasAutomaticSeepage(problem)) {
        lines.empty();
        pairLine(lines, 5, "SEEPAGE GRADIENT                   :", freeEarth.seepageGradient,
                 fixedEarth.seepageGradient, "0.0000", design ? 55 : 56);
    }
}

} // namespace

PrintLines resultsReport(const Problem& problem, const Results& results) {
    PrintLines lines;
    summaryHead(lines, problem, results);
    if (problem.WallType == WallKind::Cantilever) {
        cantileverSummary(lines, problem, results.levels(1));
    } else {
        anchoredSummary(lines, problem, results);
    }
    if (problem.ProgramMode == Mode::Design) {
        lines.empty();
        scaledDeflectionNote(lines);
    }
    completeResults(lines, problem, results);
    return lines;
}

} // namespace korvane
