// Whole solutions: from the problem in memory to the results, reports left out.
#include "dearest_walls.h"
#include "pressures/coefficient_pressures.h"
#include "pressures/wedge_pressures.h"
#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "wall/analysis.h"
#include "wall/design.h"
#include "wall/net_pressures.h"
#include "wall/preparation.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>

namespace korvane {

namespace {

namespace fs = std::filesystem;

class YesPrompts : public Prompts {
  public:
    Answer Ask(const MessageBox&) override { return Answer::Yes; }
};

const char* const anchoredSeepage = "'ANCHORED WALL WITH AUTOMATIC SEEPAGE\n"
                                    "CONTROL ANCHORED DESIGN 1.00 1.50\n"
                                    "WALL 20 15\n"
                                    "SURFACE RIGHTSIDE 1 0 20\n"
                                    "SURFACE LEFTSIDE 1 0 0\n"
                                    "SOIL BOTH STRENGTHS 2\n"
                                    " 125 115 32 0 10 0 -4 0\n"
                                    " 130 120 35 0 12 0\n"
                                    "WATER ELEVATIONS 62.4 12 2 0 AUTOMATIC\n"
                                    "FINISHED\n";

const char* const sweepSurcharges = "'SWEEP SEARCH WITH SURCHARGES ON BOTH SIDES\n"
                                    "CONTROL CANTILEVER DESIGN 1.00 1.50\n"
                                    "WALL 12\n"
                                    "SURFACE RIGHTSIDE 2 0 12\n"
                                    " 20 15\n"
                                    "SURFACE LEFTSIDE 2 0 0\n"
                                    " 20 -2\n"
                                    "SOIL BOTH STRENGTHS 2\n"
                                    " 120 110 31 0 8 0 -3 0\n"
                                    " 125 115 34 0 10 0\n"
                                    "VERTICAL LINE BOTH 1 6 500\n"
                                    "VERTICAL STRIP BOTH 1 4 9 300\n"
                                    "FINISHED\n";

std::string example(const char* name) {
    return readFile(std::string(KORVANE_SOURCE_DIR) + "/examples/" + name + ".dat");
}

void solve(State& state, PressureMethod wedgeMethod) {
    PrepareSolution(state);
    for (PressureMethod& method : state.preparation.SideMethod) {
        method = method == PressureMethod::Wedge ? wedgeMethod : method;
    }
    if (state.problem.ProgramMode == Mode::Analysis) {
        SolveAnalysis(state);
        return;
    }
    for (const int side : {Right, Left}) {
        state.preparation.SideMethod(side) == PressureMethod::Coefficients
            ? ComputeCoefficientPressures(state, side, 1)
            : ComputeWedgePressures(state, side, 1);
    }
    ComputeNetPressures(state);
    SolveDesign(state);
}

/// Solves one problem again and again; the solution files are deleted in between.
void Solve(benchmark::State& run, const std::string& input, PressureMethod wedgeMethod) {
    const fs::path folder = fs::temp_directory_path() / "korvane-bench";
    fs::create_directories(folder);
    YesPrompts prompts;
    const auto state = std::make_unique<State>(prompts);
    state->files.TempFolder = folder.string();
    if (!readProblem(state->problem, input, "input").complete) {
        run.SkipWithError("the input is refused");
    }
    for (auto _ : run) {
        solve(*state, wedgeMethod);
        run.PauseTiming();
        for (std::string& name : state->files.ScratchFileName) {
            fs::remove(name);
            name.clear();
        }
        state->files.ScratchFileCount = 8;
        run.ResumeTiming();
    }
    if (state->SolutionFailed != 0) {
        run.SkipWithError("the solution failed");
    }
    fs::remove_all(folder);
}

} // namespace

BENCHMARK_CAPTURE(Solve, CantileverDesignByCoefficients, example("cantilever-dry-sand"),
                  PressureMethod::Sweep);
BENCHMARK_CAPTURE(Solve, AnchoredDesignAutomaticSeepage, anchoredSeepage, PressureMethod::Sweep);
BENCHMARK_CAPTURE(Solve, SweepDesignSurchargesBothSides, sweepSurcharges, PressureMethod::Sweep);
BENCHMARK_CAPTURE(Solve, FixedSurfaceDesign, example("sloping-both-sides-fixed"),
                  PressureMethod::FixedSurface);
BENCHMARK_CAPTURE(Solve, CantileverAnalysis, example("analysis-cantilever"), PressureMethod::Sweep);
BENCHMARK_CAPTURE(Solve, AnchoredAnalysis, example("analysis-anchored"), PressureMethod::Sweep);
BENCHMARK_CAPTURE(
    Solve, SweepAnalysis,
    [] {
        std::string text = sweepSurcharges;
        text.replace(text.find("DESIGN 1.00 1.50"), 16, "ANALYSIS");
        return text.replace(text.find("WALL 12"), 7, "WALL 12 -20 29E6 300");
    }(),
    PressureMethod::Sweep);

// The dearest legal problems: 11 layers, 11 surface points, all kinds of loads.
BENCHMARK_CAPTURE(Solve, DearestSweepDesign, bench::dearestInput({}), PressureMethod::Sweep);
BENCHMARK_CAPTURE(Solve, DearestFixedSurfaceDesign, bench::dearestInput({}),
                  PressureMethod::FixedSurface);
BENCHMARK_CAPTURE(Solve, DearestSweepDesignAutomaticSeepage,
                  bench::dearestInput({.control = "ANCHORED DESIGN 1.00 1.50",
                                       .wall = "30 24",
                                       .automaticWater = "62.4 18 2 16 AUTOMATIC"}),
                  PressureMethod::Sweep);
BENCHMARK_CAPTURE(Solve, DearestSweepAnalysis,
                  bench::dearestInput({.control = "ANCHORED ANALYSIS",
                                       .wall = "30 24 -60 29E6 3000"}),
                  PressureMethod::Sweep);
BENCHMARK_CAPTURE(
    Solve, DearestDesignByCoefficients,
    bench::dearestInput({.control = "ANCHORED DESIGN 1.00 1.50", .wall = "30 24", .wedge = false}),
    PressureMethod::Sweep);
BENCHMARK_CAPTURE(Solve, DearestAnalysisByCoefficients,
                  bench::dearestInput({.control = "ANCHORED ANALYSIS",
                                       .wall = "30 24 -30 29E6 3000",
                                       .wedge = false}),
                  PressureMethod::Sweep);
BENCHMARK_CAPTURE(Solve, AllLoadsDesignByCoefficients, example("anchored-all-loads"),
                  PressureMethod::Sweep);

} // namespace korvane
