// Tables of data that an enum addresses.
#pragma once

namespace korvane {

/// True where the rows stand in the order of the enum that `key` of each holds, from 0 without a
/// gap.
template <class Rows, class Row, class Key>
constexpr bool inOrder(const Rows& rows, Key Row::*key) {
    int place = 0;
    for (const Row& row : rows) {
        if (static_cast<int>(row.*key) != place++) {
            return false;
        }
    }
    return true;
}

} // namespace korvane
