// The first pressures of a design over random problems of all kinds.
#include "walls.h"

#include "pressures/elevation_grid.h"
#include "runtime/arithmetic.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

TEST(FirstPressures, RandomProblemsEndOnOneDescendingGridWithNetPressuresThatBalance) {
    RandomProblems problems(2024);
    RandomKind kind;
    kind.analysis = kind.horizontal = false; // distributed loads act beside soil and water
    Workspace workspace;
    const State& state = workspace.state();
    const auto& net = state.net;
    int solved = 0;
    for (int run = 0; run < 400; ++run) {
        const Problem problem = problems.next(kind);
        if (!reviewWall(problem, run % 3 == 0 ? byFixedSurface() : bySweep(), workspace)) {
            continue;
        }
        ++solved;
        const int lower = lastRowAt(
            state.grid, MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1)));
        for (int i = 2; i <= state.grid.NumElevs; ++i) {
            ASSERT_GT(state.grid.ElevGrid(i - 1), state.grid.ElevGrid(i)) << "run " << run;
        }
        // The mean of a row is right less left plus water: not in
        // the last row, which has no pressures below it, nor in the crossing, which stands on the
        // averaged net diagram.
        for (int i = 1; i < state.grid.NumElevs; ++i) {
            if (i == net.NetZeroIndex) {
                continue;
            }
            double active = 0;
            double passive = 0;
            for (const int k : {1, 2}) {
                active += net.NetActive(i, k) - (state.pressures.ActivePressures(Right, i, k) -
                                                 state.pressures.PassivePressures(Left, i, k) +
                                                 state.pressures.WaterPressures(i, k));
                passive += net.NetPassive(i, k) - (state.pressures.PassivePressures(Right, i, k) -
                                                   state.pressures.ActivePressures(Left, i, k) +
                                                   state.pressures.WaterPressures(i, k));
            }
            // Rounding of pressures of up to 1E5 PSF, and of 1E8 at the far points.
            const double tolerance = i < state.grid.NumElevs - 3 ? 1e-8 : 1e-5;
            ASSERT_NEAR(active, 0, tolerance) << "run " << run << " row " << i;
            ASSERT_NEAR(passive, 0, tolerance) << "run " << run << " row " << i;
        }
        ASSERT_GE(net.NetZeroIndex, lower) << "run " << run;
    }
    EXPECT_GT(solved, 200);
}

TEST(FirstPressures, EqualInputGivesEqualPressuresWhateverWasSolvedBefore) {
    RandomProblems problems(7);
    RandomKind kind;
    kind.analysis = false; // its factors come with its trials
    Workspace used;
    for (int run = 0; run < 60; ++run) {
        const Problem problem = problems.next(kind);
        const bool reached = static_cast<bool>(reviewWall(problem, bySweep(), used));
        Workspace fresh;
        ASSERT_EQ(static_cast<bool>(reviewWall(problem, bySweep(), fresh)), reached)
            << "run " << run;
        const State& again = used.state();
        const State& first = fresh.state();
        ASSERT_EQ(again.grid.NumElevs, first.grid.NumElevs);
        ASSERT_EQ(again.pressures.ActivePressures, first.pressures.ActivePressures);
        ASSERT_EQ(again.pressures.PassivePressures, first.pressures.PassivePressures);
        ASSERT_EQ(again.pressures.WaterPressures, first.pressures.WaterPressures);
        ASSERT_EQ(again.pressures.PassiveMark, first.pressures.PassiveMark);
        if (reached) {
            ASSERT_EQ(again.net.DrivingForce, first.net.DrivingForce);
            ASSERT_EQ(again.net.DrivingMoment, first.net.DrivingMoment);
        }
    }
}

} // namespace
} // namespace korvane::test
