// The verification as a table of text.
#include "verification/verification.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace korvane {

namespace {

/// Shortest of so many significant digits, with an exponent where the number is very large or
/// small.
std::string significant(double value, int digits) {
    std::array<char, 32> text{};
    const auto [end, failure] = std::to_chars(text.data(), text.data() + text.size(), value,
                                              std::chars_format::general, digits);
    return {text.data(), end};
}

/// Columns of a row behind its indentation; texts stand at the left, numbers at the right end.
constexpr std::size_t quantityWidth = 30;
constexpr std::size_t numberWidth = 11;

std::string left(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string right(const std::string& text) {
    return std::string(text.size() < numberWidth ? numberWidth - text.size() : 0, ' ') + text;
}

/// A long quantity has a line of its own.
std::string quantityColumn(const std::string& text) {
    return "  " + text +
           (text.size() <= quantityWidth ? std::string(quantityWidth - text.size(), ' ')
                                         : "\n  " + std::string(quantityWidth, ' '));
}

std::string row(const VerifiedFigure& figure) {
    const std::string numbers =
        figure.publishedValue
            ? right(figure.published) + right(figure.ours) + right(differenceText(figure)) +
                  right(toleranceText(figure))
            : left(figure.published, 2 * numberWidth) + left(figure.ours, 2 * numberWidth);
    return quantityColumn(figure.quantityWithUnit()) + numbers +
           (figure.pass ? " pass\n" : " FAIL\n");
}

void addCase(std::string& table, const VerifiedCase& verified) {
    table += "\n" + verified.wanted.name + ": " + verified.wanted.source + "\n";
    for (const VerifiedFigure& figure : verified.figures) {
        table += row(figure);
    }
}

} // namespace

std::string sixDigits(double value) {
    return significant(value, 6);
}

std::string differenceText(const VerifiedFigure& figure) {
    if (!figure.publishedValue || !figure.ourValue) {
        return {};
    }
    constexpr double roundingOfSums = 1e-12;
    const double difference = *figure.ourValue - *figure.publishedValue;
    const bool rounding =
        std::fabs(difference) <= roundingOfSums * std::fabs(*figure.publishedValue);
    return significant(rounding ? 0 : difference, 2);
}

std::string toleranceText(const VerifiedFigure& figure) {
    return figure.publishedValue ? significant(figure.tolerance, 3) : std::string();
}

std::string verificationTable(const Verification& verification) {
    std::string table = "Case: source\n" + quantityColumn("Quantity") + right("Published") +
                        right("Ours") + right("Difference") + right("Tolerance") + " Result\n";
    for (const VerifiedCase& verified : verification.cases) {
        addCase(table, verified);
    }
    return table + "\n" + verificationOutcome(verification) + ".\n";
}

std::string verificationOutcome(const Verification& verification) {
    const std::string damaged =
        verification.faults.size() == 1
            ? "; 1 case file is damaged"
            : "; " + std::to_string(verification.faults.size()) + " case files are damaged";
    return std::to_string(verification.passCount()) + " of " +
           std::to_string(verification.figureCount()) + " figures hold" +
           (verification.faults.empty() ? "" : damaged);
}

std::string verificationMessages(const Verification& verification) {
    std::string lines;
    for (const VerifiedCase& verified : verification.cases) {
        if (!verified.failure.empty()) {
            lines += verified.wanted.name + ": no solution: " + verified.failure + "\n";
        }
    }
    for (const CaseFault& fault : verification.faults) {
        lines += faultLine(fault) + "\n";
    }
    return lines;
}

std::string noCasesText() {
    std::string text = "The verification finds no cases; they were looked for in:";
    for (const std::filesystem::path& folder : caseFolders()) {
        text += " " + folder.string();
    }
    return text;
}

} // namespace korvane
