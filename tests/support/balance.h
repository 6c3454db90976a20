// What the forces on a solved wall add up to, by a way of its own.
#pragma once

#include "state/results.h"

namespace korvane::test {

/// Sum of all forces (LB) and their moment about the bottom (LB-FT), and the sum of the forces'
/// sizes, against which rounding is measured.
struct Balance {
    double force = 0;
    double moment = 0;
    double sizes = 0;       ///< LB
    double momentSizes = 0; ///< LB-FT
};

/// Adds up the result rows of a level by triangles, the line loads above the bottom, and the anchor
/// force of an anchored wall.
Balance balanceOf(const Problem& problem, const LevelResult& level);

} // namespace korvane::test
