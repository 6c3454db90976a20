#include "study/border_survey.h"

#include "study/uniforms.h"

#include <openturns/DistFunc.hxx>

#include <algorithm>
#include <cmath>

namespace korvane::study {

namespace {

constexpr std::size_t RaysOfCoordinate = 24;
constexpr std::size_t MostRays = 256;
constexpr double Stride = 0.5; ///< between two looks along a ray
constexpr double EntryNearness = 1e-3;

/// Turns of a direction, in radians, and the share of their square by which one must be shorter.
constexpr double FirstTurn = 0.5;
constexpr double LastTurn = 1e-4;
constexpr double LeastGain = 0.02;
constexpr std::size_t TriesOfCoordinate = 2; ///< at random, beside those along the axes
constexpr int MostLooks = 4000;

Normals scaled(const Normals& direction, double factor) {
    Normals point = direction;
    for (double& number : point) {
        number *= factor;
    }
    return point;
}

Normals unit(const Normals& point) {
    return scaled(point, 1 / lengthOf(point));
}

/// Normal numbers in all directions alike; Sobol's where it has enough coordinates.
Normals evenDirection(std::size_t index, std::size_t dimension) {
    const Design design = dimension <= static_cast<std::size_t>(SobolCoordinates)
                              ? Design::Sobol
                              : Design::MonteCarlo;
    const Sample sample{design, 1, MostRays};
    Normals direction;
    for (std::size_t i = 0; i < dimension; ++i) {
        direction.push_back(OT::DistFunc::qNormal(sample.at(index, static_cast<int>(i))));
    }
    return unit(direction);
}

std::vector<Normals> directionsOf(std::size_t dimension) {
    std::vector<Normals> all;
    for (std::size_t i = 0; i < dimension; ++i) {
        Normals axis(dimension, 0);
        for (const double sign : {1.0, -1.0}) {
            axis[i] = sign;
            all.push_back(axis);
        }
    }
    const std::size_t rays = dimension == 1 ? 0 : std::min(RaysOfCoordinate * dimension, MostRays);
    for (std::size_t n = 0; n < rays; ++n) {
        all.push_back(evenDirection(n, dimension));
    }
    return all;
}

/// The radius along a direction at which the state begins, between one outside and one inside.
double borderBetween(const Reached& reached, const Normals& direction, double outside,
                     double inside, double nearness) {
    while (inside - outside > nearness) {
        const double middle = (outside + inside) / 2;
        if (middle <= outside || middle >= inside) {
            break;
        }
        (reached(scaled(direction, middle)) ? inside : outside) = middle;
    }
    return inside;
}

/// Directions at right angles to one: along the axes both ways, and some at random.
std::vector<Normals> turnsOf(const Normals& direction, std::size_t round) {
    const std::size_t dimension = direction.size();
    std::vector<Normals> all;
    const auto add = [&](const Normals& wish) {
        double along = 0;
        for (std::size_t i = 0; i < dimension; ++i) {
            along += wish[i] * direction[i];
        }
        Normals turn = wish;
        for (std::size_t i = 0; i < dimension; ++i) {
            turn[i] -= along * direction[i];
        }
        if (lengthOf(turn) > 1e-6) {
            all.push_back(unit(turn));
            all.push_back(scaled(all.back(), -1));
        }
    };
    for (std::size_t i = 0; i < dimension; ++i) {
        Normals axis(dimension, 0);
        axis[i] = 1;
        add(axis);
    }
    // In a plane there are no others.
    const std::size_t tries = dimension < 3 ? 0 : TriesOfCoordinate * dimension;
    for (std::size_t n = 0; n < tries; ++n) {
        add(evenDirection(round * tries + n, dimension));
    }
    return all;
}

/// A search around a point.
struct Descent {
    const Reached& reached;
    Normals direction;
    double radius;
    double turn = FirstTurn;
    int looks = 0;

    /// Takes a turned direction if the state begins nearer there.
    bool take(const Normals& away) {
        Normals turned = direction;
        for (std::size_t i = 0; i < turned.size(); ++i) {
            turned[i] += turn * away[i];
        }
        turned = unit(turned);
        const double shorter = radius * (1 - LeastGain * turn * turn);
        ++looks;
        if (!reached(scaled(turned, shorter))) {
            return false;
        }
        const double below = radius * std::max(0.0, 1 - turn);
        ++looks;
        const double outside = reached(scaled(turned, below)) ? 0 : below;
        radius = borderBetween(reached, turned, outside, shorter, radius * turn * turn / 20);
        direction = turned;
        return true;
    }
};

} // namespace

double distanceOf(const Normals& a, const Normals& b) {
    double squares = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        squares += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return std::sqrt(squares);
}

double lengthOf(const Normals& point) {
    return distanceOf(point, Normals(point.size(), 0));
}

std::vector<Normals> entriesAlongRays(const Reached& reached, std::size_t dimension,
                                      double radius) {
    std::vector<Normals> entries;
    for (const Normals& direction : directionsOf(dimension)) {
        for (double outside = 0; outside < radius;) {
            const double next = std::min(outside + Stride, radius);
            if (reached(scaled(direction, next))) {
                entries.push_back(scaled(
                    direction, borderBetween(reached, direction, outside, next, EntryNearness)));
                break;
            }
            outside = next;
        }
    }
    return entries;
}

Normals nearestAround(const Reached& reached, Normals point) {
    const double start = lengthOf(point);
    if (start < EntryNearness) {
        return point;
    }
    Descent descent{reached, unit(point), start};
    for (std::size_t round = 0; descent.turn > LastTurn && descent.looks < MostLooks; ++round) {
        const std::vector<Normals> turns = turnsOf(descent.direction, round);
        if (std::none_of(turns.begin(), turns.end(),
                         [&](const Normals& away) { return descent.take(away); })) {
            descent.turn /= 2;
        }
    }
    const double below = descent.radius - EntryNearness;
    const double outside = reached(scaled(descent.direction, below)) ? 0 : below;
    return scaled(descent.direction,
                  borderBetween(reached, descent.direction, outside, descent.radius, 0));
}

} // namespace korvane::study
