// Formulas in letters, in numbers, and their values.
#include "sheet/expression.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::test {

using namespace sheet;
namespace {

constexpr UnitSystem US = UnitSystem::US;

TEST(Expression, WorksOutWhatItPrints) {
    const Expr phi = term("φ", "", 30, Quantity::Angle);
    EXPECT_NEAR(sine(phi).value(), 0.5, 1e-15);
    EXPECT_NEAR(arctangent(Expr(1)).value(), 45, 1e-13);
    EXPECT_DOUBLE_EQ((power(Expr(3), 2) - Expr(4) / Expr(2)).value(), 7);
    EXPECT_DOUBLE_EQ(root(-Expr(-16)).value(), 4);
    EXPECT_NEAR(logarithm(cosineRad(Expr(0)) / sineRad(pi() / Expr(2))).value(), 0, 1e-15);
}

TEST(Expression, PrintsLettersSideBySideAndNumbersWithASign) {
    const Expr product = term("K", "a", 0.3) * term("σ", "", 1200, Quantity::Stress);
    EXPECT_EQ(product.symbols(),
              "<msub><mi>K</mi><mtext>a</mtext></msub><mo>\u2062</mo><mi>σ</mi>");
    EXPECT_EQ(product.numbers(US), "<mtext>0.3⋅1200</mtext>");
    // 1200 PSF are 1200 * 0.0478803 = 57.456 kPa.
    EXPECT_EQ(product.numbers(UnitSystem::SI), "<mtext>0.3⋅57.456</mtext>");
}

TEST(Expression, PrintsTheFactorBetweenItsUnits) {
    // 12 x 15000 LB-FT over 10 IN^3 are 18000 PSI.
    const Expr stress = unitFactor(12, 1000) * term("M", "", 15000, Quantity::Moment) /
                        term("S", "", 10, Quantity::SectionModulus);
    EXPECT_DOUBLE_EQ(stress.value(), 18000);
    EXPECT_EQ(stress.symbols(), "<mfrac><mrow><mi>u</mi><mo>\u2062</mo><mi>M</mi></mrow>"
                                "<mrow><mi>S</mi></mrow></mfrac>");
    EXPECT_EQ(stress.numbers(US), "<mfrac><mrow><mtext>12⋅15000</mtext></mrow><mn>10</mn></mfrac>");
    // 15000 LB-FT a foot are 66.723 kNm a metre, 10 IN^3 a foot 537.63 cm^3: 124.11 MPa.
    EXPECT_EQ(stress.numbers(UnitSystem::SI),
              "<mfrac><mrow><mtext>1000⋅66.723</mtext></mrow><mn>537.63</mn></mfrac>");
}

TEST(Expression, PutsParenthesesWhereTheyAreNeeded) {
    const Expr a = term("a", "", 2);
    const Expr b = term("b", "", -3);
    EXPECT_EQ((a * (a + b)).numbers(US), "<mtext>2⋅(2\u00a0+\u00a0(−3))</mtext>");
    EXPECT_EQ((a - (a - b)).numbers(US), "<mtext>2\u00a0−\u00a0(2\u00a0−\u00a0(−3))</mtext>");
    EXPECT_EQ((-(b * a)).numbers(US), "<mtext>−(−3⋅2)</mtext>");
    EXPECT_EQ(power(b, 2).numbers(US), "<msup><mrow><mtext>(−3)</mtext></mrow><mn>2</mn></msup>");
    EXPECT_EQ((b + a).numbers(US), "<mtext>−3\u00a0+\u00a02</mtext>");
}

TEST(Expression, KeepsThePartsOfAFractionApart) {
    EXPECT_EQ((term("a", "", 2) / term("b", "", 3)).numbers(US),
              "<mfrac><mn>2</mn><mn>3</mn></mfrac>");
    EXPECT_EQ((Expr(2) * pi() / Expr(3)).symbols(),
              "<mfrac><mrow><mn>2</mn><mo>\u2062</mo><mi>π</mi></mrow><mn>3</mn></mfrac>");
}

TEST(Expression, MarksAnglesAsDegrees) {
    EXPECT_EQ(cosine(term("δ", "", 12.5, Quantity::Angle)).numbers(US),
              "<mtext>cos\u200912.5°</mtext>");
}

TEST(MathNumber, HasFiveSignificantDigits) {
    EXPECT_EQ(mathNumber(0.333333333), "<mn>0.33333</mn>");
    EXPECT_EQ(mathNumber(1234.56), "<mn>1234.6</mn>");
    EXPECT_EQ(mathNumber(-2.0), "<mn>−2</mn>");
    EXPECT_EQ(mathNumber(1234567.4), "<mn>1234567</mn>"); // the whole part stays whole
    EXPECT_EQ(mathNumber(-0.0), "<mn>0</mn>");
    EXPECT_EQ(mathNumber(std::nan("")), "<mo>–</mo>");
    EXPECT_EQ(mathNumber(1.5e-7),
              "<mrow><mn>1.5</mn><mo>⋅</mo><msup><mn>10</mn><mn>−7</mn></msup></mrow>");
}

TEST(Expression, BreaksALongSumBetweenItsTerms) {
    Expr sum = term("a", "", 1234.5) * term("b", "", 1234.5);
    for (int i = 0; i < 9; ++i) {
        sum = sum - term("a", "", 1234.5) * term("b", "", 1234.5);
    }
    const auto pieces = sum.numberPieces(US);
    EXPECT_GT(pieces.size(), 1U);
    EXPECT_TRUE(pieces.back().starts_with("<mtext>\u00a0−\u00a0")) << pieces.back();
}

} // namespace
} // namespace korvane::test
