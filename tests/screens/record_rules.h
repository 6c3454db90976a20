// The tests of each screen a second time, on the record itself.
#pragma once

#include "commands/desktop.h"
#include "problem/loads.h"

#include <optional>

namespace korvane::test {

/// True where the values of a screen's section meet that screen's own tests.
bool meetsTests(const Problem& problem, Screen screen, std::optional<Load> loadKind);

/// True where every count lies within its arrays and its screen's rows.
bool countsInRange(const Problem& problem);

} // namespace korvane::test
