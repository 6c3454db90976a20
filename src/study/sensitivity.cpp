#include "study/sensitivity.h"

#include "study/draws.h"
#include "study/statistics.h"

#include <openturns/Interval.hxx>
#include <openturns/SaltelliSensitivityAlgorithm.hxx>

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

namespace {

/// Rows that are held in memory at most: those of the first points, whose number is told.
constexpr std::size_t MostRows = 1000000;

std::vector<SobolIndex> withIntervals(const OT::Point& values, const OT::Interval& interval) {
    std::vector<SobolIndex> all;
    for (OT::UnsignedInteger i = 0; i < values.getSize(); ++i) {
        all.push_back({values[i], interval.getLowerBound()[i], interval.getUpperBound()[i]});
    }
    return all;
}

/// The blocks of one output, of complete points alone.
std::vector<std::vector<double>> blocksOf(const Store& store, const std::string& output,
                                          std::size_t blocks) {
    std::vector<std::vector<double>> all(blocks);
    std::vector<double> point;
    store.query("SELECT " + quoted(output) + " FROM variants ORDER BY id",
                [&](const std::vector<double>& row) {
                    point.push_back(row[0]);
                    if (point.size() < blocks) {
                        return;
                    }
                    const bool whole = std::none_of(point.begin(), point.end(),
                                                    [](double value) { return std::isnan(value); });
                    if (whole && all.front().size() * blocks < MostRows) {
                        for (std::size_t n = 0; n < blocks; ++n) {
                            all[n].push_back(point[n]);
                        }
                    }
                    point.clear();
                });
    return all;
}

} // namespace

SobolIndices sobolIndices(const std::vector<std::vector<double>>& blocks) {
    const std::size_t dimension = blocks.size() - 2;
    const std::size_t size = blocks.front().size();
    OT::Sample outputs(size * blocks.size(), 1);
    for (std::size_t n = 0; n < blocks.size(); ++n) {
        for (std::size_t k = 0; k < size; ++k) {
            outputs(n * size + k, 0) = blocks[n][k];
        }
    }
    // Only the dimension of the inputs counts.
    const OT::Sample inputs(outputs.getSize(), dimension);
    OT::SaltelliSensitivityAlgorithm algorithm(inputs, outputs, size);
    algorithm.setUseAsymptoticDistribution(true);
    return {withIntervals(algorithm.getAggregatedFirstOrderIndices(),
                          algorithm.getFirstOrderIndicesInterval()),
            withIntervals(algorithm.getAggregatedTotalOrderIndices(),
                          algorithm.getTotalOrderIndicesInterval())};
}

void addSensitivity(std::vector<Statistic>& all, const Study& study, const Store& store) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const Draws draws(study);
    const bool has = haveIntervals(study);
    const auto add = [&](const std::string& output, const std::string& name,
                         const SobolIndex& index) {
        all.push_back({output, name, index.value, has ? index.low : none, has ? index.high : none});
    };
    for (const OutputColumn& output : study.outputs) {
        const auto blocks = blocksOf(store, output.name, draws.dimension() + 2);
        const auto [least, largest] =
            std::minmax_element(blocks.front().begin(), blocks.front().end());
        if (blocks.front().size() < 2 || *least == *largest) {
            continue; // nothing varies
        }
        all.push_back(
            {output.name, "points", static_cast<double>(blocks.front().size()), none, none});
        const SobolIndices indices = sobolIndices(blocks);
        for (std::size_t i = 0; i < draws.dimension(); ++i) {
            const std::string& name = study.variables[draws.variableOf(i)].name;
            add(output.name, "first-order " + name, indices.first[i]);
            add(output.name, "total " + name, indices.total[i]);
        }
    }
}

} // namespace korvane::study
