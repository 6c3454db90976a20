#include "study/limit_state.h"

#include "problem/field_address.h"
#include "runtime/arithmetic.h"
#include "runtime/number_text.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <optional>

namespace korvane::study {

/// A number or a condition over two parts, or a leaf.
struct Condition::Node {
    enum class Kind {
        Number,
        Variable,
        Output,
        DesignBottom, ///< of the wall as a design at factor 1
        WallBottom,
        Negative,
        Absolute,
        Sum,
        Difference,
        Product,
        Quotient,
        Greater, ///< the first part above the second
        AtLeast,
        And,
        Or,
    };
    Kind kind = Kind::Number;
    double number = 0;
    std::size_t variable = 0;
    const LevelOutput* output = nullptr;
    int level = 0; ///< of an output; 0: each in turn
    std::shared_ptr<const Node> first = {};
    std::shared_ptr<const Node> second = {};
};

namespace {

using Node = Condition::Node;
using Kind = Node::Kind;
using Part = std::shared_ptr<const Node>;

bool isCondition(const Node& node) {
    return node.kind >= Kind::Greater;
}

double outputOf(const Node& node, const LimitValues& values, int level) {
    const LevelResult& result = values.results->levels(node.level == 0 ? level : node.level);
    return inUnits(node.output->field.quantity, node.output->value(result), values.units);
}

double numberOf(const Node& node, const LimitValues& values, int level) {
    const auto part = [&](const Part& inner) { return numberOf(*inner, values, level); };
    switch (node.kind) {
    case Kind::Number:
        return node.number;
    case Kind::Variable:
        return values.variables[node.variable];
    case Kind::Output:
        return outputOf(node, values, level);
    case Kind::DesignBottom:
        return inUnits(Quantity::Length,
                       values.design->levels(node.level == 0 ? level : node.level).bottomElev,
                       values.units);
    case Kind::WallBottom:
        return inUnits(Quantity::Length, values.problem.WallBottomElev, values.units);
    case Kind::Negative:
        return -part(node.first);
    case Kind::Absolute:
        return std::abs(part(node.first));
    case Kind::Sum:
        return part(node.first) + part(node.second);
    case Kind::Difference:
        return part(node.first) - part(node.second);
    case Kind::Product:
        return part(node.first) * part(node.second);
    case Kind::Quotient:
        return part(node.first) / part(node.second);
    default:
        return 0;
    }
}

double marginOf(const Node& node, const LimitValues& values, int level) {
    if (node.kind == Kind::And || node.kind == Kind::Or) {
        const double a = marginOf(*node.first, values, level);
        const double b = marginOf(*node.second, values, level);
        return node.kind == Kind::And ? std::max(a, b) : std::min(a, b);
    }
    return numberOf(*node.second, values, level) - numberOf(*node.first, values, level);
}

bool holdsAt(const Node& node, const LimitValues& values, int level) {
    switch (node.kind) {
    case Kind::And:
        return holdsAt(*node.first, values, level) && holdsAt(*node.second, values, level);
    case Kind::Or:
        return holdsAt(*node.first, values, level) || holdsAt(*node.second, values, level);
    case Kind::AtLeast:
        return numberOf(*node.first, values, level) >= numberOf(*node.second, values, level);
    default:
        return numberOf(*node.first, values, level) > numberOf(*node.second, values, level);
    }
}

bool anyNode(const Node& node, const std::function<bool(const Node&)>& is) {
    return is(node) || (node.first != nullptr && anyNode(*node.first, is)) ||
           (node.second != nullptr && anyNode(*node.second, is));
}

/// Whether numbers alone are in it.
bool isConstant(const Node& node) {
    return !anyNode(node, [](const Node& one) {
        return one.kind == Kind::Variable || one.kind == Kind::Output || isCondition(one);
    });
}

bool isFactor(const Node& node) {
    return node.output != nullptr &&
           std::string_view(node.output->field.name) == results::factorOfSafety.name;
}

bool isOne(const Node& node) {
    return node.kind == Kind::Number && node.number == 1;
}

/// Comparisons that hold together, one such list after the other.
using Alternatives = std::vector<std::vector<Part>>;

/// Every list of one side with every list of the other; none where they are too many.
Alternatives together(const Alternatives& first, const Alternatives& second) {
    Alternatives all;
    if (first.size() * second.size() > Condition::MostAlternatives) {
        return all;
    }
    for (const std::vector<Part>& a : first) {
        for (const std::vector<Part>& b : second) {
            all.push_back(a);
            all.back().insert(all.back().end(), b.begin(), b.end());
        }
    }
    return all;
}

/// The lists of both sides; none where they are too many, or one side has too many.
Alternatives inTurn(Alternatives first, const Alternatives& second) {
    const bool tooMany = first.empty() || second.empty() ||
                         first.size() + second.size() > Condition::MostAlternatives;
    first.insert(first.end(), second.begin(), second.end());
    return tooMany ? Alternatives() : first;
}

/// Of a condition or of its opposite, by the laws of A. De Morgan.
Alternatives alternativesOf(const Part& part, bool opposite) {
    if (part->kind == Kind::And || part->kind == Kind::Or) {
        const Alternatives first = alternativesOf(part->first, opposite);
        const Alternatives second = alternativesOf(part->second, opposite);
        return (part->kind == Kind::And) != opposite ? together(first, second)
                                                     : inTurn(first, second);
    }
    if (!opposite) {
        return {{part}};
    }
    const Kind kind = part->kind == Kind::Greater ? Kind::AtLeast : Kind::Greater;
    return {
        {std::make_shared<Node>(Node{.kind = kind, .first = part->second, .second = part->first})}};
}

/// The part with every output of the level, where it has named none.
Part atLevel(const Part& part, int level) {
    if (part == nullptr) {
        return part;
    }
    Node node = *part;
    node.level = node.level == 0 ? level : node.level;
    node.first = atLevel(node.first, level);
    node.second = atLevel(node.second, level);
    return std::make_shared<Node>(node);
}

/// A condition with the design's bottom in place of the factor of safety.
Part askingDesign(const Part& part) {
    if (part == nullptr) {
        return part;
    }
    Node node = *part;
    const bool isComparison = node.kind == Kind::Greater || node.kind == Kind::AtLeast;
    if (isComparison && ((isFactor(*node.first) && isOne(*node.second)) ||
                         (isOne(*node.first) && isFactor(*node.second)))) {
        for (Part* side : {&node.first, &node.second}) {
            const Kind kind = isOne(**side) ? Kind::WallBottom : Kind::DesignBottom;
            *side = std::make_shared<Node>(Node{.kind = kind, .level = (*side)->level});
        }
        return std::make_shared<Node>(node);
    }
    node.first = askingDesign(node.first);
    node.second = askingDesign(node.second);
    return std::make_shared<Node>(node);
}

} // namespace

/// Reads by recursive descent; the first fault ends it.
class ConditionReader {
  public:
    ConditionReader(std::string_view text, std::span<const std::string> variables,
                    const Problem& base)
        : text_(text), variables_(variables), base_(base) {}

    ReadCondition read() {
        next();
        Part root = either();
        if (fault_.empty() && !word_.empty()) {
            fault_ = "nothing is expected at \"" + word_ + "\"";
        }
        if (fault_.empty() && !isCondition(*root)) {
            fault_ = "a comparison (<, <=, >, >=) is missing";
        }
        ReadCondition result;
        result.fault = fault_;
        result.condition.root_ = std::move(root);
        result.condition.levels_ =
            forEachLevel_ ? static_cast<int>(levelSuffixes(base_).size()) : 1;
        return result;
    }

  private:
    static bool isNamePart(char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.';
    }

    /// A sign of an exponent belongs to its number.
    bool continuesWord(std::size_t end) const {
        const char c = text_[end];
        const bool startsAsNumber = std::isalpha(static_cast<unsigned char>(text_[0])) == 0;
        return isNamePart(c) || ((c == '+' || c == '-') && startsAsNumber && end > 0 &&
                                 (text_[end - 1] == 'e' || text_[end - 1] == 'E'));
    }

    void next() {
        while (!text_.empty() && std::isspace(static_cast<unsigned char>(text_.front())) != 0) {
            text_.remove_prefix(1);
        }
        std::size_t end = 0;
        if (!text_.empty() && isNamePart(text_.front())) {
            while (end < text_.size() && continuesWord(end)) {
                ++end;
            }
        } else if (!text_.empty()) {
            end = text_.starts_with("<=") || text_.starts_with(">=") ? 2 : 1;
        }
        word_ = text_.substr(0, end);
        text_.remove_prefix(end);
    }

    bool take(std::string_view word) {
        const bool taken = word_ == word;
        if (taken) {
            next();
        }
        return taken;
    }

    Part join(Kind kind, Part first, Part second) {
        if (fault_.empty() && (isCondition(*first) != (kind >= Kind::And) ||
                               isCondition(*second) != (kind >= Kind::And))) {
            fault_ = kind >= Kind::And ? "\"and\" and \"or\" join comparisons"
                                       : "a comparison has numbers on both sides";
        }
        return std::make_shared<Node>(
            Node{.kind = kind, .first = std::move(first), .second = std::move(second)});
    }

    Part either() {
        Part part = both();
        while (fault_.empty() && take("or")) {
            part = join(Kind::Or, part, both());
        }
        return part;
    }

    Part both() {
        Part part = comparison();
        while (fault_.empty() && take("and")) {
            part = join(Kind::And, part, comparison());
        }
        return part;
    }

    /// What is below becomes what is above, with its parts exchanged.
    Part comparison() {
        Part part = sum();
        for (const std::string_view sign : {"<=", ">=", "<", ">"}) {
            if (fault_.empty() && take(sign)) {
                Part other = sum();
                const Kind kind = sign.size() == 2 ? Kind::AtLeast : Kind::Greater;
                return sign[0] == '>' ? join(kind, part, other) : join(kind, other, part);
            }
        }
        return part;
    }

    Part sum() {
        Part part = product();
        while (fault_.empty() && (word_ == "+" || word_ == "-")) {
            const Kind kind = word_ == "+" ? Kind::Sum : Kind::Difference;
            next();
            part = join(kind, part, product());
        }
        return part;
    }

    Part product() {
        Part part = operand();
        while (fault_.empty() && (word_ == "*" || word_ == "/")) {
            const Kind kind = word_ == "*" ? Kind::Product : Kind::Quotient;
            next();
            Part other = operand();
            if (fault_.empty() && kind == Kind::Quotient && isConstant(*other) &&
                numberOf(*other, {.variables = {}, .problem = base_, .units = UnitSystem::US}, 1) ==
                    0) {
                fault_ = "it divides by 0";
            }
            part = join(kind, part, std::move(other));
        }
        return part;
    }

    /// What stands inside of something; brackets and signs go no deeper than a person writes.
    Part inner(Part (ConditionReader::*readPart)()) {
        if (++depth_ > Deepest && fault_.empty()) {
            fault_ = "brackets and signs are nested too deeply";
        }
        Part part = fault_.empty() ? (this->*readPart)() : std::make_shared<Node>();
        --depth_;
        return part;
    }

    Part bracket() {
        Part part = inner(&ConditionReader::either);
        if (fault_.empty() && !take(")")) {
            fault_ = "a bracket is not closed";
        }
        return part;
    }

    Part operand() {
        if (take("-")) {
            return join(Kind::Negative, inner(&ConditionReader::operand), std::make_shared<Node>());
        }
        if (take("abs")) {
            if (!take("(")) {
                fault_ = "abs needs brackets: abs(maxMoment)";
                return std::make_shared<Node>();
            }
            return join(Kind::Absolute, bracket(), std::make_shared<Node>());
        }
        if (take("(")) {
            return bracket();
        }
        Node leaf;
        if (isNumeric(word_)) {
            leaf.number = numericValue(word_);
        } else if (!word_.empty() &&
                   std::string_view("0123456789.").find(word_[0]) != std::string_view::npos) {
            fault_ = "\"" + word_ + "\" is no number";
        } else if (!findName(leaf)) {
            fault_ = unknown();
        }
        next();
        return std::make_shared<Node>(leaf);
    }

    bool findName(Node& leaf) {
        const auto variable = std::find(variables_.begin(), variables_.end(), word_);
        if (variable != variables_.end()) {
            leaf.kind = Kind::Variable;
            leaf.variable = static_cast<std::size_t>(variable - variables_.begin());
            return true;
        }
        leaf.kind = Kind::Output;
        leaf.output = findOutput(word_, base_);
        if (leaf.output != nullptr) {
            leaf.level = leaf.output->onlyLevel;
            forEachLevel_ = forEachLevel_ || leaf.level == 0;
            return true;
        }
        const std::vector<OutputColumn> columns = columnsOf(word_, base_);
        if (columns.empty() || columns.front().output == nullptr) {
            return false;
        }
        leaf.output = columns.front().output;
        leaf.level = columns.front().level;
        return true;
    }

    std::string unknown() const {
        if (word_.empty()) {
            return "it ends too early";
        }
        std::vector<std::string_view> known = outputNames(base_);
        std::string text = "unknown \"" + word_ + "\"; known are";
        known.insert(known.end(), variables_.begin(), variables_.end());
        for (const std::string_view name : known) {
            text += " " + std::string(name);
        }
        return text;
    }

    std::string_view text_;
    std::span<const std::string> variables_;
    const Problem& base_;
    std::string word_;
    std::string fault_;
    bool forEachLevel_ = false;
    int depth_ = 0;
    static constexpr int Deepest = 100;
};

double Condition::margin(const LimitValues& values) const {
    double least = marginOf(*root_, values, 1);
    for (int level = 2; level <= levels_; ++level) {
        least = std::min(least, marginOf(*root_, values, level));
    }
    return least;
}

bool Condition::holds(const LimitValues& values) const {
    bool held = holdsAt(*root_, values, 1);
    for (int level = 2; level <= levels_ && !held; ++level) {
        held = holdsAt(*root_, values, level);
    }
    return held;
}

std::vector<std::vector<Condition>> Condition::alternatives(bool opposite) const {
    Alternatives lists = alternativesOf(atLevel(root_, 1), opposite);
    for (int level = 2; level <= levels_; ++level) {
        const Alternatives more = alternativesOf(atLevel(root_, level), opposite);
        lists = opposite ? together(lists, more) : inTurn(lists, more);
    }
    std::vector<std::vector<Condition>> all;
    for (const std::vector<Part>& list : lists) {
        all.emplace_back();
        for (const Part& part : list) {
            Condition comparison;
            comparison.root_ = part;
            all.back().push_back(std::move(comparison));
        }
    }
    return all;
}

bool Condition::names(std::string_view output) const {
    return anyNode(*root_, [output](const Node& node) {
        return node.output != nullptr &&
               (node.output->field.name == output ||
                (output == "bottom" && node.output->field.name == results::bottomElev.name));
    });
}

void Condition::askDesign() {
    root_ = askingDesign(root_);
}

bool Condition::asksDesign() const {
    return anyNode(*root_, [](const Node& node) { return node.kind == Kind::DesignBottom; });
}

bool Condition::isKnown(const LimitValues& values) const {
    const bool asksResults =
        anyNode(*root_, [](const Node& node) { return node.kind == Kind::Output; });
    return (values.design != nullptr || !asksDesign()) &&
           (values.results != nullptr || (asksDesign() && !asksResults));
}

ReadCondition readCondition(std::string_view text, std::span<const std::string> variables,
                            const Problem& base) {
    constexpr std::size_t Longest = 10000;
    if (text.size() > Longest) {
        return {.condition = {}, .fault = "is longer than 10,000 characters"};
    }
    return ConditionReader(text, variables, base).read();
}

bool LimitState::reached(const LimitValues& values) const {
    return condition.isKnown(values) ? condition.holds(values) : noSolutionFails;
}

} // namespace korvane::study
