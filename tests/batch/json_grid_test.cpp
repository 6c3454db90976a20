// The grid of a solved level in JSON: its rows agree with one another and with the results, summed
// up from the JSON alone.
#include "batch_run.h"
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <string_view>
#include <utility>

namespace korvane::test {

namespace {

using Json = nlohmann::json;

constexpr std::size_t Below = 0; // place of the value just below a point
constexpr std::size_t Above = 1;
constexpr double SamePlace = 1e-4; // FT

/// The walls of examples, of some reference problems and random ones, but those without a solution.
std::vector<Json> solvedWalls() {
    const BatchOffice office;
    std::vector<std::string> arguments{"--json", "--quiet", "--output-dir", office.file("results")};
    for (const char* folder : {"examples", "tests/reference"}) {
        for (const auto& file : std::filesystem::directory_iterator(sourceFile(folder))) {
            const std::string stem = file.path().stem().string();
            const bool taken = std::string_view("01235").find(stem.back()) == std::string::npos;
            if (file.path().extension() == ".dat" && taken) {
                arguments.push_back(file.path().string());
            }
        }
    }
    RandomProblems random(20261122);
    for (int i = 1; i <= 60; ++i) {
        arguments.push_back(
            office.write("random" + std::to_string(i) + ".dat", inputFileText(random.next())));
    }
    office.run(arguments);
    std::vector<Json> walls;
    for (const auto& file : std::filesystem::directory_iterator(office.file("results"))) {
        if (file.path().extension() == ".json") {
            Json json = Json::parse(readFile(file.path()));
            if (json["status"] == "solved") {
                walls.push_back(std::move(json));
            }
        }
    }
    return walls;
}

/// Calls `look` with the problem and each of its levels.
void forEachLevel(const std::function<void(const Json& problem, const Json& level)>& look) {
    static const std::vector<Json> walls = solvedWalls();
    int levels = 0;
    for (const Json& wall : walls) {
        for (const Json& level : wall["levels"]) {
            SCOPED_TRACE(wall["input"].get<std::string>() + ", " +
                         level["method"].get<std::string>());
            look(wall["problem"], level);
            ++levels;
        }
    }
    EXPECT_GT(levels, 120);
}

double number(const Json& json) {
    return json.get<double>();
}

/// The horizontal distributed load just below or above an elevation, PSF.
double distributedLoad(const Json& problem, double elev, std::size_t k) {
    const Json& elevs = problem["HDistElev"];
    const Json& loads = problem["HDistLoad"];
    double sum = 0;
    for (std::size_t j = 1; j < elevs.size(); ++j) {
        const double top = elevs[j - 1];
        const double bottom = elevs[j];
        const bool under = k == Below ? elev <= top + SamePlace : elev < top - SamePlace;
        const bool over = k == Below ? elev > bottom + SamePlace : elev >= bottom - SamePlace;
        if (under && over) {
            const double share = (top - elev) / (top - bottom);
            sum += number(loads[j - 1]) * (1 - share) + number(loads[j]) * share;
        }
    }
    return sum;
}

/// A net pressure of a row, put together from the sides.
double netOf(const Json& problem, const Json& row, const char* right, const char* left,
             std::size_t k) {
    const Json& surface = problem["SurfaceElev"];
    const double ground = std::min(number(surface[0][0]), number(surface[1][0]));
    const auto sum = [&](std::size_t j) {
        return number(row["right"][right][j]) - number(row["left"][left][j]) +
               number(row["water"][j]);
    };
    const double soil = row["elev"] < ground - SamePlace ? (sum(Below) + sum(Above)) / 2 : sum(k);
    return soil + distributedLoad(problem, row["elev"], k);
}

double sizeOf(const Json& row) {
    return 1 + number(row["right"]["passive"][Below]) + number(row["left"]["passive"][Below]) +
           std::fabs(number(row["water"][Below]));
}

bool isZero(const Json& row) {
    return std::fabs(number(row["netActive"][Above])) <= 0.0001;
}

/// On the straight line from just below the row above to just above the row below.
void expectOnLine(const Json& grid, std::size_t i, const char* where) {
    const Json::json_pointer member(where);
    const Json& row = grid[i];
    const double top = grid[i - 1]["elev"];
    const double share = (top - number(row["elev"])) / (top - number(grid[i + 1]["elev"]));
    const double line = number(grid[i - 1][member][Below]) * (1 - share) +
                        number(grid[i + 1][member][Above]) * share;
    EXPECT_NEAR(row[member][Below], line, 1e-9 * sizeOf(row)) << where << " " << row["elev"];
    EXPECT_EQ(row[member][Below], row[member][Above]) << where << " " << row["elev"];
}

/// True where pressures just below and just above the point are two.
bool jumps(const Json& row) {
    const auto isTwo = [&row](const Json& values) {
        return std::fabs(number(values[Below]) - number(values[Above])) > 1e-9 * sizeOf(row);
    };
    return isTwo(row["water"]) || isTwo(row["right"]["active"]) || isTwo(row["right"]["passive"]) ||
           isTwo(row["left"]["active"]) || isTwo(row["left"]["passive"]);
}

/// Point loads on the wall, LB per foot; the anchor's force as that of the other side.
std::vector<std::pair<double, double>> pointLoads(const Json& problem, const Json& level) {
    std::vector<std::pair<double, double>> loads;
    for (std::size_t j = 0; j < problem["HLineElev"].size(); ++j) {
        loads.emplace_back(problem["HLineElev"][j], problem["HLineLoad"][j]);
    }
    if (!level["anchorForce"].is_null()) {
        loads.emplace_back(problem["AnchorElev"], -number(level["anchorForce"]));
    }
    return loads;
}

/// Shear and moment of the wall at an elevation, summed up from the top; loads at the elevation
/// itself not counted.
struct Forces {
    double shear = 0;
    double moment = 0;
};
Forces forcesAbove(const Json& problem, const Json& level, double elev) {
    const Json& grid = level["grid"];
    Forces forces;
    for (std::size_t i = 1; i < grid.size() && grid[i]["elev"] >= elev; ++i) {
        const double p = grid[i - 1]["netActive"][Below];
        const double q = grid[i]["netActive"][Above];
        const double d = number(grid[i - 1]["elev"]) - number(grid[i]["elev"]);
        const double arm = number(grid[i]["elev"]) - elev;
        forces.shear += (p + q) / 2 * d;
        forces.moment += (p + q) / 2 * d * arm + (2 * p + q) / 6 * d * d;
    }
    for (const auto& [place, load] : pointLoads(problem, level)) {
        if (place > elev + SamePlace) {
            forces.shear += load;
            forces.moment += load * (place - elev);
        }
    }
    return forces;
}

} // namespace

TEST(JsonGrid, EndsAtTheBottomOfTheWall) {
    forEachLevel([](const Json&, const Json& level) {
        const Json& grid = level["grid"];
        EXPECT_EQ(grid.back()["elev"], level["bottomElev"]);
        for (std::size_t i = 1; i < grid.size(); ++i) {
            EXPECT_LT(grid[i]["elev"], grid[i - 1]["elev"]);
        }
    });
}

// Rows that the solution has put in stand on the lines between their neighbours: a jump of a
// neighbour's pressures, averaged in its net values, keeps their sides from adding up.
TEST(JsonGrid, NetPressuresAreThoseOfSidesWaterAndLoad) {
    int put = 0;
    forEachLevel([&](const Json& problem, const Json& level) {
        const Json& grid = level["grid"];
        const Json& transition = level["transitionElev"];
        for (std::size_t i = 0; i + 1 < grid.size(); ++i) {
            const Json& row = grid[i];
            const bool isPut =
                isZero(row) || row["elev"] == transition || (i > 0 && isZero(grid[i - 1]));
            bool adds = true;
            for (const std::size_t k : {Below, Above}) {
                const double net = netOf(problem, row, "passive", "active", k);
                adds = adds && std::fabs(net - number(row["netPassive"][k])) <= 1e-9 * sizeOf(row);
                if (transition.is_null() || row["elev"] > transition) {
                    const double active = netOf(problem, row, "active", "passive", k);
                    adds = adds && std::fabs(active - number(row["netActive"][k])) <=
                                       std::max(1e-9 * sizeOf(row), isZero(row) ? 0.0001 : 0.0);
                }
            }
            if (!adds) {
                EXPECT_TRUE(isPut) << row.dump();
                for (const char* value : {"/netPassive", "/water", "/right/active",
                                          "/right/passive", "/left/active", "/left/passive"}) {
                    expectOnLine(grid, i, value);
                }
                EXPECT_TRUE(jumps(grid[i - 1]) || jumps(grid[i + 1])) << row.dump();
                ++put;
            }
        }
    });
    EXPECT_GT(put, 5);
}

TEST(JsonGrid, OfACantileverWallRunsStraightFromTheTransitionToNetPassiveAtTheBottom) {
    int straight = 0;
    forEachLevel([&](const Json&, const Json& level) {
        if (level["method"] != "cantilever") {
            EXPECT_TRUE(level["transitionElev"].is_null());
            return;
        }
        const Json& grid = level["grid"];
        const double top = level["transitionElev"];
        const double bottom = level["bottomElev"];
        const auto first = std::find_if(grid.begin(), grid.end(), [top](const Json& row) {
            return std::fabs(number(row["elev"]) - top) <= SamePlace;
        });
        ASSERT_NE(first, grid.end());
        const double p = (*first)["netActive"][Below];
        const double q = grid.back()["netPassive"][Above];
        for (auto row = first; row != grid.end(); ++row) {
            const double share = (top - number((*row)["elev"])) / (top - bottom);
            EXPECT_NEAR((*row)["netActive"][Above], p + (q - p) * share,
                        1e-3 + 1e-5 * std::fabs(q)); // the transition's row may be 0.0001 FT off
        }
        ++straight;
    });
    EXPECT_GT(straight, 30);
}

// A search closes within 0.1 LB or 1 LB-FT, and the wall's anchor takes what is left.
TEST(JsonGrid, AddsUpToShearsAndMomentsOfTheRows) {
    forEachLevel([](const Json& problem, const Json& level) {
        const Json& rows = level["rows"];
        const double height = number(rows.front()["elev"]) - number(level["bottomElev"]);
        for (std::size_t r = 0; r + 1 < rows.size(); ++r) {
            const double elev = rows[r]["elev"];
            const Forces forces = forcesAbove(problem, level, elev);
            const double rounding = 1e-9 * (std::fabs(forces.moment) + 1e4);
            EXPECT_NEAR(rows[r]["moment"], forces.moment, 1 + 0.2 * height + rounding) << elev;
            const bool second = r > 0 && rows[r - 1]["elev"] == elev;
            if (r > 0 && !second) { // just above the elevation
                EXPECT_NEAR(rows[r]["shear"], forces.shear, 0.3 + rounding) << elev;
            }
        }
        const double shear = forcesAbove(problem, level, level["bottomElev"]).shear;
        if (level["method"] == "fixed earth") {
            EXPECT_NEAR(level["toeReaction"], -shear, 0.3);
        } else {
            EXPECT_TRUE(level["toeReaction"].is_null());
            EXPECT_NEAR(shear, 0, 0.3);
        }
    });
}

TEST(JsonGrid, HasTheLargestShear) {
    forEachLevel([](const Json& problem, const Json& level) {
        const Json& largest = level["maxShear"];
        double found = 0;
        for (const Json& row : level["grid"]) {
            double shear = forcesAbove(problem, level, row["elev"]).shear;
            found = std::max(found, std::fabs(shear));
            for (const auto& [place, load] : pointLoads(problem, level)) {
                shear += std::fabs(place - number(row["elev"])) <= SamePlace ? load : 0;
            }
            const bool last = row["elev"] == level["bottomElev"];
            found = last ? found : std::max(found, std::fabs(shear));
        }
        EXPECT_NEAR(std::fabs(number(largest["value"])), found, 0.3);
    });
}

// Dry sand, the ground at 10 and 0 FT: every pressure runs straight with depth, at the bottom too.
TEST(JsonGrid, HasThePressuresOfTheGroundAtTheBottom) {
    const BatchOffice office;
    office.run({"--json", office.copy("examples/cantilever-dry-sand.dat", "wall.dat")});
    const Json json = Json::parse(office.read("wall.json"));
    const Json& level = json["levels"][0];
    const Json& last = level["grid"].back();
    const Json& problem = json["problem"];
    const double weight = problem["SoilMoistWeight"][0][0];
    for (const std::size_t side : {0U, 1U}) {
        const char* name = side == 0 ? "right" : "left";
        const double depth = number(problem["SurfaceElev"][side][0]) - number(level["bottomElev"]);
        const Json& layer = json[name]["layers"][0];
        for (const std::size_t k : {Below, Above}) {
            EXPECT_NEAR(last[name]["active"][k], number(layer["ka"]) * weight * depth, 1e-6);
            EXPECT_NEAR(last[name]["passive"][k], number(layer["kp"]) * weight * depth, 1e-6);
            EXPECT_EQ(last["water"][k], 0.0);
        }
        EXPECT_EQ(last[name]["marks"], Json({"", ""}));
    }
}

} // namespace korvane::test
