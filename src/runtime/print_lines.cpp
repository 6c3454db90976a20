#include "runtime/print_lines.h"

#include <algorithm>
#include <cstddef>

namespace korvane {

namespace {

constexpr std::size_t zoneWidth = 14;

} // namespace

PrintLines& PrintLines::spc(int n) {
    line_.append(static_cast<std::size_t>(std::max(n, 0)), ' ');
    return *this;
}

PrintLines& PrintLines::tab(int column) {
    const auto before = static_cast<std::size_t>(std::max(column, 1) - 1);
    if (line_.size() > before) {
        end();
    }
    line_.append(before - line_.size(), ' ');
    return *this;
}

PrintLines& PrintLines::zone() {
    line_.resize((line_.size() / zoneWidth + 1) * zoneWidth, ' ');
    return *this;
}

PrintLines& PrintLines::text(std::string_view piece) {
    line_ += piece;
    return *this;
}

PrintLines& PrintLines::number(double value) {
    appendGeneralForm(line_, value);
    line_ += ' ';
    return *this;
}

PrintLines& PrintLines::right(int column, std::string_view piece) {
    return tab(column - static_cast<int>(piece.size())).text(piece);
}

PrintLines& PrintLines::right(int column, std::string_view mark, double value,
                              NumberFormat format) {
    const auto width = static_cast<int>(mark.size() + number_.of(value, format).size());
    const auto before = static_cast<std::size_t>(std::max(column - width, 1) - 1);
    if (line_.size() > before) {
        end();
    }
    line_ += number_.led(before - line_.size(), mark);
    return *this;
}

PrintLines& PrintLines::end() {
    content_ += line_;
    content_ += '\n';
    line_.clear();
    ++lineCount_;
    return *this;
}

PrintLines& PrintLines::line(int blanks, std::string_view piece) {
    return spc(blanks).text(piece).end();
}

PrintLines& PrintLines::empty(int n) {
    for (int i = 0; i < n; ++i) {
        end();
    }
    return *this;
}

} // namespace korvane
