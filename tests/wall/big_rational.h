// Rational numbers of any size, so that tests can work a method through without rounding.
#pragma once

#include <cstdint>
#include <vector>

namespace korvane::test {

/// A whole number of any size. Only what Rational needs.
class BigInteger {
  public:
    BigInteger(std::int64_t value = 0); // NOLINT(google-explicit-constructor): written as numbers

    bool isZero() const { return digits_.empty(); }
    bool isNegative() const { return negative_; }
    int bitLength() const;
    int trailingZeros() const; ///< of a value that is not zero
    /// The value times 2^bits; a negative count of bits drops the low ones of the magnitude.
    BigInteger shifted(int bits) const;
    /// Nearest double of a value of at most 63 bits.
    double toDouble() const;

    BigInteger operator-() const;
    friend BigInteger operator+(const BigInteger& a, const BigInteger& b);
    friend BigInteger operator-(const BigInteger& a, const BigInteger& b) { return a + (-b); }
    friend BigInteger operator*(const BigInteger& a, const BigInteger& b);
    /// Truncated toward zero.
    friend BigInteger operator/(const BigInteger& a, const BigInteger& b);
    friend BigInteger operator%(const BigInteger& a, const BigInteger& b);
    bool operator==(const BigInteger&) const = default;

  private:
    using Digits = std::vector<std::uint32_t>; // lowest first, no zero at the top

    static void strip(Digits& digits);
    static int compare(const Digits& a, const Digits& b);
    static Digits sum(const Digits& a, const Digits& b);
    static Digits difference(const Digits& larger, const Digits& smaller);
    static void divide(const Digits& a, const Digits& b, Digits& quotient, Digits& remainder);
    static BigInteger make(Digits digits, bool negative);

    Digits digits_;
    bool negative_ = false;
};

/// A fraction in lowest terms with a positive denominator.
class Rational {
  public:
    Rational(int value = 0); // NOLINT(google-explicit-constructor): written as numbers
    /// Exactly the value of a finite double.
    explicit Rational(double value);

    bool isZero() const { return numerator_.isZero(); }
    /// To the last bit but one or so: 63 leading bits of the quotient, rounded to a double.
    double toDouble() const;

    Rational operator-() const;
    friend Rational operator+(const Rational& a, const Rational& b);
    friend Rational operator-(const Rational& a, const Rational& b) { return a + (-b); }
    friend Rational operator*(const Rational& a, const Rational& b);
    friend Rational operator/(const Rational& a, const Rational& b);
    Rational& operator+=(const Rational& b) { return *this = *this + b; }
    Rational& operator-=(const Rational& b) { return *this = *this - b; }
    bool operator==(const Rational&) const = default;

  private:
    Rational(BigInteger numerator, BigInteger denominator);

    BigInteger numerator_;
    BigInteger denominator_ = 1;
};

} // namespace korvane::test
