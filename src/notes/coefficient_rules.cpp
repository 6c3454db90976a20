// Rules on coefficients, wall friction and factors of safety.
#include "notes/rules.h"
#include "pressures/coefficient_pressures.h"
#include "wall/preparation.h"

#include <cmath>

namespace korvane {

namespace {

constexpr double NearHalf = 1.0;     ///< degrees of developed wall friction
constexpr double DegreeNoise = 1e-9; ///< degrees, of angles that a factor divided
constexpr double LeastStep = 0.01;   ///< share of the coefficient; a smaller step moves no wall
constexpr double WallShare =
    2.0 / 3; ///< of the soil's friction, for steel (EN 1997-1, 9.5.1, 2004)
constexpr double AngleRounding = 0.05; ///< degrees: 2/3 of 32 may be typed as 21.4

/// How the passive coefficient changes from Coulomb's plane to the table at half the soil's
/// friction (degrees), as a share; nothing where the table has no value.
std::optional<double> stepAtHalf(double friction) {
    const double phi = friction * DegreesToRadians;
    const double beyond = phi / 2 + 1e-6;
    if (!hasPassiveCoefficient(phi, beyond)) {
        return std::nullopt;
    }
    return passiveCoefficient(phi, beyond).value_or(0) /
               passiveCoefficient(phi, phi / 2).value_or(1) -
           1;
}

/// What the passive coefficient does at half the soil's friction; empty where no wall notices.
std::string stepText(double friction) {
    const auto step = stepAtHalf(friction);
    if (!step) {
        return "above which the passive coefficient has no value: its table ends at 44.5 degrees";
    }
    return std::fabs(*step) < LeastStep
               ? ""
               : "where the passive coefficient steps from Coulomb's to the table's by " +
                     std::to_string(std::lround(100 * *step)) + " percent";
}

/// True where a layer's passive pressure comes from Coulomb's plane or the table and holds the
/// wall.
bool takesPassiveCoefficient(const Wall& wall, int side) {
    return sideMethod(wall.problem, side) == PressureMethod::Coefficients &&
           wall.problem.SoilDataKind(side) == SoilData::Strengths &&
           (side == Left || !wall.anchored());
}

void lookAtStep(const Wall& wall, NoteSink& notes) {
    for (const int side : {Left, Right}) {
        const int layers = takesPassiveCoefficient(wall, side) ? layersInUse(wall, side) : 0;
        for (int layer = 1; layer <= layers; ++layer) {
            const PassiveAngles developed = passiveAngles(wall, side, layer);
            const double half = developed.friction / 2;
            const double onWall = developed.wallFriction;
            const bool hasValue = hasPassiveCoefficient(developed.friction * DegreesToRadians,
                                                        onWall * DegreesToRadians);
            const std::string step = stepText(developed.friction);
            if (!(onWall > 0) || step.empty() ||
                (hasValue && std::fabs(onWall - half) > NearHalf + DegreeNoise)) {
                continue;
            }
            notes.add(
                {.side = side,
                 .layer = layer,
                 .quantity = Quantity::Angle,
                 .value = onWall,
                 .limit = half,
                 .text = "Developed wall friction of " + wall.say(Quantity::Angle, onWall) +
                         " in layer " + std::to_string(layer) + " on the " + sideText(side) +
                         (hasValue ? " is near half the soil's, " : " is above half the soil's, ") +
                         wall.say(Quantity::Angle, half) + ", " + step + "."});
            return;
        }
    }
}

void lookAtWallFriction(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    for (const int side : {Right, Left}) {
        if (problem.SoilDataKind(side) != SoilData::Strengths) {
            continue;
        }
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const double onWall = problem.SoilWallFriction(side, layer);
            const double limit = WallShare * problem.SoilFriction(side, layer);
            if (onWall > limit + AngleRounding) {
                notes.add({.side = side,
                           .layer = layer,
                           .quantity = Quantity::Angle,
                           .value = onWall,
                           .limit = limit,
                           .text = "Wall friction of " + wall.say(Quantity::Angle, onWall) +
                                   " in layer " + std::to_string(layer) + " on the " +
                                   sideText(side) + " is above 2/3 of the soil's, " +
                                   wall.say(Quantity::Angle, limit) +
                                   ", which steel sheet piles seldom develop."});
                return;
            }
        }
    }
}

/// A factor of safety that is given and below 1.
struct SmallFactor {
    double value;
    int side;
    int layer;
};

/// The smallest below 1 of those that a layer's strengths are divided by. An anchored
/// wall has active pressure on the right and passive on the left alone; no factor acts on given
/// coefficients.
std::optional<SmallFactor> givenBelowOne(const Wall& wall, bool passiveToo) {
    const Problem& problem = wall.problem;
    std::optional<SmallFactor> small;
    const auto see = [&small](const GivenFactor& seen, int side, int layer) {
        if (seen.value > 0 && seen.value < 1 && (!small || seen.value < small->value)) {
            small = {seen.value, seen.source == FactorSource::Control ? 0 : side,
                     seen.source == FactorSource::Layer ? layer : 0};
        }
    };
    for (const int side : {Right, Left}) {
        if (problem.SoilDataKind(side) != SoilData::Strengths) {
            continue;
        }
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            if (side == Right || !wall.anchored()) {
                see(givenActiveFactor(problem, side, layer), side, layer);
            }
            if (passiveToo && (side == Left || !wall.anchored())) {
                see(givenPassiveFactor(problem, side, layer), side, layer);
            }
        }
    }
    return small;
}

void lookAtGivenFactors(const Wall& wall, NoteSink& notes) {
    const bool design = wall.problem.ProgramMode == Mode::Design;
    if (!design && wall.problem.FSKind == FactorKind::OneForBoth) {
        return; // an analysis that finds both
    }
    if (const auto small = givenBelowOne(wall, design)) {
        notes.add({.side = small->side,
                   .layer = small->layer,
                   .value = small->value,
                   .limit = 1,
                   .text = "A factor of safety of " + wall.say(Quantity::Number, small->value) +
                           " makes the soil stronger than it is given."});
    }
}

void lookAtFoundFactors(const Wall& wall, NoteSink& notes) {
    if (wall.design()) {
        return;
    }
    for (int level = 1; level <= wall.results().levelCount; ++level) {
        const double factor = wall.results().levels(level).factorOfSafety;
        if (factor < 1) {
            notes.add({.value = factor,
                       .limit = 1,
                       .text = "The wall has a factor of safety of " +
                               wall.say(Quantity::Number, factor) +
                               ": it stands only in soil stronger than given."});
            return;
        }
    }
}

constexpr NoteRule Rules[] = {
    {"factor-below-one", Severity::Unsafe, Needs::Input, lookAtGivenFactors,
     "ASCE, Design of Sheet Pile Walls, 1996"},
    {"wall-fails", Severity::Unsafe, Needs::Results, lookAtFoundFactors,
     "ASCE, Design of Sheet Pile Walls, 1996"},
    {"coefficient-step", Severity::Caution, Needs::Run, lookAtStep,
     "Caquot and Kerisel, Tables, 1948"},
    {"wall-friction", Severity::Caution, Needs::Input, lookAtWallFriction,
     "Terzaghi 1954; EN 1997-1, 9.5.1, 2004"},
};

} // namespace

std::span<const NoteRule> coefficientRules() {
    return Rules;
}

} // namespace korvane
