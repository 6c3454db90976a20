#include "wall/factor_search.h"

#include "runtime/arithmetic.h"

namespace korvane {

namespace {

constexpr double FactorStep = 0.2;
constexpr double LimitStep = 5.0;

void failInconsistent(State& state, int level, const FactorSearch& search) {
    const bool bracketed = search.stage > FactorStage::SteppingDown;
    fail(state, {.code = FailureCode::InconsistentFactors,
                 .level = level,
                 .low = bracketed ? search.FSL : 0,
                 .high = bracketed ? search.FSH : 0,
                 .bracketed = bracketed});
}

/// Goes on beyond the search's limit, where that is wanted, and raises it.
bool goBeyondLimit(State& state, int level, FactorSearch& search, const FactorLimit& limit) {
    const bool goesOn = limit.ask ? limit.ask(search.limit) : search.limit <= limit.largest;
    if (!goesOn) {
        fail(state, {.code = FailureCode::FactorDeclined, .level = level, .low = search.limit});
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
bool stepUp(State& state, int level, FactorSearch& search, const FactorLimit& limit, double Z,
            double W) {
    if (Z > W) {
        if (search.FS >= search.limit && !goBeyondLimit(state, level, search, limit)) {
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

bool takeNextFactor(State& state, int level, FactorSearch& search, const FactorLimit& limit,
                    double Z, double W) {
    state.stage = {Doing::FactorOfSafety, 0, level};
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
        return stepUp(state, level, search, limit, Z, W);
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
