#include "support/pressure_bench.h"
#include "wall/net_pressures.h"

#include <cmath>
#include <random>

namespace korvane::test {
namespace {

/// Wall top and right ground at 0, left ground at -10; dry sand of 120 PCF and 30 degrees: right
/// active 40 z, left passive 360 (z - 10), right passive 360 z, left active 40 (z - 10).
class NetPressuresTest : public testing::Test {
  protected:
    void solve() {
        bench.solve();
        ComputeNetPressures(state);
    }
    /// Coefficients instead of strengths, for round numbers.
    void setCoefficients(int side, int layer, double active, double passive) {
        problem.SoilDataKind(side) = SoilData::Coefficients;
        problem.SoilCoefActive(side, layer) = active;
        problem.SoilCoefPassive(side, layer) = passive;
    }
    void addLineLoad(double elevation, double load) {
        problem.HLineElev(++problem.HLineCount) = elevation;
        problem.HLineLoad(problem.HLineCount) = load;
    }
    void addDistributed(double elevation, double load) {
        problem.HDistElev(++problem.HDistCount) = elevation;
        problem.HDistLoad(problem.HDistCount) = load;
    }
    double active(double elevation, int k) { return net.NetActive(bench.row(elevation), k); }
    double passive(double elevation, int k) { return net.NetPassive(bench.row(elevation), k); }
    double zeroElev() { return bench.elevation(net.NetZeroIndex); }

    PressureBench bench;
    State& state = *bench.state;
    Problem& problem = bench.problem;
    NetPressures& net = state.net;
};

TEST_F(NetPressuresTest, RightLessLeftPlusWater) {
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -2;
    problem.WaterPressure(1) = 50;
    problem.WaterPressElev(2) = -60;
    problem.WaterPressure(2) = 50;
    solve();
    EXPECT_NEAR(active(-1, 1), 40, 1e-9);
    EXPECT_NEAR(active(-2, 2), 80, 1e-9);
    EXPECT_NEAR(active(-2, 1), 130, 1e-9);
    EXPECT_NEAR(active(-15, 1), 40 * 15 - 360 * 5 + 50, 1e-9);
    EXPECT_NEAR(passive(-15, 2), 360 * 15 - 40 * 5 + 50, 1e-9);
}

// 40 z = 360 (z - 10) at z = 11.25. Force 400 x 10 / 2 + 400 x 1.25 / 2; moment about the top
// 2000 x 20 / 3 + 250 x (10 + 1.25 / 3).
TEST_F(NetPressuresTest, DrivingForceAndMomentOfDrySand) {
    solve();
    EXPECT_NEAR(zeroElev(), -11.25, 1e-12);
    EXPECT_NEAR(net.DrivingForce, 2250, 1e-9);
    EXPECT_NEAR(net.DrivingMoment, 15937.5, 1e-8);
    EXPECT_FALSE(state.failed());
}

TEST_F(NetPressuresTest, TheCrossingIsARowOfAllDiagrams) {
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -20; // below the crossing: a step there, none above
    problem.WaterPressure(1) = 5;
    problem.WaterPressElev(2) = -60;
    bench.solve();
    const int before = state.grid.NumElevs;
    state.pressures.PassiveMark(Left, bench.row(-12)) = true;
    ComputeNetPressures(state);
    EXPECT_EQ(state.grid.NumElevs, before + 1);
    const int z = net.NetZeroIndex;
    for (const int k : {1, 2}) {
        EXPECT_EQ(net.NetActive(z, k), 0);
        EXPECT_NEAR(net.NetPassive(z, k), 360 * 11.25 - 40 * 1.25, 1e-9);
        EXPECT_NEAR(state.pressures.ActivePressures(Right, z, k), 450, 1e-9);
        EXPECT_NEAR(state.pressures.PassivePressures(Right, z, k), 4050, 1e-9);
        EXPECT_NEAR(state.pressures.ActivePressures(Left, z, k), 50, 1e-9);
        EXPECT_NEAR(state.pressures.PassivePressures(Left, z, k), 450, 1e-9);
    }
    // Rows below have moved with grid, water and marks.
    EXPECT_NEAR(active(-12, 1), 40 * 12 - 360 * 2, 1e-9);
    EXPECT_NEAR(bench.active(Right, -20, 1), 800, 1e-9);
    EXPECT_EQ(bench.water(-20, 1), 5);
    EXPECT_EQ(bench.water(-20, 2), 0);
    EXPECT_FALSE(state.pressures.PassiveMark(Left, z));
    EXPECT_TRUE(state.pressures.PassiveMark(Left, bench.row(-12)));
}

// Clay of 1000 PSF on the left: passive 2000 against active 400 at once.
TEST_F(NetPressuresTest, ZeroAtTheLowerSurfaceItselfEndsTheSumsThere) {
    problem.SoilFriction(Left, 1) = 0;
    problem.SoilCohesion(Left, 1) = 1000;
    bench.solve();
    const int before = state.grid.NumElevs;
    ComputeNetPressures(state);
    EXPECT_EQ(zeroElev(), -10);
    EXPECT_EQ(state.grid.NumElevs, before);
    EXPECT_NEAR(net.DrivingForce, 2000, 1e-9);
    EXPECT_NEAR(net.DrivingMoment, 2000 * 20 / 3.0, 1e-8);
}

// Ground at -8: 40 z = 360 (z - 8) at z = 9, a regular point.
TEST_F(NetPressuresTest, ZeroAtAGridPointInsertsNothing) {
    problem.SurfaceElev(Left, 1) = -8;
    bench.solve();
    const int before = state.grid.NumElevs;
    ComputeNetPressures(state);
    EXPECT_EQ(state.grid.NumElevs, before);
    EXPECT_EQ(zeroElev(), -9);
    EXPECT_NEAR(net.DrivingForce, 1280 + 160, 1e-9);
}

// The same wall with 90 PSF from -9 downward: zero above that point, positive below it.
TEST_F(NetPressuresTest, ZeroReachedOnlyFromAboveAddsAPointMidway) {
    problem.SurfaceElev(Left, 1) = -8;
    problem.WaterDataKind =
        WaterData::Pressures; // no pressure down to -20, so that water shows by its step alone
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -20;
    problem.WaterPressure(1) = 5;
    problem.WaterPressElev(2) = -60;
    addDistributed(-9, 90);
    addDistributed(-12, 90);
    bench.solve();
    const int before = state.grid.NumElevs;
    const int waterStep = bench.row(-20);
    ComputeNetPressures(state);

    EXPECT_EQ(state.grid.NumElevs, before + 1);
    EXPECT_EQ(zeroElev(), -9);
    EXPECT_NEAR(active(-9, 2), 0, 1e-9);
    EXPECT_NEAR(active(-9, 1), 90, 1e-9);
    const int m = net.NetZeroIndex + 1;
    EXPECT_EQ(bench.elevation(m), -9.5);
    // Net active at -10: 400 - 720 + 90 = -230; midway (-230 + 90) / 2.
    for (const int k : {1, 2}) {
        EXPECT_NEAR(net.NetActive(m, k), -70, 1e-9);
        EXPECT_NEAR(net.NetPassive(m, k), 360 * 9.5 - 40 * 1.5 + 90, 1e-9);
        EXPECT_NEAR(state.pressures.ActivePressures(Right, m, k), 380, 1e-9);
        EXPECT_NEAR(state.pressures.PassivePressures(Left, m, k), 540, 1e-9);
    }
    // The sums stop at -9: nothing of the load that begins there.
    EXPECT_NEAR(net.DrivingForce, 1280 + 160, 1e-9);
    // Water has stayed where it was, out of step with the grid.
    EXPECT_EQ(bench.row(-20), waterStep + 1);
    EXPECT_EQ(state.pressures.WaterPressures(waterStep, 1), 5);
    EXPECT_EQ(state.pressures.WaterPressures(waterStep, 2), 0);
}

// At the foot of a load that ends at -12 the mean values of a jump differ by k, so that the midway
// values show which k each diagram takes.
TEST_F(NetPressuresTest, TheMidwayPointTakesNetActiveBelowTheNextRowAndOthersAboveIt) {
    problem.SurfaceElev(Left, 1) = -8;
    addDistributed(-9, 90);
    addDistributed(-10, 30);
    solve();
    // At -10: net active 400 - 720 = -320 below, -290 above; net passive 3600 - 80 = 3520 below,
    // 3550 above. At -9 below: 90 and 3240 - 40 + 90 = 3290.
    const int m = net.NetZeroIndex + 1;
    EXPECT_NEAR(net.NetActive(m, 1), (-320 + 90) / 2.0, 1e-9);
    EXPECT_NEAR(net.NetActive(m, 2), (-320 + 90) / 2.0, 1e-9);
    EXPECT_NEAR(net.NetPassive(m, 1), (3550 + 3290) / 2.0, 1e-9);
    EXPECT_NEAR(net.NetPassive(m, 2), (3550 + 3290) / 2.0, 1e-9);
}

TEST_F(NetPressuresTest, ADistributedLoadActsBetweenItsPointsOnly) {
    addDistributed(-2, 100);
    addDistributed(-5, 400);
    addDistributed(-8, 250);
    solve();
    EXPECT_NEAR(active(-2, 2), 80, 1e-9); // the first value below its point only
    EXPECT_NEAR(active(-2, 1), 80 + 100, 1e-9);
    EXPECT_NEAR(active(-3, 1), 120 + 200, 1e-9);
    EXPECT_NEAR(active(-5, 1), 200 + 400, 1e-9);
    EXPECT_NEAR(active(-5, 2), 200 + 400, 1e-9);
    EXPECT_NEAR(active(-7, 2), 280 + 300, 1e-9);
    EXPECT_NEAR(active(-8, 2), 320 + 250, 1e-9); // the last value above its point only
    EXPECT_NEAR(active(-8, 1), 320, 1e-9);
    EXPECT_NEAR(passive(-3, 1), 360 * 3 + 200, 1e-9);
    EXPECT_NEAR(passive(-8, 1), 360 * 8, 1e-9);
    EXPECT_NEAR(net.DrivingForce, 2250 + (100 + 400) / 2.0 * 3 + (400 + 250) / 2.0 * 3, 1e-9);
}

// A point of the ground's other layer stands 0.0008 FT above the end of a load over 4 FT: there u
// is 0.0002, and the load still has both values; at its end u is 0 and it has the upper one alone.
// A search that took the row above for the end would put nothing on the end itself.
TEST_F(NetPressuresTest, ADistributedLoadEndsAtItsLastRowAndNotShortlyAboveIt) {
    for (const double gap : {0.0008, 0.008}) {
        SCOPED_TRACE(gap);
        PressureBench other;
        other.problem.HDistCount = 2;
        other.problem.HDistElev(1) = -2;
        other.problem.HDistElev(2) = -6;
        other.problem.HDistLoad(1) = other.problem.HDistLoad(2) = 100;
        setLayerBottoms(other.problem, Right, {-6 + gap});
        other.solve();
        ComputeNetPressures(*other.state);
        const auto& NetActive = other.state->net.NetActive;
        const double soil = 40 * (6 - gap);
        EXPECT_NEAR(NetActive(other.row(-6 + gap), 2), soil + 100, 1e-9);
        EXPECT_NEAR(NetActive(other.row(-6 + gap), 1), soil + 100, 1e-9);
        EXPECT_NEAR(NetActive(other.row(-6), 2), 240 + 100, 1e-9);
        EXPECT_NEAR(NetActive(other.row(-6), 1), 240, 1e-9);
    }
}

// 0.0002 FT above the end u is 0.00005: that row is the end, and the end itself has no load.
TEST_F(NetPressuresTest, ARowNearerToTheEndOfADistributedLoadThanATenThousandthIsItsEnd) {
    addDistributed(-2, 100);
    addDistributed(-6, 100);
    setLayerBottoms(problem, Right, {-5.9998});
    solve();
    EXPECT_NEAR(active(-5.9998, 2), 40 * 5.9998 + 100, 1e-9);
    EXPECT_NEAR(active(-5.9998, 1), 40 * 5.9998, 1e-9);
    EXPECT_NEAR(active(-6, 2), 240, 1e-9);
    EXPECT_NEAR(active(-6, 1), 240, 1e-9);
}

// At the left ground the right side presses with 400, at -11 with 440: what the left side is given
// leaves `rest` there.
TEST_F(NetPressuresTest, ANetPressureOfHalfATenThousandthIsZeroAndOneOfFiveIsNot) {
    for (const double rest : {0.00005, 0.0005}) {
        SCOPED_TRACE(rest);
        PressureBench atGround;
        atGround.solve();
        atGround.state->pressures.PassivePressures(Left, atGround.row(-10), 1) = 400 - rest;
        ComputeNetPressures(*atGround.state);
        const double zero = atGround.elevation(atGround.state->net.NetZeroIndex);
        if (rest < 0.0001) {
            EXPECT_EQ(zero, -10);
        } else {
            EXPECT_NEAR(zero, -11.25, 1e-9);
        }

        PressureBench below;
        below.solve();
        for (const int k : {1, 2}) {
            below.state->pressures.PassivePressures(Left, below.row(-11), k) = 440 - rest;
        }
        const int before = below.state->grid.NumElevs;
        ComputeNetPressures(*below.state);
        EXPECT_EQ(below.state->grid.NumElevs, rest < 0.0001 ? before : before + 1);
    }
}

// Ground at -8: zero at -9 from above, and a load from there down.
TEST_F(NetPressuresTest, ALoadOfHalfATenThousandthBelowTheZeroAddsNoPointAndOneOfFiveDoes) {
    for (const double load : {0.00005, 0.0005}) {
        SCOPED_TRACE(load);
        PressureBench wall;
        wall.problem.SurfaceElev(Left, 1) = -8;
        wall.problem.HDistCount = 2;
        wall.problem.HDistElev(1) = -9;
        wall.problem.HDistElev(2) = -12;
        wall.problem.HDistLoad(1) = wall.problem.HDistLoad(2) = load;
        wall.solve();
        const int before = wall.state->grid.NumElevs;
        ComputeNetPressures(*wall.state);
        EXPECT_EQ(wall.elevation(wall.state->net.NetZeroIndex), -9);
        EXPECT_EQ(wall.state->grid.NumElevs, load < 0.0001 ? before : before + 1);
    }
}

TEST_F(NetPressuresTest, HorizontalLineLoadsCountStrictlyAboveTheZero) {
    addLineLoad(-3, 700);
    addLineLoad(1, -200); // above the wall top, to the right
    addLineLoad(-15, 5000);
    solve();
    EXPECT_NEAR(net.DrivingForce, 2250 + 700 - 200, 1e-9);
    EXPECT_NEAR(net.DrivingMoment, 15937.5 + 3 * 700 + 1 * 200, 1e-8);

    problem.SurfaceElev(Left, 1) = -8; // zero at -9 exactly
    problem.HLineElev(3) = -9;
    solve();
    EXPECT_EQ(zeroElev(), -9);
    EXPECT_NEAR(net.DrivingForce, 1440 + 700 - 200, 1e-9);
}

TEST_F(NetPressuresTest, AJumpAtTheLowerSurfaceStaysAndOneBelowItIsAveraged) {
    setLayerBottoms(problem, Left, {-11});
    setCoefficients(Left, 1, 0.3, 2);
    setCoefficients(Left, 2, 0.1, 4);
    problem.VUniformCount(Left) = 1;
    problem.VUniformLoad(Left) = 50;
    setLayerBottoms(problem, Right, {-4});
    setCoefficients(Right, 1, 0.3, 4);
    setCoefficients(Right, 2, 0.5, 4);
    solve();
    EXPECT_NEAR(active(-4, 2), 0.3 * 480, 1e-9); // above the lower surface jumps stay
    EXPECT_NEAR(active(-4, 1), 0.5 * 480, 1e-9);
    EXPECT_NEAR(active(-10, 2), 600, 1e-9);
    EXPECT_NEAR(active(-10, 1), 600 - 2 * 50, 1e-9);
    EXPECT_NEAR(active(-11, 1), 660 - 3 * 170, 1e-9); // the mean of 2 and 4
    EXPECT_NEAR(active(-11, 2), 660 - 3 * 170, 1e-9);
    EXPECT_NEAR(passive(-11, 1), 4 * 1320 - 0.2 * 170, 1e-9);
    EXPECT_NEAR(passive(-11, 2), 4 * 1320 - 0.2 * 170, 1e-9);
    EXPECT_NEAR(bench.passive(Left, -11, 1), 680, 1e-9); // the soil's own diagrams keep it
    EXPECT_NEAR(bench.passive(Left, -11, 2), 340, 1e-9);
}

TEST_F(NetPressuresTest, TheLowerSurfaceMayBeTheRightOne) {
    problem.SurfaceElev(Right, 1) = -10;
    problem.SurfaceElev(Left, 1) = -2;
    solve();
    EXPECT_EQ(zeroElev(), -10); // pushed to the right throughout
    EXPECT_NEAR(active(-10, 2), -360 * 8, 1e-9);
    EXPECT_NEAR(net.DrivingForce, -11520, 1e-9);
}

TEST_F(NetPressuresTest, ADiagramThatNeverChangesSignIsRefused) {
    setCoefficients(Right, 1, 0.5, 1);
    setCoefficients(Left, 1, 0.1, 0.4);
    bench.solve();
    net.DrivingForce = 123;
    ComputeNetPressures(state);
    EXPECT_EQ(state.failure.code, FailureCode::NoSignChange);
    ASSERT_EQ(bench.told().size(), 1u);
    EXPECT_EQ(bench.told()[0], (MessageBox{.text = "NET ACTIVE PRESSURE DOES NOT CHANGE SIGN\n"
                                                   "     IN THE EMBEDDED DEPTH AS REQUIRED BY\n"
                                                   "     CLASSICAL METHODS.\n"
                                                   "\n"
                                                   "                        UNABLE TO CONTINUE.",
                                           .title = "INVALID NET ACTIVE PRESSURE DISTRIBUTION"}));
    EXPECT_EQ(net.DrivingForce, 123); // stale, as all results of a failed solution
}

TEST_F(NetPressuresTest, AChangeOfSignBetweenTheFarPointsIsNone) {
    // 0.5 z = 0.5001 (z - 10) at z = 50010, between the first far point (-50060) and the last
    // working row (-60): refused, as the far points are artificial.
    setCoefficients(Right, 1, 0.5, 1);
    setCoefficients(Left, 1, 0.1, 0.5001);
    solve();
    EXPECT_EQ(state.failure.code, FailureCode::NoSignChange);
}

TEST_F(NetPressuresTest, APressureThatIsNoNumberIsAnOverflow) {
    bench.solve();
    state.pressures.ActivePressures(Right, 5, 2) = std::nan("");
    EXPECT_EQ(errorOf([&] { ComputeNetPressures(state); }), 6);
}

// Independent second method: the diagrams are straight between rows, so that many thin strips
// across each segment give force and moment again.
TEST_F(NetPressuresTest, DrivingSumsOfRandomProblemsAgreeWithThinStrips) {
    std::mt19937 random(23);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<>(low, high)(random);
    };
    int solved = 0;
    for (int run = 0; run < 200; ++run) {
        problem = plainCantilever();
        for (const int side : {Right, Left}) {
            const double ground = problem.SurfaceElev(side, 1);
            setLayerBottoms(problem, side, {ground - between(1, 5), ground - between(6, 12)});
            for (int layer = 1; layer <= 3; ++layer) {
                problem.SoilMoistWeight(side, layer) = problem.SoilSatWeight(side, layer) =
                    between(100, 135);
                problem.SoilFriction(side, layer) = between(25, 40);
            }
        }
        problem.WaterDataKind = WaterData::Elevations;
        problem.WaterUnitWeight = 62.4;
        problem.WaterElev(Right) = between(-5, -1);
        problem.WaterElev(Left) = between(-9, -5);
        addLineLoad(between(-9, 0), between(-500, 500));
        addDistributed(between(-4, 0), between(0, 300));
        addDistributed(between(-9, -5), between(0, 300));
        state.failure = {};
        solve();
        if (state.failed()) {
            continue;
        }
        ++solved;
        double force = problem.HLineLoad(1);
        double moment = -problem.HLineElev(1) * problem.HLineLoad(1);
        for (int i = 2; i <= net.NetZeroIndex; ++i) {
            const int strips = 1000;
            const double width = (bench.elevation(i - 1) - bench.elevation(i)) / strips;
            for (int s = 0; s < strips; ++s) {
                const double share = (s + 0.5) / strips;
                const double p =
                    (1 - share) * net.NetActive(i - 1, 1) + share * net.NetActive(i, 2);
                const double depth = -bench.elevation(i - 1) + (s + 0.5) * width;
                force += p * width;
                moment += p * width * depth;
            }
        }
        // Force: midpoints are exact for straight lines. Moment: thin strips err by 1E-6 of it.
        EXPECT_NEAR(net.DrivingForce, force, 1e-6 * (1 + std::abs(force)));
        EXPECT_NEAR(net.DrivingMoment, moment, 1e-5 * (100 + std::abs(moment)));
        // The zero is where it should be.
        EXPECT_LE(net.NetActive(net.NetZeroIndex, 2), 1e-4);
        for (int i = bench.row(-10) + 1; i < net.NetZeroIndex; ++i) {
            EXPECT_GT(net.NetActive(i, 2), 1e-4);
        }
    }
    EXPECT_GT(solved, 150);
}

} // namespace
} // namespace korvane::test
