// The input as read, in readable form.
#pragma once

#include "problem/problem.h"
#include "runtime/print_lines.h"

namespace korvane {

/// The first report of every problem.
PrintLines inputEcho(const Problem& problem);

} // namespace korvane
