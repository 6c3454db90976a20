// The values that a number may take, from one limit to another.
#pragma once

#include <limits>

namespace korvane {

/// Values from `low` to `high`, either end left out where it is open.
struct Limits {
    double low = -std::numeric_limits<double>::infinity();
    double high = std::numeric_limits<double>::infinity();
    bool lowOpen = false;
    bool highOpen = false;

    bool hold(double value) const {
        return (lowOpen ? value > low : value >= low) && (highOpen ? value < high : value <= high);
    }
};
inline constexpr Limits anyValue{};
inline constexpr Limits fromZero{.low = 0};
inline constexpr Limits positive{.low = 0, .lowOpen = true};
inline constexpr Limits notAbove(double high) {
    return {.high = high};
}
inline constexpr Limits between(double low, double high) {
    return {.low = low, .high = high};
}

} // namespace korvane
