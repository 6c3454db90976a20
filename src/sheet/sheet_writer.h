// The writer of a calculation sheet: headings, paragraphs, tables, formulas, and the list of
// checks.
#pragma once

#include "sheet/expression.h"
#include "sheet/sheet.h"

#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::sheet {

/// Text for between tags: UTF-8 with what would be a tag or a reference escaped.
std::string escaped(std::string_view bytes);

/// A cell of a table: text, or a value with the usual digits of its quantity (the unit stands in
/// the column's head).
struct Cell {
    std::string markup; ///< escaped
    bool isNumber = false;
};

/// A column's head. A quantity with a unit shows it below the title.
struct TableColumn {
    std::string title;
    Quantity quantity = Quantity::Number;
    std::string markup = {}; ///< instead of the title, for symbols
};

struct Table {
    std::string caption = {};
    std::vector<TableColumn> columns;
    std::vector<std::vector<Cell>> rows = {};
    std::string id = {};
    bool wide = false; ///< many rows of small print
};

/// Units of a unit's name as people write them: "kN/m³" for "kN/m3".
std::string unitMarkup(Quantity quantity, UnitSystem system);

class SheetWriter {
  public:
    explicit SheetWriter(UnitSystem units) : units_(units) {}

    UnitSystem units() const { return units_; }
    /// While muted nothing but checks is written.
    void mute(bool muted) { muted_ = muted; }

    /// "1 Wall and input": opens the section of that number, with an anchor "s1"; the one before
    /// ends.
    void section(int number, std::string_view title);
    void heading(std::string_view title);    ///< within a section
    void subheading(std::string_view title); ///< within a heading
    void paragraph(std::string_view text);   ///< escaped
    void markup(std::string_view html);
    /// A paragraph whose text is markup already.
    void markupParagraph(std::string_view html);
    void table(const Table& table);

    /// `symbol = symbols = numbers = result unit` on a line of its own; gives the result.
    double formula(const Symbol& symbol, const Expr& expression,
                   Quantity quantity = Quantity::Number, std::string_view label = {});
    /// `symbol = symbols` alone.
    void definition(const Symbol& symbol, const Expr& expression, std::string_view label = {});
    /// `symbol = numbers = result unit`: where the definition has been told.
    double numbers(const Symbol& symbol, const Expr& expression,
                   Quantity quantity = Quantity::Number, std::string_view label = {});

    /// Several of those on one line behind one label; gives the last result.
    struct Numbers {
        Symbol symbol;
        Expr expression;
        Quantity quantity = Quantity::Number;
    };
    double numbers(std::string_view label, const std::vector<Numbers>& formulas);

    Cell text(std::string_view text) const;
    Cell value(Quantity quantity, double value) const;
    /// A value of a formula: 5 significant digits, in the units of the sheet.
    Cell precise(Quantity quantity, double value) const;
    /// "12.50 FT".
    std::string withUnit(Quantity quantity, double value) const;

    /// Adds to the list of checks; passes where the difference is at most `relative` of the
    /// engine's value (never less than of `scale`, for values near zero).
    void check(std::string what, Quantity quantity, double sheet, double engine,
               double relative = 1e-6, double scale = 0);
    /// The same with a tolerance in the unit of the values.
    void checkWithin(std::string what, Quantity quantity, double sheet, double engine,
                     double tolerance);
    const std::vector<Check>& checks() const { return checks_; }

    /// Ends the last section and gives all.
    std::string finish();

  private:
    /// Calls `write` for what stands behind a label, on a line of its own.
    template <class Write>
    void line(std::string_view label, Write write);
    void equation(const Symbol& symbol, const std::vector<std::string>& parts);
    void result(double value, Quantity quantity);

    UnitSystem units_;
    std::string html_;
    std::vector<Check> checks_;
    bool inSection_ = false;
    bool muted_ = false;
};

/// Sums and quotients of the same numbers in another order differ by no more than this share of
/// their largest terms: a few operations, each with half a unit of the last place.
inline constexpr double TermRounding = 16 * std::numeric_limits<double>::epsilon();

/// Many values of one kind as one check: the one that differs most from the engine's, by its
/// tolerance.
class WorstCheck {
  public:
    WorstCheck(std::string what, Quantity quantity) : what_(std::move(what)), quantity_(quantity) {}

    /// `place` tells where: "at EL -12.00"; `lost` is what rounding may make of the value where
    /// large terms cancel.
    void add(double sheet, double engine, std::string place, double lost = 0);
    /// A value whose tolerance follows from its own size and that of the terms that enter it,
    /// `size`: the others may be larger by far.
    void addAlone(double sheet, double engine, std::string place, double size, double lost = 0);
    /// The tolerance is `relative` of the largest of all values (those added alone: of their own
    /// size), but no less than `scale` times it, and what rounding may do.
    void tell(SheetWriter& writer, double relative = 1e-6, double scale = 0) const;

  private:
    struct Pair {
        double sheet = 0;
        double engine = 0;
        std::string place;
        double size = 0; ///< 0 where that of all values counts
        double lost = 0;
    };

    std::string what_;
    Quantity quantity_;
    double largest_ = 0; ///< size of the values that are not alone
    std::vector<Pair> pairs_;
};

} // namespace korvane::sheet
