// What of the working values goes into the results.
#pragma once

#include "state/results.h"

namespace korvane {

/// The stop for review as it stands in the state.
void keepReview(const State& state, Review& review);

/// The level just solved.
void keepLevel(const State& state, int level, Results& results);

} // namespace korvane
