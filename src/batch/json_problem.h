// The input of a wall as JSON.
#pragma once

#include "problem/problem.h"
#include "runtime/json_text.h"

namespace korvane::batch {

/// Every field of the problem under its name; lists hold as many entries as their count tells, per
/// side as [right, left]. What does not apply to the wall is null.
void writeProblem(JsonText& json, const Problem& problem);

} // namespace korvane::batch
