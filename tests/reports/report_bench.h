// A state whose reports go to a file of its own at a fixed moment, and lines told by columns.
#pragma once

#include "runtime/file_text.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::test {

using Lines = std::vector<std::string>;

/// The date line of every report of a ReportBench: 2026-11-21 09:05:07, "TIME" in column 63.
inline const std::string dateLine =
    "  DATE: 21-NOVEMBER-2026                                      TIME: 9:05:07";

struct ReportBench : Bench {
    ReportBench() {
        state->report.CurrentOutputName = (folder.path() / "report.out").string();
        state->files.TempFolder = folder.path().string();
        problem = plainCantilever();
        state->preparation.SideMethod.fill(PressureMethod::Coefficients);
    }

    TemporaryFolder folder;
    EnvironmentVariable moment{"SOURCE_DATE_EPOCH", "1795251907"};

    /// What the reports have written so far.
    Lines lines() const { return splitLines(readFile(state->report.CurrentOutputName)); }

    /// Runs a report into an empty file and returns its lines. Their number must be what
    /// OutputLineCount rose by.
    Lines reportOf(void (*write)(State&)) {
        writeFile(state->report.CurrentOutputName, "");
        const int before = state->report.OutputLineCount;
        write(*state);
        Lines written = lines();
        EXPECT_EQ(state->report.OutputLineCount - before, static_cast<int>(written.size()));
        return written;
    }
};

/// `count` lines from the first one that is `first`; a failure and nothing where there is none.
inline Lines linesFrom(const Lines& lines, std::string_view first, std::size_t count) {
    const auto found = std::find(lines.begin(), lines.end(), first);
    if (found == lines.end()) {
        ADD_FAILURE() << "no line \"" << first << "\"";
        return {};
    }
    const auto left = static_cast<std::size_t>(lines.end() - found);
    return {found, found + static_cast<std::ptrdiff_t>(std::min(count, left))};
}

inline bool hasLine(const Lines& lines, std::string_view wanted) {
    return std::find(lines.begin(), lines.end(), wanted) != lines.end();
}

/// True where a piece stands anywhere in the lines.
inline bool hasText(const Lines& lines, std::string_view piece) {
    return std::any_of(lines.begin(), lines.end(), [piece](const std::string& line) {
        return line.find(piece) != std::string::npos;
    });
}

/// A text and the column (from 1) that its last character stands in.
struct Placed {
    std::size_t lastColumn;
    std::string_view text;
};

/// A line of placed texts with blanks between them and none behind the last.
inline std::string columns(std::initializer_list<Placed> texts) {
    std::string line;
    for (const Placed& placed : texts) {
        line.resize(placed.lastColumn - placed.text.size(), ' ');
        line += placed.text;
    }
    return line;
}

} // namespace korvane::test
