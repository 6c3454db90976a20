// What a study has come to, as tables and figures: the tornado of variables moved one at a time,
// and the curves of a grid.
#pragma once

#include "plots/figures.h"
#include "survey/rows.h"

#include <optional>
#include <string>
#include <vector>

namespace korvane::study {

/// Cells of text under their headings.
struct TextTable {
    std::vector<std::string> headings;
    std::vector<std::vector<std::string>> lines; ///< each as long as the headings
};

/// The lines with tabulators between cells, the headings first, for spreadsheets.
std::string tabbedText(const TextTable& table);

/// A figure and its size (twips); its drawing starts at the origin.
struct SizedFigure {
    Figure figure;
    double width = 0;
    double height = 0;
};

/// How far one variable alone moves an output: the widest way between its values at the low and at
/// the high number and that of the wall as it is, NaN where there is no solution.
double swingOf(double base, double low, double high);

/// One variable alone at its ends.
struct TornadoBar {
    std::string title;
    std::string lowText; ///< its number with unit
    std::string highText;
    double low = 0; ///< the output there; NaN where the wall has no solution
    double high = 0;
    std::string lowReason; ///< why it has none
    std::string highReason;

    double swing(double base) const { return swingOf(base, low, high); }
};

struct Tornado {
    std::string title; ///< of the output
    Quantity quantity = Quantity::Number;
    UnitSystem units = UnitSystem::US;
    double base = 0; ///< of the wall as it is; NaN where it has no solution
    std::string baseReason;
    std::vector<TornadoBar> bars; ///< the widest first
};

Tornado tornadoOf(const Question& question, const StudyRows& rows, std::size_t column);
TextTable tableOf(const Tornado& tornado);
/// The widest bars, as many as are read at a glance; `width` in twips, the height is theirs.
SizedFigure figureOf(const Tornado& tornado, double width);

/// Which cut through a grid is on show.
struct GridCut {
    std::size_t column = 0;               ///< output
    std::size_t along = 0;                ///< variable of the abscissa
    std::optional<std::size_t> by = {};   ///< variable with a curve for each value
    std::vector<std::size_t> values = {}; ///< of all variables, by place; those of the two unread
};

struct Curve {
    std::string title;           ///< "WaterElev.right 2 FT"; empty for the only one
    std::vector<double> outputs; ///< NaN where the wall has no solution
    std::vector<std::string> reasons;
};

struct Curves {
    std::string title;
    std::string fixed; ///< the variables that stand still
    std::string alongTitle;
    Quantity alongQuantity = Quantity::Number;
    Quantity quantity = Quantity::Number;
    UnitSystem units = UnitSystem::US;
    std::vector<double> along;
    std::vector<Curve> curves;
};

Curves curvesOf(const Question& question, const StudyRows& rows, const GridCut& cut);
TextTable tableOf(const Curves& curves);
SizedFigure figureOf(const Curves& curves, double width, double height);

/// A number of a variable with its unit: "32 deg".
std::string numberWithUnit(const AskedVariable& variable, double number, UnitSystem units);

} // namespace korvane::study
