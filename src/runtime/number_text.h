// Text as numbers, with the point as decimal separator; numbers as text come with it.
#pragma once

#include "runtime/number_format.h"

#include <string>
#include <string_view>

namespace korvane {

/// The numeric test: blanks around, an optional sign, digits with at most one point and at least
/// one digit, an optional exponent; nothing else, and nothing beyond the range of a double (what
/// is too small for one is zero and passes).
bool isNumeric(std::string_view text);

/// The value of a text that passes isNumeric; RuntimeError 13 where it does not.
double numericValue(std::string_view text);

/// The longest head of a text that passes isNumeric (leading blanks skipped); 0 where none does.
double valueAtHead(std::string_view text);

/// Upper case of the ASCII letters; all other bytes pass unchanged.
std::string upperCase(std::string_view text);

/// The text without the blanks at both ends.
std::string trimmed(std::string_view text);

} // namespace korvane
