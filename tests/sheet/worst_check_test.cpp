// Many values as one check: which of them it shows, and what may differ.
#include "sheet/sheet_writer.h"

#include <gtest/gtest.h>

#include <limits>

namespace korvane::test {

using namespace sheet;
namespace {

Check told(const WorstCheck& values, double scale = 0) {
    SheetWriter writer(UnitSystem::US);
    values.tell(writer, 1e-6, scale);
    EXPECT_EQ(writer.checks().size(), 1U);
    return writer.checks().front();
}

TEST(WorstCheck, MeasuresAllValuesByTheLargest) {
    WorstCheck values("Stress", Quantity::Stress);
    values.add(1000000, 1000000, "far down");
    values.add(1.5, 1, "at the top");
    const Check check = told(values);
    EXPECT_TRUE(check.pass); // a millionth of the largest is 1
    EXPECT_EQ(check.what, "Stress: 2 values, worst at the top");
    EXPECT_DOUBLE_EQ(check.tolerance, 1);
}

TEST(WorstCheck, MeasuresAValueAloneByWhatEntersIt) {
    WorstCheck values("Stress", Quantity::Stress);
    values.addAlone(1000000.5, 1000000, "far down", 0); // half of its tolerance
    values.addAlone(1.001, 1, "at the top", 0);
    const Check check = told(values);
    EXPECT_FALSE(check.pass);
    EXPECT_EQ(check.what, "Stress: 2 values, worst at the top");
    EXPECT_DOUBLE_EQ(check.tolerance, 1e-6);

    WorstCheck terms("Stress", Quantity::Stress);
    terms.addAlone(1.001, 1, "of 2000 less 1999", 2000);
    EXPECT_TRUE(told(terms).pass);
    EXPECT_DOUBLE_EQ(told(terms).tolerance, 2e-3);
    EXPECT_DOUBLE_EQ(told(terms, 5000).tolerance, 5e-3);
}

TEST(WorstCheck, AllowsForTheDigitsThatAreLostThereAlone) {
    WorstCheck values("Force", Quantity::Force);
    values.addAlone(1.9e17, 1.98e17, "without a digit", 0, 1e17);
    values.addAlone(100.2, 100, "at the wall", 0);
    const Check check = told(values);
    EXPECT_FALSE(check.pass);
    EXPECT_EQ(check.engine, 100);
    WorstCheck lost("Force", Quantity::Force);
    lost.add(100.2, 100, "at the wall", 0.3);
    EXPECT_TRUE(told(lost).pass);
}

TEST(WorstCheck, WhatIsNoNumberIsTheWorst) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    for (const bool last : {false, true}) {
        WorstCheck values("Ka", Quantity::Number);
        values.add(last ? 9 : none, 1, last ? "wrong" : "none");
        values.add(last ? none : 9, 1, last ? "none" : "wrong");
        EXPECT_FALSE(told(values).pass);
        EXPECT_EQ(told(values).what, "Ka: 2 values, worst none");
    }
}

TEST(WorstCheck, IsNoCheckWithoutValues) {
    SheetWriter writer(UnitSystem::US);
    WorstCheck("Ka", Quantity::Number).tell(writer);
    EXPECT_TRUE(writer.checks().empty());
}

} // namespace
} // namespace korvane::test
