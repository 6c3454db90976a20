// Sketches of what the user has entered: the system, the surcharges, the horizontal loads.
#pragma once

#include "plots/sheet.h"
#include "problem/loads.h"

#include <optional>

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
inline constexpr int InputPlotCount = InputWaterPlot;

inline constexpr double WallX = 5040; ///< of the wall in the sketches of loads, twips on the screen

/// The kind of load that a view shows; none for the others and for a number that names no view.
constexpr std::optional<Load> loadOfPlot(int plotNumber) {
    switch (plotNumber) {
    case LineLoadPlot:
        return Load::Line;
    case UniformLoadPlot:
        return Load::Uniform;
    case StripLoadPlot:
        return Load::Strip;
    case RampLoadPlot:
        return Load::Ramp;
    case TriangularLoadPlot:
        return Load::Triangle;
    case VariableLoadPlot:
        return Load::Variable;
    case HorizontalLinePlot:
        return Load::HorizontalLine;
    case HorizontalDistributedPlot:
        return Load::Distributed;
    default:
        return {};
    }
}

/// Whether the problem holds data for a view; the system is always there. RuntimeError 5 for a
/// number that names none.
bool hasInputPlot(const Problem& problem, int plotNumber);

/// Draws one view; one without data draws its frame. RuntimeError 5 for a number that names none.
void drawInputPlot(Surface& surface, const Problem& problem, int plotNumber, Medium medium);

/// Wall, ground, layers, water and anchor on a scale of their own.
void drawSystemPlot(Surface& surface, const Problem& problem, Medium medium);

/// One kind of surcharge on the ground; RuntimeError 5 for a load on the wall.
void drawSurchargePlot(Surface& surface, const Problem& problem, Load kind, Medium medium);

/// One kind of horizontal load: HorizontalLinePlot to InputWaterPlot.
void drawHorizontalPlot(Surface& surface, const Problem& problem, int plotNumber, Medium medium);

} // namespace korvane
