#include "pressures/wedge_pressures.h"

#include "pressures/elevation_grid.h"
#include "pressures/row_insertion.h"
#include "pressures/wedge_forces.h"
#include "pressures/wedge_record.h"
#include "runtime/arithmetic.h"
#include "state/pressure_details.h"
#include "state/tolerances.h"

#include <cmath>

namespace korvane {

namespace {

double uniformLoad(const Problem& problem, int side) {
    return problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) : 0;
}

/// Coulomb's coefficient for ground that slopes at `e`, with s = +1 active or -1 passive; soil
/// friction `p` and wall friction `w`. Radians.
double slopeCoefficient(double p, double w, double e, double s) {
    const double r = squareRoot(divide(std::sin(w + p) * std::sin(p - s * e), //
                                       std::cos(e) * std::cos(w)));
    return square(divide(std::cos(p), 1 + s * r)) / std::cos(w);
}

/// Slope of the first stretch of ground as the coefficients take it: the arctangent of the rise,
/// divided by the distance afterward (deliberate).
double toldSlope(const State& state, int side) {
    const double rise = state.regions.WedgeSurfaceY(side, 2) - state.regions.WedgeSurfaceY(side, 1);
    return divide(std::atan(rise), state.regions.WedgeSurfaceX(side, 2));
}

/// Its true angle (radians), within the developed friction `p` up and down.
double trueSlope(const State& state, int side, double p) {
    const double rise = state.regions.WedgeSurfaceY(side, 2) - state.regions.WedgeSurfaceY(side, 1);
    const double b = std::atan(divide(rise, state.regions.WedgeSurfaceX(side, 2)));
    return MaxOf(-p, MinOf(b, p));
}

double activeSlope(const State& state, int side, double pa) {
    if (state.amendments.surfaceSlope) {
        return trueSlope(state, side, pa);
    }
    const double b = toldSlope(state, side);
    return b > 0 && b > pa ? pa : b;
}

/// Falling ground takes the friction angle itself: deliberate.
double passiveSlope(const State& state, int side, double pp) {
    if (state.amendments.surfaceSlope) {
        return trueSlope(state, side, pp);
    }
    const double b = toldSlope(state, side);
    if (state.amendments.surfaceLimit) {
        return MaxOf(b, -pp);
    }
    return b < 0 && b < pp ? pp : b;
}

/// Pressures just below the surface from cohesion and the uniform load, by Coulomb's coefficients
/// of the first layer for the slope of the first stretch of ground.
void setSurfacePressures(State& state, int side, int level, int surfaceRow) {
    const Problem& problem = *state.problem;
    const double cohesion = problem.SoilCohesion(side, 1);
    if (!(cohesion > PressureNoise) && problem.VUniformCount(side) == 0) {
        return;
    }
    const double q = uniformLoad(problem, side);
    const double tangent = std::tan(problem.SoilFriction(side, 1) * DegreesToRadians);
    const double w = problem.SoilWallFriction(side, 1) * DegreesToRadians;
    const double Fa = state.preparation.LayerFSActive(side, 1, level);
    const double pa = std::atan(divide(tangent, Fa));
    const double ba = activeSlope(state, side, pa);
    const double Ka = slopeCoefficient(pa, w, ba, 1);
    state.pressures.ActivePressures(side, surfaceRow, 1) =
        MaxOf(0, Ka * q - divide(2 * cohesion, Fa) * squareRoot(Ka));

    const double Fp = state.preparation.LayerFSPassive(side, 1, level);
    const double pp = std::atan(divide(tangent, Fp));
    const double bp = passiveSlope(state, side, pp);
    const double Kp = slopeCoefficient(pp, w, bp, -1);
    state.pressures.PassivePressures(side, surfaceRow, 1) =
        divide(2 * cohesion, Fp) * squareRoot(Kp) + Kp * q;
    if (state.details != nullptr) {
        state.details->sides(side).wedge.surface = {.used = true,
                                                    .load = q,
                                                    .wallFriction =
                                                        problem.SoilWallFriction(side, 1),
                                                    .slope = toldSlope(state, side),
                                                    .slopeActive = ba,
                                                    .slopePassive = bp,
                                                    .frictionActive = pa / DegreesToRadians,
                                                    .frictionPassive = pp / DegreesToRadians,
                                                    .cohesionActive = divide(cohesion, Fa),
                                                    .cohesionPassive = divide(cohesion, Fp),
                                                    .Ka = Ka,
                                                    .Kp = Kp};
    }
}

/// The pressure is the rate at which the force grows with depth: at each row the slope of the
/// parabola through three points of the force curve, in the last row carried on.
void differentiateForce(const ElevationGrid& grid, const Array<double, 301, 2>& force,
                        Array<double, 2, 301, 2>& pressures, int side, int surfaceRow) {
    const auto& ElevGrid = grid.ElevGrid;
    const int last = grid.NumElevs;

    double h = ElevGrid(surfaceRow) - ElevGrid(surfaceRow + 1);
    double g = divide(force(surfaceRow + 1, side), h);
    double h0 = h;
    double g0 = g;
    for (int i = surfaceRow + 1; i < last; ++i) {
        h0 = h;
        g0 = g;
        h = ElevGrid(i) - ElevGrid(i + 1);
        g = divide(force(i + 1, side) - force(i, side), h);
        pressures(side, i, 1) = divide(h * g0 + h0 * g, h + h0);
        pressures(side, i, 2) = pressures(side, i, 1);
    }
    pressures(side, last, 2) = g0 + divide((h + h0 + h) * (g - g0), h + h0);
}

/// Soil pulls on no wall: negative active pressure is taken off, with a new row where the diagram
/// crosses zero inside an interval.
void removeTension(State& state, int side, int surfaceRow) {
    auto& ActivePressures = state.pressures.ActivePressures;
    const auto clearSmall = [](double& value) {
        if (std::abs(value) <= PressureNoise) {
            value = 0;
        }
    };
    for (int i = surfaceRow; i < state.grid.NumElevs; ++i) {
        double& a = ActivePressures(side, i, 1);
        double& c = ActivePressures(side, i + 1, 2);
        clearSmall(a);
        clearSmall(c);
        if ((a > 0 && c < 0) || (a < 0 && c > 0)) {
            insertActiveZeroRow(state, side, i);
            if (state.details != nullptr) {
                recordInsertedRow(state, side, i + 1, surfaceRow);
            }
            a = MaxOf(a, 0);
        } else if (a <= 0 && c <= 0) {
            a = 0;
            c = 0;
        }
    }
}

/// Weight of the soil of a layer in the interval that ends at elevation `y`, and the water's
/// downward share. A row exactly where seepage ends is outside the seepage zone here.
IntervalWeight intervalWeight(const State& state, int side, int level, int layer, double y) {
    const Problem& problem = *state.problem;
    if (problem.WaterDataKind != WaterData::Elevations || !(y < problem.WaterElev(side))) {
        return {problem.SoilMoistWeight(side, layer), 0};
    }
    const bool seeps = state.preparation.SeepageKind != Seepage::None &&
                       (side == Left || y < problem.SeepageElev) &&
                       y > state.preparation.SeepageEndElev(level);
    const double share = seeps ? 1 - (3 - 2 * side) * state.preparation.SeepageGradient(level) : 1;
    return {problem.SoilSatWeight(side, layer), share * problem.WaterUnitWeight};
}

/// Holds passive pressure at or above the vertical effective stress.
void raisePassive(State& state, int side, int level, int surfaceRow) {
    const Problem& problem = *state.problem;
    const auto& ElevGrid = state.grid.ElevGrid;
    auto& PassivePressures = state.pressures.PassivePressures;

    double sv = uniformLoad(problem, side);
    int layer = 1;
    for (int i = surfaceRow + 1; i <= state.grid.NumElevs; ++i) {
        const double y = ElevGrid(i);
        if (layer < problem.SoilLayerCount(side) && y < problem.SoilBottomElev(side, layer)) {
            ++layer;
        }
        const IntervalWeight weight = intervalWeight(state, side, level, layer, y);
        sv += (ElevGrid(i - 1) - y) * (weight.soil - weight.water);
        if (state.details != nullptr) {
            recordFloor(state, side, surfaceRow, {i, layer, sv, weight});
        }
        for (const int k : {1, 2}) {
            PassivePressures(side, i, k) = MaxOf(PassivePressures(side, i, k), sv);
        }
    }
}

} // namespace

// Active and passive pressures of a side from the forces of its wedge method. Writes the side's
// ActivePressures and PassivePressures (PSF); the k = 1 values of the last row stay as they were.
// Rows inserted at zero crossings are carried through the water pressures and, for the left side,
// the right side's finished arrays.
void ComputeWedgePressures(State& state, int side, int level) {
    auto& pressures = state.pressures;
    auto& wedge = state.wedge;

    wedge.WedgeNoSolution(level, side) = 0;
    if (state.details != nullptr) {
        state.details->sides(side).clear();
    }
    if (state.preparation.SideMethod(side) == PressureMethod::Sweep) {
        SweepSearchForces(state, side, level);
        for (int i = 1; i <= state.grid.NumElevs; ++i) {
            wedge.WedgeActiveForce(i, side) = MaxOf(0, wedge.WedgeActiveForce(i, side));
        }
    } else if (state.preparation.SideMethod(side) == PressureMethod::FixedSurface) {
        FixedSurfaceForces(state, side, level);
    }

    const int surfaceRow = firstRowAt(state.grid, state.problem->SurfaceElev(side, 1));
    for (int i = 1; i <= surfaceRow; ++i) {
        for (const int k : {1, 2}) {
            pressures.ActivePressures(side, i, k) = 0;
            pressures.PassivePressures(side, i, k) = 0;
        }
    }
    setSurfacePressures(state, side, level, surfaceRow);
    differentiateForce(state.grid, wedge.WedgeActiveForce, pressures.ActivePressures, side,
                       surfaceRow);
    differentiateForce(state.grid, wedge.WedgePassiveForce, pressures.PassivePressures, side,
                       surfaceRow);
    if (state.details != nullptr) {
        recordForceRows(state, side, surfaceRow);
    }
    removeTension(state, side, surfaceRow);
    raisePassive(state, side, level, surfaceRow);
    if (state.details != nullptr) {
        recordPressures(state, side, surfaceRow);
    }
}

} // namespace korvane
