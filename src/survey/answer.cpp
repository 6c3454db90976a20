#include "survey/answer.h"

#include "runtime/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

namespace {

std::string unitBehind(const std::string& title, Quantity quantity, UnitSystem units) {
    const std::string unit = unitOf(quantity, units).name;
    return unit.empty() ? title : title + " (" + unit + ")";
}

/// The value, or why there is none.
std::string cellText(Quantity quantity, double value, UnitSystem units, const std::string& reason) {
    return std::isnan(value) && !reason.empty() ? reason : valueText(quantity, value, units);
}

double outputOf(const StudyRow& row, std::size_t column) {
    return row.outputs[column];
}

} // namespace

std::string numberWithUnit(const AskedVariable& variable, double number, UnitSystem units) {
    constexpr int Digits = 6;
    std::string text;
    appendShortest(text, roundedTo(number, Digits));
    const std::string unit = unitOf(quantityOf(variable.address), units).name;
    return unit.empty() ? text : text + " " + unit;
}

std::string tabbedText(const TextTable& table) {
    std::string text;
    const auto append = [&text](const std::vector<std::string>& cells) {
        for (std::size_t n = 0; n < cells.size(); ++n) {
            std::string cell = cells[n];
            std::replace(cell.begin(), cell.end(), '\n', ' '); // of headings in two lines
            text += (n == 0 ? "" : "\t") + cell;
        }
        text += "\n";
    };
    append(table.headings);
    for (const std::vector<std::string>& line : table.lines) {
        append(line);
    }
    return text;
}

// ---- tornado ------------------------------------------------------------------------------------

double swingOf(double base, double low, double high) {
    double least = std::numeric_limits<double>::infinity();
    double most = -least;
    for (const double value : {base, low, high}) {
        if (!std::isnan(value)) {
            least = std::min(least, value);
            most = std::max(most, value);
        }
    }
    return most > least ? most - least : 0;
}

Tornado tornadoOf(const Question& question, const StudyRows& rows, std::size_t column) {
    const OutputColumn& output = rows.columns[column];
    Tornado tornado{.title = columnTitle(output),
                    .quantity = output.quantity(),
                    .units = question.units,
                    .base = outputOf(rows.rows.front(), column),
                    .baseReason = rows.rows.front().reason,
                    .bars = {}};
    for (std::size_t n = 0; n < question.variables.size(); ++n) {
        const AskedVariable& variable = question.variables[n];
        const StudyRow& low = rows.rows[1 + 2 * n];
        const StudyRow& high = rows.rows[2 + 2 * n];
        tornado.bars.push_back({.title = variableTitle(variable),
                                .lowText = numberWithUnit(variable, variable.low, question.units),
                                .highText = numberWithUnit(variable, variable.high, question.units),
                                .low = outputOf(low, column),
                                .high = outputOf(high, column),
                                .lowReason = low.reason,
                                .highReason = high.reason});
    }
    std::stable_sort(tornado.bars.begin(), tornado.bars.end(),
                     [base = tornado.base](const TornadoBar& a, const TornadoBar& b) {
                         return a.swing(base) > b.swing(base);
                     });
    return tornado;
}

TextTable tableOf(const Tornado& tornado) {
    const std::string title = unitBehind(tornado.title, tornado.quantity, tornado.units);
    TextTable table{
        .headings = {"Variable", "Low", "High", title + "\nat low", "as given", "at high", "Swing"},
        .lines = {}};
    const auto text = [&](double value, const std::string& reason) {
        return cellText(tornado.quantity, value, tornado.units, reason);
    };
    for (const TornadoBar& bar : tornado.bars) {
        table.lines.push_back({bar.title, bar.lowText, bar.highText, text(bar.low, bar.lowReason),
                               text(tornado.base, tornado.baseReason),
                               text(bar.high, bar.highReason), text(bar.swing(tornado.base), "")});
    }
    return table;
}

// ---- curves -------------------------------------------------------------------------------------

namespace {

/// The row of a grid at these values; the first variable varies slowest.
const StudyRow& rowAt(const Question& question, const StudyRows& rows,
                      const std::vector<std::size_t>& values) {
    std::size_t index = 0;
    for (std::size_t n = 0; n < values.size(); ++n) {
        index = index * static_cast<std::size_t>(question.variables[n].steps) + values[n];
    }
    return rows.rows[index];
}

Curve curveOf(const Question& question, const StudyRows& rows, const GridCut& cut,
              std::vector<std::size_t> values) {
    Curve curve;
    const auto steps = static_cast<std::size_t>(question.variables[cut.along].steps);
    for (std::size_t k = 0; k < steps; ++k) {
        values[cut.along] = k;
        const StudyRow& row = rowAt(question, rows, values);
        curve.outputs.push_back(outputOf(row, cut.column));
        curve.reasons.push_back(row.reason);
    }
    return curve;
}

std::string placeText(const Question& question, std::size_t n, std::size_t value) {
    const AskedVariable& variable = question.variables[n];
    return variableTitle(variable) + " " +
           numberWithUnit(variable, valuesOf(variable)[value], question.units);
}

} // namespace

Curves curvesOf(const Question& question, const StudyRows& rows, const GridCut& cut) {
    const AskedVariable& along = question.variables[cut.along];
    const OutputColumn& output = rows.columns[cut.column];
    Curves curves{.title = columnTitle(output),
                  .fixed = {},
                  .alongTitle = variableTitle(along),
                  .alongQuantity = quantityOf(along.address),
                  .quantity = output.quantity(),
                  .units = question.units,
                  .along = valuesOf(along),
                  .curves = {}};
    std::vector<std::size_t> values = cut.values;
    for (std::size_t n = 0; n < values.size(); ++n) {
        if (n != cut.along && n != cut.by) {
            curves.fixed += (curves.fixed.empty() ? "" : ", ") + placeText(question, n, values[n]);
        }
    }
    if (!cut.by) {
        curves.curves.push_back(curveOf(question, rows, cut, values));
        return curves;
    }
    const auto steps = static_cast<std::size_t>(question.variables[*cut.by].steps);
    for (std::size_t k = 0; k < steps; ++k) {
        values[*cut.by] = k;
        Curve curve = curveOf(question, rows, cut, values);
        curve.title = placeText(question, *cut.by, k);
        curves.curves.push_back(std::move(curve));
    }
    return curves;
}

TextTable tableOf(const Curves& curves) {
    TextTable table{.headings = {unitBehind(curves.alongTitle, curves.alongQuantity, curves.units)},
                    .lines = {}};
    const std::string title = unitBehind(curves.title, curves.quantity, curves.units);
    for (const Curve& curve : curves.curves) {
        table.headings.push_back(curve.title.empty() ? title : title + "\n" + curve.title);
    }
    constexpr int Digits = 6;
    for (std::size_t k = 0; k < curves.along.size(); ++k) {
        std::string along;
        appendShortest(along, roundedTo(curves.along[k], Digits));
        std::vector<std::string> line{along};
        for (const Curve& curve : curves.curves) {
            line.push_back(
                cellText(curves.quantity, curve.outputs[k], curves.units, curve.reasons[k]));
        }
        table.lines.push_back(std::move(line));
    }
    return table;
}

} // namespace korvane::study
