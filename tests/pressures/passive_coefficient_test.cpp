// The coefficients alone; angles in degrees here.
#include "pressures/passive_tables.h"
#include "support/pressure_bench.h"

#include <cmath>

namespace korvane::test {
namespace {

double Ka(double friction, double wallFriction) {
    return coulombActive(friction * DegreesToRadians, wallFriction * DegreesToRadians);
}
std::optional<double> Kp(double friction, double wallFriction) {
    return passiveCoefficient(friction * DegreesToRadians, wallFriction * DegreesToRadians);
}
/// Coulomb's passive coefficient in Mueller-Breslau's form for a vertical wall, level ground.
double coulombPassive(double friction, double wallFriction) {
    const double p = friction * DegreesToRadians;
    const double d = wallFriction * DegreesToRadians;
    const double root = std::sqrt(std::cos(d)) - std::sqrt(std::sin(p + d) * std::sin(p));
    return std::cos(p) * std::cos(p) / (root * root);
}

TEST(CoulombTest, ActiveCoefficientsAgreeWithPublishedOnes) {
    struct Row {
        double friction, wallFriction, expected;
    };
    for (const auto& [friction, wallFriction, expected] :
         {Row{28, 0, .3610}, Row{30, 5, .3189}, Row{32, 10, .2853}, Row{30, 15, .3014},
          Row{35, 17.5, .2461}, Row{40, 20, .1994}, Row{20, 10, .4467}}) {
        EXPECT_NEAR(Ka(friction, wallFriction), expected, 0.00006) << friction; // four places
    }
    EXPECT_NEAR(Ka(30, 15) * std::cos(15 * DegreesToRadians), .2911, 0.00006);
}

TEST(CoulombTest, PassiveCoefficientsAgreeWithPublishedOnes) {
    EXPECT_NEAR(*Kp(26, 0), 2.561, 0.0006); // three places
    EXPECT_NEAR(*Kp(30, 15), 4.9765, 0.00006);
    EXPECT_NEAR(*Kp(35, 17.5), 7.3567, 0.00006);
    EXPECT_NEAR(*Kp(40, 20), 11.7715, 0.00006);
    EXPECT_NEAR(*Kp(20, 10), 2.6354, 0.00006);
    EXPECT_NEAR(*Kp(30, 15) * std::cos(15 * DegreesToRadians), 4.8069, 0.00006);
}

TEST(CoulombTest, WithoutWallFrictionTheyAreRankines) {
    for (double friction = 0; friction <= 45; friction += 2.5) {
        const double tangent = std::tan((45 - friction / 2) * DegreesToRadians);
        EXPECT_NEAR(Ka(friction, 0), tangent * tangent, 1e-14);
        EXPECT_NEAR(*Kp(friction, 0), 1 / (tangent * tangent), 1e-13);
    }
}

TEST(CoulombTest, WithoutFrictionBothAreOne) {
    EXPECT_DOUBLE_EQ(Ka(0, 0), 1);
    EXPECT_DOUBLE_EQ(*Kp(0, 0), 1);
}

// The angles as they come from strengths over a factor of 1, with the noise of tangent and
// arctangent.
TEST(PassiveTableTest, WallFrictionOfHalfTheSoilFrictionAlwaysTakesCoulombsFormula) {
    const auto developed = [](double degrees) {
        return std::atan(std::tan(degrees * DegreesToRadians));
    };
    for (int tenths = 10; tenths <= 450; ++tenths) {
        const double friction = tenths / 10.0;
        const auto value = passiveCoefficient(developed(friction), developed(friction / 2));
        const double expected = coulombPassive(friction, friction / 2);
        ASSERT_TRUE(value);
        EXPECT_NEAR(*value, expected, 1e-12 * expected) << friction;
    }
    // Just beyond it the table stands, which gives 0.746 x 6.48 = 4.834 at 30 degrees.
    EXPECT_NEAR(*Kp(30, 15.0001), 0.746 * 6.48, 0.0001);
}

TEST(PassiveTableTest, FullWallFrictionTakesTheTableUnreduced) {
    EXPECT_NEAR(*Kp(30, 30), 6.48, 1e-12);
    EXPECT_NEAR(*Kp(31, 31), (6.48 + 7.73) / 2, 1e-12);
    EXPECT_NEAR(*Kp(6, 6), 1.33, 1e-12);
    EXPECT_NEAR(*Kp(7, 7), 1.41, 1e-12);
    EXPECT_NEAR(*Kp(44, 44), 28.84, 1e-11);
    EXPECT_NEAR(*Kp(44.25, 44.25), 0.75 * 28.84 + 0.25 * 33.0, 1e-11);
    // Between Caquot and Kerisel's 6.30 and a log-spiral formula's 6.63; Coulomb gives 10.10.
    EXPECT_NEAR(*Kp(30, 30), 6.30, 0.03 * 6.30);
    EXPECT_NEAR(*Kp(30, 30), 6.63, 0.03 * 6.63);
    EXPECT_NEAR(coulombPassive(30, 30), 10.10, 0.006);
}

TEST(PassiveTableTest, BelowSixDegreesAStraightLineFromOne) {
    EXPECT_NEAR(*Kp(3, 3), 1 + 0.33 / 2, 1e-12);
    EXPECT_NEAR(*Kp(1e-4, 1e-4), 1, 1e-5);
}

TEST(PassiveTableTest, ReductionIsLinearInTheRatioOfFrictions) {
    // At 30 degrees, ratio 0.8 between 0.878 at 0.7 and 1 at 1.
    EXPECT_NEAR(*Kp(30, 24), (0.1 * 1 + 0.2 * 0.878) / 0.3 * 6.48, 1e-9);
    // Ratio 0.55 between 0.746 and 0.811, ratio 0.65 between 0.811 and 0.878.
    EXPECT_NEAR(*Kp(30, 16.5), (0.746 + 0.811) / 2 * 6.48, 1e-9);
    EXPECT_NEAR(*Kp(30, 19.5), (0.811 + 0.878) / 2 * 6.48, 1e-9);
}

// 28 degrees, ratio 0.65: (0.86 + 0.912) / 2 = 0.886 at 25 and 0.8445 at 30 degrees, so
// (3 x 0.8445 + 2 x 0.886) / 5 = 0.8611 times 5.52.
TEST(PassiveTableTest, ReductionIsLinearBetweenColumns) {
    EXPECT_NEAR(*Kp(28, 18.2), 0.8611 * 5.52, 1e-9);
}

// Below 10 degrees: at 5 degrees and ratio 0.85 (0.978 + 1) / 2 = 0.989, halfway to 1: 0.9945;
// full friction 1 + 5 / 6 x 0.33 = 1.275.
TEST(PassiveTableTest, ReductionRunsToOneAtNoFriction) {
    EXPECT_NEAR(*Kp(5, 4.25), 0.9945 * 1.275, 1e-9);
}

// 14.6 degrees is taken as 15: columns 15 and 20, (-0.4 x 0.92 + 5.4 x 0.9475) / 5 = 0.9497; the
// table gives 2.09 + 0.3 x 0.25 = 2.165. Columns 10 and 15 would give 0.9493.
TEST(PassiveTableTest, ColumnsFollowFromTheRoundedFriction) {
    EXPECT_NEAR(*Kp(14.6, 14.6 * 0.65), 0.9497 * 2.165, 1e-9);
    // 14.4 degrees is taken as 14: columns 10 and 15, (4.4 x 0.9475 + 0.6 x 0.97) / 5 = 0.9502;
    // 2.09 + 0.2 x 0.25 = 2.14.
    EXPECT_NEAR(*Kp(14.4, 14.4 * 0.65), 0.9502 * 2.14, 1e-9);
}

TEST(PassiveTableTest, FrictionTakenAsFortyFiveAsksForAColumnThatDoesNotExist) {
    for (const double friction : {44.6, 44.9, 45.0}) {
        EXPECT_EQ(errorOf([&] { Kp(friction, friction); }), 9) << friction;
    }
    EXPECT_NEAR(*Kp(44.4, 44.4), 0.6 * 28.84 + 0.4 * 33.0, 1e-11);
}

TEST(PassiveTableTest, FrictionAboveFortyFiveHasNoValue) {
    EXPECT_EQ(Kp(45.001, 40), std::nullopt);
    EXPECT_NE(Kp(45.001, 20), std::nullopt); // Coulomb's formula needs no table
}

TEST(PassiveTableTest, IsKnownToHaveAValueOrNone) {
    for (double friction = 43; friction < 46; friction += 0.1) {
        for (const double share : {0.4, 0.5, 0.51, 1.0}) {
            bool has = false;
            errorOf([&] { has = Kp(friction, share * friction).has_value(); });
            EXPECT_EQ(hasPassiveCoefficient(friction * DegreesToRadians,
                                            share * friction * DegreesToRadians),
                      has)
                << friction << ' ' << share;
        }
    }
}

TEST(PassiveTableTest, CoefficientsRiseWithFrictionAndWithWallFriction) {
    for (double friction = 5; friction <= 44; friction += 0.5) {
        EXPECT_LT(*Kp(friction, friction), *Kp(friction + 0.4, friction + 0.4));
        EXPECT_LT(*Kp(friction, 0.55 * friction), *Kp(friction, 0.65 * friction));
        EXPECT_LT(*Kp(friction, 0.65 * friction), *Kp(friction, 0.95 * friction));
    }
}

} // namespace
} // namespace korvane::test
