#include "plots/input_plots.h"

#include "runtime/runtime_error.h"

namespace korvane {

bool hasInputPlot(const Problem& problem, int plotNumber) {
    if (plotNumber >= LineLoadPlot && plotNumber <= HorizontalDistributedPlot) {
        return rulesOf(loadOfPlot(plotNumber)).isGiven(problem);
    }
    switch (plotNumber) {
    case SystemPlot:
        return true;
    case InputWaterPlot:
        return problem.WaterDataKind == WaterData::Pressures;
    default:
        throw RuntimeError(5);
    }
}

void drawInputPlot(Surface& surface, const Problem& problem, int plotNumber, Medium medium) {
    if (plotNumber == SystemPlot) {
        drawSystemPlot(surface, problem, medium);
    } else if (plotNumber >= LineLoadPlot && plotNumber <= VariableLoadPlot) {
        drawSurchargePlot(surface, problem, plotNumber, medium);
    } else if (plotNumber >= HorizontalLinePlot && plotNumber <= InputWaterPlot) {
        drawHorizontalPlot(surface, problem, plotNumber, medium);
    } else {
        throw RuntimeError(5);
    }
}

} // namespace korvane
