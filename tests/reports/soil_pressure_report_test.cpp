// The table of soil and water pressures of a design: statements, heads, range, steps and marks.
#include "report_bench.h"
#include "solution/kept_results.h"

namespace korvane::test {
namespace {

const std::string headLine3 =
    "           NET    <---LEFTSIDE--->     (SOIL + WATER)     <--RIGHTSIDE--->";

/// Both values of a grid point.
template <class Pressure>
void setBoth(Pressure& pressure, int i, double value) {
    pressure(i, 1) = pressure(i, 2) = value;
}
template <class Pressure>
void setBoth(Pressure& pressure, int side, int i, double value) {
    pressure(side, i, 1) = pressure(side, i, 2) = value;
}

/// A table on a grid whose last elevation wanted is -40: the plain wall's lower surface stands at
/// -10, 10 FT below the top, and three such heights below it or 30 FT are both -40. A step in right
/// active at -10 and pressures that differ in every column.
void fillTable(PressureDiagrams& diagrams) {
    auto& [grid, pressures, NetActive, NetPassive, rows, lag] = diagrams;
    setElevations(grid, {0, -5, -10, -40, -45, -60, -1000, -2000});
    setBoth(pressures.WaterPressures, 2, 62.44);
    setBoth(pressures.PassivePressures, Left, 2, 3724.56);
    setBoth(pressures.ActivePressures, Left, 2, 177.25);
    setBoth(NetActive, 2, -2085.5);
    setBoth(NetPassive, 2, 12345.6);
    setBoth(pressures.ActivePressures, Right, 2, 1095.04);
    setBoth(pressures.PassivePressures, Right, 2, 8718.66);
    pressures.ActivePressures(Right, 3, 1) = 215;
    pressures.ActivePressures(Right, 3, 2) = 180.5;
}

Lines tableOf(const Lines& report) {
    const Lines rest = linesFrom(report, headLine3, 400);
    return rest.size() > 3 ? Lines(rest.begin() + 3, rest.end()) : Lines{};
}

/// A row whose pressures are all zero.
std::string zeroRow(std::string_view elevation, std::string_view flag) {
    return columns({{7, elevation},
                    {8, flag},
                    {15, "0.0"},
                    {25, "0.0"},
                    {34, "0.0"},
                    {44, "0.0"},
                    {54, "0.0"},
                    {64, "0.0"},
                    {74, "0.0"}});
}

TEST(SoilPressureReport, OfACantileverIsThisText) {
    ReportBench bench;
    fillTable(bench.results.review.diagrams);
    EXPECT_EQ(bench.pressureReport(),
              (Lines{"",
                     "  PROGRAM KORVANE-DESIGN/ANALYSIS OF ANCHORED OR CANTILEVER SHEET PILE WALLS",
                     "                            BY CLASSICAL METHODS",
                     dateLine,
                     "",
                     "                            **************************",
                     "                            *   SOIL PRESSURES FOR   *",
                     "                            * CANTILEVER WALL DESIGN *",
                     "                            **************************",
                     "",
                     "      I.--HEADING",
                     "       'PLAIN CANTILEVER ",
                     "",
                     "     II.--SOIL PRESSURES",
                     "          RIGHTSIDE SOIL PRESSURES DETERMINED BY COULOMB COEFFICIENTS",
                     "          AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS.",
                     "",
                     "          LEFTSIDE SOIL PRESSURES DETERMINED BY COULOMB COEFFICIENTS",
                     "          AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS.",
                     "",
                     "                                     <------NET------>",
                     headLine3,
                     "  ELEV.   WATER   PASSIVE   ACTIVE    ACTIVE   PASSIVE    ACTIVE   PASSIVE",
                     "  (FT)    (PSF)     (PSF)    (PSF)     (PSF)     (PSF)     (PSF)     (PSF)",
                     zeroRow("0.0", " "),
                     columns({{7, "-5.0"},
                              {8, " "},
                              {15, "62.4"},
                              {25, "3724.6"},
                              {34, "177.3"},
                              {44, "-2085.5"},
                              {54, "12345.6"},
                              {64, "1095.0"},
                              {74, "8718.7"}}),
                     columns({{7, "-10.0"},
                              {8, "+"},
                              {15, "0.0"},
                              {25, "0.0"},
                              {34, "0.0"},
                              {44, "0.0"},
                              {54, "0.0"},
                              {64, "180.5"},
                              {74, "0.0"}}),
                     columns({{7, "-10.0"},
                              {8, "-"},
                              {15, "0.0"},
                              {25, "0.0"},
                              {34, "0.0"},
                              {44, "0.0"},
                              {54, "0.0"},
                              {64, "215.0"},
                              {74, "0.0"}}),
                     zeroRow("-40.0", " "),
                     zeroRow("-45.0", " "),
                     "",
                     "",
                     "",
                     "",
                     ""}));
}

TEST(SoilPressureReport, OfAnAnchoredWallHasOneNetColumn) {
    ReportBench bench;
    bench.problem.WallType = WallKind::Anchored;
    fillTable(bench.results.review.diagrams);
    const Lines report = bench.pressureReport();
    EXPECT_TRUE(hasLine(report, "                            *  ANCHORED WALL DESIGN  *"));
    EXPECT_EQ(
        linesFrom(report, headLine3, 5),
        (Lines{headLine3,
               "  ELEV.   WATER   PASSIVE   ACTIVE          ACTIVE        ACTIVE   PASSIVE",
               "  (FT)    (PSF)     (PSF)    (PSF)           (PSF)         (PSF)     (PSF)",
               // blanks and columns as in the rows of a verified report
               "    0.0     0.0       0.0      0.0             0.0           0.0       0.0",
               "   -5.0    62.4    3724.6    177.3         -2085.5        1095.0    8718.7"}));
}

TEST(SoilPressureReport, AnchoredAndCantileverDoNotDifferInTheNumberOfRows) {
    ReportBench bench;
    fillTable(bench.results.review.diagrams);
    const std::size_t cantilever = tableOf(bench.pressureReport()).size();
    bench.problem.WallType = WallKind::Anchored;
    EXPECT_EQ(tableOf(bench.pressureReport()).size(), cantilever);
}

TEST(SoilPressureReport, AWallTopAboveBothSurfacesStartsWithZeroSoilPressures) {
    ReportBench bench;
    bench.problem.WallTopElev = 4;
    PressureDiagrams& diagrams = bench.results.review.diagrams;
    setElevations(diagrams.grid, {4, 3, 0, -10, -52.5, -53, -54, -1000, -2000});
    setBoth(diagrams.pressures.ActivePressures, Right, 4, 400);
    // Three heights of 14 FT below -10 are -52: the row at -52.5 is the first below and the last.
    const Lines table = tableOf(bench.pressureReport());
    ASSERT_EQ(table.size(), 5U + 5U);
    EXPECT_EQ(table[0], zeroRow("4.0", " "));
    EXPECT_EQ(table[1], zeroRow("3.0", " "));
    EXPECT_EQ(table[4], zeroRow("-52.5", " "));
}

TEST(SoilPressureReport, OneRowBeyondTheLastElevationIsPrintedAndItsStepIsNot) {
    ReportBench bench;
    PressureDiagrams& diagrams = bench.results.review.diagrams;
    fillTable(diagrams);
    diagrams.pressures.PassivePressures(Left, 5, 1) = 900;
    diagrams.pressures.PassivePressures(Left, 5, 2) = 700;
    const Lines table = tableOf(bench.pressureReport());
    ASSERT_EQ(table.size(), 6U + 5U);
    EXPECT_EQ(table[4], zeroRow("-40.0", " "));
    EXPECT_EQ(table[5], columns({{7, "-45.0"},
                                 {8, "+"},
                                 {15, "0.0"},
                                 {25, "700.0"},
                                 {34, "0.0"},
                                 {44, "0.0"},
                                 {54, "0.0"},
                                 {64, "0.0"},
                                 {74, "0.0"}}));
}

// The two far points of the grid are never wanted: the range ends with the lowest working row.
TEST(SoilPressureReport, TheRangeEndsWithTheLowestWorkingRow) {
    ReportBench bench;
    setElevations(bench.results.review.diagrams.grid, {0, -10, -20, -1000, -2000});
    const Lines table = tableOf(bench.pressureReport());
    ASSERT_EQ(table.size(), 4U + 5U);
    EXPECT_EQ(table[2], zeroRow("-20.0", " "));
    EXPECT_EQ(table[3], zeroRow("-1000.0", " "));
}

TEST(SoilPressureReport, AHighWallTopWidensTheRange) {
    ReportBench bench;
    bench.problem.WallTopElev = 20; // three heights of 30 FT below -10: -100
    setElevations(bench.results.review.diagrams.grid, {20, -10, -100, -101, -102, -1000, -2000});
    EXPECT_EQ(tableOf(bench.pressureReport()).size(), 4U + 5U);
}

/// True where a step of a pressure at row 2 gives a pair of lines.
template <class Set>
bool stepShows(WallKind wallType, const Set& set) {
    ReportBench bench;
    bench.problem.WallType = wallType;
    setElevations(bench.results.review.diagrams.grid, {0, -5, -45, -60, -1000, -2000});
    set(bench.results.review.diagrams);
    const Lines table = tableOf(bench.pressureReport());
    const bool pair = table.size() == 4U + 5U && table[1][7] == '+' && table[2][7] == '-';
    EXPECT_TRUE(pair || (table.size() == 3U + 5U && table[1][7] == ' '));
    return pair;
}

TEST(SoilPressureReport, AStepInAnySoilOrNetPressureGivesAPairOfLines) {
    for (const int side : {Right, Left}) {
        EXPECT_TRUE(stepShows(WallKind::Cantilever, [=](PressureDiagrams& d) {
            d.pressures.ActivePressures(side, 2, 1) = 1;
        }));
        EXPECT_TRUE(stepShows(WallKind::Anchored, [=](PressureDiagrams& d) {
            d.pressures.PassivePressures(side, 2, 2) = -1;
        }));
    }
    EXPECT_TRUE(
        stepShows(WallKind::Cantilever, [](PressureDiagrams& d) { d.NetActive(2, 1) = 1; }));
    EXPECT_TRUE(stepShows(WallKind::Anchored, [](PressureDiagrams& d) { d.NetActive(2, 1) = 1; }));
    EXPECT_TRUE(
        stepShows(WallKind::Cantilever, [](PressureDiagrams& d) { d.NetPassive(2, 1) = 1; }));
}

TEST(SoilPressureReport, NetPassiveOfAnAnchoredWallIsNotTested) {
    EXPECT_FALSE(
        stepShows(WallKind::Anchored, [](PressureDiagrams& d) { d.NetPassive(2, 1) = 1; }));
}

TEST(SoilPressureReport, WaterAloneIsNotTested) {
    EXPECT_FALSE(stepShows(WallKind::Cantilever,
                           [](PressureDiagrams& d) { d.pressures.WaterPressures(2, 1) = 1; }));
}

TEST(SoilPressureReport, AStepIsMoreThanOneTenThousandth) {
    EXPECT_FALSE(
        stepShows(WallKind::Cantilever, [](PressureDiagrams& d) { d.NetActive(2, 1) = 0.0001; }));
    EXPECT_TRUE(
        stepShows(WallKind::Cantilever, [](PressureDiagrams& d) { d.NetActive(2, 1) = 0.00011; }));
}

TEST(SoilPressureReport, MarksStandBehindTheirPressures) {
    ReportBench bench;
    PressureDiagrams& diagrams = bench.results.review.diagrams;
    fillTable(diagrams);
    diagrams.pressures.PassiveMark(Left, 2) = true;
    diagrams.pressures.ActiveMark(Left, 3) = true;
    diagrams.pressures.ActiveMark(Right, 2) = true;
    diagrams.pressures.PassiveMark(Right, 3) = true;
    const Lines table = tableOf(bench.pressureReport());
    ASSERT_GE(table.size(), 4U);
    EXPECT_EQ(table[1], columns({{7, "-5.0"},
                                 {8, " "},
                                 {15, "62.4"},
                                 {25, "3724.6"},
                                 {26, "*"},
                                 {34, "177.3"},
                                 {44, "-2085.5"},
                                 {54, "12345.6"},
                                 {64, "1095.0"},
                                 {65, "*"},
                                 {74, "8718.7"}}));
    // Both lines of a step carry the marks of their row.
    for (const std::size_t line : {2U, 3U}) {
        EXPECT_EQ(table[line], columns({{7, "-10.0"},
                                        {8, line == 2 ? "+" : "-"},
                                        {15, "0.0"},
                                        {25, "0.0"},
                                        {34, "0.0"},
                                        {35, "*"},
                                        {44, "0.0"},
                                        {54, "0.0"},
                                        {64, line == 2 ? "180.5" : "215.0"},
                                        {74, "0.0"},
                                        {75, "*"}}));
    }
}

TEST(SoilPressureReport, ARowWithoutSolutionOnEitherSideIsExplainedOnce) {
    const std::string note1 =
        "          * STANDARD WEDGE SOLUTION DOES NOT EXIST FOR INDICATED PRESSURE";
    const std::string note2 = "            FOR THIS ELEVATION.";
    for (const int side : {Right, Left}) {
        ReportBench bench;
        fillTable(bench.results.review.diagrams);
        bench.results.review.WedgeNoSolution(side) = 1;
        EXPECT_EQ(linesFrom(bench.pressureReport(), note1, 9),
                  (Lines{note1, note2, "", "", "", "", ""}));
    }
    Bench solution;
    solution.problem = plainCantilever();
    setElevations(solution.state->grid, {0, -5, -1000, -2000});
    solution.state->wedge.WedgeNoSolution(2, Right) = 1; // another level does not count
    ReportBench bench;
    keepReview(*solution.state, bench.results.review);
    EXPECT_FALSE(tableOf(bench.pressureReport()).empty());
    EXPECT_FALSE(hasLine(bench.pressureReport(), note1));
}

TEST(SoilPressureReport, TellsTheMethodOfEachSide) {
    ReportBench bench;
    PressureDiagrams& diagrams = bench.results.review.diagrams;
    fillTable(diagrams);
    bench.results.review.SideMethod(Right) = PressureMethod::Sweep;
    bench.problem.SoilDataKind(Left) = SoilData::Coefficients;
    EXPECT_EQ(linesFrom(bench.pressureReport(), "     II.--SOIL PRESSURES", 6),
              (Lines{"     II.--SOIL PRESSURES",
                     "          RIGHTSIDE SOIL PRESSURES DETERMINED BY SWEEP SEARCH WEDGE METHOD.",
                     "", "          LEFTSIDE SOIL PRESSURES DETERMINED BY INPUT COEFFICIENTS",
                     "          AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS.", ""}));
    bench.results.review.SideMethod(Left) = PressureMethod::FixedSurface;
    EXPECT_TRUE(hasLine(bench.pressureReport(),
                        "          LEFTSIDE SOIL PRESSURES DETERMINED BY FIXED SURFACE WEDGE "
                        "METHOD."));
}

TEST(SoilPressureReport, TellsOfDistributedLoadsAndOfAGradientThatMayChange) {
    ReportBench bench;
    PressureDiagrams& diagrams = bench.results.review.diagrams;
    fillTable(diagrams);
    bench.problem.HDistCount = 2;
    bench.problem.WaterDataKind = WaterData::Elevations;
    bench.problem.SeepageKind = Seepage::Automatic;
    bench.results.review.SeepageGradient = 0.21345;
    bench.problem.SeepageGradient.fill(0.9); // as given; the review's own counts
    const std::string loads =
        "          NET SOIL PRESSURES INCLUDE APPLIED HORIZONTAL DISTRIBUTED LOADS.";
    const std::string gradient =
        "          SOIL PRESSURES ARE REPORTED FOR A SEEPAGE GRADIENT = 0.2135";
    EXPECT_EQ(linesFrom(bench.pressureReport(), loads, 5),
              (Lines{loads, "", gradient,
                     "          AND MAY CHANGE WITH AUTOMATIC ADJUSTMENT OF THE GRADIENT.", ""}));
    // A kind of seepage left over from data that are no elevations does not count.
    bench.problem.WaterDataKind = WaterData::Pressures;
    EXPECT_FALSE(hasText(bench.pressureReport(), "GRADIENT"));
    bench.problem.WaterDataKind = WaterData::Elevations;
    bench.problem.SeepageKind = Seepage::Given;
    EXPECT_FALSE(hasText(bench.pressureReport(), "GRADIENT"));
}

// Right active has the ten columns 55 to 64: eleven characters break the line before it.
TEST(SoilPressureReport, CountsTheLineThatAWideValueBreaks) {
    ReportBench bench;
    PressureDiagrams& diagrams = bench.results.review.diagrams;
    fillTable(diagrams);
    setBoth(diagrams.pressures.ActivePressures, Right, 2, 123456789);
    const Lines table = tableOf(bench.pressureReport());
    ASSERT_GE(table.size(), 3U);
    EXPECT_EQ(table[1].substr(44), columns({{10, "12345.6"}}));
    EXPECT_EQ(table[2], columns({{64, "123456789.0"}, {74, "8718.7"}}));
}

} // namespace
} // namespace korvane::test
