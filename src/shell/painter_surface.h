// A drawing surface on a painter of the toolkit.
#pragma once

#include "plots/surface.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

namespace korvane {

/// Draws in twips on a painter whose transformation maps twips to its device.
class PainterSurface : public Surface {
  public:
    explicit PainterSurface(QPainter& painter);

    double textWidth(std::string_view text) const override;
    double textHeight() const override;

  private:
    void drawRectangle(const Corners& corners, Pen pen) override;
    void fillRectangle(const Corners& corners, Colour colour) override;
    void drawLine(Point from, Point to, Pen pen) override;
    void drawPoint(Point at, Pen pen) override;
    void drawCircle(Point centre, double radius, Pen pen) override;
    void drawText(Point upperLeft, std::string_view text) override;

    void usePen(Pen pen);

    QPainter& painter_;
    QFont font_;
    QFontMetricsF metrics_;
};

} // namespace korvane
