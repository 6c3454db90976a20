// The beam worked without rounding, by two methods.
#pragma once

#include "big_rational.h"

#include "state/state.h"

#include <array>
#include <vector>

namespace korvane::test {

/// A beam of n nodes on the grid of a state.
struct BeamRun {
    int anchorIndex = 0; ///< 0 none
    int n = 0;           ///< bottom node
    int fixity = 2;      ///< 2 rotation held at the bottom, 1 free
    int level = 1;
    std::vector<double> nodeLoads = {}; ///< LB per foot at nodes 1 to n (place 0 is node 1)
};

struct ExactBeam {
    std::vector<std::array<Rational, 4>> forces;       ///< place e: end forces of element e
    std::vector<std::array<Rational, 2>> displacement; ///< place i: deflection, rotation of node i
};

/// Stiffness method with Gaussian elimination in node order; only for a few nodes.
ExactBeam exactByStiffness(const State& state, const BeamRun& run);

/// Statics and integration; for any number of nodes.
ExactBeam exactByStatics(const State& state, const BeamRun& run);

} // namespace korvane::test
