// The comparison as a table: its columns, its numbers and its reasons.

#include "compared_wall.h"
#include "comparison/comparison_rows.h"
#include "comparison/comparison_table.h"
#include "runtime/file_text.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

/// A told cantilever, one half as deep again, one that does not apply.
Comparison smallComparison() {
    ComparedLevel told;
    told.values[0] = 10; // penetration
    told.values[3] = 40000;
    told.percent[0] = told.percent[3] = 0;
    ComparedLevel deeper = told;
    deeper.values[0] = 15;
    deeper.percent[0] = 50;
    deeper.percent[3] = -0.04;
    return {
        .rows = {
            {.name = "as-given", .title = "as given", .levels = {told}},
            {.name = "b", .title = "deeper", .levels = {deeper, told}},
            {.name = "c", .title = "other", .code = "not-applicable", .reason = "there is none"}}};
}

} // namespace

TEST(ComparisonTable, HasTheValuesThatSomeRowHas) {
    const ComparisonTable table = comparisonTable(smallComparison(), Mode::Design, UnitSystem::US);
    ASSERT_EQ(table.lines.size(), 4U);
    EXPECT_EQ(table.lines[2].row, 1U);
    EXPECT_EQ(table.lines[3].row, 2U);
    EXPECT_EQ(comparisonText(table), "Row       Method      Penetration         Max. moment\n"
                                     "                               FT      %     LB-FT/FT    %\n"
                                     "as given  cantilever        10.00    0.0        40000  0.0\n"
                                     "deeper    cantilever        15.00  +50.0        40000  0.0\n"
                                     "          cantilever        10.00    0.0        40000  0.0\n"
                                     "other     there is none\n");
}

TEST(ComparisonTable, TakesUnitsAndTabulators) {
    const ComparisonTable table = comparisonTable(smallComparison(), Mode::Design, UnitSystem::SI);
    EXPECT_EQ(table.columns[2].unit, "m");
    EXPECT_EQ(table.lines[0].cells[2], "3.048"); // 10 FT
    const std::string cells = comparisonCells(table);
    EXPECT_EQ(cells.substr(0, cells.find('\n')),
              "Row\tMethod\tPenetration m\t%\tMax. moment kNm/m\t%");
    EXPECT_NE(cells.find("\nother\tthere is none\n"), std::string::npos);
}

TEST(ComparisonTable, AlignsNamesOfAnyCharacters) {
    Comparison comparison = smallComparison();
    comparison.rows[1].title = "tiefer \xC3\xB6"; // one character of two bytes
    const std::string text =
        comparisonText(comparisonTable(comparison, Mode::Design, UnitSystem::US));
    EXPECT_NE(text.find("\nas given  cantilever "), std::string::npos) << text;
    EXPECT_NE(text.find("\ntiefer \xC3\xB6  cantilever "), std::string::npos) << text;
}

TEST(ComparisonTable, DeflectionsOfAnAnalysisAreLengths) {
    Comparison comparison = smallComparison();
    comparison.rows[0].levels[0].values[5] = 1; // IN
    comparison.rows[0].levels[0].values[6] = 1.5;
    const ComparisonTable table = comparisonTable(comparison, Mode::Analysis, UnitSystem::SI);
    ASSERT_EQ(table.columns.size(), 10U);
    EXPECT_EQ(table.columns[6].unit, "mm");
    EXPECT_EQ(table.columns[8].heading, "Factor of safety");
    EXPECT_EQ(table.lines[1].cells[6], "-") << "a row without the value";
}

TEST(ComparisonRows, AreExplainedByTheGuide) {
    const std::string guide = readInputFile(KORVANE_SOURCE_DIR "/docs/guide/13-comparison.md");
    for (const auto rows : {factorRows(), wallRows()}) {
        for (const ComparisonRow& row : rows) {
            const std::string line =
                "| `" + std::string(row.name) + "` | " + std::string(row.title) + " |";
            EXPECT_NE(guide.find(line), std::string::npos) << line;
        }
    }
}

TEST(ComparisonRows, OfTheGuidesFileCanBeRead) {
    const std::string guide = readInputFile(KORVANE_SOURCE_DIR "/docs/guide/13-comparison.md");
    const std::size_t start = guide.find("units = \"si\"");
    ASSERT_NE(start, std::string::npos);
    const ReadOwnRows read = readOwnRows(guide.substr(start, guide.find("\n```", start) - start));
    EXPECT_EQ(read.fault, "");
    ASSERT_EQ(read.rows.size(), 3U);
    EXPECT_EQ(read.rows[2].amendments, (Amendments{.surfaceLimit = true, .surfaceSlope = true}));
}

} // namespace korvane::test
