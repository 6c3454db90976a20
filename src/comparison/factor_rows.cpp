// Rows that change factors of safety, strengths, coefficients or the depth.
#include "comparison/comparison_rows.h"
#include "comparison/rear_actions.h"
#include "notes/rules.h"
#include "pressures/coefficient_pressures.h"
#include "problem/loads.h"
#include "wall/preparation.h"

#include <cmath>

namespace korvane {

namespace {

// Partial factors on strengths and variable loads: EN 1997-1, Annex A, sets M2 and A2.
constexpr double OnFriction = 1.25; ///< on its tangent, and on the cohesion of such soil
constexpr double OnClay = 1.4;      ///< on the cohesion of soil without friction
constexpr double OnLoads = 1.3;

bool isDesign(const Variant& told) {
    return told.problem.ProgramMode == Mode::Design;
}

const char* const SearchesFactor = "an analysis searches the factor of safety";

std::string always(const Variant&, double) {
    return {};
}
void nothing(Variant&, double) {}

// ---- factors of safety
// ---------------------------------------------------------------------------

std::string noFactors(const Variant& told, double) {
    return !isDesign(told)                      ? SearchesFactor
           : hasCoefficientsAlone(told.problem) ? "given coefficients take no factor of safety"
                                                : "";
}
void setBoth(Variant& variant, double factor) {
    setFactors(variant.problem, factor, factor);
}
void setPassive(Variant& variant, double factor) {
    setFactors(variant.problem, variant.problem.FSActive, factor);
}

// ---- passive coefficients
// ------------------------------------------------------------------------

bool hasCohesion(const Problem& problem, int side) {
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        if (problem.SoilCohesion(side, layer) > 0) {
            return true;
        }
    }
    return false;
}

/// True where coefficients are given, or strengths lead to them at factors of 1.
bool hasCoefficients(const Problem& problem, int side) {
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        if (problem.SoilDataKind(side) == SoilData::Strengths &&
            !hasPassiveCoefficient(problem.SoilFriction(side, layer) * DegreesToRadians,
                                   problem.SoilWallFriction(side, layer) * DegreesToRadians)) {
            return false;
        }
    }
    return true;
}

std::string noReducedKp(const Variant& told, double) {
    if (!isDesign(told)) {
        return SearchesFactor;
    }
    for (const int side : {Right, Left}) {
        if (sideMethod(told.problem, side) != PressureMethod::Coefficients) {
            return "a side is not by coefficients";
        }
        if (told.problem.SoilDataKind(side) == SoilData::Strengths &&
            hasCohesion(told.problem, side)) {
            return "the soil has cohesion";
        }
        if (!hasCoefficients(told.problem, side)) {
            return "at factors 1 the passive coefficient has no value: its table ends at 44.5 "
                   "degrees";
        }
    }
    return {};
}

/// A side of strengths becomes one of the coefficients that they lead to at factors of 1: those of
/// the horizontal pressures, as given coefficients have no wall friction.
void giveCoefficients(Problem& problem, int side) {
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const double friction = problem.SoilFriction(side, layer) * DegreesToRadians;
        const double wallFriction = problem.SoilWallFriction(side, layer) * DegreesToRadians;
        const double horizontal = std::cos(wallFriction);
        problem.SoilCoefActive(side, layer) = coulombActive(friction, wallFriction) * horizontal;
        problem.SoilCoefPassive(side, layer) =
            passiveCoefficient(friction, wallFriction).value() * horizontal;
    }
    problem.SoilDataKind(side) = SoilData::Coefficients;
}

void reduceKp(Variant& variant, double factor) {
    Problem& problem = variant.problem;
    for (const int side : {Right, Left}) {
        if (problem.SoilDataKind(side) == SoilData::Strengths) {
            giveCoefficients(problem, side);
        }
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            problem.SoilCoefPassive(side, layer) /= factor;
        }
    }
}

// ---- depth
// ---------------------------------------------------------------------------------------

std::string givenDepth(const Variant& told, double) {
    return isDesign(told) ? "" : "the depth of the wall is given";
}
void deepen(Variant& variant, double factor) {
    setFactors(variant.problem, 1, 1);
    variant.depthFactor = factor;
}

// ---- partial factors
// -----------------------------------------------------------------------------

std::string noStrengths(const Variant& told, double) {
    for (const int side : {Right, Left}) {
        if (told.problem.SoilDataKind(side) != SoilData::Strengths) {
            return "a side is given by coefficients: no strengths to divide";
        }
    }
    return {};
}

void divideStrengths(Problem& problem, int side) {
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const double onCohesion = problem.SoilFriction(side, layer) == 0 ? OnClay : OnFriction;
        for (auto* angle : {&problem.SoilFriction, &problem.SoilWallFriction}) {
            (*angle)(side, layer) = dividedAngle((*angle)(side, layer), OnFriction);
        }
        for (auto* cohesion : {&problem.SoilCohesion, &problem.SoilAdhesion}) {
            (*cohesion)(side, layer) /= onCohesion;
        }
    }
}

/// Loads that drive the wall: on the retained ground, and on the wall toward the left. Those that
/// hold it stay.
void raiseLoads(Problem& problem) {
    for (const LoadRules& load : LoadTable) {
        const FieldRules& size = rulesOf(load.last);
        for (int row = 1; row <= entriesOf(load.count, problem, Right); ++row) {
            double& value = size.at(problem, Right, row);
            value = value > 0 ? value * OnLoads : value;
        }
    }
}

void takePartialFactors(Variant& variant, double) {
    setFactors(variant.problem, 1, 1);
    for (const int side : {Right, Left}) {
        divideStrengths(variant.problem, side);
    }
    raiseLoads(variant.problem);
}

// ---- actions behind the wall
// ---------------------------------------------------------------------

std::string noRearActions(const Variant& told, double factor) {
    Problem problem = told.problem;
    return raiseRearActions(problem, factor);
}
void raiseRear(Variant& variant, double factor) {
    setFactors(variant.problem, 1, 1);
    raiseRearActions(variant.problem, factor);
}

constexpr ComparisonRow Rows[] = {
    {"as-given", "as given", 1, always, nothing},
    {"factors-1", "both factors 1", 1, noFactors, setBoth},
    {"passive-1.25", "passive factor 1.25", 1.25, noFactors, setPassive},
    {"passive-1.5", "passive factor 1.5", 1.5, noFactors, setPassive},
    {"passive-2", "passive factor 2", 2, noFactors, setPassive},
    {"factors-1.25", "both factors 1.25", 1.25, noFactors, setBoth},
    {"factors-1.5", "both factors 1.5", 1.5, noFactors, setBoth},
    {"kp-1.5", "Kp over 1.5", 1.5, noReducedKp, reduceKp},
    {"kp-2", "Kp over 2", 2, noReducedKp, reduceKp},
    {"depth-20", "factors 1, depth plus 20 %", 1.2, givenDepth, deepen},
    {"depth-30", "factors 1, depth plus 30 %", 1.3, givenDepth, deepen},
    {"depth-40", "factors 1, depth plus 40 %", 1.4, givenDepth, deepen},
    {"partial-factors", "partial factors 1.25, loads 1.3", 1, noStrengths, takePartialFactors},
    {"rear-1.35", "factors 1, active and rear water 1.35", 1.35, noRearActions, raiseRear},
};

} // namespace

std::span<const ComparisonRow> factorRows() {
    return Rows;
}

void setFactors(Problem& problem, double active, double passive) {
    problem.FSActive = active;
    problem.FSPassive = passive;
    for (const int side : {Right, Left}) {
        problem.Level2FSActive(side) = problem.Level2FSPassive(side) = 0;
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            problem.SoilFSActive(side, layer) = problem.SoilFSPassive(side, layer) = 0;
        }
    }
}

bool hasCoefficientsAlone(const Problem& problem) {
    return problem.SoilDataKind(Right) == SoilData::Coefficients &&
           problem.SoilDataKind(Left) == SoilData::Coefficients;
}

} // namespace korvane
