// Why an input has no results: the line behind its messages and the member of its JSON.
#include "batch_run.h"
#include "problem/input_writer.h"
#include "runtime/file_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <functional>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

using Json = nlohmann::json;

const char* const bottomOfCantilever = "searching the bottom of the cantilever wall";
const char* const bottomByFreeEarth =
    "searching the bottom of the anchored wall by the free earth method";
const char* const rightPressures = "finding the soil pressures of the right side";

void anchor(Problem& problem) {
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -3;
}

void analyse(Problem& problem, double bottom) {
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = 1;
    problem.WallBottomElev = bottom;
    problem.WallModulus = 29e6;
    problem.WallInertia = 100;
}

void secondLayer(Problem& problem, int side, double firstBottom) {
    problem.SoilLayerCount(side) = 2;
    problem.SoilSatWeight(side, 2) = problem.SoilMoistWeight(side, 2) = 120;
    problem.SoilFriction(side, 2) = 30;
    problem.SoilBottomElev(side, 1) = firstBottom;
    problem.SoilBottomElev(side, 2) = NoLayerBottom;
}

void slope(Problem& problem, int side, double rise) {
    problem.SurfacePointCount(side) = 2;
    problem.SurfaceDist(side, 2) = 10;
    problem.SurfaceElev(side, 2) = problem.SurfaceElev(side, 1) + rise;
}

/// 15 FT of 120 PCF, 1800 PSF, above clay on both sides.
void clay(Problem& problem, double cohesion) {
    problem.SurfaceElev(Left, 1) = -15;
    for (const int side : {Right, Left}) {
        problem.SoilFriction(side, 1) = 0;
        problem.SoilCohesion(side, 1) = cohesion;
    }
}

void coefficients(Problem& problem, int side) {
    problem.SoilDataKind(side) = SoilData::Coefficients;
    problem.SoilCoefActive(side, 1) = 0.33;
    problem.SoilCoefPassive(side, 1) = 3;
}

void seepage(Problem& problem, double right, double left, double start) {
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = right;
    problem.WaterElev(Left) = left;
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = start;
}

void setSoil(Problem& problem, int side, double sat, double moist, double friction,
             double cohesion = 0) {
    problem.SoilSatWeight(side, 1) = sat;
    problem.SoilMoistWeight(side, 1) = moist;
    problem.SoilFriction(side, 1) = friction;
    problem.SoilCohesion(side, 1) = cohesion;
}

void lineLoad(Problem& problem, double elev, double load) {
    problem.HLineCount = 1;
    problem.HLineElev(1) = elev;
    problem.HLineLoad(1) = load;
}

/// Soil of 110 PCF below an anchor at -4; in the left soil a stiff layer of 2 FT turns the net
/// pressure, and what lies below it never holds the wall.
void neverHeld(Problem& problem) {
    anchor(problem);
    problem.AnchorElev = -4;
    problem.SurfaceElev(Left, 1) = -20;
    secondLayer(problem, Left, -22);
    setSoil(problem, Right, 110, 110, 30);
    setSoil(problem, Left, 110, 110, 0, 600);
    problem.SoilMoistWeight(Left, 2) = 30;
    problem.SoilFriction(Left, 2) = 0;
    problem.SoilCohesion(Left, 2) = 10;
}

/// Clay that stands by itself and a line load that pulls: what drives the wall at first is water,
/// and seepage takes it away.
void turnedBySeepage(Problem& problem) {
    problem.FSPassive = 1.75;
    problem.WallTopElev = problem.SurfaceElev(Right, 1) = 50;
    problem.SurfaceElev(Left, 1) = 40;
    setSoil(problem, Right, 133, 119, 0, 1050);
    setSoil(problem, Left, 131, 98, 30);
    problem.SoilWallFriction(Left, 1) = 1;
    seepage(problem, 50, 45.5, 49.5);
    lineLoad(problem, 50, -900);
}

struct FailingWall {
    std::function<void(Problem&)> change; ///< of the plain cantilever wall
    const char* code;
    std::string stage;
    const char* others = "{}"; ///< members that are not null, as JSON
};

/// A failure of each kind that the walls of input files are known to meet.
const std::vector<FailingWall> failingWalls = {
    {[](Problem& problem) { // the first layer ends 1 FT above the ground at the wall
         slope(problem, Right, 5);
         secondLayer(problem, Right, 1);
     },
     "layer-above-surface", "preparing the solution", R"({"side": "right", "layer": 1})"},
    {[](Problem& problem) {
         slope(problem, Left, -2);
         coefficients(problem, Left);
     },
     "coefficients-for-wedge", "preparing the solution", R"({"side": "left"})"},
    {[](Problem& problem) { // atan(tan(40) / 0.5) = 59 degrees
         problem.FSPassive = 0.5;
         problem.SoilFriction(Right, 1) = 40;
         problem.SoilWallFriction(Right, 1) = 30;
     },
     "friction-too-large", rightPressures, R"({"side": "right", "layer": 1, "level": 1})"},
    {[](Problem& problem) { // soil of 60 PCF in water
         problem.WaterDataKind = WaterData::Elevations;
         problem.WaterUnitWeight = 62.4;
         problem.WaterElev(Right) = problem.WaterElev(Left) = -10;
         problem.SoilSatWeight(Right, 1) = 60;
     },
     "soil-weight-not-positive", rightPressures, R"({"side": "right", "layer": 1, "level": 1})"},
    {[](Problem& problem) { clay(problem, 440); }, // 4 x 440 < 1800: the net pressure stays active
     "no-sign-change", "combining the net pressures"},
    {[](Problem& problem) { problem.SurfaceElev(Left, 1) = 0; }, // nothing is retained
     "improper-rotation", bottomOfCantilever, R"({"level": 1})"},
    {[](Problem& problem) { // the only force, 5 PLF, is gone within the first foot
         clay(problem, 1000);
         lineLoad(problem, -1, 5);
     },
     "cantilever-bottom-above", bottomOfCantilever, R"({"level": 1, "elev": -16.0})"},
    {[](Problem& problem) { clay(problem, 450); }, // 4 x 450 = 1800: no net pressure at any depth
     "no-cantilever-bottom", bottomOfCantilever, R"({"level": 1, "elev": -50090.0})"},
    {turnedBySeepage, "cantilever-turns-around", bottomOfCantilever, R"({"level": 1})"},
    {neverHeld, "no-free-earth-bottom", bottomByFreeEarth, R"({"level": 1, "elev": -50120.0})"},
    {[](Problem& problem) { // coefficients on both sides: no factor moves the bottom
         anchor(problem);
         analyse(problem, -11);
         coefficients(problem, Right);
         coefficients(problem, Left);
     },
     "factor-not-found",
     "searching the factor of safety of the anchored wall by the free earth method",
     R"({"level": 1})"},
    {[](Problem& problem) {
         // 1 - 5 x 0.2 leaves 5.6E-17, at which the friction is 90 degrees and sin is 1: the
         // passive coefficient divides by zero.
         anchor(problem);
         analyse(problem, -10.05);
         problem.FSKind = 2;
     },
     "run-time-error", rightPressures, R"({"error": 11})"},
};

/// The one line that begins with "INPUT: while".
std::string whileLine(const BatchRun& run, const std::string& input) {
    std::string found;
    for (const std::string& line : splitLines(run.err)) {
        if (line.rfind(input + ": while ", 0) == 0) {
            EXPECT_EQ(found, "") << run.err;
            found = line;
        }
    }
    return found;
}

Json failureOf(const BatchOffice& office) {
    return Json::parse(office.read("wall.json"))["failure"];
}

/// Every member, null but for code, stage and `others`.
void expectFailure(const Json& failure, const std::string& code, const std::string& stage,
                   const std::string& others) {
    Json expected{{"code", code},         {"stage", stage},        {"level", nullptr},
                  {"side", nullptr},      {"layer", nullptr},      {"elev", nullptr},
                  {"factorLow", nullptr}, {"factorHigh", nullptr}, {"error", nullptr}};
    expected.update(Json::parse(others));
    EXPECT_EQ(failure, expected);
}

} // namespace

TEST(BatchFailure, EachWallThatFailsTellsCodeStageAndPlace) {
    for (const FailingWall& wall : failingWalls) {
        SCOPED_TRACE(wall.code);
        const BatchOffice office;
        Problem problem = plainCantilever();
        wall.change(problem);
        const std::string input = office.write("wall.dat", inputFileText(problem));
        const BatchRun run = office.run({"--json", input});
        EXPECT_EQ(run.status, 1) << run.err;
        EXPECT_EQ(whileLine(run, input), input + ": while " + wall.stage);
        expectFailure(failureOf(office), wall.code, wall.stage, wall.others);
        const Json json = Json::parse(office.read("wall.json"));
        EXPECT_EQ(json["status"], "failed");
        EXPECT_TRUE(json["levels"].empty());
        EXPECT_EQ(json["messages"].size(), 2U); // the file is complete, and one box tells why
    }
}

TEST(BatchFailure, ARefusedInputFailsWhileItIsRead) {
    const BatchOffice office;
    const std::string input = office.write("wall.dat", refusedInput);
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(whileLine(run, input), input + ": while reading the input");
    expectFailure(failureOf(office), "input-refused", "reading the input", "{}");
}

TEST(BatchFailure, ARunTimeErrorOfTheReaderTellsItsNumber) {
    const BatchOffice office;
    const std::string input = office.write("wall.dat", fatalInput);
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 70);
    EXPECT_EQ(whileLine(run, input), input + ": while reading the input");
    expectFailure(failureOf(office), "run-time-error", "reading the input", R"({"error": 5})");
}

TEST(BatchFailure, ASearchThatIsToldToStopIsADeclinedFactor) {
    const BatchOffice office;
    const std::string input = office.copy("tests/reference/anchored-analysis-9001.dat", "wall.dat");
    const std::string stage =
        "searching the factor of safety of the anchored wall by the free earth method";
    const BatchRun run = office.run({"--json", "--max-fs", "4.99", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(whileLine(run, input), input + ": while " + stage);
    expectFailure(failureOf(office), "factor-declined", stage, R"({"level": 1})");
}

TEST(BatchFailure, AReportThatCannotBeWrittenIsAFileFault) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "wall.dat");
    fs::create_directory(office.file("wall.out"));
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("[FILE ERROR] File: " + office.file("wall.out")), std::string::npos);
    const Json failure = failureOf(office);
    EXPECT_EQ(failure["code"], "file-fault");
    EXPECT_EQ(failure["stage"], "writing the reports");
    EXPECT_TRUE(failure["error"].is_number());
    EXPECT_EQ(whileLine(run, input), input + ": while writing the reports");
}

TEST(BatchFailure, TheLineStandsBehindTheMessagesOfItsOwnInput) {
    const BatchOffice office;
    const std::string good = office.copy("examples/cantilever-dry-sand.dat", "good.dat");
    const std::string refused = office.write("refused.dat", refusedInput);
    const std::vector<std::string> lines = splitLines(office.run({"--quiet", refused, good}).err);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].rfind(refused + ": [DATA ERROR IN INPUT FILE: ", 0), 0U);
    EXPECT_EQ(lines[1], refused + ": while reading the input");
    EXPECT_EQ(lines[2].rfind(good + ": [INPUT COMPLETE] ", 0), 0U); // solved: no such line
}

TEST(BatchFailure, ASolvedInputHasNone) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "wall.dat");
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(whileLine(run, input), "");
    EXPECT_TRUE(failureOf(office).is_null());
}

} // namespace korvane::test
