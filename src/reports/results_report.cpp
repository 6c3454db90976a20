#include "reports/results_report.h"

#include "reports/complete_results.h"
#include "reports/report_file.h"
#include "reports/report_parts.h"
#include "runtime/arithmetic.h"

#include <string_view>

namespace korvane {

namespace {

constexpr NumberFormat fixed2 = "####0.00";
constexpr std::string_view exponential = "0.0000E+00";

/// Depth of the wall bottom below the lower surface at the wall, FT.
double penetration(const State& state, int level) {
    const auto& SurfaceElev = state.problem.SurfaceElev;
    return MinOf(SurfaceElev(Right, 1), SurfaceElev(Left, 1)) -
           state.solution.SolvedBottomElev(level);
}

/// The factor of safety that an analysis has found.
double foundFactor(const State& state, int level) {
    return state.preparation.LayerFSPassive(Right, 1, level);
}

void summaryHead(PrintLines& lines, const State& state) {
    const Problem& problem = state.problem;
    lines.empty(5);
    programHead(lines);
    banner(lines, 25,
           {"****************************", "*  SUMMARY OF RESULTS FOR  *", caseRow(problem),
            "****************************"});
    headingSection(lines, problem, " I.--HEADING");
    lines.line(5, "II.--SUMMARY");
    for (const int side : {Right, Left}) {
        lines.empty();
        methodStatement(lines, state, side);
    }
    const auto& WedgeNoSolution = state.wedge.WedgeNoSolution;
    const auto unsolved = [&](int level) {
        return WedgeNoSolution(level, Right) != 0 || WedgeNoSolution(level, Left) != 0;
    };
    if (unsolved(1) || unsolved(2)) {
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

void cantileverSummary(PrintLines& lines, const State& state) {
    const Problem& problem = state.problem;
    const ResultDiagrams& results = state.results;
    const bool design = problem.ProgramMode == Mode::Design;
    lines.empty();
    if (design) {
        singleLine(lines, 5, "WALL BOTTOM ELEV. (FT)     :", state.solution.SolvedBottomElev(1),
                   fixed2);
        singleLine(lines, 11, "PENETRATION (FT)     :", penetration(state, 1), fixed2);
    } else {
        singleLine(lines, 5,
                   problem.FSKind == 1 ? "FACTOR OF SAFETY           :"
                                       : "PASSIVE FACTOR OF SAFETY   :",
                   foundFactor(state, 1), "#0.00");
    }
    lines.empty();
    singleLine(lines, 5, "MAX. BEND. MOMENT (LB-FT)  :", results.MaxMoment(1), exponential);
    singleLine(lines, 11, "AT ELEVATION (FT)    :", results.MaxMoment(3), fixed2);
    lines.empty();
    singleLine(lines, 5, design ? "MAX. SCALED DEFL. (LB-IN^3):" : "MAXIMUM DEFLECTION (IN.)   :",
               results.MaxDeflection(1), exponential);
    singleLine(lines, 11, "AT ELEVATION (FT)    :", results.MaxDeflection(3), fixed2);
    if (hasAutomaticSeepage(problem)) {
        lines.empty();
        singleLine(lines, 5, "SEEPAGE GRADIENT           :", problem.SeepageGradient(1), "0.0000",
                   45);
    }
}

/// A line of the anchored summary: the free earth and the fixed earth value.
void pairLine(PrintLines& lines, int blanks, std::string_view label, double freeEarth,
              double fixedEarth, NumberFormat format, int column = 56) {
    lines.spc(blanks).text(label);
    lines.right(column, freeEarth, format).right(column + 20, fixedEarth, format).end();
}

void anchoredFactors(PrintLines& lines, const State& state) {
    const bool same = state.problem.FSKind == 1;
    lines.spc(5).text(same ? "FACTOR OF SAFETY                   :"
                           : "PASSIVE FACTOR OF SAFETY           :");
    lines.right(56, foundFactor(state, 1), fixed2).right(76, foundFactor(state, 2), fixed2);
    if (same) {
        lines.tab(0); // an empty third column breaks the line; deliberate
    }
    lines.end();
}

void anchoredSummary(PrintLines& lines, const State& state) {
    const Problem& problem = state.problem;
    const auto& SolvedBottomElev = state.solution.SolvedBottomElev;
    const auto& AnchorForce = state.solution.AnchorForce;
    const auto& MaxMoment = state.results.MaxMoment;
    const auto& MaxDeflection = state.results.MaxDeflection;
    const bool design = problem.ProgramMode == Mode::Design;
    lines.empty();
    lines.line(5, "METHOD                             :    FREE EARTH         FIXED EARTH");
    lines.empty();
    if (design) {
        pairLine(lines, 5, "WALL BOTTOM ELEVATION (FT)         :", SolvedBottomElev(1),
                 SolvedBottomElev(2), fixed2);
        pairLine(lines, 11, "PENETRATION (FT)              :", penetration(state, 1),
                 penetration(state, 2), fixed2);
    } else {
        anchoredFactors(lines, state);
    }
    lines.empty();
    pairLine(lines, 5, "MAXIMUM BENDING MOMENT (LB-FT)     :", MaxMoment(1), MaxMoment(2),
             exponential);
    pairLine(lines, 11, "AT ELEVATION (FT)            :", MaxMoment(3), MaxMoment(4), fixed2);
    lines.empty();
    pairLine(lines, 5,
             design ? "MAXIMUM SCALED DEFLECTION (LB-IN^3):"
                    : "MAXIMUM DEFLECTION (IN.)           :",
             MaxDeflection(1), MaxDeflection(2), exponential);
    pairLine(lines, 11, "AT ELEVATION (FT)            :", MaxDeflection(3), MaxDeflection(4),
             fixed2);
    lines.empty();
    pairLine(lines, 5, "ANCHOR FORCE (LB)                  :", AnchorForce(1), AnchorForce(2),
             exponential);
    if (hasAutomaticSeepage(problem)) {
        lines.empty();
        pairLine(lines, 5, "SEEPAGE GRADIENT                   :", problem.SeepageGradient(1),
                 problem.SeepageGradient(2), "0.0000", design ? 55 : 56);
    }
}

} // namespace

void WriteResults(State& state) {
    PrintLines lines;
    summaryHead(lines, state);
    if (state.problem.WallType == WallKind::Cantilever) {
        cantileverSummary(lines, state);
    } else {
        anchoredSummary(lines, state);
    }
    if (state.problem.ProgramMode == Mode::Design) {
        lines.empty();
        scaledDeflectionNote(lines);
    }
    completeResults(lines, state);
    appendReport(state, lines);
}

} // namespace korvane
