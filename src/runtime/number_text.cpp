#include "runtime/number_text.h"

#include "runtime/runtime_error.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <system_error>

namespace korvane {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
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
