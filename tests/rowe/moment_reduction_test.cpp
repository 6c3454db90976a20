#include "rowe/moment_reduction.h"

#include "support/reduction_bench.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

// Which soil

TEST(RoweSoilTest, FrictionAloneIsSand) {
    ReductionBench bench = sandBench();
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweSoilType, RoweSoil::Sand);
    EXPECT_TRUE(bench.soil().has_value());
    EXPECT_EQ(bench.reduction.soil, RoweSoil::Sand);
}

TEST(RoweSoilTest, CohesionAloneIsClay) {
    ReductionBench bench = clayBench();
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweSoilType, RoweSoil::Clay);
    EXPECT_TRUE(bench.soil().has_value());
    EXPECT_EQ(bench.reduction.soil, RoweSoil::Clay);
}

TEST(RoweSoilTest, BothInTheFirstLayerEndWithoutSectionsAndReport) {
    ReductionBench bench = sandBench();
    bench.problem.SoilCohesion(Left, 1) = 1;
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweSoilType, RoweSoil::None);
    EXPECT_FALSE(bench.soil().has_value());
    EXPECT_EQ(bench.reduction.soil, RoweSoil::None); // nothing to report
}

TEST(RoweSoilTest, NeitherInTheFirstLayerShowsTheSectionsAndReportsNothing) {
    ReductionBench bench = sandBench();
    bench.problem.SoilFriction(Left, 1) = 0;
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweSoilType, RoweSoil::None);
    EXPECT_TRUE(bench.soil().has_value());
    EXPECT_EQ(bench.reduction.soil, RoweSoil::None); // nothing to report
    EXPECT_EQ(bench.reduction.RoweAlpha, 0.8);       // worked out all the same
}

TEST(RoweSoilTest, CoefficientsOnTheLeftSideShowTheSectionsAndReportNothing) {
    ReductionBench bench = sandBench();
    bench.problem.SoilDataKind(Left) = SoilData::Coefficients;
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweSoilType, RoweSoil::None);
    EXPECT_TRUE(bench.soil().has_value());
    EXPECT_EQ(bench.reduction.soil, RoweSoil::None); // nothing to report
}

TEST(RoweSoilTest, TheRightSideDoesNotCount) {
    ReductionBench bench = sandBench();
    bench.problem.SoilCohesion(Right, 1) = 500;
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweSoilType, RoweSoil::Sand);
}

// The wall ends at 0. A second layer counts where the first ends above that, and the layer in which
// the wall ends counts itself.
TEST(RoweSoilTest, LayersCountDownToTheOneInWhichTheWallEnds) {
    for (const double firstBottom : {1.0, 0.0, -1.0}) {
        for (const bool sand : {true, false}) {
            ReductionBench bench = sand ? sandBench() : clayBench();
            Problem& problem = bench.problem;
            problem.SoilLayerCount(Left) = 3;
            problem.SoilBottomElev(Left, 1) = firstBottom;
            problem.SoilBottomElev(Left, 2) = -5;
            problem.SoilBottomElev(Left, 3) = NoLayerBottom;
            problem.SoilFriction(Left, 2) = 20;
            problem.SoilCohesion(Left, 2) = 500;
            problem.SoilFriction(Left, 3) = 20;
            problem.SoilCohesion(Left, 3) = 500;
            bench.reduce();
            const bool reached = firstBottom > 0;
            EXPECT_EQ(bench.reduction.RoweSoilType, reached ? RoweSoil::None
                                                    : sand  ? RoweSoil::Sand
                                                            : RoweSoil::Clay);
            EXPECT_EQ(bench.soil().has_value(), !reached);
        }
    }
}

// Numbers of the sections

// H = 10, E = 1E6 PSI: I = 10 gives log10(1E4 / 1E7) = -3. 12 IN^3 x 24,000 PSI over
// 12 x 24,000 LB-FT is 1.
TEST(MomentReduction, FlexibilityNumberAndMomentRatio) {
    ReductionBench bench = sandBench();
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweHeight, 10);
    EXPECT_EQ(bench.reduction.RoweAlpha, 0.8);
    EXPECT_EQ(bench.reduction.RoweBeta, 0.2);
    EXPECT_NEAR(bench.reduction.PileLogRigidity(1), -3, 1e-14);
    EXPECT_EQ(bench.reduction.PileMomentRatio(1), 1);
    EXPECT_NEAR(bench.reduction.PileLogRigidity(2), -2, 1e-14);
    EXPECT_EQ(bench.reduction.PileMomentRatio(2), 0.5);
}

TEST(MomentReduction, TheSignOfTheFreeEarthMomentDoesNotCount) {
    ReductionBench bench = sandBench();
    bench.freeEarth().diagrams.MaxMoment.value = 24000;
    bench.reduce();
    EXPECT_EQ(bench.reduction.PileMomentRatio(1), 1);
}

// Das, Principles of Foundation Engineering, Example 9.5: H 25.92 FT, E 30.02E6 PSI, I 3.229 and
// 4.123 IN^4: -2.33 and -2.44 to 0.01.
TEST(MomentReduction, FlexibilityNumbersOfAPublishedExample) {
    ReductionBench bench = sandBench();
    bench.freeEarth().bottomElev = 10 - 25.92;
    for (const int p : {1, 2}) {
        bench.sections.PileModulus(p) = 30.02e6;
        bench.sections.PileSectionData(p, 2) = p == 1 ? 3.229 : 4.123;
    }
    bench.reduce();
    EXPECT_NEAR(bench.reduction.PileLogRigidity(1), -2.33, 0.01);
    EXPECT_NEAR(bench.reduction.PileLogRigidity(2), -2.44, 0.01);
}

TEST(MomentReduction, SandGivesALooseAndADenseCoefficient) {
    ReductionBench bench = sandBench();
    bench.reduce();
    const MomentReduction& outcome = bench.reduction;
    EXPECT_EQ(outcome.soil, RoweSoil::Sand);
    EXPECT_TRUE(outcome.applicable);
    EXPECT_TRUE(outcome.broken.empty());
    EXPECT_TRUE(outcome.inRange(1));
    EXPECT_NEAR(outcome.coefficient(1, 1), 0.656, 1e-13);
    EXPECT_NEAR(outcome.coefficient(1, 2), 0.478, 1e-13);
    EXPECT_NEAR(outcome.reducedRatio(1, 1), 1 / 0.656, 1e-12);
    EXPECT_NEAR(outcome.reducedRatio(1, 2), 1 / 0.478, 1e-12);
    EXPECT_NEAR(bench.reduction.RoweSandCurve(1, 2), 0.656, 1e-14); // kept for the plot
}

TEST(MomentReduction, ClayGivesOneCoefficient) {
    ReductionBench bench = clayBench();
    bench.reduce();
    const MomentReduction& outcome = bench.reduction;
    EXPECT_EQ(outcome.soil, RoweSoil::Clay);
    EXPECT_EQ(bench.reduction.RoweStability, 2);
    EXPECT_NEAR(outcome.coefficient(2, 1), 0.489, 1e-12);
    EXPECT_NEAR(outcome.reducedRatio(2, 1), 0.5 / 0.489, 1e-12);
}

TEST(MomentReduction, ACoefficientAboveOneIsReportedAsComputed) {
    // Loose sand at ALPHA .8 and x = -3.5 is 1.089; I x E = 1E4 x 10^3.5.
    ReductionBench bench = sandBench();
    bench.sections.PileSectionData(1, 2) = 31.6;
    bench.reduce();
    EXPECT_GT(bench.reduction.coefficient(1, 1), 1.08);
    EXPECT_LT(bench.reduction.reducedRatio(1, 1), 0.93);
}

TEST(MomentReduction, ASectionOutOfRangeKeepsItsRatio) {
    ReductionBench bench = sandBench();
    bench.sections.PileSectionData(1, 2) = 1000; // x = -5
    bench.reduce();
    const MomentReduction& outcome = bench.reduction;
    EXPECT_TRUE(outcome.applicable);
    EXPECT_FALSE(outcome.inRange(1));
    EXPECT_TRUE(outcome.inRange(2));
    EXPECT_EQ(outcome.reducedRatio(1, 1), 1);
    EXPECT_TRUE(outcome.sandOutOfRange);
    EXPECT_TRUE(outcome.broken.empty());
}

// Faults

void expectFault(ReductionBench& bench, int number) {
    try {
        bench.reduce();
        ADD_FAILURE() << "no fault";
    } catch (const RuntimeError& fault) {
        EXPECT_EQ(fault.number(), number);
    }
    EXPECT_EQ(bench.reduction.soil, RoweSoil::None);
}

TEST(MomentReduction, ZeroOverburdenIsADivisionByZero) {
    ReductionBench bench = clayBench();
    bench.problem.SurfaceElev(Right, 1) = 2; // level with the left surface
    expectFault(bench, 11);
}

TEST(MomentReduction, ZeroFreeEarthMomentIsADivisionByZero) {
    ReductionBench bench = sandBench();
    bench.freeEarth().diagrams.MaxMoment.value = 0;
    expectFault(bench, 11);
}

TEST(MomentReduction, AModulusOfZeroOrBelowIsAFault) {
    ReductionBench zero = sandBench();
    zero.sections.PileModulus(2) = 0;
    expectFault(zero, 11);
    ReductionBench negative = sandBench();
    negative.sections.PileModulus(2) = -1;
    expectFault(negative, 5);
}

TEST(MomentReduction, AWallWithoutHeightIsADivisionByZero) {
    ReductionBench bench = sandBench();
    bench.freeEarth().bottomElev = 10;
    expectFault(bench, 11);
}

// What stays

TEST(MomentReduction, AReductionThatDoesNotApplyLeavesType0) {
    ReductionBench bench = sandBench();
    bench.problem.AnchorElev = 0;
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweSoilType, RoweSoil::None);
    EXPECT_EQ(bench.reduction.soil, RoweSoil::Sand);
    EXPECT_FALSE(bench.reduction.applicable);
    EXPECT_EQ(bench.reduction.RoweSandCurve, (Array<double, 2, 5>{}));
    EXPECT_EQ(bench.reduction.reducedRatio(1, 1), 1);
}

TEST(MomentReduction, ASecondReductionStartsFromNothing) {
    ReductionBench bench = sandBench();
    bench.reduce();
    bench.problem.SoilCohesion(Left, 1) = 1;
    bench.reduce();
    EXPECT_EQ(bench.reduction.RoweSoilType, RoweSoil::None);
    EXPECT_EQ(bench.reduction.PileLogRigidity, (Array<double, 13>{}));
    EXPECT_EQ(bench.reduction.RoweSandCurve, (Array<double, 2, 5>{}));
    EXPECT_EQ(bench.reduction.soil, RoweSoil::None);
    EXPECT_EQ(bench.sections.PileSectionCount, 2); // the sections stay
}

} // namespace
} // namespace korvane::test
