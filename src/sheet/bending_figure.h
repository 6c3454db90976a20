// Shear, moment and deflection along a wall as one figure, with their extremes marked.
#pragma once

#include "sheet/figure.h"
#include "sheet/sheet.h"

namespace korvane::sheet {

/// The figure of a solved level; curves from the sheet's own statics, extremes as the solution has
/// them.
Figure bendingFigure(const SheetRequest& request, const LevelResult& level);

} // namespace korvane::sheet
