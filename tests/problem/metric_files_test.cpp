// Metric input files: read, written and converted.

#include "reading_helpers.h"

#include "problem/fields.h"
#include "problem/input_writer.h"
#include "problem/unit_conversion.h"
#include "runtime/file_text.h"
#include "support/draws.h"
#include "support/input_cases.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace korvane;
using namespace korvane::test;

namespace {

/// 5 m of dry sand: 18.85 kN/m3, water of 9.81 kN/m3 2 m below the top.
const std::string MetricWall = "( a wall in metres\n"
                               "UNITS SI\n"
                               "'METRIC\n"
                               "CONTROL CANTILEVER DESIGN 1 1.5\n"
                               "WALL 5\n"
                               "SURFACE RIGHT 1 0 5\n"
                               "SURFACE LEFT 1 0 0\n"
                               "SOIL BOTH STRENGTHS 2\n"
                               " 19.33 15.9 32 0 0 0 -2.5 0\n"
                               " 20.1 16 30 2.4 10 1.2\n"
                               "WATER ELEVATIONS 9.81 3 2\n"
                               "VERTICAL LINE R 1 1.5 22.2\n"
                               "VERTICAL UNIFORM 10\n"
                               "HORIZONTAL LINE 1 4.5 7.3\n"
                               "FINISHED\n";

FileNumbers numbersOf(const std::string& text) {
    Problem problem;
    clearProblemData(problem);
    FileNumbers numbers;
    EXPECT_TRUE(readProblem(problem, text, "wall.dat", nullptr, &numbers).complete);
    return numbers;
}

std::string converted(const std::string& text, UnitSystem to) {
    return convertedInput(text, numbersOf(text), to);
}

ReadResult metricError(const std::string& section, const std::string& line) {
    ReadResult result = dataError(section, line);
    result.units = UnitSystem::SI;
    return result;
}

std::string withFirstLine(const std::string& line) {
    return line + "\n" + plainFile();
}

/// Every example with a complete problem.
std::vector<std::filesystem::path> examples() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(sourceFolder() / "examples")) {
        if (entry.path().extension() == ".dat") {
            files.push_back(entry.path());
        }
    }
    return files;
}

} // namespace

/// By hand: 5 m / 0.3048 = 16.4042 FT; 9.81 kN/m3 / 0.157087464 = 62.4493 PCF; 2.4 kPa /
/// 0.0478802590 = 50.1250 PSF; 22.2 kN/m / 0.0145939029 = 1521.183 PLF.
TEST(MetricFiles, NumbersAreConvertedAsTheyAreRead) {
    const Outcome outcome = readText(MetricWall);
    ASSERT_TRUE(outcome.result.complete) << outcome.result;
    EXPECT_EQ(outcome.result.units, UnitSystem::SI);
    const Problem& problem = outcome.problem;
    EXPECT_NEAR(problem.WallTopElev, 16.40420, 1e-5);
    EXPECT_NEAR(problem.WaterUnitWeight, 62.4493, 1e-4);
    EXPECT_NEAR(problem.SoilCohesion(Left, 2), 50.1250, 1e-4);
    EXPECT_NEAR(problem.VLineLoad(Right, 1), 1521.183, 1e-3);
    EXPECT_NEAR(problem.HLineElev(1), 4.5 / 0.3048, 1e-9);
    EXPECT_EQ(problem.SoilFriction(Right, 1), 32);
    EXPECT_EQ(problem.FSPassive, 1.5);
    EXPECT_EQ(problem.SoilBottomElev(Right, 2), NoLayerBottom);
}

TEST(MetricFiles, WholeFeetComeOutWhole) {
    EXPECT_EQ(fromUnits(Quantity::Length, 5.4864, UnitSystem::SI), 18);
    EXPECT_EQ(fromUnits(Quantity::Length, -3.81, UnitSystem::SI), -12.5);
}

TEST(MetricFiles, TheFirstLineIsReadInAnyCaseBehindCommentsAndEmptyLines) {
    for (const char* line :
         {"UNITS SI", "units si", "  Units   Si  ", "(note\n\n(more\nUNITS SI"}) {
        const Outcome outcome = readText(withFirstLine(line));
        EXPECT_TRUE(outcome.result.complete) << line << outcome.result;
        EXPECT_EQ(outcome.result.units, UnitSystem::SI) << line;
        EXPECT_NEAR(outcome.problem.WallTopElev, 10 / 0.3048, 1e-9) << line;
    }
}

TEST(MetricFiles, UnitsUsSaysWhatHoldsWithoutIt) {
    const Outcome outcome = readText(withFirstLine("UNITS US"));
    const Outcome plain = readText(plainFile());
    ASSERT_TRUE(outcome.result.complete) << outcome.result;
    EXPECT_EQ(outcome.problem, plain.problem);
    EXPECT_EQ(outcome.result, plain.result);
}

TEST(MetricFiles, AnyOtherUnitsLineIsRefusedLikeAnyLineBeforeTheHeading) {
    for (const std::string line : {"UNITS", "UNITS METRIC", "UNITS SI M", "UNIT SI", "UNITS S"}) {
        EXPECT_EQ(readText(withFirstLine(line)).result,
                  (ReadResult{false, "INPUT DATA ERRORS",
                              "At least one HEADING LINE is required.\nCurrent input line is:\n\n" +
                                  line + " \n\nUnable to continue."}));
    }
}

TEST(MetricFiles, AUnitsLineElsewhereIsRefusedLikeAnyUnexpectedLine) {
    EXPECT_EQ(readText("'HEADING\nUNITS SI\n").result, dataError("CONTROL DATA", "UNITS SI"));
    EXPECT_EQ(readText(plainFile("UNITS SI\n")).result, dataError("TERMINATION", "UNITS SI"));
    EXPECT_EQ(readText(withFirstLine("UNITS SI\nUNITS SI")).result.title, "INPUT DATA ERRORS");
}

TEST(MetricFiles, LimitsHoldBehindTheConversionAndMessagesTellTheLineAsTyped) {
    std::string text = MetricWall;
    text.replace(text.find("1.2\n"), 3, "2.5"); // adhesion above the cohesion of 2.4 kPa
    EXPECT_EQ(readText(text).result, metricError("SOIL LAYER DATA", "20.1 16 30 2.4 10 2.5"));
    Problem problem;
    clearProblemData(problem);
    InputFault fault;
    readProblem(problem, text, "wall.dat", &fault);
    EXPECT_EQ(faultText(fault), "10: SoilAdhesion: read \"2.5\", must be 0 to 2.4");
    text.replace(text.find("2.5\n"), 3, "2.4");
    EXPECT_TRUE(readText(text).result.complete);
}

TEST(MetricFiles, AWrongNumberGetsTheToldBoxWithTheTypedLine) {
    std::string text = MetricWall;
    text.replace(text.find("9.81"), 4, "9,81");
    EXPECT_EQ(readText(text).result, metricError("WATER DATA", "WATER ELEVATIONS 9,81 3 2"));
}

// 1E308 kPa would be 2.1E309 PSF, beyond the range of a double.
TEST(MetricFiles, ANumberThatNoDoubleHoldsBehindTheConversionIsRefused) {
    std::string text = MetricWall;
    text.replace(text.find("2.4 10"), 3, "1E308");
    InputFault fault;
    Problem problem;
    clearProblemData(problem);
    EXPECT_EQ(readProblem(problem, text, "wall.dat", &fault).text,
              metricError("SOIL LAYER DATA", "20.1 16 30 1E308 10 1.2").text);
    EXPECT_EQ(faultText(fault),
              "10: SoilCohesion: read \"1E308\", must be a smaller number, at least 0");
    text.replace(text.find("1E308"), 5, "1E305");
    EXPECT_TRUE(readText(text).result.complete);
    text.replace(text.find("SI"), 2, "US");
    text.replace(text.find("1E305"), 5, "1E308");
    EXPECT_TRUE(readText(text).result.complete);
}

TEST(MetricFiles, WhatWasTypedComesBack) {
    const Problem problem = readText(MetricWall).problem;
    const std::string text = inputFileText(problem, UnitSystem::SI);
    EXPECT_TRUE(text.starts_with("UNITS SI\n'METRIC")) << text;
    for (const char* typed :
         {" 19.33 ", " 15.9 ", " 2.4 ", " 9.81 ", " 22.2", " 4.5 ", " 7.3", " 10 "}) {
        EXPECT_NE(text.find(typed), std::string::npos) << typed << "\n" << text;
    }
    EXPECT_EQ(readText(text).problem, problem);
}

/// Whole numbers of up to ten digits with the point anywhere.
TEST(MetricFiles, EveryTypedNumberOfTenDigitsComesBack) {
    Draws draws(10);
    for (int quantity = 0; quantity < QuantityCount; ++quantity) {
        const auto measured = static_cast<Quantity>(quantity);
        for (int i = 0; i < 5000; ++i) {
            std::string text = std::to_string(draws.whole(1000000000, 2147483647));
            text.resize(static_cast<std::size_t>(draws.whole(1, 10)));
            text += "E" + std::to_string(draws.whole(-12, 6));
            const double typed = std::stod(text);
            const double held = fromUnits(measured, typed, UnitSystem::SI);
            EXPECT_EQ(roundedTo(inUnits(measured, held, UnitSystem::SI), MetricDigits), typed);
        }
    }
}

TEST(MetricFiles, EveryHeldFieldGoesThroughAMetricFile) {
    RandomProblems problems(12);
    for (int i = 0; i < 200; ++i) {
        const Problem problem = readText(inputFileText(problems.next())).problem;
        const Outcome back = readText(inputFileText(problem, UnitSystem::SI));
        ASSERT_TRUE(back.result.complete) << back.result;
        for (const FieldGroup& group : fieldGroups()) {
            for (int field = static_cast<int>(group.first); field <= static_cast<int>(group.last);
                 ++field) {
                const FieldRules& rules = rulesOf(static_cast<ProblemField>(field));
                for (int side = 1; side <= group.sides; ++side) {
                    for (int row = 1; row <= group.rows(problem, side); ++row) {
                        const double value = rules.value(problem, side, row);
                        EXPECT_NEAR(rules.value(back.problem, side, row), value,
                                    5e-10 * std::abs(value))
                            << rules.name;
                    }
                }
            }
        }
    }
}

TEST(MetricFiles, ConvertingKeepsCommentsHeadingsWordsAndLineEnds) {
    const std::string text = "(first\r\n'HEADING 10 FT\r\nCONT C D\r\nWALL   10   (FT)\r\n"
                             "SU B 1 0.0 +10\r\n( 100 PCF\r\nSO B S 1\r\n  120 110 30 0 0 0 1.5\r\n"
                             "F 12";
    const std::string metric = converted(text, UnitSystem::SI);
    // 10 FT = 3.048 m; 120 PCF = 18.8504956615 kN/m3, 110 PCF = 17.2796210231 kN/m3.
    EXPECT_EQ(metric, "(first\r\nUNITS SI\r\n'HEADING 10 FT\r\nCONT C D\r\nWALL   3.048   (FT)\r\n"
                      "SU B 1 0.0 3.048\r\n( 100 PCF\r\nSO B S 1\r\n  18.85049566 17.27962102 30 0 "
                      "0 0 1.5\r\nF 12");
    EXPECT_EQ(converted(metric, UnitSystem::US),
              std::string(text).replace(text.find("+10"), 3, "10"));
}

TEST(MetricFiles, ConvertingThereAndBackGivesEveryExampleBack) {
    for (const auto& file : examples()) {
        const std::string text = readFile(file);
        const UnitSystem own = numbersOf(text).units;
        const UnitSystem other = own == UnitSystem::US ? UnitSystem::SI : UnitSystem::US;
        const std::string there = converted(text, other);
        EXPECT_EQ(numbersOf(there).units, other) << file;
        EXPECT_EQ(readText(converted(there, own)).problem, readText(text).problem) << file;
    }
}

// 7.12345678912 m are 23.370921224147 FT: a file in feet keeps what a metric one has typed.
TEST(MetricFiles, FeetKeepMoreThanTenDigits) {
    EXPECT_EQ(convertedNumber(Quantity::Length, "7.12345678912", UnitSystem::SI, UnitSystem::US),
              "23.37092122415");
    EXPECT_EQ(convertedNumber(Quantity::Length, "9.81", UnitSystem::SI, UnitSystem::US),
              "32.18503937");
    EXPECT_EQ(convertedNumber(Quantity::Inertia, "1E307", UnitSystem::US, UnitSystem::SI), "");
}

// What a problem of metric numbers is in feet comes back too, whatever its digits.
TEST(MetricFiles, NumbersThatComeBackAreNotTold) {
    const std::string feet = inputFileText(readText(MetricWall).problem);
    EXPECT_NE(feet.find("16.4041994750656"), std::string::npos) << feet; // 5 m
    EXPECT_TRUE(roundedNumbers(feet, numbersOf(feet), UnitSystem::SI).empty());
    EXPECT_TRUE(roundedNumbers(MetricWall, numbersOf(MetricWall), UnitSystem::US).empty());
    std::string text = feet;
    text.replace(text.find("16.4041994750656"), 16, "16.4041994751000");
    const auto rounded = roundedNumbers(text, numbersOf(text), UnitSystem::SI);
    ASSERT_EQ(rounded.size(), 1U);
    EXPECT_EQ(rounded[0].line, 3U);
    EXPECT_EQ(rounded[0].text, "16.4041994751000");
    EXPECT_EQ(rounded[0].told, "5");
}

TEST(MetricFiles, AFileInTheUnitsAskedForStaysAsItIs) {
    EXPECT_EQ(converted(MetricWall, UnitSystem::SI), MetricWall);
    EXPECT_EQ(converted(plainFile(), UnitSystem::US), plainFile());
}

TEST(MetricFiles, AByteOrderMarkStaysFirst) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_TRUE(converted(mark + plainFile(), UnitSystem::SI).starts_with(mark + "UNITS SI\n'"));
}
