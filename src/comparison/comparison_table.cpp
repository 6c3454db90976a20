#include "comparison/comparison_table.h"

#include "notes/notes.h"
#include "runtime/number_format.h"
#include "state/result_fields.h"

#include <algorithm>
#include <cstddef>

namespace korvane {

namespace {

constexpr ResultField Length{"length", Quantity::Length};

struct ValueNames {
    const char* heading;
    const ResultField* field;
};
/// In the order of ComparedValue.
constexpr ValueNames Names[] = {
    {"Penetration", &results::penetration},
    {"Length", &Length},
    {"Anchor force", &results::anchorForce},
    {"Max. moment", &results::maxMoment},
    {"Max. shear", &results::maxShear},
    {"Max. deflection", &results::maxScaledDeflection},
    {"Factor of safety", &results::factorOfSafety},
};
static_assert(std::size(Names) == ComparedValueCount);

const ValueNames& namesOf(ComparedValue value) {
    return Names[static_cast<std::size_t>(value)];
}

/// Values that some row has.
std::vector<ComparedValue> valuesIn(const Comparison& comparison) {
    std::vector<ComparedValue> values;
    for (const ComparedValue value : AllComparedValues) {
        const bool any = std::any_of(
            comparison.rows.begin(), comparison.rows.end(), [&](const ComparedRow& row) {
                return std::any_of(
                    row.levels.begin(), row.levels.end(),
                    [&](const ComparedLevel& level) { return level.value(value).has_value(); });
            });
        if (any) {
            values.push_back(value);
        }
    }
    return values;
}

std::string percentText(const std::optional<double>& percent) {
    if (!percent) {
        return "-";
    }
    const std::string text = formatNumber(*percent, "0.0");
    return text.front() == '-' || text == "0.0" ? text : "+" + text;
}

ComparisonLine lineOf(const ComparedLevel& level, const std::vector<ComparedValue>& values,
                      Mode mode, UnitSystem units) {
    ComparisonLine line;
    line.cells = {"", solutionMethodName(level.method)};
    for (const ComparedValue which : values) {
        const auto value = level.value(which);
        line.cells.push_back(value ? quantityText(fieldOf(which, mode).quantity, *value, units)
                                   : "-");
        line.cells.push_back(percentText(level.percentOf(which)));
    }
    return line;
}

/// Characters of a text in UTF-8.
std::size_t lengthOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

std::string padded(const std::string& text, std::size_t width, bool right) {
    const std::string blanks(width - std::min(width, lengthOf(text)), ' ');
    return right ? blanks + text : text + blanks;
}

/// Title and method stand left, numbers right.
constexpr std::size_t LeftColumns = 2;

std::vector<std::size_t> widthsOf(const ComparisonTable& table) {
    std::vector<std::size_t> widths;
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        std::size_t width =
            std::max(table.columns[column].heading.size(), table.columns[column].unit.size());
        for (const ComparisonLine& line : table.lines) {
            width =
                column < line.cells.size() ? std::max(width, lengthOf(line.cells[column])) : width;
        }
        widths.push_back(width);
    }
    return widths;
}

} // namespace

ComparedField fieldOf(ComparedValue value, Mode mode) {
    const bool real = value == ComparedValue::MaxDeflection && mode == Mode::Analysis;
    const ResultField& field = real ? results::maxDeflection : *namesOf(value).field;
    return {field.name, field.quantity};
}

ComparisonTable comparisonTable(const Comparison& comparison, Mode mode, UnitSystem units) {
    const std::vector<ComparedValue> values = valuesIn(comparison);
    ComparisonTable table;
    table.columns = {{"Row", ""}, {"Method", ""}};
    for (const ComparedValue value : values) {
        const Quantity quantity = fieldOf(value, mode).quantity;
        table.columns.push_back({namesOf(value).heading, unitOf(quantity, units).name});
        table.columns.push_back({"", "%"});
    }
    for (std::size_t row = 0; row < comparison.rows.size(); ++row) {
        const ComparedRow& compared = comparison.rows[row];
        const std::size_t first = table.lines.size();
        for (const ComparedLevel& level : compared.levels) {
            table.lines.push_back(lineOf(level, values, mode, units));
        }
        if (!compared.reason.empty()) {
            table.lines.push_back({.cells = {""}, .reason = compared.reason});
        }
        for (std::size_t line = first; line < table.lines.size(); ++line) {
            table.lines[line].row = row;
        }
        table.lines[first].cells[0] = compared.title;
    }
    return table;
}

std::string comparisonText(const ComparisonTable& table) {
    const std::vector<std::size_t> widths = widthsOf(table);
    std::string text;
    const auto add = [&](auto cellOf, std::size_t count) {
        std::string line;
        for (std::size_t column = 0; column < count; ++column) {
            line += (column == 0 ? "" : "  ");
            line += padded(cellOf(column), widths[column], column >= LeftColumns);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    };
    const std::size_t columns = table.columns.size();
    add([&](std::size_t column) { return table.columns[column].heading; }, columns);
    add([&](std::size_t column) { return table.columns[column].unit; }, columns);
    for (const ComparisonLine& line : table.lines) {
        if (line.reason.empty()) {
            add([&](std::size_t column) { return line.cells[column]; }, columns);
        } else {
            text += padded(line.cells[0], widths[0], false) + "  " + line.reason + "\n";
        }
    }
    return text;
}

std::string comparisonCells(const ComparisonTable& table) {
    std::string text;
    const auto add = [&text](const std::vector<std::string>& cells) {
        for (std::size_t cell = 0; cell < cells.size(); ++cell) {
            text += (cell == 0 ? "" : "\t") + cells[cell];
        }
        text += '\n';
    };
    std::vector<std::string> headings;
    for (const ComparisonColumn& column : table.columns) {
        headings.push_back(column.heading +
                           (column.unit.empty() || column.heading.empty() ? "" : " ") +
                           column.unit);
    }
    add(headings);
    for (const ComparisonLine& line : table.lines) {
        add(line.reason.empty() ? line.cells
                                : std::vector<std::string>{line.cells[0], line.reason});
    }
    return text;
}

} // namespace korvane
