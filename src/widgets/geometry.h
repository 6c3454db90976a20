// Twips to pixels: proportions of the screens at any resolution.
#pragma once

#include <QRect>
#include <QSize>

class QWidget;

namespace korvane {

/// Height of a one-line field in twips: the program's zoom is the smallest at which a field in the
/// application's font fits it.
inline constexpr double FieldHeightTwips = 270.0;

/// The program's one zoom factor, at least 1.
double programZoom();

/// Pixels of a length in twips: logical resolution times the program's zoom.
int pixels(double twips);

/// A rectangle given in twips, in pixels.
QRect pixelRect(double left, double top, double width, double height);

/// Puts a widget at a place of its parent given in twips.
void place(QWidget* widget, double left, double top, double width, double height);

/// Size that a top-level window can have with its frame on its screen.
QSize screenRoom(const QWidget* window);

/// Centres a top-level window on its screen.
void centreOnScreen(QWidget* window);

} // namespace korvane
