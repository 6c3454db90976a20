// Speed of reading and writing input files.
#include "problem/input_reader.h"
#include "problem/input_writer.h"
#include "problem/problem.h"
#include "runtime/file_text.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace {

using namespace korvane;

constexpr const char* smallFile = "examples/cantilever-clay.dat";
constexpr const char* fullFile = "tests/data/bad-input/design.dat"; // every kind of line

std::string textOf(const char* name) {
    return readFile(std::filesystem::path(KORVANE_SOURCE_DIR) / name);
}

void setBytes(benchmark::State& bench, const std::string& text) {
    bench.SetBytesProcessed(bench.iterations() * static_cast<std::int64_t>(text.size()));
}

void readInput(benchmark::State& bench, const char* name) {
    const std::string text = textOf(name);
    const auto problem = std::make_unique<Problem>();
    for ([[maybe_unused]] auto pass : bench) {
        clearProblemData(*problem);
        const ReadResult result = readProblem(*problem, text, name);
        if (!result.complete) {
            bench.SkipWithError(result.text.c_str());
            break;
        }
    }
    setBytes(bench, text);
}

void writeInput(benchmark::State& bench, const char* name) {
    const auto problem = std::make_unique<Problem>();
    clearProblemData(*problem);
    readProblem(*problem, textOf(name), name);
    for ([[maybe_unused]] auto pass : bench) {
        benchmark::DoNotOptimize(inputFileText(*problem));
    }
    setBytes(bench, inputFileText(*problem));
}

/// Comments and blanks that are passed over: what a large file costs at most.
void readMegabyte(benchmark::State& bench) {
    std::string comments;
    while (comments.size() < (1U << 20)) {
        comments += "( a comment of an engineer about the wall and its ground\n\n";
    }
    const std::string text = comments + textOf(fullFile);
    const auto problem = std::make_unique<Problem>();
    for ([[maybe_unused]] auto pass : bench) {
        clearProblemData(*problem);
        benchmark::DoNotOptimize(readProblem(*problem, text, "large.dat"));
    }
    setBytes(bench, text);
}

BENCHMARK_CAPTURE(readInput, small, smallFile);
BENCHMARK_CAPTURE(readInput, full, fullFile);
BENCHMARK_CAPTURE(writeInput, full, fullFile);
BENCHMARK(readMegabyte);

} // namespace
