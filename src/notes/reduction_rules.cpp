// Rules on Rowe's moment reduction.
#include "notes/rules.h"
#include "rowe/moment_reduction.h"
#include "rowe/reduction_tables.h"

#include <algorithm>
#include <iterator>

namespace korvane {

namespace {

constexpr double Rounding = 1e-9; ///< a coefficient on the edge of the curves is within them

/// The smallest and the largest of some numbers.
struct Span {
    double low = 1e9;
    double high = -1e9;

    void see(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

/// Points of the curves, ascending; those of ALPHA in clay stand the other way round.
constexpr double AlphaPoints[] = {0.6, 0.7, 0.8};
constexpr double StabilityPoints[] = {0.5, 0.75, 1.0, 1.25, 1.5, 2.0};
constexpr double SandPoints[] = {-3.5, -3.0, -2.5, -2.0, -1.5};
constexpr double ClayPoints[] = {-3.1, -2.6, -2.0};

/// The points beside a value: the same one twice at a point and beyond the ends.
struct Beside {
    std::size_t low;
    std::size_t high;
};
template <std::size_t Count>
Beside beside(const double (&points)[Count], double value) {
    Beside found{0, Count - 1};
    for (std::size_t i = 0; i < Count; ++i) {
        found.low = points[i] <= value ? i : found.low;
        found.high = points[Count - 1 - i] >= value ? Count - 1 - i : found.high;
    }
    return found;
}

/// Coefficients of Rowe's curves at the points around a section: between the rows of ALPHA and of
/// the stability number, and the flexibility numbers, beside it. `k` is 1 loose, 2 dense sand.
Span curvesAround(const MomentReduction& reduction, int section, int k) {
    const double x = reduction.PileLogRigidity(section);
    const Beside alpha = beside(AlphaPoints, reduction.RoweAlpha);
    Span span;
    if (reduction.soil == RoweSoil::Sand) {
        const Beside column = beside(SandPoints, x);
        for (const std::size_t row : {alpha.low, alpha.high}) {
            span.see(RoweSandTable[k - 1][row][column.low]);
            span.see(RoweSandTable[k - 1][row][column.high]);
        }
        return span;
    }
    const Beside stability = beside(StabilityPoints, reduction.RoweStability);
    const Beside group = beside(ClayPoints, x);
    for (const std::size_t g : {group.low, group.high}) {
        for (const std::size_t row : {alpha.low, alpha.high}) {
            const auto& curve = RoweClayTable[g][std::size(AlphaPoints) - 1 - row];
            span.see(curve[stability.low]);
            span.see(curve[stability.high]);
        }
    }
    return span;
}

/// Why no moment is reduced: words, and the value that says so with its limit.
struct Cause {
    const char* words;
    Quantity quantity;
    double value;
    double limit;
};

Cause causeOf(RoweCondition condition, const Problem& problem, const MomentReduction& reduction) {
    const double right = problem.SurfaceElev(Right, 1);
    const double left = problem.SurfaceElev(Left, 1);
    switch (condition) {
    case RoweCondition::AlphaTooSmall:
        return {"ALPHA below 0.6", Quantity::Number, reduction.RoweAlpha, 0.6};
    case RoweCondition::AlphaTooLarge:
        return {"ALPHA above 0.8", Quantity::Number, reduction.RoweAlpha, 0.8};
    case RoweCondition::BetaTooLarge:
        return {"BETA above 0.3", Quantity::Number, reduction.RoweBeta, 0.3};
    case RoweCondition::RightBelowTop:
        return {"right surface below the top of the wall", Quantity::Length, right,
                problem.WallTopElev};
    case RoweCondition::RightBelowLeft:
        return {"right surface at or below the left one", Quantity::Length, right, left};
    case RoweCondition::StabilityTooSmall:
        return {"stability number below 0.5", Quantity::Number, reduction.RoweStability, 0.5};
    case RoweCondition::StabilityTooLarge:
        return {"stability number above 2.5", Quantity::Number, reduction.RoweStability, 2.5};
    }
    return {};
}

/// All causes in words; value and limit are those of the first.
void addBrokenRange(const Wall& wall, const MomentReduction& reduction, NoteSink& notes) {
    Note note{.text = "Rowe's moment reduction does not apply; the free earth moment stands in "
                      "full:"};
    for (const RoweCondition condition : reduction.broken) {
        const Cause cause = causeOf(condition, wall.problem, reduction);
        note.text += note.value ? ", " : " ";
        note.text += cause.words;
        if (!note.value) {
            note.quantity = cause.quantity;
            note.value = cause.value;
            note.limit = cause.limit;
        }
    }
    note.text += ".";
    notes.add(std::move(note));
}

/// The sections' flexibility numbers, and the one nearest to the curves with their end there.
void addFlexibility(const Wall& wall, const MomentReduction& reduction, NoteSink& notes) {
    const bool sand = reduction.soil == RoweSoil::Sand;
    const double first = sand ? SandPoints[0] : ClayPoints[0];
    const double last = sand ? *std::rbegin(SandPoints) : *std::rbegin(ClayPoints);
    Span all;
    double nearest = 0;
    double by = 1e9;
    for (const double rigidity : reduction.PileLogRigidity) {
        if (rigidity == 0) {
            continue; // no section
        }
        all.see(rigidity);
        const double outside = std::max(first - rigidity, rigidity - last);
        nearest = outside < by ? rigidity : nearest;
        by = std::min(by, outside);
    }
    notes.add({.value = nearest,
               .limit = nearest < first ? first : last,
               .text = "No moment is reduced: the flexibility of all sections, log H^4/EI from " +
                       wall.say(Quantity::Gradient, all.low) + " to " +
                       wall.say(Quantity::Gradient, all.high) + ", lies outside Rowe's curves (" +
                       wall.say(Quantity::Gradient, first) + " to " +
                       wall.say(Quantity::Gradient, last) + ")."});
}

/// Soil in front for which there are no curves: both friction and cohesion, or neither.
void addSoilWithoutCurves(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    const auto soil = soilForReduction(problem, wall.results());
    if (soil && *soil != RoweSoil::None) {
        return;
    }
    Note note{.side = Left, .layer = 1, .text = "No moment is reduced: "};
    if (problem.SoilDataKind(Left) != SoilData::Strengths) {
        note.text += "the soil in front is given by coefficients, and Rowe's curves are for sand "
                     "or clay.";
    } else if (soil) {
        note.text += "the top layer in front has neither friction nor cohesion.";
    } else {
        // Sand is to be without cohesion down to the wall's bottom, clay without friction.
        const bool sand = problem.SoilFriction(Left, 1) > 0;
        const auto& other = sand ? problem.SoilCohesion : problem.SoilFriction;
        note.layer = 1;
        while (!(other(Left, note.layer) > 0)) {
            ++note.layer;
        }
        note.quantity = sand ? Quantity::Stress : Quantity::Angle;
        note.value = other(Left, note.layer);
        note.limit = 0;
        note.text += std::string("the soil in front has both friction and cohesion (layer ") +
                     std::to_string(note.layer) + ": " + wall.say(note.quantity, *note.value) +
                     "), and Rowe's curves are for sand or clay alone.";
    }
    notes.add(std::move(note));
}

bool anyInRange(const MomentReduction& reduction) {
    return std::any_of(reduction.inRange.begin(), reduction.inRange.end(),
                       [](bool inRange) { return inRange; });
}

void lookAtRange(const Wall& wall, NoteSink& notes) {
    const MomentReduction* reduction = wall.solved->reduction;
    if (reduction == nullptr) {
        return;
    }
    if (reduction->soil == RoweSoil::None) {
        addSoilWithoutCurves(wall, notes);
    } else if (!reduction->applicable) {
        addBrokenRange(wall, *reduction, notes);
    } else if (!anyInRange(*reduction)) {
        addFlexibility(wall, *reduction, notes);
    }
}

void lookAtCoefficients(const Wall& wall, NoteSink& notes) {
    const MomentReduction* reduction = wall.solved->reduction;
    if (reduction == nullptr || !reduction->applicable) {
        return;
    }
    const int columns = reduction->soil == RoweSoil::Sand ? 2 : 1;
    int outside = 0;
    double worst = 0;
    double by = 0;
    Span around;
    for (int p = 1; p <= reduction->inRange.size(); ++p) {
        bool beyond = false;
        for (int k = 1; k <= columns && reduction->inRange(p); ++k) {
            const double coefficient = reduction->coefficient(p, k);
            const Span span = curvesAround(*reduction, p, k);
            const double excess = std::max(span.low - coefficient, coefficient - span.high);
            beyond = beyond || excess > Rounding;
            if (excess > by) {
                by = excess;
                worst = coefficient;
                around = span;
            }
        }
        outside += beyond ? 1 : 0;
    }
    if (outside > 0) {
        notes.add({.value = worst,
                   .limit = worst < around.low ? around.low : around.high,
                   .text = "Reduction coefficients of " + std::to_string(outside) +
                           " sections lie outside the points of Rowe's curves around them, the "
                           "farthest with " +
                           wall.say(Quantity::Number, worst) + " where they are " +
                           wall.say(Quantity::Number, around.low) + " to " +
                           wall.say(Quantity::Number, around.high) +
                           ": read the curves by hand before a moment is reduced."});
    }
}

constexpr NoteRule Rules[] = {
    {"reduction-range", Severity::Caution, Needs::Results, lookAtRange, "Rowe 1952; Rowe 1957"},
    {"reduction-coefficient", Severity::Caution, Needs::Results, lookAtCoefficients,
     "Rowe 1952; Rowe 1957"},
};

} // namespace

std::span<const NoteRule> reductionRules() {
    return Rules;
}

} // namespace korvane
