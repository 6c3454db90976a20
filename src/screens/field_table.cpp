#include "screens/field_table.h"

#include <QLabel>

#include <algorithm>

namespace korvane {

CellBlock cellBlock(const QString& text) {
    QString lines = text;
    lines.replace("\r\n", "\n").replace('\r', '\n');
    if (lines.endsWith('\n')) { // a spreadsheet ends its last row too
        lines.chop(1);
    }
    std::vector<QStringList> rows;
    for (const QString& line : lines.split('\n')) {
        rows.push_back(line.split('\t'));
    }
    return CellBlock(std::move(rows));
}

int CellBlock::columns() const {
    qsizetype widest = 0;
    for (const QStringList& row : cells_) {
        widest = std::max(widest, row.size());
    }
    return static_cast<int>(widest);
}

QString CellBlock::cell(int row, int column) const {
    return cells_.at(static_cast<std::size_t>(row)).value(column);
}

int FieldTable::addColumn(QWidget* parent, const FieldColumn& spec) {
    if (!spec.label.isEmpty()) {
        makeLabel(parent, spec.labelName.isEmpty() ? spec.control + "_label" : spec.labelName,
                  spec.label,
                  {spec.left, spec.labelTop, spec.width, rows_.firstTop - spec.labelTop});
    }
    const int column = columnCount();
    std::vector<Field*> fields;
    for (int row = 1; row <= rows_.count; ++row) {
        const bool isArray = rows_.count > 1;
        auto* field = new Field(parent, isArray ? QString("%1_%2").arg(spec.control).arg(row - 1)
                                                : spec.control);
        place(field,
              {spec.left, rows_.firstTop + (row - 1) * rows_.pitch, spec.width, rows_.pitch});
        field->setAccessibleName(QString("%1, row %2").arg(spec.label.simplified()).arg(row));
        field->join(*this, column, row);
        fields.push_back(field);
    }
    columns_.push_back(std::move(fields));
    return column;
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

Field* FieldTable::field(int column, int row) const {
    return columns_.at(static_cast<std::size_t>(column)).at(static_cast<std::size_t>(row - 1));
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

void FieldTable::clear() {
    for (int row = 1; row <= rowCount(); ++row) {
        clearRow(row);
    }
}

void FieldTable::clearRow(int row) {
    for (int column = 0; column < columnCount(); ++column) {
        field(column, row)->setText({});
    }
}

int FieldTable::lastFilledRow(const std::vector<int>& columns) const {
    const auto isFilled = [&](int row) {
        if (columns.empty()) {
            return std::any_of(columns_.begin(), columns_.end(), [&](const auto& fields) {
                return !fields.at(static_cast<std::size_t>(row - 1))->entry().empty();
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

bool FieldTable::paste(const CellBlock& block, int column, int row) {
    std::vector<int> shown;
    for (int place = column; place < columnCount(); ++place) {
        if (field(place, row)->isVisible()) {
            shown.push_back(place);
        }
    }
    if (block.columns() > static_cast<int>(shown.size()) || row + block.rows() - 1 > rowCount()) {
        return false;
    }
    for (int down = 0; down < block.rows(); ++down) {
        for (int right = 0; right < block.columns(); ++right) {
            field(shown.at(static_cast<std::size_t>(right)), row + down)
                ->enter(block.cell(down, right));
        }
    }
    return true;
}

void FieldTable::whenEdited(QObject* receiver, const std::function<void()>& action) const {
    for (const auto& fields : columns_) {
        for (const Field* field : fields) {
            QObject::connect(field, &Field::textEdited, receiver, action);
        }
    }
}

} // namespace korvane
