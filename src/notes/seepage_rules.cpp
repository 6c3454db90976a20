// Rules on hydraulic gradients.
#include "notes/rules.h"
#include "pressures/water_pressures.h"
#include "runtime/arithmetic.h"

namespace korvane {

namespace {

constexpr double SafeExit = 1.5; ///< least factor against a quick bottom (Terzaghi and Peck 1948)
constexpr double LimitNoise = 1e-9;  ///< FT/FT
constexpr double FactorNoise = 1e-9; ///< at the gradient's limit the factor is 1

bool seeps(const Wall& wall) {
    return wall.review().SeepageKind != Seepage::None;
}

/// The failure of a run in which the upward flow has left soil in front without weight; else none.
const Failure* quickFailure(const Wall& wall) {
    const Failure* failure = wall.solved != nullptr ? &wall.solved->failure : nullptr;
    const bool quick = failure != nullptr && failure->code == FailureCode::SoilWeightNotPositive &&
                       failure->side == Left && failure->gradient > 0;
    return quick ? failure : nullptr;
}

void lookAtLimitOfFailure(const Wall& wall, NoteSink& notes) {
    const Failure* quick = quickFailure(wall);
    if (quick == nullptr || wall.solved->review == nullptr) {
        return;
    }
    const double limit = wall.review().SeepageGradientLimit;
    const bool held = wall.design() && wall.review().SeepageKind == Seepage::Automatic &&
                      quick->gradient >= limit - LimitNoise;
    if (held) {
        notes.add({.side = Left,
                   .layer = quick->layer,
                   .quantity = Quantity::Gradient,
                   .value = quick->gradient,
                   .limit = limit,
                   .text = "The seepage gradient is held at its limit, " +
                           wall.say(Quantity::Gradient, limit) + ", at which layer " +
                           std::to_string(quick->layer) +
                           " in front weighs nothing: that has ended the solution. The wall would "
                           "need a longer path of flow."});
    }
}

void lookAtLimit(const Wall& wall, NoteSink& notes) {
    if (!wall.hasResults()) {
        lookAtLimitOfFailure(wall, notes);
        return;
    }
    const double limit = wall.review().SeepageGradientLimit;
    if (!seeps(wall) || !wall.design() || wall.review().SeepageKind != Seepage::Automatic) {
        return;
    }
    for (int level = 1; level <= wall.results().levelCount; ++level) {
        const double gradient = wall.results().levels(level).seepageGradient;
        if (gradient >= limit - LimitNoise) {
            notes.add({.side = Left,
                       .quantity = Quantity::Gradient,
                       .value = gradient,
                       .limit = limit,
                       .text = "The seepage gradient is held at its limit, " +
                               wall.say(Quantity::Gradient, limit) +
                               ": the wall found needs a larger one, which the soil in front or "
                               "the path of flow does not bear."});
            return;
        }
    }
}

/// Buoyant weight (PCF) of the left soil, mean over the depth from its ground to `bottom` (FT).
double meanBuoyantWeight(const Problem& problem, double bottom) {
    const double top = problem.SurfaceElev(Left, 1);
    double sum = 0;
    for (int layer = 1; layer <= layersDownTo(problem, Left, bottom); ++layer) {
        const double thickness =
            layerTop(problem, Left, layer) - MaxOf(problem.SoilBottomElev(Left, layer), bottom);
        sum += thickness * (problem.SoilSatWeight(Left, layer) - problem.WaterUnitWeight);
    }
    return divide(sum, top - bottom);
}

/// FT/FT along a wall down to the bottom of a solution's level, or to the given one.
double gradientAt(const Wall& wall, int level, double bottom) {
    const Problem& problem = wall.problem;
    if (wall.hasResults()) {
        return seeps(wall) ? wall.results().levels(level).seepageGradient : 0;
    }
    if (problem.WaterDataKind != WaterData::Elevations || problem.SeepageKind == Seepage::None) {
        return 0;
    }
    return problem.SeepageKind == Seepage::Automatic ? seepageGradientForBottom(problem, bottom)
                                                     : problem.SeepageGradient(1);
}

/// Of the layer that has failed: its weight in water over the lift.
void lookAtExitOfFailure(const Wall& wall, const Failure& quick, NoteSink& notes) {
    const double water = wall.problem.WaterUnitWeight;
    const double buoyant = wall.problem.SoilSatWeight(Left, quick.layer) - water;
    const double factor = divide(buoyant, quick.gradient * water);
    notes.add({.side = Left,
               .layer = quick.layer,
               .value = factor,
               .limit = 1,
               .text = "Against the upward flow in front layer " + std::to_string(quick.layer) +
                       " has a factor of " + wall.say(Quantity::Number, factor) +
                       " at a gradient of " + wall.say(Quantity::Gradient, quick.gradient) +
                       ": it weighs nothing, and that has ended the solution."});
}

void lookAtExit(const Wall& wall, NoteSink& notes) {
    if (const Failure* quick = quickFailure(wall)) {
        lookAtExitOfFailure(wall, *quick, notes);
        return;
    }
    int level = 0;
    for (const double bottom : knownBottoms(wall)) {
        const double lift = gradientAt(wall, ++level, bottom) * wall.problem.WaterUnitWeight;
        if (!(bottom < wall.problem.SurfaceElev(Left, 1)) || !(lift > 0)) {
            continue;
        }
        const double factor = meanBuoyantWeight(wall.problem, bottom) / lift;
        if (factor >= SafeExit) {
            continue;
        }
        const bool quick = factor < 1 - FactorNoise;
        notes.add({.side = Left,
                   .elev = wall.problem.SurfaceElev(Left, 1),
                   .value = factor,
                   .limit = quick ? 1 : SafeExit,
                   .text = "Against the upward flow in front the soil has a factor of " +
                           wall.say(Quantity::Number, factor) +
                           " by the mean gradient along the wall; check Terzaghi's prism of the "
                           "depth D and the width D/2 with a flow net, which may give less."},
                  quick ? Severity::Unsafe : Severity::Caution);
        return;
    }
}

constexpr NoteRule Rules[] = {
    {"gradient-limit", Severity::Unsafe, Needs::Run, lookAtLimit,
     "Terzaghi and Peck, Soil Mechanics in Engineering Practice, 1948"},
    {"exit-gradient", Severity::Unsafe, Needs::Input, lookAtExit,
     "Terzaghi 1922; Terzaghi and Peck 1948"},
};

} // namespace

std::span<const NoteRule> seepageRules() {
    return Rules;
}

} // namespace korvane
