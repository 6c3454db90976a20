#include "runtime/utf8_text.h"

#include <cstddef>

namespace korvane {

namespace {

/// Bytes of the UTF-8 character at the head of a text that is not empty; 0 where there is none.
/// Overlong forms, surrogates and values beyond U+10FFFF are none.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    std::size_t length = 0;
    unsigned lowest = 0x80; // of the second byte
    unsigned highest = 0xBF;
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3;
        lowest = first == 0xE0 ? 0xA0 : lowest;
        highest = first == 0xED ? 0x9F : highest;
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        lowest = first == 0xF0 ? 0x90 : lowest;
        highest = first == 0xF4 ? 0x8F : highest;
    }
    if (length == 0 || text.size() < length || byte(1) < lowest || byte(1) > highest) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (byte(i) < 0x80 || byte(i) > 0xBF) {
            return 0;
        }
    }
    return length;
}

} // namespace

std::string utf8Text(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length > 0) {
            text += bytes.substr(0, length);
            bytes.remove_prefix(length);
            continue;
        }
        const auto value = static_cast<unsigned char>(bytes.front()); // 0x80 to 0xFF
        text += static_cast<char>(0xC0 | (value >> 6));
        text += static_cast<char>(0x80 | (value & 0x3F));
        bytes.remove_prefix(1);
    }
    return text;
}

} // namespace korvane
