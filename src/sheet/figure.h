// A figure of the sheet with its labels as they were placed.
#pragma once

#include "sheet/svg.h"

#include <string>
#include <vector>

namespace korvane::sheet {

// Type of all figures, pixels
inline constexpr double FigureType = 11;
inline constexpr double FigureLine = 13;

/// A label as it was placed.
struct FigureLabel {
    LabelBox box;
    std::vector<std::string> lines;
    TextAnchor anchor = TextAnchor::Start;
    std::vector<SvgPoint> leader = {}; ///< from what is labelled to the label
    const char* cssClass = "";
};

struct Figure {
    std::string svg;
    std::vector<FigureLabel> labels;
    LabelBox view; ///< all that the figure shows
};

/// The number of a tick: "2.5", "2000", "2.5e9".
std::string tickText(double value);

/// What the lines of a label ask for, at a place: its left end, or its right one.
LabelBox labelBox(const std::vector<std::string>& lines, SvgPoint innerTop, TextAnchor anchor);

void drawLabels(Svg& svg, const std::vector<FigureLabel>& labels);

/// Labels in a column beside a drawing.
struct ColumnLabel {
    SvgPoint tip; ///< of its leader, in the drawing
    std::vector<std::string> lines;
};

/// Where a column stands: leaders run level from their tips to the edge of the drawing, from there
/// at a slant to the labels.
struct LabelColumn {
    double edge = 0;     ///< x of the drawing's edge
    bool toRight = true; ///< the column stands right of the edge
    double low = 0;      ///< y, the labels' upper limit
    double high = 0;     ///< y, the lower limit where there is room
};

/// The labels moved apart in the order of their tips.
std::vector<FigureLabel> placeColumn(std::vector<ColumnLabel> labels, const LabelColumn& column);

/// The drawing and all labels with a margin.
LabelBox viewOf(double width, double height, const std::vector<FigureLabel>& labels);

} // namespace korvane::sheet
