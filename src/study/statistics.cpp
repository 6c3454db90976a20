#include "study/statistics.h"

#include "study/draws.h"
#include "study/sensitivity.h"

#include <openturns/DistFunc.hxx>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace korvane::study {

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();
/// Half of what an interval leaves out.
constexpr double Tail = 0.025;
struct Quantile {
    double share;
    std::string_view name;
};
constexpr std::array<Quantile, 7> Quantiles{{{0.01, "0.01"},
                                             {0.05, "0.05"},
                                             {0.25, "0.25"},
                                             {0.5, "0.5"},
                                             {0.75, "0.75"},
                                             {0.95, "0.95"},
                                             {0.99, "0.99"}}};

void add(std::vector<Statistic>& all, const std::string& subject, const std::string& name,
         double value, double low = None, double high = None) {
    all.push_back({subject, name, value, low, high});
}

void addOutcomes(std::vector<Statistic>& all, const Store& store) {
    store.queryTexts(
        "SELECT outcome, count(*) FROM variants GROUP BY outcome ORDER BY outcome",
        [&all](const std::string& outcome, double count) { add(all, "outcome", outcome, count); });
}

/// Quantiles by the ranks of the sorted values, between two of them in proportion.
void addQuantiles(std::vector<Statistic>& all, const Store& store, const std::string& output,
                  const std::string& where, double count) {
    const std::string column = quoted(output);
    std::size_t wanted = 0;
    double rank = 0;
    double before = None;
    store.query("SELECT " + column + " FROM variants" + where + " ORDER BY " + column,
                [&](const std::vector<double>& row) {
                    while (wanted < Quantiles.size() &&
                           Quantiles[wanted].share * (count - 1) <= rank) {
                        const double share = Quantiles[wanted].share * (count - 1) - (rank - 1);
                        const double value =
                            rank == 0 || share == 1 ? row[0] : before + share * (row[0] - before);
                        add(all, output, "quantile " + std::string(Quantiles[wanted].name), value);
                        ++wanted;
                    }
                    before = row[0];
                    rank += 1;
                });
}

/// The mean has an interval where the rows are drawn: a grid is all of itself.
void addOutput(std::vector<Statistic>& all, const Store& store, const std::string& output,
               const std::string& drawn, bool isDrawn) {
    const std::string column = quoted(output);
    const std::string where = " WHERE " + column + " IS NOT NULL" + drawn;
    double count = 0;
    double mean = 0;
    double squares = 0; // about the mean (B. P. Welford, 1962)
    double least = std::numeric_limits<double>::infinity();
    double largest = -least;
    store.query("SELECT " + column + " FROM variants" + where, [&](const std::vector<double>& row) {
        count += 1;
        const double away = row[0] - mean;
        mean += away / count;
        squares += away * (row[0] - mean);
        least = std::min(least, row[0]);
        largest = std::max(largest, row[0]);
    });
    add(all, output, "count", count);
    if (count == 0) {
        return;
    }
    const double deviation = count > 1 ? std::sqrt(squares / (count - 1)) : None;
    const double half = count > 1 && isDrawn ? OT::DistFunc::qStudent(count - 1, Tail, true) *
                                                   deviation / std::sqrt(count)
                                             : None;
    add(all, output, "mean", mean, mean - half, mean + half);
    add(all, output, "deviation", deviation);
    add(all, output, "least", least);
    add(all, output, "largest", largest);
    addQuantiles(all, store, output, where, count);
}

void addLimit(std::vector<Statistic>& all, const Store& store, const std::string& limit,
              const std::string& where, bool isDrawn) {
    const std::string column = quoted(limit);
    store.query("SELECT count(*), sum(" + column + ") FROM variants" + where,
                [&](const std::vector<double>& row) {
                    if (row[0] > 0) {
                        add(all, limit, "reached", row[1]);
                    }
                    if (row[0] > 0 && isDrawn) {
                        const auto interval = clopperPearson(row[1], row[0]);
                        add(all, limit, "probability", row[1] / row[0], interval[0], interval[1]);
                    }
                });
}

/// For each value of the variable along which it is asked.
void addFragility(std::vector<Statistic>& all, const Study& study, const Store& store) {
    const std::string along = quoted(study.variables[study.along].name);
    for (const LimitState& limit : study.limits) {
        store.query("SELECT " + along + ", count(*), sum(" + quoted(limit.name) +
                        ") FROM variants GROUP BY " + along + " ORDER BY " + along,
                    [&](const std::vector<double>& row) {
                        const auto interval = clopperPearson(row[2], row[1]);
                        add(all, limit.name, "value", row[0]);
                        add(all, limit.name, "probability", row[2] / row[1], interval[0],
                            interval[1]);
                    });
    }
}

} // namespace

std::array<double, 2> clopperPearson(double hits, double trials) {
    const double low = hits == 0 ? 0 : OT::DistFunc::qBeta(hits, trials - hits + 1, Tail);
    const double high =
        hits == trials ? 1 : OT::DistFunc::qBeta(hits + 1, trials - hits, Tail, true);
    return {low, high};
}

std::vector<Statistic> statisticsOf(const Study& study, const Store& store,
                                    const std::vector<FirstOrder>& found) {
    std::vector<Statistic> all;
    addOutcomes(all, store);
    const bool isDrawn = study.method == Method::Sample || study.method == Method::Sensitivity ||
                         study.method == Method::Reliability;
    // Of a sensitivity the first sample: the others share coordinates with it.
    const std::string first = study.method == Method::Sensitivity
                                  ? "id % " + std::to_string(Draws(study).dimension() + 2) + " = 0"
                                  : "";
    for (const OutputColumn& output : study.outputs) {
        if (!isWeighted(study)) { // those around a design point tell nothing of the wall's
            addOutput(all, store, output.name, first.empty() ? "" : " AND " + first, isDrawn);
        }
    }
    const bool counts =
        study.method != Method::Fragility && study.method != Method::Target &&
        (study.method != Method::Reliability || study.algorithm == Algorithm::MonteCarlo);
    for (const LimitState& limit : study.limits) {
        if (counts) {
            addLimit(all, store, limit.name, first.empty() ? "" : " WHERE " + first, isDrawn);
        }
    }
    if (study.method == Method::Fragility) {
        addFragility(all, study, store);
    } else if (study.method == Method::Sensitivity) {
        addSensitivity(all, study, store);
    } else if (study.method == Method::Reliability) {
        addFirstOrder(all, study, found);
        if (isWeighted(study)) {
            addImportance(all, study, store, found);
        }
    }
    return all;
}

} // namespace korvane::study
