#include "commands/told_boxes.h"

#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "runtime/utf8_text.h"

#include <cstdio>
#include <vector>

namespace korvane {

bool goOnWithFile(Prompts& prompts, const std::string& name, std::size_t size) {
    constexpr std::size_t shortestInputFile = 75; // bytes of a file that may be complete
    return size >= shortestInputFile ||
           prompts.Ask({.text = "File: " + name +
                                " does not appear to be a complete input file.\n\n"
                                "Do you want to continue?",
                        .title = "INCOMPLETE INPUT FILE!",
                        .buttons = Buttons::YesNo,
                        .icon = Icon::Question}) == Answer::Yes;
}

bool tellReading(Prompts& prompts, const std::string& name, const ReadResult& result) {
    if (result.complete) {
        prompts.Ask({.text = "Input file processed: " + name + "\n\n     No errors detected.",
                     .title = "INPUT COMPLETE",
                     .icon = Icon::Information});
    } else {
        prompts.Ask({.text = result.text, .title = result.title, .icon = Icon::Exclamation});
    }
    return result.complete;
}

void tellFailure(Prompts& prompts, const Failure& failure) {
    if (hasBox(failure)) {
        prompts.Ask(failureBox(failure));
    }
}

void showFileError(Prompts& prompts, const RuntimeError& fault) {
    prompts.Ask(
        {.text = "File: " + fault.fileName() + "\n" + fault.what() + "\n\nYour data are kept.",
         .title = "FILE ERROR",
         .buttons = Buttons::Ok,
         .icon = Icon::Exclamation});
}

void tellFilesLeft(Prompts& prompts) {
    const std::vector<RuntimeError> left = takeFilesLeft();
    std::string text = "Temporary files could not be removed:";
    for (const RuntimeError& fault : left) {
        text += "\nFile: " + fault.fileName() + "\n" + fault.what();
    }
    if (!left.empty()) {
        prompts.Ask({.text = text, .title = "FILE ERROR", .icon = Icon::Exclamation});
    }
}

void printFilesLeft(const char* program) noexcept {
    for (const RuntimeError& fault : takeFilesLeft()) {
        runGuarded([&] {
            const std::string line = std::string(program) + ": a temporary file is left: " +
                                     messageText(fault.fileName()) + ": " + fault.what() + "\n";
            std::fputs(line.c_str(), stderr);
        });
    }
}

} // namespace korvane
