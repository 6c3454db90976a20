// The tests of each screen a second time, on the record itself.
#pragma once

#include "problem/problem.h"

#include "commands/desktop.h"

namespace korvane::test {

/// True where the values of a screen's section meet that screen's own tests.
bool meetsTests(const Problem& problem, Screen screen, int loadKind);

/// True where every count lies within its arrays and its screen's rows.
bool countsInRange(const Problem& problem);

} // namespace korvane::test
