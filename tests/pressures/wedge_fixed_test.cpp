#include "pressures/wedge_forces.h"
#include "wedge_second_method.h"

#include <cmath>
#include <numbers>

namespace korvane::test {
namespace {

constexpr double Degree = std::numbers::pi / 180;

class WedgeFixedTest : public testing::Test {
  protected:
    void solve(int side = Right) { mid = FixedSurfaceForces(state, side, 1); }
    double active(double elev) { return state.wedge.WedgeActiveForce(bench.row(elev), Right); }
    double passive(double elev) { return state.wedge.WedgePassiveForce(bench.row(elev), Right); }
    double midElev(int row) const { return (bench.elevation(row) + bench.elevation(row + 1)) / 2; }

    WedgeBench bench;
    Problem& problem = bench.problem;
    State& state = *bench.state;
    MidForces mid;
};

// Level ground, smooth wall: Rankine's state, K (g H^2 / 2 + q H) -+ 2 c sqrt(K) H. The force curve
// is a parabola, so that the rows are exact too.
TEST_F(WedgeFixedTest, LevelGroundWithoutWallFrictionGivesRankinesForces) {
    problem.SoilCohesion(Right, 1) = 150;
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 200;
    bench.setFactors(1.1, 1.5);
    bench.buildGround();
    solve();
    const double ka =
        std::pow(std::tan((45 * Degree - std::atan(std::tan(30 * Degree) / 1.1) / 2)), 2);
    const double kp =
        std::pow(std::tan((45 * Degree + std::atan(std::tan(30 * Degree) / 1.5) / 2)), 2);
    for (const double H : {1.0, 7.0, 30.0, 49.0}) {
        const double load = 120 * H * H / 2 + 200 * H;
        const double scale = 1e-9 * (load + 1000);
        EXPECT_NEAR(active(-H), ka * load - 2 * 150 / 1.1 * std::sqrt(ka) * H, scale);
        EXPECT_NEAR(passive(-H), kp * load + 2 * 150 / 1.5 * std::sqrt(kp) * H, scale);
    }
    const int last = state.grid.NumElevs;
    const double H = -bench.elevation(last);
    const double load = 120 * H * H / 2 + 200 * H;
    EXPECT_NEAR(state.wedge.WedgeActiveForce(last, Right),
                ka * load - 2 * 150 / 1.1 * std::sqrt(ka) * H, 1e-9 * load);
}

TEST_F(WedgeFixedTest, ASoilWithoutFrictionHasPlanesAt45DegreesForActiveAndPassiveAlike) {
    // A line load 8 FT off the wall stands on the wedge of every midpoint deeper than 8 FT.
    problem.SoilFriction(Right, 1) = 0;
    problem.SoilCohesion(Right, 1) = 300;
    bench.buildGround();
    solve();
    const auto withoutActive = mid.MidActiveForce;
    const auto withoutPassive = mid.MidPassiveForce;
    problem.VLineCount(Right) = 1;
    problem.VLineDist(Right, 1) = 8;
    problem.VLineLoad(Right, 1) = 1000;
    solve();
    for (int r = bench.row(0); r < bench.row(-30); ++r) {
        const double expected = midElev(r) < -8 ? 1000 : 0; // tan 45
        EXPECT_NEAR(mid.MidActiveForce(r) - withoutActive(r), expected, 1e-6);
        EXPECT_NEAR(mid.MidPassiveForce(r) - withoutPassive(r), expected, 1e-6);
    }
    // g H^2 / 2 -+ 2 c H
    EXPECT_NEAR(withoutActive(bench.row(-10)), 120 * 10.5 * 10.5 / 2 - 600 * 10.5, 1e-6);
    EXPECT_NEAR(withoutPassive(bench.row(-10)), 120 * 10.5 * 10.5 / 2 + 600 * 10.5, 1e-6);
}

TEST_F(WedgeFixedTest, ForcesAreZeroDownToTheFirstSurfaceRow) {
    bench.buildGround();
    state.wedge.WedgeActiveForce.fill(7);
    solve(Left);
    for (int i = 1; i <= bench.row(-10); ++i) {
        EXPECT_EQ(state.wedge.WedgeActiveForce(i, Left), 0);
        EXPECT_EQ(state.wedge.WedgePassiveForce(i, Left), 0);
    }
    EXPECT_EQ(state.wedge.WedgeActiveForce(5, Right), 7);
}

// Wall friction and adhesion by hand at the midpoint at -9.5, level ground. Active: plane at 60
// degrees, W = 120 x 9.5^2 / 2 / tan 60, adhesion 9.5 x 20 up the wall, wall friction 10 degrees.
// Across: p cos d = N (sin th - t cos th); up: p sin d + T + N (cos th + t sin th) = W.
TEST_F(WedgeFixedTest, WallFrictionAndAdhesionCarryPartOfTheWedge) {
    problem.SoilWallFriction(Right, 1) = 10;
    problem.SoilAdhesion(Right, 1) = 20;
    bench.buildGround();
    solve();
    const double W = 120 * 9.5 * 9.5 / 2 / std::tan(60 * Degree);
    const double t = std::tan(30 * Degree);
    const double across = std::sin(60 * Degree) - t * std::cos(60 * Degree);
    const double up = std::cos(60 * Degree) + t * std::sin(60 * Degree);
    const double d = 10 * Degree;
    const double p = (W - 9.5 * 20) / (std::sin(d) + up * std::cos(d) / across);
    EXPECT_NEAR(mid.MidActiveForce(bench.row(-9)), p * std::cos(d), 1e-6);
}

// A plane that goes up from sand (friction 30) into clay (no friction, c = 250): from (0, -9.5) at
// 60 degrees to the boundary at -5, x = 4.5 / tan 60, and on at 45 degrees to x + 5.
TEST_F(WedgeFixedTest, APlaneBreaksAtALayerBoundary) {
    bench.setLayers(Right, {{-5, 0}});
    problem.SoilFriction(Right, 1) = 0;
    problem.SoilCohesion(Right, 1) = 250;
    bench.buildGround();
    solve();
    const double xb = 4.5 / std::tan(60 * Degree);
    // Outer wedge, 5 x 5 / 2: N cos 45 + C sin 45 = W, C = 250 x 5 sqrt 2; it pushes W - 2 x 250
    // x 5.
    const double outer = 120 * 12.5 - 2 * 250 * 5.0;
    // Inner wedge: p = W tan(60 - 30) + outer.
    const double W = 120 * (xb * 4.5 / 2 + xb * 5);
    EXPECT_NEAR(mid.MidActiveForce(bench.row(-9)), W * std::tan(30 * Degree) + outer, 1e-6);
}

// A boundary -2 + 0.7 x between sand (friction 30) above and clay (no friction, c = 100) below. The
// passive plane of the sand from (0, -1.9) rises at 30 degrees, k = 0.57735, and goes down through
// the boundary at x = 0.1 / (0.7 - k); the clay's 45 degrees would lead back up, so that the plane
// follows the boundary to the ground at x = 2 / 0.7, while its forces stay those of 45 degrees.
TEST_F(WedgeFixedTest, APlaneThatWouldLeadBackFollowsTheBoundaryItHasPassed) {
    problem.WallTopElev = 0.2;
    bench.setLayers(Right, {{-2, 0.7}});
    problem.SoilFriction(Right, 2) = 0;
    problem.SoilCohesion(Right, 2) = 100;
    bench.buildGround();
    // The midpoint of the rows at -1.8 and -2 is at -1.9.
    ASSERT_NEAR(midElev(bench.row(-1.8)), -1.9, 1e-12);
    solve();
    const double k = std::tan(30 * Degree);
    const double x1 = 0.1 / (0.7 - k);
    const double y1 = -1.9 + k * x1;
    const double x2 = 2 / 0.7;
    const double outerW = 120 * (x2 - x1) * -y1 / 2;
    const double outerC = 100 * std::hypot(x2 - x1, y1);
    const double s45 = std::sqrt(0.5);
    // up: N cos - C sin = W; the neighbour is pushed by N sin + C cos.
    const double N = (outerW + outerC * s45) / s45;
    const double outer = N * s45 + outerC * s45;
    const double W = 120 * x1 * (1.9 - y1) / 2;
    EXPECT_NEAR(mid.MidPassiveForce(bench.row(-1.8)), W * std::tan(60 * Degree) + outer, 1e-6);
}

// A plane that starts in clay (45 degrees) below a boundary of slope 0.9 and comes up into sand
// whose passive plane (30 degrees) is flatter than the boundary: it follows the boundary as well.
TEST_F(WedgeFixedTest, GoingUpThePlaneIsNoFlatterThanTheBoundary) {
    bench.setLayers(Right, {{-2, 0.9}});
    problem.SoilFriction(Right, 2) = 0;
    problem.SoilCohesion(Right, 2) = 100;
    bench.setGround(Right, {{0, 0}, {10, 8}});
    bench.buildGround();
    solve();
    const FreeBodies bodies(bench, Right);
    const int row = bench.row(-2);
    ASSERT_NEAR(midElev(row), -2.5, 1e-12);
    // From (0, -2.5) at 45 degrees the boundary is met at x = 0.5 / (1 - 0.9) = 5, y = 2.5; along
    // 0.9 it meets the ground 0.8 x at x = 2 / 0.1 = 20, beyond the slope: at level 8, x = 11.11.
    EXPECT_NEAR(state.regions.Layer.X(Right, 2, 2), 10 / 0.9, 1e-9);
    const double x2 = 10 / 0.9;
    const auto surface = [](double x) { return x < 10 ? 0.8 * x : 8; };
    const PointGround soil(state, Right, 1);
    const double outerW = soil.slicedWeight(5, 2.5, x2, surface(x2), 1, 20000);
    const double W = soil.slicedWeight(0, -2.5, 5, 2.5, 2, 20000);
    const double C = 100 * 5 * std::sqrt(2);
    const double s45 = std::sqrt(0.5);
    const double N = (W + C * s45) / s45;
    const double expected = outerW * std::tan(60 * Degree) + N * s45 + C * s45;
    EXPECT_NEAR(mid.MidPassiveForce(row), expected, 1e-3);
}

TEST_F(WedgeFixedTest, AGroundPointStraightAboveABreakIsADivisionByZero) {
    bench.setLayers(Right, {{-5, 0}});
    problem.SoilFriction(Right, 1) = 0;
    problem.SoilCohesion(Right, 1) = 250;
    problem.SoilFriction(Right, 2) = 0;
    problem.SoilCohesion(Right, 2) = 250;
    // Planes at 45 degrees break at -5 straight under points 0.5, 1.5 ... FT from the wall, as
    // nearly as the plane's slope comes to 1.
    const double th = 0.7853981633974485;
    const double k = std::sin(th) / std::cos(th);
    const double broken = (-5 - -8.5 + k * 0) / (k - 0);
    bench.setGround(Right, {{0, 0}, {broken, 1}, {20, 1}});
    bench.buildGround();
    EXPECT_EQ(errorOf([&] { solve(); }), 11);
}

// Clay, c = 1000: the wedge of depth H pulls with 2000 H - 60 H^2. Line loads of 4600 at 2 FT and
// 1600 at 3 FT give the midpoints at 1.5, 2.5, 3.5 and 4.5 the forces -2865, -25, -65 and -1585. At
// 3 the parabolas give (2865 - 150 - 195) / 8 = 315 and (-75 - 390 + 1585) / 8 = 140, a push
// between two pulls: the straight line gives -45.
TEST_F(WedgeFixedTest, BetweenTwoNegativeMidpointsTheActiveForceDoesNotPush) {
    problem.SoilFriction(Right, 1) = 0;
    problem.SoilCohesion(Right, 1) = 1000;
    problem.VLineCount(Right) = 2;
    problem.VLineDist(Right, 1) = 2;
    problem.VLineLoad(Right, 1) = 4600;
    problem.VLineDist(Right, 2) = 3;
    problem.VLineLoad(Right, 2) = 1600;
    bench.buildGround();
    solve();
    EXPECT_NEAR(mid.MidActiveForce(bench.row(-1)), -2865, 1e-6);
    EXPECT_NEAR(mid.MidActiveForce(bench.row(-4)), -1585, 1e-6);
    EXPECT_NEAR(active(-3), -45, 1e-6);
}

// The rows between the midpoints by divided differences instead of Lagrange's form, on random
// grounds.
TEST_F(WedgeFixedTest, RowsFollowFromMidpointsByTwoParabolas) {
    struct Node {
        double y, f;
    };
    const auto newton = [](double y, Node a, Node b, Node c) {
        const double ab = (b.f - a.f) / (b.y - a.y);
        const double bc = (c.f - b.f) / (c.y - b.y);
        return a.f + (y - a.y) * (ab + (y - b.y) * (bc - ab) / (c.y - a.y));
    };
    Dice dice(42);
    for (int run = 0; run < 150; ++run) {
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, false);
        drawn.buildGround();
        State& s = *drawn.state;
        const MidForces forces = FixedSurfaceForces(s, Right, 1);
        const int surface = firstRowAt(s.grid, drawn.problem.SurfaceElev(Right, 1));
        const int last = s.grid.NumElevs;
        const auto check = [&](const auto& midForce, const auto& rows, bool isActive) {
            const auto node = [&](int r) {
                return r < surface
                           ? Node{s.grid.ElevGrid(surface), 0}
                           : Node{(s.grid.ElevGrid(r) + s.grid.ElevGrid(r + 1)) / 2, midForce(r)};
            };
            for (int r = surface + 1; r <= last; ++r) {
                const double y = s.grid.ElevGrid(r);
                double expected =
                    newton(y, node(std::min(r, last - 1) - 2), node(std::min(r, last - 1) - 1),
                           node(std::min(r, last - 1)));
                if (r < last - 1) {
                    const Node b = node(r - 1);
                    const Node c = node(r);
                    expected = (expected + newton(y, b, c, node(r + 1))) / 2;
                    if (isActive && b.f < 0 && c.f < 0 && expected > 0) {
                        expected = b.f + (c.f - b.f) * (y - b.y) / (c.y - b.y);
                    }
                }
                ASSERT_NEAR(rows(r, Right), expected, 1e-9 * (std::abs(expected) + 1000));
            }
        };
        check(forces.MidActiveForce, s.wedge.WedgeActiveForce, true);
        check(forces.MidPassiveForce, s.wedge.WedgePassiveForce, false);
    }
}

// Midpoint forces of random grounds against free bodies of the broken planes.
void compareWithFreeBodies(bool slopingLayers, std::uint64_t seed, int problems) {
    Dice dice(seed);
    for (int run = 0; run < problems; ++run) {
        WedgeBench drawn;
        drawWedgeProblem(drawn, dice, slopingLayers);
        drawn.buildGround();
        State& state = *drawn.state;
        for (const int side : {Right, Left}) {
            const MidForces mid = FixedSurfaceForces(state, side, 1);
            const FreeBodies bodies(drawn, side);
            const int surface = firstRowAt(state.grid, drawn.problem.SurfaceElev(side, 1));
            for (int r = surface; r < state.grid.NumElevs - 2; ++r) {
                const double y = (state.grid.ElevGrid(r) + state.grid.ElevGrid(r + 1)) / 2;
                const double depth = drawn.problem.SurfaceElev(side, 1) - y;
                const auto where = [&] {
                    return "seed " + std::to_string(seed) + " problem " + std::to_string(run) +
                           " side " + std::to_string(side) + " row " + std::to_string(r);
                };
                const double active = bodies.fixed(y, 1);
                const double passive = bodies.fixed(y, -1);
                const double scale = 1e-7 * (120 * depth * depth + 1000);
                ASSERT_NEAR(mid.MidActiveForce(r), active, scale + 1e-7 * std::abs(active))
                    << where();
                ASSERT_NEAR(mid.MidPassiveForce(r), passive, scale + 1e-7 * std::abs(passive))
                    << where();
            }
        }
    }
}

TEST(WedgeFixedFreeBodies, LevelLayers) {
    compareWithFreeBodies(false, 43, 150);
}

TEST(WedgeFixedFreeBodies, SlopingLayers) {
    compareWithFreeBodies(true, 44, 150);
}

} // namespace
} // namespace korvane::test
