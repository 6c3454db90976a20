// Factors, developed strengths and coefficients of a layer, worked out by the sheet's own code.
#pragma once

#include "sheet/expression.h"
#include "sheet/stages.h"

namespace korvane::sheet {

/// The factor of one kind of pressure, and where it comes from.
struct LayerFactor {
    double value = 0; ///< 0 where an analysis has not found it
    FactorSource source = FactorSource::Control;
};

/// `searched` is the factor that an analysis has found; 0 without one.
LayerFactor activeFactor(const Problem& problem, int side, int layer, double searched);
LayerFactor passiveFactor(const Problem& problem, int side, int layer, double searched);

/// "of the layer", "of the side", "of the wall", "found".
const char* factorSourceText(FactorSource source);

/// A layer as the sheet works with it; angles in degrees, strengths in PSF.
struct LayerWork {
    LayerFactor active, passive;
    bool given = false; ///< coefficients instead of strengths
    double frictionActive = 0, frictionPassive = 0;
    double wallFrictionActive = 0, wallFrictionPassive = 0;
    double cohesionActive = 0, cohesionPassive = 0;
    double adhesionActive = 0, adhesionPassive = 0;
    double Ka = 0, Kp = 0;
    CoefficientSource KpSource = CoefficientSource::None; ///< None beyond the table
};

/// Nothing but the factors where they are not known.
LayerWork layerWork(const Problem& problem, int side, int layer, double searched);

/// Coulomb's coefficients for a vertical wall and level ground: +1 active, -1 passive.
Expr coulombCoefficient(const Expr& friction, const Expr& wallFriction, int sign);

/// Coefficient for a curved failure surface: the table's values around the angles, and what comes
/// of them.
struct CurvedCoefficient {
    double upperAngle = 0, lowerAngle = 0; ///< degrees, rows of the table for full wall friction
    double upperKp = 0, lowerKp = 0;
    double ratio = 0;                   ///< wall friction over soil friction
    double lowRatio = 0, highRatio = 0; ///< rows of the reductions
    double angle1 = 0, angle2 = 0;      ///< degrees, columns of the reductions; 0 and 10 below 10
    double low1 = 1, high1 = 1;         ///< reductions at angle1 for both ratios
    double low2 = 1, high2 = 1;         ///< at angle2
};

/// The values around two developed angles (degrees), the soil's below 44.5.
CurvedCoefficient curvedCoefficient(double friction, double wallFriction);

/// Its steps as formulas.
struct CurvedSteps {
    Expr full;       ///< Kp for full wall friction
    Expr reduction1; ///< at angle1
    Expr reduction2; ///< at angle2
    Expr reduction;
    Expr Kp;
};
CurvedSteps curvedSteps(const CurvedCoefficient& curved, double friction, double wallFriction);

/// The factor that an analysis has found for the stage's level; 0 elsewhere.
double searchedFactor(const SheetRequest& request, int level);

} // namespace korvane::sheet
