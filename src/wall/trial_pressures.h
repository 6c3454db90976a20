// What the searches share: pressures rebuilt for a trial, and the driving forces seen by a method.
#pragma once

#include "state/state.h"
#include "wall/net_pressures.h"

namespace korvane {

/// Two bottoms (FT) this near are one: between seepage passes and in the search of an analysis.
inline constexpr double BottomTolerance = 0.1;

/// Passes of a search whose seepage follows the bottom.
inline constexpr int MaxSeepagePasses = 20;

/// Soil pressures of one side by its SideMethod.
void ComputeSidePressures(State& state, int side, int level);

/// Soil pressures of both sides, `beforeSide(side)` ahead of each, and what they come to. Stops at
/// a failure.
template <class BeforeSide>
void ComputeSoilPressures(State& state, int level, BeforeSide beforeSide) {
    for (const int side : {Right, Left}) {
        beforeSide(side);
        ComputeSidePressures(state, side, level);
        if (state.failed()) {
            return;
        }
    }
    ComputeNetPressures(state);
}

/// Grid, water, soil and net pressures anew for the level's present seepage values; wedge sides get
/// their deep regions first. Stops at a failure.
void RebuildForSeepage(State& state, int level);

/// True where the seepage gradient depends on the bottom that a search finds: a design with
/// automatic seepage.
bool seepageFollowsBottom(const Problem& problem);

/// Shifts DrivingMoment from the wall top to the point that the wall turns about: the zero point
/// of net active pressure for a cantilever wall, the anchor for an anchored one. True where the
/// forces turn the wall as the methods assume.
bool shiftDrivingMoment(State& state);

} // namespace korvane
