// Questions and their study files.
#include "survey/question.h"

#include <gtest/gtest.h>

namespace korvane::study::test {
namespace {

AskedVariable friction() {
    return {.address = {ProblemField::SoilFriction, Right, 1},
            .bothSides = true,
            .low = 28,
            .high = 32,
            .steps = 5};
}

AskedVariable anchor() {
    return {.address = {.field = ProblemField::AnchorElev}, .low = 14.5, .high = 16.5, .steps = 3};
}

Question question(Asking asking) {
    return {.asking = asking,
            .variables = {friction(), anchor()},
            .outputs = {"penetration", "maxMoment"},
            .wedge = WedgeMethod::FixedSurface,
            .units = UnitSystem::SI};
}

} // namespace

TEST(Question, NamesItsVariablesForTablesAndForPeople) {
    AskedVariable asked = friction();
    EXPECT_EQ(variableName(asked), "SoilFriction_both_1");
    EXPECT_EQ(variableTitle(asked), "SoilFriction.1, both sides");
    asked.bothSides = false;
    EXPECT_EQ(variableName(asked), "SoilFriction_right_1");
    EXPECT_EQ(variableTitle(asked), "SoilFriction.right.1");
    asked = {.address = {.field = ProblemField::WaterElev}, .bothSides = true};
    EXPECT_EQ(variableName(asked), "WaterElev_both");
    EXPECT_EQ(variableTitle(asked), "WaterElev, both sides");
    EXPECT_EQ(variableName(anchor()), "AnchorElev");
}

TEST(Question, HasEvenlySpacedValuesWithBothEnds) {
    EXPECT_EQ(valuesOf(friction()), (std::vector<double>{28, 29, 30, 31, 32}));
    AskedVariable third{.address = {}, .low = 0, .high = 1, .steps = 4};
    EXPECT_EQ(valuesOf(third),
              (std::vector<double>{0, 0.333333333333, 0.666666666667, 1})); // 12 digits
}

TEST(Question, CountsItsVariants) {
    EXPECT_EQ(variantsOf(question(Asking::OneAtATime)), 5); // as given, two ends each
    EXPECT_EQ(variantsOf(question(Asking::Grid)), 15);
}

TEST(Question, TellsWhatIsMissing) {
    EXPECT_EQ(questionFault(question(Asking::Grid)), "");
    Question asked = question(Asking::Grid);
    asked.outputs.clear();
    EXPECT_EQ(questionFault(asked), "Tick the outputs to look at.");
    asked = question(Asking::Grid);
    asked.variables[1].high = asked.variables[1].low;
    EXPECT_EQ(questionFault(asked), "AnchorElev: the low number must be below the high one.");
    asked.variables.clear();
    EXPECT_EQ(questionFault(asked), "Tick the numbers that are to vary.");
    asked = question(Asking::Grid);
    asked.variables[0].steps = asked.variables[1].steps = 1000;
    EXPECT_EQ(questionFault(asked), ""); // a million
    asked.variables.push_back(anchor());
    EXPECT_EQ(questionFault(asked),
              "A grid here has at most 1,000,000 variants; korvane-study takes more.");
    asked.asking = Asking::OneAtATime;
    EXPECT_EQ(questionFault(asked), "");
}

TEST(Question, IsWrittenAsAStudyFile) {
    EXPECT_EQ(studyText(question(Asking::OneAtATime), "wa\\ll \"1\".dat"),
              "[study]\n"
              "base = \"wa\\\\ll \\\"1\\\".dat\"\n"
              "method = \"one-at-a-time\"\n"
              "units = \"si\"\n"
              "wedge = \"fixed\"\n"
              "outputs = [\"penetration\", \"maxMoment\"]\n"
              "\n"
              "[[variable]]\n"
              "name = \"SoilFriction_both_1\"\n"
              "fields = [\"SoilFriction.right.1\", \"SoilFriction.left.1\"]\n"
              "low = 28\n"
              "high = 32\n"
              "\n"
              "[[variable]]\n"
              "name = \"AnchorElev\"\n"
              "fields = [\"AnchorElev\"]\n"
              "low = 14.5\n"
              "high = 16.5\n");
    const std::string grid = studyText(question(Asking::Grid), "wall.dat");
    EXPECT_NE(grid.find("method = \"grid\"\n"), std::string::npos);
    EXPECT_NE(grid.find("values = [14.5, 15.5, 16.5]\n"), std::string::npos);
    EXPECT_EQ(grid.find("low = "), std::string::npos);
}

} // namespace korvane::study::test
