#include "wall/result_diagrams.h"

#include "support/support.h"
#include "wall/beam.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::test {
namespace {

/// A wall whose beam solution is set by hand or by SolveBeam.
struct DiagramBench : Bench {
    explicit DiagramBench(int rows, int level_ = 1) : level(level_) {
        for (int i = 1; i <= rows; ++i) {
            state->grid.ElevGrid(i) = 1.0 - i;
        }
        state->grid.NumElevs = rows;
        state->solution.BottomIndex(level) = rows;
        state->solution.SolvedBottomElev(level) = 1.0 - rows;
        problem.ProgramMode = Mode::Design;
    }
    /// Shears and moments at both ends of element e, with the signs of the diagrams.
    void element(int e, double shearTop, double momentTop, double shearBottom,
                 double momentBottom) {
        auto& ElementForces = beam.ElementForces;
        ElementForces(e, 1) = shearTop;
        ElementForces(e, 2) = -momentTop;
        ElementForces(e, 3) = -shearBottom;
        ElementForces(e, 4) = momentBottom;
    }
    void pressure(int i, double above, double below) {
        state->net.NetActive(i, 2) = above;
        state->net.NetActive(i, 1) = below;
    }
    void pressure(int i, double p) { pressure(i, p, p); }
    void build() { BuildResultDiagrams(*state, beam, level); }

    ResultDiagrams& results() { return state->results; }
    int rows() const { return state->results.RowCount; }
    double maxMoment() { return results().MaxMoment.value; }
    double maxMomentElev() { return results().MaxMoment.elev; }

    int level;
    Beam beam;
};

int errorOf(DiagramBench& bench) {
    try {
        bench.build();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

/// The last row's elevation of level 2 with a bottom between its last two grid points.
double lastElevation(double lastPoint, double farElev) {
    DiagramBench bench(4, 2);
    bench.state->grid.ElevGrid(4) = lastPoint;
    bench.state->grid.FarElev = farElev;
    bench.state->solution.SolvedBottomElev(2) = -2.25;
    bench.element(2, 0, 0, 0, 20); // no shear at the largest moment
    bench.element(3, 0, 20, -30, 7);
    bench.build();
    EXPECT_EQ(bench.rows(), 4);
    EXPECT_EQ(bench.results().ResultShear(4), -30); // of level 2 it stays
    EXPECT_EQ(bench.results().ResultMoment(4), 0);
    return bench.results().ResultElev(4);
}

TEST(ResultDiagrams, LevelTwoEndsAtItsGridPointButNotAtOneFarBelow) {
    EXPECT_EQ(lastElevation(-3, -50003), -3);
    EXPECT_EQ(lastElevation(-50002.99, -50003), -50002.99);
    EXPECT_EQ(lastElevation(-50003, -50003), -2.25);
    EXPECT_EQ(lastElevation(-100003, -50003), -2.25);
}

TEST(ResultDiagrams, RowsOfASmoothWall) {
    DiagramBench bench(3);
    bench.element(1, 40, 0, 60, 50);
    bench.element(2, 60, 50, 0, 110);
    bench.pressure(1, 0, 10);
    bench.pressure(2, 30);
    bench.pressure(3, -999);
    bench.state->solution.BottomPressure(1) = -80;
    for (int i = 1; i <= 3; ++i) {
        bench.beam.NodeDisplacement(i, 1) = 3.0 - i;
    }
    bench.build();

    ASSERT_EQ(bench.rows(), 3);
    const ResultDiagrams& results = bench.results();
    EXPECT_EQ(results.ResultMoment(1), 0);
    EXPECT_EQ(results.ResultShear(1), 40);
    EXPECT_EQ(results.ResultPressure(1), 10); // the value below the top
    EXPECT_EQ(results.ResultElev(2), -1);
    EXPECT_EQ(results.ResultMoment(2), 50);
    EXPECT_EQ(results.ResultShear(2), 60);
    EXPECT_EQ(results.ResultPressure(2), 30);
    EXPECT_EQ(results.ResultMoment(3), 0);
    EXPECT_EQ(results.ResultPressure(3), -80);
}

TEST(ResultDiagrams, AShearBelowATenThousandthAtTheTopIsZero) {
    for (const double shear : {0.00009, -0.00009, 0.0001}) {
        DiagramBench bench(3);
        bench.element(1, shear, 0, 0, 50);
        bench.element(2, 0, 50, -60, 0);
        bench.build();
        EXPECT_EQ(bench.results().ResultShear(1), shear == 0.0001 ? 0.0001 : 0.0);
    }
}

TEST(ResultDiagrams, ADesignScalesDeflectionsToPoundInchesCubed) {
    DiagramBench bench(3);
    bench.beam.NodeDisplacement(1, 1) = 2.5;
    bench.build();
    EXPECT_EQ(bench.results().ResultDeflection(1), 2.5 * 1728);
}

// 1728 / (200 IN^4 x 30E6 PSI) = 2.88E-7; times 1E6 LB-FT^3 that is 0.288 IN.
TEST(ResultDiagrams, AnAnalysisScalesDeflectionsToInches) {
    DiagramBench bench(3);
    bench.problem.ProgramMode = Mode::Analysis;
    bench.problem.WallInertia = 200;
    bench.problem.WallModulus = 30e6;
    bench.beam.NodeDisplacement(1, 1) = 1e6;
    bench.build();
    EXPECT_DOUBLE_EQ(bench.results().ResultDeflection(1), 0.288);
}

TEST(ResultDiagrams, AnAnalysisWithoutStiffnessIsADivisionByZero) {
    DiagramBench bench(3);
    bench.problem.ProgramMode = Mode::Analysis;
    bench.problem.WallModulus = 30e6;
    EXPECT_EQ(errorOf(bench), 11);
}

TEST(ResultDiagrams, AConcentratedForceGivesASecondRow) {
    DiagramBench bench(4);
    bench.element(1, 10, 0, 10, 10);
    bench.element(2, -25, 10, -25, -15); // a force of -35 at row 2
    bench.element(3, -25, -15, 0, -30);
    bench.pressure(3, 0, 30);
    bench.beam.NodeDisplacement(2, 1) = 1;
    bench.build();
    ASSERT_EQ(bench.rows(), 6); // the step of pressure at row 3 is the other double row
    const ResultDiagrams& results = bench.results();
    EXPECT_EQ(results.ResultElev(2), -1);
    EXPECT_EQ(results.ResultElev(3), -1);
    EXPECT_EQ(results.ResultShear(2), 10);
    EXPECT_EQ(results.ResultShear(3), -25);
    EXPECT_EQ(results.ResultMoment(2), 10);
    EXPECT_EQ(results.ResultMoment(3), 10);
    EXPECT_EQ(results.ResultDeflection(3), 1728);
}

TEST(ResultDiagrams, AForceBelowOnePoundGivesNoSecondRow) {
    for (const double force : {0.75, 1.0}) {
        DiagramBench bench(4);
        bench.element(1, 2, 0, 2, 2);
        bench.element(2, 2 + force, 2, 0, 9);
        bench.element(3, 0, 9, 0, 9);
        bench.build();
        EXPECT_EQ(bench.rows(), force < 1 ? 4 : 5);
    }
}

TEST(ResultDiagrams, AStepOfThePressureGivesASecondRow) {
    for (const double step : {0.00005, 0.5}) {
        DiagramBench bench(4);
        bench.pressure(3, 7, 7 + step);
        bench.build();
        EXPECT_EQ(bench.rows(), step < 0.0001 ? 4 : 5);
        if (bench.rows() == 5) {
            EXPECT_EQ(bench.results().ResultPressure(3), 7);
            EXPECT_EQ(bench.results().ResultPressure(4), 7.5);
        }
    }
}

TEST(ResultDiagrams, AStepOfLittleMoreThanATenThousandthGivesASecondRow) {
    for (const double step : {0.0002, 0.0009, 0.002}) {
        DiagramBench bench(4);
        bench.pressure(3, 0, -step);
        bench.build();
        ASSERT_EQ(bench.rows(), 5) << step;
        EXPECT_EQ(bench.results().ResultPressure(3), 0);
        EXPECT_EQ(bench.results().ResultPressure(4), -step);
    }
}

TEST(ResultDiagrams, MoreThan301RowsAreASubscriptError) {
    DiagramBench full(301);
    EXPECT_EQ(errorOf(full), 0);
    EXPECT_EQ(full.rows(), 301);
    DiagramBench over(301);
    over.pressure(150, 0, 1);
    EXPECT_EQ(errorOf(over), 9);
}

TEST(ResultDiagrams, Level1HasNoShearAtTheBottomAndLevel2KeepsIt) {
    for (const int level : {1, 2}) {
        DiagramBench bench(3, level);
        bench.element(1, 5, 0, 0, 2);
        bench.element(2, 0, 2, -12, -33);
        bench.state->solution.SolvedBottomElev(level) = -1.75;
        bench.state->solution.BottomPressure(level) = 44;
        bench.build();
        const ResultDiagrams& results = bench.results();
        EXPECT_EQ(results.ResultShear(3), level == 1 ? 0 : -12);
        EXPECT_EQ(results.ResultMoment(3), 0);
        EXPECT_EQ(results.ResultElev(3), level == 1 ? -1.75 : -2.0);
        EXPECT_EQ(results.ResultPressure(3), 44);
    }
}

TEST(ResultDiagrams, RangesAndExtremesOfALevel) {
    DiagramBench bench(4, 2);
    bench.element(1, 30, 0, -40, 20);
    bench.element(2, -40, 20, 0, -90);
    bench.element(3, 0, -90, 12, 0);
    bench.pressure(1, 0, 3);
    bench.pressure(2, -8);
    bench.pressure(3, 9);
    bench.state->solution.BottomPressure(2) = 1;
    const double deflections[] = {0.5, -2, 2, 0};
    for (int i = 1; i <= 4; ++i) {
        bench.beam.NodeDisplacement(i, 1) = deflections[i - 1];
    }
    bench.build();
    ResultDiagrams& results = bench.results();
    EXPECT_EQ(results.MomentRange.largest, 20);
    EXPECT_EQ(results.MomentRange.smallest, -90);
    EXPECT_EQ(results.ShearRange.largest, 30);
    EXPECT_EQ(results.ShearRange.smallest, -40);
    EXPECT_EQ(results.PressureRange.largest, 9);
    EXPECT_EQ(results.PressureRange.smallest, -8);
    EXPECT_EQ(results.DeflectionRange.largest, 2 * 1728);
    EXPECT_EQ(results.DeflectionRange.smallest, -2 * 1728);
    // Of equal sizes the last row wins.
    EXPECT_EQ(results.MaxDeflection.value, 2 * 1728);
    EXPECT_EQ(results.MaxDeflection.elev, -2);
}

TEST(ResultDiagrams, ARangeBeyondAHundredThousandKeepsItsStart) {
    DiagramBench bench(3);
    for (int i = 1; i <= 3; ++i) {
        bench.beam.NodeDisplacement(i, 1) = 100.0 + i;
    }
    bench.build();
    EXPECT_EQ(bench.results().DeflectionRange.largest, 103.0 * 1728);
    EXPECT_EQ(bench.results().DeflectionRange.smallest, 100000.0);
}

TEST(ResultDiagrams, OfEqualMomentsTheLastRowCounts) {
    DiagramBench bench(5);
    bench.element(1, 0, 0, 0, 70);
    bench.element(2, 0, 70, 0, -70);
    bench.element(3, 0, -70, 0, 10);
    bench.element(4, 0, 10, 0, 0);
    bench.build();
    EXPECT_EQ(bench.maxMoment(), -70);
    EXPECT_EQ(bench.maxMomentElev(), -2);
}

// The load of the simple span grows from 0 to q = 1,000 PSF over l = 20 FT. Rows stand at whole
// feet; the largest moment, q l^2 / (9 sqrt 3) = 25,660 LB-FT at l / sqrt 3 = 11.547 FT, lies
// between the rows at 11 and 12 FT and the straight pressure gives it exactly.
TEST(ResultDiagrams, TheLargestMomentOfATriangularLoadIsFoundBetweenRows) {
    DiagramBench bench(21);
    for (int i = 1; i <= 21; ++i) {
        bench.pressure(i, 50.0 * (i - 1));
    }
    bench.state->solution.BottomPressure(1) = 1000;
    bench.beam = SolveBeam(*bench.state, 1, 21, 1, 1);
    bench.build();
    EXPECT_NEAR(bench.maxMoment(), -1000.0 * 400 / (9 * std::sqrt(3.0)), 1e-8);
    EXPECT_NEAR(bench.maxMomentElev(), -20 / std::sqrt(3.0), 1e-10);
}

// Uniform load w = 80 PSF on a simple span of 17 FT: w l^2 / 8 = 2,890 LB-FT at 8.5 FT.
TEST(ResultDiagrams, TheLargestMomentOfAUniformLoadIsFoundBetweenRows) {
    DiagramBench bench(18);
    for (int i = 1; i <= 18; ++i) {
        bench.pressure(i, 80);
    }
    bench.state->solution.BottomPressure(1) = 80;
    bench.beam = SolveBeam(*bench.state, 1, 18, 1, 1);
    bench.build();
    EXPECT_NEAR(bench.maxMoment(), -2890, 1e-9);
    EXPECT_NEAR(bench.maxMomentElev(), -8.5, 1e-12);
}

// Row 2 has the largest moment, 100, and a shear of 25; the shear does not change sign above it.
// Below it p = -75, q = -275: A = -100, V + p s + A s^2 = 25 - 75 s - 100 s^2 = 0 at s = .25 (the
// other root is -1). R = sqrt(5625 + 10000) = 125 and s = (75 - 125) / -200 = .25 by the first
// formula. Largest moment: p2 = -125; s^2 (2 p + p2) / 6 + s V + 100 = -2.8646 + 6.25 + 100.
TEST(ResultDiagrams, TheSegmentBelowTheRowIsSearchedWhereTheShearKeepsItsSignAbove) {
    DiagramBench bench(4);
    bench.element(1, 80, 0, 25, 100);
    bench.element(2, 25, 100, -150, 70);
    bench.element(3, -150, 70, 0, 0);
    bench.pressure(1, 0);
    bench.pressure(2, -75);
    bench.pressure(3, -275);
    bench.build();
    EXPECT_NEAR(bench.maxMoment(), 0.0625 * -275 / 6 + 6.25 + 100, 1e-12);
    EXPECT_NEAR(bench.maxMomentElev(), -1.25, 1e-14);
}

// Row 3 has the largest moment and the shear changes sign above it: the segment from row 2 on.
// p = 10, q = 30: A = 10, V = -11: -11 + 10 s + 10 s^2 = 0 at s = (-10 + sqrt(540)) / 20 = .6619;
// the first formula gives the negative root.
TEST(ResultDiagrams, TheSegmentAboveTheRowIsSearchedWhereTheShearChangesSignThere) {
    DiagramBench bench(4);
    bench.element(1, -40, 0, -11, -90);
    bench.element(2, -11, -90, 9, -96);
    bench.element(3, 9, -96, 0, 0);
    bench.pressure(2, 10);
    bench.pressure(3, 30);
    bench.build();
    const double s = (-10 + std::sqrt(540.0)) / 20;
    EXPECT_NEAR(bench.maxMomentElev(), -1 - s, 1e-14);
    EXPECT_NEAR(bench.maxMoment(), s * s * (20 + 20 * s + 10) / 6 - 11 * s - 90, 1e-12);
}

TEST(ResultDiagrams, NoRefinementWhereTheLargestMomentStandsAtAJump) {
    // An anchor at row 3 of 5: the moment's peak is at its two rows.
    DiagramBench bench(5);
    bench.element(1, 10, 0, 20, 15);
    bench.element(2, 20, 15, 30, 40);
    bench.element(3, -50, 40, -40, -5);
    bench.element(4, -40, -5, 0, -20);
    bench.pressure(2, 10);
    bench.pressure(3, 10);
    bench.pressure(4, 10);
    bench.build();
    EXPECT_EQ(bench.rows(), 6);
    EXPECT_EQ(bench.maxMoment(), 40);
    EXPECT_EQ(bench.maxMomentElev(), -2);
}

TEST(ResultDiagrams, NoRefinementAtTheFirstRowOfAJump) {
    // The moments of the two rows differ here, so that the first one is the largest.
    DiagramBench bench(4);
    bench.element(1, 10, 0, 20, 41);
    bench.element(2, -50, 40, -40, -5);
    bench.element(3, -40, -5, 0, -20);
    bench.pressure(2, 10);
    bench.pressure(3, 10);
    bench.build();
    EXPECT_EQ(bench.maxMoment(), 41);
    EXPECT_EQ(bench.maxMomentElev(), -1);
}

TEST(ResultDiagrams, NoRefinementWhereTheShearIsZeroAtTheLargestMoment) {
    for (const double shear : {0.0, 0.0001, -0.0001}) {
        DiagramBench bench(4);
        bench.element(1, 10, 0, shear, 40);
        bench.element(2, shear, 40, -40, -5);
        bench.element(3, -40, -5, 0, 0);
        bench.pressure(2, 10);
        bench.pressure(3, 10);
        bench.build();
        EXPECT_EQ(bench.maxMoment(), 40);
        EXPECT_EQ(bench.maxMomentElev(), -1);
    }
}

TEST(ResultDiagrams, NothingIsRefinedInAWallWithoutMoments) {
    DiagramBench bench(301);
    bench.build();
    EXPECT_EQ(bench.maxMoment(), 0);
    EXPECT_EQ(bench.maxMomentElev(), -300);
}

TEST(ResultDiagrams, AShearThatNoPressureBringsToZeroIsADivisionByZero) {
    // A force below one pound at row 2 turns the shear without a second row; no pressure acts.
    DiagramBench bench(4);
    bench.element(1, 0.3, 0, 0.3, 0.3);
    bench.element(2, -0.2, 0.3, -0.2, 0.1);
    bench.element(3, -0.2, 0.1, 0, 0);
    EXPECT_EQ(errorOf(bench), 11);
}

TEST(ResultDiagrams, AShearWithoutAZeroIsAnInvalidCall) {
    // 1 + s^2 has no real root.
    DiagramBench bench(4);
    bench.element(1, 1, 0, 1, 50);
    bench.element(2, 1, 50, 2, 10);
    bench.element(3, 2, 10, 0, 0);
    bench.pressure(2, 0);
    bench.pressure(3, 2);
    EXPECT_EQ(errorOf(bench), 5);
}

} // namespace
} // namespace korvane::test
