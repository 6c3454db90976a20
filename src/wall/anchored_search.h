// What the two searches for the bottom of an anchored wall share.
#pragma once

#include "state/state.h"
#include "wall/refinement.h"

namespace korvane {

/// The moment (LB-FT per foot of wall) that counts as none.
inline constexpr double AnchoredMomentTolerance = 1.0;

/// Finds bottom and anchor force of its level under the pressures now on the grid; `anchorIndex` is
/// the anchor's row. False after a failure.
using AnchoredPass = bool (*)(State& state, int anchorIndex);

/// Runs a search once, or with automatic seepage in a design until the bottom stays within 0.1 FT
/// from one pass to the next, with pressures for the bottom found in between. `anchorIndex` follows
/// the grid. 20 passes are the most.
void settleAnchoredBottom(State& state, int level, int& anchorIndex, AnchoredPass solvePass);

/// Takes a bottom found in the segment above `row`. One within 1E-9 FT of the segment's upper end
/// is that row: BottomIndex(level) is then row - 1.
void setAnchoredBottom(State& state, int level, int row, const DiagramPoint& bottom);

} // namespace korvane
