// What statistics need of the rows, counted while rows come.
#pragma once

#include "study/store.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace korvane::study {

/// Of the values of an output.
struct OutputTally {
    double count = 0;
    double mean = 0;
    double squares = 0; ///< about the mean (B. P. Welford, 1962)
    double least = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();
    std::vector<double> kept; ///< all of them, in any order; none where there are more
                              ///< than may be kept

    void add(double value, std::size_t mostKept);
};

/// How many rows there are, and how many reach a limit state.
struct LimitTally {
    double count = 0;
    double reached = 0;
};

/// Rows that are told of together: of a fragility those of one value.
struct GroupTally {
    std::vector<OutputTally> outputs; ///< by the outputs of the study
    std::vector<LimitTally> limits;   ///< by its limit states
};

/// Rows must come in their order, for the same digits.
class Tally {
  public:
    static constexpr std::size_t MostKept = 8'000'000;

    /// Keeps at most `mostKept` values, of all outputs together.
    explicit Tally(const Study& study, std::size_t mostKept = MostKept);

    void add(const Row& row);
    /// All rows of a file.
    void addAll(const Store& store);

    std::uint64_t rows() const { return rows_; }
    const std::map<std::string, double, std::less<>>& outcomes() const { return outcomes_; }
    /// By the values of a fragility in the order of the study; one of any other study.
    std::vector<GroupTally>& groups() { return groups_; }
    const std::vector<GroupTally>& groups() const { return groups_; }
    /// What a query needs behind WHERE for the rows of a group.
    std::string condition(std::size_t group) const;

  private:
    GroupTally* groupOf(std::uint64_t id);
    void addNumbers(const Row& row);

    const Study* study_;
    std::size_t mostKept_ = 0; ///< of one output of one group
    std::uint64_t every_ = 1;  ///< of a sensitivity the first sample: others share coordinates
    std::uint64_t rows_ = 0;
    std::map<std::string, double, std::less<>> outcomes_;
    std::vector<GroupTally> groups_;
};

} // namespace korvane::study
