// One text field of the data entry.
#pragma once

#include "screens/cell_block.h"
#include "screens/entry.h"

#include <QLineEdit>

#include <optional>
#include <string>

namespace korvane {

class FieldTable;

/// What a field tells to those who look, listen or ask: how it is called, its limits, and which
/// number of the problem it holds.
struct FieldMeaning {
    QString name;        ///< side, label and unit, row
    QString limits = {}; ///< in words
    std::optional<ProblemField> number =
        {}; ///< none where the field holds no number of the problem
    int side = Right;
    int row = 1;
    bool isText = false; ///< a heading or a name, in which a comma is no fault
};

/// The meaning of a field by itself.
FieldMeaning meaningOf(const Column& column, int side = Right);

/// A line of text in explicit colours. `textEdited` is a change by a person: typing, paste, cut,
/// undo, drop; setting by code is none. A block of cells that is pasted or dropped goes to the
/// table that the field belongs to. Enter, Down and Up move along the table's column. A text that
/// is too long shows its beginning but while it is being typed, and a tooltip holds it whole.
class Field : public QLineEdit {
    Q_OBJECT

  public:
    Field(QWidget* parent, const QString& name);

    /// The text without blanks around it, as bytes.
    std::string entry() const;
    /// General form: a blank stands where a minus would.
    void showNumber(double value);

    void setMeaning(const FieldMeaning& meaning);
    const FieldMeaning& meaning() const { return meaning_; }

    /// Makes the field the one of a table at `column` and `row`.
    void join(FieldTable& table, int column, int row);
    FieldTable* table() const { return table_; }
    int column() const { return column_; }
    int row() const { return row_; }

    /// What a person pastes or drops: one cell goes to the cursor, a block into the table.
    void pasteText(const QString& text);
    /// Replaces all of the text as a person's change that can be undone.
    void enter(const QString& text);
    /// Takes a block that was pasted into the table back, else the field's own last change.
    void undoChange();
    void redoChange();
    /// Copies the table from this field on, to the right and down to its last filled row.
    void copyBlock();

  signals:
    /// Something was not pasted; nothing was changed.
    void refused(const QString& why);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool moveOrEdit(QKeyEvent* event);
    void pasteClipboard();
    void pasteCell(const QString& text);
    void removeControlCharacters(const QString& text);
    bool isTooLong() const;
    void showBeginning();
    void textWasChanged();

    FieldMeaning meaning_;
    FieldTable* table_ = nullptr;
    int column_ = 0;
    int row_ = 0;
};

} // namespace korvane
