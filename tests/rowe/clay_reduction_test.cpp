#include "rowe/clay_reduction.h"

#include "neville.h"
#include "support/result_bench.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace korvane::test {
namespace {

const double stabilityPoints[] = {0.5, 0.75, 1.0, 1.25, 1.5, 2.0};
const double groupPoints[] = {-3.1, -2.6, -2.0};
const double alphaRows[] = {0.8, 0.7, 0.6};

// Rowe's curves for clay as read off: [x][ALPHA][S].
const double clay[3][3][6] = {{{0.906, 0.789, 0.75, 0.728, 0.711, 0.689},
                               {0.778, 0.711, 0.678, 0.656, 0.639, 0.622},
                               {0.678, 0.628, 0.611, 0.6, 0.589, 0.561}},
                              {{0.922, 0.811, 0.711, 0.6, 0.589, 0.55},
                               {0.678, 0.578, 0.544, 0.522, 0.506, 0.489},
                               {0.589, 0.533, 0.506, 0.489, 0.472, 0.467}},
                              {{0.894, 0.778, 0.678, 0.589, 0.539, 0.489},
                               {0.683, 0.556, 0.5, 0.472, 0.45, 0.45},
                               {0.506, 0.461, 0.45, 0.444, 0.433, 0.433}}};

/// A row's value at S by the rules of its group, from the polynomial through the six points.
double rowValue(int group, int a, double S) {
    const double* T = clay[group][a];
    if (S >= 2) {
        return T[5];
    }
    if (S >= 1.5) {
        return group == 2 && a > 0 ? T[5] : neville({1.5, 2.0}, {T[4], T[5]}, S);
    }
    if (group == 1 && a == 0) {
        return neville({1.25, 2.0}, {T[0], T[3]}, S);
    }
    // The weight of the point 1.5 has (S - 1.75) in place of (S - .75): as if that point's value
    // were larger by the ratio of the two.
    const double T5 = T[4] * (S - 1.75) / (S - 0.75);
    return neville({0.5, 0.75, 1.0, 1.25, 1.5, 2.0}, {T[0], T[1], T[2], T[3], T5, T[5]}, S);
}

// At a table point in x and ALPHA one row alone counts; the middle row and the middle group have
// the wrong sign, so that the value is negative where one of them is met.
double sign(int group, int a) {
    return (group == 1 ? -1 : 1) * (a == 1 ? -1 : 1);
}

TEST(ClayReduction, CoefficientsAtTheStabilityPointsOfTheTable) {
    for (int group = 0; group < 3; ++group) {
        for (int a = 0; a < 3; ++a) {
            for (const int s : {0, 2, 3, 4, 5}) {
                const double S = stabilityPoints[s];
                double expected = clay[group][a][s];
                if (group == 1 && a == 0 && S < 1.5) {
                    // (S - 1.25) .6 + (2 - S) .922, over .75: 1.244, 1.02933, .922.
                    expected = s == 0 ? 1.244 : s == 2 ? 0.772 / 0.75 : 0.922;
                }
                if (group == 2 && a > 0 && S >= 1.5) {
                    expected = clay[group][a][5];
                }
                EXPECT_NEAR(clayCoefficient(S, alphaRows[a], groupPoints[group]),
                            sign(group, a) * expected, 1e-12)
                    << group << a << s;
            }
        }
    }
}

// At S = .75 the point 1.5 counts too: its weight is 2560 / 120 x (.25)(-1)(-.25)(-.5)(-1.25) =
// 2560 / 120 x .0390625 = .83333, subtracted. Group 1, ALPHA .8: .789 - .83333 x .711 = .1965.
TEST(ClayReduction, AtSeventyFiveHundredthsThePointOneAndAHalfStillCounts) {
    EXPECT_NEAR(clayCoefficient(0.75, 0.8, -3.1), 0.1965, 1e-12);
    EXPECT_NEAR(clayCoefficient(0.75, 0.6, -3.1), 0.628 - 0.589 / 1.2, 1e-12);
    EXPECT_NEAR(clayCoefficient(0.75, 0.6, -2.0), 0.461 - 0.433 / 1.2, 1e-12);
}

TEST(ClayReduction, AtAlphaSeventyAGroupIsMinusItsMiddleRow) {
    EXPECT_NEAR(clayCoefficient(2.0, 0.7, -3.1), -0.622, 1e-12);
    EXPECT_NEAR(clayCoefficient(2.0, 0.7, -2.0), -0.45, 1e-12);
}

TEST(ClayReduction, AtTheMiddleGroupTheSignTurnsAndCancelsOnlyAtAlphaSeventy) {
    EXPECT_NEAR(clayCoefficient(2.0, 0.8, -2.6), -0.55, 1e-12);
    EXPECT_NEAR(clayCoefficient(2.0, 0.6, -2.6), -0.467, 1e-12);
    EXPECT_NEAR(clayCoefficient(2.0, 0.7, -2.6), 0.489, 1e-12);
}

TEST(ClayReduction, StraightLinesBetweenOneAndAHalfAndTwo) {
    // Halfway: group 1 ALPHA .8 (.711 + .689) / 2; group 3 ALPHA .8 (.539 + .489) / 2.
    EXPECT_NEAR(clayCoefficient(1.75, 0.8, -3.1), 0.7, 1e-12);
    EXPECT_NEAR(clayCoefficient(1.75, 0.8, -2.0), 0.514, 1e-12);
    // Group 3's other rows stand at the value of S = 2.
    EXPECT_NEAR(clayCoefficient(1.6, 0.6, -2.0), 0.433, 1e-12);
}

TEST(ClayReduction, AboveTwoTheLastColumnStands) {
    EXPECT_EQ(clayCoefficient(2.5, 0.75, -2.3), clayCoefficient(2.0, 0.75, -2.3));
}

TEST(ClayReduction, AnywhereAgreesWithPolynomialsByNevillesScheme) {
    std::mt19937 random(6201);
    std::uniform_real_distribution<double> anyS(0.5, 2.5);
    std::uniform_real_distribution<double> anyAlpha(0.6, 0.8);
    std::uniform_real_distribution<double> anyX(-3.1, -2.0);
    for (int k = 0; k < 500; ++k) {
        const double S = anyS(random);
        const double alpha = anyAlpha(random);
        const double x = anyX(random);
        double G[3];
        for (int group = 0; group < 3; ++group) {
            G[group] = neville(
                {0.8, 0.7, 0.6},
                {rowValue(group, 0, S), -rowValue(group, 1, S), rowValue(group, 2, S)}, alpha);
        }
        EXPECT_NEAR(clayCoefficient(S, alpha, x),
                    neville({-3.1, -2.6, -2.0}, {G[0], -G[1], G[2]}, x), 1e-10);
    }
}

TEST(ClayReduction, BothEndsOfTheRangeAreInRange) {
    EXPECT_TRUE(inClayRange(-3.1));
    EXPECT_TRUE(inClayRange(-2.0));
    EXPECT_FALSE(inClayRange(-3.1000001));
    EXPECT_FALSE(inClayRange(-1.9999999));
}

/// Right surface at 20, left at 0, wall bottom at -10. Right: 110 PCF moist and 125 saturated down
/// to 10, below 115 and 120. Left: clay of 600 PSF.
struct ClayBench : ResultBench {
    ClayBench() {
        results.levelCount = 2;
        setElevations(results.levels(2).solved.grid, {25, 20, 15, 10, 5, 0, -5, -10, -20, -100000});
        problem.SurfaceElev(Right, 1) = 20;
        problem.SoilLayerCount(Right) = 2;
        problem.SoilMoistWeight(Right, 1) = 110;
        problem.SoilSatWeight(Right, 1) = 125;
        problem.SoilBottomElev(Right, 1) = 10;
        problem.SoilMoistWeight(Right, 2) = 115;
        problem.SoilSatWeight(Right, 2) = 120;
        problem.SoilBottomElev(Right, 2) = NoLayerBottom;
        problem.SurfaceElev(Left, 1) = 0;
        problem.SoilLayerCount(Left) = 1;
        problem.SoilCohesion(Left, 1) = 600;
        problem.SoilBottomElev(Left, 1) = NoLayerBottom;
        for (int layer = 1; layer <= 11; ++layer) {
            freeEarth().layers(Left, layer).fsPassive = 1;
        }
        freeEarth().bottomElev = -10;
    }
    LevelResult& freeEarth() { return results.levels(1); }
    void water(double elevation) {
        problem.WaterDataKind = WaterData::Elevations;
        problem.WaterUnitWeight = 62.5;
        problem.WaterElev(Right) = elevation;
    }
    double S() const { return stabilityNumber(problem, results); }
    int error() const {
        try {
            stabilityNumber(problem, results);
        } catch (const RuntimeError& fault) {
            return fault.number();
        }
        return 0;
    }
};

// 10 FT of 110 PCF and 10 FT of 115: 2,250 PSF.
TEST(StabilityNumber, DrySoilOfTwoLayers) {
    EXPECT_NEAR(ClayBench().S(), 600.0 / 2250, 1e-15);
}

TEST(StabilityNumber, AUniformSurchargeAdds) {
    ClayBench bench;
    bench.problem.VUniformLoad(Right) = 250;
    EXPECT_NEAR(bench.S(), 600.0 / 2250, 1e-15); // not in use
    bench.problem.VUniformCount(Right) = 1;
    EXPECT_NEAR(bench.S(), 600.0 / 2500, 1e-15);
}

// Water at 5: 1,100 + 575 + 5 x (120 - 62.5) = 1,962.5 PSF. At 15: 550 + 5 x 62.5 + 10 x 57.5.
TEST(StabilityNumber, BelowTheWaterTheSubmergedWeightCounts) {
    ClayBench bench;
    bench.water(5);
    EXPECT_NEAR(bench.S(), 600 / 1962.5, 1e-15);
    bench.water(15);
    EXPECT_NEAR(bench.S(), 600 / 1437.5, 1e-15);
}

TEST(StabilityNumber, NetWaterPressuresLeaveTheMoistWeight) {
    ClayBench bench;
    bench.water(5);
    bench.problem.WaterDataKind = WaterData::Pressures;
    EXPECT_NEAR(bench.S(), 600.0 / 2250, 1e-15);
}

// Water at 15, seepage from 10 down to 0 with a gradient of .2: below 10 the water carries
// .8 x 62.5 = 50 PCF: 550 + 312.5 + 10 x 70 = 1,562.5 PSF. Ending at 5, only the piece from 10 to
// 5 counts: 550 + 312.5 + 350 + 287.5 = 1,500; the point at 5 itself is no longer in it.
TEST(StabilityNumber, SeepageMakesTheSoilHeavier) {
    for (const Seepage kind : {Seepage::Automatic, Seepage::Given}) {
        ClayBench bench;
        bench.water(15);
        bench.problem.SeepageKind = kind;
        bench.problem.SeepageElev = 10;
        bench.freeEarth().seepageGradient = 0.2;
        bench.results.levels(2).seepageGradient = 9;
        bench.problem.SeepageGradient.fill(9); // as given; the level's own counts
        bench.freeEarth().seepageEndElev = -8;
        EXPECT_NEAR(bench.S(), 600 / 1562.5, 1e-15);
        bench.freeEarth().seepageEndElev = 5;
        EXPECT_NEAR(bench.S(), 600.0 / 1500, 1e-15);
    }
}

// Left surface at 2, between the points 5 and 0: 1,100 + 575 + 3 x 115.
TEST(StabilityNumber, TheLastPieceEndsAtTheLeftSurface) {
    ClayBench bench;
    bench.problem.SurfaceElev(Left, 1) = 2;
    EXPECT_NEAR(bench.S(), 600.0 / 2020, 1e-15);
}

// Factor 1.5: c = 400; adhesion 300 without a factor: sqrt(1 + .75).
TEST(StabilityNumber, OneLayerTakesItsFactorAndAdhesion) {
    ClayBench bench;
    bench.freeEarth().layers(Left, 1).fsPassive = 1.5;
    bench.problem.SoilAdhesion(Left, 1) = 300;
    EXPECT_NEAR(bench.S(), 400.0 / 2250 * std::sqrt(1.75), 1e-15);
}

// 4 FT of 600 / 1.5 = 400, 3 FT of 900 / 3 = 300 and 3 FT of 1,000 PSF down to the bottom at -10:
// c = (1,600 + 900 + 3,000) / 10 = 550; a = (4 x 110 + 3 x 220) / 10 = 110: sqrt(1.2).
TEST(StabilityNumber, SeveralLayersAreAveragedOverTheEmbeddedDepth) {
    ClayBench bench;
    Problem& problem = bench.problem;
    problem.SoilLayerCount(Left) = 4;
    const double bottoms[] = {-4, -7, -15, NoLayerBottom};
    const double cohesions[] = {600, 900, 1000, 77777};
    const double adhesions[] = {110, 220, 0, 77777};
    const double factors[] = {1.5, 3, 1, 1};
    for (int layer = 1; layer <= 4; ++layer) {
        problem.SoilBottomElev(Left, layer) = bottoms[layer - 1];
        problem.SoilCohesion(Left, layer) = cohesions[layer - 1];
        problem.SoilAdhesion(Left, layer) = adhesions[layer - 1];
        bench.freeEarth().layers(Left, layer).fsPassive = factors[layer - 1];
    }
    EXPECT_NEAR(bench.S(), 550.0 / 2250 * std::sqrt(1.2), 1e-14);
}

TEST(StabilityNumber, ZeroOverburdenIsADivisionByZero) {
    ClayBench bench;
    bench.problem.SurfaceElev(Right, 1) = 0;
    EXPECT_EQ(bench.error(), 11);
}

TEST(StabilityNumber, ZeroCohesionIsADivisionByZero) {
    ClayBench bench;
    bench.problem.SoilCohesion(Left, 1) = 0;
    EXPECT_EQ(bench.error(), 11);
}

TEST(StabilityNumber, ALeftSurfaceBelowTheGridIsASubscriptError) {
    ClayBench bench;
    bench.problem.SurfaceElev(Left, 1) = -200000;
    EXPECT_EQ(bench.error(), 9);
}

} // namespace
} // namespace korvane::test
