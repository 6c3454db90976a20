#include "problem/problem_text.h"

#include "problem/counts.h"
#include "support/nasty_problem.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

#include <limits>

namespace korvane::test {
namespace {

/// Nothing where something is left.
std::optional<Problem> readWhole(std::string_view text) {
    ValueReader reader(text);
    const auto problem = readProblemText(reader);
    return reader.atEnd() ? problem : std::nullopt;
}

void expectKept(const Problem& problem) {
    const auto read = readWhole(problemText(problem));
    ASSERT_TRUE(read.has_value());
    EXPECT_TRUE(*read == problem);
}

TEST(ProblemText, KeepsRandomAndNastyProblems) {
    RandomProblems plain(5);
    NastyProblems nasty(5);
    for (int i = 0; i < 100; ++i) {
        expectKept(plain.next());
        expectKept(nasty.next().problem);
    }
}

TEST(ProblemText, KeepsTheEmptyRecord) {
    expectKept(Problem());
}

// A number of its own in every place of every field, beyond the counts too.
TEST(ProblemText, KeepsEveryNumber) {
    Problem problem;
    double next = 1.0 / 3;
    int places = 0;
    for (int field = 0; field < FieldCount; ++field) {
        const FieldRules& rules = rulesOf(static_cast<ProblemField>(field));
        for (int side = 1; side <= (rules.hasSides ? 2 : 1); ++side) {
            for (int row = 1; row <= rules.places; ++row) {
                rules.at(problem, side, row) = next *= -1.01;
                ++places;
            }
        }
    }
    // 9 numbers, 8 pairs, 23 lists of 2 x 11, 2 each of 2 x 5, 21, 5 and 11.
    EXPECT_EQ(places, 9 + 8 * 2 + 23 * 22 + 2 * (10 + 21 + 5 + 11));
    for (const CountRules& rules : Counts) {
        for (int side = 1; side <= rules.sides; ++side) {
            rules.at(problem, side) = ++places;
        }
    }
    problem.VVarLoad(Left, 11) = 1e-300;
    problem.SoilAdhesion(Right, 11) = -0.0;
    problem.WallType = WallKind::Anchored;
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::ActiveGiven;
    problem.SoilDataKind(Right) = SoilData::Strengths;
    problem.SoilDataKind(Left) = SoilData::Coefficients;
    problem.WaterDataKind = WaterData::Pressures;
    problem.SeepageKind = Seepage::Given;
    problem.HeadingLines(4) = "'caf\xE9 \x01 two  blanks ";
    expectKept(problem);
}

TEST(ProblemText, KeepsWhatIsNoNumber) {
    Problem problem;
    problem.WallTopElev = std::numeric_limits<double>::infinity();
    expectKept(problem);
}

TEST(ProblemText, ABrokenTextIsNoProblem) {
    const std::string text = problemText(Problem());
    for (std::size_t length = 0; length < text.size(); length += 7) {
        EXPECT_FALSE(readWhole(text.substr(0, length))) << length;
    }
    EXPECT_FALSE(readWhole(text + "x"));
    std::string other = text;
    other[other.find("WallType")] = 'w';
    EXPECT_FALSE(readWhole(other));
    other = text;
    other[other.find(" 1.5")] = 'x';
    EXPECT_FALSE(readWhole(other));
}

} // namespace
} // namespace korvane::test
