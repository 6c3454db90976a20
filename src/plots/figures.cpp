#include "plots/figures.h"

#include "plots/input_plots.h"
#include "plots/result_plots.h"
#include "plots/svg_surface.h"
#include "runtime/runtime_error.h"

#include <array>

namespace korvane {

namespace {

/// By plot number.
using FigureNames = std::span<const char* const>;
constexpr std::array<const char*, 7> ResultNames{"deflection",    "moment",        "shear",
                                                 "net-pressure",  "left-pressure", "right-pressure",
                                                 "water-pressure"};
constexpr std::array<const char*, InputPlotCount> InputNames{"system",
                                                             "line-loads",
                                                             "uniform-loads",
                                                             "strip-loads",
                                                             "ramp-loads",
                                                             "triangular-loads",
                                                             "variable-loads",
                                                             "horizontal-line-loads",
                                                             "distributed-loads",
                                                             "water-pressures"};
constexpr std::array<const char*, 1> RoweNames{"rowe"};
constexpr std::array<const char*, 4> InitialNames{"left-pressure", "right-pressure", "net-pressure",
                                                  "water-pressure"};

/// Figures of one screen, and the words before their names.
struct FigureGroup {
    PlotScreenName screen;
    const char* prefix;
    FigureNames names;
};

constexpr FigureGroup CantileverGroup{PlotScreenName::CANPLOT, "", ResultNames};
constexpr FigureGroup FreeEarthGroup{PlotScreenName::FREEPLOT, "free-", ResultNames};
constexpr FigureGroup FixedEarthGroup{PlotScreenName::FIXDPLOT, "fixed-", ResultNames};
constexpr FigureGroup RoweGroup{PlotScreenName::ROWECURV, "", RoweNames};
constexpr FigureGroup InputGroup{PlotScreenName::VUINPLOT, "input-", InputNames};
constexpr FigureGroup InitialGroup{PlotScreenName::VUSOLPLT, "initial-", InitialNames};

std::string nameIn(const FigureGroup& group, int plotNumber) {
    return std::string(group.prefix) + group.names[static_cast<std::size_t>(plotNumber - 1)];
}

void visitGroup(const PlotData& data, const FigureGroup& group,
                const std::function<void(const Figure&)>& take) {
    PlotView view = openPlotScreen(data, group.screen);
    for (int n = 1; n <= static_cast<int>(group.names.size()); ++n) {
        if (!view.hasPlot(n)) {
            continue;
        }
        view.PlotNumber = n;
        const PlotReadings readings = plotReadings(data, view);
        take({nameIn(group, n), readings.title, plotDescription(view, readings),
              [&](Surface& surface) { drawPlot(surface, data, view, Medium::Paper); }});
    }
}

} // namespace

void visitFigures(const PlotData& data, bool solved,
                  const std::function<void(const Figure&)>& take) {
    if (solved && data.problem.WallType == WallKind::Anchored) {
        visitGroup(data, FreeEarthGroup, take);
        visitGroup(data, FixedEarthGroup, take);
        if (data.reduction.hasCurves()) { // sand or clay, as the screen shows it
            visitGroup(data, RoweGroup, take);
        }
    } else if (solved) {
        visitGroup(data, CantileverGroup, take);
    }
    visitGroup(data, InputGroup, take);
}

std::vector<std::string> figureNames() {
    std::vector<std::string> names;
    for (const FigureGroup& group :
         {CantileverGroup, FreeEarthGroup, FixedEarthGroup, RoweGroup, InputGroup}) {
        for (const char* name : group.names) {
            names.push_back(std::string(group.prefix) + name);
        }
    }
    return names;
}

std::string figureName(const PlotView& view) {
    for (const FigureGroup& group :
         {CantileverGroup, FreeEarthGroup, FixedEarthGroup, RoweGroup, InputGroup, InitialGroup}) {
        if (group.screen == view.screen && view.PlotNumber >= 1 &&
            view.PlotNumber <= static_cast<int>(group.names.size())) {
            return nameIn(group, view.PlotNumber);
        }
    }
    throw RuntimeError(5);
}

std::string svgFigure(const Figure& figure) {
    SvgSurface surface;
    figure.draw(surface);
    return surface.document(surface.reach().bounds(FigureView), figure.title, figure.description);
}

} // namespace korvane
