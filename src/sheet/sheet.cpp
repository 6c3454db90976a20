#include "sheet/sheet.h"

#include "sheet/sections.h"
#include "sheet/sheet_style.h"

namespace korvane {

namespace {

constexpr std::string_view Head = "<!DOCTYPE html>\n"
                                  "<html xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"en\">\n"
                                  "<head>\n<meta charset=\"utf-8\"/>\n"
                                  "<meta name=\"generator\" content=\"KORVANE ";

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
    html += KORVANE_VERSION "\"/>\n<meta name=\"viewport\" content=\"width=device-width\"/>\n";
    html += "<title>" + escaped(title) + " – calculation sheet</title>\n<style>";
    html += sheetStyle(title, request.inputName + " · " + request.moment.date +
                                  " · KORVANE " KORVANE_VERSION);
    return html + "</style>\n</head>\n<body>\n";
}

} // namespace

Sheet calculationSheet(const SheetRequest& request) {
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
    writeChecks(writer);
    std::vector<Check> checks = writer.checks();
    return {writer.finish() + "</body>\n</html>\n", std::move(checks)};
}

std::string_view sheetFileHead() {
    return Head;
}

} // namespace korvane
