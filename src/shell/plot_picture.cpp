#include "shell/plot_picture.h"

#include "shell/painter_surface.h"
#include "widgets/gate.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace korvane {

PlotPicture::PlotPicture(QWidget* parent, const PlotData& shown, const PlotView& view)
    : QWidget(parent), data_(shown), view_(view) {
    setMouseTracking(true);
}

QTransform PlotPicture::mapping() const {
    QImage nothing(1, 1, QImage::Format_RGB32); // to measure texts on
    QPainter measure(&nothing);
    const Corners ink = plotBounds(PainterSurface(measure), data_, view_, Medium::Screen);
    constexpr double Room = 120; // twips between the drawing and the picture's edges
    const QRectF reach(ink.a.x - Room, ink.a.y - Room, ink.b.x - ink.a.x + 2 * Room,
                       ink.b.y - ink.a.y + 2 * Room);
    const double factor = std::min(width() / reach.width(), height() / reach.height());
    QTransform mapping;
    mapping.translate((width() - factor * reach.width()) / 2, 0);
    mapping.scale(factor, factor);
    mapping.translate(-reach.x(), -reach.y());
    return mapping;
}

void PlotPicture::paintEvent(QPaintEvent*) {
    enterPaint([this] {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(PictureBack.red, PictureBack.green, PictureBack.blue));
        painter.setTransform(mapping(), true);
        PainterSurface surface(painter);
        drawPlot(surface, data_, view_, Medium::Screen);
    });
}

void PlotPicture::mouseMoveEvent(QMouseEvent* event) {
    enterPaint([&] { emit pointedAt(mapping().inverted().map(event->position()).y()); });
}

void PlotPicture::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    emit pointerLeft();
}

} // namespace korvane
