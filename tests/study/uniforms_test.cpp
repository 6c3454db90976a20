#include "study/uniforms.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

namespace korvane::study {

TEST(Uniforms, AreThoseOfPhiloxWithItsPublishedKnownAnswers) {
    // The vector of the authors for counter 0 and key 0: 6627e8d5 e169c58d bc57ac4c 9b00dbd8.
    EXPECT_EQ(randomBits(0, 0, 0), 0x6627e8d5e169c58dU);
}

TEST(Uniforms, EverySeedIndexAndCoordinateHasBitsOfItsOwn) {
    std::set<std::uint64_t> seen;
    for (std::uint64_t seed : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{1} << 40}) {
        for (std::uint64_t index : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{1} << 40}) {
            for (std::uint32_t coordinate : {0U, 1U, 2U}) {
                seen.insert(randomBits(seed, index, coordinate));
            }
        }
    }
    EXPECT_EQ(seen.size(), 27U);
}

TEST(Uniforms, StayBetweenZeroAndOne) {
    EXPECT_GT(uniformOf(0), 0.0);
    EXPECT_LT(uniformOf(~std::uint64_t{0}), 1.0);
}

TEST(Uniforms, HaveTheMomentsOfTheUniformDistribution) {
    constexpr int Count = 100000;
    const Sample sample{Design::MonteCarlo, 7, Count};
    double sum = 0;
    double squares = 0;
    double product = 0;
    for (std::uint64_t n = 0; n < Count; ++n) {
        const double a = sample.at(n, 0) - 0.5;
        const double b = sample.at(n, 1) - 0.5;
        sum += a;
        squares += a * a;
        product += a * b;
    }
    // Deviation of the uniform number 1/sqrt(12), of its square 1/sqrt(180), of the product of two
    // 1/12; four standard errors.
    const double error = 4 / std::sqrt(static_cast<double>(Count));
    EXPECT_NEAR(sum / Count, 0, error / std::sqrt(12.0));
    EXPECT_NEAR(squares / Count, 1.0 / 12, error / std::sqrt(180.0));
    EXPECT_NEAR(product / Count, 0, error / 12);
}

TEST(Permutation, IsOneToOneForAnySize) {
    for (const std::uint64_t size : {1U, 2U, 3U, 4U, 5U, 16U, 17U, 1000U, 4097U}) {
        std::set<std::uint64_t> seen;
        for (std::uint64_t n = 0; n < size; ++n) {
            const std::uint64_t place = permuted(11, size, n);
            EXPECT_LT(place, size);
            seen.insert(place);
        }
        EXPECT_EQ(seen.size(), size);
    }
}

TEST(Permutation, DiffersByItsKey) {
    int same = 0;
    for (std::uint64_t n = 0; n < 1000; ++n) {
        same += permuted(1, 1000, n) == permuted(2, 1000, n) ? 1 : 0;
    }
    EXPECT_LT(same, 20); // 1 is expected of two random orders
}

TEST(LatinHypercube, HitsEachStratumOnceInEachCoordinate) {
    for (const std::uint64_t size : {1U, 10U, 777U, 4096U}) {
        const Sample sample{Design::LatinHypercube, 5, size};
        for (const int coordinate : {0, 1, 7}) {
            std::set<std::uint64_t> strata;
            for (std::uint64_t n = 0; n < size; ++n) {
                const double u = sample.at(n, coordinate);
                EXPECT_GT(u, 0.0);
                EXPECT_LT(u, 1.0);
                strata.insert(static_cast<std::uint64_t>(u * static_cast<double>(size)));
            }
            EXPECT_EQ(strata.size(), size) << coordinate;
        }
    }
}

TEST(LatinHypercube, CoordinatesAreOrderedIndependently) {
    constexpr std::uint64_t Size = 10000;
    const Sample sample{Design::LatinHypercube, 5, Size};
    double product = 0;
    for (std::uint64_t n = 0; n < Size; ++n) {
        product += (sample.at(n, 0) - 0.5) * (sample.at(n, 1) - 0.5);
    }
    EXPECT_NEAR(product / Size * 12, 0, 4 / std::sqrt(static_cast<double>(Size)));
}

TEST(Sobol, HitsEachDyadicIntervalOnceInEachCoordinate) {
    constexpr std::uint64_t Size = 1024;
    for (int coordinate = 0; coordinate < SobolCoordinates; ++coordinate) {
        const Sample shifted{Design::Sobol, 3, Size};
        std::set<std::uint32_t> plain;
        std::set<int> moved;
        for (std::uint64_t n = 0; n < Size; ++n) {
            plain.insert(sobolBits(n, coordinate) >> 22);
            moved.insert(static_cast<int>(shifted.at(n, coordinate) * Size));
        }
        EXPECT_EQ(plain.size(), Size) << coordinate;
        EXPECT_EQ(moved.size(), Size) << coordinate;
    }
}

TEST(Sobol, PointsAreThoseThatTheAuthorsOfTheNumbersPublish) {
    // Their first points of ten coordinates, in the order of Gray codes.
    constexpr std::array<std::array<double, 10>, 9> Points{{
        {0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
        {0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5},
        {0.75, 0.25, 0.25, 0.25, 0.75, 0.75, 0.25, 0.75, 0.75, 0.75},
        {0.25, 0.75, 0.75, 0.75, 0.25, 0.25, 0.75, 0.25, 0.25, 0.25},
        {0.375, 0.375, 0.625, 0.875, 0.375, 0.125, 0.375, 0.875, 0.875, 0.625},
        {0.875, 0.875, 0.125, 0.375, 0.875, 0.625, 0.875, 0.375, 0.375, 0.125},
        {0.625, 0.125, 0.875, 0.625, 0.625, 0.875, 0.125, 0.125, 0.125, 0.375},
        {0.125, 0.625, 0.375, 0.125, 0.125, 0.375, 0.625, 0.625, 0.625, 0.875},
        {0.1875, 0.3125, 0.9375, 0.4375, 0.5625, 0.3125, 0.4375, 0.9375, 0.9375, 0.3125},
    }};
    for (std::uint64_t n = 0; n < Points.size(); ++n) {
        for (int coordinate = 0; coordinate < 10; ++coordinate) {
            EXPECT_EQ(sobolBits(n ^ (n >> 1), coordinate) * 0x1p-32,
                      Points.at(n).at(static_cast<std::size_t>(coordinate)));
        }
    }
}

TEST(Sobol, EveryCoordinateIsThatOfAnIndependentGenerator) {
    // Point 777 times 1024 by scipy.stats.qmc.Sobol, which has the same direction numbers.
    constexpr std::array<std::uint32_t, SobolCoordinates> Point{
        579, 193, 913, 183, 277, 131, 821, 227, 707, 873, 425, 439, 1019, 303,
        201, 525, 703, 839, 649, 257, 145, 625, 507, 735, 395, 331, 343,  657,
        199, 595, 317, 111, 285, 713, 435, 723, 7,   145, 809, 761};
    for (int coordinate = 0; coordinate < SobolCoordinates; ++coordinate) {
        EXPECT_EQ(sobolBits(777, coordinate) >> 22, Point.at(static_cast<std::size_t>(coordinate)))
            << coordinate;
    }
}

} // namespace korvane::study
