// The planes that an analysis keeps from trial to trial: what they give must be what planes worked
// out anew give, to the last bit, whatever has changed in between.
#include "allocations/heap_allocations.h"
#include "pressures/wedge_forces.h"
#include "wedge_ground.h"

#include <functional>
#include <memory>

namespace korvane::test {
namespace {

/// What a sweep of one side gives.
struct Swept {
    std::vector<double> forces;
    std::vector<bool> marks;

    bool operator==(const Swept&) const = default;
};

Swept sweep(State& state, int side) {
    SweepSearchForces(state, side, 1);
    Swept swept;
    for (int row = 1; row <= state.grid.NumElevs; ++row) {
        swept.forces.push_back(state.wedge.WedgeActiveForce(row, side));
        swept.forces.push_back(state.wedge.WedgePassiveForce(row, side));
        swept.marks.push_back(state.pressures.ActiveMark(side, row));
        swept.marks.push_back(state.pressures.PassiveMark(side, row));
    }
    return swept;
}

/// The same problem, grid and factors in a state that knows no planes.
Swept sweptAnew(const State& state, int side) {
    WedgeBench fresh;
    fresh.problem = *state.problem;
    fresh.takeSeepage();
    fresh.state->preparation = state.preparation;
    fresh.state->grid = state.grid;
    fresh.state->regions = state.regions;
    return sweep(*fresh.state, side);
}

class SweepPlanesTest : public testing::Test {
  protected:
    /// Two layers, water, seepage that ends within them, sloping ground, no surcharge.
    SweepPlanesTest() {
        for (const int side : {Right, Left}) {
            bench.setLayers(side, {{-14, 0.05}});
            problem.SoilCohesion(side, 1) = 50;
            problem.SoilFriction(side, 2) = 34;
            problem.SoilSatWeight(side, 1) = 124;
            problem.SoilSatWeight(side, 2) = 128;
        }
        bench.setGround(Right, {{0, 0}, {10, 3}, {20, 1}});
        bench.setGround(Left, {{0, -10}, {15, -12}});
        bench.setWater(-3, -11);
        bench.setSeepage(-4, 0.3);
        problem.ProgramMode = Mode::Analysis;
        bench.buildGround();
    }
    Swept trial(double factor, int side) {
        bench.setFactors(factor, factor);
        return sweep(state, side);
    }

    WedgeBench bench;
    Problem& problem = bench.problem;
    State& state = *bench.state;
};

TEST_F(SweepPlanesTest, TrialsOfOtherFactorsGiveWhatNewPlanesGive) {
    for (const int side : {Right, Left}) {
        for (const double factor : {1.0, 1.4, 2.5, 0.7, 1.4}) {
            const Swept swept = trial(factor, side);
            EXPECT_EQ(swept, sweptAnew(state, side)) << factor;
        }
    }
}

TEST_F(SweepPlanesTest, ARowThatOnlyOneTrialHasChangesNoOther) {
    const ElevationGrid grid = state.grid;
    for (const double elev : {-15.3, -20.7, -20.7, -12.25}) {
        state.grid = grid;
        int row = 1;
        while (state.grid.ElevGrid(row) > elev) {
            ++row;
        }
        for (int i = ++state.grid.NumElevs; i > row; --i) {
            state.grid.ElevGrid(i) = state.grid.ElevGrid(i - 1);
        }
        state.grid.ElevGrid(row) = elev;
        const Swept swept = trial(1.2, Left);
        EXPECT_EQ(swept, sweptAnew(state, Left)) << elev;
    }
}

// Planes kept under one problem never serve another: each change must change the forces, to what
// new planes give, and taking it back must bring the old ones.
TEST_F(SweepPlanesTest, EveryChangeOfTheProblemGivesNewPlanes) {
    const auto surcharge = [&](auto& count, auto set) {
        count(Right) = 1;
        set();
    };
    const std::vector<std::function<void()>> changes = {
        [&] { problem.SoilMoistWeight(Right, 1) += 1; },
        [&] { problem.SoilSatWeight(Right, 1) += 1; },
        [&] { problem.SoilSatWeight(Right, 2) += 1; },
        [&] { problem.SoilBottomElev(Right, 1) -= 0.5; },
        [&] { problem.SoilBottomSlope(Right, 1) = 0.06; },
        [&] { problem.SoilLayerCount(Right) = 1; },
        [&] { problem.SurfaceElev(Right, 2) += 0.5; },
        [&] { problem.SurfaceDist(Right, 2) += 1; },
        [&] { problem.SurfacePointCount(Right) = 2; },
        [&] { problem.WaterElev(Right) += 1; },
        [&] { problem.WaterUnitWeight += 1; },
        [&] { problem.SeepageElev -= 1; },
        [&] { problem.SeepageGradient(1) -= 0.05; },
        [&] { problem.SeepageKind = Seepage::None; },
        [&] { problem.WaterDataKind = WaterData::None; },
        [&] {
            surcharge(problem.VLineCount, [&] {
                problem.VLineDist(Right, 1) = 4;
                problem.VLineLoad(Right, 1) = 500;
            });
        },
        [&] { surcharge(problem.VUniformCount, [&] { problem.VUniformLoad(Right) = 50; }); },
        [&] {
            surcharge(problem.VStripCount, [&] {
                problem.VStripStart(Right, 1) = 2;
                problem.VStripEnd(Right, 1) = 6;
                problem.VStripLoad(Right, 1) = 100;
            });
        },
        [&] {
            surcharge(problem.VRampCount, [&] {
                problem.VRampStart(Right) = 2;
                problem.VRampEnd(Right) = 6;
                problem.VRampLoad(Right) = 100;
            });
        },
        [&] {
            surcharge(problem.VTriCount, [&] {
                problem.VTriStart(Right, 1) = 2;
                problem.VTriPeak(Right, 1) = 4;
                problem.VTriEnd(Right, 1) = 6;
                problem.VTriLoad(Right, 1) = 100;
            });
        },
        [&] {
            problem.VVarCount(Right) = 2;
            problem.VVarDist(Right, 1) = 2;
            problem.VVarDist(Right, 2) = 7;
            problem.VVarLoad(Right, 1) = problem.VVarLoad(Right, 2) = 100;
        },
    };
    const Problem given = problem;
    const Swept first = trial(1, Right);
    int number = 0;
    for (const auto& change : changes) {
        change();
        bench.buildGround();
        const Swept swept = trial(1, Right);
        EXPECT_EQ(swept, sweptAnew(state, Right)) << "change " << number;
        EXPECT_NE(swept, first) << "change " << number;
        problem = given;
        bench.buildGround();
        EXPECT_EQ(trial(1, Right), first) << "change " << number;
        ++number;
    }
}

TEST_F(SweepPlanesTest, ADesignOrAFixedSurfaceBetweenTwoTrialsLeavesNoPlanes) {
    const Swept first = trial(1, Right);
    const Problem given = problem;
    for (const bool fixed : {false, true}) {
        problem.SoilMoistWeight(Right, 1) += 5;
        problem.ProgramMode = Mode::Design;
        fixed ? void(FixedSurfaceForces(state, Right, 1)) : SweepSearchForces(state, Right, 1);
        problem.ProgramMode = Mode::Analysis;
        EXPECT_EQ(trial(1, Right), sweptAnew(state, Right));
        problem = given;
        EXPECT_EQ(trial(1, Right), first);
    }
}

TEST_F(SweepPlanesTest, ATrialOfKnownPlanesAllocatesNothing) {
    for (const double factor : {1.0, 1.5, 2.0, 0.8}) {
        trial(factor, Right); // planes beyond those of the first trial are added
    }
    bench.setFactors(1.5, 1.5);
    const long before = heapAllocations();
    SweepSearchForces(state, Right, 1);
    EXPECT_EQ(heapAllocations(), before);
}

TEST(SweepPlanes, RandomGroundsOneAfterTheOther) {
    Dice dice(61);
    WedgeBench used;
    for (int run = 0; run < 60; ++run) {
        drawWedgeProblem(used, dice, dice.chance(0.5));
        used.problem.ProgramMode = dice.chance(0.8) ? Mode::Analysis : Mode::Design;
        used.buildGround();
        for (const double factor : {1.0, 1.6, 0.9}) {
            used.setFactors(factor, factor);
            for (const int side : {Right, Left}) {
                const Swept swept = sweep(*used.state, side);
                ASSERT_EQ(swept, sweptAnew(*used.state, side)) << run;
            }
        }
    }
}

} // namespace
} // namespace korvane::test
