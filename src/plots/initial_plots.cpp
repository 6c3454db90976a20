#include "plots/initial_plots.h"

#include "plots/frame.h"
#include "plots/pressure_plots.h"
#include "runtime/arithmetic.h"
#include "runtime/runtime_error.h"
#include "state/result_fields.h"

#include <cmath>

namespace korvane {

namespace {

constexpr double KeyY = 720; ///< of the key of the net diagram
constexpr const char* WaterTitle = "INITIAL NET WATER PRESSURES (PSF)";

/// Extremes of the net pressures down to the plot's bottom.
struct NetExtremes {
    double largestActive = 0;
    double largestPassive = 0;
    double smallestActive = 0;
};

bool isAnchored(const Problem& problem) {
    return problem.WallType == WallKind::Anchored;
}

Titles titlesOf(const Problem& problem, const char* first) {
    Titles titles;
    titles.first = first;
    titles.second = isAnchored(problem) ? "FOR ANCHORED " : "FOR CANTILEVER ";
    titles.second += problem.ProgramMode == Mode::Design ? "WALL DESIGN" : "WALL ANALYSIS";
    return titles;
}

Titles netSoilTitles(const Problem& problem) {
    return titlesOf(problem, isAnchored(problem) ? "INITIAL NET ACTIVE PRESSURES (PSF)"
                                                 : "INITIAL NET PRESSURES (PSF)");
}

NetExtremes netExtremes(const PressureDiagrams& diagrams, double bottomElev) {
    const ElevationGrid& grid = diagrams.grid;
    const auto& NetActive = diagrams.NetActive;
    const auto& NetPassive = diagrams.NetPassive;
    const auto& ElevGrid = grid.ElevGrid;

    NetExtremes extremes{NetActive(1, 1), NetPassive(1, 1), NetActive(1, 1)};
    const auto take = [&](int i, int k) {
        extremes.largestActive = MaxOf(extremes.largestActive, NetActive(i, k));
        extremes.largestPassive = MaxOf(extremes.largestPassive, NetPassive(i, k));
        extremes.smallestActive = MinOf(extremes.smallestActive, NetActive(i, k));
    };
    for (int i = 2; i <= grid.NumElevs; ++i) {
        take(i, 2);
        if (ElevGrid(i) <= bottomElev) {
            break;
        }
        take(i, 1);
    }
    return extremes;
}

void drawNetCurve(Sheet& sheet, const ElevationGrid& grid, const Array<double, 301, 2>& values,
                  const OneScaleFrame& frame, Colour colour) {
    if (frame.values.drawable() && frame.elevations.drawable()) {
        sheet.startCurve({frame.values.x(values(1, 1)), BoxTop}, StartGrey);
        drawGridCurve(sheet, grid, values, grid.NumElevs, frame, colour);
    }
}

void drawKey(Sheet& sheet, double lineX, double wordsX, const char* words, Colour colour) {
    constexpr double LineLength = 720;
    sheet.line({lineX, KeyY}, {lineX + LineLength, KeyY}, colour);
    sheet.text(wordsX, Across::LeftEdge, KeyY, Down::Middle, words);
}

/// The largest value on show is rounded to M, the size of the smallest net active one to N.
void drawNetSoil(Sheet& sheet, const Problem& problem, const PressureDiagrams& diagrams,
                 const ElevationAxis& elevations) {
    const bool anchored = isAnchored(problem);
    const NetExtremes extremes = netExtremes(diagrams, elevations.bottom);

    OneScaleFrame frame;
    frame.titles = netSoilTitles(problem);
    frame.elevations = elevations;
    frame.values = {RoundUpScale(anchored ? extremes.largestActive : extremes.largestPassive),
                    RoundUpScale(std::abs(extremes.smallestActive)), false};
    frame.anchorLine = anchored;

    drawOneScaleFrame(sheet, problem, frame);
    sheet.lineWidth(CurveWidth);
    drawNetCurve(sheet, diagrams.grid, diagrams.NetActive, frame, Red);
    if (!anchored) {
        drawNetCurve(sheet, diagrams.grid, diagrams.NetPassive, frame, PassiveGreen);
    }
    drawKey(sheet, 2736, 3600, "NET ACTIVE", Red);
    if (!anchored) {
        drawKey(sheet, 5472, 6312, "NET PASSIVE", PassiveGreen);
    }
}

SidePlot sidePlotOf(const Problem& problem, const ShownPressures& shown, const InitialPlots& plots,
                    int plotNumber) {
    const bool left = plotNumber == InitialLeftPlot;
    return {left ? Left : Right,
            titlesOf(problem, left ? "LEFTSIDE INITIAL PRESSURES (PSF)"
                                   : "RIGHTSIDE INITIAL PRESSURES (PSF)"),
            {problem.WallTopElev, plots.PlotBottomElev},
            plots.scales,
            shown.grid.NumElevs};
}

PlotReadings readNetSoil(const Problem& problem, const PressureDiagrams& diagrams,
                         const ElevationAxis& elevations) {
    const ElevationGrid& grid = diagrams.grid;
    const auto points = [&](const Array<double, 301, 2>& values) {
        return gridPoints(grid, values, elevations.bottom, grid.NumElevs);
    };
    const Titles titles = netSoilTitles(problem);
    PlotReadings readings{.title = titles.first + " " + titles.second,
                          .elevations = elevations,
                          .quantity = results::netActive.quantity,
                          .curves = {{"Net active", points(diagrams.NetActive)}}};
    if (!isAnchored(problem)) {
        readings.curves.push_back({"Net passive", points(diagrams.NetPassive)});
    }
    return readings;
}

} // namespace

InitialPlots openInitialPlots(const Problem& problem, const Review& review) {
    const auto& WallTopElev = problem.WallTopElev;
    const auto& SurfaceElev = problem.SurfaceElev;
    const auto& grid = review.diagrams.grid;
    const ShownPressures shown = shownPressures(review);

    InitialPlots plots;
    const double lower = MinOf(SurfaceElev(Right, 1), SurfaceElev(Left, 1));
    plots.PlotBottomElev = MinOf(lower - 3 * (WallTopElev - lower), lower - 30);
    plots.PlotBottomElev = MaxOf(plots.PlotBottomElev, grid.ElevGrid(grid.NumElevs - 2));
    prepareInitialPressureScales(shown, plots.PlotBottomElev, plots.scales);
    prepareWaterScales(problem, shown, plots.PlotBottomElev, plots.scales);
    return plots;
}

void drawInitialPlot(Surface& surface, const Problem& problem, const Review& review,
                     const InitialPlots& plots, int plotNumber, Medium medium) {
    Sheet sheet(surface, medium);
    const ElevationAxis elevations{problem.WallTopElev, plots.PlotBottomElev};
    const ShownPressures shown = shownPressures(review);
    switch (plotNumber) {
    case InitialLeftPlot:
    case InitialRightPlot:
        drawSidePlot(sheet, problem, shown, sidePlotOf(problem, shown, plots, plotNumber));
        break;
    case InitialNetSoilPlot:
        drawNetSoil(sheet, problem, review.diagrams, elevations);
        break;
    case InitialNetWaterPlot:
        drawWaterPlot(sheet, problem, shown, titlesOf(problem, WaterTitle), elevations,
                      plots.scales, isAnchored(problem));
        break;
    default:
        throw RuntimeError(5);
    }
}

PlotReadings readInitialPlot(const Problem& problem, const Review& review,
                             const InitialPlots& plots, int plotNumber) {
    const ElevationAxis elevations{problem.WallTopElev, plots.PlotBottomElev};
    const ShownPressures shown = shownPressures(review);
    switch (plotNumber) {
    case InitialLeftPlot:
    case InitialRightPlot:
        return readSidePlot(shown, sidePlotOf(problem, shown, plots, plotNumber));
    case InitialNetSoilPlot:
        return readNetSoil(problem, review.diagrams, elevations);
    case InitialNetWaterPlot:
        return readWaterPlot(shown, titlesOf(problem, WaterTitle), elevations);
    default:
        throw RuntimeError(5);
    }
}

} // namespace korvane
