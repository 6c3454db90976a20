#include "drawing.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <sstream>
#include <utility>

namespace korvane::test {

namespace {

using Kind = Primitive::Kind;
constexpr double HalfCharacter = RecordingSurface::CharacterWidth / 2;
constexpr double TextHeight = RecordingSurface::CharacterHeight;

std::string described(const Primitive& p) {
    constexpr std::array<const char*, 6> names{"box",   "filled box", "line",
                                               "point", "circle",     "text"};
    std::ostringstream out;
    out.precision(10);
    out << names.at(static_cast<std::size_t>(p.kind)) << " (" << p.a.x << ", " << p.a.y << ")";
    if (p.kind == Kind::Text) {
        out << " \"" << p.text << '"';
        return out.str();
    }
    if (p.kind != Kind::Point && p.kind != Kind::Circle) {
        out << " (" << p.b.x << ", " << p.b.y << ")";
    }
    out << " rgb " << p.colour.red << ' ' << p.colour.green << ' ' << p.colour.blue << " width "
        << p.width;
    if (p.kind == Kind::Circle) {
        out << " radius " << p.radius;
    }
    return out.str();
}

bool isNear(Point a, Point b) {
    constexpr double Tolerance = 1e-6;
    return std::abs(a.x - b.x) <= Tolerance && std::abs(a.y - b.y) <= Tolerance;
}

bool isSame(const Primitive& p, const Primitive& q) {
    return p.kind == q.kind && isNear(p.a, q.a) && isNear(p.b, q.b) && p.colour == q.colour &&
           p.width == q.width && p.radius == q.radius && p.text == q.text;
}

} // namespace

Primitive box(double x1, double y1, double x2, double y2, Colour colour, int width) {
    return {Kind::Rectangle, {x1, y1}, {x2, y2}, colour, width, 0, {}};
}

Primitive filledBox(double x1, double y1, double x2, double y2) {
    return {Kind::FilledRectangle, {x1, y1}, {x2, y2}, Black, 0, 0, {}};
}

Primitive line(double x1, double y1, double x2, double y2, Colour colour, int width) {
    return {Kind::Line, {x1, y1}, {x2, y2}, colour, width, 0, {}};
}

Primitive point(double x, double y, Colour colour, int width) {
    return {Kind::Point, {x, y}, {}, colour, width, 0, {}};
}

Primitive circle(double x, double y, double radius, Colour colour, int width) {
    return {Kind::Circle, {x, y}, {}, colour, width, radius, {}};
}

Primitive textAt(double left, double upper, const std::string& words) {
    return {Kind::Text, {left, upper}, {}, Black, 0, 0, words};
}

Primitive centred(double x, double y, const std::string& words) {
    return textAt(x - HalfCharacter * static_cast<double>(words.size()), y, words);
}

Primitive middle(double x, double y, const std::string& words) {
    return centred(x, y - TextHeight / 2, words);
}

Primitive lowerEdge(double x, double y, const std::string& words) {
    return centred(x, y - TextHeight, words);
}

Drawing strokes(const std::vector<Point>& points, Colour colour, int width) {
    Drawing drawing;
    for (std::size_t i = 1; i < points.size(); ++i) {
        drawing.push_back(
            line(points[i - 1].x, points[i - 1].y, points[i].x, points[i].y, colour, width));
    }
    return drawing;
}

Drawing joined(const std::vector<Drawing>& parts) {
    Drawing all;
    for (const Drawing& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

Drawing moved(Drawing drawing, double dx, double dy) {
    for (Primitive& p : drawing) {
        p.a = {p.a.x + dx, p.a.y + dy};
        if (p.kind != Kind::Point && p.kind != Kind::Circle && p.kind != Kind::Text) {
            p.b = {p.b.x + dx, p.b.y + dy};
        }
    }
    return drawing;
}

Drawing onPaper(Drawing drawing) {
    return moved(std::move(drawing), 1440, 4320);
}

void expectDrawing(const Drawing& drawn, const Drawing& expected) {
    for (std::size_t i = 0; i < std::min(drawn.size(), expected.size()); ++i) {
        EXPECT_TRUE(isSame(drawn[i], expected[i]))
            << "primitive " << i << "\n  drawn    " << described(drawn[i]) << "\n  expected "
            << described(expected[i]);
    }
    EXPECT_EQ(drawn.size(), expected.size());
    for (std::size_t i = expected.size(); i < drawn.size(); ++i) {
        ADD_FAILURE() << "drawn besides: " << described(drawn[i]);
    }
}

std::vector<std::string> textsOf(const Drawing& drawn) {
    std::vector<std::string> texts;
    for (const Primitive& p : drawn) {
        if (p.kind == Kind::Text) {
            texts.push_back(p.text);
        }
    }
    return texts;
}

Drawing linesOf(const Drawing& drawn, Colour colour, int width) {
    Drawing lines;
    for (const Primitive& p : drawn) {
        if (p.kind == Kind::Line && p.colour == colour && p.width == width) {
            lines.push_back(p);
        }
    }
    return lines;
}

bool isFinite(const Drawing& drawn) {
    for (const Primitive& p : drawn) {
        if (!std::isfinite(p.a.x) || !std::isfinite(p.a.y) || !std::isfinite(p.b.x) ||
            !std::isfinite(p.b.y)) {
            return false;
        }
    }
    return true;
}

namespace {

void describeSmallWall(Problem& problem) {
    problem = plainCantilever();
    problem.WallTopElev = 0;
    problem.AnchorElev = -2;
    problem.SurfaceElev(Right, 1) = 0;
    problem.SurfaceElev(Left, 1) = -8;
    for (const int side : {Right, Left}) {
        problem.SoilLayerCount(side) = 2;
        problem.SoilBottomElev(side, 2) = NoLayerBottom;
    }
    problem.SoilBottomElev(Right, 1) = -5;
    problem.SoilBottomElev(Left, 1) = -12;
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterElev(Right) = -4;
    problem.WaterElev(Left) = -10;
}

void fillDiagrams(ResultDiagrams& diagrams) {
    setRows(diagrams, {{0, 0, 0, 2.5e9, 0},
                       {-5, 1000, 500, 1e9, 250},
                       {-5, 1000, 1990, 1e9, 450},
                       {-10, 3450, -960, -9.5e8, -100},
                       {-20, -750, 0, 0, 350}});
    diagrams.DeflectionRange = {2.5e9, -9.5e8};
    diagrams.MomentRange = {3450, -750};
    diagrams.ShearRange = {1990, -960};
    diagrams.PressureRange = {450, -100};
}

/// (i, k): rows of both sides; what stands at the fifth row lies below the wall.
void fillPressures(Pressures& pressures) {
    const auto set = [](auto& values, int side, int i, double above, double below) {
        values(side, i, 2) = above;
        values(side, i, 1) = below;
    };
    set(pressures.ActivePressures, Right, 2, 100, 150);
    set(pressures.ActivePressures, Right, 3, 250, 250);
    set(pressures.ActivePressures, Right, 4, 380, 380);
    set(pressures.PassivePressures, Right, 1, 0, 40);
    set(pressures.PassivePressures, Right, 2, 400, 500);
    set(pressures.PassivePressures, Right, 3, 600, 600);
    set(pressures.PassivePressures, Right, 4, 720, 720);
    set(pressures.ActivePressures, Left, 3, 60, 80);
    set(pressures.ActivePressures, Left, 4, 200, 200);
    set(pressures.PassivePressures, Left, 3, 300, 320);
    set(pressures.PassivePressures, Left, 4, 780, 780);
    for (int i = 1; i <= 4; ++i) {
        pressures.WaterPressures(i, 2) =
            std::array<double, 4>{0, 75, 300, 150}.at(static_cast<std::size_t>(i - 1));
        pressures.WaterPressures(i, 1) =
            std::array<double, 4>{0, 75, 225, 150}.at(static_cast<std::size_t>(i - 1));
    }
    pressures.WaterPressures(5, 2) = 4000; // below the wall: never looked at
}

} // namespace

SmallWall::SmallWall() {
    describeSmallWall(problem);
    results.levelCount = 2;
    for (PressureDiagrams* moment :
         {&results.review.diagrams, &results.levels(1).solved, &results.levels(2).solved}) {
        setElevations(moment->grid, {0, -5, -10, -20, -30});
        fillPressures(moment->pressures);
    }
    results.levels(1).solved.pressures.WaterPressures.fill(7777);
    for (const int number : {1, 2}) {
        LevelResult& level = results.levels(number);
        level.bottomElev = number == 1 ? -20 : -24;
        fillDiagrams(level.diagrams);
    }
}

} // namespace korvane::test
