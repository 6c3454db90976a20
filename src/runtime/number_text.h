// Numbers as text and text as numbers, always with the point as decimal separator.
#pragma once

#include <string>
#include <string_view>

namespace korvane {

/// A value through a format string such as "####0.00", "#0.00", "0.000E+00", "#####0." or "0":
/// taken to 15 significant decimal digits, then rounded at the format's last place, halves away
/// from zero. "0" always shows a digit, "#" one where needed, a point in the format always shows;
/// what rounds to zero has no minus sign; a value wider than the format shows all its digits.
/// RuntimeError 6 where the value is not finite.
std::string formatNumber(double value, std::string_view format);

/// General form as composed into a text: the shortest digits that read back to the same double,
/// with a blank where a minus would stand and no trailing blank: " 12.5", "-3", " 1.5E-07".
/// Plain from 1E-4 to below 1E15 in size, exponent form beyond. RuntimeError 6 if not finite.
std::string generalForm(double value);

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
