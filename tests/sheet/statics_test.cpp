// The sheet's statics against closed forms of beams.
#include "sheet/statics.h"

#include <gtest/gtest.h>

namespace korvane::test {

using namespace sheet;
namespace {

constexpr double Tight = 1e-9;

/// A wall 12 FT high on EL 3 under one straight pressure, in three pieces.
WallLoading straight(double atTop, double atBottom) {
    const auto at = [&](double elev) { return atTop + (atBottom - atTop) * (15 - elev) / 12; };
    return {
        {{15, 11, at(15), at(11)}, {11, 10, at(11), at(10)}, {10, 3, at(10), at(3)}}, {}, 15, 3};
}

TEST(Statics, PiecesHaveForceMomentAndPressureOfATrapezoid) {
    const LoadPiece piece{10, 4, 100, 400};
    EXPECT_DOUBLE_EQ(piece.force(), 1500);
    EXPECT_DOUBLE_EQ(piece.pressureAt(8), 200);
    // 100 on 6 FT at EL 7, and a triangle of 900 LB at a third of its height.
    EXPECT_NEAR(piece.momentAbout(1), 600 * 6 + 900 * 5, Tight);
    EXPECT_DOUBLE_EQ(piece.above(8).force(), 300);
}

TEST(Statics, ShearsAndMomentsAreThoseOfACantileverUnderATriangle) {
    const WallLoading wall = straight(0, 600);
    for (const double depth : {1.0, 4.5, 12.0}) { // p z^2 / 2h and p z^3 / 6h
        EXPECT_NEAR(shearBelow(wall, 15 - depth), 600 * depth * depth / 24, Tight);
        EXPECT_NEAR(momentAt(wall, 15 - depth), 600 * depth * depth * depth / 72, 1e-8);
    }
    const LoadSums sums = sumsAbout(wall, 3);
    EXPECT_NEAR(sums.force, 3600, Tight);
    EXPECT_NEAR(sums.moment, 3600 * 4, 1e-8);
}

TEST(Statics, AForceCountsBelowItsElevation) {
    const WallLoading wall = withForce(straight(0, 0), {9, -50});
    EXPECT_EQ(shearAbove(wall, 9), 0);
    EXPECT_EQ(shearBelow(wall, 9), -50);
    EXPECT_DOUBLE_EQ(momentAt(wall, 5), -200);
    EXPECT_DOUBLE_EQ(sumsAbout(wall, 3).momentSizes, 301);
}

TEST(Statics, AreasEndAtZerosOfThePressure) {
    // From 200 down to -100: zero 8 FT below the top.
    const auto areas = areasBetweenZeros(straight(200, -100));
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_DOUBLE_EQ(areas[0].top, 15);
    EXPECT_NEAR(areas[0].bottom, 7, Tight);
    EXPECT_NEAR(areas[0].force, 800, Tight);
    EXPECT_NEAR(areas[0].centre, 15 - 8.0 / 3, Tight);
    EXPECT_NEAR(areas[1].force, -200, Tight);
    EXPECT_NEAR(areas[1].centre, 3 + 4.0 / 3, Tight);
    EXPECT_TRUE(areasBetweenZeros(straight(0, 0)).empty());
}

TEST(Statics, AStretchWithoutPressurePartsTwoAreas) {
    const WallLoading wall{
        {{10, 8, 50, 50}, {8, 6, -30, -30}, {6, 4, 0, 0}, {4, 2, -30, -30}}, {}, 10, 2};
    const auto areas = areasBetweenZeros(wall);
    ASSERT_EQ(areas.size(), 3U);
    EXPECT_DOUBLE_EQ(areas[1].centre, 7);
    EXPECT_DOUBLE_EQ(areas[2].force, -60);
}

TEST(Statics, CantileversDeflectAsInClosedForm) {
    const double h = 12;
    // Uniform: w h^4 / 8 at the top, w (3 h^4 - 4 h^3 x + x^4) / 24 at x below it.
    const MomentAreas uniform(straight(100, 100));
    EXPECT_NEAR(uniform.builtIn(15), 100 * h * h * h * h / 8, 1e-6);
    const double x = 5.5;
    EXPECT_NEAR(uniform.builtIn(15 - x),
                100.0 / 24 * (3 * h * h * h * h - 4 * h * h * h * x + x * x * x * x), 1e-6);
    // Triangle, largest at the bottom: p h^4 / 30.
    EXPECT_NEAR(MomentAreas(straight(0, 600)).builtIn(15), 600 * h * h * h * h / 30, 1e-6);
    // A force: P a^2 (3 h - a) / 6 at the top.
    EXPECT_NEAR(MomentAreas(withForce(straight(0, 0), {9, 70})).builtIn(15),
                70 * 36 * (36.0 - 6) / 6, 1e-6);
}

TEST(Statics, ASimpleBeamSagsAsInClosedForm) {
    const double h = 12;
    const WallLoading beam = withForce(straight(100, 100), {15, -600});
    EXPECT_NEAR(MomentAreas(beam).hinged(9, 15), 5 * 100 * h * h * h * h / 384, 1e-6);
    EXPECT_NEAR(MomentAreas(beam).hinged(15, 15), 0, 1e-6);
    const Extreme largest = largestMoment(beam);
    EXPECT_NEAR(largest.elev, 9, 1e-9);
    EXPECT_NEAR(largest.value, -100 * h * h / 8, 1e-8);
}

TEST(Statics, AProppedCantileverHasThreeEighthsOfItsLoadAtTheProp) {
    const WallLoading wall = straight(100, 100);
    const double prop = supportForce(wall, 15);
    EXPECT_NEAR(prop, 3.0 / 8 * 1200, 1e-8);
    // 9 w h^2 / 128 in the span, w h^2 / 8 at the built-in end.
    const Extreme largest = largestMoment(withForce(wall, {15, -prop}));
    EXPECT_NEAR(largest.elev, 3, Tight);
    EXPECT_NEAR(largest.value, 1800, 1e-7);
}

TEST(Statics, TheLargestMomentStandsWhereTheShearVanishes) {
    // A force of 450 to the right at the top: shear 100 x - 450 is zero 4.5 FT below it.
    WallLoading wall = straight(100, 100);
    wall.pieces.pop_back(); // down to EL 10
    wall.bottom = 10;
    const Extreme largest = largestMoment(withForce(wall, {15, -450}));
    EXPECT_NEAR(largest.elev, 10.5, 1e-9);
    EXPECT_NEAR(largest.value, -450 * 4.5 / 2, 1e-8);
}

} // namespace
} // namespace korvane::test
