#include "support/draws.h"

#include <algorithm>
#include <cmath>

namespace korvane::test {

bool Draws::chance(double probability) {
    return static_cast<double>(engine_() >> 11) * 0x1p-53 < probability;
}

int Draws::whole(int low, int high) {
    return low + static_cast<int>(engine_() % static_cast<std::uint64_t>(high - low + 1));
}

double Draws::value(double low, double high, int steps) {
    const int first = static_cast<int>(std::ceil(low * steps - 1e-6));
    const int last = static_cast<int>(std::floor(high * steps + 1e-6));
    return whole(first, std::max(first, last)) / static_cast<double>(steps);
}

} // namespace korvane::test
