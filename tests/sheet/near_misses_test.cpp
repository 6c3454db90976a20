// Walls whose elevations nearly coincide, whose ground comes back over a layer's bottom, whose
// bottom stands at the end of seepage: what the method makes of them is worked out again too.
#include "sheet_bench.h"
#include "support/nasty_problem.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace korvane::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr double Hair = 1e-8; ///< FT, less than the grid tells apart

/// Ka 0.5 and Kp 3 above, 0.4 and 4 below the layer's bottom at EL -12.
Problem layeredWall() {
    Problem problem = plainCantilever();
    for (const int side : {Right, Left}) {
        problem.SoilDataKind(side) = SoilData::Coefficients;
        problem.SoilLayerCount(side) = 2;
        problem.SoilBottomElev(side, 1) = -12;
        problem.SoilBottomElev(side, 2) = NoLayerBottom;
        for (const int layer : {1, 2}) {
            problem.SoilSatWeight(side, layer) = 120;
            problem.SoilMoistWeight(side, layer) = 110;
            problem.SoilCoefActive(side, layer) = layer == 1 ? 0.5 : 0.4;
            problem.SoilCoefPassive(side, layer) = layer == 1 ? 3 : 4;
        }
    }
    return problem;
}

TEST(NearMisses, ALayerOfAHairIsConfirmed) {
    Problem problem = layeredWall();
    problem.SoilLayerCount(Left) = 3;
    problem.SoilBottomElev(Left, 2) = -12 - Hair;
    problem.SoilBottomElev(Left, 3) = NoLayerBottom;
    problem.SoilSatWeight(Left, 3) = 120;
    problem.SoilMoistWeight(Left, 3) = 110;
    problem.SoilCoefActive(Left, 3) = 0.3;
    problem.SoilCoefPassive(Left, 3) = 5;
    const SheetBench bench(problem);
    ASSERT_TRUE(bench.isSolved());
    EXPECT_EQ(failedChecks(bench.sheet()), "");
}

TEST(NearMisses, WaterAHairBelowTheGroundLeavesTheSoilMoist) {
    Problem problem = layeredWall();
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = problem.SurfaceElev(Left, 1) - Hair;
    problem.WaterElev(Left) = problem.WaterElev(Right);
    const SheetBench bench(problem);
    ASSERT_TRUE(bench.isSolved());
    const CalculationSheet sheet = bench.sheet();
    EXPECT_EQ(failedChecks(sheet), "");
    EXPECT_THAT(sheet.html, HasSubstr("Approximation: no row of its own stands at EL -10.00 FT"));
    const SheetBench plain(layeredWall());
    EXPECT_THAT(plain.sheet().html, Not(HasSubstr("no row of its own")));
}

TEST(NearMisses, AStepInATableOfWaterPressuresIsKept) {
    Problem problem = layeredWall();
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 3;
    problem.WaterPressElev(1) = -3;
    problem.WaterPressElev(2) = -3 - Hair;
    problem.WaterPressElev(3) = -9;
    problem.WaterPressure(1) = 0;
    problem.WaterPressure(2) = 75;
    problem.WaterPressure(3) = 10;
    const SheetBench bench(problem);
    ASSERT_TRUE(bench.isSolved());
    EXPECT_EQ(failedChecks(bench.sheet()), "");
}

TEST(NearMisses, ADistributedLoadThatEndsAHairBesideALayersBottomIsConfirmed) {
    for (const double off : {-40 * Hair, 5e-5}) {
        Problem problem = layeredWall();
        problem.HDistCount = 3;
        problem.HDistElev(1) = -4 + off;
        problem.HDistElev(2) = -8;
        problem.HDistElev(3) = -12 - off;
        problem.HDistLoad(1) = 30;
        problem.HDistLoad(2) = 50;
        problem.HDistLoad(3) = 20;
        const SheetBench bench(problem);
        ASSERT_TRUE(bench.isSolved());
        EXPECT_EQ(failedChecks(bench.sheet()), "") << off;
    }
}

TEST(NearMisses, GroundThatComesBackOverALayersBottomIsTold) {
    Problem problem = plainCantilever();
    problem.SoilLayerCount(Right) = 2;
    problem.SoilBottomElev(Right, 1) = problem.SurfaceElev(Right, 1) - 4;
    problem.SoilBottomElev(Right, 2) = NoLayerBottom;
    problem.SoilSatWeight(Right, 2) = 130;
    problem.SoilMoistWeight(Right, 2) = 125;
    problem.SoilFriction(Right, 2) = 34;
    const double top = problem.SurfaceElev(Right, 1);
    problem.SurfacePointCount(Right) = 4;
    const double dist[] = {3, 6, 40};
    const double elev[] = {top - 5, top - 1, top - 1};
    for (int point = 2; point <= 4; ++point) {
        problem.SurfaceDist(Right, point) = dist[point - 2];
        problem.SurfaceElev(Right, point) = elev[point - 2];
    }
    for (const WedgeMethod method : {WedgeMethod::Sweep, WedgeMethod::FixedSurface}) {
        const SheetBench bench(problem, method);
        const CalculationSheet sheet = bench.sheet();
        ASSERT_FALSE(bench.review->details.sides(Right).wedge.rows.empty());
        EXPECT_EQ(failedChecks(sheet), "");
        // 4 FT down a slope of 5 in 3.
        EXPECT_THAT(sheet.html, HasSubstr("Approximation: layer 1 ends 2.40 FT from the wall"));
    }
}

TEST(NearMisses, NastyWallsAreConfirmed) {
    NastyProblems nasty(7);
    int solved = 0;
    for (int number = 0; number < 110; ++number) {
        const SheetBench bench(nasty.next().problem,
                               number % 2 == 0 ? WedgeMethod::Sweep : WedgeMethod::FixedSurface);
        EXPECT_EQ(failedChecks(bench.sheet()), "") << number;
        solved += bench.isSolved() ? 1 : 0;
    }
    EXPECT_GE(solved, 50);
}

Problem nastyWall(std::uint64_t seed, int number) {
    NastyProblems nasty(seed);
    for (int before = 0; before < number; ++before) {
        nasty.next();
    }
    return nasty.next().problem;
}

/// The only check whose name begins so.
const Check& checkOf(const CalculationSheet& sheet, const std::string& what) {
    const auto begins = [&](const Check& check) { return check.what.starts_with(what); };
    const auto found = std::find_if(sheet.checks.begin(), sheet.checks.end(), begins);
    if (std::count_if(sheet.checks.begin(), sheet.checks.end(), begins) != 1) {
        throw std::logic_error("the sheet does not have one check of this name: " + what);
    }
    return *found;
}

TEST(NearMisses, AMomentByTheRowInWhichABottomIsToldIsWorkedOutByThatRow) {
    const std::string what = "fixed earth: largest moment, on the line between its rows";
    for (const WedgeMethod method : {WedgeMethod::Sweep, WedgeMethod::FixedSurface}) {
        SheetBench bench(nastyWall(23, 179), method);
        const LevelResult& level = bench.results->levels(2);
        ASSERT_LT(level.diagrams.ResultElev(level.diagrams.RowCount), level.bottomElev - 0.1);
        const CalculationSheet sheet = bench.sheet();
        EXPECT_EQ(failedChecks(sheet), "");
        EXPECT_TRUE(checkOf(sheet, what).pass);
        EXPECT_THAT(sheet.html, HasSubstr("is told in the row of the grid below it"));
        EXPECT_THAT(sheet.html, HasSubstr(" % less."));
        bench.results->levels(2).diagrams.MaxMoment.value *= 1.001;
        EXPECT_FALSE(checkOf(bench.sheet(), what).pass);
    }
}

TEST(NearMisses, AMomentBesideARowThatIsLeftAtTheBottomIsToldSo) {
    const SheetBench bench(nastyWall(303, 828));
    const CalculationSheet sheet = bench.sheet();
    EXPECT_EQ(failedChecks(sheet), "");
    EXPECT_THAT(sheet.html, HasSubstr("the shear does not vanish, as the small moment"));
}

TEST(NearMisses, AWallWithoutAnyMomentHasNoneWithinTheToleranceOfItsSearch) {
    SheetBench bench(nastyWall(101, 623));
    const CalculationSheet sheet = bench.sheet();
    EXPECT_EQ(failedChecks(sheet), "");
    const std::string what = "fixed earth: largest moment, none within";
    EXPECT_NEAR(checkOf(sheet, what).tolerance, 1, 1e-6); // LB-FT
    bench.results->levels(2).diagrams.MaxMoment.value = 0;
    bench.results->levels(2).bottomElev -= 1; // a longer wall has a moment at its bottom
    EXPECT_FALSE(checkOf(bench.sheet(), what).pass);
}

TEST(NearMisses, AnAnchorBesideARowStandsInThatRow) {
    SheetBench bench(nastyWall(303, 101)); // a row 1E-6 FT above the anchor
    const CalculationSheet sheet = bench.sheet();
    EXPECT_EQ(failedChecks(sheet), "");
    EXPECT_THAT(sheet.html, HasSubstr("a row stands within"));
    bench.results->levels(2).toeReaction *= 1.001;
    EXPECT_FALSE(checkOf(bench.sheet(), "fixed earth: toe reaction").pass);
}

TEST(NearMisses, AnAnchorBelowTheBottomHoldsNothing) {
    SheetBench bench(nastyWall(23, 323));
    const CalculationSheet sheet = bench.sheet();
    EXPECT_THAT(sheet.html, HasSubstr("The bottom lies above the anchor"));
    // Its force has no meaning but is worked out as the method does; all else is that of a wall
    // without an anchor.
    EXPECT_EQ(failedChecks(sheet), "");
    EXPECT_THAT(sheet.html, HasSubstr("The anchor stands below the bottom"));
    bench.results->levels(2).anchorForce *= 1.001;
    EXPECT_FALSE(checkOf(bench.sheet(), "fixed earth: anchor force").pass);
}

TEST(NearMisses, LinesFarBeyondTheHairThatTheyCrossAreConfirmedWithinRounding) {
    // Clay of 1950 PSF below water: nothing holds the wall, and its rows go on for 50 FT on the
    // line of the hair between ground and water.
    Problem problem = plainCantilever();
    problem.SoilFriction(Left, 1) = 0;
    problem.SoilCohesion(Left, 1) = 1950;
    problem.SurfaceElev(Left, 1) = -10 + Hair / 10;
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = 0;
    problem.WaterElev(Left) = -10;
    SheetBench bench(problem);
    EXPECT_EQ(failedChecks(bench.sheet()), "");
    PressureDiagrams& diagrams =
        bench.isSolved() ? bench.results->levels(1).solved : bench.review->diagrams;
    for (int row = 1; row <= diagrams.grid.NumElevs; ++row) {
        const double elev = diagrams.grid.ElevGrid(row);
        if (elev < -11 && elev > -14) {
            diagrams.pressures.PassivePressures(Left, row, 1) *= 1.001;
        }
    }
    EXPECT_FALSE(checkOf(bench.sheet(), "Passive pressure in force, left side").pass);
}

TEST(NearMisses, WaterWhoseRowTheBottomHasTakenIsToldAndNetPressuresHaveTheOther) {
    SheetBench bench(nastyWall(303, 945));
    ASSERT_TRUE(bench.isSolved());
    const CalculationSheet sheet = bench.sheet();
    EXPECT_EQ(failedChecks(sheet), "");
    EXPECT_THAT(sheet.html, HasSubstr("the bottom of the wall has taken the row at EL -6.50 FT"));
    LevelResult& level = bench.results->levels(1);
    level.solved.pressures.WaterPressures(3, 1) *= 1.001;
    EXPECT_FALSE(checkOf(bench.sheet(), "Water pressure").pass);
    level.solved.NetPassive(3, 1) += 1;
    EXPECT_FALSE(checkOf(bench.sheet(), "Net passive pressure").pass);
}

TEST(NearMisses, AForceThatIsRoundingAloneIsToldAndHidesNoOther) {
    SheetBench bench(nastyWall(23, 432));
    ASSERT_TRUE(bench.isSolved());
    const CalculationSheet sheet = bench.sheet();
    EXPECT_EQ(failedChecks(sheet), "");
    EXPECT_THAT(sheet.html, HasSubstr("Without a meaning: on the governing active plane"));
    const std::string what = "Active force on the wall, free earth, left side";
    WedgeDetails& wedge = bench.results->levels(1).details.sides(Left).wedge;
    const auto hasMeaning = [](const WedgeRow& row) {
        return row.active.found && row.active.force > 1 && row.active.force < 1e6; // LB
    };
    const auto row = std::find_if(wedge.rows.begin(), wedge.rows.end(), hasMeaning);
    ASSERT_NE(row, wedge.rows.end());
    row->active.force *= 1.001;
    EXPECT_FALSE(checkOf(bench.sheet(), what).pass) << row->elev;
}

TEST(NearMisses, ASumOfOverburdenGoesFromRowToRow) {
    SheetBench bench(nastyWall(505, 873)); // water a millionth of a foot above a layer's bottom
    EXPECT_EQ(failedChecks(bench.sheet()), "");
    bench.reduction.RoweStability *= 1.001;
    EXPECT_FALSE(checkOf(bench.sheet(), "moment reduction, stability number").pass);
}

struct Found {
    std::uint64_t seed;
    int number;
    const char* what;
    WedgeMethod wedge = WedgeMethod::Sweep;
};

/// Its checks all hold, and there are some.
void expectConfirmed(const Found& found, const SheetBench& bench) {
    const CalculationSheet sheet = bench.sheet();
    EXPECT_EQ(failedChecks(sheet), "") << found.what;
    EXPECT_FALSE(sheet.checks.empty()) << found.what;
}

TEST(NearMisses, WallsWithoutAMeaningAreConfirmedToo) {
    constexpr WedgeMethod fixed = WedgeMethod::FixedSurface;
    for (const Found& found : {Found{202, 979, "a row at the end of the line of a hair"},
                               Found{303, 1043, "a line 20 FT beyond a hair"},
                               Found{505, 645, "a line 60 FT beyond a hair", fixed},
                               Found{303, 1124, "a row that came beside the water"},
                               Found{303, 973, "a bottom above the exit of seepage", fixed},
                               Found{101, 381, "a plane whose forces cancel"},
                               Found{1302, 239, "a row above the ground, without forces", fixed},
                               Found{101, 22, "a row a hair above the ground", fixed},
                               Found{101, 350, "a row a hair above the ground", fixed},
                               Found{303, 9, "a factor of nothing"}}) {
        expectConfirmed(found, SheetBench(nastyWall(found.seed, found.number), found.wedge));
    }
}

TEST(NearMisses, RowsThatCameLaterAreConfirmed) {
    for (const Found& found :
         {Found{23, 508, "a layer's bottom a hair below the other ground"},
          Found{23, 707, "a zero beside a layer's bottom"},
          Found{23, 895, "a zero beside the ground"}, Found{303, 869, "a zero beside the ground"},
          Found{202, 909, "a jump in the row below the bottom"},
          Found{202, 729, "a wall of a hair's length"},
          Found{303, 1223, "a zero beside the end of seepage", WedgeMethod::FixedSurface},
          Found{303, 1241, "a bottom 9000 FT down"},
          Found{404, 918, "a transition below a jump"}}) {
        const SheetBench bench(nastyWall(found.seed, found.number), found.wedge);
        ASSERT_TRUE(bench.isSolved()) << found.what;
        expectConfirmed(found, bench);
    }
}

} // namespace
} // namespace korvane::test
