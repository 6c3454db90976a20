// Plots of a sample's outputs: histogram, cumulative curve, what each variable explains.
#include "study/pictures.h"

#include "study/chart.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

using namespace sheet;

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr double LeastBins = 5;
constexpr double MostBins = 40;
constexpr double Width = 400;
constexpr double Height = 200;

/// How often each of some equal steps between least and largest was met.
struct Bins {
    double low = 0;
    double step = 1;
    double total = 0;
    std::vector<double> counts;

    double edge(std::size_t n) const { return low + step * static_cast<double>(n); }
};

Bins binsOf(const FinishedStudy& finished, const std::string& output) {
    const double least = finished.value(output, "least");
    const double largest = finished.value(output, "largest");
    Bins bins;
    bins.total = finished.value(output, "count");
    const double wanted = std::clamp(std::ceil(std::sqrt(bins.total)), LeastBins, MostBins);
    bins.counts.resize(static_cast<std::size_t>(largest > least ? wanted : 1));
    const bool isPoint = !(largest > least);
    bins.low = isPoint ? least - 0.5 : least;
    bins.step = isPoint ? 1 : (largest - least) / wanted;
    const std::string rows = finished.drawnRows();
    finished.store.query("SELECT " + quoted(output) + " FROM variants" + rows,
                         [&](const std::vector<double>& row) {
                             if (std::isfinite(row[0])) {
                                 const double place = (row[0] - bins.low) / bins.step;
                                 const auto bin = static_cast<std::size_t>(std::max(place, 0.0));
                                 bins.counts[std::min(bin, bins.counts.size() - 1)] += 1;
                             }
                         });
    return bins;
}

void markQuantiles(Chart& chart, const FinishedStudy& finished, std::size_t output) {
    const std::string& name = finished.study.outputs[output].name;
    for (const auto& [quantile, label] :
         {std::pair{"0.05", "5 %"}, {"0.5", "median"}, {"0.95", "95 %"}}) {
        const double at = finished.value(name, std::string("quantile ") + quantile);
        chart.markX(at, std::string(label) + " " + told(at));
    }
}

Picture histogramOf(const FinishedStudy& finished, std::size_t output, const Bins& bins) {
    const OutputColumn& column = finished.study.outputs[output];
    double highest = 0;
    for (const double count : bins.counts) {
        highest = std::max(highest, count / bins.total);
    }
    Axis across =
        axisOver(titleOf(column, finished.study.units), {bins.low, bins.edge(bins.counts.size())});
    Chart chart(across, {"share of the walls", 0, 1.05 * highest}, Width, Height);
    for (std::size_t n = 0; n < bins.counts.size(); ++n) {
        chart.box({bins.edge(n), bins.edge(n + 1), 0, bins.counts[n] / bins.total}, "bar");
    }
    markQuantiles(chart, finished, output);
    return {chart.finish("Histogram of " + column.name), column.name + ", histogram"};
}

Picture cumulativeOf(const FinishedStudy& finished, std::size_t output, const Bins& bins) {
    const OutputColumn& column = finished.study.outputs[output];
    std::vector<SvgPoint> curve{{bins.low, 0}};
    double sum = 0;
    for (std::size_t n = 0; n < bins.counts.size(); ++n) {
        sum += bins.counts[n];
        curve.push_back({bins.edge(n + 1), sum / bins.total});
    }
    Chart chart(
        axisOver(titleOf(column, finished.study.units), {bins.low, bins.edge(bins.counts.size())}),
        {"share of the walls below", 0, 1.02}, Width, Height);
    chart.curve(curve);
    markQuantiles(chart, finished, output);
    return {chart.finish("Cumulative curve of " + column.name), column.name + ", cumulative curve"};
}

void largestFirst(std::vector<Bar>& bars) {
    std::stable_sort(bars.begin(), bars.end(),
                     [](const Bar& a, const Bar& b) { return a.value > b.value; });
}

/// Indices of one kind, "first-order" or "total", of an output.
std::vector<Bar> indexBars(const FinishedStudy& finished, const std::string& output,
                           const std::string& kind) {
    std::vector<Bar> bars;
    for (const std::size_t variable : finished.random()) {
        std::string name = kind;
        name.append(" ").append(finished.study.variables[variable].name);
        if (const Statistic* index = finished.find(output, name)) {
            bars.push_back(
                {finished.study.variables[variable].name, index->value, index->low, index->high});
        }
    }
    largestFirst(bars);
    return bars;
}

void addIndexBars(PictureGroup& group, const FinishedStudy& finished, const std::string& output,
                  const std::string& kind, const std::string& meaning) {
    const std::vector<Bar> bars = indexBars(finished, output, kind);
    if (!bars.empty()) {
        const std::string title = kind + " index of " + output;
        group.pictures.push_back({barChart(bars, title, title), title + ": " + meaning});
    }
}

PictureGroup sobolBars(const FinishedStudy& finished) {
    PictureGroup group{"Sobol' indices", {}};
    for (const std::size_t output : finished.plotted()) {
        const std::string& name = finished.study.outputs[output].name;
        addIndexBars(group, finished, name, "first-order",
                     "what would go of its variance if this one were known.");
        addIndexBars(group, finished, name, "total",
                     "what would remain of its variance if all others were known.");
    }
    return group;
}

PictureGroup factorBars(const FinishedStudy& finished) {
    PictureGroup group{"Importance factors", {}};
    for (const LimitState& limit : finished.study.limits) {
        std::vector<Bar> bars;
        for (const std::size_t variable : finished.random()) {
            const std::string& about = finished.study.variables[variable].name;
            const double factor = finished.value(limit.name, "importance " + about);
            if (std::isfinite(factor)) {
                bars.push_back({about, factor, None, None});
            }
        }
        largestFirst(bars);
        if (!bars.empty()) {
            const std::string title = "importance for " + limit.name;
            group.pictures.push_back(
                {barChart(bars, title, title),
                 "Importance factors of " + limit.name +
                     (finished.study.correlations.empty()
                          ? ": shares of β², which add up to 1."
                          : ": squares of the variables' own normal numbers at the design point, "
                            "as shares of their sum.")});
        }
    }
    return group;
}

PictureGroup shareBars(const FinishedStudy& finished) {
    PictureGroup group{"What moves the outputs", {}};
    const std::vector<std::size_t> random = finished.random();
    for (const std::size_t output : finished.plotted()) {
        const std::vector<double> shares = sharesOf(finished, finished.study.outputs[output].name);
        std::vector<Bar> bars;
        for (std::size_t i = 0; i < random.size(); ++i) {
            if (std::isfinite(shares[i])) {
                bars.push_back({finished.study.variables[random[i]].name, shares[i], None, None});
            }
        }
        largestFirst(bars);
        if (!bars.empty()) {
            const std::string title =
                "squared correlation with " + finished.study.outputs[output].name;
            group.pictures.push_back({barChart(bars, title, title),
                                      "Share of the variance of " +
                                          finished.study.outputs[output].name +
                                          " that a straight line in one variable explains."});
        }
    }
    return group;
}

} // namespace

void addDistributions(std::vector<PictureGroup>& groups, const FinishedStudy& finished) {
    PictureGroup group{"Distribution of the outputs", {}};
    for (const std::size_t output : finished.plotted()) {
        if (finished.value(finished.study.outputs[output].name, "count") > 0) {
            const Bins bins = binsOf(finished, finished.study.outputs[output].name);
            group.pictures.push_back(histogramOf(finished, output, bins));
            group.pictures.push_back(cumulativeOf(finished, output, bins));
        }
    }
    groups.push_back(std::move(group));
}

std::vector<double> sharesOf(const FinishedStudy& finished, const std::string& column) {
    const std::vector<std::size_t> random = finished.random();
    std::string columns = quoted(column);
    for (const std::size_t variable : random) {
        columns += ", " + quoted(finished.study.variables[variable].name);
    }
    // Means and sums of products about them, row by row (B. P. Welford, 1962).
    const std::size_t size = random.size() + 1;
    std::vector<double> means(size, 0);
    std::vector<double> squares(size, 0);
    std::vector<double> products(size, 0); // with the output
    double count = 0;
    finished.store.query("SELECT " + columns + " FROM variants" + finished.drawnRows(),
                         [&](const std::vector<double>& row) {
                             if (!std::isfinite(row[0])) {
                                 return;
                             }
                             count += 1;
                             const double away = row[0] - means[0];
                             for (std::size_t n = 0; n < size; ++n) {
                                 const double own = row[n] - means[n];
                                 means[n] += own / count;
                                 squares[n] += own * (row[n] - means[n]);
                                 products[n] += away * (row[n] - means[n]);
                             }
                         });
    std::vector<double> shares;
    for (std::size_t n = 1; n < size; ++n) {
        shares.push_back(products[n] * products[n] / (squares[n] * squares[0]));
    }
    return shares;
}

void addImportanceBars(std::vector<PictureGroup>& groups, const FinishedStudy& finished) {
    switch (finished.study.method) {
    case Method::Sensitivity:
        groups.push_back(sobolBars(finished));
        break;
    case Method::Reliability:
        groups.push_back(factorBars(finished));
        break;
    default:
        groups.push_back(shareBars(finished));
    }
}

} // namespace korvane::study
