// The summary of results in its four cases.
#include "report_bench.h"
#include "solution/kept_results.h"

namespace korvane::test {
namespace {

const Lines note{"               NOTE:  DIVIDE SCALED DEFLECTION MODULUS OF",
                 "                      ELLASTICITY IN PSI TIMES PILE MOMENT",
                 "                      OF INERTIA IN IN^4 TO OBTAIN DEFLECTION",
                 "                      IN INCHES."};

/// A solved wall of two rows with different numbers at both levels. The lower surface is at -10.
void solve(ReportBench& bench, WallKind wallType, Mode mode) {
    bench.problem.WallType = wallType;
    bench.problem.ProgramMode = mode;
    bench.results.levelCount = wallType == WallKind::Anchored ? 2 : 1;
    for (const int number : {1, 2}) {
        LevelResult& level = bench.results.levels(number);
        const bool first = number == 1;
        level.method = first ? SolutionMethod::FreeEarth : SolutionMethod::FixedEarth;
        setElevations(level.solved.grid, {0, -30, -1000});
        level.diagrams.RowCount = 2;
        level.bottomElev = first ? -21.456 : -25;
        level.penetration = -10 - level.bottomElev;
        level.anchorForce = first ? 1102 : 684.476;
        level.diagrams.MaxMoment = first ? Extreme{-17172.4, -27.41} : Extreme{12250, -36.97};
        level.diagrams.MaxDeflection = first ? Extreme{2.22816e9, 0} : Extreme{-1.1244e9, -22.5};
        level.factorOfSafety = first ? 1.455 : 2.5;
        // The factors of the layers are not the ones that are printed.
        for (const int side : {Right, Left}) {
            level.layers(side, 1).fsActive = level.layers(side, 1).fsPassive = 9;
        }
    }
}

/// The lines of the summary from the one that is `first` to the last before the complete results.
Lines summaryFrom(const Lines& report, std::string_view first) {
    Lines rest = linesFrom(report, first, report.size());
    const auto next = std::find_if(rest.begin(), rest.end(), [](const std::string& line) {
        return line.find("ANCHOREDOR") != std::string::npos;
    });
    if (next - rest.begin() < 5) {
        ADD_FAILURE() << "no complete results behind the summary";
        return rest;
    }
    EXPECT_EQ(Lines(next - 5, next), Lines(5));
    rest.erase(next - 5, rest.end());
    return rest;
}

Lines joined(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

void setAutomaticSeepage(ReportBench& bench) {
    bench.problem.WaterDataKind = WaterData::Elevations;
    bench.problem.SeepageKind = Seepage::Automatic;
    bench.problem.SeepageGradient.fill(0.9); // as given; what was found is printed
    bench.results.levels(1).seepageGradient = 0.12345;
    bench.results.levels(2).seepageGradient = 0.25;
}

// Penetration: -10 - (-21.456) = 11.456.
TEST(Summary, OfACantileverDesignIsThisText) {
    ReportBench bench;
    solve(bench, WallKind::Cantilever, Mode::Design);
    const Lines expected{
        "  PROGRAM KORVANE-DESIGN/ANALYSIS OF ANCHORED OR CANTILEVER SHEET PILE WALLS",
        "                            BY CLASSICAL METHODS",
        dateLine,
        "",
        "                         ****************************",
        "                         *  SUMMARY OF RESULTS FOR  *",
        "                         *  CANTILEVER WALL DESIGN  *",
        "                         ****************************",
        "",
        "      I.--HEADING",
        "       'PLAIN CANTILEVER ",
        "",
        "     II.--SUMMARY",
        "",
        "          RIGHTSIDE SOIL PRESSURES DETERMINED BY COULOMB COEFFICIENTS",
        "          AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS.",
        "",
        "          LEFTSIDE SOIL PRESSURES DETERMINED BY COULOMB COEFFICIENTS",
        "          AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS.",
        "",
        "     WALL BOTTOM ELEV. (FT)     :      -21.46",
        "           PENETRATION (FT)     :       11.46",
        "",
        "     MAX. BEND. MOMENT (LB-FT)  : -1.7172E+04",
        "           AT ELEVATION (FT)    :      -27.41",
        "",
        "     MAX. SCALED DEFL. (LB-IN^3):  2.2282E+09",
        "           AT ELEVATION (FT)    :        0.00",
        ""};
    const Lines report = bench.resultReport();
    ASSERT_GT(report.size(), 5U);
    EXPECT_EQ(Lines(report.begin(), report.begin() + 5), Lines(5));
    EXPECT_EQ(summaryFrom(report, expected.front()), joined(expected, note));
}

TEST(Summary, OfAnAnchoredDesignHasTwoMethods) {
    ReportBench bench;
    solve(bench, WallKind::Anchored, Mode::Design);
    const Lines expected{
        "                         *   ANCHORED WALL DESIGN   *",
        "                         ****************************",
        "",
        "      I.--HEADING",
        "       'PLAIN CANTILEVER ",
        "",
        "     II.--SUMMARY",
        "",
        "          RIGHTSIDE SOIL PRESSURES DETERMINED BY COULOMB COEFFICIENTS",
        "          AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS.",
        "",
        "          LEFTSIDE SOIL PRESSURES DETERMINED BY COULOMB COEFFICIENTS",
        "          AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS.",
        "",
        "     METHOD                             :    FREE EARTH         FIXED EARTH",
        "",
        "     WALL BOTTOM ELEVATION (FT)         :        -21.46              -25.00",
        "           PENETRATION (FT)              :        11.46               15.00",
        "",
        "     MAXIMUM BENDING MOMENT (LB-FT)     :   -1.7172E+04          1.2250E+04",
        "           AT ELEVATION (FT)            :        -27.41              -36.97",
        "",
        "     MAXIMUM SCALED DEFLECTION (LB-IN^3):    2.2282E+09         -1.1244E+09",
        "           AT ELEVATION (FT)            :          0.00              -22.50",
        "",
        "     ANCHOR FORCE (LB)                  :    1.1020E+03          6.8448E+02",
        ""};
    EXPECT_EQ(summaryFrom(bench.resultReport(), expected.front()), joined(expected, note));
}

TEST(Summary, OfACantileverAnalysisTellsTheFactorAndHasNoNote) {
    ReportBench bench;
    solve(bench, WallKind::Cantilever, Mode::Analysis);
    bench.problem.FSKind = FactorKind::OneForBoth;
    Lines report = bench.resultReport();
    EXPECT_TRUE(hasLine(report, "                         * CANTILEVER WALL ANALYSIS *"));
    const std::string factor = "     FACTOR OF SAFETY           :        1.46";
    const Lines rest{"",
                     "     MAX. BEND. MOMENT (LB-FT)  : -1.7172E+04",
                     "           AT ELEVATION (FT)    :      -27.41",
                     "",
                     "     MAXIMUM DEFLECTION (IN.)   :  2.2282E+09",
                     "           AT ELEVATION (FT)    :        0.00"};
    EXPECT_EQ(summaryFrom(report, factor), joined({factor}, rest));
    EXPECT_FALSE(hasText(report, "NOTE:"));

    bench.problem.FSKind = FactorKind::ActiveGiven;
    report = bench.resultReport();
    const std::string passive = "     PASSIVE FACTOR OF SAFETY   :        1.46";
    EXPECT_EQ(summaryFrom(report, passive), joined({passive}, rest));
}

// One factor for both pressures: an empty third column breaks the line, which gives a second empty
// line before the moments.
TEST(Summary, OfAnAnchoredAnalysisHasAnEmptyLineBehindTheSameFactor) {
    ReportBench bench;
    solve(bench, WallKind::Anchored, Mode::Analysis);
    bench.problem.FSKind = FactorKind::OneForBoth;
    Lines report = bench.resultReport();
    EXPECT_TRUE(hasLine(report, "                         *  ANCHORED WALL ANALYSIS  *"));
    const std::string factor =
        "     FACTOR OF SAFETY                   :          1.46                2.50";
    const Lines rest{"",
                     "     MAXIMUM BENDING MOMENT (LB-FT)     :   -1.7172E+04          1.2250E+04",
                     "           AT ELEVATION (FT)            :        -27.41              -36.97",
                     "",
                     "     MAXIMUM DEFLECTION (IN.)           :    2.2282E+09         -1.1244E+09",
                     "           AT ELEVATION (FT)            :          0.00              -22.50",
                     "",
                     "     ANCHOR FORCE (LB)                  :    1.1020E+03          6.8448E+02"};
    EXPECT_EQ(summaryFrom(report, factor), joined({factor, ""}, rest));
    EXPECT_FALSE(hasText(report, "NOTE:"));

    bench.problem.FSKind = FactorKind::ActiveGiven;
    report = bench.resultReport();
    const std::string passive =
        "     PASSIVE FACTOR OF SAFETY           :          1.46                2.50";
    EXPECT_EQ(summaryFrom(report, passive), joined({passive}, rest));
}

TEST(Summary, AutomaticSeepagePrintsTheGradientOfTheCantilever) {
    for (const Mode mode : {Mode::Design, Mode::Analysis}) {
        ReportBench bench;
        solve(bench, WallKind::Cantilever, mode);
        setAutomaticSeepage(bench);
        const std::string line = columns({{21, "SEEPAGE GRADIENT"}, {33, ":"}, {44, "0.1235"}});
        const Lines report = bench.resultReport();
        const Lines before =
            linesFrom(report,
                      "     MAX" +
                          std::string(mode == Mode::Design ? ". SCALED DEFL. (LB-IN^3):"
                                                           : "IMUM DEFLECTION (IN.)   :") +
                          "  2.2282E+09",
                      4);
        ASSERT_EQ(before.size(), 4U);
        EXPECT_EQ(before[2], "");
        EXPECT_EQ(before[3], line);
    }
}

// Level 1 ends in column 54 in design and in column 55 in analysis; level 2 twenty columns on.
TEST(Summary, AutomaticSeepagePrintsTheGradientsOfAnAnchoredWallByMode) {
    ReportBench design;
    solve(design, WallKind::Anchored, Mode::Design);
    setAutomaticSeepage(design);
    EXPECT_TRUE(
        hasLine(design.resultReport(),
                columns({{21, "SEEPAGE GRADIENT"}, {41, ":"}, {54, "0.1235"}, {74, "0.2500"}})));
    ReportBench analysis;
    solve(analysis, WallKind::Anchored, Mode::Analysis);
    setAutomaticSeepage(analysis);
    EXPECT_TRUE(
        hasLine(analysis.resultReport(),
                columns({{21, "SEEPAGE GRADIENT"}, {41, ":"}, {55, "0.1235"}, {75, "0.2500"}})));
}

TEST(Summary, SeepageWithAGivenGradientPrintsNoGradientLine) {
    for (const WallKind wallType : {WallKind::Cantilever, WallKind::Anchored}) {
        for (const Mode mode : {Mode::Design, Mode::Analysis}) {
            ReportBench bench;
            solve(bench, wallType, mode);
            setAutomaticSeepage(bench);
            bench.problem.SeepageKind = Seepage::Given;
            EXPECT_FALSE(hasText(bench.resultReport(), "SEEPAGE GRADIENT"));
            bench.problem.SeepageKind = Seepage::Automatic;
            bench.problem.WaterDataKind =
                WaterData::Pressures; // the kind is left over from other data
            EXPECT_FALSE(hasText(bench.resultReport(), "SEEPAGE GRADIENT"));
        }
    }
}

TEST(Summary, SpellsEllasticityInEveryReport) {
    ReportBench bench;
    solve(bench, WallKind::Cantilever, Mode::Design);
    const Lines report = bench.resultReport();
    EXPECT_TRUE(hasText(report, "AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS."));
    EXPECT_EQ(std::count(report.begin(), report.end(), note[1]), 2);
    EXPECT_FALSE(hasText(report, "ELASTICITY"));
}

TEST(Summary, WedgePressuresWithoutAFailedWedgePrintNoWarning) {
    ReportBench bench;
    solve(bench, WallKind::Cantilever, Mode::Design);
    bench.results.review.SideMethod(Right) = PressureMethod::Sweep;
    bench.results.review.SideMethod(Left) = PressureMethod::FixedSurface;
    const Lines report = bench.resultReport();
    EXPECT_EQ(
        linesFrom(report, "     II.--SUMMARY", 6),
        (Lines{"     II.--SUMMARY", "",
               "          RIGHTSIDE SOIL PRESSURES DETERMINED BY SWEEP SEARCH WEDGE METHOD.", "",
               "          LEFTSIDE SOIL PRESSURES DETERMINED BY FIXED SURFACE WEDGE METHOD.", ""}));
    EXPECT_FALSE(hasText(report, "WARNING"));
}

TEST(Summary, AnUnsolvedRowPrintsTheWarningOnce) {
    for (const WallKind wallType : {WallKind::Cantilever, WallKind::Anchored}) {
        ReportBench bench;
        solve(bench, wallType, Mode::Design);
        bench.results.wedgeWarning = true;
        const Lines report = bench.resultReport();
        const std::string warning =
            "          *****WARNING:  STANDARD WEDGE SOLUTION DOES NOT EXIST";
        EXPECT_EQ(std::count(report.begin(), report.end(), warning), 1);
        EXPECT_EQ(linesFrom(report, warning, 3),
                  (Lines{warning,
                         "                         AT ALL ELEVATIONS.  SEE COMPLETE OUTPUT.", ""}));
    }
}

/// Whether results kept from marks (level, side) of a solution warn.
bool warns(int level, int side) {
    Bench bench;
    bench.problem = plainCantilever();
    bench.state->preparation.LayerFSActive.fill(1);
    bench.state->preparation.LayerFSPassive.fill(1);
    bench.state->wedge.WedgeNoSolution(level, side) = 1;
    Results results;
    keepLevel(*bench.state, 1, results);
    return results.wedgeWarning;
}

TEST(Summary, OneUnsolvedRowOnEitherSideAndAtEitherLevelWarns) {
    for (const int level : {1, 2}) {
        for (const int side : {Right, Left}) {
            EXPECT_TRUE(warns(level, side));
        }
    }
    EXPECT_FALSE(warns(3, Left)); // the third level is no level of the results
}

} // namespace
} // namespace korvane::test
