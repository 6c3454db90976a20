// All values of a solution in a row, to compare two solutions to the last bit.
#pragma once

#include "solution/solution.h"

#include <cstdint>
#include <vector>

namespace korvane::test {

/// The bits of every value: the failure, then review, results and moment reduction as far as they
/// were reached. Only entries in use count.
std::vector<std::uint64_t> solutionNumbers(const Problem& problem, const Solved& solved);

/// The same of one value.
std::vector<std::uint64_t> reviewNumbers(const Review& review);
std::vector<std::uint64_t> resultNumbers(const Problem& problem, const Results& results);
std::vector<std::uint64_t> reductionNumbers(const MomentReduction& reduction);

} // namespace korvane::test
