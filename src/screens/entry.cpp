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
    if (!limitsOf(column.field, ByScreen, problem, side, row).hold(value)) {
        return Fault::Invalid;
    }
    rulesOf(column.field).at(problem, side, row) = value;
    return Fault::None;
}

MessageBox okCancelBox(const std::string& title, const std::string& text) {
    return {.text = text, .title = title, .buttons = Buttons::OkCancel, .icon = Icon::Exclamation};
}

} // namespace korvane
