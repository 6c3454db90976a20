// A table of text fields: columns that are control arrays, rows counted from 1.
#pragma once

#include "screens/controls.h"
#include "screens/field.h"

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace korvane {

/// Cells as a spreadsheet hands them over: rows parted by line ends, cells by tabs.
class CellBlock {
  public:
    explicit CellBlock(std::vector<QStringList> rows) : cells_(std::move(rows)) {}

    int rows() const { return static_cast<int>(cells_.size()); }
    int columns() const;
    bool isSingle() const { return rows() == 1 && columns() == 1; }
    /// Counted from 0; empty where a row is shorter than the others.
    QString cell(int row, int column) const;

  private:
    std::vector<QStringList> cells_;
};

CellBlock cellBlock(const QString& text);

/// Where the rows of a table stand, in twips.
struct TableRows {
    int count = 1;
    double firstTop = 0; ///< upper edge of the first row, lower edge of the column labels
    double pitch = 270;  ///< from row to row
    double height() const { return count * pitch; }
};

/// A column and where it stands, in twips.
struct FieldColumn {
    QString control;
    QString label;
    double left = 0;
    double width = 0;
    double labelTop = 0;
    QString labelName = {}; ///< where the system names the label
};

/// The rows of one side of a section. Columns count from 0 in the order in which they were added,
/// which is the order of focus and of a pasted block; rows from 1.
class FieldTable {
  public:
    explicit FieldTable(const TableRows& rows) : rows_(rows) {}
    FieldTable(const FieldTable&) = delete;
    FieldTable& operator=(const FieldTable&) = delete;

    /// Adds a column of fields under its label and returns its number. A control array counts from
    /// 0; the control of a table of one row has no index.
    int addColumn(QWidget* parent, const FieldColumn& spec);
    /// Writes the row numbers 1, 2 ... before the rows.
    void addRowNumbers(QWidget* parent, double left, double width);

    int rowCount() const { return rows_.count; }
    int columnCount() const { return static_cast<int>(columns_.size()); }
    Field* field(int column, int row) const;
    std::string entry(int column, int row) const { return field(column, row)->entry(); }
    /// All fields, row by row.
    std::vector<QWidget*> focusOrder() const;

    void clear();
    void clearRow(int row);

    /// The last row in which one of the columns is not empty; 0 if there is none. All columns
    /// where none are named.
    int lastFilledRow(const std::vector<int>& columns = {}) const;
    /// Rows in which a column is not empty, blank rows between them left out.
    int filledRows(int column) const;

    /// Focus to a row of a column; none where the table ends.
    void moveFocus(int column, int row);
    /// Enters a block from a cell to the right and down over the columns that are shown. False,
    /// with nothing changed, where it does not fit.
    bool paste(const CellBlock& block, int column, int row);

    /// Calls `action` after every change that a person makes in the table.
    void whenEdited(QObject* receiver, const std::function<void()>& action) const;

  private:
    TableRows rows_;
    std::vector<std::vector<Field*>> columns_;
};

} // namespace korvane
