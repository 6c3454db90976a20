#include "runtime/number_text.h"

#include "runtime/arithmetic.h"
#include "runtime/runtime_error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>
#include <system_error>

namespace korvane {

namespace {

/// A size as decimal digits: 0.d1d2d3... times 10 to the power of `point`; zero has no digits.
struct Decimal {
    std::string digits; ///< without leading and trailing zeros
    int point = 0;      ///< number of digits before the decimal point, negative for 0.00d1...
};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The digits of a text in scientific form, "d.ddde+xx".
Decimal decimalOf(std::string_view scientific) {
    const std::size_t mark = scientific.find('e');
    Decimal decimal;
    for (const char c : scientific.substr(0, mark)) {
        if (isDigit(c)) {
            decimal.digits += c;
        }
    }
    decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
    if (!decimal.digits.empty()) {
        const bool negative = scientific[mark + 1] == '-';
        int exponent = 0;
        std::from_chars(scientific.data() + mark + 2, scientific.data() + scientific.size(),
                        exponent);
        decimal.point = (negative ? -exponent : exponent) + 1;
    }
    return decimal;
}

/// The size of a value to 15 significant digits.
Decimal fifteenDigits(double value) {
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                   std::fabs(finite(value)), std::chars_format::scientific, 14);
    return decimalOf(
        std::string_view(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data())));
}

/// The fewest digits that read back to the same double.
Decimal shortestDigits(double value) {
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                   std::fabs(finite(value)), std::chars_format::scientific);
    return decimalOf(
        std::string_view(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data())));
}

/// Keeps `kept` digits, halves away from zero; a negative count leaves zero.
void roundTo(Decimal& decimal, int kept) {
    if (kept < 0) {
        decimal = {};
        return;
    }
    const auto count = static_cast<std::size_t>(kept);
    if (count >= decimal.digits.size()) {
        return;
    }
    const bool up = decimal.digits[count] >= '5';
    decimal.digits.resize(count);
    if (up) {
        std::size_t i = count;
        while (i > 0 && decimal.digits[i - 1] == '9') {
            --i;
        }
        decimal.digits.resize(i);
        if (i > 0) {
            ++decimal.digits[i - 1];
        } else {
            decimal.digits = "1";
            ++decimal.point;
        }
    }
    decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
    if (decimal.digits.empty()) {
        decimal.point = 0;
    }
}

/// The digit of the place 10 to the power of `place`.
char digitAt(const Decimal& decimal, int place) {
    const int index = decimal.point - 1 - place;
    return index >= 0 && index < static_cast<int>(decimal.digits.size())
               ? decimal.digits[static_cast<std::size_t>(index)]
               : '0';
}

std::string exponentText(int exponent) {
    std::string digits = std::to_string(std::abs(exponent));
    digits.insert(0, digits.size() < 2 ? 2 - digits.size() : 0, '0');
    return (exponent < 0 ? "E-" : "E+") + digits;
}

/// The places of a format: "0" forces a digit, "#" shows one where needed.
struct Places {
    int forcedWhole = 0;
    bool point = false;
    int decimals = 0;
    int forcedDecimals = 0;
    bool exponent = false;
};

Places placesOf(std::string_view format) {
    Places places;
    for (const char c : format) {
        if (c == 'E') {
            places.exponent = true;
            break;
        }
        if (c == '.') {
            places.point = true;
        } else if (places.point) {
            ++places.decimals;
            if (c == '0') {
                places.forcedDecimals = places.decimals;
            }
        } else if (c == '0' || places.forcedWhole > 0) {
            ++places.forcedWhole;
        }
    }
    return places;
}

/// The digits of a rounded size, plain, through the places.
std::string plainText(const Decimal& decimal, const Places& places) {
    std::string text;
    for (int place = std::max(places.forcedWhole, decimal.point) - 1; place >= 0; --place) {
        text += digitAt(decimal, place);
    }
    if (places.point) {
        text += '.';
        const int needed =
            std::min(places.decimals, static_cast<int>(decimal.digits.size()) - decimal.point);
        for (int i = 1; i <= std::max(places.forcedDecimals, needed); ++i) {
            text += digitAt(decimal, -i);
        }
    }
    return text;
}

/// The length of the number at the head of a text that starts without blanks; 0 where none is.
std::size_t numberLength(std::string_view text) {
    std::size_t i = 0;
    const auto at = [&text](std::size_t k) { return k < text.size() ? text[k] : '\0'; };
    const auto isSign = [](char c) { return c == '+' || c == '-'; };
    if (isSign(at(i))) {
        ++i;
    }
    bool digits = false;
    for (bool point = false; isDigit(at(i)) || (at(i) == '.' && !point); ++i) {
        (at(i) == '.' ? point : digits) = true;
    }
    if (!digits) {
        return 0;
    }
    if (at(i) == 'E' || at(i) == 'e') {
        std::size_t k = i + 1;
        if (isSign(at(k))) {
            ++k;
        }
        if (isDigit(at(k))) {
            while (isDigit(at(k))) {
                ++k;
            }
            i = k;
        }
    }
    return i;
}

/// True where a number out of the range of a double is so because it is small.
bool isTiny(std::string_view number) {
    constexpr long far = 1'000'000'000;
    const std::size_t mark = std::min(number.find_first_of("Ee"), number.size());
    const std::string_view mantissa = number.substr(0, mark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_of("123456789"), mantissa.size());
    long magnitude = static_cast<long>(point) - static_cast<long>(first);
    if (mark < number.size()) {
        std::string_view exponent = number.substr(mark + 1);
        const bool negative = exponent.front() == '-';
        exponent.remove_prefix(negative || exponent.front() == '+' ? 1 : 0);
        long size = 0;
        const auto result =
            std::from_chars(exponent.data(), exponent.data() + exponent.size(), size);
        size = result.ec == std::errc{} ? std::min(size, far) : far;
        magnitude += negative ? -size : size;
    }
    return magnitude < 0;
}

/// The value of a text that is a number throughout; none beyond the range of a double. What is too
/// small for a double is zero.
std::optional<double> parsed(std::string_view number) {
    if (!number.empty() && number.front() == '+') {
        number.remove_prefix(1);
    }
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return isTiny(number) ? std::optional<double>(0.0) : std::nullopt;
    }
    return value;
}

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

constexpr const char* anyDigit = "0123456789";

/// Length of the longest head of a number that is within the range of a double, of those with
/// `shortest` to `longest` characters: numbers that only grow with their length. 0 if none is.
std::size_t longestInRange(std::string_view number, std::size_t shortest, std::size_t longest) {
    if (!parsed(number.substr(0, shortest))) {
        return 0;
    }
    while (shortest < longest) {
        const std::size_t middle = longest - (longest - shortest) / 2;
        if (parsed(number.substr(0, middle))) {
            shortest = middle;
        } else {
            longest = middle - 1;
        }
    }
    return shortest;
}

/// The value of a text that passes the numeric test.
std::optional<double> valueOf(std::string_view text) {
    const std::string_view number = withoutBlanks(text);
    if (number.empty() || numberLength(number) != number.size()) {
        return std::nullopt;
    }
    return parsed(number);
}

} // namespace

std::string formatNumber(double value, std::string_view format) {
    const Places places = placesOf(format);
    Decimal decimal = fifteenDigits(value);
    std::string text;
    if (places.exponent) {
        roundTo(decimal, 1 + places.decimals);
        const int exponent = decimal.digits.empty() ? 0 : decimal.point - 1;
        decimal.point = 1;
        text = plainText(decimal, places) + exponentText(exponent);
    } else {
        roundTo(decimal, decimal.point + places.decimals);
        text = plainText(decimal, places);
    }
    const bool minus = value < 0 && !decimal.digits.empty();
    return minus ? "-" + text : text;
}

std::string generalForm(double value) {
    Decimal decimal = shortestDigits(value);
    const std::string sign = value < 0 ? "-" : " ";
    const int exponent = decimal.point - 1;
    const bool plain = decimal.digits.empty() || (exponent >= -4 && exponent < 15);
    if (!plain) {
        decimal.point = 1;
    }
    Places places;
    places.forcedWhole = 1;
    places.decimals = std::max(static_cast<int>(decimal.digits.size()) - decimal.point, 0);
    places.point = places.decimals > 0;
    return sign + plainText(decimal, places) + (plain ? "" : exponentText(exponent));
}

bool isNumeric(std::string_view text) {
    return valueOf(text).has_value();
}

double numericValue(std::string_view text) {
    const std::optional<double> value = valueOf(text);
    if (!value) {
        throw RuntimeError(13);
    }
    return *value;
}

double valueAtHead(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::string_view number = text.substr(0, numberLength(text));
    if (number.empty()) {
        return 0;
    }
    if (const std::optional<double> value = parsed(number)) {
        return *value;
    }
    // Too large: first fewer digits of the exponent, then fewer of the mantissa.
    const std::size_t mantissa = std::min(number.find_first_of("Ee"), number.size());
    const std::size_t exponent = number.find_first_of(anyDigit, mantissa);
    std::size_t length = 0;
    if (exponent != std::string_view::npos) {
        length = longestInRange(number, exponent + 1, number.size());
    }
    if (length == 0) {
        length = longestInRange(number, number.find_first_of(anyDigit) + 1, mantissa);
    }
    return *parsed(number.substr(0, length));
}

std::string upperCase(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return upper;
}

std::string trimmed(std::string_view text) {
    return std::string(withoutBlanks(text));
}

} // namespace korvane
