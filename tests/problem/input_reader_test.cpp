// The input file reader on good files, and the rules that no single field shows.

#include "reading_helpers.h"

#include "runtime/file_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::test;

namespace {

Problem readBase(const std::string& name) {
    const Outcome outcome = readText(readFile(sourceFolder() / "tests/data/bad-input" / name));
    EXPECT_TRUE(outcome.result.complete) << outcome.result;
    return outcome.problem;
}

/// Entries 1 to n of a list of one side.
template <int N>
std::vector<double> entries(const Array<double, 2, N>& list, int side, int n) {
    std::vector<double> values;
    for (int i = 1; i <= n; ++i) {
        values.push_back(list(side, i));
    }
    return values;
}
template <int N>
std::vector<double> entries(const Array<double, N>& list, int n) {
    std::vector<double> values;
    for (int i = 1; i <= n; ++i) {
        values.push_back(list(i));
    }
    return values;
}

using Values = std::vector<double>;

} // namespace

TEST(InputReader, HeadControlAndWallOfADesignAsTheyStandInTheFile) {
    const Problem p = readBase("design.dat");
    EXPECT_EQ(p.NumHeadingLines, 2);
    EXPECT_EQ(p.HeadingLines(1), "'ANCHORED DESIGN ");
    EXPECT_EQ(p.HeadingLines(2), "'WITH EVERY KIND OF LINE ");
    EXPECT_EQ(p.WallType, WallKind::Anchored);
    EXPECT_EQ(p.ProgramMode, Mode::Design);
    EXPECT_EQ(p.FSActive, 1.1);
    EXPECT_EQ(p.FSPassive, 1.6);
    EXPECT_EQ(p.WallTopElev, 20);
    EXPECT_EQ(p.AnchorElev, 16);
}

TEST(InputReader, SurfaceAndSoilOfADesignAsTheyStandInTheFile) {
    const Problem p = readBase("design.dat");
    EXPECT_EQ(entries(p.SurfaceDist, Right, p.SurfacePointCount(Right)), (Values{0, 10, 30}));
    EXPECT_EQ(entries(p.SurfaceElev, Right, 3), (Values{20, 21, 22}));
    EXPECT_EQ(entries(p.SurfaceDist, Left, p.SurfacePointCount(Left)), (Values{0, 15}));
    EXPECT_EQ(entries(p.SurfaceElev, Left, 2), (Values{5, 6}));

    EXPECT_EQ(p.SoilDataKind(Right), SoilData::Strengths);
    EXPECT_EQ(p.SoilLayerCount(Right), 3);
    EXPECT_EQ(p.Level2FSActive(Right), 1.2);
    EXPECT_EQ(p.Level2FSPassive(Right), 1.3);
    EXPECT_EQ(entries(p.SoilSatWeight, Right, 3), (Values{121, 122, 123}));
    EXPECT_EQ(entries(p.SoilMoistWeight, Right, 3), (Values{111, 112, 113}));
    EXPECT_EQ(entries(p.SoilFriction, Right, 3), (Values{30, 0, 32}));
    EXPECT_EQ(entries(p.SoilCohesion, Right, 3), (Values{0, 500, 0}));
    EXPECT_EQ(entries(p.SoilWallFriction, Right, 3), (Values{15, 0, 10}));
    EXPECT_EQ(entries(p.SoilAdhesion, Right, 3), (Values{0, 200, 0}));
    EXPECT_EQ(entries(p.SoilBottomElev, Right, 3), (Values{10, 0, -200000}));
    EXPECT_EQ(entries(p.SoilFSActive, Right, 3), (Values{1.1, 0, 1.25}));
    EXPECT_EQ(entries(p.SoilFSPassive, Right, 3), (Values{1.4, 0, 1.5}));

    EXPECT_EQ(p.SoilDataKind(Left), SoilData::Coefficients);
    EXPECT_EQ(p.SoilLayerCount(Left), 3);
    EXPECT_EQ(p.Level2FSActive(Left), 1.15); // read for coefficients too
    EXPECT_EQ(p.Level2FSPassive(Left), 1.35);
    EXPECT_EQ(entries(p.SoilSatWeight, Left, 3), (Values{124, 125, 126}));
    EXPECT_EQ(entries(p.SoilMoistWeight, Left, 3), (Values{114, 115, 116}));
    EXPECT_EQ(entries(p.SoilCoefActive, Left, 3), (Values{0.3, 0.28, 0.25}));
    EXPECT_EQ(entries(p.SoilCoefPassive, Left, 3), (Values{4.5, 5.0, 5.5}));
    EXPECT_EQ(entries(p.SoilBottomElev, Left, 3), (Values{-2, -8, -200000}));
}

TEST(InputReader, WaterAndVerticalLoadsOfADesignAsTheyStandInTheFile) {
    const Problem p = readBase("design.dat");
    EXPECT_EQ(p.WaterDataKind, WaterData::Elevations);
    EXPECT_EQ(p.WaterUnitWeight, 62.4);
    EXPECT_EQ(p.WaterElev(Right), 12);
    EXPECT_EQ(p.WaterElev(Left), 4);
    EXPECT_EQ(p.SeepageKind, Seepage::Automatic);
    EXPECT_EQ(p.SeepageElev, 4.5);
    EXPECT_EQ(entries(p.SeepageGradient, 2), (Values{0, 0}));

    EXPECT_EQ(entries(p.VLineDist, Right, p.VLineCount(Right)), (Values{5, 12}));
    EXPECT_EQ(entries(p.VLineLoad, Right, 2), (Values{400, 300}));
    EXPECT_EQ(entries(p.VLineDist, Left, p.VLineCount(Left)), (Values{3}));
    EXPECT_EQ(entries(p.VLineLoad, Left, 1), (Values{100}));
    EXPECT_EQ(p.VUniformCount(Right), 1);
    EXPECT_EQ(p.VUniformLoad(Right), 150);
    EXPECT_EQ(p.VUniformCount(Left), 1);
    EXPECT_EQ(p.VUniformLoad(Left), 50);
    EXPECT_EQ(entries(p.VStripStart, Right, p.VStripCount(Right)), (Values{4, 20}));
    EXPECT_EQ(entries(p.VStripEnd, Right, 2), (Values{10, 30}));
    EXPECT_EQ(entries(p.VStripLoad, Right, 2), (Values{0, 250}));
    EXPECT_EQ(p.VStripCount(Left), 1);
    EXPECT_EQ(p.VStripEnd(Left, 1), 6);
    EXPECT_EQ(p.VRampCount(Right), 1);
    EXPECT_EQ(p.VRampStart(Right), 25);
    EXPECT_EQ(p.VRampEnd(Right), 40);
    EXPECT_EQ(p.VRampLoad(Right), 200);
    EXPECT_EQ(p.VRampCount(Left), 1);
    EXPECT_EQ(p.VRampLoad(Left), 60);
    EXPECT_EQ(entries(p.VTriStart, Right, p.VTriCount(Right)), (Values{8, 9}));
    EXPECT_EQ(entries(p.VTriPeak, Right, 2), (Values{12, 13}));
    EXPECT_EQ(entries(p.VTriEnd, Right, 2), (Values{20, 21}));
    EXPECT_EQ(entries(p.VTriLoad, Right, 2), (Values{180, 0}));
    EXPECT_EQ(entries(p.VTriEnd, Left, p.VTriCount(Left)), (Values{7}));
    EXPECT_EQ(entries(p.VVarDist, Right, p.VVarCount(Right)), (Values{30, 36, 45}));
    EXPECT_EQ(entries(p.VVarLoad, Right, 3), (Values{100, 220, 120}));
    EXPECT_EQ(entries(p.VVarDist, Left, p.VVarCount(Left)), (Values{1, 2}));
    EXPECT_EQ(entries(p.VVarLoad, Left, 2), (Values{10, 20}));
}

TEST(InputReader, HorizontalLoadsOfADesignAsTheyStandInTheFile) {
    const Problem p = readBase("design.dat");
    EXPECT_EQ(entries(p.HLineElev, p.HLineCount), (Values{18, 3}));
    EXPECT_EQ(entries(p.HLineLoad, 2), (Values{500, -250}));
    EXPECT_EQ(entries(p.HDistElev, p.HDistCount), (Values{17, 12, 7}));
    EXPECT_EQ(entries(p.HDistLoad, 3), (Values{60, 90, 0}));
}

TEST(InputReader, AnAnalysisHasBottomModulusInertiaAndOneFactor) {
    const Problem p = readBase("analysis.dat");
    EXPECT_EQ(p.WallType, WallKind::Cantilever);
    EXPECT_EQ(p.ProgramMode, Mode::Analysis);
    EXPECT_EQ(p.FSKind, FactorKind::ActiveGiven);
    EXPECT_EQ(p.FSActive, 1.2);
    EXPECT_EQ(p.WallTopElev, 10);
    EXPECT_EQ(p.WallBottomElev, -14);
    EXPECT_EQ(p.WallModulus, 2.9e7);
    EXPECT_EQ(p.WallInertia, 280.8);
    const Problem anchored = readBase("anchored-analysis.dat");
    EXPECT_EQ(anchored.FSKind, FactorKind::OneForBoth);
    EXPECT_EQ(anchored.FSActive, 1.0);
    EXPECT_EQ(anchored.AnchorElev, 15);
    EXPECT_EQ(anchored.WallBottomElev, -12);
}

TEST(InputReader, AnalysisDataAsTheyStandInTheFile) {
    const Problem p = readBase("analysis.dat");
    EXPECT_EQ(p.WaterDataKind, WaterData::Pressures);
    EXPECT_EQ(p.SeepageKind, Seepage::None);
    EXPECT_EQ(entries(p.WaterPressElev, p.WaterPressCount), (Values{8, 4, 0, -6}));
    EXPECT_EQ(entries(p.WaterPressure, 4), (Values{0, 250, 250, 0}));
    EXPECT_EQ(p.SoilFSActive(Right, 1), 1.1);
    EXPECT_EQ(p.SoilFSPassive(Right, 1), 0);
    EXPECT_EQ(p.SoilFSActive(Right, 2), 0); // "0 1.2": the given order holds
    EXPECT_EQ(p.SoilFSPassive(Right, 2), 1.2);
    EXPECT_EQ(p.VRampCount(Right), 1);
    EXPECT_EQ(p.VRampCount(Left), 0);
}

TEST(InputReader, SideBGivesTheLeftSideAllThatTheRightSideHas) {
    const Problem p = readBase("analysis.dat");
    EXPECT_EQ(p.SoilDataKind(Left), SoilData::Strengths);
    EXPECT_EQ(p.SoilLayerCount(Left), 2);
    for (const auto* list : {&p.SoilSatWeight, &p.SoilMoistWeight, &p.SoilFriction, &p.SoilCohesion,
                             &p.SoilWallFriction, &p.SoilAdhesion, &p.SoilBottomElev,
                             &p.SoilFSActive, &p.SoilFSPassive}) {
        EXPECT_EQ(entries(*list, Left, 2), entries(*list, Right, 2));
    }
    EXPECT_EQ(p.SoilBottomElev(Left, 1), -5);
    EXPECT_EQ(p.VLineCount(Left), 1);
    EXPECT_EQ(p.VLineDist(Left, 1), 4);
    EXPECT_EQ(p.VLineLoad(Left, 1), 500);

    const Problem coefficients = readBase("anchored-analysis.dat");
    EXPECT_EQ(entries(coefficients.SurfaceDist, Left, coefficients.SurfacePointCount(Left)),
              (Values{0, 20}));
    EXPECT_EQ(entries(coefficients.SurfaceElev, Left, 2), (Values{18, 17}));
    EXPECT_EQ(coefficients.SoilDataKind(Left), SoilData::Coefficients);
    EXPECT_EQ(coefficients.SoilCoefActive(Left, 1), 0.3);
    EXPECT_EQ(coefficients.SoilCoefPassive(Left, 1), 3.5);
}

TEST(InputReader, SideBOfEveryKindOfLoad) {
    const Outcome outcome = readText(plainFile("V STRIP BOTH 2 1 2 30\n3 4 50\n"
                                               "V RAMP BOTH 5 6 70\n"
                                               "V TRI BOTH 2 1 2 3 40\n5 6 7 80\n"
                                               "V VAR BOTH 3 1 2 3 4\n5 6\n"));
    ASSERT_TRUE(outcome.result.complete);
    const Problem& p = outcome.problem;
    for (const int side : {Right, Left}) {
        EXPECT_EQ(entries(p.VStripStart, side, p.VStripCount(side)), (Values{1, 3}));
        EXPECT_EQ(entries(p.VStripEnd, side, 2), (Values{2, 4}));
        EXPECT_EQ(entries(p.VStripLoad, side, 2), (Values{30, 50}));
        EXPECT_EQ(p.VRampCount(side), 1);
        EXPECT_EQ(p.VRampStart(side), 5);
        EXPECT_EQ(p.VRampEnd(side), 6);
        EXPECT_EQ(p.VRampLoad(side), 70);
        EXPECT_EQ(entries(p.VTriStart, side, p.VTriCount(side)), (Values{1, 5}));
        EXPECT_EQ(entries(p.VTriPeak, side, 2), (Values{2, 6}));
        EXPECT_EQ(entries(p.VTriEnd, side, 2), (Values{3, 7}));
        EXPECT_EQ(entries(p.VTriLoad, side, 2), (Values{40, 80}));
        EXPECT_EQ(entries(p.VVarDist, side, p.VVarCount(side)), (Values{1, 3, 5}));
        EXPECT_EQ(entries(p.VVarLoad, side, 3), (Values{2, 4, 6}));
    }
}

TEST(InputReader, FactorsOfADesign) {
    const auto factors = [](const std::string& words) {
        const Problem p = readText("'H\nCONTROL C D " + words +
                                   "\nWALL 10\nSURFACE B 1 0 0\nSOIL B C 1\n120 110 1 1\nF\n")
                              .problem;
        return Values{p.FSActive, p.FSPassive};
    };
    EXPECT_EQ(factors(""), (Values{1.0, 1.5}));
    EXPECT_EQ(factors("1.2"), (Values{1.2, 1.2})); // one factor serves for both
    EXPECT_EQ(factors("1.2 1.4"), (Values{1.2, 1.4}));
}

TEST(InputReader, BlankLinesAndCommentsOnlyGiveTheIncompleteFileMessage) {
    EXPECT_EQ(readText("\n( a comment\n\n   \n   ( another\n", "wall 1.dat").result,
              incompleteFile("wall 1.dat"));
}

TEST(InputReader, KeywordsAreNotCaseSensitiveAndOnlyTheirBeginningsCount) {
    EXPECT_TRUE(readText("'h\ncat cow dog\nwalrus 10\nsurface rook 1 0 10\nsubsoil lamp 1 0 0\n"
                         "sofa bed sand 1\n120 110 30 0 0 0\nwater else 62.4 1 1\nfish\n")
                    .result.complete);
}

TEST(InputReader, AHeadingIsHeldInUpperCaseWithApostropheAndOneTrailingBlank) {
    const Problem p = readText("   'Quay  wall, sta. 1+00    \n" + plainFile()).problem;
    EXPECT_EQ(p.HeadingLines(1), "'QUAY  WALL, STA. 1+00 ");
}

TEST(InputReader, CommentsMayStandAmongTheHeadingsAndBetweenALineAndItsContinuation) {
    const Outcome outcome = readText("'ONE\n( comment\n'TWO\nCONTROL C D\nWALL 10\n"
                                     "SURFACE R 2 0 10\n( comment\n\n 20 11\nSURFACE L 1 0 0\n"
                                     "SOIL B S 1\n( comment\n120 110 30 0 0 0\nF\n");
    EXPECT_TRUE(outcome.result.complete);
    EXPECT_EQ(outcome.problem.NumHeadingLines, 2);
    EXPECT_EQ(outcome.problem.SurfaceElev(Right, 2), 11);
}

TEST(InputReader, TheFifthHeadingIsRefusedBeforeItIsStored) {
    const Outcome outcome = readText("'1\n'2\n'3\n'4\n'5\n" + plainFile());
    EXPECT_EQ(outcome.result,
              (ReadResult{false, "INPUT DATA ERRORS",
                          "Number of HEADING LINES is greater than 4.Current input line is:\n\n'5 "
                          "\n\nUnable to continue."}));
    EXPECT_EQ(outcome.problem.NumHeadingLines, 4);
    EXPECT_EQ(outcome.problem.HeadingLines(4), "'4 ");
}

TEST(InputReader, ALineWithMoreThan20TokensLosesTheRestWithoutComplaint) {
    EXPECT_TRUE(
        readText(plainFile("V LINE R 2 5 400 12 300 9 10 11 12 13 14 15 16 17 18 19 20 ? ? ?\n"))
            .result.complete);
}

TEST(InputReader, ASurfaceLineForSideLBeforeSideRIsAnError) {
    EXPECT_EQ(readText("'H\nCONTROL C D\nWALL 10\nSURFACE L 1 0 0\n").result,
              dataError("SOIL SURFACE DATA", "SURFACE L 1 0 0"));
}

TEST(InputReader, ALineLoadForSideLBeforeSideRIsAcceptedAndFailsAtTheRightSidesLine) {
    const Outcome outcome = readText(plainFile("VERTICAL LINE LEFT 1 5 400\n"
                                               "VERTICAL LINE RIGHT 1 6 500\n"));
    EXPECT_EQ(outcome.result, dataError("VERTICAL LINE LOADS", "VERTICAL LINE RIGHT 1 6 500"));
    EXPECT_EQ(outcome.problem.VLineCount(Left), 1);
    EXPECT_EQ(outcome.problem.VLineCount(Right), 0);
}

TEST(InputReader, WaterPressCountOf12IsAnErrorAlthoughTheListsHaveRoom) {
    std::string lines = "WATER PRESSURES 12 20 0 19 0\n";
    for (int point = 3; point <= 12; ++point) {
        lines += std::to_string(21 - point) + " 0\n";
    }
    EXPECT_EQ(readText(plainFile(lines)).result,
              dataError("WATER DATA", "WATER PRESSURES 12 20 0 19 0"));
}

TEST(InputReader, ALevel2FactorWithSideBStaysWithTheRightSide) {
    const Problem p = readText("'H\nCONTROL C D\nWALL 10\nSURFACE B 1 0 0\n"
                               "SOIL BOTH S 1 1.2 1.3\n120 110 30 0 0 0 1.4 1.6\nF\n")
                          .problem;
    EXPECT_EQ(p.Level2FSActive(Right), 1.2);
    EXPECT_EQ(p.Level2FSPassive(Right), 1.3);
    EXPECT_EQ(p.Level2FSActive(Left), 0);
    EXPECT_EQ(p.Level2FSPassive(Left), 0);
    EXPECT_EQ(p.SoilFSActive(Left, 1), 1.4); // a layer's own factors are copied
    EXPECT_EQ(p.SoilFSPassive(Left, 1), 1.6);
}

TEST(InputReader, ABottomElevationOnTheLastLayerIsTakenAsItsActiveFactor) {
    const auto lastLayer = [](const std::string& layer) {
        return readText("'H\nCONTROL C D\nWALL 10\nSURFACE B 1 0 0\nSOIL B S 1\n" + layer +
                        "\nF\n");
    };
    const Outcome shifted = lastLayer("120 110 30 0 0 0 5 0.1 1.2 1.3");
    EXPECT_TRUE(shifted.result.complete);
    EXPECT_EQ(shifted.problem.SoilFSActive(Right, 1), 5);
    EXPECT_EQ(shifted.problem.SoilFSPassive(Right, 1), 0.1);
    EXPECT_EQ(shifted.problem.SoilBottomElev(Right, 1), -200000.0);
    EXPECT_EQ(lastLayer("120 110 30 0 0 0 -5 0").result,
              dataError("SOIL LAYER DATA", "120 110 30 0 0 0 -5 0"));
}

TEST(InputReader, TheSlopeOfALayerIsDroppedAndTheRecordsOwnIsKeptAndCopied) {
    Problem problem;
    clearProblemData(problem);
    problem.SoilBottomSlope(Right, 1) = 0.25;
    problem.SoilBottomSlope(Left, 1) = -0.5;
    const std::string file = "'H\nCONTROL C D\nWALL 10\nSURFACE B 1 0 0\n";
    const std::string layers = "120 110 30 0 0 0 -3 0.1\n121 111 31 0 0 0\n";
    ASSERT_TRUE(
        readProblem(problem, file + "SOIL R S 2\n" + layers + "SOIL L S 2\n" + layers + "F\n", "a")
            .complete);
    EXPECT_EQ(problem.SoilBottomSlope(Right, 1), 0.25);
    EXPECT_EQ(problem.SoilBottomSlope(Left, 1), -0.5);
    clearProblemData(problem);
    ASSERT_TRUE(readProblem(problem, file + "SOIL B S 2\n" + layers + "F\n", "a").complete);
    EXPECT_EQ(problem.SoilBottomSlope(Right, 1), 0.25);
    EXPECT_EQ(problem.SoilBottomSlope(Left, 1), 0.25);
}

TEST(InputReader, AGivenGradientIsStoredInBothEntriesAndIsRunTimeError9) {
    const Outcome outcome = readText(plainFile("WATER E 62.4 8 2 1 0.35\n"));
    EXPECT_EQ(outcome.runtimeError, 9);
    EXPECT_EQ(outcome.problem.SeepageKind, Seepage::Given);
    EXPECT_EQ(entries(outcome.problem.SeepageGradient, 2), (Values{0.35, 0.35}));
}

TEST(InputReader, WaterWithoutSeepageClearsKindAndGradient) {
    Problem problem;
    clearProblemData(problem);
    problem.SeepageGradient.fill(0.7); // of the problem before
    ASSERT_TRUE(readProblem(problem, plainFile("WATER E 62.4 8 2\n"), "a").complete);
    EXPECT_EQ(problem.SeepageKind, Seepage::None);
    EXPECT_EQ(entries(problem.SeepageGradient, 2), (Values{0, 0}));
}

TEST(InputReader, TheEndOfTheFileRightAfterALineOrRampLoadOfSideRIsRunTimeError5) {
    const std::string start = plainFile();
    const std::string head = start.substr(0, start.size() - std::string("FINISHED\n").size());
    EXPECT_EQ(readText(head + "V LINE R 1 5 400\n").runtimeError, 5);
    EXPECT_EQ(readText(head + "V RAMP R 1 5 400\n").runtimeError, 5);
    EXPECT_EQ(readText(head + "V RAMP R 1 5 400\n\n( comment\n").runtimeError, 5);
    for (const char* line : {"V LINE L 1 5 400", "V LINE B 1 5 400", "V UNIFORM 100",
                             "V STRIP R 1 1 5 400", "V RAMP L 1 5 400", "V RAMP B 1 5 400",
                             "V TRIANGULAR R 1 1 2 3 400", "V VARIABLE R 2 1 2 3 400",
                             "H LINE 1 5 400", "H DISTRIBUTED 2 8 2 7 400", "WATER E 62.4 1 1"}) {
        EXPECT_EQ(readText(head + line + "\n").result, incompleteFile()) << line;
    }
}

TEST(InputReader, WhatFollowsTheEndLineIsNotRead) {
    EXPECT_TRUE(readText(plainFile() + "V\nrubbish\n").result.complete);
}

TEST(InputReader, FieldsReadBeforeAFaultStay) {
    const Outcome outcome = readText("'H\nCONTROL A D 1.2\nWALL 10 12\n");
    EXPECT_FALSE(outcome.result.complete);
    EXPECT_EQ(outcome.problem.WallType, WallKind::Anchored);
    EXPECT_EQ(outcome.problem.FSPassive, 1.2);
    EXPECT_EQ(outcome.problem.WallTopElev, 10);
}
