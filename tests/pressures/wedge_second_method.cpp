#include "wedge_second_method.h"

#include "pressures/wedge_load.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace korvane::test {

namespace {

constexpr double Degree = std::numbers::pi / 180;

/// Unknowns p, n of a1 p + b1 n = c1, a2 p + b2 n = c2; the first one.
double firstUnknown(double a1, double b1, double c1, double a2, double b2, double c2) {
    return (c1 * b2 - c2 * b1) / (a1 * b2 - a2 * b1);
}

/// One wedge on a plane at angle `th` from the horizontal. The plane pushes with a normal force N
/// and, along the plane, with N t + C: up the plane where the wedge slides down (s = +1, active),
/// down the plane where it is pushed up (s = -1, passive).
struct Wedge {
    double W, C, t, th;
    int s;

    double alongX(double n) const { return s * (n * t + C) * std::cos(th); }
    double alongY(double n) const { return s * (n * t + C) * std::sin(th); }
    /// Horizontal force on the next wedge, without friction between them, from that of the outer.
    double handOn(double outer) const {
        // up: N cos th + s (N t + C) sin th = W
        const double n = (W - s * C * std::sin(th)) / (std::cos(th) + s * t * std::sin(th));
        return outer + n * std::sin(th) - alongX(n);
    }
    /// Force of the wall, at friction angle `delta` and with total adhesion T.
    double onWall(double outer, double delta, double T) const {
        // across: p cos d - N sin th + s (N t + C) cos th = outer
        // up:     s p sin d + s T + N cos th + s (N t + C) sin th = W
        return firstUnknown(std::cos(delta), -std::sin(th) + s * t * std::cos(th),
                            outer - s * C * std::cos(th), s * std::sin(delta),
                            std::cos(th) + s * t * std::sin(th), W - s * T - s * C * std::sin(th));
    }
};

} // namespace

double FreeBodies::factor(int layer, int s) const {
    const Preparation& p = bench_.state->preparation;
    return s > 0 ? p.LayerFSActive(side_, layer, 1) : p.LayerFSPassive(side_, layer, 1);
}

double FreeBodies::tangent(int layer, int s) const {
    return std::tan(problem_.SoilFriction(side_, layer) * Degree) / factor(layer, s);
}

WallMean FreeBodies::wall(double y, int s) const {
    const double surface = problem_.SurfaceElev(side_, 1);
    WallMean sum{0, 0};
    double top = surface;
    for (int layer = 1; layer <= problem_.SoilLayerCount(side_) && top > y; ++layer) {
        const bool last = layer == problem_.SoilLayerCount(side_);
        const double bottom = last ? y : std::max(y, problem_.SoilBottomElev(side_, layer));
        const double delta = std::atan(std::tan(problem_.SoilWallFriction(side_, layer) * Degree) /
                                       factor(layer, s));
        sum.friction += (top - bottom) * delta;
        sum.adhesion += (top - bottom) * problem_.SoilAdhesion(side_, layer) / factor(layer, s);
        top = bottom;
    }
    sum.friction /= surface - y;
    return sum;
}

double FreeBodies::loadOn(const PlanePiece& p) const {
    const double slope = (p.y2 - p.y1) / (p.x2 - p.x1);
    return WedgeWeight(described_, p.y1, slope, p.x1, p.y1, p.x2, p.layer) +
           WedgeSurchargeLoad(described_, p.x1, p.x2);
}

/// Where a line of slope `k` from (x, y) in the soil first comes to the ground.
double FreeBodies::groundHit(double x, double y, double k) const {
    std::vector<double> ends;
    for (int p = 1; p <= problem_.SurfacePointCount(side_); ++p) {
        ends.push_back(problem_.SurfaceDist(side_, p));
    }
    ends.push_back(problem_.SurfaceDist(side_, problem_.SurfacePointCount(side_)) + 200000);
    double left = x;
    double under = soil_.surface(x) - y;
    for (const double right : ends) {
        if (right <= left) {
            continue;
        }
        const double underRight = soil_.surface(right) - (y + k * (right - x));
        if (underRight <= 0) {
            return left + (right - left) * under / (under - underRight);
        }
        left = right;
        under = underRight;
    }
    ADD_FAILURE() << "no ground";
    return left;
}

std::vector<PlanePiece> FreeBodies::straightPieces(double y0, double k) const {
    const double xg = groundHit(0, y0, k);
    std::vector<double> cuts{0, xg};
    for (int b = 1; b < problem_.SoilLayerCount(side_); ++b) {
        const double x =
            (problem_.SoilBottomElev(side_, b) - y0) / (k - problem_.SoilBottomSlope(side_, b));
        if (x > 0 && x < xg && soil_.boundaryExists(b, x)) {
            cuts.push_back(x);
        }
    }
    std::sort(cuts.rbegin(), cuts.rend());
    std::vector<PlanePiece> pieces;
    for (std::size_t i = 1; i < cuts.size(); ++i) {
        const double x2 = cuts[i - 1];
        const double x1 = cuts[i];
        const double middle = (x1 + x2) / 2;
        pieces.push_back(
            {x1, y0 + k * x1, x2, y0 + k * x2, soil_.layerAt(middle, y0 + k * middle)});
    }
    return pieces;
}

/// Force of one straight plane; -100000 (active) or 0 (passive) where several layers give none.
double FreeBodies::sweepForce(const std::vector<PlanePiece>& pieces, double angle, double y0,
                              int s) const {
    const WallMean mean = wall(y0, s);
    double outer = 0;
    bool exists = true;
    for (const PlanePiece& piece : pieces) {
        const double length = std::hypot(piece.x2 - piece.x1, piece.y2 - piece.y1);
        const Wedge wedge{loadOn(piece),
                          length * problem_.SoilCohesion(side_, piece.layer) /
                              factor(piece.layer, s),
                          tangent(piece.layer, s), std::numbers::pi / 2 - angle, s};
        if (&piece != &pieces.back()) {
            const double next = wedge.handOn(outer);
            exists = exists && (s > 0 || next > outer);
            outer = next;
            continue;
        }
        const double force = wedge.onWall(outer, mean.friction, mean.adhesion);
        if (pieces.size() == 1) {
            return force;
        }
        if (s > 0) {
            return force < 0 ? -100000 : force;
        }
        return exists && force > outer ? force : 0;
    }
    return 0;
}

double FreeBodies::flattestPlane(double y0) const {
    double flattest = 1e9;
    const int count = problem_.SurfacePointCount(side_);
    for (int p = 1; p <= count; ++p) {
        const double x = problem_.SurfaceDist(side_, p);
        if (x > 0 && count > 1) {
            flattest = std::min(flattest, (problem_.SurfaceElev(side_, p) - y0) / x);
        }
    }
    const double farEnd = problem_.SurfaceDist(side_, count) + 200000;
    flattest = std::min(flattest, (problem_.SurfaceElev(side_, count) - y0) / farEnd);
    flattest = std::min(flattest, (0 - y0) / (farEnd + 200000));
    return std::numbers::pi / 2 - std::atan(flattest) - 2 * Degree;
}

double FreeBodies::onPlane(double y0, double angle, int s) const {
    return sweepForce(straightPieces(y0, 1 / std::tan(angle)), angle, y0, s) *
           std::cos(wall(y0, s).friction);
}

FreeBodies::Row FreeBodies::sweep(double y0, bool lastRow) const {
    const double top = flattestPlane(y0);
    const bool surcharged = bench_.state->preparation.NumSurchargesOnSide(side_) != 0;
    Row row{-100000, 0, false, false, 0};
    bool gain = false;
    bool rising = false;
    bool early = false;
    for (int degrees = 23; !early; degrees += 2) {
        const double angle = std::min(degrees * Degree, top);
        const auto pieces = straightPieces(y0, 1 / std::tan(angle));
        row.severalLayers += pieces.size() > 1 ? 1 : 0;
        const double active = sweepForce(pieces, angle, y0, 1);
        const double passive = sweepForce(pieces, angle, y0, -1);
        gain = active > row.active;
        row.active = std::max(row.active, active);
        if (passive >= 0.0001) {
            rising = row.passive > 0 && passive > row.passive;
            row.passive = rising ? row.passive : passive;
        }
        if (!gain && rising && !surcharged) {
            early = true;
        } else if (degrees * Degree > top) {
            break;
        }
    }
    row.activeMarked = !early && !lastRow && gain;
    row.passiveMarked = !early && !lastRow && !rising;
    row.active *= std::cos(wall(y0, 1).friction);
    row.passive *= std::cos(wall(y0, -1).friction);
    return row;
}

double FreeBodies::fixed(double y, int s) const {
    struct Body {
        PlanePiece piece;
        double th;
    };
    std::vector<Body> bodies; // from the wall outward
    PlanePiece piece{0, y, 0, 0, soil_.layerAt(0, y)};
    double slopeLimit = NAN; // of the boundary that the piece may not pass again
    int crossed = 0;         // that boundary
    for (int pieces = 0; pieces < 20; ++pieces) {
        const double th = Degree * 45 + s * std::atan(tangent(piece.layer, s)) / 2;
        double k = std::tan(th);
        const bool upward = crossed == piece.layer; // came from below
        if (crossed != 0 && (upward ? k < slopeLimit : k > slopeLimit)) {
            k = slopeLimit;
        }
        piece.x2 = groundHit(piece.x1, piece.y1, k);
        int next = piece.layer;
        for (const int b : {piece.layer - 1, piece.layer}) {
            if (b < 1 || b >= problem_.SoilLayerCount(side_) || b == crossed) {
                continue;
            }
            const double slope = problem_.SoilBottomSlope(side_, b);
            const double x =
                (problem_.SoilBottomElev(side_, b) - piece.y1 + k * piece.x1) / (k - slope);
            if (x > piece.x1 && x < piece.x2 && soil_.boundaryExists(b, x)) {
                piece.x2 = x;
                next = b == piece.layer ? b + 1 : b;
            }
        }
        piece.y2 = piece.y1 + k * (piece.x2 - piece.x1);
        bodies.push_back({piece, th});
        if (next == piece.layer) {
            break;
        }
        crossed = std::min(next, piece.layer);
        slopeLimit = problem_.SoilBottomSlope(side_, crossed);
        piece = {piece.x2, piece.y2, 0, 0, next};
    }
    const WallMean mean = wall(y, s);
    double outer = 0;
    for (std::size_t i = bodies.size(); i-- > 0;) {
        const PlanePiece& p = bodies[i].piece;
        const Wedge wedge{loadOn(p),
                          std::hypot(p.x2 - p.x1, p.y2 - p.y1) *
                              problem_.SoilCohesion(side_, p.layer) / factor(p.layer, s),
                          tangent(p.layer, s), bodies[i].th, s};
        outer = i > 0 ? wedge.handOn(outer)
                      : wedge.onWall(outer, mean.friction, mean.adhesion) * std::cos(mean.friction);
    }
    return outer;
}

} // namespace korvane::test
