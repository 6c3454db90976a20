// One text field of the data entry.
#pragma once

#include <QLineEdit>

#include <string>

namespace korvane {

class FieldTable;

/// A line of text in explicit colours. `textEdited` is a change by a person: typing, paste, cut,
/// undo, drop; setting by code is none. A block of cells that is pasted or dropped goes to the
/// table that the field belongs to. Enter, Down and Up move along the table's column.
class Field : public QLineEdit {
    Q_OBJECT

  public:
    Field(QWidget* parent, const QString& name);

    /// The text without blanks around it, as bytes.
    std::string entry() const;
    /// General form: a blank stands where a minus would.
    void showNumber(double value);

    /// Makes the field the one of a table at `column` and `row`.
    void join(FieldTable& table, int column, int row);

    /// What a person pastes or drops: one cell goes to the cursor, a block into the table.
    void pasteText(const QString& text);
    /// Replaces all of the text as a person's change that can be undone.
    void enter(const QString& text);

  signals:
    /// A block did not fit; nothing was changed.
    void refused(const QString& why);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void pasteClipboard();
    void removeControlCharacters(const QString& text);

    FieldTable* table_ = nullptr;
    int column_ = 0;
    int row_ = 0;
};

} // namespace korvane
