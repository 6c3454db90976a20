// Speed of a repaint: every diagram of every plot screen at the largest size that the arrays hold,
// on a surface that does nothing and, for a few, as a vector graphics file. A window adds its
// painter's time to the former.
#include "plots/figures.h"
#include "plots/input_plots.h"
#include "plots/plot_screen.h"
#include "plots/result_plots.h"
#include "plots/svg_surface.h"
#include "state/state.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <stdexcept>

namespace {

using namespace korvane;

class NoPrompts : public Prompts {
  public:
    Answer Ask(const MessageBox& /*box*/) override { return Answer::Ok; }
};

/// Draws nothing and counts, so that no drawing is optimised away.
class NullSurface : public Surface {
  public:
    double textWidth(std::string_view text) const override {
        return 100.0 * static_cast<double>(text.size());
    }
    double textHeight() const override { return 195; }
    long count() const { return count_; }

  private:
    void drawRectangle(const Corners& /*corners*/, Pen /*pen*/) override { ++count_; }
    void fillRectangle(const Corners& /*corners*/, Colour /*colour*/) override { ++count_; }
    void drawLine(Point /*from*/, Point /*to*/, Pen /*pen*/) override { ++count_; }
    void drawPoint(Point /*at*/, Pen /*pen*/) override { ++count_; }
    void drawCircle(Point /*centre*/, double /*radius*/, Pen /*pen*/) override { ++count_; }
    void drawText(Point /*upperLeft*/, std::string_view /*text*/) override { ++count_; }

    long count_ = 0;
};

void enterProblem(Problem& problem) {
    clearProblemData(problem);
    problem.NumHeadingLines = 4;
    problem.WallType = "A";
    problem.ProgramMode = "D";
    problem.AnchorElev = -5;
    for (const int side : {Right, Left}) {
        problem.SurfacePointCount(side) = 11;
        problem.SoilDataKind(side) = "S";
        problem.SoilLayerCount(side) = 11;
        problem.VLineCount(side) = problem.VStripCount(side) = problem.VTriCount(side) = 5;
        problem.VUniformCount(side) = problem.VRampCount(side) = 1;
        problem.VUniformLoad(side) = problem.VRampLoad(side) = 100;
        problem.VRampEnd(side) = 20;
        problem.VVarCount(side) = 11;
        for (int i = 1; i <= 11; ++i) {
            problem.SurfaceDist(side, i) = problem.VVarDist(side, i) = 10 * i;
            problem.SurfaceElev(side, i) = side == Right ? 0 : -100;
            problem.SoilBottomElev(side, i) = -10 * i - side;
            problem.VVarLoad(side, i) = 20 * i;
        }
    }
    problem.WaterDataKind = "P";
    problem.WaterPressCount = 11;
    problem.HLineCount = 5;
    problem.HDistCount = 11;
    for (int i = 1; i <= 11; ++i) {
        problem.WaterPressElev(i) = problem.HDistElev(i) = -10 * i;
        problem.WaterPressure(i) = problem.HDistLoad(i) = 50 * i;
    }
}

/// A wall with 301 rows everywhere.
struct LargestWall {
    LargestWall() {
        constexpr int Rows = 301;
        enterProblem(state->problem);
        state->grid.NumElevs = Rows;
        for (int i = 1; i <= Rows; ++i) {
            const double value = 1000 * std::sin(i / 20.0);
            state->grid.ElevGrid(i) = state->results.ResultElev(i) = 1 - i;
            state->results.ResultDeflection(i) = state->results.ResultMoment(i) = value;
            state->results.ResultShear(i) = state->results.ResultPressure(i) = value;
            for (const int k : {1, 2}) {
                state->pressures.WaterPressures(i, k) = value;
                state->net.NetActive(i, k) = state->net.NetPassive(i, k) = value;
                for (const int side : {Right, Left}) {
                    state->pressures.ActivePressures(side, i, k) = 3 * i;
                    state->pressures.PassivePressures(side, i, k) = 30 * i;
                }
            }
        }
        for (const int level : {1, 2}) {
            state->solution.SolvedBottomElev(level) = -300;
            state->solution.BottomIndex(level) = Rows;
        }
        for (const int entry : {1, 2, 3, 4}) {
            const double value = entry <= 2 ? 1000 : -1000;
            state->results.DeflectionRange(entry) = state->results.MomentRange(entry) = value;
            state->results.ShearRange(entry) = state->results.PressureRange(entry) = value;
        }
        state->rowe.RoweAlpha = 0.7;
        state->rowe.PileSectionCount = 13;
        for (int p = 1; p <= 13; ++p) {
            state->rowe.PileLogRigidity(p) = -3.5 + 0.15 * p;
            state->rowe.PileMomentRatio(p) = 0.5;
        }
    }

    NoPrompts prompts;
    std::unique_ptr<State> state = std::make_unique<State>(prompts);
};

void repaint(benchmark::State& run, PlotScreenName screen, int plotNumber) {
    const LargestWall wall;
    PlotView view = openPlotScreen(*wall.state, screen);
    view.PlotNumber = plotNumber;
    if (!view.hasPlot(plotNumber)) {
        throw std::logic_error("the diagram does not exist");
    }
    NullSurface surface;
    for (auto _ : run) {
        drawPlot(surface, *wall.state, view, Medium::Screen);
    }
    run.counters["primitives"] = benchmark::Counter(static_cast<double>(surface.count()),
                                                    benchmark::Counter::kAvgIterations);
}

/// Every diagram under the screen's title and its number.
const bool repaintsRegistered = [] {
    for (const auto name :
         {PlotScreenName::CANPLOT, PlotScreenName::FREEPLOT, PlotScreenName::FIXDPLOT,
          PlotScreenName::VUSOLPLT, PlotScreenName::VUINPLOT, PlotScreenName::ROWECURV}) {
        const PlotScreen& screen = plotScreen(name);
        for (int n = 1; n <= screen.pictureCount; ++n) {
            const std::string title =
                std::string("Repaint/") + screen.title + "/" + std::to_string(n);
            benchmark::RegisterBenchmark(title.c_str(), [name, n](benchmark::State& run) {
                repaint(run, name, n);
            })->Unit(benchmark::kMicrosecond);
        }
    }
    return true;
}();

void SvgFile(benchmark::State& run, int plotNumber) {
    const LargestWall wall;
    PlotView view = openPlotScreen(*wall.state, PlotScreenName::CANPLOT);
    view.PlotNumber = plotNumber;
    const Figure figure{
        "", [&](Surface& surface) { drawPlot(surface, *wall.state, view, Medium::Paper); }};
    std::size_t size = 0;
    for (auto _ : run) {
        size = svgFigure(figure).size();
    }
    run.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK_CAPTURE(SvgFile, Moment, MomentPlot)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SvgFile, LeftPressure, LeftPressurePlot)->Unit(benchmark::kMicrosecond);

} // namespace
