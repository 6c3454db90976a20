#include "study/uniforms.h"

#include "runtime/arithmetic.h"

#include <array>
#include <bit>

namespace korvane::study {

namespace {

constexpr int Rounds = 10;

struct Words {
    std::array<std::uint32_t, 4> counter;
    std::array<std::uint32_t, 2> key;
};

void round(Words& words) {
    const auto& [a, b, c, d] = words.counter;
    const std::uint64_t first = std::uint64_t{0xD2511F53U} * a;
    const std::uint64_t second = std::uint64_t{0xCD9E8D57U} * c;
    words.counter = {static_cast<std::uint32_t>(second >> 32) ^ b ^ words.key[0],
                     static_cast<std::uint32_t>(second),
                     static_cast<std::uint32_t>(first >> 32) ^ d ^ words.key[1],
                     static_cast<std::uint32_t>(first)};
    words.key[0] += 0x9E3779B9U;
    words.key[1] += 0xBB67AE85U;
}

/// What a place is drawn for: no two purposes share their bits.
enum Purpose : std::uint32_t { ForPoint, ForOrder, ForShift };

std::uint64_t bitsFor(Purpose purpose, std::uint64_t seed, std::uint64_t index,
                      std::uint32_t coordinate) {
    Words words{{static_cast<std::uint32_t>(index), static_cast<std::uint32_t>(index >> 32),
                 coordinate, purpose},
                {static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32)}};
    for (int n = 0; n < Rounds; ++n) {
        round(words);
    }
    return std::uint64_t{words.counter[0]} << 32 | words.counter[1];
}

/// A primitive polynomial (its degree and inner coefficients) and the first direction numbers.
struct Direction {
    unsigned degree;
    std::uint32_t inner;
    std::array<std::uint32_t, 8> first;
};

/// Of the coordinates from the second on.
constexpr std::array<Direction, SobolCoordinates - 1> Directions{{
    {1, 0, {1}},
    {2, 1, {1, 3}},
    {3, 1, {1, 3, 1}},
    {3, 2, {1, 1, 1}},
    {4, 1, {1, 1, 3, 3}},
    {4, 4, {1, 3, 5, 13}},
    {5, 2, {1, 1, 5, 5, 17}},
    {5, 4, {1, 1, 5, 5, 5}},
    {5, 7, {1, 1, 7, 11, 19}},
    {5, 11, {1, 1, 5, 1, 1}},
    {5, 13, {1, 1, 1, 3, 11}},
    {5, 14, {1, 3, 5, 5, 31}},
    {6, 1, {1, 3, 3, 9, 7, 49}},
    {6, 13, {1, 1, 1, 15, 21, 21}},
    {6, 16, {1, 3, 1, 13, 27, 49}},
    {6, 19, {1, 1, 1, 15, 7, 5}},
    {6, 22, {1, 3, 1, 15, 13, 25}},
    {6, 25, {1, 1, 5, 5, 19, 61}},
    {7, 1, {1, 3, 7, 11, 23, 15, 103}},
    {7, 4, {1, 3, 7, 13, 13, 15, 69}},
    {7, 7, {1, 1, 3, 13, 7, 35, 63}},
    {7, 8, {1, 3, 5, 9, 1, 25, 53}},
    {7, 14, {1, 3, 1, 13, 9, 35, 107}},
    {7, 19, {1, 3, 1, 5, 27, 61, 31}},
    {7, 21, {1, 1, 5, 11, 19, 41, 61}},
    {7, 28, {1, 3, 5, 3, 3, 13, 69}},
    {7, 31, {1, 1, 7, 13, 1, 19, 1}},
    {7, 32, {1, 3, 7, 5, 13, 19, 59}},
    {7, 37, {1, 1, 3, 9, 25, 29, 41}},
    {7, 41, {1, 3, 5, 13, 23, 1, 55}},
    {7, 42, {1, 3, 7, 3, 13, 59, 17}},
    {7, 50, {1, 3, 1, 3, 5, 53, 69}},
    {7, 55, {1, 1, 5, 5, 23, 33, 13}},
    {7, 56, {1, 1, 7, 7, 1, 61, 123}},
    {7, 59, {1, 1, 7, 9, 13, 61, 49}},
    {7, 62, {1, 3, 3, 5, 3, 55, 33}},
    {8, 14, {1, 3, 1, 15, 31, 13, 49, 245}},
    {8, 21, {1, 3, 5, 15, 31, 59, 63, 97}},
    {8, 22, {1, 3, 1, 11, 11, 11, 77, 249}},
}};

using Column = std::array<std::uint32_t, 32>;

constexpr Column firstColumn() {
    Column column{};
    for (unsigned bit = 0; bit < 32; ++bit) {
        column[bit] = std::uint32_t{1} << (31 - bit);
    }
    return column;
}

/// The recurrence of Bratley and Fox (1988).
constexpr Column columnOf(const Direction& direction) {
    Column column{};
    const unsigned s = direction.degree;
    for (unsigned bit = 0; bit < 32; ++bit) {
        if (bit < s) {
            column[bit] = direction.first[bit] << (31 - bit);
            continue;
        }
        column[bit] = column[bit - s] ^ (column[bit - s] >> s);
        for (unsigned k = 1; k < s; ++k) {
            if ((direction.inner >> (s - 1 - k) & 1U) != 0) {
                column[bit] ^= column[bit - k];
            }
        }
    }
    return column;
}

constexpr std::array<Column, SobolCoordinates> allColumns() {
    std::array<Column, SobolCoordinates> columns{};
    columns[0] = firstColumn();
    for (std::size_t n = 1; n < columns.size(); ++n) {
        columns[n] = columnOf(Directions[n - 1]);
    }
    return columns;
}

constexpr std::array<Column, SobolCoordinates> Columns = allColumns();

} // namespace

std::uint64_t randomBits(std::uint64_t seed, std::uint64_t index, std::uint32_t coordinate) {
    return bitsFor(ForPoint, seed, index, coordinate);
}

double uniformOf(std::uint64_t bits) {
    return (static_cast<double>(bits >> 12) + 0.5) * 0x1p-52;
}

std::uint64_t permuted(std::uint64_t key, std::uint64_t size, std::uint64_t index) {
    const auto bits = static_cast<int>(std::bit_width(size - 1));
    const int half = bits < 2 ? 1 : (bits + 1) / 2;
    const std::uint64_t mask = (std::uint64_t{1} << half) - 1;
    do {
        std::uint64_t left = index >> half;
        std::uint64_t right = index & mask;
        for (std::uint32_t n = 0; n < 6; ++n) {
            const std::uint64_t next = left ^ (bitsFor(ForOrder, key, right, n) & mask);
            left = right;
            right = next;
        }
        index = left << half | right;
    } while (index >= size);
    return index;
}

std::uint32_t sobolBits(std::uint64_t index, int coordinate) {
    const Column& column = Columns.at(static_cast<std::size_t>(coordinate));
    std::uint32_t bits = 0;
    for (std::size_t bit = 0; index != 0 && bit < 32; ++bit, index >>= 1) {
        if ((index & 1) != 0) {
            bits ^= column[bit];
        }
    }
    return bits;
}

double Sample::at(std::uint64_t index, int coordinate) const {
    const auto place = static_cast<std::uint32_t>(coordinate);
    switch (design) {
    case Design::MonteCarlo:
        break;
    case Design::LatinHypercube: {
        const std::uint64_t key = bitsFor(ForShift, seed, 0, place);
        const auto stratum = static_cast<double>(permuted(key, size, index));
        const double within = uniformOf(randomBits(seed, index, place));
        return MinOf((stratum + within) / static_cast<double>(size), 1 - 0x1p-53);
    }
    case Design::Sobol: {
        const auto shift = static_cast<std::uint32_t>(bitsFor(ForShift, seed, 0, place));
        return (static_cast<double>(sobolBits(index, coordinate) ^ shift) + 0.5) * 0x1p-32;
    }
    }
    return uniformOf(randomBits(seed, index, place));
}

} // namespace korvane::study
