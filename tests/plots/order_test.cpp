// Drawing and reporting change nothing: whatever was shown before, a diagram is the same.
#include "drawing.h"
#include "plots/figures.h"
#include "plots/result_plots.h"
#include "problem/input_reader.h"
#include "reports/results_report.h"
#include "rowe/pile_sections.h"
#include "runtime/file_text.h"
#include "solution/solution.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>

namespace korvane::test {

namespace {

using Name = PlotScreenName;

struct Diagram {
    Name screen = Name::CANPLOT;
    int number = 0;
    Medium medium = Medium::Screen;

    // clang-tidy 14 takes the zero of the comparison itself for a null pointer.
    auto operator<=>(const Diagram&) const = default; // NOLINT(modernize-use-nullptr)
};

/// An example, solved.
struct SolvedExample {
    explicit SolvedExample(const std::string& name) {
        const std::string path = examplePath(name);
        EXPECT_TRUE(readProblem(problem, readFile(path), path).complete);
        LoadPileDefaults(sections);
        EXPECT_FALSE(solve(problem, {}, sections, workspace).failure) << name;
    }

    PlotData data() const {
        return {problem, workspace.results(), sections, workspace.reduction()};
    }
    std::vector<Name> screens() const {
        std::vector<Name> list{Name::CANPLOT};
        if (problem.WallType == WallKind::Anchored) {
            list = {Name::FREEPLOT, Name::FIXDPLOT, Name::ROWECURV};
        }
        list.push_back(Name::VUINPLOT);
        if (workspace.review().hasPressures) { // an analysis does not stop for review
            list.push_back(Name::VUSOLPLT);
        }
        return list;
    }

    Problem problem;
    PileSections sections;
    Workspace workspace;
};

Drawing drawn(const PlotData& data, const Diagram& diagram) {
    PlotView view = openPlotScreen(data, diagram.screen);
    view.PlotNumber = diagram.number;
    RecordingSurface surface;
    drawPlot(surface, data, view, diagram.medium);
    return surface.primitives();
}

/// All that can be chosen, on the screen and on paper.
std::vector<Diagram> allDiagrams(const PlotData& data, const std::vector<Name>& screens) {
    std::vector<Diagram> all;
    for (const Name screen : screens) {
        const PlotView view = openPlotScreen(data, screen);
        for (int number = 1; number <= MaxPlotNumber; ++number) {
            if (view.hasPlot(number)) {
                all.push_back({screen, number, Medium::Screen});
                all.push_back({screen, number, Medium::Paper});
            }
        }
    }
    return all;
}

using Drawings = std::map<Diagram, Drawing>;

Drawings drawAll(const PlotData& data, const std::vector<Diagram>& diagrams) {
    Drawings drawings;
    for (const Diagram& diagram : diagrams) {
        drawings[diagram] = drawn(data, diagram);
        EXPECT_FALSE(drawings[diagram].empty());
    }
    return drawings;
}

void expectIdentical(const Drawings& drawings, const Drawings& expected) {
    ASSERT_EQ(drawings.size(), expected.size());
    for (const auto& [diagram, drawing] : expected) {
        EXPECT_TRUE(drawings.at(diagram) == drawing) // to the last bit
            << "screen " << static_cast<int>(diagram.screen) << " diagram " << diagram.number
            << (diagram.medium == Medium::Paper ? " on paper" : "");
    }
}

void writeFigures(const PlotData& data) {
    int written = 0;
    visitFigures(data, true, [&](const Figure& figure) {
        EXPECT_FALSE(svgFigure(figure).empty());
        ++written;
    });
    EXPECT_GT(written, 7);
}

/// Summary and tables, as of 21 November 2026.
std::string reportOf(const PlotData& data) {
    const EnvironmentVariable moment("SOURCE_DATE_EPOCH", "1795251907");
    return resultsReport(data.problem, data.results).content();
}

class DrawingOrder : public testing::TestWithParam<const char*> {
  protected:
    SolvedExample wall_{GetParam()};
    PlotData data_ = wall_.data();
    std::vector<Diagram> diagrams_ = allDiagrams(data_, wall_.screens());
    Drawings first_ = drawAll(data_, diagrams_);
};

INSTANTIATE_TEST_SUITE_P(Examples, DrawingOrder,
                         testing::Values("anchored-layered-water", "anchored-all-loads",
                                         "analysis-anchored", "cantilever-water-seepage"));

TEST_P(DrawingOrder, DrawingTwiceGivesTheSame) {
    expectIdentical(drawAll(data_, diagrams_), first_);
}

TEST_P(DrawingOrder, AnotherOrderGivesTheSame) {
    std::reverse(diagrams_.begin(), diagrams_.end());
    expectIdentical(drawAll(data_, diagrams_), first_);
    std::mt19937 random(11);
    for (int round = 0; round < 3; ++round) {
        std::shuffle(diagrams_.begin(), diagrams_.end(), random);
        expectIdentical(drawAll(data_, diagrams_), first_);
    }
}

TEST_P(DrawingOrder, WritingTheOtherDiagramsBetweenGivesTheSame) {
    const std::string report = reportOf(data_);
    writeFigures(data_);
    expectIdentical(drawAll(data_, diagrams_), first_);
    EXPECT_EQ(reportOf(data_), report);
}

TEST_P(DrawingOrder, ScreensThatAreOpenTogetherDoNotDisturbEachOther) {
    std::map<Name, PlotView> views;
    for (const Name screen : wall_.screens()) {
        views[screen] = openPlotScreen(data_, screen);
    }
    Drawings drawings;
    for (const Diagram& diagram : diagrams_) {
        PlotView& view = views.at(diagram.screen);
        view.PlotNumber = diagram.number;
        RecordingSurface surface;
        drawPlot(surface, data_, view, diagram.medium);
        drawings[diagram] = surface.primitives();
    }
    expectIdentical(drawings, first_);
}

/// The complete results of the free earth method.
std::string freeEarthTables(const PlotData& data) {
    const std::string report = reportOf(data);
    const std::size_t from = report.find("BY FREE EARTH METHOD");
    const std::size_t to = report.find("ANCHOREDOR", from);
    EXPECT_NE(to, std::string::npos);
    return report.substr(from, to - from);
}

struct FirstLevel : testing::TestWithParam<const char*> {
    SolvedExample wall{GetParam()};
    std::vector<Diagram> freeEarth = allDiagrams(wall.data(), {Name::FREEPLOT});
    std::vector<Diagram> fixedEarth = allDiagrams(wall.data(), {Name::FIXDPLOT});
};

INSTANTIATE_TEST_SUITE_P(Examples, FirstLevel,
                         testing::Values("anchored-layered-water", "anchored-all-loads",
                                         "analysis-anchored"));

TEST_P(FirstLevel, IsShownTheSameBeforeAndAfterTheSecond) {
    const PlotData data = wall.data();
    const std::string report = reportOf(data);
    const Drawings before = drawAll(data, freeEarth);
    const Drawings second = drawAll(data, fixedEarth);
    expectIdentical(drawAll(data, freeEarth), before);
    EXPECT_EQ(reportOf(data), report);
    // The levels are two solutions.
    EXPECT_FALSE(before.at({Name::FREEPLOT, MomentPlot, Medium::Screen}) ==
                 second.at({Name::FIXDPLOT, MomentPlot, Medium::Screen}));
}

TEST_P(FirstLevel, TakesNothingFromTheSecondButItsWater) {
    const PlotData data = wall.data();
    const Drawings before = drawAll(data, freeEarth);
    const std::string tables = freeEarthTables(data);

    const auto results = std::make_unique<Results>(data.results);
    LevelResult& second = results->levels(2);
    const Array<double, 301, 2> water = results->shownWater();
    second = LevelResult{};
    second.method = SolutionMethod::FixedEarth;
    second.solved.grid = results->levels(1).solved.grid; // some table to print
    second.solved.pressures.WaterPressures = water;
    const PlotData changed{data.problem, *results, data.sections, data.reduction};
    expectIdentical(drawAll(changed, freeEarth), before);
    EXPECT_EQ(freeEarthTables(changed), tables);
}

} // namespace

} // namespace korvane::test
