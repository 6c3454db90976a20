// Rows as they come back, and the tables and figures of an answer.
#include "survey/answer.h"

#include "plots/bounds_surface.h"
#include "plots/recording_surface.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace korvane::study::test {
namespace {

const double Nothing = std::nan("");

AskedVariable variable(ProblemField field, double low, double high, int steps = 2,
                       int side = Right) {
    return {.address = {field, side, 1}, .low = low, .high = high, .steps = steps};
}

Problem cantilever() {
    Problem problem = korvane::test::plainCantilever();
    return problem;
}

Question tornadoQuestion() {
    return {.variables = {variable(ProblemField::SoilMoistWeight, 114, 126),
                          variable(ProblemField::SoilFriction, 28, 32)},
            .outputs = {"penetration"}};
}

/// As given 10; the weight moves by 1 and 2, the friction by 3 and has no solution at its high end.
const char* const TornadoRows =
    "id,SoilMoistWeight_right_1,SoilFriction_right_1,penetration,outcome,reason\r\n"
    "0,120,30,10,solved,\r\n"
    "1,114,30,9,solved,\r\n"
    "2,126,30,12,solved,\r\n"
    "3,120,28,13,solved,\r\n"
    "4,120,32,,refused,\"too \"\"soft\"\", by far\"\r\n";

StudyRows rowsOf(const std::string& text, const Question& question) {
    ReadRows read = readRows(text, question, cantilever());
    EXPECT_EQ(read.fault, "");
    return std::move(read.rows);
}

Tornado tornado() {
    return tornadoOf(tornadoQuestion(), rowsOf(TornadoRows, tornadoQuestion()), 0);
}

/// Three values of one variable, two of another, three of a third; 100 i + 10 j + k.
Question gridQuestion() {
    return {.asking = Asking::Grid,
            .variables = {variable(ProblemField::SoilFriction, 28, 32, 3),
                          variable(ProblemField::SurfaceElev, -11, -9, 2, Left),
                          variable(ProblemField::SoilCohesion, 0, 200, 3)},
            .outputs = {"penetration"}};
}

std::string gridRows() {
    std::string text =
        "id,SoilFriction_right_1,SurfaceElev_left_1,SoilCohesion_right_1,penetration,"
        "outcome,reason\r\n";
    int id = 0;
    for (const int i : {0, 1, 2}) {
        for (const int j : {0, 1}) {
            for (const int k : {0, 1, 2}) {
                const bool fails = i == 1 && j == 1 && k == 1;
                text += std::to_string(id++) + "," + std::to_string(28 + 2 * i) + "," +
                        std::to_string(-11 + 2 * j) + "," + std::to_string(100 * k) + "," +
                        (fails ? "" : std::to_string(100 * i + 10 * j + k)) + "," +
                        (fails ? "refused,why" : "solved,") + "\r\n";
            }
        }
    }
    return text;
}

std::vector<Primitive> drawn(const SizedFigure& figure) {
    RecordingSurface surface;
    figure.figure.draw(surface);
    return surface.primitives();
}

bool hasText(const std::vector<Primitive>& all, const std::string& text) {
    return std::any_of(all.begin(), all.end(), [&](const Primitive& p) { return p.text == text; });
}

/// Everything lies within the size of the figure.
void expectInside(const SizedFigure& figure) {
    RecordingSurface metrics;
    BoundsSurface bounds(metrics);
    figure.figure.draw(bounds);
    const Corners reach = bounds.bounds({});
    EXPECT_GE(reach.a.x, 0);
    EXPECT_GE(reach.a.y, 0);
    EXPECT_LE(reach.b.x, figure.width);
    EXPECT_LE(reach.b.y, figure.height);
}

} // namespace

// ---- rows ---------------------------------------------------------------------------------------

TEST(StudyRows, AreReadWithQuotationMarksAndEmptyCells) {
    const StudyRows rows = rowsOf(TornadoRows, tornadoQuestion());
    ASSERT_EQ(rows.rows.size(), 5U);
    EXPECT_EQ(rows.rows[2].numbers, (std::vector<double>{126, 30}));
    EXPECT_EQ(rows.rows[2].outputs, std::vector<double>{12});
    EXPECT_TRUE(rows.rows[2].isSolved());
    EXPECT_TRUE(std::isnan(rows.rows[4].outputs[0]));
    EXPECT_EQ(rows.rows[4].outcome, "refused");
    EXPECT_EQ(rows.rows[4].reason, "too \"soft\", by far");
}

TEST(StudyRows, TellWhatTheyLack) {
    const std::string text = TornadoRows;
    const auto faultOf = [](const std::string& of) {
        return readRows(of, tornadoQuestion(), cantilever()).fault;
    };
    EXPECT_EQ(faultOf(""), "The results have no column \"SoilMoistWeight_right_1\".");
    EXPECT_EQ(faultOf("id,SoilMoistWeight_right_1,SoilFriction_right_1,outcome,reason\r\n"),
              "The results have no column \"penetration\".");
    EXPECT_EQ(faultOf(text.substr(0, text.rfind("4,120"))), "The results have 4 rows.");
    EXPECT_EQ(faultOf(text + "5,1\r\n"), "A line of the results has 2 cells instead of 6.");
}

TEST(StudyRows, TellTheirOutcomesTheMostFrequentReasonFirst) {
    StudyRows rows = rowsOf(TornadoRows, tornadoQuestion());
    EXPECT_EQ(outcomeText(rows), "5 variants, 1 without a solution:\n1: too \"soft\", by far");
    rows.rows.push_back({.numbers = {}, .outputs = {}, .outcome = "b", .reason = "b"});
    rows.rows.push_back({.numbers = {}, .outputs = {}, .outcome = "b", .reason = "b"});
    EXPECT_EQ(outcomeText(rows),
              "7 variants, 3 without a solution:\n2: b\n1: too \"soft\", by far");
    rows.rows.resize(4);
    EXPECT_EQ(outcomeText(rows), "4 variants, all solved.");
}

TEST(StudyRows, HaveColumnsForBothLevelsOfAnAnchoredWall) {
    Problem problem = cantilever();
    problem.WallType = WallKind::Anchored;
    const ReadRows read = readRows("", {.variables = {}, .outputs = {"penetration"}}, problem);
    ASSERT_EQ(read.rows.columns.size(), 2U);
    EXPECT_EQ(columnTitle(read.rows.columns[0]), "penetration, free earth");
    EXPECT_EQ(columnTitle(read.rows.columns[1]), "penetration, fixed earth");
}

// ---- tornado ------------------------------------------------------------------------------------

TEST(Tornado, HasTheWidestBarFirst) {
    const Tornado all = tornado();
    EXPECT_EQ(all.base, 10);
    ASSERT_EQ(all.bars.size(), 2U);
    EXPECT_EQ(all.bars[0].title, "SoilMoistWeight.right.1"); // 9 to 12; friction 10 to 13
    EXPECT_EQ(all.bars[0].swing(10), 3);
    EXPECT_EQ(all.bars[1].swing(10), 3); // an end without a solution counts nothing
    EXPECT_EQ(all.bars[1].lowText, "28 deg");
    EXPECT_EQ(all.bars[1].highReason, "too \"soft\", by far");
    Tornado wider = tornado();
    wider.bars[1].low = 14;
    EXPECT_EQ(wider.bars[1].swing(10), 4);
    EXPECT_EQ(wider.bars[1].swing(Nothing), 0); // one number alone has no swing
}

TEST(Tornado, IsATableWithItsReasons) {
    const TextTable table = tableOf(tornado());
    EXPECT_EQ(tabbedText(table),
              "Variable\tLow\tHigh\tpenetration (FT) at low\tas given\tat high\tSwing\n"
              "SoilMoistWeight.right.1\t114 PCF\t126 PCF\t9.00\t10.00\t12.00\t3.00\n"
              "SoilFriction.right.1\t28 deg\t32 deg\t13.00\t10.00\ttoo \"soft\", by far\t3.00\n");
}

TEST(Tornado, DrawsBarsAsLongAsTheirWayFromTheWallAsGiven) {
    const SizedFigure figure = figureOf(tornado(), 10800);
    const std::vector<Primitive> all = drawn(figure);
    std::vector<Primitive> bars;
    std::copy_if(all.begin(), all.end(), std::back_inserter(bars),
                 [](const Primitive& p) { return p.kind == Primitive::Kind::FilledRectangle; });
    ASSERT_EQ(bars.size(), 5U); // two of the key; three ends with a solution
    const auto length = [&](std::size_t n) { return bars[n].b.x - bars[n].a.x; };
    EXPECT_NEAR(length(3) / length(2), 2, 1e-9); // 10 to 12 beside 9 to 10
    EXPECT_NEAR(length(4) / length(2), 3, 1e-9); // 10 to 13
    EXPECT_NEAR(bars[2].b.x, bars[3].a.x, 1e-9); // both begin at the wall as given
    EXPECT_TRUE(hasText(all, "32 deg: no solution"));
    EXPECT_TRUE(hasText(all, "114 PCF"));
    EXPECT_TRUE(hasText(all, "penetration, FT"));
    expectInside(figure);
    expectInside(figureOf(tornado(), 7200));
}

TEST(Tornado, HasRoomForTheTextOfAnEndWithoutASolution) {
    Tornado left = tornado();
    left.bars.resize(1);
    left.bars[0].low = 9; // the wall as given stands at the right end
    left.bars[0].high = Nothing;
    const std::vector<Primitive> all = drawn(figureOf(left, 7200));
    const auto find = [&](Primitive::Kind kind, const std::string& text) {
        return *std::find_if(all.begin(), all.end(),
                             [&](const Primitive& p) { return p.kind == kind && p.text == text; });
    };
    const std::string words = "126 PCF: no solution";
    const Primitive box = find(Primitive::Kind::Rectangle, "");
    EXPECT_LE(find(Primitive::Kind::Text, words).a.x +
                  RecordingSurface::CharacterWidth * static_cast<double>(words.size()),
              box.b.x);
}

TEST(Tornado, ShowsTheWidestBarsOfMany) {
    Tornado many = tornado();
    many.bars.resize(35, many.bars.front());
    const SizedFigure figure = figureOf(many, 10800);
    EXPECT_TRUE(hasText(drawn(figure), "the 20 widest of 35"));
    expectInside(figure);
}

TEST(Tornado, IsDrawnWithoutASolutionOfTheWallAsGivenAndWithoutAny) {
    Tornado all = tornado();
    all.base = Nothing;
    expectInside(figureOf(all, 10800));
    for (TornadoBar& bar : all.bars) {
        bar.low = bar.high = Nothing;
    }
    const SizedFigure figure = figureOf(all, 10800);
    EXPECT_TRUE(hasText(drawn(figure), "28 deg: no solution"));
    expectInside(figure);
}

// ---- curves -------------------------------------------------------------------------------------

TEST(Curves, CutAGridAlongAnyOfItsVariables) {
    const Question question = gridQuestion();
    const StudyRows rows = rowsOf(gridRows(), question);
    Curves curves =
        curvesOf(question, rows, {.column = 0, .along = 2, .by = 0, .values = {1, 1, 1}});
    EXPECT_EQ(curves.alongTitle, "SoilCohesion.right.1");
    EXPECT_EQ(curves.along, (std::vector<double>{0, 100, 200}));
    EXPECT_EQ(curves.fixed, "SurfaceElev.left.1 -9 FT");
    ASSERT_EQ(curves.curves.size(), 3U);
    EXPECT_EQ(curves.curves[2].title, "SoilFriction.right.1 32 deg");
    EXPECT_EQ(curves.curves[2].outputs, (std::vector<double>{210, 211, 212}));
    EXPECT_TRUE(std::isnan(curves.curves[1].outputs[1]));
    EXPECT_EQ(curves.curves[1].reasons[1], "why");
    curves = curvesOf(question, rows, {.column = 0, .along = 0, .by = {}, .values = {0, 0, 2}});
    ASSERT_EQ(curves.curves.size(), 1U);
    EXPECT_EQ(curves.curves[0].outputs, (std::vector<double>{2, 102, 202}));
    EXPECT_EQ(curves.fixed, "SurfaceElev.left.1 -11 FT, SoilCohesion.right.1 200 PSF");
}

TEST(Curves, AreATableWithTheReasonWhereThereIsNoSolution) {
    const Question question = gridQuestion();
    const StudyRows rows = rowsOf(gridRows(), question);
    const Curves curves =
        curvesOf(question, rows, {.column = 0, .along = 0, .by = 1, .values = {0, 0, 1}});
    EXPECT_EQ(tabbedText(tableOf(curves)),
              "SoilFriction.right.1 (deg)\tpenetration (FT) SurfaceElev.left.1 -11 FT\t"
              "penetration (FT) SurfaceElev.left.1 -9 FT\n"
              "28\t1.00\t11.00\n"
              "30\t101.00\twhy\n"
              "32\t201.00\t211.00\n");
}

TEST(Curves, AreDrawnToScaleWithAGapWhereThereIsNoSolution) {
    const Question question = gridQuestion();
    const StudyRows rows = rowsOf(gridRows(), question);
    const Curves curves =
        curvesOf(question, rows, {.column = 0, .along = 0, .by = 1, .values = {0, 0, 1}});
    const SizedFigure figure = figureOf(curves, 10800, 6000);
    const std::vector<Primitive> all = drawn(figure);
    std::vector<Primitive> dots;
    std::copy_if(all.begin(), all.end(), std::back_inserter(dots),
                 [](const Primitive& p) { return p.kind == Primitive::Kind::Point; });
    ASSERT_EQ(dots.size(), 5U); // of six
    EXPECT_NEAR(dots[1].a.x - dots[0].a.x, dots[2].a.x - dots[1].a.x, 1e-9);
    EXPECT_NEAR(dots[0].a.y - dots[1].a.y, dots[1].a.y - dots[2].a.y, 1e-9); // 1, 101, 201
    EXPECT_NEAR((dots[0].a.y - dots[3].a.y) / (dots[0].a.y - dots[1].a.y), 0.1, 1e-9); // 11
    const auto lines = std::count_if(all.begin(), all.end(), [&](const Primitive& p) {
        return p.kind == Primitive::Kind::Line && p.colour == dots[3].colour && p.width == 2;
    });
    EXPECT_EQ(lines, 0); // nothing joins the two dots beside the gap
    EXPECT_TRUE(hasText(all, "1: SurfaceElev.left.1 -11 FT"));
    expectInside(figure);
}

TEST(Curves, StayInsideWithManyAndWithNothing) {
    const Question question = gridQuestion();
    Curves curves = curvesOf(question, rowsOf(gridRows(), question),
                             {.column = 0, .along = 0, .by = 1, .values = {0, 0, 1}});
    curves.curves.resize(40, curves.curves.front());
    SizedFigure figure = figureOf(curves, 10800, 6000);
    EXPECT_TRUE(hasText(drawn(figure), "12 of 40 values"));
    expectInside(figure);
    curves.curves.resize(1);
    curves.curves[0].outputs.assign(3, Nothing);
    expectInside(figureOf(curves, 7200, 3000));
    curves.curves[0].outputs.assign(3, 5); // level
    expectInside(figureOf(curves, 7200, 3000));
}

TEST(Answers, TellTheirNumbersToThoseWhoDoNotSeeThem) {
    EXPECT_EQ(figureOf(tornado(), 10800).figure.description,
              "As given: 10.00 FT. SoilMoistWeight.right.1 114 PCF: 9.00 FT, 126 PCF: 12.00 FT. "
              "SoilFriction.right.1 28 deg: 13.00 FT, 32 deg: no solution.");
}

} // namespace korvane::study::test
