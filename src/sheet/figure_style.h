// The look of the sheet's figures of the wall and of its bending.
#pragma once

#include <string_view>

namespace korvane {

/// CSS rules on the colours of the sheet's own style.
std::string_view figureStyle();

} // namespace korvane
