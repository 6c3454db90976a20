// The three steps of a solution: what each gives, what a later failure leaves, what they leave
// alone.
#include "solution_numbers.h"
#include "support/support.h"
#include "walls.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

class RoadTest : public testing::Test {
  protected:
    PileSections sections = defaultSections();
    Workspace workspace;
};

TEST_F(RoadTest, LeavesTheProblemAsItWas) {
    int failures = 0;
    for (const Problem& wall : manyWalls(40)) {
        const Problem problem = wall;
        for (const Options& options : {bySweep(), byFixedSurface()}) {
            failures += solve(problem, options, sections, workspace).failure ? 1 : 0;
            EXPECT_EQ(problem, wall);
        }
    }
    EXPECT_GT(failures, 20);
}

TEST_F(RoadTest, InOneCallIsTheRoadInThreeSteps) {
    for (const Problem& problem : manyWalls(20)) {
        Workspace other;
        const Solved whole = solve(problem, bySweep(), sections, other);
        const auto review = reviewWall(problem, bySweep(), workspace);
        ASSERT_EQ(static_cast<bool>(review), whole.review != nullptr);
        if (!review) {
            EXPECT_EQ(review.failure().code, whole.failure.code);
            continue;
        }
        EXPECT_EQ(reviewNumbers(*review), reviewNumbers(*whole.review));
        const auto results = solveWall(workspace);
        ASSERT_EQ(static_cast<bool>(results), whole.results != nullptr);
        if (!results) {
            EXPECT_EQ(results.failure().code, whole.failure.code);
            continue;
        }
        EXPECT_EQ(resultNumbers(problem, *results), resultNumbers(problem, *whole.results));
        if (whole.reduction != nullptr) {
            const auto reduction = reduceWallMoments(workspace, sections);
            ASSERT_TRUE(reduction);
            EXPECT_EQ(reductionNumbers(*reduction), reductionNumbers(*whole.reduction));
        }
    }
}

// Clay of 450 PSF below 1,800 PSF of overburden: 4 x 450 = 1800, no net pressure at any depth and
// no bottom. On the right the active pressure at -10 is 120 x 10 - 2 x 450 = 300 PSF.
TEST_F(RoadTest, AFailedSearchLeavesTheReview) {
    Problem problem = plainCantilever();
    problem.SurfaceElev(Left, 1) = -15;
    for (const int side : {Right, Left}) {
        problem.SoilFriction(side, 1) = 0;
        problem.SoilCohesion(side, 1) = 450;
    }
    const auto review = reviewWall(problem, {}, workspace);
    ASSERT_TRUE(review);
    const auto before = reviewNumbers(*review);
    const auto results = solveWall(workspace);
    ASSERT_FALSE(results);
    EXPECT_EQ(results.failure().code, FailureCode::NoCantileverBottom);
    EXPECT_EQ(reviewNumbers(workspace.review()), before);
    EXPECT_EQ(workspace.results().levelCount, 0);

    const PressureDiagrams& diagrams = workspace.review().diagrams;
    int rows = 0;
    for (int i = 1; i <= diagrams.grid.NumElevs; ++i) {
        if (diagrams.grid.ElevGrid(i) == -10) {
            EXPECT_NEAR(diagrams.pressures.ActivePressures(Right, i, 1), 300, 1e-9);
            ++rows;
        }
    }
    EXPECT_EQ(rows, 1);

    const Solved solved = solve(problem, {}, sections, workspace);
    EXPECT_EQ(solved.review, &workspace.review());
    EXPECT_EQ(solved.results, nullptr);
    EXPECT_EQ(solved.reduction, nullptr);
}

// Sections without stiffness: H^4 / EI divides by zero.
TEST_F(RoadTest, AFailedReductionLeavesTheResults) {
    const Problem problem = plainAnchored();
    for (int p = 1; p <= sections.PileSectionCount; ++p) {
        sections.PileModulus(p) = 0;
    }
    ASSERT_TRUE(reviewWall(problem, {}, workspace));
    const auto results = solveWall(workspace);
    ASSERT_TRUE(results);
    const auto before = resultNumbers(problem, *results);
    const auto reduction = reduceWallMoments(workspace, sections);
    ASSERT_FALSE(reduction);
    EXPECT_EQ(reduction.failure().code, FailureCode::RunTimeError);
    EXPECT_EQ(reduction.failure().error, 11);
    EXPECT_EQ(reduction.failure().stage.doing, Doing::MomentReduction);
    EXPECT_EQ(resultNumbers(problem, workspace.results()), before);

    const Solved solved = solve(problem, {}, sections, workspace);
    ASSERT_NE(solved.results, nullptr);
    EXPECT_EQ(resultNumbers(problem, *solved.results), before);
    EXPECT_EQ(solved.reduction, nullptr);
}

/// True where both tell the same end of a solution.
bool isSame(const Failure& one, const Failure& other) {
    return one.code == other.code && one.side == other.side && one.level == other.level &&
           one.elev == other.elev && one.stage.doing == other.stage.doing;
}

TEST_F(RoadTest, AStepBehindAFailedReviewGivesItsFailure) {
    ASSERT_TRUE(solve(plainAnchored(), {}, sections, workspace).reduction != nullptr);
    const Problem problem = sloping(plainAnchored());
    const auto review = reviewWall(problem, {}, workspace);
    ASSERT_FALSE(review);
    EXPECT_EQ(review.failure().code, FailureCode::WedgeMethodMissing);
    for (int again = 0; again < 2; ++again) {
        const auto results = solveWall(workspace);
        ASSERT_FALSE(results);
        EXPECT_TRUE(isSame(results.failure(), review.failure()));
        const auto reduction = reduceWallMoments(workspace, sections);
        ASSERT_FALSE(reduction);
        EXPECT_TRUE(isSame(reduction.failure(), review.failure()));
    }
    // Nothing of the wall before is left over.
    EXPECT_EQ(workspace.results().levelCount, 0);
    EXPECT_EQ(workspace.reduction().soil, RoweSoil::None);
    EXPECT_TRUE(reviewWall(problem, bySweep(), workspace)); // and the next solution is a new one
}

// The clay of the failed search above.
TEST_F(RoadTest, AStepBehindAFailedSearchGivesItsFailure) {
    Problem problem = plainAnchored();
    for (const int side : {Right, Left}) {
        problem.SoilFriction(side, 1) = 0;
        problem.SoilCohesion(side, 1) = 450;
    }
    const auto review = reviewWall(problem, {}, workspace);
    ASSERT_TRUE(review);
    const auto before = reviewNumbers(*review);
    const auto results = solveWall(workspace);
    ASSERT_FALSE(results);
    for (int again = 0; again < 2; ++again) {
        const auto reduction = reduceWallMoments(workspace, sections);
        ASSERT_FALSE(reduction);
        EXPECT_TRUE(isSame(reduction.failure(), results.failure()));
        EXPECT_NE(reduction.failure().stage.doing, Doing::MomentReduction);
        const auto repeated = solveWall(workspace);
        ASSERT_FALSE(repeated);
        EXPECT_TRUE(isSame(repeated.failure(), results.failure()));
    }
    EXPECT_EQ(reviewNumbers(workspace.review()), before);
    EXPECT_EQ(workspace.results().levelCount, 0);
    EXPECT_EQ(workspace.reduction().soil, RoweSoil::None);
}

// Free earth has a bottom where fixed earth finds none any more: what was reached stays.
TEST_F(RoadTest, AFailureOfTheSecondLevelLeavesTheFirst) {
    for (const Problem& problem : manyWalls(200)) {
        if (problem.WallType != WallKind::Anchored || problem.ProgramMode != Mode::Design ||
            !reviewWall(problem, bySweep(), workspace)) {
            continue;
        }
        const auto results = solveWall(workspace);
        if (results || workspace.results().levelCount != 1) {
            continue;
        }
        EXPECT_EQ(results.failure().stage.level, 2);
        const double bottom = workspace.results().levels(1).bottomElev;
        const auto reduction = reduceWallMoments(workspace, sections);
        ASSERT_FALSE(reduction);
        EXPECT_TRUE(isSame(reduction.failure(), results.failure()));
        EXPECT_EQ(workspace.results().levelCount, 1);
        EXPECT_EQ(workspace.results().levels(1).bottomElev, bottom);
        return;
    }
    FAIL() << "no such wall";
}

// Steps move what they start from; a second time they must not.
TEST_F(RoadTest, AStepThatIsRepeatedGivesWhatItGave) {
    for (const Problem& problem :
         {plainAnchored(), plainCantilever(), analysisOf(plainAnchored(), -26)}) {
        ASSERT_TRUE(reviewWall(problem, {}, workspace));
        ASSERT_TRUE(solveWall(workspace));
        const auto before = resultNumbers(problem, workspace.results());
        const auto again = solveWall(workspace);
        ASSERT_TRUE(again);
        EXPECT_EQ(&*again, &workspace.results());
        EXPECT_EQ(resultNumbers(problem, *again), before);
        const auto first = reduceWallMoments(workspace, sections);
        ASSERT_TRUE(first);
        const auto reduced = reductionNumbers(*first);
        const auto second = reduceWallMoments(workspace, sections);
        ASSERT_TRUE(second);
        EXPECT_EQ(reductionNumbers(*second), reduced);
        EXPECT_EQ(resultNumbers(problem, workspace.results()), before);
    }
}

TEST_F(RoadTest, AStepWithoutTheOneBeforeItFails) {
    const auto expectRefused = [](const auto& step) {
        constexpr int invalidCall = 5;
        ASSERT_FALSE(step);
        EXPECT_EQ(step.failure().code, FailureCode::RunTimeError);
        EXPECT_EQ(step.failure().error, invalidCall);
    };
    expectRefused(solveWall(workspace)); // nothing was asked
    expectRefused(reduceWallMoments(workspace, sections));

    const Problem problem = plainAnchored();
    ASSERT_FALSE(solve(problem, {}, sections, workspace).failure);
    const Problem other = plainAnchored(-10);
    ASSERT_FALSE(prepareWall(other, {}, workspace));
    expectRefused(solveWall(workspace));
    ASSERT_TRUE(reviewWall(other, {}, workspace));
    expectRefused(reduceWallMoments(workspace, sections)); // never from the wall before
    EXPECT_EQ(workspace.reduction().soil, RoweSoil::None);
    ASSERT_TRUE(solveWall(workspace)); // a refused step spoils nothing
    EXPECT_TRUE(reduceWallMoments(workspace, sections));
}

// The reduction is tried with other sections: results and later tries stay as they are.
TEST_F(RoadTest, AFailedReductionEndsNoOtherTry) {
    const Problem problem = plainAnchored();
    ASSERT_FALSE(solve(problem, {}, sections, workspace).failure);
    const auto before = resultNumbers(problem, workspace.results());
    PileSections soft = sections;
    for (int p = 1; p <= soft.PileSectionCount; ++p) {
        soft.PileModulus(p) = 0;
    }
    ASSERT_FALSE(reduceWallMoments(workspace, soft));
    const auto results = solveWall(workspace);
    ASSERT_TRUE(results);
    EXPECT_EQ(resultNumbers(problem, *results), before);
    EXPECT_TRUE(reduceWallMoments(workspace, sections));
}

TEST_F(RoadTest, MomentsOfAnchoredDesignsAloneAreReduced) {
    const struct {
        Problem problem;
        bool reduced;
    } walls[] = {{plainAnchored(), true},
                 {plainCantilever(), false},
                 {analysisOf(plainAnchored(), -26), false},
                 {analysisOf(plainCantilever(), -28), false}};
    for (const auto& [problem, reduced] : walls) {
        EXPECT_EQ(reducesMoments(problem), reduced);
        const Solved solved = solve(problem, {}, sections, workspace);
        ASSERT_FALSE(solved.failure);
        EXPECT_EQ(solved.reduction != nullptr, reduced);
        const auto step = reduceWallMoments(workspace, sections);
        ASSERT_TRUE(step);
        EXPECT_EQ(step->soil, reduced ? RoweSoil::Sand : RoweSoil::None);
    }
}

TEST_F(RoadTest, AWedgeWithoutItsMethodIsAFailureOfItsSide) {
    Problem problem = sloping(plainCantilever());
    const auto review = reviewWall(problem, {}, workspace);
    ASSERT_FALSE(review);
    EXPECT_EQ(review.failure().code, FailureCode::WedgeMethodMissing);
    EXPECT_EQ(review.failure().side, Right);
    EXPECT_EQ(review.failure().stage.doing, Doing::Preparing);
    EXPECT_TRUE(reviewWall(problem, bySweep(), workspace));
    EXPECT_EQ(workspace.review().SideMethod(Right), PressureMethod::Sweep);
    EXPECT_EQ(workspace.review().SideMethod(Left), PressureMethod::Coefficients);
    EXPECT_TRUE(reviewWall(problem, byFixedSurface(), workspace));
    EXPECT_EQ(workspace.review().SideMethod(Right), PressureMethod::FixedSurface);

    problem.SurfacePointCount(Right) = 1;
    problem.SoilAdhesion(Left, 1) = 100;
    EXPECT_EQ(reviewWall(problem, {}, workspace).failure().side, Left);
}

TEST_F(RoadTest, AnAnalysisHasNoPressuresToReview) {
    const Problem problem = analysisOf(plainCantilever(), -30);
    const auto review = reviewWall(problem, {}, workspace);
    ASSERT_TRUE(review);
    EXPECT_FALSE(review->hasPressures);
    EXPECT_EQ(review->SideMethod(Right), PressureMethod::Coefficients);
    EXPECT_TRUE(solveWall(workspace));
    EXPECT_FALSE(workspace.results().review.hasPressures);
    ASSERT_TRUE(reviewWall(plainCantilever(), {}, workspace));
    EXPECT_TRUE(workspace.review().hasPressures);
}

/// The limits at which an analysis of a wall held by much more than it needs is asked.
class FactorLimitTest : public RoadTest {
  protected:
    FactorLimitTest() { problem.SurfaceElev(Left, 1) = -2; }
    Solved solveTo(FactorLimit limit) {
        return solve(problem, {.wedge = {}, .factorLimit = std::move(limit)}, sections, workspace);
    }
    Problem problem = analysisOf(plainCantilever(), -40);
};

TEST_F(FactorLimitTest, ByNumberAndByCallbackAreTheSame) {
    std::vector<double> asked;
    const auto upTo = [&asked](double largest) {
        asked.clear();
        return FactorLimit{.largest = 0, .ask = [&asked, largest](double limit) {
                               asked.push_back(limit);
                               return limit <= largest;
                           }};
    };
    const auto reached = solutionNumbers(problem, solveTo({.largest = 20, .ask = {}}));
    EXPECT_EQ(solutionNumbers(problem, solveTo(upTo(20))), reached);
    ASSERT_FALSE(asked.empty());
    EXPECT_EQ(asked.front(), 5.0);
    const double factor = workspace.results().levels(1).factorOfSafety;
    EXPECT_GT(factor, asked.back());
    EXPECT_LT(factor, asked.back() + 5);

    const Solved declined = solveTo({.largest = 4.99, .ask = {}});
    EXPECT_EQ(declined.failure.code, FailureCode::FactorDeclined);
    EXPECT_EQ(declined.failure.low, 5.0);
    EXPECT_EQ(declined.results, nullptr);
    const auto stopped = solutionNumbers(problem, declined);
    EXPECT_EQ(solutionNumbers(problem, solveTo(upTo(4.99))), stopped);
    EXPECT_EQ(asked, std::vector<double>{5.0});
}

} // namespace
} // namespace korvane::test
