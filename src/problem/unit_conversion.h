// Problems and input files in other units.
#pragma once

#include "problem/input_reader.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

/// Most significant digits of a number in a metric file.
inline constexpr int MetricDigits = 10;

/// The problem with every number as it is told in a system of units. Only for writing: no other
/// part of the system takes metric numbers.
Problem problemInUnits(const Problem& problem, UnitSystem system);

/// The same with at most 10 significant digits, as metric files hold: 9.81 kN/m3 that was read
/// comes back as 9.81.
Problem problemForFile(const Problem& problem, UnitSystem system);

/// A number with at most `digits` significant decimal digits, in the general form of input files
/// without its leading blank.
std::string roundedText(double value, int digits);

/// The text of a number that is told in one system in the other one: 10 significant digits in SI
/// units; in US units the fewest digits that lead back to the metric number, 15 at most. So there
/// and back gives the same number, in US units where it had no more than 9 digits. What has no
/// other unit stays as it is; empty where the other system has no double for it.
std::string convertedNumber(Quantity quantity, std::string_view text, UnitSystem from,
                            UnitSystem to);

/// The text of an input file in other units. Comments, headings, words, blanks and line ends stay;
/// the line "UNITS SI" comes before the first line that is no comment, or goes. `read` tells which
/// numbers the file has; it must be what the reader gave for this very text.
std::string convertedInput(std::string_view fileText, const FileNumbers& read, UnitSystem to);

/// A number of a file that the file in other units does not give back.
struct RoundedNumber {
    std::size_t line = 0; ///< from 1
    std::string text;     ///< as typed
    std::string told;     ///< in the other units; empty where they have no double for it
};
std::vector<RoundedNumber> roundedNumbers(std::string_view fileText, const FileNumbers& read,
                                          UnitSystem to);

/// Numbers behind the last one that the reader takes from a line: they are ignored, and stay as
/// they are where a file is converted.
struct IgnoredNumbers {
    std::size_t line = 0; ///< from 1
    std::string text;     ///< of the line's end, from the first such number on
};
std::vector<IgnoredNumbers> ignoredNumbers(std::string_view fileText, const FileNumbers& read);

} // namespace korvane
