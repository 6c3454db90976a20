// The shipped studies: they run, and what they show is what the wall must do.
#include "study_desk.h"

#include "study/command_line.h"
#include "study/pictures.h"

#include "support/html_parser.h"

#include <gtest/gtest.h>

#include <map>

namespace korvane::study::test {

namespace {

/// Runs an example into the folder "o" and reports on it.
void runExample(const StudyDesk& desk, const std::string& name) {
    const std::string file = std::string(KORVANE_SOURCE_DIR) + "/examples/" + name + ".toml";
    const CommandRun run =
        StudyDesk::run({"run", file, "--output", desk.file("o"), "--quiet", "--csv"});
    ASSERT_EQ(run.status, StatusDone) << run.err;
    const CommandRun report = StudyDesk::run({"report", desk.file("o")});
    ASSERT_EQ(report.status, StatusDone) << report.err;
    EXPECT_EQ(korvane::test::htmlFault(desk.read("o/report.html")), "");
    EXPECT_EQ(desk.number("o", "SELECT count(*) FROM variants WHERE outcome <> 'solved'"), 0);
}

} // namespace

/// Stronger soil and higher water in front shorten the wall; higher water behind lengthens it.
TEST(StudyExamples, TheTornadoSwingsTheWayThatSoilDoes) {
    const StudyDesk desk;
    runExample(desk, "study-tornado-anchored");
    const FinishedStudy finished(desk.file("o"));
    ASSERT_EQ(finished.study.outputs.front().name, "penetration_free");
    const std::map<std::string, bool> shortens{
        {"sand_friction", true}, {"silt_friction", true}, {"fill_friction", true},
        {"silt_cohesion", true}, {"river", true},         {"ground_water", false},
    };
    double size = 1e9;
    std::size_t told = 0;
    for (const Swing& swing : swingsOf(finished, 0)) {
        EXPECT_LE(swing.size(), size);
        size = swing.size();
        const auto known = shortens.find(finished.study.variables[swing.variable].name);
        if (known != shortens.end()) {
            EXPECT_EQ(swing.high < swing.low, known->second) << known->first;
            ++told;
        }
    }
    EXPECT_EQ(told, shortens.size());
}

/// The same draws stand at every level of the water, so that the curve can only rise with it.
TEST(StudyExamples, TheFragilityCurveRisesWithTheWater) {
    const StudyDesk desk;
    runExample(desk, "study-fragility-cantilever");
    const auto points = FinishedStudy(desk.file("o")).fragility("too short");
    ASSERT_EQ(points.size(), 7U);
    for (std::size_t n = 1; n < points.size(); ++n) {
        EXPECT_GE(points[n].probability, points[n - 1].probability);
    }
    EXPECT_LT(points.front().probability, 0.05);
    EXPECT_GT(points.back().probability, 0.9);
}

/// The sample around the design point and the plane through it tell about the same probability.
TEST(StudyExamples, FirstOrderAndSampleAgreeForTheLayeredWall) {
    const StudyDesk desk;
    runExample(desk, "study-reliability-layered");
    const FinishedStudy finished(desk.file("o"));
    const Statistic* sampled = finished.find("too short", "probability by importance sampling");
    ASSERT_NE(sampled, nullptr);
    const double first = finished.value("too short", "probability of first order");
    EXPECT_NEAR(first / sampled->value, 1, 0.3);
    EXPECT_LT(sampled->high - sampled->low, 0.5 * sampled->value);
}

} // namespace korvane::study::test
