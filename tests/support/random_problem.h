// Realistic wall problems drawn by chance, the same ones for the same seed everywhere.
#pragma once

#include "problem/problem.h"
#include "support/draws.h"

#include <cstdint>
#include <optional>

namespace korvane::test {

/// What a random problem is made of. What is left open is drawn.
struct RandomKind {
    enum class Soil { Sand, Clay, Mixed, Coefficients };
    enum class Water { None, Level, Head, Seepage, Pressures };

    std::optional<bool> anchored;
    std::optional<bool> analysis;
    std::optional<Soil> soil;       ///< Coefficients: on one side or both, and level ground there
    std::optional<Water> water;     ///< Seepage: automatic gradient
    std::optional<bool> layered;    ///< up to four layers on a side
    std::optional<bool> friction;   ///< wall friction in sand
    std::optional<bool> adhesion;   ///< in clay; the side then needs a wedge method
    std::optional<bool> sloping;    ///< ground of two to five points on one side or both
    std::optional<bool> surcharge;  ///< some of the six kinds of vertical load
    std::optional<bool> horizontal; ///< line loads, a distributed load or both
    std::optional<bool> factors;    ///< level 2 and layer factors of safety
};

/// A row of random problems. Every problem is complete and such as an input file can hold, with
/// numbers as an engineer writes them: at most two decimals. What a section does not use is left
/// as in a new record. Most of the walls can be solved, but not all.
class RandomProblems : private Draws {
  public:
    explicit RandomProblems(std::uint64_t seed) : Draws(seed) {}

    Problem next(const RandomKind& kind = {});

  private:
    struct Site; // what the sections of one problem must agree on

    void heading(Problem& problem);
    void wall(Problem& problem, const Site& site);
    void surface(Problem& problem, const Site& site, int side);
    void soil(Problem& problem, const Site& site, int side);
    void sand(Problem& problem, const Site& site, int side, int layer);
    void clay(Problem& problem, const Site& site, int side, int layer);
    void water(Problem& problem, const Site& site);
    void waterPressures(Problem& problem, const Site& site);
    void surcharges(Problem& problem, int side);
    void horizontalLoads(Problem& problem, const Site& site);
};

} // namespace korvane::test
