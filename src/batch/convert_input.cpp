#include "batch/convert_input.h"

#include "batch/solve_input.h"
#include "problem/unit_conversion.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "runtime/utf8_text.h"

#include <ostream>

namespace korvane::batch {

namespace {

int convert(const Job& job, UnitSystem to, std::ostream& out, std::ostream& err) {
    const std::string name = job.inputPath.string();
    const std::string text = readInputFile(name);
    Problem problem;
    clearProblemData(problem);
    FileNumbers numbers;
    InputFault place;
    const ReadResult result = readProblem(problem, text, name, &place, &numbers);
    if (!result.complete) {
        err << messageLine(job.input, {.box = {.text = result.text, .title = result.title},
                                       .place = faultText(place)})
            << "\n";
        return StatusFailed;
    }
    const std::string converted = convertedInput(text, numbers, to);
    if (job.reportPath.empty()) {
        out << converted << std::flush;
    } else {
        PendingFile(job.reportPath, converted, Flush::None).place();
    }
    if (numbers.units != to) {
        for (const IgnoredNumbers& ignored : ignoredNumbers(text, numbers)) {
            err << messageText(job.input) << ":" << ignored.line
                << ": ignored, hence not converted: " << messageText(ignored.text) << "\n";
        }
    }
    return out ? StatusSolved : StatusFailed;
}

} // namespace

int convertInput(const Job& job, UnitSystem to, std::ostream& out, std::ostream& err) {
    int status = StatusFailed;
    const auto fault = runGuarded([&] { status = convert(job, to, out, err); });
    if (!fault) {
        return status;
    }
    MessageBox box{.text = runtimeErrorMessage(fault->number())};
    if (fault->isFileFault()) {
        box = {.text = "File: " + fault->fileName() + "\n" + fault->what(), .title = "FILE ERROR"};
    }
    err << messageLine(job.input, {box}) << "\n";
    return fault->isFileFault() ? StatusFailed : StatusError;
}

} // namespace korvane::batch
