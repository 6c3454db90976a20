#include "runtime/json_text.h"

#include "runtime/number_format.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace korvane {

namespace {

constexpr std::string_view deepest = ",\n            "; ///< deep enough for most

bool isSpecial(char c) {
    return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20;
}

} // namespace

/// A new line behind a comma, if there is one.
void JsonText::startLine(bool comma) {
    if (depth_ + 2 <= deepest.size()) {
        text_ += deepest.substr(comma ? 0 : 1, depth_ + (comma ? 2 : 1));
    } else {
        text_ += comma ? ",\n" : "\n";
        text_.append(depth_, ' ');
    }
}

void JsonText::startEntry() {
    if (named_) {
        named_ = false;
        return;
    }
    if (depth_ > 0) {
        startLine(!first_);
    }
    first_ = false;
}

void JsonText::open(char bracket) {
    startEntry();
    text_ += bracket;
    ++depth_;
    first_ = true;
}

void JsonText::close(char bracket) {
    --depth_;
    if (!first_) {
        startLine(false);
    }
    text_ += bracket;
    first_ = false;
}

JsonText& JsonText::member(std::string_view name) {
    constexpr std::size_t room = 64;
    if (depth_ == 0 || depth_ + 2 > deepest.size() || deepest.size() + name.size() + 4 > room ||
        std::any_of(name.begin(), name.end(), isSpecial)) {
        startEntry();
        quoted(name);
        text_ += ": ";
    } else {                         // as a whole
        std::array<char, room> line; // uninitialised: only what is put is read
        char* end = line.data();
        const auto put = [&end](std::string_view piece) {
            end = std::copy(piece.begin(), piece.end(), end);
        };
        put(deepest.substr(first_ ? 1 : 0, depth_ + (first_ ? 1 : 2)));
        put("\"");
        put(name);
        put("\": ");
        text_.append(line.data(), end);
        first_ = false;
    }
    named_ = true;
    return *this;
}

void JsonText::value(double number) {
    if (!std::isfinite(number)) {
        value(nullptr);
        return;
    }
    startEntry();
    appendShortest(text_, number);
    if (std::trunc(number) == number && std::fabs(number) < 1e15) { // no exponent either
        text_ += ".0";
    }
}

void JsonText::value(long long number) {
    startEntry();
    text_ += std::to_string(number);
}

void JsonText::truth(bool isTrue) {
    startEntry();
    text_ += isTrue ? "true" : "false";
}

void JsonText::value(std::string_view text) {
    startEntry();
    quoted(text);
}

void JsonText::value(std::nullptr_t) {
    startEntry();
    text_ += "null";
}

void JsonText::quoted(std::string_view text) {
    text_ += '"';
    auto rest = text.begin();
    auto special = std::find_if(rest, text.end(), isSpecial);
    for (; special != text.end(); special = std::find_if(rest, text.end(), isSpecial)) {
        text_.append(rest, special);
        escape(*special);
        rest = special + 1;
    }
    text_.append(rest, text.end());
    text_ += '"';
}

void JsonText::escape(char c) {
    constexpr std::string_view hexDigits = "0123456789abcdef";
    constexpr std::string_view shortNames = "btn-fr"; // of 8 to 13; 11 has none
    const auto code = static_cast<unsigned char>(c);
    text_ += '\\';
    if (code >= 0x20) {
        text_ += c;
    } else if (code >= 8 && code <= 13 && code != 11) {
        text_ += shortNames[code - 8U];
    } else {
        text_ += "u00";
        text_ += hexDigits[code / 16U];
        text_ += hexDigits[code % 16U];
    }
}

} // namespace korvane
