#include "plots/result_plots.h"

#include "plots/frame.h"
#include "plots/pressure_plots.h"
#include "runtime/runtime_error.h"

#include <array>
#include <cstddef>

namespace korvane {

namespace {

/// A diagram through the result rows.
struct RowPlot {
    const char* title;
    const char* analysisTitle;
    const char* paperTitle; ///< nullptr: as on the screen
    Array<double, 301> ResultDiagrams::*rows;
    Array<double, 4> ResultDiagrams::*range;
    const char* unit;
    const char* analysisUnit;
    const char* format;
    bool zeroEndShown;
    bool leftward;
    Colour start; ///< of the curve's first point
};

/// The net pressure's paper title lacks the word "NET" and both its lines stand lower: deliberate.
constexpr std::array<RowPlot, 4> RowPlots{{
    {"SCALED DEFLECTION (LB-IN^3)", "DEFLECTION (IN)", nullptr, &ResultDiagrams::ResultDeflection,
     &ResultDiagrams::DeflectionRange, "LB-IN^3", "IN", ExponentFormat, false, true, Red},
    {"BENDING MOMENT (LB-FT)", "BENDING MOMENT (LB-FT)", nullptr, &ResultDiagrams::ResultMoment,
     &ResultDiagrams::MomentRange, "LB-FT", "LB-FT", ExponentFormat, false, false, StartGrey},
    {"SHEAR (LB)", "SHEAR (LB)", nullptr, &ResultDiagrams::ResultShear, &ResultDiagrams::ShearRange,
     "LB", "LB", WholeFormat, true, false, StartGrey},
    {"NET SOIL PRESSURE (PSF)", "NET SOIL PRESSURE (PSF)", "SOIL PRESSURE (PSF)",
     &ResultDiagrams::ResultPressure, &ResultDiagrams::PressureRange, "PSF", "PSF", WholeFormat,
     true, false, StartGrey},
}};
constexpr double LoweredTitles = 72; ///< twips
constexpr const char* WaterTitle = "NET WATER PRESSURES (PSF)";

bool isDesign(const State& state) {
    return state.problem.ProgramMode == Mode::Design;
}

ElevationAxis solvedElevations(const State& state, const ResultKind& kind) {
    return {state.problem.WallTopElev, state.solution.SolvedBottomElev(kind.level)};
}

Titles titlesOf(const State& state, const ResultKind& kind, const char* first) {
    Titles titles;
    titles.first = first;
    titles.second = isDesign(state) ? kind.designTitle : kind.analysisTitle;
    return titles;
}

/// The curve through the rows; the first one is taken to lie at the wall top.
void drawRowCurve(Sheet& sheet, const State& state, int rowCount, const RowPlot& plot,
                  const OneScaleFrame& frame) {
    const auto& ResultElev = state.results.ResultElev;
    const auto& rows = state.results.*plot.rows;
    sheet.lineWidth(CurveWidth);
    if (!frame.values.drawable() || !frame.elevations.drawable() || rowCount < 1) {
        return;
    }
    const Point start{frame.values.x(rows(1)), BoxTop};
    sheet.startCurve(start, plot.start);
    sheet.lineTo(start, Red);
    for (int r = 2; r <= rowCount; ++r) {
        sheet.lineTo({frame.values.x(rows(r)), frame.elevations.y(ResultElev(r))}, Red);
    }
}

void drawRowPlot(Sheet& sheet, const State& state, const ResultKind& kind, int plotNumber) {
    const RowPlot& plot = RowPlots[static_cast<std::size_t>(plotNumber - 1)];
    const auto& range = state.results.*plot.range;

    OneScaleFrame frame;
    frame.titles = titlesOf(state, kind, isDesign(state) ? plot.title : plot.analysisTitle);
    if (sheet.onPaper() && plot.paperTitle != nullptr) {
        frame.titles.first = plot.paperTitle;
        frame.titles.firstY += LoweredTitles;
        frame.titles.secondY += LoweredTitles;
    }
    frame.elevations = solvedElevations(state, kind);
    frame.values = {range(kind.level), range(kind.level + 2), plot.leftward};
    frame.format = plot.format;
    frame.zeroEndShown = plot.zeroEndShown;
    frame.anchorLine = kind.anchored;
    frame.topTextBySecondTitle = plotNumber == DeflectionPlot && !kind.anchored;

    drawOneScaleFrame(sheet, state.problem, frame);
    drawRowCurve(sheet, state, state.solution.BottomIndex(kind.level), plot, frame);
}

SidePlot sidePlotOf(const State& state, const ResultKind& kind, const PlotScales& scales,
                    int plotNumber) {
    const bool left = plotNumber == LeftPressurePlot;
    return {left ? Left : Right,
            titlesOf(state, kind,
                     left ? "LEFTSIDE SOIL PRESSURES (PSF)" : "RIGHTSIDE SOIL PRESSURES (PSF)"),
            solvedElevations(state, kind), scales, gridRows(state, kind.level)};
}

PlotReadings readRowPlot(const State& state, const ResultKind& kind, int plotNumber) {
    const RowPlot& plot = RowPlots[static_cast<std::size_t>(plotNumber - 1)];
    const Titles titles = titlesOf(state, kind, isDesign(state) ? plot.title : plot.analysisTitle);
    PlotReadings readings{.title = titles.first + " " + titles.second,
                          .elevations = solvedElevations(state, kind),
                          .unit = isDesign(state) ? plot.unit : plot.analysisUnit,
                          .format = plot.format,
                          .curves = {PlotCurve()}};
    const auto& rows = state.results.*plot.rows;
    for (int r = 1; r <= state.solution.BottomIndex(kind.level); ++r) {
        readings.curves.front().points.push_back({state.results.ResultElev(r), rows(r)});
    }
    return readings;
}

} // namespace

PlotScales openResultPlots(State& state, const ResultKind& kind) {
    auto& results = state.results;
    for (auto* range : {&results.DeflectionRange, &results.MomentRange, &results.ShearRange,
                        &results.PressureRange}) {
        prepareRange(*range, kind.level);
    }
    PlotScales scales;
    prepareSolvedPressureScales(state, kind.level, scales);
    prepareWaterScales(state, state.solution.SolvedBottomElev(kind.level), scales);
    return scales;
}

void drawResultPlot(Surface& surface, const State& state, const ResultKind& kind,
                    const PlotScales& scales, int plotNumber, Medium medium) {
    Sheet sheet(surface, medium);
    const ElevationAxis elevations = solvedElevations(state, kind);
    switch (plotNumber) {
    case DeflectionPlot:
    case MomentPlot:
    case ShearPlot:
    case NetPressurePlot:
        drawRowPlot(sheet, state, kind, plotNumber);
        break;
    case LeftPressurePlot:
    case RightPressurePlot:
        drawSidePlot(sheet, state, sidePlotOf(state, kind, scales, plotNumber));
        break;
    case NetWaterPlot:
        drawWaterPlot(sheet, state, titlesOf(state, kind, WaterTitle), elevations, scales,
                      kind.anchored);
        break;
    default:
        throw RuntimeError(5);
    }
}

PlotReadings readResultPlot(const State& state, const ResultKind& kind, int plotNumber) {
    switch (plotNumber) {
    case DeflectionPlot:
    case MomentPlot:
    case ShearPlot:
    case NetPressurePlot:
        return readRowPlot(state, kind, plotNumber);
    case LeftPressurePlot:
    case RightPressurePlot:
        return readSidePlot(state, sidePlotOf(state, kind, {}, plotNumber));
    case NetWaterPlot:
        return readWaterPlot(state, titlesOf(state, kind, WaterTitle),
                             solvedElevations(state, kind));
    default:
        throw RuntimeError(5);
    }
}

} // namespace korvane
