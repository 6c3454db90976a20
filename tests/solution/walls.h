// Walls of all kinds for the tests of the road.
#pragma once

#include "rowe/pile_sections.h"
#include "solution/solution.h"

#include <vector>

namespace korvane::test {

inline PileSections defaultSections() {
    PileSections sections;
    LoadPileDefaults(sections);
    return sections;
}

inline Options bySweep() {
    return {.wedge = WedgeMethod::Sweep, .factorLimit = {}};
}

inline Options byFixedSurface() {
    return {.wedge = WedgeMethod::FixedSurface, .factorLimit = {}};
}

/// A plain anchored wall of 20 FT in sand, anchor at -3; `left` is the elevation of the left
/// ground.
Problem plainAnchored(double left = -15);

/// The problem as an analysis of a wall that ends at `bottom`.
Problem analysisOf(Problem problem, double bottom);

/// The problem with right ground that rises, hence with a wedge on the right.
Problem sloping(Problem problem);

/// Random walls of all kinds, half of them nasty, and the small walls that fail.
std::vector<Problem> manyWalls(int count);

} // namespace korvane::test
