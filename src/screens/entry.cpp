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
    if (!column.test({problem, side, row, value})) {
        return Fault::Invalid;
    }
    column.number(problem, side, row) = value;
    return Fault::None;
}

MessageBox okCancelBox(const std::string& title, const std::string& text) {
    return {.text = text, .title = title, .buttons = Buttons::OkCancel, .icon = Icon::Exclamation};
}

} // namespace korvane
