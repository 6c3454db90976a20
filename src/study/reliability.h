// The first-order reliability method on the limit states of a study.
#pragma once

#include "study/border_survey.h"
#include "study/store.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane::study {

/// Walls that one search solves at the most.
inline constexpr int MostSearchSolutions = 20000;

/// The name of a statistic: walls beyond the design point have no solution.
inline constexpr const char* EndsUnsolved = "beyond the design point walls have no solution";

/// The name of another one: rays that meet the state where the sample hardly comes.
inline constexpr const char* HardlySeenRays = "directions that the sample hardly sees";

/// What the first-order method finds for one limit state (A. M. Hasofer and N. C. Lind, 1974).
struct FirstOrder {
    std::string fault; ///< why there is no design point; empty where there is one
    double beta = 0;   ///< reliability index, below 0 where the median has reached the state
    double probability = 0;
    std::vector<double> designPoint; ///< numbers of the random variables, in the study's units
    std::vector<double> scores;      ///< their own normal numbers, correlated as they are
    /// Shares of the variables by the squares of their own normal numbers at the design point, so
    /// that correlated variables have theirs in any order; they add up to 1. None where beta is
    /// below what a search tells (1E-6).
    std::vector<double> importance;
    /// Points of the border, nearest first: the design point and those that a sample around them
    /// needs to see the other parts of the state that count beside it.
    std::vector<Normals> points;
    bool endsUnsolved = false;  ///< walls beyond the design point have no solution
    std::size_t missed = 0;     ///< alternatives of the state without a point
    std::size_t hardlySeen = 0; ///< rays that meet the state where such a sample hardly comes
    bool isTooLong = false;     ///< the state has too many alternatives to be searched
    std::uint64_t solutions = 0;
};

/// Works it out by OpenTURNS with a search that needs no derivatives, as depths have kinks, for
/// each alternative of the state alone; of a state that the median has reached, for its opposite.
/// Margins end where walls have no solution: that border, and others that those searches have not
/// found, are looked for along rays by whether the state is reached.
/// Where `stop` tells so the search ends with a fault.
FirstOrder firstOrder(const Study& study, const LimitState& limit,
                      const std::function<bool()>& stop = {});

/// Whether the state, or its opposite where the median has reached it, has more alternatives than
/// are searched, so that it gets no design point.
bool hasTooManyAlternatives(const Study& study, const LimitState& limit);

/// Of all limit states.
std::vector<FirstOrder> firstOrders(const Study& study, const std::function<bool()>& stop = {});

/// Rows for the table of statistics; `orders` belong to the limit states of the study.
void addFirstOrder(std::vector<Statistic>& all, const Study& study,
                   const std::vector<FirstOrder>& orders);

/// A number with the ends of its interval of 95 %, NaN where it has none.
struct Estimate {
    double value = 0;
    double low = 0;
    double high = 0;
};

/// What rows drawn around points say of a limit state.
struct WeightedHits {
    /// Hits that carry the variance, by the powers of their weights (sum of squares, squared, over
    /// sum of fourth powers): of fewer the deviation itself is not known.
    static constexpr double LeastCarrying = 10;

    bool hasInterval = true;
    double rows = 0;
    double weights = 0; ///< of the hits, and their powers
    double squares = 0;
    double fourths = 0;

    void add(double hit, double weight);
    /// The probability, or its complement where hits are those of the `opposite`.
    Estimate estimate(bool opposite) const;
};

/// The probability by a sample around the design points, with an interval of 95 % from the
/// deviation of the weights; without one where fewer than `LeastCarrying` hits carry it, where rays
/// meet a border that the sample hardly sees, and of a Sobol' sequence. Where the median has
/// reached the state, that of its opposite is worked out.
void addImportance(std::vector<Statistic>& all, const Study& study, const Store& store,
                   const std::vector<FirstOrder>& orders);

} // namespace korvane::study
