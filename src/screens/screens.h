// The screens of the data entry.
#pragma once

#include "widgets/screen_table.h"

namespace korvane {

/// All screens on which a problem and the sheet pile sections are entered.
ScreenTable dataScreens();

} // namespace korvane
