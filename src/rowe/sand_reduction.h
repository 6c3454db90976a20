// Rowe's moment reduction coefficients for sand.
#pragma once

#include "runtime/array.h"

namespace korvane {

/// The loose (1) and the dense (2) curve at x = -3.5, -3.0, -2.5, -2.0, -1.5, straight in ALPHA
/// between the table's rows.
Array<double, 2, 5> sandCurve(double alpha);

/// True where x = log10(H^4 / EI) is within the curves, ends included.
bool inSandRange(double x);

/// Coefficient of loose sand at x: a cubic to x = -2.0, flat from there.
double looseCoefficient(const Array<double, 2, 5>& RoweSandCurve, double x);

/// Coefficient of dense sand at x: a quartic through all five points.
double denseCoefficient(const Array<double, 2, 5>& RoweSandCurve, double x);

} // namespace korvane
