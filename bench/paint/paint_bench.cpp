// Repaint of every diagram of every plot screen through the toolkit's painter, at the largest size
// that the arrays hold: in a picture of 1400 by 800 pixels and in one of twice the resolution.
#include "../largest_wall.h"

#include "plots/plot_screen.h"
#include "shell/painter_surface.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace korvane;

void paint(benchmark::State& run, PlotScreenName screen, int plotNumber, int scale) {
    const bench::LargestWall wall;
    PlotView view = openPlotScreen(wall.plotData(), screen);
    view.PlotNumber = plotNumber;
    QImage image(1400 * scale, 800 * scale, QImage::Format_RGB32);
    const double factor = image.height() / (PictureView.b.y - PictureView.a.y);
    for (auto pass : run) {
        image.fill(Qt::lightGray);
        QPainter painter(&image);
        painter.scale(factor, factor);
        PainterSurface surface(painter);
        drawPlot(surface, wall.plotData(), view, Medium::Screen);
    }
}

void registerPaints() {
    for (const auto name :
         {PlotScreenName::CANPLOT, PlotScreenName::FREEPLOT, PlotScreenName::FIXDPLOT,
          PlotScreenName::VUSOLPLT, PlotScreenName::VUINPLOT, PlotScreenName::ROWECURV}) {
        const PlotScreen& screen = plotScreen(name);
        for (int n = 1; n <= screen.pictureCount; ++n) {
            for (const int scale : {1, 2}) {
                const std::string title = std::string("Paint/") + screen.title + "/" +
                                          std::to_string(n) + "/scale:" + std::to_string(scale);
                benchmark::RegisterBenchmark(title.c_str(), paint, name, n, scale)
                    ->Unit(benchmark::kMicrosecond);
            }
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    registerPaints();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
