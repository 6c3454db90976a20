// Borders that margins do not tell: of walls without a solution, and of states that curve around
// the medians.
#include "study_desk.h"

#include "study/border_survey.h"
#include "study/plan.h"
#include "study/reliability.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace korvane::study::test {

using testing::HasSubstr;

namespace {

/// Standard normal distribution function.
double phi(double z) {
    return std::erfc(-z / std::sqrt(2.0)) / 2;
}

const std::string X = variable("x", "distribution = \"Normal(0, 1)\"");
const std::string Y = variable("y", "distribution = \"Normal(0, 1)\"");
/// The file refuses water below 3.
const std::string Water =
    variable("water", "fields = [\"WaterElev.right\"]\ndistribution = \"Normal(5, 1)\"");
constexpr const char* Seeping = "cantilever-water-seepage.dat";

} // namespace

TEST(BorderSurvey, TheNearestPointIsFoundFromAnywhere) {
    // A plane at a distance of 2 (1, 2, 2) / 3, and the corner x = 1, y = 2, z = 0.5.
    const Reached plane = [](const Normals& p) { return p[0] + 2 * p[1] + 2 * p[2] >= 6; };
    const Reached corner = [](const Normals& p) { return p[0] >= 1 && p[1] >= 2 && p[2] >= 0.5; };
    const std::vector<Normals> entries = entriesAlongRays(plane, 3, 5);
    ASSERT_GT(entries.size(), 10U);
    for (const Normals& entry : entries) {
        EXPECT_NEAR(entry[0] + 2 * entry[1] + 2 * entry[2], 6, 0.005);
        EXPECT_NEAR(lengthOf(nearestAround(plane, entry)), 2, 1e-6);
    }
    for (const Normals& entry : entriesAlongRays(corner, 3, 5)) {
        EXPECT_NEAR(lengthOf(nearestAround(corner, entry)), std::sqrt(5.25), 1e-3);
    }
}

TEST(BorderSurvey, WallsWithoutASolutionAreABorder) {
    const std::string text = head("reliability") + Water;
    const Study fails = studyOf(text + limit("deep", "penetration > 25"), Seeping);
    const FirstOrder found = firstOrder(fails, fails.limits[0]);
    ASSERT_EQ(found.fault, "");
    EXPECT_NEAR(found.beta, 2, 1e-9); // (5 - 3) / 1
    EXPECT_NEAR(found.probability, phi(-2), 1e-9);
    EXPECT_NEAR(found.designPoint[0], 3, 1e-9);
    EXPECT_TRUE(found.endsUnsolved);
    const Study safe =
        studyOf(text + limit("deep", "penetration > 25", "noSolution = \"safe\""), Seeping);
    const FirstOrder other = firstOrder(safe, safe.limits[0]);
    EXPECT_GT(other.beta, 4);
    EXPECT_FALSE(other.endsUnsolved);
}

TEST(BorderSurvey, WithFurtherVariablesThatBorderIsAsNear) {
    const Study study = studyOf(head("reliability") + Water + X + Y +
                                    limit("deep", "penetration > 25 or x + y > 4"),
                                Seeping);
    const FirstOrder found = firstOrder(study, study.limits[0]);
    ASSERT_EQ(found.fault, "");
    EXPECT_NEAR(found.beta, 2, 1e-6);
    ASSERT_GE(found.points.size(), 2U);
    EXPECT_NEAR(lengthOf(found.points[1]), 4 / std::sqrt(2.0), 1e-4);
}

TEST(BorderSurvey, TheReportTellsThatBorder) {
    const StudyDesk desk;
    desk.write("wall.dat", example(Seeping));
    desk.runStudy(head("reliability") + Water + limit("deep", "penetration > 25"), "o");
    EXPECT_EQ(StudyDesk::run({"report", desk.file("o")}).status, 0);
    EXPECT_THAT(desk.read("o/report.html"),
                HasSubstr("beyond the design point walls have no solution."));
    EXPECT_NEAR(desk.statistic("o", "deep", "beta"), 2, 1e-9);
}

/// x and y beyond a circle of radius r: P = exp(-r * r / 2), the tail of a Rayleigh distribution.
TEST(BorderSurvey, IntervalsCoverTheProbabilityOfACurvedState) {
    const std::string rest = X + Y + limit("far", "x*x + y*y > 9");
    const Study study =
        studyOf(head("reliability", "algorithm = \"importance\"\nsize = 1000") + rest);
    const FirstOrder found = firstOrder(study, study.limits[0]);
    EXPECT_NEAR(found.beta, 3, 1e-6);
    EXPECT_EQ(found.hardlySeen, 0U);
    EXPECT_GE(found.points.size(), 4U);
    int covered = 0;
    constexpr int Seeds = 200;
    for (int seed = 1; seed <= Seeds; ++seed) {
        Study drawn = study;
        drawn.sample.seed = static_cast<std::uint64_t>(seed);
        Plan plan(drawn);
        plan.drawAround(found.points);
        WeightedHits hits;
        std::vector<double> numbers;
        for (std::uint64_t n = 0; n < plan.size(); ++n) {
            plan.numbers(n, numbers);
            const bool far = numbers[0] * numbers[0] + numbers[1] * numbers[1] > 9;
            hits.add(far ? 1 : 0, plan.weight());
        }
        const Estimate estimate = hits.estimate(false);
        covered += estimate.low <= std::exp(-4.5) && std::exp(-4.5) <= estimate.high ? 1 : 0;
    }
    // 190 are expected of a binomial number of deviation 3.1.
    EXPECT_GE(covered, 180);
}

TEST(BorderSurvey, WhatTheSampleHardlySeesHasNoInterval) {
    WeightedHits hits;
    for (int n = 0; n < 500; ++n) {
        hits.add(n % 2, 0.01);
    }
    EXPECT_TRUE(std::isfinite(hits.estimate(false).low));
    hits.add(1, 10); // one variant drawn around the origin: all of the variance
    EXPECT_TRUE(std::isnan(hits.estimate(false).low));
    EXPECT_NEAR(hits.estimate(false).value, 12.5 / 501, 1e-12);
}

TEST(BorderSurvey, AStateAtTheMediansHasNoImportance) {
    const Study study = studyOf(head("reliability") + X + Y + limit("half", "x > 0"));
    const FirstOrder found = firstOrder(study, study.limits[0]);
    ASSERT_EQ(found.fault, "");
    EXPECT_NEAR(found.beta, 0, 1e-6);
    EXPECT_TRUE(found.importance.empty());
}

} // namespace korvane::study::test
