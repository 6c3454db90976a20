#include "shell/picture.h"

#include "widgets/gate.h"

#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>

namespace korvane {

namespace {

// The drawing's own units: a sheet of 1000 by 700 that is scaled as a whole.
constexpr double SheetWidth = 1000;
constexpr double SheetHeight = 700;
constexpr double WallX = 500;
constexpr double WallTop = 120;
constexpr double WallBottom = 600;
constexpr double RightGround = 140;
constexpr double LeftGround = 400;
constexpr double SoilFoot = 660;
constexpr double WaterRight = 260;
constexpr double WaterLeft = 330;
constexpr double AnchorY = 200;

struct Colours {
    QColor soil;
    QColor soilLine;
    QColor water;
    QColor wall;
    QColor active;
    QColor passive;
};

/// Soft fills that stay readable on the light and on the dark theme.
Colours coloursOf(const QPalette& palette) {
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    if (dark) {
        return {QColor(94, 82, 62),    QColor(190, 170, 130), QColor(90, 140, 220),
                QColor(215, 218, 224), QColor(235, 110, 100), QColor(110, 190, 120)};
    }
    return {QColor(233, 221, 196), QColor(120, 98, 60), QColor(50, 100, 200),
            QColor(55, 60, 70),    QColor(200, 50, 40), QColor(40, 130, 60)};
}

void drawSoil(QPainter& painter, const Colours& colours) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.soil);
    const QPolygonF soil({{40, LeftGround},
                          {WallX, LeftGround},
                          {WallX, RightGround},
                          {SheetWidth - 40, RightGround},
                          {SheetWidth - 40, SoilFoot},
                          {40, SoilFoot}});
    painter.drawPolygon(soil); // in one piece: no seam under the wall
    painter.setPen(QPen(colours.soilLine, 3));
    painter.drawLine(QPointF(WallX, RightGround), QPointF(SheetWidth - 40, RightGround));
    painter.drawLine(QPointF(40, LeftGround), QPointF(WallX, LeftGround));
}

void drawWater(QPainter& painter, const Colours& colours, double x1, double x2, double y) {
    painter.setPen(QPen(colours.water, 2.5));
    painter.drawLine(QPointF(x1, y), QPointF(x2, y));
    const double middle = (x1 + x2) / 2;
    QPainterPath sign;
    sign.moveTo(middle - 12, y - 20);
    sign.lineTo(middle + 12, y - 20);
    sign.lineTo(middle, y);
    sign.closeSubpath();
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(sign);
    painter.drawLine(QPointF(middle - 9, y + 7), QPointF(middle + 9, y + 7));
    painter.drawLine(QPointF(middle - 5, y + 13), QPointF(middle + 5, y + 13));
}

/// A diagram against the wall: filled softly, with arrows that push on the wall.
void drawDiagram(QPainter& painter, const QColor& colour, double top, double bottom, double width) {
    QPainterPath outline;
    outline.moveTo(WallX, top);
    outline.lineTo(WallX + width, bottom);
    outline.lineTo(WallX, bottom);
    outline.closeSubpath();
    QColor fill = colour;
    fill.setAlpha(70);
    painter.setPen(QPen(colour, 2.5));
    painter.setBrush(fill);
    painter.drawPath(outline);
    const double direction = width > 0 ? 1 : -1;
    for (int arrow = 1; arrow <= 5; ++arrow) {
        const double part = arrow / 5.0;
        const double y = top + part * (bottom - top);
        painter.drawLine(QPointF(WallX + part * width, y), QPointF(WallX + direction * 8, y));
        painter.drawLine(QPointF(WallX + direction * 8, y), QPointF(WallX + direction * 20, y - 6));
        painter.drawLine(QPointF(WallX + direction * 8, y), QPointF(WallX + direction * 20, y + 6));
    }
}

void drawWall(QPainter& painter, const Colours& colours) {
    painter.setPen(QPen(colours.wall, 4));
    painter.drawLine(QPointF(WallX, AnchorY), QPointF(WallX + 330, AnchorY + 60));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.wall);
    painter.drawRect(QRectF(WallX + 322, AnchorY + 30, 16, 62));
    painter.drawRect(QRectF(WallX - 7, WallTop, 14, WallBottom - WallTop));
}

} // namespace

Picture::Picture(QWidget* parent) : QWidget(parent) {
    setMinimumSize(200, 140);
}

void Picture::paintEvent(QPaintEvent*) {
    enterPaint([this] {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double scale = std::min(width() / SheetWidth, height() / SheetHeight);
        painter.translate((width() - scale * SheetWidth) / 2, (height() - scale * SheetHeight) / 2);
        painter.scale(scale, scale);
        const Colours colours = coloursOf(palette());
        drawSoil(painter, colours);
        drawDiagram(painter, colours.active, RightGround, WallBottom, 190);
        drawDiagram(painter, colours.passive, LeftGround, WallBottom, -260);
        drawWater(painter, colours, WallX + 7, SheetWidth - 40, WaterRight);
        drawWater(painter, colours, 40, WallX - 7, WaterLeft);
        drawWall(painter, colours);
    });
}

} // namespace korvane
