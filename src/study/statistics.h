// What the rows of a study come to.
#pragma once

#include "study/reliability.h"
#include "study/store.h"
#include "study/tally.h"

#include <array>
#include <vector>

namespace korvane::study {

/// Of all rows: how many ended in which outcome; of each output count, mean with its interval of
/// 95 %, deviation, least, largest and quantiles; of each limit state how often it was reached
/// with its interval of 95 % (quantiles have one as well, a Sobol' sequence has none). Of a
/// fragility the same for each value, of a sensitivity the indices. A reliability has its first
/// orders found before. Where the tally of the rows has not kept all values the database sorts
/// them, slower and on disk.
std::vector<Statistic> statisticsOf(const Study& study, const Store& store, Tally tally,
                                    const std::vector<FirstOrder>& found);

/// Whether intervals of 95 % can be told of a sample: they are those of independent draws, and
/// upper bounds of a Latin hypercube, whose strata make errors smaller (A. B. Owen, 1997). Of one
/// Sobol' sequence nothing can be said.
bool haveIntervals(const Study& study);

/// The interval of 95 % of a probability that was met `hits` times in `trials` (C. J. Clopper and
/// E. S. Pearson, 1934). Without a hit it begins at 0, without a miss it ends at 1.
std::array<double, 2> clopperPearson(double hits, double trials);

} // namespace korvane::study
