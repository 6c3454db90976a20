#include "runtime/print_lines.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace korvane {

namespace {

constexpr std::size_t zoneWidth = 14;

} // namespace

void PrintLines::reach(std::size_t size) {
    if (size > line_.size()) {
        line_.resize(2 * size, ' ');
    }
    used_ = size;
}

PrintLines& PrintLines::spc(int n) {
    reach(used_ + static_cast<std::size_t>(std::max(n, 0)));
    return *this;
}

PrintLines& PrintLines::tab(int column) {
    const auto before = static_cast<std::size_t>(std::max(column, 1) - 1);
    if (used_ > before) {
        end();
    }
    reach(before);
    return *this;
}

PrintLines& PrintLines::zone() {
    reach((used_ / zoneWidth + 1) * zoneWidth);
    return *this;
}

PrintLines& PrintLines::text(std::string_view piece) {
    const std::size_t start = used_;
    reach(start + piece.size());
    piece.copy(line_.data() + start, piece.size());
    return *this;
}

PrintLines& PrintLines::number(double value) {
    return text(generalForm(value)).spc(1);
}

PrintLines& PrintLines::right(int column, std::string_view piece) {
    return tab(column - static_cast<int>(piece.size())).text(piece);
}

PrintLines& PrintLines::right(int column, std::string_view mark, double value,
                              NumberFormat format) {
    const auto start = used_;
    const auto before = static_cast<std::size_t>(std::max(column, 1) - 1);
    if (before > start) {
        reach(before);
        const std::span<char> room(line_.data() + start, before - start);
        if (!putNumberLast(room, mark, value, format).empty()) {
            return *this;
        }
        used_ = start;
    }
    const std::string number = formatNumber(value, format);
    return tab(column - static_cast<int>(mark.size() + number.size())).text(mark).text(number);
}

PrintLines& PrintLines::end() {
    content_.append(line_, 0, used_) += '\n';
    std::fill_n(line_.begin(), used_, ' ');
    used_ = 0;
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
