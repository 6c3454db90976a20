// Scales of all diagrams: rounded ranges, and where values and elevations lie in the box.
#pragma once

#include "state/results.h"

namespace korvane {

/// The diagram box of one value scale, twips on the screen.
inline constexpr double BoxLeft = 2160;
inline constexpr double BoxTop = 1008;
inline constexpr double BoxWidth = 5760;
inline constexpr double BoxHeight = 4320;
inline constexpr double BoxRight = BoxLeft + BoxWidth;
inline constexpr double BoxBottom = BoxTop + BoxHeight;

/// Values of this size and below count as nothing when scales are prepared.
inline constexpr double ScaleThreshold = 0.0001;

/// The value raised to one significant digit: 3450 gives 4000, 3000 stays. What exceeds a digit by
/// no more than a thousandth is not raised (1000.5 gives 1000); 0 for what is not above 0.
double RoundUpScale(double value);

/// Scales that a plot screen holds while it lives; 0 where there is nothing to draw.
struct PlotScales {
    double PassiveScale = 0;  ///< PSF
    double ActiveScale = 0;   ///< PSF
    double WaterScaleMax = 0; ///< PSF, largest net water pressure
    double WaterScaleMin = 0; ///< PSF, size of the smallest net water pressure
    // Of a solved level: the largest value, and the size of the smallest.
    Range deflection;
    Range moment;
    Range shear;
    Range pressure;

    bool hasWater() const { return WaterScaleMax > 0 || WaterScaleMin > 0; }
};

/// A range for a scale: the largest value and the size of the smallest, each 0 or rounded up.
Range roundedRange(const Range& range);

/// The pressures that a diagram shows on one grid.
struct ShownPressures {
    const ElevationGrid& grid;
    const Pressures& soil;
    const Array<double, 301, 2>& water; ///< PSF (i, k)
    int rows;                           ///< of the grid that a diagram may run over
};

/// Of a level: its own soil, and the water that stands with all levels.
ShownPressures shownPressures(const Results& results, int level);
/// At the stop for review.
ShownPressures shownPressures(const Review& review);

/// Grid rows that the soil diagrams of a solved level run over: the row count of its results also
/// counts the second rows of jumps, so that it can pass the grid.
int gridRows(const LevelResult& level);

/// ActiveScale and PassiveScale over the first rows of a grid, over both sides.
void prepareSolvedPressureScales(const ShownPressures& shown, int rows, PlotScales& scales);

/// ActiveScale and PassiveScale before the solution, down to an elevation (FT).
void prepareInitialPressureScales(const ShownPressures& shown, double bottomElev,
                                  PlotScales& scales);

/// WaterScaleMax and WaterScaleMin down to an elevation (FT).
void prepareWaterScales(const Problem& problem, const ShownPressures& shown, double bottomElev,
                        PlotScales& scales);

/// Elevations on the height of the box, FT.
struct ElevationAxis {
    double top = 0;    ///< of the wall
    double bottom = 0; ///< of the diagram

    /// False where the axis has no length, so that nothing has a place on it.
    bool drawable() const { return top > bottom; }
    /// Strictly between the ends.
    bool inside(double elevation) const { return elevation < top && elevation > bottom; }
    /// Twips on the screen; the axis must be drawable.
    double y(double elevation) const {
        return (top - elevation) / (top - bottom) * BoxHeight + BoxTop;
    }
};

/// Values on the width of the box.
struct ValueAxis {
    double largest = 0;    ///< rounded
    double smallest = 0;   ///< rounded, as a size
    bool leftward = false; ///< deflections: positive values to the left

    /// False where both ends are 0.
    bool drawable() const { return largest + smallest > 0; }
    /// Twips on the screen; the axis must be drawable.
    double x(double value) const {
        const double part = leftward ? largest - value : value + smallest;
        return part / (largest + smallest) * BoxWidth + BoxLeft;
    }
    /// Where zero lies: on an axis without length at the left edge, of deflections at the right.
    double zero() const { return drawable() ? x(0) : (leftward ? BoxRight : BoxLeft); }
};

} // namespace korvane
