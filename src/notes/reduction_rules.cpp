// Rules on Rowe's moment reduction.
#include "notes/rules.h"
#include "rowe/reduction_tables.h"

#include <algorithm>

namespace korvane {

namespace {

constexpr double Rounding = 1e-9; ///< a coefficient on the edge of the curves is within them

/// The smallest and the largest coefficient of a set of curves.
struct Span {
    double low = 1e9;
    double high = -1e9;

    constexpr void see(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

template <class Table>
constexpr Span spanOf(const Table& table) {
    Span span;
    for (const auto& group : table) {
        for (const auto& row : group) {
            for (const double value : row) {
                span.see(value);
            }
        }
    }
    return span;
}

constexpr Span SandSpan = spanOf(RoweSandTable);
constexpr Span ClaySpan = spanOf(RoweClayTable);

const MomentReduction* reductionOf(const Wall& wall) {
    const MomentReduction* reduction = wall.solved->reduction;
    return reduction != nullptr && reduction->soil != RoweSoil::None ? reduction : nullptr;
}

const char* causeOf(RoweCondition condition) {
    switch (condition) {
    case RoweCondition::AlphaTooSmall:
        return "ALPHA below 0.6";
    case RoweCondition::AlphaTooLarge:
        return "ALPHA above 0.8";
    case RoweCondition::BetaTooLarge:
        return "BETA above 0.3";
    case RoweCondition::RightBelowTop:
        return "right surface below the top of the wall";
    case RoweCondition::RightBelowLeft:
        return "right surface at or below the left one";
    case RoweCondition::StabilityTooSmall:
        return "stability number below 0.5";
    case RoweCondition::StabilityTooLarge:
        return "stability number above 2.5";
    }
    return "";
}

std::string causes(const MomentReduction& reduction) {
    std::string text;
    for (const RoweCondition condition : reduction.broken) {
        text += text.empty() ? " " : ", ";
        text += causeOf(condition);
    }
    return text + ".";
}

bool anyInRange(const MomentReduction& reduction) {
    return std::any_of(reduction.inRange.begin(), reduction.inRange.end(),
                       [](bool inRange) { return inRange; });
}

/// Flexibility numbers of the sections in use.
Span rigidities(const MomentReduction& reduction) {
    Span span;
    for (const double rigidity : reduction.PileLogRigidity) {
        if (rigidity != 0) {
            span.see(rigidity);
        }
    }
    return span;
}

void lookAtRange(const Wall& wall, NoteSink& notes) {
    const MomentReduction* reduction = reductionOf(wall);
    if (reduction != nullptr && !reduction->applicable) {
        notes.add({.text = "Rowe's moment reduction does not apply; the free earth moment stands "
                           "in full:" +
                           causes(*reduction)});
    } else if (reduction != nullptr && !anyInRange(*reduction)) {
        const Span span = rigidities(*reduction);
        notes.add(
            {.value = span.high,
             .text = "No moment is reduced: the flexibility of all sections, log H^4/EI from " +
                     wall.say(Quantity::Gradient, span.low) + " to " +
                     wall.say(Quantity::Gradient, span.high) + ", lies outside Rowe's curves."});
    }
}

void lookAtCoefficients(const Wall& wall, NoteSink& notes) {
    const MomentReduction* reduction = reductionOf(wall);
    if (reduction == nullptr || !reduction->applicable) {
        return;
    }
    const bool sand = reduction->soil == RoweSoil::Sand;
    const Span& span = sand ? SandSpan : ClaySpan;
    int outside = 0;
    double worst = 0;
    double by = 0;
    for (int p = 1; p <= reduction->inRange.size(); ++p) {
        bool beyond = false;
        for (int k = 1; k <= (sand ? 2 : 1) && reduction->inRange(p); ++k) {
            const double coefficient = reduction->coefficient(p, k);
            const double excess = std::max(span.low - coefficient, coefficient - span.high);
            beyond = beyond || excess > Rounding;
            if (excess > by) {
                by = excess;
                worst = coefficient;
            }
        }
        outside += beyond ? 1 : 0;
    }
    if (outside > 0) {
        notes.add({.value = worst,
                   .limit = worst < span.low ? span.low : span.high,
                   .text = "Reduction coefficients of " + std::to_string(outside) +
                           " sections lie outside Rowe's curves (" +
                           wall.say(Quantity::Number, span.low) + " to " +
                           wall.say(Quantity::Number, span.high) + "), the farthest at " +
                           wall.say(Quantity::Number, worst) +
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
