// Formulas that can be printed in symbols and in numbers and be worked out: what the sheet prints
// is what it computes.
//
//     const Expr ka = term("K", "a", 0.33);
//     const Expr sigma = term("σ", "v", 1200, Quantity::Stress);
//     const Expr p = ka * sigma;      // p.value() is 396
#pragma once

#include "problem/quantities.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::sheet {

/// A symbol of a formula: a letter and a subscript, which may be empty. UTF-8.
struct Symbol {
    std::string letter;
    std::string subscript = {};
};

/// A formula. Values are those of the records (US customary units, angles in degrees). It copies
/// cheaply and never changes.
class Expr {
  public:
    struct Node;

    /// A number that stands in the formula itself, without a unit: "2", "0.203".
    Expr(double number);
    explicit Expr(std::shared_ptr<const Node> node) : node_(std::move(node)) {}

    /// Not finite where the formula has no value.
    double value() const;
    /// MathML within <math>, with letters for the symbols.
    std::string symbols() const;
    /// The same with the values of the symbols set in, 5 significant digits each.
    std::string numbers(UnitSystem units) const;
    /// The numbers of a long sum in pieces between which a line may break.
    std::vector<std::string> numberPieces(UnitSystem units) const;

    const Node& node() const { return *node_; }

  private:
    std::shared_ptr<const Node> node_;
};

/// The factor u between the units of a formula's symbols and those of its result: `us` in the units
/// of the records, printed as `si` in metric ones.
Expr unitFactor(double us, double si);

/// A symbol with the value that stands for it.
Expr term(Symbol symbol, double value, Quantity quantity = Quantity::Number);
Expr term(std::string letter, std::string subscript, double value,
          Quantity quantity = Quantity::Number);

Expr operator+(const Expr& a, const Expr& b);
Expr operator-(const Expr& a, const Expr& b);
Expr operator-(const Expr& a);
Expr operator*(const Expr& a, const Expr& b);
Expr operator/(const Expr& a, const Expr& b); ///< a fraction
Expr power(const Expr& base, int exponent);
Expr root(const Expr& a);
Expr sine(const Expr& degrees);
Expr cosine(const Expr& degrees);
Expr tangent(const Expr& degrees);
Expr arctangent(const Expr& a); ///< degrees
/// The same of angles in radians, which have no unit.
Expr sineRad(const Expr& radians);
Expr cosineRad(const Expr& radians);
Expr arctangentRad(const Expr& a);
Expr logarithm(const Expr& a); ///< natural
Expr pi();

/// A value with 5 significant digits as text: "0.33333", "1234.6", "1.5·10<sup>−7</sup>".
std::string plainNumber(double value);

/// A value with 5 significant digits, as formulas print it: "0.33333", "1234.6", "123457",
/// "1.5e-07" as MathML.
std::string mathNumber(double value);

/// A symbol as MathML.
std::string mathSymbol(const Symbol& symbol);

} // namespace korvane::sheet
