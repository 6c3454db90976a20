// Notes on the wedge methods, with their second solves.
#include "told_wall.h"

#include <cmath>

namespace korvane::test {
namespace {

/// An anchored wall whose ground in front falls 1 on 20 under a load: as told its surface alone
/// bears nearly 40,000 PSF.
Problem fallingInFront(double fall = 1) {
    Problem problem = plainAnchoredWall();
    setBothSides(problem.SoilFriction, 37);
    setBothSides(problem.SoilWallFriction, 22);
    setBothSides(problem.SoilCohesion, 100);
    problem.FSPassive = 1.25;
    problem.VUniformCount(Left) = 1;
    problem.VUniformLoad(Left) = 150;
    return withGround(problem, Left, 20, -fall);
}

TEST(WedgeNotes, SurfaceOfFallingGround) {
    ToldWall wall(fallingInFront());
    const auto note = wall.note("surface-limit");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_EQ(note->side, Left);
    ASSERT_TRUE(note->second);
    EXPECT_EQ(note->second->levelCount, 2);
    EXPECT_GT(note->second->levels(1).penetration, 5 * wall.level(1).penetration);
    EXPECT_EQ(note->second->levels(2).method, SolutionMethod::FixedEarth);
}

TEST(WedgeNotes, SurfaceOfLevelOrBareGroundIsSilent) {
    EXPECT_FALSE(ToldWall(fallingInFront(0)).says("surface-limit"));
    Problem bare = fallingInFront();
    setBothSides(bare.SoilCohesion, 0);
    bare.VUniformCount(Left) = 0;
    EXPECT_FALSE(ToldWall(bare).says("surface-limit"));
    EXPECT_FALSE(ToldWall(bare).says("surface-slope"));
}

TEST(WedgeNotes, SurfaceOfRisingGround) {
    Problem problem = withGround(plainCantilever(), Right, 40, 20);
    problem.SurfaceElev(Left, 1) = -3;
    setBothSides(problem.SoilFriction, 32);
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 500;
    ToldWall wall(problem);
    ASSERT_TRUE(wall.isSolved());
    ASSERT_TRUE(wall.says("surface-slope"));
    EXPECT_FALSE(wall.says("surface-limit"));
    problem.SurfaceElev(Right, 2) = 0.001; // the slope is as good as none either way
    EXPECT_FALSE(ToldWall(problem).says("surface-slope"));
}

TEST(WedgeNotes, PlanesThatLeanPastTheHorizontal) {
    // 88 + 45 + 40 + 20 degrees are more than 180; with ground that falls 20 they are 168.
    Problem problem = withGround(plainCantilever(), Right, 20, -20);
    setBothSides(problem.SoilFriction, 40);
    setBothSides(problem.SoilWallFriction, 20);
    problem.VStripCount(Right) = 1; // the sweep runs to its end
    problem.VStripStart(Right, 1) = 1;
    problem.VStripEnd(Right, 1) = 3;
    problem.VStripLoad(Right, 1) = 500;
    EXPECT_TRUE(ToldWall(problem).says("planes-past-horizontal"));
    problem.SurfaceElev(Right, 2) = -7;
    EXPECT_FALSE(ToldWall(problem).says("planes-past-horizontal"));
}

TEST(WedgeNotes, PlanesOverestimatePassivePressureBeyondHalfTheFriction) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilWallFriction, 15);
    EXPECT_FALSE(ToldWall(problem).says("plane-wall-friction"));
    setBothSides(problem.SoilWallFriction, 15.01);
    EXPECT_TRUE(ToldWall(problem).says("plane-wall-friction"));
    setBothSides(problem.SoilWallFriction, 30);
    ToldWall wall(problem);
    const auto note = wall.note("plane-wall-friction");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_NEAR(*note->value, 30, 1e-9);
    EXPECT_NEAR(*note->limit, 15, 1e-9);
    ASSERT_TRUE(note->second);
    EXPECT_GT(note->second->levels(1).penetration, 1.1 * wall.level().penetration);
    EXPECT_NE(note->text.find("30/30 5.61, 8.75, no bound"), std::string::npos);
}

TEST(WedgeNotes, SlopingGroundTakesHalfTheFrictionForItsSecondOpinion) {
    Problem problem = withGround(plainCantilever(), Left, 50, -2);
    setBothSides(problem.SoilWallFriction, 30);
    ToldWall wall(problem);
    const auto note = wall.note("plane-wall-friction");
    ASSERT_TRUE(note);
    ASSERT_TRUE(note->second);
    EXPECT_GT(note->second->levels(1).penetration, wall.level().penetration);
}

TEST(WedgeNotes, PlanesBehindAnAnchoredWallHoldNothing) {
    Problem problem = withGround(plainAnchoredWall(), Right, 50, 0);
    problem.SoilWallFriction(Right, 1) = 30;
    EXPECT_FALSE(ToldWall(problem).says("plane-wall-friction"));
}

TEST(WedgeNotes, TheFixedSurfaceIsNoExtreme) {
    // Friction 30: 1.5 cos d / cos(60 + d) against Coulomb's: 4.134 and 3.953 at 9 degrees (+4.6
    // %), 4.225 and 4.016 at 9.5 (+5.2 %).
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilWallFriction, 9);
    EXPECT_FALSE(ToldWall(problem, WedgeMethod::FixedSurface).says("fixed-passive"));
    setBothSides(problem.SoilWallFriction, 9.5);
    EXPECT_FALSE(ToldWall(problem, WedgeMethod::Sweep).says("fixed-passive"));
    ToldWall wall(problem, WedgeMethod::FixedSurface);
    const auto note = wall.note("fixed-passive");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_NEAR(*note->value, 4.225, 0.002);
    EXPECT_NEAR(*note->limit, 4.016, 0.002);
}

/// Passive pressure over vertical stress 8 FT below the left ground, one sand, factors 1.
double passiveShare(double friction, double onWall, WedgeMethod wedge) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilFriction, friction);
    setBothSides(problem.SoilWallFriction, onWall);
    ToldWall wall(problem, wedge);
    const PressureDiagrams& diagrams = wall.workspace.review().diagrams;
    for (int i = 1; i <= diagrams.grid.NumElevs; ++i) {
        if (diagrams.grid.ElevGrid(i) == -18) {
            return diagrams.pressures.PassivePressures(Left, i, 2) / (120 * 8);
        }
    }
    return 0;
}

TEST(WedgeNotes, TheTableOfTheText) {
    struct Row {
        double friction, onWall, sweep, fixed;
    };
    const Row rows[] = {{30, 15, 4.81, 5.60}, {30, 20, 5.75, 8.12},   {30, 25, 6.99, 15.6},
                        {30, 30, 8.75, 0},    {40, 20, 11.10, 20.96}, {40, 40, 71.0, 1}};
    for (const auto& [friction, onWall, sweep, fixed] : rows) {
        EXPECT_NEAR(passiveShare(friction, onWall, WedgeMethod::Sweep), sweep, 0.005 * sweep)
            << friction << '/' << onWall;
        if (fixed != 0) { // 0: no bound
            EXPECT_NEAR(passiveShare(friction, onWall, WedgeMethod::FixedSurface), fixed,
                        0.005 * fixed)
                << friction << '/' << onWall;
        }
    }
}

TEST(WedgeNotes, TheNoteTellsBothCoefficients) {
    struct Row {
        double friction, onWall, table, fixed;
    };
    for (const auto& [friction, onWall, table, fixed] :
         {Row{30, 20, 5.21, 8.12}, Row{30, 25, 5.48, 15.6}, Row{40, 20, 11.06, 20.96}}) {
        Problem problem = withGround(plainCantilever(), Left, 50, 0);
        setBothSides(problem.SoilFriction, friction);
        setBothSides(problem.SoilWallFriction, onWall);
        const auto note = ToldWall(problem, WedgeMethod::FixedSurface).note("fixed-passive");
        ASSERT_TRUE(note) << friction << '/' << onWall;
        EXPECT_NEAR(*note->value, fixed, 0.05);
        EXPECT_NEAR(*note->limit, table, 0.05);
    }
}

TEST(WedgeNotes, BeyondItsBoundTheFixedSurfaceFallsToTheFloor) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilFriction, 40);
    setBothSides(problem.SoilWallFriction, 40);
    ToldWall wall(problem, WedgeMethod::FixedSurface);
    EXPECT_FALSE(wall.says("fixed-passive"));
    EXPECT_TRUE(wall.says("plane-wall-friction"));
}

TEST(WedgeNotes, OtherMethods) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    EXPECT_FALSE(ToldWall(problem).says("method-coefficients")); // Rankine's either way
    EXPECT_FALSE(ToldWall(problem, WedgeMethod::FixedSurface).says("method-sweep"));
    setBothSides(problem.SoilWallFriction, 25);
    const auto coefficients = ToldWall(problem).note("method-coefficients");
    ASSERT_TRUE(coefficients);
    EXPECT_EQ(coefficients->severity, Severity::Unsafe);
    EXPECT_FALSE(ToldWall(problem).says("method-sweep"));
    const auto sweep = ToldWall(problem, WedgeMethod::FixedSurface).note("method-sweep");
    ASSERT_TRUE(sweep);
    EXPECT_EQ(sweep->severity, Severity::Unsafe);
}

TEST(WedgeNotes, AWallThatOnlyTheSecondOpinionSolvesIsACaution) {
    // Level ground of two points keeps the given coefficients from being used.
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    problem.SoilDataKind(Left) = SoilData::Coefficients;
    problem.SoilCoefActive(Left, 1) = 0.33;
    problem.SoilCoefPassive(Left, 1) = 3;
    ToldWall wall(problem);
    ASSERT_FALSE(wall.isSolved());
    const auto note = wall.note("method-coefficients");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Caution);
    EXPECT_EQ(note->second->levelCount, 1);
    // With a slope both refuse it.
    problem.SurfaceElev(Left, 2) -= 1;
    EXPECT_FALSE(ToldWall(problem).says("method-coefficients"));
}

TEST(WedgeNotes, MarkedRows) {
    ToldWall plain(withGround(plainCantilever(), Left, 50, 0));
    EXPECT_FALSE(plain.says("marked-rows"));
    plain.level().solved.pressures.PassiveMark(Left, 12) = true;
    const auto note = plain.note("marked-rows");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->value, 1);
    EXPECT_EQ(note->elev, plain.level().solved.grid.ElevGrid(12));
    EXPECT_EQ(note->severity, Severity::Caution);
}

TEST(WedgeNotes, RowsBelowTheWallAreNotMarked) {
    ToldWall wall(withGround(plainCantilever(), Left, 50, 0));
    PressureDiagrams& diagrams = wall.level().solved;
    diagrams.pressures.PassiveMark(Left, diagrams.grid.NumElevs) = true; // 50,000 FT down
    diagrams.pressures.PassiveMark(Left, diagrams.grid.NumElevs - 2) = true;
    ASSERT_LT(diagrams.grid.ElevGrid(diagrams.grid.NumElevs - 3), wall.level().bottomElev);
    EXPECT_FALSE(wall.says("marked-rows"));
    EXPECT_FALSE(wall.says("method-fixed"));
}

TEST(WedgeNotes, TheFixedSurfaceIsTheSecondOpinionOnMarkedRows) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilWallFriction, 10); // 4.30 by the fixed surface, 4.08 by the sweep
    ToldWall wall(problem);
    EXPECT_FALSE(wall.says("method-fixed"));
    wall.level().solved.pressures.PassiveMark(Left, 12) = true;
    EXPECT_TRUE(wall.says("method-fixed"));
}

TEST(WedgeNotes, TheWarningWithoutAMark) {
    ToldWall wall(withGround(plainCantilever(), Left, 50, 0));
    EXPECT_FALSE(wall.says("warning-without-mark"));
    wall.results->wedgeWarning = true;
    EXPECT_TRUE(wall.says("warning-without-mark"));
    wall.level().solved.pressures.ActiveMark(Left, 12) = true;
    EXPECT_FALSE(wall.says("warning-without-mark"));
}

} // namespace
} // namespace korvane::test
