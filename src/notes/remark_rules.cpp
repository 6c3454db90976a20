// Remarks: what the results rest on, and what they leave out.
#include "notes/second_opinion.h"
#include "problem/loads.h"
#include "runtime/arithmetic.h"
#include "solution/wall_diagrams.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr double CustomaryDepth = 1.2; ///< times the theoretical depth (Blum 1931)
constexpr double ExcavationShare =
    0.1; ///< of the height below the support (EN 1997-1, 9.3.2.2, 2004)
constexpr double MostExcavation = 1.64; ///< FT, half a metre (likewise)

bool hasStrengths(const Problem& problem, int side) {
    return problem.SoilDataKind(side) == SoilData::Strengths;
}

/// The factors of safety that act: on layers that the wall reaches and that have a strength. Those
/// of an anchored wall act on what drives behind it and holds in front of it alone.
struct FactorsInUse {
    double least = 1;
    double most = 1;
    bool any() const { return least != 1 || most != 1; }
};

FactorsInUse factorsInUse(const Wall& wall) {
    const Problem& problem = wall.problem;
    const LevelResult& level = wall.results().levels(1);
    FactorsInUse factors;
    const auto see = [&factors](double factor) {
        factors.least = std::min(factors.least, factor);
        factors.most = std::max(factors.most, factor);
    };
    for (const int side : {Right, Left}) {
        const int layers = layersDownTo(problem, side, level.bottomElev);
        for (int layer = 1; layer <= layers && hasStrengths(problem, side); ++layer) {
            if (problem.SoilFriction(side, layer) <= 0 && problem.SoilCohesion(side, layer) <= 0) {
                continue;
            }
            if (side == Right || !wall.anchored()) {
                see(level.layers(side, layer).fsActive);
            }
            if (side == Left || !wall.anchored()) {
                see(level.layers(side, layer).fsPassive);
            }
        }
    }
    return factors;
}

void lookAtFactors(const Wall& wall, NoteSink& notes) {
    if (factorsInUse(wall).any()) {
        notes.add({.text = "Factors of safety divide the tangents of soil and wall friction, the "
                           "cohesion and the adhesion, each layer's own factor before its side's "
                           "before the wall's; they do not multiply the depth or the anchor "
                           "force."});
    }
}

/// The largest factor that stands behind a side's coefficients; 0 without one.
double factorBehind(const Problem& problem, int side) {
    double largest = std::max(problem.Level2FSActive(side), problem.Level2FSPassive(side));
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        largest = std::max(
            {largest, problem.SoilFSActive(side, layer), problem.SoilFSPassive(side, layer)});
    }
    return largest;
}

void lookForIdleFactors(const Wall& wall, NoteSink& notes) {
    for (const int side : {Right, Left}) {
        const double factor = factorBehind(wall.problem, side);
        if (hasStrengths(wall.problem, side) || !(factor > 0)) {
            continue;
        }
        notes.add({.side = side,
                   .value = factor,
                   .text = "The factors of safety given with the " + std::string(sideText(side)) +
                           " (up to " + wall.say(Quantity::Number, factor) +
                           ") divide nothing: its coefficients are taken as they are given."});
    }
}

void lookForReserve(const Wall& wall, NoteSink& notes) {
    const FactorsInUse factors = factorsInUse(wall);
    if (!wall.design() || factors.most > 1) {
        return;
    }
    notes.add({.value = factors.least,
               .limit = 1,
               .text = hasStrengths(wall.problem, Left)
                           ? "No factor of safety above 1 acts: the penetration holds no reserve; "
                             "20 to 40 percent are customarily added."
                           : "Factors of safety do not act on given coefficients: the "
                             "penetration holds no reserve but that of the coefficients."});
}

void lookAtFixedEarth(const Wall& wall, NoteSink& notes) {
    if (!wall.anchored() || !wall.design()) {
        return;
    }
    const LevelResult& fixed = wall.results().levels(2);
    notes.add({.elev = fixed.bottomElev,
               .quantity = Quantity::Length,
               .value = fixed.penetration,
               .text = "The fixed earth depth is the theoretical one, at whose end a toe reaction "
                       "of " +
                       wall.say(Quantity::Force, std::fabs(fixed.toeReaction)) +
                       " acts; the customary 20 percent more give a penetration of " +
                       wall.say(Quantity::Length, CustomaryDepth * fixed.penetration) + "."});
}

/// LB per foot of wall: the friction of one side's active or passive pressures along the wall.
double wallFrictionForce(const Wall& wall, int side, bool active) {
    const LevelResult& level = wall.results().levels(1);
    const PressureDiagrams diagrams = wallDiagrams(level);
    const auto& pressures =
        active ? diagrams.pressures.ActivePressures : diagrams.pressures.PassivePressures;
    double sum = 0;
    for (int i = 1; i < diagrams.grid.NumElevs; ++i) {
        const double top = diagrams.grid.ElevGrid(i);
        const double height = top - diagrams.grid.ElevGrid(i + 1);
        if (top > wall.problem.SurfaceElev(side, 1)) {
            continue;
        }
        const DevelopedLayer& layer = level.layers(side, layerBelow(wall.problem, side, top));
        const double angle = active ? layer.wallFrictionActive : layer.wallFrictionPassive;
        sum += (pressures(side, i, 1) + pressures(side, i + 1, 2)) / 2 * height *
               std::tan(angle * DegreesToRadians);
    }
    return sum;
}

void lookAtVerticalBalance(const Wall& wall, NoteSink& notes) {
    const double down = wallFrictionForce(wall, Right, true);
    const double up = wallFrictionForce(wall, Left, false);
    if (up > down) {
        notes.add({.quantity = Quantity::Force,
                   .value = up,
                   .limit = down,
                   .text = "Wall friction lifts the wall by " + wall.say(Quantity::Force, up) +
                           " in front and holds it by " + wall.say(Quantity::Force, down) +
                           " behind; the wall's weight and other loads must bear the difference, "
                           "or less wall friction acts in front."});
    }
}

void lookForSurcharge(const Wall& wall, NoteSink& notes) {
    const bool any =
        std::any_of(GroundLoads.begin(), GroundLoads.end(),
                    [&](const LoadRules& load) { return load.rows(wall.problem, Right) > 0; });
    if (!any) {
        notes.add({.side = Right,
                   .text = "No surcharge is given behind the wall; " +
                           wall.say(Quantity::Stress, 250) +
                           " for traffic or construction is customary."});
    }
}

/// The problem with the left ground lower by `depth`; layers that are dug away whole are gone.
Problem withExcavation(Problem problem, double depth) {
    for (int point = 1; point <= problem.SurfacePointCount(Left); ++point) {
        problem.SurfaceElev(Left, point) -= depth;
    }
    while (problem.SoilLayerCount(Left) > 1 &&
           problem.SoilBottomElev(Left, 1) >= problem.SurfaceElev(Left, 1)) {
        for (auto* list :
             {&problem.SoilSatWeight, &problem.SoilMoistWeight, &problem.SoilFriction,
              &problem.SoilCohesion, &problem.SoilWallFriction, &problem.SoilAdhesion,
              &problem.SoilBottomElev, &problem.SoilBottomSlope, &problem.SoilFSActive,
              &problem.SoilFSPassive, &problem.SoilCoefActive, &problem.SoilCoefPassive}) {
            for (int layer = 1; layer < problem.SoilLayerCount(Left); ++layer) {
                (*list)(Left, layer) = (*list)(Left, layer + 1);
            }
        }
        --problem.SoilLayerCount(Left);
    }
    return problem;
}

void lookAtExcavation(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    const double dredge = problem.SurfaceElev(Left, 1);
    const double support = wall.anchored() ? problem.AnchorElev : problem.SurfaceElev(Right, 1);
    const double depth = MinOf(ExcavationShare * (support - dredge), MostExcavation);
    if (depth <= 0) {
        return;
    }
    const SecondOpinion second = solveAgain(wall, withExcavation(problem, depth));
    const int level = compare(wall, second).level;
    notes.add({.side = Left,
               .elev = dredge - depth,
               .quantity = Quantity::Length,
               .value = depth,
               .limit = MostExcavation,
               .text = "The ground in front is not lowered for unplanned excavation. " +
                       wall.say(Quantity::Length, depth) + " lower the wall has " +
                       outcomeText(wall, second, level) +
                       (wall.design() ? ", from the lower ground." : "."),
               .second = second});
}

void nameWhatIsLeftOut(const Wall& wall, NoteSink& notes) {
    notes.add({.text = wall.problem.WallType == WallKind::Anchored
                           ? "Overall stability of the slope, the anchor block or anchor length "
                             "and the fitness of the anchor itself are not looked at."
                           : "Overall stability of the slope is not looked at."});
}

constexpr const char* SheetPiles = "ASCE, Design of Sheet Pile Walls, 1996";

constexpr NoteRule Rules[] = {
    {"factors-on-strengths", Severity::Remark, Needs::Results, lookAtFactors, SheetPiles},
    {"idle-factors", Severity::Remark, Needs::Input, lookForIdleFactors, SheetPiles},
    {"no-reserve", Severity::Remark, Needs::Results, lookForReserve,
     "Teng, Foundation Design, 1962"},
    {"fixed-earth-depth", Severity::Remark, Needs::Results, lookAtFixedEarth, "Blum 1931"},
    {"vertical-balance", Severity::Remark, Needs::Results, lookAtVerticalBalance,
     "EAU, Recommendations of the Committee for Waterfront Structures, 2004"},
    {"no-surcharge", Severity::Remark, Needs::Input, lookForSurcharge,
     "AASHTO, Standard Specifications for Highway Bridges, 2002"},
    {"over-excavation", Severity::Remark, Needs::Results, lookAtExcavation,
     "EN 1997-1, 9.3.2.2, 2004"},
    {"not-looked-at", Severity::Remark, Needs::Input, nameWhatIsLeftOut, SheetPiles},
};

} // namespace

std::span<const NoteRule> remarkRules() {
    return Rules;
}

} // namespace korvane
