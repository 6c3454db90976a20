#include "sheet/expression.h"

#include "problem/problem.h"
#include "runtime/number_format.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace korvane::sheet {

namespace {

constexpr int Digits = 5;

/// How tightly an expression holds together; a looser one stands in parentheses.
enum Binding { SumBinding = 1, ProductBinding, PowerBinding, AtomBinding };

enum class Form {
    Number,
    Term,
    UnitFactor,
    Pi,
    Add,
    Subtract,
    Negate,
    Multiply,
    Divide,
    Power,
    Root,
    Function
};

/// Visible width beyond which a sum is broken between its terms.
constexpr std::size_t LongestPiece = 56;

} // namespace

struct Expr::Node {
    Form form = Form::Number;
    double value = 0;
    Quantity quantity = Quantity::Number; ///< of a term
    Symbol symbol = {};                   ///< of a term; the letter names a function
    int exponent = 1;
    double metric = 0; ///< of a unit factor
    std::vector<Expr> parts = {};
};

namespace {

/// Markup as the one child that an element wants; a single number is one already.
std::string row(const std::string& markup) {
    constexpr std::string_view open = "<mn>";
    constexpr std::string_view end = "</mn>";
    const bool single = markup.starts_with(open) && markup.find(end) + end.size() == markup.size();
    return single ? markup : "<mrow>" + markup + "</mrow>";
}

/// Plain numbers need no element of their own for the parentheses to fit.
std::string parenthesized(const std::string& markup) {
    const bool plain = markup.find("<mfrac>") == std::string::npos &&
                       markup.find("<ms") == std::string::npos &&
                       (markup.find("<mi>") == std::string::npos ||
                        markup.find("\u2009</mi>") != std::string::npos);
    const std::string enclosed = "<mo>(</mo>" + markup + "<mo>)</mo>";
    return plain ? enclosed : "<mrow>" + enclosed + "</mrow>";
}

/// Markup with neighbouring numbers and signs put together to one text: a third of the bytes.
class Condenser {
  public:
    explicit Condenser(std::string_view markup) : rest_(markup) {}

    std::string run() {
        while (!rest_.empty()) {
            if (!takeToken()) {
                flush();
                const std::size_t end = rest_.find('>') + 1;
                operand_ = rest_.starts_with("</");
                out_ += rest_.substr(0, end);
                rest_.remove_prefix(end);
            }
        }
        flush();
        return out_;
    }

  private:
    bool takeToken() {
        for (const std::string_view open : {"<mn>", "<mo>", "<mi>", "<mo form=\"infix\">"}) {
            if (!rest_.starts_with(open)) {
                continue;
            }
            const std::size_t close = rest_.find("</", open.size());
            const std::string_view content = rest_.substr(open.size(), close - open.size());
            const std::size_t end = rest_.find('>', close) + 1;
            if (open == "<mn>" && operand_) {
                flush(); // a neighbour in a fraction or a power, and no part of one number
            }
            const bool infix = open.size() > std::string_view("<mo>").size();
            add(content, open == "<mo>" || infix, infix);
            operand_ = open == "<mn>" || content == ")" || content == "π";
            single_ = rest_.substr(0, end);
            ++tokens_;
            rest_.remove_prefix(end);
            return true;
        }
        return false;
    }

    void add(std::string_view content, bool isSign, bool infix) {
        const bool spaced = isSign && (operand_ || infix) && (content == "+" || content == "−");
        text_ += spaced ? "\u00a0" + std::string(content) + "\u00a0" : std::string(content);
    }

    void flush() {
        if (tokens_ > 1) {
            out_ += "<mtext>" + text_ + "</mtext>";
        } else if (tokens_ == 1) {
            out_ += single_;
        }
        text_.clear();
        tokens_ = 0;
    }

    std::string_view rest_;
    std::string out_;
    std::string text_;
    std::string single_;
    int tokens_ = 0;
    bool operand_ = false; ///< a sign next is one between two numbers
};

/// Prints an expression in letters, or with numbers in their place.
class Printer {
  public:
    explicit Printer(const UnitSystem* units) : units_(units) {}

    std::string print(const Expr::Node& node) const {
        switch (node.form) {
        case Form::Number:
            return mathNumber(node.value);
        case Form::UnitFactor:
            return units_ == nullptr           ? mathSymbol({"u"})
                   : *units_ == UnitSystem::SI ? mathNumber(node.metric)
                                               : mathNumber(node.value);
        case Form::Pi:
            return "<mi>π</mi>";
        case Form::Term:
            return units_ == nullptr ? mathSymbol(node.symbol) : number(node);
        case Form::Add:
            return part(node, 0, SumBinding, true) + "<mo>+</mo>" +
                   part(node, 1, SumBinding, false);
        case Form::Subtract:
            return part(node, 0, SumBinding, true) + "<mo>−</mo>" +
                   part(node, 1, ProductBinding, false);
        case Form::Negate:
            return "<mo>−</mo>" + part(node, 0, ProductBinding, false);
        case Form::Multiply:
            return part(node, 0, ProductBinding, true) + sign(node) +
                   part(node, 1, ProductBinding, false);
        case Form::Divide:
            return "<mfrac>" + row(print(node.parts[0].node())) + row(print(node.parts[1].node())) +
                   "</mfrac>";
        case Form::Power:
            return "<msup>" + row(part(node, 0, AtomBinding, false)) + "<mn>" +
                   std::to_string(node.exponent) + "</mn></msup>";
        case Form::Root:
            return "<msqrt>" + print(node.parts[0].node()) + "</msqrt>";
        case Form::Function:
            return argument(node);
        }
        return {};
    }

    /// What begins with a minus stands in parentheses behind a sign.
    bool isNegative(const Expr::Node& node) const {
        switch (node.form) {
        case Form::Number:
            return node.value < 0;
        case Form::Term:
            return units_ != nullptr && node.value < 0;
        case Form::Negate:
            return true;
        case Form::Multiply:
        case Form::Add:
        case Form::Subtract:
            return isNegative(node.parts[0].node());
        default:
            return false;
        }
    }

  private:
    bool isFactorless(const Expr::Node& node) const {
        return node.form == Form::Number || (units_ != nullptr && node.form == Form::Term);
    }

    /// Letters stand side by side; numbers need a sign between them.
    std::string sign(const Expr::Node& node) const {
        const Expr::Node* left = &node.parts[0].node();
        while (left->form == Form::Multiply) {
            left = &left->parts[1].node();
        }
        const bool letters = !isFactorless(node.parts[1].node()) && units_ == nullptr;
        return letters && left->form != Form::Function ? "<mo>\u2062</mo>" : "<mo>⋅</mo>";
    }

    int bindingOf(const Expr::Node& node) const {
        switch (node.form) {
        case Form::Add:
        case Form::Subtract:
        case Form::Negate:
            return SumBinding;
        case Form::Multiply:
        case Form::Function:
            return ProductBinding;
        case Form::Power:
        case Form::Divide:
            return PowerBinding;
        default:
            return AtomBinding;
        }
    }

    std::string part(const Expr::Node& node, std::size_t n, int binding, bool first) const {
        const Expr::Node& inner = node.parts[n].node();
        const std::string markup = print(inner);
        const bool loose = bindingOf(inner) < binding;
        return loose || (isNegative(inner) && (!first || binding == AtomBinding))
                   ? parenthesized(markup)
                   : markup;
    }

    /// A letter or number stands behind a thin blank, all else in parentheses.
    std::string argument(const Expr::Node& node) const {
        const std::string markup = part(node, 0, AtomBinding, false);
        const bool enclosed = markup.starts_with("<mrow><mo>(") || markup.starts_with("<mo>(");
        return "<mi>" + node.symbol.letter + (enclosed ? "" : "\u2009") + "</mi>" + markup;
    }

    std::string number(const Expr::Node& node) const {
        std::string text = mathNumber(inUnits(node.quantity, node.value, *units_));
        if (node.quantity == Quantity::Angle && text.ends_with("</mn>")) {
            text.insert(text.size() - std::string_view("</mn>").size(), "°");
        }
        return text;
    }

    const UnitSystem* units_;
};

std::shared_ptr<Expr::Node> made(Form form, double value, std::vector<Expr> parts) {
    auto node = std::make_shared<Expr::Node>();
    node->form = form;
    node->value = value;
    node->parts = std::move(parts);
    return node;
}

Expr function(const char* name, double value, const Expr& argument) {
    auto node = made(Form::Function, value, {argument});
    node->symbol.letter = name;
    return Expr(std::move(node));
}

/// Characters that a reader sees of markup.
std::size_t visibleLength(std::string_view markup) {
    std::size_t length = 0;
    bool inTag = false;
    for (const char c : markup) {
        inTag = inTag || c == '<';
        length += inTag ? 0 : 1;
        inTag = inTag && c != '>';
    }
    return length;
}

/// The terms of a sum with the signs before them.
void listTerms(const Expr& sum, const Printer& printer, std::vector<std::string>& terms) {
    const Expr::Node& node = sum.node();
    if (node.form != Form::Add && node.form != Form::Subtract) {
        terms.push_back(printer.print(node));
        return;
    }
    listTerms(node.parts[0], printer, terms);
    const Expr::Node& last = node.parts[1].node();
    const bool loose =
        last.form == Form::Add || last.form == Form::Subtract || printer.isNegative(last);
    const std::string markup = printer.print(last);
    terms.push_back(
        (node.form == Form::Add ? "<mo form=\"infix\">+</mo>" : "<mo form=\"infix\">−</mo>") +
        (loose ? parenthesized(markup) : markup));
}

} // namespace

Expr::Expr(double number) : node_(made(Form::Number, number, {})) {}

double Expr::value() const {
    return node_->value;
}

std::string Expr::symbols() const {
    return Printer(nullptr).print(*node_);
}

std::string Expr::numbers(UnitSystem units) const {
    return Condenser(Printer(&units).print(*node_)).run();
}

std::vector<std::string> Expr::numberPieces(UnitSystem units) const {
    std::vector<std::string> terms;
    listTerms(*this, Printer(&units), terms);
    std::vector<std::string> pieces;
    std::size_t length = LongestPiece;
    for (const std::string& next : terms) {
        const std::size_t more = visibleLength(next);
        if (length + more > LongestPiece) {
            pieces.emplace_back();
            length = 0;
        }
        pieces.back() += next;
        length += more;
    }
    for (std::string& piece : pieces) {
        piece = Condenser(piece).run();
    }
    return pieces;
}

Expr unitFactor(double us, double si) {
    auto node = made(Form::UnitFactor, us, {});
    node->metric = si;
    return Expr(std::move(node));
}

Expr term(Symbol symbol, double value, Quantity quantity) {
    auto node = made(Form::Term, value, {});
    node->symbol = std::move(symbol);
    node->quantity = quantity;
    return Expr(std::move(node));
}

Expr term(std::string letter, std::string subscript, double value, Quantity quantity) {
    return term(Symbol{std::move(letter), std::move(subscript)}, value, quantity);
}

Expr operator+(const Expr& a, const Expr& b) {
    return Expr(made(Form::Add, a.value() + b.value(), {a, b}));
}

Expr operator-(const Expr& a, const Expr& b) {
    return Expr(made(Form::Subtract, a.value() - b.value(), {a, b}));
}

Expr operator-(const Expr& a) {
    return Expr(made(Form::Negate, -a.value(), {a}));
}

Expr operator*(const Expr& a, const Expr& b) {
    return Expr(made(Form::Multiply, a.value() * b.value(), {a, b}));
}

Expr operator/(const Expr& a, const Expr& b) {
    return Expr(made(Form::Divide, a.value() / b.value(), {a, b}));
}

Expr power(const Expr& base, int exponent) {
    auto node = made(Form::Power, std::pow(base.value(), exponent), {base});
    node->exponent = exponent;
    return Expr(std::move(node));
}

Expr root(const Expr& a) {
    return Expr(made(Form::Root, std::sqrt(a.value()), {a}));
}

Expr sine(const Expr& degrees) {
    return function("sin", std::sin(degrees.value() * DegreesToRadians), degrees);
}

Expr cosine(const Expr& degrees) {
    return function("cos", std::cos(degrees.value() * DegreesToRadians), degrees);
}

Expr tangent(const Expr& degrees) {
    return function("tan", std::tan(degrees.value() * DegreesToRadians), degrees);
}

Expr arctangent(const Expr& a) {
    return function("arctan", std::atan(a.value()) / DegreesToRadians, a);
}

Expr sineRad(const Expr& radians) {
    return function("sin", std::sin(radians.value()), radians);
}

Expr cosineRad(const Expr& radians) {
    return function("cos", std::cos(radians.value()), radians);
}

Expr arctangentRad(const Expr& a) {
    return function("arctan", std::atan(a.value()), a);
}

Expr logarithm(const Expr& a) {
    return function("ln", std::log(a.value()), a);
}

Expr pi() {
    return Expr(made(Form::Pi, std::numbers::pi, {}));
}

namespace {

/// A value as formulas print it; the power of ten stands apart.
struct PrintedNumber {
    std::string digits; ///< with its sign; empty for no number
    int exponent = 0;
};

PrintedNumber printed(double value) {
    constexpr double largestPlain = 99999.5;
    constexpr double largestWhole = 1e9;
    if (!std::isfinite(value)) {
        return {};
    }
    const double size = std::abs(value);
    const bool whole = size >= largestPlain && size < largestWhole;
    std::string text;
    appendShortest(text, whole ? std::round(size) : roundedTo(size, Digits));
    const std::string sign = value < 0 && text != "0" ? "−" : "";
    const std::size_t e = text.find('e');
    if (e == std::string::npos) {
        return {sign + text};
    }
    return {sign + text.substr(0, e), std::stoi(text.substr(e + 1))};
}

std::string powerText(int exponent) {
    return (exponent < 0 ? "−" : "") + std::to_string(std::abs(exponent));
}

} // namespace

std::string mathNumber(double value) {
    const PrintedNumber number = printed(value);
    if (number.digits.empty()) {
        return "<mo>–</mo>";
    }
    return number.exponent == 0
               ? "<mn>" + number.digits + "</mn>"
               : "<mrow><mn>" + number.digits + "</mn><mo>⋅</mo><msup><mn>10</mn><mn>" +
                     powerText(number.exponent) + "</mn></msup></mrow>";
}

std::string plainNumber(double value) {
    const PrintedNumber number = printed(value);
    if (number.digits.empty()) {
        return "–";
    }
    return number.exponent == 0
               ? number.digits
               : number.digits + "⋅10<sup>" + powerText(number.exponent) + "</sup>";
}

std::string mathSymbol(const Symbol& symbol) {
    const std::string letter = "<mi>" + symbol.letter + "</mi>";
    return symbol.subscript.empty()
               ? letter
               : "<msub>" + letter + "<mtext>" + symbol.subscript + "</mtext></msub>";
}

} // namespace korvane::sheet
