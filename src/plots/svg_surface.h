// A surface that writes scalable vector graphics, without any toolkit.
#pragma once

#include "plots/reach.h"
#include "plots/surface.h"

#include <string>

namespace korvane {

/// Collects the drawing as SVG elements. Text is measured by the advance widths of Liberation Sans,
/// which are those of Arial.
class SvgSurface : public Surface {
  public:
    double textWidth(std::string_view text) const override;
    double textHeight() const override;

    /// How far what is drawn reaches.
    const Reach& reach() const { return reach_; }

    /// The finished file: UTF-8, white ground, true size, showing nothing but `view`. Title and
    /// description are for readers; an empty one is left out.
    std::string document(const Corners& view, std::string_view title = {},
                         std::string_view description = {}) const;

  private:
    void drawRectangle(const Corners& corners, Pen pen) override;
    void fillRectangle(const Corners& corners, Colour colour) override;
    void drawLine(Point from, Point to, Pen pen) override;
    void drawPoint(Point at, Pen pen) override;
    void drawCircle(Point centre, double radius, Pen pen) override;
    void drawText(Point upperLeft, std::string_view text) override;

    void endPath();

    Reach reach_;
    std::string elements_;
    bool pathOpen_ = false; ///< the last element is a path to which a line may hang
    Point pathEnd_;
    Pen pathPen_;
};

} // namespace korvane
