// Bytes of unknown encoding as UTF-8, for the formats that demand it and for messages.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace korvane {

/// May stand at the start of a file in UTF-8; it is no text.
inline constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

/// The text as valid UTF-8: what is UTF-8 passes unchanged, each other byte becomes the Latin-1
/// character of its value.
std::string utf8Text(std::string_view bytes);

/// The text as a message shows it, in UTF-8: no line has more than 200 characters, what is cut off
/// leaves " ..."; control characters but the line feed, and the characters that turn or part a
/// line, are written by their value: "\x1B", "\u202E".
std::string messageText(std::string_view bytes);

} // namespace korvane
