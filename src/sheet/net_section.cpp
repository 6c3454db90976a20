// Net pressures and their approximations.
#include "sheet/sections.h"

namespace korvane {

void writeNetPressures(SheetWriter& /*writer*/, const SheetRequest& /*request*/) {}

} // namespace korvane
