#include "shell/painter_surface.h"

#include "widgets/shown_text.h"

#include <QPaintEngine>

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

QFont plotFont() {
    QFont font(PlotFontName);
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(static_cast<int>(PlotFontHeight)); // a pixel of the drawing is a twip
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QColor toColor(Colour colour) {
    return {colour.red, colour.green, colour.blue};
}

QRectF toRect(const Corners& corners) {
    return QRectF(QPointF(corners.a.x, corners.a.y), QPointF(corners.b.x, corners.b.y))
        .normalized();
}

} // namespace

PainterSurface::PainterSurface(QPainter& painter)
    : painter_(painter), font_(plotFont()), metrics_(font_), toPixels_(painter.deviceTransform()),
      fromPixels_(toPixels_.inverted()),
      hasPixels_(painter.paintEngine()->type() == QPaintEngine::Raster) {
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter_.setFont(font_);
}

double PainterSurface::textWidth(std::string_view text) const {
    return metrics_.horizontalAdvance(shownText(text));
}

double PainterSurface::textHeight() const {
    return metrics_.height();
}

void PainterSurface::usePen(Pen pen) {
    painter_.setPen(QPen(toColor(pen.colour), pen.width * LineWidthUnit, Qt::SolidLine,
                         Qt::RoundCap, Qt::RoundJoin));
    painter_.setBrush(Qt::NoBrush);
}

void PainterSurface::fillPixels(const QRectF& pixels, Colour colour) {
    const QPointF upperLeft(std::round(pixels.left()), std::round(pixels.top()));
    const QPointF lowerRight(std::round(pixels.right()), std::round(pixels.bottom()));
    if (upperLeft.x() == lowerRight.x() || upperLeft.y() == lowerRight.y()) {
        painter_.fillRect(fromPixels_.mapRect(pixels), toColor(colour)); // thinner than a pixel
        return;
    }
    painter_.fillRect(fromPixels_.mapRect(QRectF(upperLeft, lowerRight)), toColor(colour));
}

void PainterSurface::drawRectangle(const Corners& corners, Pen pen) {
    if (hasPixels_) {
        const Point c{corners.b.x, corners.a.y};
        const Point d{corners.a.x, corners.b.y};
        drawLine(corners.a, c, pen);
        drawLine(c, corners.b, pen);
        drawLine(corners.b, d, pen);
        drawLine(d, corners.a, pen);
        return;
    }
    usePen(pen);
    painter_.drawRect(toRect(corners));
}

void PainterSurface::fillRectangle(const Corners& corners, Colour colour) {
    if (hasPixels_) {
        fillPixels(toPixels_.mapRect(toRect(corners)), colour);
    } else {
        painter_.fillRect(toRect(corners), toColor(colour));
    }
}

/// Whether a level or upright line (in pixels, without its width) is drawn on whole pixels.
bool PainterSurface::isSharp(const QRectF& line, double width) {
    constexpr double NarrowGap = 2; // pixels between the inks of neighbours
    constexpr double Same = 1e-6;
    if (line.width() < line.height()) {
        return true;
    }
    const double step = std::abs(line.center().y() - lastLevel_);
    const bool sharp = !anyLevel_ || (step < Same ? lastSharp_ : step >= width + NarrowGap);
    lastLevel_ = line.center().y();
    lastSharp_ = sharp;
    anyLevel_ = true;
    return sharp;
}

void PainterSurface::drawLine(Point from, Point to, Pen pen) {
    constexpr double HalfPixel = 0.5;
    if (hasPixels_) {
        QRectF line = toPixels_.mapRect(toRect({from, to}));
        const double width = std::max(1.0, std::round(pen.width * LineWidthUnit * toPixels_.m11()));
        const bool straight = line.width() < HalfPixel || line.height() < HalfPixel;
        if (straight && isSharp(line, width)) {
            if (line.width() < line.height()) {
                line.moveLeft(line.center().x());
                line.setWidth(0);
            } else {
                line.moveTop(line.center().y());
                line.setHeight(0);
            }
            fillPixels(line.adjusted(-width / 2, -width / 2, width / 2, width / 2), pen.colour);
            return;
        }
    }
    usePen(pen);
    painter_.drawLine(QPointF(from.x, from.y), QPointF(to.x, to.y));
}

void PainterSurface::drawPoint(Point at, Pen pen) {
    usePen(pen);
    painter_.drawPoint(QPointF(at.x, at.y));
}

void PainterSurface::drawCircle(Point centre, double radius, Pen pen) {
    usePen(pen);
    painter_.drawEllipse(QPointF(centre.x, centre.y), radius, radius);
}

void PainterSurface::drawText(Point upperLeft, std::string_view text) {
    painter_.setPen(toColor(Black));
    painter_.drawText(QPointF(upperLeft.x, upperLeft.y + metrics_.ascent()), shownText(text));
}

} // namespace korvane
