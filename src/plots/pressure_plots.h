// Diagrams that solved walls and initial pressures share: the soil pressures of one side and the
// net water pressures.
#pragma once

#include "plots/frame.h"
#include "plots/scales.h"
#include "plots/sheet.h"

namespace korvane {

/// The soil pressures of one side in two boxes, passive and active.
struct SidePlot {
    int side = Right;
    Titles titles; ///< x is taken from the side's arrangement
    ElevationAxis elevations;
    PlotScales scales;
    int lastRow = 0; ///< of the grid; a row at or below the bottom ends the strips before
};

/// Each pressure grows away from its zero edge: leftward on the left side, rightward on the right
/// side. A kind whose scale is 0 keeps its box and scale without strips.
void drawSidePlot(Sheet& sheet, const Problem& problem, const ShownPressures& shown, SidePlot plot);

/// The net water pressures on the grid, down to the bottom of `elevations`. A step shows as a
/// horizontal stroke.
void drawWaterPlot(Sheet& sheet, const Problem& problem, const ShownPressures& shown,
                   const Titles& titles, const ElevationAxis& elevations, const PlotScales& scales,
                   bool anchorLine);

} // namespace korvane
