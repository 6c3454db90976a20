#include "pressures/surcharge_pressures.h"
#include "support/pressure_bench.h"

#include <cmath>
#include <random>

namespace korvane::test {
namespace {

double rankineKa(double degrees) {
    return std::pow(std::tan((45 - degrees / 2) * DegreesToRadians), 2);
}

/// Wall top and right ground at 0, left ground at -10; dry sand of 120 PCF and 30 degrees.
class CoefficientPressuresTest : public testing::Test {
  protected:
    void setSoil(int side, int layer, double weight, double friction, double cohesion = 0) {
        problem.SoilSatWeight(side, layer) = problem.SoilMoistWeight(side, layer) = weight;
        problem.SoilFriction(side, layer) = friction;
        problem.SoilCohesion(side, layer) = cohesion;
    }
    void setWater(double right, double left) {
        problem.WaterDataKind = WaterData::Elevations;
        problem.WaterUnitWeight = 62.4;
        problem.WaterElev(Right) = right;
        problem.WaterElev(Left) = left;
    }
    void setSeepage(double elevation, double gradient) {
        problem.SeepageKind = Seepage::Given;
        problem.SeepageElev = elevation;
        problem.SeepageGradient.fill(gradient);
    }
    /// Both values of a row. Pressures of some thousand PSF, exact but for rounding.
    void expectActive(int side, double elevation, double expected, double tolerance = 1e-8) {
        EXPECT_NEAR(bench.active(side, elevation, 1), expected, tolerance) << elevation;
        EXPECT_NEAR(bench.active(side, elevation, 2), expected, tolerance) << elevation;
    }
    void expectPassive(int side, double elevation, double expected, double tolerance = 1e-8) {
        EXPECT_NEAR(bench.passive(side, elevation, 1), expected, tolerance) << elevation;
        EXPECT_NEAR(bench.passive(side, elevation, 2), expected, tolerance) << elevation;
    }
    /// Force of active pressure (LB) from the top down to an elevation.
    double activeForce(int side, double bottom) {
        double force = 0;
        for (int i = 2; i <= bench.row(bottom); ++i) {
            force +=
                (bench.elevation(i - 1) - bench.elevation(i)) / 2 *
                (pressures.ActivePressures(side, i - 1, 1) + pressures.ActivePressures(side, i, 2));
        }
        return force;
    }

    PressureBench bench;
    State& state = *bench.state;
    Problem& problem = bench.problem;
    Pressures& pressures = state.pressures;
};

TEST_F(CoefficientPressuresTest, WithoutCohesionAndWallFrictionTheyAreRankinesStraightLines) {
    bench.solve();
    for (const double elevation : {-1.0, -7.0, -10.0, -33.0, -60.0, -50060.0}) {
        expectActive(Right, elevation, -40 * elevation, 1e-9 * -elevation * 40);
        expectPassive(Right, elevation, -360 * elevation, 1e-9 * -elevation * 360);
    }
    expectActive(Left, -13, 40 * 3);
    expectPassive(Left, -13, 360 * 3);
    for (const double elevation : {0.0, -5.0, -9.0, -10.0}) {
        expectActive(Left, elevation, 0);
        expectPassive(Left, elevation, 0);
    }
    EXPECT_TRUE(bench.told().empty());
}

TEST_F(CoefficientPressuresTest, InTheLastRowOnlyTheValueAboveHasTheSoilDiagram) {
    bench.solve();
    const int last = state.grid.NumElevs;
    EXPECT_NEAR(pressures.ActivePressures(Right, last, 2), 40 * 100060.0, 1e-3);
    EXPECT_EQ(pressures.ActivePressures(Right, last, 1), 0);
    EXPECT_EQ(pressures.PassivePressures(Right, last, 1), 0);
}

// California Trenching and Shoring Manual, Example 7-2: 4 FT of 130 PCF and 37 degrees; below 30
// degrees, 102.4 PCF, 6 FT moist, then 20 FT submerged (40 PCF effective).
TEST_F(CoefficientPressuresTest, LayeredSoilAgreesWithAPublishedExample) {
    problem.SurfaceElev(Left, 1) = -30;
    setLayerBottoms(problem, Right, {-4});
    setSoil(Right, 1, 130, 37);
    setSoil(Right, 2, 102.4, 30);
    setSoil(Left, 1, 102.4, 30);
    setWater(-10, -30);
    bench.solve();
    EXPECT_NEAR(bench.active(Right, -4, 2), 129.26, 0.006); // two places
    EXPECT_NEAR(bench.active(Right, -4, 1), 173.33, 0.006);
    expectActive(Right, -10, 378.13, 0.006);
    expectActive(Right, -30, 644.80, 0.006);
    EXPECT_NEAR(bench.water(-30, 1), 1248, 1e-9);
}

// Das, Example 7.2: 19.685 FT of 110.77 PCF, 26 degrees, cohesion 299.9 PSF.
TEST_F(CoefficientPressuresTest, ClayWithFrictionAgreesWithAPublishedExample) {
    problem.SurfaceElev(Left, 1) = -19.685;
    setSoil(Right, 1, 110.77, 26, 299.9);
    bench.solve();
    const int crack = bench.row(-9) - 1; // the new row between -8 and -9
    EXPECT_NEAR(bench.elevation(crack), -8.67, 0.006);
    expectActive(Right, -19.685, 476.6, 0.06);
    EXPECT_NEAR(activeForce(Right, -19.685), 2626, 1);
}

TEST_F(CoefficientPressuresTest, CohesionAtTheSurfaceGivesANewRowAtTheZeroAndNothingAboveIt) {
    setSoil(Right, 1, 120, 20, 300);
    bench.build();
    const int before = state.grid.NumElevs;
    bench.solve();
    // 120 z Ka = 2 x 300 sqrt(Ka)
    const double zero = 600 / (120 * std::sqrt(rankineKa(20)));
    EXPECT_EQ(state.grid.NumElevs, before + 1);
    expectActive(Right, -zero, 0);
    for (int i = 1; i <= bench.row(-zero); ++i) {
        EXPECT_EQ(pressures.ActivePressures(Right, i, 1), 0);
        EXPECT_EQ(pressures.ActivePressures(Right, i, 2), 0);
    }
    expectActive(Right, -9, (9 - zero) * 120 * rankineKa(20));
    // The passive diagram is straight through the new row.
    expectPassive(Right, -zero, 120 * zero / rankineKa(20) + 600 / std::sqrt(rankineKa(20)));
}

TEST_F(CoefficientPressuresTest, CohesionWithoutFrictionHasCoefficientsOfOne) {
    setSoil(Right, 1, 110, 0, 500);
    bench.solve();
    EXPECT_NEAR(bench.passive(Right, 0, 1), 1000, 1e-9);
    expectPassive(Right, -8, 110 * 8 + 1000);
    expectActive(Right, -12, 110 * 12 - 1000);
    expectActive(Right, -1000 / 110.0, 0);
}

TEST_F(CoefficientPressuresTest, WallFrictionTakesTheHorizontalShareOfTheInclinedPressure) {
    problem.SoilWallFriction(Right, 1) = 15;
    bench.solve();
    expectActive(Right, -10, .2911 * 1200, 0.06); // four places of the coefficients
    expectPassive(Right, -10, 4.8069 * 1200, 0.06);
}

TEST_F(CoefficientPressuresTest, GivenCoefficientsActAloneWithoutWallFrictionOrCohesion) {
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    problem.SoilCoefActive(Right, 1) = 0.3;
    problem.SoilCoefPassive(Right, 1) = 5;
    problem.SoilWallFriction(Right, 1) = 20;
    problem.SoilCohesion(Right, 1) = 700;
    bench.setFactors(2, 2);
    bench.build();
    ComputeCoefficientPressures(state, Right, 1);
    expectActive(Right, -10, 360);
    expectPassive(Right, -10, 6000);
}

TEST_F(CoefficientPressuresTest, UniformSurchargeStepsAtTheSurface) {
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 300;
    problem.VUniformLoad(Left) = 99; // stale: its count is 0
    bench.solve();
    EXPECT_NEAR(bench.active(Right, 0, 1), 100, 1e-9);
    EXPECT_EQ(bench.active(Right, 0, 2), 0);
    EXPECT_NEAR(bench.passive(Right, 0, 1), 900, 1e-9);
    EXPECT_EQ(bench.passive(Right, 0, 2), 0);
    expectActive(Right, -5, 40 * 5 + 100);
    EXPECT_EQ(bench.passive(Left, -10, 1), 0);
}

TEST_F(CoefficientPressuresTest, FactorsOfSafetyDivideStrengthsByLevelAndByKindOfPressure) {
    setSoil(Right, 1, 120, 30, 100);
    bench.setFactors(1.2, 1.5, 1);
    bench.setFactors(1.0, 2.0, 2);
    bench.build();
    const double tangent = std::tan(30 * DegreesToRadians);
    const auto developed = [&](double factor) {
        return rankineKa(std::atan(tangent / factor) / DegreesToRadians);
    };
    ComputeCoefficientPressures(state, Right, 1);
    expectActive(Right, -10, 1200 * developed(1.2) - 200 / 1.2 * std::sqrt(developed(1.2)));
    expectPassive(Right, -10, 1200 / developed(1.5) + 200 / 1.5 / std::sqrt(developed(1.5)));
    ComputeCoefficientPressures(state, Right, 2);
    expectActive(Right, -10, 1200.0 / 3 - 200 * std::sqrt(1.0 / 3));
    expectPassive(Right, -10, 1200 / developed(2) + 200 / 2.0 / std::sqrt(developed(2)));
}

// Seepage from -4 (water -2) down and up to -10, gradient 0.4, ends at -17. Effective weights of
// 125 PCF: 62.6 without seepage, 125 - 0.6 x 62.4 = 87.56 on the right, 125 - 1.4 x 62.4 = 37.64
// on the left.
TEST_F(CoefficientPressuresTest, SeepageMakesTheRightSoilHeavierAndTheLeftOneLighter) {
    for (const int side : {Right, Left}) {
        problem.SoilMoistWeight(side, 1) = 110;
        problem.SoilSatWeight(side, 1) = 125;
    }
    setWater(-2, -10);
    setSeepage(-4, 0.4);
    bench.solve();
    expectActive(Right, -2, 220 / 3.0);
    expectActive(Right, -4, (220 + 2 * 62.6) / 3);
    expectActive(Right, -9, (345.2 + 5 * 87.56) / 3);
    expectActive(Right, -17, (345.2 + 13 * 87.56) / 3);
    expectActive(Right, -20, (345.2 + 13 * 87.56 + 3 * 62.6) / 3);
    expectPassive(Left, -12, 2 * 37.64 * 3);
    expectPassive(Left, -17, 7 * 37.64 * 3);
    expectPassive(Left, -20, (7 * 37.64 + 3 * 62.6) * 3);
}

TEST_F(CoefficientPressuresTest, NetPressureTablesLeaveTheMoistWeight) {
    problem.SoilSatWeight(Right, 1) = 999;
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterUnitWeight = 62.4; // stale
    problem.WaterElev(Right) = -1;  // stale
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -2;
    problem.WaterPressElev(2) = -20;
    bench.solve();
    expectActive(Right, -10, 400);
}

TEST_F(CoefficientPressuresTest, AWaterTableAtALayerBottomIsOneBreak) {
    setLayerBottoms(problem, Right, {-4});
    setSoil(Right, 2, 130, 35);
    setWater(-4, -10);
    bench.setFactors(1, 1);
    bench.build();
    const auto breaks = ComputeBreakPressures(state, Right, 1);
    ASSERT_TRUE(breaks);
    ASSERT_EQ(breaks->NumBreakPoints, 3);
    EXPECT_EQ(breaks->BreakElev(1), 0);
    EXPECT_EQ(breaks->BreakElev(2), -4);
    EXPECT_EQ(breaks->BreakElev(3), state.grid.ElevGrid(state.grid.NumElevs));
    EXPECT_NEAR(breaks->BreakActive(2, 2), 160, 1e-9);
    EXPECT_NEAR(breaks->BreakActive(2, 1), 480 * rankineKa(35), 1e-9);
    EXPECT_EQ(breaks->BreakActive(3, 1), 0); // nothing below the last one
}

TEST_F(CoefficientPressuresTest, ABreakJustAboveALayerBottomIsThatBottom) {
    setLayerBottoms(problem, Right, {-4});
    setSoil(Right, 2, 120, 35);
    setWater(-3.99995, -10);
    bench.setFactors(1, 1);
    bench.build();
    auto breaks = ComputeBreakPressures(state, Right, 1);
    ASSERT_TRUE(breaks);
    EXPECT_NEAR(breaks->BreakActive(2, 1), 120 * 3.99995 * rankineKa(35), 1e-9);
    problem.WaterElev(Right) = -3.9998; // too far away
    breaks = ComputeBreakPressures(state, Right, 1);
    EXPECT_NEAR(breaks->BreakActive(2, 1), 120 * 3.9998 / 3, 1e-9);
}

// Soil of 120 PCF with .3 down to -10 and .5 below, and a row of the other side's layers shortly
// above -10: nearer than a ten thousandth of the 10 FT it is the break itself, with both values.
TEST_F(CoefficientPressuresTest, ARowNearerToABreakThanATenThousandthOfItsIntervalIsThatBreak) {
    for (const double gap : {0.0005, 0.005}) {
        SCOPED_TRACE(gap);
        PressureBench wall;
        wall.problem.SoilDataKind(Right) = SoilData::Coefficients;
        setLayerBottoms(wall.problem, Right, {-10});
        wall.problem.SoilCoefActive(Right, 1) = 0.3;
        wall.problem.SoilCoefActive(Right, 2) = 0.5;
        setLayerBottoms(wall.problem, Left, {-10 + gap});
        wall.solve();
        const bool isBreak = gap < 0.001;
        const double above = 0.3 * 120 * (10 - gap);
        EXPECT_NEAR(wall.active(Right, -10 + gap, 2), above, 1e-9);
        EXPECT_NEAR(wall.active(Right, -10 + gap, 1), isBreak ? 600 : above, 1e-9);
        EXPECT_NEAR(wall.active(Right, -10, 2), isBreak ? 600 : 360, 1e-9);
        EXPECT_NEAR(wall.active(Right, -10, 1), 600, 1e-9);
    }
}

TEST_F(CoefficientPressuresTest, WaterAboveTheGroundIsNoBreakAndSubmergesAllSoil) {
    problem.SurfaceElev(Right, 1) = -5;
    setWater(-2, -10);
    bench.solve();
    expectActive(Right, -8, 3 * 57.6 / 3);
}

TEST_F(CoefficientPressuresTest, SurfaceAboveTheWallTopStartsTheDiagramAtItsOwnRow) {
    problem.SurfaceElev(Right, 1) = 3;
    bench.solve();
    EXPECT_EQ(bench.elevation(1), 3);
    expectActive(Right, 0, 120);
    expectActive(Right, -5, 320);
}

TEST_F(CoefficientPressuresTest, SurchargesCountBeforeTensionIsCut) {
    setSoil(Right, 1, 120, 0, 300);
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 1;
    problem.VStripEnd(Right, 1) = 12;
    problem.VStripLoad(Right, 1) = 1500;
    bench.build();
    ComputeSurchargePressures(state, Right);
    const double surcharge = bench.surcharge(Right, -3);
    ASSERT_GT(surcharge, 300); // the soil alone would pull with 3 x 120 - 600 = -240
    bench.solve();
    expectActive(Right, -3, surcharge - 240);
    expectPassive(Right, -3, surcharge + 360 + 600);
    // Near the surface tension wins and is cut.
    EXPECT_EQ(bench.active(Right, 0, 1), 0);
    EXPECT_EQ(bench.active(Right, 0, 2), 0);
}

// Clay between sands: a jump down to tension at -4 needs no row, the way back up to zero does.
TEST_F(CoefficientPressuresTest, TensionBetweenLayersIsCutAndTheZeroBelowItGetsARow) {
    setLayerBottoms(problem, Right, {-4, -8});
    setSoil(Right, 2, 120, 0, 400); // zero where 120 z = 800, at -6.667
    bench.build();
    const int before = state.grid.NumElevs;
    bench.solve();
    EXPECT_EQ(state.grid.NumElevs, before + 1);
    EXPECT_NEAR(bench.active(Right, -4, 2), 160, 1e-9);
    EXPECT_EQ(bench.active(Right, -4, 1), 0);
    expectActive(Right, -5, 0);
    expectActive(Right, -20 / 3.0, 0);
    expectActive(Right, -7, 40);
    EXPECT_NEAR(bench.active(Right, -8, 2), 160, 1e-9);
    EXPECT_NEAR(bench.active(Right, -8, 1), 320, 1e-9);
}

// Light clay under a strip: the soil gives z - 60, the strip's pressure rises from 0 and falls
// again, so that their sum comes down through zero.
TEST_F(CoefficientPressuresTest, AFallThroughZeroIsCutBelowItsNewRow) {
    setSoil(Right, 1, 1, 0, 30);
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 0.5;
    problem.VStripEnd(Right, 1) = 6;
    problem.VStripLoad(Right, 1) = 400;
    bench.solve();
    int crossings = 0;
    for (int i = 2; i < bench.row(-59); ++i) {
        const double above = pressures.ActivePressures(Right, i - 1, 1);
        const double here = pressures.ActivePressures(Right, i, 2);
        const double below = pressures.ActivePressures(Right, i + 1, 2);
        if (above > 0 && here == 0 && below == 0) {
            ++crossings;
            EXPECT_NE(bench.elevation(i), std::round(bench.elevation(i))); // a row of its own
        }
    }
    EXPECT_EQ(crossings, 1);
}

TEST_F(CoefficientPressuresTest, ActiveNoiseIsClearedAndPassiveValuesStay) {
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    problem.SoilCoefActive(Right, 1) = problem.SoilCoefPassive(Right, 1) = 1e-7;
    bench.solve();
    expectActive(Right, -8, 0); // 9.6E-5
    expectActive(Right, -9, 1.08e-4, 1e-12);
    expectPassive(Right, -8, 9.6e-5, 1e-12);
}

TEST_F(CoefficientPressuresTest, EachCallRebuildsItsSideFromNothing) {
    bench.solve();
    const auto first = pressures.ActivePressures;
    pressures.ActiveMark(Right, 7) = pressures.PassiveMark(Right, 8) = true;
    for (int i = 1; i <= 301; ++i) {
        pressures.ActivePressures(Right, i, 1) = pressures.ActivePressures(Right, i, 2) = 77;
    }
    ComputeCoefficientPressures(state, Right, 1);
    EXPECT_EQ(pressures.ActivePressures, first);
    EXPECT_FALSE(pressures.ActiveMark(Right, 7));
    EXPECT_FALSE(pressures.PassiveMark(Right, 8));
}

// Left clay: 120 z = 1000 at 8.333 FT below -10.
TEST_F(CoefficientPressuresTest, ARowOfTheLeftSideCarriesTheRightSideAndWaterAlong) {
    setSoil(Left, 1, 120, 0, 500);
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -2;
    problem.WaterPressure(1) = 0;
    problem.WaterPressElev(2) = -40;
    problem.WaterPressure(2) = 380;
    bench.solve();
    const double zero = -10 - 25 / 3.0;
    expectActive(Left, zero, 0);
    expectPassive(Left, zero, 120 * 25 / 3.0 + 1000);
    expectActive(Right, zero, -40 * zero);
    expectPassive(Right, zero, -360 * zero);
    EXPECT_NEAR(bench.water(zero, 1), 10 * (-2 - zero), 1e-9);
    EXPECT_NEAR(bench.water(zero, 2), 10 * (-2 - zero), 1e-9);
    // Rows below moved with their values.
    expectActive(Right, -30, 1200);
    EXPECT_NEAR(bench.water(-30, 1), 280, 1e-9);
}

TEST_F(CoefficientPressuresTest, DevelopedFrictionAboveFortyFiveDegreesFails) {
    setSoil(Right, 1, 120, 40);
    problem.SoilWallFriction(Right, 1) = 40;
    bench.setFactors(1, 0.7);
    bench.build();
    ComputeCoefficientPressures(state, Right, 1);
    EXPECT_TRUE(state.failed());
    ASSERT_EQ(bench.told().size(), 1u);
    EXPECT_EQ(bench.told()[0],
              (MessageBox{.text = "Calculated angle of internal friction is greater\n"
                                  "     45 degrees.  Unable to continue.",
                          .title = "KORVANE",
                          .buttons = Buttons::Ok,
                          .icon = Icon::Exclamation}));
}

TEST_F(CoefficientPressuresTest, FullWallFrictionAtFortyFiveDegreesIsASubscriptError) {
    setSoil(Right, 1, 120, 45);
    problem.SoilWallFriction(Right, 1) = 45;
    bench.setFactors(1, 1);
    bench.build();
    EXPECT_EQ(errorOf([&] { ComputeCoefficientPressures(state, Right, 1); }), 9);
}

TEST_F(CoefficientPressuresTest, AnEffectiveWeightOfZeroOrLessFails) {
    const MessageBox expected{.text = "Seepage has resulted in negative or zero\n"
                                      "     effective unit weight of soil.\n\n"
                                      "UNABLE TO CONTINUE.",
                              .title = "IMPROPER SOIL WEIGHT"};
    const auto expectFailure = [&](int side) {
        bench.setFactors(1, 1);
        bench.build();
        state.failure = {};
        bench.state->failure = {};
        ComputeCoefficientPressures(state, side, 1);
        EXPECT_TRUE(state.failed());
        EXPECT_EQ(bench.told(), std::vector<MessageBox>{expected});
    };
    // Upward flow: 110 - 1.8 x 62.4 = -2.3.
    problem.SoilSatWeight(Left, 1) = 110;
    setWater(-2, -10);
    setSeepage(-4, 0.8);
    expectFailure(Left);
    // Exactly zero, without seepage.
    problem.SeepageKind = Seepage::None;
    problem.SoilSatWeight(Left, 1) = 62.4;
    expectFailure(Left);
    // A moist weight of zero has the same message.
    problem.WaterDataKind = WaterData::None;
    problem.SoilMoistWeight(Right, 1) = 0;
    expectFailure(Right);
}

TEST_F(CoefficientPressuresTest, AFactorOfZeroIsADivisionByZeroAndANumberBeyondADoubleAnOverflow) {
    bench.setFactors(1, 0);
    bench.build();
    EXPECT_EQ(errorOf([&] { ComputeCoefficientPressures(state, Right, 1); }), 11);
    bench.setFactors(1, 1);
    problem.SoilMoistWeight(Right, 1) = 1e305;
    EXPECT_EQ(errorOf([&] { ComputeCoefficientPressures(state, Right, 1); }), 6);
}

// Ordinary random problems: the grid stays in order whatever rows are inserted, active pressure
// never pulls, and the rows that the left side inserts leave the right side's diagram as it was.
TEST_F(CoefficientPressuresTest, RandomProblemsEndOnOneGridForBothSides) {
    std::mt19937 random(41);
    const auto between = [&](double low, double high) {
        return std::round(std::uniform_real_distribution<>(low, high)(random) * 10) / 10;
    };
    int inserted = 0;
    for (int run = 0; run < 500; ++run) {
        problem = plainCantilever();
        for (const int side : {Right, Left}) {
            const double ground = problem.SurfaceElev(side, 1);
            setLayerBottoms(problem, side, {ground - between(1, 8), ground - between(9, 30)});
            for (int layer = 1; layer <= 3; ++layer) {
                setSoil(side, layer, between(115, 135), between(5, 40), between(0, 900));
                problem.SoilWallFriction(side, layer) =
                    problem.SoilFriction(side, layer) * between(0, 0.9);
            }
        }
        setWater(between(-8, 2), between(-14, -9));
        if (run % 2 == 0) {
            setSeepage(MinOf(problem.WaterElev(Right), -0.5), between(0.1, 0.4));
        }
        bench.setFactors(1, 1.5);
        bench.build();
        ComputeCoefficientPressures(state, Right, 1);
        ASSERT_FALSE(state.failed()) << "run " << run;
        const ElevationGrid rightGrid = state.grid;
        const Pressures right = pressures;
        ComputeCoefficientPressures(state, Left, 1);
        ASSERT_FALSE(state.failed()) << "run " << run;
        inserted += state.grid.NumElevs - rightGrid.NumElevs;

        for (int i = 2; i <= state.grid.NumElevs; ++i) {
            ASSERT_GT(bench.elevation(i - 1), bench.elevation(i)) << "run " << run;
        }
        for (const int side : {Right, Left}) {
            for (int i = 1; i <= state.grid.NumElevs; ++i) {
                ASSERT_GE(pressures.ActivePressures(side, i, 1), 0);
                ASSERT_GE(pressures.ActivePressures(side, i, 2), 0);
            }
        }
        for (int i = 1, j = 1; i <= rightGrid.NumElevs; ++i, ++j) {
            while (bench.elevation(j) != rightGrid.ElevGrid(i)) {
                ++j; // a row of the left side
            }
            for (const int k : {1, 2}) {
                ASSERT_EQ(pressures.ActivePressures(Right, j, k),
                          right.ActivePressures(Right, i, k));
                ASSERT_EQ(pressures.PassivePressures(Right, j, k),
                          right.PassivePressures(Right, i, k));
                ASSERT_EQ(pressures.WaterPressures(j, k), right.WaterPressures(i, k));
            }
        }
    }
    EXPECT_GT(inserted, 100);
}

} // namespace
} // namespace korvane::test
