// Lines of a report: columns, breaks behind a column, zones and the line count.
#include "runtime/print_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace korvane {
namespace {

TEST(PrintLines, BlanksAndTextMakeALine) {
    PrintLines lines;
    lines.spc(3).text("ABC").spc(2).text("D").end();
    EXPECT_EQ(lines.content(), "   ABC  D\n");
    EXPECT_EQ(lines.lineCount(), 1);
}

TEST(PrintLines, AnUnfinishedLineIsNeitherShownNorCounted) {
    PrintLines lines;
    lines.text("ABC");
    EXPECT_EQ(lines.content(), "");
    EXPECT_EQ(lines.lineCount(), 0);
}

TEST(PrintLines, TabMovesToAColumnCountedFromOne) {
    PrintLines lines;
    lines.tab(1).text("A").tab(5).text("B").tab(6).text("C").end();
    EXPECT_EQ(lines.content(), "A   BC\n");
}

TEST(PrintLines, TabToThePresentColumnStaysOnTheLine) {
    PrintLines lines;
    lines.text("ABC").tab(4).text("D").end();
    EXPECT_EQ(lines.content(), "ABCD\n");
    EXPECT_EQ(lines.lineCount(), 1);
}

TEST(PrintLines, TabBehindThePresentColumnBreaksTheLineAndCountsIt) {
    PrintLines lines;
    lines.text("ABCDE").tab(3).text("F").end();
    EXPECT_EQ(lines.content(), "ABCDE\n  F\n");
    EXPECT_EQ(lines.lineCount(), 2);
}

TEST(PrintLines, TabBelowOneCountsAsOne) {
    PrintLines lines;
    lines.tab(0).text("A").tab(0).end();
    EXPECT_EQ(lines.content(), "A\n\n");
    EXPECT_EQ(lines.lineCount(), 2);

    PrintLines fresh;
    fresh.tab(-7).text("A").end();
    EXPECT_EQ(fresh.content(), "A\n");
    EXPECT_EQ(fresh.lineCount(), 1);
}

TEST(PrintLines, BlanksLeftByTabStayAtTheEndOfALine) {
    PrintLines lines;
    lines.text("A").tab(4).end();
    EXPECT_EQ(lines.content(), "A  \n");
}

TEST(PrintLines, ZonesAreFourteenColumnsWide) {
    PrintLines lines;
    lines.zone().text("B").zone().text("C").end();
    EXPECT_EQ(lines.content(), std::string(14, ' ') + "B" + std::string(13, ' ') + "C\n");

    PrintLines full;
    full.text(std::string(13, 'x')).zone().text("A").end();
    full.text(std::string(14, 'x')).zone().text("A").end();
    EXPECT_EQ(full.content(),
              std::string(13, 'x') + " A\n" + std::string(14, 'x') + std::string(14, ' ') + "A\n");
}

TEST(PrintLines, ANumberHasItsSignPlaceAndATrailingBlank) {
    PrintLines lines;
    lines.number(12.5).number(-3).text("X").end();
    EXPECT_EQ(lines.content(), " 12.5 -3 X\n");
}

TEST(PrintLines, RightPlacesTheLastCharacterBeforeTheColumn) {
    PrintLines lines;
    lines.right(8, 12.345, "####0.00").right(16, "AB").end();
    EXPECT_EQ(lines.content(), "  12.35      AB\n");
    EXPECT_EQ(lines.content().find("12.35") + 5, 8U - 1U); // ends in column 7
}

TEST(PrintLines, RightBehindThePresentColumnBreaksTheLine) {
    PrintLines lines;
    lines.text("ABCDEFGH").right(9, "123").end();
    EXPECT_EQ(lines.content(), "ABCDEFGH\n     123\n");
    EXPECT_EQ(lines.lineCount(), 2);
}

TEST(PrintLines, RightOfANumberBreaksTheLineAsATextDoes) {
    PrintLines lines;
    lines.text("ABCDE").right(9, 1.5, "0.0").right(12, -12.25, "#0.00").end();
    lines.text("ABCDEFGH").right(5, 1234567.0, "####0.").end();
    EXPECT_EQ(lines.content(), "ABCDE1.5\n     -12.25\nABCDEFGH\n1234567.\n");
    EXPECT_EQ(lines.lineCount(), 4);
}

TEST(PrintLines, RightPlacesAMarkDirectlyBeforeItsValue) {
    PrintLines lines;
    lines.right(9, "*", 1.5, "0.0").right(17, "", -2, "#####0.").right(20, "*", 12, "0").end();
    EXPECT_EQ(lines.content(), "    *1.5     -2.*12\n");
}

TEST(PrintLines, RightOfATextWiderThanItsColumnStartsInColumnOne) {
    PrintLines lines;
    lines.right(5, 1234567.0, "####0.00").end();
    EXPECT_EQ(lines.content(), "1234567.00\n");
}

// A number may fill the columns that are left, with a blank before it or without.
TEST(PrintLines, RightFillsTheColumnsThatAreLeft) {
    for (const double value : {0.0, 7.0, -7.0, 99999.994, -99999.994, 1e14, 1e20}) {
        const std::string number = formatNumber(value, "####0.00");
        PrintLines lines;
        const auto column = static_cast<int>(number.size()) + 3;
        lines.text("AB").right(column, value, "####0.00").end();
        lines.text("AB").right(column, "*", value, "####0.00").end();
        EXPECT_EQ(lines.content(), "AB" + number + "\nAB\n *" + number + "\n");
    }
}

TEST(PrintLines, ALineMayBeOfAnyLength) {
    PrintLines lines;
    lines.text(std::string(3000, 'x')).spc(500).text("A").end();
    lines.tab(2000).text("B").end();
    EXPECT_EQ(lines.content(), std::string(3000, 'x') + std::string(500, ' ') + "A\n" +
                                   std::string(1999, ' ') + "B\n");
}

TEST(PrintLines, AFailedNumberLeavesTheLineAsItWas) {
    PrintLines lines;
    lines.text("AB");
    EXPECT_ANY_THROW(lines.right(12, std::numeric_limits<double>::infinity(), "0.00"));
    lines.text("C").end();
    EXPECT_EQ(lines.content(), "ABC\n");
}

TEST(PrintLines, WholeAndEmptyLinesAreCounted) {
    PrintLines lines;
    lines.line(2, "A").empty().empty(3).line(0, "");
    EXPECT_EQ(lines.content(), "  A\n\n\n\n\n\n");
    EXPECT_EQ(lines.lineCount(), 6);
    EXPECT_EQ(lines.lineCount(), std::ranges::count(lines.content(), '\n'));
}

TEST(PrintLines, BytesThatAreNotAsciiPassUnchanged) {
    PrintLines lines;
    lines.line(1, "\xB0 \xC3\xA9");
    EXPECT_EQ(lines.content(), " \xB0 \xC3\xA9\n");
}

} // namespace
} // namespace korvane
