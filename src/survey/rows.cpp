#include "survey/rows.h"

#include "runtime/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string_view>

namespace korvane::study {

namespace {

using Cells = std::vector<std::string>;

/// Takes the cells of a line off the front of a text.
Cells takeLine(std::string_view& text) {
    Cells cells(1);
    bool quoted = false;
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '"') {
            const bool doubled = quoted && at + 1 < text.size() && text[at + 1] == '"';
            if (doubled) {
                cells.back() += c;
                ++at;
            } else {
                quoted = !quoted;
            }
        } else if (quoted || (c != ',' && c != '\r' && c != '\n')) {
            cells.back() += c;
        } else if (c == ',') {
            cells.emplace_back();
        } else if (c == '\n') {
            ++at;
            break;
        }
    }
    text.remove_prefix(at);
    return cells;
}

/// Where the columns of the question stand.
struct Places {
    std::vector<std::size_t> variables;
    std::vector<std::size_t> outputs;
    std::size_t outcome = 0;
    std::size_t reason = 0;
    std::string missing; ///< the first column that is not there
};

Places placesIn(const Cells& names, const Question& question,
                const std::vector<OutputColumn>& columns) {
    Places places;
    const auto placeOf = [&](const std::string& name) {
        const auto found = std::find(names.begin(), names.end(), name);
        if (found == names.end() && places.missing.empty()) {
            places.missing = name;
        }
        return static_cast<std::size_t>(found - names.begin());
    };
    for (const AskedVariable& variable : question.variables) {
        places.variables.push_back(placeOf(variableName(variable)));
    }
    for (const OutputColumn& column : columns) {
        places.outputs.push_back(placeOf(column.name));
    }
    places.outcome = placeOf("outcome");
    places.reason = placeOf("reason");
    return places;
}

std::vector<double> numbersAt(const Cells& cells, const std::vector<std::size_t>& places) {
    std::vector<double> numbers;
    for (const std::size_t place : places) {
        const bool isNumber = isNumeric(cells[place]);
        numbers.push_back(isNumber ? numericValue(cells[place])
                                   : std::numeric_limits<double>::quiet_NaN());
    }
    return numbers;
}

std::vector<OutputColumn> askedColumns(const Question& question, const Problem& base) {
    std::vector<OutputColumn> columns;
    for (const std::string& name : question.outputs) {
        for (OutputColumn& column : columnsOf(name, base)) {
            columns.push_back(std::move(column));
        }
    }
    return columns;
}

} // namespace

ReadRows readRows(const std::string& text, const Question& question, const Problem& base) {
    ReadRows read;
    read.rows.columns = askedColumns(question, base);
    std::string_view rest = text;
    const Cells names = takeLine(rest);
    const Places places = placesIn(names, question, read.rows.columns);
    if (!places.missing.empty()) {
        read.fault = "The results have no column \"" + places.missing + "\".";
        return read;
    }
    while (!rest.empty()) {
        const Cells cells = takeLine(rest);
        if (cells.size() != names.size()) {
            read.fault = "A line of the results has " + std::to_string(cells.size()) +
                         " cells instead of " + std::to_string(names.size()) + ".";
            return read;
        }
        read.rows.rows.push_back({.numbers = numbersAt(cells, places.variables),
                                  .outputs = numbersAt(cells, places.outputs),
                                  .outcome = cells[places.outcome],
                                  .reason = cells[places.reason]});
    }
    if (static_cast<double>(read.rows.rows.size()) != variantsOf(question)) {
        read.fault = "The results have " + std::to_string(read.rows.rows.size()) + " rows.";
    }
    return read;
}

std::string columnTitle(const OutputColumn& column) {
    for (const auto& [suffix, words] :
         {std::pair{"_free", ", free earth"}, std::pair{"_fixed", ", fixed earth"}}) {
        if (column.name.ends_with(suffix)) {
            return column.name.substr(0, column.name.size() - std::string_view(suffix).size()) +
                   words;
        }
    }
    return column.name;
}

std::string valueText(Quantity quantity, double value, UnitSystem units) {
    return quantityText(quantity, fromUnits(quantity, value, units), units);
}

std::string outcomeText(const StudyRows& rows) {
    std::map<std::string, int> counts;
    for (const StudyRow& row : rows.rows) {
        if (!row.isSolved()) {
            ++counts[row.reason.empty() ? row.outcome : row.reason];
        }
    }
    std::string text = std::to_string(rows.rows.size()) + " variants, ";
    if (counts.empty()) {
        return text + "all solved.";
    }
    std::vector<std::pair<std::string, int>> reasons(counts.begin(), counts.end());
    std::stable_sort(reasons.begin(), reasons.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    int failed = 0;
    for (const auto& [reason, count] : reasons) {
        failed += count;
    }
    text += std::to_string(failed) + " without a solution:";
    constexpr std::size_t MostTold = 3;
    for (std::size_t n = 0; n < std::min(reasons.size(), MostTold); ++n) {
        text += "\n" + std::to_string(reasons[n].second) + ": " + reasons[n].first;
    }
    if (reasons.size() > MostTold) {
        text += "\n... and " + std::to_string(reasons.size() - MostTold) + " other reasons";
    }
    return text;
}

} // namespace korvane::study
