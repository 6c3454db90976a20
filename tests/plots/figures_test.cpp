#include "plots/figures.h"

#include "drawing.h"
#include "plots/svg_surface.h"
#include "xml_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <sstream>

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

TEST_F(Figures, RowesCurvesComeWithAnAnchoredWallInSandOrClay) {
    makeAnchored();
    reduction.RoweSoilType = RoweSoil::Sand;
    EXPECT_EQ(names(true).at(14), "rowe");
    reduction.RoweSoilType = RoweSoil::Clay; // clay: as the screen shows it
    EXPECT_EQ(names(true).at(14), "rowe");
    reduction.RoweSoilType = RoweSoil::None;
    EXPECT_EQ(names(true).at(14), "input-system");
}

TEST_F(Figures, EveryNameIsInTheListOfNamesOnce) {
    makeAnchored();
    reduction.RoweSoilType = RoweSoil::Sand;
    const auto all = figureNames();
    EXPECT_EQ(all.size(), 7U * 3 + 1 + 10);
    for (const std::string& name : names(true)) {
        EXPECT_EQ(std::count(all.begin(), all.end(), name), 1) << name;
    }
    for (const std::string& name : all) {
        EXPECT_EQ(std::count(all.begin(), all.end(), name), 1) << name;
    }
}

/// x, y, width and height of a figure's view.
std::array<double, 4> viewBox(const XmlElement& root) {
    std::array<double, 4> box{};
    std::istringstream text(root.attribute("viewBox"));
    text >> box[0] >> box[1] >> box[2] >> box[3];
    return box;
}

TEST_F(Figures, FilesAreWellFormedAndShowAllThatIsDrawn) {
    makeAnchored();
    reduction.RoweSoilType = RoweSoil::Sand;
    sections.PileSectionCount = 1; // near the top of the curves
    sections.PileName(1) = "PZ40";
    reduction.PileLogRigidity(1) = -2;
    reduction.PileMomentRatio(1) = 1.2;
    problem.HeadingLines(1) = "'5 < 6 & caf\xE9 \"quoted\"";
    problem.VRampCount(Right) = 1;
    problem.VRampEnd(Right) = 10;
    problem.VRampLoad(Right) = 100;
    const auto written = files(true);
    EXPECT_EQ(written.size(), 17U);
    const SvgSurface metrics;
    for (const auto& [name, svg] : written) {
        SCOPED_TRACE(name);
        const auto elements = readXml(svg);
        const auto box = viewBox(elements.at(0));
        EXPECT_EQ(svg.find("nan"), std::string::npos);
        EXPECT_EQ(svg.find("inf"), std::string::npos);
        int texts = 0;
        for (const XmlElement& element : elements) {
            if (element.name == "text") {
                ++texts;
                const double x = std::stod(element.attribute("x"));
                const double baseLine = std::stod(element.attribute("y"));
                EXPECT_GE(x, box[0]) << element.text;
                EXPECT_LE(x + metrics.textWidth(element.text), box[0] + box[2]) << element.text;
                EXPECT_GE(baseLine - metrics.textHeight(), box[1] - 40) << element.text;
                EXPECT_LE(baseLine, box[1] + box[3]) << element.text;
            }
        }
        EXPECT_GE(texts, 4) << "the heading among them";
    }
    // The frame with half of its line and a little room, and the heading at 3744 above it.
    EXPECT_EQ(readXml(written.at("free-moment")).at(0).attribute("viewBox"), "1410 3729 9780 6021");
    // Rowe's figure has no frame. The name of the section that stands at the top of the grid (432
    // on the screen, 4320 lower on paper) is drawn 576 above it.
    EXPECT_LT(viewBox(readXml(written.at("rowe")).at(0))[1], 432 + 4320 - 576);
}

TEST_F(Figures, CarryATitleAndADescription) {
    const auto elements = readXml(files(true).at("moment"));
    ASSERT_EQ(elements.at(1).name, "title");
    EXPECT_EQ(elements.at(1).text, "BENDING MOMENT (LB-FT) FOR CANTILEVER WALL DESIGN");
    ASSERT_EQ(elements.at(2).name, "desc");
    const std::string& description = elements.at(2).text;
    EXPECT_NE(description.find("Largest 3450 LB-FT/FT at elevation -10.00 FT, smallest "
                               "-750 LB-FT/FT at -20.00 FT"),
              std::string::npos)
        << description;
    const std::string heading = problem.HeadingLines(1).substr(1);
    EXPECT_EQ(description.rfind(heading, 0), 0U) << description;
    EXPECT_EQ(readXml(files(true).at("input-system")).at(1).text, "INPUT DATA: System");
}

TEST_F(Figures, DrawingTwiceGivesTheSameFiles) {
    const auto first = files(true);
    EXPECT_EQ(files(true), first);
}

} // namespace

} // namespace korvane::test
