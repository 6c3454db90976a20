// A surface that draws nothing and tells how far a drawing reaches.
#pragma once

#include "plots/reach.h"
#include "plots/surface.h"

namespace korvane {

/// Texts are measured by the surface that will draw them, which must outlive this one.
class BoundsSurface : public Surface {
  public:
    explicit BoundsSurface(const Surface& metrics) : metrics_(metrics) {}

    double textWidth(std::string_view text) const override { return metrics_.textWidth(text); }
    double textHeight() const override { return metrics_.textHeight(); }

    /// As Reach tells.
    Corners bounds(const Corners& usual) const { return reach_.bounds(usual); }

  private:
    void drawRectangle(const Corners& corners, Pen pen) override;
    void fillRectangle(const Corners& corners, Colour colour) override;
    void drawLine(Point from, Point to, Pen pen) override;
    void drawPoint(Point at, Pen pen) override;
    void drawCircle(Point centre, double radius, Pen pen) override;
    void drawText(Point upperLeft, std::string_view text) override;

    const Surface& metrics_;
    Reach reach_;
};

} // namespace korvane
