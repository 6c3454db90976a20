#include "plots/surface.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr Corners Drawable{{-DrawingLimit, -DrawingLimit}, {DrawingLimit, DrawingLimit}};

bool isInside(Point p, const Corners& area) {
    return p.x >= area.a.x && p.x <= area.b.x && p.y >= area.a.y && p.y <= area.b.y;
}

bool isFinite(Point p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

/// The part t0 to t1 of a line on which start + t * step lies between lower and upper.
bool cutRange(double start, double step, double lower, double upper, double& t0, double& t1) {
    if (step == 0) {
        return start >= lower && start <= upper;
    }
    const double enter = ((step > 0 ? lower : upper) - start) / step;
    const double leave = ((step > 0 ? upper : lower) - start) / step;
    t0 = std::max(t0, enter);
    t1 = std::min(t1, leave);
    return t0 <= t1;
}

/// Brings both corners within reach; false where the rectangle cannot be drawn.
bool cutRectangle(Corners& corners) {
    if (!isFinite(corners.a) || !isFinite(corners.b)) {
        return false;
    }
    for (Point* p : {&corners.a, &corners.b}) {
        p->x = std::clamp(p->x, -DrawingLimit, DrawingLimit);
        p->y = std::clamp(p->y, -DrawingLimit, DrawingLimit);
    }
    return true;
}

} // namespace

bool cutLine(Point& from, Point& to, const Corners& area) {
    if (isInside(from, area) && isInside(to, area)) {
        return true;
    }
    if (!isFinite(from) || !isFinite(to)) {
        return false;
    }
    const Point start = from;
    const Point step{to.x - from.x, to.y - from.y};
    double t0 = 0;
    double t1 = 1;
    if (!cutRange(start.x, step.x, area.a.x, area.b.x, t0, t1) ||
        !cutRange(start.y, step.y, area.a.y, area.b.y, t0, t1)) {
        return false;
    }
    if (t0 > 0) {
        from = {start.x + t0 * step.x, start.y + t0 * step.y};
    }
    if (t1 < 1) {
        to = {start.x + t1 * step.x, start.y + t1 * step.y};
    }
    return isFinite(from) && isFinite(to);
}

void Surface::rectangle(const Corners& corners, Colour colour) {
    Corners cut = corners;
    if (cutRectangle(cut)) {
        drawRectangle(cut, {colour, width_});
    }
}

void Surface::filledRectangle(const Corners& corners, Colour colour) {
    Corners cut = corners;
    if (cutRectangle(cut)) {
        fillRectangle(cut, colour);
    }
}

void Surface::line(Point from, Point to, Colour colour) {
    last_ = to;
    if (cutLine(from, to, Drawable)) {
        drawLine(from, to, {colour, width_});
    }
}

void Surface::lineTo(Point to, Colour colour) {
    line(last_, to, colour);
}

void Surface::point(Point at, Colour colour) {
    last_ = at;
    if (isInside(at, Drawable)) {
        drawPoint(at, {colour, width_});
    }
}

void Surface::circle(Point centre, double radius, Colour colour) {
    last_ = centre;
    if (isInside(centre, Drawable) && std::isfinite(radius)) {
        drawCircle(centre, radius, {colour, width_});
    }
}

void Surface::text(Point upperLeft, std::string_view text) {
    if (isInside(upperLeft, Drawable)) {
        drawText(upperLeft, text);
    }
}

} // namespace korvane
