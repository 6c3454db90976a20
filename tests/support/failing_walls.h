// Small walls that cannot be solved, one for each way in which a problem can fail.
#pragma once

#include "problem/problem.h"
#include "state/failure.h"

#include <string>
#include <vector>

namespace korvane::test {

struct FailingWall {
    std::string name; ///< the failure's own, and what is special
    Problem problem;
    Failure expected;      ///< anchored is the problem's
    double elevMargin = 0; ///< FT, by which the failure's elevation may differ
};

/// All of them; sweep search where a wedge is needed.
std::vector<FailingWall> failingWalls();

} // namespace korvane::test
