// How the calculation sheet looks on a screen and on paper.
#pragma once

#include <string>
#include <string_view>

namespace korvane::sheet {

/// The style sheet. `running` stands at the foot of each printed page, beside its number; `title`
/// at its head.
std::string sheetStyle(std::string_view title, std::string_view running);

} // namespace korvane::sheet
