#include "plots/scales.h"

#include "drawing.h"
#include "runtime/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

namespace korvane::test {

namespace {

struct Rounding {
    double value;
    double rounded;
};

/// Names the case in the list of tests.
void PrintTo(const Rounding& one, std::ostream* out) {
    *out << one.value;
}

class RoundUpScaleRule : public testing::TestWithParam<Rounding> {};

TEST_P(RoundUpScaleRule, RaisesToOneSignificantDigit) {
    // 1E-12: the powers of ten below 1 are no exact doubles.
    const double rounded = GetParam().rounded;
    EXPECT_NEAR(RoundUpScale(GetParam().value), rounded, 1e-12 * rounded);
}

INSTANTIATE_TEST_SUITE_P(Values, RoundUpScaleRule,
                         testing::Values(Rounding{3450, 4000}, Rounding{3000, 3000},
                                         Rounding{1000, 1000}, Rounding{9.5, 10}, Rounding{1, 1},
                                         // truncation toward zero: exponents 0 and -1
                                         Rounding{0.5, 1}, Rounding{0.05, 0.1},
                                         // exponent 0 as well: every value below 1 down to 0.1
                                         Rounding{0.11, 1}, Rounding{0.9, 1},
                                         // (1000.5 + 999) / 1000 truncates to 1
                                         Rounding{1000.5, 1000}, Rounding{1001, 2000},
                                         Rounding{2.5e9, 3e9}, Rounding{7.2e-5, 1e-4}));

TEST(RoundUpScale, NothingAboveZeroGivesZero) {
    EXPECT_EQ(RoundUpScale(0), 0);
    EXPECT_EQ(RoundUpScale(-5), 0);
    EXPECT_EQ(RoundUpScale(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(RoundUpScale, StaysADoubleAtTheEndOfTheRange) {
    const double rounded = RoundUpScale(1.7e308); // two at this power of ten is no double
    EXPECT_EQ(rounded, 1.7e308);
    EXPECT_TRUE(std::isfinite(RoundUpScale(std::numeric_limits<double>::denorm_min())));
}

TEST(RoundUpScale, RoundingTwiceChangesNothing) {
    for (const double value : {3450.0, 0.05, 9.5, 1000.5, 7.2e-5, 0.3, 8.8e12}) {
        const double once = RoundUpScale(value);
        EXPECT_EQ(formatNumber(RoundUpScale(once), "0.00E+00"), formatNumber(once, "0.00E+00"));
    }
}

TEST(RoundedRange, KeepsLargestAndSizeOfSmallest) {
    const Range range = roundedRange({3450, -750});
    EXPECT_EQ(range.largest, 4000);
    EXPECT_EQ(range.smallest, 800);
}

TEST(RoundedRange, LargestOfFiveHundredThousandthsCountsAsZero) {
    const Range range = roundedRange({0.00005, -0.00005});
    EXPECT_EQ(range.largest, 0);
    EXPECT_EQ(range.smallest, 0);
}

TEST(RoundedRange, ThresholdItselfCountsAsZero) {
    const Range range = roundedRange({0.0001, 0.00011});
    EXPECT_EQ(range.largest, 0);
    EXPECT_NEAR(range.smallest, 0.001, 1e-15); // exponent -3: (0.00011 + 0.000999) / 0.001 gives 1
}

TEST(RoundedRange, SmallestAboveZeroCountsByItsSize) {
    EXPECT_EQ(roundedRange({900, 42}).smallest, 50);
}

struct PressureScales : testing::Test, SmallWall {
    /// Of level 1.
    PlotScales solved() {
        PlotScales scales;
        prepareSolvedPressureScales(shownPressures(results, 1), gridRows(level1()), scales);
        return scales;
    }
};

/// Down to the wall's bottom.
struct WaterScales : testing::Test, SmallWall {
    PlotScales prepared() const {
        PlotScales scales;
        prepareWaterScales(problem, shownPressures(results, 1), -20, scales);
        return scales;
    }
};

struct InitialPressureScales : PressureScales {
    Pressures& initial = results.review.diagrams.pressures;

    PlotScales prepared() const {
        PlotScales scales;
        prepareInitialPressureScales(shownPressures(results.review), -20, scales);
        return scales;
    }
};

TEST_F(PressureScales, TakeTheLargestOfBothSidesDownToTheBottomRow) {
    const PlotScales scales = solved();
    EXPECT_EQ(scales.ActiveScale, 400);  // 380 on the right side at -20
    EXPECT_EQ(scales.PassiveScale, 800); // 780 on the left side at -20
}

TEST_F(PressureScales, StartFromTheRightSidesValueBelowTheFirstRow) {
    pressures().ActivePressures(Right, 1, 2) = 9000; // above the wall top: not looked at
    pressures().ActivePressures(Right, 1, 1) = 520;
    pressures().PassivePressures(Right, 1, 2) = 9000;
    pressures().PassivePressures(Right, 1, 1) = 1150;
    const PlotScales scales = solved();
    EXPECT_EQ(scales.ActiveScale, 600);
    EXPECT_EQ(scales.PassiveScale, 2000);
}

TEST_F(PressureScales, TheValueBelowTheBottomRowIsNotLookedAt) {
    diagrams().RowCount = 3; // rows down to -10
    pressures().ActivePressures(Right, 3, 2) = 250;
    pressures().ActivePressures(Right, 3, 1) = 9000;
    const PlotScales scales = solved();
    EXPECT_EQ(scales.ActiveScale, 300);
    EXPECT_EQ(scales.PassiveScale, 600);
}

TEST_F(PressureScales, RowCountBeyondTheGridStopsAtTheGrid) {
    diagrams().RowCount = 7; // second rows of jumps count too
    pressures().PassivePressures(Left, 5, 2) = 880;
    pressures().PassivePressures(Left, 5, 1) = 5000; // below the last row
    pressures().PassivePressures(Left, 6, 2) = 6000; // beyond the grid
    const PlotScales scales = solved();
    EXPECT_EQ(scales.PassiveScale, 900);
    EXPECT_EQ(gridRows(level1()), 5);
}

TEST_F(PressureScales, ActiveScaleBelowTheThresholdIsZeroButPassiveScaleIsRounded) {
    pressures().ActivePressures.fill(0.00005);
    pressures().PassivePressures.fill(0.00005);
    const PlotScales scales = solved();
    EXPECT_EQ(scales.ActiveScale, 0);
    EXPECT_NEAR(scales.PassiveScale, 0.0001, 1e-16); // exponent -4
}

TEST_F(PressureScales, PassiveScaleOfZeroStaysZero) {
    pressures().PassivePressures.fill(0);
    const PlotScales scales = solved();
    EXPECT_EQ(scales.PassiveScale, 0);
}

TEST_F(WaterScales, StopAboveTheValueBelowTheBottom) {
    water()(4, 1) = -5000; // below the wall bottom
    const PlotScales scales = prepared();
    EXPECT_EQ(scales.WaterScaleMax, 300);
    EXPECT_EQ(scales.WaterScaleMin, 0);
    EXPECT_TRUE(scales.hasWater());
}

TEST_F(WaterScales, LargestAndSmallestCountByTheirSizes) {
    water().fill(-420); // both are -420
    const PlotScales scales = prepared();
    EXPECT_EQ(scales.WaterScaleMax, 500);
    EXPECT_EQ(scales.WaterScaleMin, 500);
}

TEST_F(WaterScales, StartFromTheValueBelowTheFirstRow) {
    water()(1, 2) = -9000; // above the wall top: not looked at
    water()(1, 1) = -640;
    EXPECT_EQ(prepared().WaterScaleMin, 700);
    water()(1, 2) = 9000;
    water()(1, 1) = 820;
    EXPECT_EQ(prepared().WaterScaleMax, 900);
}

TEST_F(WaterScales, NoWaterDataOrNoPressureGiveNoScale) {
    problem.WaterDataKind = WaterData::None;
    EXPECT_FALSE(prepared().hasWater());
    problem.WaterDataKind = WaterData::Pressures;
    water().fill(0.00009);
    EXPECT_FALSE(prepared().hasWater());
}

TEST_F(InitialPressureScales, StopOnlyBelowTheBottomElevation) {
    auto& passive = initial.PassivePressures;
    passive(Left, 4, 1) = 1900; // just below -20: the row lies at the bottom and does not stop
    passive(Left, 5, 2) = 2400; // just above -30, the first row below the bottom
    passive(Left, 5, 1) = 9000;
    const PlotScales scales = prepared();
    EXPECT_EQ(scales.PassiveScale, 3000);
}

TEST_F(InitialPressureScales, StartFromBothSides) {
    initial.ActivePressures(Left, 1, 1) = 620; // k = 1 of the first row
    EXPECT_EQ(prepared().ActiveScale, 700);
    pressures().ActivePressures(Left, 1, 1) = 620;
    EXPECT_EQ(solved().ActiveScale, 400); // starts from the right side alone
}

TEST(ValueAxis, ZeroLiesWhereTheScalesMeet) {
    const ValueAxis moment{4000, 800, false};
    EXPECT_DOUBLE_EQ(moment.zero(), 3120); // 800 / 4800 x 5760 + 2160
    const ValueAxis deflection{3e9, 1e9, true};
    EXPECT_DOUBLE_EQ(deflection.zero(), 6480); // 3 / 4 x 5760 + 2160
    EXPECT_DOUBLE_EQ(deflection.x(3e9), 2160);
}

TEST(ValueAxis, ZeroOfAnEmptyScaleLiesAtTheLeftEdgeAndOfDeflectionsAtTheRight) {
    EXPECT_EQ((ValueAxis{0, 0, false}.zero()), 2160);
    EXPECT_EQ((ValueAxis{0, 0, true}.zero()), 7920);
    EXPECT_FALSE((ValueAxis{0, 0, true}.drawable()));
}

TEST(ElevationAxis, InsideIsStrict) {
    const ElevationAxis axis{10, -10};
    EXPECT_TRUE(axis.inside(0));
    EXPECT_FALSE(axis.inside(10));
    EXPECT_FALSE(axis.inside(-10));
    EXPECT_DOUBLE_EQ(axis.y(0), 3168);
    EXPECT_FALSE((ElevationAxis{5, 5}.drawable()));
}

} // namespace

} // namespace korvane::test
