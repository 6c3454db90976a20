// Equilibrium, bending and sections: every check passes, and none is blind to a changed result.
#include "sheet/sections.h"
#include "sheet_bench.h"
#include "support/nasty_problem.h"

#include <functional>
#include <vector>

namespace korvane::test {

using namespace sheet;
namespace {

SheetRequest requestOf(const SheetBench& bench) {
    return {.problem = bench.problem,
            .sections = bench.sections,
            .solved = bench.solved,
            .options = bench.options,
            .notes = bench.notes};
}

/// The checks of both sections that fail, a line each.
std::string failures(const SheetBench& bench) {
    SheetWriter writer(UnitSystem::US);
    writeEquilibrium(writer, requestOf(bench));
    writeBending(writer, requestOf(bench));
    return failedChecks({"", writer.checks()});
}

std::size_t checkCount(const SheetBench& bench) {
    SheetWriter writer(UnitSystem::US);
    writeEquilibrium(writer, requestOf(bench));
    writeBending(writer, requestOf(bench));
    return writer.checks().size();
}

TEST(BalanceOfExamples, IsConfirmed) {
    for (const std::string& file : exampleFiles()) {
        const SheetBench bench(readWall(file));
        ASSERT_TRUE(bench.isSolved()) << file;
        EXPECT_EQ(failures(bench), "") << file;
        EXPECT_GE(checkCount(bench), 9U) << file;
    }
}

TEST(BalanceOfRandomWalls, IsConfirmed) {
    RandomProblems plain(41);
    NastyProblems nasty(41);
    int solvedWalls = 0;
    for (int number = 0; number < 100; ++number) {
        const Problem problem = number % 3 < 2 ? plain.next() : nasty.next().problem;
        const SheetBench bench(problem,
                               number % 2 == 0 ? WedgeMethod::Sweep : WedgeMethod::FixedSurface);
        EXPECT_EQ(failures(bench), "") << number;
        solvedWalls += bench.isSolved() ? 1 : 0;
    }
    EXPECT_GE(solvedWalls, 40);
}

/// A thousandth more of one result.
struct Change {
    const char* name;
    std::function<double&(LevelResult&)> value;
    const char* example;
    int level = 1;
};

double& middleRow(LevelResult& level, Array<double, 301>& rows) {
    return rows(level.diagrams.RowCount / 2);
}

const std::vector<Change> Changes{
    {"anchor force", [](LevelResult& level) -> double& { return level.anchorForce; },
     "anchored-sand"},
    {"anchor force", [](LevelResult& level) -> double& { return level.anchorForce; },
     "anchored-sand", 2},
    {"anchor force", [](LevelResult& level) -> double& { return level.anchorForce; },
     "analysis-anchored"},
    {"toe reaction", [](LevelResult& level) -> double& { return level.toeReaction; },
     "anchored-sand", 2},
    {"largest moment", [](LevelResult& level) -> double& { return level.diagrams.MaxMoment.value; },
     "anchored-clay"},
    {"largest moment", [](LevelResult& level) -> double& { return level.diagrams.MaxMoment.value; },
     "anchored-all-loads", 2},
    {"largest moment", [](LevelResult& level) -> double& { return level.diagrams.MaxMoment.value; },
     "cantilever-dry-sand"},
    {"largest moment", [](LevelResult& level) -> double& { return level.diagrams.MaxMoment.value; },
     "sloping-both-sides-fixed"},
    {"moment of a row",
     [](LevelResult& level) -> double& { return middleRow(level, level.diagrams.ResultMoment); },
     "anchored-layered-water"},
    {"moment of a row",
     [](LevelResult& level) -> double& { return middleRow(level, level.diagrams.ResultMoment); },
     "cantilever-water-seepage"},
    {"shear of a row",
     [](LevelResult& level) -> double& { return middleRow(level, level.diagrams.ResultShear); },
     "cantilever-clay"},
    {"largest shear", [](LevelResult& level) -> double& { return level.maxShear.value; },
     "analysis-cantilever"},
    {"largest deflection",
     [](LevelResult& level) -> double& { return level.diagrams.MaxDeflection.value; },
     "cantilever-metric"},
    {"deflection of a row",
     [](LevelResult& level) -> double& {
         return middleRow(level, level.diagrams.ResultDeflection);
     },
     "anchored-adhesion"},
    {"penetration", [](LevelResult& level) -> double& { return level.penetration; },
     "anchored-sand"},
    {"bottom", [](LevelResult& level) -> double& { return level.bottomElev; },
     "cantilever-coefficients"},
    {"pressure at the bottom", [](LevelResult& level) -> double& { return level.bottomPressure; },
     "anchored-sand"},
    {"net pressure of a row",
     [](LevelResult& level) -> double& { return level.solved.NetActive(level.bottomIndex - 3, 1); },
     "cantilever-dry-sand"},
};

TEST(BalanceChecks, FailWhereAResultIsChangedByAThousandth) {
    for (const Change& change : Changes) {
        SheetBench bench(readWall(examplePath(change.example)));
        ASSERT_EQ(failures(bench), "") << change.example;
        double& value = change.value(bench.results->levels(change.level));
        ASSERT_NE(value, 0) << change.name;
        value *= 1.001;
        EXPECT_NE(failures(bench), "") << change.name << " of " << change.example;
    }
}

TEST(ReductionChecks, FailWhereAReductionIsChangedByAThousandth) {
    SheetBench bench(readWall(examplePath("anchored-sand")));
    ASSERT_NE(bench.solved.reduction, nullptr);
    const MomentReduction told = *bench.solved.reduction;
    int inRange = 1;
    while (!told.inRange(inRange)) {
        ++inRange;
    }
    const std::vector<std::function<double&(MomentReduction&)>> values{
        [](MomentReduction& rowe) -> double& { return rowe.RoweHeight; },
        [](MomentReduction& rowe) -> double& { return rowe.RoweAlpha; },
        [](MomentReduction& rowe) -> double& { return rowe.RoweBeta; },
        [](MomentReduction& rowe) -> double& { return rowe.PileLogRigidity(2); },
        [](MomentReduction& rowe) -> double& { return rowe.PileMomentRatio(3); },
        [&](MomentReduction& rowe) -> double& { return rowe.coefficient(inRange, 1); },
        [&](MomentReduction& rowe) -> double& { return rowe.coefficient(inRange, 2); },
        [](MomentReduction& rowe) -> double& { return rowe.reducedRatio(1, 2); }};
    for (std::size_t i = 0; i < values.size(); ++i) {
        MomentReduction changed = told;
        values[i](changed) *= 1.001;
        bench.solved.reduction = &changed;
        EXPECT_NE(failures(bench), "") << i;
    }
    bench.solved.reduction = &told;
    EXPECT_EQ(failures(bench), "");
}

/// Text of both sections without their tags.
std::string textOf(const SheetBench& bench, UnitSystem units = UnitSystem::US) {
    SheetWriter writer(units);
    SheetRequest request = requestOf(bench);
    request.units = units;
    writeEquilibrium(writer, request);
    writeBending(writer, request);
    const std::string html = writer.finish();
    std::string text;
    bool within = false;
    for (const char c : html) {
        within = c == '<' || (within && c != '>');
        text += within ? '\n' : c == '>' ? '\n' : c;
    }
    return text;
}

bool says(const std::string& text, std::string_view words) {
    return text.find(words) != std::string::npos;
}

TEST(BalanceSections, NameUnknownsForcesAndResiduals) {
    const SheetBench anchored(readWall(examplePath("anchored-all-loads")));
    const std::string text = textOf(anchored);
    for (const char* words :
         {"Free earth support", "Fixed earth support", "Anchor force", "Toe reaction",
          "Horizontal line load", "What is left", "Net pressure from 18.00 to"}) {
        EXPECT_TRUE(says(text, words)) << words;
    }
    const SheetBench cantilever(readWall(examplePath("cantilever-water-seepage")));
    EXPECT_TRUE(says(textOf(cantilever), "Transition, elevation"));
    EXPECT_TRUE(says(textOf(cantilever), "the search was run"));
}

TEST(BalanceSections, TellWhatASectionCarries) {
    // One section of 10 IN^3 and 100 IN^4 with 20,000 PSI under a moment of 15,000 LB-FT: 18,000
    // PSI, 1.1111 of them allowed; 9 IN^3 would do.
    SheetBench bench(readWall(examplePath("cantilever-dry-sand")));
    bench.sections.PileSectionCount = 1;
    bench.sections.PileName(1) = "MINE <1>";
    bench.sections.PileSectionData(1, 1) = 10;
    bench.sections.PileSectionData(1, 2) = 100;
    bench.sections.PileAllowStress(1) = 20000;
    bench.sections.PileModulus(1) = 30e6;
    ResultDiagrams& diagrams = bench.results->levels(1).diagrams;
    diagrams.MaxMoment.value = 15000;
    diagrams.MaxDeflection.value = 6e9; // LB-IN^3 over 3E9 LB-IN^2: 2 IN
    const std::string text = textOf(bench);
    for (const char* words :
         {"MINE &lt;1&gt;", "\n18000\n", "\n1.1111\n", "\n2.000\n", "\npasses\n", "\n9\n"}) {
        EXPECT_TRUE(says(text, words)) << words;
    }
    diagrams.MaxMoment.value = -17000;
    EXPECT_TRUE(says(textOf(bench), "\nfails\n"));
}

TEST(BalanceSections, SayWhereTheMomentIsLargerBetweenRows) {
    SheetBench bench(readWall(examplePath("cantilever-dry-sand")));
    EXPECT_TRUE(says(textOf(bench), "No other moment of the wall is larger."));
    bench.results->levels(1).diagrams.MaxMoment.value *= 0.99;
    EXPECT_TRUE(says(textOf(bench), "1.0101 % more"));
}

TEST(SheetOfAnAnalysis, SaysThatTheFactorIsSoughtAndHowNearItsBottomIs) {
    Problem problem = plainCantilever();
    EXPECT_EQ(SheetBench(problem).sheet().html.find("is given: the factor"), std::string::npos);
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::OneForBoth;
    problem.WallBottomElev = -20;
    problem.WallModulus = 29e6;
    problem.WallInertia = 100;
    const SheetBench bench(problem);
    ASSERT_TRUE(bench.isSolved());
    EXPECT_NEAR(bench.results->levels(1).bottomElev, -20, 0.1);
    const std::string html = bench.sheet().html;
    EXPECT_NE(html.find("The bottom of this wall is given: the factor of safety is varied until "
                        "the bottom found for it lies within 0.1"),
              std::string::npos);
}

} // namespace
} // namespace korvane::test
