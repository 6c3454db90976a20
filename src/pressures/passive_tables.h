// Passive pressure coefficients for curved failure surfaces (log-spirals), for level ground behind
// a vertical wall.
#pragma once

#include "problem/problem.h"

#include <array>

namespace korvane {

/// Kp for wall friction equal to the soil friction: rows of degrees and coefficient.
struct KpRow {
    double degrees;
    double KpTableValue;
    constexpr double KpTableAngle() const { return degrees * DegreesToRadians; }
};
inline constexpr std::array<KpRow, 22> KpTable{{
    {0, 1.0},    {6, 1.33},   {8, 1.49},   {10, 1.65}, {12, 1.85},  {14, 2.09},
    {16, 2.34},  {18, 2.67},  {20, 3.04},  {22, 3.44}, {24, 4.01},  {26, 4.74},
    {28, 5.52},  {30, 6.48},  {32, 7.73},  {34, 9.37}, {36, 11.53}, {38, 14.22},
    {40, 17.13}, {42, 22.16}, {44, 28.84}, {45, 33.0},
}};

/// Reduction of Kp for less wall friction: rows by the ratio of wall to soil friction, columns by
/// soil friction of 10, 15, ... 45 degrees.
struct KpReductionRow {
    double KpReductionRatio;
    std::array<double, 8> KpReduction;
};
inline constexpr std::array<KpReductionRow, 4> KpReductionTable{{
    {0.5, {0.946, 0.907, 0.862, 0.808, 0.746, 0.674, 0.592, 0.5}},
    {0.6, {0.962, 0.934, 0.901, 0.86, 0.811, 0.752, 0.682, 0.6}},
    {0.7, {0.978, 0.961, 0.939, 0.912, 0.878, 0.836, 0.783, 0.718}},
    {1.0, {1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0}},
}};

} // namespace korvane
