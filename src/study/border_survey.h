// A state known only by whether it is reached: its border along rays and its nearest points. Space
// is that of independent standard normal numbers.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace korvane::study {

using Normals = std::vector<double>; ///< independent standard normal numbers

/// Whether a point has reached the state. The origin must not have.
using Reached = std::function<bool(const Normals&)>;

double lengthOf(const Normals& point);
double distanceOf(const Normals& a, const Normals& b);

/// Where rays from the origin, both ways along each axis and evenly between, first meet the state,
/// within `radius`, to 0.001. What lies between two rays, or is thinner than half a deviation along
/// one, can be missed. With one coordinate there are two rays, else 24 for each, 256 at the most.
std::vector<Normals> entriesAlongRays(const Reached& reached, std::size_t dimension, double radius);

/// The nearest point of the state around one of it: from direction to direction with shorter and
/// shorter steps, which passes kinks and corners. Its length is within 1E-6 where the border is
/// smooth there; some hundred points for each coordinate are asked.
Normals nearestAround(const Reached& reached, Normals point);

} // namespace korvane::study
