#include "plots/recording_surface.h"

namespace korvane {

double RecordingSurface::textWidth(std::string_view text) const {
    return CharacterWidth * static_cast<double>(text.size());
}

void RecordingSurface::drawRectangle(const Corners& corners, Pen pen) {
    primitives_.push_back(
        {Primitive::Kind::Rectangle, corners.a, corners.b, pen.colour, pen.width, 0, {}});
}

void RecordingSurface::fillRectangle(const Corners& corners, Colour colour) {
    primitives_.push_back(
        {Primitive::Kind::FilledRectangle, corners.a, corners.b, colour, 0, 0, {}});
}

void RecordingSurface::drawLine(Point from, Point to, Pen pen) {
    primitives_.push_back({Primitive::Kind::Line, from, to, pen.colour, pen.width, 0, {}});
}

void RecordingSurface::drawPoint(Point at, Pen pen) {
    primitives_.push_back({Primitive::Kind::Point, at, {}, pen.colour, pen.width, 0, {}});
}

void RecordingSurface::drawCircle(Point centre, double radius, Pen pen) {
    primitives_.push_back({Primitive::Kind::Circle, centre, {}, pen.colour, pen.width, radius, {}});
}

void RecordingSurface::drawText(Point upperLeft, std::string_view text) {
    primitives_.push_back({Primitive::Kind::Text, upperLeft, {}, Black, 0, 0, std::string(text)});
}

} // namespace korvane
