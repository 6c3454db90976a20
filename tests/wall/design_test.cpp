#include "wall/design.h"

#include "search_bench.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::test {
namespace {

struct DesignBench : Bench {
    explicit DesignBench(const Problem& problem_) { problem = problem_; }
};

/// A wall in sand of one kind on both sides; elevations below the wall top at 0.
struct SandWall {
    double retained;   ///< FT
    double anchor;     ///< FT below the top; below 0 none
    double water;      ///< FT below the top on both sides; below 0 none
    double moist, sat; ///< PCF
    double friction;   ///< degrees
    double waterUnitWeight;

    Problem problem() const {
        Problem problem = plainCantilever();
        problem.WallType = anchor < 0 ? WallKind::Cantilever : WallKind::Anchored;
        problem.AnchorElev = -anchor;
        problem.SurfaceElev(Left, 1) = -retained;
        for (const int side : {Right, Left}) {
            problem.SoilMoistWeight(side, 1) = moist;
            problem.SoilSatWeight(side, 1) = sat;
            problem.SoilFriction(side, 1) = friction;
            problem.WaterElev(side) = -water;
        }
        if (water >= 0) {
            problem.WaterDataKind = WaterData::Elevations;
            problem.WaterUnitWeight = waterUnitWeight;
        }
        return problem;
    }
};

constexpr SandWall dasCantileverMetric{16.404, -1, 6.5617, 101.2175, 123.0525, 32, 62.449};
constexpr SandWall dasCantilever{30, -1, 10, 120, 129.4, 40, 62.4};
constexpr SandWall dasAnchoredMetric{30.0197, 4.98688, 10.00656, 101.854, 124.135, 30, 62.449};
constexpr SandWall dasAnchored{16.404, 3.281, 6.5617, 101.2175, 123.0525, 32, 62.449};
constexpr SandWall dryAnchored{20, 4, -1, 110, 110, 30, 62.4};

struct Published {
    const char* source;
    SandWall wall;
    int level;
    double penetration; ///< FT
    double within;      ///< FT
    double anchorForce; ///< LB, 0 without one
    double moment;      ///< LB-FT by size, within 0.2 %
};

// Depths agree to 0.01 FT with a closed form and to 0.02 FT with a value rounded to 0.01 FT; forces
// and moments to 0.2 %, since rows stand a foot apart and the values have four digits.
constexpr Published publishedWalls[] = {
    {"Das, 8th ed., Example 14.1", dasCantileverMetric, 1, 17.73, 0.02, 0, 47110},
    {"Das, Example 9.1", dasCantilever, 1, 21.71, 0.01, 0, 175100},
    {"Das, 8th ed., Example 14.7", dasAnchoredMetric, 1, 13.37, 0.01, 7955, 79360},
    {"Das, Example 9.3", dasAnchored, 1, 6.594, 0.01, 2252, 11070},
    {"elastic line, free earth", dryAnchored, 1, 7.609, 0.01, 4421.2, 28087},
    {"elastic line, fixed earth", dryAnchored, 2, 12.082, 0.01, 3731.6, 20565},
};

TEST(SolveDesign, MeetsPublishedWalls) {
    for (const Published& published : publishedWalls) {
        SCOPED_TRACE(published.source);
        DesignBench bench(published.wall.problem());
        solve(bench);
        const int level = published.level;
        ASSERT_FALSE(bench.state->failed());
        EXPECT_NEAR(-published.wall.retained - bench.state->solution.SolvedBottomElev(level),
                    published.penetration, published.within);
        EXPECT_NEAR(bench.state->solution.AnchorForce(level), published.anchorForce,
                    0.002 * published.anchorForce);
        EXPECT_NEAR(std::abs(bench.results->levels(level).diagrams.MaxMoment.value),
                    published.moment, 0.002 * published.moment);
    }
}

TEST(SolveDesign, TheFixingMomentMeetsTheElasticLine) {
    DesignBench bench(dryAnchored.problem());
    solve(bench);
    // The sharp end of the diagram, taken at a row of the grid.
    EXPECT_NEAR(bench.results->levels(2).diagrams.MomentRange.largest, 16436, 0.005 * 16436);
    EXPECT_NEAR(bench.results->levels(2).diagrams.MomentRange.smallest, -20565, 0.002 * 20565);
}

TEST(SolveDesign, AWallInClayThatNoDepthHoldsFailsClearly) {
    // 15 FT of 120 PCF: 4 x 450 PSF is not above the overburden of 1800 PSF.
    DesignBench bench(plainCantilever());
    bench.problem.SurfaceElev(Left, 1) = -15;
    for (const int side : {Right, Left}) {
        bench.problem.SoilFriction(side, 1) = 0;
        bench.problem.SoilCohesion(side, 1) = 450;
    }
    solve(bench);
    EXPECT_TRUE(bench.state->failed());
    EXPECT_EQ(textsOf(bench),
              std::vector<std::string>{"NO SOLUTION FOR CANTILEVER WALL DESIGN WITH\n"
                                       "BOTTOM OF WALL DOWN TO ELEVATION -50090.00 (FT).\n\n"
                                       "     UNABLE TO CONTINUE."});
    EXPECT_FALSE(bench.solved(1));
}

TEST(SolveDesign, ACantileverDesignKeepsItsLevel) {
    DesignBench bench(dasCantilever.problem());
    solve(bench);
    EXPECT_TRUE(bench.solved(1));
    EXPECT_FALSE(bench.solved(2));
    EXPECT_EQ(bench.results->levels(1).diagrams.RowCount, bench.state->results.RowCount);
}

TEST(SolveDesign, AnAnchoredDesignKeepsBothMethodsAsTheyWereSolved) {
    DesignBench bench(dryAnchored.problem());
    solve(bench);
    const LevelResult& freeEarth = bench.results->levels(1);
    const LevelResult& fixedEarth = bench.results->levels(2);
    EXPECT_EQ(freeEarth.method, SolutionMethod::FreeEarth);
    EXPECT_EQ(fixedEarth.method, SolutionMethod::FixedEarth);
    EXPECT_GT(freeEarth.bottomElev, fixedEarth.bottomElev);
    EXPECT_EQ(freeEarth.diagrams.ResultElev(freeEarth.diagrams.RowCount), freeEarth.bottomElev);
    EXPECT_TRUE(bench.state->results.ResultMoment == fixedEarth.diagrams.ResultMoment);
    EXPECT_TRUE(bench.state->grid.ElevGrid == fixedEarth.solved.grid.ElevGrid);
}

TEST(SolveDesign, AFreeEarthSearchThatFailsLeavesNoFileAndFixedEarthUnsolved) {
    DesignBench bench(dryAnchored.problem());
    // A stiff layer of 2 FT turns the net pressure; below it lies soil so light and soft that the
    // retained soil, which gains 37 PSF a foot, pushes it all the way down.
    Problem& problem = bench.problem;
    problem.SoilLayerCount(Left) = 2;
    problem.SoilFriction(Left, 1) = 0;
    problem.SoilCohesion(Left, 1) = 600;
    problem.SoilBottomElev(Left, 1) = -22;
    problem.SoilSatWeight(Left, 2) = problem.SoilMoistWeight(Left, 2) = 30;
    problem.SoilCohesion(Left, 2) = 10;
    problem.SoilBottomElev(Left, 2) = NoLayerBottom;
    solve(bench);
    EXPECT_TRUE(bench.state->failed());
    EXPECT_EQ(textsOf(bench), std::vector<std::string>{
                                  "A SOLUTION FOR PENETRATION HAS NOT BEEN FOUND FOR AN ELEVATION\n"
                                  "DOWN TO EL -50120.00 FT.\n\n     UNABLE TO CONTINUE."});
    EXPECT_EQ(bench.state->solution.SolvedBottomElev(2), 0); // never begun
    EXPECT_FALSE(bench.solved(1));
    EXPECT_FALSE(bench.solved(2));
}

MessageBox rotation(const std::string& wall, const std::string& turn) {
    return {.text = "Conditions encountered where impending rotation\nof" + wall + " wall is " +
                    turn +
                    "\nor driving force of retained soil above left side surfaceis zero.\n\n"
                    "     Unable to continue.",
            .title = "IMPROPER WALL ROTATION"};
}

TEST(SolveDesign, NoDrivingForceIsTheRotationMessage) {
    DesignBench bench(plainCantilever());
    bench.problem.SurfaceElev(Left, 1) = 0; // nothing is retained
    solve(bench);
    EXPECT_EQ(bench.state->net.DrivingForce, 0);
    EXPECT_TRUE(bench.state->failed());
    ASSERT_EQ(bench.told().size(), 1U);
    EXPECT_EQ(bench.told()[0], rotation("CANTILEVER", "CLOCKWISE"));
}

TEST(SolveDesign, AWallThatTurnsTheOtherWayIsTheRotationMessage) {
    // The anchor stands at the ground on the left: all forces act above it.
    DesignBench bench(dryAnchored.problem());
    bench.problem.AnchorElev = -20;
    solve(bench);
    EXPECT_GT(bench.state->net.DrivingForce, 0);
    EXPECT_TRUE(bench.state->failed());
    ASSERT_EQ(bench.told().size(), 1U);
    EXPECT_EQ(bench.told()[0], rotation("ANCHORED", "COUNTERCLOCKWISE"));
}

TEST(SolveDesign, BothLevelsWithSeepageHaveTheirOwnGradients) {
    SandWall wall = dasAnchoredMetric;
    DesignBench bench(wall.problem());
    bench.problem.WaterElev(Left) = -25;
    bench.problem.SeepageKind = Seepage::Automatic;
    bench.problem.SeepageElev = -12;
    solve(bench);
    ASSERT_FALSE(bench.state->failed());
    for (const int level : {1, 2}) {
        // The left water stands above the ground: seepage leaves the soil at -30.0197.
        const double head = 25 - 10.00656;
        const double previous =
            (-12 - 30.0197 - head / bench.results->levels(level).seepageGradient) / 2;
        EXPECT_NEAR(bench.state->solution.SolvedBottomElev(level), previous, 0.1);
        EXPECT_NEAR(bench.state->preparation.SeepageEndElev(level), previous, 1e-9);
    }
    EXPECT_GT(bench.results->levels(1).seepageGradient, bench.results->levels(2).seepageGradient);
}

TEST(SolveDesign, EqualInputGivesEqualResultsWhateverWasSolvedBefore) {
    DesignBench bench(dasAnchoredMetric.problem());
    solve(bench);
    const LevelResult first = bench.results->levels(2);
    bench.problem = dasCantilever.problem();
    solve(bench);
    EXPECT_FALSE(bench.solved(2));
    bench.problem = dasAnchoredMetric.problem();
    solve(bench);
    const LevelResult& again = bench.results->levels(2);
    EXPECT_EQ(first.diagrams.RowCount, again.diagrams.RowCount);
    EXPECT_TRUE(first.diagrams.ResultMoment == again.diagrams.ResultMoment);
    EXPECT_TRUE(first.solved.grid.ElevGrid == again.solved.grid.ElevGrid);
    EXPECT_TRUE(first.solved.pressures.PassivePressures == again.solved.pressures.PassivePressures);
    EXPECT_TRUE(first.solved.NetPassive == again.solved.NetPassive);
}

/// EI times the deflection of the anchor off the tangent at the bottom, over the sum of the sizes
/// of its parts: moment areas of the fixed earth diagram, row by row.
double anchorDeflection(const Problem& problem, const LevelResult& solved) {
    const double anchor = problem.AnchorElev;
    double shear = 0;
    double moment = 0;
    double deflection = 0;
    double scale = 0;
    for (int row = 2; row <= solved.diagrams.RowCount; ++row) {
        const double top = solved.diagrams.ResultElev(row - 1);
        const bool last = row == solved.diagrams.RowCount;
        const double bottom = last ? solved.bottomElev : solved.diagrams.ResultElev(row);
        const double h = top - bottom;
        if (h < 1e-9) {
            continue;
        }
        const auto actsHere = [&](double elev) { return std::abs(elev - top) < 1e-4; };
        shear -= actsHere(anchor) ? solved.anchorForce : 0;
        for (int j = 1; j <= problem.HLineCount; ++j) {
            shear += actsHere(problem.HLineElev(j)) ? problem.HLineLoad(j) : 0;
        }
        const double a = solved.diagrams.ResultPressure(row - 1);
        const double slope = (solved.diagrams.ResultPressure(row) - a) / h;
        const auto momentAt = [&](double s) {
            return moment + shear * s + a * s * s / 2 + slope * s * s * s / 6;
        };
        if (top <= anchor + 1e-4) {
            // Gauss with three points: exact for a cubic moment times a distance.
            const double offset = std::sqrt(0.6) / 2;
            for (const auto& [place, weight] :
                 {std::pair{0.5 - offset, 5.0 / 18}, {0.5, 8.0 / 18}, {0.5 + offset, 5.0 / 18}}) {
                const double part = momentAt(place * h) * (anchor - top + place * h) * weight * h;
                deflection += part;
                scale += std::abs(part);
            }
        }
        moment = momentAt(h);
        shear += (a + slope * h / 2) * h;
    }
    return deflection / scale;
}

TEST(SolveDesign, RandomWallsAreInBalance) {
    RandomProblems problems(77);
    RandomKind kind;
    kind.analysis = false;
    int solvedWalls[2] = {0, 0};
    for (int run = 0; run < 300; ++run) {
        SCOPED_TRACE(run);
        DesignBench bench(problems.next(kind));
        State& state = *bench.state;
        solve(bench);
        // A failure shows one box; a wall that is solved shows none.
        EXPECT_EQ(bench.told().size(), state.failed() ? 1U : 0U);
        if (state.failed()) {
            continue;
        }
        const bool anchored = state.problem->WallType == WallKind::Anchored;
        ++solvedWalls[anchored ? 1 : 0];
        for (int level = 1; level <= (anchored ? 2 : 1); ++level) {
            const Resultant sum = resultant(bench, level);
            // The transition stands on a row within 0.0001 FT of it, where pressures may differ by
            // the whole range of the diagram.
            const auto& results = bench.results->levels(level).diagrams;
            const double range =
                std::abs(results.PressureRange.largest) + std::abs(results.PressureRange.smallest);
            const double height =
                state.problem->WallTopElev - state.solution.SolvedBottomElev(level);
            EXPECT_NEAR(sum.moment, 0, 1.0 + 1e-4 * range * height) << "level " << level;
            if (level == 1) {
                EXPECT_NEAR(sum.force, 0, 0.1 + 1e-4 * range);
            }
        }
        if (anchored) {
            EXPECT_NEAR(anchorDeflection(bench.problem, bench.results->levels(2)), 0, 1e-6);
        }
    }
    EXPECT_GT(solvedWalls[0], 60);
    EXPECT_GT(solvedWalls[1], 60);
}

} // namespace
} // namespace korvane::test
