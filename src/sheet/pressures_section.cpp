// Stresses, water, surcharges, planes and rows.
#include "sheet/sections.h"

namespace korvane {

void writePressures(SheetWriter& /*writer*/, const SheetRequest& /*request*/) {}

} // namespace korvane
