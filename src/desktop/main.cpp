// The desktop program.
#include "commands/commands.h"
#include "commands/told_boxes.h"
#include "runtime/dates.h"
#include "runtime/standard_streams.h"
#include "screens/screens.h"
#include "shell/command_line.h"
#include "shell/ending_signals.h"
#include "shell/program.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace {

constexpr int WrongUsage = 2;

int print(const korvane::CommandLine& line) {
    std::fputs(line.answer.c_str(), line.refused ? stderr : stdout);
    return line.refused ? WrongUsage : 0;
}

} // namespace

int main(int argc, char** argv) {
    if (!korvane::openStandardStreams()) {
        return EXIT_FAILURE;
    }
    if (korvane::wrongFixedMoment()) {
        std::fputs("korvane: SOURCE_DATE_EPOCH is no number of seconds and is ignored.\n", stderr);
    }
    if (const auto alone = korvane::answerAlone(argc, argv); !alone.answer.empty()) {
        return print(alone);
    }
    korvane::provideTempVariable();
    korvane::blockEndingSignals();
    QApplication application(argc, argv); // takes the toolkit's own options away
    const auto line = korvane::readCommandLine(argc, argv);
    if (!line.answer.empty()) {
        return print(line);
    }
    korvane::prepareApplication();
    constexpr int titleMilliseconds = 3000;
    std::error_code gone; // the current folder, perhaps: Open tells
    const auto file =
        line.file.empty() ? std::filesystem::path() : std::filesystem::absolute(line.file, gone);
    const int status =
        korvane::runProgram(korvane::dataScreens(), titleMilliseconds, file.string());
    korvane::printFilesLeft("korvane");
    return status;
}
