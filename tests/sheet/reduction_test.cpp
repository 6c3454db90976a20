// Rowe's moment reduction on the sheet: stability number and curves are worked out again.
#include "rowe/moment_reduction.h"
#include "sheet/clay_work.h"
#include "sheet_bench.h"

#include <gmock/gmock.h>

#include <cmath>

namespace korvane::test {

using namespace sheet;

namespace {

using testing::HasSubstr;

/// An anchored wall in clay whose sections are as flexible as the curves for clay ask for.
struct ClaySheet {
    ClaySheet() : bench(readWall(examplePath("anchored-clay"))) {
        const double height = bench.problem.WallTopElev - bench.results->levels(1).bottomElev;
        for (int p = 1; p <= bench.sections.PileSectionCount; ++p) {
            const double x = -3.05 + 0.12 * (p - 1); // log(H^4/EI)
            bench.sections.PileSectionData(p, 2) =
                std::pow(height, 4) / std::pow(10, x) / bench.sections.PileModulus(p);
        }
        rowe = reduceMoments(bench.problem, *bench.results, bench.sections);
        bench.solved.reduction = &rowe;
    }
    std::string failures() const { return failedChecks(bench.sheet()); }

    SheetBench bench;
    MomentReduction rowe;
};

TEST(ClayReductionSheet, ConfirmsCoefficientsOnTheCurves) {
    const ClaySheet clay;
    ASSERT_EQ(clay.rowe.soil, RoweSoil::Clay);
    ASSERT_TRUE(clay.rowe.applicable);
    ASSERT_TRUE(clay.rowe.inRange(1));
    const CalculationSheet sheet = clay.bench.sheet();
    EXPECT_EQ(failedChecks(sheet), "");
    EXPECT_THAT(sheet.html, HasSubstr("Curves for clay at the stability number"));
    EXPECT_THAT(sheet.html, HasSubstr("moment reduction, stability number"));
    EXPECT_THAT(sheet.html, HasSubstr("moment reduction, coefficient on the curve"));
}

TEST(ClayReductionSheet, FindsAThousandthInNumberOrCoefficient) {
    ClaySheet clay;
    clay.rowe.RoweStability *= 1.001;
    EXPECT_THAT(clay.failures(), HasSubstr("moment reduction, stability number"));
    clay.rowe.RoweStability /= 1.001;
    clay.rowe.coefficient(2, 1) *= 1.001;
    EXPECT_THAT(clay.failures(), HasSubstr("moment reduction, coefficient on the curve"));
}

TEST(SandReductionSheet, FindsAThousandthInAPointOfTheCurves) {
    SheetBench bench(readWall(examplePath("anchored-sand")));
    MomentReduction rowe = *bench.solved.reduction;
    bench.solved.reduction = &rowe;
    EXPECT_EQ(failedChecks(bench.sheet()), "");
    rowe.RoweSandCurve(1, 3) *= 1.001;
    EXPECT_THAT(failedChecks(bench.sheet()), HasSubstr("points of the curves"));
}

// Right: 112 PCF for 4 FT, 122 - 62.4 for 16 FT; left: 740 PSF.
TEST(ClayReductionSheet, TheStabilityNumberByHand) {
    const SheetBench bench(readWall(examplePath("anchored-clay")));
    const SheetRequest request{.problem = bench.problem,
                               .sections = bench.sections,
                               .solved = bench.solved,
                               .options = bench.options,
                               .notes = bench.notes};
    const ClayStability own = clayStability(request, pressureStages(request).front(),
                                            bench.results->levels(1).bottomElev);
    EXPECT_NEAR(own.overburden.value(), 4 * 112 + 16 * (122 - 62.4), 1e-9);
    EXPECT_NEAR(own.cohesion.value(), 740, 1e-9);
    EXPECT_NEAR(own.adhesion.value(), 0, 1e-12);
    EXPECT_NEAR(own.number.value(), 740 / 1401.6, 1e-12);
}

// At S = 2 a row is its last point, at ALPHA 0.8 a curve is its first row, at its place the
// coefficient is the curve; the middle one of three with the other sign.
TEST(ClayReductionSheet, TheCurvesAtTheirPoints) {
    const std::array<ClayCurve, 3> curves = clayCurves(2, 0.8);
    EXPECT_NEAR(curves[0].value, 0.689, 1e-12);
    EXPECT_NEAR(curves[1].value, 0.55, 1e-12);
    EXPECT_NEAR(curves[2].value, 0.489, 1e-12);
    EXPECT_NEAR(clayCoefficient(curves, -3.1).value(), 0.689, 1e-12);
    EXPECT_NEAR(clayCoefficient(curves, -2.6).value(), -0.55, 1e-12);
    EXPECT_NEAR(clayCoefficient(curves, -2).value(), 0.489, 1e-12);
    EXPECT_NEAR(clayCurves(1, 0.7)[0].value, -0.678, 1e-12);
    EXPECT_NEAR(clayCurves(1.75, 0.6)[0].value, (0.589 + 0.561) / 2, 1e-12);
}

} // namespace
} // namespace korvane::test
