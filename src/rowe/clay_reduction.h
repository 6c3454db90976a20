// Stability number and Rowe's moment reduction coefficients for clay.
#pragma once

#include "state/results.h"

namespace korvane {

/// Stability number S = c / p sqrt(1 + a / c) with the cohesion c and adhesion a of the left side
/// and the overburden p of the right side at the left surface. RuntimeError 11 where the cohesion
/// or the overburden is zero.
double stabilityNumber(const Problem& problem, const Results& results);

/// True where x = log10(H^4 / EI) is within the curves, ends included.
bool inClayRange(double x);

/// Coefficient at stability number S, wall height ratio ALPHA and x.
double clayCoefficient(double S, double alpha, double x);

} // namespace korvane
