#include "notes/clay_resistance.h"

#include "notes/rules.h"
#include "runtime/arithmetic.h"
#include "wall/preparation.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace korvane {

namespace {

/// The lower ground and the layers that begin below it, from the top; FT.
std::vector<double> levelsBelowGround(const Problem& problem, double lowest) {
    const double ground = dredgeLine(problem);
    std::vector<double> levels{ground};
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer < problem.SoilLayerCount(side); ++layer) {
            const double bottom = problem.SoilBottomElev(side, layer);
            if (bottom < ground && bottom > lowest) {
                levels.push_back(bottom);
            }
        }
    }
    std::sort(levels.begin(), levels.end(), std::greater<>());
    return levels;
}

} // namespace

std::optional<ClayResistance> leastClayResistance(const Problem& problem,
                                                  const CohesionFactor& factor, double lowest) {
    const auto byCoefficients = [&problem](int side) {
        return sideMethod(problem, side) == PressureMethod::Coefficients;
    };
    if (!byCoefficients(Right) || !byCoefficients(Left)) {
        return std::nullopt;
    }
    std::optional<ClayResistance> least;
    const std::vector<double> levels = levelsBelowGround(problem, lowest);
    for (const double elev : levels) {
        const int right = layerBelow(problem, Right, elev);
        const int left = layerBelow(problem, Left, elev);
        const auto active = factor(Right, right);
        const auto passive = factor(Left, left);
        if (!isClay(problem, Right, right) || !isClay(problem, Left, left) || !active || !passive) {
            continue;
        }
        const ClayResistance here{
            .elev = elev,
            .right = right,
            .left = left,
            .cohesion = divide(2 * problem.SoilCohesion(Right, right), *active) +
                        divide(2 * problem.SoilCohesion(Left, left), *passive),
            .load = overburden(problem, Right, elev, true) - overburden(problem, Left, elev, true) +
                    waterHead(problem, Right, elev) - waterHead(problem, Left, elev),
            .endless = elev == levels.back()};
        if (!least || here.net() < least->net()) {
            least = here;
        }
    }
    return least;
}

} // namespace korvane
