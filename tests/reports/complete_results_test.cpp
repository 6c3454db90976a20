// The full tables of a solution: marks of steps, range of the pressures, levels.
#include "report_bench.h"

namespace korvane::test {
namespace {

const std::string resultUnits =
    "         (FT)        (LB-FT)          (LB)         (LB-IN^3)       (PSF)";
const std::string pressureUnits =
    "      (FT)        (PSF)       (PSF)        (PSF)       (PSF)      (PSF)";

/// A cantilever of three rows whose bottom stands at -20.5, between two grid points.
void solveCantilever(LevelResult& level) {
    setElevations(level.solved.grid, {0, -10, -20, -30, -40, -1000});
    setRows(level.diagrams,
            {{0, 0, 0, 2.5e9, 0}, {-10, -1234.55, 500.5, 1e8, 312.5}, {-20.5, 0, 0, 0, -90}});
    level.bottomElev = -20.5;
    Pressures& pressures = level.solved.pressures;
    pressures.WaterPressures(1, 1) = 1;
    pressures.ActivePressures(Left, 1, 1) = 2.5;
    for (const int k : {1, 2}) {
        pressures.WaterPressures(2, k) = 624.4;
        pressures.PassivePressures(Left, 2, k) = 3000;
        pressures.ActivePressures(Left, 2, k) = 333.3;
        pressures.ActivePressures(Right, 2, k) = 400;
        pressures.PassivePressures(Right, 2, k) = 123456.5;
    }
}

/// The rows below a line, up to the first empty one.
Lines tableBelow(const Lines& report, std::string_view head) {
    Lines table = linesFrom(report, head, report.size());
    if (!table.empty()) {
        table.erase(table.begin());
    }
    table.erase(std::find(table.begin(), table.end(), ""), table.end());
    return table;
}

std::string zeroPressures(std::string_view elevation, std::string_view mark) {
    return columns(
        {{10, elevation}, {11, mark}, {24, "0."}, {36, "0."}, {48, "0."}, {60, "0."}, {72, "0."}});
}

TEST(CompleteResults, OfACantileverDesignAreThisText) {
    ReportBench bench;
    solveCantilever(bench.results.levels(1));
    const Lines expected{
        "  PROGRAM KORVANE-DESIGN/ANALYSIS OF ANCHOREDOR CANTILEVER SHEET PILE WALLS",
        "                            BY CLASSICAL METHODS",
        dateLine,
        "",
        "                         ****************************",
        "                         * COMPLETE OF RESULTS FOR  *",
        "                         *  CANTILEVER WALL DESIGN  *",
        "                         ****************************",
        "",
        "       I.--HEADING",
        "       'PLAIN CANTILEVER ",
        "",
        "      II.--RESULTS",
        "",
        "                     BENDING                        SCALED         NET",
        "      ELEVATION      MOMENT          SHEAR        DEFLECTION     PRESSURE",
        resultUnits,
        columns({{14, "0.00"}, {28, "0.0000E+00"}, {42, "0."}, {60, "2.5000E+09"}, {73, "0.00"}}),
        columns({{14, "-10.00"},
                 {28, "-1.2346E+03"},
                 {42, "501."},
                 {60, "1.0000E+08"},
                 {73, "312.50"}}),
        columns(
            {{14, "-20.50"}, {28, "0.0000E+00"}, {42, "0."}, {60, "0.0000E+00"}, {73, "-90.00"}}),
        "",
        "               NOTE:  DIVIDE SCALED DEFLECTION MODULUS OF",
        "                      ELLASTICITY IN PSI TIMES PILE MOMENT",
        "                      OF INERTIA IN IN^4 TO OBTAIN DEFLECTION",
        "                      IN INCHES.",
        "",
        "     III.--WATER AND SOIL PRESSURES",
        "",
        "                             <-------------SOIL PRESSURES-------------->",
        "                  WATER      <----LEFTSIDE----->      <---RIGHTSIDE---->",
        "   ELEVATION    PRESSURE     PASSIVE      ACTIVE      ACTIVE     PASSIVE",
        pressureUnits,
        columns({{10, "0.00"}, {24, "1."}, {36, "0."}, {48, "3."}, {60, "0."}, {72, "0."}}),
        columns({{10, "-10.00"},
                 {11, " "},
                 {24, "624."},
                 {36, "3000."},
                 {48, "333."},
                 {60, "400."},
                 {72, "123457."}}),
        zeroPressures("-20.00", " "),
        zeroPressures("-30.00", " "),
        "",
        "",
        "",
        "",
        ""};
    EXPECT_EQ(linesFrom(bench.resultReport(), expected.front(), 200), expected);
}

TEST(CompleteResults, OfAnAnalysisHaveDeflectionsInInchesAndNoNote) {
    ReportBench bench;
    solveCantilever(bench.results.levels(1));
    bench.problem.ProgramMode = Mode::Analysis;
    const Lines report = bench.resultReport();
    EXPECT_TRUE(hasLine(report, "                         * CANTILEVER WALL ANALYSIS *"));
    EXPECT_EQ(linesFrom(report, "      II.--RESULTS", 5),
              (Lines{"      II.--RESULTS", "",
                     "                     BENDING                                       NET",
                     "      ELEVATION      MOMENT          SHEAR        DEFLECTION     PRESSURE",
                     "         (FT)        (LB-FT)          (LB)           (IN)          (PSF)"}));
    EXPECT_EQ(linesFrom(report,
                        columns({{14, "-20.50"},
                                 {28, "0.0000E+00"},
                                 {42, "0."},
                                 {60, "0.0000E+00"},
                                 {73, "-90.00"}}),
                        4),
              (Lines{columns({{14, "-20.50"},
                              {28, "0.0000E+00"},
                              {42, "0."},
                              {60, "0.0000E+00"},
                              {73, "-90.00"}}),
                     "", "     III.--WATER AND SOIL PRESSURES", ""}));
}

/// The marks of the result rows, "" where a row has none.
Lines rowMarks(const Lines& report) {
    Lines marks;
    for (const std::string& row : tableBelow(report, resultUnits)) {
        marks.push_back(row[14] == ' ' ? "" : row.substr(14, 1));
    }
    return marks;
}

TEST(CompleteResults, TheTwoRowsOfAStepAreMarkedUpperFirst) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    setRows(level.diagrams,
            {{0, 0, 0, 0, 0}, {-5, 1, 2, 3, 4}, {-5.0001, 1, 9, 3, 4}, {-9, 0, 0, 0, 0}});
    const Lines report = bench.resultReport();
    EXPECT_EQ(rowMarks(report), (Lines{"", "+", "-", ""}));
    EXPECT_EQ(tableBelow(report, resultUnits)[1], columns({{14, "-5.00"},
                                                           {15, "+"},
                                                           {28, "1.0000E+00"},
                                                           {42, "2."},
                                                           {60, "3.0000E+00"},
                                                           {73, "4.00"}}));
}

TEST(CompleteResults, ARowBetweenTwoOfItsElevationIsTheLowerOne) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    setElevations(level.solved.grid, {0, -10, -20, -30, -40, -50, -1000});
    setRows(
        level.diagrams,
        {{0, 0, 0, 0, 0}, {-5, 0, 0, 0, 0}, {-5, 0, 0, 0, 0}, {-5, 0, 0, 0, 0}, {-9, 0, 0, 0, 0}});
    EXPECT_EQ(rowMarks(bench.resultReport()), (Lines{"", "+", "-", "-", ""}));
}

TEST(CompleteResults, RowsMoreThanOneTenThousandthApartAreNoStep) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    setRows(level.diagrams, {{0, 0, 0, 0, 0}, {-5, 0, 0, 0, 0}, {-5.00011, 0, 0, 0, 0}});
    EXPECT_EQ(rowMarks(bench.resultReport()), (Lines{"", "", ""}));
}

TEST(CompleteResults, RowsLessThanOneTenThousandthApartAreAStep) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    setElevations(level.solved.grid, {0, -10, -20, -30, -40});
    setRows(level.diagrams,
            {{0, 0, 0, 0, 0}, {-5, 0, 0, 0, 0}, {-5.00009, 0, 0, 0, 0}, {-9, 0, 0, 0, 0}});
    EXPECT_EQ(rowMarks(bench.resultReport()), (Lines{"", "+", "-", ""}));
}

// The first row and the rows from the number of grid points on are never marked.
TEST(CompleteResults, MarksStandFromTheSecondRowToTheOneBeforeTheLastGridPoint) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    setElevations(level.solved.grid, {0, -10, -20, -1000});
    level.bottomElev = -15;
    setRows(level.diagrams, {{0, 0, 0, 0, 0},
                             {0, 0, 0, 0, 0},
                             {-8, 0, 0, 0, 0},
                             {-8, 0, 0, 0, 0},
                             {-8, 0, 0, 0, 0},
                             {-15, 0, 0, 0, 0}});
    EXPECT_EQ(rowMarks(bench.resultReport()), (Lines{"", "-", "+", "", "", ""}));
}

// What lies behind the last row is left over from other solutions.
TEST(CompleteResults, TheLastRowHasNoNextOne) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    level.diagrams.ResultElev(4) = -20.5;
    EXPECT_EQ(rowMarks(bench.resultReport()), (Lines{"", "", ""}));
}

TEST(CompleteResults, APressureJumpAtALayerBoundaryGivesTwoLines) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    level.solved.pressures.PassivePressures(Left, 3, 1) = 3724.6;
    level.solved.pressures.PassivePressures(Left, 3, 2) = 2636.4;
    const Lines table = tableBelow(bench.resultReport(), pressureUnits);
    ASSERT_EQ(table.size(), 5U);
    EXPECT_EQ(table[2], columns({{10, "-20.00"},
                                 {11, "+"},
                                 {24, "0."},
                                 {36, "2636."},
                                 {48, "0."},
                                 {60, "0."},
                                 {72, "0."}}));
    EXPECT_EQ(table[3], columns({{10, "-20.00"},
                                 {11, "-"},
                                 {24, "0."},
                                 {36, "3725."},
                                 {48, "0."},
                                 {60, "0."},
                                 {72, "0."}}));
}

TEST(CompleteResults, AStepOfAnyPressureIsShownWaterIncluded) {
    const auto stepShows = [](const auto& set) {
        ReportBench bench;
        solveCantilever(bench.results.levels(1));
        set(bench.results.levels(1).solved.pressures);
        return hasLine(bench.resultReport(), zeroPressures("-20.00", "+"));
    };
    for (const int side : {Right, Left}) {
        EXPECT_TRUE(stepShows([=](Pressures& p) { p.ActivePressures(side, 3, 1) = 0.00011; }));
        EXPECT_TRUE(stepShows([=](Pressures& p) { p.PassivePressures(side, 3, 1) = 0.00011; }));
        EXPECT_FALSE(stepShows([=](Pressures& p) { p.PassivePressures(side, 3, 1) = 0.0001; }));
    }
    EXPECT_TRUE(stepShows([](Pressures& p) { p.WaterPressures(3, 1) = 0.00011; }));
}

// Unlike in the initial table, the step of the last row is shown in full.
TEST(CompleteResults, TheFirstGridPointBelowTheBottomIsPrintedWithItsStep) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    level.solved.pressures.ActivePressures(Right, 4, 1) = 77;
    const Lines table = tableBelow(bench.resultReport(), pressureUnits);
    ASSERT_EQ(table.size(), 5U);
    EXPECT_EQ(table[3], zeroPressures("-30.00", "+"));
    EXPECT_EQ(table[4], columns({{10, "-30.00"},
                                 {11, "-"},
                                 {24, "0."},
                                 {36, "0."},
                                 {48, "0."},
                                 {60, "77."},
                                 {72, "0."}}));
}

TEST(CompleteResults, ABottomExactlyOnAGridPointPrintsOnePointMore) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    level.bottomElev = -30;
    const Lines table = tableBelow(bench.resultReport(), pressureUnits);
    ASSERT_EQ(table.size(), 5U);
    EXPECT_EQ(table[4], zeroPressures("-40.00", " "));
}

TEST(CompleteResults, MarksStandDirectlyBeforeTheirPressures) {
    ReportBench bench;
    LevelResult& level = bench.results.levels(1);
    solveCantilever(level);
    Pressures& pressures = level.solved.pressures;
    pressures.PassiveMark(Left, 2) = pressures.ActiveMark(Right, 2) = true;
    pressures.ActiveMark(Left, 3) = pressures.PassiveMark(Right, 3) = true;
    pressures.ActivePressures(Left, 3, 2) = 456;
    pressures.ActiveMark(Left, 1) = pressures.PassiveMark(Right, 1) = true;
    const Lines table = tableBelow(bench.resultReport(), pressureUnits);
    ASSERT_EQ(table.size(), 5U);
    // The first point has no marks.
    EXPECT_EQ(table[0],
              columns({{10, "0.00"}, {24, "1."}, {36, "0."}, {48, "3."}, {60, "0."}, {72, "0."}}));
    EXPECT_EQ(table[1], columns({{10, "-10.00"},
                                 {11, " "},
                                 {24, "624."},
                                 {36, "*3000."},
                                 {48, "333."},
                                 {60, "*400."},
                                 {72, "123457."}}));
    for (const std::size_t line : {2U, 3U}) { // both lines of the step carry them
        EXPECT_EQ(table[line], columns({{10, "-20.00"},
                                        {11, line == 2 ? "+" : "-"},
                                        {24, "0."},
                                        {36, "0."},
                                        {48, line == 2 ? "*456." : "*0."},
                                        {60, "0."},
                                        {72, "*0."}}));
    }
}

TEST(CompleteResults, ARowWithoutSolutionIsExplainedBelowTheTable) {
    const std::string note1 =
        "          *  STANDARD WEDGE SOLUTION DOES NOT EXIST FOR INDICATED PRESSURE";
    for (const int side : {Right, Left}) {
        ReportBench bench;
        solveCantilever(bench.results.levels(1));
        bench.results.levels(1).WedgeNoSolution(side) = 1;
        EXPECT_EQ(linesFrom(bench.resultReport(), zeroPressures("-30.00", " "), 99),
                  (Lines{zeroPressures("-30.00", " "), "", note1, "             AT THIS ELEVATION.",
                         "", "", "", "", ""}));
    }
    ReportBench bench;
    solveCantilever(bench.results.levels(1));
    bench.results.levels(2).WedgeNoSolution(Left) = 1; // another level's
    EXPECT_FALSE(hasLine(bench.resultReport(), note1));
}

/// An anchored wall with other rows, grids, pressures and marks at each level.
void solveAnchored(ReportBench& bench) {
    bench.problem.WallType = WallKind::Anchored;
    bench.results.levelCount = 2;
    LevelResult& freeEarth = bench.results.levels(1);
    freeEarth.method = SolutionMethod::FreeEarth;
    setElevations(freeEarth.solved.grid, {0, -10, -20, -30, -1000});
    setRows(freeEarth.diagrams, {{0, 0, 0, 1, 0}, {-19, 111, 0, 0, 0}});
    freeEarth.solved.pressures.ActivePressures(Right, 2, 1) = 41;
    freeEarth.solved.pressures.ActivePressures(Right, 2, 2) = 41;
    freeEarth.solved.pressures.ActiveMark(Right, 2) = true;
    freeEarth.bottomElev = -19;
    freeEarth.anchorForce = 1102.4;
    LevelResult& fixedEarth = bench.results.levels(2);
    fixedEarth.method = SolutionMethod::FixedEarth;
    setElevations(fixedEarth.solved.grid, {0, -12, -22, -32, -1000});
    setRows(fixedEarth.diagrams, {{0, 0, 0, 2, 0}, {-12, 0, 0, 0, 0}, {-25, 222, 0, 0, 0}});
    fixedEarth.solved.pressures.ActivePressures(Right, 2, 1) = 42;
    fixedEarth.solved.pressures.ActivePressures(Right, 2, 2) = 42;
    fixedEarth.bottomElev = -25;
    fixedEarth.anchorForce = 684.5;
}

/// The complete results of one level of an anchored wall.
Lines levelOf(const Lines& report, std::string_view banner) {
    Lines rest = linesFrom(report, banner, report.size());
    const auto next = std::find_if(rest.begin(), rest.end(), [](const std::string& line) {
        return line.find("ANCHOREDOR") != std::string::npos;
    });
    return {rest.begin(), next};
}

const std::string freeEarthBanner = "                         *   BY FREE EARTH METHOD   *";
const std::string fixedEarthBanner = "                         *   BY FIXED EARTH METHOD  *";

TEST(CompleteResults, AnAnchoredWallHasTwoReportsWithTheirOwnBannersAndForces) {
    ReportBench bench;
    solveAnchored(bench);
    const Lines report = bench.resultReport();

    const Lines level1 = levelOf(report, freeEarthBanner);
    EXPECT_TRUE(hasLine(level1, "      II.--RESULTS (ANCHOR FORCE= 1102. (LB))"));
    EXPECT_EQ(tableBelow(level1, resultUnits).size(), 2U);
    EXPECT_EQ(
        tableBelow(level1, pressureUnits),
        (Lines{columns({{10, "0.00"}, {24, "0."}, {36, "0."}, {48, "0."}, {60, "0."}, {72, "0."}}),
               columns({{10, "-10.00"},
                        {11, " "},
                        {24, "0."},
                        {36, "0."},
                        {48, "0."},
                        {60, "*41."},
                        {72, "0."}}),
               zeroPressures("-20.00", " ")}));

    const Lines level2 = levelOf(report, fixedEarthBanner);
    EXPECT_TRUE(hasLine(level2, "      II.--RESULTS (ANCHOR FORCE= 685. (LB))"));
    EXPECT_EQ(tableBelow(level2, resultUnits).size(), 3U);
    EXPECT_EQ(
        tableBelow(level2, pressureUnits),
        (Lines{columns({{10, "0.00"}, {24, "0."}, {36, "0."}, {48, "0."}, {60, "0."}, {72, "0."}}),
               columns({{10, "-12.00"},
                        {11, " "},
                        {24, "0."},
                        {36, "0."},
                        {48, "0."},
                        {60, "42."},
                        {72, "0."}}),
               zeroPressures("-22.00", " "), zeroPressures("-32.00", " ")}));
}

TEST(CompleteResults, FiveEmptyLinesPartTheLevelsAndEndTheReport) {
    ReportBench bench;
    solveAnchored(bench);
    const Lines report = bench.resultReport();
    const Lines between = levelOf(report, freeEarthBanner);
    const Lines last = levelOf(report, fixedEarthBanner);
    for (const Lines* level : {&between, &last}) {
        ASSERT_GT(level->size(), 6U);
        EXPECT_EQ(Lines(level->end() - 5, level->end()), Lines(5));
        EXPECT_NE(*(level->end() - 6), "");
    }
}

// Only the water of the level solved last outlives a solution.
TEST(CompleteResults, BothLevelsShowTheWaterOfTheLastOne) {
    ReportBench bench;
    solveAnchored(bench);
    bench.results.levels(1).solved.pressures.WaterPressures.fill(100);
    bench.results.levels(2).solved.pressures.WaterPressures.fill(200);
    const Lines report = bench.resultReport();
    for (const std::string& banner : {freeEarthBanner, fixedEarthBanner}) {
        for (const std::string& row : tableBelow(levelOf(report, banner), pressureUnits)) {
            EXPECT_EQ(row.substr(11, 13).find("200."), 9U) << row;
        }
    }
}

TEST(CompleteResults, OnlyTheLevelWithARowWithoutSolutionExplainsIt) {
    ReportBench bench;
    solveAnchored(bench);
    bench.results.levels(2).WedgeNoSolution(Right) = 1;
    const Lines report = bench.resultReport();
    EXPECT_FALSE(hasText(levelOf(report, freeEarthBanner), "STANDARD WEDGE"));
    EXPECT_TRUE(hasText(levelOf(report, fixedEarthBanner), "STANDARD WEDGE"));
}

} // namespace
} // namespace korvane::test
