// A problem with its grid and water, for tests of the pressures of one side.
#pragma once

#include "pressures/coefficient_pressures.h"
#include "pressures/elevation_grid.h"
#include "pressures/water_pressures.h"
#include "runtime/arithmetic.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace korvane::test {

struct PressureBench : Bench {
    PressureBench() { problem = plainCantilever(); }

    /// Factors for all layers of both sides.
    void setFactors(double active, double passive, int level = 1) {
        for (const int side : {Right, Left}) {
            for (int layer = 1; layer <= 11; ++layer) {
                state->preparation.LayerFSActive(side, layer, level) = active;
                state->preparation.LayerFSPassive(side, layer, level) = passive;
            }
        }
    }

    /// Grid and water, with SeepageEndElev of the level from the problem's gradient.
    void build(int level = 1) {
        takeSeepage();
        if (problem.SeepageKind != Seepage::None) {
            state->preparation.SeepageEndElev(level) =
                seepageEndElevation(problem, problem.SeepageGradient(level));
        }
        BuildElevationGrid(*state, level);
        ComputeWaterPressures(*state, level);
    }

    /// Grid, water and both sides by coefficients, factors of safety 1.
    void solve() {
        setFactors(1, 1);
        build();
        ComputeCoefficientPressures(*state, Right, 1);
        ComputeCoefficientPressures(*state, Left, 1);
    }

    /// The one row at an elevation.
    int row(double elevation) const {
        const int i = firstRowAt(state->grid, elevation);
        EXPECT_NE(i, 0) << "no row at " << elevation;
        EXPECT_EQ(i, lastRowAt(state->grid, elevation));
        return i;
    }
    double elevation(int i) const { return state->grid.ElevGrid(i); }
    double active(int side, double elev, int k) const {
        return state->pressures.ActivePressures(side, row(elev), k);
    }
    double passive(int side, double elev, int k) const {
        return state->pressures.PassivePressures(side, row(elev), k);
    }
    double water(double elev, int k) const { return state->pressures.WaterPressures(row(elev), k); }
    double surcharge(int side, double elev) const {
        return state->pressures.SurchargePressures(side, row(elev));
    }
};

/// The number of the run-time error that `run` throws; 0 without one.
template <class Run>
int errorOf(Run run) {
    try {
        run();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

/// Gives a side one layer after another: bottoms are set from the list, the last has none.
inline void setLayerBottoms(Problem& problem, int side, const std::vector<double>& bottoms) {
    problem.SoilLayerCount(side) = static_cast<int>(bottoms.size()) + 1;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const bool last = layer == problem.SoilLayerCount(side);
        problem.SoilBottomElev(side, layer) =
            last ? NoLayerBottom : bottoms[static_cast<std::size_t>(layer - 1)];
        for (auto* field : {&problem.SoilSatWeight, &problem.SoilMoistWeight, &problem.SoilFriction,
                            &problem.SoilCohesion, &problem.SoilWallFriction}) {
            (*field)(side, layer) = (*field)(side, 1);
        }
    }
}

} // namespace korvane::test
