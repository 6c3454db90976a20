#include "plots/reach.h"

#include <algorithm>

namespace korvane {

void Reach::take(Point a, Point b, double around) {
    const Corners part{{std::min(a.x, b.x) - around, std::min(a.y, b.y) - around},
                       {std::max(a.x, b.x) + around, std::max(a.y, b.y) + around}};
    if (empty_) {
        corners_ = part;
        empty_ = false;
        return;
    }
    corners_.a = {std::min(corners_.a.x, part.a.x), std::min(corners_.a.y, part.a.y)};
    corners_.b = {std::max(corners_.b.x, part.b.x), std::max(corners_.b.y, part.b.y)};
}

Corners Reach::bounds(const Corners& usual) const {
    if (empty_) {
        return usual;
    }
    const double farX = (usual.b.x - usual.a.x) / 2;
    const double farY = (usual.b.y - usual.a.y) / 2;
    return {{std::max(corners_.a.x - LineWidthUnit, usual.a.x - farX),
             std::max(corners_.a.y - LineWidthUnit, usual.a.y - farY)},
            {std::min(corners_.b.x + LineWidthUnit, usual.b.x + farX),
             std::min(corners_.b.y + LineWidthUnit, usual.b.y + farY)}};
}

} // namespace korvane
