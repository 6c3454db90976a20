#include "reports/soil_pressure_report.h"

#include "reports/report_parts.h"
#include "runtime/arithmetic.h"
#include "runtime/number_text.h"

#include <string_view>

namespace korvane {

namespace {

/// The lowest elevation that the table is wanted for: three heights of the retained soil below the
/// lower surface, at least 30 FT, but not below the lowest working row of the grid.
double lastElevationWanted(const Problem& problem, const ElevationGrid& grid) {
    const auto& SurfaceElev = problem.SurfaceElev;
    const double lower = MinOf(SurfaceElev(Right, 1), SurfaceElev(Left, 1));
    const double wanted = MinOf(lower - 3.0 * (problem.WallTopElev - lower), lower - 30.0);
    return MaxOf(wanted, grid.ElevGrid(grid.NumElevs - 2));
}

/// True where any soil or net pressure of row i has a step. Net passive counts for a cantilever
/// only; the water pressures are not tested.
bool hasStep(const PressureDiagrams& diagrams, bool cantilever, int i) {
    const auto& NetActive = diagrams.NetActive;
    const auto& NetPassive = diagrams.NetPassive;
    return hasSoilStep(diagrams.pressures, i) || isStep(NetActive(i, 1), NetActive(i, 2)) ||
           (cantilever && isStep(NetPassive(i, 1), NetPassive(i, 2)));
}

void columnHeads(PrintLines& lines, bool cantilever) {
    lines.empty();
    lines.line(37, "<------NET------>");
    pieceLine(
        lines,
        {{11, "NET"}, {4, "<---LEFTSIDE--->"}, {5, "(SOIL + WATER)"}, {5, "<--RIGHTSIDE--->"}});
    pieceLine(lines, {{0, "  ELEV."},
                      {3, "WATER"},
                      {3, "PASSIVE"},
                      {3, "ACTIVE"},
                      {4, cantilever ? "ACTIVE   PASSIVE" : "      ACTIVE    "},
                      {4, "ACTIVE"},
                      {3, "PASSIVE"}});
    pieceLine(lines, {{0, "  (FT)"},
                      {4, "(PSF)"},
                      {5, "(PSF)"},
                      {4, "(PSF)"},
                      {5, cantilever ? "(PSF)     (PSF) " : "      (PSF)     "},
                      {4, "(PSF)"},
                      {5, "(PSF)"}});
}

/// One line of the table: row i with the values k, the flag behind its elevation and the marks of
/// the sweep search behind the pressures.
void pressureRow(PrintLines& lines, const PressureDiagrams& diagrams, bool cantilever, int i, int k,
                 std::string_view flag) {
    const Pressures& pressures = diagrams.pressures;
    constexpr NumberFormat format = "####0.0";
    lines.right(8, diagrams.grid.ElevGrid(i), "###0.0").text(flag);
    lines.right(16, pressures.WaterPressures(i, k), "###0.0");
    lines.right(26, pressures.PassivePressures(Left, i, k), format);
    lines.text(markText(pressures.PassiveMark(Left, i)));
    lines.right(35, pressures.ActivePressures(Left, i, k), format);
    lines.text(markText(pressures.ActiveMark(Left, i)));
    if (cantilever) {
        lines.right(45, diagrams.NetActive(i, k), format);
        lines.right(55, diagrams.NetPassive(i, k), format);
    } else {
        lines.right(51, diagrams.NetActive(i, k), format);
    }
    lines.right(65, pressures.ActivePressures(Right, i, k), format);
    lines.text(markText(pressures.ActiveMark(Right, i)));
    lines.right(75, pressures.PassivePressures(Right, i, k), format);
    lines.text(markText(pressures.PassiveMark(Right, i))).end();
}

/// The rows down to the first one below the last elevation wanted. A step gives two lines, the
/// upper value first.
void pressureRows(PrintLines& lines, const Problem& problem, const PressureDiagrams& diagrams) {
    const ElevationGrid& grid = diagrams.grid;
    const bool cantilever = problem.WallType == WallKind::Cantilever;
    const double lastElevation = lastElevationWanted(problem, grid);
    pressureRow(lines, diagrams, cantilever, 1, 1, " ");
    for (int i = 2; i <= grid.NumElevs; ++i) {
        const bool step = hasStep(diagrams, cantilever, i);
        pressureRow(lines, diagrams, cantilever, i, 2, step ? "+" : " ");
        if (grid.ElevGrid(i) < lastElevation) {
            break;
        }
        if (step) {
            pressureRow(lines, diagrams, cantilever, i, 1, "-");
        }
    }
}

/// What the table holds: the methods of both sides and the loads and gradients in it.
void statements(PrintLines& lines, const Problem& problem, const Review& review) {
    methodStatement(lines, problem, review.SideMethod(Right), Right);
    lines.empty();
    methodStatement(lines, problem, review.SideMethod(Left), Left);
    if (problem.HDistCount > 0) {
        lines.empty();
        lines.line(10, "NET SOIL PRESSURES INCLUDE APPLIED HORIZONTAL DISTRIBUTED LOADS.");
    }
    if (hasAutomaticSeepage(problem)) {
        lines.empty();
        lines.spc(10).text("SOIL PRESSURES ARE REPORTED FOR A SEEPAGE GRADIENT = ");
        lines.text(formatNumber(review.SeepageGradient, "#0.0000")).end();
        lines.line(10, "AND MAY CHANGE WITH AUTOMATIC ADJUSTMENT OF THE GRADIENT.");
    }
}

} // namespace

PrintLines soilPressureReport(const Problem& problem, const Review& review) {
    if (!review.hasPressures) {
        return {};
    }
    const bool cantilever = problem.WallType == WallKind::Cantilever;

    PrintLines lines;
    lines.empty();
    programHead(lines);
    banner(lines, 28,
           {"**************************", "*   SOIL PRESSURES FOR   *",
            cantilever ? "* CANTILEVER WALL DESIGN *" : "*  ANCHORED WALL DESIGN  *",
            "**************************"});
    headingSection(lines, problem, " I.--HEADING");
    lines.line(5, "II.--SOIL PRESSURES");
    statements(lines, problem, review);
    columnHeads(lines, cantilever);
    pressureRows(lines, problem, review.diagrams);
    if (review.WedgeNoSolution(Right) != 0 || review.WedgeNoSolution(Left) != 0) {
        lines.line(10, "* STANDARD WEDGE SOLUTION DOES NOT EXIST FOR INDICATED PRESSURE");
        lines.line(12, "FOR THIS ELEVATION.");
    }
    lines.empty(5);
    return lines;
}

} // namespace korvane
