#include "pressures/elevation_grid.h"

#include "runtime/arithmetic.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace korvane {

namespace {

constexpr int MaxRegularPoints = 200;
constexpr double FarDistance = 100000.0; ///< FT below the lowest working point

void appendPoint(ElevationGrid& grid, double elevation) {
    ++grid.NumElevs;
    grid.ElevGrid(grid.NumElevs) = finite(elevation);
}

/// Appends a computed elevation unless one of the first `count` points is the same.
void appendComputedPoint(ElevationGrid& grid, double elevation, int count) {
    for (int i = 1; i <= count; ++i) {
        if (std::abs(grid.ElevGrid(i) - elevation) <= SamePoint) {
            return;
        }
    }
    appendPoint(grid, elevation);
}

/// Sorts by descending elevation; of exactly equal points one stays.
void sortPoints(ElevationGrid& grid) {
    auto* const first = grid.ElevGrid.begin();
    auto* const last = first + grid.NumElevs;
    std::sort(first, last, std::greater<>());
    grid.NumElevs = static_cast<int>(std::unique(first, last) - first);
}

/// Every elevation at which the problem's data change.
void appendDataPoints(ElevationGrid& grid, const Problem& problem) {
    appendPoint(grid, problem.WallTopElev);
    appendPoint(grid, problem.SurfaceElev(Right, 1));
    appendPoint(grid, problem.SurfaceElev(Left, 1));
    if (problem.WallType == WallKind::Anchored) {
        appendPoint(grid, problem.AnchorElev);
    }
    if (problem.WaterDataKind == WaterData::Elevations) {
        for (const int side : {Right, Left}) {
            if (problem.WaterElev(side) < problem.WallTopElev) {
                appendPoint(grid, problem.WaterElev(side));
            }
        }
        if (problem.SeepageKind != Seepage::None) {
            appendPoint(grid, problem.SeepageElev);
        }
    } else if (problem.WaterDataKind == WaterData::Pressures) {
        for (int i = 1; i <= problem.WaterPressCount; ++i) {
            appendPoint(grid, problem.WaterPressElev(i));
        }
    }
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer < problem.SoilLayerCount(side); ++layer) {
            appendPoint(grid, problem.SoilBottomElev(side, layer));
        }
    }
    for (int i = 1; i <= problem.HLineCount; ++i) {
        appendPoint(grid, problem.HLineElev(i));
    }
    for (int i = 1; i <= problem.HDistCount; ++i) {
        appendPoint(grid, problem.HDistElev(i));
    }
}

/// One point a foot from the wall top down to 50 FT or five exposed heights below the lower
/// surface, whichever is lower.
void appendRegularPoints(ElevationGrid& grid, const Problem& problem, double lowerSurface) {
    const double limit =
        MinOf(lowerSurface - 5.0 * (problem.WallTopElev - lowerSurface), lowerSurface - 50.0);
    const int dataPoints = grid.NumElevs;
    for (int k = 1; k <= MaxRegularPoints && problem.WallTopElev - k >= limit; ++k) {
        appendComputedPoint(grid, problem.WallTopElev - k, dataPoints);
    }
}

/// Finds or inserts the row at which seepage ends; below all points it becomes the last one.
void placeSeepageEnd(ElevationGrid& grid, double& seepageEndElev, int& seepageEndIndex) {
    auto& ElevGrid = grid.ElevGrid;
    auto& NumElevs = grid.NumElevs;

    int i = 1;
    while (i <= NumElevs && ElevGrid(i) > seepageEndElev + SamePoint) {
        ++i;
    }
    seepageEndIndex = i;
    if (i <= NumElevs && std::abs(ElevGrid(i) - seepageEndElev) <= SamePoint) {
        seepageEndElev = ElevGrid(i);
        return;
    }
    appendPoint(grid, seepageEndElev);
    for (int row = NumElevs; row > i; --row) {
        ElevGrid(row) = ElevGrid(row - 1);
    }
    ElevGrid(i) = seepageEndElev;
}

} // namespace

// Builds the list of elevations that all diagrams stand on: where the data change, regular points
// at 1 FT between, and two points far below, so that every diagram has a point to run to below any
// wall bottom. Elevations in FT, descending.
void BuildElevationGrid(State& state, int level) {
    const Problem& problem = *state.problem;
    ElevationGrid& grid = state.grid;
    const double lowerSurface = MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));

    grid.NumElevs = 0;
    appendDataPoints(grid, problem);
    appendComputedPoint(grid, lowerSurface - 1.0, grid.NumElevs);
    sortPoints(grid);
    appendRegularPoints(grid, problem, lowerSurface);
    sortPoints(grid);

    const double lowest = grid.ElevGrid(grid.NumElevs);
    const double farthest = lowest - FarDistance;
    grid.FarElev = (lowest + farthest) / 2;
    appendPoint(grid, grid.FarElev);
    appendPoint(grid, farthest);

    if (state.preparation.SeepageKind != Seepage::None &&
        state.preparation.SeepageGradient(level) > 0) {
        placeSeepageEnd(grid, state.preparation.SeepageEndElev(level), grid.SeepageEndIndex(level));
    }
    touchRows(state);
}

bool isFarRow(const ElevationGrid& grid, int row) {
    return grid.ElevGrid(row) <= grid.FarElev;
}

int firstRowAt(const ElevationGrid& grid, double elevation) {
    for (int i = 1; i <= grid.NumElevs; ++i) {
        if (std::abs(grid.ElevGrid(i) - elevation) <= SameElevation) {
            return i;
        }
    }
    return 0;
}

int lastRowAt(const ElevationGrid& grid, double elevation) {
    for (int i = grid.NumElevs; i >= 1; --i) {
        if (std::abs(grid.ElevGrid(i) - elevation) <= SameElevation) {
            return i;
        }
    }
    return 0;
}

} // namespace korvane
