#include "verification/case_file.h"

#include "problem/problem.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"
#include "runtime/run_guarded.h"
#include "state/failure.h"
#include "verification/quantities.h"

#include <cmath>
#include <sstream>
#include <string_view>

namespace korvane {

namespace {

/// The texts around the first `mark`; false where there is none.
bool cut(std::string_view text, std::string_view mark, std::string_view& before,
         std::string_view& behind) {
    const std::size_t at = text.find(mark);
    if (at == std::string_view::npos) {
        return false;
    }
    before = text.substr(0, at);
    behind = text.substr(at + mark.size());
    return true;
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

/// The value of an argument; nothing where the word is none of its kind.
std::optional<double> argumentOf(char kind, const std::string& word) {
    const auto oneOf = [&](const char* first, double itsValue, const char* second,
                           double otherValue) -> std::optional<double> {
        if (word == first) {
            return itsValue;
        }
        return word == second ? std::optional(otherValue) : std::nullopt;
    };
    switch (kind) {
    case 'S':
        return oneOf("right", Right, "left", Left);
    case 'F':
        return oneOf("fixed", 1, "simple", 0);
    case 'L':
        return oneOf("1", 1, "2", 2);
    default:
        return isNumeric(word) ? std::optional(numericValue(word)) : std::nullopt;
    }
}

/// Fills the quantity of a check; what is wrong with it, "" nothing.
std::string readQuantity(std::string_view text, CaseCheck& check) {
    const std::vector<std::string> words = wordsOf(text);
    check.quantity = words.empty() ? nullptr : quantityNamed(words[0]);
    if (check.quantity == nullptr) {
        return "unknown quantity: " + trimmed(text);
    }
    const std::string_view kinds = check.quantity->arguments;
    if (words.size() != kinds.size() + 1) {
        return words[0] + " takes " + std::to_string(kinds.size()) + " arguments, here are " +
               std::to_string(words.size() - 1);
    }
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const std::string& word = words[i + 1];
        const auto value = argumentOf(kinds[i], word);
        if (!value) {
            return "'" + word + "' is no argument " + std::to_string(i + 1) + " of " + words[0];
        }
        check.arguments.push_back(*value);
    }
    check.text = trimmed(text);
    return {};
}

/// QUANTITY = VALUE UNIT within TOLERANCE [%] because REASON
std::string readCheck(std::string_view text, CaseCheck& check) {
    std::string_view quantity;
    std::string_view figure;
    std::string_view tolerance;
    std::string_view reason;
    if (!cut(text, " = ", quantity, figure) || !cut(figure, " within ", figure, tolerance) ||
        !cut(tolerance, " because ", tolerance, reason)) {
        return "a check needs ' = ', ' within ' and ' because '";
    }
    if (std::string fault = readQuantity(quantity, check); !fault.empty()) {
        return fault;
    }
    const std::vector<std::string> value = wordsOf(figure);
    if (value.empty() || value.size() > 2 || !isNumeric(value[0])) {
        return "'" + trimmed(figure) + "' is no number with a unit";
    }
    const std::vector<std::string> allowed = wordsOf(tolerance);
    const bool percent = allowed.size() == 2 && allowed[1] == "%";
    if (allowed.empty() || allowed.size() > (percent ? 2U : 1U) || !isNumeric(allowed[0]) ||
        numericValue(allowed[0]) < 0) {
        return "'" + trimmed(tolerance) + "' is no tolerance";
    }
    check.published = value[0];
    check.value = numericValue(value[0]);
    check.unit = value.size() == 2 ? value[1] : "";
    check.tolerance = numericValue(allowed[0]) * (percent ? std::fabs(check.value) / 100 : 1);
    check.reason = trimmed(reason);
    return {};
}

bool isFailureName(const std::string& name) {
    for (int code = 1; code < FailureCodeCount; ++code) {
        if (name == failureName(static_cast<FailureCode>(code))) {
            return true;
        }
    }
    return false;
}

/// Takes a line of a case file; what is wrong with it, "" nothing.
std::string readLine(VerificationCase& result, const std::string& keyword, const std::string& value,
                     int line) {
    if (keyword == "title") {
        result.title = value;
    } else if (keyword == "source") {
        result.source = value;
    } else if (keyword == "note") {
        result.notes.push_back(value);
    } else if (keyword == "left-out") {
        result.leftOut.push_back(value);
    } else if (keyword == "input") {
        result.input = value;
        result.inputLine = line;
    } else if (keyword == "wedge") {
        result.fixedSurface = value == "fixed";
        return value == "fixed" || value == "sweep" ? "" : "wedge must be sweep or fixed";
    } else if (keyword == "fails") {
        result.fails = value;
        return isFailureName(value) ? "" : "no code of a failure: " + value;
    } else if (keyword == "check") {
        CaseCheck check;
        check.line = line;
        std::string fault = readCheck(value, check);
        result.checks.push_back(std::move(check));
        return fault;
    } else {
        return "unknown keyword: " + keyword;
    }
    return {};
}

/// What the file lacks as a whole.
std::string missingIn(const VerificationCase& wanted) {
    if (wanted.title.empty() || wanted.source.empty()) {
        return "a case needs a title and a source";
    }
    if (wanted.checks.empty() && wanted.fails.empty()) {
        return "nothing to check";
    }
    bool needsWall = !wanted.fails.empty();
    for (const CaseCheck& check : wanted.checks) {
        needsWall = needsWall || check.quantity->ofWall;
    }
    return needsWall && wanted.input.empty() ? "its wall is missing (input)" : "";
}

} // namespace

std::string faultLine(const CaseFault& fault) {
    return fault.file.string() + (fault.line > 0 ? ":" + std::to_string(fault.line) : "") + ": " +
           fault.text;
}

std::optional<CaseFault> readCase(const std::filesystem::path& file, VerificationCase& result) {
    result.name = file.stem().string();
    result.file = file;
    std::string text;
    if (const auto fault = runGuarded([&] { text = readInputFile(file); })) {
        return CaseFault{file, 0, fault->what()};
    }
    int number = 0;
    for (const std::string& line : splitLines(text)) {
        ++number;
        if (trimmed(line).empty() || line[0] == '#') {
            continue;
        }
        std::string_view keyword;
        std::string_view value;
        if (!cut(line, ": ", keyword, value)) {
            return CaseFault{file, number, "no keyword with ': ' in the line"};
        }
        const std::string wrong = readLine(result, std::string(keyword), trimmed(value), number);
        if (!wrong.empty()) {
            return CaseFault{file, number, wrong};
        }
    }
    const std::string missing = missingIn(result);
    return missing.empty() ? std::nullopt : std::optional(CaseFault{file, 0, missing});
}

} // namespace korvane
