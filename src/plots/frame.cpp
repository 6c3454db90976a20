#include "plots/frame.h"

#include "runtime/number_text.h"

#include <array>

namespace korvane {

namespace {

/// Lower edge of the bottom elevation's text on paper, in the coordinates of the screen.
constexpr double BottomTextOnPaper = 5400;

void drawScaleRow(Sheet& sheet, const OneScaleFrame& frame) {
    const ValueAxis& values = frame.values;
    const auto write = [&](double x, const std::string& words) {
        sheet.text(x, Across::Middle, ScaleRow, Down::Middle, words);
    };
    if (values.drawable()) {
        const double largestX = values.leftward ? BoxLeft : BoxRight;
        const double smallestX = values.leftward ? BoxRight : BoxLeft;
        write(largestX, formatNumber(values.largest, frame.format));
        if (frame.zeroEndShown || values.smallest > 0) {
            write(smallestX, formatNumber(values.smallest, frame.format));
        }
    }
    write(values.zero(), "0");
}

void drawWallTop(Sheet& sheet, const OneScaleFrame& frame) {
    const std::string top = formatNumber(frame.elevations.top, ElevationFormat);
    if (frame.topTextBySecondTitle) {
        const double x = ElevationColumn - sheet.textWidth(frame.titles.second) / 2;
        sheet.text(x, Across::LeftEdge, BoxTop, Down::UpperEdge, top);
    } else {
        sheet.text(ElevationColumn, Across::Middle, BoxTop, Down::Middle, top);
    }
}

} // namespace

void LevelRuler::rule(double elevation, Down place, Colour colour) const {
    const double y = elevations.y(elevation);
    sheet.text(column, Across::Middle, y, place, formatNumber(elevation, ElevationFormat));
    for (const BoxSpan& box : boxes) {
        sheet.line({box.left, y}, {box.right, y}, colour);
    }
}

void LevelRuler::ruleSurface(int side) const {
    if (elevations.inside(problem.SurfaceElev(side, 1))) {
        rule(problem.SurfaceElev(side, 1), Down::LowerEdge, Black);
    }
}

void LevelRuler::ruleLayers(int side) const {
    const auto& SoilBottomElev = problem.SoilBottomElev;
    for (int i = 1; i < problem.SoilLayerCount(side); ++i) {
        if (SoilBottomElev(side, i) <= elevations.bottom) {
            return;
        }
        if (elevations.inside(SoilBottomElev(side, i))) {
            rule(SoilBottomElev(side, i), Down::Middle, Black);
        }
    }
}

void LevelRuler::ruleWater(int side) const {
    if (problem.WaterDataKind == WaterData::Elevations &&
        elevations.inside(problem.WaterElev(side))) {
        rule(problem.WaterElev(side), Down::LowerEdge, Blue);
    }
}

void drawHeads(Sheet& sheet, const Titles& titles, double column) {
    sheet.centred(titles.x, titles.firstY, titles.first);
    sheet.centred(titles.x, titles.secondY, titles.second);
    sheet.centred(column, 288, "ELEV.");
    sheet.centred(column, 504, "(FT)");
}

void drawOneScaleFrame(Sheet& sheet, const Problem& problem, const OneScaleFrame& frame) {
    constexpr std::array<BoxSpan, 1> box{{{BoxLeft, BoxRight}}};
    const double zero = frame.values.zero();

    sheet.lineWidth(FrameWidth);
    sheet.box({BoxLeft, BoxTop}, {BoxRight, BoxBottom});
    sheet.line({zero, BoxTop}, {zero, BoxBottom});
    drawScaleRow(sheet, frame);
    drawHeads(sheet, frame.titles, ElevationColumn);
    drawWallTop(sheet, frame);
    sheet.text(ElevationColumn, Across::Middle,
               sheet.onPaper() ? BottomTextOnPaper : BottomTextOnScreen, Down::LowerEdge,
               formatNumber(frame.elevations.bottom, ElevationFormat));

    const LevelRuler ruler{sheet, problem, frame.elevations, ElevationColumn, box};
    for (const int side : {Right, Left}) {
        ruler.ruleSurface(side);
        ruler.ruleLayers(side);
        ruler.ruleWater(side);
    }
    if (frame.anchorLine && frame.elevations.drawable()) {
        ruler.rule(problem.AnchorElev, Down::Middle, Red);
    }
}

void drawGridCurve(Sheet& sheet, const ElevationGrid& grid, const Array<double, 301, 2>& values,
                   int lastRow, const OneScaleFrame& frame, Colour colour) {
    const auto& ElevGrid = grid.ElevGrid;
    for (int i = 2; i <= lastRow; ++i) {
        const double y = frame.elevations.y(ElevGrid(i));
        sheet.lineTo({frame.values.x(values(i, 2)), y}, colour);
        if (ElevGrid(i) <= frame.elevations.bottom || i == lastRow) {
            return;
        }
        sheet.lineTo({frame.values.x(values(i, 1)), y}, colour);
    }
}

} // namespace korvane
