// Text as numbers: numeric test, number at the head; and no locale changes any of it.
#include "runtime/arithmetic.h"
#include "runtime/number_text.h"
#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <locale>
#include <random>
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

TEST(IsNumeric, TakesSignPointDigitsAndExponentWithBlanksAround) {
    for (const char* text : {"0", "12", "-3.25", "+7", ".5", "5.", "-.5", "1E5", "1e5", "1.5E-07",
                             "2E+3", "  12.5  ", "007", "+.5E2", "1E-400", "0E999"}) {
        EXPECT_TRUE(isNumeric(text)) << text;
    }
}

TEST(IsNumeric, RefusesEverythingElse) {
    for (const char* text : {"",    " ",   ".",   "+",   "-",   "+.",  "1.2.3", "1,5", "1,000",
                             "12x", "x12", "1 2", "- 3", "--3", "1E",  "1E+",   "E5",  "1E5.0",
                             "1D5", "$5",  "(5)", "5%",  "\t5", "5\t", "1_000"}) {
        EXPECT_FALSE(isNumeric(text)) << text;
    }
}

TEST(IsNumeric, RefusesHexadecimalInfinitiesAndNotANumber) {
    for (const char* text : {"0x10", "0X1P3", "&H10", "inf", "INF", "-inf", "infinity", "nan",
                             "NAN", "nan(1)", "1.#INF"}) {
        EXPECT_FALSE(isNumeric(text)) << text;
    }
}

TEST(IsNumeric, RefusesANumberBeyondTheRangeOfADouble) {
    for (const std::string& text : {std::string("1E309"), std::string("-1E309"),
                                    std::string("1.8E308"), std::string("1E99999999999999999999"),
                                    std::string(400, '9'), "0." + std::string(20, '0') + "1E400"}) {
        EXPECT_FALSE(isNumeric(text)) << text;
    }
    EXPECT_TRUE(isNumeric("1.7976931348623157E308"));
}

TEST(IsNumeric, TakesWhatIsTooSmallForADoubleAsZero) {
    EXPECT_EQ(numericValue("1E-400"), 0.0);
    EXPECT_EQ(numericValue("0." + std::string(500, '0') + "1"), 0.0);
    EXPECT_EQ(numericValue("100E-99999999999999999999"), 0.0);
    EXPECT_EQ(numericValue("0E99999999999999999999"), 0.0);
    EXPECT_EQ(numericValue(std::string(400, '0') + "7"), 7.0);
}

TEST(NumericValue, IsTheValueOrATypeMismatch) {
    EXPECT_EQ(numericValue("-3.25"), -3.25);
    EXPECT_EQ(numericValue(" +12 "), 12);
    EXPECT_EQ(numericValue("1.5e2"), 150);
    EXPECT_EQ(errorNumberOf([] { numericValue("12x"); }), 13);
    EXPECT_EQ(errorNumberOf([] { numericValue(""); }), 13);
    EXPECT_EQ(errorNumberOf([] { numericValue("1E309"); }), 13);
}

TEST(ValueAtHead, TakesTheLongestNumberAtTheStart) {
    EXPECT_EQ(valueAtHead("12x"), 12);
    EXPECT_EQ(valueAtHead("  -3.5abc"), -3.5);
    EXPECT_EQ(valueAtHead("1.2.3"), 1.2);
    EXPECT_EQ(valueAtHead("1E"), 1);
    EXPECT_EQ(valueAtHead("1E+x"), 1);
    EXPECT_EQ(valueAtHead("2E3x"), 2000);
    EXPECT_EQ(valueAtHead("5,25"), 5);
    EXPECT_EQ(valueAtHead("+.5."), 0.5);
    EXPECT_EQ(valueAtHead("7 8"), 7);
    EXPECT_EQ(valueAtHead("0x10"), 0);
}

TEST(ValueAtHead, IsZeroWhereThereIsNone) {
    for (const char* text : {"", "   ", "x", "-", ".", "+.E5", "E5", "inf", "nan", "- 5", "\t5"}) {
        EXPECT_EQ(valueAtHead(text), 0.0) << text;
    }
}

// The longest head that passes the numeric test: "1E999" is no number, "1E99" is one.
TEST(ValueAtHead, NeverGoesBeyondTheRangeOfADouble) {
    EXPECT_EQ(valueAtHead("1E999"), 1e99);
    EXPECT_EQ(valueAtHead("-1E+0308999"), -1e308);
    EXPECT_EQ(valueAtHead("17E308"), 17e30);
    EXPECT_EQ(valueAtHead(std::string(400, '9') + "E5"), 1e308); // 308 nines, to the nearest
    EXPECT_TRUE(std::isfinite(valueAtHead(std::string(400, '9'))));
}

// A thousand times, so that work that grows with the square of the length would not end.
TEST(ValueAtHead, IsQuickOnVeryLongTexts) {
    const std::string sevens(30'000, '7');
    const double expected = std::strtod(sevens.substr(0, 308).c_str(), nullptr);
    for (int time = 0; time < 1000; ++time) {
        ASSERT_EQ(valueAtHead(sevens), expected);
        ASSERT_EQ(valueAtHead("1E" + sevens), 1e77);
    }
}

TEST(NearestEven, TakesHalvesToTheEvenNumber) {
    EXPECT_EQ(nearestEven(0.5), 0);
    EXPECT_EQ(nearestEven(1.5), 2);
    EXPECT_EQ(nearestEven(2.5), 2);
    EXPECT_EQ(nearestEven(-0.5), 0);
    EXPECT_EQ(nearestEven(-1.5), -2);
    EXPECT_EQ(nearestEven(-2.5), -2);
    EXPECT_EQ(nearestEven(2.4999), 2);
    EXPECT_EQ(nearestEven(2.5001), 3);
}

TEST(NearestEven, OverflowsBeyondSixteenBits) {
    EXPECT_EQ(nearestEven(32767.4), 32767);
    EXPECT_EQ(nearestEven(-32768.5), -32768);
    for (const double value : {32767.5, -32769.0, 1e30, infinity, notANumber}) {
        EXPECT_EQ(errorNumberOf([=] { nearestEven(value); }), 6) << value;
    }
}

TEST(UpperCase, TouchesAsciiLettersOnly) {
    EXPECT_EQ(upperCase("Wall 12 az[`{@"), "WALL 12 AZ[`{@");
    EXPECT_EQ(upperCase("gr\xFC\xDF \xC3\xA9 \x01"), "GR\xFC\xDF \xC3\xA9 \x01");
}

TEST(Trimmed, TakesBlanksAlone) {
    EXPECT_EQ(trimmed("  a b  "), "a b");
    EXPECT_EQ(trimmed("\t a\t"), "\t a\t");
    EXPECT_EQ(trimmed("    "), "");
    EXPECT_EQ(trimmed(""), "");
}

/// A decimal comma and grouped thousands, as in much of Europe.
class CommaPunctuation : public std::numpunct<char> {
  protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumberText, UsesThePointWhateverTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "nl_NL.UTF-8", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            break; // where one is installed, the C library's side is changed as well
        }
    }
    const std::locale old = std::locale::global(std::locale(std::locale(), new CommaPunctuation));
    EXPECT_EQ(formatNumber(1234567.25, "####0.0"), "1234567.3");
    EXPECT_EQ(formatNumber(1234.5, "0.000E+00"), "1.235E+03");
    EXPECT_EQ(generalForm(-1234567.5), "-1234567.5");
    EXPECT_TRUE(isNumeric("1234.5"));
    EXPECT_FALSE(isNumeric("1234,5"));
    EXPECT_EQ(numericValue("1234.5"), 1234.5);
    EXPECT_EQ(valueAtHead("1234,5"), 1234);
    std::locale::global(old);
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace
} // namespace korvane
