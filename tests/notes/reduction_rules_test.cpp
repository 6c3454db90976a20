// Notes on Rowe's moment reduction.
#include "told_wall.h"

namespace korvane::test {
namespace {

TEST(ReductionNotes, MomentReductionOutsideItsRange) {
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
    EXPECT_EQ(wall.note("reduction-range")->value, -3.6); // the nearest
    EXPECT_EQ(wall.note("reduction-range")->limit, -3.5);
    wall.reduction.soil = RoweSoil::Clay; // from -3.1 to -2.0
    EXPECT_EQ(wall.note("reduction-range")->limit, -3.1);
    wall.reduction.PileLogRigidity(2) = -1.9;
    EXPECT_EQ(wall.note("reduction-range")->value, -1.9);
    EXPECT_EQ(wall.note("reduction-range")->limit, -2.0);
    wall.reduction.applicable = false;
    wall.reduction.RoweBeta = 0.31;
    wall.reduction.broken.add(RoweCondition::BetaTooLarge);
    wall.reduction.broken.add(RoweCondition::RightBelowTop);
    const auto note = wall.note("reduction-range");
    ASSERT_TRUE(note);
    EXPECT_NE(note->text.find("in full: BETA above 0.3, right surface below the top of the wall."),
              std::string::npos);
    EXPECT_EQ(note->value, 0.31);
    EXPECT_EQ(note->limit, 0.3);
}

TEST(ReductionNotes, EachLimitOfMomentReductionIsTold) {
    struct Row {
        RoweCondition condition;
        const char* words;
        double value, limit;
    };
    const Row rows[] = {
        {RoweCondition::AlphaTooSmall, "ALPHA below 0.6", 0.55, 0.6},
        {RoweCondition::AlphaTooLarge, "ALPHA above 0.8", 0.55, 0.8},
        {RoweCondition::BetaTooLarge, "BETA above 0.3", 0.35, 0.3},
        {RoweCondition::RightBelowTop, "right surface below the top of the wall", 0, 4},
        {RoweCondition::RightBelowLeft, "right surface at or below the left one", 0, -10},
        {RoweCondition::StabilityTooSmall, "stability number below 0.5", 0.45, 0.5},
        {RoweCondition::StabilityTooLarge, "stability number above 2.5", 0.45, 2.5},
    };
    ToldWall wall(plainAnchoredWall());
    ASSERT_TRUE(wall.isSolved());
    wall.problem.WallTopElev = 4;
    for (const Row& row : rows) {
        wall.reduction = {};
        wall.reduction.soil = RoweSoil::Clay;
        wall.reduction.RoweAlpha = 0.55;
        wall.reduction.RoweBeta = 0.35;
        wall.reduction.RoweStability = 0.45;
        wall.reduction.broken.add(row.condition);
        const auto note = wall.note("reduction-range");
        ASSERT_TRUE(note) << row.words;
        EXPECT_NE(note->text.find(std::string(": ") + row.words + "."), std::string::npos);
        EXPECT_EQ(note->value, row.value) << row.words;
        EXPECT_EQ(note->limit, row.limit) << row.words;
    }
}

TEST(ReductionNotes, SoilWithoutCurvesHasNoMomentReduced) {
    const auto textOf = [](const Problem& problem) {
        ToldWall wall(problem);
        EXPECT_TRUE(wall.isSolved());
        const auto note = wall.note("reduction-range");
        return note ? note->text : "";
    };
    Problem problem = plainAnchoredWall();
    EXPECT_EQ(textOf(problem).find("both friction"), std::string::npos);
    problem.SoilCohesion(Left, 1) = 50;
    const auto note = ToldWall(problem).note("reduction-range");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Caution);
    EXPECT_EQ(note->side, Left);
    EXPECT_EQ(note->layer, 1);
    EXPECT_EQ(note->value, 50);
    EXPECT_EQ(note->limit, 0);
    EXPECT_NE(note->text.find("both friction and cohesion (layer 1: 50.0 PSF)"), std::string::npos)
        << note->text;

    // A second layer with cohesion counts where the wall reaches it.
    problem = plainAnchoredWall();
    const double bottom = ToldWall(problem).level().bottomElev;
    problem.SoilLayerCount(Left) = 2;
    problem.SoilMoistWeight(Left, 2) = problem.SoilSatWeight(Left, 2) = 120;
    problem.SoilFriction(Left, 2) = 30;
    problem.SoilCohesion(Left, 2) = 40;
    problem.SoilBottomElev(Left, 2) = NoLayerBottom;
    problem.SoilBottomElev(Left, 1) = bottom - 0.5;
    EXPECT_EQ(textOf(problem).find("both friction"), std::string::npos);
    problem.SoilBottomElev(Left, 1) = bottom + 0.5;
    EXPECT_NE(textOf(problem).find("both friction and cohesion (layer 2: 40.0 PSF)"),
              std::string::npos);

    problem = plainAnchoredWall();
    problem.SoilDataKind(Left) = SoilData::Coefficients;
    problem.SoilCoefActive(Left, 1) = 0.333;
    problem.SoilCoefPassive(Left, 1) = 3;
    EXPECT_NE(textOf(problem).find("given by coefficients"), std::string::npos);
}

TEST(ReductionNotes, ReductionCoefficientsBetweenThePointsAroundThem) {
    struct Row {
        RoweSoil soil;
        double alpha, stability, x;
        int k;
        double low, high; ///< of the curves' points around
    };
    const Row rows[] = {
        // Clay, ALPHA 0.6 and 0.7, S 1.0 and 1.25, x -3.1 and -2.6: 0.489 to 0.678.
        {RoweSoil::Clay, 0.65, 1.1, -2.9, 1, 0.489, 0.678},
        // On points: ALPHA 0.8, S 0.5, x -2.6.
        {RoweSoil::Clay, 0.8, 0.5, -2.6, 1, 0.922, 0.922},
        // Beyond S 2.0 the curves go on level; ALPHA 0.7 and 0.8, x -2.6 and -2.0.
        {RoweSoil::Clay, 0.75, 2.4, -2.3, 1, 0.45, 0.55},
        // Loose sand, ALPHA 0.7 and 0.8, x -3.0 and -2.5.
        {RoweSoil::Sand, 0.72, 0, -2.8, 1, 0.383, 0.656},
        // Dense sand, ALPHA 0.6 and 0.7, x -2.0 and -1.5.
        {RoweSoil::Sand, 0.61, 0, -1.6, 2, 0.144, 0.256},
    };
    ToldWall wall(plainAnchoredWall());
    ASSERT_TRUE(wall.isSolved());
    for (const Row& row : rows) {
        const auto noteAt = [&](double coefficient) {
            wall.reduction = {};
            wall.reduction.soil = row.soil;
            wall.reduction.applicable = true;
            wall.reduction.RoweAlpha = row.alpha;
            wall.reduction.RoweStability = row.stability;
            wall.reduction.PileLogRigidity(3) = row.x;
            wall.reduction.inRange(3) = true;
            // The other density of sand stands where both sets of curves hold it.
            wall.reduction.coefficient(3, 1) = row.k == 1 ? coefficient : 0.27;
            wall.reduction.coefficient(3, 2) = row.k == 2 ? coefficient : 0.4;
            return wall.note("reduction-coefficient");
        };
        EXPECT_FALSE(noteAt(row.low)) << row.low;
        EXPECT_FALSE(noteAt(row.high)) << row.high;
        const auto below = noteAt(row.low - 0.001);
        const auto above = noteAt(row.high + 0.001);
        ASSERT_TRUE(below && above) << row.low;
        EXPECT_EQ(below->limit, row.low);
        EXPECT_EQ(above->limit, row.high);
        EXPECT_EQ(above->value, row.high + 0.001);
    }
}

TEST(ReductionNotes, SandCoefficientsOfASolvedWallKeepToTheCurves) {
    Problem problem = plainAnchoredWall();
    ToldWall wall(problem);
    ASSERT_TRUE(wall.solved.reduction != nullptr);
    EXPECT_FALSE(wall.says("reduction-coefficient"));
}

} // namespace
} // namespace korvane::test
