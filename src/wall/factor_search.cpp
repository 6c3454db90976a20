#include "wall/factor_search.h"

#include "runtime/arithmetic.h"
#include "runtime/number_text.h"

namespace korvane {

namespace {

constexpr double FactorStep = 0.2;
constexpr double LimitStep = 5.0;

void failInconsistent(State& state, int level, const FactorSearch& search) {
    const std::string wall = state.problem.WallType == WallKind::Cantilever ? "     CANTILEVER WALL"
                             : level == 1 ? "     ANCHORED WALL BY FREE EARTH METHOD"
                                          : "     ANCHORED WALL BY FIXED EARTH METHOD";
    std::string text =
        "Inconsistent results have been encountered\nduring attempt to analyze\n\n" + wall;
    if (search.stage > FactorStage::SteppingDown) {
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
        search.stage = FactorStage::SteppingUp;
        search.FS += FactorStep;
    } else {
        takeLower(search, Z);
        search.stage = FactorStage::SteppingDown;
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
        search.stage = FactorStage::Bracketed;
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
        search.stage = FactorStage::Bracketed;
        search.FS =
            divide(search.FSL - search.FS, search.ZH - search.ZL) * (search.ZH - W) + search.FSH;
    }
}

/// Whether the bottom Z fits those found so far: a higher factor must give a lower bottom.
bool fitsBracket(const FactorSearch& search, double Z) {
    switch (search.stage) {
    case FactorStage::SteppingUp:
        return Z <= search.ZH;
    case FactorStage::SteppingDown:
        return Z >= search.ZL;
    case FactorStage::Bracketed:
        return search.ZL <= Z && Z <= search.ZH;
    default:
        return true;
    }
}

} // namespace

bool takeNextFactor(State& state, int level, FactorSearch& search, double Z, double W) {
    bool consistent = fitsBracket(search, Z);
    if (consistent && search.stage == FactorStage::Refining) {
        consistent = narrowBracket(search, Z, W);
    }
    if (!consistent) {
        failInconsistent(state, level, search);
        return false;
    }
    switch (search.stage) {
    case FactorStage::Start:
        startStepping(search, Z, W);
        return true;
    case FactorStage::SteppingUp:
        return stepUp(state, search, Z, W);
    case FactorStage::SteppingDown:
        stepDown(search, Z, W);
        return true;
    case FactorStage::Bracketed:
        takeThirdPoint(search, Z, W);
        search.stage = FactorStage::Refining;
        break;
    case FactorStage::Refining:
        break;
    }
    search.FS = threePointFactor(search, W);
    return true;
}

} // namespace korvane
