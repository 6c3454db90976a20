// Almost every number of a report is a whole number of units of its format's last place below
// 1E14: it is rounded there by one multiplication. What that cannot decide for certain goes through
// its decimal digits.
#include "runtime/number_format.h"

#include "runtime/arithmetic.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>

namespace korvane {

namespace {

/// A size as decimal digits: 0.d1d2d3... times 10 to the power of `point`; zero has no digits.
struct Decimal {
    std::array<char, 15> digits{}; ///< `count` of them, the first and the last not zero
    int count = 0;
    int point = 0; ///< number of digits before the decimal point, negative for 0.00d1...

    /// Leaves the first `kept` digits without their trailing zeros.
    void shorten(int kept) {
        count = kept;
        while (count > 0 && digits[static_cast<std::size_t>(count - 1)] == '0') {
            --count;
        }
    }
};

/// The size of a value to 15 significant digits.
Decimal fifteenDigits(double value) {
    std::array<char, 24> buffer{}; // d.dddddddddddddde+xxx
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                   std::fabs(finite(value)), std::chars_format::scientific, 14);
    Decimal decimal;
    decimal.digits[0] = buffer[0];
    std::copy_n(buffer.data() + 2, 14, decimal.digits.data() + 1);
    decimal.shorten(15);
    if (decimal.count > 0) {
        int exponent = 0;
        std::from_chars(buffer.data() + 18, end.ptr, exponent);
        decimal.point = (buffer[17] == '-' ? -exponent : exponent) + 1;
    }
    return decimal;
}

/// Keeps `kept` digits, halves away from zero; a negative count leaves zero.
void roundTo(Decimal& decimal, int kept) {
    if (kept < 0) {
        decimal = {};
        return;
    }
    if (kept >= decimal.count) {
        return;
    }
    const auto digit = [&decimal](int i) -> char& {
        return decimal.digits[static_cast<std::size_t>(i)];
    };
    const bool up = digit(kept) >= '5';
    if (up) {
        while (kept > 0 && digit(kept - 1) == '9') {
            --kept;
        }
        if (kept > 0) {
            ++digit(kept - 1);
        } else {
            digit(0) = '1';
            kept = 1;
            ++decimal.point;
        }
    }
    decimal.shorten(kept);
    if (decimal.count == 0) {
        decimal.point = 0;
    }
}

/// The digit of the place 10 to the power of `place`.
char digitAt(const Decimal& decimal, int place) {
    const int index = decimal.point - 1 - place;
    return index >= 0 && index < decimal.count ? decimal.digits[static_cast<std::size_t>(index)]
                                               : '0';
}

/// The digits of a rounded size, plain, through the places of a format.
void appendDigits(std::string& text, const Decimal& decimal, NumberFormat format) {
    for (int place = std::max<int>(format.forcedWhole, decimal.point) - 1; place >= 0; --place) {
        text += digitAt(decimal, place);
    }
    if (format.point) {
        text += '.';
        const int needed = std::min<int>(format.decimals, decimal.count - decimal.point);
        for (int i = 1; i <= std::max<int>(format.forcedDecimals, needed); ++i) {
            text += digitAt(decimal, -i);
        }
    }
}

void appendExponent(std::string& text, int exponent) {
    const int size = std::abs(exponent);
    text += exponent < 0 ? "E-" : size < 10 ? "E+0" : "E+";
    if (exponent < 0 && size < 10) {
        text += '0';
    }
    text += std::to_string(size);
}

/// Any finite value by its digits.
void appendByDigits(std::string& text, double value, NumberFormat format) {
    Decimal decimal = fifteenDigits(value);
    roundTo(decimal, format.decimals + (format.exponent ? 1 : decimal.point));
    if (value < 0 && decimal.count > 0) {
        text += '-';
    }
    const int exponent = decimal.count == 0 ? 0 : decimal.point - 1;
    if (format.exponent) {
        decimal.point = 1;
    }
    appendDigits(text, decimal, format);
    if (format.exponent) {
        appendExponent(text, exponent);
    }
}

/// The powers of ten that a double holds exactly.
constexpr auto powersOfTen = [] {
    std::array<double, 23> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) {
        powers[i] = powers[i - 1] * 10;
    }
    return powers;
}();

/// A size times 10 to the power of `places` (-22 to 22), rounded once.
double scaled(double size, int places) {
    return places < 0 ? size / powersOfTen[static_cast<std::size_t>(-places)]
                      : size * powersOfTen[static_cast<std::size_t>(places)];
}

/// The whole number that a scaled size comes to by its 15 digits, halves up. Those digits differ
/// from the size by at most 5E-15 of it, and they are a half where the size differs from it by less
/// than 5E-16 of it; scaling has shifted the size by 1.2E-16 of it at most. None in between, for
/// what is not finite, and for sizes whose halves have more than 15 digits.
std::optional<std::uint64_t> nearestWhole(double size) {
    constexpr double clearOfHalf = 6e-15;
    constexpr double atHalf = 3.5e-16;
    if (!(size < 1e14)) {
        return std::nullopt;
    }
    const auto whole = static_cast<std::int64_t>(size);
    const double beyondHalf = size - static_cast<double>(whole) - 0.5;
    const double distance = std::fabs(beyondHalf);
    if (distance <= clearOfHalf * size && distance > atHalf * size) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(whole) +
           (beyondHalf > 0 || distance <= atHalf * size ? 1U : 0U);
}

/// The numbers from 00 to 99.
constexpr auto digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// A number written into a room, which it must not be wider than, from its last character to its
/// first.
class Backward {
  public:
    explicit Backward(std::span<char> room) : end_(room.data() + room.size()), first_(end_) {}

    void put(char c) { *--first_ = c; }
    void put(std::string_view text) {
        for (std::size_t i = text.size(); i > 0; --i) {
            put(text[i - 1]);
        }
    }
    /// At least `atLeast` digits.
    template <std::unsigned_integral Whole>
    void putWhole(Whole number, int atLeast) {
        for (; number >= 10; atLeast -= 2, number /= 100) {
            putPair(number % 100);
        }
        for (; number > 0 || atLeast > 0; --atLeast, number /= 10) {
            put(static_cast<char>('0' + number % 10));
        }
    }
    void putExponent(int exponent) {
        putWhole(static_cast<std::uint32_t>(std::abs(exponent)), 2);
        put(exponent < 0 ? '-' : '+');
        put('E');
    }
    /// A number of units of the last place through the places of a format.
    void putUnits(std::uint64_t units, NumberFormat format, int leastWhole) {
        if (const auto few = static_cast<std::uint32_t>(units); few == units) {
            putPlaces(few, format, leastWhole); // divides in half the time
        } else {
            putPlaces(units, format, leastWhole);
        }
    }
    std::string_view text() const { return {first_, static_cast<std::size_t>(end_ - first_)}; }

  private:
    template <std::unsigned_integral Whole>
    void putPlaces(Whole units, NumberFormat format, int leastWhole) {
        if (format.point) {
            int shown = format.decimals;
            for (; shown > format.forcedDecimals && units % 10 == 0; units /= 10) {
                --shown;
            }
            for (; shown > 1; shown -= 2, units /= 100) {
                putPair(units % 100);
            }
            if (shown > 0) {
                put(static_cast<char>('0' + units % 10));
                units /= 10;
            }
            put('.');
        }
        putWhole(units, leastWhole);
    }
    void putPair(std::size_t pair) {
        const std::size_t place = 2 * pair;
        put(digitPairs[place + 1]);
        put(digitPairs[place]);
    }

    char* end_;
    char* first_;
};

/// Most places behind the point of a format that the quick way takes.
constexpr int quickDecimals = 16;

std::string_view putPlain(std::span<char> room, std::string_view mark, double value,
                          NumberFormat format) {
    const auto units = nearestWhole(scaled(std::fabs(value), format.decimals));
    // Sign and point are taken as shown.
    const int digits = static_cast<int>(room.size()) - static_cast<int>(mark.size()) - 2;
    if (!units || digits < format.forcedWhole + format.decimals ||
        static_cast<double>(*units) >=
            powersOfTen[static_cast<std::size_t>(std::min(digits, 15))]) {
        return {};
    }
    Backward number(room);
    number.putUnits(*units, format, format.forcedWhole);
    if (value < 0 && *units > 0) {
        number.put('-');
    }
    number.put(mark);
    return number.text();
}

/// A size as units of its last place, and the power of ten of its first digit.
struct Scientific {
    std::uint64_t units = 0;
    int exponent = 0;
};

/// A size to 1 + `decimals` digits, as far as all powers of ten in use are exact.
std::optional<Scientific> scientific(double size, int decimals) {
    constexpr int mostDecimals = 6;
    if (size == 0) {
        return Scientific{};
    }
    if (decimals > mostDecimals || !(size > 1e-15 && size < 1e15)) {
        return std::nullopt;
    }
    const double beyond = powersOfTen[static_cast<std::size_t>(decimals) + 1];
    int exponent = (std::ilogb(size) * 1233) >> 12; // log10(2): right or one too small
    if (scaled(size, decimals - exponent) >= beyond) {
        ++exponent;
    }
    const auto units = nearestWhole(scaled(size, decimals - exponent));
    if (!units) {
        return std::nullopt;
    }
    const bool carried = static_cast<double>(*units) >= beyond; // up to the next power of ten
    return carried ? Scientific{*units / 10, exponent + 1} : Scientific{*units, exponent};
}

std::string_view putScientific(std::span<char> room, std::string_view mark, double value,
                               NumberFormat format) {
    constexpr std::size_t others = 6; // sign, point, E+15
    const int whole = std::max<int>(format.forcedWhole, 1);
    const auto parts = scientific(std::fabs(value), format.decimals);
    if (!parts ||
        room.size() < mark.size() + others + static_cast<std::size_t>(whole + format.decimals)) {
        return {};
    }
    Backward number(room);
    number.putExponent(parts->exponent);
    number.putUnits(parts->units, format, whole);
    if (value < 0) {
        number.put('-');
    }
    number.put(mark);
    return number.text();
}

/// A size below 1E11 of at most four places: no other number of 15 digits or fewer reads back to
/// the same double, so that its own digits are the shortest. False where it has more places.
bool appendFewPlaces(std::string& text, double value, double size) {
    constexpr double unit = 10000;
    constexpr NumberFormat plain("0.####");
    const double units = size * unit;
    if (!(units < 1e15)) {
        return false;
    }
    const auto whole = static_cast<std::int64_t>(units);
    if (static_cast<double>(whole) != units || units / unit != size) {
        return false;
    }
    std::array<char, 32> room; // uninitialised: only what is put is read
    Backward number(room);
    if (whole % static_cast<std::int64_t>(unit) == 0) {
        number.putWhole(static_cast<std::uint64_t>(whole) / static_cast<std::uint64_t>(unit), 1);
    } else {
        number.putUnits(static_cast<std::uint64_t>(whole), plain, 1);
    }
    if (std::signbit(value)) {
        number.put('-');
    }
    text += number.text();
    return true;
}

} // namespace

std::string_view putNumberLast(std::span<char> room, std::string_view mark, double value,
                               NumberFormat format) {
    if (format.decimals > quickDecimals) {
        return {};
    }
    return format.exponent ? putScientific(room, mark, value, format)
                           : putPlain(room, mark, value, format);
}

std::string_view putTenthsLast(std::span<char> room, std::string_view mark, double value) {
    constexpr std::uint64_t beyond = 1'000'000'000;
    constexpr std::size_t widest = 11; // sign and point with them
    const auto tenths = nearestWhole(std::fabs(value) * 10);
    if (!tenths || *tenths >= beyond || room.size() < mark.size() + widest) {
        return {};
    }
    const auto units = static_cast<std::uint32_t>(*tenths);
    Backward number(room);
    if (units % 10 != 0) {
        number.put(static_cast<char>('0' + units % 10));
        number.put('.');
    }
    number.putWhole(units / 10, 1);
    if (value < 0 && units > 0) {
        number.put('-');
    }
    number.put(mark);
    return number.text();
}

void appendNumber(std::string& text, double value, NumberFormat format) {
    std::array<char, 48> room; // uninitialised: only what is put is read
    const std::string_view number = putNumberLast(room, {}, value, format);
    if (number.empty()) { // or nothing but zeros that the format does not show
        appendByDigits(text, value, format);
    } else {
        text += number;
    }
}

std::string formatNumber(double value, NumberFormat format) {
    std::string text;
    appendNumber(text, value, format);
    return text;
}

void appendShortest(std::string& text, double value) {
    const double size = std::fabs(value);
    if (appendFewPlaces(text, value, size)) {
        return;
    }
    const bool plain = size == 0 || (size >= 1e-4 && size < 1e15);
    std::array<char, 32> buffer; // uninitialised: only what is written is read
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                      plain ? std::chars_format::fixed : std::chars_format::scientific);
    text.append(buffer.data(), end.ptr);
}

void appendGeneralForm(std::string& text, double value) {
    if (finite(value) >= 0) { // minus zero too
        text += ' ';
    }
    const std::size_t start = text.size();
    appendShortest(text, value == 0 ? 0.0 : value);
    if (const std::size_t mark = text.find('e', start); mark != std::string::npos) {
        text[mark] = 'E';
    }
}

std::string generalForm(double value) {
    std::string text;
    appendGeneralForm(text, value);
    return text;
}

} // namespace korvane
