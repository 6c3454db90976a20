#include "pressures/wedge_strengths.h"

#include "runtime/arithmetic.h"

#include <cmath>

namespace korvane {

namespace {

DevelopedStrength develop(const Problem& problem, int side, int layer, double factor) {
    const double friction = problem.SoilFriction(side, layer) * DegreesToRadians;
    const double wallFriction = problem.SoilWallFriction(side, layer) * DegreesToRadians;
    return {divide(std::tan(friction), factor), divide(problem.SoilCohesion(side, layer), factor),
            std::atan(divide(std::tan(wallFriction), factor)),
            divide(problem.SoilAdhesion(side, layer), factor)};
}

} // namespace

Array<LayerStrength, 11> developedStrengths(const State& state, int side, int level) {
    const Problem& problem = *state.problem;
    Array<LayerStrength, 11> strengths;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        strengths(layer) = {
            develop(problem, side, layer, state.preparation.LayerFSActive(side, layer, level)),
            develop(problem, side, layer, state.preparation.LayerFSPassive(side, layer, level))};
    }
    return strengths;
}

} // namespace korvane
