#include "plots/result_plots.h"

#include "plots/frame.h"
#include "plots/pressure_plots.h"
#include "runtime/runtime_error.h"
#include "state/result_fields.h"

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
    Range PlotScales::*range; ///< of the scale
    ResultField field;
    ResultField analysisField;
    NumberFormat format;
    bool zeroEndShown;
    bool leftward;
    Colour start; ///< of the curve's first point
};

/// The net pressure's paper title lacks the word "NET" and both its lines stand lower: deliberate.
constexpr std::array<RowPlot, 4> RowPlots{{
    {"SCALED DEFLECTION (LB-IN^3)", "DEFLECTION (IN)", nullptr, &ResultDiagrams::ResultDeflection,
     &PlotScales::deflection, results::scaledDeflection, results::deflection, ExponentFormat, false,
     true, Red},
    {"BENDING MOMENT (LB-FT)", "BENDING MOMENT (LB-FT)", nullptr, &ResultDiagrams::ResultMoment,
     &PlotScales::moment, results::moment, results::moment, ExponentFormat, false, false,
     StartGrey},
    {"SHEAR (LB)", "SHEAR (LB)", nullptr, &ResultDiagrams::ResultShear, &PlotScales::shear,
     results::shear, results::shear, WholeFormat, true, false, StartGrey},
    {"NET SOIL PRESSURE (PSF)", "NET SOIL PRESSURE (PSF)", "SOIL PRESSURE (PSF)",
     &ResultDiagrams::ResultPressure, &PlotScales::pressure, results::pressure, results::pressure,
     WholeFormat, true, false, StartGrey},
}};
constexpr double LoweredTitles = 72; ///< twips
constexpr const char* WaterTitle = "NET WATER PRESSURES (PSF)";

ElevationAxis solvedElevations(const Problem& problem, const LevelResult& level) {
    return {problem.WallTopElev, level.bottomElev};
}

Titles titlesOf(const Problem& problem, const ResultKind& kind, const char* first) {
    Titles titles;
    titles.first = first;
    titles.second = problem.ProgramMode == Mode::Design ? kind.designTitle : kind.analysisTitle;
    return titles;
}

/// The curve through the rows; the first one is taken to lie at the wall top.
void drawRowCurve(Sheet& sheet, const ResultDiagrams& diagrams, const RowPlot& plot,
                  const OneScaleFrame& frame) {
    const auto& ResultElev = diagrams.ResultElev;
    const auto& rows = diagrams.*plot.rows;
    const int rowCount = diagrams.RowCount;
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

void drawRowPlot(Sheet& sheet, const Problem& problem, const LevelResult& level,
                 const ResultKind& kind, const PlotScales& scales, int plotNumber) {
    const RowPlot& plot = RowPlots[static_cast<std::size_t>(plotNumber - 1)];
    const Range& range = scales.*plot.range;
    const bool design = problem.ProgramMode == Mode::Design;

    OneScaleFrame frame;
    frame.titles = titlesOf(problem, kind, design ? plot.title : plot.analysisTitle);
    if (sheet.onPaper() && plot.paperTitle != nullptr) {
        frame.titles.first = plot.paperTitle;
        frame.titles.firstY += LoweredTitles;
        frame.titles.secondY += LoweredTitles;
    }
    frame.elevations = solvedElevations(problem, level);
    frame.values = {range.largest, range.smallest, plot.leftward};
    frame.format = plot.format;
    frame.zeroEndShown = plot.zeroEndShown;
    frame.anchorLine = kind.anchored;
    frame.topTextBySecondTitle = plotNumber == DeflectionPlot && !kind.anchored;

    drawOneScaleFrame(sheet, problem, frame);
    drawRowCurve(sheet, level.diagrams, plot, frame);
}

SidePlot sidePlotOf(const Problem& problem, const LevelResult& level, const ResultKind& kind,
                    const PlotScales& scales, int plotNumber) {
    const bool left = plotNumber == LeftPressurePlot;
    return {left ? Left : Right,
            titlesOf(problem, kind,
                     left ? "LEFTSIDE SOIL PRESSURES (PSF)" : "RIGHTSIDE SOIL PRESSURES (PSF)"),
            solvedElevations(problem, level), scales, gridRows(level)};
}

PlotReadings readRowPlot(const Problem& problem, const LevelResult& level, const ResultKind& kind,
                         int plotNumber) {
    const RowPlot& plot = RowPlots[static_cast<std::size_t>(plotNumber - 1)];
    const bool design = problem.ProgramMode == Mode::Design;
    const Titles titles = titlesOf(problem, kind, design ? plot.title : plot.analysisTitle);
    PlotReadings readings{.title = titles.first + " " + titles.second,
                          .elevations = solvedElevations(problem, level),
                          .quantity = (design ? plot.field : plot.analysisField).quantity,
                          .curves = {PlotCurve()}};
    const auto& rows = level.diagrams.*plot.rows;
    for (int r = 1; r <= level.diagrams.RowCount; ++r) {
        readings.curves.front().points.push_back({level.diagrams.ResultElev(r), rows(r)});
    }
    return readings;
}

} // namespace

PlotScales openResultPlots(const Problem& problem, const Results& results, const ResultKind& kind) {
    const LevelResult& level = results.levels(kind.level);
    PlotScales scales;
    scales.deflection = roundedRange(level.diagrams.DeflectionRange);
    scales.moment = roundedRange(level.diagrams.MomentRange);
    scales.shear = roundedRange(level.diagrams.ShearRange);
    scales.pressure = roundedRange(level.diagrams.PressureRange);
    const ShownPressures shown = shownPressures(results, kind.level);
    prepareSolvedPressureScales(shown, gridRows(level), scales);
    prepareWaterScales(problem, shown, level.bottomElev, scales);
    return scales;
}

void drawResultPlot(Surface& surface, const Problem& problem, const Results& results,
                    const ResultKind& kind, const PlotScales& scales, int plotNumber,
                    Medium medium) {
    Sheet sheet(surface, medium);
    const LevelResult& level = results.levels(kind.level);
    switch (plotNumber) {
    case DeflectionPlot:
    case MomentPlot:
    case ShearPlot:
    case NetPressurePlot:
        drawRowPlot(sheet, problem, level, kind, scales, plotNumber);
        break;
    case LeftPressurePlot:
    case RightPressurePlot:
        drawSidePlot(sheet, problem, shownPressures(results, kind.level),
                     sidePlotOf(problem, level, kind, scales, plotNumber));
        break;
    case NetWaterPlot:
        drawWaterPlot(sheet, problem, shownPressures(results, kind.level),
                      titlesOf(problem, kind, WaterTitle), solvedElevations(problem, level), scales,
                      kind.anchored);
        break;
    default:
        throw RuntimeError(5);
    }
}

PlotReadings readResultPlot(const Problem& problem, const Results& results, const ResultKind& kind,
                            int plotNumber) {
    const LevelResult& level = results.levels(kind.level);
    switch (plotNumber) {
    case DeflectionPlot:
    case MomentPlot:
    case ShearPlot:
    case NetPressurePlot:
        return readRowPlot(problem, level, kind, plotNumber);
    case LeftPressurePlot:
    case RightPressurePlot:
        return readSidePlot(shownPressures(results, kind.level),
                            sidePlotOf(problem, level, kind, {}, plotNumber));
    case NetWaterPlot:
        return readWaterPlot(shownPressures(results, kind.level),
                             titlesOf(problem, kind, WaterTitle), solvedElevations(problem, level));
    default:
        throw RuntimeError(5);
    }
}

} // namespace korvane
