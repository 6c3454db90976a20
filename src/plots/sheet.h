// A recipe's view of a surface: one set of coordinates for the screen and for paper, and text by
// its middle or its edges.
#pragma once

#include "plots/surface.h"

#include <string_view>

namespace korvane {

enum class Medium { Screen, Paper };

/// Which part of a text's width stands at x, and which part of its height at y.
enum class Across { LeftEdge, Middle, RightEdge };
enum class Down { UpperEdge, Middle, LowerEdge };

/// How far a drawing on paper lies to the right of and below the one on the screen, twips.
inline constexpr Point PaperShift{1440, 4320};

/// The outer frame of a drawing on paper.
inline constexpr Corners PaperFrame{{1440, 4320}, {11160, 9720}};
/// The place of a usual figure on paper: the frame with the whole width of its line.
inline constexpr Corners FigureView{{1410, 4290}, {11190, 9750}};

/// Draws in the coordinates of the screen; on paper everything is moved by a shift.
class Sheet {
  public:
    Sheet(Surface& surface, Medium medium, Point paperShift = PaperShift)
        : surface_(surface), medium_(medium),
          shift_(medium == Medium::Paper ? paperShift : Point{}) {}

    bool onPaper() const { return medium_ == Medium::Paper; }

    void lineWidth(int units) { surface_.setLineWidth(units); }
    void box(Point a, Point b) { surface_.rectangle({moved(a), moved(b)}, Black); }
    void box(Point a, Point b, Colour colour) { surface_.rectangle({moved(a), moved(b)}, colour); }
    void filledBox(Point a, Point b) { surface_.filledRectangle({moved(a), moved(b)}, Black); }
    void line(Point from, Point to, Colour colour = Black) {
        surface_.line(moved(from), moved(to), colour);
    }
    void lineTo(Point to, Colour colour) { surface_.lineTo(moved(to), colour); }
    void point(Point at, Colour colour) { surface_.point(moved(at), colour); }
    void circle(Point centre, double radius, Colour colour) {
        surface_.circle(moved(centre), radius, colour);
    }

    /// Sets the first point of a curve. On paper it is white: there it only moves the last point.
    void startCurve(Point at, Colour colour) { point(at, onPaper() ? White : colour); }

    void text(double x, Across across, double y, Down down, std::string_view text);

    /// Text centred on x with its upper edge at y.
    void centred(double x, double y, std::string_view words) {
        text(x, Across::Middle, y, Down::UpperEdge, words);
    }

    double textWidth(std::string_view words) const { return surface_.textWidth(words); }
    double textHeight() const { return surface_.textHeight(); }

  private:
    Point moved(Point p) const { return {p.x + shift_.x, p.y + shift_.y}; }

    Surface& surface_;
    Medium medium_;
    Point shift_;
};

} // namespace korvane
