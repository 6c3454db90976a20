// The results of one input as JSON.
#pragma once

#include "batch/solve_input.h"
#include "state/state.h"

#include <string>
#include <vector>

namespace korvane::batch {

/// One JSON object; docs/json.md tells its members. `review` is the grid at the stop for review,
/// null where it was not reached. Numbers read back to the same double.
std::string jsonResults(const std::string& input, int status, const std::vector<Message>& messages,
                        const State& state, const SolvedLevel* review);

} // namespace korvane::batch
