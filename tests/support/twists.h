// Twists: each makes a good wall problem hard in one way.
#pragma once

#include "problem/problem.h"
#include "support/draws.h"

namespace korvane::test {

/// Changes the problem; false, with the problem as it was, where the twist has nothing to act on.
/// The rules of the input file may be hurt where `keepReadable` of the caller can mend them.
using Twist = bool (*)(Draws& draws, Problem& problem);

// Geometry of the wall and the ground.
bool longWall(Draws& draws, Problem& problem);    ///< all lengths grown; up to 200 FT in all
bool tinyHeight(Draws& draws, Problem& problem);  ///< 0 to 1 FT of retained ground
bool wrongLength(Draws& draws, Problem& problem); ///< an analysis wall far too short or too long
bool steepRight(Draws& draws,
                Problem& problem); ///< ground that rises, or falls, at 1 on 3 to 5 on 1
bool steepLeft(Draws& draws, Problem& problem);     ///< likewise, mostly falling
bool elevenPoints(Draws& draws, Problem& problem);  ///< gentle ground up and down
bool anchorAtAnEnd(Draws& draws, Problem& problem); ///< at the top, a ground, below the dredge line
bool nearMisses(Draws& draws, Problem& problem);    ///< elevations 0 to 0.01 FT apart
bool farDatum(Draws& draws, Problem& problem);      ///< elevations 5,000 FT, 10,000 FT or so away

// Soil.
bool manyLayers(Draws& draws, Problem& problem); ///< 7 to 11 on a side or both
bool thinLayers(Draws& draws, Problem& problem); ///< most of them thinner than 1 FT
bool weakSoil(Draws& draws, Problem& problem);
bool strongSoil(Draws& draws, Problem& problem);
bool roughWall(Draws& draws, Problem& problem); ///< 44 to 45 degrees, wall friction above half
bool clayWithAdhesion(Draws& draws, Problem& problem);
bool oddWeights(Draws& draws, Problem& problem);
bool oddFactors(Draws& draws, Problem& problem);       ///< of the problem, of level 2 and of layers
bool layerAboveGround(Draws& draws, Problem& problem); ///< refused
bool coefficientsWithSurface(Draws& draws, Problem& problem); ///< refused

// Water and loads.
bool flooded(Draws& draws, Problem& problem);          ///< water above the top of the wall
bool largeHead(Draws& draws, Problem& problem);        ///< with automatic seepage
bool waterTable(Draws& draws, Problem& problem);       ///< a table of water pressures
bool loadsAtTheLimits(Draws& draws, Problem& problem); ///< surcharges: counts, sizes, distances
bool horizontalLoads(Draws& draws, Problem& problem);
bool barelyDriven(Draws& draws, Problem& problem); ///< a pull that all but holds the water

} // namespace korvane::test
