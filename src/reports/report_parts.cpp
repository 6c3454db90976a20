#include "reports/report_parts.h"

#include "runtime/dates.h"
#include "state/tolerances.h"

#include <cmath>
#include <string>

namespace korvane {

void pieceLine(PrintLines& lines, std::initializer_list<Piece> pieces) {
    for (const Piece& piece : pieces) {
        lines.spc(piece.blanks).text(piece.text);
    }
    lines.end();
}

void programHead(PrintLines& lines, std::string_view programLine, int shift) {
    const MomentText moment = momentText();
    lines.line(2 + shift, programLine);
    lines.line(28 + shift, "BY CLASSICAL METHODS");
    lines.spc(2 + shift).text("DATE: ").text(moment.date);
    lines.tab(63 + shift).text("TIME: ").text(moment.time).end();
    lines.empty();
}

void banner(PrintLines& lines, int blanks, std::initializer_list<std::string_view> rows) {
    for (const std::string_view row : rows) {
        lines.line(blanks, row);
    }
    lines.empty();
}

void headingSection(PrintLines& lines, const Problem& problem, std::string_view title) {
    lines.line(5, title);
    for (int i = 1; i <= problem.NumHeadingLines; ++i) {
        lines.line(7, problem.HeadingLines(i));
    }
    lines.empty();
}

void methodStatement(PrintLines& lines, const Problem& problem, PressureMethod method, int side) {
    lines.spc(10).text(side == Right ? "RIGHTSIDE" : "LEFTSIDE");
    lines.text(" SOIL PRESSURES DETERMINED BY ");
    if (method == PressureMethod::Coefficients) {
        const bool strengths = problem.SoilDataKind(side) == SoilData::Strengths;
        lines.text(strengths ? "COULOMB" : "INPUT").text(" COEFFICIENTS").end();
        lines.line(10, "AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS.");
    } else {
        lines.text(method == PressureMethod::Sweep ? "SWEEP SEARCH" : "FIXED SURFACE")
            .text(" WEDGE METHOD.")
            .end();
    }
}

bool isStep(double below, double above) {
    return std::fabs(below - above) > PressureNoise;
}

bool hasSoilStep(const Pressures& pressures, int i) {
    const auto& ActivePressures = pressures.ActivePressures;
    const auto& PassivePressures = pressures.PassivePressures;
    for (const int side : {Right, Left}) {
        if (isStep(ActivePressures(side, i, 1), ActivePressures(side, i, 2)) ||
            isStep(PassivePressures(side, i, 1), PassivePressures(side, i, 2))) {
            return true;
        }
    }
    return false;
}

bool hasAutomaticSeepage(const Problem& problem) {
    return problem.WaterDataKind == WaterData::Elevations &&
           problem.SeepageKind == Seepage::Automatic;
}

std::string_view caseRow(const Problem& problem) {
    const bool cantilever = problem.WallType == WallKind::Cantilever;
    if (problem.ProgramMode == Mode::Design) {
        return cantilever ? "*  CANTILEVER WALL DESIGN  *" : "*   ANCHORED WALL DESIGN   *";
    }
    return cantilever ? "* CANTILEVER WALL ANALYSIS *" : "*  ANCHORED WALL ANALYSIS  *";
}

void scaledDeflectionNote(PrintLines& lines) {
    for (const char* row :
         {"NOTE:  DIVIDE SCALED DEFLECTION MODULUS OF",
          "       ELLASTICITY IN PSI TIMES PILE MOMENT",
          "       OF INERTIA IN IN^4 TO OBTAIN DEFLECTION", "       IN INCHES."}) {
        lines.line(15, row);
    }
}

} // namespace korvane
