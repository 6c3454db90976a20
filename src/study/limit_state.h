// Limit states: conditions on outputs and variables of a variant, such as
// "penetration > 20 and maxMoment > capacity".
#pragma once

#include "study/outputs.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::study {

/// The numbers that a condition is held against, in the units of the study.
struct LimitValues {
    std::span<const double> variables;
    const Solved& solved; ///< with results
    UnitSystem units;
};

/// A condition as it was read. `and` binds before `or`; brackets group conditions; the sides of a
/// comparison are sums and products of numbers, variables and outputs.
class Condition {
  public:
    struct Node;

    /// How far a solved wall is from the condition, in the units of its comparisons: below 0 where
    /// it holds (at 0 only by "<=" and ">="), of two conditions joined by `and` the larger, by `or`
    /// the smaller. An output of an anchored wall without "_free" or "_fixed" stands for both: the
    /// smaller margin counts.
    double margin(const LimitValues& values) const;
    /// Whether it holds.
    bool holds(const LimitValues& values) const;
    /// Whether it speaks of an output (by its name without suffix).
    bool names(std::string_view output) const;

  private:
    friend struct ReadCondition;
    friend class ConditionReader;
    std::shared_ptr<const Node> root_;
    int levels_ = 1; ///< levels to try where an output without suffix stands for both
};

/// A condition, or what is wrong with its text.
struct ReadCondition {
    Condition condition;
    std::string fault; ///< empty where there is a condition
};

ReadCondition readCondition(std::string_view text, std::span<const std::string> variables,
                            const Problem& base);

/// One limit state of a study.
struct LimitState {
    std::string name;
    std::string text;
    Condition condition;
    bool noSolutionFails = true; ///< a wall without a solution has reached the state

    /// Whether a variant has reached it.
    bool reached(std::span<const double> variables, const Solved& solved, UnitSystem units) const;
};

} // namespace korvane::study
