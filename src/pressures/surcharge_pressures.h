// Pressures of vertical surcharges by the theory of elasticity.
#pragma once

#include "problem/loads.h"
#include "state/pressure_details.h"
#include "state/state.h"

#include <algorithm>

namespace korvane {

/// Ramps shorter than this (FT) have no sloping part.
inline constexpr double ShortestRamp = 0.0001;

/// Line loads nearer to the wall than this share of its exposed height follow the empirical form.
inline constexpr double NearLoadRatio = 0.4;

/// Fills SurchargePressures(side, i), PSF, from all surcharges of the side but the uniform one, on
/// the grid as it stands: rows inserted later do not carry it along.
void ComputeSurchargePressures(State& state, int side);

/// Calls `take(kind, i)` for each surcharge of a side but the uniform one, in the order in which
/// their pressures are added up; a ramp and a variable load are one each.
template <class Take>
void forEachLoad(const Problem& problem, int side, Take take) {
    for (const LoadRules& rules : GroundLoads) {
        const bool single = rules.load == Load::Ramp || rules.load == Load::Variable;
        const int rows = rules.load == Load::Uniform ? 0 : rules.rows(problem, side);
        for (int i = 1; i <= (single ? std::min(rows, 1) : rows); ++i) {
            take(rules.load, i);
        }
    }
}

} // namespace korvane
