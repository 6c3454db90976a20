// The file that a sheet is: well-formed, by itself, small, the same twice, with all text escaped.
#include "problem/counts.h"
#include "sheet/sheet_writer.h"
#include "sheet_bench.h"
#include "support/html_parser.h"
#include "support/random_problem.h"

#include <utility>

namespace korvane::test {
namespace {

constexpr std::size_t Kilobyte = 1000;

std::string page(const std::string& body) {
    return "<!DOCTYPE html>\n<html><body>" + body + "</body></html>";
}

TEST(MarkupParser, FindsWhatIsWrong) {
    EXPECT_EQ(htmlFault(page("<p>a &lt; b</p>")), "");
    for (const char* body :
         {"<p>a", "<p>a</div>", "<p>a & b</p>", "<p><table></table></p>", "<blink>a</blink>",
          "<p id=\"a\"></p><p id=\"a\"></p>", "<tr></tr>", "<p class=a></p>", "<p>&nbsp;</p>",
          "<math><mfrac><mn>1</mn></mfrac></math>", "<script></script>",
          "<p style=\"background: url(a.png)\"></p>", "<svg><use href=\"http://a\"/></svg>"}) {
        EXPECT_NE(htmlFault(page(body)), "") << body;
    }
}

TEST(SheetFile, IsWellFormedAndSmallForAllExamples) {
    for (const std::string& file : exampleFiles()) {
        const SheetBench bench(readWall(file));
        for (const UnitSystem units : {UnitSystem::US, UnitSystem::SI}) {
            const std::string html = bench.sheet(units).html;
            EXPECT_EQ(htmlFault(html), "") << file;
            EXPECT_LT(html.size(), 200 * Kilobyte) << file;
        }
    }
}

TEST(SheetFile, IsWellFormedAndSmallForRandomWalls) {
    RandomProblems problems(7);
    for (int wall = 0; wall < 40; ++wall) {
        const SheetBench bench(problems.next(),
                               wall % 2 == 0 ? WedgeMethod::Sweep : WedgeMethod::FixedSurface);
        const std::string html = bench.sheet().html;
        EXPECT_EQ(htmlFault(html), "") << wall;
        EXPECT_LT(html.size(), 200 * Kilobyte) << wall;
    }
}

/// A wall with water that seeps, and with loads of all kinds on both sides.
Problem fullWall(int layers, int loads) {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -2;
    problem.SurfaceElev(Left, 1) = -14;
    for (const int side : {Right, Left}) {
        problem.SoilLayerCount(side) = layers;
        for (int layer = 1; layer <= layers; ++layer) {
            problem.SoilSatWeight(side, layer) = 125;
            problem.SoilMoistWeight(side, layer) = 110;
            problem.SoilFriction(side, layer) = 30 + layer % 4;
            problem.SoilWallFriction(side, layer) = 20;
            problem.SoilCohesion(side, layer) = 10 * layer;
            problem.SoilBottomElev(side, layer) =
                layer == layers ? NoLayerBottom : problem.SurfaceElev(side, 1) - 3 * layer;
        }
        problem.VLineCount(side) = problem.VStripCount(side) = problem.VTriCount(side) = loads;
        for (int i = 1; i <= loads; ++i) {
            problem.VLineDist(side, i) = 4 * i;
            problem.VLineLoad(side, i) = 300;
            problem.VStripStart(side, i) = 5 * i;
            problem.VStripEnd(side, i) = 5 * i + 3;
            problem.VStripLoad(side, i) = 50;
            problem.VTriStart(side, i) = 6 * i;
            problem.VTriPeak(side, i) = 6 * i + 2;
            problem.VTriEnd(side, i) = 6 * i + 5;
            problem.VTriLoad(side, i) = 60;
        }
        problem.VUniformCount(side) = problem.VRampCount(side) = 1;
        problem.VUniformLoad(side) = 100;
        problem.VRampStart(side) = 10;
        problem.VRampEnd(side) = 20;
        problem.VRampLoad(side) = 80;
        problem.VVarCount(side) = 11;
        for (int i = 1; i <= 11; ++i) {
            problem.VVarDist(side, i) = 3 * i;
            problem.VVarLoad(side, i) = 20 + 10 * (i % 3);
        }
    }
    problem.HLineCount = loads;
    for (int i = 1; i <= loads; ++i) {
        problem.HLineElev(i) = -2.5 * i;
        problem.HLineLoad(i) = 40;
    }
    problem.HDistCount = 11;
    for (int i = 1; i <= 11; ++i) {
        problem.HDistElev(i) = -i;
        problem.HDistLoad(i) = 10 + 5 * (i % 3);
    }
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = -4;
    problem.WaterElev(Left) = -10;
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -5;
    return problem;
}

/// The same with uneven ground of eleven points, for the wedge methods.
Problem uneven(Problem problem, int sides) {
    for (int side = Right; side <= sides; ++side) {
        problem.SurfacePointCount(side) = 11;
        for (int point = 2; point <= 11; ++point) {
            problem.SurfaceDist(side, point) = 5 * (point - 1);
            problem.SurfaceElev(side, point) = problem.SurfaceElev(side, 1) + 0.3 * (point % 4);
        }
    }
    return problem;
}

/// The heaviest walls of a number of layers: loads at their largest counts, level or uneven ground.
std::vector<Problem> heaviestWalls(int layers) {
    const int loads = mostOf(ProblemCount::VLineCount);
    const Problem level = fullWall(layers, loads);
    return {level, uneven(level, 1), uneven(level, 2)};
}

/// The same on a datum of five digits, with adhesion.
Problem onDatum(Problem problem) {
    constexpr double datum = 10000;
    problem.WallTopElev += datum;
    problem.AnchorElev += datum;
    problem.SeepageElev += datum;
    for (const int side : {Right, Left}) {
        problem.WaterElev(side) += datum;
        for (int point = 1; point <= problem.SurfacePointCount(side); ++point) {
            problem.SurfaceElev(side, point) += datum;
        }
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            problem.SoilAdhesion(side, layer) = 5 * layer;
            if (layer < problem.SoilLayerCount(side)) {
                problem.SoilBottomElev(side, layer) += datum;
            }
        }
    }
    for (int i = 1; i <= problem.HLineCount; ++i) {
        problem.HLineElev(i) += datum;
    }
    for (int i = 1; i <= problem.HDistCount; ++i) {
        problem.HDistElev(i) += datum;
    }
    return problem;
}

TEST(SheetFile, StaysBelowItsLimitOnAHighDatum) {
    for (const Problem& wall : heaviestWalls(6)) {
        const SheetBench bench(onDatum(wall));
        ASSERT_TRUE(bench.isSolved());
        EXPECT_EQ(failedChecks(bench.sheet()), "");
        for (const UnitSystem units : {UnitSystem::US, UnitSystem::SI}) {
            EXPECT_LT(bench.sheet(units).html.size(), 190 * Kilobyte);
        }
    }
}

TEST(SheetFile, HasNoRowsOfMathematicsThatGroupNothing) {
    using namespace sheet;
    SheetWriter writer(UnitSystem::US);
    const Expr x = term("x", "", 2);
    writer.formula({"y"}, root(x / Expr(3)) + power(x + Expr(1), 2));
    const std::string html = writer.finish();
    EXPECT_NE(html.find("<msqrt><mfrac><mi>x</mi><mn>3</mn></mfrac></msqrt>"), std::string::npos)
        << html;
    EXPECT_EQ(htmlFault(page(html)), "");
}

TEST(SheetFile, StaysBelowItsLimits) {
    for (const auto& [layers, kilobytes] : {std::pair(6, 190UL), std::pair(11, 1000UL)}) {
        for (const Problem& wall : heaviestWalls(layers)) {
            const SheetBench bench(wall);
            ASSERT_TRUE(bench.isSolved());
            for (const UnitSystem units : {UnitSystem::US, UnitSystem::SI}) {
                EXPECT_LT(bench.sheet(units).html.size(), kilobytes * Kilobyte) << layers;
            }
        }
    }
}

TEST(SheetFile, HoldsAllThatAProblemCanHold) {
    for (const Problem& wall : heaviestWalls(mostOf(ProblemCount::SoilLayerCount))) {
        const SheetBench bench(wall);
        ASSERT_TRUE(bench.isSolved());
        const CalculationSheet sheet = bench.sheet();
        EXPECT_EQ(failedChecks(sheet), "");
        EXPECT_EQ(htmlFault(sheet.html), "");
    }
}

TEST(SheetFile, IsTheSameTwice) {
    const SheetBench bench(readWall(examplePath("anchored-all-loads")));
    const SheetBench again(readWall(examplePath("anchored-all-loads")));
    EXPECT_TRUE(bench.sheet().html == again.sheet().html);
}

TEST(SheetFile, EscapesWhatStandsInTheHeading) {
    Problem problem = plainCantilever();
    problem.NumHeadingLines = 2;
    problem.HeadingLines(1) = "'WALL <script>\"A&B\"</style> \\";
    problem.HeadingLines(2) = "'K\xE4hlig \x01";
    const SheetBench bench(problem);
    const std::string html = bench.sheet().html;
    EXPECT_EQ(htmlFault(html), "");
    EXPECT_NE(html.find("WALL &lt;script&gt;&quot;A&amp;B&quot;&lt;/style&gt;"), std::string::npos);
    EXPECT_NE(html.find("K\xC3\xA4hlig"), std::string::npos);
    EXPECT_EQ(html.find("</style>"), html.rfind("</style>"));
}

TEST(SheetFile, TellsAComparisonWithItsReasons) {
    const SheetBench bench(plainCantilever());
    Comparison comparison;
    comparison.rows.resize(2);
    comparison.rows[0].title = "as given";
    comparison.rows[0].levels.resize(1);
    comparison.rows[0].levels[0].values[0] = 12.5;
    comparison.rows[1].title = "Kp < 2";
    comparison.rows[1].code = "not-applicable";
    comparison.rows[1].reason = "the soil has cohesion & more";
    const std::string html = calculationSheet({.problem = bench.problem,
                                               .sections = bench.sections,
                                               .solved = bench.solved,
                                               .options = bench.options,
                                               .notes = bench.notes,
                                               .comparison = &comparison})
                                 .html;
    EXPECT_EQ(htmlFault(html), "");
    EXPECT_NE(html.find("<td>12.50</td>"), std::string::npos);
    EXPECT_NE(html.find("Kp &lt; 2"), std::string::npos);
    EXPECT_NE(html.find("the soil has cohesion &amp; more"), std::string::npos);
}

TEST(SheetFile, NamesItsMaker) {
    const SheetBench bench(plainCantilever());
    const std::string html = bench.sheet().html;
    EXPECT_TRUE(isSheetFile(html.substr(0, SheetHeadBytes)));
    EXPECT_FALSE(isSheetFile("<!DOCTYPE html>\n<html><head>\n"
                             "<meta name=\"generator\" content=\"other\"/>"));
}

} // namespace
} // namespace korvane::test
