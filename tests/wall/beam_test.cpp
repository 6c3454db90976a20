#include "wall/beam.h"

#include "exact_beam.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace korvane::test {
namespace {

/// A beam on given rows; each row's pressures are continuous unless told otherwise.
struct BeamBench : Bench {
    explicit BeamBench(const std::vector<double>& elevations, int level_ = 1) : level(level_) {
        n = static_cast<int>(elevations.size());
        for (int i = 1; i <= n; ++i) {
            state->grid.ElevGrid(i) = elevations[static_cast<std::size_t>(i - 1)];
        }
        state->grid.NumElevs = n;
        state->solution.SolvedBottomElev(level) = state->grid.ElevGrid(n);
        state->solution.BottomIndex(level) = n;
    }

    void pressure(int i, double above, double below) {
        state->net.NetActive(i, 2) = above;
        state->net.NetActive(i, 1) = below;
        if (i == n) {
            state->solution.BottomPressure(level) = above;
        }
    }
    void pressure(int i, double p) { pressure(i, p, p); }
    void lineLoad(double elevation, double load) {
        const int j = ++problem.HLineCount;
        problem.HLineElev(j) = elevation;
        problem.HLineLoad(j) = load;
    }
    void solve(int anchorIndex, int fixity) {
        beam = SolveBeam(*state, anchorIndex, n, fixity, level);
    }

    double force(int e, int k) const { return beam.ElementForces(e, k); }
    double deflection(int i) const { return beam.NodeDisplacement(i, 1); }
    double rotation(int i) const { return beam.NodeDisplacement(i, 2); }

    int level;
    int n;
    Beam beam;
};

std::vector<double> footRows(int count) {
    std::vector<double> rows(static_cast<std::size_t>(count));
    std::generate(rows.begin(), rows.end(), [z = 1.0]() mutable { return z -= 1.0; });
    return rows;
}

// Moments, shears, deflections and rotations against an exact beam, each to 1E-9 of its diagram's
// largest size; shears to 1E-6 LB where that is more.
void expectExact(const BeamBench& bench, const ExactBeam& exact) {
    const int n = bench.n;
    double worst[4] = {0, 0, 0, 0};
    double largest[4] = {0, 0, 0, 0};
    const auto see = [&](int diagram, double value, const Rational& truth) {
        const double gap = std::fabs((Rational(value) - truth).toDouble());
        worst[diagram] = std::max(worst[diagram], gap);
        largest[diagram] = std::max(largest[diagram], std::fabs(truth.toDouble()));
    };
    for (int e = 1; e < n; ++e) {
        const auto& forces = exact.forces[static_cast<std::size_t>(e)];
        see(0, bench.force(e, 1), forces[0]);
        see(1, bench.force(e, 2), forces[1]);
        see(0, bench.force(e, 3), forces[2]);
        see(1, bench.force(e, 4), forces[3]);
    }
    for (int i = 1; i <= n; ++i) {
        const auto& displacement = exact.displacement[static_cast<std::size_t>(i)];
        see(2, bench.deflection(i), displacement[0]);
        see(3, bench.rotation(i), displacement[1]);
    }
    EXPECT_LE(worst[0], std::max(1e-9 * largest[0], 1e-6)) << "shear";
    EXPECT_LE(worst[1], 1e-9 * largest[1]) << "moment";
    EXPECT_LE(worst[2], 1e-9 * largest[2]) << "deflection";
    EXPECT_LE(worst[3], 1e-9 * largest[3]) << "rotation";
}

/// Random pressures that jump at every row, on rows at random distances, many of them only
/// `nearest` FT apart. Elevations on a raster of 2^-30 FT and pressures on one of 1/16 PSF keep the
/// exact fractions short; they are arbitrary doubles otherwise.
BeamBench randomBeam(std::mt19937& random, int n, double nearest, int level = 1) {
    const auto rastered = [](double x, double raster) { return std::round(x / raster) * raster; };
    std::uniform_real_distribution<double> distance(0.05, 2.0);
    std::uniform_real_distribution<double> size(-2000.0, 2000.0);
    std::uniform_int_distribution<int> kind(0, 3);
    std::vector<double> rows = {rastered(distance(random) * 20, 0x1p-30)};
    while (static_cast<int>(rows.size()) < n) {
        const int which = kind(random);
        const double step = which == 0 ? nearest : which == 1 ? 1.0 : distance(random);
        rows.push_back(rastered(rows.back() - step, 0x1p-30));
    }
    const auto load = [&] { return rastered(size(random), 1.0 / 16); };
    BeamBench bench(rows, level);
    for (int i = 1; i <= n; ++i) {
        bench.pressure(i, load(), load());
    }
    // The bottom lies within the last segment.
    const double above = rows[static_cast<std::size_t>(n - 2)];
    const double below = rows[static_cast<std::size_t>(n - 1)];
    bench.state->solution.SolvedBottomElev(level) =
        above - below > 1e-6 ? rastered(above - 0.375 * (above - below), 0x1p-30) : below;
    bench.state->solution.BottomPressure(level) = load();
    return bench;
}

constexpr double billionth = 0x1p-30; // FT, 9.3E-10

TEST(Beam, BothExactMethodsAreOne) {
    std::mt19937 random(4501);
    for (const auto& [anchor, fixity] : {std::pair(0, 2), {2, 1}, {2, 2}, {1, 1}, {4, 2}}) {
        const BeamBench bench = randomBeam(random, 5, billionth);
        const BeamRun run{anchor, bench.n, fixity, 1, {0.0, 500.0, -250.0}};
        const ExactBeam a = exactByStiffness(*bench.state, run);
        const ExactBeam b = exactByStatics(*bench.state, run);
        EXPECT_EQ(a.forces, b.forces);
        EXPECT_EQ(a.displacement, b.displacement);
    }
}

TEST(Beam, FewRowsAgreeWithTheExactStiffnessMethod) {
    std::mt19937 random(4502);
    for (const auto& [anchor, fixity] : {std::pair(0, 2), {3, 1}, {3, 2}, {1, 1}, {1, 2}}) {
        BeamBench bench = randomBeam(random, 7, 0.01);
        bench.lineLoad(bench.state->grid.ElevGrid(2), 750);
        bench.solve(anchor, fixity);
        const BeamRun run{anchor, bench.n, fixity, 1, {0.0, 750.0}};
        expectExact(bench, exactByStiffness(*bench.state, run));
    }
}

TEST(Beam, RowsABillionthOfAFootApartAgreeWithTheExactStiffnessMethod) {
    std::mt19937 random(4503);
    for (int k = 0; k < 3; ++k) {
        for (const auto& [anchor, fixity] : {std::pair(0, 2), {2, 1}, {2, 2}}) {
            BeamBench bench = randomBeam(random, 7, billionth, 2);
            bench.solve(anchor, fixity);
            expectExact(bench, exactByStiffness(*bench.state, {anchor, bench.n, fixity, 2}));
        }
    }
}

// Elevations and pressures that fill all 53 bits, and differences that are no round numbers.
TEST(Beam, DecimalFractionsAgreeWithTheExactStiffnessMethod) {
    BeamBench bench({25.1, 20.3, 20.3 - 1e-9, 17.7, 17.7 - 2e-9, 3.9});
    for (int i = 1; i <= 6; ++i) {
        bench.pressure(i, 137.3 * i - 411.7, 93.1 / i);
    }
    for (const auto& [anchor, fixity] : {std::pair(0, 2), {2, 1}, {2, 2}}) {
        bench.solve(anchor, fixity);
        expectExact(bench, exactByStiffness(*bench.state, {anchor, bench.n, fixity, 1}));
    }
}

TEST(Beam, AFullGridAgreesWithExactStatics) {
    std::mt19937 random(4504);
    BeamBench bench = randomBeam(random, 301, billionth);
    for (const auto& [anchor, fixity] : {std::pair(0, 2), {5, 1}, {5, 2}}) {
        bench.solve(anchor, fixity);
        expectExact(bench, exactByStatics(*bench.state, {anchor, bench.n, fixity, 1}));
    }
}

// Three rows, pressure 0, a line load P = 60 LB in the middle of a cantilever of 2 + 2 FT: no
// force above the load; below it shear 60, moment 120 at the bottom. With EI = 1 the deflection at
// the load is P 2^3 / 3 = 160, its slope along x (downward) -P 2^2 / 2 = -120; the free top lies
// 2 FT farther up: 160 + 2 x 120 = 400.
TEST(Beam, SignsOfACantileverUnderALineLoad) {
    BeamBench bench({4, 2, 0});
    bench.lineLoad(2, 60);
    bench.solve(0, 2);
    EXPECT_EQ(bench.force(1, 1), 0);
    EXPECT_EQ(bench.force(1, 2), 0);
    EXPECT_EQ(bench.force(1, 3), 0);
    EXPECT_EQ(bench.force(1, 4), 0);
    EXPECT_DOUBLE_EQ(bench.force(2, 1), 60);
    EXPECT_EQ(bench.force(2, 2), 0);
    EXPECT_DOUBLE_EQ(bench.force(2, 3), -60);
    EXPECT_DOUBLE_EQ(bench.force(2, 4), 120);
    EXPECT_DOUBLE_EQ(bench.deflection(2), 160);
    EXPECT_DOUBLE_EQ(bench.rotation(2), -120);
    EXPECT_DOUBLE_EQ(bench.deflection(1), 400);
    EXPECT_DOUBLE_EQ(bench.rotation(1), -120);
}

TEST(Beam, CantileverIsFixedAtItsBottom) {
    BeamBench bench(footRows(11));
    for (int i = 1; i <= 11; ++i) {
        bench.pressure(i, 100.0 * i);
    }
    bench.solve(0, 2);
    EXPECT_EQ(bench.deflection(11), 0);
    EXPECT_EQ(bench.rotation(11), 0);
    EXPECT_GT(bench.deflection(1), 0);
}

// Load growing from 0 to q = 1,000 PSF over l = 20 FT; E 29E6 PSI, I 100 IN^4: shear q l / 2 =
// 10,000 LB, moment q l^2 / 6 = 66,667 LB-FT, tip deflection q l^4 / (30 E I) = 3.1779 IN, slope
// q l^3 / (24 E I) = .016552.
TEST(Beam, CantileverUnderTriangularLoad) {
    BeamBench bench(footRows(21));
    for (int i = 1; i <= 21; ++i) {
        bench.pressure(i, 50.0 * (i - 1));
    }
    bench.solve(0, 2);
    const double EI = 29e6 * 100;
    EXPECT_NEAR(-bench.force(20, 3), 10000, 1e-8);
    EXPECT_NEAR(bench.force(20, 4), 1000.0 * 400 / 6, 1e-7);
    EXPECT_NEAR(bench.deflection(1), 1000.0 * 160000 / 30, 1e-5);
    EXPECT_NEAR(bench.deflection(1) * 1728 / EI, 3.1779, 5e-5);
    EXPECT_NEAR(bench.rotation(1), -1000.0 * 8000 / 24, 1e-6);
    EXPECT_NEAR(bench.rotation(1) * 144 / EI, -0.016552, 5e-7);
}

// The same load on a simple span: support forces q l / 6 and q l / 3, largest moment
// q l^2 / (9 sqrt 3) = 25,660 LB-FT at l / sqrt 3 = 11.547 FT, deflection there or near it
// .6218 IN at .5193 l = 10.386 FT.
TEST(Beam, SimpleSpanUnderTriangularLoad) {
    std::vector<double> rows = footRows(21);
    rows.push_back(-11.547005383792516);
    rows.push_back(-10.386);
    std::sort(rows.begin(), rows.end(), std::greater<>());
    BeamBench bench(rows);
    for (int i = 1; i <= bench.n; ++i) {
        bench.pressure(i, -50.0 * rows[static_cast<std::size_t>(i - 1)]);
    }
    bench.solve(1, 1);
    EXPECT_EQ(bench.deflection(1), 0);
    EXPECT_NEAR(bench.force(1, 1), -1000.0 * 20 / 6, 1e-8);
    EXPECT_NEAR(-bench.force(bench.n - 1, 3), 1000.0 * 20 / 3, 1e-8);
    const auto momentAt = [&](double depth) {
        const auto row = std::find(rows.begin(), rows.end(), -depth) - rows.begin();
        return bench.force(static_cast<int>(row), 4);
    };
    EXPECT_NEAR(momentAt(11.547005383792516), -1000.0 * 400 / (9 * std::sqrt(3.0)), 1e-7);
    const auto row = std::find(rows.begin(), rows.end(), -10.386) - rows.begin();
    EXPECT_NEAR(bench.deflection(static_cast<int>(row) + 1) * 1728 / (29e6 * 100), 0.6218, 5e-5);
    for (int i = 1; i <= bench.n; ++i) {
        EXPECT_LE(bench.deflection(i), bench.deflection(static_cast<int>(row) + 1));
    }
}

// Uniform load w on a span l held at the top and fixed at the bottom: the prop carries 3 w l / 8,
// the fixing moment is w l^2 / 8.
TEST(Beam, FixedEarthSpanUnderUniformLoad) {
    BeamBench bench(footRows(17), 2);
    for (int i = 1; i <= 17; ++i) {
        bench.pressure(i, 80);
    }
    bench.solve(1, 2);
    EXPECT_NEAR(bench.force(1, 1), -3.0 * 80 * 16 / 8, 1e-9);
    EXPECT_NEAR(bench.force(16, 4), 80.0 * 256 / 8, 1e-8);
    EXPECT_EQ(bench.deflection(17), 0);
    EXPECT_EQ(bench.rotation(17), 0);
}

// Free earth: the rotation at the bottom comes out. Uniform load w on a simple span l: end slopes
// w l^3 / 24, falling along x at the far end.
TEST(Beam, FreeEarthRotatesAtItsBottom) {
    BeamBench bench(footRows(13));
    for (int i = 1; i <= 13; ++i) {
        bench.pressure(i, 10);
    }
    bench.solve(1, 1);
    EXPECT_NEAR(bench.rotation(1), 10.0 * 1728 / 24, 1e-9);
    EXPECT_NEAR(bench.rotation(13), -10.0 * 1728 / 24, 1e-9);
    EXPECT_EQ(bench.force(12, 4), 0);
    EXPECT_EQ(bench.deflection(13), 0);
}

TEST(Beam, AnchorAtTheWallTopHoldsTheFirstRow) {
    BeamBench bench(footRows(9));
    bench.pressure(4, 300);
    bench.pressure(5, 200);
    for (const int fixity : {1, 2}) {
        bench.solve(1, fixity);
        EXPECT_EQ(bench.deflection(1), 0);
        EXPECT_NE(bench.rotation(1), 0);
        EXPECT_LT(bench.force(1, 1), 0); // the anchor pulls against the load
    }
}

TEST(Beam, ALineLoadAtTheAnchorGoesIntoTheSupport) {
    for (const int fixity : {1, 2}) {
        BeamBench plain(footRows(9));
        BeamBench loaded(footRows(9));
        for (BeamBench* bench : {&plain, &loaded}) {
            for (int i = 1; i <= 9; ++i) {
                bench->pressure(i, 100.0 - 20.0 * i);
            }
        }
        loaded.lineLoad(-2, 5000);
        plain.solve(3, fixity);
        loaded.solve(3, fixity);
        EXPECT_EQ(plain.beam.NodeDisplacement, loaded.beam.NodeDisplacement);
        EXPECT_EQ(plain.beam.ElementForces, loaded.beam.ElementForces);
        EXPECT_EQ(loaded.deflection(3), 0);
    }
}

TEST(Beam, ALineLoadActsOnceAtTheFirstRowThatMatches) {
    // Rows 2 and 3 both lie within 0.0001 FT of the load; only row 2 takes it.
    BeamBench bench({4, 2, 2 - 5e-5, 0});
    bench.lineLoad(2 - 2e-5, 100);
    bench.solve(0, 2);
    EXPECT_EQ(bench.force(1, 3), 0);
    EXPECT_DOUBLE_EQ(bench.force(2, 1), 100);
    EXPECT_DOUBLE_EQ(bench.force(3, 1), 100);
}

TEST(Beam, ALineLoadTenThousandthsAwayIsNoMatch) {
    BeamBench bench({4, 2, 0});
    bench.lineLoad(2.00015, 100);
    bench.solve(0, 2);
    EXPECT_EQ(bench.force(2, 1), 0);
}

TEST(Beam, ALineLoadAtTheBottomIsNotApplied) {
    BeamBench bench({4, 2, 0});
    bench.lineLoad(0, 100);
    bench.solve(0, 2);
    EXPECT_EQ(bench.force(2, 3), 0);
    EXPECT_EQ(bench.deflection(1), 0);
}

TEST(Beam, LineLoadsOfOneElevationAddUp) {
    BeamBench bench({4, 2, 0});
    bench.lineLoad(4, 100);
    bench.lineLoad(4, -30);
    bench.solve(0, 2);
    EXPECT_DOUBLE_EQ(bench.force(1, 1), 70);
    EXPECT_DOUBLE_EQ(bench.force(2, 4), 280);
}

// The grid goes on to elevation -10, but the bottom was found at -1 with 30 PSF: the last element
// is 1 FT long. Loads 60 at the top of it and 30 at its bottom: shear 45, moment
// (2 x 60 + 30) / 6 = 25.
TEST(Beam, TheLastElementEndsAtTheSolvedBottom) {
    BeamBench bench({4, 0, -10});
    bench.pressure(2, 0, 60);
    bench.pressure(3, 900);
    bench.state->solution.SolvedBottomElev(1) = -1;
    bench.state->solution.BottomPressure(1) = 30;
    bench.solve(0, 2);
    EXPECT_DOUBLE_EQ(bench.force(2, 3), -45);
    EXPECT_DOUBLE_EQ(bench.force(2, 4), 25);
}

TEST(Beam, EachLevelTakesItsOwnBottom) {
    BeamBench bench({4, 0, -10});
    bench.state->solution.SolvedBottomElev(2) = -2;
    bench.state->solution.BottomPressure(2) = 0;
    bench.pressure(2, 0, 60);
    bench.beam = SolveBeam(*bench.state, 0, 3, 2, 2);
    EXPECT_DOUBLE_EQ(bench.force(2, 3), -60);
    EXPECT_DOUBLE_EQ(bench.force(2, 4), 80); // 2 x 60 x 2^2 / 6
}

// The search leaves a moment of up to 1 LB-FT about the anchor: the hinge at the bottom takes it
// as a small force, and shear at the bottom is that force.
TEST(Beam, FreeEarthBottomCarriesWhatTheSearchLeavesOver) {
    BeamBench bench({10, 8, 0});
    bench.pressure(2, 0, 100);
    bench.pressure(3, -400.25);
    bench.solve(2, 1);
    // Moment of the load about the anchor 8 FT above the bottom, over 8 FT.
    const double moment = (100 + 2 * -400.25) * 64 / 6;
    EXPECT_NEAR(-bench.force(2, 3), moment / 8, 1e-9);
    EXPECT_EQ(bench.force(2, 4), 0);
}

TEST(Beam, EndValuesAreTheIntegratedDiagram) {
    std::mt19937 random(4505);
    BeamBench bench = randomBeam(random, 60, billionth);
    bench.solve(7, 2);
    for (int e = 1; e < bench.n; ++e) {
        const bool last = e == bench.n - 1;
        const double L =
            bench.state->grid.ElevGrid(e) -
            (last ? bench.state->solution.SolvedBottomElev(1) : bench.state->grid.ElevGrid(e + 1));
        const double p1 = bench.state->net.NetActive(e, 1);
        const double p2 =
            last ? bench.state->solution.BottomPressure(1) : bench.state->net.NetActive(e + 1, 2);
        const double scale = 1e5; // of the sums, for round-off of this check in doubles
        EXPECT_NEAR(-bench.force(e, 3), bench.force(e, 1) + (p1 + p2) * L / 2, 1e-12 * scale);
        EXPECT_NEAR(bench.force(e, 4),
                    -bench.force(e, 2) + bench.force(e, 1) * L + (2 * p1 + p2) * L * L / 6,
                    1e-12 * scale);
        if (!last) {
            EXPECT_EQ(bench.force(e, 4), -bench.force(e + 1, 2));
            EXPECT_TRUE(e == 6 || bench.force(e, 3) == -bench.force(e + 1, 1)) << e;
        }
    }
}

TEST(Beam, AnElementWithoutLengthIsADivisionByZero) {
    BeamBench bench({4, 2, 2, 0});
    try {
        bench.solve(0, 2);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 11);
    }
}

TEST(Beam, AWallOnOneHingeIsADivisionByZero) {
    BeamBench bench({4, 2, 0});
    for (const int anchor : {0, 3}) { // none, or one at the bottom itself
        try {
            bench.solve(anchor, 1);
            FAIL();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), 11);
        }
    }
}

TEST(Beam, APressureThatIsNoNumberNeverPasses) {
    BeamBench bench({4, 2, 0});
    bench.pressure(2, std::numeric_limits<double>::quiet_NaN());
    EXPECT_THROW(bench.solve(0, 2), RuntimeError);
}

} // namespace
} // namespace korvane::test
