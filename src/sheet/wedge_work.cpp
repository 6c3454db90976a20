#include "sheet/wedge_work.h"

#include "sheet/pressure_parts.h"
#include "sheet/soil_work.h"
#include "state/tolerances.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::sheet {

namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double FarOut = 200000; ///< FT of level ground behind the last point

/// A straight line over a range of distances.
struct Segment {
    double x1, y1, x2, y2;

    double slope() const { return (y2 - y1) / (x2 - x1); }
    double at(double x) const { return y1 + slope() * (x - x1); }
};

/// Where the weight of a column of soil changes its rate: corners and crossings of all lines.
std::vector<double> stripEdges(const std::vector<Segment>& segments, double x1, double x2) {
    std::vector<double> edges{x1, x2};
    const auto add = [&](double x) {
        if (x > x1 && x < x2) {
            edges.push_back(x);
        }
    };
    for (std::size_t a = 0; a < segments.size(); ++a) {
        add(segments[a].x1);
        add(segments[a].x2);
        for (std::size_t b = 0; b < a; ++b) {
            const double closing = segments[a].slope() - segments[b].slope();
            if (closing != 0) {
                add((segments[b].at(0) - segments[a].at(0)) / closing);
            }
        }
    }
    std::sort(edges.begin(), edges.end());
    return edges;
}

double layerBottom(const Problem& problem, int side, int layer, double x) {
    return problem.SoilBottomElev(side, layer) + problem.SoilBottomSlope(side, layer) * x;
}

/// The soil of a side above a piece of plane.
class SoilAbovePiece {
  public:
    SoilAbovePiece(const Problem& problem, const PressureStage& stage, int side,
                   const WedgePiece& piece)
        : problem_(problem), side_(side), layer_(piece.layer),
          ground_(groundLine(problem, side)), plane_{piece.x1, piece.y1, piece.x2, piece.y2},
          gradient_(stage.gradient) {
        for (int layer = 1; layer < layer_; ++layer) {
            reaches_.push_back(layerReach(problem, side, layer));
        }
        if (problem.WaterDataKind != WaterData::Elevations) {
            return;
        }
        water_ = problem.WaterElev(side);
        if (problem.SeepageKind != Seepage::None) {
            seepTop_ = side == Right ? std::min(problem.SeepageElev, water_) : water_;
            // Up to the gradient that a design starts with, seepage has no end.
            seepEnd_ = gradient_ > StartGradient ? stage.seepageEnd : -Infinite;
        }
    }

    double weight() const {
        const std::vector<double> edges = stripEdges(segments(), plane_.x1, plane_.x2);
        double sum = 0;
        for (std::size_t n = 1; n < edges.size(); ++n) {
            const double width = edges[n] - edges[n - 1];
            sum += width * weightAt((edges[n] + edges[n - 1]) / 2);
        }
        return sum;
    }

  private:
    double bottomAt(int layer, double x) const { return layerBottom(problem_, side_, layer, x); }
    double groundAt(double x) const {
        std::size_t p = 1;
        while (p + 1 < ground_.size() && x > ground_[p].x) {
            ++p;
        }
        return Segment{ground_[p - 1].x, ground_[p - 1].y, ground_[p].x, ground_[p].y}.at(x);
    }

    std::vector<Segment> segments() const {
        const double far = ground_.back().x;
        std::vector<Segment> segments{plane_};
        for (std::size_t p = 1; p < ground_.size(); ++p) {
            segments.push_back({ground_[p - 1].x, ground_[p - 1].y, ground_[p].x, ground_[p].y});
        }
        for (int layer = 1; layer < layer_; ++layer) {
            segments.push_back({0, bottomAt(layer, 0), far, bottomAt(layer, far)});
        }
        for (const double level : {water_, seepTop_, seepEnd_}) {
            if (std::isfinite(level)) {
                segments.push_back({0, level, far, level});
            }
        }
        return segments;
    }

    /// LB/FT of a column of soil of a layer between two elevations. In the seepage the soil above
    /// the plane's own layer bears no water but the gradient's share: so the method has it.
    double weightBetween(int layer, double low, double high) const {
        const double all = std::max(0.0, high - low);
        const double wet = std::max(0.0, std::min(high, water_) - low);
        const double flow = std::max(0.0, std::min(high, seepTop_) - std::max(low, seepEnd_));
        const double moist = problem_.SoilMoistWeight(side_, layer);
        const double saturated = problem_.SoilSatWeight(side_, layer);
        const double water = problem_.WaterUnitWeight;
        const double share = (layer == layer_ ? 1 : 0) + (2 * side_ - 3) * gradient_;
        return (all - std::min(all, wet)) * moist + (wet - flow) * (saturated - water) +
               flow * (saturated - share * water);
    }

    double weightAt(double x) const {
        double top = groundAt(x);
        double sum = 0;
        for (int layer = 1; layer < layer_; ++layer) {
            if (x > reaches_[static_cast<std::size_t>(layer - 1)]) {
                continue;
            }
            const double bottom = std::min(top, bottomAt(layer, x));
            sum += weightBetween(layer, bottom, top);
            top = bottom;
        }
        return sum + weightBetween(layer_, plane_.at(x), top);
    }

    const Problem& problem_;
    int side_;
    int layer_;
    std::vector<GroundPoint> ground_;
    std::vector<double> reaches_; ///< FT, of the layers above the plane's own
    Segment plane_;
    double gradient_;
    double water_ = -Infinite;
    double seepTop_ = -Infinite;
    double seepEnd_ = -Infinite;
};

/// The part of a load of p1 at a to p2 at b that stands between x1 and x2.
double straightLoad(double a, double p1, double b, double p2, double x1, double x2) {
    const double left = std::max(a, x1);
    const double right = std::min(b, x2);
    if (!(right > left) || !(b > a)) {
        return 0;
    }
    const double middle = (left + right) / 2;
    return (right - left) * (p1 + (p2 - p1) * (middle - a) / (b - a));
}

} // namespace

std::vector<GroundPoint> groundLine(const Problem& problem, int side) {
    std::vector<GroundPoint> ground{{0, problem.SurfaceElev(side, 1)}};
    const int count = problem.SurfacePointCount(side);
    for (int p = 1; p <= count; ++p) {
        if (p > 1 || problem.SurfaceDist(side, p) > 0) {
            ground.push_back({problem.SurfaceDist(side, p), problem.SurfaceElev(side, p)});
        }
    }
    ground.push_back({problem.SurfaceDist(side, count) + FarOut, ground.back().y});
    return ground;
}

double layerReach(const Problem& problem, int side, int layer) {
    const std::vector<GroundPoint> ground = groundLine(problem, side);
    const auto height = [&](const GroundPoint& point) {
        return point.y - layerBottom(problem, side, layer, point.x);
    };
    for (std::size_t p = 1; p < ground.size(); ++p) {
        const double here = height(ground[p]);
        if (here <= 0) {
            const double before = height(ground[p - 1]);
            return ground[p - 1].x + before / (before - here) * (ground[p].x - ground[p - 1].x);
        }
    }
    return Infinite;
}

double soilWeight(const Problem& problem, const PressureStage& stage, int side,
                  const WedgePiece& piece) {
    return SoilAbovePiece(problem, stage, side, piece).weight();
}

double loadWeight(const Problem& problem, int side, const WedgePiece& piece) {
    const double x1 = piece.x1;
    const double x2 = piece.x2;
    double sum = problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) * (x2 - x1) : 0;
    for (int i = 1; i <= problem.VLineCount(side); ++i) {
        const double x = problem.VLineDist(side, i);
        sum += x >= x1 && x < x2 ? problem.VLineLoad(side, i) : 0;
    }
    for (int i = 1; i <= problem.VStripCount(side); ++i) {
        const double load = problem.VStripLoad(side, i);
        sum += straightLoad(problem.VStripStart(side, i), load, problem.VStripEnd(side, i), load,
                            x1, x2);
    }
    if (problem.VRampCount(side) != 0) {
        const double end = problem.VRampEnd(side);
        const double load = problem.VRampLoad(side);
        sum += straightLoad(problem.VRampStart(side), 0, end, load, x1, x2);
        sum += load * std::max(0.0, x2 - std::max(end, x1));
    }
    for (int i = 1; i <= problem.VTriCount(side); ++i) {
        const double peak = problem.VTriPeak(side, i);
        const double load = problem.VTriLoad(side, i);
        sum += straightLoad(problem.VTriStart(side, i), 0, peak, load, x1, x2);
        sum += straightLoad(peak, load, problem.VTriEnd(side, i), 0, x1, x2);
    }
    for (int i = 1; i < problem.VVarCount(side); ++i) {
        sum += straightLoad(problem.VVarDist(side, i), problem.VVarLoad(side, i),
                            problem.VVarDist(side, i + 1), problem.VVarLoad(side, i + 1), x1, x2);
    }
    return sum;
}

namespace {

/// FT: where the method's way down the wall begins. The sweep goes from row to row and begins at
/// the last of the rows that count as the surface's.
double wallTop(const SheetRequest& request, const PressureStage& stage, int side) {
    const double surface = request.problem.SurfaceElev(side, 1);
    double top = surface;
    if (sideMethods(request)(side) == PressureMethod::Sweep) {
        const double first = stage.details->sides(side).wedge.rows.front().elev;
        for (int row = 1; row <= stage.diagrams.grid.NumElevs; ++row) {
            const double elev = stage.diagrams.grid.ElevGrid(row);
            top = std::abs(elev - surface) <= SameElevation && elev > first ? elev : top;
        }
    }
    return top;
}

} // namespace

WallStrengths wallTerms(const SheetRequest& request, const PressureStage& stage, int side,
                        double elev, bool active) {
    const Problem& problem = request.problem;
    const double searched = searchedFactor(request, stage.level);
    WallStrengths terms;
    double top = wallTop(request, stage, side);
    // A first row may stand a hair above the surface: then the height is negative.
    for (int layer = 1; layer == 1 || (layer <= problem.SoilLayerCount(side) && top > elev);
         ++layer) {
        const bool last = layer == problem.SoilLayerCount(side);
        const double bottom = last ? elev : std::max(elev, problem.SoilBottomElev(side, layer));
        const LayerWork work = layerWork(problem, side, layer, searched);
        const double height = top - bottom;
        terms.friction += height * (active ? work.wallFrictionActive : work.wallFrictionPassive);
        terms.adhesion += height * (active ? work.adhesionActive : work.adhesionPassive);
        top = bottom;
    }
    terms.friction /= problem.SurfaceElev(side, 1) - elev;
    return terms;
}

PieceSymbols::PieceSymbols(const WedgePiece& piece, bool active)
    : W(term("W", "", piece.soil + piece.surcharge, Quantity::Force)),
      C(term("C", "", piece.cohesion, Quantity::Force)), t(term("t", "", piece.friction)),
      a(term("α", "", piece.angle, Quantity::Angle)), sign(active ? 1 : -1) {}

Expr PieceSymbols::A() const {
    return sign > 0 ? sine(a) + t * cosine(a) : sine(a) - t * cosine(a);
}

Expr PieceSymbols::B() const {
    return sign > 0 ? t * sine(a) - cosine(a) : -(t * sine(a) + cosine(a));
}

Expr PieceSymbols::outward() const {
    const Expr ratio = term("B", "", B().value()) / term("A", "", A().value());
    if (C.value() == 0 && W.value() != 0) {
        return -(W * ratio);
    }
    return sign > 0 ? -((W - C * cosine(a)) * ratio) - C * sine(a)
                    : -((W + C * cosine(a)) * ratio) + C * sine(a);
}

double PieceSymbols::termsOfA() const {
    return std::abs(sine(a).value()) + std::abs((t * cosine(a)).value());
}

double PieceSymbols::termsOfB() const {
    return std::abs((t * sine(a)).value()) + std::abs(cosine(a).value());
}

double PieceSymbols::lostOutward() const {
    return TermRounding * termsOfA() / std::abs(A().value()) * std::abs(outward().value());
}

namespace {

/// LB: what rounding may make of the force on the wall: of its divisor, its sums and what the outer
/// pieces have lost.
double lostOfForce(const PieceSymbols& piece, const WallForce& force, double outerForce,
                   const WallStrengths& wall, double lostOutside) {
    const double delta = wall.friction * DegreesToRadians;
    const double divisor =
        piece.termsOfB() * std::abs(std::sin(delta)) + piece.termsOfA() * std::abs(std::cos(delta));
    const double cohesion = std::abs(piece.C.value());
    const double vertical = std::abs(piece.W.value()) + std::abs(wall.adhesion) + cohesion;
    const double sums =
        vertical * piece.termsOfB() + (std::abs(outerForce) + cohesion) * piece.termsOfA();
    return (TermRounding * (std::abs(force.P.value()) * divisor + sums) +
            lostOutside * std::abs(force.A.value())) /
           std::abs(force.D.value());
}

} // namespace

WallForce wallForce(const PieceSymbols& piece, double outerForce, const WallStrengths& wall,
                    double lostOutside) {
    const Expr delta = term("δ", "", wall.friction, Quantity::Angle);
    const Expr H = term("H", "", outerForce, Quantity::Force);
    const Expr T = term("T", "", wall.adhesion, Quantity::Force);
    const Expr A = term("A", "", piece.A().value());
    const Expr B = term("B", "", piece.B().value());
    const bool active = piece.sign > 0;
    const Expr divisor =
        active ? B * sine(delta) - A * cosine(delta) : -(B * sine(delta)) - A * cosine(delta);
    const Expr D = term("D", "", divisor.value());
    Expr vertical = piece.W;
    if (wall.adhesion != 0) {
        vertical = active ? vertical - T : vertical + T;
    }
    Expr level = H;
    const bool pushed = outerForce != 0 || piece.C.value() != 0;
    if (piece.C.value() != 0) {
        const Expr along = piece.C * cosine(piece.a);
        vertical = active ? vertical - along : vertical + along;
        level = active ? H - piece.C * sine(piece.a) : H + piece.C * sine(piece.a);
    }
    const Expr P = (pushed ? vertical * B - level * A : vertical * B) / D;
    WallForce force{piece.A(), piece.B(), divisor, P,
                    term("P", "", P.value(), Quantity::Force) * cosine(delta)};
    force.lost = lostOfForce(piece, force, outerForce, wall, lostOutside);
    return force;
}

std::vector<ForceVector> forcePolygon(const PieceSymbols& piece, double outerForce,
                                      const WallStrengths& wall, double wallForce) {
    const double sign = piece.sign;
    const double sin = sine(piece.a).value();
    const double cos = cosine(piece.a).value();
    const double delta = wall.friction * DegreesToRadians;
    const double along = sign * piece.C.value();
    std::vector<ForceVector> forces{{.name = "W", .y = -piece.W.value()}};
    const auto add = [&](const char* name, double x, double y) {
        if (x != 0 || y != 0) {
            forces.push_back({.name = name, .x = x, .y = y});
        }
    };
    add("T", 0, sign * wall.adhesion);
    add("C", along * sin, along * cos);
    add("H", -outerForce, 0);
    const ForceVector push{"P", wallForce * std::cos(delta), sign * wallForce * std::sin(delta),
                           ForceVector::Kind::Wall};
    ForceVector reaction{"R", -push.x, -push.y, ForceVector::Kind::Reaction};
    for (const ForceVector& force : forces) {
        reaction.x -= force.x;
        reaction.y -= force.y;
    }
    forces.push_back(reaction);
    forces.push_back(push);
    return forces;
}

ReactionTangent reactionTangent(const std::vector<ForceVector>& polygon, const PieceSymbols& piece,
                                double lostForce) {
    const auto isReaction = [](const ForceVector& force) {
        return force.kind == ForceVector::Kind::Reaction;
    };
    const ForceVector& reaction = *std::find_if(polygon.begin(), polygon.end(), isReaction);
    const double sin = sine(piece.a).value();
    const double cos = cosine(piece.a).value();
    const double along = reaction.x * sin + reaction.y * cos;
    const double across = -reaction.x * cos + reaction.y * sin;
    double lost = lostForce;
    for (const ForceVector& force : polygon) {
        lost += TermRounding * std::hypot(force.x, force.y);
    }
    const double tangent = piece.sign * along / across;
    return {tangent, lost * (1 + std::abs(tangent)) / std::abs(across),
            std::hypot(reaction.x, reaction.y) <= lost};
}

namespace {

constexpr double Width = 250, Height = 190, Margin = 22; ///< of a drawing at most, pixels

std::string number(double value) {
    std::string text;
    const double rounded = std::round(value * 10) / 10;
    const auto whole = static_cast<long long>(rounded);
    text = std::to_string(whole);
    const auto tenth = std::llround(std::abs(rounded - static_cast<double>(whole)) * 10);
    if (tenth != 0) {
        text += "." + std::to_string(tenth);
    }
    return value < 0 && whole == 0 && tenth != 0 ? "-" + text : text;
}

/// An arrow with its name beside the middle, on the outer side of the polygon.
std::string arrow(double x1, double y1, double x2, double y2, const ForceVector& force) {
    const double length = std::max(1e-9, std::hypot(x2 - x1, y2 - y1));
    const double ux = (x2 - x1) / length;
    const double uy = (y2 - y1) / length;
    constexpr double head = 7;
    constexpr double away = 11;
    const std::string name(force.name);
    const double half = head * 0.4;
    const auto step = [](double dx, double dy) {
        const std::string second = number(dy);
        return "l" + number(dx) + (second.front() == '-' ? "" : " ") + second;
    };
    std::string text =
        force.kind == ForceVector::Kind::Given ? "<path" : "<path class=\"" + name + "\"";
    text += " d=\"M" + number(x1) + " " + number(y1) + "L" + number(x2) + " " + number(y2);
    if (length > head) {
        text += "m0 0" + step(-head * ux - half * uy, -head * uy + half * ux) +
                step(2 * half * uy, -2 * half * ux) + "z";
    }
    return text + "\"/><text x=\"" + number((x1 + x2) / 2 + away * uy) + "\" y=\"" +
           number((y1 + y2) / 2 - away * ux + 4) + "\">" + name + "</text>\n";
}

} // namespace

std::string polygonDrawing(const std::vector<ForceVector>& polygon, std::string_view title) {
    double x = 0, y = 0, left = 0, right = 0, low = 0, high = 0;
    for (const ForceVector& force : polygon) {
        x += force.x;
        y += force.y;
        left = std::min(left, x);
        right = std::max(right, x);
        low = std::min(low, y);
        high = std::max(high, y);
    }
    const double scale = std::min((Width - 2 * Margin) / std::max(right - left, 1e-9),
                                  (Height - 2 * Margin) / std::max(high - low, 1e-9));
    const double shift = (Width - scale * (right - left)) / 2;
    const auto atX = [&](double value) { return shift + scale * (value - left); };
    const auto atY = [&](double value) { return Margin + scale * (high - value); };
    const double height = 2 * Margin + scale * (high - low);
    std::string text = "<svg class=\"q\" width=\"" + number(Width) + "\" height=\"" +
                       number(height) + "\" viewBox=\"0 0 " + number(Width) + " " + number(height) +
                       "\" role=\"img\"><title>" + std::string(title) + "</title>\n";
    x = y = 0;
    for (const ForceVector& force : polygon) {
        const double nextX = x + force.x;
        const double nextY = y + force.y;
        text += arrow(atX(x), atY(y), atX(nextX), atY(nextY), force);
        x = nextX;
        y = nextY;
    }
    return text + "</svg>";
}

} // namespace korvane::sheet
