// Rules on the planes of the wedge methods: doubtful formulas, each with a second solve.
#include "notes/second_opinion.h"
#include "pressures/coefficient_pressures.h"
#include "pressures/elevation_grid.h"
#include "state/tolerances.h"
#include "wall/preparation.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr double LevelSight = 88;    ///< degrees: the last plane ends 2 short of the sight
constexpr double AtBound = 1e-6;     ///< degrees; nearer it the fixed surface has no bound
constexpr double FixedExcess = 0.05; ///< share above the tables; less is within their own error

bool isWedge(const Wall& wall, int side) {
    return sideMethod(wall.problem, side) == PressureMethod::Wedge;
}

bool bySweep(const Wall& wall) {
    return wall.options->wedge == WedgeMethod::Sweep;
}

bool byFixedSurface(const Wall& wall) {
    return wall.options->wedge == WedgeMethod::FixedSurface;
}

/// FT that the first stretch of ground rises.
double firstRise(const Problem& problem, int side) {
    return problem.SurfacePointCount(side) > 1
               ? problem.SurfaceElev(side, 2) - problem.SurfaceElev(side, 1)
               : 0;
}

/// True where the surface of a wedge side has pressures of its own.
bool pressesAtSurface(const Wall& wall, int side) {
    const Problem& problem = wall.problem;
    return isWedge(wall, side) && problem.SoilDataKind(side) == SoilData::Strengths &&
           (problem.SoilCohesion(side, 1) > PressureNoise || problem.VUniformCount(side) != 0);
}

/// The left side first, which holds the wall; 0 for none.
int firstSide(bool right, bool left) {
    return left ? Left : right ? Right : 0;
}

void lookAtSurfaceLimit(const Wall& wall, NoteSink& notes) {
    const auto falls = [&wall](int side) {
        return pressesAtSurface(wall, side) && firstRise(wall.problem, side) < 0;
    };
    if (const int side = firstSide(falls(Right), falls(Left))) {
        addOpinion(wall, notes,
                   {.side = side,
                    .elev = wall.problem.SurfaceElev(side, 1),
                    .text = std::string("Ground that falls on the ") + sideText(side) +
                            " takes the friction angle itself as its slope in the passive "
                            "pressure at the surface, which then has no bound. With the slope "
                            "limited to the friction, downward, the wall has "},
                   wall.problem, {.amendments = {.surfaceLimit = true}});
    }
}

void lookAtSurfaceSlope(const Wall& wall, NoteSink& notes) {
    const auto slopes = [&wall](int side) {
        return pressesAtSurface(wall, side) && firstRise(wall.problem, side) != 0;
    };
    if (const int side = firstSide(slopes(Right), slopes(Left))) {
        addOpinion(wall, notes,
                   {.side = side,
                    .elev = wall.problem.SurfaceElev(side, 1),
                    .text = std::string("The pressures at the surface of the ") + sideText(side) +
                            " take the arctangent of the ground's rise, divided by the distance, "
                            "as its slope. With the true angle the wall has "},
                   wall.problem, {.amendments = {.surfaceSlope = true}});
    }
}

/// Degrees that the ground falls on the steepest line of sight from the wall.
double steepestFall(const Problem& problem, int side) {
    double fall = 0;
    for (int point = 2; point <= problem.SurfacePointCount(side); ++point) {
        const double drop = problem.SurfaceElev(side, 1) - problem.SurfaceElev(side, point);
        fall = std::max(fall, std::atan2(drop, problem.SurfaceDist(side, point)));
    }
    return fall / DegreesToRadians;
}

/// Degrees, the largest developed soil friction of a side plus the largest wall friction.
double largestFrictions(const Wall& wall, int side) {
    const Problem& problem = wall.problem;
    double soil = 0;
    double onWall = 0;
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const auto factors = layerFactors(wall, side, layer);
        const double factor = factors ? factors->active : 1;
        soil = std::max(soil, dividedAngle(problem.SoilFriction(side, layer), factor));
        onWall = std::max(onWall, dividedAngle(problem.SoilWallFriction(side, layer), factor));
    }
    return soil + onWall;
}

void lookAtPlanesPastHorizontal(const Wall& wall, NoteSink& notes) {
    for (const int side : {Right, Left}) {
        const double flattest = LevelSight + steepestFall(wall.problem, side);
        const double reach = flattest + largestFrictions(wall, side);
        if (!isWedge(wall, side) || !bySweep(wall) || reach < 180) {
            continue;
        }
        addOpinion(wall, notes,
                   {.side = side,
                    .quantity = Quantity::Angle,
                    .text = std::string("Ground falls so steeply on the ") + sideText(side) +
                            " that planes of the sweep lean past the horizontal, where the wedge "
                            "would have to be pulled. Without those planes the wall has "},
                   wall.problem, {.amendments = {.planesPastHorizontal = true}});
        return;
    }
}

void lookAtBuoyantLayers(const Wall& wall, NoteSink& notes) {
    const auto layered = [&wall](int side) {
        return isWedge(wall, side) && wall.problem.SoilLayerCount(side) > 1;
    };
    const int side = firstSide(layered(Right), layered(Left));
    if (side == 0 || wall.problem.SeepageKind == Seepage::None) {
        return;
    }
    addOpinion(wall, notes,
               {.side = side,
                .text = std::string("Where water seeps, wedges on the ") + sideText(side) +
                        " weigh their plane's own layer under buoyancy, but the layers above it "
                        "with their water. With all layers under buoyancy the wall has "},
               wall.problem, {.amendments = {.buoyantLayers = true}});
}

void lookAtCoefficients(const Wall& wall, NoteSink& notes) {
    const auto could = [&wall](int side) {
        return isWedge(wall, side) && coefficientsCanFollow(wall.problem, side);
    };
    if (const int side = firstSide(could(Right), could(Left))) {
        addOpinion(wall, notes,
                   {.side = side,
                    .text = std::string("The ground on the ") + sideText(side) +
                            " is level although it has several points. By coefficients the wall "
                            "has "},
                   wall.problem, {.amendments = {.methodCoefficients = true}});
    }
}

void lookAtSweep(const Wall& wall, NoteSink& notes) {
    const bool right = isWedge(wall, Right);
    const bool left = isWedge(wall, Left);
    if (byFixedSurface(wall) && (right || left)) {
        addOpinion(wall, notes,
                   {.side = firstSide(right, left),
                    .text = "The fixed surface is no extreme of all planes. By the sweep search "
                            "the wall has "},
                   wall.problem, {.wedge = WedgeMethod::Sweep});
    }
}

/// Marked rows of one set of diagrams, and the highest of them.
struct Marks {
    int count = 0;
    int side = 0;
    double elev = 0; ///< FT
};

/// Marks down to the row at or below `lowest`. The two rows far below the regular grid stand in no
/// report.
Marks marksIn(const PressureDiagrams& diagrams, double lowest) {
    Marks marks;
    const ElevationGrid& grid = diagrams.grid;
    for (const int side : {Right, Left}) {
        for (int i = 1; i <= grid.NumElevs && !isFarRow(grid, i); ++i) {
            if (i > 1 && grid.ElevGrid(i - 1) <= lowest) {
                break;
            }
            if (diagrams.pressures.ActiveMark(side, i) || diagrams.pressures.PassiveMark(side, i)) {
                const double y = grid.ElevGrid(i);
                marks.elev = marks.count == 0 ? y : std::max(marks.elev, y);
                marks.side = marks.count == 0 ? side : marks.side;
                ++marks.count;
            }
        }
    }
    return marks;
}

/// Those of the level that has the most, else of the review; a run may have failed before either.
Marks marksOf(const Wall& wall) {
    Marks marks;
    const int levels = wall.solved->results != nullptr ? wall.results().levelCount : 0;
    for (int level = 1; level <= levels; ++level) {
        const LevelResult& result = wall.results().levels(level);
        const Marks found = marksIn(result.solved, result.bottomElev);
        marks = found.count > marks.count ? found : marks;
    }
    if (marks.count == 0 && wall.solved->review != nullptr && wall.review().hasPressures) {
        const ElevationGrid& grid = wall.review().diagrams.grid;
        marks = marksIn(wall.review().diagrams, grid.ElevGrid(grid.NumElevs));
    }
    return marks;
}

void lookAtFixedSurface(const Wall& wall, NoteSink& notes) {
    if (!bySweep(wall)) {
        return;
    }
    if (const Marks marks = marksOf(wall); marks.count > 0) {
        addOpinion(wall, notes,
                   {.side = marks.side,
                    .elev = marks.elev,
                    .text = "The sweep found no extreme at some elevations. By the fixed surface "
                            "the wall has "},
                   wall.problem, {.wedge = WedgeMethod::FixedSurface});
    }
}

void lookAtMarks(const Wall& wall, NoteSink& notes) {
    if (const Marks marks = marksOf(wall); marks.count > 0) {
        notes.add({.side = marks.side,
                   .elev = marks.elev,
                   .value = marks.count,
                   .limit = 0,
                   .text = std::to_string(marks.count) +
                           (marks.count == 1 ? " row is" : " rows are") +
                           " marked * from elevation " + wall.say(Quantity::Length, marks.elev) +
                           " down: the steepest or flattest plane governs there, the true extreme "
                           "lies beyond it."});
    }
}

void lookAtWarning(const Wall& wall, NoteSink& notes) {
    if (wall.results().wedgeWarning && marksOf(wall).count == 0) {
        notes.add({.text = "The report warns of pressures without a standard solution, yet no row "
                           "is marked: they belong to an earlier pass of the search or lie far "
                           "below the wall, and the pressures shown are sound."});
    }
}

/// Sides whose passive pressures hold the wall.
bool holdsWall(const Wall& wall, int side) {
    return side == Left || !wall.anchored();
}

/// Degrees of developed wall friction at which the passive pressure of the fixed surface has no
/// bound under level ground: the wall's and the plane's reactions are parallel there.
double fixedBound(double friction) {
    return 45 - friction / 2;
}

/// Passive pressure over vertical stress for the fixed surface under level ground, horizontal; 0
/// from the wall friction on at which it has no bound, where it falls to the floor. Degrees.
double fixedPassive(double friction, double wallFriction) {
    if (wallFriction > fixedBound(friction) - AtBound) {
        return 0;
    }
    const double phi = friction * DegreesToRadians;
    const double onWall = wallFriction * DegreesToRadians;
    const double plane = fixedBound(friction) * DegreesToRadians; // from the horizontal
    return std::sin(plane + phi) * std::cos(onWall) /
           (std::cos(plane + phi + onWall) * std::tan(plane));
}

/// A layer of a wedge side that holds the wall.
template <class Look>
void forEachPassiveLayer(const Wall& wall, Look look) {
    for (const int side : {Left, Right}) {
        if (!isWedge(wall, side) || !holdsWall(wall, side) ||
            wall.problem.SoilDataKind(side) != SoilData::Strengths) {
            continue;
        }
        for (int layer = 1; layer <= layersInUse(wall, side); ++layer) {
            if (look(side, layer, passiveAngles(wall, side, layer))) {
                return;
            }
        }
    }
}

constexpr const char* PlaneTable =
    " Passive coefficient times cosine (level ground, one soil) by coefficients, sweep and fixed "
    "surface, for phi/delta: 30/15 4.81, 4.81, 5.60; 30/20 5.21, 5.75, 8.12; 30/25 5.48, 6.99, "
    "15.6; 30/30 5.61, 8.75, no bound; 40/20 11.06, 11.10, 20.96; 40/40 13.1, 71.0, the floor.";

/// The wall with wall friction that no layer of a wedge side develops above half the soil's.
Problem withHalfWallFriction(const Wall& wall) {
    Problem problem = wall.problem;
    forEachPassiveLayer(wall, [&](int side, int layer, const PassiveAngles& developed) {
        const double given = dividedAngle(developed.friction / 2, 1 / developed.factor);
        problem.SoilWallFriction(side, layer) =
            std::min(problem.SoilWallFriction(side, layer), given);
        return false;
    });
    return problem;
}

/// What is wrong with planes under wall friction above half the soil's (degrees).
std::string planeFault(const Wall& wall, double soil, double onWall) {
    const std::string developed = wall.say(Quantity::Angle, onWall);
    if (byFixedSurface(wall) && fixedPassive(soil, onWall) == 0) {
        return "The passive pressure of the fixed surface has no bound at a developed wall "
               "friction of 45 - phi/2, " +
               wall.say(Quantity::Angle, fixedBound(soil)) +
               ", and falls to the floor beyond; developed is " + developed;
    }
    return "Planes overestimate passive pressure with wall friction above half the soil's: " +
           developed + " against " + wall.say(Quantity::Angle, soil / 2);
}

void lookAtPlaneFriction(const Wall& wall, NoteSink& notes) {
    forEachPassiveLayer(wall, [&](int side, int layer, const PassiveAngles& developed) {
        const double soil = developed.friction;
        const double onWall = developed.wallFriction;
        if (soil <= 0 || isCoulombPassive(soil * DegreesToRadians, onWall * DegreesToRadians)) {
            return false;
        }
        Note note{.side = side,
                  .layer = layer,
                  .quantity = Quantity::Angle,
                  .value = onWall,
                  .limit = soil / 2};
        const bool coefficients = coefficientsCanFollow(wall.problem, side);
        note.second = coefficients ? solveAgain(wall, wall.problem,
                                                {.amendments = {.methodCoefficients = true}})
                                   : solveAgain(wall, withHalfWallFriction(wall));
        const int level = compare(wall, *note.second).level;
        note.text = planeFault(wall, soil, onWall) + " in layer " + std::to_string(layer) +
                    " on the " + sideText(side) + ". " +
                    (coefficients ? "By coefficients" : "With half the soil's friction") +
                    " the wall has " + outcomeText(wall, *note.second, level) + "." + PlaneTable;
        notes.add(std::move(note));
        return true;
    });
}

void lookAtFixedPassive(const Wall& wall, NoteSink& notes) {
    if (!byFixedSurface(wall)) {
        return;
    }
    forEachPassiveLayer(wall, [&](int side, int layer, const PassiveAngles& developed) {
        const double soil = developed.friction * DegreesToRadians;
        const double onWall = developed.wallFriction * DegreesToRadians;
        if (soil <= 0 || !hasPassiveCoefficient(soil, onWall)) {
            return false;
        }
        const double Kp = passiveCoefficient(soil, onWall).value_or(0) * std::cos(onWall);
        const double fixed = fixedPassive(developed.friction, developed.wallFriction);
        if (fixed <= (1 + FixedExcess) * Kp) {
            return false;
        }
        Note note{.side = side, .layer = layer, .value = fixed, .limit = Kp};
        note.second = solveAgain(wall, wall.problem, {.wedge = WedgeMethod::Sweep});
        const int level = compare(wall, *note.second).level;
        note.text =
            "The fixed surface is no extreme and has no bound at a developed wall "
            "friction of 45 - phi/2: under level ground its passive coefficient times "
            "cosine is " +
            wall.say(Quantity::Number, fixed) + " where the coefficients give " +
            wall.say(Quantity::Number, Kp) + " (layer " + std::to_string(layer) + " on the " +
            sideText(side) + ", " + wall.say(Quantity::Angle, developed.wallFriction) + " of " +
            wall.say(Quantity::Angle, fixedBound(developed.friction)) +
            "). By the sweep search the wall has " + outcomeText(wall, *note.second, level) + ".";
        notes.add(std::move(note));
        return true;
    });
}

constexpr const char* CoulombSlope = "Coulomb 1776; Mueller-Breslau 1906";
constexpr const char* TrialWedge = "Terzaghi, Theoretical Soil Mechanics, 1943";
constexpr const char* CurvedPlane = "Caquot and Kerisel, Tables, 1948";

constexpr NoteRule Rules[] = {
    {"surface-limit", Severity::Unsafe, Needs::Run, lookAtSurfaceLimit, CoulombSlope},
    {"surface-slope", Severity::Unsafe, Needs::Run, lookAtSurfaceSlope, CoulombSlope},
    {"planes-past-horizontal", Severity::Unsafe, Needs::Run, lookAtPlanesPastHorizontal,
     TrialWedge},
    {"buoyant-layers", Severity::Unsafe, Needs::Run, lookAtBuoyantLayers, TrialWedge},
    {"plane-wall-friction", Severity::Unsafe, Needs::Run, lookAtPlaneFriction, CurvedPlane},
    {"fixed-passive", Severity::Unsafe, Needs::Run, lookAtFixedPassive, TrialWedge},
    {"method-coefficients", Severity::Unsafe, Needs::Run, lookAtCoefficients, CurvedPlane},
    {"method-sweep", Severity::Unsafe, Needs::Run, lookAtSweep, TrialWedge},
    {"method-fixed", Severity::Unsafe, Needs::Run, lookAtFixedSurface, TrialWedge},
    {"marked-rows", Severity::Caution, Needs::Run, lookAtMarks, TrialWedge},
    {"warning-without-mark", Severity::Caution, Needs::Results, lookAtWarning, TrialWedge},
};

} // namespace

std::span<const NoteRule> wedgeRules() {
    return Rules;
}

} // namespace korvane
