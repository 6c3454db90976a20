// The input as tables: nothing that is in use is left out.
#include "sheet/input_tables.h"
#include "sheet/sections.h"
#include "sheet_bench.h"
#include "support/html_parser.h"
#include "support/random_problem.h"

#include <set>

namespace korvane::test {

using namespace sheet;
namespace {

std::string page(const std::string& body) {
    return "<!DOCTYPE html>\n<html><body>" + body + "</body></html>";
}

std::string tablesOf(const Problem& problem, UnitSystem units) {
    SheetWriter writer(units);
    writeInputTables(writer, problem);
    return writer.finish();
}

/// Factors that are not given stand as a dash.
bool isOpenFactor(const FieldRules& rules, double value) {
    const std::string name = rules.name;
    return value == 0 && name.find("FS") != std::string::npos;
}

TEST(InputTables, HoldEveryNumberInUse) {
    RandomProblems problems(5);
    std::set<ProblemField> seen;
    for (int number = 0; number < 60; ++number) {
        Problem problem = problems.next();
        if (problem.SeepageKind == Seepage::Automatic && number % 2 == 0) { // none is drawn
            problem.SeepageKind = Seepage::Given;
            problem.SeepageGradient(1) = 0.125;
        }
        const UnitSystem units = number % 2 == 0 ? UnitSystem::US : UnitSystem::SI;
        const std::string html = tablesOf(problem, units);
        EXPECT_EQ(htmlFault(page(html)), "") << number;
        for (const FieldGroup& group : fieldGroups()) {
            for (int side = 1; side <= group.sides; ++side) {
                if (!group.inUse(problem, side)) {
                    continue;
                }
                for (int f = static_cast<int>(group.first); f <= static_cast<int>(group.last);
                     ++f) {
                    const FieldRules& rules = rulesOf(static_cast<ProblemField>(f));
                    for (int row = 1; row <= group.rows(problem, side); ++row) {
                        const double value = rules.value(problem, side, row);
                        const bool water = std::string_view(rules.name) == "WaterElev" ||
                                           std::string_view(rules.name) == "SeepageElev";
                        if (isOpenFactor(rules, value) ||
                            (water && problem.WaterDataKind != WaterData::Elevations) ||
                            (rules.field == ProblemField::SeepageElev &&
                             problem.SeepageKind == Seepage::None)) {
                            continue;
                        }
                        const std::string text = quantityText(rules.quantity, value, units);
                        EXPECT_NE(html.find(">" + text), std::string::npos)
                            << number << ' ' << rules.name << ' ' << text;
                        EXPECT_NE(html.find(escaped(fieldTitle(rules.field))), std::string::npos)
                            << number << ' ' << rules.name;
                        seen.insert(rules.field);
                    }
                }
            }
        }
    }
    for (int f = 0; f < FieldCount; ++f) { // the draws have reached them all
        EXPECT_TRUE(seen.count(static_cast<ProblemField>(f)) == 1)
            << rulesOf(static_cast<ProblemField>(f)).name;
    }
}

TEST(WallSection, OfARefusedRecordHasNoFigure) {
    Problem problem;
    clearProblemData(problem);
    SheetBench bench(plainCantilever());
    bench.problem = problem;
    SheetWriter writer(UnitSystem::US);
    writeWall(writer, {bench.problem, bench.sections, bench.solved, bench.options, bench.notes});
    const std::string html = writer.finish();
    EXPECT_EQ(html.find("<svg"), std::string::npos);
    EXPECT_NE(html.find("No loads"), std::string::npos);
}

TEST(WallSection, WritesUnitsAsAllSectionsDo) {
    Problem problem = plainCantilever();
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::OneForBoth;
    problem.WallBottomElev = -20;
    problem.WallModulus = 29e6;
    problem.WallInertia = 100;
    const std::string html = SheetBench(problem).sheet().html;
    EXPECT_NE(html.find("100.0 IN⁴/FT"), std::string::npos);
    EXPECT_NE(html.find("29000000 PSI"), std::string::npos);
    for (const char* plain : {"IN4", "IN3", "LB-FT", "kN/m3"}) {
        EXPECT_EQ(html.find(plain), std::string::npos) << plain;
    }
}

TEST(WallSection, HasFigureAndTables) {
    const SheetBench bench(readWall(examplePath("anchored-all-loads")));
    SheetWriter writer(UnitSystem::US);
    writeWall(writer, {bench.problem, bench.sections, bench.solved, bench.options, bench.notes});
    const std::string html = writer.finish();
    EXPECT_EQ(htmlFault(page(html)), "");
    for (const char* words : {"class=\"wallfigure\"", "Vertical line loads, right side",
                              "Horizontal distributed load", "Soil, left side", "PSF"}) {
        EXPECT_NE(html.find(words), std::string::npos) << words;
    }
}

} // namespace
} // namespace korvane::test
