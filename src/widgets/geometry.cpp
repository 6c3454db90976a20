#include "widgets/geometry.h"

#include "plots/surface.h"

#include <QApplication>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

double pixelsPerTwip() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double resolution = screen != nullptr ? screen->logicalDotsPerInchY() : 96.0;
    return resolution / TwipsPerInch;
}

} // namespace

double programZoom() {
    static const double zoom = [] {
        const QLineEdit field;
        const double needed = field.minimumSizeHint().height();
        return std::max(1.0, needed / (FieldHeightTwips * pixelsPerTwip()));
    }();
    return zoom;
}

int pixels(double twips) {
    return static_cast<int>(std::lround(twips * pixelsPerTwip() * programZoom()));
}

QRect pixelRect(double left, double top, double width, double height) {
    // By edges, so that neighbours share them.
    const int x = pixels(left);
    const int y = pixels(top);
    return {x, y, pixels(left + width) - x, pixels(top + height) - y};
}

void place(QWidget* widget, double left, double top, double width, double height) {
    widget->setGeometry(pixelRect(left, top, width, height));
}

QSize screenRoom(const QWidget* window) {
    constexpr int FrameWidth = 12;  // both edges of a window's frame
    constexpr int FrameHeight = 40; // with its title
    const QScreen* screen = window->screen();
    return screen == nullptr ? QSize(800, 600)
                             : screen->availableSize() - QSize(FrameWidth, FrameHeight);
}

void centreOnScreen(QWidget* window) {
    const QScreen* screen = window->screen();
    if (screen == nullptr) {
        return;
    }
    QRect frame = window->frameGeometry();
    const QRect area = screen->availableGeometry();
    frame.moveCenter(area.center());
    // A window that is larger than its screen shows its title and its left edge.
    window->move(std::max(frame.left(), area.left()), std::max(frame.top(), area.top()));
}

} // namespace korvane
