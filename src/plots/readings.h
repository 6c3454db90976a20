// What a diagram tells in numbers: its curves, their extremes, and the values at an elevation.
#pragma once

#include "plots/frame.h"
#include "plots/scales.h"
#include "problem/quantities.h"
#include "state/results.h"

#include <string>
#include <vector>

namespace korvane {

/// A value at an elevation (FT). Two points at one elevation are a step: the first lies above it.
struct CurvePoint {
    double elevation = 0;
    double value = 0;
};

struct PlotCurve {
    std::string name;               ///< among the curves of the diagram; empty where it has one
    std::vector<CurvePoint> points; ///< from the wall top down
};

struct PlotReadings {
    std::string title = {};               ///< both lines of the diagram's title in one
    ElevationAxis elevations = {};        ///< on which the curves stand
    Quantity quantity = Quantity::Number; ///< of the values
    std::vector<PlotCurve> curves = {};   ///< none for sketches
};

/// The points of values on the grid as the diagrams draw them: down to the first row at or below
/// the bottom, at most `lastRow` rows.
std::vector<CurvePoint> gridPoints(const ElevationGrid& grid, const Array<double, 301, 2>& values,
                                   double bottom, int lastRow);

/// The largest and the smallest value of each curve with their elevations, a line each.
std::vector<std::string> extremeLines(const PlotReadings& readings, UnitSystem units);

/// The elevation that lies at a height of the diagram (twips on the screen) and the curves' values
/// there, straight between the points; empty beside the diagram's box or where it has no curve.
std::string valueLine(const PlotReadings& readings, double y, UnitSystem units);

} // namespace korvane
