#include "screens/field.h"

#include "runtime/number_text.h"
#include "screens/field_table.h"
#include "widgets/menu_keys.h"
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
#include <QStyleOptionFrame>

#include <algorithm>
#include <memory>

namespace korvane {

namespace {

bool isControlCharacter(QChar c) {
    return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
           c.category() == QChar::Separator_Paragraph;
}

QString withoutControlCharacters(QString text) {
    std::replace_if(text.begin(), text.end(), isControlCharacter, QChar(' '));
    return text;
}

void paintField(QLineEdit* field) {
    QPalette colours = field->palette();
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::Text, Qt::black);
    colours.setColor(QPalette::Disabled, QPalette::Base, QColor(224, 224, 224));
    colours.setColor(QPalette::Disabled, QPalette::Text, QColor(96, 96, 96));
    field->setPalette(colours);
}

QString keyText(const QKeySequence& key) {
    return "\t" + key.toString(QKeySequence::NativeText);
}

const QKeySequence copyBlockKey(Qt::CTRL | Qt::SHIFT | Qt::Key_C);

} // namespace

FieldMeaning meaningOf(const Column& column, int side) {
    return {.name = column.name,
            .limits = QString::fromStdString(limitWords(column)),
            .number = column.field,
            .side = side};
}

Field::Field(QWidget* parent, const QString& name) : QLineEdit(parent) {
    setObjectName(name);
    paintField(this);
    connect(this, &QLineEdit::textEdited, this, &Field::removeControlCharacters);
    connect(this, &QLineEdit::textChanged, this, &Field::textWasChanged);
}

std::string Field::entry() const {
    return trimmed(bytesOf(text()));
}

void Field::showNumber(double value) {
    setText(shownText(generalForm(value)));
    showBeginning();
}

void Field::setMeaning(const FieldMeaning& meaning) {
    meaning_ = meaning;
    setAccessibleName(meaning.name);
    setAccessibleDescription(meaning.limits);
}

void Field::join(FieldTable& table, int column, int row) {
    table_ = &table;
    column_ = column;
    row_ = row;
}

// ---- long texts
// ----------------------------------------------------------------------------------

bool Field::isTooLong() const {
    QStyleOptionFrame option;
    initStyleOption(&option);
    constexpr int margin = 3; // of the toolkit on either side, and the cursor
    const int room = style()->subElementRect(QStyle::SE_LineEditContents, &option, this).width();
    return fontMetrics().horizontalAdvance(text()) > room - 2 * margin;
}

void Field::showBeginning() {
    if (cursorPosition() != 0) {
        setCursorPosition(0);
    }
}

void Field::textWasChanged() {
    setToolTip(isTooLong() ? text().trimmed() : QString());
    if (window()->focusWidget() != this) { // nobody types here
        showBeginning();
    }
}

void Field::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    textWasChanged();
}

void Field::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (selectedText() == text() && isTooLong()) { // the cursor goes to the end of a selection
        const int length = static_cast<int>(text().size());
        setSelection(length, -length);
    }
}

void Field::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    const bool comesBack = event->reason() == Qt::PopupFocusReason ||
                           (event->reason() == Qt::ActiveWindowFocusReason && !isTooLong());
    if (!comesBack) {
        showBeginning();
    }
}

// ---- changes
// -------------------------------------------------------------------------------------

void Field::enter(const QString& newText) {
    selectAll();
    insert(newText);
    showBeginning();
}

/// A line of text holds no line ends and the like, wherever it came from.
void Field::removeControlCharacters(const QString& text) {
    if (std::none_of(text.begin(), text.end(), isControlCharacter)) {
        return;
    }
    const int cursor = cursorPosition();
    setText(withoutControlCharacters(text));
    setCursorPosition(cursor);
}

void Field::undoChange() {
    if (table_ == nullptr || !table_->undoPaste(*this)) {
        undo();
    }
}

void Field::redoChange() {
    if (table_ == nullptr || !table_->redoPaste(*this)) {
        redo();
    }
}

void Field::copyBlock() {
    if (table_ != nullptr) {
        if (const QString block = table_->copy(column_, row_); !block.isEmpty()) {
            QGuiApplication::clipboard()->setText(block);
        }
    }
}

void Field::pasteText(const QString& text) {
    const CellBlock block = cellBlock(text);
    if (block.isSingle()) {
        pasteCell(block.cell(0, 0));
        return;
    }
    const QString fault =
        table_ != nullptr ? table_->paste(block, column_, row_) : FieldTable::doesNotFit(block);
    if (!fault.isEmpty()) {
        emit refused(fault);
    }
}

void Field::pasteCell(const QString& text) {
    const auto cell = meaning_.isText ? text : plainNumber(text);
    if (!cell) {
        emit refused(FieldTable::hasComma(text));
        return;
    }
    insert(withoutControlCharacters(*cell));
    if (isTooLong()) {
        showBeginning();
    }
}

void Field::pasteClipboard() {
    pasteText(QGuiApplication::clipboard()->text());
}

// ---- keys and mouse
// ------------------------------------------------------------------------------

void Field::keyPressEvent(QKeyEvent* event) {
    if (isAltLetter(*event)) {
        event->ignore(); // another may know the key
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        pasteClipboard();
    } else if (event->matches(QKeySequence::Undo)) {
        undoChange();
    } else if (event->matches(QKeySequence::Redo)) {
        redoChange();
    } else if (QKeySequence(event->keyCombination()) == copyBlockKey) {
        copyBlock();
    } else if (!moveOrEdit(event)) {
        return;
    }
    event->accept();
}

/// True for a key that moves along the column.
bool Field::moveOrEdit(QKeyEvent* event) {
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
        return false;
    }
    if (plain && table_ != nullptr) {
        table_->moveFocus(column_, row_ + step);
    }
    return true;
}

void Field::contextMenuEvent(QContextMenuEvent* event) {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    // What the toolkit's entries do knows nothing of blocks.
    const std::pair<QKeySequence::StandardKey, void (Field::*)()> own[] = {
        {QKeySequence::Undo, &Field::undoChange},
        {QKeySequence::Redo, &Field::redoChange},
        {QKeySequence::Paste, &Field::pasteClipboard},
    };
    for (QAction* action : menu->actions()) {
        for (const auto& [key, body] : own) {
            if (action->text().endsWith(keyText(key))) {
                disconnect(action, nullptr, this, nullptr);
                connect(action, &QAction::triggered, this, body);
                action->setEnabled(action->isEnabled() ||
                                   (key == QKeySequence::Undo && table_ != nullptr &&
                                    table_->canUndoPaste(*this)));
            }
        }
    }
    if (table_ != nullptr && table_->rowCount() > 1) {
        menu->addSeparator();
        QAction* copy = menu->addAction("Copy &Block" + keyText(copyBlockKey));
        copy->setObjectName("copyBlock");
        connect(copy, &QAction::triggered, this, &Field::copyBlock);
    }
    menu->exec(event->globalPos());
}

void Field::dropEvent(QDropEvent* event) {
    const QString text = event->mimeData()->text();
    if (cellBlock(text).isSingle() && (meaning_.isText || plainNumber(text) == text)) {
        QLineEdit::dropEvent(event);
        return;
    }
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
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
