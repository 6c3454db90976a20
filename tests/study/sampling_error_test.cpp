// Intervals of what a sample says: of quantiles, of designs that are not independent draws, of each
// value of a fragility.
#include "study_desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace korvane::study::test {

namespace {

/// The depth of the plain wall, whose friction alone is drawn.
std::string depths(const std::string& design, int size, int seed = 1) {
    return head("sample", "outputs = \"penetration\"\ndesign = \"" + design + "\"\nsize = " +
                              std::to_string(size) + "\nseed = " + std::to_string(seed)) +
           friction("distribution = \"Uniform(28, 36)\"") + limit("deep", "penetration > 14");
}

} // namespace

TEST(SamplingError, IntervalsOfQuantilesCoverThem) {
    // The depth falls with the friction: its median is that at 32, its 0.95 quantile that at 28.4.
    const StudyDesk desk;
    desk.runStudy(head("grid", "outputs = \"penetration\"") + friction("values = [28.4, 32]"),
                  "exact");
    const double high = desk.number("exact", "SELECT penetration FROM variants WHERE id = 0");
    const double median = desk.number("exact", "SELECT penetration FROM variants WHERE id = 1");
    int covered = 0;
    for (int seed = 1; seed <= 100; ++seed) {
        desk.runStudy(depths("monte-carlo", 200, seed), "o" + std::to_string(seed));
        const auto covers = [&](const char* name, double value) {
            const std::string o = "o" + std::to_string(seed);
            return desk.statistic(o, "penetration", name, "low") <= value &&
                   value <= desk.statistic(o, "penetration", name, "high");
        };
        covered += covers("quantile 0.5", median) && covers("quantile 0.95", high) ? 1 : 0;
    }
    EXPECT_GE(covered, 84); // 90 of 100 at the least by either alone, less three deviations
}

TEST(SamplingError, OfSobolPointsNothingIsTold) {
    for (const std::string design : {"monte-carlo", "latin-hypercube", "sobol"}) {
        const StudyDesk desk;
        desk.runStudy(depths(design, 128), "o");
        const auto rows = desk.rows("o", "SELECT low IS NULL, high IS NULL FROM statistics WHERE "
                                         "name IN ('mean', 'probability', 'quantile 0.5')");
        const std::string none = design == "sobol" ? "1" : "0";
        EXPECT_EQ(rows, (std::vector<TextRow>(3, {none, none}))) << design;
    }
}

TEST(SamplingError, OfSobolPointsIndicesHaveNoIntervals) {
    for (const std::string design : {"monte-carlo", "latin-hypercube", "sobol"}) {
        const StudyDesk desk;
        desk.runStudy(
            head("sensitivity",
                 "size = 128\noutputs = \"penetration\"\ndesign = \"" + design + "\"") +
                friction("distribution = \"Normal(32, 2)\"") +
                variable("factor", "fields = \"FSPassive\"\ndistribution = \"Uniform(1, 1.5)\""),
            "o");
        const auto rows = desk.rows("o", "SELECT low IS NULL, high IS NULL FROM statistics WHERE "
                                         "name LIKE 'first-order %' OR name LIKE 'total %'");
        const std::string none = design == "sobol" ? "1" : "0";
        EXPECT_EQ(rows, (std::vector<TextRow>(4, {none, none}))) << design;
        ASSERT_EQ(StudyDesk::run({"report", desk.file("o")}).status, 0);
        EXPECT_EQ(desk.read("o/report.html").find("and indices have no intervals") ==
                      std::string::npos,
                  design != "sobol");
    }
}

TEST(SamplingError, OutputsOfAFragilityAreTheirOwnAtEachValue) {
    const StudyDesk desk;
    desk.runStudy(head("fragility", "size = 50\nalong = \"factor\"\noutputs = \"penetration\"") +
                      friction("distribution = \"Normal(32, 2)\"") +
                      variable("factor", "fields = \"FSPassive\"\nvalues = [1, 1.5]") +
                      limit("deep", "penetration > 14"),
                  "o");
    for (const char* value : {"1", "1.5"}) {
        const std::string at = std::string(" at ") + value;
        EXPECT_EQ(desk.statistic("o", "penetration", "count" + at), 50);
        EXPECT_NEAR(desk.statistic("o", "penetration", "mean" + at),
                    desk.number("o", std::string("SELECT avg(penetration) FROM variants WHERE "
                                                 "factor = ") +
                                         value),
                    1e-12);
    }
    EXPECT_GT(desk.statistic("o", "penetration", "mean at 1.5"),
              desk.statistic("o", "penetration", "mean at 1") + 1);
    EXPECT_TRUE(desk.rows("o", "SELECT * FROM statistics WHERE name = 'mean'").empty());
}

} // namespace korvane::study::test
