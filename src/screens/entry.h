// What a field holds: where its number goes and which test it must pass.
#pragma once

#include "problem/problem.h"
#include "state/message_box.h"

#include <string>

namespace korvane {

// ---- fields of the record by side and row
// --------------------------------------------------------

inline double& numberIn(double& value, int, int) {
    return value;
}
inline double& numberIn(Array<double, 2>& sides, int side, int) {
    return sides(side);
}
template <int Rows>
double& numberIn(Array<double, Rows>& list, int, int row) {
    return list(row);
}
template <int Rows>
double& numberIn(Array<double, 2, Rows>& list, int side, int row) {
    return list(side, row);
}

/// The number of a side and row, whatever of the two the field of the record has.
using NumberAt = double& (*)(Problem&, int side, int row);
template <auto Member>
double& numberAt(Problem& problem, int side, int row) {
    return numberIn(problem.*Member, side, row);
}

inline int& countIn(int& count, int) {
    return count;
}
inline int& countIn(Array<int, 2>& counts, int side) {
    return counts(side);
}

/// The count of a side, or the one count of a section without sides.
using CountAt = int& (*)(Problem&, int side);
template <auto Member>
int& countAt(Problem& problem, int side) {
    return countIn(problem.*Member, side);
}

// ---- tests
// ---------------------------------------------------------------------------------------

/// A number as typed, before it is stored; what was read before it stands in the record already.
struct Entry {
    const Problem& problem;
    int side;
    int row;
    double value;
};

/// A test and the words in which the screen tells it.
struct Test {
    bool (*holds)(const Entry&);
    const char* words;
};
inline constexpr Test anyNumber{[](const Entry&) { return true; }, "any number"};
inline constexpr Test aboveZero{[](const Entry& entry) { return entry.value > 0; }, "above 0"};
inline constexpr Test notNegative{[](const Entry& entry) { return entry.value >= 0; },
                                  "not below 0"};

enum class IfEmpty { Missing, Invalid, Zero };
enum class Fault { None, Missing, Invalid };

/// One field of a row, or a field by itself.
struct Column {
    const char* control;
    const char* label;
    const char* name; ///< label, what the label leaves to its group, and unit, for one who hears it
    NumberAt number;
    Test test = anyNumber;
    IfEmpty ifEmpty = IfEmpty::Missing;
    const char* emptyWords = nullptr; ///< what an empty field means, where it is not 0
};

/// The limits of a field in words: its test, and what it means to leave the field empty.
std::string limitsOf(const Column& column);

/// Reads a trimmed text: a number that passes its test is stored at once.
Fault readEntry(const std::string& text, const Column& column, Problem& problem, int side = Right,
                int row = 1);

// ---- boxes
// ---------------------------------------------------------------------------------------

/// First lines of most boxes.
inline constexpr const char* ValueMissing = "At least one required data value is missing.";
inline constexpr const char* ValueInvalid = "At least one data value is invalid.";

/// Title and first line of a box with OK and Cancel.
struct BoxText {
    const char* title;
    const char* text;
};

/// A box whose Cancel deletes what was entered.
MessageBox okCancelBox(const std::string& title, const std::string& text);

} // namespace korvane
