#include "screens/entry.h"

#include "runtime/number_text.h"

namespace korvane {

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
    if (!column.test.holds({problem, side, row, value})) {
        return Fault::Invalid;
    }
    column.number(problem, side, row) = value;
    return Fault::None;
}

std::string limitsOf(const Column& column) {
    std::string words = column.test.words;
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
