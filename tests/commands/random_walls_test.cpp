// Random walls of all kinds from the input file to the report: what must hold for each of them.
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"
#include "support/balance.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

namespace korvane::test {
namespace {

constexpr int WallCount = 400;

/// The limit of a question of a large factor; 0 for any other box.
double limitAskedFor(const MessageBox& box) {
    for (const double limit : {5.0, 10.0, 15.0, 20.0, 25.0}) {
        if (box == factorQuestion(limit)) {
            return limit;
        }
    }
    return 0;
}

/// Every second wall takes the fixed surface where a wedge method is needed.
void solveFromFile(Office& office, const Problem& problem, int number) {
    const bool fixed = number % 2 == 0;
    office.desktop.onScreen = [fixed](Screen screen, Session& session) {
        if (screen == Screen::WEDGMETH && fixed) {
            session.wedge = WedgeMethod::FixedSurface;
        }
    };
    // Yes to the question of a large factor up to 20, as the batch command answers.
    office.desktop.onBox = [&office](const MessageBox& box) {
        if (const double limit = limitAskedFor(box); limit > 0) {
            office.desktop.answers.push_back(limit > 20 ? Answer::No : Answer::Yes);
        }
    };
    office.open(office.write("wall.dat", inputFileText(problem)));
    ASSERT_EQ(office.session->SolutionFailed, 0);
    office.desktop.boxes.clear(); // of the reader
    office.solve();
}

void expectDescending(const ElevationGrid& grid) {
    for (int i = 2; i <= grid.NumElevs; ++i) {
        ASSERT_LT(grid.ElevGrid(i), grid.ElevGrid(i - 1)) << "row " << i;
    }
}

/// The searches end with a force within 0.1 LB (the free earth anchor force takes it all) and a
/// moment within 1 LB-FT of balance; sums of hundreds of rows add rounding.
void expectBalance(const Problem& problem, const Results& results, int level) {
    const Balance balance = balanceOf(problem, results.levels(level));
    const double rounding = 1e-7;
    const bool fixedEarth = problem.WallType == WallKind::Anchored && level == 2;
    if (!fixedEarth) { // built in at its foot the wall has a reaction there
        EXPECT_LE(std::fabs(balance.force), 0.1 + rounding * balance.sizes);
    }
    EXPECT_LE(std::fabs(balance.moment), 1.0 + rounding * balance.momentSizes);
}

int lineCount(const std::string& text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

/// The boxes of a solution without the questions: those of its failure, and the others in one text.
struct ToldBoxes {
    int failures = 0;
    std::string others;
};

ToldBoxes toldBoxes(const Office& office) {
    const Failure& failure = office.session->notes.solved.failure;
    ToldBoxes told;
    for (const MessageBox& box : office.desktop.boxes) {
        if (failure && box == failureBox(failure)) {
            ++told.failures;
        } else if (limitAskedFor(box) == 0) {
            told.others += box.text + "\n\n";
        }
    }
    return told;
}

/// Every unsafe note stands in one box, and no other note nor anything else in any.
void expectUnsafeNotesTold(const Office& office, std::string boxes) {
    std::replace(boxes.begin(), boxes.end(), '\n', ' '); // lines are broken at blanks
    for (const Note& note : office.session->notes.list) {
        const std::size_t at = boxes.find(note.text);
        EXPECT_EQ(at != std::string::npos, note.severity == Severity::Unsafe) << note.text;
        if (at != std::string::npos) {
            boxes.erase(at, note.text.size());
        }
    }
    EXPECT_EQ(boxes.find_first_not_of(' '), std::string::npos) << boxes;
}

void expectInvariants(const Office& office) {
    const Session& session = *office.session;
    EXPECT_EQ(office.session->stage, FlowStage::Rest);
    EXPECT_FALSE(office.desktop.busy);
    EXPECT_EQ(lineCount(office.report()), session.report.OutputLineCount);

    const ToldBoxes told = toldBoxes(office);
    expectUnsafeNotesTold(office, told.others);
    const std::string& words = office.session->panels.panDoneText;
    if (session.SolutionFailed != 0) {
        EXPECT_EQ(words, "SOLUTION ABORTED DUE TO CALCULATION ERRORS");
        EXPECT_NE(session.notes.solved.failure.code, FailureCode::None);
        EXPECT_EQ(told.failures, hasBox(session.notes.solved.failure) ? 1 : 0); // none if stopped
        return;
    }
    EXPECT_EQ(words, "SOLUTION COMPLETE");
    EXPECT_EQ(session.notes.solved.failure.code, FailureCode::None);
    const Results& results = session.workspace.results();
    ASSERT_EQ(results.levelCount, session.problem.WallType == WallKind::Anchored ? 2 : 1);
    for (int level = 1; level <= results.levelCount; ++level) {
        expectDescending(results.levels(level).solved.grid);
        expectBalance(session.problem, results, level);
    }
}

TEST(RandomWalls, KeepGridBalanceCountsAndMessagesConsistent) {
    RandomProblems problems(20261121);
    int solved = 0;
    for (int number = 1; number <= WallCount; ++number) {
        const Problem problem = problems.next();
        SCOPED_TRACE("wall " + std::to_string(number) + "\n" + inputFileText(problem));
        Office office;
        solveFromFile(office, problem, number);
        expectInvariants(office);
        solved += office.session->SolutionFailed == 0 ? 1 : 0;
        if (HasFailure()) {
            return; // one wall is enough to look at
        }
    }
    EXPECT_GE(solved, WallCount / 2) << "too few walls can be solved to show anything";
}

/// Bottom elevation of a cantilever design; none where it cannot be solved.
std::optional<double> bottomOf(const Problem& problem) {
    Office office;
    solveFromFile(office, problem, 1);
    if (office.session->SolutionFailed != 0) {
        return {};
    }
    return office.session->workspace.results().levels(1).bottomElev;
}

/// Cantilever walls by coefficients without wall friction and seepage.
RandomKind plainKind(RandomKind::Soil soil) {
    RandomKind kind;
    kind.anchored = false;
    kind.analysis = false;
    kind.soil = soil;
    kind.friction = false;
    kind.adhesion = false;
    kind.sloping = false;
    kind.factors = false;
    kind.water = RandomKind::Water::Level;
    return kind;
}

/// The moment test leaves the bottom that much room, FT.
constexpr double BottomRoom = 0.05;

/// Solves each problem before and after a change that must not shorten (or must not deepen) the
/// wall.
void expectMonotony(RandomKind::Soil soil, bool deeper,
                    const std::function<void(Problem&)>& change) {
    RandomProblems problems(7);
    int compared = 0;
    for (int number = 1; number <= 400 && compared < 40; ++number) {
        Problem problem = problems.next(plainKind(soil));
        const auto before = bottomOf(problem);
        change(problem);
        SCOPED_TRACE(inputFileText(problem));
        const auto after = bottomOf(problem);
        if (before && after) {
            ++compared;
            const double lower = *before - *after; // FT by which the wall grew
            EXPECT_GE(deeper ? lower : -lower, -BottomRoom);
        }
    }
    EXPECT_GE(compared, 40);
}

TEST(RandomWalls, MorePassiveFactorNeverShortensACantileverWall) {
    expectMonotony(RandomKind::Soil::Sand, true,
                   [](Problem& problem) { problem.FSPassive += 0.25; });
}

TEST(RandomWalls, HeavierUniformLoadOnTheRetainedSideNeverShortensACantileverWall) {
    expectMonotony(RandomKind::Soil::Sand, true, [](Problem& problem) {
        problem.VUniformLoad(Right) =
            (problem.VUniformCount(Right) != 0 ? problem.VUniformLoad(Right) : 0) + 200;
        problem.VUniformCount(Right) = 1;
        if (problem.VUniformCount(Left) == 0) {
            problem.VUniformLoad(Left) = 0;
        }
    });
}

TEST(RandomWalls, MoreCohesionNeverDeepensACantileverWall) {
    expectMonotony(RandomKind::Soil::Clay, false, [](Problem& problem) {
        for (const int side : {Right, Left}) {
            for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
                if (problem.SoilCohesion(side, layer) > 0) {
                    problem.SoilCohesion(side, layer) += 100;
                }
            }
        }
    });
}

} // namespace
} // namespace korvane::test
