#include "sheet/sheet.h"

#include "runtime/number_format.h"
#include "sheet/sections.h"
#include "sheet/sheet_style.h"

#include <cmath>

namespace korvane {

using namespace sheet;

namespace {

constexpr std::string_view Head = "<!DOCTYPE html>\n"
                                  "<html xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"en\">\n"
                                  "<head>\n<meta charset=\"utf-8\"/>\n";
constexpr std::string_view Maker = "<meta name=\"generator\" content=\"KORVANE ";

/// The first line of the heading, without its apostrophe.
std::string titleOf(const Problem& problem) {
    if (problem.NumHeadingLines < 1 || problem.HeadingLines(1).empty()) {
        return "Calculation sheet";
    }
    const std::string& line = problem.HeadingLines(1);
    return line.substr(line.front() == '\'' ? 1 : 0);
}

std::string headOf(const SheetRequest& request) {
    const std::string title = titleOf(request.problem);
    std::string html(Head);
    html += Maker;
    html += KORVANE_VERSION "\"/>\n<meta name=\"viewport\" content=\"width=device-width\"/>\n";
    html += "<title>" + escaped(title) + " – calculation sheet</title>\n<style>";
    html += sheetStyle(title, request.inputName + " · " + request.moment.date +
                                  " · KORVANE " KORVANE_VERSION);
    return html + "</style>\n</head>\n<body>\n";
}

} // namespace

CalculationSheet calculationSheet(const SheetRequest& request) {
    SheetWriter writer(request.units);
    writer.markup(headOf(request));
    writeTitleBlock(writer, request);
    writeWall(writer, request);
    writeMethod(writer, request);
    writePressures(writer, request);
    writeNetPressures(writer, request);
    writeEquilibrium(writer, request);
    writeBending(writer, request);
    writeNotes(writer, request);
    writeComparison(writer, request);
    writeChecks(writer);
    std::vector<Check> checks = writer.checks();
    return {writer.finish() + "</body>\n</html>\n", std::move(checks)};
}

std::string checkLine(const Check& check) {
    constexpr int digits = 9;
    const auto number = [&](double value) {
        std::string text;
        if (std::isfinite(value)) {
            appendShortest(text, roundedTo(value, digits));
        }
        return text.empty() ? std::string("none") : text;
    };
    return check.what + ": " + number(check.sheet) + " by the sheet, " + number(check.engine) +
           " by the solution";
}

bool isSheetFile(std::string_view head) {
    return head.find(Maker) != std::string_view::npos;
}

} // namespace korvane
