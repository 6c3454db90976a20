#include "allocations/heap_allocations.h"
#include "pressures/wedge_forces.h"
#include "wedge_second_method.h"

#include <cmath>
#include <new>
#include <numbers>

namespace korvane::test {
namespace {

constexpr double Degree = std::numbers::pi / 180;

class WedgeSweepTest : public testing::Test {
  protected:
    void sweep(int side = Right) { SweepSearchForces(state, side, 1); }
    double active(double elev, int side = Right) {
        return state.wedge.WedgeActiveForce(bench.row(elev), side);
    }
    double passive(double elev, int side = Right) {
        return state.wedge.WedgePassiveForce(bench.row(elev), side);
    }
    bool activeMark(double elev) { return state.pressures.ActiveMark(Right, bench.row(elev)); }
    bool passiveMark(double elev) { return state.pressures.PassiveMark(Right, bench.row(elev)); }

    WedgeBench bench;
    Problem& problem = bench.problem;
    State& state = *bench.state;
};

/// Force of a dry wedge under level ground behind a smooth wall, by the plane `degrees` off the
/// vertical: W tan(90 - a -+ phi), with W = g H^2 tan(a) / 2; in units of g H^2 / 2.
double smoothWedge(double degrees, double friction) {
    const double a = degrees * Degree;
    return std::tan(a) / std::tan(a + friction * Degree);
}

TEST_F(WedgeSweepTest, LevelGroundWithoutWallFrictionGivesRankinesForceWithinTheStep) {
    bench.buildGround();
    sweep();
    // Planes at 23, 25 ... degrees; the critical ones at 30 and 60 lie between two of them.
    const double best = std::max(smoothWedge(29, 30), smoothWedge(31, 30));
    const double least = std::min(smoothWedge(59, -30), smoothWedge(61, -30));
    EXPECT_NEAR(best, 1 / 3.0, 0.001);
    EXPECT_NEAR(least, 3, 0.01);
    for (const double depth : {1.0, 5.0, 20.0, 49.0}) {
        const double unit = 120 * depth * depth / 2;
        EXPECT_NEAR(active(-depth), best * unit, 1e-9 * unit);
        EXPECT_NEAR(passive(-depth), least * unit, 1e-9 * unit);
        EXPECT_NEAR(active(-depth), unit / 3, 0.001 * unit);
        EXPECT_NEAR(passive(-depth), unit * 3, 0.01 * unit);
        EXPECT_FALSE(activeMark(-depth));
        EXPECT_FALSE(passiveMark(-depth));
    }
    EXPECT_EQ(state.wedge.WedgeNoSolution(1, Right), 0);
}

TEST_F(WedgeSweepTest, ForcesAreZeroDownToTheSurfaceRow) {
    bench.setGround(Left, {{0, -10}});
    bench.buildGround();
    state.wedge.WedgeActiveForce.fill(7);
    state.wedge.WedgePassiveForce.fill(7);
    sweep(Left);
    for (int i = 1; i <= bench.row(-10); ++i) {
        EXPECT_EQ(state.wedge.WedgeActiveForce(i, Left), 0);
        EXPECT_EQ(state.wedge.WedgePassiveForce(i, Left), 0);
    }
    EXPECT_EQ(state.wedge.WedgeActiveForce(1, Right), 7); // the other side is left alone
}

// Coulomb's closed form: P cos(d) of an unlimited slope, with wall friction.
TEST_F(WedgeSweepTest, SlopingGroundAgreesWithCoulombWithin1Percent) {
    for (const double slope : {-12.0, 0.0, 10.0, 20.0}) {
        for (const double wallFriction : {0.0, 10.0, 20.0}) {
            bench.setGround(Right, {{0, 0}, {3000, 3000 * std::tan(slope * Degree)}});
            problem.SoilFriction(Right, 1) = 33;
            problem.SoilWallFriction(Right, 1) = wallFriction;
            bench.buildGround();
            sweep();
            const double p = 33 * Degree;
            const double d = wallFriction * Degree;
            const double b = slope * Degree;
            const double root = std::sqrt(std::sin(p + d) * std::sin(p - b) / //
                                          (std::cos(d) * std::cos(b)));
            const double Ka = std::pow(std::cos(p) / (1 + root), 2) / std::cos(d);
            const double expected = Ka * std::cos(d) * 120 * 20 * 20 / 2;
            EXPECT_NEAR(active(-20), expected, 0.01 * expected)
                << "slope " << slope << " wall friction " << wallFriction;
        }
    }
}

TEST_F(WedgeSweepTest, AUniformLoadActsAsAnEquivalentHeight) {
    // Level ground: force (g H / 2 + q) H K with the same critical planes.
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 240;
    bench.buildGround();
    sweep();
    const double best = std::max(smoothWedge(29, 30), smoothWedge(31, 30));
    EXPECT_NEAR(active(-10), best * (120 * 10 / 2.0 + 240) * 10, 1e-6);
}

TEST_F(WedgeSweepTest, ARowExactlyOnALayerBottomCountsAsTheUpperLayerForTheWallTerms) {
    problem.SoilWallFriction(Right, 1) = 5;
    bench.buildGround();
    sweep();
    const double above = active(-6);
    const double passiveAbove = passive(-6);
    const double below = active(-7);
    bench.setLayers(Right, {{-6, 0}});
    problem.SoilWallFriction(Right, 2) = 25;
    bench.buildGround();
    sweep();
    // The plane from the row on the bottom rises in the upper layer: nothing of layer 2 enters.
    EXPECT_NEAR(active(-6), above, 1e-9 * above);
    EXPECT_NEAR(passive(-6), passiveAbove, 1e-9 * passiveAbove);
    EXPECT_GT(std::abs(active(-7) - below), 1);
}

TEST_F(WedgeSweepTest, TwoLayersOfTheSameSoilAreOne) {
    problem.SoilWallFriction(Right, 1) = 12;
    bench.setGround(Right, {{0, 0}, {10, 3}, {20, 1}});
    bench.buildGround();
    sweep();
    const double a = active(-15);
    bench.setLayers(Right, {{-6, 0}});
    // One plane, one friction: the free bodies of its pieces add up to the one wedge.
    bench.buildGround();
    sweep();
    EXPECT_NEAR(active(-15), a, 1e-9 * a);
}

TEST_F(WedgeSweepTest, TheLastRowNeverReceivesAMark) {
    // Soil lighter than the water it displaces: no passive resistance, and an active force that
    // grows with the angle to the last plane.
    problem.SoilFriction(Right, 1) = 10;
    problem.SoilSatWeight(Right, 1) = 50;
    bench.setWater(0, -10);
    bench.buildGround();
    sweep();
    const int last = state.grid.NumElevs;
    for (const int row : {last - 2, last - 1}) {
        EXPECT_TRUE(state.pressures.ActiveMark(Right, row));
        EXPECT_TRUE(state.pressures.PassiveMark(Right, row));
    }
    EXPECT_FALSE(state.pressures.ActiveMark(Right, last));
    EXPECT_FALSE(state.pressures.PassiveMark(Right, last));
    EXPECT_EQ(state.wedge.WedgeNoSolution(1, Right), 1);
    EXPECT_EQ(state.wedge.WedgeNoSolution(1, Left), 0);
}

TEST_F(WedgeSweepTest, WhenNoPlaneGivesAPassiveForceItStaysZeroAndTheRowIsMarked) {
    problem.SoilFriction(Right, 1) = 10;
    problem.SoilSatWeight(Right, 1) = 50;
    bench.setWater(0, -10);
    bench.buildGround();
    sweep();
    EXPECT_EQ(passive(-8), 0);
    EXPECT_TRUE(passiveMark(-8));
}

TEST_F(WedgeSweepTest, MarksOfAnEarlierRunAreClearedOnItsSideAlone) {
    bench.buildGround();
    for (const int side : {Right, Left}) {
        state.pressures.ActiveMark(side, 300) = true;
        state.pressures.PassiveMark(side, 5) = true;
    }
    sweep();
    EXPECT_FALSE(state.pressures.ActiveMark(Right, 300));
    EXPECT_FALSE(state.pressures.PassiveMark(Right, 5));
    EXPECT_TRUE(state.pressures.ActiveMark(Left, 300));
}

TEST_F(WedgeSweepTest, GroundThatFallsSteeperThanTheDevelopedFrictionMarksPassiveRows) {
    // Falls 12 on 40 (16.7 degrees); tan 20 / 1.25 is that of 16.2 degrees.
    bench.setGround(Right, {{0, 0}, {40, -12}});
    problem.SoilFriction(Right, 1) = 20;
    problem.SoilWallFriction(Right, 1) = 5;
    bench.setFactors(1.2, 1.25);
    bench.buildGround();
    sweep();
    EXPECT_TRUE(passiveMark(-1));
    EXPECT_FALSE(activeMark(-1));
    EXPECT_EQ(state.wedge.WedgeNoSolution(1, Right), 1);
    const FreeBodies bodies(bench, Right);
    for (int i = bench.row(0) + 1; i <= state.grid.NumElevs - 2; ++i) {
        const auto row = bodies.sweep(bench.elevation(i), false);
        EXPECT_EQ(state.pressures.ActiveMark(Right, i), row.activeMarked);
        EXPECT_EQ(state.pressures.PassiveMark(Right, i), row.passiveMarked);
    }
}

TEST_F(WedgeSweepTest, WithASurchargeTheSweepDoesNotStopEarly) {
    // Level ground, depth 10. A light strip between the planes at 49 and 51 degrees (x = 11.5 and
    // 12.3) makes the passive force rise there, when the active one has long turned; a heavy line
    // at 13 then lifts the active force of the plane at 53 degrees (x = 13.27) above all others:
    // P = (W + strip + line) cot(53 + 30).
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 11.6;
    problem.VStripEnd(Right, 1) = 12.2;
    problem.VStripLoad(Right, 1) = 600;
    problem.VLineCount(Right) = 1;
    problem.VLineDist(Right, 1) = 13;
    problem.VLineLoad(Right, 1) = 20000;
    bench.buildGround();
    ASSERT_EQ(state.preparation.NumSurchargesOnSide(Right), 2);
    sweep();
    const double W = 120 * 10 * 10 * std::tan(53 * Degree) / 2;
    EXPECT_NEAR(active(-10), (W + 360 + 20000) / std::tan(83 * Degree), 1e-6);

    // Were there no surcharges to count, the row would be done at 51 degrees.
    state.preparation.NumSurchargesOnSide(Right) = 0;
    sweep();
    const double best = std::max(smoothWedge(29, 30), smoothWedge(31, 30));
    EXPECT_NEAR(active(-10), best * 120 * 10 * 10 / 2, 1e-6);
}

TEST_F(WedgeSweepTest, TheSameGroundOnEitherSideGivesTheSameForces) {
    for (const int side : {Right, Left}) {
        bench.setGround(side, {{0, -5}, {10, -2}, {18, -4}});
        bench.setLayers(side, {{-9, 0}, {-14, 0}});
        problem.SoilFriction(side, 2) = 22;
        problem.SoilCohesion(side, 3) = 200;
    }
    bench.setWater(-7, -7);
    bench.buildGround();
    sweep(Right);
    sweep(Left);
    for (int i = 1; i <= state.grid.NumElevs; ++i) {
        EXPECT_EQ(state.wedge.WedgeActiveForce(i, Right), state.wedge.WedgeActiveForce(i, Left));
        EXPECT_EQ(state.wedge.WedgePassiveForce(i, Right), state.wedge.WedgePassiveForce(i, Left));
    }
}

TEST_F(WedgeSweepTest, APlaneAlongABoundaryTakesTheWeakerSoil) {
    // The row at -10 stands on a boundary that reaches the ground exactly where the plane at 45
    // degrees (the 12th) does: both soils are tried with the load of the upper one.
    bench.buildGround();
    const int row = bench.row(-10);
    sweep();
    double angle = 23 * 0.0174532925199433;
    for (int step = 0; step < 11; ++step) {
        angle += 0.0349065850398866;
    }
    const double k = std::cos(angle) / std::sin(angle);
    bench.setLayers(Right, {{-10, k}});
    problem.SoilFriction(Right, 1) = 44; // so that this plane gives the largest active force ...
    problem.SoilFriction(Right, 2) = 2;  // ... with the soil below
    bench.buildGround();
    const double xg = 10 / k;
    state.regions.Layer.X(Right, 2, 2) = xg; // exactly, rounding set aside
    sweep();
    const double W = 120 * 10 * xg / 2;
    // Smooth wall: P = W tan(90 - a - phi).
    EXPECT_NEAR(state.wedge.WedgeActiveForce(row, Right), W / std::tan(angle + 2 * Degree), 1e-6);
}

TEST_F(WedgeSweepTest, AZeroFactorOfSafetyIsADivisionByZero) {
    bench.buildGround();
    state.preparation.LayerFSPassive(Right, 1, 1) = 0;
    EXPECT_EQ(errorOf([&] { sweep(); }), 11);
}

TEST_F(WedgeSweepTest, TheSearchAllocatesNothing) {
    bench.setGround(Right, {{0, 0}, {10, 3}, {20, 1}});
    bench.setLayers(Right, {{-6, 0}, {-12, 0}});
    bench.setWater(-3, -8);
    bench.setSeepage(-4, 0.1);
    bench.buildGround();
    sweep(); // the table of directions is made once
    const long before = heapAllocations();
    sweep();
    EXPECT_EQ(heapAllocations(), before);
    ::operator delete(::operator new(1)); // the counter counts
    EXPECT_EQ(heapAllocations(), before + 1);
}

// ---- against free bodies ----------------------------------------------------------------------

// All rows but the two far ones of random grounds: forces within 1E-7 of the larger of the force
// and the weight scale (two ways of summing the same terms), marks equal. A mark hangs on a
// comparison of two forces; where these agree to the last digits both answers are right.
void compareWithFreeBodies(bool slopingLayers, std::uint64_t seed, int problems) {
    Dice dice(seed);
    int rows = 0;
    int severalLayers = 0;
    int marked = 0;
    for (int run = 0; run < problems; ++run) {
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, slopingLayers);
        drawn.buildGround();
        State& state = *drawn.state;
        for (const int side : {Right, Left}) {
            SweepSearchForces(state, side, 1);
            const FreeBodies bodies(drawn, side);
            const int surface = lastRowAt(state.grid, drawn.problem.SurfaceElev(side, 1));
            for (int i = surface + 1; i <= state.grid.NumElevs - 2; i += 3) {
                const double y0 = state.grid.ElevGrid(i);
                const auto expected = bodies.sweep(y0, false);
                const double depth = drawn.problem.SurfaceElev(side, 1) - y0;
                const double scale = 120 * depth * depth;
                const auto where = [&] {
                    return "seed " + std::to_string(seed) + " problem " + std::to_string(run) +
                           " side " + std::to_string(side) + " row " + std::to_string(i);
                };
                ASSERT_NEAR(state.wedge.WedgeActiveForce(i, side), expected.active,
                            1e-7 * std::max(scale, std::abs(expected.active)))
                    << where();
                ASSERT_NEAR(state.wedge.WedgePassiveForce(i, side), expected.passive,
                            1e-7 * std::max(scale, expected.passive))
                    << where();
                ASSERT_EQ(state.pressures.ActiveMark(side, i), expected.activeMarked) << where();
                ASSERT_EQ(state.pressures.PassiveMark(side, i), expected.passiveMarked) << where();
                ++rows;
                severalLayers += expected.severalLayers > 0 ? 1 : 0;
                marked += expected.activeMarked || expected.passiveMarked ? 1 : 0;
            }
        }
    }
    EXPECT_GT(severalLayers, rows / 5);
    EXPECT_GT(marked, 0);
}

TEST(WedgeSweepFreeBodies, LevelLayers) {
    compareWithFreeBodies(false, 40, 60);
}

TEST(WedgeSweepFreeBodies, SlopingLayers) {
    compareWithFreeBodies(true, 41, 60);
}

} // namespace
} // namespace korvane::test
