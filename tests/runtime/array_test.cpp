// Arrays that count from 1 and check every subscript.
#include "runtime/array.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <set>

namespace korvane {
namespace {

using Table = Array<double, 2, 301, 3>;

TEST(Array, StartsWithZeroInEveryElement) {
    const Table table;
    for (const double value : table) {
        ASSERT_EQ(value, 0.0);
    }
}

TEST(Array, EverySubscriptHasAnElementOfItsOwn) {
    Array<int, 2, 3, 4> table;
    std::set<const int*> places;
    for (int i = 1; i <= 2; ++i) {
        for (int j = 1; j <= 3; ++j) {
            for (int k = 1; k <= 4; ++k) {
                table(i, j, k) = 100 * i + 10 * j + k;
                places.insert(&table(i, j, k));
            }
        }
    }
    EXPECT_EQ(places.size(), 24U);
    EXPECT_EQ(table.size(), 24);
    EXPECT_EQ(table(1, 1, 1), 111);
    EXPECT_EQ(table(1, 3, 4), 134);
    EXPECT_EQ(table(2, 3, 4), 234);
}

TEST(Array, TheLastSubscriptRunsFastest) {
    Array<int, 2, 2> table;
    table(1, 1) = 1;
    table(1, 2) = 2;
    table(2, 1) = 3;
    table(2, 2) = 4;
    int expected = 1;
    for (const int value : table) {
        EXPECT_EQ(value, expected++);
    }
}

TEST(Array, ASubscriptOutsideIsOutOfRangeInEachPlace) {
    Table table;
    const Table& constant = table;
    const auto outside = [&](int i, int j, int k) {
        for (const bool reading : {false, true}) {
            try {
                reading ? static_cast<void>(constant(i, j, k)) : static_cast<void>(table(i, j, k));
                ADD_FAILURE() << i << " " << j << " " << k;
            } catch (const RuntimeError& error) {
                EXPECT_EQ(error.number(), 9);
            }
        }
    };
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr std::array<int, 3> extents{2, 301, 3};
    for (std::size_t place = 0; place < extents.size(); ++place) {
        for (const int wrong : {0, extents[place] + 1, -1, lowest, highest}) {
            std::array<int, 3> at{1, 1, 1};
            at[place] = wrong;
            outside(at[0], at[1], at[2]);
        }
    }
    EXPECT_NO_THROW(table(2, 301, 3) = 1);
    EXPECT_NO_THROW(table(1, 1, 1) = 1);
}

TEST(Array, FillAndEqualityTakeAllElements) {
    Array<int, 3> a;
    Array<int, 3> b;
    a.fill(7);
    EXPECT_NE(a, b);
    b(1) = b(2) = b(3) = 7;
    EXPECT_EQ(a, b);
}

} // namespace
} // namespace korvane
