// The wall drawn to scale: ground, layers, water, loads, anchor and bottoms, with labels that never
// overprint.
#pragma once

#include "sheet/sheet.h"
#include "sheet/svg.h"

#include <string>
#include <vector>

namespace korvane {

/// A label as it was placed.
struct FigureLabel {
    LabelBox box;
    std::vector<std::string> lines;
    TextAnchor anchor = TextAnchor::Start;
    std::vector<SvgPoint> leader; ///< from what is labelled to the label
};

struct WallFigure {
    std::string svg;
    std::vector<FigureLabel> labels;
    LabelBox view; ///< all that the figure shows
};

/// The figure of a problem as far as it has been solved. It needs ground on both sides.
WallFigure wallFigure(const SheetRequest& request);

} // namespace korvane
