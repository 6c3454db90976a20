#include "wall/refinement.h"

#include "state/tolerances.h"

#include <cmath>

namespace korvane {

namespace {

constexpr int SecantPasses = 100;
constexpr int Halvings = 200;

/// Secants through the held upper end and the present trial, as the methods give them.
std::optional<DiagramPoint> refineBySecants(const Refinement& refinement, const Balance& balance) {
    const DiagramSegment& segment = refinement.segment;
    DiagramPoint trial{segment.lowerElev, segment.lowerPressure};
    double present = refinement.startBalance;
    for (int pass = 1; pass <= SecantPasses; ++pass) {
        trial.elev = segment.upperElev + (segment.upperElev - trial.elev) * refinement.heldBalance /
                                             (present - refinement.heldBalance);
        if (!std::isfinite(trial.elev)) {
            return std::nullopt;
        }
        trial.pressure = segment.pressureAt(trial.elev);
        present = balance(trial);
        if (!std::isfinite(present)) {
            return std::nullopt;
        }
        if (std::abs(present) <= refinement.tolerance) {
            const bool inside = trial.elev <= segment.upperElev + SamePoint &&
                                trial.elev >= segment.lowerElev - SamePoint;
            return inside ? std::optional(trial) : std::nullopt;
        }
    }
    return std::nullopt;
}

/// A balance that must exist.
double soundBalance(const Balance& balance, const DiagramPoint& point) {
    const double value = balance(point);
    if (!std::isfinite(value)) {
        throw RuntimeError(std::isnan(value) ? 11 : 6);
    }
    return value;
}

std::optional<DiagramPoint> refineByHalving(const Refinement& refinement, const Balance& balance) {
    const DiagramSegment& segment = refinement.segment;
    double upper = segment.upperElev;
    double lower = segment.lowerElev;
    const auto isPositive = [&](double elev) {
        return soundBalance(balance, {elev, segment.pressureAt(elev)}) >= 0;
    };
    const bool upperPositive = isPositive(upper);
    if (upperPositive == isPositive(lower)) {
        return std::nullopt;
    }
    for (int halving = 1; halving <= Halvings; ++halving) {
        const double middle = (upper + lower) / 2;
        const DiagramPoint trial{middle, segment.pressureAt(middle)};
        const double present = soundBalance(balance, trial);
        if (std::abs(present) <= refinement.tolerance) {
            return trial;
        }
        if ((present >= 0) == upperPositive) {
            upper = middle;
        } else {
            lower = middle;
        }
    }
    return std::nullopt;
}

} // namespace

double DiagramSegment::pressureAt(double elev) const {
    const double share = (upperElev - elev) / (upperElev - lowerElev);
    return (1 - share) * upperPressure + share * lowerPressure;
}

DiagramSegment segmentAbove(const State& state, int row) {
    const auto& ElevGrid = state.grid.ElevGrid;
    const auto& NetActive = state.net.NetActive;
    return {ElevGrid(row - 1), ElevGrid(row), NetActive(row - 1, 1), NetActive(row, 2)};
}

std::optional<DiagramPoint> refineInSegment(const Refinement& refinement, const Balance& balance) {
    const auto bySecants = refineBySecants(refinement, balance);
    return bySecants ? bySecants : refineByHalving(refinement, balance);
}

void failRefinement(State& state, int level) {
    fail(state, {.code = FailureCode::RefinementFails, .level = level});
}

} // namespace korvane
