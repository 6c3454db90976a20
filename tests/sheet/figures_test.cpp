// The figures of the sheet: whole, and no label over another one.
#include "sheet/bending_figure.h"
#include "sheet/wall_figure.h"
#include "sheet/wall_view.h"
#include "sheet_bench.h"
#include "support/html_parser.h"
#include "support/nasty_problem.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace korvane::test {

using namespace sheet;
namespace {

std::string page(const std::string& body) {
    return "<!DOCTYPE html>\n<html><body>" + body + "</body></html>";
}

bool holds(const LabelBox& outer, const LabelBox& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right() <= outer.right() &&
           inner.bottom() <= outer.bottom();
}

/// True where a stretch of a leader passes through a box: by samples a quarter of a pixel apart.
bool crosses(SvgPoint from, SvgPoint to, const LabelBox& box) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const int steps = static_cast<int>(length * 4) + 1;
    for (int i = 0; i <= steps; ++i) {
        const double x = from.x + (to.x - from.x) * i / steps;
        const double y = from.y + (to.y - from.y) * i / steps;
        if (x > box.left && x < box.right() && y > box.top && y < box.bottom()) {
            return true;
        }
    }
    return false;
}

bool leads(const FigureLabel& label, const LabelBox& box) {
    for (std::size_t i = 1; i < label.leader.size(); ++i) {
        if (crosses(label.leader[i - 1], label.leader[i], box)) {
            return true;
        }
    }
    return false;
}

void expectClear(const Figure& figure, const std::string& name) {
    EXPECT_EQ(htmlFault(page(figure.svg)), "") << name;
    EXPECT_EQ(figure.svg.find("nan"), std::string::npos) << name;
    EXPECT_FALSE(figure.labels.empty()) << name;
    for (std::size_t i = 0; i < figure.labels.size(); ++i) {
        const FigureLabel& label = figure.labels[i];
        EXPECT_TRUE(holds(figure.view, label.box)) << name << ": " << label.lines.front();
        for (std::size_t j = 0; j < figure.labels.size(); ++j) {
            const FigureLabel& other = figure.labels[j];
            if (j > i) {
                EXPECT_FALSE(overlap(label.box, other.box))
                    << name << ": " << label.lines.front() << " | " << other.lines.front();
            }
            EXPECT_FALSE(i != j && leads(label, other.box))
                << name << ": leader of " << label.lines.front() << " through "
                << other.lines.front();
        }
    }
}

void expectClearFigures(const SheetBench& bench, const std::string& name) {
    for (const UnitSystem units : {UnitSystem::US, UnitSystem::SI}) {
        const SheetRequest request{.problem = bench.problem,
                                   .sections = bench.sections,
                                   .solved = bench.solved,
                                   .options = bench.options,
                                   .notes = bench.notes,
                                   .units = units};
        expectClear(wallFigure(request), name);
        for (int level = 1; bench.isSolved() && level <= bench.results->levelCount; ++level) {
            expectClear(bendingFigure(request, bench.results->levels(level)), name);
        }
    }
}

TEST(FiguresOfExamples, HaveNoLabelOverAnother) {
    for (const std::string& file : exampleFiles()) {
        expectClearFigures(SheetBench(readWall(file)), file);
    }
}

TEST(FiguresOfRandomWalls, HaveNoLabelOverAnother) {
    RandomProblems plain(2026);
    NastyProblems nasty(2026);
    for (int number = 0; number < 100; ++number) {
        const Problem problem = number % 5 < 3 ? plain.next() : nasty.next().problem;
        expectClearFigures(SheetBench(problem), "wall " + std::to_string(number));
    }
}

/// All that a problem can have on one wall.
Problem fullProblem() {
    return readWall(examplePath("anchored-all-loads"));
}

/// All lines of the labels.
std::set<std::string> linesOf(const Figure& figure) {
    std::set<std::string> lines;
    for (const FigureLabel& label : figure.labels) {
        lines.insert(label.lines.begin(), label.lines.end());
    }
    return lines;
}

TEST(WallFigure, NamesLayersLoadsWaterAndAnchorWithTheirValues) {
    const SheetBench bench(fullProblem());
    const Figure figure =
        wallFigure({bench.problem, bench.sections, bench.solved, bench.options, bench.notes});
    for (const char* text : {"Right 1",
                             "Left 1",
                             "φ 33.00°, δ 14.00°",
                             "c 0.0 PSF",
                             "γ 116.00 / 126.00 PCF",
                             "Water 4.00 FT",
                             "Water 2.00 FT",
                             "Ground 18.00 FT",
                             "Ground 0.00 FT",
                             "Anchor 14.00 FT",
                             "1200.0 LB/FT at 6.00 FT",
                             "800.0 LB/FT at 15.00 FT",
                             "150.0 PSF, uniform",
                             "300.0 PSF, 4.00 to 10.00 FT",
                             "250.0 PSF, 20.00 to 30.00 FT",
                             "ramp to 200.0 PSF, 25.00 to 40.00 FT",
                             "180.0 PSF at 12.00, 0 at 8.00 and 20.00 FT",
                             "100.0 PSF at 30.00 FT",
                             "220.0 PSF at 36.00 FT",
                             "120.0 PSF at 45.00 FT \u2192",
                             "500.0 LB/FT",
                             "250.0 LB/FT",
                             "60.0 PSF at 16.00 FT",
                             "90.0 PSF at 12.00 FT",
                             "Bottom, free earth",
                             "Bottom, fixed earth",
                             "Top of wall"}) {
        EXPECT_THAT(linesOf(figure), testing::Contains(text));
    }
}

TEST(WallFigure, TellsMetricUnits) {
    const SheetBench bench(plainCantilever());
    const Figure figure = wallFigure(
        {bench.problem, bench.sections, bench.solved, bench.options, bench.notes, UnitSystem::SI});
    EXPECT_THAT(linesOf(figure), testing::Contains("Ground -3.048 m")); // 10 FT
    // 120 PCF of 0.1570875 kN/m3
    EXPECT_THAT(linesOf(figure), testing::Contains("γ 18.850 kN/m³"));
}

TEST(WallFigure, IsToScale) {
    const SheetBench bench(plainCantilever());
    const SheetRequest request{bench.problem, bench.sections, bench.solved, bench.options,
                               bench.notes};
    const WallView view = wallView(request);
    EXPECT_NEAR(view.y(-10) - view.y(0), 10 * view.scale, 1e-9);
    EXPECT_NEAR(view.x(Right, 7) - view.x(Left, 3), 10 * view.scale, 1e-9);
    EXPECT_LT(view.low, bench.results->levels(1).bottomElev);
}

TEST(SoilShapes, FollowGroundAndSlopingBottoms) {
    Problem problem = plainCantilever();
    problem.SurfacePointCount(Right) = 2;
    problem.SurfaceDist(Right, 2) = 10;
    problem.SurfaceElev(Right, 2) = 5;
    problem.SoilLayerCount(Right) = 2;
    problem.SoilBottomElev(Right, 1) = -4;
    problem.SoilBottomSlope(Right, 1) = 1;
    for (auto* list : {&problem.SoilSatWeight, &problem.SoilMoistWeight, &problem.SoilFriction}) {
        (*list)(Right, 2) = (*list)(Right, 1);
    }
    problem.SoilBottomElev(Right, 2) = NoLayerBottom;
    WallView view;
    view.scale = 10;
    view.high = 6;
    view.low = -20;
    view.reach(Right) = view.reach(Left) = 20;
    const auto shapes = soilShapes(problem, Right, view);
    ASSERT_EQ(shapes.size(), 2U);
    // Ground 0 + x/2 and bottom -4 + x meet 8 FT away at EL 4.
    bool meets = false;
    for (const SvgPoint& point : shapes[0].lower) {
        meets = meets || (std::fabs(point.x - 8) < 1e-9 && std::fabs(point.y - 4) < 1e-9);
        EXPECT_LE(point.y, groundElev(problem, Right, point.x) + 1e-9);
    }
    EXPECT_TRUE(meets);
    EXPECT_NEAR(shapes[1].mark.x, 20, 1e-9);
    EXPECT_NEAR(shapes[1].mark.y, (5.0 - 20) / 2, 1e-9);
}

} // namespace
} // namespace korvane::test
