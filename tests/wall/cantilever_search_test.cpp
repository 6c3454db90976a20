#include "wall/cantilever_search.h"

#include "runtime/number_text.h"
#include "search_bench.h"
#include "wall/design.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::test {
namespace {

using Texts = std::vector<std::string>;

/// A wall in a soil of uniform pressures: net active -p and net passive q below the zero point, a
/// force R at `arm` above that point. For a penetration D below it, force balance puts the
/// transition at z = 2 (p D - R) / (p + q) above the bottom; the moment about the bottom is
/// R (D + arm) - p D^2 / 2 + (p + q) z^2 / 6.
struct UniformWall {
    double p = 100;
    double q = 500;
    double R = 0;
    double arm = 0;

    double transitionHeight(double D) const { return 2 * (p * D - R) / (p + q); }
    double moment(double D) const {
        const double z = transitionHeight(D);
        return R * (D + arm) - p * D * D / 2 + (p + q) * z * z / 6;
    }
    /// The penetration without moment, by halving between two that enclose it.
    double penetration(double low, double high) const {
        for (int pass = 0; pass < 200; ++pass) {
            const double middle = (low + high) / 2;
            (moment(middle) > 0 ? low : high) = middle;
        }
        return low;
    }
    HandMadeWall build() const {
        HandMadeWall wall(WallKind::Cantilever);
        wall.setUniformActive(-p);
        wall.setUniformPassive(q);
        wall.setDriving(R, -R * arm);
        return wall;
    }
};

Solution& solveBottom(HandMadeWall& wall) {
    SolveCantileverBottom(*wall.state);
    return wall.state->solution;
}

/// Force and moment about the bottom of the finished diagram on the grid, by triangles.
void expectBalance(const HandMadeWall& wall) {
    const State& state = *wall.state;
    const int bottom = state.solution.BottomIndex(1);
    const auto& elev = state.grid.ElevGrid;
    double force = state.net.DrivingForce;
    double moment = state.net.DrivingForce * (0 - elev(bottom)) - state.net.DrivingMoment;
    for (int i = HandMadeWall::ZeroRow + 1; i <= bottom; ++i) {
        const double d = elev(i - 1) - elev(i);
        const double upper = state.net.NetActive(i - 1, 1) * d / 2;
        const double lower = state.net.NetActive(i, 2) * d / 2;
        force += upper + lower;
        moment +=
            upper * (elev(i) - elev(bottom) + d * 2 / 3) + lower * (elev(i) - elev(bottom) + d / 3);
    }
    EXPECT_NEAR(force, 0, 0.1);
    EXPECT_NEAR(moment, 0, 1.0);
}

TEST(IntegrateNetPressure, AddsTheDiagramAndTheLineLoadsOfATrial) {
    HandMadeWall wall = UniformWall{.R = 400, .arm = 1.5}.build();
    auto& solution = wall.state->solution;
    solution.SolvedBottomElev(1) = -10;
    solution.BottomPressure(1) = 500;
    const auto integrate = [&] {
        return IntegrateNetPressure(*wall.state, 400, -600, HandMadeWall::ZeroRow,
                                    HandMadeWall::rowAt(-8), {-8, -100});
    };
    // 400 - 100 x 8 + (-100 + 500) x 2 / 2; 400 x 11.5 - 800 x 6 - 200 x 1 + 600 x 2/3 = 0
    EXPECT_NEAR(integrate().force, 0, 1e-9);
    EXPECT_NEAR(integrate().moment, 0, 1e-9);

    // At the zero point a line load counts, at the bottom it does not; the moment's sign is turned.
    wall.addLineLoad(0, 30);
    wall.addLineLoad(-4, 7);
    wall.addLineLoad(-10, 1000);
    wall.addLineLoad(0.001, 1000); // above: it is part of the driving force
    EXPECT_NEAR(integrate().force, 37, 1e-9);
    EXPECT_NEAR(integrate().moment, -(30 * 10 + 7 * 6), 1e-9);
}

TEST(CantileverSearch, ATransitionAtAGridPointGetsNoRefinementAndNoRow) {
    // D = 10 and z = 2: force 400 - 1000 + 600 = 0, moment 4600 - 5000 + 400 = 0.
    HandMadeWall wall = UniformWall{.R = 400, .arm = 1.5}.build();
    const int rows = wall.state->grid.NumElevs;
    const Solution& solution = solveBottom(wall);
    EXPECT_EQ(solution.SolvedBottomElev(1), -10);
    EXPECT_EQ(solution.BottomPressure(1), 500);
    EXPECT_EQ(solution.BottomIndex(1), HandMadeWall::rowAt(-10));
    EXPECT_EQ(wall.state->grid.NumElevs, rows);
    const auto& NetActive = wall.state->net.NetActive;
    EXPECT_EQ(NetActive(HandMadeWall::rowAt(-8), 1), -100);
    EXPECT_EQ(NetActive(HandMadeWall::rowAt(-9), 1), 200); // halfway from -100 to 500
    EXPECT_EQ(NetActive(HandMadeWall::rowAt(-9), 2), 200);
    EXPECT_EQ(NetActive(HandMadeWall::rowAt(-10), 2), 500);
    EXPECT_TRUE(wall.told().empty());
}

TEST(CantileverSearch, BottomAndTransitionMeetTheClosedForm) {
    for (const double arm : {0.7, 1.6, 4.3}) {
        const UniformWall uniform{.R = 410, .arm = arm};
        HandMadeWall wall = uniform.build();
        const double D = uniform.penetration(4.1, 30);
        const double Z = uniform.transitionHeight(D) - D;
        const Solution& solution = solveBottom(wall);
        // 1 LB-FT over the moment's slope, more than 300 LB here
        EXPECT_NEAR(solution.SolvedBottomElev(1), -D, 1.0 / 300);
        EXPECT_EQ(solution.BottomPressure(1), 500);
        EXPECT_EQ(wall.state->grid.ElevGrid(solution.BottomIndex(1)), solution.SolvedBottomElev(1));
        const int row = HandMadeWall::rowAt(static_cast<int>(std::floor(Z)));
        EXPECT_NEAR(wall.state->grid.ElevGrid(row), Z, 0.005);
        EXPECT_EQ(wall.state->net.NetActive(row, 1), -100);
        expectBalance(wall);
    }
}

TEST(CantileverSearch, TheMomentCurveMayStandWithoutATrialOfNegativeMoment) {
    // Already the first trial, at -3, has too much depth: the curve begins at the zero point.
    const UniformWall uniform{.R = 110, .arm = 0.1};
    ASSERT_LT(uniform.moment(3), 0);
    HandMadeWall wall = uniform.build();
    const double D = uniform.penetration(1.1, 3);
    EXPECT_NEAR(solveBottom(wall).SolvedBottomElev(1), -D, 0.01); // moment slope 98 LB at D
    EXPECT_NEAR(uniform.moment(-wall.state->solution.SolvedBottomElev(1)), 0, 1.5);
    expectBalance(wall);
    EXPECT_TRUE(wall.told().empty());
}

TEST(CantileverSearch, TheTransitionsRowIsInterpolated) {
    HandMadeWall wall = UniformWall{.R = 410, .arm = 1.6}.build();
    auto& pressures = wall.state->pressures;
    for (int i = 1; i <= wall.state->grid.NumElevs; ++i) {
        for (const int k : {1, 2}) {
            for (const int side : {Right, Left}) {
                pressures.ActivePressures(side, i, k) = 1000 * side + 10 * i + k;
                pressures.PassivePressures(side, i, k) = 5000 * side + 20 * i + 3 * k;
            }
            pressures.WaterPressures(i, k) = 7;
        }
        pressures.ActiveMark(Right, i) = true;
        pressures.PassiveMark(Left, i) = true;
    }
    const int rows = wall.state->grid.NumElevs;
    solveBottom(wall);
    const auto& elev = wall.state->grid.ElevGrid;
    int i = HandMadeWall::ZeroRow;
    while (elev(i) == std::floor(elev(i))) {
        ++i; // to the first row between whole feet
    }
    ASSERT_EQ(wall.state->grid.NumElevs, rows + 1);
    const double t = (elev(i - 1) - elev(i)) / (elev(i - 1) - elev(i + 1));
    const auto between = [t](double above, double below) { return (1 - t) * above + t * below; };
    // Old rows i - 1 and i; from above the value below row i - 1, from below the one above row i.
    const double a = 10 * (i - 1) + 1;
    const double p = 20 * (i - 1) + 3;
    for (const int k : {1, 2}) {
        EXPECT_NEAR(pressures.ActivePressures(Right, i, k), 1000 + between(a, 10 * i + 2), 1e-9);
        EXPECT_NEAR(pressures.PassivePressures(Right, i, k), 5000 + between(p, 20 * i + 6), 1e-9);
        EXPECT_NEAR(pressures.PassivePressures(Left, i, k), 10000 + between(p, 20 * i + 6), 1e-9);
        // Left active pressure takes the value below row i instead.
        EXPECT_NEAR(pressures.ActivePressures(Left, i, k), 2000 + between(a, 10 * i + 1), 1e-9);
    }
    EXPECT_EQ(pressures.ActivePressures(Right, i + 1, 2), 1000 + 10 * i + 2); // the old row i
    EXPECT_EQ(wall.state->net.NetPassive(rows + 1, 2), 0);                    // stays in place
    EXPECT_FALSE(pressures.ActiveMark(Right, i));
    EXPECT_TRUE(pressures.ActiveMark(Right, i + 1));
    EXPECT_FALSE(pressures.PassiveMark(Left, i));
    EXPECT_EQ(pressures.WaterPressures(i, 1), 0); // computed anew for the grid: no water here
}

TEST(CantileverSearch, ATrialBottomAtAGridElevationTakesThePressureAboveIt) {
    HandMadeWall wall(WallKind::Cantilever);
    wall.setPassive(0, -5, 100, 200);
    wall.setPassive(-5, -10, 900, 1400); // a jump from 200 to 900 at -5, then 100 PSF a foot
    EXPECT_EQ(passivePressureAt(*wall.state, -5), 200);
    EXPECT_EQ(passivePressureAt(*wall.state, -7), 1100);
    EXPECT_EQ(passivePressureAt(*wall.state, 0), 0); // nothing acts above the zero point
}

TEST(CantileverSearch, BetweenRowsTheSlopeIsThatOfTheValuesAboveThem) {
    HandMadeWall wall(WallKind::Cantilever);
    wall.setPassive(0, -5, 100, 200);
    wall.setPassive(-5, -10, 900, 1400);
    // From 900 just below -5 with the slope from 200 (above -5) to 1000 (above -6).
    EXPECT_DOUBLE_EQ(passivePressureAt(*wall.state, -5.25), 900 + 0.25 * 800);
    EXPECT_DOUBLE_EQ(passivePressureAt(*wall.state, -2.5), 150);
    EXPECT_EQ(errorOf([&] { passivePressureAt(*wall.state, -200000); }), 9);
}

TEST(CantileverSearch, NoEmbedmentBelowTheFirstPointIsMessageA) {
    HandMadeWall wall = UniformWall{.R = 50, .arm = 1}.build();
    solveBottom(wall);
    EXPECT_TRUE(wall.state->failed());
    ASSERT_EQ(wall.told().size(), 1U);
    EXPECT_EQ(wall.told()[0],
              (MessageBox{.text = "DESIGN BOTTOM OF CANTILEVER WALL IS ABOVE ELEVATION -1.00\n\n"
                                  "     UNABLE TO CONTINUE."}));
    EXPECT_EQ(wall.told()[0].title, "KORVANE");
}

TEST(CantileverSearch, ARunningForceOfZeroAtTheFirstPointIsNoFailure) {
    // D = 10, z = 3: force 100 - 1000 + 900 = 0, moment 100 x 41 - 5000 + 900 = 0.
    HandMadeWall wall = UniformWall{.R = 100, .arm = 31}.build();
    EXPECT_EQ(solveBottom(wall).SolvedBottomElev(1), -10);
    EXPECT_FALSE(wall.state->failed());
}

const char* const messageB = "NO SOLUTION FOR CANTILEVER WALL DESIGN WITH\n"
                             "BOTTOM OF WALL DOWN TO ELEVATION -50040.00 (FT).\n\n"
                             "     UNABLE TO CONTINUE.";

TEST(CantileverSearch, AForceThatStaysPositiveIsMessageB) {
    HandMadeWall wall = UniformWall{.p = -1, .R = 400, .arm = 1}.build();
    solveBottom(wall);
    EXPECT_TRUE(wall.state->failed());
    EXPECT_EQ(textsOf(wall), Texts{messageB});
}

TEST(CantileverSearch, AFirstTrialAtTheLastRowIsMessageB) {
    // The running force turns negative at -50040, the last row but one.
    HandMadeWall wall = UniformWall{.p = 1, .R = 1000, .arm = 1}.build();
    solveBottom(wall);
    EXPECT_EQ(textsOf(wall), Texts{messageB});
}

TEST(CantileverSearch, TrialsThatReachTheLastRowAreMessageB) {
    // Even 50,040 FT of depth resist 100 x 50040^2 / 2 = 1.3E11 only.
    HandMadeWall wall = UniformWall{.R = 400, .arm = 1e10}.build();
    solveBottom(wall);
    EXPECT_TRUE(wall.state->failed());
    EXPECT_EQ(textsOf(wall), Texts{messageB});
}

// The root with the minus before the square root: with A > 0 the deeper one.
TEST(MomentParabola, HasTheRootsOfItsFactors) {
    for (const double A : {0.5, 3.0, 800.0}) {
        for (const double upper : {-1.0, 0.25, 2.0}) {
            const double deeper = upper - 7;
            const auto moment = [&](double z) { return A * (z - upper) * (z - deeper); };
            const double root = parabolaRoot({4.5, moment(4.5)}, {1.25, moment(1.25)}, moment(0));
            EXPECT_NEAR(root, deeper, 1e-11) << A << " " << upper;
            // Turned over, the root is the other one.
            EXPECT_NEAR(parabolaRoot({4.5, -moment(4.5)}, {1.25, -moment(1.25)}, -moment(0)), upper,
                        1e-11);
        }
    }
}

// The coefficients from whole elevations, in extended precision.
TEST(MomentParabola, IsTheCurveThroughTheTrialsAtAnyDatum) {
    using Real = long double;
    const Real M1 = -900, M2 = 350, M3 = 2200;
    for (const Real datum : {0.0L, -40.0L, 700.0L}) {
        const Real Z1 = datum - 15, Z2 = datum - 16.4L, Z3 = datum - 18;
        const Real D = Z1 * Z1 * (Z2 - Z3) + Z2 * Z2 * (Z3 - Z1) + Z3 * Z3 * (Z1 - Z2);
        const Real A = ((Z2 - Z3) * M1 + (Z3 - Z1) * M2 + (Z1 - Z2) * M3) / D;
        const Real B =
            ((Z3 * Z3 - Z2 * Z2) * M1 + (Z1 * Z1 - Z3 * Z3) * M2 + (Z2 * Z2 - Z1 * Z1) * M3) / D;
        const Real C =
            (Z2 * Z3 * (Z2 - Z3) * M1 + Z1 * Z3 * (Z3 - Z1) * M2 + Z1 * Z2 * (Z1 - Z2) * M3) / D;
        const Real root = (-B - std::sqrt(B * B - 4 * A * C)) / (2 * A);
        EXPECT_NEAR(parabolaRoot({3, -900}, {1.6, 350}, 2200), static_cast<double>(root - Z3),
                    1e-10);
    }
}

TEST(MomentParabola, AStraightLineAndACurveWithoutARootAreRunTimeErrors) {
    EXPECT_EQ(errorOf([] { parabolaRoot({2, -1}, {1, 0}, 1); }), 11);
    EXPECT_EQ(errorOf([] { parabolaRoot({2, -1}, {2, -1}, 1); }), 11);
    EXPECT_EQ(errorOf([] { parabolaRoot({2, 5}, {1, 2}, 1); }), 5); // z^2 + 1
}

TEST(CantileverSearch, AMomentThatJumpsOverZeroIsMessageC) {
    // Net passive jumps from 100 to 5000 PSF at -9, where the moment of the trials jumps from -841
    // (q = 100: z = 5.2) to 25 (q = 5000: z = 0.20): no bottom has a moment within 1. Halving ends
    // at the jump.
    HandMadeWall wall = UniformWall{.q = 5000, .R = 380, .arm = 1.5}.build();
    wall.setPassive(0, -9, 100, 100);
    solveBottom(wall);
    EXPECT_TRUE(wall.state->failed());
    EXPECT_NEAR(wall.state->solution.SolvedBottomElev(1), -9, 1e-9);
    EXPECT_EQ(textsOf(wall), Texts{"DESIGN BOTTOM OF CANTILEVER WALL APPEARS TO BE\n"
                                   "OSCILLATING ABOUT ELEVATION -9.00 (FT).\n\n"
                                   "     UNABLE TO CONTINUE."});
}

// Net passive rises from 100 PSF at -9 to 20,000 at -10. So near to a jump the parabola, whose
// outer points stay, would need more than its 25 stages.
TEST(CantileverSearch, ABottomThatTheParabolaDoesNotReachIsFoundByHalving) {
    for (const double arm : {1.3, 1.5}) {
        UniformWall uniform{.q = 20000, .R = 380, .arm = arm};
        HandMadeWall wall = uniform.build();
        wall.setPassive(0, -9, 100, 100);
        wall.setPassive(-9, -10, 100, 20000);
        const auto momentAt = [&](double D) {
            uniform.q = 100 + 19900 * (D - 9);
            return uniform.moment(D);
        };
        double low = 9, high = 10; // it turns once between them
        ASSERT_GT(momentAt(low), 0);
        ASSERT_LT(momentAt(high), 0);
        for (int pass = 0; pass < 60; ++pass) {
            const double middle = (low + high) / 2;
            (momentAt(middle) > 0 ? low : high) = middle;
        }
        const Solution& solution = solveBottom(wall);
        EXPECT_TRUE(wall.told().empty());
        EXPECT_NEAR(momentAt(-solution.SolvedBottomElev(1)), 0, 1.0);
        EXPECT_NEAR(solution.SolvedBottomElev(1), -low, 0.002);
        EXPECT_NEAR(solution.BottomPressure(1), 100 + 19900 * (-solution.SolvedBottomElev(1) - 9),
                    1e-6);
        expectBalance(wall);
    }
}

TEST(CantileverSearch, LineLoadsBelowTheZeroPointTakePart) {
    // A load of 60 at -1 is a driving force of 60 at an arm of -1 about the zero point.
    const UniformWall together{.R = 410, .arm = (350 * 2.0 - 60) / 410};
    HandMadeWall wall = UniformWall{.R = 350, .arm = 2}.build();
    wall.addLineLoad(-1, 60);
    EXPECT_NEAR(solveBottom(wall).SolvedBottomElev(1), -together.penetration(4.1, 30), 1.0 / 300);
}

/// Net active 0 at the zero point, -100 above -1 and -1000 below it; no net passive pressure; force
/// 110. The first trial is at -3; the force with a transition at depth Z above -1 is
/// 110 - 50 Z^2 - 100 Z (3 - Z) / 2 = 110 - 150 Z.
HandMadeWall wallOfEarlyTransition() {
    HandMadeWall wall(WallKind::Cantilever);
    wall.setUniformActive(-1000);
    wall.setActive(0, -1, 0, -100);
    // Moment about the bottom without that of the force's arm, at Z = 11/15
    const double Z = 11.0 / 15;
    const double moment =
        110 * 3 - 50 * Z * Z * (3 - Z * 2 / 3) - 50 * Z * (3 - Z) * (3 - Z) * 2 / 3;
    wall.setDriving(110, moment);
    return wall;
}

TEST(CantileverSearch, ATransitionAboveTheFirstRowIsFoundByHalving) {
    // No row of the trial has a positive force, so that the secants hold 0 and never leave the
    // zero point.
    HandMadeWall wall = wallOfEarlyTransition();
    const int rows = wall.state->grid.NumElevs;
    const Solution& solution = solveBottom(wall);
    EXPECT_TRUE(wall.told().empty());
    EXPECT_EQ(solution.SolvedBottomElev(1), -3);
    EXPECT_EQ(wall.state->grid.NumElevs, rows + 1);
    EXPECT_NEAR(wall.state->grid.ElevGrid(HandMadeWall::ZeroRow + 1), -11.0 / 15, 0.1 / 150);
    expectBalance(wall);
}

TEST(CantileverSearch, ARefinementWithoutAResultFails) {
    // With -100 at the zero point too, the force is 110 - 150 there and less below.
    HandMadeWall wall = wallOfEarlyTransition();
    wall.setActive(0, -1, -100, -100);
    solveBottom(wall);
    EXPECT_TRUE(wall.state->failed());
    ASSERT_EQ(wall.told().size(), 1U);
    EXPECT_EQ(wall.told()[0],
              (MessageBox{.text = "REFINEMENT OF WALL BOTTOM DOES NOT CONVERGE\n"
                                  "FOR CANTILEVER WALL.\n\n     UNABLE TO CONTINUE.",
                          .title = "KORVANE"}));
}

/// Sand, or clay on either side, and water in the ground or none, on a datum.
Problem wallOnDatum(int height, bool clayRight, bool clayLeft, bool water, double datum) {
    Problem problem = plainCantilever();
    problem.WallTopElev = problem.SurfaceElev(Right, 1) = datum + height;
    problem.SurfaceElev(Left, 1) = datum;
    if (clayRight) {
        problem.SoilFriction(Right, 1) = 0;
        problem.SoilCohesion(Right, 1) = 20 * height;
    }
    if (clayLeft) {
        problem.SoilFriction(Left, 1) = 0;
        problem.SoilCohesion(Left, 1) = 60 * height;
    }
    if (water) {
        problem.WaterDataKind = WaterData::Elevations;
        problem.WaterUnitWeight = 62.4;
        problem.WaterElev(Right) = datum + height / 2.0;
        problem.WaterElev(Left) = datum;
    }
    return problem;
}

TEST(CantileverSearch, AWallOfTenThousandFeetHasThePenetrationThatItHasAtZero) {
    int solved = 0;
    for (int kind = 0; kind < 8; ++kind) {
        for (int height = 6; height <= 30; height += 2) {
            double penetration[2] = {};
            for (const int far : {0, 1}) {
                Bench bench;
                const double datum = 10000.0 * far;
                bench.problem =
                    wallOnDatum(height, (kind & 1) != 0, (kind & 2) != 0, (kind & 4) != 0, datum);
                solve(bench);
                EXPECT_TRUE(bench.told().empty()) << kind << " " << height << " " << datum;
                penetration[far] = datum - bench.state->solution.SolvedBottomElev(1);
            }
            // Both within 1 LB-FT of balance, over a moment that changes by more than 1000 LB.
            EXPECT_NEAR(penetration[1], penetration[0], 0.002) << kind << " " << height;
            ++solved;
        }
    }
    EXPECT_EQ(solved, 8 * 13);
}

/// A sand wall that holds 10 FT of water; its seepage follows the bottom.
Problem seepageWall() {
    Problem problem = plainCantilever();
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = -2;
    problem.WaterElev(Left) = -10;
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -2;
    problem.SoilFriction(Left, 1) = 36;
    return problem;
}

TEST(CantileverSearch, SeepageFollowsTheBottom) {
    Bench bench;
    bench.problem = seepageWall();
    solve(bench);
    EXPECT_TRUE(bench.told().empty());
    // The gradient belongs to the bottom of the pass before, at most 0.1 FT away.
    const double Zb = bench.state->solution.SolvedBottomElev(1);
    const double gradient = bench.state->preparation.SeepageGradient(1);
    const double previous = (-12 - 8 / gradient) / 2; // 8 / (-2 - 10 - 2 b)
    EXPECT_NEAR(previous, Zb, 0.1);
    EXPECT_LT(gradient, bench.state->preparation.SeepageGradientLimit);
    EXPECT_NEAR(bench.state->preparation.SeepageEndElev(1), previous, 1e-9);
    EXPECT_NEAR(resultant(bench, 1).force, 0, 0.1);
    EXPECT_NEAR(resultant(bench, 1).moment, 0, 1.0);
}

TEST(CantileverSearch, AGradientAboveItsLimitIsCutAndTheSeepagesEndFollows) {
    // Light soil far below the wall sets the limit 72 / 64 - 1.
    Bench bench;
    Problem& problem = bench.problem = seepageWall();
    problem.WaterUnitWeight = 64;
    problem.SoilLayerCount(Left) = 2;
    problem.SoilBottomElev(Left, 1) = -60;
    problem.SoilSatWeight(Left, 2) = 72;
    problem.SoilMoistWeight(Left, 2) = 72;
    problem.SoilFriction(Left, 2) = 36;
    problem.SoilBottomElev(Left, 2) = NoLayerBottom;
    solve(bench);
    EXPECT_TRUE(bench.told().empty());
    EXPECT_GT(8 / (-12 - 2 * bench.state->solution.SolvedBottomElev(1)), 0.125);
    EXPECT_EQ(bench.state->preparation.SeepageGradientLimit, 0.125);
    EXPECT_EQ(bench.state->preparation.SeepageGradient(1), 0.125);
    EXPECT_EQ(bench.state->preparation.SeepageEndElev(1), (-12 - 8 / 0.125) / 2);
}

TEST(CantileverSearch, AnAnalysisTakesItsSeepageAsItStands) {
    Bench bench;
    bench.problem = seepageWall();
    computePressures(*bench.state);
    auto& net = bench.state->net;
    net.DrivingMoment += bench.state->grid.ElevGrid(net.NetZeroIndex) * net.DrivingForce;
    bench.problem.ProgramMode = Mode::Analysis;
    SolveCantileverBottom(*bench.state);
    EXPECT_FALSE(bench.state->failed());
    EXPECT_EQ(bench.state->preparation.SeepageGradient(1), 0.0001);
}

TEST(CantileverSearch, ABottomThatSeepageNeverSettlesIsMessageC) {
    Bench bench;
    Problem& problem = bench.problem = seepageWall();
    problem.WallTopElev = -18;
    problem.FSActive = 1.5;
    problem.FSPassive = 2;
    problem.SurfaceElev(Right, 1) = -18;
    problem.SoilSatWeight(Right, 1) = 120;
    problem.SoilMoistWeight(Right, 1) = 123;
    problem.SoilFriction(Right, 1) = 37;
    problem.SoilWallFriction(Right, 1) = 13;
    problem.SurfaceElev(Left, 1) = -24;
    problem.SoilDataKind(Left) = SoilData::Coefficients;
    problem.SoilLayerCount(Left) = 3;
    const double layers[3][5] = {{122, 120, 0.29, 5.4, -39},
                                 {115, 118, 0.23, 5.2, -47.5},
                                 {135, 98, 0.48, 2.0, NoLayerBottom}};
    for (int layer = 1; layer <= 3; ++layer) {
        problem.SoilSatWeight(Left, layer) = layers[layer - 1][0];
        problem.SoilMoistWeight(Left, layer) = layers[layer - 1][1];
        problem.SoilCoefActive(Left, layer) = layers[layer - 1][2];
        problem.SoilCoefPassive(Left, layer) = layers[layer - 1][3];
        problem.SoilBottomElev(Left, layer) = layers[layer - 1][4];
    }
    problem.WaterElev(Right) = -21;
    problem.WaterElev(Left) = -21.5;
    problem.SeepageElev = -26;
    problem.HLineCount = 1;
    problem.HLineElev(1) = -32.5;
    problem.HLineLoad(1) = -1900;
    problem.HDistCount = 2;
    problem.HDistElev(1) = -21;
    problem.HDistLoad(1) = 100;
    problem.HDistElev(2) = -22.5;
    problem.HDistLoad(2) = 450;
    solve(bench);
    EXPECT_TRUE(bench.state->failed());
    const double Zb = bench.state->solution.SolvedBottomElev(1);
    EXPECT_EQ(textsOf(bench),
              Texts{"DESIGN BOTTOM OF CANTILEVER WALL APPEARS TO BE\n"
                    "OSCILLATING ABOUT ELEVATION " +
                    formatNumber(Zb, "####0.00") + " (FT).\n\n     UNABLE TO CONTINUE."});
    // It is the seepage that swings: the present pass does solve the wall of the last gradient.
    const double previous = (-26 - 24 - 0.5 / bench.state->preparation.SeepageGradient(1)) / 2;
    EXPECT_GT(std::abs(Zb - previous), 0.1);
}

TEST(CantileverSearch, SeepageThatTurnsTheWallIsMessageD) {
    // Clay that stands by itself and a line load that pulls: what drives the wall at first is
    // water, and seepage takes it away.
    Bench bench;
    Problem& problem = bench.problem = seepageWall();
    problem.FSPassive = 1.75;
    problem.WallTopElev = 50;
    problem.SurfaceElev(Right, 1) = 50;
    problem.SurfaceElev(Left, 1) = 40;
    problem.SoilSatWeight(Right, 1) = 133;
    problem.SoilMoistWeight(Right, 1) = 119;
    problem.SoilFriction(Right, 1) = 0;
    problem.SoilCohesion(Right, 1) = 1050;
    problem.SoilSatWeight(Left, 1) = 131;
    problem.SoilMoistWeight(Left, 1) = 98;
    problem.SoilFriction(Left, 1) = 30;
    problem.SoilWallFriction(Left, 1) = 1;
    problem.WaterElev(Right) = 50;
    problem.WaterElev(Left) = 45.5;
    problem.SeepageElev = 49.5;
    problem.HLineCount = 1;
    problem.HLineElev(1) = 50;
    problem.HLineLoad(1) = -900;
    solve(bench);
    EXPECT_TRUE(bench.state->failed());
    EXPECT_EQ(textsOf(bench), Texts{"CONDITIONS ENCOUNTERED WHERE IMPENDING ROTATION OF\n"
                                    "CANTILEVER WALL IS CLOCKWISE.  OR DRIVING FORCES OF THE\n"
                                    "RETAINED SOIL ABOVE THE LEFT SIDE SURFACE ARE ZERO.\n\n"
                                    "     UNABLE TO CONTINUE."});
}

TEST(CantileverSearch, AFaultOfASeepagePassEndsTheSearchWithItsOwnBox) {
    // The first bottom of a short wall asks for more than the limit, 80 / 64 - 1, and with that
    // soil of 80 PCF weighs nothing.
    Bench bench;
    bench.problem = seepageWall();
    bench.problem.WaterUnitWeight = 64;
    bench.problem.SoilSatWeight(Left, 1) = 80;
    bench.problem.SoilFriction(Left, 1) = 0;
    bench.problem.SoilCohesion(Left, 1) = 1500;
    solve(bench);
    EXPECT_TRUE(bench.state->failed());
    EXPECT_EQ(textsOf(bench), Texts{"Seepage has resulted in negative or zero\n"
                                    "     effective unit weight of soil.\n\n"
                                    "UNABLE TO CONTINUE."});
}

TEST(CantileverSearch, AHeadThatHasGoneIsADivisionByZero) {
    // The first pass runs with a gradient of 0.0001; then the bottom of a wall without head gives
    // the gradient 0, which head over gradient cannot be divided by.
    Bench bench;
    bench.problem = seepageWall();
    bench.problem.WaterElev(Right) = bench.problem.WaterElev(Left);
    bench.problem.SeepageElev = -10;
    computePressures(*bench.state); // the road refuses such water at once
    EXPECT_EQ(errorOf([&] { SolveDesign(*bench.state, [](int) {}); }), 11);
}

} // namespace
} // namespace korvane::test
