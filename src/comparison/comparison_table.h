// A comparison as a table of texts, for the batch command and for windows.
#pragma once

#include "comparison/comparison.h"

#include <string>
#include <vector>

namespace korvane {

struct ComparisonColumn {
    std::string heading; ///< "Penetration"
    std::string unit;    ///< "FT", "%"
};

/// A line of the table: a row's level, or a row without results.
struct ComparisonLine {
    std::size_t row = 0; ///< of the comparison, from 0
    std::vector<std::string>
        cells;               ///< one a column; the row's title stands in its first line alone
    std::string reason = {}; ///< instead of the cells behind the title
};

struct ComparisonTable {
    /// The row's title, the method, and each value that any row has with its difference.
    std::vector<ComparisonColumn> columns;
    std::vector<ComparisonLine> lines;
};

/// `mode` is that of the compared problem.
ComparisonTable comparisonTable(const Comparison& comparison, Mode mode, UnitSystem units);

/// The table in lines of text, columns parted by blanks.
std::string comparisonText(const ComparisonTable& table);

/// The same with a tabulator between cells and a heading with the unit in it, for spreadsheets.
std::string comparisonCells(const ComparisonTable& table);

/// The name of a value as in JSON, and what it measures.
struct ComparedField {
    const char* name;
    Quantity quantity;
};
ComparedField fieldOf(ComparedValue value, Mode mode);

/// All values in their order.
inline constexpr std::array<ComparedValue, ComparedValueCount> AllComparedValues{
    ComparedValue::Penetration,   ComparedValue::Length,   ComparedValue::AnchorForce,
    ComparedValue::MaxMoment,     ComparedValue::MaxShear, ComparedValue::MaxDeflection,
    ComparedValue::FactorOfSafety};

} // namespace korvane
