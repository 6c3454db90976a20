// What a solved level asks of each section of the table, with Rowe's moment reduction.
#pragma once

#include "sheet/sheet_writer.h"

namespace korvane::sheet {

/// Stress, ratio to the allowable, deflection and, where it applies, the reduced moment of every
/// section; the section modulus required; checks against the moment reduction. Nothing where the
/// table is empty.
void writePileTable(SheetWriter& writer, const SheetRequest& request, int level);

} // namespace korvane::sheet
