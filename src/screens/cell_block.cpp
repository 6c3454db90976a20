#include "screens/cell_block.h"

#include <QRegularExpression>

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

QString blockText(const std::vector<QStringList>& rows) {
    QString text;
    for (const QStringList& row : rows) {
        text += row.join('\t') + '\n';
    }
    return text;
}

std::optional<QString> plainNumber(const QString& text) {
    static const QRegularExpression noBreakBlanks(
        "[\\x{00A0}\\x{2007}\\x{202F}\\x{2060}\\x{FEFF}]");
    static const QRegularExpression thousands(
        "^[+-]?[0-9]{1,3}(,[0-9]{3})+\\.[0-9]*([eE][+-]?[0-9]+)?$");
    QString plain = text;
    plain.remove(noBreakBlanks).replace(QChar(0x2212), '-');
    if (plain.contains(',')) {
        if (!thousands.match(plain.trimmed()).hasMatch()) {
            return std::nullopt;
        }
        plain.remove(',');
    }
    return plain;
}

} // namespace korvane
