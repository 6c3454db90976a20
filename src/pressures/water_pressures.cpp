#include "pressures/water_pressures.h"

#include "pressures/elevation_grid.h"
#include "runtime/arithmetic.h"
#include "state/rows.h"

#include <cmath>

namespace korvane {

namespace {

/// Rows this close (FT) to the end of seepage end the reduction.
constexpr double SeepageEndTolerance = 0.1;

/// Adds to just below the point alone, or to both sides of it.
void addBelow(Pressures& pressures, int i, double p) {
    pressures.WaterPressures(i, 1) += p;
}
void addBoth(Pressures& pressures, int i, double p) {
    pressures.WaterPressures(i, 1) += p;
    pressures.WaterPressures(i, 2) += p;
}

/// The user's table of net pressures: straight lines between its points, its last value below, and
/// a step at its first point.
void applyPressureTable(const Problem& problem, const ElevationGrid& grid, Pressures& pressures) {
    const auto& ElevGrid = grid.ElevGrid;
    const auto& WaterPressElev = problem.WaterPressElev;
    const auto& WaterPressure = problem.WaterPressure;
    const int count = problem.WaterPressCount;

    int i = firstRowAt(grid, WaterPressElev(1));
    if (i == 0) {
        return;
    }
    pressures.WaterPressures(i, 1) = WaterPressure(1);
    ++i;
    for (int j = 2; i <= grid.NumElevs && j <= count && ElevGrid(i) >= WaterPressElev(count); ++i) {
        const double t =
            divide(WaterPressElev(j - 1) - ElevGrid(i), WaterPressElev(j - 1) - WaterPressElev(j));
        addBoth(pressures, i, (1 - t) * WaterPressure(j - 1) + t * WaterPressure(j));
        if (std::abs(ElevGrid(i) - WaterPressElev(j)) <= SameElevation) {
            ++j;
        }
    }
    for (; i <= grid.NumElevs; ++i) {
        addBoth(pressures, i, WaterPressure(count));
    }
}

/// Hydrostatic pressure of the water on one side: against the wall, to the left from the right.
void applyHydrostatic(const Problem& problem, const ElevationGrid& grid, Pressures& pressures,
                      int side) {
    const double g = (3 - 2 * side) * problem.WaterUnitWeight;
    const double y = problem.WaterElev(side);

    const int row = y > problem.WallTopElev ? 1 : firstRowAt(grid, y);
    if (row == 0) {
        return; // a search has overwritten the row
    }
    addBelow(pressures, row, (y - grid.ElevGrid(row)) * g);
    for (int i = row + 1; i <= grid.NumElevs; ++i) {
        addBoth(pressures, i, (y - grid.ElevGrid(i)) * g);
    }
}

/// Takes off the head lost along one face from `from` downward, until `atEnd` holds for a row's
/// distance from the end of seepage. Returns that row; past NumElevs where there is none.
template <class AtEnd>
int applyHeadLoss(const ElevationGrid& grid, Pressures& pressures, double from, double lossPerFoot,
                  double seepageEndElev, AtEnd atEnd) {
    auto& WaterPressures = pressures.WaterPressures;
    for (int i = firstRowAt(grid, from) + 1; i <= grid.NumElevs; ++i) {
        WaterPressures(i, 1) -= (from - grid.ElevGrid(i)) * lossPerFoot;
        WaterPressures(i, 2) = WaterPressures(i, 1);
        if (atEnd(std::abs(grid.ElevGrid(i) - seepageEndElev))) {
            return i;
        }
    }
    return grid.NumElevs + 1;
}

/// Seepage down the right face and up the left one uses up the head linearly.
void applySeepage(const State& state, Pressures& pressures, int level) {
    const Problem& problem = *state.problem;
    const ElevationGrid& grid = state.grid;
    const double end = state.preparation.SeepageEndElev(level);
    const double lossPerFoot = problem.WaterUnitWeight * state.preparation.SeepageGradient(level);

    applyHeadLoss(grid, pressures, problem.SeepageElev, lossPerFoot, end,
                  [](double distance) { return distance <= SeepageEndTolerance; });
    // Deliberately another test: here a row at just 0.1 FT does not end the reduction.
    const int last = applyHeadLoss(grid, pressures, seepageExitElev(problem), lossPerFoot, end,
                                   [](double distance) { return distance < SeepageEndTolerance; });
    for (int i = last + 1; i <= grid.NumElevs; ++i) {
        pressures.WaterPressures(i, 1) = pressures.WaterPressures(i, 2) = 0;
    }
}

} // namespace

// Net water pressure on the wall in PSF, right less left: a table, or hydrostatic pressures of both
// sides less the head that seepage loses. Reads the grid and the level's seepage values.
void ComputeWaterPressures(State& state, int level) {
    const Problem& problem = *state.problem;
    auto& pressures = state.pressures;

    clearRows(pressures.WaterPressures, state.TouchedRows);
    if (problem.WaterDataKind == WaterData::Pressures) {
        applyPressureTable(problem, state.grid, pressures);
    } else if (problem.WaterDataKind == WaterData::Elevations) {
        applyHydrostatic(problem, state.grid, pressures, Right);
        applyHydrostatic(problem, state.grid, pressures, Left);
        if (state.preparation.SeepageKind != Seepage::None) {
            applySeepage(state, pressures, level);
        }
    }
}

double seepageExitElev(const Problem& problem) {
    return MinOf(problem.WaterElev(Left), problem.SurfaceElev(Left, 1));
}

double seepageHead(const Problem& problem) {
    return problem.WaterElev(Right) - problem.WaterElev(Left);
}

double seepageEndElevation(const Problem& problem, double gradient) {
    return (problem.SeepageElev + seepageExitElev(problem) -
            divide(seepageHead(problem), gradient)) /
           2;
}

double seepageGradientForBottom(const Problem& problem, double bottomElev) {
    return divide(seepageHead(problem),
                  problem.SeepageElev + seepageExitElev(problem) - 2 * bottomElev);
}

void setSeepageForBottom(State& state, int level, double bottomElev) {
    const Problem& problem = *state.problem;
    auto& preparation = state.preparation;

    preparation.SeepageGradient(level) =
        MinOf(seepageGradientForBottom(problem, bottomElev), preparation.SeepageGradientLimit);
    preparation.SeepageEndElev(level) =
        seepageEndElevation(problem, preparation.SeepageGradient(level));
}

} // namespace korvane
