#include "rowe/sand_reduction.h"

#include "rowe/reduction_tables.h"

namespace korvane {

// Source: P. W. Rowe, anchored sheet-pile walls, moment reduction curves for sand. ALPHA is from
//         0.6 to 0.8; k is the table's row below it, t the part of the way to the next row.
Array<double, 2, 5> sandCurve(double alpha) {
    const int k = alpha <= 0.7 ? 1 : 2;
    const double t = (alpha - (k + 5) / 10.0) * 10;
    Array<double, 2, 5> curve;
    for (int d = 1; d <= 2; ++d) {
        for (int q = 1; q <= 5; ++q) {
            const double below = RoweSandTable[d - 1][k - 1][q - 1];
            const double above = RoweSandTable[d - 1][k][q - 1];
            curve(d, q) = (above - below) * t + below;
        }
    }
    return curve;
}

bool inSandRange(double x) {
    return -3.5 <= x && x <= -1.5;
}

double looseCoefficient(const Array<double, 2, 5>& RoweSandCurve, double x) {
    const auto c = [&](int q) { return RoweSandCurve(1, q); };
    if (x > -2.0) {
        return c(4);
    }
    return (12 * (x + 2.5) * (x + 3.5) * (x + 2) * c(2) - 4 * (x + 2.5) * (x + 3) * (x + 2) * c(1) -
            12 * (x + 3) * (x + 3.5) * (x + 2) * c(3) +
            4 * (x + 3) * (x + 3.5) * (x + 2.5) * c(4)) /
           3;
}

double denseCoefficient(const Array<double, 2, 5>& RoweSandCurve, double x) {
    const auto c = [&](int q) { return RoweSandCurve(2, q); };
    return (8 * (x + 2.5) * (x + 3) * (x + 2) * (x + 1.5) * c(1) -
            32 * (x + 2.5) * (x + 3.5) * (x + 2) * (x + 1.5) * c(2) +
            48 * (x + 3) * (x + 3.5) * (x + 2) * (x + 1.5) * c(3) -
            32 * (x + 3) * (x + 3.5) * (x + 2.5) * (x + 1.5) * c(4) +
            8 * (x + 3) * (x + 3.5) * (x + 2.5) * (x + 2) * c(5)) /
           12;
}

} // namespace korvane
