// Sketches of what the user has entered: the system, the surcharges, the horizontal loads.
#pragma once

#include "plots/sheet.h"
#include "problem/loads.h"

namespace korvane {

/// The views by their PlotNumber.
enum InputPlotNumber {
    SystemPlot = 1,
    LineLoadPlot,
    UniformLoadPlot,
    StripLoadPlot,
    RampLoadPlot,
    TriangularLoadPlot,
    VariableLoadPlot,
    HorizontalLinePlot,
    HorizontalDistributedPlot,
    InputWaterPlot,
};
inline constexpr int InputPlotCount = 10;

/// The kind of load that LineLoadPlot to HorizontalDistributedPlot show.
constexpr Load loadOfPlot(int plotNumber) {
    return static_cast<Load>(plotNumber - LineLoadPlot);
}

/// Whether the problem holds data for a view; the system is always there. RuntimeError 5 for a
/// number that names none.
bool hasInputPlot(const Problem& problem, int plotNumber);

/// Draws one view; one without data draws its frame. RuntimeError 5 for a number that names none.
void drawInputPlot(Surface& surface, const Problem& problem, int plotNumber, Medium medium);

/// Wall, ground, layers, water and anchor on a scale of their own.
void drawSystemPlot(Surface& surface, const Problem& problem, Medium medium);

/// One kind of vertical surcharge: LineLoadPlot to VariableLoadPlot.
void drawSurchargePlot(Surface& surface, const Problem& problem, int plotNumber, Medium medium);

/// One kind of horizontal load: HorizontalLinePlot to InputWaterPlot.
void drawHorizontalPlot(Surface& surface, const Problem& problem, int plotNumber, Medium medium);

} // namespace korvane
