// What holds a wall between clay on both sides.
#pragma once

#include "problem/problem.h"

#include <functional>
#include <optional>

namespace korvane {

/// Where clay stands on both sides of a wall at or below the lower ground, between two levels at
/// which a layer begins. In clay of one weight the net resistance does not change with depth (Blum
/// 1931; Teng 1962): 2 ca + 2 cp - q.
struct ClayResistance {
    double elev = 0;      ///< FT, the upper level
    int right = 0;        ///< layer
    int left = 0;         ///< likewise
    double cohesion = 0;  ///< PSF, 2 ca + 2 cp by the developed cohesions of both sides
    double load = 0;      ///< PSF, q: effective overburden behind less that in front, net water
    bool endless = false; ///< the same below it

    double net() const { return cohesion - load; }
};

/// Factors by which the cohesion of a layer of strengths is divided, active on the right and
/// passive on the left; nothing where they are not known.
using CohesionFactor = std::function<std::optional<double>(int side, int layer)>;

/// The one of least net resistance above `lowest` (FT). Nothing where no clay stands on both sides,
/// or planes or given coefficients take the place of the cohesions.
std::optional<ClayResistance> leastClayResistance(const Problem& problem,
                                                  const CohesionFactor& factor, double lowest);

} // namespace korvane
