// The same wall under other factors, methods and water.
#include "comparison/comparison_table.h"
#include "sheet/sections.h"

namespace korvane::sheet {

namespace {

constexpr int ComparisonNumber = 8;
constexpr std::size_t TextColumns = 2; ///< title and method

std::string headOf(const ComparisonTable& table) {
    std::string head = "<thead><tr>";
    for (const ComparisonColumn& column : table.columns) {
        head += "<th>" + escaped(column.heading);
        head += column.unit.empty() ? "" : "<small>" + escaped(column.unit) + "</small>";
        head += "</th>";
    }
    return head + "</tr></thead>\n";
}

std::string lineOf(const ComparisonLine& line, std::size_t columns) {
    std::string html = "<tr>";
    for (std::size_t n = 0; n < line.cells.size(); ++n) {
        html += n < TextColumns ? "<td class=\"w\">" : "<td>";
        html += escaped(line.cells[n]) + "</td>";
        if (!line.reason.empty()) {
            break;
        }
    }
    if (!line.reason.empty()) {
        html += "<td class=\"w\" colspan=\"" + std::to_string(columns - 1) + "\">" +
                escaped(line.reason) + "</td>";
    }
    return html + "</tr>\n";
}

} // namespace

void writeComparison(SheetWriter& writer, const SheetRequest& request) {
    if (request.comparison == nullptr || request.comparison->rows.empty()) {
        return;
    }
    writer.section(ComparisonNumber, "Comparison");
    writer.paragraph(
        "The same wall with one thing changed at a time; differences are in percent of "
        "the wall as given. A row without results tells why.");
    const ComparisonTable table =
        comparisonTable(*request.comparison, request.problem.ProgramMode, request.units);
    std::string html = "<div class=\"t\"><table class=\"wide\">\n" + headOf(table) + "<tbody>\n";
    for (const ComparisonLine& line : table.lines) {
        html += lineOf(line, table.columns.size());
    }
    writer.markup(html + "</tbody></table></div>\n");
}

} // namespace korvane::sheet
