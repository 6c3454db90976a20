// The sheet of a wall without a solution: what is known up to the failure, and why it failed.
#include "sheet_bench.h"
#include "support/failing_walls.h"

namespace korvane::test {
namespace {

TEST(SheetOfFailingWalls, TellsWhatWasBeingDoneAndWhatIsKnown) {
    for (const FailingWall& wall : failingWalls()) {
        const SheetBench bench(wall.problem);
        ASSERT_TRUE(bench.solved.failure) << wall.name;
        const CalculationSheet sheet = bench.sheet();
        EXPECT_NE(sheet.html.find("ended without results"), std::string::npos) << wall.name;
        EXPECT_NE(sheet.html.find(stageText(bench.solved.failure.stage, wall.problem.WallType)),
                  std::string::npos)
            << wall.name;
        EXPECT_EQ(failedChecks(sheet), "") << wall.name;
    }
}

// 10 FT of 120 PCF load the clay behind with 1200 PSF; twice the cohesions over the factors are
// 2 * 250 / 1 + 2 * 250 / 1 = 1000: 200 PSF remain at every depth.
TEST(SheetOfClayWithoutADepth, GivesTheNumberThatShowsIt) {
    Problem problem = plainCantilever();
    for (const int side : {Right, Left}) {
        problem.SoilFriction(side, 1) = 0;
        problem.SoilCohesion(side, 1) = 250;
    }
    const SheetBench bench(problem);
    ASSERT_TRUE(bench.solved.failure);
    const std::string html = bench.sheet().html;
    EXPECT_NE(html.find("<b>200\u00a0PSF</b>"), std::string::npos);
    EXPECT_NE(html.find("no depth holds this wall"), std::string::npos);
}

} // namespace
} // namespace korvane::test
