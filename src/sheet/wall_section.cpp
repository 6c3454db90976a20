// The wall drawn to scale and the input as tables.
#include "sheet/sections.h"

namespace korvane {

void writeWall(SheetWriter& /*writer*/, const SheetRequest& /*request*/) {}

} // namespace korvane
