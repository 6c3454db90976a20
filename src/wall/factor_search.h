// The search for the factor of safety of a wall of given length.
#pragma once

#include "state/state.h"

#include <functional>

namespace korvane {

/// How far a search for the factor of safety goes. It stops at 5.0, 10.0, 15.0 ... and goes on
/// where it may.
struct FactorLimit {
    double largest = 20;                   ///< it goes on from a limit of this size and below
    std::function<bool(double limit)> ask; ///< is asked instead, where there is one
};

/// Where the search for one level's factor stands.
enum class FactorStage { Start = 1, SteppingUp, SteppingDown, Bracketed, Refining };

/// The search for one level's factor of safety: trial factors and the bottoms (FT) that they give.
struct FactorSearch {
    FactorStage stage = FactorStage::Start;
    double FS = 1.0;        ///< present trial
    double limit = 5.0;     ///< at which the search stops next
    double FSH = 0, ZH = 0; ///< bracket end of the higher bottom
    double FSL = 0, ZL = 0; ///< bracket end of the lower bottom
    double FS3 = 0, Z3 = 0; ///< the point between
    int side3 = 0;          ///< 1 where the wall's bottom is at or above Z3, 2 below it
};

/// Notes that the present factor gives the bottom Z, more than the tolerance away from the wall's
/// bottom W (both FT), and takes the next factor. False after a failure, a stop at the limit
/// included. RuntimeError 11 where the interpolation divides by zero.
bool takeNextFactor(State& state, int level, FactorSearch& search, const FactorLimit& limit,
                    double Z, double W);

} // namespace korvane
