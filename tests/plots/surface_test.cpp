#include "plots/surface.h"

#include "drawing.h"
#include "plots/sheet.h"

#include <gtest/gtest.h>

#include <limits>

namespace korvane::test {

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(Surface, LineToRunsFromTheLastPoint) {
    RecordingSurface surface;
    surface.setLineWidth(3);
    surface.point({10, 20}, StartGrey);
    surface.lineTo({30, 40}, Red);
    surface.lineTo({50, 60}, Blue);
    surface.line({1, 2}, {3, 4}, Black);
    surface.lineTo({5, 6}, Black);
    expectDrawing(surface.primitives(), {point(10, 20, StartGrey, 3), line(10, 20, 30, 40, Red, 3),
                                         line(30, 40, 50, 60, Blue, 3), line(1, 2, 3, 4, Black, 3),
                                         line(3, 4, 5, 6, Black, 3)});
}

TEST(Surface, LinesAreCutAtTheDrawingLimit) {
    RecordingSurface surface;
    surface.line({0, 0}, {400000, 100000}, Black);       // slope 1/4: leaves at x 100000, y 25000
    surface.lineTo({400000, -100000}, Black);            // wholly beyond
    surface.line({-300000, 500}, {300000, 500}, Black);  // through both edges
    surface.line({100000, 100000}, {-100000, 3}, Black); // on the limit: untouched
    expectDrawing(surface.primitives(),
                  {line(0, 0, 100000, 25000, Black, 1), line(-100000, 500, 100000, 500, Black, 1),
                   line(100000, 100000, -100000, 3, Black, 1)});
}

TEST(Surface, ACutLineGoesOnFromItsTrueEnd) {
    RecordingSurface surface;
    surface.line({0, 0}, {200000, 0}, Black);
    surface.lineTo({0, 100000}, Black); // from (200000, 0): enters at x 100000, y 50000
    expectDrawing(surface.primitives(),
                  {line(0, 0, 100000, 0, Black, 1), line(100000, 50000, 0, 100000, Black, 1)});
}

TEST(Surface, NothingIsDrawnAtInfinity) {
    RecordingSurface surface;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    surface.line({0, 0}, {Infinity, 0}, Black);
    surface.line({nan, 0}, {1, 0}, Black);
    surface.line({-1e308, 0}, {1e308, 0}, Black); // its length is no double
    surface.point({0, -Infinity}, Black);
    surface.circle({nan, 0}, 72, Black);
    surface.rectangle({{0, 0}, {nan, 1}}, Black);
    surface.filledRectangle({{0, 0}, {1, Infinity}}, Black);
    surface.text({Infinity, 0}, "FAR");
    surface.text({0, 100001}, "FAR");
    expectDrawing(surface.primitives(), {});
}

TEST(Surface, RectanglesAreCutAtTheDrawingLimit) {
    RecordingSurface surface;
    surface.filledRectangle({{0, 0}, {10, 1e9}}, Black);
    expectDrawing(surface.primitives(), {filledBox(0, 0, 10, 100000)});
}

TEST(CutLine, CutsToAnyArea) {
    const Corners area{{0, 0}, {100, 50}};
    Point from{-50, 0};
    Point to{150, 100}; // slope 1/2: at x 0 y 25, at y 50 x 50
    ASSERT_TRUE(cutLine(from, to, area));
    EXPECT_EQ(from, (Point{0, 25}));
    EXPECT_EQ(to, (Point{50, 50}));

    Point beside{-10, 60};
    Point besideToo{110, 60};
    EXPECT_FALSE(cutLine(beside, besideToo, area));
    Point corner{-10, 45};
    Point past{10, 65}; // passes the corner (0, 50) on the outside
    EXPECT_FALSE(cutLine(corner, past, area));
}

TEST(Sheet, PlacesTextByMiddleAndEdges) {
    RecordingSurface surface;
    Sheet sheet(surface, Medium::Screen);
    sheet.text(1000, Across::LeftEdge, 500, Down::UpperEdge, "ABCD"); // 400 wide, 195 high
    sheet.text(1000, Across::Middle, 500, Down::Middle, "ABCD");
    sheet.text(1000, Across::RightEdge, 500, Down::LowerEdge, "ABCD");
    sheet.centred(1000, 500, "AB");
    expectDrawing(surface.primitives(), {textAt(1000, 500, "ABCD"), textAt(800, 402.5, "ABCD"),
                                         textAt(600, 305, "ABCD"), textAt(900, 500, "AB")});
}

TEST(Sheet, PaperIsTheScreenMoved) {
    RecordingSurface surface;
    Sheet sheet(surface, Medium::Paper);
    sheet.lineWidth(2);
    sheet.box({0, 0}, {9720, 5400});
    sheet.startCurve({1, 2}, StartGrey); // white on paper, where it only moves
    sheet.lineTo({3, 4}, Red);
    expectDrawing(surface.primitives(),
                  {box(1440, 4320, 11160, 9720, Black, 2), point(1441, 4322, White, 2),
                   line(1441, 4322, 1443, 4324, Red, 2)});
}

} // namespace

} // namespace korvane::test
