// Speed of what a solution is told in: numbers through formats, reports, JSON.
#include "largest_wall.h"

#include "batch/json_results.h"
#include "reports/complete_results.h"
#include "runtime/number_text.h"
#include "runtime/print_lines.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace korvane;
using bench::LargestWall;

/// Sizes and digits as reports hold them, both signs.
std::array<double, 1000> reportValues() {
    std::array<double, 1000> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double x = static_cast<double>(i);
        values[i] = 40 * x * std::sin(x);
    }
    return values;
}

/// A thousand numbers of a format.
void Format(benchmark::State& run, std::string_view format) {
    const auto values = reportValues();
    for (auto _ : run) {
        for (const double value : values) {
            benchmark::DoNotOptimize(formatNumber(value, format));
        }
    }
    run.SetItemsProcessed(run.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK_CAPTURE(Format, Fixed2, "####0.00");
BENCHMARK_CAPTURE(Format, Fixed1, "####0.0");
BENCHMARK_CAPTURE(Format, Fixed4, "0.0000");
BENCHMARK_CAPTURE(Format, WholeWithPoint, "#####0.");
BENCHMARK_CAPTURE(Format, Whole, "0");
BENCHMARK_CAPTURE(Format, Exponent4, "0.0000E+00");

void GeneralForm(benchmark::State& run) {
    const auto values = reportValues();
    for (auto _ : run) {
        for (const double value : values) {
            benchmark::DoNotOptimize(generalForm(value));
        }
    }
    run.SetItemsProcessed(run.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK(GeneralForm);

/// A result row of five columns.
void ReportRow(benchmark::State& run) {
    const auto values = reportValues();
    std::size_t size = 0;
    for (auto _ : run) {
        PrintLines lines;
        for (std::size_t i = 0; i + 5 <= values.size(); i += 5) {
            lines.right(15, values[i], "####0.00").text("+");
            lines.right(29, values[i + 1], "0.0000E+00").right(43, values[i + 2], "####0.");
            lines.right(61, values[i + 3], "0.0000E+00").right(74, values[i + 4], "####0.00").end();
        }
        size = lines.content().size();
    }
    run.SetItemsProcessed(run.iterations() * static_cast<std::int64_t>(values.size() / 5));
    run.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(ReportRow)->Unit(benchmark::kMicrosecond);

void CompleteResults(benchmark::State& run) {
    LargestWall wall;
    wall.problem.WallType = WallKind::Cantilever;
    wall.results->levelCount = 1;
    std::size_t size = 0;
    for (auto _ : run) {
        PrintLines lines;
        completeResults(lines, wall.problem, *wall.results);
        size = lines.content().size();
    }
    run.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(CompleteResults)->Unit(benchmark::kMicrosecond);

/// Both levels and the review of an anchored wall with 301 rows.
void JsonResults(benchmark::State& run) {
    const LargestWall wall;
    Solved solved;
    solved.review = &wall.results->review;
    solved.results = wall.results.get();
    solved.reduction = &wall.reduction;
    const std::string input = "wall.dat";
    const batch::Options options;
    const InputFault fault;
    const std::vector<batch::Message> messages;
    std::size_t size = 0;
    for (auto _ : run) {
        size = batch::jsonResults({.input = input,
                                   .options = options,
                                   .status = batch::StatusSolved,
                                   .messages = messages,
                                   .problem = wall.problem,
                                   .sections = wall.sections,
                                   .solved = solved,
                                   .fault = fault,
                                   .units = UnitSystem::US})
                   .size();
    }
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(size));
    run.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(JsonResults)->Unit(benchmark::kMicrosecond);

} // namespace
