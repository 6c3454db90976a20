// Places of labels.
#include "sheet/labels.h"
#include "sheet/svg.h"

#include <gtest/gtest.h>

namespace korvane::test {

using namespace sheet;
namespace {

TEST(Labels, StayWhereTheyWantToBeWhereTheyCan) {
    const auto middles = spreadSlots({{10, 10}, {30, 10}, {50, 12}}, 0, 100);
    EXPECT_EQ(middles, (std::vector<double>{10, 30, 50}));
}

TEST(Labels, ThatWantOnePlaceMoveApartEvenly) {
    const auto two = spreadSlots({{50, 10}, {50, 10}}, 0, 100);
    EXPECT_EQ(two, (std::vector<double>{45, 55}));
    // Least squares: the third pulls the other two down by a third of the overlap.
    const auto three = spreadSlots({{50, 10}, {50, 10}, {50, 10}}, 0, 100);
    EXPECT_EQ(three, (std::vector<double>{40, 50, 60}));
}

TEST(Labels, PushedTogetherPushOn) {
    // The first two move to 40 and 50; the third, free at 54, then has to give way too.
    const auto middles = spreadSlots({{45, 10}, {45, 10}, {54, 10}}, 0, 100);
    EXPECT_NEAR(middles[0], 38, 1e-9);
    EXPECT_NEAR(middles[1], 48, 1e-9);
    EXPECT_NEAR(middles[2], 58, 1e-9);
}

TEST(Labels, KeepWithinTheirLimitsWhileThereIsRoom) {
    EXPECT_EQ(spreadSlots({{1, 10}, {99, 10}}, 0, 100), (std::vector<double>{5, 95}));
    EXPECT_EQ(spreadSlots({{-500, 40}, {-400, 60}}, 0, 100), (std::vector<double>{20, 70}));
    // Without room they run on below.
    const auto middles = spreadSlots({{0, 60}, {0, 60}}, 0, 100);
    EXPECT_EQ(middles, (std::vector<double>{30, 90}));
}

TEST(Labels, KeepTheirOrderWhateverTheyWant) {
    const auto middles = spreadSlots({{80, 10}, {20, 10}}, 0, 100);
    EXPECT_EQ(middles, (std::vector<double>{45, 55}));
}

TEST(Labels, OverlapOnlyWhereTheyShareMoreThanAnEdge) {
    const LabelBox box{10, 10, 20, 10};
    EXPECT_TRUE(overlap(box, {29, 19, 5, 5}));
    EXPECT_FALSE(overlap(box, {30, 10, 5, 5}));
    EXPECT_FALSE(overlap(box, {10, 20, 5, 5}));
    EXPECT_TRUE(overlap(box, {0, 0, 100, 100}));
}

TEST(Labels, LettersAreCountedNotBytes) {
    EXPECT_EQ(textWidth("φ", 10), textWidth("a", 10));
    EXPECT_EQ(textWidth("", 10), 0);
    EXPECT_DOUBLE_EQ(textWidth("00", 20), 4 * textWidth("0", 10));
}

TEST(Ticks, AreRoundAndWithinTheirLimits) {
    EXPECT_EQ(roundTicks(-1, 11, 6), (std::vector<double>{0, 2, 4, 6, 8, 10}));
    EXPECT_EQ(roundTicks(0, 100, 2), (std::vector<double>{0, 50, 100}));
    EXPECT_EQ(roundTicks(-0.35, 0.35, 4), (std::vector<double>{-0.2, 0, 0.2}));
    EXPECT_TRUE(roundTicks(3, 3, 5).empty());
}

TEST(SvgNumbers, HaveOnePlaceAndNoMinusBeforeZero) {
    EXPECT_EQ(svgNumber(12.3456), "12.3");
    EXPECT_EQ(svgNumber(-0.01), "0");
    EXPECT_EQ(svgNumber(1e300), "100000");
}

TEST(SvgLines, LoseThePointsThatNobodySees) {
    const std::vector<SvgPoint> line{{0, 0}, {1, 1.01}, {2, 2}, {2, 5}, {2, 3}, {4, 3}};
    const auto kept = withoutStraightOnes(line, 0.05);
    // The turn back at (2, 5) stays, the points before it on a straight line go.
    ASSERT_EQ(kept.size(), 5U);
    EXPECT_EQ(kept[1].x, 2);
    EXPECT_EQ(kept[2].y, 5);
    EXPECT_EQ(kept[3].y, 3);
}

} // namespace
} // namespace korvane::test
