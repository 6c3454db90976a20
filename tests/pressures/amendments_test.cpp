// The amendments of the wedge methods, against hand calculations and the triangle of forces.
#include "wedge_ground.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

namespace korvane::test {
namespace {

constexpr double Degree = std::numbers::pi / 180;

class SurfaceAmendments : public testing::Test {
  protected:
    void setSoil(double friction, double wallFriction, double cohesion, double load) {
        problem.SoilFriction(Right, 1) = friction;
        problem.SoilWallFriction(Right, 1) = wallFriction;
        problem.SoilCohesion(Right, 1) = cohesion;
        problem.VUniformCount(Right) = 1;
        problem.VUniformLoad(Right) = load;
    }
    void press(double distance, double rise) {
        bench.setGround(Right, {{0, 0}, {distance, rise}});
        bench.buildGround();
        bench.press(PressureMethod::FixedSurface);
    }
    double active() { return state.pressures.ActivePressures(Right, bench.row(0), 1); }
    double passive() { return state.pressures.PassivePressures(Right, bench.row(0), 1); }

    WedgeBench bench;
    Problem& problem = bench.problem;
    State& state = *bench.state;
};

TEST_F(SurfaceAmendments, RisingGroundHasItsTrueSlope) {
    // 1 on 2, 26.565 degrees: r^2 = sin 32 sin 5.435 / cos 26.565 = 0.05611, Ka = 0.4701, and
    // 0.4701 x 500 - 100 x 0.6856 = 166.5 PSF wherever the next point is.
    setSoil(32, 0, 50, 500);
    press(10, 5);
    EXPECT_NEAR(active(), 109, 0.5);
    press(40, 20);
    EXPECT_NEAR(active(), 101, 0.5);
    state.amendments.surfaceSlope = true;
    press(10, 5);
    EXPECT_NEAR(active(), 166.5, 0.1);
    press(40, 20);
    EXPECT_NEAR(active(), 166.5, 0.1);
}

TEST_F(SurfaceAmendments, TheTrueSlopeIsLimitedToTheDevelopedFrictionUpAndDown) {
    // Slope and friction equal: active r = 0, Ka = cos^2 30; passive downward r = 0, Kp = cos^2 30.
    setSoil(30, 0, 0, 400);
    state.amendments.surfaceSlope = true;
    press(10, 20);
    EXPECT_NEAR(active(), 300, 1e-9);
    press(10, -20);
    EXPECT_NEAR(passive(), 300, 1e-9);
}

TEST_F(SurfaceAmendments, FallingGroundKeepsItsPrintedSlopeWithinTheFriction) {
    // Friction 37 developed by 1.25 is 31.083 degrees. As told e = 31.083 degrees and Kp = 248.7;
    // with e = atan(-1) / 20 = -2.25 degrees r^2 = sin 53.083 sin 28.833 / (cos 2.25 cos 22)
    // = 0.41623, Kp = (0.85642 / 0.35484)^2 / 0.92718 = 6.283.
    setSoil(37, 22, 100, 150);
    bench.setFactors(1, 1.25);
    press(20, -1);
    EXPECT_NEAR(passive(), 39829, 0.5);
    state.amendments.surfaceLimit = true;
    press(20, -1);
    EXPECT_NEAR(passive(), 6.283 * 150 + 160 * std::sqrt(6.283), 2);
    EXPECT_LT(passive(), 1350);
}

TEST_F(SurfaceAmendments, TheLimitIsMinusTheDevelopedFriction) {
    // A fall of 5 on 2: atan(-5) / 2 = -39.3 degrees, held at -30: r = 0.
    setSoil(30, 0, 0, 400);
    state.amendments.surfaceLimit = true;
    press(2, -5);
    EXPECT_NEAR(passive(), 300, 1e-9);
    EXPECT_GT(active(), 0); // by the printed slope, as without the amendment
}

TEST_F(SurfaceAmendments, LevelGroundKeepsItsPressures) {
    setSoil(32, 10, 50, 500);
    press(10, 0);
    const double a = active();
    const double p = passive();
    state.amendments.surfaceLimit = state.amendments.surfaceSlope = true;
    press(10, 0);
    EXPECT_EQ(active(), a);
    EXPECT_EQ(passive(), p);
}

// ---- planes past the horizontal ----------------------------------------------------------------

/// The largest force of all planes that the sweep tries from depth 1 under ground that falls by
/// `fall`; `force` gives that of an angle from the vertical (radians), or nothing that counts.
double largestForce(double flattestSight, const std::function<double(double)>& force) {
    const double top = 90 * Degree - std::atan(flattestSight) - 2 * Degree;
    double largest = 0;
    for (double angle = 23 * Degree; angle <= top; angle += 2 * Degree) {
        largest = std::max(largest, force(angle));
    }
    return std::max(largest, force(top));
}

/// Ground behind the wall falls by `fall` FT per foot; a load beyond all planes keeps the sweep
/// from stopping early.
void letGroundFall(WedgeBench& bench, double fall) {
    bench.setGround(Right, {{0, 0}, {20, -20 * fall}});
    bench.problem.VStripCount(Right) = 1;
    bench.problem.VStripStart(Right, 1) = 1000;
    bench.problem.VStripEnd(Right, 1) = 1001;
    bench.problem.VStripLoad(Right, 1) = 1;
}

TEST(PlanesPastHorizontal, HaveNoActiveForce) {
    constexpr double phi = 40 * Degree;
    constexpr double delta = 20 * Degree;
    WedgeBench bench;
    letGroundFall(bench, 1);
    bench.problem.SoilFriction(Right, 1) = 40;
    bench.problem.SoilWallFriction(Right, 1) = 20;
    const auto forceAtOneFoot = [&bench] {
        bench.buildGround();
        bench.press(PressureMethod::Sweep);
        return bench.state->wedge.WedgeActiveForce(bench.row(-1), Right);
    };
    // The triangle of forces: weight, wall force at delta, plane force at phi. The plane from one
    // foot down meets the ground y = -x at 1 / (1 + cot a).
    const auto horizontal = [](double a) {
        const double x = 1 / (1 + 1 / std::tan(a));
        const double slide = 90 * Degree - a - phi;
        return 120 * x / 2 * std::sin(slide) / std::cos(slide - delta) * std::cos(delta);
    };
    const double sight = -19.0 / 20;
    const double told = largestForce(sight, horizontal);
    const double amended = largestForce(
        sight, [&](double a) { return a + phi + delta < 180 * Degree ? horizontal(a) : 0.0; });
    EXPECT_GT(told, 2 * amended);
    EXPECT_NEAR(forceAtOneFoot(), told, 1e-6 * told);
    bench.state->amendments.planesPastHorizontal = true;
    EXPECT_NEAR(forceAtOneFoot(), amended, 1e-6 * amended);
}

TEST(PlanesPastHorizontal, NorHaveOuterPiecesThatLeanTooFar) {
    // A weak soil on a strong one: beyond 180 - 44 degrees the outer wedge would be pushed up.
    WedgeBench bench;
    letGroundFall(bench, 1.5);
    bench.setLayers(Right, {{-2, 0}});
    bench.problem.SoilFriction(Right, 1) = 20;
    bench.problem.SoilFriction(Right, 2) = 44;
    const auto forceAtOneFoot = [&bench] {
        bench.buildGround();
        bench.press(PressureMethod::Sweep);
        return bench.state->wedge.WedgeActiveForce(bench.row(-1), Right);
    };
    const auto horizontal = [](double a, bool amended) {
        const double x = 1 / (1.5 + 1 / std::tan(a)); // where the plane meets the ground y = -1.5 x
        const double inner = 90 * Degree - a - 20 * Degree;
        const double outer = 90 * Degree - a - 44 * Degree;
        if (x <= 2 / 1.5) { // the boundary comes to the ground there
            return 120 * x / 2 * std::tan(inner);
        }
        if (amended && outer <= -90 * Degree) {
            return 0.0;
        }
        const double x1 = -std::tan(a); // where it passes the boundary at -2
        const double height = 2 - 1.5 * x1;
        return 120 * (x - x1) * height / 2 * std::tan(outer) +
               120 * x1 * (1 + height) / 2 * std::tan(inner);
    };
    const double sight = -29.0 / 20;
    const double told = largestForce(sight, [&](double a) { return horizontal(a, false); });
    const double amended = largestForce(sight, [&](double a) { return horizontal(a, true); });
    EXPECT_GT(told, 2 * amended);
    EXPECT_NEAR(forceAtOneFoot(), told, 1e-6 * told);
    bench.state->amendments.planesPastHorizontal = true;
    EXPECT_NEAR(forceAtOneFoot(), amended, 1e-6 * amended);
}

} // namespace
} // namespace korvane::test
