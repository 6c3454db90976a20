#include "batch/json_results.h"

#include "runtime/arithmetic.h"
#include "runtime/json_text.h"
#include "runtime/utf8_text.h"

#include <array>
#include <cstddef>
#include <optional>

namespace korvane::batch {

namespace {

constexpr int RoweClay = 2; // RoweOutcome::soil

const char* statusText(int status) {
    return status == StatusSolved ? "solved" : status == StatusFailed ? "failed" : "error";
}

const char* answerText(Answer answer) {
    switch (answer) {
    case Answer::Ok:
        return "OK";
    case Answer::Cancel:
        return "Cancel";
    case Answer::Yes:
        return "Yes";
    case Answer::No:
        return "No";
    }
    return "";
}

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

void writeMessages(JsonText& json, const std::vector<Message>& messages) {
    json.array([&] {
        for (const Message& message : messages) {
            json.object([&] {
                json.member("title", utf8Text(message.box.title));
                json.member("text", utf8Text(message.box.text));
                json.member("answer", answerText(message.answer));
            });
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
    json.member("FSActive", where(design || (analysis && problem.FSKind == 2), problem.FSActive));
    json.member("FSPassive", where(design, problem.FSPassive));
    json.member("FSKind", where(analysis, problem.FSKind));
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

void writeVerticalLoads(JsonText& json, const Problem& problem) {
    const auto oneRamp = [&](const char* name, const Array<double, 2>& values) {
        writeSides(json, name,
                   [&](int side) { return where(problem.VRampCount(side) > 0, values(side)); });
    };
    writeSides(json, "VLineCount", problem.VLineCount);
    writeSideLists(json, "VLineDist", problem.VLineDist, problem.VLineCount);
    writeSideLists(json, "VLineLoad", problem.VLineLoad, problem.VLineCount);
    writeSides(json, "VUniformCount", problem.VUniformCount);
    writeSides(json, "VStripCount", problem.VStripCount);
    writeSideLists(json, "VStripStart", problem.VStripStart, problem.VStripCount);
    writeSideLists(json, "VStripEnd", problem.VStripEnd, problem.VStripCount);
    writeSideLists(json, "VStripLoad", problem.VStripLoad, problem.VStripCount);
    writeSides(json, "VRampCount", problem.VRampCount);
    writeSides(json, "VUniformLoad", [&](int side) {
        return where(problem.VUniformCount(side) > 0, problem.VUniformLoad(side));
    });
    oneRamp("VRampStart", problem.VRampStart);
    oneRamp("VRampEnd", problem.VRampEnd);
    oneRamp("VRampLoad", problem.VRampLoad);
    writeSides(json, "VTriCount", problem.VTriCount);
    writeSideLists(json, "VTriStart", problem.VTriStart, problem.VTriCount);
    writeSideLists(json, "VTriPeak", problem.VTriPeak, problem.VTriCount);
    writeSideLists(json, "VTriEnd", problem.VTriEnd, problem.VTriCount);
    writeSideLists(json, "VTriLoad", problem.VTriLoad, problem.VTriCount);
    writeSides(json, "VVarCount", problem.VVarCount);
    writeSideLists(json, "VVarDist", problem.VVarDist, problem.VVarCount);
    writeSideLists(json, "VVarLoad", problem.VVarLoad, problem.VVarCount);
}

void writeHorizontalLoads(JsonText& json, const Problem& problem) {
    json.member("HLineCount", problem.HLineCount);
    writeLeading(json, "HLineElev", problem.HLineElev, problem.HLineCount);
    writeLeading(json, "HLineLoad", problem.HLineLoad, problem.HLineCount);
    json.member("HDistCount", problem.HDistCount);
    writeLeading(json, "HDistElev", problem.HDistElev, problem.HDistCount);
    writeLeading(json, "HDistLoad", problem.HDistLoad, problem.HDistCount);
}

void writeProblem(JsonText& json, const Problem& problem) {
    json.object([&] {
        writeHeadingToSurface(json, problem);
        writeSoil(json, problem);
        writeWater(json, problem);
        writeVerticalLoads(json, problem);
        writeHorizontalLoads(json, problem);
    });
}

/// Two values: just below and just above a grid point, or active and passive.
template <class T>
void writePair(JsonText& json, const char* name, const T& first, const T& second) {
    json.member(name).array([&] {
        json.value(first);
        json.value(second);
    });
}

/// The pressures of one side at a grid point.
void writeSide(JsonText& json, const char* name, const Pressures& pressures, int side, int i) {
    const auto& active = pressures.ActivePressures;
    const auto& passive = pressures.PassivePressures;
    json.member(name).object([&] {
        writePair(json, "active", active(side, i, 1), active(side, i, 2));
        writePair(json, "passive", passive(side, i, 1), passive(side, i, 2));
        writePair(json, "marks", markText(pressures.ActiveMark(side, i)),
                  markText(pressures.PassiveMark(side, i)));
    });
}

void writeGrid(JsonText& json, const SolvedLevel& level) {
    const Pressures& pressures = level.pressures;
    const auto& WaterPressures = pressures.WaterPressures;
    json.array([&] {
        for (int i = 1; i <= level.grid.NumElevs; ++i) {
            json.object([&] {
                json.member("elev", level.grid.ElevGrid(i));
                writePair(json, "water", WaterPressures(i, 1), WaterPressures(i, 2));
                writeSide(json, "right", pressures, Right, i);
                writeSide(json, "left", pressures, Left, i);
                writePair(json, "netActive", level.NetActive(i, 1), level.NetActive(i, 2));
                writePair(json, "netPassive", level.NetPassive(i, 1), level.NetPassive(i, 2));
            });
        }
    });
}

void writeRows(JsonText& json, const SolvedLevel& level) {
    json.array([&] {
        for (int i = 1; i <= level.rowCount; ++i) {
            json.object([&] {
                json.member("elev", level.ResultElev(i));
                json.member("moment", level.ResultMoment(i));
                json.member("shear", level.ResultShear(i));
                json.member("deflection", level.ResultDeflection(i));
                json.member("pressure", level.ResultPressure(i));
            });
        }
    });
}

/// An extreme and its elevation.
void writeExtreme(JsonText& json, const char* name, double value, double elev) {
    json.member(name).object([&] {
        json.member("value", value);
        json.member("elev", elev);
    });
}

const char* methodName(const Problem& problem, int level) {
    if (problem.WallType != WallKind::Anchored) {
        return "cantilever";
    }
    return level == 1 ? "free earth" : "fixed earth";
}

void writeLevel(JsonText& json, const State& state, int level) {
    const Problem& problem = state.problem;
    const bool analysis = problem.ProgramMode == Mode::Analysis;
    const double bottom = state.solution.SolvedBottomElev(level);
    const double ground = MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
    const auto& MaxMoment = state.results.MaxMoment;
    const auto& MaxDeflection = state.results.MaxDeflection;
    const SolvedLevel& solved = state.solved(level);
    json.object([&] {
        json.member("method", methodName(problem, level));
        json.member("bottomElev", bottom);
        json.member("penetration", ground - bottom);
        json.member("anchorForce", where(problem.WallType == WallKind::Anchored,
                                         state.solution.AnchorForce(level)));
        json.member("factorOfSafety",
                    where(analysis, state.preparation.LayerFSPassive(Right, 1, level)));
        json.member("seepageGradient",
                    where(problem.SeepageKind != Seepage::None, problem.SeepageGradient(level)));
        writeExtreme(json, "maxMoment", MaxMoment(level), MaxMoment(level + 2));
        writeExtreme(json, "maxDeflection", MaxDeflection(level), MaxDeflection(level + 2));
        json.member("rows");
        writeRows(json, solved);
        json.member("grid");
        writeGrid(json, solved);
    });
}

int levelCount(const State& state, int status) {
    if (status != StatusSolved) {
        return 0;
    }
    return state.problem.WallType == WallKind::Anchored ? 2 : 1;
}

void writeLevels(JsonText& json, const State& state, int status) {
    json.array([&] {
        for (int level = 1; level <= levelCount(state, status); ++level) {
            writeLevel(json, state, level);
        }
    });
}

/// A value of a section: one number in clay, one for loose and one for dense sand; null where the
/// section lies outside the range of the curves.
void writeReduced(JsonText& json, const char* name, const RoweOutcome& outcome,
                  const Array<double, 13, 2>& values, int p) {
    if (!outcome.inRange(p)) {
        json.member(name, nullptr);
    } else if (outcome.soil == RoweClay) {
        json.member(name, values(p, 1));
    } else {
        json.member(name).object([&] {
            json.member("loose", values(p, 1));
            json.member("dense", values(p, 2));
        });
    }
}

void writeSection(JsonText& json, const RoweData& rowe, int p) {
    const RoweOutcome& outcome = rowe.outcome;
    json.object([&] {
        json.member("name", utf8Text(rowe.PileName(p)));
        json.member("sectionModulus", rowe.PileSectionData(p, 1));
        json.member("inertia", rowe.PileSectionData(p, 2));
        json.member("allowableStress", rowe.PileAllowStress(p));
        json.member("modulus", rowe.PileModulus(p));
        json.member("logRigidity", rowe.PileLogRigidity(p));
        json.member("momentRatio", rowe.PileMomentRatio(p));
        writeReduced(json, "coefficient", outcome, outcome.coefficient, p);
        writeReduced(json, "reducedRatio", outcome, outcome.reducedRatio, p);
    });
}

void writeRowe(JsonText& json, const RoweData& rowe) {
    const RoweOutcome& outcome = rowe.outcome;
    if (outcome.soil == 0) {
        json.value(nullptr);
        return;
    }
    const bool clay = outcome.soil == RoweClay;
    json.object([&] {
        json.member("soil", clay ? "clay" : "sand");
        json.member("height", rowe.RoweHeight);
        json.member("alpha", rowe.RoweAlpha);
        json.member("beta", rowe.RoweBeta);
        json.member("stability", where(clay, rowe.RoweStability));
        json.member("applicable", outcome.applicable);
        json.member("notes").array([&] {
            for (const std::string& note : outcome.notes) {
                json.value(note);
            }
        });
        json.member("sections").array([&] {
            for (int p = 1; p <= rowe.PileSectionCount; ++p) {
                writeSection(json, rowe, p);
            }
        });
    });
}

/// Bytes, on the safe side: a grid point takes some 550, a result row 150, all else 10,000.
std::size_t expectedLength(int status, const State& state, const SolvedLevel* review) {
    int points = review == nullptr ? 0 : review->grid.NumElevs;
    for (int level = 1; level <= levelCount(state, status); ++level) {
        points += state.solved(level).grid.NumElevs;
    }
    return 20000 + 700U * static_cast<std::size_t>(points);
}

} // namespace

std::string jsonResults(const std::string& input, int status, const std::vector<Message>& messages,
                        const State& state, const SolvedLevel* review) {
    JsonText json(expectedLength(status, state, review));
    json.object([&] {
        json.member("schema", 1);
        json.member("program", "KORVANE");
        json.member("version", KORVANE_VERSION);
        json.member("input", utf8Text(input));
        json.member("status", statusText(status));
        json.member("messages");
        writeMessages(json, messages);
        json.member("problem");
        writeProblem(json, state.problem);
        json.member("grid");
        if (review == nullptr) {
            json.array([] {});
        } else {
            writeGrid(json, *review);
        }
        json.member("levels");
        writeLevels(json, state, status);
        json.member("rowe");
        writeRowe(json, state.rowe);
    });
    return json.take();
}

} // namespace korvane::batch
