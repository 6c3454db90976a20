// Rules that need no solution: each speaks on one side of its limit and is silent on the other.
#include "support/pressure_bench.h"
#include "told_wall.h"

namespace korvane::test {
namespace {

TEST(InputNotes, WaterWeighsWhatWaterWeighs) {
    const auto says = [](double weight) {
        return saysOfInput(withWater(plainCantilever(), -5, -10, weight), "water-weight");
    };
    EXPECT_TRUE(says(61.9));
    EXPECT_FALSE(says(62));
    EXPECT_FALSE(says(65));
    EXPECT_TRUE(says(65.1));
    EXPECT_TRUE(says(9.81));
    const auto note = inputNote(withWater(plainCantilever(), -5, -10, 9.81), "water-weight");
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_EQ(note->value, 9.81);
    EXPECT_EQ(note->limit, 62);
    EXPECT_FALSE(saysOfInput(plainCantilever(), "water-weight"));
}

/// A wall whose bottom is given at EL -25, 15 FT below the ground in front.
Problem givenWall() {
    Problem problem = plainCantilever();
    problem.ProgramMode = Mode::Analysis;
    problem.WallBottomElev = -25;
    problem.WallModulus = 29e6;
    problem.WallInertia = 100;
    return problem;
}

TEST(InputNotes, FactorsBehindGivenCoefficientsAreIdle) {
    Problem problem = plainCantilever();
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    problem.SoilCoefActive(Right, 1) = 0.3;
    problem.SoilCoefPassive(Right, 1) = 3;
    EXPECT_FALSE(saysOfInput(problem, "idle-factors")); // the wall's own act on the left
    problem.Level2FSActive(Left) = problem.Level2FSPassive(Left) = 1.5;
    EXPECT_FALSE(saysOfInput(problem, "idle-factors")); // so do these
    problem.Level2FSActive(Right) = 1.2;
    problem.Level2FSPassive(Right) = 1.5;
    const auto note = inputNote(problem, "idle-factors");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Remark);
    EXPECT_EQ(note->side, Right);
    EXPECT_EQ(note->value, 1.5);
}

TEST(InputNotes, OfAGivenBottomKnowWhatLiesBelowIt) {
    Problem problem = givenWall();
    problem.HLineCount = 1;
    problem.HLineElev(1) = -25;
    EXPECT_FALSE(saysOfInput(problem, "load-below-bottom"));
    problem.HLineElev(1) = -25.1;
    EXPECT_EQ(inputNote(problem, "load-below-bottom")->limit, -25);
    problem.ProgramMode = Mode::Design; // its bottom is not known yet
    EXPECT_FALSE(saysOfInput(problem, "load-below-bottom"));
}

TEST(InputNotes, OfAGivenBottomKnowAThinLayerAtIt) {
    Problem problem = givenWall();
    problem.SoilLayerCount(Left) = 2;
    problem.SoilBottomElev(Left, 2) = NoLayerBottom;
    problem.SoilSatWeight(Left, 2) = problem.SoilMoistWeight(Left, 2) = 120;
    problem.SoilFriction(Left, 2) = 30;
    problem.SoilBottomElev(Left, 1) = -23.9;
    EXPECT_FALSE(saysOfInput(problem, "thin-layer"));
    problem.SoilBottomElev(Left, 1) = -24.1;
    EXPECT_NEAR(*inputNote(problem, "thin-layer")->value, 0.9, 1e-9);
}

TEST(InputNotes, OfAGivenBottomKnowTheExitGradient) {
    // A head of 10 FT over a path of 20 + 15 FT: 0.2857. The soil in front bears its buoyant weight
    // over that of water: a factor of 1.5 where it weighs 62.4 (1 + 1.5 * 0.2857) = 89.14 PCF.
    Problem problem = withWater(givenWall(), 0, -10);
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -5;
    setBothSides(problem.SoilSatWeight, 89.2);
    EXPECT_FALSE(saysOfInput(problem, "exit-gradient"));
    setBothSides(problem.SoilSatWeight, 89.0);
    EXPECT_EQ(inputNote(problem, "exit-gradient")->severity, Severity::Caution);
    // A factor of 1 at 62.4 * 1.2857 = 80.23 PCF.
    setBothSides(problem.SoilSatWeight, 80.1);
    EXPECT_EQ(inputNote(problem, "exit-gradient")->severity, Severity::Unsafe);
    problem.SeepageKind = Seepage::Given;
    problem.SeepageGradient.fill(0.1);
    EXPECT_FALSE(saysOfInput(problem, "exit-gradient"));
}

TEST(InputNotes, MetricUnitWeightsAreUnsafe) {
    Problem problem = plainCantilever();
    problem.SoilMoistWeight(Left, 1) = 29.9;
    const auto note = inputNote(problem, "metric-weight");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_EQ(note->side, Left);
    EXPECT_EQ(note->layer, 1);
    EXPECT_FALSE(saysOfInput(problem, "unit-weight"));
    problem.SoilMoistWeight(Left, 1) = 30;
    EXPECT_FALSE(saysOfInput(problem, "metric-weight"));
    EXPECT_TRUE(saysOfInput(problem, "unit-weight"));
}

TEST(InputNotes, UnitWeightsLieBetween80And160) {
    const auto says = [](double weight) {
        Problem problem = plainCantilever();
        setBothSides(problem.SoilMoistWeight, weight);
        setBothSides(problem.SoilSatWeight, weight);
        return saysOfInput(problem, "unit-weight");
    };
    EXPECT_TRUE(says(79.9));
    EXPECT_FALSE(says(80));
    EXPECT_FALSE(says(160));
    EXPECT_TRUE(says(160.1));
}

TEST(InputNotes, WeightsThatNothingUsesAreNotLookedAt) {
    Problem dry = plainCantilever();
    setBothSides(dry.SoilSatWeight, 0);
    EXPECT_FALSE(saysOfInput(dry, "metric-weight"));
    Problem flooded = withWater(plainCantilever(), 0, -10);
    setBothSides(flooded.SoilSatWeight, 125);
    setBothSides(flooded.SoilMoistWeight, 0);
    EXPECT_FALSE(saysOfInput(flooded, "metric-weight"));
    flooded.WaterElev(Right) = -0.1; // a little of the layer stands above the water
    EXPECT_TRUE(saysOfInput(flooded, "metric-weight"));
}

TEST(InputNotes, AMetricWeightBesideOneInUseIsUnsafe) {
    Problem problem = plainCantilever(); // dry: the moist weight is in use
    problem.SoilSatWeight(Left, 1) = 30;
    EXPECT_FALSE(saysOfInput(problem, "metric-weight"));
    problem.SoilSatWeight(Left, 1) = 29.9;
    EXPECT_TRUE(saysOfInput(problem, "metric-weight"));
}

TEST(InputNotes, MoistSoilIsNotHeavierThanSaturated) {
    Problem problem = plainCantilever();
    setBothSides(problem.SoilMoistWeight, 120);
    setBothSides(problem.SoilSatWeight, 120);
    EXPECT_FALSE(saysOfInput(problem, "moist-above-saturated"));
    problem.SoilSatWeight(Right, 1) = 119.9;
    EXPECT_EQ(inputNote(problem, "moist-above-saturated")->severity, Severity::Caution);
}

TEST(InputNotes, GivenFactorsAreAtLeastOne) {
    Problem problem = plainCantilever();
    EXPECT_FALSE(saysOfInput(problem, "factor-below-one"));
    problem.SoilFSPassive(Left, 1) = 0.99;
    const auto note = inputNote(problem, "factor-below-one");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_EQ(note->side, Left);
    problem.SoilFSPassive(Left, 1) = 0; // none given
    EXPECT_FALSE(saysOfInput(problem, "factor-below-one"));
    problem.FSActive = 0.9;
    EXPECT_TRUE(saysOfInput(problem, "factor-below-one"));
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::OneForBoth; // both are found
    EXPECT_FALSE(saysOfInput(problem, "factor-below-one"));
}

TEST(InputNotes, FactorsThatNothingIsDividedByAreNotLookedAt) {
    Problem problem = plainCantilever();
    problem.FSActive = problem.FSPassive = 0.9;
    problem.Level2FSActive(Right) = problem.Level2FSActive(Left) = 1;
    problem.Level2FSPassive(Right) = problem.Level2FSPassive(Left) = 1.5;
    EXPECT_FALSE(saysOfInput(problem, "factor-below-one"));
    problem.Level2FSPassive(Right) = 0.5; // holds a cantilever, not an anchored wall
    EXPECT_TRUE(saysOfInput(problem, "factor-below-one"));
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -2;
    EXPECT_FALSE(saysOfInput(problem, "factor-below-one"));
    problem.Level2FSPassive(Left) = 0.5;
    EXPECT_TRUE(saysOfInput(problem, "factor-below-one"));
}

TEST(InputNotes, AnAnchorInTheGroundIsToldBeforeASolution) {
    Problem problem = plainAnchoredWall(); // the ground in front at -10
    problem.AnchorElev = -9.99;
    EXPECT_FALSE(saysOfInput(problem, "anchor-place"));
    problem.AnchorElev = -10;
    const auto note = inputNote(problem, "anchor-place");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->limit, -10);
}

TEST(InputNotes, ClayHeavesFromUnderSandButNoCrustByItself) {
    // 5.14 x 320 / (120 x 10) = 1.371, at the top of the clay as well: sand weighs the same.
    Problem problem = plainCantilever();
    setBothSides(problem.SoilCohesion, 0);
    setLayerBottoms(problem, Left, {-10.5});
    problem.SoilFriction(Left, 2) = 0;
    problem.SoilCohesion(Left, 2) = 320;
    const auto note = inputNote(problem, "basal-heave");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->layer, 2);
    EXPECT_NEAR(*note->value, 5.14 * 320 / 1200, 1e-9);
    setLayerBottoms(problem, Left, {-20.1}); // deeper than the wall is exposed
    problem.SoilFriction(Left, 2) = 0;
    problem.SoilCohesion(Left, 2) = 320;
    EXPECT_FALSE(saysOfInput(problem, "basal-heave"));

    Problem crust = plainCantilever();
    setLayerBottoms(crust, Left, {-14.9});
    crust.SoilFriction(Left, 1) = 0;
    crust.SoilCohesion(Left, 1) = 300;
    EXPECT_FALSE(saysOfInput(crust, "basal-heave"));
    crust.SoilBottomElev(Left, 1) = -15.1; // half the exposed height
    EXPECT_TRUE(saysOfInput(crust, "basal-heave"));
}

TEST(InputNotes, FactorsDoNotActOnGivenCoefficients) {
    Problem problem = plainCantilever();
    problem.FSActive = 0.9;
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    EXPECT_TRUE(saysOfInput(problem, "factor-below-one"));
    problem.SoilDataKind(Left) = SoilData::Coefficients;
    problem.Level2FSActive(Left) = 0.9;
    EXPECT_FALSE(saysOfInput(problem, "factor-below-one"));
}

TEST(InputNotes, WallFrictionIsAtMostTwoThirdsOfTheSoils) {
    Problem problem = plainCantilever(); // 30 degrees
    problem.SoilWallFriction(Right, 1) = 20.04;
    EXPECT_FALSE(saysOfInput(problem, "wall-friction"));
    problem.SoilWallFriction(Right, 1) = 20.06;
    EXPECT_TRUE(saysOfInput(problem, "wall-friction"));
}

TEST(InputNotes, GroundIsNotSteeperThanItsFriction) {
    // 1 on 1.7 is 30.5 degrees, 1 on 1.74 is 29.9; the soil has 30.
    EXPECT_TRUE(saysOfInput(withGround(plainCantilever(), Right, 17, 10), "steep-ground"));
    EXPECT_FALSE(saysOfInput(withGround(plainCantilever(), Right, 17.4, 10), "steep-ground"));
    EXPECT_TRUE(saysOfInput(withGround(plainCantilever(), Left, 17, -10), "steep-ground"));
    Problem clay = withGround(plainCantilever(), Right, 17, 10);
    clay.SoilFriction(Right, 1) = 0;
    clay.SoilCohesion(Right, 1) = 900;
    EXPECT_FALSE(saysOfInput(clay, "steep-ground"));
}

TEST(InputNotes, HorizontalLoadsStandOnTheWall) {
    Problem problem = plainCantilever();
    problem.HLineCount = 1;
    problem.HLineLoad(1) = 100;
    problem.HLineElev(1) = 0;
    EXPECT_FALSE(saysOfInput(problem, "load-above-top"));
    problem.HLineElev(1) = 0.1;
    EXPECT_TRUE(saysOfInput(problem, "load-above-top"));
}

TEST(InputNotes, DistributedLoadsStandOnTheWall) {
    Problem problem = plainCantilever();
    problem.HDistCount = 2;
    problem.HDistElev(1) = 0;
    problem.HDistElev(2) = -5;
    EXPECT_FALSE(saysOfInput(problem, "load-above-top"));
    problem.HDistElev(1) = 0.1;
    EXPECT_EQ(inputNote(problem, "load-above-top")->value, 0.1);
}

TEST(InputNotes, LoadsEndOnTheGroundThatIsGiven) {
    struct Load {
        const char* name;
        void (*put)(Problem& problem, double end);
    };
    const Load loads[] = {
        {"line",
         [](Problem& problem, double end) {
             problem.VLineCount(Right) = 2;
             problem.VLineDist(Right, 1) = 3;
             problem.VLineDist(Right, 2) = end;
         }},
        {"strip",
         [](Problem& problem, double end) {
             problem.VStripCount(Right) = 1;
             problem.VStripStart(Right, 1) = 5;
             problem.VStripEnd(Right, 1) = end;
         }},
        {"ramp",
         [](Problem& problem, double end) {
             problem.VRampCount(Right) = 1;
             problem.VRampStart(Right) = 5;
             problem.VRampEnd(Right) = end;
         }},
        {"triangle",
         [](Problem& problem, double end) {
             problem.VTriCount(Right) = 1;
             problem.VTriStart(Right, 1) = 5;
             problem.VTriPeak(Right, 1) = 8;
             problem.VTriEnd(Right, 1) = end;
         }},
        {"variable",
         [](Problem& problem, double end) {
             problem.VVarCount(Right) = 2;
             problem.VVarDist(Right, 1) = 5;
             problem.VVarDist(Right, 2) = end;
         }},
    };
    for (const Load& load : loads) {
        Problem problem = withGround(plainCantilever(), Right, 20, 4);
        load.put(problem, 20);
        EXPECT_FALSE(saysOfInput(problem, "load-beyond-ground")) << load.name;
        load.put(problem, 20.1);
        const auto note = inputNote(problem, "load-beyond-ground");
        ASSERT_TRUE(note) << load.name;
        EXPECT_EQ(note->value, 20.1) << load.name;
        EXPECT_EQ(note->limit, 20) << load.name;
        problem.SurfacePointCount(Right) = 1; // level ground without an end
        EXPECT_FALSE(saysOfInput(problem, "load-beyond-ground")) << load.name;
    }
}

TEST(InputNotes, ClayInFrontHeavesUnderTheLoadBehind) {
    // 5.14 c / (120 x 10) = 1.5 at c = 350.2 PSF.
    Problem problem = plainCantilever();
    setBothSides(problem.SoilFriction, 0);
    setBothSides(problem.SoilCohesion, 351);
    EXPECT_FALSE(saysOfInput(problem, "basal-heave"));
    setBothSides(problem.SoilCohesion, 349);
    const auto note = inputNote(problem, "basal-heave");
    ASSERT_TRUE(note);
    EXPECT_NEAR(*note->value, 5.14 * 349 / 1200, 1e-9);
    // Water in front holds the bottom down: 6 FT of it leave 826 PSF.
    EXPECT_FALSE(saysOfInput(withWater(problem, -10, -4), "basal-heave"));
}

TEST(InputNotes, SaturatedWeightsBesideNetPressuresOfWater) {
    Problem problem = plainCantilever(); // 120 PCF moist
    setBothSides(problem.SoilSatWeight, 130);
    EXPECT_FALSE(saysOfInput(problem, "saturated-weight")); // without water the other remark
    EXPECT_FALSE(saysOfInput(withWater(problem, -5, -10), "saturated-weight"));
    problem.WaterDataKind = WaterData::Pressures;
    const auto note = inputNote(problem, "saturated-weight");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->value, 130);
    EXPECT_EQ(note->limit, 120);
    EXPECT_FALSE(saysOfInput(problem, "no-water"));
    setBothSides(problem.SoilSatWeight, 120); // none that differs
    EXPECT_FALSE(saysOfInput(problem, "saturated-weight"));
}

TEST(InputNotes, RemarksTellWhatIsNotGiven) {
    Problem problem = plainCantilever();
    EXPECT_TRUE(saysOfInput(problem, "no-water"));
    EXPECT_FALSE(saysOfInput(withWater(problem, -5, -10), "no-water"));
    EXPECT_TRUE(saysOfInput(problem, "no-surcharge"));
    problem.VUniformCount(Left) = 1;
    EXPECT_TRUE(saysOfInput(problem, "no-surcharge"));
    problem.VUniformCount(Right) = 1;
    EXPECT_FALSE(saysOfInput(problem, "no-surcharge"));
    EXPECT_TRUE(saysOfInput(problem, "not-looked-at"));
}

TEST(InputNotes, TextsTakeTheUnitsAskedFor) {
    Problem problem = plainCantilever();
    setBothSides(problem.SoilMoistWeight, 20);
    const auto textIn = [&problem](UnitSystem units) {
        return notesOnInput({.problem = problem, .units = units}).front().text;
    };
    EXPECT_NE(textIn(UnitSystem::US).find("20.00 PCF"), std::string::npos);
    EXPECT_NE(textIn(UnitSystem::SI).find("3.142 kN/m3"), std::string::npos); // x 0.157087
}

TEST(InputNotes, UnsafeOnesComeFirstAndAlone) {
    Problem problem = plainCantilever();
    setBothSides(problem.SoilMoistWeight, 20);
    problem.SoilWallFriction(Right, 1) = 25;
    const auto all = notesOnInput({.problem = problem});
    ASSERT_GE(all.size(), 3U);
    EXPECT_EQ(all.front().severity, Severity::Unsafe);
    EXPECT_EQ(all.back().severity, Severity::Remark);
    const auto unsafe = notesOnInput({.problem = problem, .work = NoteWork::UnsafeOnly});
    EXPECT_EQ(static_cast<int>(unsafe.size()), countOf(all, Severity::Unsafe));
    EXPECT_TRUE(notesOnInput({.problem = problem, .work = NoteWork::None}).empty());
}

} // namespace
} // namespace korvane::test
