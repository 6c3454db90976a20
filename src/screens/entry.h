// What a field holds: where its number goes and which test it must pass.
#pragma once

#include "problem/fields.h"
#include "state/message_box.h"

#include <string>

namespace korvane {

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

enum class IfEmpty { Missing, Invalid, Zero };
enum class Fault { None, Missing, Invalid };

/// One field of a row, or a field by itself, with the limits that screens have.
struct Column {
    const char* control;
    const char* label;
    ProblemField field;
    IfEmpty ifEmpty = IfEmpty::Missing;

    double valueIn(const Problem& problem, int side, int row) const {
        return rulesOf(field).value(problem, side, row);
    }
};

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

MessageBox okCancelBox(const std::string& title, const std::string& text);

} // namespace korvane
