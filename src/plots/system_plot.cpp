// The system of wall, ground, layers, water and anchor.
#include "plots/frame.h"
#include "plots/input_plots.h"
#include "runtime/number_text.h"

#include <algorithm>
#include <string>

namespace korvane {

namespace {

constexpr double EdgeLeft = 1920;
constexpr double EdgeRight = 9120;
constexpr double DrawingHeight = 5400;
constexpr double WallHalf = 72;
constexpr double Column = 960; ///< of the elevations

/// On paper the edges stand at 3600 and 10800, but the column at 2520.
constexpr Point SystemShift{1680, 4320};
constexpr double ColumnOnPaper = 2520 - SystemShift.x;

/// The part of the world on show, and its mapping to twips on the screen.
struct SystemView {
    double lower = 0;      ///< FT, elevation at the lower edge
    double height = 1;     ///< FT
    double leftReach = 0;  ///< FT from the wall
    double rightReach = 0; ///< FT from the wall

    double reach(int side) const { return side == Right ? rightReach : leftReach; }
    double width() const { return leftReach + rightReach; }
    double wallX() const { return leftReach / width() * (EdgeRight - EdgeLeft) + EdgeLeft; }
    double x(int side, double distance) const {
        const double shift = distance / width() * (EdgeRight - EdgeLeft);
        return side == Right ? wallX() + shift : wallX() - shift;
    }
    double y(double elevation) const { return (1 - (elevation - lower) / height) * DrawingHeight; }
    double edge(int side) const { return side == Right ? EdgeRight : EdgeLeft; }
    double face(int side) const { return side == Right ? wallX() + WallHalf : wallX() - WallHalf; }
};

SystemView systemView(const Problem& problem) {
    double upper = problem.WallTopElev;
    double lower = problem.WallTopElev - 10;
    if (problem.WallType == WallKind::Anchored) {
        lower = problem.AnchorElev;
    }
    if (problem.ProgramMode == Mode::Analysis) {
        lower = problem.WallBottomElev;
    }
    const auto take = [&](double elevation) {
        upper = std::max(upper, elevation);
        lower = std::min(lower, elevation);
    };
    SystemView view;
    for (const int side : {Right, Left}) {
        const int points = problem.SurfacePointCount(side);
        for (int i = 1; i <= points; ++i) {
            take(problem.SurfaceElev(side, i));
        }
        if (problem.WaterDataKind == WaterData::Elevations) {
            take(problem.WaterElev(side));
        }
        for (int i = 1; i < problem.SoilLayerCount(side); ++i) {
            take(problem.SoilBottomElev(side, i));
        }
        const double last = points > 0 ? problem.SurfaceDist(side, points) : 0;
        (side == Right ? view.rightReach : view.leftReach) = (last > 0 ? last : 10) + 1;
    }
    view.lower = lower - 1;
    view.height = upper - view.lower + 1;
    return view;
}

void writeElevation(Sheet& sheet, const SystemView& view, double elevation) {
    sheet.text(sheet.onPaper() ? ColumnOnPaper : Column, Across::Middle, view.y(elevation),
               Down::Middle, "EL= " + formatNumber(elevation, "###0.0"));
}

/// In design the wall runs to the bottom of the drawing: its length is not known.
void drawWall(Sheet& sheet, const Problem& problem, const SystemView& view) {
    const bool design = problem.ProgramMode == Mode::Design;
    const double bottom = design ? DrawingHeight : view.y(problem.WallBottomElev);
    sheet.filledBox({view.face(Left), view.y(problem.WallTopElev)}, {view.face(Right), bottom});
    writeElevation(sheet, view, problem.WallTopElev);
    if (!design) {
        writeElevation(sheet, view, problem.WallBottomElev);
    }
}

/// From the wall's face flat to the first point, then from point to point; one point: flat to the
/// edge.
void drawGround(Sheet& sheet, const Problem& problem, const SystemView& view, int side) {
    const auto& SurfaceElev = problem.SurfaceElev;
    const int points = problem.SurfacePointCount(side);
    if (points < 1) {
        return;
    }
    const auto x = [&](int i) { return view.x(side, problem.SurfaceDist(side, i)); };
    Point last{view.face(side), view.y(SurfaceElev(side, 1))};
    const auto runTo = [&](Point next) {
        sheet.line(last, next);
        last = next;
    };
    if (points == 1) {
        runTo({view.edge(side), last.y});
    } else if (side == Right ? x(1) > last.x : x(1) < last.x) {
        runTo({x(1), last.y});
    }
    for (int i = 2; i <= points; ++i) {
        runTo({x(i), view.y(SurfaceElev(side, i))});
    }
    writeElevation(sheet, view, SurfaceElev(side, 1));
}

/// Soil boundaries with their slope (soils given by coefficients have none), cut at the edges of
/// the drawing.
void drawLayers(Sheet& sheet, const Problem& problem, const SystemView& view, int side) {
    constexpr Corners area{{EdgeLeft, 0}, {EdgeRight, DrawingHeight}};
    for (int i = 1; i < problem.SoilLayerCount(side); ++i) {
        const double bottom = problem.SoilBottomElev(side, i);
        const double slope = problem.SoilDataKind(side) == SoilData::Strengths
                                 ? problem.SoilBottomSlope(side, i)
                                 : 0;
        Point from{view.face(side), view.y(bottom)};
        Point to{view.edge(side), view.y(bottom + slope * view.reach(side))};
        if (cutLine(from, to, area)) {
            sheet.line(from, to, SoilBrown);
        }
        writeElevation(sheet, view, bottom);
    }
}

/// The water level with the usual sign on it, midway between wall and edge: a triangle that stands
/// on the line, and two short lines below.
void drawWater(Sheet& sheet, const Problem& problem, const SystemView& view, int side) {
    if (problem.WaterDataKind != WaterData::Elevations) {
        return;
    }
    const double y = view.y(problem.WaterElev(side));
    const double x = (view.face(side) + view.edge(side)) / 2;
    sheet.line({view.face(side), y}, {view.edge(side), y}, Blue);
    sheet.line({x, y}, {x - 144, y - 216}, Blue);
    sheet.lineTo({x + 144, y - 216}, Blue);
    sheet.lineTo({x, y}, Blue);
    sheet.line({x - 144, y + 72}, {x + 144, y + 72}, Blue);
    sheet.line({x - 72, y + 144}, {x + 72, y + 144}, Blue);
    writeElevation(sheet, view, problem.WaterElev(side));
}

void drawAnchor(Sheet& sheet, const Problem& problem, const SystemView& view) {
    const double y = view.y(problem.AnchorElev);
    sheet.line({view.face(Right), y}, {EdgeRight, y}, Red);
    sheet.line({EdgeRight - 72, y - 72}, {EdgeRight, y}, Red);
    sheet.line({EdgeRight - 72, y + 72}, {EdgeRight, y}, Red);
    writeElevation(sheet, view, problem.AnchorElev);
}

} // namespace

void drawSystemPlot(Surface& surface, const Problem& problem, Medium medium) {
    Sheet sheet(surface, medium, SystemShift);
    const SystemView view = systemView(problem);
    sheet.lineWidth(FrameWidth);
    drawWall(sheet, problem, view);
    for (const int side : {Right, Left}) {
        drawGround(sheet, problem, view, side);
        drawLayers(sheet, problem, view, side);
        drawWater(sheet, problem, view, side);
    }
    if (problem.WallType == WallKind::Anchored) {
        drawAnchor(sheet, problem, view);
    }
}

} // namespace korvane
