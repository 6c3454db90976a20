#include "support/input_cases.h"

#include "runtime/file_text.h"
#include "runtime/number_text.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace korvane::test {

namespace {

/// Cuts at a mark and takes the blanks off both ends of each piece.
std::vector<std::string> pieces(std::string_view text, std::string_view mark) {
    std::vector<std::string> result;
    for (;;) {
        const std::size_t end = text.find(mark);
        result.push_back(trimmed(text.substr(0, end)));
        if (end == std::string_view::npos) {
            return result;
        }
        text.remove_prefix(end + mark.size());
    }
}

/// The words of a line with one blank between them, to find a line by its beginning.
std::string words(const std::string& line) {
    std::istringstream in(line);
    std::string result;
    for (std::string word; in >> word;) {
        result += (result.empty() ? "" : " ") + word;
    }
    return result;
}

std::size_t lineThatBegins(const std::vector<std::string>& lines, const std::string& beginning) {
    const auto begins = [&beginning](const std::string& line) {
        return words(line).starts_with(beginning);
    };
    if (std::count_if(lines.begin(), lines.end(), begins) != 1) {
        throw std::runtime_error("no line or more than one begins with " + beginning);
    }
    return static_cast<std::size_t>(std::find_if(lines.begin(), lines.end(), begins) -
                                    lines.begin());
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
        text.replace(at, from.size(), to);
        at += to.size();
    }
}

/// A row of the table: name, beginning of the line, new text, outcome, perhaps the line shown.
InputCase caseOf(const std::vector<std::string>& row, const std::string& base,
                 const std::vector<std::string>& lines) {
    InputCase result{row[0], base, {}, row[3], {}};
    const std::size_t changed = lineThatBegins(lines, row[1]);
    std::string put = row[2];
    replaceAll(put, "<tab>", "\t");
    const std::size_t end = put.find("<end>");
    std::vector<std::string> text(lines.begin(), lines.begin() + static_cast<long>(changed));
    if (put != "-") {
        for (const std::string& line : pieces(std::string_view(put).substr(0, end), "//")) {
            text.push_back(line);
        }
    }
    result.line = upperCase(row.size() > 4 ? row[4] : text.back()) + ' ';
    if (end == std::string::npos) {
        text.insert(text.end(), lines.begin() + static_cast<long>(changed) + 1, lines.end());
    }
    for (const std::string& line : text) {
        result.text += line + '\n';
    }
    return result;
}

} // namespace

int InputCase::runtimeError() const {
    return outcome.starts_with("error ") ? std::stoi(outcome.substr(6)) : 0;
}

ReadResult InputCase::expected(const std::string& fileName) const {
    const std::string ending = "Current input line is:\n\n" + line + "\n\nUnable to continue.";
    if (accepted()) {
        return {true, "", ""};
    }
    if (outcome == "incomplete") {
        return {false, "INCOMPLETE INPUT FILE!",
                "File:  " + fileName + "  is incomplete.\n\n     Unable to continue."};
    }
    if (outcome == "no heading") {
        return {false, "INPUT DATA ERRORS", "At least one HEADING LINE is required.\n" + ending};
    }
    if (outcome == "headings") {
        return {false, "INPUT DATA ERRORS", "Number of HEADING LINES is greater than 4." + ending};
    }
    if (outcome == "inconsistent") {
        return {false, "INPUT DATA ERRORS",
                "WALL BOTTOM ELEVATION AND SOIL SURFACE ELEVATIONS\n     ARE INCONSISTENT.\n\n"
                "  Unable to continue."};
    }
    return {false, "DATA ERROR IN INPUT FILE: " + fileName,
            "Error detected while attempting to process " + outcome + "\n" + ending};
}

std::vector<InputCase> inputCases(const std::filesystem::path& table) {
    std::vector<InputCase> cases;
    std::string base;
    std::vector<std::string> lines;
    for (const std::string& entry : splitLines(readFile(table))) {
        if (entry.empty() || entry.front() == '#') {
            continue;
        }
        if (entry.starts_with("base ")) {
            base = entry.substr(5);
            lines = splitLines(readFile(table.parent_path() / base));
            continue;
        }
        const std::vector<std::string> row = pieces(entry, "|");
        if (row.size() < 4 || row.size() > 5) {
            throw std::runtime_error(entry + ": not four or five columns");
        }
        cases.push_back(caseOf(row, base, lines));
    }
    return cases;
}

} // namespace korvane::test
