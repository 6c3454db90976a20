#include "plots/scales.h"

#include "pressures/elevation_grid.h"
#include "runtime/arithmetic.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

double thresholdScale(double value) {
    return value <= ScaleThreshold ? 0 : RoundUpScale(value);
}

/// Takes the larger of both scales with one side's pressures at a row.
void raise(PlotScales& scales, const Pressures& pressures, int side, int i, int k) {
    scales.ActiveScale = MaxOf(scales.ActiveScale, pressures.ActivePressures(side, i, k));
    scales.PassiveScale = MaxOf(scales.PassiveScale, pressures.PassivePressures(side, i, k));
}

void raiseBothSides(PlotScales& scales, const Pressures& pressures, int i, int k) {
    raise(scales, pressures, Right, i, k);
    raise(scales, pressures, Left, i, k);
}

void startPressureScales(PlotScales& scales, const Pressures& pressures) {
    scales.ActiveScale = pressures.ActivePressures(Right, 1, 1);
    scales.PassiveScale = pressures.PassivePressures(Right, 1, 1);
}

/// The passive scale is rounded whatever its size.
void roundPressureScales(PlotScales& scales) {
    scales.ActiveScale = thresholdScale(scales.ActiveScale);
    scales.PassiveScale = RoundUpScale(scales.PassiveScale);
}

/// All rows of a level's grid. A fixed earth bottom below the last regular row ends the diagrams
/// with that row: what stands at the far rows would dwarf them.
int shownRows(const LevelResult& level) {
    const ElevationGrid& grid = level.solved.grid;
    int regular = grid.NumElevs;
    while (regular > 1 && isFarRow(grid, regular)) {
        --regular;
    }
    const bool below = level.method == SolutionMethod::FixedEarth && regular > 1 &&
                       level.bottomElev < grid.ElevGrid(regular);
    return below ? regular : grid.NumElevs;
}

} // namespace

double RoundUpScale(double value) {
    if (!(value > 0) || !std::isfinite(value)) {
        return 0;
    }
    // Truncated toward zero: for values below 1 one nearer to zero than the floor.
    const double power = std::pow(10.0, std::trunc(commonLog(value)));
    const double rounded = std::trunc((value + 0.999 * power) / power) * power;
    return std::isfinite(rounded) ? rounded : value;
}

Range roundedRange(const Range& range) {
    return {thresholdScale(range.largest), thresholdScale(std::abs(range.smallest))};
}

ShownPressures shownPressures(const Results& results, int level) {
    const PressureDiagrams& solved = results.levels(level).solved;
    return {solved.grid, solved.pressures, results.shownWater(), shownRows(results.levels(level))};
}

ShownPressures shownPressures(const Review& review) {
    const PressureDiagrams& diagrams = review.diagrams;
    return {diagrams.grid, diagrams.pressures, diagrams.pressures.WaterPressures,
            diagrams.grid.NumElevs};
}

int gridRows(const LevelResult& level) {
    return std::min(level.diagrams.RowCount, shownRows(level));
}

void prepareSolvedPressureScales(const ShownPressures& shown, int rows, PlotScales& scales) {
    startPressureScales(scales, shown.soil);
    for (int i = 2; i <= rows; ++i) {
        raiseBothSides(scales, shown.soil, i, 2);
        if (i == rows) {
            break;
        }
        raiseBothSides(scales, shown.soil, i, 1);
    }
    roundPressureScales(scales);
}

void prepareInitialPressureScales(const ShownPressures& shown, double bottomElev,
                                  PlotScales& scales) {
    const auto& ElevGrid = shown.grid.ElevGrid;

    startPressureScales(scales, shown.soil);
    raise(scales, shown.soil, Left, 1, 1);
    for (int i = 2; i <= shown.grid.NumElevs; ++i) {
        raiseBothSides(scales, shown.soil, i, 2);
        if (ElevGrid(i) < bottomElev) {
            break;
        }
        raiseBothSides(scales, shown.soil, i, 1);
    }
    roundPressureScales(scales);
}

void prepareWaterScales(const Problem& problem, const ShownPressures& shown, double bottomElev,
                        PlotScales& scales) {
    const auto& WaterPressures = shown.water;
    const auto& ElevGrid = shown.grid.ElevGrid;

    scales.WaterScaleMax = 0;
    scales.WaterScaleMin = 0;
    if (problem.WaterDataKind == WaterData::None) {
        return;
    }
    double largest = WaterPressures(1, 1);
    double smallest = largest;
    for (int i = 2; i <= shown.rows; ++i) {
        largest = MaxOf(largest, WaterPressures(i, 2));
        smallest = MinOf(smallest, WaterPressures(i, 2));
        if (ElevGrid(i) <= bottomElev || i == shown.rows) {
            break;
        }
        largest = MaxOf(largest, WaterPressures(i, 1));
        smallest = MinOf(smallest, WaterPressures(i, 1));
    }
    scales.WaterScaleMax = thresholdScale(std::abs(largest));
    scales.WaterScaleMin = thresholdScale(std::abs(smallest));
}

} // namespace korvane
