#include "batch/convert_input.h"

#include "batch/solve_input.h"
#include "commands/told_boxes.h"
#include "problem/unit_conversion.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "runtime/utf8_text.h"

#include <ostream>

namespace korvane::batch {

namespace {

/// A line on a line of the input.
void tellLine(std::ostream& err, const Job& job, std::size_t line, const std::string& what,
              const std::string& text) {
    err << messageText(job.input) << ":" << line << ": " << what << ": " << messageText(text)
        << "\n";
}

/// Tells numbers that the other units do not give back; false where they have none at all for one.
bool tellRounded(const Job& job, const std::vector<RoundedNumber>& rounded, std::ostream& err) {
    bool held = true;
    for (const RoundedNumber& number : rounded) {
        if (number.told.empty()) {
            tellLine(err, job, number.line, "too large for the other units", number.text);
            held = false;
        } else {
            tellLine(err, job, number.line, "rounded", number.text + " is " + number.told);
        }
    }
    return held;
}

/// Rounding may make two numbers one where the second must be larger.
bool canBeRead(const Job& job, const std::string& converted, std::ostream& err) {
    Problem problem;
    clearProblemData(problem);
    InputFault place;
    const bool complete = readProblem(problem, converted, job.input, &place).complete;
    if (!complete) {
        err << messageText(job.input)
            << ": in the other units it would be refused: " << messageText(faultText(place))
            << "\n";
    }
    return complete;
}

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
    const bool changes = numbers.units != to;
    if (changes && !tellRounded(job, roundedNumbers(text, numbers, to), err)) {
        return StatusFailed;
    }
    const std::string converted = convertedInput(text, numbers, to);
    if (changes && !canBeRead(job, converted, err)) {
        return StatusFailed;
    }
    if (job.reportPath.empty()) {
        out << converted << std::flush;
    } else {
        PendingFile(job.reportPath, converted, Flush::None).place();
    }
    if (changes) {
        for (const IgnoredNumbers& ignored : ignoredNumbers(text, numbers)) {
            tellLine(err, job, ignored.line, "ignored, hence not converted", ignored.text);
        }
    }
    if (!out) {
        err << "korvane-batch: standard output cannot be written.\n";
    }
    return out ? StatusSolved : StatusFailed;
}

} // namespace

int convertInput(const Job& job, UnitSystem to, std::ostream& out, std::ostream& err) {
    int status = StatusFailed;
    const auto fault = runGuarded([&] { status = convert(job, to, out, err); });
    printFilesLeft("korvane-batch");
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
