// Sobol' indices of the outputs of a study.
#pragma once

#include "study/store.h"

#include <vector>

namespace korvane::study {

/// An index with its interval of 95 %, which is that of independent draws.
struct SobolIndex {
    double value = 0;
    double low = 0;
    double high = 0;
};
struct SobolIndices {
    std::vector<SobolIndex> first; ///< by variable
    std::vector<SobolIndex> total;
};

/// Indices by OpenTURNS (estimators of A. Saltelli, 2002). `blocks` are the outputs at the same
/// points: first sample, second sample, then the first with one coordinate of the second after the
/// other.
SobolIndices sobolIndices(const std::vector<std::vector<double>>& blocks);

/// Indices of every output; points at which a wall has no solution are left out with their blocks.
/// Without intervals where the sample has none to tell.
void addSensitivity(std::vector<Statistic>& all, const Study& study, const Store& store);

} // namespace korvane::study
