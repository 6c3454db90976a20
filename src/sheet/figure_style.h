// The look of the sheet's figures, and of tables that stand side by side.
#pragma once

#include <string_view>

namespace korvane::sheet {

/// CSS rules on the colours of the sheet's own style.
std::string_view figureStyle();

} // namespace korvane::sheet
