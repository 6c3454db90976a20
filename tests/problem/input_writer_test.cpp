// The text of an input file, blank by blank.
//
// A number has a leading blank (or its minus) and a trailing one, and stands two blanks behind the
// piece before it, so that 20 and 16 in a row look like "   20    16 ". Values that may be absent
// and composed fields have no trailing blank; an absent value is one blank.

#include "reading_helpers.h"

#include "problem/input_writer.h"
#include "runtime/file_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::test;

namespace {

using Lines = std::vector<std::string>;

Problem readBase(const std::string& name) {
    return readText(readFile(sourceFolder() / "tests/data/bad-input" / name)).problem;
}

Lines written(const Problem& problem) {
    return splitLines(inputFileText(problem));
}

/// The first written line that begins so.
std::string lineOf(const Problem& problem, const std::string& beginning) {
    for (const std::string& line : written(problem)) {
        if (line.starts_with(beginning)) {
            return line;
        }
    }
    return "none";
}

const std::string seventeen(17, ' ');
const std::string twenty(20, ' ');

} // namespace

TEST(InputWriter, ADesignWithEveryKindOfLine) {
    const Lines expected{
        "'ANCHORED DESIGN ",
        "'WITH EVERY KIND OF LINE ",
        "CONTROL  ANCHORED  DESIGN  1.10  1.60",
        "WALL   20    16   ",
        "SURFACE RIGHTSIDE   3    0    20 ",
        seventeen + " 10    21 ",
        seventeen + " 30    22 ",
        "SURFACE LEFTSIDE   2    0    5 ",
        seventeen + " 15    6 ",
        "SOIL RIGHTSIDE  STRENGTHS   3    1.2   1.3",
        "   121    111    30    0    15    0    10   0   1.1   1.4",
        "   122    112    0    500    0    200    0   0      ",
        "   123    113    32    0    10    0       1.25   1.5",
        "SOIL LEFTSIDE  COEFFICIENTS   3 ",
        "   124    114    0.3    4.5   -2",
        "   125    115    0.28    5   -8",
        "   126    116    0.25    5.5    ",
        "WATER ELEVATIONS   62.4    12    4    4.5  AUTOMATIC",
        "VERTICAL LINE  RIGHTSIDE   2   5   400   12   300",
        "VERTICAL LINE  LEFTSIDE   1   3   100",
        "VERTICAL UNIFORM   150    50 ",
        "VERTICAL STRIP  RIGHTSIDE   2    4    10    0 ",
        twenty + " 20    30    250 ",
        "VERTICAL STRIP  LEFTSIDE   1    2    6    80 ",
        "VERTICAL RAMP  RIGHTSIDE   25    40    200 ",
        "VERTICAL RAMP  LEFTSIDE   6    8    60 ",
        "VERTICAL TRIANGULAR  RIGHTSIDE   2    8    12    20    180 ",
        twenty + " 9    13    21    0 ",
        "VERTICAL TRIANGULAR  LEFTSIDE   1    2    2    7    90 ",
        "VERTICAL VARIABLE  RIGHTSIDE   3    30    100    36    220 ",
        twenty + " 45    120 ",
        "VERTICAL VARIABLE  LEFTSIDE   2    1    10    2    20 ",
        "HORIZONTAL LINE   2   18   500   3  -250",
        "HORIZONTAL DISTRIBUTED   3    17    60    12    90 ",
        twenty + " 7    0 ",
        "FINISHED",
    };
    EXPECT_EQ(written(readBase("design.dat")), expected);
}

TEST(InputWriter, AnAnalysisOfACantileverWall) {
    const Lines expected{
        "'ANALYSIS OF A CANTILEVER WALL ",
        "CONTROL  CANTILEVER  ANALYSIS  1.20  ",
        "WALL   10      -14   29000000   280.8",
        "SURFACE RIGHTSIDE   1    0    9.5 ",
        "SURFACE LEFTSIDE   1    0    0 ",
        "SOIL RIGHTSIDE  STRENGTHS   2       1.3",
        "   121    111    0    700    0    350   -5   0   1.1   ",
        "   122    112    34    20    17    20          1.2",
        "SOIL LEFTSIDE  STRENGTHS   2       ", // "B" leaves the level 2 factors at the right side
        "   121    111    0    700    0    350   -5   0   1.1   ",
        "   122    112    34    20    17    20          1.2",
        "WATER PRESSURES   4    8    0    4    250 ",
        seventeen + " 0    250 ",
        seventeen + "-6    0 ",
        "VERTICAL LINE  RIGHTSIDE   1   4   500",
        "VERTICAL LINE  LEFTSIDE   1   4   500",
        "VERTICAL RAMP  RIGHTSIDE   10    20    300 ",
        "FINISHED",
    };
    EXPECT_EQ(written(readBase("analysis.dat")), expected);
}

TEST(InputWriter, AnAnalysisWithOneFactorForBothLeavesBothBlank) {
    const Problem problem = readBase("anchored-analysis.dat");
    EXPECT_EQ(lineOf(problem, "CONTROL"), "CONTROL  ANCHORED  ANALYSIS    ");
    EXPECT_EQ(lineOf(problem, "WALL"), "WALL   20    15  -12   29000000   280.8");
    EXPECT_EQ(lineOf(problem, "WATER"), "WATER ELEVATIONS   62.4    10    10    ");
}

TEST(InputWriter, ADesignOfACantileverWallLeavesAnchorAndAnalysisFieldsBlank) {
    const Problem problem = readText(plainFile()).problem;
    EXPECT_EQ(lineOf(problem, "CONTROL"), "CONTROL  CANTILEVER  DESIGN  1.00  1.50");
    EXPECT_EQ(lineOf(problem, "WALL"), "WALL   10       "); // " 10 ", 2, " ", 2, " "
    EXPECT_EQ(lineOf(problem, "   120"), "   120    110    30    0    0    0          ");
}

TEST(InputWriter, AMissingActiveFactorWritesOnlyThePassiveOne) {
    Problem problem = readText(plainFile()).problem;
    problem.SoilFSPassive(Right, 1) = 1.7;
    problem.Level2FSPassive(Left) = 1.9;
    EXPECT_EQ(lineOf(problem, "   120"), "   120    110    30    0    0    0          1.7");
    EXPECT_EQ(lineOf(problem, "SOIL LEFT"), "SOIL LEFTSIDE  STRENGTHS   1       1.9");
    // A blank has no place of its own: the reader takes the value as the active factor.
    const Problem back = readText(inputFileText(problem)).problem;
    EXPECT_EQ(back.SoilFSActive(Right, 1), 1.7);
    EXPECT_EQ(back.SoilFSPassive(Right, 1), 0);
    EXPECT_EQ(back.Level2FSActive(Left), 1.9);
    EXPECT_EQ(back.Level2FSPassive(Left), 0);
}

TEST(InputWriter, FactorsOfTheControlLineKeepTwoDecimals) {
    Problem problem = readText(plainFile()).problem;
    problem.FSActive = 1.234;
    problem.FSPassive = 1.505;
    EXPECT_EQ(lineOf(problem, "CONTROL"), "CONTROL  CANTILEVER  DESIGN  1.23  1.51");
    const Problem back = readText(inputFileText(problem)).problem;
    EXPECT_EQ(back.FSActive, 1.23);
    EXPECT_EQ(back.FSPassive, 1.51);
}

TEST(InputWriter, ASlopeIsWrittenAndNotReadBack) {
    Problem problem = readBase("design.dat");
    problem.SoilBottomSlope(Right, 1) = -0.125;
    EXPECT_EQ(lineOf(problem, "   121"),
              "   121    111    30    0    15    0    10  -0.125   1.1   1.4");
    EXPECT_EQ(readText(inputFileText(problem)).problem.SoilBottomSlope(Right, 1), 0);
}

TEST(InputWriter, AGivenGradientIsWrittenAndCannotBeReadBack) {
    Problem problem = readBase("design.dat");
    problem.SeepageKind = Seepage::Given;
    problem.SeepageGradient(1) = 0.35;
    problem.SeepageGradient(2) = 0.4; // of the second level: not written
    EXPECT_EQ(lineOf(problem, "WATER"), "WATER ELEVATIONS   62.4    12    4    4.5   0.35");
    EXPECT_EQ(readText(inputFileText(problem)).runtimeError, 9);
}

TEST(InputWriter, ALoadCountOf0OnBothSidesWritesNoLine) {
    const Lines lines = written(readText(plainFile()).problem);
    for (const std::string& line : lines) {
        EXPECT_FALSE(line.starts_with("V") || line.starts_with("H") || line.starts_with("WAT"))
            << line;
    }
    EXPECT_EQ(lines.size(), 10U); // heading, control, wall, 2 surface, 2 x 2 soil, end
}

TEST(InputWriter, AUniformLoadOfOneSideShowsZeroOnTheOther) {
    Problem problem = readText(plainFile("VERTICAL UNIFORM 0 100\n")).problem;
    EXPECT_EQ(lineOf(problem, "VERTICAL"), "VERTICAL UNIFORM   0    100 ");
    problem.VUniformLoad(Right) = 77; // left over from a load that was taken away
    EXPECT_EQ(lineOf(problem, "VERTICAL"), "VERTICAL UNIFORM   0    100 ");
}

TEST(InputWriter, AVariableLoadOfOnePointHasALineOfItsOwn) {
    Problem problem = readText(plainFile("HORIZONTAL LINE 1 5 400\n")).problem;
    problem.VVarCount(Right) = 1;
    problem.VVarDist(Right, 1) = 6;
    problem.VVarLoad(Right, 1) = 200;
    EXPECT_EQ(lineOf(problem, "VERTICAL"), "VERTICAL VARIABLE  RIGHTSIDE   1    6    200 ");
    EXPECT_EQ(lineOf(problem, "HORIZONTAL"), "HORIZONTAL LINE   1   5   400");
}

TEST(InputWriter, ALevel2FactorOfCoefficientsIsNotWritten) {
    const Problem problem = readBase("design.dat");
    ASSERT_EQ(problem.Level2FSActive(Left), 1.15);
    EXPECT_EQ(lineOf(problem, "SOIL LEFT"), "SOIL LEFTSIDE  COEFFICIENTS   3 ");
    EXPECT_EQ(readText(inputFileText(problem)).problem.Level2FSActive(Left), 0);
}

TEST(InputWriter, NumbersOfAnySizeReadBackToTheSameDouble) {
    const std::vector<double> values{1.0 / 3, 0.1 + 0.2,  1e-7,  1.5e20, 123456789.12345678,
                                     -2e15,   -1.25e-300, 1e300, 0,      99999.999999999985};
    Problem problem = readText(plainFile()).problem;
    problem.HLineCount = 5;
    for (int load = 1; load <= 5; ++load) {
        problem.HLineElev(load) = values[static_cast<std::size_t>(2 * load - 2)];
        problem.HLineLoad(load) = values[static_cast<std::size_t>(2 * load - 1)];
    }
    const Problem back = readText(inputFileText(problem)).problem;
    EXPECT_EQ(back.HLineElev, problem.HLineElev);
    EXPECT_EQ(back.HLineLoad, problem.HLineLoad);
}
