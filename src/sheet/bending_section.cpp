// Shear, moment and deflection, and the sections of the table.
#include "sheet/sections.h"

namespace korvane {

void writeBending(SheetWriter& /*writer*/, const SheetRequest& /*request*/) {}

} // namespace korvane
