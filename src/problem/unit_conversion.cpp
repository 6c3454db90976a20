#include "problem/unit_conversion.h"

#include "problem/fields.h"
#include "runtime/number_text.h"
#include "runtime/utf8_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace korvane {

namespace {

constexpr int UsDigits = 15;

/// The fewest significant digits that give a value.
int digitsOf(double value) {
    int digits = 1;
    while (digits < UsDigits && roundedTo(value, digits) != value) {
        ++digits;
    }
    return digits;
}

/// Each number of the record that a field names, through `told`. What the counts leave unused goes
/// with it: nobody reads it.
template <class Told>
Problem withNumbers(const Problem& problem, Told told) {
    Problem result = problem;
    for (const FieldGroup& group : fieldGroups()) {
        const int first = static_cast<int>(group.first);
        for (int place = first; place <= static_cast<int>(group.last); ++place) {
            const FieldRules& rules = rulesOf(static_cast<ProblemField>(place));
            for (int side = 1; side <= group.sides; ++side) {
                for (int row = 1; row <= group.rows(problem, side); ++row) {
                    double& value = rules.at(result, side, row);
                    value = told(rules.quantity, value);
                }
            }
        }
    }
    return result;
}

/// Whether a number comes back as typed, or is held as if it had: 16.4041994750656 FT are 5 m, and
/// these are read as 16.4041994750656 FT.
bool comesBack(Quantity quantity, const std::string& typed, const std::string& told,
               UnitSystem from, UnitSystem to) {
    const auto held = [quantity](const std::string& text, UnitSystem units) {
        return roundedTo(fromUnits(quantity, numericValue(text), units), UsDigits);
    };
    const std::string back = convertedNumber(quantity, told, to, from);
    return held(typed, from) == held(told, to) ||
           (!back.empty() && numericValue(back) == numericValue(typed));
}

/// A line of a file, as `splitLines` cuts it.
struct Line {
    std::size_t start = 0;
    std::size_t length = 0;
    std::size_t endLength = 0; ///< of its line end: 0 to 2 bytes

    std::size_t end() const { return start + length; }
    std::size_t next() const { return end() + endLength; }
};

std::vector<Line> linesOf(std::string_view fileText) {
    std::vector<Line> lines;
    std::size_t start = fileText.starts_with(Utf8Mark) ? Utf8Mark.size() : 0;
    while (start < fileText.size()) {
        const std::size_t end = std::min(fileText.find_first_of("\r\n", start), fileText.size());
        const bool pair = fileText.substr(end, 2) == "\r\n";
        lines.push_back(
            {start, end - start, std::min<std::size_t>(pair ? 2 : 1, fileText.size() - end)});
        start = lines.back().next();
    }
    return lines;
}

/// The first line that is neither empty nor a comment, from 1.
std::size_t firstSignificant(std::string_view fileText, const std::vector<Line>& lines) {
    std::size_t first = 1;
    for (const Line& line : lines) {
        const std::string text = trimmed(fileText.substr(line.start, line.length));
        if (!text.empty() && text.front() != '(') {
            break;
        }
        ++first;
    }
    return first;
}

} // namespace

Problem problemInUnits(const Problem& problem, UnitSystem system) {
    return withNumbers(problem, [system](Quantity quantity, double value) {
        return inUnits(quantity, value, system);
    });
}

Problem problemForFile(const Problem& problem, UnitSystem system) {
    return withNumbers(problem, [system](Quantity quantity, double value) {
        const double told = inUnits(quantity, value, system);
        return told == value ? value : roundedTo(told, MetricDigits);
    });
}

std::string roundedText(double value, int digits) {
    return trimmed(generalForm(roundedTo(value, digits)));
}

std::string convertedNumber(Quantity quantity, std::string_view text, UnitSystem from,
                            UnitSystem to) {
    const double typed = numericValue(text);
    if (from == to || typed == 0 || siFactor(quantity) == 1) {
        return std::string(text);
    }
    const auto told = [quantity](double value, UnitSystem one, UnitSystem other) {
        return inUnits(quantity, fromUnits(quantity, value, one), other);
    };
    const double value = told(typed, from, to);
    if (!std::isfinite(value)) {
        return {};
    }
    if (to == UnitSystem::SI) {
        return roundedText(value, MetricDigits);
    }
    const int held = std::max(MetricDigits, digitsOf(typed));
    for (int digits = 1; digits < UsDigits; ++digits) {
        const double back = told(roundedTo(value, digits), to, from);
        if (roundedTo(back, held) == roundedTo(typed, held)) {
            return roundedText(value, digits);
        }
    }
    return roundedText(value, UsDigits);
}

std::string convertedInput(std::string_view fileText, const FileNumbers& read, UnitSystem to) {
    if (read.units == to) {
        return std::string(fileText);
    }
    const std::vector<Line> lines = linesOf(fileText);
    std::string text;
    std::size_t taken = 0; // bytes of the file
    const auto takeTo = [&](std::size_t place) {
        text += fileText.substr(taken, place - taken);
        taken = place;
    };
    const std::size_t unitsLine = read.unitsLine;
    const std::size_t first = unitsLine != 0 ? unitsLine : firstSignificant(fileText, lines);
    takeTo(lines.at(first - 1).start);
    if (to == UnitSystem::SI) {
        text += "UNITS SI";
        text += fileText.substr(lines.at(first - 1).end(), lines.at(first - 1).endLength);
    }
    if (unitsLine != 0) {
        taken = lines.at(unitsLine - 1).next();
    }
    for (const FileNumber& number : read.numbers) {
        takeTo(lines.at(number.line - 1).start + number.column);
        text +=
            convertedNumber(number.quantity, fileText.substr(taken, number.length), read.units, to);
        taken += number.length;
    }
    takeTo(fileText.size());
    return text;
}

std::vector<RoundedNumber> roundedNumbers(std::string_view fileText, const FileNumbers& read,
                                          UnitSystem to) {
    const std::vector<Line> lines = linesOf(fileText);
    std::vector<RoundedNumber> rounded;
    for (const FileNumber& number : read.numbers) {
        const std::string text(
            fileText.substr(lines.at(number.line - 1).start + number.column, number.length));
        const std::string told = convertedNumber(number.quantity, text, read.units, to);
        if (told.empty() || !comesBack(number.quantity, text, told, read.units, to)) {
            rounded.push_back({number.line, text, told});
        }
    }
    return rounded;
}

std::vector<IgnoredNumbers> ignoredNumbers(std::string_view fileText, const FileNumbers& read) {
    const std::vector<Line> lines = linesOf(fileText);
    std::vector<IgnoredNumbers> ignored;
    for (std::size_t n = 0; n < read.numbers.size(); ++n) {
        const FileNumber& last = read.numbers[n];
        if (n + 1 < read.numbers.size() && read.numbers[n + 1].line == last.line) {
            continue;
        }
        const Line& line = lines.at(last.line - 1);
        const std::size_t from = last.column + last.length;
        const std::string_view rest = fileText.substr(line.start + from, line.length - from);
        std::size_t start = rest.find_first_not_of(' ');
        while (start != std::string_view::npos) {
            const std::size_t blank = std::min(rest.find(' ', start), rest.size());
            if (isNumeric(rest.substr(start, blank - start))) {
                ignored.push_back({last.line, trimmed(rest.substr(start))});
                break;
            }
            start = rest.find_first_not_of(' ', blank);
        }
    }
    return ignored;
}

} // namespace korvane
