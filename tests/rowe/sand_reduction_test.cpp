#include "rowe/sand_reduction.h"

#include "neville.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

const std::vector<double> points = {-3.5, -3.0, -2.5, -2.0, -1.5};

// Rowe's curves for sand as read off, rows ALPHA 0.6, 0.7, 0.8.
const std::vector<double> loose[] = {{0.894, 0.55, 0.344, 0.261, 0.261},
                                     {1.006, 0.611, 0.383, 0.283, 0.283},
                                     {1.089, 0.656, 0.433, 0.344, 0.344}};
const std::vector<double> dense[] = {{0.5, 0.372, 0.283, 0.217, 0.144},
                                     {0.561, 0.422, 0.328, 0.256, 0.183},
                                     {0.633, 0.478, 0.372, 0.294, 0.217}};

TEST(SandReduction, CurvesAtTheTablesOwnPoints) {
    for (int row = 0; row < 3; ++row) {
        const Array<double, 2, 5> curve = sandCurve((row + 6) / 10.0);
        for (int q = 0; q < 5; ++q) {
            const auto point = static_cast<std::size_t>(q);
            EXPECT_NEAR(curve(1, q + 1), loose[row][point], 1e-14);
            EXPECT_NEAR(curve(2, q + 1), dense[row][point], 1e-14);
            EXPECT_NEAR(looseCoefficient(curve, points[point]), loose[row][point], 1e-14);
            EXPECT_NEAR(denseCoefficient(curve, points[point]), dense[row][point], 1e-14);
        }
    }
}

TEST(SandReduction, AlphaSeventyGivesTheSecondRow) {
    const Array<double, 2, 5> curve = sandCurve(0.7);
    EXPECT_NEAR(curve(1, 1), 1.006, 1e-14);
    EXPECT_NEAR(curve(2, 5), 0.183, 1e-14);
}

// A quarter and three quarters of the way: .894 + .25 x .112 = .922; .433 of row 3 and .383 of row
// 2 at -2.5 give .383 + .75 x .05 = .4205; dense at -1.5 .183 + .75 x .034 = .2085.
TEST(SandReduction, CurvesAreStraightInAlphaBetweenTheRows) {
    EXPECT_NEAR(sandCurve(0.625)(1, 1), 0.922, 1e-14);
    EXPECT_NEAR(sandCurve(0.775)(1, 3), 0.4205, 1e-14);
    EXPECT_NEAR(sandCurve(0.775)(2, 5), 0.2085, 1e-14);
}

TEST(SandReduction, LooseIsTheCubicToMinusTwoAndFlatFromThere) {
    const std::vector<double> cubic(points.begin(), points.end() - 1);
    const Array<double, 2, 5> curve = sandCurve(0.6);
    const std::vector<double> values(loose[0].begin(), loose[0].end() - 1);
    for (double x = -3.45; x < -2.0; x += 0.1) {
        EXPECT_NEAR(looseCoefficient(curve, x), neville(cubic, values, x), 1e-13) << x;
    }
    EXPECT_EQ(looseCoefficient(curve, -1.99), curve(1, 4));
    EXPECT_EQ(looseCoefficient(curve, -1.5), curve(1, 4));
}

TEST(SandReduction, DenseIsTheQuarticThroughAllFivePoints) {
    const Array<double, 2, 5> curve = sandCurve(0.8);
    for (double x = -3.45; x < -1.5; x += 0.1) {
        EXPECT_NEAR(denseCoefficient(curve, x), neville(points, dense[2], x), 1e-13) << x;
    }
}

TEST(SandReduction, BothEndsOfTheRangeAreInRange) {
    EXPECT_TRUE(inSandRange(-3.5));
    EXPECT_TRUE(inSandRange(-1.5));
    EXPECT_FALSE(inSandRange(-3.5000001));
    EXPECT_FALSE(inSandRange(-1.4999999));
}

} // namespace
} // namespace korvane::test
