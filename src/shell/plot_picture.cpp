#include "shell/plot_picture.h"

#include "shell/painter_surface.h"
#include "widgets/gate.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace korvane {

PlotPicture::PlotPicture(QWidget* parent, const State& state, const PlotView& view)
    : QWidget(parent), state_(state), view_(view) {
    setMouseTracking(true);
}

QTransform PlotPicture::mapping() const {
    QImage nothing(1, 1, QImage::Format_RGB32); // to measure texts on
    QPainter measure(&nothing);
    const Corners reach = plotBounds(PainterSurface(measure), state_, view_, Medium::Screen);
    const double reachWidth = reach.b.x - reach.a.x;
    const double factor = std::min(width() / reachWidth, height() / (reach.b.y - reach.a.y));
    QTransform mapping;
    mapping.translate((width() - factor * reachWidth) / 2, 0);
    mapping.scale(factor, factor);
    mapping.translate(-reach.a.x, -reach.a.y);
    return mapping;
}

void PlotPicture::paintEvent(QPaintEvent*) {
    enterPaint([this] {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(PictureBack.red, PictureBack.green, PictureBack.blue));
        painter.setTransform(mapping(), true);
        PainterSurface surface(painter);
        drawPlot(surface, state_, view_, Medium::Screen);
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
