#include "reports/complete_results.h"

#include "reports/report_parts.h"
#include "runtime/number_text.h"
#include "state/tolerances.h"

#include <cmath>
#include <string>
#include <string_view>

namespace korvane {

namespace {

void reportHead(PrintLines& lines, const Problem& problem, const LevelResult& level) {
    const bool anchored = problem.WallType == WallKind::Anchored;
    lines.empty(5);
    // Two words run together here, unlike in the other reports; deliberate.
    programHead(lines, "PROGRAM KORVANE-DESIGN/ANALYSIS OF ANCHOREDOR CANTILEVER SHEET PILE WALLS");
    lines.line(25, "****************************");
    lines.line(25, "* COMPLETE OF RESULTS FOR  *");
    lines.line(25, caseRow(problem));
    if (anchored) {
        lines.line(25, level.method == SolutionMethod::FreeEarth ? "*   BY FREE EARTH METHOD   *"
                                                                 : "*   BY FIXED EARTH METHOD  *");
    }
    lines.line(25, "****************************");
    lines.empty();
    headingSection(lines, problem, "  I.--HEADING");
    lines.spc(5).text(" II.--RESULTS");
    if (anchored) {
        lines.text(" (ANCHOR FORCE= ");
        lines.text(formatNumber(level.anchorForce, "#####0.")).text(" (LB))");
    }
    lines.end();
    lines.empty();
}

void resultHeads(PrintLines& lines, bool design) {
    if (design) {
        pieceLine(lines, {{21, "BENDING"}, {24, "SCALED"}, {9, "NET"}});
    } else {
        pieceLine(lines, {{21, "BENDING"}, {39, "NET"}});
    }
    pieceLine(lines,
              {{6, "ELEVATION"}, {6, "MOMENT"}, {10, "SHEAR"}, {8, "DEFLECTION"}, {5, "PRESSURE"}});
    if (design) {
        pieceLine(lines,
                  {{9, "(FT)"}, {8, "(LB-FT)"}, {10, "(LB)"}, {9, "(LB-IN^3)"}, {7, "(PSF)"}});
    } else {
        pieceLine(lines, {{9, "(FT)"}, {8, "(LB-FT)"}, {10, "(LB)"}, {11, "(IN)"}, {10, "(PSF)"}});
    }
}

/// The mark of a result row that shares its elevation with the next row ("+", the upper one of a
/// step) or with the row before ("-", which wins). The first row, and those from NumElevs on, have
/// none; the last result row has no next one.
std::string_view rowMark(const LevelResult& level, int i) {
    const auto& ResultElev = level.diagrams.ResultElev;
    const auto together = [&](int above, int below) {
        return std::fabs(ResultElev(above) - ResultElev(below)) <= SameElevation;
    };
    if (i < 2 || i >= level.solved.grid.NumElevs) {
        return "";
    }
    if (together(i - 1, i)) {
        return "-";
    }
    return i < level.diagrams.RowCount && together(i, i + 1) ? "+" : "";
}

void resultRows(PrintLines& lines, const LevelResult& level) {
    const ResultDiagrams& results = level.diagrams;
    for (int i = 1; i <= results.RowCount; ++i) {
        lines.right(15, results.ResultElev(i), "####0.00").text(rowMark(level, i));
        lines.right(29, results.ResultMoment(i), "0.0000E+00");
        lines.right(43, results.ResultShear(i), "####0.");
        lines.right(61, results.ResultDeflection(i), "0.0000E+00");
        lines.right(74, results.ResultPressure(i), "####0.00").end();
    }
}

void pressureHeads(PrintLines& lines) {
    lines.line(5, "III.--WATER AND SOIL PRESSURES");
    lines.empty();
    lines.line(29, "<-------------SOIL PRESSURES-------------->");
    pieceLine(lines, {{18, "WATER"}, {6, "<----LEFTSIDE----->"}, {6, "<---RIGHTSIDE---->"}});
    pieceLine(lines, {{3, "ELEVATION"},
                      {4, "PRESSURE"},
                      {5, "PASSIVE"},
                      {6, "ACTIVE"},
                      {6, "ACTIVE"},
                      {5, "PASSIVE"}});
    pieceLine(lines,
              {{6, "(FT)"}, {8, "(PSF)"}, {7, "(PSF)"}, {8, "(PSF)"}, {7, "(PSF)"}, {6, "(PSF)"}});
}

/// What the pressure table of a level shows.
struct PressureTable {
    const ElevationGrid& grid;
    const Pressures& soil;
    const Array<double, 301, 2>& water; ///< PSF (i, k)
};

/// One line of the pressure table: grid point i with the values k and the mark of a step. The
/// marks of the sweep search stand directly before their pressures; the first point shows none.
void pressureRow(PrintLines& lines, const PressureTable& table, int i, int k,
                 std::string_view stepMark) {
    const Pressures& pressures = table.soil;
    const auto place = [&](int column, std::string_view mark, double pressure) {
        lines.right(column, i > 1 ? mark : "", pressure, "#####0.");
    };
    lines.right(11, table.grid.ElevGrid(i), "####0.00").text(stepMark);
    place(25, "", table.water(i, k));
    place(37, markText(pressures.PassiveMark(Left, i)), pressures.PassivePressures(Left, i, k));
    place(49, markText(pressures.ActiveMark(Left, i)), pressures.ActivePressures(Left, i, k));
    place(61, markText(pressures.ActiveMark(Right, i)), pressures.ActivePressures(Right, i, k));
    place(73, markText(pressures.PassiveMark(Right, i)), pressures.PassivePressures(Right, i, k));
    lines.end();
}

/// The grid points down to the first one below the wall bottom.
void pressureRows(PrintLines& lines, const PressureTable& table, double bottomElev) {
    const auto& ElevGrid = table.grid.ElevGrid;
    pressureRow(lines, table, 1, 1, "");
    for (int i = 2; i <= table.grid.NumElevs; ++i) {
        const bool step =
            hasSoilStep(table.soil, i) || isStep(table.water(i, 1), table.water(i, 2));
        pressureRow(lines, table, i, 2, step ? "+" : " ");
        if (step) {
            pressureRow(lines, table, i, 1, "-");
        }
        if (ElevGrid(i) < bottomElev) {
            break;
        }
    }
}

void completeResultsOfLevel(PrintLines& lines, const Problem& problem, const Results& results,
                            const LevelResult& level) {
    const bool design = problem.ProgramMode == Mode::Design;
    reportHead(lines, problem, level);
    resultHeads(lines, design);
    resultRows(lines, level);
    lines.empty();
    if (design) {
        scaledDeflectionNote(lines);
        lines.empty();
    }
    pressureHeads(lines);
    pressureRows(lines, {level.solved.grid, level.solved.pressures, results.shownWater()},
                 level.bottomElev);
    if (level.WedgeNoSolution(Right) != 0 || level.WedgeNoSolution(Left) != 0) {
        lines.empty();
        lines.line(10, "*  STANDARD WEDGE SOLUTION DOES NOT EXIST FOR INDICATED PRESSURE");
        lines.line(10, "   AT THIS ELEVATION.");
    }
}

} // namespace

void completeResults(PrintLines& lines, const Problem& problem, const Results& results) {
    for (int level = 1; level <= results.levelCount; ++level) {
        completeResultsOfLevel(lines, problem, results, results.levels(level));
    }
    lines.empty(5);
}

} // namespace korvane
