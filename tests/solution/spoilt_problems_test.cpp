// The road over problems that are spoilt in memory: never a crash, and never results from what
// neither a file nor a screen can leave in the record.
#include "problem/counts.h"
#include "problem/input_reader.h"
#include "problem/input_writer.h"
#include "problem/save_losses.h"
#include "problem/validate.h"
#include "rowe/pile_sections.h"
#include "runtime/run_guarded.h"
#include "solution/solution.h"
#include "support/random_problem.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

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

/// The same problem as it comes from a file; none where no file gives it just so.
std::optional<Problem> fromFile(const Problem& problem) {
    if (!lossesOfSave(problem).empty()) {
        return std::nullopt;
    }
    Problem read;
    clearProblemData(read);
    bool complete = false;
    runGuarded([&] { complete = readProblem(read, inputFileText(problem), "wall.dat").complete; });
    return complete ? std::optional(read) : std::nullopt;
}

/// What a solution has come to, in numbers.
struct Came {
    FailureCode code = FailureCode::None;
    std::vector<double> numbers;

    explicit Came(const Solved& solved) : code(solved.failure.code) {
        const int levels = solved.results != nullptr ? solved.results->levelCount : 0;
        for (int level = 1; level <= levels; ++level) {
            const LevelResult& result = solved.results->levels(level);
            const ResultDiagrams& diagrams = result.diagrams;
            numbers.insert(numbers.end(),
                           {result.bottomElev, result.anchorForce, result.factorOfSafety,
                            result.seepageGradient, result.toeReaction, diagrams.MaxMoment.value,
                            diagrams.MaxMoment.elev, diagrams.MaxDeflection.value});
        }
    }
    bool operator==(const Came&) const = default;
};

/// Solves problems one after another and holds them against their findings.
struct Road {
    Workspace workspace;
    Workspace ofFiles;
    PileSections sections;
    int refused = 0;
    int solved = 0;
    int taken = 0;
    int sameByFile = 0; ///< solved problems that came to the same from a file
    int sweepEvery = 0; ///< of so many walls with a wedge one is solved by the sweep too; 0 none
    int wedges = 0;
    int swept = 0;

    Road() { LoadPileDefaults(sections); }

    Solved run(const Problem& problem, WedgeMethod wedge = WedgeMethod::FixedSurface) {
        return runIn(workspace, problem, wedge);
    }
    Solved runIn(Workspace& in, const Problem& problem, WedgeMethod wedge) {
        Options options;
        options.wedge = wedge;
        return solve(problem, options, sections, in);
    }

    /// What is not refused is solved, or fails with a told failure; from a file, looked at for
    /// every fourth, it comes to the same.
    void checkTaken(const Problem& problem, const Solved& outcome, WedgeMethod wedge,
                    const std::string& what) {
        EXPECT_NE(outcome.failure.code, FailureCode::InvalidProblem) << what;
        if (outcome.results != nullptr) {
            ++solved;
            EXPECT_TRUE(std::isfinite(outcome.results->levels(1).diagrams.MaxMoment.value)) << what;
        } else {
            EXPECT_TRUE(outcome.failure) << what;
        }
        if (++taken % 4 != 0) {
            return;
        }
        if (const auto read = fromFile(problem)) {
            const Came came(outcome);
            const Came cameByFile(runIn(ofFiles, *read, wedge));
            EXPECT_EQ(came.code, cameByFile.code) << what;
            EXPECT_EQ(came.numbers, cameByFile.numbers) << what;
            sameByFile += came.numbers.empty() ? 0 : 1;
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
        checkTaken(problem, outcome, WedgeMethod::FixedSurface, what);
        // A sweep takes its time, in an analysis for each trial.
        if (sweepEvery > 0 && hasWedge() && problem.ProgramMode == Mode::Design &&
            ++wedges % sweepEvery == 0) {
            ASSERT_NO_THROW(outcome = run(problem, WedgeMethod::Sweep)) << what;
            checkTaken(problem, outcome, WedgeMethod::Sweep, what + " by sweep");
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

constexpr double LayerHeight = 2; // FT
constexpr double Rise = 0.25;     // FT from one ground point to the next

void fillGroundAndSoil(Problem& problem, int side) {
    const double ground = problem.SurfaceElev(side, 1);
    problem.SurfacePointCount(side) = 11;
    problem.SoilLayerCount(side) = 11;
    for (int i = 1; i <= 11; ++i) {
        problem.SurfaceDist(side, i) = 5.0 * (i - 1);
        problem.SurfaceElev(side, i) = ground + Rise * (i - 1);
        problem.SoilSatWeight(side, i) = 120 + i;
        problem.SoilMoistWeight(side, i) = 110 + i;
        problem.SoilFriction(side, i) = 30 + 0.5 * i;
        problem.SoilWallFriction(side, i) = 10;
        problem.SoilCoefActive(side, i) = 0.3;
        problem.SoilCoefPassive(side, i) = 3 + 0.1 * i;
        problem.SoilBottomElev(side, i) = i == 11 ? NoLayerBottom : ground - LayerHeight * i;
    }
}

void fillGroundLoads(Problem& problem, int side) {
    problem.VUniformCount(side) = problem.VRampCount(side) = 1;
    problem.VUniformLoad(side) = 50;
    problem.VRampStart(side) = 5;
    problem.VRampEnd(side) = 15;
    problem.VRampLoad(side) = 40;
    problem.VLineCount(side) = problem.VStripCount(side) = problem.VTriCount(side) = 5;
    for (int i = 1; i <= 5; ++i) {
        problem.VLineDist(side, i) = problem.VStripStart(side, i) = problem.VTriStart(side, i) =
            6.0 * i;
        problem.VStripEnd(side, i) = problem.VTriPeak(side, i) = 6.0 * i + 2;
        problem.VTriEnd(side, i) = 6.0 * i + 4;
        problem.VLineLoad(side, i) = problem.VStripLoad(side, i) = problem.VTriLoad(side, i) = 30;
    }
    problem.VVarCount(side) = 11;
    for (int i = 1; i <= 11; ++i) {
        problem.VVarDist(side, i) = 4.0 * i;
        problem.VVarLoad(side, i) = 2.0 * i;
    }
}

/// An anchored design that uses as many entries of every list as files and screens take; by
/// strengths both sides slope and need a wedge, by coefficients the ground is one level point.
Problem fullWall(SoilData soil) {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -2;
    problem.SoilDataKind.fill(soil);
    for (const int side : {Right, Left}) {
        fillGroundAndSoil(problem, side);
        fillGroundLoads(problem, side);
        if (soil == SoilData::Coefficients) {
            problem.SurfacePointCount(side) = 1;
        }
    }
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = problem.HDistCount = 11;
    for (int i = 1; i <= 11; ++i) {
        problem.WaterPressElev(i) = -3.0 - i;
        problem.WaterPressure(i) = 5.0 * i;
        problem.HDistElev(i) = -1 - 0.5 * i;
        problem.HDistLoad(i) = 10;
    }
    problem.HLineCount = 5;
    for (int i = 1; i <= 5; ++i) {
        problem.HLineElev(i) = -1.0 * i;
        problem.HLineLoad(i) = 20;
    }
    return problem;
}

/// Spoils each entry in use from `firstRow` to `lastRow` of every list with each of the values, and
/// with that of the row before.
void spoilNumbers(Road& road, const Problem& whole, int firstRow, int lastRow,
                  const std::vector<double>& values) {
    for (const FieldGroup& group : fieldGroups()) {
        for (int side = 1; side <= group.sides; ++side) {
            const int rows = std::min(group.rows(whole, side), lastRow);
            for (int row = firstRow; row <= rows; ++row) {
                for (int f = static_cast<int>(group.first); f <= static_cast<int>(group.last);
                     ++f) {
                    const FieldRules& rules = rulesOf(static_cast<ProblemField>(f));
                    std::vector<double> all = values;
                    const double before = rules.value(whole, side, std::max(row - 1, 1));
                    all.push_back(before);
                    if (row <= 2) { // the others are alike
                        all.push_back(before + 1);
                    }
                    for (const double value : all) {
                        Problem problem = whole;
                        rules.at(problem, side, row) = value;
                        road.check(problem, std::string(rules.name) + " " + std::to_string(side) +
                                                " " + std::to_string(row) + " " +
                                                std::to_string(value));
                        if (!std::isfinite(value)) {
                            EXPECT_TRUE(firstFatal(problem)) << rules.name;
                        }
                    }
                }
            }
        }
    }
}

TEST(SpoiltProblems, NumbersNeverCrashTheRoadNorPassIt) {
    Road road;
    road.sweepEvery = 150;
    for (const Problem& whole : wholeProblems()) {
        ASSERT_FALSE(firstFatal(whole)) << findingText(*firstFatal(whole));
        spoilNumbers(road, whole, 1, 2,
                     {std::nan(""), Infinity, -Infinity, 1e300, -1e6, -1.0, 0.0, 80.0});
    }
    EXPECT_GT(road.refused, 500);
    EXPECT_GT(road.solved, 100);
    EXPECT_GT(road.sameByFile, 100);
    EXPECT_GT(road.swept, 3);
}

// Of the later rows each is spoilt, the last ones of full lists included.
TEST(SpoiltProblems, NumbersOfFullListsNeverCrashTheRoadNorPassIt) {
    for (const SoilData soil : {SoilData::Strengths, SoilData::Coefficients}) {
        Road road;
        road.sweepEvery = soil == SoilData::Strengths ? 300 : 0;
        const Problem whole = fullWall(soil);
        ASSERT_FALSE(firstFatal(whole)) << findingText(*firstFatal(whole));
        for (const CountRules& count : Counts) {
            const bool one =
                count.count == ProblemCount::NumHeadingLines ||
                (count.count == ProblemCount::SurfacePointCount && soil == SoilData::Coefficients);
            ASSERT_EQ(count.value(whole, Right), one ? 1 : count.most) << count.name;
        }
        ASSERT_NE(road.run(whole).results, nullptr);
        spoilNumbers(road, whole, 3, 11, {std::nan(""), 1e300, -1.0});
        EXPECT_GT(road.refused, 500);
        EXPECT_GT(road.solved, 100);
        EXPECT_GT(road.sameByFile, 100);
        EXPECT_TRUE(soil == SoilData::Coefficients || road.swept > 1) << road.swept;
    }
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
    road.sweepEvery = 10;
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

// What one of the two refuses comes to the same as a problem of that kind which both take.
TEST(SpoiltProblems, WhatOneOfFilesAndScreensTakesIsSolved) {
    Road road;
    const auto cameByFile = [&road](const Problem& problem) {
        const auto read = fromFile(problem);
        EXPECT_TRUE(read);
        Came came(road.runIn(road.ofFiles, read.value_or(problem), WedgeMethod::Sweep));
        EXPECT_FALSE(came.numbers.empty());
        return came;
    };
    const Came plain = cameByFile(plainCantilever());

    Problem ordered = plainCantilever();
    ordered.WaterDataKind = WaterData::Pressures;
    ordered.WaterPressCount = 2;
    ordered.WaterPressElev(1) = -2;
    ordered.WaterPressElev(2) = -8;
    Problem problem = ordered; // without pressures their order says nothing: screens
    std::swap(problem.WaterPressElev(1), problem.WaterPressElev(2));
    EXPECT_EQ(Came(road.run(problem)), cameByFile(ordered));

    problem = plainCantilever();
    problem.SoilWallFriction(Right, 1) = -5; // screens; a wall that holds the wedge up less
    const Came rough(road.run(problem));
    ASSERT_EQ(rough.numbers.size(), plain.numbers.size());
    EXPECT_LT(rough.numbers[0], plain.numbers[0]); // the bottom is deeper

    problem = plainCantilever();
    problem.VVarCount(Right) = 1; // of one point, which is no load: screens
    problem.VVarDist(Right, 1) = 5;
    problem.VVarLoad(Right, 1) = 100;
    EXPECT_EQ(Came(road.run(problem)), plain);

    problem = plainCantilever();
    problem.VStripCount(Right) = 1; // without load: files
    problem.VStripEnd(Right, 1) = 5;
    EXPECT_EQ(Came(road.run(problem)), plain);
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
