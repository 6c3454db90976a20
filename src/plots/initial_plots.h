// The four diagrams of the soil and water pressures before a solution.
#pragma once

#include "plots/scales.h"
#include "plots/sheet.h"
#include "state/results.h"

namespace korvane {

/// What the screen holds while it lives.
struct InitialPlots {
    double PlotBottomElev = 0; ///< FT, in the place of the wall bottom that is not yet known
    PlotScales scales;
};

/// The diagrams by their PlotNumber.
enum InitialPlotNumber {
    InitialLeftPlot = 1,
    InitialRightPlot,
    InitialNetSoilPlot,
    InitialNetWaterPlot,
};

/// Chooses the depth, three times the retained height below the lower ground, at least 30 FT and
/// never past the grid, and prepares the scales. RuntimeError 9 on a grid of fewer than three rows.
InitialPlots openInitialPlots(const Problem& problem, const Review& review);

/// Draws one diagram. RuntimeError 5 for a number that names none.
void drawInitialPlot(Surface& surface, const Problem& problem, const Review& review,
                     const InitialPlots& plots, int plotNumber, Medium medium);

} // namespace korvane
