// A table of text fields: columns that are control arrays, rows counted from 1.
#pragma once

#include "screens/controls.h"
#include "screens/field.h"

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace korvane {

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
    FieldMeaning meaning; ///< of a row; its name without the row
    double left = 0;
    double width = 0;
    double labelTop = 0;
    QString labelName = {};  ///< where the system names the label
    QString rowWord = "row"; ///< what a row is called
};

/// The rows of one side of a section. Columns count from 0 in the order in which they were added,
/// which is the order of focus and of a pasted block; rows from 1.
class FieldTable {
  public:
    explicit FieldTable(const TableRows& rows) : rows_(rows) {}
    FieldTable(const FieldTable&) = delete;
    FieldTable& operator=(const FieldTable&) = delete;

    // ---- building ----

    /// Adds a column of fields under its label and returns its number. A control array counts from
    /// 0; the control of a table of one row has no index.
    int addColumn(QWidget* parent, const FieldColumn& spec);
    /// Writes the row numbers 1, 2 ... before the rows.
    void addRowNumbers(QWidget* parent, double left, double width);
    /// Gives a place beside the table where a refusal is told.
    void addNotice(QWidget* parent, const QString& name, const Place& where);
    /// Puts the notice or a column to another place of its parent.
    void placeNotice(const Place& where);
    void placeColumn(int column, double left, double width);

    /// True where the whole notice can be seen now.
    bool noticeIsSeen() const;

    int rowCount() const { return rows_.count; }
    int columnCount() const { return static_cast<int>(columns_.size()); }
    Field* field(int column, int row) const;
    std::string entry(int column, int row) const { return field(column, row)->entry(); }
    /// All fields, row by row.
    std::vector<QWidget*> focusOrder() const;

    // ---- texts ----

    void clear();
    void clearRow(int row);

    /// The last row in which one of the columns is not empty; 0 if there is none. All columns
    /// where none are named.
    int lastFilledRow(const std::vector<int>& columns = {}) const;
    /// Rows in which a column is not empty, blank rows between them left out.
    int filledRows(int column) const;

    /// Focus to a row of a column; none where the table ends.
    void moveFocus(int column, int row);

    /// Calls `action` after every change that a person makes in the table.
    void whenEdited(QObject* receiver, const std::function<void()>& action) const;

    // ---- blocks ----

    /// Enters a block from a cell to the right and down over the columns that are shown. Where it
    /// does not fit or holds what is no plain number nothing is changed, and the answer says why.
    QString paste(const CellBlock& block, int column, int row);
    static QString doesNotFit(const CellBlock& block);
    static QString hasComma(const QString& cell);
    /// Takes back the last block, whole but for fields that were changed since; not where `at` was
    /// changed since: its own changes go first.
    bool undoPaste(const Field& at);
    bool redoPaste(const Field& at);
    bool canUndoPaste(const Field& at) const;
    /// The shown columns from a cell to the right, down to the last filled row, as a block.
    QString copy(int column, int row) const;

  private:
    struct MadeColumn {
        FieldColumn spec;
        QLabel* label = nullptr;
        std::vector<Field*> fields;
    };
    /// A field that a block has changed.
    struct Change {
        Field* field;
        QString before, after;
    };
    /// A block that was pasted, and the texts of all fields before and after it.
    struct Pasted {
        std::vector<Change> changes;
        QStringList before, after;
    };

    std::vector<int> shownColumns(int from, int row) const;
    QStringList texts() const;
    QString textIn(const QStringList& texts, const Field& at) const;
    void tell(const QString& fault);

    TableRows rows_;
    std::vector<MadeColumn> columns_;
    std::vector<Pasted> done_, undone_;
    QLabel* notice_ = nullptr;
};

} // namespace korvane
