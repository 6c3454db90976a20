// Numbers as text: format strings against written rows and against a second method, general form.
#include "runtime/number_text.h"
#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <span>
#include <string>
#include <string_view>

namespace korvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

int errorNumberOf(const auto& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

struct FormatRow {
    double value;
    std::string_view format;
    std::string_view text;
};

void expectRows(std::initializer_list<FormatRow> rows) {
    for (const FormatRow& row : rows) {
        EXPECT_EQ(formatNumber(row.value, row.format), row.text) << row.format;
    }
}

TEST(FormatNumber, ZeroPlacesAlwaysShowADigitAndHashPlacesOnlyWhereNeeded) {
    expectRows({{0, "####0.00", "0.00"},
                {12.5, "####0.00", "12.50"},
                {7, "#0.00", "7.00"},
                {0.5, "0.0", "0.5"},
                {3, "0", "3"},
                {0, "#", ""},
                {42, "#", "42"},
                {0.25, "##0.0000", "0.2500"},
                {5, "000", "005"},
                {1.5, "0.0##", "1.5"},
                {1.25, "0.0##", "1.25"}});
}

TEST(FormatNumber, APointInTheFormatIsAlwaysShown) {
    expectRows({{0, "#####0.", "0."}, {456, "#####0.", "456."}, {-12.4, "####0.", "-12."}});
}

TEST(FormatNumber, HalvesGoAwayFromZero) {
    expectRows({{0.5, "0", "1"},
                {1.5, "0", "2"},
                {2.5, "0", "3"},
                {-2.5, "0", "-3"},
                {0.125, "0.00", "0.13"},
                {-0.125, "0.00", "-0.13"},
                {2.5, "#####0.", "3."}});
}

// The doubles nearest to these decimal halves lie a little below them; to 15 digits they are
// halves.
TEST(FormatNumber, TakesFifteenSignificantDigitsBeforeItRounds) {
    expectRows({{1.005, "0.00", "1.01"},
                {2.675, "0.00", "2.68"},
                {0.285, "0.00", "0.29"},
                {1234567.005, "####0.00", "1234567.01"},
                {8.345, "####0.00", "8.35"},
                {-1.005, "0.00", "-1.01"},
                {0.1 + 0.2, "0.0000", "0.3000"},
                {999999999999999.5, "0", "1000000000000000"}});
    // 0.2 + 0.2 + 0.1 - 0.005 gives a double a few units beside 0.495.
    EXPECT_EQ(formatNumber(0.2 + 0.2 + 0.1 - 0.005, "0.00"), "0.50");
}

// 1.00499999999999 differs from the half in its fifteenth digit and stays below.
TEST(FormatNumber, KeepsADifferenceInTheFifteenthDigit) {
    expectRows({{1.00499999999999, "0.00", "1.00"}, {1.00500000000001, "0.00", "1.01"}});
}

TEST(FormatNumber, RoundingCarriesThroughNines) {
    expectRows({{9.995, "0.00", "10.00"},
                {99.96, "0.0", "100.0"},
                {0.996, "0.00", "1.00"},
                {0.96, "0", "1"},
                {999.5, "##0.", "1000."},
                {1.9995, "0.000", "2.000"}});
}

TEST(FormatNumber, WhatRoundsToZeroHasNoMinusSign) {
    expectRows({{-0.004, "0.00", "0.00"},
                {-0.0, "0.00", "0.00"},
                {-0.4, "#####0.", "0."},
                {-1e-300, "####0.00", "0.00"},
                {-0.0, "0.000E+00", "0.000E+00"},
                {-0.005, "0.00", "-0.01"}});
}

TEST(FormatNumber, AWiderValueShowsAllItsDigits) {
    expectRows({{123456789.126, "#0.00", "123456789.13"},
                {-123456.7, "##0.0", "-123456.7"},
                {1e20, "0", "100000000000000000000"},
                {1.5e22, "####0.0", "15000000000000000000000.0"}});
}

TEST(FormatNumber, ExponentHasASignAndAtLeastTwoDigits) {
    expectRows({{29000000, "0.000E+00", "2.900E+07"},
                {0.00012345, "0.000E+00", "1.235E-04"},
                {1, "0.0000E+00", "1.0000E+00"},
                {0, "0.0000E+00", "0.0000E+00"},
                {-38123.45, "0.0000E+00", "-3.8123E+04"},
                {1e100, "0.00E+00", "1.00E+100"},
                {2.5e-300, "0.00E+00", "2.50E-300"}});
}

TEST(FormatNumber, ExponentFormsRoundHalvesAwayFromZeroAndCarry) {
    expectRows({{1.00005, "0.0000E+00", "1.0001E+00"},
                {-123455, "0.0000E+00", "-1.2346E+05"},
                {99999.5, "0.0000E+00", "1.0000E+05"},
                {9.9996e-10, "0.000E+00", "1.000E-09"},
                {9.995e9, "0.00E+00", "1.00E+10"}});
}

TEST(FormatNumber, RefusesWhatIsNotFinite) {
    for (const double value : {infinity, -infinity, notANumber}) {
        EXPECT_EQ(errorNumberOf([=] { formatNumber(value, "0.00"); }), 6);
        EXPECT_EQ(errorNumberOf([=] { formatNumber(value, "0.000E+00"); }), 6);
        EXPECT_EQ(errorNumberOf([=] { generalForm(value); }), 6);
    }
}

TEST(GeneralForm, HasABlankWhereAMinusWouldStand) {
    EXPECT_EQ(generalForm(12.5), " 12.5");
    EXPECT_EQ(generalForm(-3), "-3");
    EXPECT_EQ(generalForm(0), " 0");
    EXPECT_EQ(generalForm(-0.0), " 0");
    EXPECT_EQ(generalForm(0.5), " 0.5");
    EXPECT_EQ(generalForm(-0.5), "-0.5");
}

TEST(GeneralForm, IsTheShortestTextThatReadsBack) {
    EXPECT_EQ(generalForm(0.1), " 0.1");
    EXPECT_EQ(generalForm(0.1 + 0.2), " 0.30000000000000004");
    EXPECT_EQ(generalForm(-200000), "-200000");
    EXPECT_EQ(generalForm(62.4), " 62.4");
    EXPECT_EQ(generalForm(1.0 / 3.0), " 0.3333333333333333");
}

TEST(GeneralForm, IsPlainFromOneTenThousandthToBelowAThousandMillionMillion) {
    EXPECT_EQ(generalForm(100000), " 100000");
    EXPECT_EQ(generalForm(29000000), " 29000000");
    EXPECT_EQ(generalForm(999999999999999), " 999999999999999");
    EXPECT_EQ(generalForm(-100000000000000), "-100000000000000");
    EXPECT_EQ(generalForm(0.0001), " 0.0001");
    EXPECT_EQ(generalForm(0.00025), " 0.00025");
}

TEST(GeneralForm, HasASignedExponentOfAtLeastTwoDigitsBeyond) {
    EXPECT_EQ(generalForm(1e15), " 1E+15");
    EXPECT_EQ(generalForm(1e20), " 1E+20");
    EXPECT_EQ(generalForm(1.5e-7), " 1.5E-07");
    EXPECT_EQ(generalForm(-0.000099), "-9.9E-05");
    EXPECT_EQ(generalForm(1.25e300), " 1.25E+300");
    EXPECT_EQ(generalForm(5e-324), " 5E-324");
}

TEST(GeneralForm, ReadsBackToTheSameDouble) {
    std::mt19937_64 random(20261121);
    int tried = 0;
    while (tried < 20000) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) {
            continue;
        }
        ++tried;
        const std::string text = generalForm(value);
        ASSERT_TRUE(isNumeric(text)) << text;
        ASSERT_EQ(numericValue(text), value) << text;
        ASSERT_EQ(valueAtHead(text + " "), value) << text;
    }
}

/// Numbers of few places have their own digits, written here by the C library.
TEST(GeneralForm, KeepsTheDigitsOfNumbersOfFewPlaces) {
    std::mt19937_64 random(20261122);
    for (int i = 0; i < 20000; ++i) {
        const auto digits = static_cast<int>(random() % 15) + 1;
        const auto units = static_cast<std::int64_t>(random() % 1'000'000'000'000'000) %
                           static_cast<std::int64_t>(std::pow(10, digits));
        const auto places = static_cast<int>(random() % 6);
        const double value = static_cast<double>(units) / std::pow(10, places);
        std::array<char, 64> room{};
        std::snprintf(room.data(), room.size(), "%.*f", places, value);
        std::string text(room.data());
        while (places > 0 && text.back() == '0') {
            text.pop_back();
        }
        text.erase(text.back() == '.' ? text.size() - 1 : text.size());
        if (value == 0 || value >= 1e-4) {
            ASSERT_EQ(generalForm(value), " " + text);
        }
        if (value >= 1e-4) {
            ASSERT_EQ(generalForm(-value), "-" + text);
        }
    }
}

TEST(NumberFormat, PutsAMarkAndANumberLastInARoom) {
    std::string room(12, '.');
    EXPECT_EQ(putNumberLast(room, "*", -2.345, "#0.00"), "*-2.35");
    EXPECT_EQ(room, "......*-2.35");
    room.assign(14, '.');
    EXPECT_EQ(putNumberLast(room, "", 1.25e-7, "0.000E+00"), "1.250E-07");
    EXPECT_EQ(room, ".....1.250E-07");
}

// Each digit of the room is asked for, so that a number that is a little too wide would be seen in
// the letters before it.
TEST(NumberFormat, PutsANumberOnlyWhereTheRoomHoldsIt) {
    const std::string before(8, 'x');
    int put = 0;
    for (const NumberFormat format : {NumberFormat("#####0."), NumberFormat("####0.00"),
                                      NumberFormat("0.0000E+00"), NumberFormat("0.#")}) {
        for (double value = -1e-9; value > -1e16; value *= 3.7) {
            const std::string expected = "*" + formatNumber(value, format);
            for (std::size_t width = 0; width < 20; ++width) {
                std::string text = before + std::string(width, '.');
                const std::span<char> room(text.data() + before.size(), width);
                const std::string_view number = putNumberLast(room, "*", value, format);
                const std::size_t size = number.size();
                ASSERT_EQ(text, before + std::string(width - size, '.') + std::string(number));
                if (size > 0) {
                    ASSERT_EQ(number, expected);
                    ++put;
                }
            }
        }
    }
    EXPECT_GT(put, 1000);
}

TEST(NumberFormat, PutsNothingThatOnlyAllItsDigitsTell) {
    std::string room(400, '.');
    const std::string untouched = room;
    EXPECT_EQ(putNumberLast(room, "*", 1e300, "0.0"), "");
    EXPECT_EQ(putNumberLast(room, "*", std::numeric_limits<double>::quiet_NaN(), "0.0"), "");
    EXPECT_EQ(putNumberLast(room, "*", 1.5, "0.00000000000000000"), "");
    EXPECT_EQ(room, untouched);
}

TEST(NumberFormat, PutsTenthsAsTheirFormatWithoutABarePoint) {
    std::string room(14, '.');
    EXPECT_EQ(putTenthsLast(room, " L ", -23.25), " L -23.3");
    EXPECT_EQ(room, "...... L -23.3");
    EXPECT_EQ(putTenthsLast(room, "", -0.04), "0");
    EXPECT_EQ(putTenthsLast(room, "", 1439.96), "1440");
    std::mt19937_64 random(20261122);
    std::uniform_real_distribution<double> size(-30, 27); // powers of two: up to 1.3E8
    int put = 0;
    for (int i = 0; i < 200000; ++i) {
        const bool halves = i % 4 == 0; // of the last place
        const double drawn = std::exp2(size(random));
        const double value = (i % 2 == 0 ? 1 : -1) * (halves ? std::floor(drawn) / 20 : drawn);
        std::string expected = formatNumber(value, "0.#");
        if (expected.back() == '.') {
            expected.pop_back();
        }
        std::string wide(14, '.');
        const std::string_view tenths = putTenthsLast(wide, "=\"", value);
        if (!tenths.empty()) {
            ++put;
            ASSERT_EQ(tenths, "=\"" + expected) << value;
            ASSERT_EQ(wide, std::string(wide.size() - tenths.size(), '.') + std::string(tenths));
        }
    }
    EXPECT_GT(put, 190000);
    for (const double none : {1e8, -1e300, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(putTenthsLast(room, "", none), "") << none;
    }
    std::string narrow(10, '.');
    EXPECT_EQ(putTenthsLast(narrow, "", 1), "");
    EXPECT_EQ(narrow, "..........");
}

/// A format whose decimals all show, as the second method needs it.
struct SweptFormat {
    std::string_view text;
    int decimals;
    bool point;
    bool exponent;
};

constexpr std::array<SweptFormat, 14> SweptFormats{{{"####0.00", 2, true, false},
                                                    {"#0.00", 2, true, false},
                                                    {"0", 0, false, false},
                                                    {"#####0.", 0, true, false},
                                                    {"####0.0", 1, true, false},
                                                    {"###0.0", 1, true, false},
                                                    {"0.0000", 4, true, false},
                                                    {"##0.000", 3, true, false},
                                                    {"0.00000000", 8, true, false},
                                                    {"0.00E+00", 2, true, true},
                                                    {"0.000E+00", 3, true, true},
                                                    {"0.0000E+00", 4, true, true},
                                                    {"0.000000E+00", 6, true, true},
                                                    {"0E+00", 0, false, true}}};

constexpr auto Powers = [] {
    std::array<std::uint64_t, 18> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) {
        powers[i] = 10 * powers[i - 1];
    }
    return powers;
}();

/// `number` divided by a power of ten, halves up; numbers have 15 digits.
std::uint64_t dividedByPower(std::uint64_t number, int power) {
    if (power > 17) {
        return 0;
    }
    const std::uint64_t divisor = Powers[static_cast<std::size_t>(power)];
    return (number + divisor / 2) / divisor;
}

/// The C library's 15 digits, rounded as a whole number.
class SecondMethod {
  public:
    std::string_view text(double value, const SweptFormat& format) {
        std::array<char, 32> buffer{};
        const int length = std::snprintf(buffer.data(), buffer.size(), "%.14e", std::fabs(value));
        buffer[1] = buffer[0]; // over the point
        char* end = nullptr;
        const std::uint64_t digits = std::strtoull(buffer.data() + 1, &end, 10);
        int exponent = std::atoi(end + 1);
        EXPECT_GT(length, 18);
        text_.clear();
        if (format.exponent) {
            std::uint64_t units = dividedByPower(digits, 14 - format.decimals);
            if (units == Powers[static_cast<std::size_t>(format.decimals) + 1]) {
                units /= 10;
                ++exponent;
            }
            put(value, units, 0, format);
            std::snprintf(buffer.data(), buffer.size(), "E%+03d", exponent);
            text_ += buffer.data();
        } else {
            const int zeros = std::max(exponent - 14 + format.decimals, 0);
            put(value, zeros > 0 ? digits : dividedByPower(digits, 14 - exponent - format.decimals),
                zeros, format);
        }
        return text_;
    }

  private:
    void put(double value, std::uint64_t units, int zeros, const SweptFormat& format) {
        text_ = std::to_string(units);
        text_.append(static_cast<std::size_t>(zeros), '0');
        const auto least = static_cast<std::size_t>(format.decimals) + 1;
        text_.insert(0, text_.size() < least ? least - text_.size() : 0, '0');
        if (format.point) {
            text_.insert(text_.size() - least + 1, 1, '.');
        }
        if (value < 0 && units > 0) {
            text_.insert(0, 1, '-');
        }
    }

    std::string text_;
};

/// A value `steps` doubles beside another, or the value itself beyond the range.
double beside(double value, int steps) {
    const double other = std::bit_cast<double>(std::bit_cast<std::int64_t>(value) + steps);
    return std::isfinite(other) ? other : value;
}

/// Values of all sizes and, above all, around the halves of some decimal place.
double sweptValue(std::uint64_t i, std::mt19937_64& random) {
    const std::uint64_t bits = random();
    const auto below = [bits](std::uint64_t n) { return (bits >> 20) % n; };
    const double power = static_cast<double>(Powers[bits % 10]);
    const int steps = static_cast<int>((bits >> 8) % 41) - 20;
    const double half = (static_cast<double>(below(20'000'001)) + 0.5) / power;
    double size = 0;
    switch (i % 8) {
    case 0: // any double
        size = std::bit_cast<double>(bits);
        break;
    case 1: // halves and their neighbours
        size = beside(half, steps);
        break;
    case 2: // beside a half by 1E-16 to 1E-12 of the size
        size = half * (1 + steps * 2.5e-16 * static_cast<double>(1 + bits % 200));
        break;
    case 3: // few decimals
        size = static_cast<double>(below(10'000'000'000)) / power;
        break;
    case 4: // powers of ten, their multiples and their neighbours
        size = beside(static_cast<double>(1 + bits % 10) * std::pow(10.0, steps), steps % 7);
        break;
    case 5: // denormal
        size = std::bit_cast<double>(bits >> (12 + below(52)));
        break;
    case 6: // halves beyond 1E14 and where 15 digits end
        size = beside((static_cast<double>(bits >> 12) + 0.5) / power, steps);
        break;
    default: // what a report shows
        size = static_cast<double>(bits >> 11) * 0x1p-53 * power;
    }
    return (bits >> 32) % 3 == 0 ? -size : size;
}

TEST(FormatNumber, EqualsASecondMethodOnAMillionValues) {
    std::mt19937_64 random(20261122);
    SecondMethod second;
    std::string text;
    for (std::uint64_t i = 0; i < 1'000'000; ++i) {
        const double value = sweptValue(i, random);
        if (!std::isfinite(value)) {
            continue;
        }
        const std::size_t f = i / 8 % SweptFormats.size();
        text.clear();
        appendNumber(text, value, NumberFormat(SweptFormats[f].text));
        const std::string_view expected = second.text(value, SweptFormats[f]);
        if (text != expected) {
            FAIL() << text << " is not " << expected << " as " << SweptFormats[f].text << " of "
                   << generalForm(value);
        }
    }
}

TEST(AppendNumber, WritesBehindATextAndLeavesItAloneWhereTheValueIsNotFinite) {
    std::string text = "EL=";
    appendNumber(text, -2.345, "#0.00");
    EXPECT_EQ(text, "EL=-2.35");
    appendGeneralForm(text, 12.5);
    EXPECT_EQ(text, "EL=-2.35 12.5");
    for (const double value : {infinity, -infinity, notANumber}) {
        EXPECT_EQ(errorNumberOf([&] { appendNumber(text, value, "0.00"); }), 6);
        EXPECT_EQ(errorNumberOf([&] { appendNumber(text, value, "0.00E+00"); }), 6);
        EXPECT_EQ(errorNumberOf([&] { appendGeneralForm(text, value); }), 6);
    }
    EXPECT_EQ(text, "EL=-2.35 12.5");
}

} // namespace
} // namespace korvane
