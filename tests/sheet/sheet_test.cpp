// The calculation sheet as a whole: every check passes, the file is well-formed and self-contained.
#include "sheet_bench.h"
#include "support/random_problem.h"

#include <fstream>
#include <cstdlib>

namespace korvane::test {
namespace {

TEST(SheetOfExamples, AllChecksPass) {
    for (const std::string& file : exampleFiles()) {
        for (const WedgeMethod wedge : {WedgeMethod::Sweep, WedgeMethod::FixedSurface}) {
            const SheetBench bench(readWall(file), wedge);
            const Sheet sheet = bench.sheet();
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

} // namespace
} // namespace korvane::test
