// Texts of files as the toolkit shows them.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace korvane {

/// Bytes as text: what is UTF-8 as it stands, each other byte as the Latin-1 character of its
/// value.
QString shownText(std::string_view bytes);

/// A text of the user as bytes (UTF-8).
std::string bytesOf(const QString& text);

} // namespace korvane
