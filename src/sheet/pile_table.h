// What a solved level asks of each section of the table, with Rowe's moment reduction.
#pragma once

#include "sheet/sheet_writer.h"

namespace korvane::sheet {

/// The largest moment and deflection of a level as the sheet has worked them out.
struct OwnExtremes {
    double moment = 0;      ///< LB-FT per foot
    double momentShare = 0; ///< of it by which the solution's may differ
    double deflection = 0;  ///< IN, or in a design times modulus and inertia, LB-IN^3 per foot
    double deflectionShare = 0;
};

/// Stress, ratio to the allowable, deflection and, where it applies, the reduced moment of every
/// section; the section modulus required; each worked out again from the own extremes. Nothing
/// where the table is empty.
void writePileTable(SheetWriter& writer, const SheetRequest& request, int level,
                    const OwnExtremes& own);

} // namespace korvane::sheet
