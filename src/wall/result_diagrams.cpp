#include "wall/result_diagrams.h"

#include "pressures/elevation_grid.h"
#include "runtime/arithmetic.h"
#include "state/tolerances.h"

#include <cmath>

namespace korvane {

namespace {

constexpr double ShearNoise = 0.0001; ///< LB; a shear no larger is none
constexpr double FlatPressure =
    0.0001; ///< PSF/FT, half the slope of a pressure that counts as level

/// Deflections to LB-IN^3 (scaled) in a design, to IN in an analysis.
double deflectionScale(const Problem& problem) {
    if (problem.ProgramMode == Mode::Analysis) {
        return divide(1728.0, problem.WallInertia * problem.WallModulus);
    }
    return 1728.0;
}

/// The row just above grid point e.
void addRowAbove(State& state, const Beam& beam, int r, int e, double scale) {
    ResultDiagrams& results = state.results;
    results.ResultElev(r) = state.grid.ElevGrid(e);
    results.ResultMoment(r) = beam.ElementForces(e - 1, 4);
    results.ResultShear(r) = -beam.ElementForces(e - 1, 3);
    results.ResultDeflection(r) = finite(scale * beam.NodeDisplacement(e, 1));
    results.ResultPressure(r) = state.net.NetActive(e, 2);
}

/// The row just below grid point e, where a diagram jumps.
void addRowBelow(State& state, const Beam& beam, int r, int e, double scale) {
    ResultDiagrams& results = state.results;
    results.ResultElev(r) = state.grid.ElevGrid(e);
    results.ResultMoment(r) = -beam.ElementForces(e, 2);
    results.ResultShear(r) = beam.ElementForces(e, 1);
    results.ResultDeflection(r) = finite(scale * beam.NodeDisplacement(e, 1));
    results.ResultPressure(r) = state.net.NetActive(e, 1);
}

/// A concentrated force of 1 LB or more, or a step of the net pressure, at grid point e.
bool diagramsJump(const State& state, const Beam& beam, int e) {
    const auto& ElementForces = beam.ElementForces;
    const auto& NetActive = state.net.NetActive;
    return std::fabs(ElementForces(e - 1, 3) + ElementForces(e, 1)) >= 1.0 ||
           std::fabs(NetActive(e, 1) - NetActive(e, 2)) >= PressureNoise;
}

/// All rows of a level; returns their number.
int fillRows(State& state, const Beam& beam, int level) {
    ResultDiagrams& results = state.results;
    const double scale = deflectionScale(*state.problem);
    const int bottom = state.solution.BottomIndex(level);

    const double topShear = beam.ElementForces(1, 1);
    results.ResultElev(1) = state.grid.ElevGrid(1);
    results.ResultMoment(1) = 0;
    results.ResultShear(1) = std::fabs(topShear) < ShearNoise ? 0.0 : topShear;
    results.ResultDeflection(1) = finite(scale * beam.NodeDisplacement(1, 1));
    results.ResultPressure(1) = state.net.NetActive(1, 1);

    int r = 1;
    for (int e = 2; e < bottom; ++e) {
        addRowAbove(state, beam, ++r, e, scale);
        if (diagramsJump(state, beam, e)) {
            addRowBelow(state, beam, ++r, e, scale);
        }
    }

    addRowAbove(state, beam, ++r, bottom, scale);
    results.ResultPressure(r) = state.solution.BottomPressure(level);
    results.ResultMoment(r) = 0;
    // Deliberate: level 2 shows the grid point's elevation, unless that is far, and keeps its
    // shear.
    if (level == 1 || isFarRow(state.grid, bottom)) {
        results.ResultElev(r) = state.solution.SolvedBottomElev(level);
    }
    if (level == 1) {
        results.ResultShear(r) = 0;
    }
    return r;
}

void widenRange(Range& range, double value) {
    range.largest = MaxOf(range.largest, value);
    range.smallest = MinOf(range.smallest, value);
}

/// Extremes of all rows; returns the row of the largest moment (of equal ones the last).
int findExtremes(ResultDiagrams& results) {
    Extreme& MaxMoment = results.MaxMoment = {};
    Extreme& MaxDeflection = results.MaxDeflection = {};
    for (Range* range : {&results.DeflectionRange, &results.MomentRange, &results.ShearRange,
                         &results.PressureRange}) {
        // Deliberate: values all above 1E5 or all below -1E5 leave one end at its start.
        *range = {-100000.0, 100000.0};
    }

    int m = 1;
    for (int r = 1; r <= results.RowCount; ++r) {
        const double elev = results.ResultElev(r);
        if (std::fabs(results.ResultMoment(r)) >= std::fabs(MaxMoment.value)) {
            MaxMoment = {results.ResultMoment(r), elev};
            m = r;
        }
        if (std::fabs(results.ResultDeflection(r)) >= std::fabs(MaxDeflection.value)) {
            MaxDeflection = {results.ResultDeflection(r), elev};
        }
        widenRange(results.DeflectionRange, results.ResultDeflection(r));
        widenRange(results.MomentRange, results.ResultMoment(r));
        widenRange(results.ShearRange, results.ResultShear(r));
        widenRange(results.PressureRange, results.ResultPressure(r));
    }
    return m;
}

/// Distance (FT) below the upper end of a segment at which the shear V + p s + A s^2 vanishes;
/// p is the pressure at the upper end, 2 A its slope, h the segment's length.
double zeroOfShear(double V, double p, double A, double h) {
    if (std::fabs(A) <= FlatPressure) {
        return divide(-V, p);
    }
    const double root = squareRoot(p * p - 4 * A * V);
    const double s = divide(-p - root, 2 * A);
    return 0 < s && s < h ? s : divide(-p + root, 2 * A);
}

/// The largest moment between rows, from the zero of shear next to row m.
void refineMaxMoment(ResultDiagrams& results, int m) {
    const auto& ResultElev = results.ResultElev;
    const auto& ResultShear = results.ResultShear;
    if (m == 1 ||
        m == results.RowCount) { // no moments at all: the rows have no neighbour to refine in
        return;
    }
    if (std::fabs(ResultElev(m) - ResultElev(m - 1)) <= SameElevation ||
        std::fabs(ResultElev(m) - ResultElev(m + 1)) < SameElevation ||
        std::fabs(ResultShear(m)) <= ShearNoise) {
        return;
    }
    const int j = ResultShear(m - 1) * ResultShear(m) < 0 ? m - 1 : m;
    const double p = results.ResultPressure(j);
    const double q = results.ResultPressure(j + 1);
    const double V = ResultShear(j);
    const double h = ResultElev(j) - ResultElev(j + 1);

    const double A = divide(q - p, h) / 2;
    const double s = zeroOfShear(V, p, A, h);
    const double p2 = 2 * A * s + p;
    results.MaxMoment = {finite(s * s * (2 * p + p2) / 6 + s * V + results.ResultMoment(j)),
                         finite(ResultElev(j) - s)};
}

} // namespace

// Purpose: rows of moment, shear, deflection and pressure for reports and plots, two at a point
//          where a diagram jumps, and the extremes of each diagram.
// Reads:   ElementForces, NodeDisplacement, NetActive PSF, ElevGrid FT, the level's bottom.
// Writes:  the result rows, their count and extremes.
// Failure: a row beyond 301 is run-time error 9.
void BuildResultDiagrams(State& state, const Beam& beam, int level) {
    ResultDiagrams& results = state.results;
    const int before = results.RowCount;
    results.RowCount = fillRows(state, beam, level);
    for (auto* rows : {&results.ResultElev, &results.ResultMoment, &results.ResultShear,
                       &results.ResultDeflection, &results.ResultPressure}) {
        for (int r = results.RowCount + 1; r <= before; ++r) {
            (*rows)(r) = 0;
        }
    }
    const int m = findExtremes(state.results);
    refineMaxMoment(state.results, m);
}

} // namespace korvane
