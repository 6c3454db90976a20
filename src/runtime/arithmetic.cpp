#include "runtime/arithmetic.h"

namespace korvane {

double squareRoot(double x) {
    if (x < 0) {
        throw RuntimeError(5);
    }
    return std::sqrt(finite(x));
}

double naturalLog(double x) {
    if (x <= 0) {
        throw RuntimeError(5);
    }
    return std::log(finite(x));
}

double commonLog(double x) {
    if (x <= 0) {
        throw RuntimeError(5);
    }
    return std::log10(finite(x));
}

int nearestEven(double x) {
    const double whole = std::nearbyint(finite(x)); // the default rounding mode: halves to even
    if (whole < -32768.0 || whole > 32767.0) {
        throw RuntimeError(6);
    }
    return static_cast<int>(whole);
}

} // namespace korvane
