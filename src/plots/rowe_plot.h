// Rowe's moment reduction curves for sand with the sheet pile sections on them.
#pragma once

#include "plots/sheet.h"
#include "state/results.h"

#include <string>
#include <vector>

namespace korvane {

/// A section of the table and its place in the picture.
struct RoweSection {
    std::string name;
    double logRigidity = 0; ///< LOG(H^4/EI)
    double momentRatio = 0; ///< of the allowable to the free earth moment
    std::string leftOut;    ///< why the picture has it not; empty where it has
};

/// All sections of the table in their order.
std::vector<RoweSection> roweSections(const PileSections& sections,
                                      const MomentReduction& reduction);

/// Draws the two curves at the wall's ALPHA from RoweSandCurve as it stands (all zero, on the
/// bottom line, after a report for clay), and each section whose place lies in the diagram.
void drawRowePlot(Surface& surface, const PileSections& sections, const MomentReduction& rowe,
                  Medium medium);

} // namespace korvane
