#include "big_rational.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

// 2^200 / 3^80 and back, worked by repeated products.
Rational power(int base, int exponent) {
    Rational result = 1;
    for (int i = 0; i < exponent; ++i) {
        result = result * Rational(base);
    }
    return result;
}

TEST(BigRational, FractionsReduceToLowestTerms) {
    EXPECT_EQ(Rational(6) / Rational(-4), Rational(-3) / Rational(2));
    EXPECT_EQ(Rational(1) / Rational(3) + Rational(1) / Rational(6), Rational(1) / Rational(2));
    EXPECT_EQ(Rational(5) - Rational(5), Rational(0));
}

TEST(BigRational, ADoubleIsTakenExactly) {
    EXPECT_EQ(Rational(0.375), Rational(3) / Rational(8));
    EXPECT_EQ(Rational(-1.0e9), Rational(-1000000000));
    // The double nearest 0.1 is 3602879701896397 / 2^55.
    EXPECT_EQ(Rational(0.1) * power(2, 55), Rational(3602879701896397.0));
    EXPECT_EQ(Rational(0.1).toDouble(), 0.1);
    EXPECT_EQ(Rational(-1.0e-9).toDouble(), -1.0e-9);
}

TEST(BigRational, LongDivisionUndoesProducts) {
    const Rational a = power(2, 200) / power(3, 80);
    EXPECT_EQ(a * power(3, 80), power(2, 200));
    EXPECT_EQ(power(7, 150) / power(7, 149), Rational(7));
    // The digit 2^32 - 1 at the head is where a quotient digit may be guessed one too large.
    const Rational edge = power(2, 96) - Rational(1);
    EXPECT_EQ((edge * power(2, 128)) / edge, power(2, 128));
    EXPECT_EQ((edge * edge + edge) / edge, edge + Rational(1));
}

TEST(BigRational, SumsOfManyUnlikeFractionsCancelExactly) {
    Rational sum = 0;
    for (int i = 1; i <= 60; ++i) {
        sum += Rational(1) / Rational(i * i + 1);
    }
    for (int i = 60; i >= 1; --i) {
        sum -= Rational(1) / Rational(i * i + 1);
    }
    EXPECT_TRUE(sum.isZero());
}

TEST(BigRational, AThirdAsDouble) {
    EXPECT_EQ((Rational(1) / Rational(3)).toDouble(), 1.0 / 3.0);
    EXPECT_EQ((power(10, 40) / power(10, 43)).toDouble(), 1e-3);
}

} // namespace
} // namespace korvane::test
