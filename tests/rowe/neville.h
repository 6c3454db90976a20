// A polynomial through points, by another way than weights.
#pragma once

#include <vector>

namespace korvane::test {

/// Neville's scheme: the value at x of the polynomial through (xs, ys).
inline double neville(const std::vector<double>& xs, std::vector<double> ys, double x) {
    for (std::size_t step = 1; step < xs.size(); ++step) {
        for (std::size_t i = 0; i + step < xs.size(); ++i) {
            ys[i] = ((x - xs[i + step]) * ys[i] + (xs[i] - x) * ys[i + 1]) / (xs[i] - xs[i + step]);
        }
    }
    return ys[0];
}

} // namespace korvane::test
