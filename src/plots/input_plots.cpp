#include "plots/input_plots.h"

#include "runtime/runtime_error.h"

namespace korvane {

bool hasInputPlot(const Problem& problem, int plotNumber) {
    const auto onEitherSide = [](const Array<int, 2>& count) {
        return count(Right) > 0 || count(Left) > 0;
    };
    switch (plotNumber) {
    case SystemPlot:
        return true;
    case LineLoadPlot:
        return onEitherSide(problem.VLineCount);
    case UniformLoadPlot:
        return onEitherSide(problem.VUniformCount);
    case StripLoadPlot:
        return onEitherSide(problem.VStripCount);
    case RampLoadPlot:
        return onEitherSide(problem.VRampCount);
    case TriangularLoadPlot:
        return onEitherSide(problem.VTriCount);
    case VariableLoadPlot:
        return onEitherSide(problem.VVarCount);
    case HorizontalLinePlot:
        return problem.HLineCount > 0;
    case HorizontalDistributedPlot:
        return problem.HDistCount > 0;
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
