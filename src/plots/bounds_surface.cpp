#include "plots/bounds_surface.h"

#include <algorithm>

namespace korvane {

void BoundsSurface::take(Point a, Point b, double around) {
    const Corners part{{std::min(a.x, b.x) - around, std::min(a.y, b.y) - around},
                       {std::max(a.x, b.x) + around, std::max(a.y, b.y) + around}};
    if (empty_) {
        reach_ = part;
        empty_ = false;
        return;
    }
    reach_.a = {std::min(reach_.a.x, part.a.x), std::min(reach_.a.y, part.a.y)};
    reach_.b = {std::max(reach_.b.x, part.b.x), std::max(reach_.b.y, part.b.y)};
}

void BoundsSurface::drawRectangle(const Corners& corners, Pen pen) {
    take(corners.a, corners.b, pen.width * LineWidthUnit / 2);
}

void BoundsSurface::fillRectangle(const Corners& corners, Colour) {
    take(corners.a, corners.b, 0);
}

void BoundsSurface::drawLine(Point from, Point to, Pen pen) {
    take(from, to, pen.width * LineWidthUnit / 2);
}

void BoundsSurface::drawPoint(Point at, Pen pen) {
    take(at, at, pen.width * LineWidthUnit / 2);
}

void BoundsSurface::drawCircle(Point centre, double radius, Pen pen) {
    take(centre, centre, radius + pen.width * LineWidthUnit / 2);
}

void BoundsSurface::drawText(Point upperLeft, std::string_view text) {
    take(upperLeft, {upperLeft.x + textWidth(text), upperLeft.y + textHeight()}, 0);
}

Corners BoundsSurface::bounds(const Corners& usual) const {
    if (empty_) {
        return usual;
    }
    const double farX = (usual.b.x - usual.a.x) / 2;
    const double farY = (usual.b.y - usual.a.y) / 2;
    return {{std::max(reach_.a.x - LineWidthUnit, usual.a.x - farX),
             std::max(reach_.a.y - LineWidthUnit, usual.a.y - farY)},
            {std::min(reach_.b.x + LineWidthUnit, usual.b.x + farX),
             std::min(reach_.b.y + LineWidthUnit, usual.b.y + farY)}};
}

} // namespace korvane
