// Looking at what was painted: pixels by their place in twips.
#pragma once

#include "plots/recording_surface.h"

#include <QImage>
#include <QWidget>

#include <string>
#include <vector>

namespace korvane::test {

/// A picture of a drawing: `perTwip` pixels to the twip, `origin` the pixel of the twip (0, 0).
struct Pixels {
    QImage image;
    double perTwip = 1;
    Point origin;
};

/// The picture of a plot window as it is painted, at the display's own resolution.
Pixels pixelsOf(QWidget& picture);

/// The one page of a PDF file; a second page is a failure. The origin is the page's corner.
Pixels pageOf(const std::string& pdf);

/// Expects ink of some colour where the middle of each line, rectangle and circle of the recipe
/// lies, and of each colour of the recipe some pixels.
void expectPainted(const Pixels& pixels, const std::vector<Primitive>& recipe);

} // namespace korvane::test
