// The rules of files and screens against the record: by hand, and against the reader itself.
#include "problem/validate.h"

#include "problem/input_writer.h"
#include "reading_helpers.h"
#include "runtime/file_text.h"
#include "support/nasty_problem.h"
#include "support/random_problem.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>

namespace korvane::test {
namespace {

/// A wall of analysis with a list of every kind, such as files and screens both take.
Problem fullWall() {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::ActiveGiven;
    problem.AnchorElev = -2;
    problem.WallBottomElev = -30;
    problem.WallModulus = 29e6;
    problem.WallInertia = 200;
    problem.SurfacePointCount(Right) = 2;
    problem.SurfaceDist(Right, 2) = 10;
    problem.SurfaceElev(Right, 2) = -1;
    problem.SoilLayerCount(Right) = 2;
    problem.SoilBottomElev(Right, 1) = -5;
    problem.SoilSatWeight(Right, 2) = 120;
    problem.SoilMoistWeight(Right, 2) = 110;
    problem.SoilCohesion(Right, 2) = 500;
    problem.SoilBottomElev(Right, 2) = NoLayerBottom;
    problem.SoilDataKind(Left) = SoilData::Coefficients;
    problem.SoilCoefActive(Left, 1) = 0.3;
    problem.SoilCoefPassive(Left, 1) = 3;
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = -4;
    problem.WaterElev(Left) = -10;
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -10;
    problem.VLineCount(Right) = 1;
    problem.VLineDist(Right, 1) = 3;
    problem.VLineLoad(Right, 1) = 100;
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 50;
    problem.VStripCount(Right) = 2;
    problem.VRampCount(Right) = 1;
    problem.VRampEnd(Right) = 5;
    problem.VRampLoad(Right) = 100;
    problem.VTriCount(Right) = 1;
    problem.VTriPeak(Right, 1) = 5;
    problem.VTriEnd(Right, 1) = 9;
    problem.VTriLoad(Right, 1) = 100;
    problem.VVarCount(Right) = 2;
    problem.VVarDist(Right, 2) = 5;
    problem.HLineCount = 1;
    problem.HDistCount = 2;
    problem.HDistElev(2) = -5;
    for (const int strip : {1, 2}) {
        problem.VStripEnd(Right, strip) = 5;
        problem.VStripLoad(Right, strip) = 100;
    }
    return problem;
}

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr unsigned Everybody = ByBoth | ByRecord;

struct Spoilt {
    const char* field;
    int side;
    int index;
    unsigned by;
    std::function<void(Problem&)> spoil;
};

const std::vector<Spoilt> spoilts{
    {"FSActive", 0, 0, ByBoth, [](Problem& p) { p.FSActive = -5; }},
    {"AnchorElev", 0, 0, ByBoth, [](Problem& p) { p.AnchorElev = 0.5; }},
    {"WallBottomElev", 0, 0, ByBoth, [](Problem& p) { p.WallBottomElev = -2; }},
    {"WallModulus", 0, 0, ByBoth, [](Problem& p) { p.WallModulus = 0; }},
    {"WallInertia", 0, 0, Everybody, [](Problem& p) { p.WallInertia = Infinity; }},
    {"FSPassive", 0, 0, Everybody, [](Problem& p) { p.FSPassive = std::nan(""); }},
    {"FSKind", 0, 0, ByBoth, [](Problem& p) { p.FSKind = static_cast<FactorKind>(3); }},
    {"SurfaceDist", 2, 1, ByReader, [](Problem& p) { p.SurfaceDist(Left, 1) = -1; }},
    {"SurfaceDist", 1, 2, ByBoth, [](Problem& p) { p.SurfaceDist(Right, 2) = 0; }},
    {"SurfaceElev", 2, 1, ByBoth, [](Problem& p) { p.SurfaceElev(Left, 1) = 0.1; }},
    {"SurfaceElev", 1, 2, ByScreen, [](Problem& p) { p.SurfaceElev(Right, 2) = -30; }},
    {"SoilFriction", 1, 1, ByBoth, [](Problem& p) { p.SoilFriction(Right, 1) = 80; }},
    {"SoilCohesion", 1, 2, ByBoth, [](Problem& p) { p.SoilCohesion(Right, 2) = 0; }},
    {"SoilWallFriction", 1, 1, ByReader, [](Problem& p) { p.SoilWallFriction(Right, 1) = -1; }},
    {"SoilWallFriction", 1, 1, ByBoth, [](Problem& p) { p.SoilWallFriction(Right, 1) = 31; }},
    {"SoilAdhesion", 1, 2, ByReader, [](Problem& p) { p.SoilAdhesion(Right, 2) = 501; }},
    {"SoilAdhesion", 1, 2, ByBoth, [](Problem& p) { p.SoilAdhesion(Right, 2) = -1; }},
    {"SoilCoefPassive", 2, 1, ByScreen, [](Problem& p) { p.SoilCoefPassive(Left, 1) = 0; }},
    {"SoilFriction", 2, 1, Everybody, [](Problem& p) { p.SoilFriction(Left, 1) = Infinity; }},
    {"SoilBottomElev", 1, 2, ByBoth, [](Problem& p) { p.SoilBottomElev(Right, 2) = -9; }},
    {"SoilFSActive", 1, 1, ByBoth, [](Problem& p) { p.SoilFSActive(Right, 1) = -1; }},
    {"WaterUnitWeight", 0, 0, ByBoth, [](Problem& p) { p.WaterUnitWeight = 0; }},
    {"SeepageElev", 0, 0, ByBoth, [](Problem& p) { p.SeepageElev = -3; }},
    {"SeepageElev", 0, 0, ByScreen, [](Problem& p) { p.SeepageElev = -9; }},
    {"SeepageElev", 0, 0, ByReader, [](Problem& p) { p.SeepageElev = -11; }},
    {"VLineDist", 1, 1, ByScreen, [](Problem& p) { p.VLineDist(Right, 1) = 0; }},
    {"VLineLoad", 1, 1, ByBoth, [](Problem& p) { p.VLineLoad(Right, 1) = 0; }},
    {"VUniformLoad", 1, 0, ByReader, [](Problem& p) { p.VUniformLoad(Right) = 0; }},
    {"VStripEnd", 1, 1, ByBoth, [](Problem& p) { p.VStripEnd(Right, 1) = 0; }},
    {"VStripLoad", 1, 1, ByScreen, [](Problem& p) { p.VStripLoad(Right, 1) = 0; }},
    {"VStripLoad", 1, 2, ByBoth, [](Problem& p) { p.VStripLoad(Right, 2) = 0; }},
    {"VRampLoad", 1, 0, ByReader, [](Problem& p) { p.VRampLoad(Right) = 0; }},
    {"VRampEnd", 1, 0, ByBoth, [](Problem& p) { p.VRampEnd(Right) = -1; }},
    {"VTriEnd", 1, 1, ByBoth, [](Problem& p) { p.VTriPeak(Right, 1) = p.VTriEnd(Right, 1) = 0; }},
    {"VTriLoad", 1, 1, ByScreen, [](Problem& p) { p.VTriLoad(Right, 1) = 0; }},
    {"VVarDist", 1, 2, ByScreen, [](Problem& p) { p.VVarDist(Right, 2) = 0; }},
    {"VVarCount", 1, 0, ByReader, [](Problem& p) { p.VVarCount(Right) = 1; }},
    {"VStripCount", 2, 0, Everybody, [](Problem& p) { p.VStripCount(Left) = -1; }},
    {"VLineCount", 2, 0, Everybody, [](Problem& p) { p.VLineCount(Left) = 6; }},
    {"HDistElev", 0, 2, ByBoth, [](Problem& p) { p.HDistElev(2) = 0; }},
    {"HDistCount", 0, 0, ByBoth, [](Problem& p) { p.HDistCount = 1; }},
    {"WallType", 0, 0, Everybody, [](Problem& p) { p.WallType = static_cast<WallKind>('X'); }},
    {"ProgramMode", 0, 0, ByBoth, [](Problem& p) { p.ProgramMode = Mode::None; }},
};

TEST(Validate, AWholeWallHasNoFinding) {
    for (const Finding& finding : validate(fullWall())) {
        ADD_FAILURE() << findingText(finding);
    }
}

TEST(Validate, EachRuleNamesItsFieldAndWhoStatesIt) {
    for (const Spoilt& spoilt : spoilts) {
        Problem problem = fullWall();
        spoilt.spoil(problem);
        bool found = false;
        for (const Finding& finding : validate(problem)) {
            found = found ||
                    (finding.field == std::string(spoilt.field) && finding.side == spoilt.side &&
                     finding.index == spoilt.index && finding.by == spoilt.by);
        }
        EXPECT_TRUE(found) << spoilt.field << " " << spoilt.side << " " << spoilt.index;
    }
}

TEST(Validate, LimitAndValueAreTold) {
    Problem problem = fullWall();
    problem.SoilFriction(Right, 2) = 80;
    const auto findings = validate(problem);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].rule, Rule::AtMost);
    EXPECT_EQ(findings[0].limit, 45);
    EXPECT_EQ(findings[0].value, 80);
    EXPECT_EQ(findingText(findings[0]),
              "SoilFriction of right side, entry 2, is 80 and must be at most 45");
}

/// A given gradient comes from the screens alone, and between 0 and 1.
TEST(Validate, GivenGradients) {
    Problem problem = fullWall();
    problem.SeepageKind = Seepage::Given;
    for (const auto& [gradient, fatal] : {std::pair{0.5, false}, {0.0, true}, {1.0, true}}) {
        problem.SeepageGradient(1) = gradient;
        bool anyFatal = false;
        for (const Finding& finding : validate(problem)) {
            anyFatal = anyFatal || finding.isFatal();
            EXPECT_NE(finding.by & ByReader, 0U);
        }
        EXPECT_EQ(anyFatal, fatal) << gradient;
    }
}

// ---- against the reader
// --------------------------------------------------------------------------

bool fileMayHold(const Problem& problem) {
    for (const Finding& finding : validate(problem)) {
        if ((finding.by & ByReader) != 0) {
            return false;
        }
    }
    return true;
}

TEST(Validate, AgreesWithTheReaderOnEverySpoiltNumber) {
    const Problem whole = fullWall();
    int refused = 0;
    int taken = 0;
    for (const FieldGroup& group : fieldGroups()) {
        for (int side = 1; side <= group.sides; ++side) {
            const int rows = group.inUse(whole, side) ? group.rows(whole, side) : 0;
            for (int place = 0; place < rows * FieldCount; ++place) {
                const auto field = static_cast<ProblemField>(place % FieldCount);
                const int row = place / FieldCount + 1;
                // What a file does not hold, or not with all decimals.
                if (field < group.first || field > group.last ||
                    field == ProblemField::SoilBottomSlope || field == ProblemField::VUniformLoad ||
                    (group.first == ProblemField::Level2FSActive &&
                     whole.SoilDataKind(side) == SoilData::Coefficients)) {
                    continue;
                }
                for (const double value : {-40.0, -10.0, -3.0, 0.0, 4.0, 45.0, 46.0, 1000.0}) {
                    Problem problem = whole;
                    rulesOf(field).at(problem, side, row) = value;
                    const Outcome outcome = readText(inputFileText(problem));
                    const bool complete = outcome.result.complete && outcome.runtimeError == 0;
                    // A factor of 0 is not written: it then stands for the default.
                    const bool isFactor =
                        std::string(rulesOf(field).name).find("FS") != std::string::npos;
                    if (value == 0 && isFactor) {
                        continue;
                    }
                    EXPECT_EQ(complete, fileMayHold(problem))
                        << rulesOf(field).name << " " << side << " " << row << " " << value << " "
                        << outcome.result;
                    ++(complete ? taken : refused);
                }
            }
        }
    }
    EXPECT_GT(refused, 100);
    EXPECT_GT(taken, 100);
}

// A solution leaves gradients in the record, used or not; the next one starts from them.
TEST(Validate, GradientsOfEitherLevelAreFinite) {
    for (const Seepage kind : {Seepage::None, Seepage::Automatic, Seepage::Given}) {
        for (const int level : {1, 2}) {
            Problem problem = fullWall();
            problem.SeepageKind = kind;
            problem.SeepageGradient.fill(0.25);
            const auto fatal = [&problem] {
                int count = 0;
                for (const Finding& finding : validate(problem)) {
                    count += finding.isFatal() ? 1 : 0;
                }
                return count;
            };
            EXPECT_EQ(fatal(), 0);
            problem.SeepageGradient(level) = std::numeric_limits<double>::quiet_NaN();
            EXPECT_EQ(fatal(), 1);
            problem.SeepageGradient(level) = -std::numeric_limits<double>::infinity();
            EXPECT_EQ(fatal(), 1);
        }
    }
}

TEST(Validate, FindsNothingInWhatFilesGive) {
    const auto check = [](const Problem& problem, const std::string& name) {
        for (const Finding& finding : validate(problem)) {
            EXPECT_EQ(finding.by & (ByReader | ByRecord), 0U)
                << name << ": " << findingText(finding);
        }
    };
    int files = 0;
    for (const char* folder : {"examples", "cases", "tests/reference"}) {
        for (const auto& entry : std::filesystem::directory_iterator(sourceFolder() / folder)) {
            if (entry.path().extension() == ".dat") {
                const Outcome outcome = readText(readFile(entry.path()));
                if (outcome.result.complete && outcome.runtimeError == 0) {
                    check(outcome.problem, entry.path().filename());
                    ++files;
                }
            }
        }
    }
    EXPECT_GT(files, 100);
    RandomProblems walls(11);
    NastyProblems nasty(12);
    for (int number = 1; number <= 1000; ++number) {
        check(walls.next(), "wall " + std::to_string(number));
        const Problem hard = nasty.next().problem;
        const Outcome outcome = readText(inputFileText(hard)); // some are not for files
        ASSERT_EQ(outcome.result.complete && outcome.runtimeError == 0, fileMayHold(hard))
            << number;
    }
}

} // namespace
} // namespace korvane::test
