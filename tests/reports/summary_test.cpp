// The summary of results in its four cases.
#include "report_bench.h"
#include "reports/results_report.h"
#include "wall/solution_files.h"

namespace korvane::test {
namespace {

const Lines note{"               NOTE:  DIVIDE SCALED DEFLECTION MODULUS OF",
                 "                      ELLASTICITY IN PSI TIMES PILE MOMENT",
                 "                      OF INERTIA IN IN^4 TO OBTAIN DEFLECTION",
                 "                      IN INCHES."};

/// A solved wall of two rows with different numbers at both levels. The lower surface is at -10.
void solve(State& state, WallKind wallType, Mode mode) {
    state.problem.WallType = wallType;
    state.problem.ProgramMode = mode;
    state.grid.NumElevs = 3;
    state.grid.ElevGrid(2) = -30;
    state.grid.ElevGrid(3) = -1000;
    for (const int level : {1, 2}) {
        state.solution.SolvedBottomElev(level) = level == 1 ? -21.456 : -25;
        state.solution.AnchorForce(level) = level == 1 ? 1102 : 684.476;
        state.solution.BottomIndex(level) = 2;
        state.results.MaxMoment(level) = level == 1 ? -17172.4 : 12250;
        state.results.MaxMoment(level + 2) = level == 1 ? -27.41 : -36.97;
        state.results.MaxDeflection(level) = level == 1 ? 2.22816e9 : -1.1244e9;
        state.results.MaxDeflection(level + 2) = level == 1 ? 0 : -22.5;
        state.preparation.LayerFSPassive(Right, 1, level) = level == 1 ? 1.455 : 2.5;
        // Other entries of the factors are not the ones that are printed.
        state.preparation.LayerFSPassive(Left, 1, level) = 9;
        state.preparation.LayerFSActive(Right, 1, level) = 9;
        if (state.problem.WallType == WallKind::Anchored) {
            WriteSolutionFile(state, level);
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

void setAutomaticSeepage(Problem& problem) {
    problem.WaterDataKind = WaterData::Elevations;
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageGradient(1) = 0.12345;
    problem.SeepageGradient(2) = 0.25;
}

// Penetration: -10 - (-21.456) = 11.456.
TEST(Summary, OfACantileverDesignIsThisText) {
    ReportBench bench;
    solve(*bench.state, WallKind::Cantilever, Mode::Design);
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
    const Lines report = bench.reportOf(WriteResults);
    ASSERT_GT(report.size(), 5U);
    EXPECT_EQ(Lines(report.begin(), report.begin() + 5), Lines(5));
    EXPECT_EQ(summaryFrom(report, expected.front()), joined(expected, note));
}

TEST(Summary, OfAnAnchoredDesignHasTwoMethods) {
    ReportBench bench;
    solve(*bench.state, WallKind::Anchored, Mode::Design);
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
    EXPECT_EQ(summaryFrom(bench.reportOf(WriteResults), expected.front()), joined(expected, note));
}

TEST(Summary, OfACantileverAnalysisTellsTheFactorAndHasNoNote) {
    ReportBench bench;
    solve(*bench.state, WallKind::Cantilever, Mode::Analysis);
    bench.problem.FSKind = 1;
    Lines report = bench.reportOf(WriteResults);
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

    bench.problem.FSKind = 2;
    report = bench.reportOf(WriteResults);
    const std::string passive = "     PASSIVE FACTOR OF SAFETY   :        1.46";
    EXPECT_EQ(summaryFrom(report, passive), joined({passive}, rest));
}

// One factor for both pressures: an empty third column breaks the line, which gives a second empty
// line before the moments.
TEST(Summary, OfAnAnchoredAnalysisHasAnEmptyLineBehindTheSameFactor) {
    ReportBench bench;
    solve(*bench.state, WallKind::Anchored, Mode::Analysis);
    bench.problem.FSKind = 1;
    Lines report = bench.reportOf(WriteResults);
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

    bench.problem.FSKind = 2;
    report = bench.reportOf(WriteResults);
    const std::string passive =
        "     PASSIVE FACTOR OF SAFETY           :          1.46                2.50";
    EXPECT_EQ(summaryFrom(report, passive), joined({passive}, rest));
}

TEST(Summary, AutomaticSeepagePrintsTheGradientOfTheCantilever) {
    for (const Mode mode : {Mode::Design, Mode::Analysis}) {
        ReportBench bench;
        solve(*bench.state, WallKind::Cantilever, mode);
        setAutomaticSeepage(bench.problem);
        const std::string line = columns({{21, "SEEPAGE GRADIENT"}, {33, ":"}, {44, "0.1235"}});
        const Lines report = bench.reportOf(WriteResults);
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
    solve(*design.state, WallKind::Anchored, Mode::Design);
    setAutomaticSeepage(design.problem);
    EXPECT_TRUE(
        hasLine(design.reportOf(WriteResults),
                columns({{21, "SEEPAGE GRADIENT"}, {41, ":"}, {54, "0.1235"}, {74, "0.2500"}})));
    ReportBench analysis;
    solve(*analysis.state, WallKind::Anchored, Mode::Analysis);
    setAutomaticSeepage(analysis.problem);
    EXPECT_TRUE(
        hasLine(analysis.reportOf(WriteResults),
                columns({{21, "SEEPAGE GRADIENT"}, {41, ":"}, {55, "0.1235"}, {75, "0.2500"}})));
}

TEST(Summary, SeepageWithAGivenGradientPrintsNoGradientLine) {
    for (const WallKind wallType : {WallKind::Cantilever, WallKind::Anchored}) {
        for (const Mode mode : {Mode::Design, Mode::Analysis}) {
            ReportBench bench;
            solve(*bench.state, wallType, mode);
            setAutomaticSeepage(bench.problem);
            bench.problem.SeepageKind = Seepage::Given;
            EXPECT_FALSE(hasText(bench.reportOf(WriteResults), "SEEPAGE GRADIENT"));
            bench.problem.SeepageKind = Seepage::Automatic;
            bench.problem.WaterDataKind =
                WaterData::Pressures; // the kind is left over from other data
            EXPECT_FALSE(hasText(bench.reportOf(WriteResults), "SEEPAGE GRADIENT"));
        }
    }
}

TEST(Summary, SpellsEllasticityInEveryReport) {
    ReportBench bench;
    solve(*bench.state, WallKind::Cantilever, Mode::Design);
    const Lines report = bench.reportOf(WriteResults);
    EXPECT_TRUE(hasText(report, "AND THEORY OF ELLASTICITY EQUATIONS FOR SURCHARGE LOADS."));
    EXPECT_EQ(std::count(report.begin(), report.end(), note[1]), 2);
    EXPECT_FALSE(hasText(report, "ELASTICITY"));
}

TEST(Summary, WedgePressuresWithoutAFailedWedgePrintNoWarning) {
    ReportBench bench;
    solve(*bench.state, WallKind::Cantilever, Mode::Design);
    bench.state->preparation.SideMethod(Right) = PressureMethod::Sweep;
    bench.state->preparation.SideMethod(Left) = PressureMethod::FixedSurface;
    const Lines report = bench.reportOf(WriteResults);
    EXPECT_EQ(
        linesFrom(report, "     II.--SUMMARY", 6),
        (Lines{"     II.--SUMMARY", "",
               "          RIGHTSIDE SOIL PRESSURES DETERMINED BY SWEEP SEARCH WEDGE METHOD.", "",
               "          LEFTSIDE SOIL PRESSURES DETERMINED BY FIXED SURFACE WEDGE METHOD.", ""}));
    EXPECT_FALSE(hasText(report, "WARNING"));
}

TEST(Summary, OneUnsolvedRowOnEitherSideAndAtEitherLevelPrintsTheWarningOnce) {
    for (const int level : {1, 2}) {
        for (const int side : {Right, Left}) {
            ReportBench bench;
            solve(*bench.state, WallKind::Anchored, Mode::Design);
            bench.state->wedge.WedgeNoSolution(level, side) = 1;
            const Lines report = bench.reportOf(WriteResults);
            const std::string warning =
                "          *****WARNING:  STANDARD WEDGE SOLUTION DOES NOT EXIST";
            EXPECT_EQ(std::count(report.begin(), report.end(), warning), 1);
            EXPECT_EQ(
                linesFrom(report, warning, 3),
                (Lines{warning, "                         AT ALL ELEVATIONS.  SEE COMPLETE OUTPUT.",
                       ""}));
        }
    }
    ReportBench bench;
    solve(*bench.state, WallKind::Cantilever, Mode::Design);
    bench.state->wedge.WedgeNoSolution(3, Left) = 1; // the third level is no level of the results
    EXPECT_FALSE(hasText(bench.reportOf(WriteResults), "WARNING"));
}

TEST(Summary, IsAppendedToTheReportsBefore) {
    ReportBench bench;
    solve(*bench.state, WallKind::Cantilever, Mode::Design);
    writeFile(bench.state->report.CurrentOutputName, "the echo\n");
    bench.state->report.OutputLineCount = 1;
    WriteResults(*bench.state);
    EXPECT_EQ(bench.lines().front(), "the echo");
    EXPECT_EQ(bench.state->report.OutputLineCount, static_cast<int>(bench.lines().size()));
}

} // namespace
} // namespace korvane::test
