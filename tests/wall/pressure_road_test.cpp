// Preparation, pressures of both sides and net pressures over random problems of all kinds.
#include "support/pressure_bench.h"
#include "support/random_problem.h"
#include "wall/net_pressures.h"
#include "wall/preparation.h"
#include "wall/trial_pressures.h"

namespace korvane::test {
namespace {

/// The road up to the stop for review; sides that need a wedge take `wedge`.
void solvePressures(State& state, PressureMethod wedge) {
    state.failure = {};
    PrepareSolution(state);
    for (const int side : {Right, Left}) {
        if (!state.failed()) {
            if (state.preparation.SideMethod(side) == PressureMethod::Wedge) {
                state.preparation.SideMethod(side) = wedge;
            }
            ComputeSidePressures(state, side, 1);
        }
    }
    if (!state.failed()) {
        ComputeNetPressures(state);
    }
}

TEST(PressureRoadTest, RandomProblemsEndOnOneDescendingGridWithNetPressuresThatBalance) {
    RandomProblems problems(2024);
    RandomKind kind;
    kind.analysis = kind.horizontal = false; // distributed loads act beside soil and water
    PressureBench bench;
    State& state = *bench.state;
    const auto& net = state.net;
    int solved = 0;
    for (int run = 0; run < 400; ++run) {
        bench.problem = problems.next(kind);
        solvePressures(state, run % 3 == 0 ? PressureMethod::FixedSurface : PressureMethod::Sweep);
        if (state.failed()) {
            continue;
        }
        ++solved;
        const int lower = lastRowAt(state.grid, MinOf(bench.problem.SurfaceElev(Right, 1),
                                                      bench.problem.SurfaceElev(Left, 1)));
        for (int i = 2; i <= state.grid.NumElevs; ++i) {
            ASSERT_GT(bench.elevation(i - 1), bench.elevation(i)) << "run " << run;
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

TEST(PressureRoadTest, EqualInputGivesEqualPressuresWhateverWasSolvedBefore) {
    RandomProblems problems(7);
    RandomKind kind;
    kind.analysis = false; // its factors come with its trials
    PressureBench used;
    for (int run = 0; run < 60; ++run) {
        const Problem problem = problems.next(kind);
        used.problem = problem;
        solvePressures(*used.state, PressureMethod::Sweep);
        PressureBench fresh;
        fresh.problem = problem;
        solvePressures(*fresh.state, PressureMethod::Sweep);

        ASSERT_EQ(used.state->failed(), fresh.state->failed()) << "run " << run;
        ASSERT_EQ(used.state->grid.NumElevs, fresh.state->grid.NumElevs);
        ASSERT_EQ(used.state->pressures.ActivePressures, fresh.state->pressures.ActivePressures);
        ASSERT_EQ(used.state->pressures.PassivePressures, fresh.state->pressures.PassivePressures);
        ASSERT_EQ(used.state->pressures.WaterPressures, fresh.state->pressures.WaterPressures);
        ASSERT_EQ(used.state->pressures.PassiveMark, fresh.state->pressures.PassiveMark);
        if (!fresh.state->failed()) {
            ASSERT_EQ(used.state->net.DrivingForce, fresh.state->net.DrivingForce);
            ASSERT_EQ(used.state->net.DrivingMoment, fresh.state->net.DrivingMoment);
        }
    }
}

} // namespace
} // namespace korvane::test
