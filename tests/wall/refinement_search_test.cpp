// The rule that ends a search between two grid points: secants, then halving.
#include "wall/refinement.h"

#include "support/pressure_bench.h"

#include <gtest/gtest.h>

#include <functional>

#include <cmath>
#include <limits>

namespace korvane::test {
namespace {

/// A segment from elevation 0 to -1 FT with pressures from 0 to -100 PSF, so that the share of the
/// way down is minus the elevation.
constexpr DiagramSegment segment{0, -1, 0, -100};

/// A balance over the share of the way down, and the shares that it was asked for.
struct Probe {
    std::function<double(double)> at;
    std::vector<double> shares;

    double balance(const DiagramPoint& point) {
        EXPECT_DOUBLE_EQ(point.pressure, 100 * point.elev);
        shares.push_back(-point.elev);
        return at(-point.elev);
    }
};

std::optional<DiagramPoint> refine(Probe& probe, double held, double tolerance = 0.1) {
    return refineInSegment({segment, held, probe.at(1), tolerance},
                           [&](const DiagramPoint& point) { return probe.balance(point); });
}

TEST(Refinement, OneSecantFindsTheZeroOfALine) {
    Probe probe{[](double x) { return 30 - 100 * x; }, {}};
    const auto point = refine(probe, 30);
    ASSERT_TRUE(point);
    EXPECT_NEAR(point->elev, -0.3, 1e-12);
    EXPECT_NEAR(point->pressure, -30, 1e-10);
    EXPECT_EQ(probe.shares.size(), 1U);
}

TEST(Refinement, EverySecantHoldsTheUpperEnd) {
    // With 100 held at the top, the secant through (0, 100) and (1, -300) meets zero at 1/4, the
    // one through (0, 100) and (1/4, 31.25) at 1/4 x 100 / 68.75 = 4/11.
    Probe probe{[](double x) { return x == 1 ? -300.0 : x == 0.25 ? 31.25 : 0.0; }, {}};
    const auto point = refine(probe, 100);
    ASSERT_TRUE(point);
    ASSERT_EQ(probe.shares.size(), 2U);
    EXPECT_DOUBLE_EQ(probe.shares[0], 0.25);
    EXPECT_NEAR(point->elev, -4.0 / 11, 1e-12);
}

TEST(Refinement, TheToleranceItselfIsMet) {
    Probe probe{[](double x) { return x == 1 ? -1.0 : 0.5; }, {}};
    EXPECT_TRUE(refine(probe, 1, 0.5));
    EXPECT_EQ(probe.shares.size(), 1U);
}

TEST(Refinement, HundredSlowSecantsAreFollowedByHalving) {
    // A steep fall from 1000 within the first hundredth, then a slow line with its zero at 0.515.
    // Near it a secant from the top shortens the error by 1 - 0.515 x 20 / 1000, 1 % each.
    Probe probe{[](double x) { return x < 0.01 ? 1000 - 98990 * x : 10.3 - 20 * x; }, {}};
    const auto point = refine(probe, 1000);
    ASSERT_TRUE(point);
    // Halving: 1/2, 3/4, 5/8, 9/16, 17/32 are too far away, 33/64 gives -0.0125.
    EXPECT_DOUBLE_EQ(point->elev, -33.0 / 64);
    ASSERT_EQ(probe.shares.size(), 100U + 2 + 6);
    EXPECT_EQ(probe.shares[100], 0);
    EXPECT_EQ(probe.shares[101], 1);
    EXPECT_EQ(probe.shares[102], 0.5);
    EXPECT_EQ(probe.shares.back(), -point->elev);
}

TEST(Refinement, AZeroDivisorGoesOnByHalving) {
    Probe probe{[](double x) { return 3 - 8 * x; }, {}};
    const auto point = refine(probe, -5); // the lower end's balance too: the secant is level
    ASSERT_TRUE(point);
    EXPECT_DOUBLE_EQ(point->elev, -0.375);
    EXPECT_EQ(probe.shares.size(), 2U + 3);
}

TEST(Refinement, ABalanceThatIsNotFiniteGoesOnByHalving) {
    // The first secant, from 1 at the top, asks for 1/9, where the balance has a pole.
    Probe probe{[](double x) {
                    return std::abs(x - 1.0 / 9) < 1e-12 ? std::numeric_limits<double>::infinity()
                                                         : 4 - 12 * x;
                },
                {}};
    const auto point = refine(probe, 1);
    ASSERT_TRUE(point);
    EXPECT_NEAR(point->elev, -1.0 / 3, 0.1 / 12);
    EXPECT_EQ(probe.shares[1], 0);
}

TEST(Refinement, AnEndOutsideTheSegmentIsNotTaken) {
    // Zeros at 1/2 and 2. With -1 held at the top the first secant goes to 2.
    Probe probe{[](double x) { return (x - 0.5) * (x - 2); }, {}};
    const auto point = refine(probe, -1, 1e-6);
    ASSERT_TRUE(point);
    EXPECT_DOUBLE_EQ(probe.shares[0], 2);
    EXPECT_DOUBLE_EQ(point->elev, -0.5);
}

TEST(Refinement, AnEndWithinABillionthOfAFootOutsideIsTaken) {
    for (const double beyond : {-0.9e-9, -1.1e-9}) {
        // One secant leads to the share `beyond`, above the upper end: held / (held + 1) = beyond.
        const double held = beyond / (1 - beyond);
        Probe probe{[](double x) { return x < 0.5 ? 0.05 : -1.0; }, {}};
        const auto point = refine(probe, held);
        ASSERT_TRUE(point);
        EXPECT_NEAR(probe.shares[0], beyond, 1e-15);
        EXPECT_EQ(-point->elev, beyond > -1e-9 ? probe.shares[0] : 0.25); // else by halving
    }
}

TEST(Refinement, EndsOfOneSignFindNothing) {
    Probe probe{[](double x) { return -5 - x; }, {}};
    EXPECT_FALSE(refine(probe, 0));
    EXPECT_EQ(probe.shares.size(), 102U); // a held balance of 0 never leaves the upper end
}

TEST(Refinement, ABalanceOfZeroAtAnEndCountsAsPositiveAndIsNoResult) {
    Probe atUpper{[](double x) { return x == 0 ? 0.0 : -1.0; }, {}};
    EXPECT_FALSE(refine(atUpper, -1));
    EXPECT_EQ(atUpper.shares.size(), 2U + 200); // ends of two signs: halved to the last

    Probe atLower{[](double x) { return x == 1 ? 0.0 : 1.0; }, {}};
    EXPECT_FALSE(refine(atLower, 0));
    EXPECT_EQ(atLower.shares.size(), 2U); // ends of one sign
}

TEST(Refinement, AJumpEndsAfterTwoHundredHalvings) {
    // Secants from 700 at the top ask for 7/16 and, from there, for 7/16 x 7/16; that is above the
    // jump, with the balance held, so that the next one is level.
    Probe probe{[](double x) { return x < 0.3 ? 700.0 : -900.0; }, {}};
    EXPECT_FALSE(refine(probe, 700));
    EXPECT_EQ(probe.shares.size(), 2U + 2 + 200);
    EXPECT_NEAR(probe.shares.back(), 0.3, 1e-15);
}

TEST(Refinement, HalvingWithoutABalanceIsARunTimeError) {
    Probe noNumber{[](double x) { return x == 1 ? -1.0 : std::nan(""); }, {}};
    EXPECT_EQ(errorOf([&] { refine(noNumber, 1); }), 11);
    Probe infinite{[](double x) { return x == 1 ? -1.0 : HUGE_VAL; }, {}};
    EXPECT_EQ(errorOf([&] { refine(infinite, 1); }), 6);
}

TEST(Refinement, ASegmentWithoutLengthIsADivisionByZero) {
    const DiagramSegment point{-3, -3, 5, 7};
    const auto balance = [](const DiagramPoint& at) { return at.pressure; };
    EXPECT_EQ(errorOf([&] { refineInSegment({point, 5, -7, 0.1}, balance); }), 11);
}

} // namespace
} // namespace korvane::test
