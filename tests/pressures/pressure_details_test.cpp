// What the pressures of a side tell of how they came about.
#include "pressures/surcharge_pressures.h"
#include "state/pressure_details.h"
#include "wedge_ground.h"
#include "wedge_second_method.h"

#include <cmath>
#include <numbers>

namespace korvane::test {
namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Degree = Pi / 180;

/// A wall whose pressures are recorded.
struct RecordedWall : WedgeBench {
    RecordedWall() { state->details = &details; }

    const SideDetails& of(int side) const { return details.sides(side); }
    /// The planes at an elevation.
    const WedgeRow& planesAt(double elev, int side = Right) const {
        for (const WedgeRow& row : of(side).wedge.rows) {
            if (row.elev == elev) {
                return row;
            }
        }
        throw RuntimeError(9);
    }
    const WedgePressureRow& pressuresAt(double elev, int side = Right) const {
        for (const WedgePressureRow& row : of(side).wedge.pressures) {
            if (row.elev == elev) {
                return row;
            }
        }
        throw RuntimeError(9);
    }
    const WedgePiece& wallPiece(const WedgePlane& plane, int side = Right) const {
        return of(side).wedge.pieces.at(
            static_cast<std::size_t>(plane.firstPiece + plane.pieceCount - 1));
    }

    PressureDetails details;
};

// ---- stresses by coefficients -----------------------------------------------------------------

// 8 FT of sand (110 PCF moist, 120 saturated, 30 degrees: 1/3 and 3) over clay of 500 PSF and 120
// PCF saturated, water of 60 PCF at -4, 300 PSF on the ground.
//   -4: 300 + 4 x 110 = 740
//   -8: 740 + 4 x (120 - 60) = 980; the clay would pull by 980 - 2 x 500 = -20
struct LayeredWall : RecordedWall {
    LayeredWall() {
        problem.SoilMoistWeight(Right, 1) = 110;
        problem.SoilSatWeight(Right, 1) = 120;
        setLayerBottoms(problem, Right, {-8});
        problem.SoilFriction(Right, 2) = 0;
        problem.SoilCohesion(Right, 2) = 500;
        problem.VUniformCount(Right) = 1;
        problem.VUniformLoad(Right) = 300;
        setWater(-4, -4);
        solve();
    }
};

void expectStress(const StressPoint& point, double elev, double soilWeight, double water,
                  double active, double passive) {
    SCOPED_TRACE(elev);
    EXPECT_EQ(point.elev, elev);
    EXPECT_TRUE(point.onGrid);
    EXPECT_NEAR(point.soilWeight, soilWeight, 1e-9);
    EXPECT_NEAR(point.water, water, 1e-9);
    EXPECT_NEAR(point.uniformLoad, 300, 1e-9);
    EXPECT_NEAR(point.effective, 300 + soilWeight - water, 1e-9);
    EXPECT_NEAR(point.soilActive, active, 1e-9);
    EXPECT_NEAR(point.activeSum, active, 1e-9);
    EXPECT_NEAR(point.active, std::max(0.0, active), 1e-9);
    EXPECT_EQ(point.tensionCut, active < 0);
    EXPECT_NEAR(point.soilPassive, passive, 1e-9);
    EXPECT_NEAR(point.passive, passive, 1e-9);
}

TEST(StressDetails, FollowTheHandCalculation) {
    const LayeredWall wall;
    const auto& stresses = wall.of(Right).stresses;
    ASSERT_EQ(stresses.size(), 3U);
    expectStress(stresses[0].top, 0, 0, 0, 100, 900);
    expectStress(stresses[0].bottom, -4, 440, 0, 740.0 / 3, 2220);
    expectStress(stresses[1].top, -4, 440, 0, 740.0 / 3, 2220);
    expectStress(stresses[1].bottom, -8, 920, 240, 980.0 / 3, 2940);
    expectStress(stresses[2].top, -8, 920, 240, -20, 1980);
    EXPECT_EQ(stresses[0].layer, 1);
    EXPECT_EQ(stresses[1].layer, 1);
    EXPECT_EQ(stresses[2].layer, 2);
    EXPECT_FALSE(stresses[0].belowWater);
    EXPECT_EQ(stresses[0].unitWeight, 110);
    EXPECT_EQ(stresses[0].waterWeight, 0);
    EXPECT_TRUE(stresses[1].belowWater);
    EXPECT_FALSE(stresses[1].seeps);
    EXPECT_EQ(stresses[1].unitWeight, 120);
    EXPECT_EQ(stresses[1].waterWeight, 60);
    EXPECT_NEAR(stresses[1].Ka, 1.0 / 3, 1e-12);
    EXPECT_NEAR(stresses[1].Kp, 3, 1e-12);
    EXPECT_EQ(stresses[2].ca, 500);
    EXPECT_EQ(stresses[2].cp, 500);
    EXPECT_NEAR(stresses[2].Ka, 1, 1e-12);
}

// 0.1 FT of head is lost in each foot: the soil on the right bears 0.1 x 60 PCF more, on the left
// less.
TEST(StressDetails, SeepageChangesWhatTheWaterBears) {
    RecordedWall wall;
    wall.setWater(-4, -10);
    wall.setSeepage(-4, 0.1);
    wall.state->preparation.SeepageKind = Seepage::Given;
    wall.solve();
    int right = 0;
    int left = 0;
    for (const StressInterval& interval : wall.of(Right).stresses) {
        right += interval.seeps ? 1 : 0;
        EXPECT_NEAR(interval.waterWeight, interval.seeps ? 54 : interval.belowWater ? 60 : 0, 1e-9);
    }
    for (const StressInterval& interval : wall.of(Left).stresses) {
        left += interval.seeps ? 1 : 0;
        EXPECT_NEAR(interval.waterWeight, interval.seeps ? 66 : 60, 1e-9);
    }
    EXPECT_GT(right, 0);
    EXPECT_GT(left, 0);
}

// ---- shares of surcharges ---------------------------------------------------------------------

// Exposed height 10 FT. At a depth of 10 FT, x = 10: 4 Q x2 z / (pi (x2 + z2)2); a line at 2 FT is
// near: 0.203 Q / H n / (n2 + 0.16)2 with n = 1. A strip from 5 to 15 FT by its angles of sight.
// The ramp's endless part starts at 10 FT: q / (2 pi) (pi - 2 b + sin 2b) with b = 45 degrees, and
// it has no sloping part.
TEST(SurchargeShares, FollowTheHandCalculation) {
    RecordedWall wall;
    Problem& problem = wall.problem;
    problem.VLineCount(Right) = 2;
    problem.VLineDist(Right, 1) = 2;
    problem.VLineLoad(Right, 1) = 1000;
    problem.VLineDist(Right, 2) = 10;
    problem.VLineLoad(Right, 2) = 500;
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 5;
    problem.VStripEnd(Right, 1) = 15;
    problem.VStripLoad(Right, 1) = 400;
    problem.VRampCount(Right) = 1;
    problem.VRampStart(Right) = problem.VRampEnd(Right) = 10;
    problem.VRampLoad(Right) = 100;
    wall.solve();

    const SurchargeShares& shares = wall.of(Right).surcharges;
    ASSERT_EQ(shares.loads.size(), 4U);
    const std::pair<Load, int> loads[] = {
        {Load::Line, 1}, {Load::Line, 2}, {Load::Strip, 1}, {Load::Ramp, 1}};
    const double expected[] = {0.203 * 1000 / 10 / (1.16 * 1.16), 4 * 500 / Pi * 1000 / 40000,
                               400 / Pi * (std::atan(1.5) - std::atan(0.5) + 0.4 - 1.5 / 3.25),
                               100 / (2 * Pi) * (Pi / 2 + 1)};
    const std::size_t row = static_cast<std::size_t>(wall.row(-10) - shares.firstRow);
    EXPECT_EQ(shares.elev.at(row), -10);
    EXPECT_EQ(shares.surface, 0);
    for (std::size_t load = 0; load < 4; ++load) {
        EXPECT_EQ(shares.loads[load].kind, loads[load].first);
        EXPECT_EQ(shares.loads[load].index, loads[load].second);
        EXPECT_NEAR(shares.loads[load].pressure.at(row), expected[load], 1e-9);
    }
    EXPECT_NEAR(shares.sum.at(row), expected[0] + expected[1] + expected[2] + expected[3], 1e-9);
    EXPECT_TRUE(wall.of(Left).surcharges.loads.empty());
}

// ---- planes -----------------------------------------------------------------------------------

// Level ground, 32 degrees: Rankine's planes at 45 -/+ 16 degrees are planes of the sweep, and for
// a smooth wall in one soil they stay the same with cohesion c and a uniform load q:
//   active  gamma h2 / 2 tan2(29) - 2 c h tan(29) + q h tan2(29), on 10 FT tan(29) of ground
//   passive gamma h2 / 2 tan2(61) + 2 c h tan(61) + q h tan2(61)
TEST(SweepDetails, FollowRankine) {
    RecordedWall wall;
    wall.setGround(Right, {{0, 0}, {50, 0}});
    wall.problem.SoilFriction(Right, 1) = 32;
    wall.problem.SoilCohesion(Right, 1) = 100;
    wall.problem.VUniformCount(Right) = 1;
    wall.problem.VUniformLoad(Right) = 200;
    wall.buildGround();
    wall.press(PressureMethod::Sweep);

    const WedgeRow& row = wall.planesAt(-10);
    EXPECT_EQ(row.layer, 1);
    for (const int s : {1, -1}) {
        SCOPED_TRACE(s);
        const WedgePlane& plane = s > 0 ? row.active : row.passive;
        const double degrees = s > 0 ? 29 : 61;
        const double t = std::tan(degrees * Degree);
        ASSERT_TRUE(plane.found);
        EXPECT_NEAR(plane.angle, degrees, 1e-9);
        EXPECT_NEAR(plane.force, 6000 * t * t - s * 2000 * t + 2000 * t * t, 1e-6);
        EXPECT_EQ(plane.outerForce, 0);
        EXPECT_EQ(plane.wallFriction, 0);
        ASSERT_EQ(plane.pieceCount, 1);
        const WedgePiece& piece = wall.wallPiece(plane);
        EXPECT_EQ(piece.x1, 0);
        EXPECT_EQ(piece.y1, -10);
        EXPECT_NEAR(piece.x2, 10 * t, 1e-9);
        EXPECT_NEAR(piece.y2, 0, 1e-9);
        EXPECT_NEAR(piece.length, 10 / std::cos(degrees * Degree), 1e-9);
        EXPECT_NEAR(piece.soil, 6000 * t, 1e-6);
        EXPECT_NEAR(piece.surcharge, 2000 * t, 1e-6);
        EXPECT_NEAR(piece.cohesion, 1000 / std::cos(degrees * Degree), 1e-7);
        EXPECT_NEAR(piece.friction, std::tan(32 * Degree), 1e-12);
        EXPECT_EQ(piece.force, plane.force);
    }
}

// A boundary from the row at -10 that reaches the ground where the plane at 45 degrees (the 12th)
// does: the piece bears the load of the upper soil, W / tan(45 + phi) by the weaker of both.
TEST(SweepDetails, AlongABoundaryNameTheWeakerSoil) {
    struct Soils {
        double upper, lower, weaker; // degrees of friction
        int layer;                   // of the weaker one
    };
    for (const auto& [upper, lower, weaker, layer] : {Soils{44, 2, 2, 2}, Soils{0.5, 44, 0.5, 1}}) {
        SCOPED_TRACE(upper);
        RecordedWall wall;
        double angle = 23 * 0.0174532925199433;
        for (int step = 0; step < 11; ++step) {
            angle += 0.0349065850398866;
        }
        const double k = std::cos(angle) / std::sin(angle);
        const double xg = 10 / k;
        wall.setLayers(Right, {{-10, k}});
        wall.problem.SoilFriction(Right, 1) = upper;
        wall.problem.SoilFriction(Right, 2) = lower;
        wall.buildGround();
        wall.state->regions.Layer.X(Right, 2, 2) = xg; // exactly, rounding set aside
        wall.press(PressureMethod::Sweep);

        const WedgePlane& plane = wall.planesAt(-10).active;
        ASSERT_TRUE(plane.found);
        EXPECT_NEAR(plane.angle, 45, 1e-9);
        EXPECT_NEAR(plane.force, 120 * 10 * xg / 2 / std::tan(angle + weaker * Degree), 1e-6);
        ASSERT_EQ(plane.pieceCount, 1);
        const WedgePiece& piece = wall.wallPiece(plane);
        EXPECT_EQ(piece.layer, layer);
        EXPECT_NEAR(piece.friction, std::tan(weaker * Degree), 1e-12);
        EXPECT_NEAR(piece.soil, 120 * 10 * xg / 2, 1e-6);
    }
}

// The same soil without cohesion and load: planes at exactly 45 -/+ phi / 2, forces at the middle
// of rows.
TEST(FixedSurfaceDetails, FollowRankine) {
    RecordedWall wall;
    wall.setGround(Right, {{0, 0}, {50, 0}});
    wall.problem.SoilFriction(Right, 1) = 33;
    wall.buildGround();
    wall.press(PressureMethod::FixedSurface);

    const WedgeRow& row = wall.planesAt(-10.5);
    const double a = std::tan(28.5 * Degree);
    const double p = std::tan(61.5 * Degree);
    EXPECT_NEAR(row.active.angle, 28.5, 1e-9);
    EXPECT_NEAR(row.passive.angle, 61.5, 1e-9);
    EXPECT_NEAR(row.active.force, 60 * 10.5 * 10.5 * a * a, 1e-6);
    EXPECT_NEAR(row.passive.force, 60 * 10.5 * 10.5 * p * p, 1e-6);
    EXPECT_NEAR(wall.wallPiece(row.passive).soil, 60 * 10.5 * 10.5 * p, 1e-6);
    EXPECT_NEAR(wall.wallPiece(row.passive).x2, 10.5 * p, 1e-9);
}

// Passive pressure cannot fall below the vertical stress. Sand of 10 degrees under ground that
// falls 1 on 4 (14 degrees) resists less: at depth 5 the floor is 50 + 5 x 120 = 650 PSF. Clay of
// 300 PSF behind level ground pulls down to 2 c / gamma = 5 FT.
TEST(WedgeRows, TellWhichRuleActed) {
    RecordedWall falling;
    falling.setGround(Right, {{0, 0}, {60, -15}});
    falling.problem.SoilFriction(Right, 1) = 10;
    falling.problem.VUniformCount(Right) = 1;
    falling.problem.VUniformLoad(Right) = 50;
    falling.buildGround();
    falling.press(PressureMethod::Sweep);
    const WedgePressureRow& row = falling.pressuresAt(-5);
    EXPECT_NEAR(row.soilWeight, 600, 1e-9);
    EXPECT_EQ(row.uniformLoad, 50);
    EXPECT_NEAR(row.effective, 650, 1e-9);
    for (const int k : {1, 2}) {
        EXPECT_TRUE(row.raised(k));
        EXPECT_LT(row.passiveBefore(k), 650);
        EXPECT_NEAR(row.passive(k), 650, 1e-9);
        EXPECT_FALSE(row.tensionCut(k));
    }

    RecordedWall clay;
    clay.setGround(Right, {{0, 0}, {60, 0}});
    clay.problem.SoilFriction(Right, 1) = 0;
    clay.problem.SoilCohesion(Right, 1) = 300;
    clay.buildGround();
    clay.press(PressureMethod::FixedSurface);
    for (const int k : {1, 2}) {
        EXPECT_TRUE(clay.pressuresAt(-3).tensionCut(k));
        EXPECT_NEAR(clay.pressuresAt(-3).activeBefore(k), 3 * 120 - 600, 1e-6);
        EXPECT_EQ(clay.pressuresAt(-3).active(k), 0);
        EXPECT_FALSE(clay.pressuresAt(-7).tensionCut(k));
        EXPECT_NEAR(clay.pressuresAt(-7).active(k), 7 * 120 - 600, 1e-6);
        EXPECT_FALSE(clay.pressuresAt(-7).raised(k));
    }
}

// ---- planes of random ground against free bodies ----------------------------------------------

struct Scan {
    int rows = 0;
    int severalPieces = 0;
};

/// The recorded plane gives the recorded force, and its neighbours give no better one.
void expectExtreme(const FreeBodies& bodies, const WedgeRow& row, int s, double scale) {
    const WedgePlane& plane = s > 0 ? row.active : row.passive;
    if (!plane.found) {
        return;
    }
    const double noise = 1e-7 * std::max(scale, std::abs(plane.force));
    const double angle = plane.angle * Degree;
    const double top = bodies.flattestPlane(row.elev);
    ASSERT_NEAR(plane.force, bodies.onPlane(row.elev, angle, s), noise);
    for (const double step : {-2 * Degree, 2 * Degree}) {
        const double other = angle + step;
        if (other < 22.99 * Degree || other > top) {
            continue;
        }
        const double force = bodies.onPlane(row.elev, other, s);
        if (s > 0) {
            ASSERT_LE(force, plane.force + noise);
        } else if (force >= 0.0001) {
            ASSERT_GE(force, plane.force - noise);
        }
    }
}

/// Calls `expect(bodies, row, s, depth)` for both forces (s = 1 active, -1 passive) of every third
/// row of both sides of a wall, `depth` FT below its surface.
template <class Expect>
void scanWall(RecordedWall& wall, PressureMethod method, int run, Scan& scan, Expect expect) {
    for (const int side : {Right, Left}) {
        wall.press(method, side);
        const FreeBodies bodies(wall, side);
        const auto& rows = wall.of(side).wedge.rows;
        for (std::size_t r = 0; r + 2 < rows.size(); r += 3) {
            SCOPED_TRACE(std::to_string(run) + " " + std::to_string(rows[r].elev));
            const double depth = wall.problem.SurfaceElev(side, 1) - rows[r].elev;
            for (const int s : {1, -1}) {
                expect(bodies, rows[r], s, depth);
            }
            ++scan.rows;
            scan.severalPieces += rows[r].active.pieceCount > 1 ? 1 : 0;
        }
    }
}

void scanSweep(bool slopingLayers, std::uint64_t seed, Scan& scan) {
    Dice dice(seed);
    for (int run = 0; run < 25; ++run) {
        RecordedWall wall;
        drawWedgeProblem(wall, dice, slopingLayers);
        wall.buildGround();
        scanWall(wall, PressureMethod::Sweep, run, scan,
                 [](const FreeBodies& bodies, const WedgeRow& row, int s, double depth) {
                     expectExtreme(bodies, row, s, 120 * depth * depth);
                 });
    }
}

TEST(SweepDetails, AreTheExtremesAmongTheirNeighbours) {
    Scan scan;
    scanSweep(false, 50, scan);
    scanSweep(true, 51, scan);
    EXPECT_GT(scan.rows, 500);
    EXPECT_GT(scan.severalPieces, scan.rows / 10);
}

TEST(FixedSurfaceDetails, AreThoseOfFreeBodies) {
    Scan scan;
    Dice dice(52);
    for (int run = 0; run < 40; ++run) {
        RecordedWall wall;
        drawWedgeProblem(wall, dice, run % 2 == 0);
        wall.buildGround();
        scanWall(wall, PressureMethod::FixedSurface, run, scan,
                 [](const FreeBodies& bodies, const WedgeRow& row, int s, double depth) {
                     const WedgePlane& plane = s > 0 ? row.active : row.passive;
                     const double force = bodies.fixed(row.elev, s);
                     ASSERT_NEAR(plane.force, force,
                                 1e-7 * (120 * depth * depth + 1000 + std::abs(force)));
                 });
    }
    EXPECT_GT(scan.rows, 500);
    EXPECT_GT(scan.severalPieces, scan.rows / 10);
}

} // namespace
} // namespace korvane::test
