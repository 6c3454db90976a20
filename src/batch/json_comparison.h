// A comparison in the JSON of an input.
#pragma once

#include "comparison/comparison.h"
#include "runtime/json_text.h"

namespace korvane::batch {

/// Writes the array of rows, numbers in the units given; `mode` is that of the problem.
void writeComparison(JsonText& json, const Comparison& comparison, Mode mode, UnitSystem units);

} // namespace korvane::batch
