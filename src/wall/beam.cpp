#include "wall/beam.h"

#include "runtime/arithmetic.h"
#include "state/tolerances.h"

#include <cmath>

namespace korvane {

namespace {

// The running sums carry extended precision, so that neither the supports' lever arms nor the
// fourfold integration of the loads costs digits that the diagrams show.
using Real = long double;

Real quotient(Real a, Real b) {
    if (b == 0) {
        throw RuntimeError(11);
    }
    return a / b;
}

/// The wall from its top down to the bottom: nodes 1 to n, elements 1 to n - 1.
/// With EI = 1 and x downward: rotation = dy/dx, moment = d2y/dx2, shear = dM/dx, load = dV/dx.
struct Wall {
    int n = 0;
    Array<Real, 301> length{Unset{}};      ///< FT, of an element
    Array<Real, 301> loadTop{Unset{}};     ///< PSF at an element's top
    Array<Real, 301> loadBottom{Unset{}};  ///< PSF at an element's bottom
    Array<Real, 301> nodeForce{Unset{}};   ///< LB per foot: line loads, the anchor's reaction
    Array<Real, 301> shearTop{Unset{}};    ///< LB, of an element
    Array<Real, 301> shearBottom{Unset{}}; ///< LB
    Array<Real, 301> moment{Unset{}};      ///< LB-FT at a node
    Array<Real, 301> deflection{Unset{}};  ///< at a node
    Array<Real, 301> rotation{Unset{}};    ///< at a node
};

/// Elements and loads. The last element ends at the bottom that was solved, not at its grid point.
void takeElements(const State& state, int level, Wall& wall) {
    const auto& ElevGrid = state.grid.ElevGrid;
    const auto& NetActive = state.net.NetActive;
    for (int e = 1; e < wall.n; ++e) {
        const bool last = e == wall.n - 1;
        const double zBottom = last ? state.solution.SolvedBottomElev(level) : ElevGrid(e + 1);
        wall.length(e) = Real{ElevGrid(e)} - Real{zBottom};
        wall.loadTop(e) = NetActive(e, 1);
        wall.loadBottom(e) = last ? state.solution.BottomPressure(level) : NetActive(e + 1, 2);
        if (wall.length(e) == 0) {
            throw RuntimeError(11); // an element without length has no stiffness
        }
    }
}

/// Horizontal line loads, each at the first row of its elevation; at the bottom none acts.
void takeLineLoads(const State& state, Wall& wall) {
    const Problem& problem = *state.problem;
    for (int i = 1; i <= wall.n; ++i) {
        wall.nodeForce(i) = 0;
    }
    for (int j = 1; j <= problem.HLineCount; ++j) {
        for (int i = 1; i <= wall.n; ++i) {
            if (std::fabs(problem.HLineElev(j) - state.grid.ElevGrid(i)) < SameElevation) {
                if (i < wall.n) {
                    wall.nodeForce(i) += problem.HLineLoad(j);
                }
                break;
            }
        }
    }
}

/// Shears and moments from the free top down.
void sumForces(Wall& wall) {
    Real shear = 0;
    wall.moment(1) = 0;
    for (int e = 1; e < wall.n; ++e) {
        const Real L = wall.length(e);
        const Real p1 = wall.loadTop(e);
        const Real p2 = wall.loadBottom(e);
        shear += wall.nodeForce(e);
        wall.shearTop(e) = shear;
        wall.moment(e + 1) = wall.moment(e) + L * (shear + (2 * p1 + p2) * L / 6);
        shear += (p1 + p2) * L / 2;
        wall.shearBottom(e) = shear;
    }
}

/// Rotations and deflections from a bottom without either up to the top.
void sumDisplacements(Wall& wall) {
    wall.rotation(wall.n) = 0;
    wall.deflection(wall.n) = 0;
    for (int e = wall.n - 1; e >= 1; --e) {
        const Real L = wall.length(e);
        const Real p1 = wall.loadTop(e);
        const Real p2 = wall.loadBottom(e);
        const Real V = wall.shearBottom(e);
        const Real M = wall.moment(e + 1);
        const Real r = wall.rotation(e + 1);
        wall.rotation(e) = r - L * (M - L * (V / 2 - L * (p1 + 3 * p2) / 24));
        wall.deflection(e) =
            wall.deflection(e + 1) - L * (r - L * (M / 2 - L * (V / 6 - L * (p1 + 4 * p2) / 120)));
    }
}

/// Height of the anchor above the bottom, FT.
Real anchorHeight(const Wall& wall, int anchorIndex) {
    Real height = 0;
    for (int e = anchorIndex; e < wall.n; ++e) {
        height += wall.length(e);
    }
    return height;
}

/// Fixed at the bottom, held at the anchor: the reaction that brings the anchor back to its place.
void solveFixedBottom(Wall& wall, int anchorIndex) {
    const Real h = anchorHeight(wall, anchorIndex);
    wall.nodeForce(anchorIndex) = 0; // a line load here goes straight into the support
    sumForces(wall);
    sumDisplacements(wall);
    wall.nodeForce(anchorIndex) = -quotient(3 * wall.deflection(anchorIndex), h * h * h);
    sumForces(wall);
    sumDisplacements(wall);
    wall.deflection(anchorIndex) = 0;
}

/// Free to turn at the bottom, held at the anchor: the reaction that leaves no moment at the
/// bottom; then the whole wall is turned about the bottom until the anchor is in its place.
void solveHingedBottom(Wall& wall, int anchorIndex) {
    const Real h = anchorHeight(wall, anchorIndex);
    wall.nodeForce(anchorIndex) = 0;
    sumForces(wall);
    wall.nodeForce(anchorIndex) = -quotient(wall.moment(wall.n), h);
    sumForces(wall);
    wall.moment(wall.n) = 0;
    sumDisplacements(wall);
    const Real turn = quotient(wall.deflection(anchorIndex), h);
    Real height = 0;
    wall.rotation(wall.n) = turn;
    for (int i = wall.n - 1; i >= 1; --i) {
        height += wall.length(i);
        wall.rotation(i) += turn;
        wall.deflection(i) -= turn * height;
    }
    wall.deflection(anchorIndex) = 0;
}

void storeBeam(const Wall& wall, Beam& beam) {
    auto& ElementForces = beam.ElementForces;
    auto& NodeDisplacement = beam.NodeDisplacement;
    const auto stored = [](Real x) { return finite(static_cast<double>(x)); };
    for (int e = 1; e < wall.n; ++e) {
        ElementForces(e, 1) = stored(wall.shearTop(e));
        ElementForces(e, 2) = stored(-wall.moment(e));
        ElementForces(e, 3) = stored(-wall.shearBottom(e));
        ElementForces(e, 4) = stored(wall.moment(e + 1));
    }
    for (int i = 1; i <= wall.n; ++i) {
        NodeDisplacement(i, 1) = stored(wall.deflection(i));
        NodeDisplacement(i, 2) = stored(wall.rotation(i));
    }
}

} // namespace

// Purpose: moments, shears and displacements of the wall as a beam of EI = 1 under the trapezoidal
//          net pressures and the horizontal line loads, held at the anchor and at the bottom.
// Method:  statics and integration instead of an elimination. There is one redundant at most, and
//          it has a closed form; a stiffness matrix with terms 12 / L^3 loses all its digits where
//          rows lie 1E-9 FT apart. The results are those of the stiffness method, signs included:
//          end forces act on the element, positive in the direction of y and of the rotation dy/dx
//          with x downward; a positive pressure pushes in the direction of y.
// Reads:   ElevGrid FT, NetActive PSF, SolvedBottomElev, BottomPressure, the line loads LB/FT.
// Gives:   ElementForces (e, 1..4) of elements 1 to n - 1, NodeDisplacement (i, 1..2) of nodes 1
//          to n.
Beam SolveBeam(const State& state, int anchorIndex, int bottomIndex, int bottomFixity, int level) {
    Wall wall;
    wall.n = bottomIndex;
    takeElements(state, level, wall);
    takeLineLoads(state, wall);

    const bool anchored = anchorIndex >= 1 && anchorIndex < wall.n;
    if (bottomFixity == 2 && anchored) {
        solveFixedBottom(wall, anchorIndex);
    } else if (bottomFixity == 2) {
        sumForces(wall);
        sumDisplacements(wall);
    } else if (anchored) {
        solveHingedBottom(wall, anchorIndex);
    } else {
        throw RuntimeError(11); // a wall on one hinge: the stiffness matrix is singular
    }
    Beam beam;
    storeBeam(wall, beam);
    return beam;
}

} // namespace korvane
