// The road over problems that are spoilt in memory: never a crash, and never results from what
// neither a file nor a screen can leave in the record.
#include "problem/validate.h"
#include "rowe/pile_sections.h"
#include "solution/solution.h"
#include "support/random_problem.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::test {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

std::optional<Finding> firstFatal(const Problem& problem) {
    for (const Finding& finding : validate(problem)) {
        if (finding.isFatal()) {
            return finding;
        }
    }
    return std::nullopt;
}

/// Solves problems one after another and holds them against their findings.
struct Road {
    Workspace workspace;
    PileSections sections;
    int refused = 0;
    int solved = 0;
    bool sweeps = false; ///< walls with a wedge are solved by the sweep too
    int wedges = 0;
    int swept = 0;

    Road() { LoadPileDefaults(sections); }

    Solved run(const Problem& problem, WedgeMethod wedge = WedgeMethod::FixedSurface) {
        Options options;
        options.wedge = wedge;
        return solve(problem, options, sections, workspace);
    }

    /// What is not refused is solved, or fails with a told failure.
    void checkTaken(const Solved& outcome, const std::string& what) {
        EXPECT_NE(outcome.failure.code, FailureCode::InvalidProblem) << what;
        if (outcome.results != nullptr) {
            ++solved;
            EXPECT_TRUE(std::isfinite(outcome.results->levels(1).diagrams.MaxMoment.value)) << what;
        } else {
            EXPECT_TRUE(outcome.failure) << what;
        }
    }

    bool hasWedge() const {
        const auto& methods = workspace.state().preparation.SideMethod;
        return methods(Right) == PressureMethod::FixedSurface ||
               methods(Left) == PressureMethod::FixedSurface;
    }

    void check(const Problem& problem, const std::string& what) {
        const std::optional<Finding> fatal = firstFatal(problem);
        Solved outcome;
        ASSERT_NO_THROW(outcome = run(problem)) << what;
        if (fatal) {
            EXPECT_EQ(outcome.failure.code, FailureCode::InvalidProblem) << what;
            EXPECT_TRUE(outcome.failure.finding == *fatal || std::isnan(fatal->value)) << what;
            EXPECT_EQ(outcome.results, nullptr) << what;
            EXPECT_EQ(outcome.review, nullptr) << what;
            ++refused;
            return;
        }
        checkTaken(outcome, what);
        // A sweep takes its time, in an analysis for each trial.
        if (sweeps && hasWedge() && problem.ProgramMode == Mode::Design && ++wedges % 10 == 0) {
            ASSERT_NO_THROW(outcome = run(problem, WedgeMethod::Sweep)) << what;
            checkTaken(outcome, what + " by sweep");
            ++swept;
        }
    }
};

/// Valid problems of all kinds.
std::vector<Problem> wholeProblems() {
    const auto kind = [](bool anchored, bool analysis) {
        RandomKind drawn;
        drawn.anchored = anchored;
        drawn.analysis = analysis;
        return drawn;
    };
    RandomKind kinds[] = {kind(false, false), kind(true, false), kind(true, true),
                          kind(false, true), kind(true, false)};
    kinds[0].sloping = false;
    kinds[0].soil = RandomKind::Soil::Sand;
    kinds[1].water = RandomKind::Water::Seepage;
    kinds[1].surcharge = true;
    kinds[2].water = RandomKind::Water::Pressures;
    kinds[2].horizontal = true;
    kinds[3].soil = RandomKind::Soil::Coefficients;
    kinds[3].surcharge = true;
    kinds[4].layered = true;
    kinds[4].sloping = true;
    kinds[4].horizontal = true;
    RandomProblems walls(5);
    std::vector<Problem> problems;
    for (const RandomKind& drawn : kinds) {
        problems.push_back(walls.next(drawn));
    }
    Problem given = problems[1];
    given.SeepageKind = Seepage::Given;
    given.SeepageGradient.fill(0.05);
    problems.push_back(given);
    return problems;
}

TEST(SpoiltProblems, NumbersNeverCrashTheRoadNorPassIt) {
    Road road;
    for (const Problem& whole : wholeProblems()) {
        ASSERT_FALSE(firstFatal(whole)) << findingText(*firstFatal(whole));
        for (const FieldGroup& group : fieldGroups()) {
            for (int side = 1; side <= group.sides; ++side) {
                const int rows = group.rows(whole, side);
                for (int row = 1; row <= std::min(rows, 2); ++row) { // the others are alike
                    for (int f = static_cast<int>(group.first); f <= static_cast<int>(group.last);
                         ++f) {
                        const FieldRules& rules = rulesOf(static_cast<ProblemField>(f));
                        const double before = rules.value(whole, side, std::max(row - 1, 1));
                        for (const double value : {std::nan(""), Infinity, -Infinity, 1e300, -1e6,
                                                   -1.0, 0.0, 80.0, before, before + 1}) {
                            Problem problem = whole;
                            rules.at(problem, side, row) = value;
                            road.check(problem,
                                       std::string(rules.name) + " " + std::to_string(side) + " " +
                                           std::to_string(row) + " " + std::to_string(value));
                            if (!std::isfinite(value)) {
                                EXPECT_TRUE(firstFatal(problem)) << rules.name;
                            }
                        }
                    }
                }
            }
        }
    }
    EXPECT_GT(road.refused, 500);
    EXPECT_GT(road.solved, 100);
}

// Also where the record has no use for them: a solution leaves its own there.
TEST(SpoiltProblems, GradientsThatAreNoNumbersPassNowhere) {
    Road road;
    for (const Problem& whole : wholeProblems()) {
        for (const int level : {1, 2}) {
            for (const double value : {std::nan(""), Infinity, -Infinity}) {
                Problem problem = whole;
                problem.SeepageGradient(level) = value;
                road.check(problem, "gradient " + std::to_string(level));
                EXPECT_TRUE(firstFatal(problem));
            }
        }
        ASSERT_EQ(road.solved, 0);
        const Solved first = road.run(whole); // what it leaves in a record is no reason to refuse
        Problem told = whole;
        told.SeepageKind = road.workspace.state().preparation.SeepageKind;
        told.SeepageGradient = road.workspace.state().preparation.SeepageGradient;
        EXPECT_FALSE(firstFatal(told));
        const FailureCode code = first.failure.code;
        EXPECT_EQ(road.run(told).failure.code, code);
    }
}

TEST(SpoiltProblems, CountsAndKindsNeverCrashTheRoad) {
    struct Count {
        const char* name;
        int& (*of)(Problem&, int side);
        int places;
    };
    const Count counts[] = {
        {"headings", [](Problem& p, int) -> int& { return p.NumHeadingLines; }, 4},
        {"surface", [](Problem& p, int s) -> int& { return p.SurfacePointCount(s); }, 11},
        {"layers", [](Problem& p, int s) -> int& { return p.SoilLayerCount(s); }, 11},
        {"water", [](Problem& p, int) -> int& { return p.WaterPressCount; }, 21},
        {"line", [](Problem& p, int s) -> int& { return p.VLineCount(s); }, 5},
        {"uniform", [](Problem& p, int s) -> int& { return p.VUniformCount(s); }, 1},
        {"strip", [](Problem& p, int s) -> int& { return p.VStripCount(s); }, 11},
        {"ramp", [](Problem& p, int s) -> int& { return p.VRampCount(s); }, 1},
        {"triangle", [](Problem& p, int s) -> int& { return p.VTriCount(s); }, 11},
        {"variable", [](Problem& p, int s) -> int& { return p.VVarCount(s); }, 11},
        {"horizontal lines", [](Problem& p, int) -> int& { return p.HLineCount; }, 5},
        {"distributed", [](Problem& p, int) -> int& { return p.HDistCount; }, 11},
    };
    Road road;
    road.sweeps = true;
    for (const Problem& whole : wholeProblems()) {
        for (const Count& count : counts) {
            for (const int value :
                 {-2147483647, -1, 0, 1, count.places, count.places + 1, 100000}) {
                for (const int side : {Right, Left}) {
                    Problem problem = whole;
                    count.of(problem, side) = value;
                    road.check(problem, count.name + std::string(" ") + std::to_string(value));
                    if (value < 0 || value > count.places) {
                        EXPECT_TRUE(firstFatal(problem)) << count.name << value;
                    }
                }
            }
        }
        for (const int kind : {-2147483647, -1, 0, 1, 2, 3, 100000}) {
            Problem problem = whole;
            problem.FSKind = static_cast<FactorKind>(kind);
            road.check(problem, "factors " + std::to_string(kind));
            const bool inUse = whole.ProgramMode == Mode::Analysis;
            EXPECT_EQ(firstFatal(problem).has_value(), inUse && kind != 1 && kind != 2);
        }
        for (const char letter : {'\0', 'X', 'A', 'C', 'S', 'E', 'P', 'G', 'D', '\x80'}) {
            Problem problem = whole;
            problem.WallType = static_cast<WallKind>(letter);
            road.check(problem, std::string("wall type ") + letter);
            problem = whole;
            problem.ProgramMode = static_cast<Mode>(letter);
            road.check(problem, std::string("mode ") + letter);
            problem = whole;
            problem.SoilDataKind(Right) = static_cast<SoilData>(letter);
            road.check(problem, std::string("right soil ") + letter);
            problem = whole;
            problem.SoilDataKind(Left) = static_cast<SoilData>(letter);
            road.check(problem, std::string("left soil ") + letter);
            problem = whole;
            problem.WaterDataKind = static_cast<WaterData>(letter);
            road.check(problem, std::string("water ") + letter);
            problem = whole;
            problem.SeepageKind = static_cast<Seepage>(letter);
            road.check(problem, std::string("seepage ") + letter);
        }
    }
    EXPECT_GT(road.refused, 100);
    EXPECT_GT(road.solved, 100);
}

TEST(SpoiltProblems, WhatOneOfFilesAndScreensTakesIsSolved) {
    Road road;
    Problem problem = plainCantilever();
    problem.WaterDataKind = WaterData::Pressures; // in any order: screens
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -8;
    problem.WaterPressElev(2) = -2;
    EXPECT_NE(road.run(problem).results, nullptr);

    problem = plainCantilever();
    problem.SoilWallFriction(Right, 1) = -5; // screens
    EXPECT_NE(road.run(problem).results, nullptr);

    problem = plainCantilever();
    problem.VVarCount(Right) = 1; // of one point: screens
    problem.VVarDist(Right, 1) = 5;
    problem.VVarLoad(Right, 1) = 100;
    EXPECT_NE(road.run(problem).results, nullptr);

    problem = plainCantilever();
    problem.VStripCount(Right) = 1; // without load: files
    problem.VStripEnd(Right, 1) = 5;
    EXPECT_NE(road.run(problem).results, nullptr);
}

TEST(SpoiltProblems, TheFailureTellsFieldRuleAndValue) {
    Road road;
    Problem problem = plainCantilever();
    problem.FSPassive = -5;
    const Solved outcome = road.run(problem);
    EXPECT_EQ(failureBox(outcome.failure).title, "INVALID PROBLEM");
    EXPECT_EQ(failureBox(outcome.failure).text,
              "FSPassive is -5 and must be above 0.\n\n     Unable to continue.");
    problem.FSPassive = 1; // the workspace goes on to the next problem
    EXPECT_NE(road.run(problem).results, nullptr);
}

} // namespace
} // namespace korvane::test
