// A surface that draws nothing and tells how far a drawing reaches.
#pragma once

#include "plots/surface.h"

namespace korvane {

/// Texts are measured by the surface that will draw them, which must outlive this one.
class BoundsSurface : public Surface {
  public:
    explicit BoundsSurface(const Surface& metrics) : metrics_(metrics) {}

    double textWidth(std::string_view text) const override { return metrics_.textWidth(text); }
    double textHeight() const override { return metrics_.textHeight(); }

    /// The smallest rectangle (a is its upper left, b its lower right corner) that holds all ink,
    /// with a line's width of room around it. What runs farther out of `usual` than half of its
    /// size is cut off there, so that nothing makes the rest too small to read. `usual` itself
    /// where nothing was drawn.
    Corners bounds(const Corners& usual) const;

  private:
    void drawRectangle(const Corners& corners, Pen pen) override;
    void fillRectangle(const Corners& corners, Colour colour) override;
    void drawLine(Point from, Point to, Pen pen) override;
    void drawPoint(Point at, Pen pen) override;
    void drawCircle(Point centre, double radius, Pen pen) override;
    void drawText(Point upperLeft, std::string_view text) override;

    void take(Point a, Point b, double around);

    const Surface& metrics_;
    bool empty_ = true;
    Corners reach_;
};

} // namespace korvane
