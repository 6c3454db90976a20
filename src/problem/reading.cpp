#include "problem/reading.h"

#include "runtime/arithmetic.h"
#include "runtime/number_text.h"

#include <utility>

namespace korvane {

namespace {

bool end(Reading& reading, std::string title, std::string text) {
    reading.result = {false, std::move(title), std::move(text)};
    return false;
}

} // namespace

bool refuse(Reading& reading) {
    return end(reading, "DATA ERROR IN INPUT FILE: " + reading.InputFileName,
               "Error detected while attempting to process " + reading.SectionName +
                   "\nCurrent input line is:\n\n" + reading.input.InputLine +
                   "\n\nUnable to continue.");
}

bool refuse(Reading& reading, const std::string& text) {
    return end(reading, "INPUT DATA ERRORS", text);
}

bool refuseIncomplete(Reading& reading) {
    return end(reading, "INCOMPLETE INPUT FILE!",
               "File:  " + reading.InputFileName + "  is incomplete.\n\n     Unable to continue.");
}

bool nextLine(Reading& reading) {
    return NextInputLine(reading.input) || refuseIncomplete(reading);
}

bool nextLine(Reading& reading, int needed) {
    return nextLine(reading) && needTokens(reading, needed);
}

bool needTokens(Reading& reading, int needed) {
    return hasToken(reading.input, needed) || refuse(reading);
}

bool beginsWith(const Reading& reading, std::string_view beginning) {
    return reading.input.InputLine.starts_with(beginning);
}

bool keyword(Reading& reading, std::string_view beginning) {
    return beginsWith(reading, beginning) || refuse(reading);
}

char firstLetter(const Reading& reading, int token) {
    return takeToken(reading.input, token).front();
}

char letterAmong(Reading& reading, int token, std::string_view letters) {
    const char letter = firstLetter(reading, token);
    if (letters.find(letter) == std::string_view::npos) {
        refuse(reading);
        return '\0';
    }
    return letter;
}

bool number(Reading& reading, int token, double& to, const Limits& limits) {
    const std::string_view text = takeToken(reading.input, token);
    if (!isNumeric(text)) {
        return refuse(reading);
    }
    const double value = numericValue(text);
    if (!limits.hold(value)) {
        return refuse(reading);
    }
    to = value;
    return true;
}

bool number(Reading& reading, int token, ProblemField field, int side, int row) {
    return number(reading, token, rulesOf(field).at(reading.problem, side, row),
                  limitsOf(field, ByReader, reading.problem, side, row));
}

bool optionalNumber(Reading& reading, int token, ProblemField field, int side, int row) {
    rulesOf(field).at(reading.problem, side, row) = 0;
    return !hasToken(reading.input, token) || number(reading, token, field, side, row);
}

bool count(Reading& reading, int token, ProblemCount which, int side) {
    const int low = leastOf(which, ByReader);
    const int high = mostOf(which);
    // The wide limits keep what no 16-bit integer holds away from the rounding.
    double value = 0;
    if (!number(reading, token, value, between(low - 1.0, high + 1.0))) {
        return false;
    }
    const int whole = nearestEven(value);
    if (whole < low || whole > high) {
        return refuse(reading);
    }
    rulesOf(which).at(reading.problem, side) = whole;
    return true;
}

bool sideWord(Reading& reading, int token, ProblemCount which, bool rightFirst, SideWord& to) {
    const bool right = rulesOf(which).value(reading.problem, Right) != 0;
    const bool left = rulesOf(which).value(reading.problem, Left) != 0;
    switch (firstLetter(reading, token)) {
    case 'R':
        to = {Right, false};
        return !right || refuse(reading);
    case 'L':
        to = {Left, false};
        return (!left && (right || !rightFirst)) || refuse(reading);
    case 'B':
        to = {Right, true};
        return (!right && !left) || refuse(reading);
    default:
        return refuse(reading);
    }
}

} // namespace korvane
