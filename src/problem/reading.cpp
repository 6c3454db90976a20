#include "problem/reading.h"

#include "problem/unit_conversion.h"
#include "runtime/arithmetic.h"
#include "runtime/number_format.h"
#include "runtime/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace korvane {

namespace {

/// The current line as typed, its blanks at both ends taken off.
std::string typedLine(const Reading& reading) {
    return trimmed(reading.input.lines[reading.input.linesRead - 1]);
}

std::string typedWord(const Reading& reading, int token) {
    const std::size_t start = reading.input.TokenPos(1, token) - 1;
    return typedLine(reading).substr(start, reading.input.TokenPos(2, token) - start);
}

bool end(Reading& reading, std::string title, std::string text, InputFault fault) {
    reading.result = {false, std::move(title), std::move(text)};
    reading.fault = std::move(fault);
    reading.fault.line = std::max(1, static_cast<int>(reading.input.linesRead));
    return false;
}

/// The message of a faulty word or line.
bool refuse(Reading& reading, InputFault fault) {
    return end(reading, "DATA ERROR IN INPUT FILE: " + reading.InputFileName,
               "Error detected while attempting to process " + reading.SectionName +
                   "\nCurrent input line is:\n\n" + reading.input.InputLine +
                   "\n\nUnable to continue.",
               std::move(fault));
}

/// "0 to 45", "above 0", "above 0 and at most 10" in the file's units; "" where any number will do.
std::string limitsText(const Reading& reading, const Limits& limits, Quantity quantity) {
    const auto numberText = [&](double value) {
        return reading.units == UnitSystem::US
                   ? trimmed(generalForm(value))
                   : roundedText(inUnits(quantity, value, reading.units), MetricDigits);
    };
    const bool low = std::isfinite(limits.low);
    const bool high = std::isfinite(limits.high);
    if (low && high && !limits.lowOpen && !limits.highOpen) {
        return numberText(limits.low) + " to " + numberText(limits.high);
    }
    std::string text;
    if (low) {
        text = (limits.lowOpen ? "above " : "at least ") + numberText(limits.low);
    }
    if (high) {
        text += low ? " and " : "";
        text += (limits.highOpen ? "below " : "at most ") + numberText(limits.high);
    }
    return text;
}

/// "R, L or B".
std::string lettersText(std::string_view letters) {
    std::string text;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        text += i == 0 ? "" : i + 1 == letters.size() ? " or " : ", ";
        text += letters[i];
    }
    return "a word that begins with " + text;
}

/// The first word of a line is its keyword or a number; a heading line is one text.
void remarkOnWords(Reading& reading) {
    if (reading.input.TokenCount > std::max(reading.input.TokensTaken, 1) &&
        !beginsWith(reading, "'")) {
        remark(reading, ReadRemark::Kind::WordsIgnored);
    }
}

} // namespace

void remark(Reading& reading, ReadRemark::Kind kind, int side, int layer) {
    if (reading.remarks != nullptr) {
        reading.remarks->push_back({kind, side, layer, reading.input.InputLine});
    }
}

std::string faultText(const InputFault& fault) {
    const std::string read = fault.read.empty() ? "nothing" : '"' + fault.read + '"';
    return std::to_string(fault.line) + ": " + fault.field + ": read " + read + ", must be " +
           fault.needed;
}

bool refuseWord(Reading& reading, int token, const Place& place, const std::string& needed) {
    return refuse(reading, {.field = place.field,
                            .side = place.side,
                            .index = place.index,
                            .read = typedWord(reading, token),
                            .needed = needed});
}

bool refuseLine(Reading& reading, const std::string& needed, const std::string& field) {
    return refuse(reading, {.field = field.empty() ? reading.SectionName : field,
                            .read = typedLine(reading),
                            .needed = needed});
}

bool refuse(Reading& reading, const std::string& text, const std::string& needed,
            const std::string& field) {
    return end(reading, "INPUT DATA ERRORS", text,
               {.field = field, .read = typedLine(reading), .needed = needed});
}

bool refuseIncomplete(Reading& reading) {
    return end(reading, "INCOMPLETE INPUT FILE!",
               "File:  " + reading.InputFileName + "  is incomplete.\n\n     Unable to continue.",
               {.field = reading.SectionName.empty() ? "HeadingLines" : reading.SectionName,
                .needed = "followed by another line"});
}

bool nextLine(Reading& reading) {
    remarkOnWords(reading);
    return NextInputLine(reading.input) || refuseIncomplete(reading);
}

bool nextLine(Reading& reading, int needed) {
    return nextLine(reading) && needTokens(reading, needed);
}

bool needTokens(Reading& reading, int needed) {
    return hasToken(reading.input, needed) ||
           refuseLine(reading, "a line of at least " + std::to_string(needed) + " words");
}

bool beginsWith(const Reading& reading, std::string_view beginning) {
    return reading.input.InputLine.starts_with(beginning);
}

bool keyword(Reading& reading, std::string_view beginning) {
    return beginsWith(reading, beginning) ||
           refuseLine(reading, "a line that begins with " + std::string(beginning));
}

char firstLetter(const Reading& reading, int token) {
    return takeToken(reading.input, token).front();
}

char letterAmong(Reading& reading, int token, const Place& place, std::string_view letters) {
    const char letter = firstLetter(reading, token);
    if (letters.find(letter) == std::string_view::npos) {
        refuseWord(reading, token, place, lettersText(letters));
        return '\0';
    }
    return letter;
}

bool number(Reading& reading, int token, const Place& place, double& to, const Limits& limits) {
    const std::string_view text = takeToken(reading.input, token);
    const bool numeric = isNumeric(text);
    const double value = numeric ? fromUnits(place.quantity, numericValue(text), reading.units) : 0;
    if (!numeric || !std::isfinite(value)) {
        const std::string needed = limitsText(reading, limits, place.quantity);
        return refuseWord(reading, token, place,
                          std::string(numeric ? "a smaller number" : "a number") +
                              (needed.empty() ? "" : ", ") + needed);
    }
    if (reading.numbers != nullptr) {
        const InputLines& input = reading.input;
        reading.numbers->numbers.push_back({input.linesRead,
                                            input.indent + input.TokenPos(1, token) - 1,
                                            text.size(), place.quantity});
    }
    if (!limits.hold(value)) {
        return refuseWord(reading, token, place, limitsText(reading, limits, place.quantity));
    }
    to = value;
    return true;
}

bool number(Reading& reading, int token, ProblemField field, int side, int row) {
    const FieldRules& rules = rulesOf(field);
    const Place place{rules.name, rules.hasSides ? side : 0, rules.hasRows ? row : 0,
                      rules.quantity};
    return number(reading, token, place, rules.at(reading.problem, side, row),
                  limitsOf(field, ByReader, reading.problem, side, row));
}

bool optionalNumber(Reading& reading, int token, ProblemField field, int side, int row) {
    rulesOf(field).at(reading.problem, side, row) = 0;
    return !hasToken(reading.input, token) || number(reading, token, field, side, row);
}

bool count(Reading& reading, int token, ProblemCount which, int side) {
    const CountRules& rules = rulesOf(which);
    const Place place{rules.name, rules.sides == 2 ? side : 0};
    const std::string_view text = takeToken(reading.input, token);
    const int low = leastOf(which, ByReader);
    const int high = mostOf(which);
    const Limits limits = between(low, high);
    // The wide limits keep what no 16-bit integer holds away from the rounding.
    if (!isNumeric(text) || !between(low - 1.0, high + 1.0).hold(numericValue(text)) ||
        !limits.hold(nearestEven(numericValue(text)))) {
        return refuseWord(reading, token, place, limitsText(reading, limits, place.quantity));
    }
    rules.at(reading.problem, side) = nearestEven(numericValue(text));
    return true;
}

bool sideWord(Reading& reading, int token, ProblemCount which, bool rightFirst, SideWord& to) {
    const bool right = rulesOf(which).value(reading.problem, Right) != 0;
    const bool left = rulesOf(which).value(reading.problem, Left) != 0;
    std::string open; // letters of what may still be given
    open += right ? "" : "R";
    open += !left && (right || !rightFirst) ? "L" : "";
    open += !right && !left ? "B" : "";
    const char letter = firstLetter(reading, token);
    if (open.find(letter) == std::string::npos) {
        return refuseWord(reading, token, {"side"},
                          open.empty() ? "a side that is not given yet" : lettersText(open));
    }
    to = {letter == 'L' ? Left : Right, letter == 'B'};
    return true;
}

} // namespace korvane
