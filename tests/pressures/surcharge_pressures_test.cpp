#include "pressures/surcharge_pressures.h"
#include "support/pressure_bench.h"

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

namespace korvane::test {
namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Endless = std::numeric_limits<double>::infinity();

/// Independent second method: horizontal stress at depth z of the load p(x) on the ground between
/// x1 and x2 (infinity allowed), as the sum of line loads 2 p x2 z / (pi (x2 + z2)2) on a
/// half-space. With x = z tan(t) the kernel is (2 / pi) sin2(t) dt; Simpson's rule in t.
double stressOfLineLoads(const std::function<double(double)>& p, double x1, double x2, double z) {
    const double t1 = std::atan(x1 / z);
    const double t2 = std::isinf(x2) ? Pi / 2 : std::atan(x2 / z);
    const int steps = 4000;
    const double h = (t2 - t1) / steps;
    double sum = 0;
    for (int i = 0; i <= steps; ++i) {
        const double t = t1 + i * h;
        const double weight = i == 0 || i == steps ? 1 : i % 2 == 1 ? 4 : 2;
        sum += weight * p(z * std::tan(t)) * std::pow(std::sin(t), 2);
    }
    return sum * h / 3 * 2 / Pi;
}

/// Wall top and right ground at 0, left ground at -10.
class SurchargeTest : public testing::Test {
  protected:
    void compute(int side = Right) {
        bench.build();
        ComputeSurchargePressures(*bench.state, side);
    }
    double at(double depth, int side = Right) { return bench.surcharge(side, -depth); }

    /// Compares rows down to 60 FT with the sum of line loads over a load without kinks between
    /// neighbouring `distances`. Closed forms and Simpson's rule with 4000 steps agree to what
    /// rounding leaves, far below 1E-6 PSF.
    void expectSumOfLineLoads(const std::function<double(double)>& p,
                              const std::vector<double>& distances) {
        compute();
        for (const double depth : {1, 2, 3, 5, 8, 10, 15, 25, 40, 60}) {
            double expected = 0;
            for (std::size_t i = 1; i < distances.size(); ++i) {
                expected += stressOfLineLoads(p, distances[i - 1], distances[i], depth);
            }
            EXPECT_NEAR(at(depth), expected, 1e-6) << depth;
        }
    }
    void expectNothing(int side = Right) {
        for (int i = 1; i <= 301; ++i) {
            EXPECT_EQ(bench.state->pressures.SurchargePressures(side, i), 0);
        }
    }

    void addLineLoad(int side, double distance, double load) {
        const int i = ++problem.VLineCount(side);
        problem.VLineDist(side, i) = distance;
        problem.VLineLoad(side, i) = load;
    }
    void addStrip(int side, double start, double end, double load) {
        const int i = ++problem.VStripCount(side);
        problem.VStripStart(side, i) = start;
        problem.VStripEnd(side, i) = end;
        problem.VStripLoad(side, i) = load;
    }
    void setRamp(double start, double end, double load) {
        problem.VRampCount(Right) = 1;
        problem.VRampStart(Right) = start;
        problem.VRampEnd(Right) = end;
        problem.VRampLoad(Right) = load;
    }
    void addTriangle(double start, double peak, double end, double load) {
        const int i = ++problem.VTriCount(Right);
        problem.VTriStart(Right, i) = start;
        problem.VTriPeak(Right, i) = peak;
        problem.VTriEnd(Right, i) = end;
        problem.VTriLoad(Right, i) = load;
    }

    PressureBench bench;
    Problem& problem = bench.problem;
};

// 1,000 PLF at 8 FT: 4 Q x2 z / (pi (x2 + z2)2) with x = 8, published to 0.001 PSF. The exposed
// height is 10 FT, so that 8 FT lies beyond 0.4 of it.
TEST_F(SurchargeTest, LineLoadAgreesWithItsPublishedTable) {
    addLineLoad(Right, 8, 1000);
    compute();
    const double depths[] = {2, 4, 6, 8, 10, 12, 16, 20};
    const double published[] = {35.245, 50.930, 48.892, 39.789, 30.297, 22.602, 12.732, 7.570};
    for (int i = 0; i < 8; ++i) {
        EXPECT_NEAR(at(depths[i]), published[i], 0.0006);
    }
    // Total over 20 FT: (2 Q / pi) (1 - 64 / 464) = 548.81 LB. Simpson's rule over points 1 FT
    // apart misses it by less than 0.1 %.
    double total = 0;
    for (int depth = 0; depth <= 20; ++depth) {
        total += (depth % 20 == 0 ? 1 : depth % 2 == 1 ? 4 : 2) * at(depth) / 3;
    }
    EXPECT_NEAR(total, 548.81, 0.5);
}

// 20 FT exposed, within 0.4 of it: total 0.203 Q / 2 (1 / 0.16 - 1 / 1.16) = 546.9 LB, largest
// 51.5 PSF at n2 = 0.16 / 3, 4.62 FT.
TEST_F(SurchargeTest, LineLoadNearTheWallFollowsTheEmpiricalForm) {
    problem.SurfaceElev(Left, 1) = -20;
    const double deepest = 20 * std::sqrt(0.16 / 3);
    problem.HLineCount = 1;
    problem.HLineElev(1) = -deepest;
    addLineLoad(Right, 5, 1000);
    compute();
    EXPECT_NEAR(at(deepest), 51.5, 0.05);
    EXPECT_LT(at(4), at(deepest));
    EXPECT_LT(at(5), at(deepest));
    double total = 0;
    for (int depth = 0; depth <= 20; ++depth) {
        total += (depth % 20 == 0 ? 1 : depth % 2 == 1 ? 4 : 2) * at(depth) / 3;
    }
    EXPECT_NEAR(total, 546.9, 0.5);
}

TEST_F(SurchargeTest, LineLoadAtFourTenthsOfTheExposedHeightIsStillNear) {
    addLineLoad(Right, 4, 1000);
    compute();
    EXPECT_DOUBLE_EQ(at(5), 0.203 * 100 * 0.5 / (0.41 * 0.41));
    problem.VLineDist(Right, 1) = 4.001;
    compute();
    EXPECT_NEAR(at(5), 4000 / Pi * 4.001 * 4.001 * 5 / std::pow(4.001 * 4.001 + 25, 2), 1e-9);
}

TEST_F(SurchargeTest, LineLoadOnTheLeftAlwaysFollowsTheoryOfElasticity) {
    for (const double rightGround : {0.0, -10.0, -20.0}) {
        problem.SurfaceElev(Right, 1) = rightGround;
        problem.VLineCount(Left) = 0;
        addLineLoad(Left, 1, 1000);
        compute(Left);
        EXPECT_NEAR(at(12, Left), 4000 / Pi * 1 * 2 / std::pow(1 + 4, 2), 1e-9);
    }
}

TEST_F(SurchargeTest, LineLoadOnTheRightWithoutExposedHeightFollowsTheoryOfElasticity) {
    addLineLoad(Right, 1, 1000);
    for (const double leftGround : {0.0, 3.0}) {
        problem.SurfaceElev(Left, 1) = leftGround;
        compute();
        EXPECT_NEAR(at(2), 4000 / Pi * 1 * 2 / std::pow(1 + 4, 2), 1e-9);
    }
}

TEST_F(SurchargeTest, LineLoadAtTheWallPushesWithAnExposedHeightAndNotWithout) {
    addLineLoad(Right, 0, 1000);
    compute();
    EXPECT_NEAR(at(5), 0.203 * 100 * 0.5 / (0.41 * 0.41), 1e-9);
    problem.SurfaceElev(Left, 1) = 0;
    compute();
    expectNothing();
}

// (q / pi) (beta - sin beta cos 2 alpha), published to 0.001 PSF.
TEST_F(SurchargeTest, StripAgreesWithItsPublishedTableWithoutDoubling) {
    addStrip(Right, 5, 15, 600);
    compute();
    const double depths[] = {2, 5, 8, 10, 15, 20};
    const double published[] = {88.195, 126.75, 106.275, 87.395, 50.355, 29.375};
    for (int i = 0; i < 6; ++i) {
        EXPECT_NEAR(at(depths[i]), published[i], 0.005); // 126.75 has two places
    }
    expectSumOfLineLoads([](double) { return 600; }, {5, 15});
}

TEST_F(SurchargeTest, StripThatStartsAtTheWall) {
    addStrip(Right, 0, 7, 250);
    expectSumOfLineLoads([](double) { return 250; }, {0, 7});
}

TEST_F(SurchargeTest, StripNeverPullsHoweverDeep) {
    addStrip(Right, 40, 40.01, 5000);
    addStrip(Right, 0, 1000, 1);
    compute();
    for (int i = 1; i <= bench.state->grid.NumElevs; ++i) {
        EXPECT_GE(bench.state->pressures.SurchargePressures(Right, i), 0);
    }
}

// Far below, the closed form is a difference of nearly equal terms and its sign is noise.
TEST_F(SurchargeTest, NoLoadPullsFarBelowItWhereRoundingNoiseIsLeft) {
    for (int start = 0; start < 40; ++start) {
        problem.VTriCount(Right) = 0;
        addTriangle(start, start + 0.7, start + 2, 900);
        compute();
        for (int i = 1; i <= bench.state->grid.NumElevs; ++i) {
            ASSERT_GE(bench.state->pressures.SurchargePressures(Right, i), 0);
        }
    }
}

TEST_F(SurchargeTest, RampRisesAndGoesOnWithoutEnd) {
    setRamp(4, 9, 800);
    expectSumOfLineLoads([](double x) { return x < 9 ? (x - 4) / 5 * 800 : 800; }, {4, 9, Endless});
}

TEST_F(SurchargeTest, RampWithoutSlopeIsAUniformLoadFromThereOutward) {
    for (const double end : {6.0, 6.0 + 5e-5}) { // the second is too short for a sloping part
        setRamp(6, end, 800);
        expectSumOfLineLoads([](double) { return 800; }, {end, Endless});
    }
}

TEST_F(SurchargeTest, RampFromTheWallOnIsHalfTheLoadAtAnyDepth) {
    setRamp(0, 0, 800); // a half-space under a uniform half: sigma = q / 2
    compute();
    EXPECT_NEAR(at(1), 400, 1e-9);
    EXPECT_NEAR(at(60), 400, 1e-9);
}

TEST_F(SurchargeTest, TriangleRisesToItsPeakAndFalls) {
    addTriangle(3, 5, 11, 900);
    expectSumOfLineLoads([](double x) { return x < 5 ? 900 * (x - 3) / 2 : 900 * (11 - x) / 6; },
                         {3, 5, 11});
}

TEST_F(SurchargeTest, TriangleWithAVerticalFaceHasOneSlopeOnly) {
    addTriangle(3, 3, 11, 900);
    expectSumOfLineLoads([](double x) { return 900 * (11 - x) / 8; }, {3, 11});
    problem.VTriCount(Right) = 0;
    addTriangle(3, 11, 11, 900);
    expectSumOfLineLoads([](double x) { return 900 * (x - 3) / 8; }, {3, 11});
}

TEST_F(SurchargeTest, VariableLoadIsMadeOfStraightPieces) {
    problem.VVarCount(Right) = 4;
    const double distances[] = {2, 6, 6, 15};
    const double loads[] = {100, 500, 200, 0}; // with a step at 6 FT
    for (int i = 1; i <= 4; ++i) {
        problem.VVarDist(Right, i) = distances[i - 1];
        problem.VVarLoad(Right, i) = loads[i - 1];
    }
    compute();
    for (const double depth : {1, 3, 8, 20}) {
        const double expected =
            stressOfLineLoads([](double x) { return 100 * (x - 1); }, 2, 6, depth) +
            stressOfLineLoads([](double x) { return 200 * (15 - x) / 9; }, 6, 15, depth);
        EXPECT_NEAR(at(depth), expected, 1e-6);
    }
}

TEST_F(SurchargeTest, APieceBetweenTwoPointsAtOneDistanceAddsNothing) {
    problem.VVarCount(Right) = 2;
    problem.VVarDist(Right, 1) = problem.VVarDist(Right, 2) = 6;
    problem.VVarLoad(Right, 1) = 100;
    problem.VVarLoad(Right, 2) = 300;
    compute();
    expectNothing();
}

TEST_F(SurchargeTest, ASinglePointOfAVariableLoadAddsNothing) {
    problem.VVarCount(Right) = 1;
    problem.VVarDist(Right, 1) = 6;
    problem.VVarLoad(Right, 1) = 100;
    compute();
    expectNothing();
}

TEST_F(SurchargeTest, AStripWithoutWidthIsADivisionByZero) {
    addStrip(Right, 5, 5, 600);
    bench.build();
    EXPECT_EQ(errorOf([&] { ComputeSurchargePressures(*bench.state, Right); }), 11);
}

TEST_F(SurchargeTest, LoadsAddUp) {
    addLineLoad(Right, 8, 1000);
    compute();
    const double line = at(6);
    addStrip(Right, 5, 15, 600);
    compute();
    const double lineAndStrip = at(6);
    setRamp(4, 9, 800);
    addTriangle(3, 5, 11, 900);
    compute();
    const double all = at(6);
    problem.VLineCount(Right) = problem.VStripCount(Right) = 0;
    compute();
    EXPECT_NEAR(at(6) + lineAndStrip, all, 1e-9);
    EXPECT_GT(lineAndStrip, line);
}

TEST_F(SurchargeTest, TheSurfaceRowAndRowsAboveItReceiveNothing) {
    problem.SurfaceElev(Right, 1) = -3;
    addStrip(Right, 0, 7, 250);
    setRamp(0, 0, 800);
    compute();
    for (const double elevation : {0.0, -1.0, -2.0, -3.0}) {
        EXPECT_EQ(bench.surcharge(Right, elevation), 0);
    }
    EXPECT_GT(bench.surcharge(Right, -4), 400); // depth counts from the surface
}

TEST_F(SurchargeTest, TheUniformLoadIsNoPartOfIt) {
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 250;
    compute();
    expectNothing();
}

TEST_F(SurchargeTest, EachCallStartsFromZeroAndLeavesTheOtherSide) {
    auto& SurchargePressures = bench.state->pressures.SurchargePressures;
    SurchargePressures.fill(77);
    compute();
    expectNothing(Right);
    EXPECT_EQ(SurchargePressures(Left, 5), 77);
}

/// SurchargePressures of a side in a state that has kept nothing.
std::vector<double> computedAnew(const State& state, int side) {
    PressureBench fresh;
    fresh.problem = *state.problem;
    fresh.state->grid = state.grid;
    ComputeSurchargePressures(*fresh.state, side);
    std::vector<double> pressures;
    for (int i = 1; i <= 301; ++i) {
        pressures.push_back(fresh.state->pressures.SurchargePressures(side, i));
    }
    return pressures;
}

/// The same as computed again and again in one state.
std::vector<double> computedAgain(State& state, int side) {
    ComputeSurchargePressures(state, side);
    std::vector<double> pressures;
    for (int i = 1; i <= 301; ++i) {
        pressures.push_back(state.pressures.SurchargePressures(side, i));
    }
    return pressures;
}

// Pressures taken over from an earlier call are those of the present loads and elevations: each
// change must show, and taking it back must bring the old pressures, to the last bit.
TEST_F(SurchargeTest, WhatIsTakenOverIsAsNew) {
    problem.VLineCount(Right) = 2; // one near the wall, one far
    problem.VLineDist(Right, 1) = 3;
    problem.VLineDist(Right, 2) = 8;
    problem.VLineLoad(Right, 1) = problem.VLineLoad(Right, 2) = 700;
    addStrip(Right, 2, 7, 250);
    setRamp(4, 9, 800);
    addTriangle(3, 5, 11, 900);
    problem.VVarCount(Right) = 3;
    for (int i = 1; i <= 3; ++i) {
        problem.VVarDist(Right, i) = 3 * i;
        problem.VVarLoad(Right, i) = 40 * i;
    }
    State& state = *bench.state;
    bench.build();
    const std::vector<double> first = computedAgain(state, Right);
    EXPECT_EQ(first, computedAnew(state, Right));

    const Problem given = problem;
    const std::vector<std::function<void()>> changes = {
        [&] { problem.VLineLoad(Right, 1) = 800; },
        [&] { problem.VLineDist(Right, 1) = 4.5; }, // no longer near the wall
        [&] { problem.VLineDist(Right, 2) = 9; },
        [&] { problem.VLineCount(Right) = 1; },
        [&] { problem.VStripStart(Right, 1) = 2.5; },
        [&] { problem.VStripEnd(Right, 1) = 7.5; },
        [&] { problem.VStripLoad(Right, 1) = 260; },
        [&] { problem.VStripCount(Right) = 0; },
        [&] { problem.VRampStart(Right) = 5; },
        [&] { problem.VRampEnd(Right) = 10; },
        [&] { problem.VRampLoad(Right) = 810; },
        [&] { problem.VRampCount(Right) = 0; },
        [&] { problem.VTriStart(Right, 1) = 2; },
        [&] { problem.VTriPeak(Right, 1) = 6; },
        [&] { problem.VTriEnd(Right, 1) = 12; },
        [&] { problem.VTriLoad(Right, 1) = 910; },
        [&] { problem.VVarDist(Right, 2) = 5; },
        [&] { problem.VVarLoad(Right, 3) = 10; },
        [&] { problem.VVarCount(Right) = 2; },
        [&] { problem.SurfaceElev(Right, 1) = -1; },
        [&] { problem.SurfaceElev(Left, 1) = -5; }, // the exposed height
    };
    int number = 0;
    for (const auto& change : changes) {
        change();
        bench.build();
        const auto changed = computedAgain(state, Right);
        EXPECT_EQ(changed, computedAnew(state, Right)) << "change " << number;
        EXPECT_NE(changed, first) << "change " << number;
        problem = given;
        bench.build();
        EXPECT_EQ(computedAgain(state, Right), first) << "change " << number;
        ++number;
    }
}

TEST_F(SurchargeTest, RowsThatComeAndGoChangeNoOther) {
    addStrip(Right, 2, 7, 250);
    State& state = *bench.state;
    for (const double bottom : {-4.5, -7.25, -4.5, -30.5}) {
        setLayerBottoms(problem, Right, {bottom}); // brings a row of its own
        bench.build();
        EXPECT_EQ(computedAgain(state, Right), computedAnew(state, Right)) << bottom;
    }
}

} // namespace
} // namespace korvane::test
