#include "screens/field_table.h"

#include <QLabel>

#include <algorithm>

namespace korvane {

// ---- building
// ------------------------------------------------------------------------------------

int FieldTable::addColumn(QWidget* parent, const FieldColumn& spec) {
    MadeColumn made;
    made.spec = spec;
    const int column = columnCount();
    const bool isArray = rows_.count > 1;
    for (int row = 1; row <= rows_.count; ++row) {
        auto* field = new Field(parent, isArray ? QString("%1_%2").arg(spec.control).arg(row - 1)
                                                : spec.control);
        FieldMeaning meaning = spec.meaning;
        meaning.row = row;
        if (isArray) {
            meaning.name += QString(", %1 %2").arg(spec.rowWord).arg(row);
        }
        field->setMeaning(meaning);
        field->join(*this, column, row);
        QObject::connect(field, &Field::refused, field, [this](const QString& why) { tell(why); });
        QObject::connect(field, &Field::textEdited, field, [this] { tell({}); });
        made.fields.push_back(field);
    }
    if (!spec.label.isEmpty()) {
        made.label =
            makeLabel(parent, spec.labelName.isEmpty() ? spec.control + "_label" : spec.labelName,
                      spec.label, {});
        made.label->setBuddy(made.fields.front());
    }
    columns_.push_back(std::move(made));
    placeColumn(column, spec.left, spec.width);
    return column;
}

void FieldTable::placeColumn(int column, double left, double width) {
    MadeColumn& made = columns_.at(static_cast<std::size_t>(column));
    made.spec.left = left;
    made.spec.width = width;
    if (made.label != nullptr) {
        const double top = made.spec.labelTop;
        placeLabel(made.label, {left, top, width, rows_.firstTop - top});
    }
    double top = rows_.firstTop;
    for (Field* field : made.fields) {
        place(field, {left, top, width, rows_.pitch});
        top += rows_.pitch;
    }
}

void FieldTable::addRowNumbers(QWidget* parent, double left, double width) {
    for (int row = 1; row <= rows_.count; ++row) {
        QLabel* label =
            makeLabel(parent, {}, QString::number(row),
                      {left, rows_.firstTop + (row - 1) * rows_.pitch, width, rows_.pitch});
        label->setAlignment(Qt::AlignCenter);
        label->setWordWrap(false);
    }
}

void FieldTable::addNotice(QWidget* parent, const QString& name, const Place& where) {
    notice_ = makeLabel(parent, name, {}, where, LabelSide::Beside);
    paintGround(notice_, WarningGround, RequiredColour);
    notice_->hide();
}

void FieldTable::placeNotice(const Place& where) {
    placeLabel(notice_, where);
}

bool FieldTable::noticeIsSeen() const {
    return notice_ != nullptr && notice_->visibleRegion().boundingRect() == notice_->rect();
}

void FieldTable::tell(const QString& fault) {
    if (notice_ != nullptr) {
        notice_->setText(fault);
        notice_->setVisible(!fault.isEmpty());
    }
}

Field* FieldTable::field(int column, int row) const {
    return columns_.at(static_cast<std::size_t>(column))
        .fields.at(static_cast<std::size_t>(row - 1));
}

std::vector<QWidget*> FieldTable::focusOrder() const {
    std::vector<QWidget*> order;
    for (int row = 1; row <= rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            order.push_back(field(column, row));
        }
    }
    return order;
}

// ---- texts
// ---------------------------------------------------------------------------------------

void FieldTable::clear() {
    for (int row = 1; row <= rowCount(); ++row) {
        clearRow(row);
    }
    done_.clear();
    undone_.clear();
    tell({});
}

void FieldTable::clearRow(int row) {
    for (int column = 0; column < columnCount(); ++column) {
        field(column, row)->setText({});
    }
}

int FieldTable::lastFilledRow(const std::vector<int>& columns) const {
    const auto isFilled = [&](int row) {
        if (columns.empty()) {
            return std::any_of(columns_.begin(), columns_.end(), [&](const MadeColumn& column) {
                return !column.fields.at(static_cast<std::size_t>(row - 1))->entry().empty();
            });
        }
        return std::any_of(columns.begin(), columns.end(),
                           [&](int column) { return !entry(column, row).empty(); });
    };
    int row = rowCount();
    while (row > 0 && !isFilled(row)) {
        --row;
    }
    return row;
}

int FieldTable::filledRows(int column) const {
    int filled = 0;
    for (int row = 1; row <= rowCount(); ++row) {
        filled += entry(column, row).empty() ? 0 : 1;
    }
    return filled;
}

void FieldTable::moveFocus(int column, int row) {
    if (row >= 1 && row <= rowCount()) {
        field(column, row)->setFocus(Qt::TabFocusReason); // which selects the text
    }
}

void FieldTable::whenEdited(QObject* receiver, const std::function<void()>& action) const {
    for (const MadeColumn& column : columns_) {
        for (const Field* field : column.fields) {
            QObject::connect(field, &Field::textEdited, receiver, action);
        }
    }
}

// ---- blocks
// --------------------------------------------------------------------------------------

std::vector<int> FieldTable::shownColumns(int from, int row) const {
    std::vector<int> shown;
    for (int column = from; column < columnCount(); ++column) {
        if (field(column, row)->isVisible()) {
            shown.push_back(column);
        }
    }
    return shown;
}

QStringList FieldTable::texts() const {
    QStringList all;
    for (const MadeColumn& column : columns_) {
        for (const Field* field : column.fields) {
            all.append(field->text());
        }
    }
    return all;
}

QString FieldTable::textIn(const QStringList& texts, const Field& at) const {
    return texts.at(at.column() * rowCount() + at.row() - 1);
}

QString FieldTable::doesNotFit(const CellBlock& block) {
    return QString("A block of %1 by %2 cells does not fit here: nothing was pasted.")
        .arg(block.rows())
        .arg(block.columns());
}

QString FieldTable::hasComma(const QString& cell) {
    constexpr int longest = 20; // letters that are shown of it
    const QString shown = cell.trimmed();
    return QString("\"%1\" is no number with a decimal point: nothing was pasted.")
        .arg(shown.size() > longest ? shown.left(longest) + "..." : shown);
}

QString FieldTable::paste(const CellBlock& block, int column, int row) {
    const std::vector<int> shown = shownColumns(column, row);
    if (block.columns() > static_cast<int>(shown.size()) || row + block.rows() - 1 > rowCount()) {
        return doesNotFit(block);
    }
    Pasted pasted;
    for (int down = 0; down < block.rows(); ++down) {
        for (int right = 0; right < block.columns(); ++right) {
            Field* to = field(shown.at(static_cast<std::size_t>(right)), row + down);
            const QString cell = block.cell(down, right);
            const auto text = to->meaning().isText ? cell : plainNumber(cell);
            if (!text) {
                return hasComma(cell);
            }
            if (*text != to->text()) {
                pasted.changes.push_back({to, to->text(), *text});
            }
        }
    }
    pasted.before = texts();
    for (Change& change : pasted.changes) {
        change.field->enter(change.after);
        change.after = change.field->text(); // a control character has become a blank
    }
    pasted.after = texts();
    if (!pasted.changes.empty()) {
        done_.push_back(std::move(pasted));
        undone_.clear();
    }
    return {};
}

bool FieldTable::canUndoPaste(const Field& at) const {
    return !done_.empty() && at.text() == textIn(done_.back().after, at);
}

bool FieldTable::undoPaste(const Field& at) {
    if (!canUndoPaste(at)) {
        return false;
    }
    Pasted last = std::move(done_.back());
    done_.pop_back();
    for (const Change& change : last.changes) {
        if (change.field->text() != change.after) {
            continue;
        }
        change.field->undo();
        if (change.field->text() != change.before) {
            change.field->enter(change.before);
        }
    }
    undone_.push_back(std::move(last));
    return true;
}

bool FieldTable::redoPaste(const Field& at) {
    if (undone_.empty() || at.text() != textIn(undone_.back().before, at)) {
        return false;
    }
    Pasted last = std::move(undone_.back());
    undone_.pop_back();
    for (const Change& change : last.changes) {
        if (change.field->text() == change.before) {
            change.field->enter(change.after);
        }
    }
    done_.push_back(std::move(last));
    return true;
}

QString FieldTable::copy(int column, int row) const {
    const std::vector<int> shown = shownColumns(column, row);
    std::vector<QStringList> rows;
    for (int from = row; from <= lastFilledRow(shown); ++from) {
        QStringList cells;
        for (const int place : shown) {
            cells.append(field(place, from)->text().trimmed());
        }
        rows.push_back(cells);
    }
    return blockText(rows);
}

} // namespace korvane
