// Conditions of limit states against results made by hand.
#include "study_desk.h"

#include "study/limit_state.h"

#include "support/result_bench.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace korvane::study::test {

using testing::HasSubstr;

namespace {

const std::vector<std::string> Names{"capacity", "water"};

/// A wall with one or two levels of known numbers.
struct Wall {
    explicit Wall(const std::string& example) {
        base =
            studyOf(head("grid") + variable("t", "fields = \"WallTopElev\"\nvalues = 1"), example)
                .base;
        results.levelCount = base.WallType == WallKind::Anchored ? 2 : 1;
        for (int level = 1; level <= results.levelCount; ++level) {
            LevelResult& result = results.levels(level);
            result.penetration = 10.0 * level;       // FT
            result.bottomElev = -10.0 * level;       // FT
            result.anchorForce = 500.0 * level;      // LB/FT
            result.diagrams.MaxMoment.value = -3000; // LB-FT/FT
        }
    }

    LimitValues values(UnitSystem units = UnitSystem::US) const {
        return {.variables = numbers, .problem = base, .results = &results, .units = units};
    }
    bool holds(const std::string& text, UnitSystem units = UnitSystem::US) const {
        return read(text).holds(values(units));
    }
    double margin(const std::string& text) const { return read(text).margin(values()); }
    Condition read(const std::string& text) const {
        ReadCondition condition = readCondition(text, Names, base);
        EXPECT_EQ(condition.fault, "") << text;
        return condition.condition;
    }
    std::string fault(const std::string& text) const {
        ReadCondition condition = readCondition(text, Names, base);
        EXPECT_NE(condition.fault, "") << text;
        return condition.fault;
    }

    Problem base;
    Results results;
    std::vector<double> numbers{7, 3};
};

const std::string Cantilever = "cantilever-dry-sand.dat";
const std::string Anchored = "anchored-sand.dat";

} // namespace

TEST(LimitState, ComparesOutputsVariablesAndNumbers) {
    const Wall wall(Cantilever);
    EXPECT_TRUE(wall.holds("penetration > 9.99"));
    EXPECT_FALSE(wall.holds("penetration > 10"));
    EXPECT_TRUE(wall.holds("penetration >= 10"));
    EXPECT_TRUE(wall.holds("penetration <= 1e1"));
    EXPECT_FALSE(wall.holds("penetration < 1.0E+1"));
    EXPECT_TRUE(wall.holds("bottom < -9"));
    EXPECT_TRUE(wall.holds("bottomElev<-9"));
    EXPECT_TRUE(wall.holds("capacity > water"));
    EXPECT_TRUE(wall.holds("maxMoment < 0"));
    EXPECT_TRUE(wall.holds("abs(maxMoment) > 2999"));
    EXPECT_FALSE(wall.holds("abs(maxMoment + 1) > 2999"));
}

TEST(LimitState, ReckonsProductsBeforeSumsFromLeftToRight) {
    const Wall wall(Cantilever); // penetration 10, capacity 7, water 3
    EXPECT_DOUBLE_EQ(wall.margin("penetration > capacity + water * 2"), 3);
    EXPECT_DOUBLE_EQ(wall.margin("penetration > (capacity + water) * 2"), 10);
    EXPECT_DOUBLE_EQ(wall.margin("penetration > capacity - water - 1"), -7);
    EXPECT_DOUBLE_EQ(wall.margin("penetration > 24 / water / 2"), -6);
    EXPECT_DOUBLE_EQ(wall.margin("penetration > -water"), -13);
    EXPECT_DOUBLE_EQ(wall.margin("penetration > - -water"), -7);
    EXPECT_DOUBLE_EQ(wall.margin("penetration > -(water - capacity)"), -6);
}

TEST(LimitState, AndBindsBeforeOr) {
    const Wall wall(Cantilever);
    const std::string yes = "penetration > 1";
    const std::string no = "penetration > 99";
    EXPECT_TRUE(wall.holds(yes + " or " + no + " and " + no));
    EXPECT_FALSE(wall.holds("(" + yes + " or " + no + ") and " + no));
    EXPECT_TRUE(wall.holds(no + " and " + no + " or " + yes));
    EXPECT_DOUBLE_EQ(wall.margin("penetration > 8 and penetration > 9"), -1);
    EXPECT_DOUBLE_EQ(wall.margin("penetration > 8 or penetration > 9"), -2);
}

TEST(LimitState, OneOfTheLevelsOfAnAnchoredWallIsEnough) {
    const Wall wall(Anchored); // penetrations 10 and 20, forces 500 and 1000
    EXPECT_TRUE(wall.holds("penetration > 15"));
    EXPECT_TRUE(wall.holds("penetration < 15"));
    EXPECT_FALSE(wall.holds("penetration_free > 15"));
    EXPECT_TRUE(wall.holds("penetration_fixed > 15"));
    // Both of one level: the deep one has the large force.
    EXPECT_FALSE(wall.holds("penetration < 15 and anchorForce > 900"));
    EXPECT_TRUE(wall.holds("penetration_free < 15 and anchorForce_fixed > 900"));
    EXPECT_DOUBLE_EQ(wall.margin("penetration > 15"), -5);
}

TEST(LimitState, NumbersAreInTheUnitsOfTheStudy) {
    const Wall wall(Cantilever); // 10 FT are 3.048 M
    EXPECT_TRUE(wall.holds("penetration > 3.04", UnitSystem::SI));
    EXPECT_FALSE(wall.holds("penetration > 3.05", UnitSystem::SI));
}

TEST(LimitState, AWallWithoutSolutionFailsOrIsSafe) {
    const Wall wall(Cantilever);
    LimitState limit{.name = "deep", .text = "", .condition = wall.read("penetration > 99")};
    LimitValues values = wall.values();
    EXPECT_FALSE(limit.reached(values));
    values.results = nullptr;
    EXPECT_TRUE(limit.reached(values));
    limit.noSolutionFails = false;
    EXPECT_FALSE(limit.reached(values));
}

TEST(LimitState, FactorsOfSafetyAreAskedOfTheDesignAtFactorOne) {
    Wall wall("analysis-cantilever.dat");
    Condition condition = wall.read("factorOfSafety < 1");
    EXPECT_FALSE(condition.asksDesign());
    condition.askDesign();
    EXPECT_TRUE(condition.asksDesign());
    Results design;
    design.levelCount = 1;
    wall.base.WallBottomElev = -18;
    LimitValues values = wall.values();
    values.results = nullptr; // the analysis itself is not needed
    EXPECT_FALSE(condition.isKnown(values));
    values.design = &design;
    EXPECT_TRUE(condition.isKnown(values));
    design.levels(1).bottomElev = -17.5;
    EXPECT_FALSE(condition.holds(values));
    EXPECT_DOUBLE_EQ(condition.margin(values), 0.5);
    design.levels(1).bottomElev = -18.5;
    EXPECT_TRUE(condition.holds(values));

    Condition other = wall.read("factorOfSafety < 1.5 or maxMoment > 1");
    other.askDesign();
    EXPECT_FALSE(other.asksDesign());
    Condition mixed = wall.read("1 > factorOfSafety or maxMoment > 1");
    mixed.askDesign();
    EXPECT_TRUE(mixed.asksDesign());
    EXPECT_FALSE(mixed.isKnown(values)); // the moment is the analysis's
}

TEST(LimitState, WrongTextsAreTold) {
    const Wall wall(Cantilever);
    EXPECT_THAT(wall.fault("penetration"), HasSubstr("a comparison (<, <=, >, >=) is missing"));
    EXPECT_THAT(wall.fault("penetration >"), HasSubstr("it ends too early"));
    EXPECT_THAT(wall.fault(""), HasSubstr("it ends too early"));
    EXPECT_THAT(wall.fault("(penetration > 1"), HasSubstr("a bracket is not closed"));
    EXPECT_THAT(wall.fault("1 < penetration < 2"), HasSubstr("\"<\""));
    EXPECT_THAT(wall.fault("penetration > 1 and 2"), HasSubstr("join comparisons"));
    EXPECT_THAT(wall.fault("(penetration > 1) > 2"), HasSubstr("numbers on both sides"));
    EXPECT_THAT(wall.fault("penetration = 1"), HasSubstr("\"=\""));
    EXPECT_THAT(wall.fault("depth > 1"), HasSubstr("unknown \"depth\"; known are penetration"));
    EXPECT_THAT(wall.fault("depth > 1"), HasSubstr("capacity"));
    EXPECT_THAT(wall.fault("anchorForce > 1"), HasSubstr("unknown \"anchorForce\""));
    EXPECT_THAT(wall.fault("penetration > 1e999"), HasSubstr("\"1e999\" is no number"));
    EXPECT_THAT(wall.fault("penetration > 1x"), HasSubstr("\"1x\" is no number"));
    EXPECT_THAT(wall.fault("penetration > 1/0"), HasSubstr("divides by 0"));
    EXPECT_THAT(wall.fault("penetration / (2 - 2) > 1"), HasSubstr("divides by 0"));
    EXPECT_DOUBLE_EQ(wall.margin("penetration > 1 / (water - 1)"), -9.5);
    EXPECT_THAT(wall.fault("abs maxMoment > 1"), HasSubstr("abs needs brackets"));
    EXPECT_THAT(wall.fault(std::string(5000, '(') + "1"), HasSubstr("too deeply"));
    EXPECT_THAT(wall.fault(std::string(5000, '-') + "1 > 2"), HasSubstr("too deeply"));
    EXPECT_THAT(wall.fault(std::string(20000, ' ') + "1 > 2"), HasSubstr("longer than"));
}

} // namespace korvane::study::test
