#include "pressures/developed_layers.h"

#include "pressures/coefficient_pressures.h"
#include "runtime/arithmetic.h"

#include <cmath>

namespace korvane {

namespace {

/// Degrees of an angle (degrees) whose tangent a factor divides.
double developedAngle(double degrees, double factor) {
    return std::atan(divide(std::tan(degrees * DegreesToRadians), factor)) / DegreesToRadians;
}

/// The coefficients that the layer's developed angles lead to.
void takeCoulomb(DevelopedLayer& layer) {
    layer.Ka = coulombActive(layer.frictionActive * DegreesToRadians,
                             layer.wallFrictionActive * DegreesToRadians);
    layer.KaSource = CoefficientSource::Coulomb;
    const double friction = layer.frictionPassive * DegreesToRadians;
    const double wallFriction = layer.wallFrictionPassive * DegreesToRadians;
    if (const auto Kp = passiveCoefficient(friction, wallFriction)) {
        layer.Kp = *Kp;
        layer.KpSource = isCoulombPassive(friction, wallFriction) ? CoefficientSource::Coulomb
                                                                  : CoefficientSource::CurvedTable;
    }
}

} // namespace

DevelopedLayer developedLayer(const State& state, int side, int layer, int level) {
    const Problem& problem = *state.problem;
    DevelopedLayer developed;
    developed.fsActive = state.preparation.LayerFSActive(side, layer, level);
    developed.fsPassive = state.preparation.LayerFSPassive(side, layer, level);
    if (problem.SoilDataKind(side) == SoilData::Coefficients) {
        developed.Ka = problem.SoilCoefActive(side, layer);
        developed.Kp = problem.SoilCoefPassive(side, layer);
        developed.KaSource = developed.KpSource = CoefficientSource::Given;
        return developed;
    }
    const double Fa = developed.fsActive;
    const double Fp = developed.fsPassive;
    developed.frictionActive = developedAngle(problem.SoilFriction(side, layer), Fa);
    developed.frictionPassive = developedAngle(problem.SoilFriction(side, layer), Fp);
    developed.wallFrictionActive = developedAngle(problem.SoilWallFriction(side, layer), Fa);
    developed.wallFrictionPassive = developedAngle(problem.SoilWallFriction(side, layer), Fp);
    developed.cohesionActive = divide(problem.SoilCohesion(side, layer), Fa);
    developed.cohesionPassive = divide(problem.SoilCohesion(side, layer), Fp);
    developed.adhesionActive = divide(problem.SoilAdhesion(side, layer), Fa);
    developed.adhesionPassive = divide(problem.SoilAdhesion(side, layer), Fp);
    if (state.preparation.SideMethod(side) == PressureMethod::Coefficients) {
        takeCoulomb(developed);
    }
    return developed;
}

} // namespace korvane
