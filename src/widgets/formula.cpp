#include "widgets/formula.h"

#include <utility>

namespace korvane {

namespace {

using Kind = Formula::Kind;

struct Command {
    const char16_t* name;
    Kind kind;
    const char16_t* text;
};

constexpr Command commands[] = {
    {u"alpha", Kind::Letter, u"α"},    {u"beta", Kind::Letter, u"β"},
    {u"gamma", Kind::Letter, u"γ"},    {u"delta", Kind::Letter, u"δ"},
    {u"theta", Kind::Letter, u"θ"},    {u"pi", Kind::Letter, u"π"},
    {u"rho", Kind::Letter, u"ρ"},      {u"sigma", Kind::Letter, u"σ"},
    {u"varphi", Kind::Letter, u"φ"},   {u"Delta", Kind::Upright, u"Δ"},
    {u"cos", Kind::Function, u"cos"},  {u"sin", Kind::Function, u"sin"},
    {u"tan", Kind::Function, u"tan"},  {u"cot", Kind::Function, u"cot"},
    {u"ln", Kind::Function, u"ln"},    {u"log", Kind::Function, u"log"},
    {u"min", Kind::Function, u"min"},  {u"arctan", Kind::Function, u"arctan"},
    {u"cdot", Kind::Sign, u"·"},       {u"times", Kind::Sign, u"×"},
    {u"le", Kind::Sign, u"≤"},         {u"sum", Kind::Large, u"∑"},
    {u"int", Kind::Large, u"∫"},       {u"qquad", Kind::Space, u"\u2003\u2003"},
    {u"quad", Kind::Space, u"\u2003"}, {u",", Kind::Space, u"\u2009"},
    {u";", Kind::Space, u"\u2005"},    {u" ", Kind::Space, u" "},
};

const QString thinSpace = QStringLiteral(u"\u2009");

bool isText(const Formula& part, const char16_t* text) {
    return part.text == QStringView(text) && part.parts.empty();
}

bool isFunction(const Formula& part) {
    return part.kind == Kind::Function ||
           (part.kind == Kind::Script && part.parts[0].kind == Kind::Function);
}

class Reader {
  public:
    explicit Reader(const QString& tex) : tex_(tex) {}

    /// Up to the closing brace, \right or the end, none of which is taken.
    Formula row() {
        Formula row;
        skipBlanks();
        while (at_ < tex_.size() && tex_[at_] != '}' && !tex_.mid(at_).startsWith(u"\\right")) {
            add(row.parts, withScripts(atom(row.parts)));
            skipBlanks();
        }
        return row;
    }

  private:
    void skipBlanks() {
        while (at_ < tex_.size() && tex_[at_].isSpace()) {
            ++at_;
        }
    }

    /// A function stands off from what it is of, a comma from what follows.
    static void add(std::vector<Formula>& parts, Formula part) {
        const bool bracket = isText(part, u"(") || part.kind == Kind::Fence;
        if (!parts.empty() && part.kind != Kind::Space && part.kind != Kind::Sign && !bracket &&
            (isFunction(parts.back()) || isText(parts.back(), u","))) {
            parts.push_back({Kind::Space, thinSpace, {}});
        }
        parts.push_back(std::move(part));
    }

    /// In braces, or one sign.
    Formula argument() {
        skipBlanks();
        if (at_ < tex_.size() && tex_[at_] == '{') {
            ++at_;
            Formula inner = row();
            ++at_;
            return inner;
        }
        if (at_ < tex_.size() && tex_[at_].isDigit()) { // \frac12
            return {Kind::Upright, QString(tex_[at_++]), {}};
        }
        return atom({});
    }

    QString words() {
        const qsizetype end = std::max(at_, tex_.indexOf('}', at_));
        QString text = tex_.mid(at_ + 1, end - at_ - 1).toString();
        at_ = end + 1;
        return text;
    }

    QString bracket() { return at_ < tex_.size() ? QString(tex_[at_++]) : QString(" "); }

    Formula fence() {
        Formula fence{Kind::Fence, bracket(), {}};
        fence.parts.push_back(row());
        at_ += 6; // \right
        fence.text += bracket();
        return fence;
    }

    Formula command() {
        qsizetype end = at_ + 1;
        while (end < tex_.size() && tex_[end].isLetter()) {
            ++end;
        }
        end = std::min(tex_.size(), std::max(end, at_ + 2));
        const QStringView name = tex_.mid(at_ + 1, end - at_ - 1);
        at_ = end;
        if (name == u"frac" || name == u"dfrac" || name == u"tfrac") {
            Formula upper = argument();
            return {Kind::Fraction, {}, {std::move(upper), argument()}};
        }
        if (name == u"sqrt" || name == u"bar") {
            return {name == u"bar" ? Kind::Bar : Kind::Root, {}, {argument()}};
        }
        if (name == u"text") {
            return {Kind::Upright, words(), {}};
        }
        if (name == u"left") {
            return fence();
        }
        for (const Command& known : commands) {
            if (name == QStringView(known.name)) {
                return {known.kind, QString::fromUtf16(known.text), {}};
            }
        }
        return {Kind::Upright, "\\" + name.toString(), {}};
    }

    Formula atom(const std::vector<Formula>& before) {
        if (at_ >= tex_.size()) {
            return {};
        }
        const QChar sign = tex_[at_];
        if (sign == '\\') {
            return command();
        }
        if (sign == '{') {
            return argument();
        }
        if (sign.isDigit()) {
            const qsizetype begin = at_;
            while (at_ < tex_.size() && (tex_[at_].isDigit() || tex_[at_] == '.')) {
                ++at_;
            }
            return {Kind::Upright, tex_.mid(begin, at_ - begin).toString(), {}};
        }
        ++at_;
        if (sign == '\'') {
            return {Kind::Upright, QStringLiteral(u"′"), {}};
        }
        if (sign == '-' || sign == '+' || sign == '=') {
            const bool between = !before.empty() && before.back().kind != Kind::Sign &&
                                 !isText(before.back(), u"(") && !isText(before.back(), u",") &&
                                 before.back().kind != Kind::Space;
            const QString text = sign == '-' ? QStringLiteral(u"−") : QString(sign);
            return {between || sign == '=' ? Kind::Sign : Kind::Upright, text, {}};
        }
        return {sign.isLetter() ? Kind::Letter : Kind::Upright, QString(sign), {}};
    }

    Formula withScripts(Formula base) {
        Formula script{Kind::Script, {}, {std::move(base), {}, {}}};
        bool found = false;
        while (at_ < tex_.size() && (tex_[at_] == '_' || tex_[at_] == '^')) {
            const std::size_t place = tex_[at_++] == '_' ? 1 : 2;
            script.parts[place] = argument();
            found = true;
        }
        return found ? script : std::move(script.parts[0]);
    }

    QStringView tex_;
    qsizetype at_ = 0;
};

bool isSimple(const Formula& part) {
    const bool row = part.kind == Kind::Row && part.parts.size() != 1;
    return part.kind == Kind::Row ? !row && isSimple(part.parts[0]) : part.kind != Kind::Fraction;
}

QString inBrackets(const Formula& part) {
    const QString html = formulaHtml(part);
    return isSimple(part) ? html : "(" + html + ")";
}

} // namespace

Formula readFormula(const QString& tex) {
    return Reader(tex).row();
}

QString formulaHtml(const Formula& formula) {
    const auto& parts = formula.parts;
    switch (formula.kind) {
    case Kind::Row: {
        QString html;
        for (const Formula& part : parts) {
            html += formulaHtml(part);
        }
        return html;
    }
    case Kind::Letter:
        return "<i>" + formula.text.toHtmlEscaped() + "</i>";
    case Kind::Sign:
        return " " + formula.text + " ";
    case Kind::Fraction:
        return inBrackets(parts[0]) + "/" + inBrackets(parts[1]);
    case Kind::Root:
        return QStringLiteral(u"√") + inBrackets(parts[0]);
    case Kind::Fence:
        return formula.text.left(1) + formulaHtml(parts[0]) + formula.text.mid(1);
    case Kind::Bar:
        return formulaHtml(parts[0]) + QStringLiteral(u"\u0304");
    case Kind::Script: {
        QString html = formulaHtml(parts[0]);
        for (const std::size_t place : {1U, 2U}) {
            const QString mark = place == 1 ? "sub>" : "sup>";
            if (!parts[place].parts.empty() || !parts[place].text.isEmpty()) {
                html += "<" + mark + formulaHtml(parts[place]) + "</" + mark;
            }
        }
        return html;
    }
    default:
        return formula.text.toHtmlEscaped();
    }
}

} // namespace korvane
