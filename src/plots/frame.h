// What the diagrams of solved and initial pressures share: titles, the column of elevations, the
// levels ruled across the boxes, and the frame of a diagram with one value scale.
#pragma once

#include "plots/scales.h"
#include "plots/sheet.h"
#include "runtime/number_format.h"
#include "state/results.h"

#include <span>
#include <string>

namespace korvane {

inline constexpr double ElevationColumn = 864;     ///< the column's middle, twips on the screen
inline constexpr double ScaleRow = 864;            ///< the middle of the row of scale values
inline constexpr double BottomTextOnScreen = 5364; ///< lower edge of the bottom elevation's text
inline constexpr double FirstTitleY = 216;
inline constexpr double SecondTitleY = 432;

inline constexpr int FrameWidth = 2; ///< line width of boxes and levels
inline constexpr int CurveWidth = 3; ///< line width of curves

inline constexpr NumberFormat ElevationFormat = "###0.00";
inline constexpr NumberFormat WholeFormat = "0";
inline constexpr NumberFormat ExponentFormat = "0.00E+00";

/// The two title lines, and where they stand.
struct Titles {
    std::string first;
    std::string second;
    double x = BoxLeft + BoxWidth / 2;
    double firstY = FirstTitleY;
    double secondY = SecondTitleY;
};

/// A box's reach across, twips on the screen.
struct BoxSpan {
    double left = 0;
    double right = 0;
};

/// Writes levels in a column and rules them across boxes.
struct LevelRuler {
    Sheet& sheet;
    const Problem& problem;
    ElevationAxis elevations;
    double column = ElevationColumn;
    std::span<const BoxSpan> boxes;

    /// The level's elevation, its lower edge or its middle on the line, and the line. The axis must
    /// be drawable.
    void rule(double elevation, Down place, Colour colour) const;
    /// The ground of a side at the wall, if it lies inside.
    void ruleSurface(int side) const;
    /// The layer boundaries of a side that lie inside.
    void ruleLayers(int side) const;
    /// The water of a side in blue, if it lies inside.
    void ruleWater(int side) const;
};

/// Title lines and the head of the column of elevations.
void drawHeads(Sheet& sheet, const Titles& titles, double column);

/// A diagram with one value scale.
struct OneScaleFrame {
    Titles titles;
    ElevationAxis elevations;
    ValueAxis values;
    NumberFormat format = WholeFormat; ///< of the scale values
    bool zeroEndShown = true;          ///< writes the smallest value also where it is 0
    bool anchorLine = false;           ///< rules the anchor, inside or not
    bool topTextBySecondTitle = false; ///< see drawOneScaleFrame
};

/// Box, zero line, scale row, titles, elevations and levels. With topTextBySecondTitle the wall
/// top's elevation hangs below its level and is centred as if it were as wide as the second title:
/// deliberate, in the deflections of cantilever walls alone.
void drawOneScaleFrame(Sheet& sheet, const Problem& problem, const OneScaleFrame& frame);

/// Goes on with a curve of grid values from the second row on: the value above each row and that
/// below it. The curve ends with the value above `lastRow` or a row at or below the bottom.
void drawGridCurve(Sheet& sheet, const ElevationGrid& grid, const Array<double, 301, 2>& values,
                   int lastRow, const OneScaleFrame& frame, Colour colour);

} // namespace korvane
