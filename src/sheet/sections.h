// The sections of the calculation sheet, each a function of the request.
#pragma once

#include "sheet/sheet_writer.h"

namespace korvane::sheet {

/// 0: heading, file, date, program; and what became of the solution.
void writeTitleBlock(SheetWriter& writer, const SheetRequest& request);
/// 1: the wall drawn to scale, the input as tables.
void writeWall(SheetWriter& writer, const SheetRequest& request);
/// 2: method and factors of each side, coefficients of each layer.
void writeMethod(SheetWriter& writer, const SheetRequest& request);
/// 3: stresses, water, surcharges, planes, all rows.
void writePressures(SheetWriter& writer, const SheetRequest& request);
/// 4: net pressures and their approximations.
void writeNetPressures(SheetWriter& writer, const SheetRequest& request);
/// 5: the balance of each solution.
void writeEquilibrium(SheetWriter& writer, const SheetRequest& request);
/// 6: shear, moment, deflection, sections.
void writeBending(SheetWriter& writer, const SheetRequest& request);
/// 7: notes.
void writeNotes(SheetWriter& writer, const SheetRequest& request);
/// 8: comparison, where one is handed in.
void writeComparison(SheetWriter& writer, const SheetRequest& request);
/// The table of all checks, at the end.
void writeChecks(SheetWriter& writer);

} // namespace korvane::sheet
