// The calculation sheet of a wall: a file for browsers and printers that shows where the numbers of
// a solution come from, with formulas worked out again and compared.
//
//     const Sheet sheet = calculationSheet({.problem = problem, .sections = sections,
//                                           .solved = solved, .options = options,
//                                           .notes = notes, .inputName = "wall.dat"});
#pragma once

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
    std::string inputName = {};       ///< of the title block, any bytes
    MomentText moment = momentText(); ///< of the title block
};

struct Sheet {
    std::string html; ///< UTF-8; HTML that is well-formed XML too
    std::vector<Check> checks;
};

/// The same request gives the same bytes.
Sheet calculationSheet(const SheetRequest& request);

/// The head of every sheet up to what names the program's version: files that begin so are ours.
std::string_view sheetFileHead();

} // namespace korvane
