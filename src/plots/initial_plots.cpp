#include "plots/initial_plots.h"

#include "plots/frame.h"
#include "plots/pressure_plots.h"
#include "runtime/arithmetic.h"
#include "runtime/runtime_error.h"

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

bool isAnchored(const State& state) {
    return state.problem.WallType == WallKind::Anchored;
}

Titles titlesOf(const State& state, const char* first) {
    Titles titles;
    titles.first = first;
    titles.second = isAnchored(state) ? "FOR ANCHORED " : "FOR CANTILEVER ";
    titles.second += state.problem.ProgramMode == Mode::Design ? "WALL DESIGN" : "WALL ANALYSIS";
    return titles;
}

Titles netSoilTitles(const State& state) {
    return titlesOf(state, isAnchored(state) ? "INITIAL NET ACTIVE PRESSURES (PSF)"
                                             : "INITIAL NET PRESSURES (PSF)");
}

NetExtremes netExtremes(const State& state, double bottomElev) {
    const auto& NetActive = state.net.NetActive;
    const auto& NetPassive = state.net.NetPassive;
    const auto& ElevGrid = state.grid.ElevGrid;

    NetExtremes extremes{NetActive(1, 1), NetPassive(1, 1), NetActive(1, 1)};
    const auto take = [&](int i, int k) {
        extremes.largestActive = MaxOf(extremes.largestActive, NetActive(i, k));
        extremes.largestPassive = MaxOf(extremes.largestPassive, NetPassive(i, k));
        extremes.smallestActive = MinOf(extremes.smallestActive, NetActive(i, k));
    };
    for (int i = 2; i <= state.grid.NumElevs; ++i) {
        take(i, 2);
        if (ElevGrid(i) <= bottomElev) {
            break;
        }
        take(i, 1);
    }
    return extremes;
}

void drawNetCurve(Sheet& sheet, const State& state, const Array<double, 301, 2>& values,
                  const OneScaleFrame& frame, Colour colour) {
    if (frame.values.drawable() && frame.elevations.drawable()) {
        sheet.startCurve({frame.values.x(values(1, 1)), BoxTop}, StartGrey);
        drawGridCurve(sheet, state.grid, values, frame, colour);
    }
}

void drawKey(Sheet& sheet, double lineX, double wordsX, const char* words, Colour colour) {
    constexpr double LineLength = 720;
    sheet.line({lineX, KeyY}, {lineX + LineLength, KeyY}, colour);
    sheet.text(wordsX, Across::LeftEdge, KeyY, Down::Middle, words);
}

/// The largest value on show is rounded to M, the size of the smallest net active one to N.
void drawNetSoil(Sheet& sheet, const State& state, const ElevationAxis& elevations) {
    const bool anchored = isAnchored(state);
    const NetExtremes extremes = netExtremes(state, elevations.bottom);

    OneScaleFrame frame;
    frame.titles = netSoilTitles(state);
    frame.elevations = elevations;
    frame.values = {RoundUpScale(anchored ? extremes.largestActive : extremes.largestPassive),
                    RoundUpScale(std::abs(extremes.smallestActive)), false};
    frame.anchorLine = anchored;

    drawOneScaleFrame(sheet, state.problem, frame);
    sheet.lineWidth(CurveWidth);
    drawNetCurve(sheet, state, state.net.NetActive, frame, Red);
    if (!anchored) {
        drawNetCurve(sheet, state, state.net.NetPassive, frame, PassiveGreen);
    }
    drawKey(sheet, 2736, 3600, "NET ACTIVE", Red);
    if (!anchored) {
        drawKey(sheet, 5472, 6312, "NET PASSIVE", PassiveGreen);
    }
}

SidePlot sidePlotOf(const State& state, const InitialPlots& plots, int plotNumber) {
    const bool left = plotNumber == InitialLeftPlot;
    return {left ? Left : Right,
            titlesOf(state, left ? "LEFTSIDE INITIAL PRESSURES (PSF)"
                                 : "RIGHTSIDE INITIAL PRESSURES (PSF)"),
            {state.problem.WallTopElev, plots.PlotBottomElev},
            plots.scales,
            state.grid.NumElevs};
}

PlotReadings readNetSoil(const State& state, const ElevationAxis& elevations) {
    const auto points = [&](const Array<double, 301, 2>& values) {
        return gridPoints(state.grid, values, elevations.bottom, state.grid.NumElevs);
    };
    const Titles titles = netSoilTitles(state);
    PlotReadings readings{.title = titles.first + " " + titles.second,
                          .elevations = elevations,
                          .unit = "PSF",
                          .curves = {{"Net active", points(state.net.NetActive)}}};
    if (!isAnchored(state)) {
        readings.curves.push_back({"Net passive", points(state.net.NetPassive)});
    }
    return readings;
}

} // namespace

InitialPlots openInitialPlots(const State& state) {
    const auto& WallTopElev = state.problem.WallTopElev;
    const auto& SurfaceElev = state.problem.SurfaceElev;
    const auto& grid = state.grid;

    InitialPlots plots;
    const double lower = MinOf(SurfaceElev(Right, 1), SurfaceElev(Left, 1));
    plots.PlotBottomElev = MinOf(lower - 3 * (WallTopElev - lower), lower - 30);
    plots.PlotBottomElev = MaxOf(plots.PlotBottomElev, grid.ElevGrid(grid.NumElevs - 2));
    prepareInitialPressureScales(state, plots.PlotBottomElev, plots.scales);
    prepareWaterScales(state, plots.PlotBottomElev, plots.scales);
    return plots;
}

void drawInitialPlot(Surface& surface, const State& state, const InitialPlots& plots,
                     int plotNumber, Medium medium) {
    Sheet sheet(surface, medium);
    const ElevationAxis elevations{state.problem.WallTopElev, plots.PlotBottomElev};
    switch (plotNumber) {
    case InitialLeftPlot:
    case InitialRightPlot:
        drawSidePlot(sheet, state, sidePlotOf(state, plots, plotNumber));
        break;
    case InitialNetSoilPlot:
        drawNetSoil(sheet, state, elevations);
        break;
    case InitialNetWaterPlot:
        drawWaterPlot(sheet, state, titlesOf(state, WaterTitle), elevations, plots.scales,
                      isAnchored(state));
        break;
    default:
        throw RuntimeError(5);
    }
}

PlotReadings readInitialPlot(const State& state, const InitialPlots& plots, int plotNumber) {
    const ElevationAxis elevations{state.problem.WallTopElev, plots.PlotBottomElev};
    switch (plotNumber) {
    case InitialLeftPlot:
    case InitialRightPlot:
        return readSidePlot(state, sidePlotOf(state, plots, plotNumber));
    case InitialNetSoilPlot:
        return readNetSoil(state, elevations);
    case InitialNetWaterPlot:
        return readWaterPlot(state, titlesOf(state, WaterTitle), elevations);
    default:
        throw RuntimeError(5);
    }
}

} // namespace korvane
