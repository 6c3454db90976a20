// Numbers as text: through format strings and in general form, always with the point as decimal
// separator.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace korvane {

/// A format string such as "####0.00", "#0.00", "0.000E+00", "#####0." or "0", taken apart: "0"
/// always shows a digit, "#" one where needed, a point always shows. Literals are taken apart by
/// the compiler.
struct NumberFormat {
    std::int16_t forcedWhole = 0;    ///< digits before the point that always show
    std::int16_t decimals = 0;       ///< places behind the point
    std::int16_t forcedDecimals = 0; ///< of which always show
    bool point = false;              ///< the point is shown
    bool exponent = false;

    template <std::size_t N>
#if defined(__clang__) && __clang_major__ < 17
    constexpr // clang 14 hands the value of a consteval constructor over incomplete
#else
    consteval
#endif
        NumberFormat(const char (&text)[N])
        : NumberFormat(std::string_view(text, N - 1)) {
    }

    constexpr NumberFormat(std::string_view text) {
        for (const char c : text) {
            if (c == 'E') {
                exponent = true;
                break;
            }
            if (c == '.') {
                point = true;
            } else if (point) {
                ++decimals;
                forcedDecimals = c == '0' ? decimals : forcedDecimals;
            } else if (c == '0' || forcedWhole > 0) {
                ++forcedWhole;
            }
        }
    }
};

/// A value through a format: taken to 15 significant decimal digits, then rounded at the format's
/// last place, halves away from zero. What rounds to zero has no minus sign; a value wider than the
/// format shows all its digits. RuntimeError 6 where the value is not finite.
std::string formatNumber(double value, NumberFormat format);

/// The same behind a text, which stays as it is where the value is not finite.
void appendNumber(std::string& text, double value, NumberFormat format);

/// Puts a mark and the text of formatNumber at the end of a room and gives both; what stands before
/// them stays. Puts and gives nothing where that may need more room than there is, or where the
/// number is rounded by all its digits: formatNumber tells it.
std::string_view putNumberLast(std::span<char> room, std::string_view mark, double value,
                               NumberFormat format);

/// Puts a mark and a value to one decimal, halves away from zero, at the end of a room: "12.3",
/// "-0.5", "12" where the decimal is zero. Nothing where that may need more room than there is, for
/// values of 1E8 and more in size, or where all digits decide how the number is rounded.
std::string_view putTenthsLast(std::span<char> room, std::string_view mark, double value);

/// General form as composed into a text: the shortest digits that read back to the same double,
/// with a blank where a minus would stand and no trailing blank: " 12.5", "-3", " 1.5E-07".
/// Plain from 1E-4 to below 1E15 in size, exponent form beyond. RuntimeError 6 if not finite.
std::string generalForm(double value);

/// The same behind a text, which stays as it is where the value is not finite.
void appendGeneralForm(std::string& text, double value);

/// The shortest digits that read back to the same double, plain from 1E-4 to below 1E15 in size,
/// else with an exponent of at least two digits: "-12.5", "3", "1.5e-07". The value is finite.
void appendShortest(std::string& text, double value);

} // namespace korvane
