// Sketches of the horizontal loads and of the net water pressures.
#include "plots/frame.h"
#include "plots/input_plots.h"
#include "plots/scales.h"
#include "runtime/number_text.h"
#include "runtime/runtime_error.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace korvane {

namespace {

constexpr double AxisLeft = 2160;
constexpr double AxisRight = 7920;
constexpr double WallBottom = 5320;
constexpr double LoadReach = 2880; ///< of the scale's load
constexpr double HeadLength = 72;  ///< of an arrow
constexpr double HeadHalf = 72;

/// A load at an elevation (FT): PLF or PSF, positive when it pushes the wall to the left.
struct LoadPoint {
    double elevation = 0;
    double load = 0;
};

struct HorizontalLoads {
    const char* title = "";
    bool concentrated = false;
    std::vector<LoadPoint> points;
};

template <class Values>
std::vector<LoadPoint> loadPoints(const Values& elevations, const Values& loads, int count) {
    std::vector<LoadPoint> points;
    for (int i = 1; i <= count; ++i) {
        points.push_back({elevations(i), loads(i)});
    }
    return points;
}

HorizontalLoads loadsOnShow(const Problem& p, int plotNumber) {
    switch (plotNumber) {
    case HorizontalLinePlot:
        return {"HORIZONTAL LINE LOADS (PLF)", true,
                loadPoints(p.HLineElev, p.HLineLoad, p.HLineCount)};
    case HorizontalDistributedPlot:
        return {"HORIZONTAL DISTRIBUTED LOADS (PSF)", false,
                loadPoints(p.HDistElev, p.HDistLoad, p.HDistCount)};
    case InputWaterPlot:
        return {"INPUT WATER PRESSURES (PSF)", false,
                loadPoints(p.WaterPressElev, p.WaterPressure,
                           p.WaterDataKind == WaterData::Pressures ? p.WaterPressCount : 0)};
    default:
        throw RuntimeError(5);
    }
}

/// The scales of the loads on show, and their mapping to twips on the screen.
struct HorizontalScale {
    double top = 0;      ///< FT, of the wall
    double lowest = 0;   ///< FT, of the loads
    double greatest = 0; ///< the greatest size of a load, rounded up

    bool drawable() const { return top - lowest + 1 > 0; }
    Point at(const LoadPoint& point) const {
        const double part = greatest > 0 ? point.load / greatest : 0;
        return {WallX - part * LoadReach,
                (top - point.elevation) / (top - lowest + 1) * BoxHeight + BoxTop};
    }
};

HorizontalScale horizontalScale(double top, const std::vector<LoadPoint>& points) {
    HorizontalScale scale{top, points.empty() ? top : points.front().elevation, 0};
    for (const LoadPoint& point : points) {
        scale.lowest = std::min(scale.lowest, point.elevation);
        scale.greatest = std::max(scale.greatest, std::abs(point.load));
    }
    scale.greatest = RoundUpScale(scale.greatest);
    return scale;
}

/// Axis of loads and wall line.
void drawAxis(Sheet& sheet, const HorizontalScale& scale) {
    sheet.lineWidth(FrameWidth);
    sheet.line({AxisLeft, BoxTop}, {AxisRight, BoxTop});
    for (const double x : {AxisLeft, AxisRight}) {
        sheet.line({x, 938}, {x, 1078});
        sheet.centred(x, 796, formatNumber(scale.greatest, WholeFormat));
    }
    sheet.line({WallX, BoxTop}, {WallX, WallBottom});
}

/// An arrow head at the wall that points where the load pushes.
void drawHead(Sheet& sheet, double y, double load) {
    const double tip = load > 0 ? WallX - HeadLength : WallX + HeadLength;
    sheet.line({WallX, y - HeadHalf}, {tip, y}, Red);
    sheet.line({WallX, y + HeadHalf}, {tip, y}, Red);
}

void drawLineLoad(Sheet& sheet, Point at, double load) {
    if (load != 0) {
        sheet.line({WallX, at.y}, at, Red);
        drawHead(sheet, at.y, load);
    }
}

/// Through the points, joined to the wall line at the first and the last one.
void drawDistribution(Sheet& sheet, const HorizontalScale& scale,
                      const std::vector<LoadPoint>& points) {
    const LoadPoint& first = points.front();
    const LoadPoint& last = points.back();
    sheet.line({WallX, scale.at(first).y}, scale.at(first), Red);
    for (std::size_t i = 1; i < points.size(); ++i) {
        sheet.lineTo(scale.at(points[i]), Red);
    }
    sheet.lineTo({WallX, scale.at(last).y}, Red);
    for (const LoadPoint& end : {first, last}) {
        if (end.load != 0) {
            drawHead(sheet, scale.at(end).y, end.load);
        }
    }
}

} // namespace

void drawHorizontalPlot(Surface& surface, const Problem& problem, int plotNumber, Medium medium) {
    Sheet sheet(surface, medium);
    const HorizontalLoads loads = loadsOnShow(problem, plotNumber);
    const HorizontalScale scale = horizontalScale(problem.WallTopElev, loads.points);

    drawAxis(sheet, scale);
    sheet.centred(WallX, 432, loads.title);
    if (loads.points.empty() || !scale.drawable()) {
        return;
    }
    sheet.lineWidth(CurveWidth);
    if (loads.concentrated) {
        for (const LoadPoint& point : loads.points) {
            drawLineLoad(sheet, scale.at(point), point.load);
        }
    } else {
        drawDistribution(sheet, scale, loads.points);
    }
    for (const LoadPoint& point : loads.points) {
        sheet.text(1080, Across::LeftEdge, scale.at(point).y, Down::Middle,
                   "EL= " + formatNumber(point.elevation, "###0.0"));
    }
}

} // namespace korvane
