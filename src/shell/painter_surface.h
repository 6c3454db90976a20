// A drawing surface on a painter of the toolkit.
#pragma once

#include "plots/surface.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

namespace korvane {

/// Draws in twips on a painter whose transformation scales and moves twips to its device. Where the
/// device has pixels, level and upright lines and rectangles keep to whole ones, so that their
/// edges are sharp at any scale.
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
    void fillPixels(const QRectF& pixels, Colour colour);

    QPainter& painter_;
    QFont font_;
    QFontMetricsF metrics_;
    QTransform toPixels_;
    QTransform fromPixels_;
    bool hasPixels_;
};

} // namespace korvane
