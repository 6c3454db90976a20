// Limit states: conditions on outputs and variables of a variant, such as
// "penetration > 20 and maxMoment > capacity".
#pragma once

#include "survey/outputs.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::study {

/// What a condition is held against.
struct LimitValues {
    std::span<const double> variables; ///< in the units of the study
    const Problem& problem;
    const Results* results = nullptr; ///< null where the wall has no solution
    const Results* design = nullptr;  ///< of the wall as a design at factor 1, where it is asked
    UnitSystem units;
};

/// A condition as it was read. `and` binds before `or`; brackets group conditions; the sides of a
/// comparison are sums and products of numbers, variables and outputs, and abs(...) of them:
/// moments and shears have signs.
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
    /// The condition, or its opposite, as alternatives of which one is enough, each a list of
    /// comparisons that hold together; levels that are tried in turn are alternatives as well.
    /// Empty where there are more than `MostAlternatives`.
    std::vector<std::vector<Condition>> alternatives(bool opposite) const;
    static constexpr std::size_t MostAlternatives = 64;
    /// Whether it speaks of an output (by its name without suffix).
    bool names(std::string_view output) const;
    /// Comparisons of the factor of safety with 1 become those of the bottom of the design at
    /// factor 1 with that of the wall. Others stay as they are.
    void askDesign();
    bool asksDesign() const;
    /// Whether there are the results that it speaks of.
    bool isKnown(const LimitValues& values) const;

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
    int line = 0;                ///< of the state, in the study file

    /// Whether a variant has reached it.
    bool reached(const LimitValues& values) const;
};

} // namespace korvane::study
