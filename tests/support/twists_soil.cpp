// Twists of the soil.
#include "support/twists.h"

#include <algorithm>
#include <cmath>

namespace korvane::test {

namespace {

/// Calls `change(side, layer)` for the layers of both sides or, half the time, of one side.
template <class Change>
void eachLayer(Draws& draws, const Problem& problem, Change change) {
    const int only = draws.chance(0.5) ? 0 : draws.whole(Right, Left);
    for (const int side : {Right, Left}) {
        for (int layer = 1; (only == 0 || only == side) && layer <= problem.SoilLayerCount(side);
             ++layer) {
            change(side, layer);
        }
    }
}

/// A layer given by strengths: friction in degrees, cohesion in PSF, a smooth wall.
void setStrengths(Problem& problem, int side, int layer, double friction, double cohesion) {
    problem.SoilFriction(side, layer) = friction;
    problem.SoilCohesion(side, layer) = cohesion;
    problem.SoilWallFriction(side, layer) = 0;
    problem.SoilAdhesion(side, layer) = 0;
}

void copyLayer(Problem& problem, int side, int from, int to) {
    using Layers = Array<double, 2, 11>;
    for (const auto list :
         {&Problem::SoilSatWeight, &Problem::SoilMoistWeight, &Problem::SoilFriction,
          &Problem::SoilCohesion, &Problem::SoilWallFriction, &Problem::SoilAdhesion,
          &Problem::SoilFSActive, &Problem::SoilFSPassive, &Problem::SoilCoefActive,
          &Problem::SoilCoefPassive}) {
        Layers& values = problem.*list;
        values(side, to) = values(side, from);
    }
}

/// Cuts a side anew into `layers`, whose soils follow those of the side in turn, each with a weight
/// of its own. One in `thin` of 10 is 0.01 to 0.95 FT thick, the others 1 to 5 FT.
void cutLayers(Draws& draws, Problem& problem, int side, int layers, int thin) {
    const int old = problem.SoilLayerCount(side);
    problem.SoilLayerCount(side) = layers;
    double bottom = problem.SurfaceElev(side, 1);
    for (int layer = 1; layer <= layers; ++layer) {
        if (layer > old) {
            copyLayer(problem, side, layer - old, layer);
        }
        problem.SoilMoistWeight(side, layer) = draws.whole(100, 113);
        const bool isThin = draws.whole(1, 10) <= thin;
        bottom -= isThin ? draws.value(0.01, 0.95, 100) : draws.value(1, 5, 2);
        bottom = std::round(bottom * 100) / 100;
        problem.SoilBottomElev(side, layer) = layer < layers ? bottom : NoLayerBottom;
    }
}

} // namespace

bool manyLayers(Draws& draws, Problem& problem) {
    const int only = draws.whole(0, 2); // 0 both sides
    for (const int side : {Right, Left}) {
        if (only == 0 || only == side) {
            const int layers = draws.whole(7, 11);
            cutLayers(draws, problem, side, layers, 2);
        }
    }
    return true;
}

bool thinLayers(Draws& draws, Problem& problem) {
    const int only = draws.whole(0, 2); // 0 both sides
    for (const int side : {Right, Left}) {
        if (only == 0 || only == side) {
            const int layers = draws.whole(2, 8);
            cutLayers(draws, problem, side, layers, 7);
        }
    }
    return true;
}

bool weakSoil(Draws& draws, Problem& problem) {
    eachLayer(draws, problem, [&](int side, int layer) {
        if (problem.SoilDataKind(side) == SoilData::Coefficients) {
            problem.SoilCoefActive(side, layer) = draws.value(0.6, 1.1, 100);
            problem.SoilCoefPassive(side, layer) = draws.value(0.8, 1.8, 100);
        } else if (problem.SoilFriction(side, layer) > 0) {
            setStrengths(problem, side, layer, draws.value(1, 22, 2), 0);
        } else {
            setStrengths(problem, side, layer, 0, draws.whole(1, 200));
        }
    });
    return true;
}

bool strongSoil(Draws& draws, Problem& problem) {
    eachLayer(draws, problem, [&](int side, int layer) {
        if (problem.SoilDataKind(side) == SoilData::Coefficients) {
            problem.SoilCoefActive(side, layer) = draws.value(0, 0.15, 100);
            problem.SoilCoefPassive(side, layer) = draws.value(6, 20, 10);
        } else if (problem.SoilFriction(side, layer) > 0) {
            const double friction = draws.value(40, 45, 2);
            const double cohesion = draws.chance(0.2) ? draws.whole(200, 5000) : 0;
            setStrengths(problem, side, layer, friction, cohesion);
        } else {
            setStrengths(problem, side, layer, 0, draws.whole(3000, 20000));
        }
    });
    return true;
}

bool roughWall(Draws& draws, Problem& problem) {
    bool any = false;
    eachLayer(draws, problem, [&](int side, int layer) {
        if (problem.SoilDataKind(side) == SoilData::Strengths &&
            problem.SoilFriction(side, layer) > 0) {
            const double friction = draws.value(44, 45, 10);
            setStrengths(problem, side, layer, friction, 0);
            problem.SoilWallFriction(side, layer) =
                std::min(friction, draws.value(friction / 2 + 0.1, friction, 10));
            any = true;
        }
    });
    return any;
}

bool clayWithAdhesion(Draws& draws, Problem& problem) {
    const double overburden =
        std::max(100.0, 125 * (problem.WallTopElev - problem.SurfaceElev(Left, 1))); // PSF
    bool any = false;
    eachLayer(draws, problem, [&](int side, int layer) {
        if (problem.SoilDataKind(side) != SoilData::Strengths ||
            problem.SoilFSActive(side, layer) > 1.1) {
            return;
        }
        const double friction = draws.chance(0.2) ? draws.value(2, 25, 2) : 0;
        const double share = side == Right ? draws.value(0.1, 0.5, 20) : draws.value(0.3, 1.5, 20);
        const double cohesion = std::ceil(share * overburden);
        setStrengths(problem, side, layer, friction, cohesion);
        problem.SoilAdhesion(side, layer) = std::floor(draws.value(0, 1, 4) * cohesion);
        any = true;
    });
    return any;
}

bool oddWeights(Draws& draws, Problem& problem) {
    eachLayer(draws, problem, [&](int side, int layer) {
        problem.SoilSatWeight(side, layer) = draws.value(63, 165, 2);
        problem.SoilMoistWeight(side, layer) = draws.value(50, 165, 2);
    });
    return true;
}

bool oddFactors(Draws& draws, Problem& problem) {
    problem.FSActive = draws.chance(0.5) ? 1 : draws.value(0.5, 2, 20);
    if (problem.ProgramMode == Mode::Design) {
        problem.FSPassive = draws.value(0.5, 3, 20);
    } else {
        problem.FSKind = FactorKind::ActiveGiven;
    }
    for (const int side : {Right, Left}) {
        if (problem.SoilDataKind(side) == SoilData::Coefficients) {
            continue;
        }
        problem.Level2FSActive(side) = draws.value(0.8, 1.5, 20);
        problem.Level2FSPassive(side) = draws.chance(0.3) ? 0 : draws.value(0.8, 2.5, 20);
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const bool own = draws.chance(0.5);
            problem.SoilFSActive(side, layer) = own ? draws.value(0.8, 1.5, 20) : 0;
            problem.SoilFSPassive(side, layer) = own ? draws.value(0.8, 2.5, 20) : 0;
        }
    }
    return true;
}

bool layerAboveGround(Draws& draws, Problem& problem) {
    const int side = draws.whole(Right, Left);
    if (problem.SoilLayerCount(side) < 2) {
        return false;
    }
    problem.SoilBottomElev(side, 1) = problem.SurfaceElev(side, 1) + draws.whole(0, 2);
    return true;
}

bool coefficientsWithSurface(Draws& draws, Problem& problem) {
    const int side = draws.whole(Right, Left);
    if (problem.SurfacePointCount(side) < 2) {
        return false;
    }
    problem.SoilDataKind(side) = SoilData::Coefficients;
    problem.Level2FSActive(side) = problem.Level2FSPassive(side) = 0;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        problem.SoilCoefActive(side, layer) = draws.value(0.22, 0.4, 100);
        problem.SoilCoefPassive(side, layer) = draws.value(2.5, 5.5, 100);
    }
    return true;
}

} // namespace korvane::test
