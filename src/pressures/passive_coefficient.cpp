// Active and passive coefficients from developed friction angles.
#include "pressures/coefficient_pressures.h"
#include "pressures/passive_tables.h"
#include "runtime/arithmetic.h"

#include <cmath>

namespace korvane {

namespace {

/// Angles closer than this (radians) are equal, so that wall friction of half the soil friction
/// always takes Coulomb's plane.
constexpr double AngleNoise = 1e-9;

constexpr double LargestTableAngle = 45.0; ///< degrees

/// What stands under the root of Coulomb's formulas.
double coulombRoot(double friction, double wallFriction) {
    return squareRoot(std::sin(friction + wallFriction) * std::sin(friction) /
                      std::cos(wallFriction));
}

/// Kp for full wall friction: straight lines between the table's rows, from 1 at no friction.
double fullFrictionKp(double friction) {
    for (std::size_t m = 1; m < KpTable.size(); ++m) {
        const KpRow& upper = KpTable[m - 1];
        const KpRow& lower = KpTable[m];
        if (friction <= lower.KpTableAngle()) {
            return ((friction - upper.KpTableAngle()) * lower.KpTableValue +
                    (lower.KpTableAngle() - friction) * upper.KpTableValue) /
                   (lower.KpTableAngle() - upper.KpTableAngle());
        }
    }
    return KpTable.back().KpTableValue;
}

/// The reduction at column c (1 = 10 degrees, 2 = 15, ...), linear in the ratio q of wall to soil
/// friction; ratios below 0.5 extrapolate. RuntimeError 9 beyond the eighth column.
double reductionAtColumn(int c, double q) {
    if (c < 1 || c > 8) {
        throw RuntimeError(9);
    }
    const std::size_t column = static_cast<std::size_t>(c - 1);
    const std::size_t r = q >= 0.7 ? 2 : q <= 0.6 ? 0 : 1;
    const double divisor = r == 2 ? 0.3 : 0.1;
    const KpReductionRow& low = KpReductionTable[r];
    const KpReductionRow& high = KpReductionTable[r + 1];
    return ((q - low.KpReductionRatio) * high.KpReduction[column] +
            (high.KpReductionRatio - q) * low.KpReduction[column]) /
           divisor;
}

/// The reduction between columns 5 degrees apart; below 10 degrees it runs to 1 at no friction.
double frictionReduction(double degrees, double q) {
    if (degrees <= 10) {
        return (degrees * reductionAtColumn(1, q) + 10 - degrees) / 10;
    }
    // The column follows from the rounded friction: 14.6 degrees takes the columns of 15 and 20 and
    // extrapolates. Deliberate, as is the missing ninth column for what rounds to 45.
    const int c = nearestEven(degrees) / 5 - 1;
    return ((degrees - 5 * (c + 1)) * reductionAtColumn(c + 1, q) +
            (5 * (c + 2) - degrees) * reductionAtColumn(c, q)) /
           5;
}

} // namespace

double coulombActive(double friction, double wallFriction) {
    const double root = coulombRoot(friction, wallFriction);
    return square(std::cos(friction) / (1 + root)) / std::cos(wallFriction);
}

bool isCoulombPassive(double friction, double wallFriction) {
    return 2 * wallFriction <= friction + AngleNoise;
}

// Coulomb's plane failure surface overestimates passive resistance with much wall friction: beyond
// half the soil friction the coefficient comes from a table for curved surfaces.
std::optional<double> passiveCoefficient(double friction, double wallFriction) {
    if (isCoulombPassive(friction, wallFriction)) {
        const double root = coulombRoot(friction, wallFriction);
        return square(divide(std::cos(friction), 1 - root)) / std::cos(wallFriction);
    }
    const double degrees = friction / DegreesToRadians;
    if (degrees > LargestTableAngle) {
        return std::nullopt;
    }
    return frictionReduction(degrees, divide(wallFriction, friction)) * fullFrictionKp(friction);
}

bool hasPassiveCoefficient(double friction, double wallFriction) {
    const double degrees = friction / DegreesToRadians;
    return isCoulombPassive(friction, wallFriction) ||
           (degrees <= LargestTableAngle && nearestEven(degrees) < LargestTableAngle);
}

} // namespace korvane
