// Every way in which a wall can fail: its code, its place and its words.
#include "support/failing_walls.h"
#include "walls.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace korvane::test {
namespace {

std::vector<FailureCode> allCodes() {
    std::vector<FailureCode> codes;
    for (int code = 0; code < FailureCodeCount; ++code) {
        codes.push_back(static_cast<FailureCode>(code));
    }
    return codes;
}

class FailingWallTest : public testing::Test {
  protected:
    Failure failureOf(const Problem& problem) {
        return solve(problem, bySweep(), sections, workspace).failure;
    }

    PileSections sections = defaultSections();
    Workspace workspace;
};

TEST_F(FailingWallTest, TellsCodeStageAndPlace) {
    for (const FailingWall& wall : failingWalls()) {
        SCOPED_TRACE(wall.name);
        const Failure failure = failureOf(wall.problem);
        const Failure& expected = wall.expected;
        EXPECT_STREQ(failureName(failure.code), failureName(expected.code));
        EXPECT_EQ(stageText(failure.stage, wall.problem.WallType),
                  stageText(expected.stage, wall.problem.WallType));
        EXPECT_EQ(failure.side, expected.side);
        EXPECT_EQ(failure.layer, expected.layer);
        EXPECT_EQ(failure.level, expected.level);
        EXPECT_NEAR(failure.elev, expected.elev, wall.elevMargin);
        EXPECT_EQ(failure.distance, expected.distance);
        EXPECT_EQ(failure.bracketed, expected.bracketed);
        EXPECT_NEAR(failure.low - failure.high, expected.bracketed ? 0.2 : 0, 1e-9); // one step
        EXPECT_EQ(failure.error, expected.error);
        EXPECT_EQ(failure.anchored, expected.anchored);
    }
}

TEST_F(FailingWallTest, ThePreparationAloneTellsItsRefusals) {
    int refused = 0;
    for (const FailingWall& wall : failingWalls()) {
        SCOPED_TRACE(wall.name);
        const Failure failure = prepareWall(wall.problem, bySweep(), workspace);
        const bool prepares = wall.expected.stage.doing == Doing::Preparing;
        EXPECT_STREQ(failureName(failure.code),
                     failureName(prepares ? wall.expected.code : FailureCode::None));
        refused += prepares ? 1 : 0;
    }
    EXPECT_GE(refused, 4);
    Options none;
    none.wedge.reset();
    for (const FailingWall& wall : failingWalls()) {
        if (wall.expected.code == FailureCode::LayerBottomsCross) { // known before the method
            EXPECT_EQ(prepareWall(wall.problem, none, workspace).code,
                      FailureCode::LayerBottomsCross);
        }
    }
}

// What the road cannot fail with: reading, files, a refused record; what needs other options.
TEST_F(FailingWallTest, StandsForEveryCodeThatAProblemReaches) {
    std::set<FailureCode> met = {FailureCode::None,           FailureCode::InvalidProblem,
                                 FailureCode::InputRefused,   FailureCode::FileFault,
                                 FailureCode::FactorDeclined, FailureCode::WedgeMethodMissing};
    for (const FailingWall& wall : failingWalls()) {
        met.insert(wall.expected.code);
    }
    for (const FailureCode code : allCodes()) {
        EXPECT_EQ(met.count(code), 1U) << failureName(code);
    }
}

TEST(FailureWords, EveryCodeHasANameOfItsOwn) {
    std::set<std::string> names;
    for (const FailureCode code : allCodes()) {
        const std::string name = failureName(code);
        EXPECT_FALSE(name.empty());
        EXPECT_TRUE(names.insert(name).second) << name;
    }
}

// A search that was told to stop, an input that the reader has refused and a file that could not be
// written have been told otherwise.
TEST(FailureWords, EveryOtherCodeHasABox) {
    const std::set<FailureCode> without = {FailureCode::None, FailureCode::FactorDeclined,
                                           FailureCode::InputRefused, FailureCode::FileFault};
    for (const FailureCode code : allCodes()) {
        EXPECT_EQ(hasBox({.code = code}), without.count(code) == 0) << failureName(code);
    }
}

TEST(FailureWords, ABoxHasTheValuesOfItsFailure) {
    for (const FailingWall& wall : failingWalls()) {
        SCOPED_TRACE(wall.name);
        const MessageBox box = failureBox(wall.expected);
        EXPECT_FALSE(box.title.empty());
        EXPECT_EQ(box.text.find_first_of("{}"), std::string::npos) << box.text;
        EXPECT_EQ(failureHasElevation(wall.expected.code), wall.expected.elev != 0);
    }
}

TEST(FailureWords, EveryStageHasWords) {
    const auto words = [](Doing doing, WallKind wall = WallKind::Anchored, int level = 2) {
        return stageText({doing, Left, level}, wall);
    };
    EXPECT_EQ(words(Doing::Reading), "reading the input");
    EXPECT_EQ(words(Doing::Preparing), "preparing the solution");
    EXPECT_EQ(words(Doing::SoilPressures), "finding the soil pressures of the left side");
    EXPECT_EQ(words(Doing::NetPressures), "combining the net pressures");
    EXPECT_EQ(words(Doing::WallBottom),
              "searching the bottom of the anchored wall by the fixed earth method");
    EXPECT_EQ(words(Doing::WallBottom, WallKind::Anchored, 1),
              "searching the bottom of the anchored wall by the free earth method");
    EXPECT_EQ(words(Doing::WallBottom, WallKind::Cantilever, 1),
              "searching the bottom of the cantilever wall");
    EXPECT_EQ(words(Doing::Bending, WallKind::Cantilever, 1),
              "finding moments and deflections of the cantilever wall");
    EXPECT_EQ(words(Doing::FactorOfSafety, WallKind::Cantilever, 1),
              "searching the factor of safety of the cantilever wall");
    EXPECT_EQ(words(Doing::MomentReduction), "reducing the moments");
    EXPECT_EQ(words(Doing::Reporting), "writing the reports");
}

} // namespace
} // namespace korvane::test
