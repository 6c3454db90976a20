#include "sheet/sheet_writer.h"

#include "runtime/number_format.h"
#include "runtime/utf8_text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace korvane::sheet {

namespace {

/// The elements of MathML up to the end of the one that they stand in, each with its own elements,
/// without rows that group nothing: those of one element, and the one of a root.
std::vector<std::string> leanElements(std::string_view& rest) {
    std::vector<std::string> elements;
    while (!rest.empty() && !rest.starts_with("</")) {
        if (rest.front() != '<') {
            const std::size_t end = std::min(rest.find('<'), rest.size());
            elements.emplace_back(rest.substr(0, end));
            rest.remove_prefix(end);
            continue;
        }
        const std::string open(rest.substr(0, rest.find('>') + 1));
        rest.remove_prefix(open.size());
        std::vector<std::string> parts = leanElements(rest);
        const std::string close(rest.substr(0, rest.find('>') + 1));
        rest.remove_prefix(close.size());
        std::string whole;
        for (const std::string& part : parts) {
            whole += part;
        }
        constexpr std::string_view row = "<mrow>";
        if (open == "<msqrt>" && parts.size() == 1 && whole.starts_with(row)) {
            whole = whole.substr(row.size(), whole.size() - 2 * row.size() - 1);
        }
        const bool lone = open == row && parts.size() == 1 && whole.front() == '<';
        elements.push_back(lone ? whole : (std::string(open) += whole) += close);
    }
    return elements;
}

std::string math(std::string_view markup) {
    std::string text = "<math>";
    for (const std::string& element : leanElements(markup)) {
        text += element;
    }
    return text + "</math>";
}

/// The usual digits with the sign of the typesetter.
std::string element(std::string_view name, std::string_view content) {
    std::string text = "<";
    text.append(name).append(">").append(content).append("</").append(name).append(">\n");
    return text;
}

std::string headOf(const TableColumn& column, UnitSystem units) {
    std::string head = column.markup.empty() ? escaped(column.title) : column.markup;
    const std::string unit = unitMarkup(column.quantity, units);
    if (!unit.empty()) {
        head += "<small>" + unit + "</small>";
    }
    return head;
}

} // namespace

std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char c : utf8Text(bytes)) {
        switch (c) {
        case '<':
            text += "&lt;";
            break;
        case '>':
            text += "&gt;";
            break;
        case '&':
            text += "&amp;";
            break;
        case '"':
            text += "&quot;";
            break;
        default:
            // XML has no place for other control characters.
            text += static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t' ? ' ' : c;
        }
    }
    return text;
}

std::string unitMarkup(Quantity quantity, UnitSystem system) {
    if (quantity == Quantity::Angle) {
        return "°";
    }
    std::string markup;
    for (const char c : std::string_view(unitOf(quantity, system).name)) {
        markup += c == '2'   ? "²"
                  : c == '3' ? "³"
                  : c == '4' ? "⁴"
                  : c == '-' ? "·"
                             : std::string(1, c);
    }
    return markup;
}

void SheetWriter::markup(std::string_view html) {
    if (!muted_) {
        html_ += html;
    }
}

void SheetWriter::section(int number, std::string_view title) {
    if (inSection_) {
        html_ += "</section>\n";
    }
    inSection_ = true;
    const std::string n = std::to_string(number);
    html_ += "<section id=\"s" + n + "\">\n";
    html_ += element("h2", n + " " + escaped(title));
}

void SheetWriter::heading(std::string_view title) {
    markup(element("h3", escaped(title)));
}

void SheetWriter::subheading(std::string_view title) {
    markup(element("h4", escaped(title)));
}

void SheetWriter::paragraph(std::string_view text) {
    markup(element("p", escaped(text)));
}

void SheetWriter::markupParagraph(std::string_view html) {
    markup(element("p", html));
}

void SheetWriter::table(const Table& table) {
    if (muted_) {
        return;
    }
    // Words in the first column are told once, by the table's class.
    const bool led = std::none_of(table.rows.begin(), table.rows.end(),
                                  [](const auto& row) { return row.front().isNumber; });
    const char* cssClass = table.wide && led ? "wide l" : table.wide ? "wide" : led ? "l" : "";
    html_ += "<div class=\"t\"><table";
    html_ += *cssClass == '\0' ? std::string() : std::string(" class=\"") + cssClass + "\"";
    html_ += table.id.empty() ? ">\n" : " id=\"" + table.id + "\">\n";
    if (!table.caption.empty()) {
        html_ += element("caption", escaped(table.caption));
    }
    html_ += "<thead><tr>";
    for (const TableColumn& column : table.columns) {
        html_ += "<th>" + headOf(column, units_) + "</th>";
    }
    html_ += "</tr></thead>\n<tbody>\n";
    for (const std::vector<Cell>& row : table.rows) {
        html_ += "<tr>";
        for (const Cell& cell : row) {
            const bool plain = cell.isNumber || (led && &cell == &row.front());
            html_ += (plain ? "<td>" : "<td class=\"w\">") + cell.markup + "</td>";
        }
        html_ += "</tr>\n";
    }
    html_ += "</tbody></table></div>\n";
}

template <class Write>
void SheetWriter::line(std::string_view label, Write write) {
    if (muted_) {
        return;
    }
    html_ += "<p class=\"f\">";
    if (!label.empty()) {
        html_ += "<span>" + escaped(label) + "</span> ";
    }
    write();
    html_ += "</p>\n";
}

void SheetWriter::equation(const Symbol& symbol, const std::vector<std::string>& parts) {
    html_ += math(mathSymbol(symbol) + parts.front());
    for (std::size_t n = 1; n < parts.size(); ++n) {
        html_ += "\n" + math(parts[n]);
    }
}

void SheetWriter::result(double value, Quantity quantity) {
    const std::string unit = unitMarkup(quantity, units_);
    html_ += " = <b>" + plainNumber(inUnits(quantity, value, units_)) +
             (unit.empty() || quantity == Quantity::Angle ? "" : "\u00a0") + unit + "</b>";
}

namespace {

void addPieces(std::vector<std::string>& parts, std::vector<std::string> pieces) {
    pieces.front().insert(0, "<mo>=</mo>");
    for (std::string& piece : pieces) {
        parts.push_back(std::move(piece));
    }
}

} // namespace

double SheetWriter::formula(const Symbol& symbol, const Expr& expression, Quantity quantity,
                            std::string_view label) {
    line(label, [&] {
        std::vector<std::string> parts{"<mo>=</mo>" + expression.symbols()};
        addPieces(parts, expression.numberPieces(units_));
        equation(symbol, parts);
        result(expression.value(), quantity);
    });
    return expression.value();
}

void SheetWriter::definition(const Symbol& symbol, const Expr& expression, std::string_view label) {
    line(label, [&] { equation(symbol, {"<mo>=</mo>" + expression.symbols()}); });
}

double SheetWriter::numbers(const Symbol& symbol, const Expr& expression, Quantity quantity,
                            std::string_view label) {
    return numbers(label, {{symbol, expression, quantity}});
}

double SheetWriter::numbers(std::string_view label, const std::vector<Numbers>& formulas) {
    line(label, [&] {
        for (const Numbers& formula : formulas) {
            std::vector<std::string> parts;
            addPieces(parts, formula.expression.numberPieces(units_));
            html_ += &formula == &formulas.front() ? "" : ", ";
            equation(formula.symbol, parts);
            result(formula.expression.value(), formula.quantity);
        }
    });
    return formulas.back().expression.value();
}

Cell SheetWriter::text(std::string_view text) const {
    return {escaped(text), false};
}

Cell SheetWriter::value(Quantity quantity, double value) const {
    return {quantityText(quantity, value, units_), true};
}

Cell SheetWriter::precise(Quantity quantity, double value) const {
    constexpr int digits = 5;
    const double told = inUnits(quantity, value, units_);
    if (!std::isfinite(told)) {
        return {"–", true};
    }
    std::string text;
    appendShortest(text, roundedTo(told, digits));
    return {text, true};
}

std::string SheetWriter::withUnit(Quantity quantity, double value) const {
    const std::string unit = unitMarkup(quantity, units_);
    return quantityText(quantity, value, units_) + (unit.empty() || unit == "°" ? "" : " ") + unit;
}

void SheetWriter::check(std::string what, Quantity quantity, double sheet, double engine,
                        double relative, double scale) {
    checkWithin(std::move(what), quantity, sheet, engine,
                relative * std::max(std::abs(engine), scale));
}

void SheetWriter::checkWithin(std::string what, Quantity quantity, double sheet, double engine,
                              double tolerance) {
    checks_.push_back({.what = std::move(what),
                       .quantity = quantity,
                       .sheet = sheet,
                       .engine = engine,
                       .tolerance = tolerance,
                       .pass = std::abs(sheet - engine) <= tolerance});
}

std::string SheetWriter::finish() {
    if (inSection_) {
        html_ += "</section>\n";
        inSection_ = false;
    }
    return std::move(html_);
}

void WorstCheck::add(double sheet, double engine, std::string place, double lost) {
    largest_ = std::max({largest_, std::abs(sheet), std::abs(engine)});
    pairs_.push_back({sheet, engine, std::move(place), 0, lost});
}

void WorstCheck::addAlone(double sheet, double engine, std::string place, double size,
                          double lost) {
    constexpr double tiny = std::numeric_limits<double>::min(); // 0 stands for the others' size
    pairs_.push_back({sheet, engine, std::move(place),
                      std::max({std::abs(size), std::abs(engine), tiny}), lost});
}

void WorstCheck::tell(SheetWriter& writer, double relative, double scale) const {
    const Pair* worst = nullptr;
    double worstShare = 0; // of its tolerance
    double worstTolerance = 0;
    for (const Pair& pair : pairs_) {
        const double size = pair.size > 0 ? pair.size : largest_;
        const double tolerance = relative * std::max(size, scale) + pair.lost;
        const double difference = std::abs(pair.sheet - pair.engine);
        const double share = difference == 0 ? 0 : difference / tolerance;
        const bool isNumber = std::isfinite(share); // else it is worse than any difference
        if (worst == nullptr || !isNumber || share > worstShare) {
            worst = &pair;
            worstShare = isNumber ? share : std::numeric_limits<double>::infinity();
            worstTolerance = tolerance;
        }
    }
    if (worst == nullptr) {
        return;
    }
    const std::size_t count = pairs_.size();
    const std::string values = count == 1 ? "" : std::to_string(count) + " values, worst ";
    writer.checkWithin(what_ + ": " + values + worst->place, quantity_, worst->sheet, worst->engine,
                       worstTolerance);
}

} // namespace korvane::sheet
