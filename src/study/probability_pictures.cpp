// Plots of probabilities: how they settle with the number of variants, and fragility curves.
#include "study/pictures.h"

#include "study/chart.h"
#include "study/reliability.h"
#include "study/statistics.h"

#include <algorithm>
#include <cmath>

namespace korvane::study {

using namespace sheet;

namespace {

constexpr std::uint64_t Stops = 120; ///< points of a curve of convergence
constexpr double FirstShown = 0.02;  ///< share of the variants before which intervals say little

/// Of rows that all count 1.
Estimate plainShare(const WeightedHits& hits) {
    const auto interval = clopperPearson(hits.weights, hits.rows);
    return {hits.weights / hits.rows, interval[0], interval[1]};
}

Picture convergenceOf(const FinishedStudy& finished, const LimitState& limit) {
    const bool weighted = isWeighted(finished.study);
    // As in the statistics: where the median has reached the state, its opposite is estimated.
    const bool opposite = weighted && finished.value(limit.name, "beta") < 0;
    const std::uint64_t every = std::max<std::uint64_t>(1, finished.rows / Stops);
    WeightedHits hits{.hasInterval = haveIntervals(finished.study) &&
                                     finished.find(limit.name, HardlySeenRays) == nullptr};
    std::vector<SvgPoint> values;
    std::vector<SvgPoint> lows;
    std::vector<SvgPoint> highs;
    finished.store.query(
        "SELECT " + quoted(limit.name) + (weighted ? ", weight" : ", 1.0") +
            " FROM variants ORDER BY id",
        [&](const std::vector<double>& row) {
            hits.add(opposite ? 1 - row[0] : row[0], row[1]);
            const auto count = static_cast<std::uint64_t>(hits.rows);
            const bool isStop = count % every == 0 || count == finished.rows;
            if (!isStop || hits.rows < FirstShown * static_cast<double>(finished.rows)) {
                return;
            }
            const Estimate estimate = weighted ? hits.estimate(opposite) : plainShare(hits);
            values.push_back({hits.rows, estimate.value});
            if (std::isfinite(estimate.low) && hits.hasInterval) {
                lows.push_back({hits.rows, estimate.low});
                highs.push_back({hits.rows, estimate.high});
            }
        });
    std::vector<double> heights{0};
    for (const auto* points : {&values, &highs}) {
        for (const SvgPoint& point : *points) {
            heights.push_back(point.y);
        }
    }
    Axis up = axisOver("probability of " + limit.name, heights);
    up.low = 0;
    Chart chart({"variants", 0, static_cast<double>(finished.rows)}, up, 560, 220);
    chart.band(lows, highs);
    chart.curve(values);
    const double first = finished.value(limit.name, "probability of first order");
    chart.markY(first, "first order", "mark faint");
    return {chart.finish("Probability of " + limit.name + " by the number of variants"),
            "Probability of " + limit.name + " as the variants come in" +
                (lows.empty() ? "." : ", with its interval of 95 %.")};
}

Picture fragilityOf(const FinishedStudy& finished, const LimitState& limit) {
    const Study& study = finished.study;
    const Variable& along = study.variables[study.along];
    std::vector<SvgPoint> values;
    std::vector<SvgPoint> lows;
    std::vector<SvgPoint> highs;
    std::vector<double> numbers;
    for (const FragilityPoint& point : finished.fragility(limit.name)) {
        numbers.push_back(point.value);
        values.push_back({point.value, point.probability});
        if (haveIntervals(study)) {
            lows.push_back({point.value, point.low});
            highs.push_back({point.value, point.high});
        }
    }
    Chart chart(axisOver(titleOf(along, study.units), numbers),
                {"probability of " + limit.name, 0, 1});
    chart.band(lows, highs);
    chart.curve(values);
    for (const SvgPoint& at : values) {
        chart.circle(at, "point");
    }
    return {chart.finish("Fragility curve of " + limit.name),
            "Probability of " + limit.name + " (" + limit.text + ") along " + along.name +
                (haveIntervals(study) ? ", with its interval of 95 % at each value." : ".")};
}

} // namespace

void addConvergence(std::vector<PictureGroup>& groups, const FinishedStudy& finished) {
    PictureGroup group{"Convergence", {}};
    for (const LimitState& limit : finished.study.limits) {
        if (finished.rows > 1) {
            group.pictures.push_back(convergenceOf(finished, limit));
        }
    }
    groups.push_back(std::move(group));
}

void addFragility(std::vector<PictureGroup>& groups, const FinishedStudy& finished) {
    PictureGroup group{"Fragility", {}};
    for (const LimitState& limit : finished.study.limits) {
        group.pictures.push_back(fragilityOf(finished, limit));
    }
    groups.push_back(std::move(group));
}

std::vector<PictureGroup> picturesOf(const FinishedStudy& finished) {
    std::vector<PictureGroup> groups;
    switch (finished.study.method) {
    case Method::OneAtATime:
        addTornados(groups, finished);
        break;
    case Method::Grid:
        addGrid(groups, finished);
        break;
    case Method::Sample:
        addDistributions(groups, finished);
        addImportanceBars(groups, finished);
        addScatter(groups, finished);
        addConvergence(groups, finished);
        break;
    case Method::Sensitivity:
        addImportanceBars(groups, finished);
        addDistributions(groups, finished);
        break;
    case Method::Reliability:
        addImportanceBars(groups, finished);
        addScatter(groups, finished);
        addConvergence(groups, finished);
        if (!isWeighted(finished.study) && finished.rows > 0) {
            addDistributions(groups, finished);
        }
        break;
    case Method::Target:
        addSearch(groups, finished);
        break;
    case Method::Fragility:
        addFragility(groups, finished);
        break;
    }
    std::erase_if(groups, [](const PictureGroup& group) { return group.pictures.empty(); });
    return groups;
}

} // namespace korvane::study
