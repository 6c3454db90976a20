// The command line of the desktop program.
#pragma once

#include <string>

namespace korvane {

/// What the words behind the program's name ask for.
struct CommandLine {
    std::string file = {};   ///< input file to open at the start, as given; empty for none
    std::string answer = {}; ///< to be printed instead of a start: help, version or what is wrong
    bool refused = false;    ///< the answer tells a fault of the usage
};

/// The answer to --help or --version, wherever it stands; nothing of that kind else. It needs no
/// display, so that it is asked for before the toolkit starts.
CommandLine answerAlone(int argc, const char* const* argv);

/// Reads `korvane [FILE]`. A word "--" ends the options, "-" alone is a file's name.
CommandLine readCommandLine(int argc, const char* const* argv);

} // namespace korvane
