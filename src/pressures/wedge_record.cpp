#include "pressures/wedge_record.h"

#include <cstddef>
#include <vector>

namespace korvane {

namespace {

std::vector<WedgePressureRow>& rowsOf(State& state, int side) {
    return state.details->sides(side).wedge.pressures;
}

WedgePressureRow& rowAt(State& state, int side, int row, int surfaceRow) {
    return rowsOf(state, side).at(static_cast<std::size_t>(row - surfaceRow));
}

/// The surface row has nothing above it, the last row nothing below.
bool hasSide(const State& state, int row, int surfaceRow, int k) {
    return k == 1 ? row < state.grid.NumElevs : row > surfaceRow;
}

} // namespace

void recordForceRows(State& state, int side, int surfaceRow) {
    const Problem& problem = *state.problem;
    for (int i = surfaceRow; i <= state.grid.NumElevs; ++i) {
        WedgePressureRow& row = rowsOf(state, side).emplace_back();
        row.elev = state.grid.ElevGrid(i);
        if (i > surfaceRow) {
            row.activeForce = state.wedge.WedgeActiveForce(i, side);
            row.passiveForce = state.wedge.WedgePassiveForce(i, side);
        }
        for (const int k : {1, 2}) {
            if (hasSide(state, i, surfaceRow, k)) {
                row.activeBefore(k) = state.pressures.ActivePressures(side, i, k);
            }
        }
    }
    WedgePressureRow& first = rowsOf(state, side).front();
    first.uniformLoad = problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) : 0;
    first.effective = first.uniformLoad;
    first.passiveBefore(1) = state.pressures.PassivePressures(side, surfaceRow, 1);
}

void recordInsertedRow(State& state, int side, int row, int surfaceRow) {
    auto& rows = rowsOf(state, side);
    WedgePressureRow inserted;
    inserted.elev = state.grid.ElevGrid(row);
    inserted.inserted = true;
    rows.insert(rows.begin() + (row - surfaceRow), inserted);
}

void recordFloor(State& state, int side, int surfaceRow, const FloorRow& values) {
    const WedgePressureRow& above = rowAt(state, side, values.row - 1, surfaceRow);
    WedgePressureRow& row = rowAt(state, side, values.row, surfaceRow);
    const double height = above.elev - row.elev;
    row.layer = values.layer;
    row.soilWeight = above.soilWeight + height * values.weight.soil;
    row.water = above.water + height * values.weight.water;
    row.uniformLoad = above.uniformLoad;
    row.effective = values.floor;
    for (const int k : {1, 2}) {
        if (hasSide(state, values.row, surfaceRow, k)) {
            row.passiveBefore(k) = state.pressures.PassivePressures(side, values.row, k);
        }
    }
}

void recordPressures(State& state, int side, int surfaceRow) {
    int i = surfaceRow;
    for (WedgePressureRow& row : rowsOf(state, side)) {
        for (const int k : {1, 2}) {
            if (!hasSide(state, i, surfaceRow, k)) {
                continue;
            }
            row.active(k) = state.pressures.ActivePressures(side, i, k);
            row.passive(k) = state.pressures.PassivePressures(side, i, k);
            row.tensionCut(k) = row.activeBefore(k) < 0 && !(row.active(k) < 0);
            row.raised(k) = row.passive(k) > row.passiveBefore(k);
        }
        ++i;
    }
}

} // namespace korvane
