// The pieces that several reports share.
#pragma once

#include "runtime/print_lines.h"
#include "state/results.h"

#include <initializer_list>
#include <string_view>

namespace korvane {

/// A text behind a number of blanks.
struct Piece {
    int blanks = 0;
    std::string_view text;
};

/// One line of pieces, one behind the other.
void pieceLine(PrintLines& lines, std::initializer_list<Piece> pieces);

/// The first line of a report's head.
inline constexpr std::string_view ProgramLine =
    "PROGRAM KORVANE-DESIGN/ANALYSIS OF ANCHORED OR CANTILEVER SHEET PILE WALLS";

/// Program, "BY CLASSICAL METHODS", date and time, an empty line; all `shift` columns farther
/// right.
void programHead(PrintLines& lines, std::string_view programLine = ProgramLine, int shift = 0);

/// Texts one below the other behind the same blanks, then an empty line.
void banner(PrintLines& lines, int blanks, std::initializer_list<std::string_view> rows);

/// The section with the heading lines as held, apostrophes included, then an empty line.
void headingSection(PrintLines& lines, const Problem& problem, std::string_view title);

/// Tells by which method the soil pressures of a side were determined.
void methodStatement(PrintLines& lines, const Problem& problem, PressureMethod method, int side);

/// The mark of a pressure for which the sweep search found no extreme.
inline const char* markText(bool marked) {
    return marked ? "*" : "";
}

/// True where the pressure just below an elevation and the one just above differ.
bool isStep(double below, double above);

/// True where a soil pressure of either side has a step at grid point i.
bool hasSoilStep(const Pressures& pressures, int i);

/// True where the seepage gradient is found by the solution.
bool hasAutomaticSeepage(const Problem& problem);

/// The wall and the mode as a row of the results' banners, 28 characters wide.
std::string_view caseRow(const Problem& problem);

/// The note on scaled deflections, four lines.
void scaledDeflectionNote(PrintLines& lines);

} // namespace korvane
