// Probabilities against closed forms and inversions.
#include "study_desk.h"

#include "study/design_depth.h"
#include "study/evaluation.h"
#include "study/plan.h"
#include "study/reliability.h"
#include "study/sensitivity.h"
#include "study/statistics.h"
#include "study/target.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace korvane::study::test {

using testing::HasSubstr;

namespace {

constexpr double Pi = 3.14159265358979323846;

/// Standard normal distribution function.
double phi(double z) {
    return std::erfc(-z / std::sqrt(2.0)) / 2;
}

/// Resistance N(10, 2) and load N(4, 1): beta = 6 / sqrt(5).
const std::string Resistance = variable("r", "distribution = \"Normal(10, 2)\"");
const std::string Load = variable("s", "distribution = \"Normal(4, 1)\"");
const double LinearBeta = 6 / std::sqrt(5.0);

/// Where a falling function becomes 0, between two ends.
double rootOf(double low, double high, const std::function<double(double)>& falling) {
    for (int n = 0; n < 60; ++n) {
        const double middle = (low + high) / 2;
        (falling(middle) > 0 ? low : high) = middle;
    }
    return (low + high) / 2;
}

double depthAt(const Study& study, double friction) {
    Evaluation evaluation(study);
    const Solved& solved = evaluation.solve({friction});
    EXPECT_NE(solved.results, nullptr) << friction;
    return solved.results == nullptr ? 0 : solved.results->levels(1).penetration;
}

/// How many of 100 seeds have the probability in the interval of a statistic.
int covered(const std::string& start, const std::string& rest, const std::string& name,
            double probability) {
    int count = 0;
    for (int seed = 1; seed <= 100; ++seed) {
        const StudyDesk desk;
        desk.runStudy(head("reliability", start + "seed = " + std::to_string(seed)) + rest, "o");
        const double low = desk.statistic("o", "fails", name, "low");
        const double high = desk.statistic("o", "fails", name, "high");
        count += low <= probability && probability <= high ? 1 : 0;
    }
    return count;
}

} // namespace

TEST(FirstOrder, IsExactForLinearLimitStatesOfNormalVariables) {
    const Study study = studyOf(head("reliability") + Resistance + Load + limit("fails", "s > r"));
    const FirstOrder found = firstOrder(study, study.limits[0]);
    ASSERT_EQ(found.fault, "");
    EXPECT_NEAR(found.beta, LinearBeta, 1e-6);
    EXPECT_NEAR(found.probability, phi(-LinearBeta), 1e-8);
    // The design point: u = beta * alpha, alpha = (-2, 1) / sqrt(5): r = 10 - 2 * 12/5, s = 4 +
    // 6/5.
    EXPECT_NEAR(found.designPoint[0], 5.2, 1e-5);
    EXPECT_NEAR(found.designPoint[1], 5.2, 1e-5);
    EXPECT_NEAR(found.importance[0], 0.8, 1e-5);
    EXPECT_NEAR(found.importance[1], 0.2, 1e-5);
}

TEST(FirstOrder, CorrelationCounts) {
    // Correlated normal numbers: deviation of r - s is sqrt(4 + 1 - 2 * 2 * rho), where the rank
    // correlation 6 / pi * asin(rho / 2) belongs to rho = 0.5.
    const double rank = 6 / Pi * std::asin(0.25);
    std::string text = std::to_string(rank);
    std::array<char, 30> digits{};
    std::snprintf(digits.data(), digits.size(), "%.17g", rank);
    const Study study =
        studyOf(head("reliability") + Resistance + Load +
                "[[correlation]]\nbetween = [\"r\", \"s\"]\nrank = " + digits.data() + "\n" +
                limit("fails", "s > r"));
    EXPECT_NEAR(firstOrder(study, study.limits[0]).beta, 6 / std::sqrt(3.0), 1e-6);
}

TEST(FirstOrder, BetaIsNegativeWhereTheMedianHasReachedTheState) {
    const Study study = studyOf(head("reliability") + Resistance + Load + limit("fails", "r > s"));
    EXPECT_NEAR(firstOrder(study, study.limits[0]).beta, -LinearBeta, 1e-6);
}

TEST(FirstOrder, OneRandomFrictionIsTheInversionOfTheDepth) {
    for (const double depth : {13.0, 14.5, 17.0}) {
        for (const std::string distribution : {"Normal(32, 2)", "LogNormalMuSigma(32, 3)"}) {
            const Study study =
                studyOf(head("reliability") + friction("distribution = \"" + distribution + "\"") +
                        limit("deep", "penetration > " + std::to_string(depth)));
            const double angle =
                rootOf(20, 45, [&](double friction) { return depthAt(study, friction) - depth; });
            // The normal number of the angle, by hand.
            const double sigma = std::sqrt(std::log(1 + 9.0 / 1024));
            const double z = distribution[0] == 'N'
                                 ? (angle - 32) / 2
                                 : (std::log(angle) - std::log(32.0) + sigma * sigma / 2) / sigma;
            const FirstOrder found = firstOrder(study, study.limits[0]);
            ASSERT_EQ(found.fault, "");
            EXPECT_NEAR(found.beta, -z, 1e-3) << depth << " " << distribution;
            EXPECT_NEAR(found.designPoint[0], angle, 5e-3);
        }
    }
}

TEST(FirstOrder, FactorsOfSafetyGoByTheDesignDepth) {
    const Study study = studyOf(head("reliability") + friction("distribution = \"Normal(24, 2)\"") +
                                    limit("unsafe", "factorOfSafety < 1"),
                                "analysis-cantilever.dat");
    // The friction at which the design at factor 1 ends at the wall's bottom, -18.
    Workspace workspace;
    const auto below = [&](double friction) {
        Problem analysed = study.base;
        analysed.SoilFriction(Right, 1) = friction;
        analysed.SoilFriction(Left, 1) = friction;
        Problem design;
        makeDesign(analysed, design);
        auto review = reviewWall(design, study.options, workspace);
        EXPECT_TRUE(review);
        auto results = solveWall(workspace);
        EXPECT_TRUE(results);
        return study.base.WallBottomElev - results->levels(1).bottomElev;
    };
    const double angle = rootOf(12, 45, below);
    const FirstOrder found = firstOrder(study, study.limits[0]);
    ASSERT_EQ(found.fault, "");
    EXPECT_NEAR(found.beta, (24 - angle) / 2, 1e-3);
    // The analysis itself is on the same side a little away from it.
    Evaluation evaluation(study);
    EXPECT_LT(evaluation.solve({angle - 0.3}).results->levels(1).factorOfSafety, 1);
    EXPECT_GT(evaluation.solve({angle + 0.3}).results->levels(1).factorOfSafety, 1);
}

TEST(FirstOrder, OtherFactorsAreRefused) {
    EXPECT_THAT(faultOf(head("reliability") + friction("distribution = \"Normal(33, 2)\"") +
                            limit("unsafe", "factorOfSafety < 1.5"),
                        "analysis-cantilever.dat"),
                HasSubstr("may compare factorOfSafety with 1 alone"));
}

TEST(FirstOrder, AStateThatCannotBeReachedHasNoDesignPoint) {
    const StudyDesk desk;
    desk.runStudy(head("reliability") + variable("x", "distribution = \"Uniform(0, 1)\"") +
                      limit("never", "x > 2"),
                  "o");
    const auto rows = desk.rows("o", "SELECT name, value FROM statistics WHERE subject = 'never'");
    ASSERT_FALSE(rows.empty());
    EXPECT_THAT(rows[0][0], HasSubstr("no design point"));
}

TEST(MonteCarlo, IntervalsCoverTheClosedFormIn95Of100Seeds) {
    const double probability = phi(-LinearBeta + 2); // s > r - 2 sqrt(5)
    const int count = covered("algorithm = \"monte-carlo\"\nsize = 200\n",
                              Resistance + Load + limit("fails", "s + 2 * 2.23606797749979 > r"),
                              "probability", probability);
    // At least 95 are expected of a binomial number of deviation 2.2; below 88 is one in 1000.
    EXPECT_GE(count, 88);
}

TEST(ImportanceSampling, IntervalsCoverTheClosedFormIn95Of100Seeds) {
    const int count = covered("algorithm = \"importance\"\nsize = 200\n",
                              Resistance + Load + limit("fails", "s > r"),
                              "probability by importance sampling", phi(-LinearBeta));
    EXPECT_GE(count, 88);
}

TEST(ImportanceSampling, EveryLimitStateHasItsDesignPoint) {
    // States on opposite sides: around one design point the other is never met.
    const StudyDesk desk;
    desk.runStudy(head("reliability", "algorithm = \"importance\"\nsize = 4000") +
                      variable("x", "distribution = \"Normal(0, 1)\"") +
                      variable("y", "distribution = \"Normal(0, 1)\"") + limit("high", "x > 3") +
                      limit("low", "x + y < -5"),
                  "o");
    const std::string name = "probability by importance sampling";
    for (const auto& [state, beta] : {std::pair{"high", 3.0}, {"low", 5 / std::sqrt(2.0)}}) {
        const double probability = phi(-beta);
        const double value = desk.statistic("o", state, name);
        const double half = desk.statistic("o", state, name, "high") - value;
        EXPECT_LT(half, 0.15 * probability) << state;
        EXPECT_NEAR(value, probability, 2 * half) << state; // 4 standard errors
    }
}

TEST(ImportanceSampling, AFewHitsHaveNoInterval) {
    const StudyDesk desk;
    desk.runStudy(head("reliability", "algorithm = \"importance\"\nsize = 4") +
                      variable("x", "distribution = \"Normal(0, 1)\"") + limit("high", "x > 3"),
                  "o");
    const auto rows = desk.rows("o", "SELECT low, high FROM statistics WHERE name = "
                                     "'probability by importance sampling'");
    EXPECT_EQ(rows, (std::vector<TextRow>{{"NULL", "NULL"}}));
}

TEST(Sensitivity, IndicesOfTheIshigamiFunctionAreItsClosedForms) {
    // sin x1 + a sin^2 x2 + b x3^4 sin x1 over -pi to pi (T. Ishigami and T. Homma, 1990).
    constexpr double a = 7;
    constexpr double b = 0.1;
    const double p4 = std::pow(Pi, 4);
    const double v1 = 0.5 * std::pow(1 + b * p4 / 5, 2);
    const double v2 = a * a / 8;
    const double v13 = b * b * p4 * p4 * (1.0 / 18 - 1.0 / 50);
    const double v = v1 + v2 + v13;
    const std::array<double, 3> first{v1 / v, v2 / v, 0};
    const std::array<double, 3> total{(v1 + v13) / v, v2 / v, v13 / v};

    const Sample sample{Design::Sobol, 1, 16384};
    std::vector<std::vector<double>> blocks(5);
    for (std::uint64_t n = 0; n < sample.size; ++n) {
        for (std::size_t block = 0; block < blocks.size(); ++block) {
            std::array<double, 3> x{};
            for (int i = 0; i < 3; ++i) {
                const bool second = block == 1 || static_cast<int>(block) == i + 2;
                x.at(static_cast<std::size_t>(i)) = Pi * (2 * sample.at(n, second ? i + 3 : i) - 1);
            }
            blocks[block].push_back(std::sin(x[0]) + a * std::pow(std::sin(x[1]), 2) +
                                    b * std::pow(x[2], 4) * std::sin(x[0]));
        }
    }
    const SobolIndices indices = sobolIndices(blocks);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(indices.first[i].value, first.at(i), 0.02) << i;
        EXPECT_NEAR(indices.total[i].value, total.at(i), 0.02) << i;
        EXPECT_LE(indices.first[i].low, first.at(i)) << i;
        EXPECT_GE(indices.first[i].high, first.at(i)) << i;
    }
}

TEST(Sensitivity, OneVariableAloneExplainsEverything) {
    const StudyDesk desk;
    desk.runStudy(head("sensitivity", "design = \"sobol\"\nsize = 512\noutputs = \"penetration\"") +
                      friction("distribution = \"Normal(32, 2)\"") +
                      variable("unused", "distribution = \"Normal(0, 1)\""),
                  "o");
    EXPECT_EQ(desk.number("o", "SELECT count(*) FROM variants"), 512 * 4);
    EXPECT_NEAR(desk.statistic("o", "penetration", "first-order friction"), 1, 0.05);
    EXPECT_NEAR(desk.statistic("o", "penetration", "total friction"), 1, 0.05);
    EXPECT_NEAR(desk.statistic("o", "penetration", "total unused"), 0, 0.01);
    EXPECT_EQ(desk.statistic("o", "penetration", "points"), 512);
    EXPECT_EQ(desk.statistic("o", "penetration", "count"), 512);
}

TEST(Target, SolvingWithTheNumberFoundGivesTheTarget) {
    for (const double value : {12.5, 14.0, 18.0}) {
        const Study study =
            studyOf(head("target") + friction("low = 24\nhigh = 40") +
                    "[target]\noutput = \"penetration\"\nvalue = " + std::to_string(value) + "\n");
        const TargetFound found = findTarget(study);
        ASSERT_EQ(found.fault, "");
        EXPECT_NEAR(depthAt(study, found.number), value, 0.01);
        EXPECT_EQ(depthAt(study, found.number), found.output);
    }
}

TEST(Target, AWaterLevelForAGivenDepth) {
    const StudyDesk desk;
    desk.runStudy("[study]\nbase = \"anchored-sand.dat\"\nmethod = \"target\"\n" +
                      variable("water", "fields = \"WaterElev.right\"\nlow = 2\nhigh = 18") +
                      "[target]\noutput = \"penetration_free\"\nvalue = 14\n",
                  "o");
    const double level = desk.statistic("o", "water", "target");
    EXPECT_GT(level, 2);
    EXPECT_LT(level, 18);
    EXPECT_NEAR(desk.statistic("o", "penetration_free", "at the target"), 14, 0.01);
    EXPECT_GT(desk.number("o", "SELECT count(*) FROM variants"), 10);
}

TEST(Target, WhatIsOutOfReachIsTold) {
    const StudyDesk desk;
    desk.runStudy(head("target") + friction("low = 30\nhigh = 34") +
                      "[target]\noutput = \"penetration\"\nvalue = 500\n",
                  "o");
    const auto rows = desk.rows("o", "SELECT name FROM statistics WHERE subject = 'friction'");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_THAT(rows[0][0], HasSubstr("does not reach the target between the ends"));
}

TEST(Target, AnEndWithoutSolutionIsTold) {
    const Study study = studyOf(head("target") + friction("low = 30\nhigh = 95") +
                                "[target]\noutput = \"penetration\"\nvalue = 14\n");
    EXPECT_THAT(findTarget(study).fault, HasSubstr("no solution at 95.00 deg"));
}

TEST(Target, AJumpOverTheTargetIsTold) {
    // The note speaks at a factor of 1 and at no larger one: from 1 to 0 without a value between.
    const StudyDesk desk;
    desk.runStudy(head("target") + variable("factor", "fields = \"FSPassive\"\nlow = 1\nhigh = 2") +
                      "[target]\noutput = \"note.no-reserve\"\nvalue = 0.5\n",
                  "o");
    EXPECT_EQ(desk.statistic("o", "note.no-reserve", "at the target", "low"), 0);
    EXPECT_EQ(desk.statistic("o", "note.no-reserve", "at the target", "high"), 1);
    const auto rows = desk.rows("o", "SELECT value FROM statistics WHERE name LIKE 'jumps%'");
    EXPECT_EQ(rows.size(), 1U);
}

TEST(Fragility, IsTheShareOfEachValue) {
    const StudyDesk desk;
    desk.runStudy(head("fragility", "size = 500\nalong = \"s\"") + Resistance +
                      variable("s", "range = [6, 12, 3]") + limit("fails", "s > r"),
                  "o");
    EXPECT_EQ(desk.number("o", "SELECT count(*) FROM variants"), 1500);
    const auto rows = desk.rows("o", "SELECT name, value, low, high FROM statistics WHERE subject "
                                     "= 'fails' ORDER BY rowid");
    ASSERT_EQ(rows.size(), 6U);
    for (std::size_t n = 0; n < 3; ++n) {
        const double s = 6 + 3 * static_cast<double>(n);
        EXPECT_EQ(rows[2 * n][0], "value");
        EXPECT_EQ(std::stod(rows[2 * n][1]), s);
        const double p = phi((s - 10) / 2);
        const double value = std::stod(rows[2 * n + 1][1]);
        EXPECT_EQ(rows[2 * n + 1][0], "probability");
        EXPECT_NEAR(value, p, 4 * std::sqrt(p * (1 - p) / 500)) << s;
        const auto interval = clopperPearson(std::round(500 * value), 500);
        EXPECT_EQ(std::stod(rows[2 * n + 1][2]), interval[0]);
        EXPECT_EQ(std::stod(rows[2 * n + 1][3]), interval[1]);
    }
    // Each value is asked of the same draws.
    EXPECT_EQ(desk.number("o", "SELECT count(DISTINCT r) FROM variants"), 500);
}

} // namespace korvane::study::test
