// The variants of a study, each a function of its index.
#pragma once

#include "study/draws.h"

#include <cstdint>
#include <vector>

namespace korvane::study {

/// In place of a number: the variable leaves the base as it is.
double unchanged();
bool isUnchanged(double number);

/// Low and high of a variable alone: its least and largest value, of a distribution the quantiles
/// of 5 and 95 %.
std::array<double, 2> endsOf(const Variable& variable);

/// A share of the indices: `from` to the one before `to`.
struct Share {
    std::uint64_t from = 0;
    std::uint64_t to = 0;
};
/// Part k of n, from 1.
Share shareOf(std::uint64_t size, std::uint64_t part, std::uint64_t parts);

/// The ratio of the density of independent standard normal numbers to that of a sample around
/// centers (and the origin, for a tenth of it), at a point.
double weightAround(const std::vector<std::vector<double>>& centers,
                    const std::vector<double>& normals);

/// Which numbers the variables have in each variant. Copies serve other threads.
class Plan {
  public:
    explicit Plan(const Study& study);

    /// Variants; 0 where each hangs on those before it (target, the first-order method alone).
    std::uint64_t size() const { return size_; }
    /// Numbers of all variables of variant `index` (from 0).
    void numbers(std::uint64_t index, std::vector<double>& numbers);

    /// A sample is drawn around these points of standard normal numbers from now on, at random and
    /// as often around each; a tenth of it around their origin, so that no weight is above 10.
    void drawAround(std::vector<std::vector<double>> centers) { centers_ = std::move(centers); }
    /// How much the variant of the last call of `numbers` counts in a sample drawn around points:
    /// the ratio of the density of the distributions to that of the sample (of all its points, so
    /// that every limit state may use every variant).
    double weight() const { return weight_; }

  private:
    void gridNumbers(std::uint64_t index, std::vector<double>& numbers) const;
    void oneAtATimeNumbers(std::uint64_t index, std::vector<double>& numbers) const;
    void drawnNumbers(std::uint64_t point, std::uint64_t block, std::vector<double>& numbers);
    double coordinate(std::uint64_t point, std::size_t coordinate) const;
    void moveToCenter(std::uint64_t point);

    const Study* study_;
    Draws draws_;
    std::uint64_t size_ = 0;
    std::vector<std::array<double, 2>> ends_; ///< of each variable, one at a time
    std::vector<std::vector<double>> centers_;
    double weight_ = 1;
    std::vector<double> uniforms_;
    std::vector<double> drawn_;
};

} // namespace korvane::study
