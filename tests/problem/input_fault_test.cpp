// Where a file was refused: line, field, word as typed, and what it must be.
#include "reading_helpers.h"

#include "runtime/file_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::test;

namespace {

/// A wall with a section of each kind, a line each; line 1 is a comment, line 4 is empty.
const std::vector<std::string> wall{
    "( a wall",
    "'Heading",
    "Control Cantilever Design 1.0 1.5",
    "",
    "  Wall 10",
    "Surface Rightside 2 0 10",
    "  20 12",
    "Surface Leftside 1 0 0",
    "Soil Both Strengths 2",
    "( weights, friction, cohesion, wall friction, adhesion, bottom, slope",
    "  120 110 32 0 10 0 -5 0",
    "  120 110 34 0 10 0",
    "Water Elevations 62.4 8 6",
    "Vertical Uniform 100",
    "Horizontal Line 1 9 100",
    "Finished",
};

std::string faultOf(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    Problem problem;
    clearProblemData(problem);
    InputFault fault;
    const ReadResult result = readProblem(problem, text, "wall.dat", &fault);
    EXPECT_EQ(result.complete, fault.line == 0);
    return result.complete ? "" : faultText(fault);
}

/// What the reader says of the wall with a line (from 1) put in another's place.
std::string faultWith(std::size_t number, const std::string& line) {
    std::vector<std::string> lines = wall;
    lines[number - 1] = line;
    return faultOf(lines);
}

} // namespace

TEST(InputFault, AGoodFileHasNone) {
    EXPECT_EQ(faultOf(wall), "");
}

TEST(InputFault, TellsAValueBeyondItsLimitsAsTyped) {
    EXPECT_EQ(faultWith(12, "  120 110 46 0 10 0"),
              "12: SoilFriction: read \"46\", must be 0 to 45");
    EXPECT_EQ(faultWith(12, "\t120  110 4.6e1 0 10 0"), // a tab belongs to its word
              "12: SoilSatWeight: read \"\t120\", must be a number, above 0");
    EXPECT_EQ(faultWith(12, "120 110 4.6e1 0 10 0"),
              "12: SoilFriction: read \"4.6e1\", must be 0 to 45");
    EXPECT_EQ(faultWith(6, "Surface Rightside 2 0 10.5"),
              "6: SurfaceElev: read \"10.5\", must be at most 10");
    EXPECT_EQ(faultWith(7, "  0 12"), "7: SurfaceDist: read \"0\", must be above 0");
}

TEST(InputFault, TellsAWordThatIsNoNumber) {
    EXPECT_EQ(faultWith(5, "Wall ten"), "5: WallTopElev: read \"ten\", must be a number");
    EXPECT_EQ(faultWith(11, "  120 110 32 0 10 0 -5 none"),
              "11: SoilBottomSlope: read \"none\", must be a number");
    EXPECT_EQ(faultWith(12, "120 110 3o 0 10 0"),
              "12: SoilFriction: read \"3o\", must be a number, 0 to 45");
}

TEST(InputFault, TellsCountsAndChoices) {
    EXPECT_EQ(faultWith(9, "Soil Both Strengths 12"),
              "9: SoilLayerCount: read \"12\", must be 1 to 11");
    EXPECT_EQ(faultWith(9, "Soil Both Strengths two"),
              "9: SoilLayerCount: read \"two\", must be 1 to 11");
    EXPECT_EQ(faultWith(3, "Control Cantilever Check"),
              "3: ProgramMode: read \"Check\", must be a word that begins with D or A");
    EXPECT_EQ(faultWith(6, "Surface Leftside 2 0 10"),
              "6: side: read \"Leftside\", must be a word that begins with R or B");
    EXPECT_EQ(faultWith(8, "Surface Rightside 1 0 0"),
              "8: side: read \"Rightside\", must be a word that begins with L");
}

TEST(InputFault, TellsLinesThatAreWrongAsAWhole) {
    EXPECT_EQ(faultWith(5, "  Wal"),
              "5: WALL DATA: read \"Wal\", must be a line of at least 2 words");
    EXPECT_EQ(faultWith(5, "Top 10"),
              "5: WALL DATA: read \"Top 10\", must be a line that begins with WAL");
    EXPECT_EQ(
        faultWith(14, "Vertical Point 5"),
        "14: VERTICAL LOADS: read \"Vertical Point 5\", must be a line of vertical loads in the "
        "order L, U, S, R, T, V");
    EXPECT_EQ(faultWith(16, "End"),
              "16: TERMINATION: read \"End\", must be a line that begins with F");
    EXPECT_EQ(faultWith(2, "Heading"),
              "2: HeadingLines: read \"Heading\", must be a line that begins with '");
    EXPECT_EQ(faultWith(1, "Units metric"), "1: HeadingLines: read \"Units metric\", must be UNITS "
                                            "US, UNITS SI or a line that begins with '");
    EXPECT_EQ(faultWith(3, "Units SI"),
              "3: CONTROL DATA: read \"Units SI\", must be a line that begins with C");
    std::vector<std::string> headings = wall;
    headings.insert(headings.begin(), 4, "'One more");
    EXPECT_EQ(faultOf(headings),
              "6: HeadingLines: read \"'Heading\", must be one of at most 4 lines");
}

TEST(InputFault, TellsRulesBetweenValues) {
    EXPECT_EQ(faultWith(13, "Water Elevations 62.4 6 8 6 A"),
              "13: WaterElev: read \"8\", must be below that of the right side");
    EXPECT_EQ(faultWith(13, "Water Elevations 62.4 8 6 9 A"),
              "13: SeepageElev: read \"9\", must be 0 to 8");
    std::vector<std::string> lines = wall;
    lines[2] = "Control Cantilever Analysis";
    lines[4] = "Wall 10 0 29E6 100";
    EXPECT_EQ(faultOf(lines), "8: SurfaceElev: read \"Surface Leftside 1 0 0\", must be above the "
                              "wall's bottom at both sides of the wall");
}

TEST(InputFault, TellsTheEndOfAFileThatEndsTooEarly) {
    for (std::size_t count = 5; count < wall.size(); ++count) {
        const std::vector<std::string> lines(wall.begin(),
                                             wall.begin() + static_cast<std::ptrdiff_t>(count));
        EXPECT_NE(faultOf(lines).find(": read nothing, must be followed by another line"),
                  std::string::npos)
            << count;
        EXPECT_EQ(faultOf(lines).rfind(std::to_string(count) + ": ", 0), 0U);
    }
    EXPECT_EQ(faultOf({}), "1: HeadingLines: read nothing, must be followed by another line");
}

TEST(InputFault, TellsSideAndIndexOfItsField) {
    std::string text;
    for (const std::string& line : wall) {
        text += line + "\r\n";
    }
    text.replace(text.find("34 0 10 0"), 2, "-1");
    Problem problem;
    clearProblemData(problem);
    InputFault fault;
    EXPECT_FALSE(readProblem(problem, text, "wall.dat", &fault).complete);
    EXPECT_EQ(fault.line, 12); // a pair of line end characters is one
    EXPECT_EQ(fault.side, Right);
    EXPECT_EQ(fault.index, 2);
}
