#include "problem/problem_text.h"

#include "problem/fields.h"
#include "support/nasty_problem.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

#include <limits>

namespace korvane::test {
namespace {

void expectKept(const Problem& problem) {
    const auto read = readProblemText(problemText(problem));
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
    for (const FieldGroup& group : fieldGroups()) {
        for (int field = static_cast<int>(group.first); field <= static_cast<int>(group.last);
             ++field) {
            const FieldRules& rules = rulesOf(static_cast<ProblemField>(field));
            for (int side = 1; side <= (rules.hasSides ? 2 : 1); ++side) {
                rules.at(problem, side, 1) = next *= -1.01;
            }
        }
    }
    problem.VVarLoad(Left, 11) = 1e-300;
    problem.SoilAdhesion(Right, 11) = -0.0;
    problem.HDistCount = 7;
    problem.VTriCount(Left) = 3;
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
        EXPECT_FALSE(readProblemText(text.substr(0, length))) << length;
    }
    EXPECT_FALSE(readProblemText(text + "x"));
    std::string other = text;
    other[other.find("WallType")] = 'w';
    EXPECT_FALSE(readProblemText(other));
    other = text;
    other[other.find(" 1.5")] = 'x';
    EXPECT_FALSE(readProblemText(other));
}

} // namespace
} // namespace korvane::test
