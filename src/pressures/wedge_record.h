// What the pressures of a wedge side tell of how they came about. To be called only where
// State::details is set, in the order in which the functions stand here.
#pragma once

#include "state/pressure_details.h"
#include "state/state.h"

namespace korvane {

/// PCF of an interval.
struct IntervalWeight {
    double soil = 0;
    double water = 0; ///< its downward share
};

/// A row of the grid when the floor of its passive pressure is known.
struct FloorRow {
    int row = 0;      ///< of the grid
    int layer = 1;    ///< of the interval above
    double floor = 0; ///< PSF
    IntervalWeight weight;
};

/// Forces and pressures of all rows from the surface row down, before any rule.
void recordForceRows(State& state, int side, int surfaceRow);

/// A row of the grid that the tension rule has inserted.
void recordInsertedRow(State& state, int side, int row, int surfaceRow);

/// The floor of a row below the surface row, before it acts; downward, row by row.
void recordFloor(State& state, int side, int surfaceRow, const FloorRow& values);

/// The pressures in force.
void recordPressures(State& state, int side, int surfaceRow);

} // namespace korvane
