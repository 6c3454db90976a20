// Notes on solved walls by coefficients: clay, seepage, loads, anchor, reduction, remarks.
#include "notes/second_opinion.h"
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
    problem.FSKind = 1;
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

// ---- seepage -----------------------------------------------------------------------------------

TEST(ResultNotes, TheGradientAtItsLimit) {
    ToldWall wall(seepingWall());
    ASSERT_TRUE(wall.isSolved());
    const double limit = wall.workspace.review().SeepageGradientLimit;
    wall.level().seepageGradient = limit - 1e-6;
    EXPECT_FALSE(wall.says("gradient-limit"));
    wall.level().seepageGradient = limit;
    EXPECT_EQ(wall.note("gradient-limit")->severity, Severity::Unsafe);
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
    wall.level().seepageGradient = 1.004;
    const auto note = wall.note("exit-gradient");
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_NEAR(*note->value, 62.6 / (1.004 * 62.4), 1e-9);
    EXPECT_EQ(note->limit, 1);
}

// ---- loads, anchor, layers ---------------------------------------------------------------------

TEST(ResultNotes, HorizontalLoadsBelowTheBottom) {
    ToldWall wall(plainCantilever());
    ASSERT_TRUE(wall.isSolved());
    wall.problem.HLineCount = 1;
    wall.problem.HLineElev(1) = wall.level().bottomElev;
    EXPECT_FALSE(wall.says("load-below-bottom"));
    wall.problem.HLineElev(1) -= 0.1;
    EXPECT_TRUE(wall.says("load-below-bottom"));
}

TEST(ResultNotes, AnAnchorMustPull) {
    ToldWall wall(plainAnchoredWall());
    ASSERT_TRUE(wall.isSolved());
    EXPECT_FALSE(wall.says("anchor-force"));
    wall.level(2).anchorForce = 0;
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

// ---- moment reduction --------------------------------------------------------------------------

TEST(ResultNotes, MomentReductionOutsideItsRange) {
    ToldWall wall(plainAnchoredWall());
    ASSERT_TRUE(wall.isSolved());
    wall.reduction = {};
    EXPECT_FALSE(wall.says("reduction-range")); // nothing to report
    wall.reduction.soil = RoweSoil::Sand;
    wall.reduction.applicable = true;
    wall.reduction.inRange(1) = true;
    wall.reduction.coefficient(1, 1) = wall.reduction.coefficient(1, 2) = 0.5;
    EXPECT_FALSE(wall.says("reduction-range"));
    wall.reduction.inRange(1) = false;
    wall.reduction.PileLogRigidity(1) = -3.6;
    wall.reduction.PileLogRigidity(2) = -4.2;
    EXPECT_NE(wall.note("reduction-range")->text.find("-4.2000 to -3.6000"), std::string::npos);
    wall.reduction.applicable = false;
    wall.reduction.broken.add(RoweCondition::BetaTooLarge);
    wall.reduction.broken.add(RoweCondition::RightBelowTop);
    const auto note = wall.note("reduction-range");
    ASSERT_TRUE(note);
    EXPECT_NE(note->text.find("in full: BETA above 0.3, right surface below the top of the wall."),
              std::string::npos);
}

TEST(ResultNotes, ReductionCoefficientsWithinTheCurves) {
    // The curves for clay run from 0.433 to 0.922.
    ToldWall wall(plainAnchoredWall());
    ASSERT_TRUE(wall.isSolved());
    wall.reduction = {};
    wall.reduction.soil = RoweSoil::Clay;
    wall.reduction.applicable = true;
    wall.reduction.inRange(3) = true;
    wall.reduction.coefficient(3, 1) = 0.922;
    EXPECT_FALSE(wall.says("reduction-coefficient"));
    wall.reduction.coefficient(3, 1) = 0.923;
    EXPECT_TRUE(wall.says("reduction-coefficient"));
    wall.reduction.coefficient(3, 1) = 0.432;
    const auto note = wall.note("reduction-coefficient");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->limit, 0.433);
}

// ---- remarks -----------------------------------------------------------------------------------

TEST(ResultNotes, FactorsReachStrengths) {
    Problem problem = plainCantilever();
    EXPECT_FALSE(ToldWall(problem).says("factors-on-strengths"));
    EXPECT_TRUE(ToldWall(problem).says("no-reserve"));
    problem.FSPassive = 1.01;
    EXPECT_TRUE(ToldWall(problem).says("factors-on-strengths"));
    EXPECT_FALSE(ToldWall(problem).says("no-reserve"));
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
