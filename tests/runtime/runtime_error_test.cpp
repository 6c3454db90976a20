// Run-time errors and the arithmetic that raises them.
#include "runtime/arithmetic.h"
#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace korvane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

int errorNumberOf(const auto& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

struct TextRow {
    int number;
    const char* text;
};

TEST(RuntimeError, HasTheStandardTextOfItsNumber) {
    for (const TextRow& row :
         {TextRow{5, "Invalid procedure call or argument"}, TextRow{6, "Overflow"},
          TextRow{9, "Subscript out of range"}, TextRow{11, "Division by zero"},
          TextRow{13, "Type mismatch"}, TextRow{52, "Bad file name or number"},
          TextRow{53, "File not found"}, TextRow{55, "File already open"},
          TextRow{57, "Device I/O error"}, TextRow{61, "Disk full"},
          TextRow{62, "Input past end of file"}, TextRow{70, "Permission denied"},
          TextRow{71, "Disk not ready"}, TextRow{75, "Path/File access error"},
          TextRow{76, "Path not found"},
          TextRow{12345, "Application-defined or object-defined error"}}) {
        EXPECT_STREQ(runtimeErrorText(row.number), row.text);
        EXPECT_STREQ(RuntimeError(row.number).what(), row.text);
    }
}

TEST(RuntimeError, BoxTextNamesNumberAndReason) {
    EXPECT_EQ(runtimeErrorMessage(11), "Run-time error '11':\n\nDivision by zero");
    EXPECT_EQ(runtimeErrorMessage(9), "Run-time error '9':\n\nSubscript out of range");
}

TEST(RuntimeError, FileFaultsCarryTheFileName) {
    const RuntimeError fault(61, "wall.out");
    EXPECT_EQ(fault.number(), 61);
    EXPECT_EQ(fault.fileName(), "wall.out");
    EXPECT_TRUE(fault.isFileFault());
    EXPECT_FALSE(RuntimeError(13).isFileFault());
    EXPECT_TRUE(RuntimeError(52).isFileFault());
    EXPECT_EQ(RuntimeError(13).fileName(), "");
}

TEST(Divide, RefusesAZeroDivisor) {
    EXPECT_EQ(divide(1, 4), 0.25);
    EXPECT_EQ(divide(0, -3), 0);
    for (const double dividend : {1.0, 0.0, -1.0, notANumber}) {
        EXPECT_EQ(errorNumberOf([=] { divide(dividend, 0.0); }), 11);
        EXPECT_EQ(errorNumberOf([=] { divide(dividend, -0.0); }), 11);
    }
}

TEST(Divide, OverflowsBeyondTheRangeOfADouble) {
    EXPECT_EQ(errorNumberOf([] { divide(largest, 1e-10); }), 6);
    EXPECT_EQ(errorNumberOf([] { divide(infinity, 2); }), 6);
    EXPECT_EQ(errorNumberOf([] { divide(1, notANumber); }), 6);
}

TEST(SquareRoot, RefusesNegativeArguments) {
    EXPECT_EQ(squareRoot(2.25), 1.5);
    EXPECT_EQ(squareRoot(0), 0);
    EXPECT_EQ(errorNumberOf([] { squareRoot(-1e-300); }), 5);
    EXPECT_EQ(errorNumberOf([] { squareRoot(infinity); }), 6);
    EXPECT_EQ(errorNumberOf([] { squareRoot(notANumber); }), 6);
}

TEST(Logarithms, RefuseArgumentsAtOrBelowZero) {
    EXPECT_EQ(naturalLog(1), 0);
    EXPECT_EQ(commonLog(1000), 3);
    for (const double x : {0.0, -0.0, -1.0}) {
        EXPECT_EQ(errorNumberOf([=] { naturalLog(x); }), 5);
        EXPECT_EQ(errorNumberOf([=] { commonLog(x); }), 5);
    }
    for (const double x : {infinity, notANumber}) {
        EXPECT_EQ(errorNumberOf([=] { naturalLog(x); }), 6);
        EXPECT_EQ(errorNumberOf([=] { commonLog(x); }), 6);
    }
}

TEST(Finite, LetsNeitherInfinityNorNotANumberPass) {
    EXPECT_EQ(finite(-largest), -largest);
    for (const double x : {infinity, -infinity, notANumber}) {
        EXPECT_EQ(errorNumberOf([=] { finite(x); }), 6);
    }
}

TEST(MaxOfAndMinOf, TakeTheFirstWhereTheyCannotDecide) {
    EXPECT_EQ(MaxOf(1, 2), 2);
    EXPECT_EQ(MinOf(1, 2), 1);
    EXPECT_EQ(MaxOf(-1, -2), -1);
    EXPECT_EQ(MinOf(-1, -2), -2);
    EXPECT_TRUE(std::signbit(MaxOf(-0.0, 0.0)));
    EXPECT_EQ(MaxOf(1, notANumber), 1);
    EXPECT_EQ(MinOf(1, notANumber), 1);
}

} // namespace
} // namespace korvane
