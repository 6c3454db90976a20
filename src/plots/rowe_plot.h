// Rowe's moment reduction curves for sand with the sheet pile sections on them.
#pragma once

#include "plots/sheet.h"
#include "state/results.h"

namespace korvane {

/// Draws the two curves at the wall's ALPHA from RoweSandCurve as it stands (all zero, on the
/// bottom line, after a report for clay), and each section whose place lies in the diagram.
void drawRowePlot(Surface& surface, const PileSections& sections, const MomentReduction& reduction,
                  Medium medium);

} // namespace korvane
