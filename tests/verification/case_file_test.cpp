// Case files: what is read, and that whoever writes one is told the line that is wrong.
#include "verification/case_file.h"

#include "runtime/file_text.h"
#include "support/support.h"
#include "verification/quantities.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

/// The fault of a case file with this text; its line and text, "" where there is none.
std::string faultOf(const std::string& text) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "a.case";
    writeFile(file, text);
    VerificationCase wanted;
    const auto fault = readCase(file, wanted);
    return fault ? std::to_string(fault->line) + " " + fault->text : "";
}

/// Behind the two lines that every case needs.
std::string third(const std::string& line) {
    return faultOf("title: a\nsource: b\n" + line + "\n");
}

TEST(CaseFile, IsReadWhole) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "wall.of-ours.case";
    writeFile(file, "\xEF\xBB\xBF# of ours\r\ntitle: a wall\r\nsource: a book\r\nnote: one\r\n"
                    "note: two\r\nleft-out: the rest because of its rounding\r\n"
                    "input: w.dat\r\nwedge: fixed\r\n\r\n"
                    "check: active left 7.5 = -250 PSF within 2 % because it is printed = so\r\n"
                    "check: penetration 2 = .5 within .25 because it is within reason\r\n");
    VerificationCase wanted;
    ASSERT_FALSE(readCase(file, wanted));
    EXPECT_EQ(wanted.name, "wall.of-ours");
    EXPECT_EQ(wanted.title, "a wall");
    EXPECT_EQ(wanted.source, "a book");
    EXPECT_EQ(wanted.notes, (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(wanted.leftOut, (std::vector<std::string>{"the rest because of its rounding"}));
    EXPECT_EQ(wanted.input, "w.dat");
    EXPECT_TRUE(wanted.fixedSurface);
    ASSERT_EQ(wanted.checks.size(), 2U);
    const CaseCheck& active = wanted.checks[0];
    EXPECT_STREQ(active.quantity->name, "active");
    EXPECT_EQ(active.arguments, (Arguments{Left, 7.5}));
    EXPECT_EQ(active.published, "-250");
    EXPECT_EQ(active.unit, "PSF");
    EXPECT_DOUBLE_EQ(active.tolerance, 5);
    EXPECT_EQ(active.reason, "it is printed = so");
    EXPECT_EQ(active.line, 10);
    EXPECT_EQ(wanted.checks[1].unit, "");
    EXPECT_DOUBLE_EQ(wanted.checks[1].tolerance, .25);
    EXPECT_EQ(wanted.checks[1].reason, "it is within reason");
}

TEST(CaseFile, FaultsTellTheLine) {
    EXPECT_EQ(third("nonsense"), "3 no keyword with ': ' in the line");
    EXPECT_EQ(third("depth: 3"), "3 unknown keyword: depth");
    EXPECT_EQ(third("wedge: both"), "3 wedge must be sweep or fixed");
    EXPECT_EQ(third("fails: sometimes"), "3 no code of a failure: sometimes");
    EXPECT_EQ(third("check: penetration 1 = 3 FT within .1"),
              "3 a check needs ' = ', ' within ' and ' because '");
    EXPECT_EQ(third("check: depth 1 = 3 FT within .1 because"),
              "3 a check needs ' = ', ' within ' and ' because '");
    EXPECT_EQ(third("check: depth 1 = 3 FT within .1 because so"), "3 unknown quantity: depth 1");
    EXPECT_EQ(third("check: penetration = 3 FT within .1 because so"),
              "3 penetration takes 1 arguments, here are 0");
    EXPECT_EQ(third("check: penetration 3 = 3 FT within .1 because so"),
              "3 '3' is no argument 1 of penetration");
    EXPECT_EQ(third("check: active front 3 = 3 PSF within .1 because so"),
              "3 'front' is no argument 1 of active");
    EXPECT_EQ(third("check: active right deep = 3 PSF within .1 because so"),
              "3 'deep' is no argument 2 of active");
    EXPECT_EQ(third("check: coulomb-active 30 0 = 1/3 within .1 because so"),
              "3 '1/3' is no number with a unit");
    EXPECT_EQ(third("check: penetration 1 = 47,110 FT within .1 because so"),
              "3 '47,110 FT' is no number with a unit");
    EXPECT_EQ(third("check: penetration 1 = 3 FT within some because so"),
              "3 'some' is no tolerance");
    EXPECT_EQ(third("check: penetration 1 = 3 FT within -1 because so"), "3 '-1' is no tolerance");
    EXPECT_EQ(third("check: penetration 1 = 3 FT within 1 FT because so"),
              "3 '1 FT' is no tolerance");
}

TEST(CaseFile, FaultsOfTheWholeHaveNoLine) {
    EXPECT_EQ(faultOf(""), "0 a case needs a title and a source");
    EXPECT_EQ(third("note: alone"), "0 nothing to check");
    EXPECT_EQ(third("check: penetration 1 = 3 FT within .1 because so"),
              "0 its wall is missing (input)");
    EXPECT_EQ(third("fails: no-sign-change"), "0 its wall is missing (input)");
    EXPECT_EQ(third("check: coulomb-active 30 0 = .333 within .001 because so"), "");
    VerificationCase wanted;
    const auto missing = readCase("/nowhere/a.case", wanted);
    ASSERT_TRUE(missing);
    EXPECT_EQ(faultLine(*missing).rfind("/nowhere/a.case: ", 0), 0U) << faultLine(*missing);
}

} // namespace
} // namespace korvane::test
