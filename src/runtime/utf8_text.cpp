#include "runtime/utf8_text.h"

#include <algorithm>
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

/// The value of a valid character.
unsigned valueOf(std::string_view character) {
    const auto first = static_cast<unsigned char>(character.front());
    if (character.size() == 1) {
        return first;
    }
    unsigned value = first & (0x7FU >> character.size());
    for (const char c : character.substr(1)) {
        value = value << 6 | (static_cast<unsigned char>(c) & 0x3FU);
    }
    return value;
}

/// Control characters, and those that change the direction of a text or end its line unseen.
bool isUnseen(unsigned value) {
    return value < 0x20 || (value >= 0x7F && value <= 0x9F) ||
           (value >= 0x200B && value <= 0x200F) || (value >= 0x2028 && value <= 0x202E) ||
           (value >= 0x2060 && value <= 0x2069) || value == 0xFEFF;
}

/// "\x1B" or "\u202E".
std::string valueText(unsigned value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = value < 0x100 ? "\\x" : "\\u";
    for (int shift = value < 0x100 ? 4 : 12; shift >= 0; shift -= 4) {
        text += digits[value >> shift & 0xFU];
    }
    return text;
}

} // namespace

std::string utf8Text(std::string_view bytes) {
    std::string text;
    const auto beyondAscii = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    const auto head = std::find_if(bytes.begin(), bytes.end(), beyondAscii) - bytes.begin();
    text.reserve(bytes.size());
    text = bytes.substr(0, static_cast<std::size_t>(head));
    bytes.remove_prefix(text.size());
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

std::string messageText(std::string_view bytes) {
    constexpr std::size_t longestLine = 200; // characters
    constexpr std::string_view cutMark = " ...";
    const std::string valid = utf8Text(bytes);
    std::string_view rest = valid;
    std::string text;
    std::string line;
    std::size_t length = 0; // of the line, in characters
    std::size_t cut = 0;    // bytes of it that stand before the mark, should it be too long
    const auto endLine = [&] {
        text += length > longestLine ? line.substr(0, cut).append(cutMark) : line;
        line.clear();
        length = 0;
    };
    while (!rest.empty()) {
        const std::string_view character = rest.substr(0, characterLength(rest));
        rest.remove_prefix(character.size());
        if (character == "\n") {
            endLine();
            text += '\n';
            continue;
        }
        const unsigned value = valueOf(character);
        const std::string shown = isUnseen(value) ? valueText(value) : std::string(character);
        length += isUnseen(value) ? shown.size() : 1;
        line += shown;
        if (length <= longestLine - cutMark.size()) {
            cut = line.size();
        }
    }
    endLine();
    return text;
}

} // namespace korvane
