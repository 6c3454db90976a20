// The calculation sheet as a whole: every check passes, the file is well-formed and self-contained.
#include "sheet_bench.h"
#include "support/random_problem.h"

#include <cstdlib>
#include <fstream>

namespace korvane::test {
namespace {

TEST(SheetOfExamples, AllChecksPass) {
    for (const std::string& file : exampleFiles()) {
        for (const WedgeMethod wedge : {WedgeMethod::Sweep, WedgeMethod::FixedSurface}) {
            const SheetBench bench(readWall(file), wedge);
            const CalculationSheet sheet = bench.sheet();
            EXPECT_EQ(failedChecks(sheet), "") << file;
            EXPECT_GE(sheet.checks.size(), 12U) << file;
            if (const char* out = std::getenv("SHEETS")) {
                std::ofstream(std::string(out) + "/" + std::filesystem::path(file).stem().string() +
                              (wedge == WedgeMethod::Sweep ? "" : "-fixed") + ".html")
                    << sheet.html;
            }
        }
    }
}

TEST(SheetOfRandomWalls, AllChecksPass) {
    const char* more = std::getenv("SHEET_WALLS");
    const int walls = more != nullptr ? std::atoi(more) : 40;
    RandomProblems problems(20261122);
    int solvedWalls = 0;
    for (int wall = 0; solvedWalls < walls && wall < 4 * walls; ++wall) {
        const SheetBench bench(problems.next(),
                               wall % 2 == 0 ? WedgeMethod::Sweep : WedgeMethod::FixedSurface);
        const CalculationSheet sheet = bench.sheet(wall % 3 == 0 ? UnitSystem::SI : UnitSystem::US);
        EXPECT_EQ(failedChecks(sheet), "") << wall;
        if (bench.isSolved()) {
            ++solvedWalls;
            EXPECT_GE(sheet.checks.size(), 12U) << wall;
        }
    }
    EXPECT_EQ(solvedWalls, walls);
}

} // namespace
} // namespace korvane::test
