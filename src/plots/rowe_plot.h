// Rowe's moment reduction curves for sand with the sheet pile sections on them.
#pragma once

#include "plots/sheet.h"
#include "state/state.h"

namespace korvane {

/// Draws the two curves at the wall's ALPHA from RoweSandCurve as it stands (all zero, on the
/// bottom line, after a report for clay), and each section whose place lies in the diagram.
void drawRowePlot(Surface& surface, const RoweData& rowe, Medium medium);

} // namespace korvane
