#include "problem/input_lines.h"

#include "runtime/number_text.h"
#include "runtime/runtime_error.h"

#include <algorithm>

namespace korvane {

namespace {

/// Cuts the current line, which starts with a token and ends with one blank, at its blanks.
/// Nothing but the blank parts tokens: tabs and commas belong to them.
void findTokens(InputLines& input) {
    auto& InputLine = input.InputLine;
    auto& TokenPos = input.TokenPos;
    auto& TokenCount = input.TokenCount;

    std::size_t start = 0;
    while (start != std::string::npos && TokenCount < MaxTokens) {
        const std::size_t blank = InputLine.find(' ', start);
        ++TokenCount;
        TokenPos(1, TokenCount) = start + 1;
        TokenPos(2, TokenCount) = blank;
        start = InputLine.find_first_not_of(' ', blank);
    }
}

} // namespace

bool NextInputLine(InputLines& input) {
    input.TokenPos.fill(0);
    input.TokenCount = 0;
    input.TokensTaken = 0;
    while (input.linesRead < input.lines.size()) {
        const std::string& whole = input.lines[input.linesRead++];
        const std::string line = trimmed(whole);
        if (!line.empty() && line.front() != '(') {
            input.indent = whole.find(line);
            input.InputLine = upperCase(line) + ' ';
            findTokens(input);
            return true;
        }
    }
    return false;
}

bool hasToken(const InputLines& input, int token) {
    return input.TokenPos(1, token) != 0;
}

std::string_view takeToken(const InputLines& input, int token) {
    if (!hasToken(input, token)) {
        throw RuntimeError(5);
    }
    input.TokensTaken = std::max(input.TokensTaken, token);
    const std::size_t start = input.TokenPos(1, token);
    return std::string_view(input.InputLine)
        .substr(start - 1, input.TokenPos(2, token) - start + 1);
}

} // namespace korvane
