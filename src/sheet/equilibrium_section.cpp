// The balance of each solution.
#include "sheet/sections.h"

namespace korvane {

void writeEquilibrium(SheetWriter& /*writer*/, const SheetRequest& /*request*/) {}

} // namespace korvane
