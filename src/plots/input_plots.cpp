#include "plots/input_plots.h"

#include "runtime/runtime_error.h"

namespace korvane {

bool hasInputPlot(const Problem& problem, int plotNumber) {
    if (const auto load = loadOfPlot(plotNumber)) {
        return rulesOf(*load).isGiven(problem);
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
    switch (plotNumber) {
    case SystemPlot:
        return drawSystemPlot(surface, problem, medium);
    case HorizontalLinePlot:
    case HorizontalDistributedPlot:
    case InputWaterPlot:
        return drawHorizontalPlot(surface, problem, plotNumber, medium);
    default:
        break;
    }
    const auto load = loadOfPlot(plotNumber);
    if (!load) {
        throw RuntimeError(5);
    }
    drawSurchargePlot(surface, problem, *load, medium);
}

} // namespace korvane
