// Speed of every diagram of every plot screen at the largest size that the arrays hold: on a
// surface that does nothing, to which a window adds its painter's time, and as a vector graphics
// file.
#include "largest_wall.h"

#include "plots/figures.h"
#include "plots/input_plots.h"
#include "plots/plot_screen.h"
#include "plots/result_plots.h"
#include "plots/svg_surface.h"

#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>

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
    PlotView view = openPlotScreen(wall.plotData(), screen);
    view.PlotNumber = plotNumber;
    if (!view.hasPlot(plotNumber)) {
        throw std::logic_error("the diagram does not exist");
    }
    NullSurface surface;
    for (auto _ : run) {
        drawPlot(surface, wall.plotData(), view, Medium::Screen);
    }
    run.counters["primitives"] = benchmark::Counter(static_cast<double>(surface.count()),
                                                    benchmark::Counter::kAvgIterations);
}

void svgFile(benchmark::State& run, PlotScreenName screen, int plotNumber) {
    const LargestWall wall;
    PlotView view = openPlotScreen(wall.plotData(), screen);
    view.PlotNumber = plotNumber;
    const PlotReadings readings = plotReadings(wall.plotData(), view);
    const Figure figure{"", readings.title, plotDescription(view, readings), [&](Surface& surface) {
                            drawPlot(surface, wall.plotData(), view, Medium::Paper);
                        }};
    std::size_t size = 0;
    for (auto _ : run) {
        size = svgFigure(figure).size();
    }
    run.counters["bytes"] = static_cast<double>(size);
}

using Measure = void (*)(benchmark::State&, PlotScreenName, int);

/// Every diagram under the screen's title and its number.
void registerDiagrams(const std::string& what, Measure measure) {
    for (const PlotScreen& screen : plotScreens()) {
        for (int n = 1; n <= screen.pictureCount; ++n) {
            const std::string title = what + "/" + screen.title + "/" + std::to_string(n);
            benchmark::RegisterBenchmark(title.c_str(), [=](benchmark::State& run) {
                measure(run, screen.name, n);
            })->Unit(benchmark::kMicrosecond);
        }
    }
}

const bool registered = [] {
    registerDiagrams("Repaint", repaint);
    registerDiagrams("Svg", svgFile);
    return true;
}();

} // namespace
