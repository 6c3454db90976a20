// Cells as a spreadsheet hands them over, and its numbers as plain ones.
#pragma once

#include <QStringList>

#include <optional>
#include <vector>

namespace korvane {

/// Rows parted by line ends, cells by tabs.
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

/// The block as such a text, each row with its line end.
QString blockText(const std::vector<QStringList>& rows);

/// A pasted number without what other programs put into it: no-break blanks, a Unicode minus,
/// commas between thousands before a point ("1,234.5"). Nothing where another comma stands in it:
/// "1,5" could be one and a half or fifteen. A text that is no number passes as it is.
std::optional<QString> plainNumber(const QString& text);

} // namespace korvane
