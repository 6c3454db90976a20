// What a drawing recipe draws on: a picture on the screen, a page, a file or a test's list. Lengths
// are twips from the upper left corner, y growing downwards. All text is black,
// in Arial (or Liberation Sans, of the same widths) of 8.25 points.
#pragma once

#include <string_view>

namespace korvane {

/// Shares of red, green and blue, 0 to 255.
struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const Colour&) const = default;
};

inline constexpr Colour Black{0, 0, 0};
inline constexpr Colour White{255, 255, 255};
inline constexpr Colour Red{255, 0, 0};
inline constexpr Colour Green{0, 255, 0};
inline constexpr Colour Blue{0, 0, 255};
inline constexpr Colour PassiveGreen{0, 127, 0};
inline constexpr Colour StartGrey{200, 200, 200};
inline constexpr Colour SoilBrown{150, 75, 0};
inline constexpr Colour PictureBack{224, 224, 224}; ///< back colour of the pictures on the screen

inline constexpr double TwipsPerInch = 1440;

inline constexpr const char* PlotFontName = "Arial";
inline constexpr double PlotFontPoints = 8.25;
inline constexpr double PlotFontHeight = PlotFontPoints * 20; ///< twips
inline constexpr double LineWidthUnit = 15;    ///< twips of one unit of line width, on paper too
inline constexpr double DrawingLimit = 100000; ///< twips; nothing is drawn farther from the origin

struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

/// Two opposite corners, in any order.
struct Corners {
    Point a;
    Point b;

    bool operator==(const Corners&) const = default;
};

/// Cuts the line between two points to the area (a is its upper left, b its lower right corner).
/// False where nothing of the line lies in it; a line inside stays as it is, to the bit.
bool cutLine(Point& from, Point& to, const Corners& area);

/// Lines are cut to DrawingLimit, what lies wholly beyond it or is not finite is left out, so that
/// no painter ever meets a coordinate that it cannot take.
class Surface {
  public:
    Surface() = default;
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;
    virtual ~Surface() = default;

    /// Width of all following lines, rectangles, circles and points, in units of 15 twips.
    void setLineWidth(int units) { width_ = units; }

    void rectangle(const Corners& corners, Colour colour);
    void filledRectangle(const Corners& corners, Colour colour);
    /// Straight line; its end becomes the last point.
    void line(Point from, Point to, Colour colour);
    /// Straight line from the last point, which it moves to its end.
    void lineTo(Point to, Colour colour);
    /// A dot of the line's width, which becomes the last point.
    void point(Point at, Colour colour);
    /// The outline of a circle; its centre becomes the last point.
    void circle(Point centre, double radius, Colour colour);
    void text(Point upperLeft, std::string_view text);

    /// Size of a line of text, twips.
    virtual double textWidth(std::string_view text) const = 0;
    virtual double textHeight() const = 0;

  protected:
    struct Pen {
        Colour colour;
        int width = 1; ///< units

        double halfWidth() const { return width * LineWidthUnit / 2; } ///< twips
    };

  private:
    virtual void drawRectangle(const Corners& corners, Pen pen) = 0;
    virtual void fillRectangle(const Corners& corners, Colour colour) = 0;
    virtual void drawLine(Point from, Point to, Pen pen) = 0;
    virtual void drawPoint(Point at, Pen pen) = 0;
    virtual void drawCircle(Point centre, double radius, Pen pen) = 0;
    virtual void drawText(Point upperLeft, std::string_view text) = 0;

    int width_ = 1;
    Point last_;
};

} // namespace korvane
