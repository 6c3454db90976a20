#include "batch/json_problem.h"

#include "problem/loads.h"
#include "runtime/utf8_text.h"

#include <array>
#include <cstddef>
#include <optional>

namespace korvane::batch {

namespace {

/// A value where it applies.
template <class T>
std::optional<T> where(bool applies, const T& value) {
    return applies ? std::optional<T>(value) : std::nullopt;
}

/// entry(1) to entry(count) as an array.
template <class Entry>
void writeList(JsonText& json, int count, Entry entry) {
    json.array([&] {
        for (int i = 1; i <= count; ++i) {
            json.value(entry(i));
        }
    });
}

/// of(Right) and of(Left) as an array.
template <class Value>
void writeSides(JsonText& json, const char* name, Value of) {
    json.member(name);
    writeList(json, 2, of);
}

template <class T>
void writeSides(JsonText& json, const char* name, const Array<T, 2>& values) {
    writeSides(json, name, [&](int side) -> const T& { return values(side); });
}

/// The leading entries of a list.
template <int N>
void writeLeading(JsonText& json, const char* name, const Array<double, N>& values, int count) {
    json.member(name);
    writeList(json, count, [&](int i) { return values(i); });
}

/// The leading entries of each side's list; null for a side to which it does not apply.
template <int N>
void writeSideLists(JsonText& json, const char* name, const Array<double, 2, N>& values,
                    const Array<int, 2>& counts,
                    const std::array<bool, 2>& applies = {true, true}) {
    json.member(name).array([&] {
        for (const int side : {Right, Left}) {
            if (applies[static_cast<std::size_t>(side - 1)]) {
                writeList(json, counts(side), [&](int i) { return values(side, i); });
            } else {
                json.value(nullptr);
            }
        }
    });
}

void writeHeadingToSurface(JsonText& json, const Problem& problem) {
    const bool anchored = problem.WallType == WallKind::Anchored;
    const bool design = problem.ProgramMode == Mode::Design;
    const bool analysis = problem.ProgramMode == Mode::Analysis;
    const auto& count = problem.SurfacePointCount;
    json.member("NumHeadingLines", problem.NumHeadingLines);
    json.member("HeadingLines");
    writeList(json, problem.NumHeadingLines,
              [&](int i) { return utf8Text(problem.HeadingLines(i)); });
    json.member("WallType", letterOf(problem.WallType));
    json.member("ProgramMode", letterOf(problem.ProgramMode));
    json.member("FSActive", where(design || (analysis && problem.FSKind == FactorKind::ActiveGiven),
                                  problem.FSActive));
    json.member("FSPassive", where(design, problem.FSPassive));
    json.member("FSKind", where(analysis, static_cast<int>(problem.FSKind)));
    json.member("WallTopElev", problem.WallTopElev);
    json.member("AnchorElev", where(anchored, problem.AnchorElev));
    json.member("WallBottomElev", where(analysis, problem.WallBottomElev));
    json.member("WallModulus", where(analysis, problem.WallModulus));
    json.member("WallInertia", where(analysis, problem.WallInertia));
    writeSides(json, "SurfacePointCount", count);
    writeSideLists(json, "SurfaceDist", problem.SurfaceDist, count);
    writeSideLists(json, "SurfaceElev", problem.SurfaceElev, count);
}

/// The last layer of a side has no bottom.
void writeLayerBottoms(JsonText& json, const Problem& problem) {
    json.member("SoilBottomElev").array([&] {
        for (const int side : {Right, Left}) {
            const int count = problem.SoilLayerCount(side);
            writeList(json, count,
                      [&](int i) { return where(i < count, problem.SoilBottomElev(side, i)); });
        }
    });
}

void writeSoil(JsonText& json, const Problem& problem) {
    const auto& kind = problem.SoilDataKind;
    const auto& count = problem.SoilLayerCount;
    const std::array<bool, 2> strengths{kind(Right) == SoilData::Strengths,
                                        kind(Left) == SoilData::Strengths};
    const std::array<bool, 2> coefficients{kind(Right) == SoilData::Coefficients,
                                           kind(Left) == SoilData::Coefficients};
    writeSides(json, "SoilDataKind", [&](int side) { return letterOf(kind(side)); });
    writeSides(json, "SoilLayerCount", count);
    writeSides(json, "Level2FSActive", problem.Level2FSActive);
    writeSides(json, "Level2FSPassive", problem.Level2FSPassive);
    writeSideLists(json, "SoilSatWeight", problem.SoilSatWeight, count);
    writeSideLists(json, "SoilMoistWeight", problem.SoilMoistWeight, count);
    writeSideLists(json, "SoilFriction", problem.SoilFriction, count, strengths);
    writeSideLists(json, "SoilCohesion", problem.SoilCohesion, count, strengths);
    writeSideLists(json, "SoilWallFriction", problem.SoilWallFriction, count, strengths);
    writeSideLists(json, "SoilAdhesion", problem.SoilAdhesion, count, strengths);
    writeLayerBottoms(json, problem);
    writeSideLists(json, "SoilBottomSlope", problem.SoilBottomSlope, count, strengths);
    writeSideLists(json, "SoilFSActive", problem.SoilFSActive, count, strengths);
    writeSideLists(json, "SoilFSPassive", problem.SoilFSPassive, count, strengths);
    writeSideLists(json, "SoilCoefActive", problem.SoilCoefActive, count, coefficients);
    writeSideLists(json, "SoilCoefPassive", problem.SoilCoefPassive, count, coefficients);
}

/// A value of each side, or null for both.
void writeSidesOrNull(JsonText& json, const char* name, const Array<double, 2>& values,
                      bool applies) {
    if (applies) {
        writeSides(json, name, values);
    } else {
        json.member(name, nullptr);
    }
}

void writeWater(JsonText& json, const Problem& problem) {
    const bool elevations = problem.WaterDataKind == WaterData::Elevations;
    const bool pressures = problem.WaterDataKind == WaterData::Pressures;
    const bool seepage = problem.SeepageKind != Seepage::None;
    const int count = pressures ? problem.WaterPressCount : 0;
    json.member("WaterDataKind", letterOf(problem.WaterDataKind));
    json.member("WaterUnitWeight", where(elevations, problem.WaterUnitWeight));
    writeSidesOrNull(json, "WaterElev", problem.WaterElev, elevations);
    json.member("SeepageKind", letterOf(problem.SeepageKind));
    json.member("SeepageElev", where(seepage, problem.SeepageElev));
    writeSidesOrNull(json, "SeepageGradient", problem.SeepageGradient, seepage);
    json.member("WaterPressCount", count);
    writeLeading(json, "WaterPressElev", problem.WaterPressElev, count);
    writeLeading(json, "WaterPressure", problem.WaterPressure, count);
}

void writeCount(JsonText& json, const Problem& problem, Load load) {
    const CountRules& rules = rulesOf(rulesOf(load).count);
    if (rules.sides == 2) {
        writeSides(json, rules.name, [&](int side) { return rules.value(problem, side); });
    } else {
        json.member(rules.name, rules.value(problem, Right));
    }
}

/// The lists of a load; of a kind with one load a side its numbers themselves.
void writeLists(JsonText& json, const Problem& problem, Load load) {
    const LoadRules& rules = rulesOf(load);
    for (int column = 0; column < rules.width(); ++column) {
        const FieldRules& field = rulesOf(rules.field(column));
        const auto writeSide = [&](int side) {
            writeList(json, rules.rows(problem, side),
                      [&](int row) { return field.value(problem, side, row); });
        };
        json.member(field.name);
        if (rules.sides() == 1) {
            writeSide(Right);
        } else if (field.hasRows) {
            json.array([&] {
                writeSide(Right);
                writeSide(Left);
            });
        } else {
            writeList(json, 2, [&](int side) {
                return where(rules.rows(problem, side) > 0, field.value(problem, side, 1));
            });
        }
    }
}

/// The uniform load stands between the count and the numbers of the ramp: an order that is kept.
void writeLoads(JsonText& json, const Problem& problem) {
    for (const LoadRules& rules : LoadTable) {
        writeCount(json, problem, rules.load);
        if (rules.load == Load::Ramp) {
            writeLists(json, problem, Load::Uniform);
        }
        if (rules.load != Load::Uniform) {
            writeLists(json, problem, rules.load);
        }
    }
}

} // namespace

void writeProblem(JsonText& json, const Problem& problem) {
    json.object([&] {
        writeHeadingToSurface(json, problem);
        writeSoil(json, problem);
        writeWater(json, problem);
        writeLoads(json, problem);
    });
}

} // namespace korvane::batch
