// Amendments on the road: where they reach, and that the next solution knows nothing of them.
#include "support/support.h"
#include "walls.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::test {
namespace {

Options with(Amendments amendments) {
    Options options = bySweep();
    options.amendments = amendments;
    return options;
}

/// Methods that a review takes for both sides.
Array<PressureMethod, 2> methodsOf(const Problem& problem, const Options& options) {
    Workspace workspace;
    const auto review = reviewWall(problem, options, workspace);
    EXPECT_TRUE(review);
    return workspace.review().SideMethod;
}

TEST(Amendments, HaveNames) {
    Amendments amendments;
    EXPECT_TRUE(amend(amendments, "surface-limit"));
    EXPECT_EQ(amendments, (Amendments{.surfaceLimit = true}));
    EXPECT_TRUE(amend(amendments, "method-fixed"));
    EXPECT_TRUE(amendments.methodFixed);
    EXPECT_FALSE(amend(amendments, "surface"));
    EXPECT_FALSE(amend(amendments, ""));
}

TEST(Amendments, OtherMethodsStandOnSidesWhereTheyCanBeUsed) {
    const Problem level = plainAnchored();
    EXPECT_EQ(methodsOf(level, with({.methodSweep = true}))(Left), PressureMethod::Sweep);
    EXPECT_EQ(methodsOf(level, with({.methodFixed = true}))(Right), PressureMethod::FixedSurface);

    Problem coefficients = level;
    coefficients.SoilDataKind(Left) = SoilData::Coefficients;
    coefficients.SoilCoefActive(Left, 1) = 0.3;
    coefficients.SoilCoefPassive(Left, 1) = 3;
    const auto methods = methodsOf(coefficients, with({.methodSweep = true}));
    EXPECT_EQ(methods(Right), PressureMethod::Sweep);
    EXPECT_EQ(methods(Left), PressureMethod::Coefficients);
}

TEST(Amendments, CoefficientsFollowLevelGroundAlone) {
    Problem problem = plainAnchored();
    problem.SurfacePointCount(Right) = 2; // level, yet of two points
    problem.SurfaceDist(Right, 2) = 30;
    problem.SurfaceElev(Right, 2) = problem.SurfaceElev(Right, 1);
    EXPECT_EQ(methodsOf(problem, bySweep())(Right), PressureMethod::Sweep);
    EXPECT_EQ(methodsOf(problem, with({.methodCoefficients = true}))(Right),
              PressureMethod::Coefficients);

    Problem rising = problem;
    rising.SurfaceElev(Right, 2) += 1;
    EXPECT_EQ(methodsOf(rising, with({.methodCoefficients = true}))(Right), PressureMethod::Sweep);

    Problem sticky = problem;
    sticky.SoilAdhesion(Right, 1) = 10;
    EXPECT_EQ(methodsOf(sticky, with({.methodCoefficients = true}))(Right), PressureMethod::Sweep);
}

TEST(Amendments, LevelGroundOfTwoPointsComesToWhatOnePointDoes) {
    const Problem plain = plainAnchored();
    Problem twoPoints = plain;
    twoPoints.SurfacePointCount(Right) = 2;
    twoPoints.SurfaceDist(Right, 2) = 30;
    twoPoints.SurfaceElev(Right, 2) = plain.SurfaceElev(Right, 1);
    Workspace told;
    Workspace second;
    ASSERT_NE(solve(plain, bySweep(), defaultSections(), told).results, nullptr);
    const Options amended = with({.methodCoefficients = true});
    ASSERT_NE(solve(twoPoints, amended, defaultSections(), second).results, nullptr);
    for (const int level : {1, 2}) {
        EXPECT_EQ(second.results().levels(level).bottomElev,
                  told.results().levels(level).bottomElev);
    }
}

TEST(Amendments, PassWithTheirSolution) {
    Problem problem = plainAnchored();
    Workspace workspace;
    ASSERT_NE(solve(problem, bySweep(), defaultSections(), workspace).results, nullptr);
    const double told = workspace.results().levels(1).bottomElev;
    ASSERT_NE(solve(problem, with({.methodSweep = true}), defaultSections(), workspace).results,
              nullptr);
    EXPECT_NE(workspace.results().levels(1).bottomElev, told);
    EXPECT_NEAR(workspace.results().levels(1).bottomElev, told, 0.2); // planes 2 degrees apart
    ASSERT_NE(solve(problem, bySweep(), defaultSections(), workspace).results, nullptr);
    EXPECT_EQ(workspace.results().levels(1).bottomElev, told);
}

TEST(Amendments, GroundThatFallsALittleNoLongerHoldsTheWallByItsSurface) {
    // 1 on 20 in front: as told the surface alone bears nearly 40,000 PSF.
    Problem level = plainAnchored();
    for (const int side : {Right, Left}) {
        level.SoilFriction(side, 1) = 37;
        level.SoilWallFriction(side, 1) = 22;
        level.SoilCohesion(side, 1) = 100;
    }
    level.FSPassive = 1.25;
    level.VUniformCount(Left) = 1;
    level.VUniformLoad(Left) = 150;
    Problem falling = level;
    falling.SurfacePointCount(Left) = 2;
    falling.SurfaceDist(Left, 2) = 20;
    falling.SurfaceElev(Left, 2) = falling.SurfaceElev(Left, 1) - 1;

    const auto penetration = [](const Problem& problem, const Options& options) {
        Workspace workspace;
        EXPECT_NE(solve(problem, options, defaultSections(), workspace).results, nullptr);
        return workspace.results().levels(1).penetration;
    };
    const double onLevelGround = penetration(level, with({.methodSweep = true}));
    EXPECT_LT(penetration(falling, bySweep()), 0.1 * onLevelGround);
    EXPECT_GT(penetration(falling, with({.surfaceLimit = true})), onLevelGround);
    EXPECT_GT(penetration(falling, with({.surfaceSlope = true})), onLevelGround);
}

} // namespace
} // namespace korvane::test
