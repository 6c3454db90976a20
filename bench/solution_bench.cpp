// Whole solutions: from the problem in memory to the results, and on to all of their reports.
#include "dearest_walls.h"
#include "problem/input_reader.h"
#include "reports/solution_report.h"
#include "rowe/pile_sections.h"
#include "runtime/file_text.h"

#include <benchmark/benchmark.h>

#include <string>

namespace korvane {

namespace {

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

/// The same text with some words in the place of others.
std::string with(std::string text, const std::string& words, const std::string& others) {
    return text.replace(text.find(words), words.size(), others);
}

std::string withoutWater(const std::string& text) {
    const std::size_t line = text.find("WATER");
    return text.substr(0, line) + text.substr(text.find('\n', line) + 1);
}

bool read(benchmark::State& run, const std::string& input, Problem& problem) {
    clearProblemData(problem);
    const bool complete = readProblem(problem, input, "input").complete;
    if (!complete) {
        run.SkipWithError("the input is refused");
    }
    return complete;
}

/// All three steps of one problem again and again in one workspace.
void SolveAndReduce(benchmark::State& run, const std::string& input) {
    Problem problem;
    if (!read(run, input, problem)) {
        return;
    }
    PileSections sections;
    LoadPileDefaults(sections);
    Workspace workspace;
    for (auto _ : run) {
        if (solve(problem, {}, sections, workspace).reduction == nullptr) {
            run.SkipWithError("the solution failed");
            break;
        }
    }
}

/// Review and levels of one problem again and again in one workspace.
void Solve(benchmark::State& run, const std::string& input, WedgeMethod wedge) {
    Problem problem;
    if (!read(run, input, problem)) {
        return;
    }
    Options options;
    options.wedge = wedge;
    Workspace workspace;
    for (auto _ : run) {
        const bool solved = reviewWall(problem, options, workspace) && solveWall(workspace);
        if (!solved) {
            run.SkipWithError("the solution failed");
            break;
        }
    }
}

/// The input text of a design by coefficients to its whole report, as the batch command writes it.
void Report(benchmark::State& run, const std::string& input) {
    PileSections sections;
    LoadPileDefaults(sections);
    Problem problem;
    Workspace workspace;
    std::size_t size = 0;
    for (auto _ : run) {
        clearProblemData(problem);
        readProblem(problem, input, "input");
        const Solved solved = solve(problem, {}, sections, workspace);
        if (solved.failure) {
            run.SkipWithError("the solution failed");
            break;
        }
        std::string report;
        ReportPart next = ReportPart::Echo;
        writeReport(next, problem, sections, solved,
                    [&report](const PrintLines& lines) { report += lines.content(); });
        size = report.size();
    }
    run.counters["bytes"] = static_cast<double>(size);
}

} // namespace

BENCHMARK_CAPTURE(Solve, CantileverDesignByCoefficients, example("cantilever-dry-sand"),
                  WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, AnchoredDesignByCoefficients, example("anchored-sand"),
                  WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, AnchoredDryDesignByCoefficients, withoutWater(example("anchored-sand")),
                  WedgeMethod::Sweep);
BENCHMARK_CAPTURE(SolveAndReduce, AnchoredDryDesign, withoutWater(example("anchored-sand")));
BENCHMARK_CAPTURE(SolveAndReduce, AnchoredDesign, example("anchored-sand"));
BENCHMARK_CAPTURE(Solve, AnchoredDesignAutomaticSeepage, anchoredSeepage, WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, SweepDesignSurchargesBothSides, sweepSurcharges, WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, FixedSurfaceDesign, example("sloping-both-sides-fixed"),
                  WedgeMethod::FixedSurface);
BENCHMARK_CAPTURE(Solve, CantileverAnalysis, example("analysis-cantilever"), WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, AnchoredAnalysis, example("analysis-anchored"), WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, SweepAnalysis,
                  with(with(sweepSurcharges, "DESIGN 1.00 1.50", "ANALYSIS"), "WALL 12",
                       "WALL 12 -20 29E6 300"),
                  WedgeMethod::Sweep);

// The dearest legal problems: 11 layers, 11 surface points, all kinds of loads.
BENCHMARK_CAPTURE(Solve, DearestSweepDesign, bench::dearestInput({}), WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, DearestFixedSurfaceDesign, bench::dearestInput({}),
                  WedgeMethod::FixedSurface);
BENCHMARK_CAPTURE(Solve, DearestSweepDesignAutomaticSeepage,
                  bench::dearestInput({.control = "ANCHORED DESIGN 1.00 1.50",
                                       .wall = "30 24",
                                       .automaticWater = "62.4 18 2 16 AUTOMATIC"}),
                  WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, DearestSweepAnalysis,
                  bench::dearestInput({.control = "ANCHORED ANALYSIS",
                                       .wall = "30 24 -60 29E6 3000"}),
                  WedgeMethod::Sweep);
BENCHMARK_CAPTURE(
    Solve, DearestDesignByCoefficients,
    bench::dearestInput({.control = "ANCHORED DESIGN 1.00 1.50", .wall = "30 24", .wedge = false}),
    WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, DearestAnalysisByCoefficients,
                  bench::dearestInput({.control = "ANCHORED ANALYSIS",
                                       .wall = "30 24 -30 29E6 3000",
                                       .wedge = false}),
                  WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, AllLoadsDesignByCoefficients, example("anchored-all-loads"),
                  WedgeMethod::Sweep);
BENCHMARK_CAPTURE(Solve, AllLoadsAnalysisByCoefficients,
                  with(with(example("anchored-all-loads"), "DESIGN  1.00  1.50", "ANALYSIS"),
                       "WALL  18  14", "WALL 18 14 -20 29E6 300"),
                  WedgeMethod::Sweep);

BENCHMARK_CAPTURE(Report, CantileverDesign, example("cantilever-dry-sand"));
BENCHMARK_CAPTURE(Report, AnchoredDesign, example("anchored-sand"));
BENCHMARK_CAPTURE(Report, AllLoadsDesign, example("anchored-all-loads"));

} // namespace korvane
