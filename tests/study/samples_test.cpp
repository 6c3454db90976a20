// Samples against their distributions.
#include "study_desk.h"

#include "study/plan.h"
#include "study/statistics.h"

#include "runtime/number_format.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace korvane::study::test {

namespace {

std::vector<std::vector<double>> columnsOf(const Study& study) {
    Plan plan(study);
    std::vector<std::vector<double>> columns(study.variables.size());
    std::vector<double> numbers;
    for (std::uint64_t n = 0; n < plan.size(); ++n) {
        plan.numbers(n, numbers);
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            columns[i].push_back(numbers[i]);
        }
    }
    return columns;
}

double meanOf(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

double deviationOf(const std::vector<double>& values) {
    const double mean = meanOf(values);
    double squares = 0;
    for (const double value : values) {
        squares += (value - mean) * (value - mean);
    }
    return std::sqrt(squares / static_cast<double>(values.size() - 1));
}

std::vector<double> ranksOf(const std::vector<double>& values) {
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
    std::vector<double> ranks(values.size());
    for (std::size_t rank = 0; rank < order.size(); ++rank) {
        ranks[order[rank]] = static_cast<double>(rank);
    }
    return ranks;
}

double correlationOf(const std::vector<double>& a, const std::vector<double>& b) {
    double product = 0;
    const double meanA = meanOf(a);
    const double meanB = meanOf(b);
    for (std::size_t n = 0; n < a.size(); ++n) {
        product += (a[n] - meanA) * (b[n] - meanB);
    }
    return product / static_cast<double>(a.size() - 1) / deviationOf(a) / deviationOf(b);
}

std::string sampleOf(const std::string& design, int size) {
    return head("sample", "design = \"" + design + "\"\nsize = " + std::to_string(size));
}

constexpr double Root3 = 1.7320508075688772;

} // namespace

TEST(Samples, HaveTheMomentsOfTheirDistributions) {
    struct Case {
        const char* distribution;
        double mean;
        double deviation;
        double kurtosis; ///< for the standard error of the deviation
    };
    // Exponential(2, 1): mean 1 + 1/2, deviation 1/2. Uniform(1, 3): deviation 2/sqrt(12).
    // LogNormalMuSigma(32, 2): kurtosis about 3 + 16 (2/32)^2.
    const std::vector<Case> cases{{"Normal(32, 2)", 32, 2, 3},
                                  {"Uniform(1, 3)", 2, 1 / Root3, 1.8},
                                  {"Exponential(2, 1)", 1.5, 0.5, 9},
                                  {"LogNormalMuSigma(32, 2)", 32, 2, 3.07},
                                  {"LogNormalMuSigma(32, 2, 0)", 32, 2, 3.07}};
    constexpr int Size = 20000;
    for (const Case& one : cases) {
        for (const std::string design : {"monte-carlo", "latin-hypercube", "sobol"}) {
            const auto values = columnsOf(
                studyOf(sampleOf(design, Size) + variable("x", std::string("distribution = \"") +
                                                                   one.distribution + "\"")))[0];
            const double root = std::sqrt(static_cast<double>(Size));
            EXPECT_NEAR(meanOf(values), one.mean, 4 * one.deviation / root)
                << one.distribution << " " << design;
            EXPECT_NEAR(deviationOf(values), one.deviation,
                        4 * one.deviation * std::sqrt(one.kurtosis - 1) / 2 / root)
                << one.distribution << " " << design;
        }
    }
}

TEST(Samples, BoundsCutTheDistribution) {
    const auto values =
        columnsOf(studyOf(sampleOf("monte-carlo", 20000) +
                          variable("x", "distribution = \"Normal(32, 2)\"\nbounds = [32, 34]")))[0];
    EXPECT_GE(*std::min_element(values.begin(), values.end()), 32);
    EXPECT_LE(*std::max_element(values.begin(), values.end()), 34);
    // Mean of the standard normal between 0 and 1: (phi(0) - phi(1)) / (Phi(1) - Phi(0)).
    const double mean = 32 + 2 * (0.3989422804 - 0.2419707245) / 0.3413447461;
    EXPECT_NEAR(meanOf(values), mean, 4 * deviationOf(values) / std::sqrt(20000.0));
}

TEST(Samples, TheirRankCorrelationIsTheOneAskedFor) {
    constexpr int Size = 20000;
    for (const std::string design : {"monte-carlo", "latin-hypercube", "sobol"}) {
        for (const double rank : {-0.4, 0.7}) {
            const auto columns = columnsOf(studyOf(
                sampleOf(design, Size) + variable("a", "distribution = \"Normal(32, 2)\"") +
                variable("b", "distribution = \"LogNormalMuSigma(500, 200)\"") +
                variable("c", "distribution = \"Uniform(0, 1)\"") +
                "[[correlation]]\nbetween = [\"a\", \"b\"]\nrank = " + std::to_string(rank) +
                "\n"));
            const double error = 4 / std::sqrt(static_cast<double>(Size));
            EXPECT_NEAR(correlationOf(ranksOf(columns[0]), ranksOf(columns[1])), rank, error);
            EXPECT_NEAR(correlationOf(ranksOf(columns[0]), ranksOf(columns[2])), 0, error);
            // The distributions themselves stay.
            EXPECT_NEAR(meanOf(columns[1]), 500, 4 * 200 / std::sqrt(static_cast<double>(Size)));
        }
    }
}

TEST(Samples, StatisticsAreThoseOfTheRows) {
    const StudyDesk desk;
    // The depth is that of the rows; the limit state on the variable alone has a closed form.
    desk.runStudy(sampleOf("monte-carlo", 101) + friction("distribution = \"Normal(32, 2)\"") +
                      limit("weak", "friction < 32"),
                  "o");
    std::vector<double> depths;
    for (const TextRow& row : desk.rows("o", "SELECT penetration FROM variants")) {
        depths.push_back(std::stod(row[0]));
    }
    std::sort(depths.begin(), depths.end());
    EXPECT_EQ(desk.statistic("o", "penetration", "count"), 101);
    EXPECT_NEAR(desk.statistic("o", "penetration", "mean"), meanOf(depths), 1e-10);
    EXPECT_NEAR(desk.statistic("o", "penetration", "deviation"), deviationOf(depths), 1e-10);
    EXPECT_EQ(desk.statistic("o", "penetration", "least"), depths.front());
    EXPECT_EQ(desk.statistic("o", "penetration", "largest"), depths.back());
    EXPECT_EQ(desk.statistic("o", "penetration", "quantile 0.5"), depths[50]);
    EXPECT_EQ(desk.statistic("o", "penetration", "quantile 0.05"), depths[5]);
    // Student's 97.5 % quantile of 100 degrees of freedom is 1.98397.
    const double half = 1.98397 * deviationOf(depths) / std::sqrt(101.0);
    EXPECT_NEAR(desk.statistic("o", "penetration", "mean", "high"), meanOf(depths) + half, 1e-5);
    EXPECT_NEAR(desk.statistic("o", "penetration", "mean", "low"), meanOf(depths) - half, 1e-5);
    EXPECT_EQ(desk.statistic("o", "weak", "reached"),
              desk.number("o", "SELECT count(*) FROM variants WHERE friction < 32"));
}

std::string linesOf(const std::vector<Statistic>& statistics) {
    std::string lines;
    for (const Statistic& one : statistics) {
        lines += one.subject + " " + one.name;
        for (const double number : {one.value, one.low, one.high}) {
            lines += std::isnan(number) ? " -" : generalForm(number);
        }
        lines += "\n";
    }
    return lines;
}

/// The statistics of a finished study by a tally of its file that keeps so many values.
std::string statisticsKeeping(std::size_t mostKept, const Study& study, const Store& store) {
    Tally tally(study, mostKept);
    tally.addAll(store);
    return linesOf(statisticsOf(study, store, std::move(tally), {}));
}

TEST(Samples, StatisticsAreTheSameByTheRunByItsFileAndWhereTheDatabaseSorts) {
    const std::string random = friction("distribution = \"Normal(32, 2)\"");
    const std::string along = "[[variable]]\nname = \"cap\"\nvalues = [15, 14]\n";
    for (const auto& [text, groups] :
         {std::pair{sampleOf("monte-carlo", 101) + random, 1},
          std::pair{head("sensitivity", "size = 101") + random, 1},
          std::pair{head("fragility", "size = 101\nalong = \"cap\"") + random + along +
                        limit("deep", "penetration > cap"),
                    2}}) {
        const StudyDesk desk;
        desk.runStudy(text, "o");
        const Study study = studyOf(text);
        const Store store(desk.file("o/results.sqlite"));
        const auto enough = static_cast<std::size_t>(101 * groups) * study.outputs.size();
        const std::string told = statisticsKeeping(enough, study, store);
        EXPECT_NE(told.find("quantile 0.95"), std::string::npos);
        EXPECT_EQ(statisticsKeeping(enough - 1, study, store), told);
        EXPECT_EQ(linesOf(store.statistics()), told) << "counted while rows were stored";
    }
}

TEST(Samples, IntervalsOfClopperAndPearsonAreTheBinomialTails) {
    // P(X >= hits | low) = P(X <= hits | high) = 0.025, by sums of the binomial distribution.
    const auto upTo = [](int hits, int trials, double p) {
        double sum = 0;
        for (int k = 0; k <= hits; ++k) {
            sum += std::exp(std::lgamma(trials + 1.0) - std::lgamma(k + 1.0) -
                            std::lgamma(trials - k + 1.0) + k * std::log(p) +
                            (trials - k) * std::log1p(-p));
        }
        return sum;
    };
    for (const auto& [hits, trials] : {std::pair{1, 10}, {7, 20}, {50, 1000}, {999, 1000}}) {
        const auto interval = clopperPearson(hits, trials);
        EXPECT_NEAR(1 - upTo(hits - 1, trials, interval[0]), 0.025, 1e-9);
        EXPECT_NEAR(upTo(hits, trials, interval[1]), 0.025, 1e-9);
    }
    // No failure seen: the upper bound, 1 - 0.025^(1/n).
    EXPECT_EQ(clopperPearson(0, 100)[0], 0);
    EXPECT_NEAR(clopperPearson(0, 100)[1], 1 - std::pow(0.025, 0.01), 1e-12);
    EXPECT_EQ(clopperPearson(100, 100)[1], 1);
}

} // namespace korvane::study::test
