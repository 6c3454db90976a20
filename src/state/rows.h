// The leading rows of diagrams: all that a wall of usual height needs cleared or copied.
#pragma once

#include "runtime/array.h"

#include <algorithm>

namespace korvane {

/// Gives the first rows of a diagram (i), (i, k) or (i, side) the value of a new one.
template <class T, int Rows, int... Values>
void clearRows(Array<T, Rows, Values...>& diagram, int rows) {
    std::fill_n(diagram.begin(), rows * (Values * ... * 1), T{});
}

/// Copies the first rows of such a diagram.
template <class T, int Rows, int... Values>
void copyRows(const Array<T, Rows, Values...>& from, Array<T, Rows, Values...>& to, int rows) {
    std::copy_n(from.begin(), rows * (Values * ... * 1), to.begin());
}

/// The same for a diagram of both sides (side, i) or (side, i, k).
template <class T, int Rows, int... Values>
void clearSideRows(Array<T, 2, Rows, Values...>& diagram, int rows) {
    for (const int side : {0, 1}) {
        std::fill_n(diagram.begin() + side * Rows * (Values * ... * 1), rows * (Values * ... * 1),
                    T{});
    }
}
template <class T, int Rows, int... Values>
void copySideRows(const Array<T, 2, Rows, Values...>& from, Array<T, 2, Rows, Values...>& to,
                  int rows) {
    for (const int side : {0, 1}) {
        const int start = side * Rows * (Values * ... * 1);
        std::copy_n(from.begin() + start, rows * (Values * ... * 1), to.begin() + start);
    }
}

} // namespace korvane
