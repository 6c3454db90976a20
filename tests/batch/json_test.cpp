// The JSON results: complete, and every number the same double.
#include "batch_run.h"
#include "problem/field_address.h"
#include "problem/input_reader.h"
#include "reports/report_parts.h"
#include "rowe/pile_sections.h"
#include "runtime/file_text.h"
#include "solution/solution.h"
#include "solution/wall_diagrams.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>

namespace korvane::test {

namespace {

using Json = nlohmann::json;

Json resultsOf(const BatchOffice& office, const std::string& input, int status = 0) {
    EXPECT_EQ(office.run({"--json", "--quiet", input}).status, status);
    return Json::parse(readFile(std::filesystem::path(input).replace_extension(".json")));
}

/// The entry of a grid against the pressures that it was written from.
void expectGrid(const Json& grid, const PressureDiagrams& solved) {
    const ElevationGrid& elevations = solved.grid;
    const Pressures& pressures = solved.pressures;
    const auto& water = pressures.WaterPressures;
    ASSERT_EQ(grid.size(), static_cast<std::size_t>(elevations.NumElevs));
    for (int i = 1; i <= elevations.NumElevs; ++i) {
        const Json& entry = grid[static_cast<std::size_t>(i - 1)];
        EXPECT_EQ(entry["elev"], elevations.ElevGrid(i));
        for (int k = 1; k <= 2; ++k) {
            const auto place = static_cast<std::size_t>(k - 1);
            EXPECT_EQ(entry["water"][place], water(i, k));
            EXPECT_EQ(entry["right"]["active"][place], pressures.ActivePressures(Right, i, k));
            EXPECT_EQ(entry["right"]["passive"][place], pressures.PassivePressures(Right, i, k));
            EXPECT_EQ(entry["left"]["active"][place], pressures.ActivePressures(Left, i, k));
            EXPECT_EQ(entry["left"]["passive"][place], pressures.PassivePressures(Left, i, k));
            EXPECT_EQ(entry["netActive"][place], solved.NetActive(i, k));
            EXPECT_EQ(entry["netPassive"][place], solved.NetPassive(i, k));
        }
        EXPECT_EQ(entry["left"]["marks"][0], markText(pressures.ActiveMark(Left, i)));
        EXPECT_EQ(entry["left"]["marks"][1], markText(pressures.PassiveMark(Left, i)));
    }
}

void expectLevel(const Json& json, const LevelResult& level) {
    const ResultDiagrams& solved = level.diagrams;
    EXPECT_EQ(json["bottomElev"], level.bottomElev);
    EXPECT_EQ(json["maxMoment"]["value"], solved.MaxMoment.value);
    EXPECT_EQ(json["maxMoment"]["elev"], solved.MaxMoment.elev);
    EXPECT_EQ(json["maxDeflection"]["value"], solved.MaxDeflection.value);
    EXPECT_EQ(json["maxDeflection"]["elev"], solved.MaxDeflection.elev);
    ASSERT_EQ(json["rows"].size(), static_cast<std::size_t>(solved.RowCount));
    for (int i = 1; i <= solved.RowCount; ++i) {
        const Json& row = json["rows"][static_cast<std::size_t>(i - 1)];
        EXPECT_EQ(row["elev"], solved.ResultElev(i));
        EXPECT_EQ(row["moment"], solved.ResultMoment(i));
        EXPECT_EQ(row["shear"], solved.ResultShear(i));
        EXPECT_EQ(row["deflection"], solved.ResultDeflection(i));
        EXPECT_EQ(row["pressure"], solved.ResultPressure(i));
    }
    expectGrid(json["grid"], wallDiagrams(level));
}

} // namespace

TEST(Json, EveryNumberReadsBackToTheSameDouble) {
    for (const char* example : {"anchored-all-loads", "cantilever-water-seepage",
                                "sloping-backfill-sweep", "analysis-anchored"}) {
        const BatchOffice office;
        const std::string input =
            office.copy("examples/" + std::string(example) + ".dat", "wall.dat");
        const Json json = resultsOf(office, input);

        Problem problem;
        clearProblemData(problem);
        ASSERT_TRUE(readProblem(problem, readFile(input), input).complete);
        Options options;
        options.wedge = WedgeMethod::Sweep;
        PileSections sections;
        LoadPileDefaults(sections);
        Workspace workspace;
        const Solved solved = solve(problem, options, sections, workspace);
        ASSERT_FALSE(solved.failure);
        if (problem.ProgramMode == Mode::Design) {
            expectGrid(json["grid"], withWaterInStep(solved.review->diagrams));
        } else {
            EXPECT_TRUE(json["grid"].empty());
        }
        const int levels = problem.WallType == WallKind::Anchored ? 2 : 1;
        ASSERT_EQ(json["levels"].size(), static_cast<std::size_t>(levels));
        for (int level = 1; level <= levels; ++level) {
            expectLevel(json["levels"][static_cast<std::size_t>(level - 1)],
                        solved.results->levels(level));
        }
    }
}

// 1 FT = 0.3048 m, 1 LB-FT = 0.0044482216 kNm, 1 LB/FT = 0.0145939029 kN/m, 1 PCF = 0.1570874638
// kN/m3, 1 PSF = 0.0478802590 kPa, 1 LB-IN3/FT = 2.39151E-07 kNm3/m.
TEST(Json, NumbersAreInTheUnitsAskedForOrThoseOfTheInput) {
    const BatchOffice office;
    const std::string us = office.copy("examples/anchored-all-loads.dat", "us.dat");
    const Json feet = resultsOf(office, us);
    ASSERT_EQ(office.run({"--convert", "si", us, "-o", office.file("si.dat")}).status, 0);
    const Json metres = resultsOf(office, office.file("si.dat"));
    ASSERT_EQ(office.run({"--json", "--units", "si", us}).status, 0);
    const Json asked = Json::parse(office.read("us.json"));
    EXPECT_EQ(feet["units"], "US");
    for (const Json& metric : {metres, asked}) {
        EXPECT_EQ(metric["units"], "SI");
        const auto expectRatio = [&](const char* place, double factor) {
            const Json::json_pointer pointer(place);
            const double expected = feet[pointer].get<double>() * factor;
            EXPECT_NEAR(metric[pointer].get<double>(), expected, 1e-7 * std::abs(expected))
                << place;
        };
        expectRatio("/problem/WallTopElev", 0.3048);
        expectRatio("/problem/SoilSatWeight/0/0", 0.1570874638);
        expectRatio("/problem/VUniformLoad/0", 0.0478802590);
        expectRatio("/problem/HLineLoad/0", 0.0145939029);
        expectRatio("/problem/SoilFriction/0/0", 1);
        expectRatio("/problem/FSPassive", 1);
        expectRatio("/right/layers/0/frictionActive", 1);
        expectRatio("/grid/3/elev", 0.3048);
        expectRatio("/grid/3/right/active/0", 0.0478802590);
        expectRatio("/levels/0/penetration", 0.3048);
        expectRatio("/levels/0/anchorForce", 0.0145939029);
        expectRatio("/levels/1/toeReaction", 0.0145939029);
        expectRatio("/levels/0/maxMoment/value", 0.0044482216);
        expectRatio("/levels/0/maxMoment/elev", 0.3048);
        expectRatio("/levels/0/maxDeflection/value", 2.3915122e-7);
        expectRatio("/levels/0/rows/4/pressure", 0.0478802590);
        expectRatio("/levels/0/grid/4/netActive/0", 0.0478802590);
        expectRatio("/rowe/height", 0.3048);
        expectRatio("/rowe/sections/0/sectionModulus", 53.7633333);
        expectRatio("/rowe/sections/0/allowableStress", 0.00689475729);
        expectRatio("/rowe/sections/0/momentRatio", 1);
    }
}

// The units of a file hold from its first line on, whatever ends its reading. 10 FT = 3.048 m.
TEST(Json, AnInputThatCannotBeReadHasItsUnitsToo) {
    const BatchOffice office;
    const std::string metric = office.write("m.dat", std::string("UNITS SI\n") + fatalInput);
    const Json own = resultsOf(office, metric, 70);
    EXPECT_EQ(own["units"], "SI");
    EXPECT_NEAR(own["problem"]["WallTopElev"].get<double>(), 10, 1e-12);
    office.run({"--json", "--units", "si", office.write("f.dat", fatalInput)});
    const Json asked = Json::parse(office.read("f.json"));
    EXPECT_EQ(asked["units"], "SI");
    EXPECT_NEAR(asked["problem"]["WallTopElev"].get<double>(), 3.048, 1e-12);
    const std::string refused = office.write("r.dat", std::string("UNITS SI\n") + refusedInput);
    EXPECT_EQ(resultsOf(office, refused, 1)["units"], "SI");
}

// Inches of an analysis are millimetres.
TEST(Json, DeflectionsOfAnAnalysisAreMillimetresInSi) {
    const BatchOffice office;
    const std::string input = office.copy("examples/analysis-cantilever.dat", "a.dat");
    const Json inches = resultsOf(office, input)["levels"][0]["maxDeflection"];
    ASSERT_EQ(office.run({"--json", "--units", "si", input}).status, 0);
    const Json metric = Json::parse(office.read("a.json"))["levels"][0]["maxDeflection"];
    EXPECT_NEAR(metric["value"].get<double>() / inches["value"].get<double>(), 25.4, 1e-9);
}

TEST(Json, WhatDoesNotApplyIsNull) {
    const BatchOffice office;
    const Json design = resultsOf(
        office, office.copy("examples/cantilever-dry-sand.dat", "design.dat"))["levels"][0];
    EXPECT_EQ(design["method"], "cantilever");
    EXPECT_TRUE(design["anchorForce"].is_null());
    EXPECT_TRUE(design["factorOfSafety"].is_null());
    EXPECT_TRUE(design["factorGiven"].is_null());
    EXPECT_TRUE(design["toeReaction"].is_null());
    EXPECT_TRUE(design["seepageGradient"].is_null());
    EXPECT_EQ(design["penetration"], -design["bottomElev"].get<double>()); // lower ground at 0

    const Json analysis =
        resultsOf(office, office.copy("examples/analysis-anchored.dat", "analysis.dat"));
    EXPECT_EQ(analysis["levels"][0]["method"], "free earth");
    EXPECT_EQ(analysis["levels"][1]["method"], "fixed earth");
    for (const Json& level : analysis["levels"]) {
        EXPECT_TRUE(level["factorOfSafety"].is_number());
        EXPECT_TRUE(level["anchorForce"].is_number());
    }
    EXPECT_TRUE(analysis["rowe"].is_null());

    const Json seepage =
        resultsOf(office, office.copy("examples/cantilever-water-seepage.dat", "seepage.dat"));
    EXPECT_TRUE(seepage["levels"][0]["seepageGradient"].is_number());
    EXPECT_TRUE(seepage["problem"]["AnchorElev"].is_null());
    EXPECT_TRUE(seepage["problem"]["SoilCoefActive"][0].is_null());
    EXPECT_TRUE(seepage["problem"]["SoilBottomElev"][0].back().is_null());
}

TEST(Json, OptionsAreThoseOfTheCommandLine) {
    const BatchOffice office; // sets SOURCE_DATE_EPOCH
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "wall.dat");
    EXPECT_EQ(resultsOf(office, input)["options"],
              Json::parse(R"({"wedge": "sweep", "amendments": [], "largestFactor": 20,
                              "epoch": 1795305907})"));
    unsetenv("SOURCE_DATE_EPOCH"); // NOLINT(concurrency-mt-unsafe)
    office.run({"--json", "--wedge", "fixed", "--max-fs", "7.5", input});
    EXPECT_EQ(Json::parse(office.read("wall.json"))["options"],
              Json::parse(R"({"wedge": "fixed", "amendments": [], "largestFactor": 7.5,
                              "epoch": null})"));
}

// Developed by hand: tan of the angle over the factor, cohesion over the factor; Coulomb's active
// coefficient of a wall without friction is (1 - sin) / (1 + sin).
TEST(Json, SidesTellMethodFactorsAndDevelopedStrengths) {
    const BatchOffice office;
    const auto degrees = [](double friction, double factor) {
        constexpr double radian = 57.29577951308232; // degrees
        return std::atan(std::tan(friction / radian) / factor) * radian;
    };
    const Json wall = resultsOf(office, office.write("wall.dat", R"('FACTORS OF WALL, SIDE, LAYER
CONTROL CANTILEVER DESIGN 1.00 1.50
WALL 12
SURFACE RIGHTSIDE 1 0 12
SURFACE LEFTSIDE 1 0 0
SOIL RIGHTSIDE STRENGTHS 2 1.2
 120 110 32 0 0 0 5 0
 120 110 30 90 0 0 1.1 1.25
SOIL LEFTSIDE STRENGTHS 1
 120 110 34 0 24 0
FINISHED
)"));
    EXPECT_EQ(wall["right"]["method"], "coulomb");
    ASSERT_EQ(wall["right"]["layers"].size(), 2U);
    const Json& upper = wall["right"]["layers"][0];
    EXPECT_EQ(upper["fsActive"], 1.2);
    EXPECT_EQ(upper["fsPassive"], 1.5);
    EXPECT_EQ(upper["fsSource"], Json({"side", "control"}));
    EXPECT_NEAR(upper["frictionActive"], degrees(32, 1.2), 1e-9);
    EXPECT_NEAR(upper["frictionPassive"], degrees(32, 1.5), 1e-9);
    const double sine = std::sin(degrees(32, 1.2) / 57.29577951308232);
    EXPECT_NEAR(upper["ka"], (1 - sine) / (1 + sine), 1e-9);
    const Json& lower = wall["right"]["layers"][1];
    EXPECT_EQ(lower["fsSource"], Json({"layer", "layer"}));
    EXPECT_NEAR(lower["cohesionActive"], 90 / 1.1, 1e-9);
    EXPECT_NEAR(lower["cohesionPassive"], 90 / 1.25, 1e-9);
    // Wall friction beyond half the soil's friction: the table for curved surfaces.
    EXPECT_EQ(wall["left"]["method"], "table");
    EXPECT_NEAR(wall["left"]["layers"][0]["wallFrictionPassive"], degrees(24, 1.5), 1e-9);
    EXPECT_TRUE(wall["left"]["layers"][0]["kp"].is_number());

    const Json given =
        resultsOf(office, office.copy("examples/cantilever-coefficients.dat", "given.dat"));
    EXPECT_EQ(given["right"]["method"], "given");
    EXPECT_EQ(given["right"]["layers"][1]["ka"], 0.28);
    EXPECT_EQ(given["right"]["layers"][1]["kp"], 3.6);
    for (const char* strength : {"fsActive", "fsSource", "frictionPassive", "cohesionActive"}) {
        EXPECT_TRUE(given["right"]["layers"][1][strength].is_null()) << strength;
    }

    const std::string slopes = office.copy("examples/sloping-both-sides-fixed.dat", "slopes.dat");
    EXPECT_EQ(resultsOf(office, slopes)["left"]["method"], "sweep");
    office.run({"--json", "--wedge", "fixed", slopes});
    const Json wedge = Json::parse(office.read("slopes.json"))["left"];
    EXPECT_EQ(wedge["method"], "fixed");
    EXPECT_TRUE(wedge["layers"][0]["ka"].is_null());
    EXPECT_TRUE(wedge["layers"][0]["kp"].is_null());
    EXPECT_NEAR(wedge["layers"][0]["frictionPassive"], degrees(34, 1.5), 1e-9);

    const Json clay = resultsOf(office, office.write("clay.dat", R"('ADHESION IN FRONT
CONTROL CANTILEVER DESIGN 1.25 1.50
WALL 12
SURFACE RIGHTSIDE 1 0 12
SURFACE LEFTSIDE 1 0 0
SOIL RIGHTSIDE STRENGTHS 1
 120 110 32 0 0 0
SOIL LEFTSIDE STRENGTHS 1
 120 110 28 100 0 60
FINISHED
)"));
    EXPECT_NEAR(clay["left"]["layers"][0]["adhesionActive"], 60 / 1.25, 1e-9);
    EXPECT_NEAR(clay["left"]["layers"][0]["adhesionPassive"], 60 / 1.5, 1e-9);
    EXPECT_EQ(clay["right"]["layers"][0]["adhesionActive"], 0.0);

    const Json failed = resultsOf(office, office.write("failing.dat", failingInput), 1);
    EXPECT_TRUE(failed["right"].is_null());
    EXPECT_TRUE(failed["left"].is_null());
}

TEST(Json, AnAnalysisTellsTheFactorsOfItsLastLevel) {
    const BatchOffice office;
    const Json both =
        resultsOf(office, office.copy("examples/analysis-anchored.dat", "analysis.dat"));
    const Json& layer = both["right"]["layers"][0];
    EXPECT_EQ(layer["fsPassive"], both["levels"][1]["factorOfSafety"]);
    EXPECT_NE(layer["fsPassive"], both["levels"][0]["factorOfSafety"]);
    EXPECT_EQ(layer["fsSource"], Json({"control", "search"}));
    EXPECT_EQ(both["levels"][0]["factorGiven"], 1.0);

    std::string text = readFile(sourceFile("examples/analysis-anchored.dat"));
    text.replace(text.find("ANALYSIS  1.00"), 14, "ANALYSIS      ");
    const Json searched = resultsOf(office, office.write("searched.dat", text));
    EXPECT_EQ(searched["left"]["layers"][0]["fsSource"], Json({"search", "search"}));
    EXPECT_TRUE(searched["levels"][1]["factorGiven"].is_null());
    EXPECT_EQ(searched["left"]["layers"][0]["fsActive"], searched["levels"][1]["factorOfSafety"]);
}

TEST(Json, StatusAndMessagesTellWhatHappened) {
    const BatchOffice office;
    const std::string input = office.write("refused.dat", refusedInput);
    const Json refused = resultsOf(office, input, 1);
    EXPECT_EQ(refused["schema"], 2);
    EXPECT_EQ(refused["program"], "KORVANE");
    EXPECT_EQ(refused["input"], input);
    EXPECT_EQ(refused["status"], "failed");
    ASSERT_EQ(refused["messages"].size(), 1U);
    EXPECT_EQ(refused["messages"][0]["title"], "DATA ERROR IN INPUT FILE: " + input);
    EXPECT_EQ(refused["messages"][0]["answer"], "OK");
    EXPECT_TRUE(refused["levels"].empty());

    const Json failing = resultsOf(office, office.write("failing.dat", failingInput), 1);
    EXPECT_EQ(failing["status"], "failed");
    EXPECT_EQ(failing["problem"]["WallTopElev"], 10.0);
    EXPECT_TRUE(failing["levels"].empty());
    EXPECT_TRUE(failing["rowe"].is_null());

    const Json fatal = resultsOf(office, office.write("fatal.dat", fatalInput), 70);
    EXPECT_EQ(fatal["status"], "error");
    EXPECT_EQ(fatal["messages"].back()["text"],
              "Run-time error '5':\n\nInvalid procedure call or argument");

    const Json large =
        resultsOf(office, office.copy("tests/reference/anchored-analysis-9001.dat", "large.dat"));
    EXPECT_EQ(large["messages"][1]["answer"], "Yes");
}

TEST(Json, TheProblemHasEveryFieldUnderItsName) {
    const BatchOffice office;
    const Json problem =
        resultsOf(office, office.copy("examples/anchored-all-loads.dat", "wall.dat"))["problem"];
    const std::string header = readFile(sourceFile("src/problem/problem.h"));
    const std::string record =
        header.substr(header.find("struct Problem {"),
                      header.find("bool operator==") - header.find("struct Problem {"));
    int fields = 0;
    for (const std::string& line : splitLines(record)) { // "    double FSActive = 1.0; ///< ..."
        if (line.find(';') == std::string::npos) {
            continue;
        }
        const std::string declaration = line.substr(0, line.find(';'));
        const std::string name = declaration.substr(0, declaration.find(" = "));
        const std::string field = name.substr(name.rfind(' ') + 1);
        EXPECT_TRUE(problem.contains(field)) << field;
        ++fields;
    }
    EXPECT_EQ(static_cast<int>(problem.size()), fields);
    EXPECT_GT(fields, 60);
}

TEST(Json, NumbersStandUnderTheNamesThatAddressThem) {
    const BatchOffice office;
    for (const char* example : {"anchored-all-loads.dat", "anchored-layered-water.dat"}) {
        const Json problem =
            resultsOf(office, office.copy(std::string("examples/") + example, example))["problem"];
        Problem read;
        ASSERT_TRUE(readProblem(read, office.read(example), example).complete);
        for (const FieldAddress& address : addressesIn(read)) {
            const FieldRules& rules = rulesOf(address.field);
            Json told = problem[rules.name];
            told = rules.hasSides ? told[static_cast<std::size_t>(address.side - 1)] : told;
            told = rules.hasRows ? told[static_cast<std::size_t>(address.row - 1)] : told;
            EXPECT_EQ(told, valueAt(read, address)) << addressName(address);
        }
    }
}

TEST(Json, ListsHoldAsManyEntriesAsTheirCountTells) {
    const BatchOffice office;
    const Json problem = resultsOf(
        office, office.copy("examples/anchored-layered-water.dat", "wall.dat"))["problem"];
    EXPECT_EQ(problem["HeadingLines"].size(), 2U);
    EXPECT_EQ(problem["SoilLayerCount"], Json::parse("[3, 2]"));
    EXPECT_EQ(problem["SoilFriction"], Json::parse("[[30.0, 28.0, 34.0], [28.0, 34.0]]"));
    EXPECT_EQ(problem["SoilBottomElev"], Json::parse("[[8.0, -5.0, null], [-5.0, null]]"));
    EXPECT_EQ(problem["WaterElev"], Json::parse("[10.0, 6.0]"));
    EXPECT_EQ(problem["VUniformLoad"], Json::parse("[null, null]"));
}

TEST(Json, RoweTellsTheReductionOfEachSection) {
    const BatchOffice office;
    const Json sand =
        resultsOf(office, office.copy("examples/anchored-sand.dat", "sand.dat"))["rowe"];
    EXPECT_EQ(sand["soil"], "sand");
    EXPECT_EQ(sand["applicable"], true);
    EXPECT_TRUE(sand["stability"].is_null());
    ASSERT_EQ(sand["sections"].size(), 8U);
    int reduced = 0;
    for (const Json& section : sand["sections"]) {
        // H^4 / (E I) and S x stress / (12 M), from the section's own numbers.
        const double H = sand["height"];
        const double x = std::log10(
            std::pow(H, 4) / (section["modulus"].get<double>() * section["inertia"].get<double>()));
        EXPECT_NEAR(section["logRigidity"], x, 1e-12);
        if (section["coefficient"].is_null()) {
            EXPECT_TRUE(section["reducedRatio"].is_null());
            continue;
        }
        ++reduced;
        for (const char* density : {"loose", "dense"}) {
            EXPECT_NEAR(section["reducedRatio"][density].get<double>() *
                            section["coefficient"][density].get<double>(),
                        section["momentRatio"], 1e-12);
        }
    }
    EXPECT_GT(reduced, 0);

    // A wall that meets the method's conditions, with all sections outside its curves.
    const Json outside =
        resultsOf(office, office.copy("examples/anchored-clay.dat", "outside.dat"))["rowe"];
    EXPECT_TRUE(outside["notes"].empty());
    EXPECT_EQ(outside["applicable"], false);
    for (const Json& section : outside["sections"]) {
        EXPECT_TRUE(section["coefficient"].is_null());
    }

    const Json clay =
        resultsOf(office, office.copy("tests/reference/rowe-clay-9001.dat", "clay.dat"))["rowe"];
    EXPECT_EQ(clay["soil"], "clay");
    EXPECT_EQ(clay["applicable"], false);
    EXPECT_LT(clay["stability"], 0.5);
    EXPECT_EQ(clay["notes"],
              Json({"REDUCTION NOT APPLICABLE DUE TO STABILITY NUMBER LESS THAN 0.5."}));
    for (const Json& section : clay["sections"]) {
        EXPECT_TRUE(section["coefficient"].is_null());
    }
}

TEST(Json, BytesThatAreNotUtf8BecomeLatinOneCharacters) {
    const BatchOffice office;
    std::string text = readFile(sourceFile("examples/cantilever-dry-sand.dat"));
    text.replace(text.find("CANTILEVER WALL IN"), 18, "M\xDCLLER, S\xC3\xA4GEWERK ");
    const Json problem = resultsOf(office, office.write("wall.dat", text))["problem"];
    EXPECT_EQ(problem["HeadingLines"][0], "'M\xC3\x9CLLER, S\xC3\xA4GEWERK  DRY SAND ");
}

} // namespace korvane::test
