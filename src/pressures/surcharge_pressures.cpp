#include "pressures/surcharge_pressures.h"

#include "pressures/elevation_grid.h"
#include "runtime/arithmetic.h"
#include "state/kept_work.h"

#include <cmath>
#include <numbers>
#include <optional>
#include <utility>

namespace korvane {

namespace {

constexpr double Pi = std::numbers::pi;

using Loads = std::vector<ElasticLoad>;

void listLine(const Problem& problem, int side, int i, Loads& loads) {
    // The exposed height counts for loads on the right; on the left it is always 0, deliberately.
    const double H = problem.SurfaceElev(side, 1) - problem.SurfaceElev(Left, 1);
    const double x = problem.VLineDist(side, i);
    const bool near = H > 0 && x / H <= NearLoadRatio;
    loads.push_back({.kind = near ? ElasticLoadKind::NearLine : ElasticLoadKind::FarLine,
                     .load = problem.VLineLoad(side, i),
                     .x1 = x,
                     .x2 = near ? H : 0});
}

/// A load that varies linearly from p1 (PSF) at x1 (FT from the wall) to p2 at x2.
void listStraightLoad(Loads& loads, double p1, double x1, double p2, double x2) {
    const double width = x2 - x1;
    loads.push_back({.kind = ElasticLoadKind::Straight,
                     .x1 = x1,
                     .x2 = x2,
                     .constant = divide(x2 * p1 - x1 * p2, width * Pi),
                     .rate = divide(p2 - p1, width * Pi)});
}

void listStrip(const Problem& problem, int side, int i, Loads& loads) {
    const double load = problem.VStripLoad(side, i);
    listStraightLoad(loads, load, problem.VStripStart(side, i), load, problem.VStripEnd(side, i));
}

/// The sloping part and the uniform rest that goes on without end.
void listRamp(const Problem& problem, int side, Loads& loads) {
    const double start = problem.VRampStart(side);
    const double end = problem.VRampEnd(side);
    const double load = problem.VRampLoad(side);
    loads.push_back({.kind = ElasticLoadKind::Endless, .load = load, .x1 = end});
    if (end - start > ShortestRamp) {
        listStraightLoad(loads, 0, start, load, end);
    }
}

void listTriangle(const Problem& problem, int side, int i, Loads& loads) {
    const double start = problem.VTriStart(side, i);
    const double peak = problem.VTriPeak(side, i);
    const double end = problem.VTriEnd(side, i);
    const double load = problem.VTriLoad(side, i);
    if (peak > start) {
        listStraightLoad(loads, 0, start, load, peak);
    }
    if (end > peak) {
        listStraightLoad(loads, load, peak, 0, end);
    }
}

/// Straight pieces between neighbouring points; a step (two points at one distance) adds nothing.
void listVariableLoad(const Problem& problem, int side, Loads& loads) {
    const auto& VVarDist = problem.VVarDist;
    const auto& VVarLoad = problem.VVarLoad;
    for (int i = 1; i < problem.VVarCount(side); ++i) {
        if (VVarDist(side, i + 1) != VVarDist(side, i)) {
            listStraightLoad(loads, VVarLoad(side, i), VVarDist(side, i), VVarLoad(side, i + 1),
                             VVarDist(side, i + 1));
        }
    }
}

/// Adds load `i` of a kind.
void listLoad(const Problem& problem, int side, Load kind, int i, Loads& loads) {
    switch (kind) {
    case Load::Line:
        return listLine(problem, side, i, loads);
    case Load::Strip:
        return listStrip(problem, side, i, loads);
    case Load::Ramp:
        return listRamp(problem, side, loads);
    case Load::Triangle:
        return listTriangle(problem, side, i, loads);
    case Load::Variable:
        return listVariableLoad(problem, side, loads);
    default:
        return;
    }
}

void listLoads(const Problem& problem, int side, Loads& loads) {
    loads.clear();
    forEachLoad(problem, side, [&](Load kind, int i) { listLoad(problem, side, kind, i, loads); });
}

/// Where the end of a straight load is seen from a depth.
struct Sight {
    double angle; ///< radians off the vertical
    double sin;
    double cos;

    Sight(double x, double z)
        : angle(std::atan(x / z)), sin(std::sin(angle)), cos(std::cos(angle)) {}
};

// Horizontal pressure of a linearly varying load on a half-space (Boussinesq, plane strain, without
// doubling for a rigid wall); a negative one is cut to 0.
double linearLoadPressure(const ElasticLoad& load, double z, const Sight& s1, const Sight& s2) {
    const double p =
        load.constant * ((s2.angle - s1.angle) + s1.sin * s1.cos - s2.sin * s2.cos) +
        load.rate * z * (square(s1.sin) + 2 * naturalLog(divide(s1.cos, s2.cos)) - square(s2.sin));
    return MaxOf(0.0, finite(p));
}

/// Pressure (PSF) of a load that is no straight one, z FT below the surface.
double pressureAt(const ElasticLoad& load, double z) {
    const double Q = load.load;
    const double x = load.x1;
    switch (load.kind) {
    case ElasticLoadKind::NearLine: {
        const double H = load.x2;
        const double n = z / H;
        return 0.203 * (Q / H) * n / square(n * n + 0.16);
    }
    case ElasticLoadKind::FarLine:
        return (4 * Q / Pi) * divide(x * x * z, square(x * x + z * z));
    default: {
        const double b = std::atan(x / z);
        return Q / (2 * Pi) * (Pi - 2 * b + std::sin(2 * b));
    }
    }
}

/// Pressure (PSF) of all loads, z FT below the surface.
double pressureAt(const Loads& loads, double z) {
    double sum = 0;
    double seenAt = 0;
    std::optional<Sight> seen; // the end of the last straight load, where the next often starts
    for (const ElasticLoad& load : loads) {
        if (load.kind != ElasticLoadKind::Straight) {
            sum += pressureAt(load, z);
            continue;
        }
        const Sight start = seen && seenAt == load.x1 ? *seen : Sight(load.x1, z);
        seen = Sight(load.x2, z);
        seenAt = load.x2;
        sum += linearLoadPressure(load, z, start, *seen);
    }
    return sum;
}

/// The pressures of each load alone, on the rows that the sum has just been worked out for.
void recordShares(const State& state, int side, int surfaceRow, double surface) {
    const ElevationGrid& grid = state.grid;
    SurchargeShares& shares = state.details->sides(side).surcharges;
    shares.firstRow = surfaceRow + 1;
    shares.surface = surface;
    for (int i = shares.firstRow; i <= grid.NumElevs; ++i) {
        shares.elev.push_back(grid.ElevGrid(i));
        shares.sum.push_back(state.pressures.SurchargePressures(side, i));
    }
    forEachLoad(*state.problem, side, [&](Load kind, int i) {
        Loads load;
        listLoad(*state.problem, side, kind, i, load);
        SurchargeShare& share = shares.loads.emplace_back();
        share.kind = kind;
        share.index = i;
        for (const double elev : shares.elev) {
            share.pressure.push_back(pressureAt(load, surface - elev));
        }
    });
}

} // namespace

// Horizontal pressures (PSF) of line, strip, ramp, triangular and variable loads on the ground, by
// the theory of elasticity, added up over all loads of the side. The uniform load is no part: it
// acts through the vertical stress of the soil. Rows at and above the surface stay 0. What the last
// call found for an elevation is taken over while the loads and the surface are the same.
void ComputeSurchargePressures(State& state, int side) {
    const ElevationGrid& grid = state.grid;
    SurchargeRows& kept = state.kept->surchargeRows(side);
    for (int i = 1; i <= state.TouchedRows; ++i) {
        state.pressures.SurchargePressures(side, i) = 0;
    }
    const int s = lastRowAt(grid, state.problem->SurfaceElev(side, 1));
    listLoads(*state.problem, side, kept.freshLoads);
    if (kept.freshLoads.empty()) {
        return;
    }
    const double surface = grid.ElevGrid(s);
    if (kept.freshLoads != kept.loads || surface != kept.surface) {
        kept.rows.clear();
        kept.loads = kept.freshLoads;
        kept.surface = surface;
    }
    // The first call takes the memory for any grid.
    const auto mostRows = static_cast<std::size_t>(grid.ElevGrid.size());
    kept.rows.reserve(mostRows);
    kept.freshRows.reserve(mostRows);
    kept.freshRows.clear();
    auto known = kept.rows.begin();
    for (int i = s + 1; i <= grid.NumElevs; ++i) {
        const double elev = grid.ElevGrid(i);
        while (known != kept.rows.end() && known->elev > elev) {
            ++known;
        }
        const bool taken = known != kept.rows.end() && known->elev == elev;
        const double pressure = taken ? known->pressure : pressureAt(kept.loads, surface - elev);
        state.pressures.SurchargePressures(side, i) = pressure;
        kept.freshRows.push_back({elev, pressure});
    }
    std::swap(kept.rows, kept.freshRows);
    if (state.details != nullptr) {
        recordShares(state, side, s, surface);
    }
}

} // namespace korvane
