// Speed of a repaint: every diagram of every plot screen at the largest size that the arrays hold,
// on a surface that does nothing and, for a few, as a vector graphics file. A window adds its
// painter's time to the former.
#include "largest_wall.h"

#include "plots/figures.h"
#include "plots/input_plots.h"
#include "plots/plot_screen.h"
#include "plots/result_plots.h"
#include "plots/svg_surface.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace {

using namespace korvane;
using bench::LargestWall;

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
