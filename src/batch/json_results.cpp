#include "batch/json_results.h"

#include "runtime/arithmetic.h"
#include "runtime/utf8_text.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstddef>

namespace korvane::batch {

namespace {

using Json = nlohmann::ordered_json;

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
    case Answer::Back:
        return "Back";
    }
    return "";
}

Json messagesJson(const std::vector<Message>& messages) {
    Json list = Json::array();
    for (const Message& message : messages) {
        list.push_back({{"title", utf8Text(message.box.title)},
                        {"text", utf8Text(message.box.text)},
                        {"answer", answerText(message.answer)}});
    }
    return list;
}

/// A value where it applies, else null.
Json where(bool applies, const Json& value) {
    return applies ? value : Json();
}

/// The leading entries of a list.
template <class T, int N>
Json leading(const Array<T, N>& values, int count) {
    Json list = Json::array();
    for (int i = 1; i <= count; ++i) {
        list.push_back(values(i));
    }
    return list;
}

/// A value of each side, or null for both.
template <class T>
Json bothSides(const Array<T, 2>& values, bool applies = true) {
    return where(applies, leading(values, 2));
}

/// The leading entries of each side's list; null for a side to which it does not apply.
template <int N>
Json sideLists(const Array<double, 2, N>& values, const Array<int, 2>& counts,
               const std::array<bool, 2>& applies = {true, true}) {
    Json sides = Json::array();
    for (const int side : {Right, Left}) {
        Json list = Json::array();
        for (int i = 1; i <= counts(side); ++i) {
            list.push_back(values(side, i));
        }
        sides.push_back(where(applies[static_cast<std::size_t>(side - 1)], list));
    }
    return sides;
}

Json headingsJson(const Problem& problem) {
    Json list = Json::array();
    for (int i = 1; i <= problem.NumHeadingLines; ++i) {
        list.push_back(utf8Text(problem.HeadingLines(i)));
    }
    return list;
}

/// Layer bottoms; the last layer of a side has none.
Json layerBottoms(const Problem& problem) {
    Json sides = sideLists(problem.SoilBottomElev, problem.SoilLayerCount);
    for (Json& side : sides) {
        if (!side.empty()) {
            side.back() = Json();
        }
    }
    return sides;
}

void addHeadingToSurface(Json& json, const Problem& problem) {
    const bool anchored = problem.WallType == WallKind::Anchored;
    const bool design = problem.ProgramMode == Mode::Design;
    const bool analysis = problem.ProgramMode == Mode::Analysis;
    json["NumHeadingLines"] = problem.NumHeadingLines;
    json["HeadingLines"] = headingsJson(problem);
    json["WallType"] = letterOf(problem.WallType);
    json["ProgramMode"] = letterOf(problem.ProgramMode);
    json["FSActive"] = where(design || (analysis && problem.FSKind == 2), problem.FSActive);
    json["FSPassive"] = where(design, problem.FSPassive);
    json["FSKind"] = where(analysis, problem.FSKind);
    json["WallTopElev"] = problem.WallTopElev;
    json["AnchorElev"] = where(anchored, problem.AnchorElev);
    json["WallBottomElev"] = where(analysis, problem.WallBottomElev);
    json["WallModulus"] = where(analysis, problem.WallModulus);
    json["WallInertia"] = where(analysis, problem.WallInertia);
    json["SurfacePointCount"] = bothSides(problem.SurfacePointCount);
    json["SurfaceDist"] = sideLists(problem.SurfaceDist, problem.SurfacePointCount);
    json["SurfaceElev"] = sideLists(problem.SurfaceElev, problem.SurfacePointCount);
}

void addSoil(Json& json, const Problem& problem) {
    const auto& kind = problem.SoilDataKind;
    const auto& count = problem.SoilLayerCount;
    const std::array<bool, 2> strengths{kind(Right) == SoilData::Strengths,
                                        kind(Left) == SoilData::Strengths};
    const std::array<bool, 2> coefficients{kind(Right) == SoilData::Coefficients,
                                           kind(Left) == SoilData::Coefficients};
    json["SoilDataKind"] = {letterOf(kind(Right)), letterOf(kind(Left))};
    json["SoilLayerCount"] = bothSides(count);
    json["Level2FSActive"] = bothSides(problem.Level2FSActive);
    json["Level2FSPassive"] = bothSides(problem.Level2FSPassive);
    json["SoilSatWeight"] = sideLists(problem.SoilSatWeight, count);
    json["SoilMoistWeight"] = sideLists(problem.SoilMoistWeight, count);
    json["SoilFriction"] = sideLists(problem.SoilFriction, count, strengths);
    json["SoilCohesion"] = sideLists(problem.SoilCohesion, count, strengths);
    json["SoilWallFriction"] = sideLists(problem.SoilWallFriction, count, strengths);
    json["SoilAdhesion"] = sideLists(problem.SoilAdhesion, count, strengths);
    json["SoilBottomElev"] = layerBottoms(problem);
    json["SoilBottomSlope"] = sideLists(problem.SoilBottomSlope, count, strengths);
    json["SoilFSActive"] = sideLists(problem.SoilFSActive, count, strengths);
    json["SoilFSPassive"] = sideLists(problem.SoilFSPassive, count, strengths);
    json["SoilCoefActive"] = sideLists(problem.SoilCoefActive, count, coefficients);
    json["SoilCoefPassive"] = sideLists(problem.SoilCoefPassive, count, coefficients);
}

void addWater(Json& json, const Problem& problem) {
    const bool elevations = problem.WaterDataKind == WaterData::Elevations;
    const bool pressures = problem.WaterDataKind == WaterData::Pressures;
    const bool seepage = problem.SeepageKind != Seepage::None;
    const int count = pressures ? problem.WaterPressCount : 0;
    json["WaterDataKind"] = letterOf(problem.WaterDataKind);
    json["WaterUnitWeight"] = where(elevations, problem.WaterUnitWeight);
    json["WaterElev"] = bothSides(problem.WaterElev, elevations);
    json["SeepageKind"] = letterOf(problem.SeepageKind);
    json["SeepageElev"] = where(seepage, problem.SeepageElev);
    json["SeepageGradient"] = bothSides(problem.SeepageGradient, seepage);
    json["WaterPressCount"] = count;
    json["WaterPressElev"] = leading(problem.WaterPressElev, count);
    json["WaterPressure"] = leading(problem.WaterPressure, count);
}

void addLoads(Json& json, const Problem& problem) {
    json["VLineCount"] = bothSides(problem.VLineCount);
    json["VLineDist"] = sideLists(problem.VLineDist, problem.VLineCount);
    json["VLineLoad"] = sideLists(problem.VLineLoad, problem.VLineCount);
    json["VUniformCount"] = bothSides(problem.VUniformCount);
    json["VStripCount"] = bothSides(problem.VStripCount);
    json["VStripStart"] = sideLists(problem.VStripStart, problem.VStripCount);
    json["VStripEnd"] = sideLists(problem.VStripEnd, problem.VStripCount);
    json["VStripLoad"] = sideLists(problem.VStripLoad, problem.VStripCount);
    json["VRampCount"] = bothSides(problem.VRampCount);
    for (const int side : {Right, Left}) {
        const auto place = static_cast<std::size_t>(side - 1);
        const bool uniform = problem.VUniformCount(side) > 0;
        const bool ramp = problem.VRampCount(side) > 0;
        json["VUniformLoad"][place] = where(uniform, problem.VUniformLoad(side));
        json["VRampStart"][place] = where(ramp, problem.VRampStart(side));
        json["VRampEnd"][place] = where(ramp, problem.VRampEnd(side));
        json["VRampLoad"][place] = where(ramp, problem.VRampLoad(side));
    }
    json["VTriCount"] = bothSides(problem.VTriCount);
    json["VTriStart"] = sideLists(problem.VTriStart, problem.VTriCount);
    json["VTriPeak"] = sideLists(problem.VTriPeak, problem.VTriCount);
    json["VTriEnd"] = sideLists(problem.VTriEnd, problem.VTriCount);
    json["VTriLoad"] = sideLists(problem.VTriLoad, problem.VTriCount);
    json["VVarCount"] = bothSides(problem.VVarCount);
    json["VVarDist"] = sideLists(problem.VVarDist, problem.VVarCount);
    json["VVarLoad"] = sideLists(problem.VVarLoad, problem.VVarCount);
    json["HLineCount"] = problem.HLineCount;
    json["HLineElev"] = leading(problem.HLineElev, problem.HLineCount);
    json["HLineLoad"] = leading(problem.HLineLoad, problem.HLineCount);
    json["HDistCount"] = problem.HDistCount;
    json["HDistElev"] = leading(problem.HDistElev, problem.HDistCount);
    json["HDistLoad"] = leading(problem.HDistLoad, problem.HDistCount);
}

Json problemJson(const Problem& problem) {
    Json json;
    addHeadingToSurface(json, problem);
    addSoil(json, problem);
    addWater(json, problem);
    addLoads(json, problem);
    return json;
}

/// The pressures of one side at a grid point; each pair just below and just above it.
Json sideJson(const Pressures& pressures, int side, int i) {
    const auto& active = pressures.ActivePressures;
    const auto& passive = pressures.PassivePressures;
    return {{"active", {active(side, i, 1), active(side, i, 2)}},
            {"passive", {passive(side, i, 1), passive(side, i, 2)}},
            {"marks",
             {markText(pressures.ActiveMark(side, i)), markText(pressures.PassiveMark(side, i))}}};
}

Json gridJson(const SolvedLevel& level) {
    const auto& [ElevGrid, NumElevs, SeepageEndIndex] = level.grid;
    const auto& WaterPressures = level.pressures.WaterPressures;
    Json list = Json::array();
    for (int i = 1; i <= NumElevs; ++i) {
        list.push_back({{"elev", ElevGrid(i)},
                        {"water", {WaterPressures(i, 1), WaterPressures(i, 2)}},
                        {"right", sideJson(level.pressures, Right, i)},
                        {"left", sideJson(level.pressures, Left, i)},
                        {"netActive", {level.NetActive(i, 1), level.NetActive(i, 2)}},
                        {"netPassive", {level.NetPassive(i, 1), level.NetPassive(i, 2)}}});
    }
    return list;
}

Json rowsJson(const SolvedLevel& level) {
    Json list = Json::array();
    for (int i = 1; i <= level.rowCount; ++i) {
        list.push_back({{"elev", level.ResultElev(i)},
                        {"moment", level.ResultMoment(i)},
                        {"shear", level.ResultShear(i)},
                        {"deflection", level.ResultDeflection(i)},
                        {"pressure", level.ResultPressure(i)}});
    }
    return list;
}

Json levelJson(const State& state, int level) {
    const Problem& problem = state.problem;
    const bool anchored = problem.WallType == WallKind::Anchored;
    const double bottom = state.solution.SolvedBottomElev(level);
    const double ground = MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
    const auto& MaxMoment = state.results.MaxMoment;
    const auto& MaxDeflection = state.results.MaxDeflection;
    const SolvedLevel& solved = state.solved(level);
    return {
        {"method", !anchored    ? "cantilever"
                   : level == 1 ? "free earth"
                                : "fixed earth"},
        {"bottomElev", bottom},
        {"penetration", ground - bottom},
        {"anchorForce", where(anchored, state.solution.AnchorForce(level))},
        {"factorOfSafety", where(problem.ProgramMode == Mode::Analysis,
                                 state.preparation.LayerFSPassive(Right, 1, level))},
        {"seepageGradient",
         where(problem.SeepageKind != Seepage::None, problem.SeepageGradient(level))},
        {"maxMoment", {{"value", MaxMoment(level)}, {"elev", MaxMoment(level + 2)}}},
        {"maxDeflection", {{"value", MaxDeflection(level)}, {"elev", MaxDeflection(level + 2)}}},
        {"rows", rowsJson(solved)},
        {"grid", gridJson(solved)}};
}

Json levelsJson(const State& state) {
    Json list = Json::array();
    for (int level = 1; level <= (state.problem.WallType == WallKind::Anchored ? 2 : 1); ++level) {
        list.push_back(levelJson(state, level));
    }
    return list;
}

/// A value of a section: one number in clay, one for loose and one for dense sand; null where the
/// section lies outside the range of the curves.
Json reducedJson(const RoweOutcome& outcome, const Array<double, 13, 2>& values, int p) {
    if (!outcome.inRange(p)) {
        return {};
    }
    if (outcome.soil == RoweClay) {
        return values(p, 1);
    }
    return {{"loose", values(p, 1)}, {"dense", values(p, 2)}};
}

Json roweSectionsJson(const RoweData& rowe) {
    Json list = Json::array();
    for (int p = 1; p <= rowe.PileSectionCount; ++p) {
        list.push_back({{"name", utf8Text(rowe.PileName(p))},
                        {"sectionModulus", rowe.PileSectionData(p, 1)},
                        {"inertia", rowe.PileSectionData(p, 2)},
                        {"allowableStress", rowe.PileAllowStress(p)},
                        {"modulus", rowe.PileModulus(p)},
                        {"logRigidity", rowe.PileLogRigidity(p)},
                        {"momentRatio", rowe.PileMomentRatio(p)},
                        {"coefficient", reducedJson(rowe.outcome, rowe.outcome.coefficient, p)},
                        {"reducedRatio", reducedJson(rowe.outcome, rowe.outcome.reducedRatio, p)}});
    }
    return list;
}

Json roweJson(const RoweData& rowe) {
    const RoweOutcome& outcome = rowe.outcome;
    if (outcome.soil == 0) {
        return {};
    }
    const bool clay = outcome.soil == RoweClay;
    Json notes = Json::array();
    for (const std::string& note : outcome.notes) {
        notes.push_back(note);
    }
    return {{"soil", clay ? "clay" : "sand"},
            {"height", rowe.RoweHeight},
            {"alpha", rowe.RoweAlpha},
            {"beta", rowe.RoweBeta},
            {"stability", where(clay, rowe.RoweStability)},
            {"applicable", outcome.applicable},
            {"notes", notes},
            {"sections", roweSectionsJson(rowe)}};
}

} // namespace

std::string jsonResults(const std::string& input, int status, const std::vector<Message>& messages,
                        const State& state, const SolvedLevel* review) {
    const Json results{{"schema", 1},
                       {"program", "KORVANE"},
                       {"version", KORVANE_VERSION},
                       {"input", utf8Text(input)},
                       {"status", statusText(status)},
                       {"messages", messagesJson(messages)},
                       {"problem", problemJson(state.problem)},
                       {"grid", review == nullptr ? Json::array() : gridJson(*review)},
                       {"levels", status == StatusSolved ? levelsJson(state) : Json::array()},
                       {"rowe", roweJson(state.rowe)}};
    return results.dump(1) + "\n";
}

} // namespace korvane::batch
