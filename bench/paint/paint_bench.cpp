// Repaint of every diagram of a solved anchored wall through the toolkit's painter.
#include "plots/plot_screen.h"
#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "shell/painter_surface.h"
#include "wall/design.h"
#include "wall/net_pressures.h"
#include "wall/preparation.h"
#include "wall/trial_pressures.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

namespace korvane {
namespace {

class YesPrompts : public Prompts {
  public:
    Answer Ask(const MessageBox&) override { return Answer::Yes; }
};

YesPrompts prompts;

/// The example with all loads, solved.
State& solvedWall() {
    static const std::unique_ptr<State> state = [] {
        auto made = std::make_unique<State>(prompts);
        made->files.TempFolder = std::filesystem::temp_directory_path().string();
        const std::string name =
            std::string(KORVANE_SOURCE_DIR) + "/examples/anchored-all-loads.dat";
        readProblem(made->problem, readFile(name), name);
        PrepareSolution(*made);
        for (const int side : {Right, Left}) {
            ComputeSidePressures(*made, side, 1);
        }
        ComputeNetPressures(*made);
        SolveDesign(*made);
        for (const std::string& file : made->files.ScratchFileName) {
            std::filesystem::remove(file);
        }
        return made;
    }();
    return *state;
}

void paint(benchmark::State& run, PlotScreenName screen, int plotNumber) {
    State& state = solvedWall();
    PlotView view = openPlotScreen(state, screen);
    choosePlot(view, plotNumber);
    QImage image(1400, 800, QImage::Format_RGB32);
    for (auto pass : run) {
        QPainter painter(&image);
        painter.scale(800 / 5760.0, 800 / 5760.0);
        PainterSurface surface(painter);
        drawPlot(surface, state, view, Medium::Screen);
    }
}

} // namespace
} // namespace korvane

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    using korvane::PlotScreenName;
    for (int number = 1; number <= 7; ++number) {
        benchmark::RegisterBenchmark(("Paint/FREEPLOT/" + std::to_string(number)).c_str(),
                                     korvane::paint, PlotScreenName::FREEPLOT, number);
    }
    for (int number = 1; number <= 9; ++number) {
        benchmark::RegisterBenchmark(("Paint/VUINPLOT/" + std::to_string(number)).c_str(),
                                     korvane::paint, PlotScreenName::VUINPLOT, number);
    }
    benchmark::RegisterBenchmark("Paint/ROWECURV", korvane::paint, PlotScreenName::ROWECURV, 1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
