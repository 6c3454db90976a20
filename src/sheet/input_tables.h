// The input of a wall as tables.
#pragma once

#include "problem/fields.h"
#include "sheet/sheet_writer.h"

namespace korvane::sheet {

/// What a field is called in a table's head or line.
const char* fieldTitle(ProblemField field);

/// Everything that the problem's counts and choices put in use, with units.
void writeInputTables(SheetWriter& writer, const Problem& problem);

} // namespace korvane::sheet
