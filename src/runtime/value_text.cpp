#include "runtime/value_text.h"

#include "runtime/number_format.h"

#include <charconv>
#include <system_error>

namespace korvane {

void appendValue(std::string& text, double value) {
    appendShortest(text += ' ', value);
}
void appendValue(std::string& text, int value) {
    (text += ' ') += std::to_string(value);
}
void appendLine(std::string& text, std::string_view line) {
    for (const char c : line) {
        text += c == '\n' || c == '\r' ? ' ' : c;
    }
    text += '\n';
}

bool ValueReader::word(std::string_view expected) {
    sound_ = sound_ && rest_.substr(0, expected.size()) == expected;
    if (sound_) {
        rest_.remove_prefix(expected.size());
    }
    return sound_;
}

template <class Number>
bool ValueReader::number(Number& value) {
    if (!word(" ")) {
        return false;
    }
    const auto [stopped, fault] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    rest_.remove_prefix(static_cast<std::size_t>(stopped - rest_.data()));
    sound_ = fault == std::errc();
    return sound_;
}
bool ValueReader::value(double& value) {
    return number(value);
}
bool ValueReader::value(int& value) {
    return number(value);
}

bool ValueReader::line(std::string& line) {
    const std::size_t end = rest_.find('\n');
    sound_ = sound_ && end != std::string_view::npos;
    if (sound_) {
        line = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
    }
    return sound_;
}

} // namespace korvane
