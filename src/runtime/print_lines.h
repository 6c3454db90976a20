// Lines of a report, built piece by piece with the columns of a line printer.
#pragma once

#include "runtime/number_format.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace korvane {

/// Collects finished lines and counts them. Columns count from 1.
class PrintLines {
  public:
    /// n blanks.
    PrintLines& spc(int n);
    /// Moves to `column` (below 1 counts as 1), on the next line when the present column is
    /// already beyond it; that line break counts as a line.
    PrintLines& tab(int column);
    /// Moves to the next print zone; zones are 14 columns wide.
    PrintLines& zone();
    PrintLines& text(std::string_view piece);
    /// A value in general form with its trailing blank.
    PrintLines& number(double value);
    /// Places a text so that its last character stands in `column` - 1.
    PrintLines& right(int column, std::string_view piece);
    /// Places a value through a format string so that it ends in `column` - 1.
    PrintLines& right(int column, double value, NumberFormat format) {
        return right(column, {}, value, format);
    }
    /// The same with a mark directly before the value.
    PrintLines& right(int column, std::string_view mark, double value, NumberFormat format);
    /// Ends the line.
    PrintLines& end();
    /// A whole line: `blanks` blanks and a text.
    PrintLines& line(int blanks, std::string_view piece);
    /// n empty lines.
    PrintLines& empty(int n = 1);

    /// The finished lines, each with its line feed.
    const std::string& content() const { return content_; }
    /// Number of finished lines.
    int lineCount() const { return lineCount_; }

  private:
    /// The unfinished line is `size` long from here on, with blanks where nothing was put.
    void reach(std::size_t size);

    std::string content_;
    std::string line_; ///< the unfinished line, blanks behind it
    std::size_t used_ = 0;
    int lineCount_ = 0;
};

} // namespace korvane
