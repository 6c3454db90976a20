// The design that asks the same of a wall as its analysis does.
#pragma once

#include "problem/problem.h"

namespace korvane::study {

/// An analysed wall as a design with the factor 1 wherever the analysis looks for one. Its bottom
/// lies below the wall's where the factor of safety is below 1. A design gives its bottom to far
/// less than the 0.1 FT to which an analysis meets the wall's.
void makeDesign(const Problem& analysed, Problem& design);

} // namespace korvane::study
