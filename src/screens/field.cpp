#include "screens/field.h"

#include "runtime/number_text.h"
#include "screens/field_table.h"
#include "widgets/shown_text.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPalette>

#include <algorithm>
#include <memory>

namespace korvane {

namespace {

bool isControlCharacter(QChar c) {
    return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
           c.category() == QChar::Separator_Paragraph;
}

void paintField(QLineEdit* field) {
    QPalette colours = field->palette();
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::Text, Qt::black);
    colours.setColor(QPalette::Disabled, QPalette::Base, QColor(224, 224, 224));
    colours.setColor(QPalette::Disabled, QPalette::Text, QColor(96, 96, 96));
    field->setPalette(colours);
}

} // namespace

Field::Field(QWidget* parent, const QString& name) : QLineEdit(parent) {
    setObjectName(name);
    paintField(this);
    connect(this, &QLineEdit::textEdited, this, &Field::removeControlCharacters);
}

std::string Field::entry() const {
    return trimmed(bytesOf(text()));
}

void Field::showNumber(double value) {
    setText(shownText(generalForm(value)));
}

void Field::join(FieldTable& table, int column, int row) {
    table_ = &table;
    column_ = column;
    row_ = row;
}

void Field::enter(const QString& newText) {
    selectAll();
    insert(newText);
}

/// A line of text holds no line ends and the like, wherever it came from.
void Field::removeControlCharacters(const QString& text) {
    if (std::none_of(text.begin(), text.end(), isControlCharacter)) {
        return;
    }
    QString clean = text;
    std::replace_if(clean.begin(), clean.end(), isControlCharacter, QChar(' '));
    const int cursor = cursorPosition();
    setText(clean);
    setCursorPosition(cursor);
}

void Field::pasteText(const QString& text) {
    const CellBlock block = cellBlock(text);
    if (block.isSingle()) {
        insert(block.cell(0, 0));
        return;
    }
    if (table_ == nullptr || !table_->paste(block, column_, row_)) {
        emit refused(QString("A block of %1 by %2 cells does not fit here: nothing was pasted.")
                         .arg(block.rows())
                         .arg(block.columns()));
    }
}

void Field::pasteClipboard() {
    pasteText(QGuiApplication::clipboard()->text());
}

void Field::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        pasteClipboard();
        event->accept();
        return;
    }
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    int step = 0;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        step = 1;
        break;
    case Qt::Key_Up:
        step = -1;
        break;
    default:
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (plain && table_ != nullptr) {
        table_->moveFocus(column_, row_ + step);
    }
    event->accept();
}

void Field::contextMenuEvent(QContextMenuEvent* event) {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    const QString key = QKeySequence(QKeySequence::Paste).toString(QKeySequence::NativeText);
    for (QAction* action : menu->actions()) {
        if (action->text().endsWith("\t" + key)) { // its paste knows nothing of blocks
            disconnect(action, nullptr, this, nullptr);
            connect(action, &QAction::triggered, this, &Field::pasteClipboard);
        }
    }
    menu->exec(event->globalPos());
}

void Field::dropEvent(QDropEvent* event) {
    const QString text = event->mimeData()->text();
    if (cellBlock(text).isSingle()) {
        QLineEdit::dropEvent(event);
        return;
    }
    pasteText(text);
    event->setDropAction(Qt::CopyAction); // the source keeps its cells
    event->accept();
}

/// Where the desktop pastes what is selected by the middle button, a block may come that way too.
void Field::mouseReleaseEvent(QMouseEvent* event) {
    const QClipboard* clipboard = QGuiApplication::clipboard();
    if (event->button() != Qt::MiddleButton || !clipboard->supportsSelection()) {
        QLineEdit::mouseReleaseEvent(event);
        return;
    }
    deselect();
    pasteText(clipboard->text(QClipboard::Selection));
    event->accept();
}

} // namespace korvane
