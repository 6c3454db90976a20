#include "pressures/surcharge_pressures.h"

#include "pressures/elevation_grid.h"
#include "runtime/arithmetic.h"

#include <cmath>
#include <numbers>

namespace korvane {

namespace {

constexpr double Pi = std::numbers::pi;

/// Ramps shorter than this (FT) have no sloping part.
constexpr double ShortestRamp = 0.0001;

/// Line loads nearer to the wall than this share of its exposed height follow the empirical form.
constexpr double NearLoadRatio = 0.4;

/// A load on the ground that varies linearly from P1 (PSF) at X1 (FT from the wall) to P2 at X2.
struct LinearLoad {
    double P1, X1, P2, X2;
};

/// One side's column of SurchargePressures below its surface row s.
struct SurchargeColumn {
    Pressures& pressures;
    const ElevationGrid& grid;
    int side;
    int s;

    /// Adds pressureAt(z), PSF, to every row below the surface, z FT deep.
    template <class PressureAt>
    void add(PressureAt pressureAt) {
        for (int i = s + 1; i <= grid.NumElevs; ++i) {
            pressures.SurchargePressures(side, i) +=
                pressureAt(grid.ElevGrid(s) - grid.ElevGrid(i));
        }
    }
};

void addLineLoads(const Problem& problem, SurchargeColumn& column) {
    const int side = column.side;
    // The exposed height counts for loads on the right; on the left it is always 0, deliberately.
    const double H = problem.SurfaceElev(side, 1) - problem.SurfaceElev(Left, 1);

    for (int load = 1; load <= problem.VLineCount(side); ++load) {
        const double Q = problem.VLineLoad(side, load);
        const double x = problem.VLineDist(side, load);
        if (H > 0 && x / H <= NearLoadRatio) {
            column.add([=](double z) {
                const double n = z / H;
                return 0.203 * (Q / H) * n / std::pow(n * n + 0.16, 2);
            });
        } else {
            column.add([=](double z) {
                return (4 * Q / Pi) * divide(x * x * z, std::pow(x * x + z * z, 2));
            });
        }
    }
}

// Horizontal pressure of a linearly varying load on a half-space (Boussinesq, plane strain, without
// doubling for a rigid wall); a negative one is cut to 0.
void AddLinearLoadPressure(SurchargeColumn& column, const LinearLoad& load) {
    const auto& [P1, X1, P2, X2] = load;
    const double width = X2 - X1;
    const double A = divide(X2 * P1 - X1 * P2, width * Pi);
    const double B = divide(P2 - P1, width * Pi);

    column.add([&load, A, B](double z) {
        const double b1 = std::atan(load.X1 / z);
        const double b2 = std::atan(load.X2 / z);
        const double p =
            A * ((b2 - b1) + std::sin(b1) * std::cos(b1) - std::sin(b2) * std::cos(b2)) +
            B * z *
                (std::pow(std::sin(b1), 2) + 2 * naturalLog(divide(std::cos(b1), std::cos(b2))) -
                 std::pow(std::sin(b2), 2));
        return MaxOf(0.0, finite(p));
    });
}

/// The sloping part and the uniform rest that goes on without end.
void addRamp(const Problem& problem, SurchargeColumn& column) {
    const int side = column.side;
    const double start = problem.VRampStart(side);
    const double end = problem.VRampEnd(side);
    const double load = problem.VRampLoad(side);

    column.add([=](double z) {
        const double b = std::atan(end / z);
        return load / (2 * Pi) * (Pi - 2 * b + std::sin(2 * b));
    });
    if (end - start > ShortestRamp) {
        AddLinearLoadPressure(column, {0, start, load, end});
    }
}

void addTriangles(const Problem& problem, SurchargeColumn& column) {
    const int side = column.side;
    for (int i = 1; i <= problem.VTriCount(side); ++i) {
        const double start = problem.VTriStart(side, i);
        const double peak = problem.VTriPeak(side, i);
        const double end = problem.VTriEnd(side, i);
        const double load = problem.VTriLoad(side, i);
        if (peak > start) {
            AddLinearLoadPressure(column, {0, start, load, peak});
        }
        if (end > peak) {
            AddLinearLoadPressure(column, {load, peak, 0, end});
        }
    }
}

/// Straight pieces between neighbouring points; a step (two points at one distance) adds nothing.
void addVariableLoad(const Problem& problem, SurchargeColumn& column) {
    const int side = column.side;
    const auto& VVarDist = problem.VVarDist;
    const auto& VVarLoad = problem.VVarLoad;
    for (int i = 1; i < problem.VVarCount(side); ++i) {
        if (VVarDist(side, i + 1) != VVarDist(side, i)) {
            AddLinearLoadPressure(column, {VVarLoad(side, i), VVarDist(side, i),
                                           VVarLoad(side, i + 1), VVarDist(side, i + 1)});
        }
    }
}

} // namespace

// Horizontal pressures (PSF) of line, strip, ramp, triangular and variable loads on the ground, by
// the theory of elasticity, added up over all loads of the side. The uniform load is no part: it
// acts through the vertical stress of the soil. Rows at and above the surface stay 0.
void ComputeSurchargePressures(State& state, int side) {
    const Problem& problem = state.problem;
    for (int i = 1; i <= state.grid.ElevGrid.size(); ++i) {
        state.pressures.SurchargePressures(side, i) = 0;
    }
    SurchargeColumn column{state.pressures, state.grid, side,
                           lastRowAt(state.grid, problem.SurfaceElev(side, 1))};

    addLineLoads(problem, column);
    for (int i = 1; i <= problem.VStripCount(side); ++i) {
        const double load = problem.VStripLoad(side, i);
        AddLinearLoadPressure(
            column, {load, problem.VStripStart(side, i), load, problem.VStripEnd(side, i)});
    }
    if (problem.VRampCount(side) > 0) {
        addRamp(problem, column);
    }
    addTriangles(problem, column);
    addVariableLoad(problem, column);
}

} // namespace korvane
