// The rows of a study as comma-separated values.
#pragma once

#include <string>

namespace korvane::study {

/// Writes the table of variants of DIR/NAME.sqlite to DIR/NAME.csv as RFC 4180 has it: a line of
/// the columns' names, lines that end in CR LF, cells with commas or quotation marks in quotation
/// marks, nothing as an empty cell, the point as decimal separator in every locale. Written beside
/// and renamed, without holding all rows in memory. A fault (full disk) is thrown as StoreFault and
/// leaves the file that was there.
void writeCsv(const std::string& folder, const std::string& fileName);

} // namespace korvane::study
