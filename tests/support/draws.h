// Draws by chance, the same ones for the same seed everywhere.
#pragma once

#include <cstdint>
#include <random>

namespace korvane::test {

/// A row of draws. Call one draw a statement: the order within an expression is the compiler's.
class Draws {
  public:
    explicit Draws(std::uint64_t seed) : engine_(seed) {}

    bool chance(double probability);
    int whole(int low, int high); ///< both included
    /// A multiple of 1 / `steps` from `low` to `high`, correctly rounded.
    double value(double low, double high, int steps);

  private:
    std::mt19937_64 engine_;
};

} // namespace korvane::test
