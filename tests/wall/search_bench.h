// Walls for the tests of the searches: diagrams made by hand, problems solved whole.
#pragma once

#include "support/pressure_bench.h"

#include <string>
#include <vector>

namespace korvane::test {

/// A state with a diagram made by hand instead of pressures. The grid has the wall top at 10 FT,
/// the point of zero net active pressure at 0 (row ZeroRow), a point at each foot down to -40, and
/// two far points. All pressures start at 0.
struct HandMadeWall : Bench {
    static constexpr int ZeroRow = 2;

    explicit HandMadeWall(WallKind wallType);

    /// The row of a whole elevation from 0 to -40 FT.
    static int rowAt(int elev) { return ZeroRow - elev; }

    /// A straight piece of the net active (passive) diagram from `top` (FT) with pressure `p1` down
    /// to `bottom` with `p2`; pieces that meet with different pressures make a jump. PSF.
    void setActive(int top, int bottom, double p1, double p2);
    void setPassive(int top, int bottom, double p1, double p2);
    /// One pressure (PSF) from the zero point to the end of the grid.
    void setUniformActive(double p);
    void setUniformPassive(double p);
    /// What acts above the zero point, as the search wants it.
    void setDriving(double force, double moment);
    void addLineLoad(double elev, double load);
};

// The first stages by themselves, for tests that spoil working values between them.

/// PrepareSolution; a side that needs a wedge takes the sweep search.
void prepare(State& state);

/// A prepared problem with the pressures of both sides and the net pressures, as the solve command
/// leaves them at the stop for review.
void computePressures(State& state);

/// The road of a solution to its results, with the working values as it leaves them.
void solve(Bench& bench);

/// What the result rows of a level add up to, with line loads and anchor force: force (LB) and
/// moment about the bottom (LB-FT), by the triangles of each trapezoid between rows.
struct Resultant {
    double force = 0;
    double moment = 0;
};
Resultant resultant(const Bench& bench, int level);

/// The texts of all boxes that were shown.
std::vector<std::string> textsOf(const Bench& bench);

} // namespace korvane::test
