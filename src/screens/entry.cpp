#include "screens/entry.h"

#include "runtime/number_text.h"

#include <cmath>

namespace korvane {

namespace {

/// Limits that hang on no other number.
std::string wordsOf(const Limits& limits) {
    const auto text = [](double limit) { return trimmed(generalForm(limit)); };
    if (!std::isfinite(limits.low)) {
        return "any number";
    }
    if (std::isfinite(limits.high)) {
        return text(limits.low) + " to " + text(limits.high);
    }
    return (limits.lowOpen ? "above " : "not below ") + text(limits.low);
}

} // namespace

Fault readEntry(const std::string& text, const Column& column, Problem& problem, int side,
                int row) {
    double value = 0;
    if (text.empty()) {
        if (column.ifEmpty != IfEmpty::Zero) {
            return column.ifEmpty == IfEmpty::Missing ? Fault::Missing : Fault::Invalid;
        }
    } else if (isNumeric(text)) {
        value = numericValue(text);
    } else {
        return Fault::Invalid;
    }
    if (!limitsOf(column.field, ByScreen, problem, side, row).hold(value)) {
        return Fault::Invalid;
    }
    rulesOf(column.field).at(problem, side, row) = value;
    return Fault::None;
}

std::string limitWords(const Column& column) {
    std::string words =
        column.limits != nullptr ? column.limits : wordsOf(limitsOf(column.field, ByScreen, {}));
    if (column.emptyWords != nullptr) {
        words += std::string("; ") + column.emptyWords;
    } else if (column.ifEmpty == IfEmpty::Zero) {
        words += "; empty means 0";
    }
    return words;
}

MessageBox okCancelBox(const std::string& title, const std::string& text) {
    return {.text = text,
            .title = title,
            .buttons = Buttons::OkCancel,
            .icon = Icon::Exclamation,
            .cancelDeletes = true};
}

} // namespace korvane
