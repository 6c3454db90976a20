// Feeds the reader with arbitrary bytes (libFuzzer): whatever comes, it ends with a complete
// problem, one message or one of the two run-time errors of its own, and a complete problem
// survives being written and read again; its file goes into other units.

#include "problem/input_reader.h"
#include "problem/input_writer.h"
#include "problem/problem.h"
#include "problem/unit_conversion.h"
#include "runtime/runtime_error.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace korvane;

void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

/// A problem that a file gave: written and read again it is complete, and its text then stands.
void requireRoundTrip(const Problem& problem) {
    // Factors of the control line below half of their last place are written as 0.00.
    if (problem.FSActive < 0.005 || problem.FSPassive < 0.005) {
        return;
    }
    Problem again;
    clearProblemData(again);
    require(readProblem(again, inputFileText(problem), "again").complete, "written text reads");
    const std::string text = inputFileText(again);
    Problem third;
    clearProblemData(third);
    require(readProblem(third, text, "third").complete, "text of the second problem reads");
    require(third == again, "the second problem comes back whole");
    require(inputFileText(third) == text, "its text stands");
}

/// The file in other units is read or, where rounding makes two numbers one, refused with a
/// message.
void requireConversion(const std::string& text, const FileNumbers& numbers) {
    const UnitSystem other = numbers.units == UnitSystem::US ? UnitSystem::SI : UnitSystem::US;
    for (const RoundedNumber& number : roundedNumbers(text, numbers, other)) {
        if (number.told.empty()) {
            return; // nothing can be written
        }
    }
    ignoredNumbers(text, numbers);
    Problem converted;
    clearProblemData(converted);
    const ReadResult result = readProblem(converted, convertedInput(text, numbers, other), "other");
    require(result.units == other, "the file is in other units");
    require(result.complete == result.title.empty(), "one message unless complete");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    Problem problem;
    clearProblemData(problem);
    ReadResult result;
    FileNumbers numbers;
    try {
        result = readProblem(problem, text, "fuzz.dat", nullptr, &numbers);
    } catch (const RuntimeError& error) {
        require(error.number() == 5 || error.number() == 9, "run-time error 5 or 9");
        return 0;
    }
    require(result.complete == result.title.empty(), "one message unless complete");
    require(result.complete == result.text.empty(), "with its text");
    if (result.complete) {
        requireRoundTrip(problem);
        requireConversion(text, numbers);
    }
    return 0;
}
