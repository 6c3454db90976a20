// Bytes of unknown encoding as UTF-8, for the formats that demand it.
#pragma once

#include <string>
#include <string_view>

namespace korvane {

/// The text as valid UTF-8: what is UTF-8 passes unchanged, each other byte becomes the Latin-1
/// character of its value.
std::string utf8Text(std::string_view bytes);

} // namespace korvane
