// The figures that are written beside the report of a solved problem.
#pragma once

#include "plots/plot_screen.h"
#include "plots/surface.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane {

/// One figure: the paper drawing of a diagram.
struct Figure {
    /// The figure's part of a file name: "moment" for "NAME-moment.svg".
    std::string name;
    /// Draws in the coordinates of the page, PaperFrame and heading lines included.
    std::function<void(Surface&)> draw;
};

/// Hands over each figure of the problem in turn: with `solved` the result diagrams ("moment",
/// "shear" ... of a cantilever wall, "free-moment" ... and "fixed-moment" ... of an anchored one)
/// and, where Rowe's moment reduction applied in sand, "rowe"; then always the views of the input
/// ("input-system" ...). Diagrams that the plot screens would refuse (no water, no such loads) are
/// left out. A figure may be drawn only until `take` returns.
void visitFigures(const PlotData& data, bool solved,
                  const std::function<void(const Figure&)>& take);

/// Every name that a figure can have.
std::vector<std::string> figureNames();

/// A figure as the content of an SVG file, cropped to the frame of the page's drawing.
std::string svgFigure(const Figure& figure);

} // namespace korvane
