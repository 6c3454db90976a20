// What the reader passes over or settles by itself, for those who ask.
#include "reading_helpers.h"
#include "runtime/file_text.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

using Kind = ReadRemark::Kind;

std::vector<ReadRemark> remarksOn(const std::string& text) {
    std::vector<ReadRemark> remarks;
    Problem problem;
    clearProblemData(problem);
    EXPECT_TRUE(readProblem(problem, text, "wall.dat", nullptr, nullptr, &remarks).complete)
        << text;
    return remarks;
}

/// A file with factors, whose lines a test may replace.
std::string file(const std::string& control = "CONTROL C D 1 1.5",
                 const std::string& soil = "SOIL BOTH S 1\n 120 110 30 0 0 0",
                 const std::string& more = "") {
    return "'HEADING OF MANY WORDS, NONE IGNORED\n" + control +
           "\nWALL 10\nSURFACE R 1 0 10\nSURFACE L 1 0 0\n" + soil + "\n" + more + "FINISHED\n";
}

TEST(ReadRemarks, AWholeFileHasNone) {
    EXPECT_TRUE(remarksOn(file()).empty());
    EXPECT_TRUE(remarksOn(file("CONTROL C D 1 1.5", "SOIL BOTH S 1\n 120 110 30 0 0 0",
                               "WATER ELEVATIONS 62.4 5 1 3 AUTOMATIC\nVERTICAL UNIFORM 100 50\n"
                               "VERTICAL STRIP R 1 4 10 300\nHORIZONTAL LINE 1 5 500\n"))
                    .empty());
}

TEST(ReadRemarks, WordsAtALinesEnd) {
    const auto one = remarksOn(file("CONTROL C D 1 1.5 2.5"));
    ASSERT_EQ(one.size(), 1U);
    EXPECT_EQ(one.front(), (ReadRemark{Kind::WordsIgnored, 0, 0, "CONTROL C D 1 1.5 2.5 "}));
    EXPECT_EQ(remarksOn(file("CONTROL C D 1 1.5", "SOIL BOTH S 1\n 120 110 30 0 0 0",
                             "VERTICAL UNIFORM 100 50 PSF\n"))
                  .front()
                  .line,
              "VERTICAL UNIFORM 100 50 PSF ");
}

TEST(ReadRemarks, FactorsOfSafety) {
    EXPECT_EQ(remarksOn(file("CONTROL C D")).front().kind, Kind::DefaultFactors);
    EXPECT_EQ(remarksOn(file("CONTROL C D 1")).front().kind, Kind::OneFactorForBoth);
    const auto side = remarksOn(file("CONTROL C D 1 1.5", "SOIL R S 1 0 1.5\n 120 110 30 0 0 0\n"
                                                          "SOIL L S 1 1 1.5\n 120 110 30 0 0 0"));
    ASSERT_EQ(side.size(), 1U);
    EXPECT_EQ(side.front().kind, Kind::PassiveFactorAlone);
    EXPECT_EQ(side.front().side, Right);
    EXPECT_EQ(side.front().layer, 0);
}

TEST(ReadRemarks, LayersOfASide) {
    const auto remarks = remarksOn(
        file("CONTROL C D 1 1.5", "SOIL R S 2\n 120 110 30 0 0 0 2 0.1\n 120 110 30 0 0 0 1.2 1.5\n"
                                  "SOIL L S 2\n 120 110 30 0 0 0 -2 0 0 1.5\n 120 110 30 0 0 0"));
    ASSERT_EQ(remarks.size(), 3U);
    EXPECT_EQ(remarks[0].kind, Kind::SlopeDropped);
    EXPECT_EQ(remarks[0].side, Right);
    EXPECT_EQ(remarks[0].layer, 1);
    EXPECT_EQ(remarks[1].kind, Kind::LastLayerFactors);
    EXPECT_EQ(remarks[1].layer, 2);
    EXPECT_EQ(remarks[2].kind, Kind::PassiveFactorAlone);
    EXPECT_EQ(remarks[2].side, Left);
    EXPECT_EQ(remarks[2].layer, 1);
}

TEST(ReadRemarks, NoExampleHasIgnoredWords) {
    for (const auto& entry : std::filesystem::directory_iterator(sourceFolder() / "examples")) {
        if (entry.path().extension() == ".dat") {
            for (const ReadRemark& remark : remarksOn(readInputFile(entry.path().string()))) {
                EXPECT_NE(remark.kind, Kind::WordsIgnored) << entry.path() << remark.line;
            }
        }
    }
}

} // namespace
} // namespace korvane::test
