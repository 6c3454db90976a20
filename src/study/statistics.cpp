#include "study/statistics.h"

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

/// Puts the values of the ranks where they belong in the sorted order, those between them nowhere
/// in particular: cheaper than the whole order.
template <class Rank>
void placeRanks(std::vector<double>& values, std::size_t from, std::size_t to, Rank first,
                Rank end) {
    if (first == end) {
        return;
    }
    const Rank middle = first + (end - first) / 2;
    const auto at = [&values](std::size_t n) {
        return values.begin() + static_cast<std::ptrdiff_t>(n);
    };
    std::nth_element(at(from), at(*middle), at(to));
    placeRanks(values, from, *middle, first, middle);
    placeRanks(values, *middle + 1, to, middle + 1, end);
}

/// All values of an output: those kept, or sorted by the database where there are more.
Ranked rankedValues(const Store& store, const std::string& column, const std::string& condition,
                    OutputTally& tally) {
    Ranked ranked = neededRanks(tally.count);
    if (static_cast<double>(tally.kept.size()) == tally.count) {
        std::vector<std::size_t> ranks;
        for (const auto& [rank, value] : ranked) {
            ranks.push_back(static_cast<std::size_t>(rank));
        }
        std::vector<double>& values = tally.kept;
        placeRanks(values, 0, values.size(), ranks.begin(), ranks.end());
        for (auto& [rank, value] : ranked) {
            value = values[static_cast<std::size_t>(rank)];
        }
        return ranked;
    }
    double rank = 0;
    store.query("SELECT " + column + " FROM variants WHERE " + column + " IS NOT NULL AND " +
                    condition + " ORDER BY " + column,
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
               OutputTally& tally, const std::string& condition) {
    const auto& [output, at, hasIntervals, hasMoments] = subject;
    const double count = tally.count;
    add(all, output, "count" + at, count);
    if (count == 0) {
        return;
    }
    add(all, output, "least" + at, tally.least);
    add(all, output, "largest" + at, tally.largest);
    if (!hasMoments) {
        return;
    }
    const double deviation = count > 1 ? std::sqrt(tally.squares / (count - 1)) : None;
    const double half = count > 1 && hasIntervals ? OT::DistFunc::qStudent(count - 1, Tail, true) *
                                                        deviation / std::sqrt(count)
                                                  : None;
    add(all, output, "mean" + at, tally.mean, tally.mean - half, tally.mean + half);
    add(all, output, "deviation" + at, deviation);
    addQuantiles(all, subject, count, rankedValues(store, quoted(output), condition, tally));
}

void addProbability(std::vector<Statistic>& all, const Study& study, const std::string& limit,
                    const LimitTally& tally) {
    const auto interval =
        haveIntervals(study) ? clopperPearson(tally.reached, tally.count) : std::array{None, None};
    add(all, limit, "probability", tally.reached / tally.count, interval[0], interval[1]);
}

/// For each value of the variable along which it is asked, by size.
void addFragility(std::vector<Statistic>& all, const Study& study, const Tally& tally) {
    std::map<double, std::size_t> groups;
    for (const double value : study.variables[study.along].values) {
        groups.emplace(value, groups.size());
    }
    for (std::size_t n = 0; n < study.limits.size(); ++n) {
        for (const auto& [value, group] : groups) {
            add(all, study.limits[n].name, "value", value);
            addProbability(all, study, study.limits[n].name, tally.groups()[group].limits[n]);
        }
    }
}

/// Of a fragility for each value by itself, of a tornado without moments, which its rows stand not
/// for; none of rows around a design point and of a search, which hang on how it went.
void addOutputs(std::vector<Statistic>& all, const Study& study, const Store& store, Tally& tally,
                bool isDrawn) {
    const bool isSearch = study.method == Method::Target || (study.method == Method::Reliability &&
                                                             study.algorithm == Algorithm::Form);
    if (isWeighted(study) || isSearch) {
        return;
    }
    const bool isFragility = study.method == Method::Fragility;
    for (std::size_t n = 0; n < study.outputs.size(); ++n) {
        for (std::size_t group = 0; group < tally.groups().size(); ++group) {
            std::string at;
            if (isFragility) {
                at = " at ";
                appendShortest(at, study.variables[study.along].values[group]);
            }
            const Subject subject{.output = study.outputs[n].name,
                                  .at = at,
                                  .hasIntervals = (isDrawn || isFragility) && haveIntervals(study),
                                  .hasMoments = study.method != Method::OneAtATime};
            addOutput(all, store, subject, tally.groups()[group].outputs[n],
                      tally.condition(group));
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

std::vector<Statistic> statisticsOf(const Study& study, const Store& store, Tally tally,
                                    const std::vector<FirstOrder>& found) {
    std::vector<Statistic> all;
    for (const auto& [outcome, count] : tally.outcomes()) {
        add(all, "outcome", outcome, count);
    }
    const bool isDrawn = study.method == Method::Sample || study.method == Method::Sensitivity ||
                         study.method == Method::Reliability;
    addOutputs(all, study, store, tally, isDrawn);
    const bool counts =
        study.method != Method::Fragility && study.method != Method::Target &&
        (study.method != Method::Reliability || study.algorithm == Algorithm::MonteCarlo);
    for (std::size_t n = 0; counts && n < study.limits.size(); ++n) {
        const LimitTally& limit = tally.groups().front().limits[n];
        if (limit.count == 0) {
            continue;
        }
        add(all, study.limits[n].name, "reached", limit.reached);
        if (isDrawn) {
            addProbability(all, study, study.limits[n].name, limit);
        }
    }
    if (study.method == Method::Fragility) {
        addFragility(all, study, tally);
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
