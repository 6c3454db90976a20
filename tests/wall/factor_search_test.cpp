// The search for a factor of safety, on bottoms made up for it. The wall's bottom is at -30 FT.
#include "wall/factor_search.h"

#include "support/pressure_bench.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

constexpr double W = -30;

struct FactorBench : Bench {
    FactorBench() { problem.WallType = WallKind::Cantilever; }

    /// The bottom (FT) that the present factor gives; false where the search has ended.
    bool trial(double Z) { return takeNextFactor(*state, level, search, limit(), Z, W); }

    /// Bracket -20 FT at a factor of 1 and -40 at 1.2; the next trial is 1.1.
    void bracket() {
        trial(-20);
        trial(-40);
    }

    FactorSearch search;
    int level = 1;
};

/// The box of results that do not fit, of a cantilever wall.
MessageBox inconsistent(const std::string& bracket = {},
                        const std::string& wall = "     CANTILEVER WALL") {
    return {.text = "Inconsistent results have been encountered\nduring attempt to analyze\n\n" +
                    wall + (bracket.empty() ? "" : "\n\n" + bracket) +
                    "\n\n     Unable to continue.",
            .title = "INCONSISTENT RESULTS"};
}

void expectInconsistent(const FactorBench& bench, const MessageBox& box) {
    EXPECT_TRUE(bench.state->failed());
    ASSERT_EQ(bench.told().size(), 1U);
    EXPECT_EQ(bench.told()[0].text, box.text);
    EXPECT_EQ(bench.told()[0], box);
}

TEST(FactorSearch, StartsAtOneAndStepsUpWhereTheBottomIsTooHigh) {
    FactorBench bench;
    EXPECT_EQ(bench.search.FS, 1.0);
    EXPECT_TRUE(bench.trial(-20));
    EXPECT_EQ(bench.search.stage, FactorStage::SteppingUp);
    EXPECT_EQ(bench.search.FS, 1.0 + 0.2);
    EXPECT_TRUE(bench.trial(-25));
    EXPECT_EQ(bench.search.stage, FactorStage::SteppingUp);
    EXPECT_EQ(bench.search.FS, 1.0 + 0.2 + 0.2);
    EXPECT_EQ(bench.search.ZH, -25);
    EXPECT_EQ(bench.search.FSH, 1.2);
}

TEST(FactorSearch, AStepUpThatPassesTheBottomIsFollowedByTheStraightLine) {
    FactorBench bench;
    bench.trial(-20);
    EXPECT_TRUE(bench.trial(-45)); // 10 of the 25 FT from the first trial
    EXPECT_EQ(bench.search.stage, FactorStage::Bracketed);
    EXPECT_NEAR(bench.search.FS, 1.0 + 0.2 * 10 / 25, 1e-14);
    EXPECT_EQ(bench.search.ZL, -45);
    EXPECT_EQ(bench.search.FSL, 1.2);
}

TEST(FactorSearch, StepsDownWhereTheBottomIsTooLow) {
    FactorBench bench;
    EXPECT_TRUE(bench.trial(-50));
    EXPECT_EQ(bench.search.stage, FactorStage::SteppingDown);
    EXPECT_EQ(bench.search.FS, 1.0 - 0.2);
    EXPECT_TRUE(bench.trial(-40));
    EXPECT_EQ(bench.search.FS, 1.0 - 0.2 - 0.2);
    EXPECT_EQ(bench.search.ZL, -40);
    EXPECT_EQ(bench.search.FSL, 0.8);
}

TEST(FactorSearch, AStepDownThatPassesTheBottomIsFollowedByTheStraightLine) {
    FactorBench bench;
    bench.trial(-45);
    EXPECT_TRUE(bench.trial(-20));
    EXPECT_EQ(bench.search.stage, FactorStage::Bracketed);
    EXPECT_NEAR(bench.search.FS, 0.8 + 0.2 * 10 / 25, 1e-14);
    EXPECT_EQ(bench.search.ZH, -20);
    EXPECT_EQ(bench.search.FSH, 0.8);
}

TEST(FactorSearch, SteppingDownHasNoLimitAndNoQuestion) {
    FactorBench bench;
    double factor = 1.0;
    for (int step = 0; step < 100; ++step) {
        EXPECT_EQ(bench.search.FS, factor);
        ASSERT_TRUE(bench.trial(-50));
        factor -= 0.2;
    }
    EXPECT_LT(bench.search.FS, -18.9);
    EXPECT_TRUE(bench.told().empty());
}

TEST(FactorSearch, SteppingUpTakesAnEqualBottomAsConsistent) {
    FactorBench bench;
    bench.trial(-20);
    EXPECT_TRUE(bench.trial(-20));
    EXPECT_EQ(bench.search.stage, FactorStage::SteppingUp);
}

TEST(FactorSearch, AHigherFactorThatRaisesTheBottomIsInconsistent) {
    FactorBench bench;
    bench.trial(-20);
    EXPECT_FALSE(bench.trial(-19));
    expectInconsistent(bench, inconsistent());
}

TEST(FactorSearch, ALowerFactorThatLowersTheBottomIsInconsistent) {
    FactorBench bench;
    bench.problem.WallType = WallKind::Anchored;
    bench.trial(-50);
    EXPECT_FALSE(bench.trial(-51));
    expectInconsistent(bench, inconsistent("", "     ANCHORED WALL BY FREE EARTH METHOD"));
}

TEST(FactorSearch, ABracketedTrialOutsideTheBracketIsInconsistentAndTellsTheBracket) {
    for (const double Z : {-19.9, -40.1}) {
        FactorBench bench;
        bench.problem.WallType = WallKind::Anchored;
        bench.level = 2;
        bench.bracket();
        EXPECT_FALSE(bench.trial(Z));
        expectInconsistent(bench,
                           inconsistent("Factor of safety appears to be between 1.20and 1.00",
                                        "     ANCHORED WALL BY FIXED EARTH METHOD"));
    }
}

/// Factors on a parabola over the bottom, which three points tell exactly.
double parabola(double Z) {
    return 2 - 0.02 * (Z + 20) + 0.003 * (Z + 20) * (Z + 20);
}

TEST(FactorSearch, ThreePointsMeetAParabola) {
    FactorBench bench;
    bench.bracket();
    FactorSearch& search = bench.search;
    search.FSH = parabola(-20);
    search.FSL = parabola(-40);
    search.FS = parabola(-33);
    EXPECT_TRUE(bench.trial(-33));
    EXPECT_EQ(search.stage, FactorStage::Refining);
    EXPECT_EQ(search.Z3, -33);
    EXPECT_EQ(search.FS3, parabola(-33));
    EXPECT_EQ(search.side3, 1);
    EXPECT_NEAR(search.FS, parabola(W), 1e-13);
}

TEST(FactorSearch, TheThirdPointStandsOnTheSideOfTheWallsBottom) {
    FactorBench above;
    above.bracket();
    above.trial(-27);
    EXPECT_EQ(above.search.side3, 2); // the bottom is below it
    FactorBench below;
    below.bracket();
    below.trial(-33);
    EXPECT_EQ(below.search.side3, 1);
}

TEST(FactorSearch, APointBelowTheBottomBecomesTheLowerEnd) {
    FactorBench bench;
    FactorSearch& search = bench.search;
    bench.bracket();
    search.FSH = parabola(-20);
    search.FSL = parabola(-40);
    search.FS = parabola(-34);
    bench.trial(-34);
    search.FS = parabola(-32);
    EXPECT_TRUE(bench.trial(-32));
    EXPECT_EQ(search.ZL, -34);
    EXPECT_EQ(search.FSL, parabola(-34));
    EXPECT_EQ(search.Z3, -32);
    EXPECT_EQ(search.FS3, parabola(-32));
    EXPECT_EQ(search.ZH, -20);
    EXPECT_NEAR(search.FS, parabola(W), 1e-13);
}

TEST(FactorSearch, APointAboveTheBottomBecomesTheUpperEnd) {
    for (const double Z : {-28.5, -31.0}) { // the next trial may lie on either side
        FactorBench bench;
        FactorSearch& search = bench.search;
        bench.bracket();
        search.FSH = parabola(-20);
        search.FSL = parabola(-40);
        search.FS = parabola(-27);
        bench.trial(-27);
        search.FS = parabola(Z);
        EXPECT_TRUE(bench.trial(Z));
        EXPECT_EQ(search.ZH, -27);
        EXPECT_EQ(search.FSH, parabola(-27));
        EXPECT_EQ(search.Z3, Z);
        EXPECT_EQ(search.ZL, -40);
        EXPECT_EQ(search.side3, Z > W ? 2 : 1);
        EXPECT_NEAR(search.FS, parabola(W), 1e-13);
    }
}

TEST(FactorSearch, ATrialAcrossTheBottomFromAPointBelowItDividesByZero) {
    // The first test takes the trial as third point and finds the bottom below it, the second makes
    // it the upper end as well.
    FactorBench bench;
    bench.bracket();
    bench.trial(-33);
    EXPECT_EQ(errorOf([&] { bench.trial(-29); }), 11);
    EXPECT_EQ(bench.search.ZL, -33);
    EXPECT_EQ(bench.search.ZH, -29);
    EXPECT_EQ(bench.search.Z3, -29);
    EXPECT_TRUE(bench.told().empty());
}

TEST(FactorSearch, ARefiningTrialOutsideItsBracketIsInconsistent) {
    // After a point below the bottom the trial must lie between it and the upper end.
    for (const double Z : {-33.1, -19.9}) {
        FactorBench bench;
        bench.bracket();
        bench.trial(-33);
        EXPECT_FALSE(bench.trial(Z));
        expectInconsistent(bench,
                           inconsistent("Factor of safety appears to be between 1.20and 1.00"));
    }
    // After a point above it, between the lower end and that point.
    for (const double Z : {-26.9, -40.1}) {
        FactorBench bench;
        bench.bracket();
        bench.trial(-27);
        EXPECT_FALSE(bench.trial(Z));
        expectInconsistent(bench,
                           inconsistent("Factor of safety appears to be between 1.20and 1.00"));
    }
}

TEST(FactorSearch, TheBracketToldIsTheNarrowedOne) {
    FactorBench bench;
    bench.bracket(); // the next factor is 1.1
    bench.trial(-33);
    bench.search.FS = 1.07;
    bench.trial(-32); // the lower end is now -33 with its 1.1
    EXPECT_FALSE(bench.trial(-32.5));
    expectInconsistent(bench, inconsistent("Factor of safety appears to be between 1.10and 1.00"));
}

/// Steps up until the question comes, and on to its answer.
bool stepToQuestion(FactorBench& bench) {
    const std::size_t asked = bench.told().size();
    bool goesOn = true;
    while (goesOn && bench.told().size() == asked) {
        goesOn = bench.trial(-20);
    }
    return goesOn;
}

MessageBox largeFactor(const std::string& limit) {
    return {.text = "Factor of safety for this system\nappears to be greater than " + limit +
                    ".\n\nDo you want to continue search for\nfactor of safety?",
            .title = "LARGE FACTOR OF SAFETY",
            .buttons = Buttons::YesNo};
}

TEST(FactorSearch, NoToALargeFactorEndsTheSearchAsFailed) {
    FactorBench bench;
    bench.answers = {Answer::No};
    EXPECT_FALSE(stepToQuestion(bench));
    EXPECT_TRUE(bench.state->failed());
    ASSERT_EQ(bench.told().size(), 1U);
    EXPECT_EQ(bench.told()[0], largeFactor("5.00"));
    // Twenty steps of 0.2 summed up from 1 end 2E-15 above 5, so that the trial at 5 asks; the sum
    // of 45 steps stays below 10, where the trial at 10.2 asks.
    EXPECT_GE(bench.search.FS, 5.0);
    EXPECT_NEAR(bench.search.FS, 5.0, 1e-12);
}

TEST(FactorSearch, YesToALargeFactorGoesOnToTheNextLimit) {
    FactorBench bench;
    bench.answers = {Answer::Yes, Answer::Yes, Answer::No};
    EXPECT_TRUE(stepToQuestion(bench));
    EXPECT_EQ(bench.search.limit, 10);
    EXPECT_NEAR(bench.search.FS, 5.2, 1e-12);
    EXPECT_TRUE(stepToQuestion(bench));
    EXPECT_EQ(bench.search.limit, 15);
    EXPECT_FALSE(stepToQuestion(bench));
    ASSERT_EQ(bench.told().size(), 3U);
    EXPECT_EQ(bench.told()[1], largeFactor("10.00"));
    EXPECT_EQ(bench.told()[2], largeFactor("15.00"));
}

TEST(FactorSearch, AStepThatPassesTheBottomBeyondTheLimitAsksNothing) {
    FactorBench bench;
    while (bench.search.FS < 4.9) {
        ASSERT_TRUE(bench.trial(-20));
    }
    EXPECT_TRUE(bench.trial(-40));
    EXPECT_TRUE(bench.told().empty());
}

} // namespace
} // namespace korvane::test
