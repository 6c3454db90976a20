#include "rowe/moment_reduction.h"

#include "rowe/clay_reduction.h"
#include "rowe/sand_reduction.h"
#include "runtime/arithmetic.h"

#include <cmath>
#include <optional>

namespace korvane {

namespace {

/// Left layers down to the one in which the wall ends, that one included.
int layersAlongWall(const Problem& problem, const Results& results) {
    int layer = 1;
    while (layer < problem.SoilLayerCount(Left) &&
           problem.SoilBottomElev(Left, layer) > results.levels(1).bottomElev) {
        ++layer;
    }
    return layer;
}

bool anyPositive(const Array<double, 2, 11>& values, int layers) {
    for (int layer = 1; layer <= layers; ++layer) {
        if (values(Left, layer) > 0) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<RoweSoil> soilForReduction(const Problem& problem, const Results& results) {
    if (problem.SoilDataKind(Left) != SoilData::Strengths) {
        return RoweSoil::None;
    }
    const int layers = layersAlongWall(problem, results);
    RoweSoil type = RoweSoil::None;
    if (problem.SoilFriction(Left, 1) > 0) {
        if (anyPositive(problem.SoilCohesion, layers)) {
            return std::nullopt;
        }
        type = RoweSoil::Sand;
    }
    if (problem.SoilCohesion(Left, 1) > 0) {
        if (anyPositive(problem.SoilFriction, layers)) {
            return std::nullopt;
        }
        type = RoweSoil::Clay;
    }
    return type;
}

namespace {

/// Flexibility number and ratio of allowable to free earth moment of every section.
void rateSections(const PileSections& sections, double freeEarthMoment, MomentReduction& rowe) {
    for (int p = 1; p <= sections.PileSectionCount; ++p) {
        rowe.PileLogRigidity(p) = pileLogRigidity(rowe.RoweHeight, sections.PileSectionData(p, 2),
                                                  sections.PileModulus(p));
        rowe.PileMomentRatio(p) =
            divide(sections.PileSectionData(p, 1) * sections.PileAllowStress(p),
                   12 * std::fabs(freeEarthMoment));
    }
}

RoweConditions brokenConditions(const Problem& problem, const MomentReduction& rowe,
                                RoweSoil soil) {
    const double rightSurface = problem.SurfaceElev(Right, 1);
    const bool clay = soil == RoweSoil::Clay;
    RoweConditions broken;
    const auto test = [&broken](bool isBroken, RoweCondition condition) {
        if (isBroken) {
            broken.add(condition);
        }
    };
    test(rowe.RoweAlpha < 0.6, RoweCondition::AlphaTooSmall);
    test(rowe.RoweAlpha > 0.8, RoweCondition::AlphaTooLarge);
    test(rowe.RoweBeta > 0.3, RoweCondition::BetaTooLarge);
    test(rightSurface < problem.WallTopElev, RoweCondition::RightBelowTop);
    test(rightSurface <= problem.SurfaceElev(Left, 1), RoweCondition::RightBelowLeft);
    test(clay && rowe.RoweStability < 0.5, RoweCondition::StabilityTooSmall);
    test(clay && rowe.RoweStability > 2.5, RoweCondition::StabilityTooLarge);
    return broken;
}

/// Coefficients and ratios of the sections within the curves; those outside keep their ratio.
void reduceSections(MomentReduction& rowe, RoweSoil soil, int sectionCount) {
    const bool sand = soil == RoweSoil::Sand;
    for (int p = 1; p <= sectionCount; ++p) {
        const double x = rowe.PileLogRigidity(p);
        rowe.inRange(p) = rowe.applicable && (sand ? inSandRange(x) : inClayRange(x));
        for (int k = 1; k <= 2; ++k) {
            rowe.reducedRatio(p, k) = rowe.PileMomentRatio(p);
        }
        if (!rowe.inRange(p)) {
            rowe.sandOutOfRange = rowe.sandOutOfRange || (sand && rowe.applicable);
            continue;
        }
        if (sand) {
            rowe.coefficient(p, 1) = looseCoefficient(rowe.RoweSandCurve, x);
            rowe.coefficient(p, 2) = denseCoefficient(rowe.RoweSandCurve, x);
        } else {
            rowe.coefficient(p, 1) = clayCoefficient(rowe.RoweStability, rowe.RoweAlpha, x);
        }
        const int columns = sand ? 2 : 1;
        for (int k = 1; k <= columns; ++k) {
            rowe.reducedRatio(p, k) = divide(rowe.PileMomentRatio(p), rowe.coefficient(p, k));
        }
    }
}

} // namespace

double pileLogRigidity(double height, double inertia, double modulus) {
    return commonLog(divide(height * height * height * height, inertia * modulus));
}

// Purpose: compares sheet pile sections by Rowe's moment reduction after a free earth design.
// Reads:   bottom (FT) and largest moment (LB-FT) of the free earth level, the left side's soil,
//          the section table.
// Gives:   RoweSoilType, H FT, ALPHA, BETA, S, the sections' values, the conditions not met.
// Source:  P. W. Rowe, anchored sheet-pile walls (sand) and sheet-pile walls in clay.
MomentReduction reduceMoments(const Problem& problem, const Results& results,
                              const PileSections& sections) {
    MomentReduction rowe;
    const std::optional<RoweSoil> soil = soilForReduction(problem, results);
    if (!soil) {
        return rowe;
    }
    const LevelResult& freeEarth = results.levels(1);
    rowe.RoweSoilType = *soil;
    rowe.RoweHeight = problem.WallTopElev - freeEarth.bottomElev;
    rowe.RoweAlpha = divide(problem.WallTopElev - problem.SurfaceElev(Left, 1), rowe.RoweHeight);
    rowe.RoweBeta = divide(problem.WallTopElev - problem.AnchorElev, rowe.RoweHeight);
    if (*soil == RoweSoil::None) {
        return rowe;
    }
    rateSections(sections, freeEarth.diagrams.MaxMoment.value, rowe);
    rowe.RoweStability = *soil == RoweSoil::Clay ? stabilityNumber(problem, results) : 0.0;
    rowe.broken = brokenConditions(problem, rowe, *soil);
    rowe.applicable = rowe.broken.empty();
    if (*soil == RoweSoil::Sand && rowe.applicable) {
        rowe.RoweSandCurve = sandCurve(rowe.RoweAlpha);
    }
    reduceSections(rowe, *soil, sections.PileSectionCount);
    rowe.RoweSoilType = rowe.applicable ? *soil : RoweSoil::None;
    rowe.soil = *soil;
    return rowe;
}

} // namespace korvane
