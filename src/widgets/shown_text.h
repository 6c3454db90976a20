// Texts of files as the toolkit shows them.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace korvane {

/// Bytes as text: UTF-8 where they are valid UTF-8, else Latin-1.
QString shownText(std::string_view bytes);

/// A text of the user as bytes (UTF-8).
std::string bytesOf(const QString& text);

} // namespace korvane
