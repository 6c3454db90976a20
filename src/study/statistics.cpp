#include "study/statistics.h"

#include "study/draws.h"
#include "study/sensitivity.h"

#include "runtime/number_format.h"

#include <openturns/DistFunc.hxx>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>

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

/// An output, and what is told of it.
struct Subject {
    std::string output;
    std::string at;            ///< behind each name: " at 3", of a value of a fragility
    bool hasIntervals = false; ///< the rows are drawn
    bool hasMoments = true;    ///< the rows stand for more than themselves
};

/// Ranks from 0 of the sorted values between which a quantile lies with 95 %, by the binomial
/// number of the values below it in its normal form; the first and the last where it is further
/// out than these.
std::array<double, 2> quantileRanks(double share, double count) {
    const double half = OT::DistFunc::qNormal(Tail, true) * std::sqrt(count * share * (1 - share));
    return {std::max(0.0, std::floor(count * share - half) - 1),
            std::min(count - 1, std::ceil(count * share + half))};
}

void addOutcomes(std::vector<Statistic>& all, const Store& store) {
    store.queryTexts(
        "SELECT outcome, count(*) FROM variants GROUP BY outcome ORDER BY outcome",
        [&all](const std::string& outcome, double count) { add(all, "outcome", outcome, count); });
}

/// Values by their ranks, from 0 of the least.
using Ranked = std::map<double, double>;

/// Those that quantiles need, without values.
Ranked neededRanks(double count) {
    Ranked ranks;
    for (const Quantile& quantile : Quantiles) {
        const double rank = quantile.share * (count - 1);
        const auto ends = quantileRanks(quantile.share, count);
        for (const double needed : {std::floor(rank), std::ceil(rank), ends[0], ends[1]}) {
            ranks[needed] = None;
        }
    }
    return ranks;
}

/// All values of a column: those kept, or sorted by the database where they are more than these.
Ranked rankedValues(const Store& store, const std::string& column, const std::string& where,
                    double count, std::vector<double>& kept) {
    Ranked ranked = neededRanks(count);
    if (static_cast<double>(kept.size()) == count) {
        std::sort(kept.begin(), kept.end());
        for (auto& [rank, value] : ranked) {
            value = kept[static_cast<std::size_t>(rank)];
        }
        return ranked;
    }
    double rank = 0;
    store.query("SELECT " + column + " FROM variants" + where + " ORDER BY " + column,
                [&](const std::vector<double>& row) {
                    if (const auto needed = ranked.find(rank); needed != ranked.end()) {
                        needed->second = row[0];
                    }
                    rank += 1;
                });
    return ranked;
}

/// Quantiles by the ranks of the sorted values, between two of them in proportion; with the
/// intervals of their ranks where the rows are drawn.
void addQuantiles(std::vector<Statistic>& all, const Subject& subject, double count,
                  Ranked values) {
    for (const Quantile& quantile : Quantiles) {
        const double place = quantile.share * (count - 1);
        const double below = values[std::floor(place)];
        const double value =
            below + (place - std::floor(place)) * (values[std::ceil(place)] - below);
        const auto ends = quantileRanks(quantile.share, count);
        const bool has = subject.hasIntervals;
        add(all, subject.output, "quantile " + std::string(quantile.name) + subject.at, value,
            has ? values[ends[0]] : None, has ? values[ends[1]] : None);
    }
}

/// The mean has an interval where the rows are drawn: a grid is all of itself.
void addOutput(std::vector<Statistic>& all, const Store& store, const Subject& subject,
               const std::string& drawn, std::size_t mostSorted) {
    const std::string& output = subject.output;
    const std::string column = quoted(output);
    const std::string where = " WHERE " + column + " IS NOT NULL" + drawn;
    double count = 0;
    double mean = 0;
    double squares = 0; // about the mean (B. P. Welford, 1962)
    double least = std::numeric_limits<double>::infinity();
    double largest = -least;
    std::vector<double> kept;
    store.query("SELECT " + column + " FROM variants" + where, [&](const std::vector<double>& row) {
        count += 1;
        const double away = row[0] - mean;
        mean += away / count;
        squares += away * (row[0] - mean);
        least = std::min(least, row[0]);
        largest = std::max(largest, row[0]);
        if (kept.size() < mostSorted) {
            kept.push_back(row[0]);
        }
    });
    add(all, output, "count" + subject.at, count);
    if (count == 0) {
        return;
    }
    const double deviation = count > 1 ? std::sqrt(squares / (count - 1)) : None;
    const double half =
        count > 1 && subject.hasIntervals
            ? OT::DistFunc::qStudent(count - 1, Tail, true) * deviation / std::sqrt(count)
            : None;
    add(all, output, "least" + subject.at, least);
    add(all, output, "largest" + subject.at, largest);
    if (!subject.hasMoments) {
        return;
    }
    add(all, output, "mean" + subject.at, mean, mean - half, mean + half);
    add(all, output, "deviation" + subject.at, deviation);
    addQuantiles(all, subject, count, rankedValues(store, column, where, count, kept));
}

void addLimit(std::vector<Statistic>& all, const Store& store, const std::string& limit,
              const std::string& where, bool isDrawn, bool hasIntervals) {
    const std::string column = quoted(limit);
    store.query("SELECT count(*), sum(" + column + ") FROM variants" + where,
                [&](const std::vector<double>& row) {
                    if (row[0] > 0) {
                        add(all, limit, "reached", row[1]);
                    }
                    if (row[0] > 0 && isDrawn) {
                        const auto interval =
                            hasIntervals ? clopperPearson(row[1], row[0]) : std::array{None, None};
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
                        const auto interval = haveIntervals(study) ? clopperPearson(row[2], row[1])
                                                                   : std::array{None, None};
                        add(all, limit.name, "value", row[0]);
                        add(all, limit.name, "probability", row[2] / row[1], interval[0],
                            interval[1]);
                    });
    }
}

/// Of a fragility for each value by itself, of a tornado without moments, which its rows stand not
/// for; none of rows around a design point and of a search, which hang on how it went.
void addOutputs(std::vector<Statistic>& all, const Study& study, const Store& store,
                const std::string& drawn, bool isDrawn, std::size_t mostSorted) {
    const bool isSearch = study.method == Method::Target || (study.method == Method::Reliability &&
                                                             study.algorithm == Algorithm::Form);
    if (isWeighted(study) || isSearch) {
        return;
    }
    for (const OutputColumn& output : study.outputs) {
        if (study.method != Method::Fragility) {
            addOutput(all, store,
                      {output.name, "", isDrawn && haveIntervals(study),
                       study.method != Method::OneAtATime},
                      drawn, mostSorted);
            continue;
        }
        const Variable& along = study.variables[study.along];
        for (const double value : along.values) {
            std::string digits;
            appendShortest(digits, value);
            addOutput(all, store, {output.name, " at " + digits, haveIntervals(study)},
                      " AND " + quoted(along.name) + " = " + digits, mostSorted);
        }
    }
}

} // namespace

bool haveIntervals(const Study& study) {
    return study.sample.design != Design::Sobol;
}

std::array<double, 2> clopperPearson(double hits, double trials) {
    const double low = hits == 0 ? 0 : OT::DistFunc::qBeta(hits, trials - hits + 1, Tail);
    const double high =
        hits == trials ? 1 : OT::DistFunc::qBeta(hits + 1, trials - hits, Tail, true);
    return {low, high};
}

std::vector<Statistic> statisticsOf(const Study& study, const Store& store,
                                    const std::vector<FirstOrder>& found, std::size_t mostSorted) {
    std::vector<Statistic> all;
    addOutcomes(all, store);
    const bool isDrawn = study.method == Method::Sample || study.method == Method::Sensitivity ||
                         study.method == Method::Reliability;
    // Of a sensitivity the first sample: the others share coordinates with it.
    const std::string first = study.method == Method::Sensitivity
                                  ? "id % " + std::to_string(Draws(study).dimension() + 2) + " = 0"
                                  : "";
    addOutputs(all, study, store, first.empty() ? "" : " AND " + first, isDrawn, mostSorted);
    const bool counts =
        study.method != Method::Fragility && study.method != Method::Target &&
        (study.method != Method::Reliability || study.algorithm == Algorithm::MonteCarlo);
    for (const LimitState& limit : study.limits) {
        if (counts) {
            addLimit(all, store, limit.name, first.empty() ? "" : " WHERE " + first, isDrawn,
                     haveIntervals(study));
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
