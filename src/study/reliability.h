// The first-order reliability method on the limit states of a study.
#pragma once

#include "study/store.h"

#include <string>
#include <vector>

namespace korvane::study {

/// What the first-order method finds for one limit state (A. M. Hasofer and N. C. Lind, 1974).
struct FirstOrder {
    std::string fault; ///< why there is no design point; empty where there is one
    double beta = 0;   ///< reliability index, below 0 where the median has reached the state
    double probability = 0;
    std::vector<double> designPoint; ///< numbers of the random variables, in the study's units
    std::vector<double> standard;    ///< the same as independent standard normal numbers
    std::vector<double> importance;  ///< shares of beta squared by variable; they add up to 1
    std::uint64_t solutions = 0;
};

/// Works it out by OpenTURNS with a search that needs no derivatives, as depths have kinks. A wall
/// without a solution counts as far inside or outside the state as the median is from it.
FirstOrder firstOrder(const Study& study, const LimitState& limit);

/// Rows for the table of statistics.
void addFirstOrder(std::vector<Statistic>& all, const Study& study);

/// The probability by a sample around the design points, with an interval of 95 % from the
/// deviation of the weights; without one where the state was reached less than 10 times.
void addImportance(std::vector<Statistic>& all, const Study& study, const Store& store);

} // namespace korvane::study
