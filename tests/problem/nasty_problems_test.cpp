// The nasty problems that scripts/compare solves: readable, the same for a seed, and nasty indeed.
#include "problem/input_writer.h"
#include "reading_helpers.h"
#include "support/nasty_problem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace korvane::test {
namespace {

bool has(const NastyProblem& nasty, const std::string& twist) {
    return std::find(nasty.twists.begin(), nasty.twists.end(), twist) != nasty.twists.end();
}

double height(const Problem& problem) {
    return problem.WallTopElev - problem.SurfaceElev(Left, 1);
}

/// What a problem with a twist shows, unless a twist that is applied later undoes it.
struct Sign {
    const char* twist;
    std::vector<std::string> undoneBy;
    bool (*shows)(const Problem& problem);
};

/// True where `holds(side)` holds for either side.
template <class Holds>
bool either(Holds holds) {
    return holds(Right) || holds(Left);
}

/// True where `holds(layer)` holds for a layer of the side that is given by strengths.
template <class Holds>
bool anyStrength(const Problem& problem, int side, Holds holds) {
    bool any = false;
    for (int layer = 1;
         problem.SoilDataKind(side) == SoilData::Strengths && layer <= problem.SoilLayerCount(side);
         ++layer) {
        any = any || holds(layer);
    }
    return any;
}

const std::vector<Sign> signs{
    {"long wall",
     {"tiny height", "wrong length", "near misses"},
     [](const Problem& p) {
         const bool analysis = p.ProgramMode == Mode::Analysis;
         return (analysis ? p.WallTopElev - p.WallBottomElev : 3 * height(p)) > 79.9;
     }},
    {"tiny height",
     {"near misses"},
     [](const Problem& p) {
         const double retained = p.SurfaceElev(Right, 1) - p.SurfaceElev(Left, 1);
         return retained > -0.01 && retained < 1.01;
     }},
    {"wrong length",
     {"anchor at an end", "near misses"},
     [](const Problem& p) {
         const double depth = p.SurfaceElev(Left, 1) - p.WallBottomElev;
         return p.ProgramMode == Mode::Analysis &&
                (depth < 0.4 * height(p) + 1.1 || depth > 3 * height(p) - 0.1);
     }},
    {"steep right",
     {"eleven points", "near misses"},
     [](const Problem& p) {
         const double rise = std::abs(p.SurfaceElev(Right, 2) - p.SurfaceElev(Right, 1));
         const double run = p.SurfaceDist(Right, 2) - p.SurfaceDist(Right, 1);
         return p.SurfacePointCount(Right) > 1 && rise > 0.2 * run;
     }},
    {"eleven points",
     {},
     [](const Problem& p) {
         return either([&](int side) { return p.SurfacePointCount(side) == 11; });
     }},
    {"many layers",
     {"thin layers"},
     [](const Problem& p) {
         return either([&](int side) { return p.SoilLayerCount(side) >= 7; });
     }},
    {"rough wall",
     {"clay with adhesion", "barely driven", "coefficients with surface"},
     [](const Problem& p) {
         return either([&](int side) {
             return anyStrength(p, side, [&](int layer) {
                 return p.SoilFriction(side, layer) >= 44 &&
                        p.SoilWallFriction(side, layer) > p.SoilFriction(side, layer) / 2;
             });
         });
     }},
    {"flooded",
     {"large head", "water table", "barely driven", "near misses"},
     [](const Problem& p) {
         return p.WaterDataKind == WaterData::Elevations && p.WaterElev(Right) > p.WallTopElev;
     }},
    {"water table",
     {"barely driven"},
     [](const Problem& p) {
         return p.WaterDataKind == WaterData::Pressures && p.WaterPressCount >= 2;
     }},
    {"loads at the limits",
     {"barely driven"},
     [](const Problem& p) { return either([&](int side) { return p.VUniformCount(side) == 1; }); }},
    {"barely driven",
     {"near misses"},
     [](const Problem& p) {
         return p.HLineCount == 1 && p.HLineLoad(1) < 0 &&
                p.HLineLoad(1) > -62.4 * height(p) * height(p) / 2 - 1;
     }},
    {"anchor at an end",
     {"near misses"},
     [](const Problem& p) {
         return p.WallType == WallKind::Anchored &&
                (p.AnchorElev == p.WallTopElev || p.AnchorElev == p.SurfaceElev(Right, 1) ||
                 p.AnchorElev <= p.SurfaceElev(Left, 1));
     }},
    {"coefficients with surface",
     {},
     [](const Problem& p) {
         return either([&](int side) {
             return p.SoilDataKind(side) == SoilData::Coefficients && p.SurfacePointCount(side) > 1;
         });
     }},
    {"datum", {}, [](const Problem& p) { return std::abs(p.WallTopElev) > 1000; }},
};

TEST(NastyProblemsTest, EveryOneIsReadWhole) {
    NastyProblems problems(5);
    for (int run = 0; run < 2000; ++run) {
        const Outcome outcome = readText(inputFileText(problems.next().problem));
        ASSERT_TRUE(outcome.result.complete) << "run " << run << ": " << outcome.result;
        ASSERT_EQ(outcome.runtimeError, 0) << "run " << run;
    }
}

TEST(NastyProblemsTest, ASeedGivesTheSameProblemsAndAnotherSeedOthers) {
    NastyProblems problems(5);
    NastyProblems same(5);
    NastyProblems other(6);
    int equal = 0;
    for (int run = 0; run < 100; ++run) {
        const Problem problem = problems.next().problem;
        ASSERT_EQ(inputFileText(problem), inputFileText(same.next().problem)) << "run " << run;
        equal += problem == other.next().problem ? 1 : 0;
    }
    EXPECT_EQ(equal, 0);
}

TEST(NastyProblemsTest, EveryTwistOccursAndIsNamed) {
    NastyProblems problems(5);
    std::map<std::string, int> seen;
    for (int run = 0; run < 2000; ++run) {
        const NastyProblem nasty = problems.next();
        const Problem& problem = nasty.problem;
        ASSERT_FALSE(nasty.twists.empty());
        for (const std::string& twist : nasty.twists) {
            ++seen[twist];
            EXPECT_NE(problem.HeadingLines(problem.NumHeadingLines).find(twist), std::string::npos);
        }
    }
    for (const std::string& twist : twistNames()) {
        EXPECT_GE(seen[twist], 10) << twist;
    }
}

TEST(NastyProblemsTest, TwistsDoWhatTheirNamesSay) {
    NastyProblems problems(5);
    for (int run = 0; run < 2000; ++run) {
        const NastyProblem nasty = problems.next();
        for (const Sign& sign : signs) {
            const bool undone =
                std::any_of(sign.undoneBy.begin(), sign.undoneBy.end(),
                            [&](const std::string& later) { return has(nasty, later); });
            if (has(nasty, sign.twist) && !undone) {
                EXPECT_TRUE(sign.shows(nasty.problem)) << "run " << run << ": " << sign.twist;
            }
        }
    }
}

/// The limits of the input file are reached, not only approached.
TEST(NastyProblemsTest, TogetherTheyReachTheLimits) {
    NastyProblems problems(5);
    double thinnest = 100;
    int layers = 0;
    int lines = 0;
    int points = 0;
    double steepest = 0;
    double friction = 0;
    for (int run = 0; run < 2000; ++run) {
        const Problem problem = problems.next().problem;
        for (const int side : {Right, Left}) {
            layers = std::max(layers, problem.SoilLayerCount(side));
            lines = std::max(lines, problem.VLineCount(side));
            points = std::max(points, problem.VVarCount(side));
            friction = std::max(friction, problem.SoilFriction(side, 1));
            for (int layer = 2; layer < problem.SoilLayerCount(side); ++layer) {
                thinnest = std::min(thinnest, problem.SoilBottomElev(side, layer - 1) -
                                                  problem.SoilBottomElev(side, layer));
            }
            for (int point = 2; point <= problem.SurfacePointCount(side); ++point) {
                steepest = std::max(steepest, std::abs(problem.SurfaceElev(side, point) -
                                                       problem.SurfaceElev(side, point - 1)) /
                                                  (problem.SurfaceDist(side, point) -
                                                   problem.SurfaceDist(side, point - 1)));
            }
        }
    }
    EXPECT_EQ(layers, 11);
    EXPECT_EQ(lines, 5);
    EXPECT_EQ(points, 11);
    EXPECT_EQ(friction, 45);
    EXPECT_GT(thinnest, 0);
    EXPECT_LT(thinnest, 0.03);
    EXPECT_GT(steepest, 4);
}

} // namespace
} // namespace korvane::test
