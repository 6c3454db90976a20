// Rowe's moment reduction in clay by the sheet's own code: stability number and curves.
#pragma once

#include "sheet/expression.h"
#include "sheet/stages.h"

#include <array>

namespace korvane::sheet {

/// The stability number S with what it is made of.
struct ClayStability {
    Expr overburden; ///< PSF, uniform load and effective weight of the right side down to the left
                     ///< surface
    Expr cohesion;   ///< PSF, developed, mean of the left side down to the bottom of the wall
    Expr adhesion;   ///< PSF, likewise but not divided by a factor
    Expr number;
};

/// Of a wall whose right surface stands above the left one. `stage` is that of the free earth
/// method, `bottom` its bottom (FT).
ClayStability clayStability(const SheetRequest& request, const PressureStage& stage, double bottom);

/// A curve of the table at its log(H^4/EI).
struct ClayCurve {
    double place = 0;
    std::array<double, 3> atAlpha{}; ///< at S, for ALPHA 0.8, 0.7 and 0.6
    double value = 0;                ///< at S and ALPHA
};
std::array<ClayCurve, 3> clayCurves(double stability, double alpha);

/// The coefficient at x = log(H^4/EI). All interpolation in ALPHA and x is the method's own, which
/// adds the middle one of three points where a parabola would subtract it.
Expr clayCoefficient(const std::array<ClayCurve, 3>& curves, double x);

} // namespace korvane::sheet
