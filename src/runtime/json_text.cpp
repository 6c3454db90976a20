#include "runtime/json_text.h"

#include "runtime/number_format.h"

#include <cmath>

namespace korvane {

void JsonText::startLine() {
    text_ += '\n';
    text_.append(depth_, ' ');
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
    const std::size_t start = text_.size();
    appendShortest(text_, number);
    if (text_.find_first_of(".e", start) == std::string::npos) {
        text_ += ".0";
    }
}

void JsonText::value(int number) {
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
    constexpr std::string_view hexDigits = "0123456789abcdef";
    constexpr std::string_view shortNames = "btn-fr"; // of 8 to 13; 11 has none
    text_ += '"';
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            (text_ += '\\') += c;
        } else if (code >= 0x20) {
            text_ += c;
        } else if (code >= 8 && code <= 13 && code != 11) {
            (text_ += '\\') += shortNames[code - 8U];
        } else {
            text_ += "\\u00";
            text_ += hexDigits[code / 16U];
            text_ += hexDigits[code % 16U];
        }
    }
    text_ += '"';
}

} // namespace korvane
