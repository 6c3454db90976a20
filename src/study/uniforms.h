// The uniform numbers of a study: each a function of seed, index and coordinate alone, so that any
// variant can be drawn by any machine, in any order, again and again.
#pragma once

#include <cstdint>

namespace korvane::study {

/// 64 random bits of a place: Philox4x32 with 10 rounds (J. K. Salmon, M. A. Moraes, R. O. Dror and
/// D. E. Shaw, Parallel random numbers: as easy as 1, 2, 3, 2011).
std::uint64_t randomBits(std::uint64_t seed, std::uint64_t index, std::uint32_t coordinate);

/// A number above 0 and below 1: the middle of one of 2^52 steps.
double uniformOf(std::uint64_t bits);

/// The place of `index` in a random order of the numbers 0 to size - 1 that `key` names: a Feistel
/// cipher of the next power of four, asked again until it falls among them. `size` is 1 to 2^62 and
/// `index` below it.
std::uint64_t permuted(std::uint64_t key, std::uint64_t size, std::uint64_t index);

/// Coordinates from 0 that `sobolBits` has.
inline constexpr int SobolCoordinates = 40;
/// Points repeat after these.
inline constexpr std::uint64_t SobolPoints = std::uint64_t{1} << 32;

/// 32 bits of point `index` of a Sobol' sequence, coordinate from 0 (direction numbers of S. Joe
/// and F. Y. Kuo, Constructing Sobol sequences with better two-dimensional projections, 2008).
std::uint32_t sobolBits(std::uint64_t index, int coordinate);

/// How the points of a sample fill the unit cube.
enum class Design {
    MonteCarlo,     ///< each by itself
    LatinHypercube, ///< in each coordinate one point in each of `size` strata
    Sobol,          ///< a Sobol' sequence, shifted at random
};

/// A sample of points in the unit cube.
struct Sample {
    Design design = Design::MonteCarlo;
    std::uint64_t seed = 0;
    std::uint64_t size = 0;

    /// Coordinate (from 0) of a point (from 0), above 0 and below 1.
    double at(std::uint64_t index, int coordinate) const;
};

} // namespace korvane::study
