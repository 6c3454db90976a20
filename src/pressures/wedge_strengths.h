// What both wedge methods need of the soil: developed strengths and the terms of the wall.
#pragma once

#include "state/state.h"

namespace korvane {

/// Strengths of one layer as developed under one of the two factors of safety.
struct DevelopedStrength {
    double friction = 0;     ///< tangent of the soil friction
    double cohesion = 0;     ///< PSF
    double wallFriction = 0; ///< radians
    double adhesion = 0;     ///< PSF
};

/// Developed strengths of one layer.
struct LayerStrength {
    DevelopedStrength active;
    DevelopedStrength passive;
};

/// Developed strengths of all layers of a side at a level. RuntimeError 11 where a factor is zero.
Array<LayerStrength, 11> developedStrengths(const State& state, int side, int level);

/// Wall friction and adhesion summed over the height passed on the way down the wall, for active or
/// passive pressures.
struct WallTerms {
    double friction = 0; ///< radians x FT
    double adhesion = 0; ///< LB per foot of wall

    /// Passes `height` (FT) of a layer.
    void pass(double height, const DevelopedStrength& soil) {
        friction += height * soil.wallFriction;
        adhesion += height * soil.adhesion;
    }
};

} // namespace korvane
