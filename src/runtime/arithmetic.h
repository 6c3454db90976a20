// Arithmetic whose faults are run-time errors instead of infinities and NaNs.
#pragma once

#include "runtime/runtime_error.h"

#include <cmath>

namespace korvane {

/// x itself; RuntimeError 6 where x is not finite.
inline double finite(double x) {
    if (!std::isfinite(x)) {
        throwRuntimeError(6);
    }
    return x;
}

/// a / b; RuntimeError 11 where b is zero, 6 where the quotient is beyond the range of a double.
inline double divide(double a, double b) {
    if (b == 0) {
        throwRuntimeError(11);
    }
    return finite(a / b);
}

inline double square(double x) {
    return x * x;
}

/// The square root; RuntimeError 5 below zero.
double squareRoot(double x);

/// The natural logarithm; RuntimeError 5 at or below zero.
double naturalLog(double x);

/// The common logarithm; RuntimeError 5 at or below zero.
double commonLog(double x);

/// The larger and the smaller of two; the first one where they are equal or not comparable.
inline double MaxOf(double a, double b) {
    return b > a ? b : a;
}
inline double MinOf(double a, double b) {
    return b < a ? b : a;
}

/// Nearest whole number, halves to the even one; RuntimeError 6 beyond a 16-bit integer.
int nearestEven(double x);

} // namespace korvane
