// The calculation sheet of a wall: a file for browsers and printers that shows where the numbers of
// a solution come from, with formulas worked out again and compared.
//
//     const CalculationSheet sheet = calculationSheet({.problem = problem, .sections = sections,
//                                           .solved = solved, .options = options,
//                                           .notes = notes, .inputName = "wall.dat"});
#pragma once

#include "comparison/comparison.h"
#include "notes/notes.h"
#include "runtime/dates.h"
#include "solution/solution.h"

#include <string>
#include <string_view>
#include <vector>

namespace korvane {

/// A value that the sheet has worked out again by its own code, beside that of the solution.
struct Check {
    std::string what; ///< "Ka, right side, layer 2"
    Quantity quantity = Quantity::Number;
    double sheet = 0;     ///< US customary units, as are all values of the records
    double engine = 0;    ///< likewise
    double tolerance = 0; ///< likewise: the largest difference that passes
    bool pass = false;
};

/// What a sheet is made of. The solution must have been run with Options::keepDetails; without it
/// the sheet leaves out what they tell. `sections` may be an empty table before a solution.
struct SheetRequest {
    const Problem& problem;
    const PileSections& sections;
    const Solved& solved; ///< as far as the solution has come
    const Options& options;
    const std::vector<Note>& notes;
    UnitSystem units = UnitSystem::US;
    std::string inputName = {};             ///< of the title block, any bytes
    MomentText moment = momentText();       ///< of the title block
    const Comparison* comparison = nullptr; ///< a section of its own where there is one
    bool notesWorkedOut = true;             ///< not to be: no notes are none told
};

struct CalculationSheet {
    std::string html; ///< UTF-8; HTML that is well-formed XML too
    std::vector<Check> checks;
};

/// The same request gives the same bytes.
CalculationSheet calculationSheet(const SheetRequest& request);

/// "Ka, right side, layer 1: 0.31 by the sheet, 0.30 by the solution", 9 significant digits, US
/// customary units.
std::string checkLine(const Check& check);

/// How much of a file shows whose it is.
inline constexpr std::size_t SheetHeadBytes = 1024;

/// True for the first bytes of a file that names KORVANE as what has made it.
bool isSheetFile(std::string_view head);

} // namespace korvane
