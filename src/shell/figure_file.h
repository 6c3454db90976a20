// Drawings as PNG, SVG or PDF files.
#pragma once

#include "plots/surface.h"

#include <functional>
#include <string>

namespace korvane {

/// What a file shows, and what it tells readers who do not see it.
struct FileFigure {
    std::string title;
    std::string description;
    std::function<void(Surface&)> draw;
    /// How far the drawing reaches with texts as the surface measures them.
    std::function<Corners(const Surface&)> reach;
};

/// Title and patterns of the dialog that asks for the file.
inline constexpr const char* FigureDialogTitle = "SAVE FIGURE";
inline constexpr const char* FigureFilter =
    "PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg|PDF document (*.pdf)|*.pdf";
inline constexpr const char* FigureExtensions = ".PNG|.SVG|.PDF";

/// The content of a PNG, SVG or PDF file, by the extension of `name`; all of the drawing and no
/// more. RuntimeError 5 for any other extension.
std::string figureFile(const FileFigure& figure, const std::string& name);

} // namespace korvane
