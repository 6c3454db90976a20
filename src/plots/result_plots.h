// The seven diagrams of a solved wall.
#pragma once

#include "plots/scales.h"
#include "plots/sheet.h"
#include "state/results.h"

namespace korvane {

/// What tells the three kinds of solution apart.
struct ResultKind {
    int level = 1; ///< of the solution
    bool anchored = false;
    const char* designTitle = "";   ///< second title line of a design
    const char* analysisTitle = ""; ///< likewise of an analysis
};

inline constexpr ResultKind CantileverResults{1, false, "FOR CANTILEVER WALL DESIGN",
                                              "FOR CANTILEVER WALL ANALYSIS"};
inline constexpr ResultKind FreeEarthResults{1, true,
                                             "FOR ANCHORED WALL DESIGN BY FREE EARTH METHOD",
                                             "FOR ANCHORED WALL ANALYSIS BY FREE EARTH METHOD"};
inline constexpr ResultKind FixedEarthResults{2, true,
                                              "FOR ANCHORED WALL DESIGN BY FIXED EARTH METHOD",
                                              "FOR ANCHORED WALL ANALYSIS BY FIXED EARTH METHOD"};

/// The diagrams by their PlotNumber.
enum ResultPlotNumber {
    DeflectionPlot = 1,
    MomentPlot,
    ShearPlot,
    NetPressurePlot,
    LeftPressurePlot,
    RightPressurePlot,
    NetWaterPlot,
};

/// Prepares the scales of a solved level.
PlotScales openResultPlots(const Problem& problem, const Results& results, const ResultKind& kind);

/// Draws one diagram of the level. RuntimeError 5 for a number that names none.
void drawResultPlot(Surface& surface, const Problem& problem, const Results& results,
                    const ResultKind& kind, const PlotScales& scales, int plotNumber,
                    Medium medium);

} // namespace korvane
