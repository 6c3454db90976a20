#include "plots/figures.h"

#include "drawing.h"
#include "xml_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace korvane::test {

namespace {

struct Figures : testing::Test, SmallWall {
    std::vector<std::string> names(bool solved) {
        std::vector<std::string> list;
        visitFigures(data(), solved, [&](const Figure& figure) { list.push_back(figure.name); });
        return list;
    }

    /// By name.
    std::map<std::string, std::string> files(bool solved) {
        std::map<std::string, std::string> written;
        visitFigures(data(), solved,
                     [&](const Figure& figure) { written[figure.name] = svgFigure(figure); });
        return written;
    }

    void makeAnchored() {
        problem.WallType = WallKind::Anchored;
        results.levels(2).diagrams.ResultShear(2) = -960; // what tells the levels apart
    }
};

using Names = std::vector<std::string>;

TEST_F(Figures, ACantileverWallHasItsDiagramsAndTheSystem) {
    EXPECT_EQ(names(true), (Names{"deflection", "moment", "shear", "net-pressure", "left-pressure",
                                  "right-pressure", "water-pressure", "input-system"}));
}

TEST_F(Figures, WithoutWaterTheWaterDiagramIsLeftOut) {
    problem.WaterDataKind = WaterData::None;
    const auto list = names(true);
    EXPECT_EQ(std::count(list.begin(), list.end(), "water-pressure"), 0);
    EXPECT_EQ(list.size(), 7U);
}

TEST_F(Figures, AnUnsolvedProblemHasTheViewsOfItsInput) {
    problem.VStripCount(Left) = 1;
    problem.HLineCount = 1;
    EXPECT_EQ(names(false),
              (Names{"input-system", "input-strip-loads", "input-horizontal-line-loads"}));
}

TEST_F(Figures, AnAnchoredWallHasBothMethodsEachWithItsOwnResults) {
    makeAnchored();
    const auto list = names(true);
    ASSERT_EQ(list.size(), 15U);
    EXPECT_EQ(list.front(), "free-deflection");
    EXPECT_EQ(list.at(7), "fixed-deflection");
    EXPECT_EQ(list.back(), "input-system");

    std::map<std::string, Drawing> drawings;
    visitFigures(data(), true, [&](const Figure& figure) {
        RecordingSurface surface;
        figure.draw(surface);
        drawings[figure.name] = surface.primitives();
    });
    // Second row at x = 1440 + 4080 + 1.92 v: 500 at level 1, -960 at level 2.
    EXPECT_NEAR(linesOf(drawings.at("free-shear"), Red, 3).at(1).b.x, 6480, 1e-6);
    EXPECT_NEAR(linesOf(drawings.at("fixed-shear"), Red, 3).at(1).b.x, 3676.8, 1e-6);
    const auto texts = textsOf(drawings.at("fixed-shear"));
    EXPECT_NE(
        std::find(texts.begin(), texts.end(), "FOR ANCHORED WALL DESIGN BY FIXED EARTH METHOD"),
        texts.end());
}

TEST_F(Figures, RowesCurvesComeWithAnAnchoredWallInSand) {
    makeAnchored();
    reduction.RoweSoilType = 1;
    EXPECT_EQ(names(true).at(14), "rowe");
    reduction.RoweSoilType = 2; // clay: the sand curves tell nothing
    EXPECT_EQ(names(true).at(14), "input-system");
}

TEST_F(Figures, EveryNameIsInTheListOfNamesOnce) {
    makeAnchored();
    reduction.RoweSoilType = 1;
    const auto all = figureNames();
    EXPECT_EQ(all.size(), 7U * 3 + 1 + 10);
    for (const std::string& name : names(true)) {
        EXPECT_EQ(std::count(all.begin(), all.end(), name), 1) << name;
    }
    for (const std::string& name : all) {
        EXPECT_EQ(std::count(all.begin(), all.end(), name), 1) << name;
    }
}

TEST_F(Figures, FilesAreWellFormedAndCroppedToTheFrame) {
    makeAnchored();
    reduction.RoweSoilType = 1;
    problem.HeadingLines(1) = "'5 < 6 & caf\xE9 \"quoted\"";
    problem.VRampCount(Right) = 1;
    problem.VRampEnd(Right) = 10;
    problem.VRampLoad(Right) = 100;
    const auto written = files(true);
    EXPECT_EQ(written.size(), 17U);
    for (const auto& [name, svg] : written) {
        SCOPED_TRACE(name);
        const auto elements = readXml(svg);
        EXPECT_EQ(elements.at(0).attribute("viewBox"), "1410 4290 9780 5460");
        EXPECT_EQ(svg.find("nan"), std::string::npos);
        EXPECT_EQ(svg.find("inf"), std::string::npos);
        const auto texts =
            std::count_if(elements.begin(), elements.end(), [](const XmlElement& element) {
                return element.name == "text" && std::stod(element.attribute("x")) >= 1440 &&
                       std::stod(element.attribute("x")) <= 11160 &&
                       std::stod(element.attribute("y")) >= 4320 &&
                       std::stod(element.attribute("y")) <= 9760;
            });
        EXPECT_GE(texts, 3) << "on the page";
    }
}

TEST_F(Figures, DrawingTwiceGivesTheSameFiles) {
    const auto first = files(true);
    EXPECT_EQ(files(true), first);
}

} // namespace

} // namespace korvane::test
