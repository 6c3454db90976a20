#include "wall/analysis.h"

#include "pressures/elevation_grid.h"
#include "pressures/water_pressures.h"
#include "runtime/arithmetic.h"
#include "runtime/number_text.h"
#include "wall/cantilever_search.h"
#include "wall/design.h"
#include "wall/fixed_earth_search.h"
#include "wall/free_earth_search.h"
#include "wall/net_pressures.h"
#include "wall/solution_files.h"
#include "wall/trial_pressures.h"

#include <cmath>

namespace korvane {

namespace {

constexpr double FactorStep = 0.2;
constexpr double LimitStep = 5.0;
constexpr int MaxTrials = 10000;

/// Where the search for one level's factor stands.
enum class Stage { Start = 1, SteppingUp, SteppingDown, Bracketed, Refining };

/// The search for one level's factor of safety: trial factors and the bottoms (FT) that they give.
struct FactorSearch {
    Stage stage = Stage::Start;
    double FS = 1.0;          ///< present trial
    double limit = LimitStep; ///< largest factor searched without asking
    double FSH = 0, ZH = 0;   ///< bracket end of the higher bottom
    double FSL = 0, ZL = 0;   ///< bracket end of the lower bottom
    double FS3 = 0, Z3 = 0;   ///< the point between
    int side3 = 0;            ///< 1 where the wall's bottom is at or above Z3, 2 below it
};

/// The given active factor of each layer, both levels: a layer's own before its side's before that
/// of the whole problem.
void takeGivenActiveFactors(State& state) {
    const Problem& problem = state.problem;
    if (problem.FSActive <= 0.0001) {
        return;
    }
    for (const int side : {Right, Left}) {
        const double ofSide = problem.Level2FSActive(side);
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const double ofLayer = problem.SoilFSActive(side, layer);
            const double factor = ofLayer > 0 ? ofLayer : ofSide > 0 ? ofSide : problem.FSActive;
            for (const int level : {1, 2}) {
                state.preparation.LayerFSActive(side, layer, level) = factor;
            }
        }
    }
}

void takeTrialFactor(State& state, int level, double factor) {
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= state.problem.SoilLayerCount(side); ++layer) {
            state.preparation.LayerFSPassive(side, layer, level) = factor;
            if (state.problem.FSKind == 1) {
                state.preparation.LayerFSActive(side, layer, level) = factor;
            }
        }
    }
}

void clearMarks(State& state, int side) {
    for (int i = 1; i <= 301; ++i) {
        state.pressures.ActiveMark(side, i).clear();
        state.pressures.PassiveMark(side, i).clear();
    }
}

/// The bottom that the level's design search finds under the present factors, in
/// SolvedBottomElev(level). Returns the anchor's row, 0 for a cantilever wall; failure is
/// SolutionFailed.
int solveTrial(State& state, int level) {
    BuildElevationGrid(state, level);
    ComputeWaterPressures(state, level);
    for (const int side : {Right, Left}) {
        clearMarks(state, side);
        ComputeSidePressures(state, side, level);
        if (state.SolutionFailed != 0) {
            return 0;
        }
    }
    ComputeNetPressures(state);
    if (state.SolutionFailed != 0) {
        return 0;
    }
    if (!shiftDrivingMoment(state)) {
        FailRotation(state);
        return 0;
    }
    if (state.problem.WallType == "C") {
        SolveCantileverBottom(state);
        return 0;
    }
    int anchorIndex = firstRowAt(state.grid, state.problem.AnchorElev);
    if (level == 1) {
        SolveFreeEarthBottom(state, anchorIndex);
    } else {
        SolveFixedEarthBottom(state, anchorIndex);
    }
    return anchorIndex;
}

void failInconsistent(State& state, int level, const FactorSearch& search) {
    const std::string wall = state.problem.WallType == "C" ? "     CANTILEVER WALL"
                             : level == 1 ? "     ANCHORED WALL BY FREE EARTH METHOD"
                                          : "     ANCHORED WALL BY FIXED EARTH METHOD";
    std::string text =
        "Inconsistent results have been encountered\nduring attempt to analyze\n\n" + wall;
    if (search.stage > Stage::SteppingDown) {
        text += "\n\nFactor of safety appears to be between " + formatNumber(search.FSL, "#0.00") +
                "and " + formatNumber(search.FSH, "#0.00");
    }
    failSolution(state,
                 {.text = text + "\n\n     Unable to continue.", .title = "INCONSISTENT RESULTS"});
}

/// Asks whether to go on beyond the limit, which a Yes raises. False after a No.
bool goBeyondLimit(State& state, FactorSearch& search) {
    const Answer answer =
        state.prompts.Ask({.text = "Factor of safety for this system\nappears to be greater than " +
                                   formatNumber(search.limit, "#0.00") +
                                   ".\n\nDo you want to continue search for\nfactor of safety?",
                           .title = "LARGE FACTOR OF SAFETY",
                           .buttons = Buttons::YesNo});
    if (answer != Answer::Yes) {
        state.SolutionFailed = 1;
        return false;
    }
    search.limit += LimitStep;
    return true;
}

/// Lagrange's interpolation through the bracket and the point between, at the wall's bottom.
double threePointFactor(const FactorSearch& search, double W) {
    const auto& [stage, FS, limit, FSH, ZH, FSL, ZL, FS3, Z3, side3] = search;
    return divide((W - Z3) * (W - ZH), (ZL - Z3) * (ZL - ZH)) * FSL +
           divide((W - ZL) * (W - ZH), (Z3 - ZL) * (Z3 - ZH)) * FS3 +
           divide((W - Z3) * (W - ZL), (ZH - Z3) * (ZH - ZL)) * FSH;
}

/// Makes the present trial the point between.
void takeThirdPoint(FactorSearch& search, double Z, double W) {
    search.Z3 = Z;
    search.FS3 = search.FS;
    search.side3 = W < Z ? 2 : 1;
}

/// The trial becomes the point between, and the old one the bracket's end on its side of the wall's
/// bottom. Both tests run in one pass, deliberately: where the first finds the new point above the
/// bottom, the second makes it the upper end too, and the interpolation ends in a division by zero.
bool narrowBracket(FactorSearch& search, double Z, double W) {
    if (search.side3 != 2) {
        if (!(search.Z3 <= Z && Z <= search.ZH)) {
            return false;
        }
        search.ZL = search.Z3;
        search.FSL = search.FS3;
        takeThirdPoint(search, Z, W);
    }
    if (search.side3 == 2) {
        if (!(search.ZL <= Z && Z <= search.Z3)) {
            return false;
        }
        search.ZH = search.Z3;
        search.FSH = search.FS3;
        takeThirdPoint(search, Z, W);
    }
    return true;
}

void takeUpper(FactorSearch& search, double Z) {
    search.FSH = search.FS;
    search.ZH = Z;
}

void takeLower(FactorSearch& search, double Z) {
    search.FSL = search.FS;
    search.ZL = Z;
}

/// The first trial decides where to step.
void startStepping(FactorSearch& search, double Z, double W) {
    if (Z > W) {
        takeUpper(search, Z);
        search.stage = Stage::SteppingUp;
        search.FS += FactorStep;
    } else {
        takeLower(search, Z);
        search.stage = Stage::SteppingDown;
        search.FS -= FactorStep;
    }
}

/// A step up, or the straight line once the bottom is passed. False where the user stops.
bool stepUp(State& state, FactorSearch& search, double Z, double W) {
    if (Z > W) {
        if (search.FS >= search.limit && !goBeyondLimit(state, search)) {
            return false;
        }
        takeUpper(search, Z);
        search.FS += FactorStep;
    } else {
        takeLower(search, Z);
        search.stage = Stage::Bracketed;
        search.FS =
            divide(search.FS - search.FSH, search.ZH - search.ZL) * (search.ZH - W) + search.FSH;
    }
    return true;
}

/// A step down, or the straight line once the bottom is passed.
void stepDown(FactorSearch& search, double Z, double W) {
    if (Z < W) {
        takeLower(search, Z);
        search.FS -= FactorStep;
    } else {
        takeUpper(search, Z);
        search.stage = Stage::Bracketed;
        search.FS =
            divide(search.FSL - search.FS, search.ZH - search.ZL) * (search.ZH - W) + search.FSH;
    }
}

/// Whether the bottom Z fits those found so far: a higher factor must give a lower bottom.
bool fitsBracket(const FactorSearch& search, double Z) {
    switch (search.stage) {
    case Stage::SteppingUp:
        return Z <= search.ZH;
    case Stage::SteppingDown:
        return Z >= search.ZL;
    case Stage::Bracketed:
        return search.ZL <= Z && Z <= search.ZH;
    default:
        return true;
    }
}

/// Notes that the present factor gives the bottom Z, more than the tolerance away from the wall's
/// bottom W, and takes the next factor. False after a failure, which has shown its box.
bool takeNextFactor(State& state, int level, FactorSearch& search, double Z, double W) {
    bool consistent = fitsBracket(search, Z);
    if (consistent && search.stage == Stage::Refining) {
        consistent = narrowBracket(search, Z, W);
    }
    if (!consistent) {
        failInconsistent(state, level, search);
        return false;
    }
    switch (search.stage) {
    case Stage::Start:
        startStepping(search, Z, W);
        return true;
    case Stage::SteppingUp:
        return stepUp(state, search, Z, W);
    case Stage::SteppingDown:
        stepDown(search, Z, W);
        return true;
    case Stage::Bracketed:
        takeThirdPoint(search, Z, W);
        search.stage = Stage::Refining;
        break;
    case Stage::Refining:
        break;
    }
    search.FS = threePointFactor(search, W);
    return true;
}

/// The factor of one level, with its results and scratch file. Failure is SolutionFailed.
void analyseLevel(State& state, int level) {
    const double W = state.problem.WallBottomElev;
    FactorSearch search;
    for (int trial = 1; trial <= MaxTrials; ++trial) {
        takeTrialFactor(state, level, search.FS);
        const int anchorIndex = solveTrial(state, level);
        if (state.SolutionFailed != 0) {
            return;
        }
        const double Z = finite(state.solution.SolvedBottomElev(level));
        if (std::abs(Z - W) <= BottomTolerance) {
            finishLevel(state, anchorIndex, level);
            WriteSolutionFile(state, level);
            return;
        }
        if (!takeNextFactor(state, level, search, Z, W)) {
            return;
        }
    }
    failSearch(state, "SEARCH FOR THE FACTOR OF SAFETY DOES NOT CONVERGE.");
}

} // namespace

// Purpose: the factor of safety at which the design search of each level ends at the wall's bottom.
//   The bottom found is taken as a function of the factor; its root by steps of 0.2 from 1.0, then
//   a straight line between the steps, then Lagrange's interpolation through three points.
// Reads: WallBottomElev (FT), FSKind, the given active factors.
// Writes: LayerFSPassive and (one factor for both) LayerFSActive of each level, and all that a
//   design leaves behind, with a scratch file for every level.
// Stops: the bottom within 0.1 FT of WallBottomElev.
void SolveAnalysis(State& state) {
    forgetSolvedLevels(state);
    takeGivenActiveFactors(state);
    const int levels = state.problem.WallType == "A" ? 2 : 1;
    for (int level = 1; level <= levels && state.SolutionFailed == 0; ++level) {
        analyseLevel(state, level);
    }
}

} // namespace korvane
