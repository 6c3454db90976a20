#include "plots/plot_screen.h"

#include "plots/bounds_surface.h"
#include "plots/frame.h"
#include "plots/input_plots.h"
#include "plots/result_plots.h"
#include "plots/rowe_plot.h"
#include "runtime/table_order.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace korvane {

namespace {

using Kind = PlotEntry::Kind;

constexpr PlotEntry Finished{Kind::Finish, "mnuFinished", -1, "&Finished"};

using ResultEntries = std::array<PlotEntry, 9>;

/// The menus of a result screen, which differ in three captions.
constexpr ResultEntries resultEntries(const char* pressures, const char* netSoil,
                                      const char* netWater) {
    return {{
        {Kind::Plot, "mnuDefl", -1, "&Deflections", DeflectionPlot},
        {Kind::Plot, "mnuMoment", -1, "&Moment Diagram", MomentPlot},
        {Kind::Plot, "mnuShear", -1, "&Shear Diagram", ShearPlot},
        {Kind::Menu, "mnuPres", -1, pressures},
        {Kind::Plot, "mnuPresItem", 0, netSoil, NetPressurePlot, "mnuPres"},
        {Kind::Plot, "mnuPresItem", 1, "&Leftside Soil Pressures", LeftPressurePlot, "mnuPres"},
        {Kind::Plot, "mnuPresItem", 2, "&Rightside Soil Pressures", RightPressurePlot, "mnuPres"},
        {Kind::Plot, "mnuPresItem", 3, netWater, NetWaterPlot, "mnuPres"},
        Finished,
    }};
}

constexpr ResultEntries CantileverEntries =
    resultEntries("Design &Pressures", "&Net Soil Pressure", "Net &Water Pressures");
constexpr ResultEntries FreeEarthEntries =
    resultEntries("&Pressures", "&Net Soil Pressures", "Net &Water Pressures");
constexpr ResultEntries FixedEarthEntries =
    resultEntries("&Pressures", "&Net Soil Pressure", "Net &Water Pressure");

constexpr std::array<PlotEntry, 5> InitialEntries{{
    {Kind::Plot, "mnuLeftside", -1, "&Leftside Press", InitialLeftPlot},
    {Kind::Plot, "mnuRightside", -1, "&Rightside Press", InitialRightPlot},
    {Kind::Plot, "mnuNetSoil", -1, "&Net Soil Press", InitialNetSoilPlot},
    {Kind::Plot, "mnuNetWater", -1, "Net &Water Press", InitialNetWaterPlot},
    Finished,
}};

constexpr std::array<PlotEntry, 13> InputEntries{{
    {Kind::Plot, "mnuSystem", -1, "&System", SystemPlot},
    {Kind::Menu, "mnuSurch", -1, "S&urcharges"},
    {Kind::Plot, "mnuSurchItem", 0, "&Line Loads", LineLoadPlot, "mnuSurch"},
    {Kind::Plot, "mnuSurchItem", 1, "&Unif. Loads", UniformLoadPlot, "mnuSurch"},
    {Kind::Plot, "mnuSurchItem", 2, "&Strip Loads", StripLoadPlot, "mnuSurch"},
    {Kind::Plot, "mnuSurchItem", 3, "&Ramp Loads", RampLoadPlot, "mnuSurch"},
    {Kind::Plot, "mnuSurchItem", 4, "&Triang. Loads", TriangularLoadPlot, "mnuSurch"},
    {Kind::Plot, "mnuSurchItem", 5, "&Variable Loads", VariableLoadPlot, "mnuSurch"},
    {Kind::Menu, "mnuHoriz", -1, "&Horizontal Loads"},
    {Kind::Plot, "mnuHorizItem", 0, "&Line Loads", HorizontalLinePlot, "mnuHoriz"},
    {Kind::Plot, "mnuHorizItem", 1, "&Distributed Loads", HorizontalDistributedPlot, "mnuHoriz"},
    {Kind::Plot, "mnuHorizItem", 2, "&Input Water Pres.", InputWaterPlot, "mnuHoriz"},
    Finished,
}};

constexpr std::array<PlotScreen, 6> PlotScreens{{
    {PlotScreenName::CANPLOT, "CANPLOT", "CANTILEVER WALL RESULTS", 7, CantileverEntries},
    {PlotScreenName::FREEPLOT, "FREEPLOT", "ANCHORED WALL RESULTS BY FREE EARTH METHOD", 7,
     FreeEarthEntries},
    {PlotScreenName::FIXDPLOT, "FIXDPLOT", "ANCHORED WALL RESULTS BY FIXED EARTH METHOD", 7,
     FixedEarthEntries},
    {PlotScreenName::VUSOLPLT, "VUSOLPLT", "INITIAL SOIL PRESSURES", 4, InitialEntries},
    {PlotScreenName::VUINPLOT, "VUINPLOT", "INPUT DATA", InputPlotCount, InputEntries, false},
    {PlotScreenName::ROWECURV,
     "ROWECURV",
     "ROWE'S MOMENT REDUCTION FOR PILES IN SAND",
     1,
     {},
     false,
     4,
     0.6},
}};

static_assert(inOrder(PlotScreens, &PlotScreen::name));

const ResultKind& resultKind(PlotScreenName name) {
    switch (name) {
    case PlotScreenName::FREEPLOT:
        return FreeEarthResults;
    case PlotScreenName::FIXDPLOT:
        return FixedEarthResults;
    default:
        return CantileverResults;
    }
}

std::vector<std::string> headingsOf(const Problem& problem, int limit) {
    std::vector<std::string> headings;
    for (int i = 1; i <= std::min(problem.NumHeadingLines, limit); ++i) {
        headings.push_back(problem.HeadingLines(i));
    }
    return headings;
}

/// "INPUT DATA: System"; the screen's own title where it has no entries.
std::string inputTitle(const PlotScreen& screen, int plotNumber) {
    std::string title = screen.title;
    for (const PlotEntry& entry : screen.entries) {
        if (entry.kind == Kind::Plot && entry.plotNumber == plotNumber) {
            std::string caption = entry.caption;
            std::erase(caption, '&');
            title += ": " + caption;
        }
    }
    return title;
}

/// Heading lines above the drawing: one or two from the upper place on, more up from the lower.
void drawHeadings(Surface& surface, const std::vector<std::string>& headings) {
    constexpr double UpperY = 3744;
    constexpr double Step = 288;
    const double above = std::max(static_cast<double>(headings.size()) - 2, 0.0);
    double y = UpperY - above * Step;
    for (const std::string& heading : headings) {
        surface.text({PaperFrame.a.x, y}, heading);
        y += Step;
    }
}

} // namespace

std::span<const PlotScreen> plotScreens() {
    return PlotScreens;
}

const PlotScreen& plotScreen(PlotScreenName name) {
    return PlotScreens.at(static_cast<std::size_t>(name));
}

PlotView openPlotScreen(const PlotData& data, PlotScreenName name) {
    const PlotScreen& screen = plotScreen(name);
    PlotView view;
    view.screen = name;
    view.headings = headingsOf(data.problem, screen.headingLimit);
    for (int n = 1; n <= screen.pictureCount; ++n) {
        view.hasPlot(n) = true;
    }
    switch (name) {
    case PlotScreenName::CANPLOT:
    case PlotScreenName::FREEPLOT:
    case PlotScreenName::FIXDPLOT:
        view.scales = openResultPlots(data.problem, data.results, resultKind(name));
        view.hasPlot(NetWaterPlot) = view.scales.hasWater();
        break;
    case PlotScreenName::VUSOLPLT: {
        const InitialPlots plots = openInitialPlots(data.problem, data.results.review);
        view.scales = plots.scales;
        view.PlotBottomElev = plots.PlotBottomElev;
        view.hasPlot(InitialNetWaterPlot) = view.scales.hasWater();
        break;
    }
    case PlotScreenName::VUINPLOT:
        for (int n = 1; n <= screen.pictureCount; ++n) {
            view.hasPlot(n) = hasInputPlot(data.problem, n);
        }
        break;
    case PlotScreenName::ROWECURV:
        choosePlot(view, 1);
        break;
    }
    return view;
}

bool isEnabled(const PlotView& view, const PlotEntry& entry) {
    if (view.showing) {
        return false;
    }
    switch (entry.kind) {
    case Kind::Plot:
        return view.hasPlot(entry.plotNumber);
    case Kind::Menu: {
        const auto& entries = plotScreen(view.screen).entries;
        return std::any_of(entries.begin(), entries.end(), [&](const PlotEntry& item) {
            return std::string_view(item.menu) == entry.objectName && view.hasPlot(item.plotNumber);
        });
    }
    default:
        return true;
    }
}

void choosePlot(PlotView& view, int plotNumber) {
    if (!view.showing && view.hasPlot(plotNumber)) {
        view.PlotNumber = plotNumber;
        view.showing = true;
    }
}

bool finishPlot(PlotView& view) {
    view.showing = false;
    return view.screen == PlotScreenName::ROWECURV;
}

bool closePlotFrame(PlotView& view) {
    return !view.showing || finishPlot(view);
}

void drawPlot(Surface& surface, const PlotData& data, const PlotView& view, Medium medium) {
    const PlotScreen& screen = plotScreen(view.screen);
    if (medium == Medium::Paper) {
        drawHeadings(surface, view.headings);
        if (screen.framedOnPaper) {
            surface.setLineWidth(FrameWidth);
            surface.rectangle(PaperFrame, Black);
        }
    }
    switch (view.screen) {
    case PlotScreenName::CANPLOT:
    case PlotScreenName::FREEPLOT:
    case PlotScreenName::FIXDPLOT:
        drawResultPlot(surface, data.problem, data.results, resultKind(view.screen), view.scales,
                       view.PlotNumber, medium);
        break;
    case PlotScreenName::VUSOLPLT:
        drawInitialPlot(surface, data.problem, data.results.review,
                        {view.PlotBottomElev, view.scales}, view.PlotNumber, medium);
        break;
    case PlotScreenName::VUINPLOT:
        drawInputPlot(surface, data.problem, view.PlotNumber, medium);
        break;
    case PlotScreenName::ROWECURV:
        drawRowePlot(surface, data.sections, data.reduction, medium);
        break;
    }
}

Corners plotBounds(const Surface& metrics, const PlotData& data, const PlotView& view,
                   Medium medium) {
    BoundsSurface surface(metrics);
    drawPlot(surface, data, view, medium);
    return surface.bounds(medium == Medium::Paper ? FigureView : PictureView);
}

PlotReadings plotReadings(const PlotData& data, const PlotView& view) {
    switch (view.screen) {
    case PlotScreenName::CANPLOT:
    case PlotScreenName::FREEPLOT:
    case PlotScreenName::FIXDPLOT:
        return readResultPlot(data.problem, data.results, resultKind(view.screen), view.PlotNumber);
    case PlotScreenName::VUSOLPLT:
        return readInitialPlot(data.problem, data.results.review,
                               {view.PlotBottomElev, view.scales}, view.PlotNumber);
    default:
        return {.title = inputTitle(plotScreen(view.screen), view.PlotNumber)};
    }
}

std::string plotDescription(const PlotView& view, const PlotReadings& readings) {
    std::string text;
    const auto add = [&](const std::string& line) { text += (text.empty() ? "" : ". ") + line; };
    for (const std::string& heading : view.headings) {
        add(heading.rfind('\'', 0) == 0 ? heading.substr(1) : heading);
    }
    for (const std::string& line : extremeLines(readings, UnitSystem::US)) {
        add(line);
    }
    return text;
}

} // namespace korvane
