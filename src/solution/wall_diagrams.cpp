#include "solution/wall_diagrams.h"

#include "pressures/row_insertion.h"
#include "state/tolerances.h"

#include <cmath>

namespace korvane {

namespace {

/// Share of the way down from the row above to the row below at which row i stands.
double shareOf(const ElevationGrid& grid, int i) {
    const double top = grid.ElevGrid(i - 1);
    return (top - grid.ElevGrid(i)) / (top - grid.ElevGrid(i + 1));
}

/// Makes room for the row that the search has put in at the transition, but not in this diagram.
void insertRow(Array<double, 301, 2>& diagram, const ElevationGrid& grid, int row) {
    shiftRows(diagram, row, grid.NumElevs);
    interpolateRow(diagram, row, shareOf(grid, row));
}

/// Moves the values of row n up to `elev`, along the lines to the row above. No mark belongs there.
void moveUp(PressureDiagrams& wall, int n, double elev, bool waterIsThere) {
    const double top = wall.grid.ElevGrid(n - 1);
    const double t = (top - elev) / (top - wall.grid.ElevGrid(n));
    const auto move = [n, t](auto& values, auto... side) {
        values(side..., n, 1) = values(side..., n, 2) =
            (1 - t) * values(side..., n - 1, 1) + t * values(side..., n, 2);
    };
    Pressures& pressures = wall.pressures;
    move(wall.NetPassive);
    if (!waterIsThere) {
        move(pressures.WaterPressures);
    }
    for (const int side : {Right, Left}) {
        move(pressures.ActivePressures, side);
        move(pressures.PassivePressures, side);
        pressures.ActiveMark(side, n) = pressures.PassiveMark(side, n) = false;
    }
}

} // namespace

PressureDiagrams withWaterInStep(const PressureDiagrams& diagrams) {
    PressureDiagrams wall = diagrams;
    if (wall.waterLagRow != 0) {
        auto& WaterPressures = wall.pressures.WaterPressures;
        shiftRows(WaterPressures, wall.waterLagRow, wall.grid.NumElevs);
        interpolateRow(WaterPressures, wall.waterLagRow, 0.5);
        wall.waterLagRow = 0;
    }
    return wall;
}

PressureDiagrams wallDiagrams(const LevelResult& level) {
    PressureDiagrams wall = withWaterInStep(level.solved);
    auto& ElevGrid = wall.grid.ElevGrid;
    auto& pressures = wall.pressures;
    // A cantilever wall's water is worked out anew on the grid that ends at its bottom.
    const bool newWater =
        level.method == SolutionMethod::Cantilever && level.transitionElev > level.bottomElev;
    ElevGrid(level.bottomIndex) = level.bottomRowElev;
    if (const int row = level.transitionRow; row != 0) {
        insertRow(wall.NetPassive, wall.grid, row);
        if (!newWater) {
            insertRow(pressures.WaterPressures, wall.grid, row);
        }
        // Left active pressure alone stands there on a line of its own.
        interpolateRow(pressures.ActivePressures, row, shareOf(wall.grid, row), Left);
    }
    int n = 2;
    while (n < wall.grid.NumElevs && ElevGrid(n) > level.bottomElev + SamePoint) {
        ++n;
    }
    const bool between = std::abs(ElevGrid(n) - level.bottomElev) > SamePoint;
    if (between) {
        moveUp(wall, n, level.bottomElev, newWater);
    }
    if (between || level.method == SolutionMethod::Cantilever) {
        wall.NetActive(n, 1) = level.bottomPressure;
    }
    wall.NetActive(n, 2) = level.bottomPressure;
    ElevGrid(n) = level.bottomElev;
    wall.grid.NumElevs = n;
    return wall;
}

} // namespace korvane
