#include "big_rational.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace korvane::test {

namespace {

constexpr int digitBits = 32;

std::uint32_t low(std::uint64_t x) {
    return static_cast<std::uint32_t>(x);
}

BigInteger greatestCommonDivisor(BigInteger a, BigInteger b) {
    while (!b.isZero()) {
        BigInteger rest = a % b;
        a = std::move(b);
        b = std::move(rest);
    }
    return a.isNegative() ? -a : a;
}

} // namespace

BigInteger::BigInteger(std::int64_t value) : negative_(value < 0) {
    auto magnitude = static_cast<std::uint64_t>(value);
    if (negative_) {
        magnitude = 0 - magnitude;
    }
    digits_ = {low(magnitude), low(magnitude >> digitBits)};
    strip(digits_);
}

BigInteger BigInteger::make(Digits digits, bool negative) {
    strip(digits);
    BigInteger result;
    result.negative_ = negative && !digits.empty();
    result.digits_ = std::move(digits);
    return result;
}

void BigInteger::strip(Digits& digits) {
    while (!digits.empty() && digits.back() == 0) {
        digits.pop_back();
    }
}

int BigInteger::compare(const Digits& a, const Digits& b) {
    if (a.size() != b.size()) {
        return a.size() < b.size() ? -1 : 1;
    }
    for (std::size_t i = a.size(); i-- > 0;) {
        if (a[i] != b[i]) {
            return a[i] < b[i] ? -1 : 1;
        }
    }
    return 0;
}

BigInteger::Digits BigInteger::sum(const Digits& a, const Digits& b) {
    Digits result(std::max(a.size(), b.size()) + 1);
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < result.size(); ++i) {
        carry += (i < a.size() ? a[i] : 0ULL) + (i < b.size() ? b[i] : 0ULL);
        result[i] = low(carry);
        carry >>= digitBits;
    }
    return result;
}

BigInteger::Digits BigInteger::difference(const Digits& larger, const Digits& smaller) {
    Digits result(larger.size());
    std::int64_t borrow = 0;
    for (std::size_t i = 0; i < larger.size(); ++i) {
        std::int64_t d = std::int64_t{larger[i]} - borrow;
        d -= i < smaller.size() ? std::int64_t{smaller[i]} : 0;
        borrow = d < 0 ? 1 : 0;
        result[i] = low(static_cast<std::uint64_t>(d));
    }
    return result;
}

// Long division in digits of 32 bits (Knuth, The Art of Computer Programming, 4.3.1, D).
void BigInteger::divide(const Digits& a, const Digits& b, Digits& quotient, Digits& remainder) {
    if (b.empty()) {
        throw std::domain_error("division by zero");
    }
    if (compare(a, b) < 0) {
        quotient.clear();
        remainder = a;
        return;
    }
    const int shift = std::countl_zero(b.back());
    Digits u = make(a, false).shifted(shift).digits_;
    const Digits v = make(b, false).shifted(shift).digits_;
    u.resize(a.size() + 1);
    const std::size_t n = v.size();
    quotient.assign(u.size() - n, 0);
    for (std::size_t j = u.size() - n; j-- > 0;) {
        const std::uint64_t head = (std::uint64_t{u[j + n]} << digitBits) | u[j + n - 1];
        std::uint64_t q = std::min<std::uint64_t>(head / v[n - 1], 0xFFFFFFFFULL);
        std::uint64_t rest = head - q * v[n - 1];
        while (n > 1 && rest <= 0xFFFFFFFFULL &&
               q * v[n - 2] > ((rest << digitBits) | u[j + n - 2])) {
            --q;
            rest += v[n - 1];
        }
        std::uint64_t carry = 0;
        std::int64_t borrow = 0;
        for (std::size_t i = 0; i <= n; ++i) {
            carry += i < n ? q * v[i] : 0;
            const std::int64_t d = std::int64_t{u[i + j]} - std::int64_t{low(carry)} - borrow;
            u[i + j] = low(static_cast<std::uint64_t>(d));
            borrow = d < 0 ? 1 : 0;
            carry >>= digitBits;
        }
        if (borrow != 0) { // one too many: add the divisor back
            --q;
            std::uint64_t back = 0;
            for (std::size_t i = 0; i <= n; ++i) {
                back += std::uint64_t{u[i + j]} + (i < n ? v[i] : 0);
                u[i + j] = low(back);
                back >>= digitBits;
            }
        }
        quotient[j] = low(q);
    }
    remainder = make(u, false).shifted(-shift).digits_;
}

int BigInteger::bitLength() const {
    if (digits_.empty()) {
        return 0;
    }
    return digitBits * static_cast<int>(digits_.size()) - std::countl_zero(digits_.back());
}

int BigInteger::trailingZeros() const {
    int zeros = 0;
    std::size_t i = 0;
    while (digits_[i] == 0) {
        zeros += digitBits;
        ++i;
    }
    return zeros + std::countr_zero(digits_[i]);
}

BigInteger BigInteger::shifted(int bits) const {
    const auto whole = static_cast<std::size_t>(std::abs(bits) / digitBits);
    const int part = std::abs(bits) % digitBits;
    Digits result;
    if (bits >= 0) {
        result.assign(digits_.size() + whole + 1, 0);
        for (std::size_t i = 0; i < digits_.size(); ++i) {
            const std::uint64_t wide = std::uint64_t{digits_[i]} << part;
            result[i + whole] |= low(wide);
            result[i + whole + 1] |= low(wide >> digitBits);
        }
    } else if (whole < digits_.size()) {
        result.assign(digits_.size() - whole, 0);
        for (std::size_t i = 0; i < result.size(); ++i) {
            const std::size_t above = i + whole + 1;
            const std::uint64_t next = above < digits_.size() ? digits_[above] : 0;
            result[i] = low(((next << digitBits) | digits_[i + whole]) >> part);
        }
    }
    return make(std::move(result), negative_);
}

double BigInteger::toDouble() const {
    double result = 0;
    for (std::size_t i = digits_.size(); i-- > 0;) {
        result = result * 4294967296.0 + digits_[i];
    }
    return negative_ ? -result : result;
}

BigInteger BigInteger::operator-() const {
    return make(digits_, !negative_);
}

BigInteger operator+(const BigInteger& a, const BigInteger& b) {
    if (a.negative_ == b.negative_) {
        return BigInteger::make(BigInteger::sum(a.digits_, b.digits_), a.negative_);
    }
    if (BigInteger::compare(a.digits_, b.digits_) >= 0) {
        return BigInteger::make(BigInteger::difference(a.digits_, b.digits_), a.negative_);
    }
    return BigInteger::make(BigInteger::difference(b.digits_, a.digits_), b.negative_);
}

BigInteger operator*(const BigInteger& a, const BigInteger& b) {
    BigInteger::Digits result(a.digits_.size() + b.digits_.size());
    for (std::size_t i = 0; i < a.digits_.size(); ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < b.digits_.size(); ++j) {
            carry += std::uint64_t{a.digits_[i]} * b.digits_[j] + result[i + j];
            result[i + j] = low(carry);
            carry >>= digitBits;
        }
        result[i + b.digits_.size()] = low(carry);
    }
    return BigInteger::make(std::move(result), a.negative_ != b.negative_);
}

BigInteger operator/(const BigInteger& a, const BigInteger& b) {
    BigInteger::Digits quotient;
    BigInteger::Digits remainder;
    BigInteger::divide(a.digits_, b.digits_, quotient, remainder);
    return BigInteger::make(std::move(quotient), a.negative_ != b.negative_);
}

BigInteger operator%(const BigInteger& a, const BigInteger& b) {
    BigInteger::Digits quotient;
    BigInteger::Digits remainder;
    BigInteger::divide(a.digits_, b.digits_, quotient, remainder);
    return BigInteger::make(std::move(remainder), a.negative_);
}

Rational::Rational(int value) : numerator_(value) {}

Rational::Rational(double value) {
    int exponent = 0;
    const double fraction = std::frexp(value, &exponent);
    const auto mantissa = static_cast<std::int64_t>(std::ldexp(fraction, 53));
    exponent -= 53;
    *this = Rational(BigInteger(mantissa).shifted(std::max(exponent, 0)),
                     BigInteger(1).shifted(std::max(-exponent, 0)));
}

Rational::Rational(BigInteger numerator, BigInteger denominator)
    : numerator_(std::move(numerator)), denominator_(std::move(denominator)) {
    if (denominator_.isZero()) {
        throw std::domain_error("division by zero");
    }
    if (numerator_.isZero()) {
        denominator_ = 1;
        return;
    }
    // Most denominators are powers of two or nearly so: without their zeros the rest is short.
    const int numeratorZeros = numerator_.trailingZeros();
    const int denominatorZeros = denominator_.trailingZeros();
    const BigInteger oddNumerator = numerator_.shifted(-numeratorZeros);
    const BigInteger oddDenominator = denominator_.shifted(-denominatorZeros);
    const BigInteger common = greatestCommonDivisor(oddNumerator, oddDenominator);
    const int zeros = std::min(numeratorZeros, denominatorZeros);
    numerator_ = (oddNumerator / common).shifted(numeratorZeros - zeros);
    denominator_ = (oddDenominator / common).shifted(denominatorZeros - zeros);
    if (denominator_.isNegative()) {
        numerator_ = -numerator_;
        denominator_ = -denominator_;
    }
}

double Rational::toDouble() const {
    const int shift = 62 - numerator_.bitLength() + denominator_.bitLength();
    const BigInteger quotient = shift >= 0 ? numerator_.shifted(shift) / denominator_
                                           : numerator_ / denominator_.shifted(-shift);
    return std::ldexp(quotient.toDouble(), -shift);
}

Rational Rational::operator-() const {
    Rational result = *this;
    result.numerator_ = -result.numerator_;
    return result;
}

Rational operator+(const Rational& a, const Rational& b) {
    return {a.numerator_ * b.denominator_ + b.numerator_ * a.denominator_,
            a.denominator_ * b.denominator_};
}

Rational operator*(const Rational& a, const Rational& b) {
    return {a.numerator_ * b.numerator_, a.denominator_ * b.denominator_};
}

Rational operator/(const Rational& a, const Rational& b) {
    return {a.numerator_ * b.denominator_, a.denominator_ * b.numerator_};
}

} // namespace korvane::test
