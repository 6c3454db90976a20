// Units: factors against their definitions, and the usual digits of texts.

#include "problem/fields.h"
#include "problem/quantities.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

using namespace korvane;

namespace {

constexpr double SI = 1e-14; // relative: a factor is a few operations on doubles

void expectFactor(Quantity quantity, double expected) {
    EXPECT_NEAR(siFactor(quantity) / expected, 1, SI);
}

} // namespace

TEST(Quantities, TheFactorsAreThoseOfTheInternationalFootInchAndPound) {
    // The published factors of the units, each from 0.3048 m, 0.0254 m and 0.45359237 kg with the
    // standard gravity of 9.80665 m/s2.
    expectFactor(Quantity::Length, 0.3048);
    expectFactor(Quantity::UnitWeight, 0.45359237 * 9.80665 / 0.028316846592 / 1000);
    expectFactor(Quantity::Stress, 0.45359237 * 9.80665 / 0.09290304 / 1000);
    expectFactor(Quantity::LineLoad, 0.45359237 * 9.80665 / 0.3048 / 1000);
    expectFactor(Quantity::Force, 0.45359237 * 9.80665 / 0.3048 / 1000);
    expectFactor(Quantity::Moment, 0.45359237 * 9.80665 / 1000);
    expectFactor(Quantity::Deflection, 25.4);
    expectFactor(Quantity::SectionModulus, 16.387064 / 0.3048);
    expectFactor(Quantity::Inertia, 41.62314256 / 0.3048);
    expectFactor(Quantity::Modulus, 0.45359237 * 9.80665 / 0.00064516 / 1e6);
    for (const Quantity same : {Quantity::Number, Quantity::Angle, Quantity::Gradient}) {
        EXPECT_EQ(siFactor(same), 1);
    }
}

TEST(Quantities, TheFactorsAgreeWithTheHandbooksRoundedOnes) {
    EXPECT_NEAR(siFactor(Quantity::UnitWeight) * 62.4, 9.80, 0.005);
    EXPECT_NEAR(siFactor(Quantity::Inertia), 136.56, 0.005);
    EXPECT_NEAR(siFactor(Quantity::SectionModulus), 53.76, 0.005);
    EXPECT_NEAR(siFactor(Quantity::Stress) * 1000, 47.88, 0.005);
    EXPECT_NEAR(siFactor(Quantity::Modulus) * 29e6, 199948, 0.5);
}

/// E = 29,000,000 PSI, I = 100 IN^4/FT and 1 IN of deflection are 2.9E9 LB-IN^3/FT. In metres and
/// kilonewtons it is the product of the three converted factors.
TEST(Quantities, AScaledDeflectionIsModulusTimesInertiaTimesDeflection) {
    const double modulus = inUnits(Quantity::Modulus, 29e6, UnitSystem::SI) * 1000; // kPa
    const double inertia = inUnits(Quantity::Inertia, 100, UnitSystem::SI) / 1e8;   // m4/m
    const double metres = inUnits(Quantity::Deflection, 1, UnitSystem::SI) / 1000;
    EXPECT_NEAR(inUnits(Quantity::ScaledDeflection, 2.9e9, UnitSystem::SI) /
                    (modulus * inertia * metres),
                1, SI);
    EXPECT_EQ(inUnits(Quantity::ScaledDeflection, 2.9e9, UnitSystem::US), 2.9e9);
}

TEST(Quantities, EveryFieldGoesToSiAndBack) {
    for (int place = 0; place < FieldCount; ++place) {
        const FieldRules& rules = rulesOf(static_cast<ProblemField>(place));
        for (const double value : {1.0, 9.81, -0.3, 1234.5678}) {
            const double metric = inUnits(rules.quantity, value, UnitSystem::SI);
            EXPECT_NEAR(fromUnits(rules.quantity, metric, UnitSystem::SI) / value, 1, SI)
                << rules.name;
            EXPECT_EQ(inUnits(rules.quantity, value, UnitSystem::US), value) << rules.name;
            EXPECT_EQ(fromUnits(rules.quantity, value, UnitSystem::US), value) << rules.name;
        }
    }
}

/// The names tell what a field holds: elevations, distances and the ends of loads are lengths.
TEST(Quantities, TheFieldsHaveTheQuantityOfTheirNames) {
    const std::set<std::string> weights{"SoilSatWeight", "SoilMoistWeight", "WaterUnitWeight"};
    for (int place = 0; place < FieldCount; ++place) {
        const FieldRules& rules = rulesOf(static_cast<ProblemField>(place));
        const std::string name = rules.name;
        const auto endsWith = [&name](const char* ending) { return name.ends_with(ending); };
        const bool length = endsWith("Elev") || endsWith("Dist") || endsWith("Start") ||
                            endsWith("End") || endsWith("Peak");
        EXPECT_EQ(rules.quantity == Quantity::Length, length) << name;
        EXPECT_EQ(rules.quantity == Quantity::Angle, endsWith("Friction")) << name;
        EXPECT_EQ(rules.quantity == Quantity::UnitWeight, weights.contains(name)) << name;
        EXPECT_EQ(rules.quantity == Quantity::LineLoad, endsWith("LineLoad")) << name;
        EXPECT_EQ(rules.quantity == Quantity::Number,
                  name.find("FS") != std::string::npos || name.find("Coef") != std::string::npos)
            << name;
    }
}

TEST(Quantities, TextsHaveTheUsualDigitsAndTheUnit) {
    EXPECT_EQ(quantityWithUnit(Quantity::Length, 10, UnitSystem::US), "10.00 FT");
    EXPECT_EQ(quantityWithUnit(Quantity::Length, 10, UnitSystem::SI), "3.048 m");
    EXPECT_EQ(quantityWithUnit(Quantity::Deflection, -0.5, UnitSystem::SI), "-12.7 mm");
    EXPECT_EQ(quantityWithUnit(Quantity::Number, 1.5, UnitSystem::SI), "1.5000");
    EXPECT_EQ(quantityWithUnit(Quantity::Moment, 1000, UnitSystem::SI), "4.45 kNm/m");
    EXPECT_EQ(quantityWithUnit(Quantity::ScaledDeflection, 2.9e9, UnitSystem::US),
              "2.9000E+09 LB-IN3/FT");
    EXPECT_EQ(
        quantityText(Quantity::Force, std::numeric_limits<double>::quiet_NaN(), UnitSystem::US),
        "-");
}

TEST(Quantities, TheNamesOfTheSystemsAreReadInEitherCase) {
    EXPECT_EQ(unitsNamed("si"), UnitSystem::SI);
    EXPECT_EQ(unitsNamed("US"), UnitSystem::US);
    EXPECT_EQ(unitsNamed("metric"), std::nullopt);
    EXPECT_STREQ(unitsName(UnitSystem::SI), "SI");
}
