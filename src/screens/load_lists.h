// SURCHCON and HORCON: the kinds of load to choose from.
#pragma once

#include "screens/section_screen.h"

namespace korvane {

const SectionList& surchargeList();
const SectionList& horizontalLoadList();

} // namespace korvane
