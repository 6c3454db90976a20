// Arrays of fixed size that count from 1, as the methods do, and check every subscript.
#pragma once

#include "runtime/runtime_error.h"

#include <array>
#include <cstddef>

namespace korvane {

/// `Array<double, 2, 301, 2> a` is addressed as a(side, i, k), each subscript from 1 to its extent.
/// A subscript outside throws RuntimeError 9 in every build. All elements start value-initialised.
template <class T, int... Extents>
class Array {
    static_assert(sizeof...(Extents) > 0 && ((Extents > 0) && ...));

  public:
    // Inlined whatever the build: link-time optimisation otherwise calls them in the inner loops.
    template <class... Subscripts>
    [[gnu::always_inline]] T& operator()(Subscripts... subscripts) {
        return elements_[offset(subscripts...)];
    }
    template <class... Subscripts>
    [[gnu::always_inline]] const T& operator()(Subscripts... subscripts) const {
        return elements_[offset(subscripts...)];
    }

    /// Gives every element the same value.
    void fill(const T& value) { elements_.fill(value); }

    /// All elements in storage order (the last subscript runs fastest).
    auto begin() { return elements_.begin(); }
    auto end() { return elements_.end(); }
    auto begin() const { return elements_.begin(); }
    auto end() const { return elements_.end(); }
    static constexpr int size() { return (Extents * ...); }

    bool operator==(const Array&) const = default;

  private:
    template <class... Subscripts>
    [[gnu::always_inline]] static std::size_t offset(Subscripts... subscripts) {
        static_assert(sizeof...(Subscripts) == sizeof...(Extents));
        std::size_t position = 0;
        const bool inside = ((subscripts >= 1 && subscripts <= Extents &&
                              ((position = position * static_cast<std::size_t>(Extents) +
                                           static_cast<std::size_t>(subscripts - 1)),
                               true)) &&
                             ...);
        if (!inside) {
            throwRuntimeError(9);
        }
        return position;
    }

    std::array<T, static_cast<std::size_t>((Extents * ...))> elements_{};
};

} // namespace korvane
