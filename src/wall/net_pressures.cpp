#include "wall/net_pressures.h"

#include "pressures/elevation_grid.h"
#include "pressures/row_insertion.h"
#include "runtime/arithmetic.h"
#include "state/tolerances.h"

#include <cmath>

namespace korvane {

namespace {

/// Soil and water of both sides on the grid; below the lower surface no jump is kept.
void combinePressures(State& state, int lowerIndex) {
    const auto& ActivePressures = state.pressures.ActivePressures;
    const auto& PassivePressures = state.pressures.PassivePressures;
    const auto& WaterPressures = state.pressures.WaterPressures;
    auto& NetActive = state.net.NetActive;
    auto& NetPassive = state.net.NetPassive;

    for (int i = 1; i <= state.grid.NumElevs; ++i) {
        for (const int k : {1, 2}) {
            NetActive(i, k) = finite(ActivePressures(Right, i, k) - PassivePressures(Left, i, k) +
                                     WaterPressures(i, k));
            NetPassive(i, k) = finite(PassivePressures(Right, i, k) - ActivePressures(Left, i, k) +
                                      WaterPressures(i, k));
        }
    }
    for (auto* net : {&NetActive, &NetPassive}) {
        for (int i = lowerIndex + 1; i <= state.grid.NumElevs; ++i) {
            (*net)(i, 1) = (*net)(i, 2) = ((*net)(i, 1) + (*net)(i, 2)) / 2;
        }
    }
}

/// The horizontal distributed load: straight lines between its points, nothing beyond its ends.
void addDistributedLoad(State& state) {
    const auto& ElevGrid = state.grid.ElevGrid;
    const auto& HDistElev = state.problem->HDistElev;
    const auto& HDistLoad = state.problem->HDistLoad;
    const auto add = [&](int i, int k, double p) {
        state.net.NetActive(i, k) += p;
        state.net.NetPassive(i, k) += p;
    };

    int i = firstRowAt(state.grid, HDistElev(1));
    for (int j = 1; j < state.problem->HDistCount; ++j) {
        add(i, 1, HDistLoad(j));
        for (++i;; ++i) {
            if (i > state.grid.NumElevs) {
                throw RuntimeError(9);
            }
            const double t = divide(HDistElev(j) - ElevGrid(i), HDistElev(j) - HDistElev(j + 1));
            const double u = 1 - t;
            const double p = u * HDistLoad(j) + t * HDistLoad(j + 1);
            add(i, 2, p);
            if (u < BreakShare) {
                break;
            }
            add(i, 1, p);
        }
    }
}

/// Inserts the point at which net active pressure crosses zero between rows i - 1 and i, as row i.
void insertCrossing(State& state, int i) {
    auto& ElevGrid = state.grid.ElevGrid;
    auto& NetActive = state.net.NetActive;
    auto& NetPassive = state.net.NetPassive;
    auto& pressures = state.pressures;

    const double d = ElevGrid(i - 1) - ElevGrid(i);
    const double Z =
        ElevGrid(i - 1) + d * divide(NetActive(i - 1, 1), NetActive(i, 2) - NetActive(i - 1, 1));
    const double t = divide(ElevGrid(i - 1) - Z, d);

    openRow(state, i, Left);
    shiftRows(NetActive, i, state.grid.NumElevs);
    shiftRows(NetPassive, i, state.grid.NumElevs);
    shiftRows(pressures.WaterPressures, i, state.grid.NumElevs);

    ElevGrid(i) = Z;
    NetActive(i, 1) = NetActive(i, 2) = 0;
    interpolateRow(NetPassive, i, t);
    interpolateRow(pressures.WaterPressures, i, t);
    for (const int side : {Right, Left}) {
        interpolateRow(pressures.ActivePressures, i, t, side);
        interpolateRow(pressures.PassivePressures, i, t, side);
    }
}

/// Walks down from the lower surface to the row at which net active pressure has come to zero, with
/// a new row where it crosses. Returns that row; 0 where the two far points are reached before.
int findZero(State& state, int lowerIndex) {
    const auto& NetActive = state.net.NetActive;

    int i = lowerIndex;
    while (NetActive(i, 1) > PressureNoise) {
        ++i;
        if (i > state.grid.NumElevs - 2) {
            return 0;
        }
        if (std::abs(NetActive(i, 2)) <= PressureNoise) {
            return i;
        }
        if (NetActive(i, 2) <= 0) {
            insertCrossing(state, i);
            return i;
        }
    }
    return i;
}

/// Force and moment about the wall top of net active pressure and line loads above NetZeroIndex.
void sumDrivingForces(State& state) {
    const Problem& problem = *state.problem;
    const auto& ElevGrid = state.grid.ElevGrid;
    const auto& NetActive = state.net.NetActive;
    const int NetZeroIndex = state.net.NetZeroIndex;
    double force = 0;
    double moment = 0;

    for (int k = 2; k <= NetZeroIndex; ++k) {
        const double d = ElevGrid(k - 1) - ElevGrid(k);
        const double a = NetActive(k - 1, 1);
        const double b = NetActive(k, 2);
        const double F = (b + a) * d / 2;
        force += F;
        moment += (problem.WallTopElev - ElevGrid(k - 1)) * F + (2 * b + a) * d * d / 6;
    }
    for (int load = 1; load <= problem.HLineCount; ++load) {
        if (problem.HLineElev(load) > ElevGrid(NetZeroIndex)) {
            force += problem.HLineLoad(load);
            moment += (problem.WallTopElev - problem.HLineElev(load)) * problem.HLineLoad(load);
        }
    }
    state.net.DrivingForce = finite(force);
    state.net.DrivingMoment = finite(moment);
}

/// Where net active pressure touches zero from above and jumps back to a positive value below the
/// point, one more point midway to the next one.
void insertMidway(State& state) {
    auto& ElevGrid = state.grid.ElevGrid;
    auto& NetActive = state.net.NetActive;
    auto& NetPassive = state.net.NetPassive;
    auto& pressures = state.pressures;
    const int z = state.net.NetZeroIndex;
    const int m = z + 1;

    // Water stays where it is, deliberately: it is out of step until it is next computed.
    state.net.WaterLagRow = m;
    openRow(state, m, Left);
    shiftRows(NetActive, m, state.grid.NumElevs);
    shiftRows(NetPassive, m, state.grid.NumElevs);

    ElevGrid(m) = (ElevGrid(m) + ElevGrid(z)) / 2;
    NetActive(m, 1) = NetActive(m, 2) = (NetActive(m, 1) + NetActive(z, 1)) / 2;
    interpolateRow(NetPassive, m, 0.5);
    for (const int side : {Right, Left}) {
        interpolateRow(pressures.ActivePressures, m, 0.5, side);
        interpolateRow(pressures.PassivePressures, m, 0.5, side);
    }
}

} // namespace

// The two diagrams (PSF) on which the searches work, and the force (PLF) and moment (LB-FT per
// foot, about the wall top) that drive the wall above the point of zero net active pressure. Reads
// soil and water pressures of both sides; inserts rows in the grid and all diagrams.
void ComputeNetPressures(State& state) {
    state.stage = {Doing::NetPressures, 0, state.stage.level};
    const Problem& problem = *state.problem;
    const double lowerSurface = MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
    const int lowerIndex = lastRowAt(state.grid, lowerSurface);

    state.net.WaterLagRow = 0;
    combinePressures(state, lowerIndex);
    if (problem.HDistCount >= 1) {
        addDistributedLoad(state);
    }
    const int zero = findZero(state, lowerIndex);
    if (zero == 0) {
        fail(state, {.code = FailureCode::NoSignChange});
        return;
    }
    state.net.NetZeroIndex = zero;
    sumDrivingForces(state);
    if (state.net.NetActive(zero, 1) > PressureNoise) {
        insertMidway(state);
    }
}

} // namespace korvane
