// A drawing surface on a painter of the toolkit.
#pragma once

#include "plots/surface.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

namespace korvane {

/// Draws in twips on a painter whose transformation scales and moves twips to its device. Where the
/// device has pixels, rectangles and lines that are level or upright within half a pixel keep to
/// whole ones, so that their edges are sharp at any scale; but not level lines that follow each
/// other closely, as in pressure strips, which would leave uneven gaps.
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
    bool isSharp(const QRectF& line, double width);

    QPainter& painter_;
    QFont font_;
    QFontMetricsF metrics_;
    QTransform toPixels_;
    QTransform fromPixels_;
    bool hasPixels_;
    double lastLevel_ = 0; ///< pixels, of the last level line
    bool lastSharp_ = true;
    bool anyLevel_ = false;
};

} // namespace korvane
