// Reports of a problem and results put together by hand, at a fixed moment; lines told by columns.
#pragma once

#include "reports/input_echo.h"
#include "reports/results_report.h"
#include "reports/soil_pressure_report.h"
#include "runtime/file_text.h"
#include "support/result_bench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::test {

using Lines = std::vector<std::string>;

/// SOURCE_DATE_EPOCH of all reports: 2026-11-21 09:05:07.
inline const std::string reportMoment = "1795251907";
/// Their date line, "TIME" in column 63.
inline const std::string dateLine =
    "  DATE: 21-NOVEMBER-2026                                      TIME: 9:05:07";

/// The lines of a report. Their number must be what the report counts.
inline Lines linesOf(const PrintLines& report) {
    Lines lines = splitLines(report.content());
    EXPECT_EQ(report.lineCount(), static_cast<int>(lines.size()));
    return lines;
}

struct ReportBench : ResultBench {
    ReportBench() {
        problem = plainCantilever();
        results.review.hasPressures = true;
        results.review.SideMethod.fill(PressureMethod::Coefficients);
        results.levelCount = 1;
    }

    EnvironmentVariable moment{"SOURCE_DATE_EPOCH", reportMoment};

    Lines echo() const { return linesOf(inputEcho(problem)); }
    Lines pressureReport() const { return linesOf(soilPressureReport(problem, results.review)); }
    Lines resultReport() const { return linesOf(resultsReport(problem, results)); }
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
