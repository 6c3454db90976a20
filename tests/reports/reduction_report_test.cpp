#include "reports/reduction_report.h"

#include "report_bench.h"
#include "support/reduction_bench.h"

#include <array>

namespace korvane::test {
namespace {

/// Reports of 21 November 2026, 9:05:07.
class ReductionReport : public ::testing::Test {
  private:
    EnvironmentVariable moment_{"SOURCE_DATE_EPOCH", reportMoment};
};

std::string reportOf(const ReductionBench& bench) {
    const PrintLines report = reductionReport(bench.problem, bench.sections, bench.reduction);
    EXPECT_EQ(report.lineCount(),
              std::count(report.content().begin(), report.content().end(), '\n'));
    return report.content();
}

std::string head(const std::string& soil) {
    return "\n\n\n\n\n"
           "   PROGRAM KORVANE-DESIGN/ANALYSIS OF ANCHORED OR CANTILEVER SHEET PILE WALLS\n"
           "                             BY CLASSICAL METHODS\n"
           "   DATE: 21-NOVEMBER-2026                                      TIME: 9:05:07\n"
           "\n"
           "                    *******************************\n"
           "                    * PRELIMINARY DESIGN DATA FOR *\n"
           "                    *  FREE EARTH DESIGN IN " +
           soil +
           "  *\n"
           "                    *******************************\n"
           "\n"
           "       I.--HEADING\n"
           "       'QUAY WALL\n"
           "       'SECTION 2\n"
           "\n";
}

const std::string sectionHead =
    "\n"
    "       SHEET PILE DATA:\n"
    "                    <SECTION PROPERTIES>\n"
    "                     (PER FOOT OF WALL)\n"
    "          SHEET     SECTION    MOMENT OF          ALLOWABLE    MODULUS OF\n"
    "           PILE     MODULUS     INERTIA             STRESS     ELLASTICITY\n"
    "           NAME      (IN^3)      (IN^4)              (PSI)        (PSI)\n";

const std::string applicableHead =
    "\n"
    "     III.--PRELIMINARY DESIGN DATA\n"
    "\n"
    "     SHEET\n"
    "      PILE                     ROWE'S MOMENT    RATIO OF ALLOWABLE MOMENT TO\n"
    "      NAME     LOG(H^4/EI)    REDUCTION COEF.     REDUCED FREE EARTH MOMENT\n";

const std::string notApplicableHead =
    "\n"
    "     III.--PRELIMINARY DESIGN DATA\n"
    "\n"
    "     SHEET\n"
    "      PILE                     ROWE'S MOMENT    RATIO OF ALLOWABLE MOMENT\n"
    "      NAME     LOG(H^4/EI)    REDUCTION COEF.     TO FREE EARTH MOMENT\n";

/// The text behind the table of coefficients of a report that does not apply.
std::string notesOf(const ReductionBench& bench) {
    const std::string report = reportOf(bench);
    const std::size_t lastRow = report.rfind("(***)");
    return report.substr(report.find('\n', lastRow) + 1);
}

void addSteel(ReductionBench& bench) { // x = log10(1E4 / 1E9) = -5, ratio 3 x 24,000 / 288,000
    bench.sections.PileSectionCount = 3;
    bench.sections.PileName(3) = "STEEL";
    bench.sections.PileSectionData(3, 1) = 3;
    bench.sections.PileSectionData(3, 2) = 1000;
    bench.sections.PileAllowStress(3) = 24000;
    bench.sections.PileModulus(3) = 1e6;
}

// At ALPHA .8 the coefficients are .656 and .478 at x = -3, .344 and .294 at x = -2; the ratios
// 1 / .656 = 1.52, 1 / .478 = 2.09, .5 / .344 = 1.45, .5 / .294 = 1.70.
TEST_F(ReductionReport, SandThatApplies) {
    ReductionBench bench = sandBench();
    bench.reduce();
    EXPECT_TRUE(reductionNotes(bench.reduction).empty());
    EXPECT_EQ(reportOf(bench),
              head("SAND") +
                  "      II.--DESIGN PARAMETERS\n"
                  "\n"
                  "          WALL HEIGHT RATIO (ALPHA)  = 0.80\n"
                  "          ANCHOR HEIGHT RATIO (BETA) = 0.20\n" +
                  sectionHead +
                  "          STIFF       12.00       10.00            2.40E+04      1.00E+06\n"
                  "           SOFT        6.00        1.00            2.40E+04      1.00E+06\n" +
                  applicableHead +
                  "                              LOOSE     DENSE          LOOSE     DENSE\n"
                  "     STIFF       -3.00         0.66      0.48           1.52      2.09\n"
                  "      SOFT       -2.00         0.34      0.29           1.45      1.70\n"
                  "\n\n\n\n\n");
}

TEST_F(ReductionReport, SandThatAppliesWithASectionOutOfRange) {
    ReductionBench bench = sandBench();
    addSteel(bench);
    bench.reduce();
    const std::string report = reportOf(bench);
    EXPECT_EQ(report.substr(report.find("      SOFT       -2.00")),
              "      SOFT       -2.00         0.34      0.29           1.45      1.70\n"
              "     STEEL       -5.00         1.00*     1.00*          0.25      0.25\n"
              "\n"
              "          * REDUCTION NOT APPLICABLE DUE TO\n"
              "            LOG(H^4/EI) LESS THAN -3.5 OR GREATER THEN -1.5.\n"
              "\n\n\n\n\n");
    EXPECT_EQ(reductionNotes(bench.reduction),
              std::vector<std::string>{"REDUCTION NOT APPLICABLE DUE TO LOG(H^4/EI) LESS THAN "
                                       "-3.5 OR GREATER THEN -1.5."});
}

TEST_F(ReductionReport, SandThatDoesNotApply) {
    ReductionBench bench = sandBench();
    bench.problem.AnchorElev = 5;
    addSteel(bench);
    bench.reduce();
    EXPECT_EQ(reportOf(bench),
              head("SAND") +
                  "     II.--DESIGN PARAMETERS\n"
                  "\n"
                  "          WALL HEIGHT RATIO (ALPHA)  =    0.80\n"
                  "          ANCHOR HEIGHT RATIO (BETA) =    0.50\n" +
                  sectionHead +
                  "          STIFF       12.00       10.00            2.40E+04     1.00E+06\n"
                  "           SOFT        6.00        1.00            2.40E+04     1.00E+06\n"
                  "          STEEL        3.00     1000.00            2.40E+04     1.00E+06\n" +
                  notApplicableHead +
                  "     STIFF       -3.00           1.0 (***)                 1.00\n"
                  "      SOFT       -2.00           1.0 (***)                 0.50\n"
                  "     STEEL       -5.00           1.0 (***)                 0.25\n"
                  "\n"
                  "          *** REDUCTION NOT APPLICABLE DUE TO BETA GREATER THAN 0.3.\n"
                  "\n\n\n\n\n");
}

// S = 2, ALPHA .8, x = -2: coefficient .489, ratio .5 / .489 = 1.02. The report ends at its table.
TEST_F(ReductionReport, ClayThatApplies) {
    ReductionBench bench = clayBench();
    bench.sections.PileSectionData(1, 2) = 1000;
    bench.reduce();
    EXPECT_EQ(reportOf(bench),
              head("CLAY") +
                  "      II.--DESIGN PARAMETERS\n"
                  "\n"
                  "          WALL HEIGHT RATIO (ALPHA)  = 0.80\n"
                  "          ANCHOR HEIGHT RATIO (BETA) = 0.20\n"
                  "          STABILITY NUMBER           = 2.00\n" +
                  sectionHead +
                  "         STIFF       12.00      1000.00          24000.00       1.00E+06\n"
                  "          SOFT        6.00         1.00          24000.00       1.00E+06\n" +
                  applicableHead +
                  "    STIFF        -5.00           1.0 (***)                 1.00\n"
                  "     SOFT        -2.00                0.49                 1.02\n");
}

TEST_F(ReductionReport, ClayThatDoesNotApply) {
    ReductionBench bench = clayBench();
    bench.problem.SoilCohesion(Left, 1) = 320;
    bench.reduce();
    EXPECT_EQ(reportOf(bench),
              head("CLAY") +
                  "      II.--DESIGN PARAMETERS\n"
                  "\n"
                  "          WALL HEIGHT RATIO (ALPHA)  = 0.80\n"
                  "          ANCHOR HEIGHT RATIO (BETA) = 0.20\n"
                  "          STABILITY NUMBER           = 0.40\n" +
                  sectionHead +
                  "         STIFF       12.00        10.00          24000.00       1.00E+06\n"
                  "          SOFT        6.00         1.00          24000.00       1.00E+06\n" +
                  notApplicableHead +
                  "    STIFF        -3.00           1.0 (***)                 1.00\n"
                  "     SOFT        -2.00           1.0 (***)                 0.50\n"
                  "\n"
                  "          *** REDUCTION NOT APPLICABLE DUE TO STABILITY NUMBER\n"
                  "     LESS THAN 0.5.\n"
                  "\n\n\n\n\n");
}

TEST_F(ReductionReport, NoteOfASmallAlpha) {
    for (ReductionBench& bench : std::array{sandBench(), clayBench()}) {
        bench.problem.SurfaceElev(Left, 1) = 4.5; // ALPHA .55
        bench.problem.SoilCohesion(Left, 1) *= 0.5;
        bench.reduce();
        EXPECT_EQ(notesOf(bench),
                  "\n          *** REDUCTION NOT APPLICABLE DUE TO ALPHA LESS THAN 0.6.\n"
                  "\n\n\n\n\n");
    }
}

TEST_F(ReductionReport, NoteOfALargeAlpha) {
    ReductionBench bench = sandBench();
    bench.problem.SurfaceElev(Left, 1) = 1;
    bench.reduce();
    EXPECT_EQ(notesOf(bench),
              "\n          *** REDUCTION NOT APPLICABLE DUE TO ALPHA GREATER THAN 0.8.\n"
              "\n\n\n\n\n");
}

TEST_F(ReductionReport, NoteOfARightSurfaceBelowTheTopOfTheWall) {
    for (ReductionBench& bench : std::array{sandBench(), clayBench()}) {
        bench.problem.SurfaceElev(Right, 1) = 9;
        bench.lastGrid().ElevGrid(2) = 9;
        bench.reduce();
        EXPECT_EQ(notesOf(bench),
                  "\n          *** REDUCTION NOT APPLICABLE DUE TO RIGHTSIDE SURFACE\n"
                  "              BELOW TOP OF WALL.\n"
                  "\n\n\n\n\n");
    }
}

// A right surface that low is below the top of the wall too.
TEST_F(ReductionReport, NoteOfARightSurfaceAtOrBelowTheLeftOneStandsFartherLeftInSand) {
    for (const bool sand : {true, false}) {
        ReductionBench bench = sand ? sandBench() : clayBench();
        bench.problem.SurfaceElev(Right, 1) = 2;
        if (!sand) { // an overburden of 800 PSF keeps S at 2
            bench.problem.VUniformCount(Right) = 1;
            bench.problem.VUniformLoad(Right) = 800;
        }
        bench.reduce();
        EXPECT_EQ(
            notesOf(bench),
            std::string("\n          *** REDUCTION NOT APPLICABLE DUE TO RIGHTSIDE SURFACE\n"
                        "              BELOW TOP OF WALL.\n"
                        "\n          *** REDUCTION NOT APPLICABLE DUE TO RIGHTSIDE SURFACE\n") +
                (sand ? "" : "         ") +
                "     AT OR BELOW LEFTSIDE SURFACE.\n"
                "\n\n\n\n\n");
    }
}

TEST_F(ReductionReport, NoteOfALargeStabilityNumber) {
    ReductionBench bench = clayBench();
    bench.problem.SoilCohesion(Left, 1) = 2400;
    bench.reduce();
    EXPECT_EQ(notesOf(bench), "\n          *** REDUCTION NOT APPLICABLE DUE TO STABILITY NUMBER\n"
                              "     GREATER THAN 2.5.\n"
                              "\n\n\n\n\n");
}

TEST_F(ReductionReport, AllNotesInTheirOrder) {
    ReductionBench bench = clayBench();
    bench.problem.SurfaceElev(Right, 1) = 5;
    bench.problem.SurfaceElev(Left, 1) = 5;
    bench.problem.AnchorElev = 6;
    bench.problem.VUniformCount(Right) = 1;
    bench.problem.VUniformLoad(Right) = 1e5; // S far below .5
    bench.reduce();
    const std::vector<std::string> expected = {
        "REDUCTION NOT APPLICABLE DUE TO ALPHA LESS THAN 0.6.",
        "REDUCTION NOT APPLICABLE DUE TO BETA GREATER THAN 0.3.",
        "REDUCTION NOT APPLICABLE DUE TO RIGHTSIDE SURFACE BELOW TOP OF WALL.",
        "REDUCTION NOT APPLICABLE DUE TO RIGHTSIDE SURFACE AT OR BELOW LEFTSIDE SURFACE.",
        "REDUCTION NOT APPLICABLE DUE TO STABILITY NUMBER LESS THAN 0.5."};
    EXPECT_EQ(reductionNotes(bench.reduction), expected);
    const std::string notes = notesOf(bench);
    std::size_t from = 0;
    for (const char* piece :
         {"ALPHA LESS", "BETA GREATER", "BELOW TOP", "AT OR BELOW", "LESS THAN 0.5"}) {
        const std::size_t at = notes.find(piece);
        ASSERT_NE(at, std::string::npos) << piece;
        EXPECT_GE(at, from);
        from = at;
    }
}

TEST_F(ReductionReport, TheLimitsThemselvesApply) {
    ReductionBench bench = sandBench(); // ALPHA .8 and the right surface at the wall's top
    bench.problem.AnchorElev = 7;       // BETA .3
    bench.reduce();
    EXPECT_TRUE(bench.reduction.applicable);
    for (const double cohesion : {400.0, 2000.0}) { // S .5 and 2.5
        ReductionBench clay = clayBench();
        clay.problem.SoilCohesion(Left, 1) = cohesion;
        clay.reduce();
        EXPECT_TRUE(clay.reduction.applicable) << cohesion;
    }
    ReductionBench low = sandBench();
    low.problem.SurfaceElev(Left, 1) = 4; // ALPHA .6
    low.reduce();
    EXPECT_TRUE(low.reduction.applicable);
}

TEST_F(ReductionReport, NamesTheSoil) {
    ReductionBench sand = sandBench();
    sand.reduce();
    EXPECT_NE(reportOf(sand).find("DESIGN IN SAND"), std::string::npos);
    ReductionBench clay = clayBench();
    clay.reduce();
    EXPECT_NE(reportOf(clay).find("DESIGN IN CLAY"), std::string::npos);
}

TEST_F(ReductionReport, PrintsACoefficientAboveOneAsComputed) {
    // Loose sand at ALPHA .8 and x = -3.5 is 1.089; I x E = 1E4 x 10^3.5.
    ReductionBench bench = sandBench();
    bench.sections.PileSectionData(1, 2) = 31.6;
    bench.reduce();
    EXPECT_NE(reportOf(bench).find("1.09"), std::string::npos);
}

// Names longer than the first column leaves room for break the line, as on a line printer.
TEST_F(ReductionReport, ALongNamePushesItsNumbersToTheNextLineAndIsCounted) {
    ReductionBench bench = sandBench();
    bench.sections.PileSectionCount = 1;
    bench.sections.PileName(1) = "A SECTION WITH A LONG NAME";
    bench.reduce();
    const std::string report = reportOf(bench);
    EXPECT_NE(report.find("A SECTION WITH A LONG NAME\n                      12.00"),
              std::string::npos);
}

} // namespace
} // namespace korvane::test
