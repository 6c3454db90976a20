// The plot screens as data: menus, captions, what can be chosen when, and what is drawn. A window
// mirrors a PlotView and hands its clicks, its paint events and its printing to these functions.
#pragma once

#include "plots/initial_plots.h"
#include "plots/readings.h"
#include "plots/scales.h"
#include "plots/sheet.h"
#include "state/results.h"

#include <array>
#include <span>
#include <string>
#include <vector>

namespace korvane {

/// The plot screens by the names that the system gives them.
enum class PlotScreenName {
    CANPLOT,  ///< results of a cantilever wall
    FREEPLOT, ///< results by the free earth method
    FIXDPLOT, ///< results by the fixed earth method
    VUSOLPLT, ///< initial pressures
    VUINPLOT, ///< input geometry
    ROWECURV, ///< Rowe's moment reduction curves
};

/// An entry of a plot screen's menus.
struct PlotEntry {
    enum class Kind {
        Plot,   ///< opens a diagram
        Menu,   ///< holds the entries behind it that name it as their menu
        Finish, ///< closes the screen
    };

    Kind kind = Kind::Plot;
    const char* objectName = "";
    int index = -1; ///< in a control array, from 0; -1 for none
    const char* caption = "";
    int plotNumber = 0;    ///< of the diagram that it opens
    const char* menu = ""; ///< object name of the menu that holds it; empty in the menu bar
};

/// What stays the same for a plot screen. Its pictures are Picture1 to Picture<pictureCount>, its
/// heading labels Label1(0), Label1(1) ..., its buttons cmdDone, cmdPrint and cmdSave.
struct PlotScreen {
    PlotScreenName name = PlotScreenName::CANPLOT;
    const char* objectName = "";
    const char* title = "";
    int pictureCount = 0;
    std::span<const PlotEntry> entries; ///< in their order; the help menu comes behind them
    bool framedOnPaper = true;          ///< the outer frame is drawn on paper
    int headingLimit = 2;               ///< heading lines under the picture and on paper
    double pictureShare = 0.76;         ///< of the window's height that the picture takes
};

inline constexpr const char* DoneCaption = "&Done";
inline constexpr const char* PrintCaption = "&Print";
inline constexpr const char* SaveCaption = "Sa&ve";

/// The place of a usual drawing in the picture, twips.
inline constexpr Corners PictureView{{0, 0}, {10080, 5760}};

/// All of them, and the one of a name.
std::span<const PlotScreen> plotScreens();
const PlotScreen& plotScreen(PlotScreenName name);

inline constexpr int MaxPlotNumber = 10;

/// A plot screen while it is open. In the state Menu the pictures, labels and buttons are hidden;
/// in the state Showing the picture of PlotNumber, the labels and the buttons are visible and the
/// menu entries are disabled.
struct PlotView {
    PlotScreenName screen = PlotScreenName::CANPLOT;
    bool showing = false;
    int PlotNumber = 0; ///< the diagram on show, or the last one
    PlotScales scales;
    double PlotBottomElev = 0;          ///< FT, VUSOLPLT
    Array<bool, MaxPlotNumber> hasPlot; ///< by plot number: the diagram can be chosen
    std::vector<std::string> headings;  ///< heading lines for the labels, as they stand
};

/// What the screens draw from, and leave alone. Each screen looks at its own part: VUINPLOT at the
/// problem, VUSOLPLT at the review, the result screens at their level, ROWECURV at sections and
/// reduction.
struct PlotData {
    const Problem& problem;
    const Results& results;
    const PileSections& sections;
    const MomentReduction& reduction;
};

/// Opens a screen: prepares its scales and settles what can be chosen. ROWECURV shows its diagram
/// at once.
PlotView openPlotScreen(const PlotData& data, PlotScreenName name);

/// Whether an entry can be chosen at the moment.
bool isEnabled(const PlotView& view, const PlotEntry& entry);

/// Shows a diagram. Nothing happens where its entry is disabled.
void choosePlot(PlotView& view, int plotNumber);

/// cmdDone: back to the menu. True when the screen closes instead (ROWECURV).
bool finishPlot(PlotView& view);

/// The frame's close button and Alt+F4: like cmdDone while a diagram is on show, else like
/// mnuFinished. True when the screen closes.
bool closePlotFrame(PlotView& view);

/// Draws the diagram of view.PlotNumber in the picture's coordinates or, on paper, in the page's,
/// with heading lines and outer frame.
void drawPlot(Surface& surface, const PlotData& data, const PlotView& view, Medium medium);

/// How far the diagram on show reaches: what a picture or a figure shows, in the coordinates of the
/// medium. Texts are measured by the surface that will draw them.
Corners plotBounds(const Surface& metrics, const PlotData& data, const PlotView& view,
                   Medium medium);

/// What the diagram on show tells in numbers; a sketch of the input and Rowe's curves have a title
/// alone.
PlotReadings plotReadings(const PlotData& data, const PlotView& view);

/// The diagram on show for readers who do not see it: heading lines and the extremes of its
/// readings, in the feet and pounds of the drawing.
std::string plotDescription(const PlotView& view, const PlotReadings& readings);

} // namespace korvane
