// Methods, factors and coefficients.
#include "sheet/sections.h"

namespace korvane {

void writeMethod(SheetWriter& /*writer*/, const SheetRequest& /*request*/) {}

} // namespace korvane
