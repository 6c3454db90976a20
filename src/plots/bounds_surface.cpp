#include "plots/bounds_surface.h"

namespace korvane {

void BoundsSurface::drawRectangle(const Corners& corners, Pen pen) {
    reach_.take(corners.a, corners.b, pen.halfWidth());
}

void BoundsSurface::fillRectangle(const Corners& corners, Colour) {
    reach_.take(corners.a, corners.b, 0);
}

void BoundsSurface::drawLine(Point from, Point to, Pen pen) {
    reach_.take(from, to, pen.halfWidth());
}

void BoundsSurface::drawPoint(Point at, Pen pen) {
    reach_.take(at, at, pen.halfWidth());
}

void BoundsSurface::drawCircle(Point centre, double radius, Pen pen) {
    reach_.take(centre, centre, radius + pen.halfWidth());
}

void BoundsSurface::drawText(Point upperLeft, std::string_view text) {
    reach_.take(upperLeft, {upperLeft.x + textWidth(text), upperLeft.y + textHeight()}, 0);
}

} // namespace korvane
