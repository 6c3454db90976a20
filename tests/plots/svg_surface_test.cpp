#include "plots/svg_surface.h"

#include "plots/bounds_surface.h"
#include "xml_check.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace korvane::test {

namespace {

constexpr Corners View{{1410, 4290}, {11190, 9750}};

/// The elements of a drawing, without the root, the ground and the group around them.
std::vector<XmlElement> elementsOf(const SvgSurface& surface) {
    const auto all = readXml(surface.document(View));
    return {all.begin() + 3, all.end()};
}

TEST(XmlCheck, FindsFaults) {
    const std::string head = "<?xml version=\"1.0\"?>\n";
    EXPECT_EQ(readXml(head + "<a b=\"1\"><c/>x &amp; y</a>\n").size(), 2U);
    for (const char* faulty :
         {"<a><b></a></b>", "<a>", "<a/><b/>", "<a b=1/>", "<a b=\"1\" b=\"2\"/>", "<a>&</a>",
          "<a>\x01</a>", "<a>\xE4</a>", "<a b=\"<\"/>", "<a/>rest", "<a>&no;</a>"}) {
        EXPECT_THROW(readXml(head + faulty), std::runtime_error) << faulty;
    }
}

TEST(SvgSurface, TitleAndDescriptionAreForReaders) {
    const auto all = readXml(SvgSurface().document(View, "5 < 6", "a & b"));
    ASSERT_EQ(all.size(), 5U);
    EXPECT_EQ(all[0].attribute("role"), "img");
    EXPECT_EQ(all[1].name, "title"); // the first child: readers look there
    EXPECT_EQ(all[1].text, "5 < 6");
    EXPECT_EQ(all[2].name, "desc");
    EXPECT_EQ(all[2].text, "a & b");
}

TEST(SvgSurface, DocumentHasTrueSizeAndShowsTheView) {
    const auto all = readXml(SvgSurface().document(View));
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].name, "svg");
    EXPECT_EQ(all[0].attribute("xmlns"), "http://www.w3.org/2000/svg");
    EXPECT_EQ(all[0].attribute("viewBox"), "1410 4290 9780 5460");
    EXPECT_EQ(all[0].attribute("width"), "6.7917in"); // 9780 / 1440
    EXPECT_EQ(all[0].attribute("height"), "3.7917in");
    EXPECT_EQ(all[0].attribute("overflow"), "hidden"); // clipped
    EXPECT_EQ(all[1].name, "rect");
    EXPECT_EQ(all[1].attribute("fill"), "#ffffff");
    EXPECT_EQ(all[2].attribute("font-size"), "165"); // 8.25 points
}

TEST(SvgSurface, LinesThatHangTogetherAreOnePath) {
    SvgSurface surface;
    surface.setLineWidth(3);
    surface.line({0, 0}, {10, 20.04}, Red);
    surface.lineTo({30.25, 40}, Red);
    surface.lineTo({50, 60}, Blue);
    surface.setLineWidth(2);
    surface.lineTo({70, 80}, Blue);
    surface.line({0, 0}, {1, 1}, Blue);
    const auto elements = elementsOf(surface);
    ASSERT_EQ(elements.size(), 4U);
    EXPECT_EQ(elements[0].attribute("d"), "M 0 0 L 10 20 L 30.3 40");
    EXPECT_EQ(elements[0].attribute("stroke"), "#ff0000");
    EXPECT_EQ(elements[0].attribute("stroke-width"), "45"); // 3 x 15 twips
    EXPECT_EQ(elements[1].attribute("d"), "M 30.3 40 L 50 60");
    EXPECT_EQ(elements[2].attribute("stroke-width"), "30");
    EXPECT_EQ(elements[3].attribute("d"), "M 0 0 L 1 1");
}

TEST(SvgSurface, EachPrimitiveHasItsElement) {
    SvgSurface surface;
    surface.setLineWidth(2);
    surface.rectangle({{30, 40}, {10, 15}}, Black); // corners in any order
    surface.filledRectangle({{1, 2}, {3, 5}}, SoilBrown);
    surface.point({7, 8}, StartGrey);
    surface.circle({9, 10}, 72, Red);
    const auto elements = elementsOf(surface);
    ASSERT_EQ(elements.size(), 4U);
    EXPECT_EQ(elements[0].name, "rect");
    EXPECT_EQ(elements[0].attribute("x") + " " + elements[0].attribute("width"), "10 20");
    EXPECT_EQ(elements[0].attribute("y") + " " + elements[0].attribute("height"), "15 25");
    EXPECT_EQ(elements[0].attribute("stroke"), "#000000");
    EXPECT_EQ(elements[1].attribute("fill"), "#964b00");
    EXPECT_EQ(elements[2].attribute("r"), "15"); // half of two units
    EXPECT_EQ(elements[2].attribute("fill"), "#c8c8c8");
    EXPECT_EQ(elements[3].attribute("r"), "72");
    EXPECT_EQ(elements[3].attribute("stroke-width"), "30");
}

TEST(SvgSurface, TextStandsOnItsBaseLineAndIsEscaped) {
    SvgSurface surface;
    surface.text({100, 200}, "A<B & C>D");
    surface.text({0, 0}, "caf\xE9\tbar\x01"); // Latin-1, a tabulator, a control character
    const auto elements = elementsOf(surface);
    ASSERT_EQ(elements.size(), 2U);
    EXPECT_EQ(elements[0].text, "A<B & C>D");
    EXPECT_EQ(elements[0].attribute("x"), "100");
    EXPECT_EQ(elements[0].attribute("y"), "349.4"); // ascent 0.9053 x 165 below the upper edge
    EXPECT_EQ(elements[1].text, "caf\xC3\xA9 bar ");
}

TEST(SvgSurface, CharactersThatNoXmlFileMayHoldBecomeBlanks) {
    SvgSurface surface;
    surface.text({0, 0}, "A\xEF\xBF\xBE\xEF\xBF\xBF"
                         "B");
    surface.text({0, 0}, "\xEF\xBF\xBD \"PZ'27\""); // U+FFFD is a character; quotes need no escape
    const auto elements = elementsOf(surface);
    ASSERT_EQ(elements.size(), 2U);
    EXPECT_EQ(elements[0].text, "A  B");
    EXPECT_EQ(elements[1].text, "\xEF\xBF\xBD \"PZ'27\"");
}

TEST(SvgSurface, ReachesAsFarAsOneThatOnlyMeasures) {
    SvgSurface surface;
    BoundsSurface bounds(surface);
    Corners before;
    const auto expectSame = [&](const auto& draw) {
        draw(surface);
        draw(bounds);
        constexpr Corners usual{{-1000, -1000}, {9000, 9000}};
        EXPECT_NE(bounds.bounds(usual), before); // each part reaches farther than the last one
        before = bounds.bounds(usual);
        EXPECT_EQ(surface.reach().bounds(usual), before);
    };
    expectSame([](Surface& s) { s.filledRectangle({{4000, 4100}, {3900, 4000}}, Red); });
    expectSame([](Surface& s) {
        s.setLineWidth(3);
        s.rectangle({{3800, 4000}, {4300, 4300}}, Red);
    });
    expectSame([](Surface& s) { s.line({4000, 3500}, {3000, 4000}, Blue); });
    expectSame([](Surface& s) { s.point({2900, 4000}, Red); });
    expectSame([](Surface& s) { s.circle({3500, 3500}, 800, Red); });
    expectSame([](Surface& s) { s.text({4000, 5000}, "WIDE \xC3\xA9"); });
}

TEST(SvgSurface, MeasuresTextByTheFontsAdvanceWidths) {
    const SvgSurface surface;
    // Published widths of the face in 1/1000 of its height: digits 556, point 278, capitals
    // W 944, I 278, M 833, blank 278, minus 333. 165 twips high; the table is in 1/2048: 0.1.
    EXPECT_NEAR(surface.textWidth("0.00"), (3 * 556 + 278) * 0.165, 0.1);
    EXPECT_NEAR(surface.textWidth("WIM -"), (944 + 278 + 833 + 278 + 333) * 0.165, 0.2);
    EXPECT_EQ(surface.textWidth(""), 0);
    EXPECT_EQ(surface.textWidth("\xE9"), surface.textWidth("\xC3\xA9"));
    EXPECT_NEAR(surface.textWidth("\xE9"), 556 * 0.165, 0.1);
    EXPECT_NEAR(surface.textHeight(), 184.3, 0.1); // ascent 1854 and descent 434 of 2048
}

} // namespace

} // namespace korvane::test
