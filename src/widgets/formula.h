// Formulas of the theory pages: the part of TeX's mathematics that they use, read into a tree.
#pragma once

#include <QString>

#include <vector>

namespace korvane {

/// A formula or a part of one.
struct Formula {
    enum class Kind {
        Row,      ///< parts side by side
        Letter,   ///< a symbol, in italics
        Upright,  ///< digits, brackets, words
        Function, ///< cos, log ...
        Sign,     ///< an operator between two parts, with room around it
        Space,    ///< text holds the blanks
        Large,    ///< sum, integral
        Fraction, ///< upper and lower part
        Root,     ///< the part below it
        Fence,    ///< a part between brackets of its height
        Bar,      ///< a part with a bar above it
        Script,   ///< base, lower and upper index; an index that is missing is an empty row
    };
    Kind kind = Kind::Row;
    QString text;
    std::vector<Formula> parts;
};

/// Reads TeX. A command that is unknown stands as it is written, with its backslash.
Formula readFormula(const QString& tex);

/// The formula as rich text in one line: indices set lower and higher, fractions with a stroke.
QString formulaHtml(const Formula& formula);

} // namespace korvane
