// What stands in a report as far as a solution has come.
#include "reports/solution_report.h"

#include "report_bench.h"
#include "runtime/runtime_error.h"

namespace korvane::test {
namespace {

class SolutionReport : public testing::Test, protected ReportBench {
  protected:
    SolutionReport() {
        setElevations(results.review.diagrams.grid, {0, -10, -20, -1000, -2000});
        setElevations(results.levels(1).solved.grid, {0, -10, -20, -1000});
        setRows(results.levels(1).diagrams, {{.elev = 0}, {.elev = -20}});
        results.levels(1).bottomElev = -20;
    }

    ReportPart next = ReportPart::Echo;
    Solved solved;

    /// The parts that are written now, each by its lines.
    std::vector<Lines> parts() {
        std::vector<Lines> taken;
        writeReport(next, problem, sections, solved,
                    [&](const PrintLines& lines) { taken.push_back(linesOf(lines)); });
        return taken;
    }
};

TEST_F(SolutionReport, EachPartIsWrittenOnceAsSoonAsItIsReached) {
    EXPECT_EQ(parts(), std::vector<Lines>{echo()});
    EXPECT_EQ(parts(), std::vector<Lines>{});
    solved.review = &results.review;
    EXPECT_EQ(parts(), std::vector<Lines>{pressureReport()});
    EXPECT_EQ(next, ReportPart::Results);
    solved.results = &results;
    EXPECT_EQ(parts(), std::vector<Lines>{resultReport()});
    EXPECT_EQ(parts(), std::vector<Lines>{});
    EXPECT_EQ(next, ReportPart::Reduction);
}

TEST_F(SolutionReport, AllAtOnceStandInTheirOrder) {
    solved.review = &results.review;
    solved.results = &results;
    EXPECT_EQ(parts(), (std::vector<Lines>{echo(), pressureReport(), resultReport()}));
}

TEST_F(SolutionReport, APartThatCannotBeTakenIsStillTheNext) {
    const auto refuse = [](const PrintLines&) { throw RuntimeError(61); };
    EXPECT_THROW(writeReport(next, problem, sections, solved, refuse), RuntimeError);
    EXPECT_EQ(next, ReportPart::Echo);
}

} // namespace
} // namespace korvane::test
