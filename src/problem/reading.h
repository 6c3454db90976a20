// What the sections of an input file share while they are read: tests of lines, words and numbers.
// Each step answers whether the reading goes on; the step that ends it leaves its message.
#pragma once

#include "problem/counts.h"
#include "problem/input_lines.h"
#include "problem/input_reader.h"
#include "problem/problem.h"

#include <string>
#include <string_view>

namespace korvane {

/// One reading of one file.
struct Reading {
    Problem& problem;
    InputLines input;
    std::string InputFileName;
    std::string SectionName; ///< for the messages
    ReadResult result;
    InputFault fault;                  ///< the place of the message
    UnitSystem units = UnitSystem::US; ///< of the file's numbers
    FileNumbers* numbers = nullptr;    ///< takes where they stand
    std::vector<ReadRemark>* remarks = nullptr;
};

/// What a number or word is read into.
struct Place {
    const char* field; ///< as in JSON
    int side = 0;      ///< 0 where the field has no sides
    int index = 0;     ///< 0 where the field is no list
    Quantity quantity = Quantity::Number;
};

/// Ends the reading with the message of a faulty word in `SectionName`, which must be `needed`.
/// Always false.
bool refuseWord(Reading& reading, int token, const Place& place, const std::string& needed);
/// The same for the whole line; `field` is the section unless it is given.
bool refuseLine(Reading& reading, const std::string& needed, const std::string& field = "");
/// Ends the reading with a message of its own under "INPUT DATA ERRORS". Always false.
bool refuse(Reading& reading, const std::string& text, const std::string& needed,
            const std::string& field);
/// Ends the reading with the message of a file that stops before its end line. Always false.
bool refuseIncomplete(Reading& reading);

/// Adds a remark on the current line, where somebody asks for them.
void remark(Reading& reading, ReadRemark::Kind kind, int side = 0, int layer = 0);

/// The next significant line, or the message of the incomplete file.
bool nextLine(Reading& reading);
/// The next significant line, which must have tokens 1 to `needed`.
bool nextLine(Reading& reading, int needed);
/// The current line must have tokens 1 to `needed`.
bool needTokens(Reading& reading, int needed);

/// True where the current line begins with `beginning`. Ends no reading.
bool beginsWith(const Reading& reading, std::string_view beginning);
/// The current line must begin so.
bool keyword(Reading& reading, std::string_view beginning);

/// The first letter of a token. Ends no reading; RuntimeError 5 where the token does not exist.
char firstLetter(const Reading& reading, int token);

/// The first letter of a token, which must be one of `letters`, else 0.
char letterAmong(Reading& reading, int token, const Place& place, std::string_view letters);
/// Stores the choice that the first letter of a token names.
template <class Choice>
bool choice(Reading& reading, int token, const Place& place, Choice& to) {
    const char letter = letterAmong(reading, token, place, lettersOf<Choice>);
    if (letter != '\0') {
        to = static_cast<Choice>(letter);
    }
    return letter != '\0';
}
/// Stores a numeric token, converted from the file's units, within its limits; what is then beyond
/// the range of a double is no number. RuntimeError 5 where the token does not exist.
bool number(Reading& reading, int token, const Place& place, double& to,
            const Limits& limits = anyValue);
/// Stores a numeric token in a field, within the limits that files have.
bool number(Reading& reading, int token, ProblemField field, int side = Right, int row = 1);
/// The same, with 0 where the token does not exist.
bool optionalNumber(Reading& reading, int token, ProblemField field, int side = Right, int row = 1);
/// Stores a numeric token as the nearest whole number (halves to the even one), within the limits
/// that files have.
bool count(Reading& reading, int token, ProblemCount which, int side = Right);

/// Side of a line. "B" (both) is read as the right side and then copied to the left one.
struct SideWord {
    int side = Right;
    bool both = false;
};

/// Stores the side of a line. A side may be given once: its count must still be 0, for "B" both.
/// `rightFirst` refuses "L" before the right side is there.
bool sideWord(Reading& reading, int token, ProblemCount which, bool rightFirst, SideWord& to);

/// Copies the first `entries` of a list from the right side to the left one.
template <class T, int N>
void copyToLeft(Array<T, 2, N>& list, int entries) {
    for (int i = 1; i <= entries; ++i) {
        list(Left, i) = list(Right, i);
    }
}
template <class T>
void copyToLeft(Array<T, 2>& value) {
    value(Left) = value(Right);
}

} // namespace korvane
