#include "runtime/json_text.h"

#include "runtime/number_format.h"

#include <algorithm>
#include <cmath>

namespace korvane {

void JsonText::startLine() {
    constexpr std::string_view lineStart = "\n            "; // deep enough for most
    if (depth_ < lineStart.size()) {
        text_ += lineStart.substr(0, depth_ + 1);
    } else {
        text_ += '\n';
        text_.append(depth_, ' ');
    }
}

void JsonText::startEntry() {
    if (named_) {
        named_ = false;
        return;
    }
    if (!first_) {
        text_ += ',';
    }
    if (depth_ > 0) {
        startLine();
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
        startLine();
    }
    text_ += bracket;
    first_ = false;
}

JsonText& JsonText::member(std::string_view name) {
    startEntry();
    quoted(name);
    text_ += ": ";
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
    const auto isSpecial = [](char c) {
        return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20;
    };
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
