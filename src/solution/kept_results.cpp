#include "solution/kept_results.h"

#include "pressures/developed_layers.h"
#include "runtime/arithmetic.h"
#include "state/rows.h"
#include "wall/preparation.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

void keepDiagrams(const State& state, PressureDiagrams& diagrams) {
    const Pressures& pressures = state.pressures;
    const int rows = std::max(state.TouchedRows, diagrams.rows);
    diagrams.grid = state.grid;
    copySideRows(pressures.ActivePressures, diagrams.pressures.ActivePressures, rows);
    copySideRows(pressures.PassivePressures, diagrams.pressures.PassivePressures, rows);
    copySideRows(pressures.SurchargePressures, diagrams.pressures.SurchargePressures, rows);
    copySideRows(pressures.ActiveMark, diagrams.pressures.ActiveMark, rows);
    copySideRows(pressures.PassiveMark, diagrams.pressures.PassiveMark, rows);
    copyRows(pressures.WaterPressures, diagrams.pressures.WaterPressures, rows);
    copyRows(state.net.NetActive, diagrams.NetActive, rows);
    copyRows(state.net.NetPassive, diagrams.NetPassive, rows);
    diagrams.rows = state.TouchedRows;
    diagrams.waterLagRow = state.net.WaterLagRow;
}

/// The rows in use and their extremes; rows beyond them are zero in both.
void keepRows(const ResultDiagrams& results, ResultDiagrams& kept) {
    const int rows = std::max(results.RowCount, kept.RowCount);
    copyRows(results.ResultElev, kept.ResultElev, rows);
    copyRows(results.ResultMoment, kept.ResultMoment, rows);
    copyRows(results.ResultShear, kept.ResultShear, rows);
    copyRows(results.ResultDeflection, kept.ResultDeflection, rows);
    copyRows(results.ResultPressure, kept.ResultPressure, rows);
    kept.RowCount = results.RowCount;
    kept.MaxMoment = results.MaxMoment;
    kept.MaxDeflection = results.MaxDeflection;
    kept.DeflectionRange = results.DeflectionRange;
    kept.MomentRange = results.MomentRange;
    kept.ShearRange = results.ShearRange;
    kept.PressureRange = results.PressureRange;
}

/// What the pressures tell of themselves, or nothing; memory is used again.
void keepDetails(const PressureDetails* details, PressureDetails& kept) {
    if (details != nullptr) {
        kept.sides = details->sides;
        kept.kept = true;
    } else if (kept.kept) {
        kept = {};
    }
}

SolutionMethod methodOf(const Problem& problem, int level) {
    return problem.WallType == WallKind::Cantilever ? SolutionMethod::Cantilever
           : level == 1                             ? SolutionMethod::FreeEarth
                                                    : SolutionMethod::FixedEarth;
}

Extreme largestShear(const ResultDiagrams& diagrams) {
    Extreme largest;
    for (int r = 1; r <= diagrams.RowCount; ++r) {
        if (std::fabs(diagrams.ResultShear(r)) > std::fabs(largest.value)) {
            largest = {diagrams.ResultShear(r), diagrams.ResultElev(r)};
        }
    }
    return largest;
}

void takeSources(const Problem& problem, int side, int layer, DevelopedLayer& developed) {
    const FactorSource active = givenActiveFactor(problem, side, layer).source;
    if (problem.ProgramMode == Mode::Design) {
        developed.activeSource = active;
        developed.passiveSource = givenPassiveFactor(problem, side, layer).source;
        return;
    }
    developed.activeSource =
        problem.FSKind == FactorKind::OneForBoth ? FactorSource::Search : active;
    developed.passiveSource = FactorSource::Search;
}

void keepLayers(const State& state, int level, LevelResult& result) {
    const Problem& problem = *state.problem;
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            DevelopedLayer& developed = result.layers(side, layer);
            developed = developedLayer(state, side, layer, level);
            takeSources(problem, side, layer, developed);
        }
    }
}

bool anyMarked(const State& state) {
    const auto& WedgeNoSolution = state.wedge.WedgeNoSolution;
    return WedgeNoSolution(1, Right) != 0 || WedgeNoSolution(1, Left) != 0 ||
           WedgeNoSolution(2, Right) != 0 || WedgeNoSolution(2, Left) != 0;
}

} // namespace

void keepReview(const State& state, Review& review) {
    review.SideMethod = state.preparation.SideMethod;
    review.hasPressures = state.problem->ProgramMode == Mode::Design;
    review.SeepageKind = state.preparation.SeepageKind;
    review.SeepageGradient = state.preparation.SeepageGradient(1);
    review.SeepageGradientLimit = state.preparation.SeepageGradientLimit;
    for (const int side : {Right, Left}) {
        review.WedgeNoSolution(side) = state.wedge.WedgeNoSolution(1, side);
    }
    if (review.hasPressures) {
        keepDiagrams(state, review.diagrams);
    }
    keepDetails(review.hasPressures ? state.details : nullptr, review.details);
}

void keepLevel(const State& state, int level, Results& results) {
    const Problem& problem = *state.problem;
    const Solution& solution = state.solution;
    LevelResult& result = results.levels(level);
    const bool anchored = problem.WallType == WallKind::Anchored;

    result.method = methodOf(problem, level);
    result.bottomElev = solution.SolvedBottomElev(level);
    result.penetration =
        MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1)) - result.bottomElev;
    result.bottomPressure = solution.BottomPressure(level);
    result.anchorForce = anchored ? solution.AnchorForce(level) : 0;
    result.factorOfSafety =
        problem.ProgramMode == Mode::Analysis ? solution.FactorOfSafety(level) : 0;
    result.seepageGradient = state.preparation.SeepageGradient(level);
    result.seepageEndElev = state.preparation.SeepageEndElev(level);
    result.transitionElev = anchored ? 0 : solution.TransitionElev;
    result.seepagePasses = solution.SeepagePasses;
    result.bottomIndex = solution.BottomIndex(level);
    result.transitionRow = anchored ? 0 : solution.TransitionRow;
    result.bottomRowElev =
        anchored ? state.grid.ElevGrid(result.bottomIndex) : solution.BottomRowElev;
    keepRows(state.results, result.diagrams);
    result.maxShear = largestShear(state.results);
    result.toeReaction =
        anchored && level == 2 ? -state.results.ResultShear(state.results.RowCount) : 0;
    keepDiagrams(state, result.solved);
    for (const int side : {Right, Left}) {
        result.WedgeNoSolution(side) = state.wedge.WedgeNoSolution(level, side);
    }
    keepLayers(state, level, result);
    keepDetails(state.details, result.details);
    results.levelCount = level;
    results.wedgeWarning = anyMarked(state);
}

} // namespace korvane
