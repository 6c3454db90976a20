#include "plots/pressure_plots.h"

#include "runtime/number_text.h"
#include "state/result_fields.h"

#include <algorithm>
#include <array>

namespace korvane {

namespace {

constexpr double SideBoxWidth = 2880;
constexpr double KindY = 576; ///< upper edge of the words "PASSIVE" and "ACTIVE"

/// Lower edge of the bottom elevation's text on paper, in the coordinates of the screen.
constexpr double BottomTextOnPaper = 5328;

/// Where the parts of a side's diagram stand, twips on the screen.
struct SideLayout {
    double passiveLeft = 0;
    double activeLeft = 0;
    double passiveWord = 0;
    double activeWord = 0;
    double titles = 0;
    double column = 0;
    int direction = 1; ///< of growing pressure
};

constexpr SideLayout LeftLayout{2160, 5760, 3600, 7200, 5400, 864, -1};
constexpr SideLayout RightLayout{4560, 960, 6000, 2400, 4200, 8736, 1};

/// One of the two boxes.
struct StripBox {
    double zero = 0; ///< x of zero
    double end = 0;  ///< x of the scale value
    double scale = 0;

    double x(double value) const { return zero + (end - zero) * (value / scale); }
};

StripBox stripBox(double left, double scale, int direction) {
    const double right = left + SideBoxWidth;
    return direction > 0 ? StripBox{left, right, scale} : StripBox{right, left, scale};
}

void drawStripScale(Sheet& sheet, const StripBox& box) {
    sheet.text(box.end, Across::Middle, ScaleRow, Down::Middle,
               formatNumber(box.scale, WholeFormat));
    sheet.text(box.zero, Across::Middle, ScaleRow, Down::Middle, "0");
}

/// Strips between neighbouring rows, from the zero edge out to the value and back.
void drawStrips(Sheet& sheet, const ElevationGrid& grid, const Array<double, 2, 301, 2>& values,
                const SidePlot& plot, const StripBox& box, Colour colour) {
    const auto& ElevGrid = grid.ElevGrid;
    if (!(box.scale > 0) || !plot.elevations.drawable()) {
        return;
    }
    for (int i = 1; i < plot.lastRow; ++i) {
        const double upper = plot.elevations.y(ElevGrid(i));
        const double lower = plot.elevations.y(ElevGrid(i + 1));
        sheet.line({box.zero, upper}, {box.x(values(plot.side, i, 1)), upper}, colour);
        sheet.lineTo({box.x(values(plot.side, i + 1, 2)), lower}, colour);
        sheet.lineTo({box.zero, lower}, colour);
        if (ElevGrid(i + 1) <= plot.elevations.bottom) {
            return;
        }
    }
}

/// The points of one kind of pressure of a side, strip by strip.
std::vector<CurvePoint> stripPoints(const ElevationGrid& grid,
                                    const Array<double, 2, 301, 2>& values, const SidePlot& plot) {
    const auto& ElevGrid = grid.ElevGrid;
    std::vector<CurvePoint> points;
    for (int i = 1; i < plot.lastRow; ++i) {
        points.push_back({ElevGrid(i), values(plot.side, i, 1)});
        points.push_back({ElevGrid(i + 1), values(plot.side, i + 1, 2)});
        if (ElevGrid(i + 1) <= plot.elevations.bottom) {
            break;
        }
    }
    return points;
}

} // namespace

PlotReadings readSidePlot(const ShownPressures& shown, const SidePlot& plot) {
    return {.title = plot.titles.first + " " + plot.titles.second,
            .elevations = plot.elevations,
            .quantity = results::passive.quantity,
            .curves = {{"Passive", stripPoints(shown.grid, shown.soil.PassivePressures, plot)},
                       {"Active", stripPoints(shown.grid, shown.soil.ActivePressures, plot)}}};
}

PlotReadings readWaterPlot(const ShownPressures& shown, const Titles& titles,
                           const ElevationAxis& elevations) {
    return {.title = titles.first + " " + titles.second,
            .elevations = elevations,
            .quantity = results::water.quantity,
            .curves = {{{}, gridPoints(shown.grid, shown.water, elevations.bottom, shown.rows)}}};
}

void drawSidePlot(Sheet& sheet, const Problem& problem, const ShownPressures& shown,
                  SidePlot plot) {
    const SideLayout& layout = plot.side == Left ? LeftLayout : RightLayout;
    const StripBox passive =
        stripBox(layout.passiveLeft, plot.scales.PassiveScale, layout.direction);
    const StripBox active = stripBox(layout.activeLeft, plot.scales.ActiveScale, layout.direction);
    const double first = std::min(layout.passiveLeft, layout.activeLeft);
    const double second = std::max(layout.passiveLeft, layout.activeLeft);
    const std::array<BoxSpan, 2> boxes{
        {{first, first + SideBoxWidth}, {second, second + SideBoxWidth}}};
    const ElevationAxis& elevations = plot.elevations;

    sheet.lineWidth(FrameWidth);
    for (const BoxSpan& box : boxes) {
        sheet.box({box.left, BoxTop}, {box.right, BoxBottom});
    }
    drawStripScale(sheet, passive);
    drawStripScale(sheet, active);
    sheet.centred(layout.passiveWord, KindY, "PASSIVE");
    sheet.centred(layout.activeWord, KindY, "ACTIVE");
    plot.titles.x = layout.titles;
    drawHeads(sheet, plot.titles, layout.column);
    sheet.text(layout.column, Across::Middle, BoxTop, Down::Middle,
               formatNumber(elevations.top, ElevationFormat));
    sheet.text(layout.column, Across::Middle,
               sheet.onPaper() ? BottomTextOnPaper : BottomTextOnScreen, Down::LowerEdge,
               formatNumber(elevations.bottom, ElevationFormat));

    const LevelRuler ruler{sheet, problem, elevations, layout.column, boxes};
    ruler.ruleSurface(Right);
    ruler.ruleSurface(Left);
    ruler.ruleLayers(Right);
    ruler.ruleLayers(Left);
    ruler.ruleWater(Right);
    ruler.ruleWater(Left);

    sheet.lineWidth(CurveWidth);
    drawStrips(sheet, shown.grid, shown.soil.PassivePressures, plot, passive, PassiveGreen);
    drawStrips(sheet, shown.grid, shown.soil.ActivePressures, plot, active, Red);
}

void drawWaterPlot(Sheet& sheet, const Problem& problem, const ShownPressures& shown,
                   const Titles& titles, const ElevationAxis& elevations, const PlotScales& scales,
                   bool anchorLine) {
    const auto& WaterPressures = shown.water;
    OneScaleFrame frame;
    frame.titles = titles;
    frame.elevations = elevations;
    frame.values = {scales.WaterScaleMax, scales.WaterScaleMin, false};
    frame.anchorLine = anchorLine;

    drawOneScaleFrame(sheet, problem, frame);
    sheet.lineWidth(CurveWidth);
    if (frame.values.drawable() && elevations.drawable()) {
        const Point start{frame.values.x(WaterPressures(1, 1)), BoxTop};
        sheet.startCurve(start, StartGrey);
        sheet.lineTo(start, Green);
        drawGridCurve(sheet, shown.grid, WaterPressures, shown.rows, frame, Blue);
    }
}

} // namespace korvane
