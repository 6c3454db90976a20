// The wall drawn to scale: ground, layers, water, loads, anchor and bottoms, with labels that never
// overprint.
#pragma once

#include "sheet/figure.h"
#include "sheet/sheet.h"

namespace korvane::sheet {

/// The figure of a problem as far as it has been solved. It needs ground on both sides.
Figure wallFigure(const SheetRequest& request);

} // namespace korvane::sheet
