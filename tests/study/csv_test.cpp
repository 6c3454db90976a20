// The rows of a study as comma-separated values.
#include "study_desk.h"

#include "study/command_line.h"

#include "support/faulty_machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>

namespace korvane::study::test {

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

/// Cells by the rules of RFC 4180; every line ends in CR LF.
std::vector<std::vector<std::string>> parsed(const std::string& text) {
    std::vector<std::vector<std::string>> lines;
    std::vector<std::string> line(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (isQuoted && c == '"' && text.compare(i, 2, "\"\"") == 0) {
            line.back() += text[++i];
        } else if (c == '"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && c == ',') {
            line.emplace_back();
        } else if (!isQuoted && text.compare(i, 2, "\r\n") == 0) {
            lines.push_back(std::move(line));
            line.assign(1, "");
            ++i;
        } else {
            line.back() += c;
        }
    }
    EXPECT_FALSE(isQuoted);
    EXPECT_EQ(line, std::vector<std::string>(1)) << "the last line does not end";
    return lines;
}

/// Weak sand at some of the values, so that rows without a solution are there too.
std::string grid() {
    return head("grid", "outputs = [\"penetration\"]") +
           friction("values = [-1, 30.1, 32, 35.3333333333333]") +
           variable("top", "fields = [\"WallTopElev\"]\nvalues = [12, 12.1]") +
           limit("deep, \\\"14\\\" and more", "penetration > 14");
}

/// A cell of the file as the table has it.
bool isSame(const std::string& cell, const std::string& value) {
    if (value == "NULL") {
        return cell.empty();
    }
    return cell == value || (!cell.empty() && std::stod(cell) == std::stod(value));
}

void expectTable(const StudyDesk& desk, const std::string& text) {
    const auto lines = parsed(text);
    const auto rows = desk.variants("o");
    ASSERT_EQ(lines.size(), rows.size() + 1);
    EXPECT_THAT(lines[0], ElementsAre("id", "friction", "top", "penetration",
                                      "deep, \"14\" and more", "outcome", "reason"));
    for (std::size_t n = 0; n < rows.size(); ++n) {
        ASSERT_EQ(lines[n + 1].size(), rows[n].size());
        for (std::size_t column = 0; column < rows[n].size(); ++column) {
            EXPECT_TRUE(isSame(lines[n + 1][column], rows[n][column]))
                << lines[n + 1][column] << " for " << rows[n][column];
        }
    }
}

} // namespace

TEST(Csv, HasTheRowsOfTheTableToTheBit) {
    const StudyDesk desk;
    desk.runStudy(grid(), "o", {"--csv"});
    const std::string text = desk.read("o/results.csv");
    expectTable(desk, text);
    EXPECT_THAT(text, HasSubstr("\r\n0,-1,12,,1,invalid-problem,"));
    EXPECT_THAT(text, HasSubstr("\"deep, \"\"14\"\" and more\""));
}

TEST(Csv, AFinishedStudyGetsItToo) {
    const StudyDesk desk;
    desk.runStudy(grid(), "o");
    EXPECT_FALSE(fs::exists(desk.file("o/results.csv")));
    desk.runStudy(grid(), "o", {"--csv"});
    expectTable(desk, desk.read("o/results.csv"));
}

TEST(Csv, OfMergedPartsIsThatOfOneRun) {
    const StudyDesk desk;
    desk.runStudy(grid(), "o", {"--csv"});
    desk.runStudy(grid(), "parts", {"--part", "1/2", "--csv"});
    desk.runStudy(grid(), "parts", {"--part", "2/2"});
    EXPECT_EQ(StudyDesk::run({"collect", desk.file("parts"), "--csv"}).status, StatusDone);
    EXPECT_EQ(desk.read("parts/results.csv"), desk.read("o/results.csv"));
    EXPECT_EQ(parsed(desk.read("parts/part-1-of-2.csv")).size(), 5U);
    EXPECT_FALSE(fs::exists(desk.file("parts/part-2-of-2.csv")));
}

TEST(Csv, AFullDiskLeavesTheFileThatWasThere) {
    const StudyDesk desk;
    desk.runStudy(grid(), "o", {"--csv"});
    desk.write("o/results.csv", "of yesterday");
    {
        const korvane::test::SmallDisk disk(100);
        const CommandRun run = StudyDesk::run(
            {"run", desk.file("o.toml"), "--output", desk.file("o"), "--quiet", "--csv"});
        EXPECT_EQ(run.status, StatusFault);
        EXPECT_THAT(run.err, HasSubstr("results.csv: "));
    }
    EXPECT_EQ(desk.read("o/results.csv"), "of yesterday");
    EXPECT_FALSE(fs::exists(desk.file("o/.results.csv")));
}

} // namespace korvane::study::test
