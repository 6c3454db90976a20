// Sobol' indices against closed forms, and their intervals.
#include "study_desk.h"

#include "study/sensitivity.h"
#include "study/uniforms.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace korvane::study::test {

namespace {

constexpr double Pi = 3.14159265358979323846;

/// sin x1 + a sin^2 x2 + b x3^4 sin x1 over -pi to pi (T. Ishigami and T. Homma, 1990).
namespace ishigami {

constexpr double a = 7;
constexpr double b = 0.1;
const double p4 = std::pow(Pi, 4);
const double v1 = 0.5 * std::pow(1 + b * p4 / 5, 2);
const double v2 = a * a / 8;
const double v13 = b * b * p4 * p4 * (1.0 / 18 - 1.0 / 50);
const double v = v1 + v2 + v13;
const std::array<double, 3> first{v1 / v, v2 / v, 0};
const std::array<double, 3> total{(v1 + v13) / v, v2 / v, v13 / v};

SobolIndices indices(const Sample& sample) {
    std::vector<std::vector<double>> blocks(5);
    for (std::uint64_t n = 0; n < sample.size; ++n) {
        for (std::size_t block = 0; block < blocks.size(); ++block) {
            std::array<double, 3> x{};
            for (int i = 0; i < 3; ++i) {
                const bool second = block == 1 || static_cast<int>(block) == i + 2;
                x.at(static_cast<std::size_t>(i)) = Pi * (2 * sample.at(n, second ? i + 3 : i) - 1);
            }
            blocks[block].push_back(std::sin(x[0]) + a * std::pow(std::sin(x[1]), 2) +
                                    b * std::pow(x[2], 4) * std::sin(x[0]));
        }
    }
    return sobolIndices(blocks);
}

} // namespace ishigami

} // namespace

TEST(Sensitivity, IndicesOfTheIshigamiFunctionAreItsClosedForms) {
    const SobolIndices indices = ishigami::indices({Design::Sobol, 1, 16384});
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(indices.first[i].value, ishigami::first.at(i), 0.02) << i;
        EXPECT_NEAR(indices.total[i].value, ishigami::total.at(i), 0.02) << i;
    }
}

TEST(Sensitivity, IntervalsOfIndependentDrawsCoverTheClosedFormsIn95Of100Seeds) {
    std::array<int, 3> first{};
    std::array<int, 3> total{};
    for (std::uint64_t seed = 1; seed <= 100; ++seed) {
        const SobolIndices indices = ishigami::indices({Design::MonteCarlo, seed, 1000});
        const auto covers = [](const SobolIndex& index, double exact) {
            return index.low <= exact && exact <= index.high ? 1 : 0;
        };
        for (std::size_t i = 0; i < 3; ++i) {
            first.at(i) += covers(indices.first[i], ishigami::first.at(i));
            total.at(i) += covers(indices.total[i], ishigami::total.at(i));
        }
    }
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_GE(first.at(i), 88) << i; // below is one in 1000 of a binomial number
        EXPECT_GE(total.at(i), 88) << i;
    }
}

TEST(Sensitivity, OneVariableAloneExplainsEverything) {
    const StudyDesk desk;
    desk.runStudy(head("sensitivity", "design = \"sobol\"\nsize = 512\noutputs = \"penetration\"") +
                      friction("distribution = \"Normal(32, 2)\"") +
                      variable("unused", "distribution = \"Normal(0, 1)\""),
                  "o");
    EXPECT_EQ(desk.number("o", "SELECT count(*) FROM variants"), 512 * 4);
    EXPECT_NEAR(desk.statistic("o", "penetration", "first-order friction"), 1, 0.05);
    EXPECT_NEAR(desk.statistic("o", "penetration", "total friction"), 1, 0.05);
    EXPECT_NEAR(desk.statistic("o", "penetration", "total unused"), 0, 0.01);
    EXPECT_EQ(desk.statistic("o", "penetration", "points"), 512);
    EXPECT_EQ(desk.statistic("o", "penetration", "count"), 512);
}

} // namespace korvane::study::test
