#include "shell/command_line.h"

#include "runtime/utf8_text.h"

#include <string_view>

namespace korvane {

namespace {

constexpr const char* Version = "KORVANE " KORVANE_VERSION ", " KORVANE_VERSION_DATE "\n";

constexpr const char* Usage = "Usage: korvane [FILE]\n"
                              "\n"
                              "Design and analysis of anchored and cantilever sheet-pile walls.\n"
                              "\n"
                              "  FILE        input file to open at the start\n"
                              "  --help      show this text\n"
                              "  --version   show the version\n"
                              "\n"
                              "korvane-batch solves input files without windows.\n";

CommandLine refusal(const std::string& reason) {
    return {.answer = "korvane: " + reason + "\nTry 'korvane --help'.\n", .refused = true};
}

} // namespace

CommandLine answerAlone(int argc, const char* const* argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == "--") {
            break;
        }
        if (word == "--help" || word == "-h") {
            return {.answer = Usage};
        }
        if (word == "--version") {
            return {.answer = Version};
        }
    }
    return {};
}

CommandLine readCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    bool options = true;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (options && word == "--") {
            options = false;
        } else if (options && word.size() > 1 && word.front() == '-') {
            return refusal("unknown option " + messageText(word));
        } else if (word.empty()) {
            return refusal("the file has no name");
        } else if (!line.file.empty()) {
            return refusal("one file at a time");
        } else {
            line.file = word;
        }
    }
    return line;
}

} // namespace korvane
