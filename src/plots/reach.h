// How far a drawing reaches.
#pragma once

#include "plots/surface.h"

namespace korvane {

/// Grows with each part of a drawing that it is told of.
class Reach {
  public:
    /// What lies between two points, and `around` twips on all sides of it.
    void take(Point a, Point b, double around);

    /// The smallest rectangle (a is its upper left, b its lower right corner) that holds all ink,
    /// with a line's width of room around it. What runs farther out of `usual` than half of its
    /// size is cut off there, so that nothing makes the rest too small to read. `usual` itself
    /// where nothing was drawn.
    Corners bounds(const Corners& usual) const;

  private:
    bool empty_ = true;
    Corners corners_;
};

} // namespace korvane
