// A surface that keeps what is drawn as a list, for tests and measurements.
#pragma once

#include "plots/surface.h"

#include <string>
#include <vector>

namespace korvane {

/// One thing drawn. A rectangle has its corners in a and b, a line its ends, a point, a circle and
/// a text (upper left corner) their place in a.
struct Primitive {
    enum class Kind { Rectangle, FilledRectangle, Line, Point, Circle, Text };

    Kind kind = Kind::Line;
    Point a;
    Point b;
    Colour colour;
    int width = 0; ///< units; 0 for filled rectangles and texts
    double radius = 0;
    std::string text;

    bool operator==(const Primitive&) const = default;
};

/// Measures every text as 100 twips a character and 195 high.
class RecordingSurface : public Surface {
  public:
    static constexpr double CharacterWidth = 100;
    static constexpr double CharacterHeight = 195;

    double textWidth(std::string_view text) const override;
    double textHeight() const override { return CharacterHeight; }

    const std::vector<Primitive>& primitives() const { return primitives_; }
    void clear() { primitives_.clear(); }

  private:
    void drawRectangle(const Corners& corners, Pen pen) override;
    void fillRectangle(const Corners& corners, Colour colour) override;
    void drawLine(Point from, Point to, Pen pen) override;
    void drawPoint(Point at, Pen pen) override;
    void drawCircle(Point centre, double radius, Pen pen) override;
    void drawText(Point upperLeft, std::string_view text) override;

    std::vector<Primitive> primitives_;
};

} // namespace korvane
