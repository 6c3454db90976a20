// Wall problems at the limits of what the methods can bear, drawn by chance.
#pragma once

#include "problem/problem.h"
#include "support/draws.h"
#include "support/random_problem.h"

#include <cstdint>
#include <string>
#include <vector>

namespace korvane::test {

/// A random problem that some twists have made hard.
struct NastyProblem {
    Problem problem;
    std::vector<std::string> twists; ///< their names, in the order in which they were applied
};

/// A row of nasty problems, the same ones for the same seed everywhere. Each is complete and such
/// as the reader of input files takes; many cannot be solved and some are refused. The last heading
/// line of a problem names its twists.
class NastyProblems {
  public:
    explicit NastyProblems(std::uint64_t seed) : draws_(seed), plain_(seed) {}

    NastyProblem next();

  private:
    Draws draws_;
    RandomProblems plain_;
};

/// The names of all twists.
std::vector<std::string> twistNames();

} // namespace korvane::test
