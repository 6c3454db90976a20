// Probabilities against closed forms and inversions.
#include "study_desk.h"

#include "study/command_line.h"
#include "study/design_depth.h"
#include "study/evaluation.h"
#include "study/plan.h"
#include "study/reliability.h"
#include "study/statistics.h"
#include "study/target.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>

namespace korvane::study::test {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

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
            double probability, const std::string& method = "reliability") {
    int count = 0;
    for (int seed = 1; seed <= 100; ++seed) {
        const StudyDesk desk;
        desk.runStudy(head(method, start + "seed = " + std::to_string(seed)) + rest, "o");
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

TEST(FirstOrder, ImportanceOfCorrelatedVariablesIsTheSameInAnyOrder) {
    // The normal numbers of r and s at the design point are beta * C * a / sqrt(a' C a), where
    // a = (-2, 1) and C has the correlation rho = 2 sin(pi / 6 * rank) of normal numbers.
    const double rho = 2 * std::sin(Pi / 6 * 0.7);
    const double r = -2 + rho;
    const double s = 1 - 2 * rho;
    const double share = r * r / (r * r + s * s);
    const std::string rest =
        "[[correlation]]\nbetween = [\"r\", \"s\"]\nrank = 0.7\n" + limit("fails", "s > r");
    for (const bool turned : {false, true}) {
        const Study study =
            studyOf(head("reliability") + (turned ? Load + Resistance : Resistance + Load) + rest);
        const FirstOrder found = firstOrder(study, study.limits[0]);
        ASSERT_EQ(found.fault, "");
        EXPECT_NEAR(found.beta, 6 / std::sqrt(4 + 1 - 4 * rho), 1e-6);
        EXPECT_NEAR(found.importance[turned ? 1 : 0], share, 1e-5);
        EXPECT_NEAR(found.importance[turned ? 0 : 1], 1 - share, 1e-5);
    }
}

namespace {

const std::string X = variable("x", "distribution = \"Normal(0, 1)\"");
const std::string Y = variable("y", "distribution = \"Normal(0, 1)\"");

FirstOrder ofState(const std::string& state) {
    const Study study = studyOf(head("reliability") + X + Y + limit("fails", state));
    FirstOrder found = firstOrder(study, study.limits[0]);
    EXPECT_EQ(found.fault, "") << state;
    return found;
}

} // namespace

TEST(FirstOrder, AlternativesInOtherUnitsAreSearchedAlone) {
    EXPECT_NEAR(ofState("x > 3 or y*10000 > 20000").beta, 2, 1e-6);
    EXPECT_NEAR(ofState("x*10000 > 30000 or y > 2").beta, 2, 1e-6);
    // The corner x = 2, y = 2.
    EXPECT_NEAR(ofState("x > 2 and y*10000 > 20000").beta, 2 * std::sqrt(2.0), 1e-6);
    // The nearest of the corners (3, 2) and (1, 3).
    EXPECT_NEAR(ofState("(x > 3 and y > 2) or (x > 1 and y > 3)").beta, std::sqrt(10.0), 1e-6);
    EXPECT_NEAR(ofState("(x > 3 or y > 4) and (y > 2 or x > 4)").beta, std::sqrt(13.0), 1e-6);
}

TEST(FirstOrder, AStateWithTheMedianIsAsFarAsItsOpposite) {
    // Without both at once: the border is where the first of the two ends.
    EXPECT_NEAR(ofState("x < 3 and y < 2").beta, -2, 1e-6);
    // Without either: the corner x = 3, y = 2.
    EXPECT_NEAR(ofState("x < 3 or y*10000 < 20000").beta, -std::sqrt(13.0), 1e-6);
}

TEST(FirstOrder, BothSidesOfAStateAreFound) {
    for (const std::string state : {"x > 3 or x < -3", "abs(x) > 3", "x * x > 9"}) {
        const FirstOrder found = ofState(state);
        EXPECT_NEAR(found.beta, 3, 1e-6) << state;
        ASSERT_EQ(found.points.size(), 2U) << state;
        EXPECT_NEAR(found.points[0][0], -found.points[1][0], 1e-4) << state;
    }
}

TEST(FirstOrder, AlternativesThatCannotBeReachedAreCounted) {
    const Study study =
        studyOf(head("reliability") + X + variable("u", "distribution = \"Uniform(0, 1)\"") +
                limit("fails", "x > 2 or u > 2"));
    const FirstOrder found = firstOrder(study, study.limits[0]);
    ASSERT_EQ(found.fault, "");
    EXPECT_NEAR(found.beta, 2, 1e-6);
    EXPECT_EQ(found.missed, 1U);
}

TEST(FirstOrder, ADepthOrAMomentIsTheNearerOfTheTwo) {
    const std::string wall = head("reliability") + friction("distribution = \"Normal(32, 2)\"");
    const auto betaOf = [&](const std::string& state) {
        const Study study = studyOf(wall + limit("fails", state));
        const FirstOrder found = firstOrder(study, study.limits[0]);
        EXPECT_EQ(found.fault, "") << state;
        return found.beta;
    };
    const Study study = studyOf(wall + limit("fails", "penetration > 18.5"));
    Evaluation evaluation(study);
    const double moment =
        std::abs(evaluation.solve({29.0}).results->levels(1).diagrams.MaxMoment.value);
    const std::string large = "abs(maxMoment) > " + std::to_string(moment);
    EXPECT_NEAR(betaOf(large), 1.5, 2e-3); // (32 - 29) / 2
    const double angle = rootOf(20, 45, [&](double phi) { return depthAt(study, phi) - 18.5; });
    EXPECT_GT((32 - angle) / 2, 1.6);
    EXPECT_NEAR(betaOf("penetration > 18.5 or " + large), 1.5, 2e-3);
    EXPECT_NEAR(betaOf("penetration > 18.5 and " + large), (32 - angle) / 2, 2e-3);
}

TEST(FirstOrder, TooManyAlternativesAreTold) {
    std::string state = "(x > 1 or y > 1)";
    for (int n = 2; n < 9; ++n) {
        state += " and (x > " + std::to_string(n) + " or y > " + std::to_string(n) + ")";
    }
    const Study study = studyOf(head("reliability") + X + Y + limit("fails", state));
    EXPECT_THAT(firstOrder(study, study.limits[0]).fault, HasSubstr("more than 64 alternatives"));

    // Before anything is run: the medians have not reached the state, which has 2^8 alternatives.
    const StudyDesk desk;
    const std::string rest = X + Y + limit("easy", "x > 1") + limit("branched", state);
    const std::string file = desk.write("s.toml", head("reliability") + rest);
    const std::string told = file + ":17: limit branched has more than 64 alternatives";
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"check", file}, {"run", file, "--output", desk.file("o")}}) {
        const CommandRun refused = StudyDesk::run(command);
        EXPECT_EQ(refused.status, StatusUsage);
        EXPECT_THAT(refused.err, StartsWith(told));
        EXPECT_THAT(refused.err, Not(HasSubstr("easy")));
    }
    EXPECT_FALSE(std::filesystem::exists(desk.file("o")));
    // A sample needs no design point, and the opposite has 8 alternatives.
    const auto checked = [&](const std::string& text) {
        const CommandRun run = StudyDesk::run({"check", desk.write("t.toml", text)});
        EXPECT_EQ(run.status, StatusDone) << run.err;
        return run.out;
    };
    const std::string sampled = "algorithm = \"monte-carlo\"\nsize = 10";
    EXPECT_THAT(checked(head("reliability", sampled) + rest),
                HasSubstr("line 18: it has more than 64 alternatives"));
    const std::string high = "distribution = \"Normal(20, 1)\"";
    EXPECT_THAT(checked(head("reliability") + variable("x", high) + variable("y", high) +
                        limit("branched", state)),
                Not(HasSubstr("alternatives joined")));
}

TEST(FirstOrder, AStopEndsTheSearchAtOnce) {
    const Study study = studyOf(head("reliability") + Resistance + Load +
                                limit("fails", "s > r or s > 8 or s > 9 or s > r + 1"));
    const std::uint64_t whole = firstOrder(study, study.limits[0]).solutions;
    for (const int wall : {0, 1, 20}) {
        int asked = 0;
        const FirstOrder found =
            firstOrder(study, study.limits[0], [&] { return asked++ >= wall; });
        EXPECT_NE(found.fault, "") << wall;
        EXPECT_TRUE(found.points.empty()) << wall;
        EXPECT_LT(found.solutions, static_cast<std::uint64_t>(wall) + 15) << whole;
    }
    EXPECT_GT(whole, 200U);
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

TEST(MonteCarlo, IntervalsOfAWallCoverTheInversionIn95Of100Seeds) {
    const std::string rest =
        friction("distribution = \"Normal(32, 2)\"") + limit("fails", "penetration > 14.5");
    const Study study = studyOf(head("sample", "size = 1") + rest);
    const double angle = rootOf(20, 45, [&](double phi) { return depthAt(study, phi) - 14.5; });
    const double probability = phi((angle - 32) / 2);
    EXPECT_GT(probability, 0.05);
    EXPECT_LT(probability, 0.95);
    EXPECT_GE(covered("outputs = \"penetration\"\nsize = 200\n", rest, "probability", probability,
                      "sample"),
              88);
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

namespace {

/// The probability by importance sampling and its interval.
std::array<double, 3> sampled(const std::string& design, const std::string& state,
                              int size = 4000) {
    const StudyDesk desk;
    desk.runStudy(head("reliability", "algorithm = \"importance\"\ndesign = \"" + design +
                                          "\"\nsize = " + std::to_string(size)) +
                      X + Y + limit("fails", state),
                  "o");
    const std::vector<TextRow> rows =
        desk.rows("o", "SELECT value, low, high FROM statistics WHERE name = "
                       "'probability by importance sampling'");
    EXPECT_EQ(rows.size(), 1U);
    std::array<double, 3> numbers{};
    for (std::size_t n = 0; n < 3; ++n) {
        numbers.at(n) = rows[0][n] == "NULL" ? std::nan("") : std::stod(rows[0][n]);
    }
    return numbers;
}

} // namespace

TEST(ImportanceSampling, EveryRegionOfAStateCounts) {
    const double tail = phi(-3);
    struct Case {
        std::string state;
        double probability;
    };
    const std::vector<Case> cases{{"x > 3", tail},
                                  {"x > 3 or x < -3", 2 * tail},
                                  {"abs(x) > 3", 2 * tail},
                                  {"x > 3 or y*10000 > 30000", 1 - (1 - tail) * (1 - tail)}};
    for (const std::string design : {"monte-carlo", "latin-hypercube", "sobol"}) {
        for (const Case& one : cases) {
            const auto [value, low, high] = sampled(design, one.state);
            EXPECT_NEAR(value, one.probability, 0.15 * one.probability) << design << one.state;
            if (design == "sobol") { // one sequence tells nothing of its own error
                EXPECT_TRUE(std::isnan(low) && std::isnan(high));
            } else {
                EXPECT_LT(high - low, 0.25 * one.probability) << design << one.state;
            }
        }
    }
}

TEST(ImportanceSampling, SeveralLimitStatesShareTheSampleOfAnyDesign) {
    for (const std::string design : {"monte-carlo", "latin-hypercube", "sobol"}) {
        const StudyDesk desk;
        desk.runStudy(head("reliability",
                           "algorithm = \"importance\"\ndesign = \"" + design + "\"\nsize = 4000") +
                          X + Y + limit("a", "x > 3") + limit("b", "y > 3"),
                      "o");
        for (const char* name : {"a", "b"}) {
            EXPECT_NEAR(desk.statistic("o", name, "probability by importance sampling"), phi(-3),
                        0.15 * phi(-3))
                << design << name;
        }
    }
}

TEST(ImportanceSampling, AStateWithTheMedianIsWorkedOutByItsOpposite) {
    for (const std::string design : {"monte-carlo", "sobol"}) {
        const auto [value, low, high] = sampled(design, "x < 3");
        EXPECT_NEAR(value, phi(3), 0.15 * phi(-3)) << design;
        EXPECT_FALSE(high - low > 0.25 * phi(-3)) << design;
        EXPECT_FALSE(low > phi(3) || high < phi(3)) << design;
    }
}

TEST(ImportanceSampling, ALimitStateWithoutADesignPointEndsNothing) {
    const StudyDesk desk;
    desk.runStudy(head("reliability", "algorithm = \"importance\"\nsize = 4000") + X +
                      variable("u", "distribution = \"Uniform(0, 1)\"") + limit("a", "x > 2") +
                      limit("never", "u > 2"),
                  "o");
    const std::string name = "probability by importance sampling";
    EXPECT_NEAR(desk.statistic("o", "a", name), phi(-2), 0.15 * phi(-2));
    EXPECT_EQ(desk.statistic("o", "never", name), 0);
    const auto rows = desk.rows("o", "SELECT name FROM statistics WHERE subject = 'never'");
    EXPECT_THAT(rows[0][0], HasSubstr("no design point"));
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

TEST(Target, AStopEndsTheSearchAtOnce) {
    const Study study = studyOf(head("target") + friction("range = [24, 40, 0.25]") +
                                "[target]\noutput = \"penetration\"\nvalue = 13.123\n");
    const std::size_t whole = findTarget(study).rows.size();
    EXPECT_GT(whole, 50U);
    for (const std::size_t wall : {0U, 1U, 10U, 50U}) { // among the values, in the halving
        std::size_t asked = 0;
        const TargetFound found = findTarget(study, [&] { return asked++ >= wall; });
        EXPECT_EQ(found.rows.size(), wall);
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

TEST(Target, ACrossingBetweenInnerValuesIsFound) {
    // Two water levels move together: the depth is largest where both are at the ground.
    const StudyDesk desk;
    desk.runStudy("[study]\nbase = \"anchored-sand.dat\"\nmethod = \"target\"\n" +
                      variable("water", "fields = \"WaterElev.*\"\nvalues = [-10, 16, 0]") +
                      "[target]\noutput = \"penetration_free\"\nvalue = 10\n",
                  "o");
    desk.runStudy("[study]\nbase = \"anchored-sand.dat\"\nmethod = \"grid\"\n" +
                      variable("water", "fields = \"WaterElev.*\"\nvalues = [-10, 16, 0]"),
                  "g");
    const auto depth = [&](const char* level) {
        return desk.number("g",
                           std::string("SELECT penetration_free FROM variants WHERE water = ") +
                               level + " LIMIT 1");
    };
    ASSERT_LT(depth("-10"), 10);
    ASSERT_LT(depth("16"), 10);
    ASSERT_GT(depth("0"), 10);
    const double found = desk.statistic("o", "water", "target");
    EXPECT_GT(found, -10);
    EXPECT_LT(found, 0);
    EXPECT_NEAR(desk.statistic("o", "penetration_free", "at the target"), 10, 0.01);
}

TEST(Target, AnEndThatHasTheTargetIsFound) {
    const Study plain = studyOf(head("grid") + friction("values = 30"));
    for (const double angle : {28.0, 34.0}) {
        std::array<char, 40> value{};
        std::snprintf(value.data(), value.size(), "%.17g", depthAt(plain, angle));
        const Study study =
            studyOf(head("target") + friction("low = 28\nhigh = 34") +
                    "[target]\noutput = \"penetration\"\nvalue = " + value.data() + "\n");
        const TargetFound found = findTarget(study);
        EXPECT_EQ(found.fault, "");
        EXPECT_EQ(found.number, angle);
    }
}

TEST(Target, ValuesWithoutSolutionBesideTheBracketArePassedOver) {
    // 95 and 100 degrees are no friction angles; 20 and 40 enclose the target.
    Study study = studyOf(head("target") + friction("values = [20, 40, 95, 100]") +
                          "[target]\noutput = \"penetration\"\nvalue = 14\n");
    const TargetFound found = findTarget(study);
    ASSERT_EQ(found.fault, "");
    EXPECT_NEAR(depthAt(study, found.number), 14, 0.01);
}

TEST(Target, WhatIsOutOfReachIsTold) {
    const StudyDesk desk;
    desk.runStudy(head("target") + friction("low = 30\nhigh = 34") +
                      "[target]\noutput = \"penetration\"\nvalue = 500\n",
                  "o");
    const auto rows = desk.rows("o", "SELECT name FROM statistics WHERE subject = 'friction'");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_THAT(rows[0][0], HasSubstr("lies on the same side of the target at both ends"));
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
