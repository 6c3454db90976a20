#include "sheet/stages.h"

#include "solution/wall_diagrams.h"

#include <algorithm>

namespace korvane::sheet {

namespace {

bool sameFactors(const Problem& problem, const LevelResult& a, const LevelResult& b) {
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const DevelopedLayer& first = a.layers(side, layer);
            const DevelopedLayer& second = b.layers(side, layer);
            if (first.fsActive != second.fsActive || first.fsPassive != second.fsPassive) {
                return false;
            }
        }
    }
    return true;
}

/// Both levels of an anchored wall rest on the same pressures, but where an analysis has found two
/// factors or seepage has followed the bottom.
bool samePressures(const Problem& problem, const LevelResult& a, const LevelResult& b) {
    return a.seepageGradient == b.seepageGradient && a.seepageEndElev == b.seepageEndElev &&
           sameFactors(problem, a, b);
}

PressureStage stageOf(const LevelResult& level, int number) {
    PressureStage stage;
    stage.level = number;
    stage.diagrams = wallDiagrams(level);
    stage.details = level.details.kept ? &level.details : nullptr;
    stage.gradient = level.seepageGradient;
    stage.seepageEnd = level.seepageEndElev;
    stage.layers = level.layers;
    return stage;
}

void addLevels(const SheetRequest& request, const Results& results,
               std::vector<PressureStage>& stages) {
    const bool alone = results.levelCount == 1 ||
                       samePressures(request.problem, results.levels(1), results.levels(2));
    for (int number = 1; number <= results.levelCount; ++number) {
        const LevelResult& level = results.levels(number);
        const std::string name = solutionMethodName(level.method);
        PressureStage& stage = stages.emplace_back(stageOf(level, number));
        stage.shown = number == 1 || !alone;
        stage.title = alone ? "" : name + " solution";
        stage.prefix = results.levelCount == 1 ? "" : name + ", ";
    }
}

/// FT: where the head is used up by a gradient.
double seepageEndOf(const Problem& problem, double gradient) {
    const double exit = std::min(problem.WaterElev(Left), problem.SurfaceElev(Left, 1));
    const double head = problem.WaterElev(Right) - problem.WaterElev(Left);
    return (problem.SeepageElev + exit - head / gradient) / 2;
}

} // namespace

std::vector<PressureStage> pressureStages(const SheetRequest& request) {
    std::vector<PressureStage> stages;
    const Results* results = request.solved.results;
    if (results != nullptr && results->levelCount > 0) {
        addLevels(request, *results, stages);
        return stages;
    }
    const Review* review = request.solved.review;
    if (review != nullptr && review->hasPressures) {
        PressureStage& stage = stages.emplace_back();
        stage.review = true;
        stage.title = "stop for review";
        stage.diagrams = withWaterInStep(review->diagrams);
        stage.details = review->details.kept ? &review->details : nullptr;
        stage.gradient = review->SeepageGradient;
        stage.seepageEnd = seepageEndOf(request.problem, stage.gradient);
    }
    return stages;
}

std::string wedgeReason(const Problem& problem, int side) {
    if (problem.SurfacePointCount(side) > 1) {
        return "its ground is no level line (" + std::to_string(problem.SurfacePointCount(side)) +
               " points)";
    }
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        if (problem.SoilAdhesion(side, layer) > 0) {
            return "layer " + std::to_string(layer) + " has adhesion on the wall";
        }
        if (layer < problem.SoilLayerCount(side) && problem.SoilBottomSlope(side, layer) != 0) {
            return "the bottom of layer " + std::to_string(layer) + " slopes";
        }
    }
    return "";
}

Array<PressureMethod, 2> sideMethods(const SheetRequest& request) {
    if (request.solved.review != nullptr) {
        return request.solved.review->SideMethod;
    }
    Array<PressureMethod, 2> methods;
    const bool fixed = request.options.wedge == WedgeMethod::FixedSurface;
    for (const int side : {Right, Left}) {
        methods(side) = wedgeReason(request.problem, side).empty() ? PressureMethod::Coefficients
                        : fixed                                    ? PressureMethod::FixedSurface
                                                                   : PressureMethod::Sweep;
    }
    return methods;
}

const char* sideName(int side) {
    return side == Right ? "right" : "left";
}

std::string elevationText(double elev, UnitSystem units) {
    return "EL " + quantityWithUnit(Quantity::Length, elev, units);
}

} // namespace korvane::sheet
