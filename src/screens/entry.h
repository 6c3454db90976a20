// What a field holds: where its number goes, and the words for what it takes.
#pragma once

#include "problem/fields.h"
#include "state/message_box.h"

#include <string>

namespace korvane {

enum class IfEmpty { Missing, Invalid, Zero };
enum class Fault { None, Missing, Invalid };

/// One field of a row, or a field by itself. What it takes are the limits of screens for the number
/// of the record.
struct Column {
    const char* control;
    const char* label;
    const char* name; ///< label, what the label leaves to its group, and unit, for one who hears it
    ProblemField field;
    /// The limits in words, where they hang on other numbers or have boxes of their own.
    const char* limits = nullptr;
    IfEmpty ifEmpty = IfEmpty::Missing;
    const char* emptyWords = nullptr; ///< what an empty field means, where it is not 0

    double value(const Problem& problem, int side, int row) const {
        return rulesOf(field).value(problem, side, row);
    }
};

/// The limits of a field in words, and what it means to leave the field empty.
std::string limitWords(const Column& column);

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
