// One new row in the grid, carried through the arrays that stand on it.
#pragma once

#include "state/state.h"

namespace korvane {

/// Makes room at row `row`: points row to NumElevs move down one place in ElevGrid and in
/// ActivePressures, PassivePressures and marks of the sides Right to `lastSide`; NumElevs grows by
/// one; the new row's marks are empty. Row `row` still holds the values of the point that is now
/// row + 1. All other arrays stay: whoever wants them moved calls shiftRows after it, because each
/// method moves others. RuntimeError 9 beyond 301 points.
void openRow(State& state, int row, int lastSide);

/// Moves rows row to numElevs - 1 of `values` down one place; `numElevs` counts the opened row.
/// `values` is addressed (i, k) or, with `side` given, (side, i, k).
template <class Values, class... Side>
void shiftRows(Values& values, int row, int numElevs, Side... side) {
    for (int i = numElevs; i > row; --i) {
        for (const int k : {1, 2}) {
            values(side..., i, k) = values(side..., i - 1, k);
        }
    }
}

/// Fills the opened row of `values` by the straight line from just below the row above to just
/// above the row below, at the share `t` of the way down, the same below and above the point.
template <class Values, class... Side>
void interpolateRow(Values& values, int row, double t, Side... side) {
    values(side..., row, 1) =
        (1 - t) * values(side..., row - 1, 1) + t * values(side..., row + 1, 2);
    values(side..., row, 2) = values(side..., row, 1);
}

/// Inserts the row at which active pressure crosses zero between rows i and i + 1 of `side`: active
/// 0, passive and net water by straight lines, and for the left side the finished right side's
/// pressures too. The new row is i + 1; the values at both ends stay for the caller to clip.
void insertActiveZeroRow(State& state, int side, int i);

} // namespace korvane
