// Notes on solved walls by coefficients: clay, seepage, loads, anchor, remarks.
#include "notes/second_opinion.h"
#include "runtime/number_format.h"
#include "support/pressure_bench.h"
#include "told_wall.h"

#include <cmath>

namespace korvane::test {
namespace {

Problem clayWall(double cohesion, double height = 10) {
    Problem problem = plainCantilever();
    problem.SurfaceElev(Left, 1) = -height;
    setBothSides(problem.SoilFriction, 0);
    setBothSides(problem.SoilCohesion, cohesion);
    return problem;
}

Problem analysisOfPlain(double bottom) {
    Problem problem = plainCantilever();
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::OneForBoth;
    problem.WallBottomElev = bottom;
    problem.WallModulus = 29e6;
    problem.WallInertia = 100;
    return problem;
}

Problem seepingWall() {
    Problem problem = withWater(plainCantilever(), -4, -9);
    setBothSides(problem.SoilSatWeight, 125);
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -6;
    return problem;
}

// ---- coefficients and factors ------------------------------------------------------------------

TEST(ResultNotes, PassiveCoefficientsStepAtHalfTheFriction) {
    Problem problem = plainCantilever();
    problem.SoilWallFriction(Left, 1) = 13.9;
    EXPECT_FALSE(ToldWall(problem).says("coefficient-step"));
    problem.SoilWallFriction(Left, 1) = 14.1;
    const auto note = ToldWall(problem).note("coefficient-step");
    ASSERT_TRUE(note);
    EXPECT_NEAR(*note->value, 14.1, 1e-9);
    EXPECT_NEAR(*note->limit, 15, 1e-9);
    EXPECT_NE(note->text.find("-3 percent"), std::string::npos); // 6.48 x 0.746 against 4.98
    problem.SoilFriction(Left, 1) = 20; // 3.04 x 0.862 = 2.62 against 2.64: no step to speak of
    problem.SoilWallFriction(Left, 1) = 10;
    EXPECT_FALSE(ToldWall(problem).says("coefficient-step"));
}

TEST(ResultNotes, TheStepIsNearWithinOneDegreeOnEitherSide) {
    struct Row {
        double friction, onWall;
        bool speaks;
        const char* words;
    };
    const Row rows[] = {
        {30, 15.9, true, "-3 percent"},
        {30, 16.1, false, ""},
        {40, 19.1, true, "-14 percent"},
        {40, 18.9, false, ""},
        // Beyond 44.5 degrees the table has no value.
        {44.4, 22.1, true, "percent"},
        {44.7, 21.4, true, "its table ends at 44.5 degrees"},
        {44.7, 21.3, false, ""},
    };
    for (const auto& [friction, onWall, speaks, words] : rows) {
        Problem problem = plainCantilever();
        problem.SoilFriction(Left, 1) = friction;
        problem.SoilWallFriction(Left, 1) = onWall;
        ToldWall wall(problem);
        ASSERT_TRUE(wall.isSolved()) << friction << '/' << onWall;
        const auto note = wall.note("coefficient-step");
        ASSERT_EQ(note.has_value(), speaks) << friction << '/' << onWall;
        if (note) {
            EXPECT_NE(note->text.find(words), std::string::npos) << note->text;
        }
    }
}

TEST(ResultNotes, AWallThatAsksTheTableBeyondItsEndIsTold) {
    for (const double friction : {44.4, 44.6}) {
        Problem problem = plainCantilever();
        problem.SoilFriction(Left, 1) = friction;
        problem.SoilWallFriction(Left, 1) = 30;
        ToldWall wall(problem);
        EXPECT_EQ(wall.isSolved(), friction < 44.5);
        EXPECT_EQ(wall.says("coefficient-step"), friction > 44.5);
    }
}

TEST(ResultNotes, AWallThatFailsIsUnsafe) {
    ToldWall wall(analysisOfPlain(-20));
    ASSERT_TRUE(wall.isSolved());
    wall.level().factorOfSafety = 0.999;
    EXPECT_EQ(wall.note("wall-fails")->severity, Severity::Unsafe);
    wall.level().factorOfSafety = 1;
    EXPECT_FALSE(wall.says("wall-fails"));
}

// ---- cohesion ----------------------------------------------------------------------------------

TEST(ResultNotes, ClayInFrontMustBearItsLoad) {
    // 4 c - 2400 is half of 2400 at c = 900 PSF.
    EXPECT_FALSE(ToldWall(clayWall(901, 20)).says("clay-in-front"));
    ToldWall wall(clayWall(899, 20));
    ASSERT_TRUE(wall.isSolved());
    const auto note = wall.note("clay-in-front");
    ASSERT_TRUE(note);
    EXPECT_NEAR(*note->value, 4 * 899 - 2400, 1e-9);
    ASSERT_TRUE(note->second);
    EXPECT_GT(note->second->levels(1).penetration, wall.level().penetration);
}

TEST(ResultNotes, AFailedWallInClayTellsTheNumberThatShowsIt) {
    // 4 x 450 - 120 x 15 = 0: no depth exists.
    ToldWall wall(clayWall(450, 15));
    ASSERT_FALSE(wall.isSolved());
    const auto note = wall.note("clay-in-front");
    ASSERT_TRUE(note);
    EXPECT_NEAR(*note->value, 0, 1e-9);
    EXPECT_NE(note->text.find("no depth holds the wall"), std::string::npos);
}

TEST(ResultNotes, ClayOverSandThatHoldsTheWallIsNotSaidToFail) {
    Problem problem = clayWall(450, 15); // 4 x 450 - 120 x 15 = 0 in the clay
    for (const int side : {Right, Left}) {
        problem.SoilLayerCount(side) = 2;
        problem.SoilSatWeight(side, 2) = problem.SoilMoistWeight(side, 2) = 120;
        problem.SoilFriction(side, 2) = 34;
        problem.SoilBottomElev(side, 1) = problem.SurfaceElev(Left, 1) - 3;
        problem.SoilBottomElev(side, 2) = NoLayerBottom;
    }
    ToldWall wall(problem);
    ASSERT_TRUE(wall.isSolved());
    const auto note = wall.note("clay-in-front");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->text.find("no depth"), std::string::npos);
    EXPECT_TRUE(note->second);
}

TEST(ResultNotes, TheWeakestClayInReachIsTheOneThatCounts) {
    // 4 x 600 - 1800 = 600 at the ground; below -17 it is 2 x 600 + 2 x 200 - 1800 = -200.
    Problem problem = clayWall(600, 15);
    setLayerBottoms(problem, Left, {-17});
    problem.SoilCohesion(Left, 2) = 200;
    ToldWall wall(problem);
    ASSERT_FALSE(wall.isSolved());
    const auto note = wall.note("clay-in-front");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->layer, 2);
    EXPECT_NEAR(*note->value, -200, 1e-9);
    EXPECT_NE(note->text.find("no depth holds the wall"), std::string::npos);
    EXPECT_EQ(note->text.find("5 percent"), std::string::npos); // it fails as it is given

    // Sand of half a foot in front of clay that bears nothing.
    Problem sand = clayWall(290, 10); // 4 x 290 - 1200 = -40
    setLayerBottoms(sand, Left, {-10.5});
    sand.SoilFriction(Left, 1) = 30;
    sand.SoilCohesion(Left, 1) = 0;
    ToldWall failed(sand);
    ASSERT_FALSE(failed.isSolved());
    ASSERT_TRUE(failed.says("clay-in-front"));
    EXPECT_NEAR(*failed.note("clay-in-front")->value, -40, 1e-9);
}

TEST(ResultNotes, ClayThatSticksToTheWallIsNotJudgedByCohesionAlone) {
    Problem problem = clayWall(290, 10);
    ASSERT_TRUE(ToldWall(problem).says("clay-in-front"));
    setBothSides(problem.SoilAdhesion, 145); // planes, not 2 ca + 2 cp
    EXPECT_FALSE(ToldWall(problem).says("clay-in-front"));
}

TEST(ResultNotes, AFailedWallTellsTheHeightWithoutPressure) {
    // 2 x 200 / (120 sqrt(1/3)) = 5.77 FT of 5: no active pressure turns the wall.
    Problem problem = plainCantilever();
    problem.SurfaceElev(Left, 1) = -5;
    setBothSides(problem.SoilCohesion, 200);
    ToldWall wall(problem);
    ASSERT_FALSE(wall.isSolved());
    const auto note = wall.note("no-active-pressure");
    ASSERT_TRUE(note);
    EXPECT_NEAR(*note->value, 5, 0.01);
    EXPECT_EQ(note->second->levelCount, 1);
}

TEST(ResultNotes, CohesionLeavesAHeightWithoutPressure) {
    // 2 c / (120 sqrt(1/3)) FT: 0.98 for 34 PSF, 1.04 for 36.
    Problem problem = plainCantilever();
    problem.SoilCohesion(Right, 1) = 34;
    EXPECT_FALSE(ToldWall(problem).says("no-active-pressure"));
    problem.SoilCohesion(Right, 1) = 36;
    EXPECT_TRUE(ToldWall(problem).says("no-active-pressure"));
    problem.SoilCohesion(Right, 1) = 173.2; // 5 FT
    ToldWall wall(problem);
    const auto note = wall.note("no-active-pressure");
    ASSERT_TRUE(note);
    EXPECT_NEAR(*note->value, 5, 0.01);
    EXPECT_EQ(note->elev, 0);
    ASSERT_TRUE(note->second);
    EXPECT_GT(note->second->levels(1).penetration, 1.1 * wall.level().penetration);
    EXPECT_NE(note->text.find("crack full of water"), std::string::npos);
    EXPECT_NE(note->text.find("30.00 PCF"), std::string::npos);
}

/// The problem with this horizontal distributed load: elevations (FT) and pressures (PSF).
Problem withPoints(Problem problem, const std::vector<std::pair<double, double>>& points) {
    problem.HDistCount = 0;
    for (const auto& [elev, load] : points) {
        ++problem.HDistCount;
        problem.HDistElev(problem.HDistCount) = elev;
        problem.HDistLoad(problem.HDistCount) = load;
    }
    return problem;
}

TEST(ResultNotes, CracksAndLeastPressuresAddToTheLoadOnTheWall) {
    Problem problem = plainCantilever();
    problem.SoilCohesion(Right, 1) = 173.2; // 5 FT without pressure
    problem.HDistCount = 2;
    problem.HDistElev(1) = -2;
    problem.HDistElev(2) = -8;
    problem.HDistLoad(1) = problem.HDistLoad(2) = 100;
    ToldWall wall(problem);
    ASSERT_TRUE(wall.isSolved());
    const auto note = wall.note("no-active-pressure");
    ASSERT_TRUE(note);
    EXPECT_NE(note->text.find("crack full of water"), std::string::npos);
    EXPECT_NE(note->text.find("30.00 PCF"), std::string::npos);
    // Water in the crack to 5 FT and the load from 2 to 8 FT; what the active pressure, 40 PSF a
    // foot from 5 FT on, lacks of 30 PSF a foot, and the load: that is the worse.
    const double depth = *note->value;
    ToldWall crack(withPoints(problem, {{0, 0},
                                        {-1.99, 1.99 * 62.4},
                                        {-2, 100 + 2 * 62.4},
                                        {-depth, 100 + depth * 62.4},
                                        {-depth - 0.01, 100},
                                        {-8, 100}}));
    ToldWall minimum(withPoints(
        problem,
        {{0, 0}, {-1.99, 1.99 * 30}, {-2, 160}, {-5, 250}, {-8, 220}, {-8.01, 119.9}, {-10, 100}}));
    EXPECT_NE(note->text.find("With a crack full of water there the wall has a penetration of " +
                              formatNumber(crack.level().penetration, "0.00") + " FT"),
              std::string::npos)
        << note->text;
    ASSERT_TRUE(note->second);
    EXPECT_NEAR(note->second->levels(1).penetration, minimum.level().penetration, 0.002);
    EXPECT_GT(minimum.level().penetration, crack.level().penetration);
}

TEST(ResultNotes, ALoadOfElevenPointsLeavesRoomForACrack) {
    Problem problem = plainCantilever();
    problem.SoilCohesion(Right, 1) = 173.2;
    problem.HDistCount = 11;
    for (int point = 1; point <= 11; ++point) { // straight: two of them would do
        problem.HDistElev(point) = -2 - 0.6 * (point - 1);
        problem.HDistLoad(point) = 100;
    }
    Problem two = problem;
    two.HDistCount = 2;
    two.HDistElev(2) = -8;
    const auto eleven = ToldWall(problem).note("no-active-pressure");
    const auto pair = ToldWall(two).note("no-active-pressure");
    ASSERT_TRUE(eleven && eleven->second && pair && pair->second);
    EXPECT_EQ(eleven->second->levelCount, 1);
    EXPECT_NEAR(eleven->second->levels(1).penetration, pair->second->levels(1).penetration, 0.002);
}

// ---- seepage -----------------------------------------------------------------------------------

/// An anchored wall in front of stiff clay that needs little depth: a head of 10 FT over a path of
/// 5 FT and twice the depth.
Problem shallowWall(double cohesion, double saturatedWeight) {
    Problem problem = withWater(plainAnchoredWall(), 0, -10);
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -5;
    problem.SoilFriction(Left, 1) = 0;
    problem.SoilCohesion(Left, 1) = cohesion;
    setBothSides(problem.SoilSatWeight, saturatedWeight);
    return problem;
}

TEST(ResultNotes, TheGradientAtItsLimit) {
    // 10 / (5 + 2 d) is 0.9999, the largest, at d = 2.5 FT.
    ToldWall deep(shallowWall(600, 130));
    ASSERT_TRUE(deep.isSolved());
    ASSERT_GT(deep.level().penetration, 2.5);
    EXPECT_FALSE(deep.says("gradient-limit"));
    ToldWall shallow(shallowWall(700, 130));
    ASSERT_TRUE(shallow.isSolved());
    ASSERT_LT(shallow.level().penetration, 2.5);
    EXPECT_EQ(shallow.note("gradient-limit")->severity, Severity::Unsafe);
    EXPECT_EQ(shallow.note("gradient-limit")->value, 0.9999);
    shallow.level(1).seepageGradient = 0.9999 - 1e-6; // at its very edge no wall stands
    shallow.level(2).seepageGradient = 0.5;
    EXPECT_FALSE(shallow.says("gradient-limit"));
}

TEST(ResultNotes, TheGradientThatLeavesSoilWithoutWeightIsToldOfTheFailure) {
    // 114 / 62.4 - 1 = 0.8269: there soil of 114 PCF floats, and the limit stops just there.
    ToldWall wall(shallowWall(700, 114));
    ASSERT_EQ(wall.solved.failure.code, FailureCode::SoilWeightNotPositive);
    const auto limit = wall.note("gradient-limit");
    ASSERT_TRUE(limit);
    EXPECT_EQ(limit->severity, Severity::Unsafe);
    EXPECT_EQ(limit->layer, 1);
    EXPECT_NEAR(*limit->value, 51.6 / 62.4, 1e-12);
    EXPECT_NE(limit->text.find("that has ended the solution"), std::string::npos);
    const auto exit = wall.note("exit-gradient");
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->severity, Severity::Unsafe);
    EXPECT_NEAR(*exit->value, 1, 1e-12);
    wall.solved.failure.gradient -= 1e-6; // weightless for another reason than the limit
    EXPECT_FALSE(wall.says("gradient-limit"));
    EXPECT_TRUE(wall.says("exit-gradient"));
    wall.solved.failure.side = Right;
    EXPECT_FALSE(wall.says("exit-gradient"));
}

TEST(ResultNotes, AGivenGradientThatLeavesSoilWithoutWeightIsToldOfTheFailure) {
    // (100 - 62.4) / (0.7 x 62.4) = 0.8608.
    Problem problem = withWater(plainCantilever(), 0, -10);
    problem.SeepageKind = Seepage::Given;
    problem.SeepageGradient(1) = 0.7;
    problem.SeepageElev = 0;
    setBothSides(problem.SoilSatWeight, 100);
    ToldWall wall(problem);
    ASSERT_EQ(wall.solved.failure.code, FailureCode::SoilWeightNotPositive);
    ASSERT_TRUE(wall.note("exit-gradient"));
    EXPECT_NEAR(*wall.note("exit-gradient")->value, 37.6 / 43.68, 1e-9);
    EXPECT_FALSE(wall.says("gradient-limit")); // a given one has none
}

TEST(ResultNotes, SoilThatFloatsWithoutSeepageHasNoGradientToTell) {
    Problem problem = withWater(plainCantilever(), -10, -10);
    setBothSides(problem.SoilSatWeight, 60);
    ToldWall wall(problem);
    ASSERT_EQ(wall.solved.failure.code, FailureCode::SoilWeightNotPositive);
    EXPECT_FALSE(wall.says("gradient-limit"));
    EXPECT_FALSE(wall.says("exit-gradient"));
}

TEST(ResultNotes, TheExitGradient) {
    // Buoyant 62.6 PCF: a factor of 1.5 at a gradient of 0.6688, of 1 at 1.0032.
    ToldWall wall(seepingWall());
    ASSERT_TRUE(wall.isSolved());
    wall.level().seepageGradient = 0.668;
    EXPECT_FALSE(wall.says("exit-gradient"));
    wall.level().seepageGradient = 0.670;
    EXPECT_EQ(wall.note("exit-gradient")->severity, Severity::Caution);
    wall.level().seepageGradient = 1.003;
    EXPECT_EQ(wall.note("exit-gradient")->severity, Severity::Caution);
    wall.level().seepageGradient = std::nextafter(62.6 / 62.4, 2); // its limit, but for rounding
    EXPECT_EQ(wall.note("exit-gradient")->severity, Severity::Caution);
    wall.level().seepageGradient = 1.004;
    const auto note = wall.note("exit-gradient");
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_NEAR(*note->value, 62.6 / (1.004 * 62.4), 1e-9);
    EXPECT_EQ(note->limit, 1);
}

// ---- loads, anchor, layers ---------------------------------------------------------------------

TEST(ResultNotes, HorizontalLoadsBelowTheBottom) {
    // The bottom comes to stand at EL -20.04: a load of 10 LB moves it by 0.002 FT.
    for (const bool below : {false, true}) {
        Problem problem = plainCantilever();
        problem.HLineCount = 1;
        problem.HLineElev(1) = below ? -20.05 : -20.03;
        problem.HLineLoad(1) = 10;
        ToldWall wall(problem);
        ASSERT_TRUE(wall.isSolved());
        ASSERT_EQ(wall.level().bottomElev > problem.HLineElev(1), below);
        EXPECT_EQ(wall.says("load-below-bottom"), below);
    }
}

TEST(ResultNotes, DistributedLoadsBelowTheBottom) {
    for (const bool below : {false, true}) {
        Problem problem = plainCantilever();
        problem.HDistCount = 2;
        problem.HDistElev(1) = -5;
        problem.HDistElev(2) = below ? -20.2 : -20.16;
        problem.HDistLoad(1) = problem.HDistLoad(2) = 10;
        ToldWall wall(problem);
        ASSERT_TRUE(wall.isSolved());
        ASSERT_EQ(wall.level().bottomElev > problem.HDistElev(2), below);
        EXPECT_EQ(wall.says("load-below-bottom"), below);
        EXPECT_TRUE(!below || wall.note("load-below-bottom")->value == -20.2);
    }
}

TEST(ResultNotes, AnAnchorMustPull) {
    // A load above the anchor that pulls to the right: from 880 LB on fixed earth support presses
    // on the anchor.
    for (const double pull : {870, 890}) {
        Problem problem = plainAnchoredWall();
        problem.HLineCount = 1;
        problem.HLineElev(1) = -0.5;
        problem.HLineLoad(1) = -pull;
        ToldWall wall(problem);
        ASSERT_TRUE(wall.isSolved());
        const double force = wall.level(2).anchorForce;
        ASSERT_EQ(force > 0, pull < 880) << force;
        EXPECT_EQ(wall.says("anchor-force"), force <= 0);
    }
    ToldWall wall(plainAnchoredWall());
    EXPECT_FALSE(wall.says("anchor-force"));
    wall.level(2).anchorForce = 0; // none comes to just nothing
    EXPECT_EQ(wall.note("anchor-force")->severity, Severity::Unsafe);
}

TEST(ResultNotes, AnAnchorStandsAboveTheZeroOfShear) {
    ToldWall wall(plainAnchoredWall());
    ASSERT_TRUE(wall.isSolved());
    EXPECT_FALSE(wall.says("anchor-place"));
    auto& diagrams = wall.level().diagrams;
    for (int row = 1; row <= diagrams.RowCount; ++row) { // no zero below the anchor any more
        diagrams.ResultShear(row) = std::fabs(diagrams.ResultShear(row)) + 1;
    }
    EXPECT_TRUE(wall.says("anchor-place"));
}

TEST(ResultNotes, AnAnchorStandsAboveTheGroundInFront) {
    ToldWall wall(plainAnchoredWall());
    ASSERT_TRUE(wall.isSolved());
    wall.problem.AnchorElev = -9.99;
    const auto above = wall.note("anchor-place"); // the shear has no zero below it
    EXPECT_FALSE(above && above->limit);
    wall.problem.AnchorElev = -10;
    const auto note = wall.note("anchor-place");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->limit, -10);
}

TEST(ResultNotes, TheEndOfASlope) {
    Problem problem = withGround(plainCantilever(), Right, 8, 3);
    ToldWall wall(problem);
    ASSERT_TRUE(wall.isSolved());
    const auto note = wall.note("slope-end");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->value, 12);
    EXPECT_EQ(note->limit, 8);
    EXPECT_GT(note->second->levels(1).penetration, wall.level().penetration);
    // A crest that goes on level changes nothing.
    problem.SurfacePointCount(Right) = 3;
    problem.SurfaceDist(Right, 3) = 60;
    problem.SurfaceElev(Right, 3) = problem.SurfaceElev(Right, 2);
    const auto crest = ToldWall(problem).note("slope-end");
    ASSERT_TRUE(crest);
    EXPECT_EQ(crest->value, 12);
    EXPECT_NEAR(crest->second->levels(1).penetration, note->second->levels(1).penetration, 1e-9);
    // Beyond the reach of the planes its end says nothing.
    EXPECT_FALSE(ToldWall(withGround(plainCantilever(), Right, 800, 300)).says("slope-end"));
}

TEST(ResultNotes, ThinLayersAtTheBottom) {
    ToldWall wall(plainCantilever());
    ASSERT_TRUE(wall.isSolved());
    wall.problem.SoilLayerCount(Left) = 2;
    wall.problem.SoilBottomElev(Left, 2) = NoLayerBottom;
    wall.problem.SoilBottomElev(Left, 1) = wall.level().bottomElev + 1.01;
    EXPECT_FALSE(wall.says("thin-layer"));
    wall.problem.SoilBottomElev(Left, 1) = wall.level().bottomElev + 0.99;
    const auto note = wall.note("thin-layer");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->layer, 2);
    EXPECT_NEAR(*note->value, 0.99, 1e-9);
}

// ---- remarks -----------------------------------------------------------------------------------

TEST(ResultNotes, FactorsReachStrengths) {
    Problem problem = plainCantilever();
    EXPECT_FALSE(ToldWall(problem).says("factors-on-strengths"));
    EXPECT_TRUE(ToldWall(problem).says("no-reserve"));
    problem.FSPassive = 1.01;
    EXPECT_TRUE(ToldWall(problem).says("factors-on-strengths"));
    EXPECT_FALSE(ToldWall(problem).says("no-reserve"));
    problem.FSPassive = 0.99; // less than none
    EXPECT_TRUE(ToldWall(problem).says("factors-on-strengths"));
    EXPECT_EQ(ToldWall(problem).note("no-reserve")->value, 0.99);
}

TEST(ResultNotes, FactorsOfWhatNeitherDrivesNorHoldsAreNoReserve) {
    struct Row {
        bool anchored;
        int side;
        bool passive, acts;
    };
    const Row rows[] = {
        {true, Right, true, false}, {true, Left, false, false}, {true, Right, false, true},
        {true, Left, true, true},   {false, Right, true, true}, {false, Left, false, true},
    };
    for (const auto& [anchored, side, passive, acts] : rows) {
        Problem problem = anchored ? plainAnchoredWall() : plainCantilever();
        (passive ? problem.Level2FSPassive : problem.Level2FSActive)(side) = 1.2;
        ToldWall wall(problem);
        ASSERT_TRUE(wall.isSolved());
        EXPECT_EQ(wall.says("factors-on-strengths"), acts) << anchored << side << passive;
        EXPECT_EQ(wall.says("no-reserve"), !acts) << anchored << side << passive;
        problem.SoilFSActive(side, 1) = problem.SoilFSPassive(side, 1) = 1; // before the side's
        EXPECT_TRUE(ToldWall(problem).says("no-reserve")) << anchored << side << passive;
    }
}

TEST(ResultNotes, FixedEarthDepthIsTheTheoreticalOne) {
    EXPECT_FALSE(ToldWall(plainCantilever()).says("fixed-earth-depth"));
    ToldWall wall(plainAnchoredWall());
    ASSERT_TRUE(wall.isSolved());
    wall.level(2).penetration = 10;
    const auto note = wall.note("fixed-earth-depth");
    ASSERT_TRUE(note);
    EXPECT_NE(note->text.find("12.00 FT"), std::string::npos);
}

TEST(ResultNotes, WallFrictionInFrontMustBeHeldDown) {
    Problem problem = plainCantilever();
    EXPECT_FALSE(ToldWall(problem).says("vertical-balance")); // no friction at all
    problem.SoilWallFriction(Left, 1) = 5;
    ToldWall wall(problem);
    const auto note = wall.note("vertical-balance");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->limit, 0);
    // Passive pressure grows evenly to the bottom: half of it times the depth times tan 5.
    const LevelResult& level = wall.level();
    const double r =
        std::sqrt(std::sin(35 * DegreesToRadians) * 0.5 / std::cos(5 * DegreesToRadians));
    const double KpCos = std::pow(std::cos(30 * DegreesToRadians) / (1 - r), 2);
    EXPECT_NEAR(*note->value,
                60 * KpCos * level.penetration * level.penetration * std::tan(5 * DegreesToRadians),
                1e-3 * *note->value);
}

TEST(ResultNotes, WallFrictionThatHoldsMoreThanItLiftsIsSilent) {
    const double phi = 30 * DegreesToRadians;
    const auto root = [phi](double onWall) {
        return std::sqrt(std::sin(phi + onWall) * std::sin(phi) / std::cos(onWall));
    };
    int spoken = 0;
    int silent = 0;
    for (double behind = 1; behind <= 29; behind += 0.5) {
        Problem problem = plainCantilever();
        problem.SoilWallFriction(Left, 1) = 1;
        problem.SoilWallFriction(Right, 1) = behind;
        ToldWall wall(problem);
        ASSERT_TRUE(wall.isSolved());
        // Coulomb's horizontal pressures times the tangents, over the depth and the whole length.
        const double depth = wall.level().penetration;
        const double front = 1 * DegreesToRadians;
        const double back = behind * DegreesToRadians;
        const double up =
            60 * std::pow(std::cos(phi) / (1 - root(front)), 2) * depth * depth * std::tan(front);
        const double down = 60 * std::pow(std::cos(phi) / (1 + root(back)), 2) *
                            std::pow(10 + depth, 2) * std::tan(back);
        EXPECT_EQ(wall.says("vertical-balance"), up > down) << behind << ' ' << up << ' ' << down;
        (up > down ? spoken : silent) += 1;
    }
    EXPECT_GT(spoken, 0);
    EXPECT_GT(silent, 0);
}

TEST(ResultNotes, TheWallFrictionOfAnAnchoredWallCountsDownToItsBottom) {
    Problem problem = plainAnchoredWall();
    problem.SoilWallFriction(Left, 1) = 5;
    ToldWall wall(problem);
    ASSERT_TRUE(wall.isSolved());
    const auto note = wall.note("vertical-balance");
    ASSERT_TRUE(note);
    // Half of the passive pressure at the bottom times the depth times tan 5, as above.
    const double r =
        std::sqrt(std::sin(35 * DegreesToRadians) * 0.5 / std::cos(5 * DegreesToRadians));
    const double KpCos = std::pow(std::cos(30 * DegreesToRadians) / (1 - r), 2);
    const double depth = wall.level().penetration;
    EXPECT_NE(depth, std::floor(depth)); // the bottom lies between two rows
    EXPECT_NEAR(*note->value, 60 * KpCos * depth * depth * std::tan(5 * DegreesToRadians),
                1e-3 * *note->value);
}

TEST(ResultNotes, OverExcavationIsSolved) {
    ToldWall wall(plainCantilever()); // 10 % of 10 FT
    const auto note = wall.note("over-excavation");
    ASSERT_TRUE(note);
    EXPECT_NEAR(*note->value, 1, 1e-12);
    // In one sand all lengths grow with the height: 11 FT need 1.1 times the depth.
    EXPECT_NEAR(note->second->levels(1).penetration, 1.1 * wall.level().penetration, 0.02);

    Problem high = plainCantilever();
    high.SurfaceElev(Left, 1) = -20;
    EXPECT_EQ(ToldWall(high).note("over-excavation")->value, 1.64);
    high.SurfaceElev(Left, 1) = -16.3;
    EXPECT_NEAR(*ToldWall(high).note("over-excavation")->value, 1.63, 1e-9);
    Problem level = plainCantilever();
    level.SurfaceElev(Left, 1) = 0;
    EXPECT_FALSE(ToldWall(level).says("over-excavation"));
}

TEST(ResultNotes, AnAnalysisIsComparedByItsFactor) {
    ToldWall wall(analysisOfPlain(-25));
    ASSERT_TRUE(wall.isSolved());
    const auto note = wall.note("over-excavation");
    ASSERT_TRUE(note);
    EXPECT_LT(note->second->levels(1).factorOfSafety, wall.level().factorOfSafety);
    EXPECT_NE(note->text.find("a factor of safety of"), std::string::npos);
}

TEST(ResultNotes, TheStopForReviewHasTheNotesOnTheInput) {
    ToldWall wall(withGround(plainCantilever(), Left, 50, 0));
    wall.solved.results = nullptr;
    const auto notes = wall.notes();
    EXPECT_EQ(notes.size(), notesOnInput({.problem = wall.problem}).size());
    for (const Note& note : notes) {
        EXPECT_FALSE(note.second) << note.code;
    }
}

TEST(ResultNotes, ASearchThatStoppedAtItsLimitHasTheLargerFactor) {
    ToldWall told(analysisOfPlain(-20));
    ASSERT_TRUE(told.isSolved());
    const NoteRequest request{.problem = told.problem};
    const Wall wall{request, told.problem, &told.solved, &told.options, &told.second};
    SecondOpinion second;
    second.failure.code = FailureCode::FactorDeclined;
    EXPECT_TRUE(compare(wall, second).speaks());
    EXPECT_EQ(compare(wall, second).severity(), Severity::Caution);
    second.failure.code = FailureCode::NoSignChange;
    EXPECT_EQ(compare(wall, second).severity(), Severity::Unsafe);
    second.failure.code = FailureCode::None;
    second.levelCount = 1;
    told.solved.results = nullptr;
    told.solved.failure.code = FailureCode::FactorDeclined;
    EXPECT_EQ(compare(wall, second).severity(), Severity::Unsafe);
}

TEST(ResultNotes, ASearchThatAPersonStoppedIsNotGoneOnWith) {
    ToldWall wall(withGround(plainCantilever(), Left, 50, 0));
    ASSERT_TRUE(wall.says("over-excavation"));
    wall.solved = {};
    wall.solved.failure.code = FailureCode::FactorDeclined;
    for (const Note& note : wall.notes()) {
        EXPECT_FALSE(note.second) << note.code;
    }
    EXPECT_TRUE(wall.says("no-water"));
    wall.solved.failure.code = FailureCode::InvalidProblem;
    EXPECT_TRUE(wall.notes().empty());
}

// ---- all together ------------------------------------------------------------------------------

TEST(ResultNotes, TheToldResultsStay) {
    ToldWall wall(withGround(plainCantilever(), Right, 8, 3));
    const double bottom = wall.workspace.results().levels(1).bottomElev;
    const Problem before = wall.problem;
    EXPECT_FALSE(wall.notes().empty());
    EXPECT_EQ(wall.workspace.results().levels(1).bottomElev, bottom);
    EXPECT_EQ(wall.problem, before);
}

TEST(ResultNotes, WorkOfUnsafeNotesAloneGivesTheSameOnes) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilWallFriction, 25);
    ToldWall wall(problem);
    const auto all = wall.notes();
    const auto unsafe = wall.notes(NoteWork::UnsafeOnly);
    EXPECT_GT(unsafe.size(), 0U);
    ASSERT_EQ(static_cast<int>(unsafe.size()), countOf(all, Severity::Unsafe));
    for (std::size_t i = 0; i < unsafe.size(); ++i) {
        EXPECT_EQ(unsafe[i].code, all[i].code);
        EXPECT_EQ(unsafe[i].text, all[i].text);
    }
    EXPECT_TRUE(wall.notes(NoteWork::None).empty());
}

TEST(ResultNotes, EveryNoteNamesItsSource) {
    ToldWall wall(plainAnchoredWall());
    for (const Note& note : wall.notes()) {
        EXPECT_FALSE(note.source.empty()) << note.code;
        EXPECT_FALSE(note.text.empty()) << note.code;
        EXPECT_EQ(note.text.back(), '.') << note.code;
    }
}

} // namespace
} // namespace korvane::test
