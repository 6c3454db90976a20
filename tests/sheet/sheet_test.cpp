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

TEST(Sheet, DefinesTheCoefficientsThatTheWallTakesAlone) {
    const auto html = [](const char* name) {
        return SheetBench(readWall(examplePath(name))).sheet().html;
    };
    const auto defines = [](const std::string& text, const char* words) {
        return text.find(words) != std::string::npos;
    };
    const std::string planes = html("sloping-both-sides-fixed");
    EXPECT_FALSE(defines(planes, "level ground, with developed angles"));
    EXPECT_FALSE(defines(planes, "table for curved failure surfaces ("));
    Problem wall = plainCantilever();
    for (const int side : {Right, Left}) {
        wall.SoilDataKind(side) = SoilData::Strengths;
        wall.SoilWallFriction(side, 1) = 10; // of 30: below half
        wall.SoilFriction(side, 1) = 30;
    }
    const std::string coulomb = SheetBench(wall).sheet().html;
    EXPECT_TRUE(defines(coulomb, "level ground, with developed angles"));
    EXPECT_FALSE(defines(coulomb, "table for curved failure"));
    wall.SoilWallFriction(Left, 1) = 20;
    EXPECT_TRUE(defines(SheetBench(wall).sheet().html, "table for curved failure"));
}

} // namespace
} // namespace korvane::test
