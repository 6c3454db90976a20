// Rules on cohesion: clay in front of the wall, clay behind it, heave of the bottom.
#include "notes/clay_resistance.h"
#include "notes/second_opinion.h"
#include "problem/counts.h"
#include "runtime/arithmetic.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace korvane {

namespace {

/// Net resistance of clay in front as a share of the load on it, below which it is small: 5 % of
/// the cohesion are then 15 % of the resistance. That a wall in clay loses its hold as q comes near
/// 2 ca + 2 cp is told by Teng (1962).
constexpr double SmallNet = 0.5;
constexpr double LessCohesion = 0.95;
constexpr double BearingFactor = 5.14;   ///< of a long strip on clay (Prandtl 1920)
constexpr double HeaveFactor = 1.5;      ///< customary against heave (NAVFAC DM 7.02, 1986)
constexpr double NoPressureHeight = 1.0; ///< FT; a shallower crack moves no wall
constexpr double MinimumFluid = 30;      ///< PCF, least equivalent fluid (BS 8002, 1994: 5 kN/m3)
constexpr double FreshWater = 62.4;      ///< PCF
constexpr std::size_t LoadPoints = mostOf(ProblemCount::HDistCount);
constexpr double JumpHeight = 0.01; ///< FT, in which a load begins or ends at once
constexpr double LeastStep = 0.001; ///< FT between points of a load

Problem withLessCohesion(Problem problem) {
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            if (isClay(problem, side, layer)) {
                problem.SoilCohesion(side, layer) *= LessCohesion;
            }
        }
    }
    return problem;
}

void lookAtClayInFront(const Wall& wall, NoteSink& notes) {
    const CohesionFactor factor = [&wall](int side, int layer) -> std::optional<double> {
        const auto factors = layerFactors(wall, side, layer);
        if (!factors) {
            return std::nullopt;
        }
        return side == Right ? factors->active : factors->passive;
    };
    const double ground = wall.problem.SurfaceElev(Left, 1);
    const auto clay = leastClayResistance(wall.problem, factor,
                                          wall.hasResults() ? wall.results().levels(1).bottomElev
                                                            : NoLayerBottom);
    if (ground >= wall.problem.SurfaceElev(Right, 1) || !clay || clay->load <= 0 ||
        clay->net() >= SmallNet * clay->load) {
        return;
    }
    Note note{.side = Left,
              .layer = clay->left,
              .elev = clay->elev,
              .quantity = Quantity::Stress,
              .value = clay->net(),
              .limit = SmallNet * clay->load,
              .text = "In clay the net resistance in front" +
                      (clay->elev < ground
                           ? " below elevation " + wall.say(Quantity::Length, clay->elev)
                           : std::string()) +
                      " is 2 ca + 2 cp - q = " + wall.say(Quantity::Stress, clay->cohesion) +
                      " - " + wall.say(Quantity::Stress, clay->load) + " = " +
                      wall.say(Quantity::Stress, clay->net())};
    if (wall.hasResults()) {
        note.second = solveAgain(wall, withLessCohesion(wall.problem));
        const int level = compare(wall, *note.second).level;
        note.text += ". With 5 percent less cohesion the wall has " +
                     outcomeText(wall, *note.second, level) + ".";
    } else if (clay->net() > 0) {
        note.text += ", a small part of the load.";
    } else {
        note.text += clay->endless ? ": no depth holds the wall."
                                   : ": no depth within that layer holds the wall.";
    }
    notes.add(std::move(note));
}

/// The least factor against heave of a layer of clay in front. A crust heaves with the soil below
/// it: layers thinner than half the exposed height, and those deeper than it, are not looked at.
struct Heave {
    int layer = 0;
    double elev = 0; ///< FT, the top of the layer
    double load = 0; ///< PSF there, behind less in front
    double factor = HeaveFactor;
};

Heave leastAgainstHeave(const Problem& problem) {
    const double ground = problem.SurfaceElev(Left, 1);
    const double exposed = problem.SurfaceElev(Right, 1) - ground;
    Heave least;
    for (int layer = 1; layer <= problem.SoilLayerCount(Left); ++layer) {
        const double top = layerTop(problem, Left, layer);
        const double thickness = top - problem.SoilBottomElev(Left, layer);
        if (!isClay(problem, Left, layer) || ground - top > exposed || thickness < exposed / 2 ||
            exposed <= 0) {
            continue;
        }
        const double load = overburden(problem, Right, top, false) +
                            waterHead(problem, Right, problem.SurfaceElev(Right, 1)) -
                            overburden(problem, Left, top, false) -
                            waterHead(problem, Left, ground);
        const double factor = BearingFactor * problem.SoilCohesion(Left, layer) / load;
        if (load > 0 && factor < least.factor) {
            least = {layer, top, load, factor};
        }
    }
    return least;
}

void lookForHeave(const Wall& wall, NoteSink& notes) {
    if (const Heave heave = leastAgainstHeave(wall.problem); heave.layer > 0) {
        notes.add({.side = Left,
                   .layer = heave.layer,
                   .elev = heave.elev,
                   .value = heave.factor,
                   .limit = HeaveFactor,
                   .text = "The clay in front may heave: 5.14 c over the load of " +
                           wall.say(Quantity::Stress, heave.load) + " behind is " +
                           wall.say(Quantity::Number, heave.factor) +
                           ", which no penetration improves in this method."});
    }
}

/// FT elevations of a stretch of wall.
struct Zone {
    double top = 0;
    double bottom = 0;
    double height() const { return top - bottom; }
};

bool hasCohesion(const Problem& problem, double top) {
    const int layer = layerBelow(problem, Right, top);
    return problem.SoilDataKind(Right) == SoilData::Strengths &&
           problem.SoilCohesion(Right, layer) > 0;
}

/// The highest stretch behind the wall, above the ground in front, in which cohesion leaves no
/// active pressure.
Zone zoneWithoutPressure(const Problem& problem, const PressureDiagrams& diagrams) {
    const auto& active = diagrams.pressures.ActivePressures;
    const double dredge = dredgeLine(problem);
    Zone zone;
    bool open = false;
    for (int i = 1; i < diagrams.grid.NumElevs; ++i) {
        const double top = diagrams.grid.ElevGrid(i);
        if (top <= dredge) {
            break;
        }
        const bool none = top <= problem.SurfaceElev(Right, 1) && active(Right, i, 1) <= 0 &&
                          active(Right, i + 1, 2) <= 0 && hasCohesion(problem, top);
        if (none) {
            zone.top = open ? zone.top : top;
            zone.bottom = MaxOf(diagrams.grid.ElevGrid(i + 1), dredge);
            open = true;
        } else if (open) {
            break;
        }
    }
    return zone;
}

/// Active pressure (PSF) at an elevation, by straight lines between the rows.
double activeAt(const PressureDiagrams& diagrams, double elev) {
    const auto& grid = diagrams.grid.ElevGrid;
    const auto& active = diagrams.pressures.ActivePressures;
    for (int i = 1; i < diagrams.grid.NumElevs; ++i) {
        if (grid(i + 1) <= elev && elev <= grid(i)) {
            const double share = (grid(i) - elev) / (grid(i) - grid(i + 1));
            return active(Right, i, 1) + share * (active(Right, i + 1, 2) - active(Right, i, 1));
        }
    }
    return 0;
}

/// A pressure on the wall: straight lines between points of descending elevation, nothing beyond.
struct LoadPoint {
    double elev; ///< FT
    double load; ///< PSF
};
using WallLoad = std::vector<LoadPoint>;

double loadAt(const WallLoad& load, double elev) {
    for (std::size_t i = 1; i < load.size(); ++i) {
        const LoadPoint& a = load[i - 1];
        const LoadPoint& b = load[i];
        if (b.elev <= elev && elev <= a.elev) {
            return a.load + (b.load - a.load) * divide(a.elev - elev, a.elev - b.elev);
        }
    }
    return 0;
}

/// How much (LB per FT of wall) a load changes with its point left out, nearly.
double weightOf(const WallLoad& load, std::size_t point) {
    WallLoad without{load[point - 1], load[point + 1]};
    return std::fabs(load[point].load - loadAt(without, load[point].elev)) *
           (load[point - 1].elev - load[point + 1].elev);
}

/// Both together, in no more points than a problem holds: those that matter least are left out.
WallLoad sumOf(const WallLoad& a, const WallLoad& b) {
    std::vector<double> elevs;
    for (const WallLoad* load : {&a, &b}) {
        for (const LoadPoint& point : *load) {
            elevs.push_back(point.elev);
        }
        elevs.push_back(load->front().elev + JumpHeight);
        elevs.push_back(load->back().elev - JumpHeight);
    }
    std::sort(elevs.begin(), elevs.end(), std::greater<>());
    const double top = MaxOf(a.front().elev, b.front().elev);
    const double bottom = MinOf(a.back().elev, b.back().elev);
    WallLoad sum;
    for (const double elev : elevs) {
        const bool apart = sum.empty() || sum.back().elev - elev > LeastStep;
        if (apart && elev <= top && elev >= bottom) {
            sum.push_back({elev, loadAt(a, elev) + loadAt(b, elev)});
        }
    }
    while (sum.size() > LoadPoints) {
        std::size_t least = 1;
        for (std::size_t point = 2; point + 1 < sum.size(); ++point) {
            least = weightOf(sum, point) < weightOf(sum, least) ? point : least;
        }
        sum.erase(sum.begin() + static_cast<std::ptrdiff_t>(least));
    }
    return sum;
}

/// The problem with one more load beside its own horizontal distributed one.
Problem withLoad(Problem problem, WallLoad load) {
    if (problem.HDistCount > 0) {
        WallLoad own;
        for (int point = 1; point <= problem.HDistCount; ++point) {
            own.push_back({problem.HDistElev(point), problem.HDistLoad(point)});
        }
        load = sumOf(own, load);
    }
    problem.HDistCount = static_cast<int>(load.size());
    for (int point = 1; point <= problem.HDistCount; ++point) {
        problem.HDistElev(point) = load[static_cast<std::size_t>(point) - 1].elev;
        problem.HDistLoad(point) = load[static_cast<std::size_t>(point) - 1].load;
    }
    return problem;
}

/// Water that fills the zone like a crack, down to the water level.
std::optional<Problem> withCrack(const Problem& told, const Zone& zone) {
    const bool levels = told.WaterDataKind == WaterData::Elevations;
    const double bottom = levels ? MaxOf(zone.bottom, told.WaterElev(Right)) : zone.bottom;
    const double depth = zone.top - bottom;
    if (depth < NoPressureHeight) {
        return std::nullopt;
    }
    const double weight = levels ? told.WaterUnitWeight : FreshWater;
    return withLoad(told, {{zone.top, 0}, {bottom, depth * weight}});
}

/// What the active pressure lacks of the least equivalent fluid, down to the ground in front.
std::optional<Problem> withMinimum(const Problem& told, const PressureDiagrams& diagrams) {
    const double top = told.SurfaceElev(Right, 1);
    const double height = top - dredgeLine(told);
    if (height <= 0) {
        return std::nullopt;
    }
    WallLoad lacking;
    for (std::size_t point = 0; point < LoadPoints; ++point) {
        const double depth = height * static_cast<double>(point) / (LoadPoints - 1);
        lacking.push_back(
            {top - depth, MaxOf(0, MinimumFluid * depth - activeAt(diagrams, top - depth))});
    }
    return withLoad(told, lacking);
}

/// The pressures of the first level; of a failed run those of the review, if it came to them.
const PressureDiagrams* pressuresOf(const Wall& wall) {
    if (wall.hasResults()) {
        return &wall.results().levels(1).solved;
    }
    const Review* review = wall.solved->review;
    return review != nullptr && review->hasPressures ? &review->diagrams : nullptr;
}

void lookBehind(const Wall& wall, NoteSink& notes) {
    const PressureDiagrams* diagrams = pressuresOf(wall);
    if (diagrams == nullptr) {
        return;
    }
    const Zone zone = zoneWithoutPressure(wall.problem, *diagrams);
    if (zone.height() < NoPressureHeight) {
        return;
    }
    Note note{.side = Right,
              .layer = layerBelow(wall.problem, Right, zone.top),
              .elev = zone.top,
              .quantity = Quantity::Length,
              .value = zone.height(),
              .limit = NoPressureHeight,
              .text = "Cohesion leaves " + wall.say(Quantity::Length, zone.height()) +
                      " behind the wall without pressure."};
    double deepest = -1;
    const auto add = [&](const std::optional<Problem>& problem, const std::string& with) {
        if (!problem) {
            return;
        }
        const SecondOpinion second = solveAgain(wall, *problem);
        const Difference difference = compare(wall, second);
        note.text += with + outcomeText(wall, second, difference.level) + ".";
        if (!note.second || difference.deepest > deepest) {
            deepest = difference.deepest;
            note.second = second;
        }
    };
    add(withCrack(wall.problem, zone), " With a crack full of water there the wall has ");
    add(withMinimum(wall.problem, *diagrams), " With at least " +
                                                  wall.say(Quantity::UnitWeight, MinimumFluid) +
                                                  " times depth as pressure it has ");
    notes.add(std::move(note));
}

constexpr NoteRule Rules[] = {
    {"clay-in-front", Severity::Caution, Needs::Run, lookAtClayInFront,
     "Blum 1931; Teng, Foundation Design, 1962"},
    {"basal-heave", Severity::Caution, Needs::Input, lookForHeave,
     "Terzaghi, Theoretical Soil Mechanics, 1943; NAVFAC DM 7.02, 1986"},
    {"no-active-pressure", Severity::Caution, Needs::Run, lookBehind,
     "Terzaghi 1943; BS 8002, 3.3.4, 1994 (5 kN/m3 of equivalent fluid)"},
};

} // namespace

std::span<const NoteRule> clayRules() {
    return Rules;
}

} // namespace korvane
