// Rules on loads, the anchor, ground and layers.
#include "notes/second_opinion.h"
#include "runtime/arithmetic.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr double ThinLayer = 1.0;    ///< FT, what borings tell of a boundary
constexpr double FartherSlope = 1.5; ///< times its reach

// ---- horizontal loads --------------------------------------------------------------------------

void addLoadNote(const Wall& wall, NoteSink& notes, double elev, double limit, const char* place) {
    notes.add({.elev = elev,
               .quantity = Quantity::Length,
               .value = elev,
               .limit = limit,
               .text = "A horizontal load at elevation " + wall.say(Quantity::Length, elev) +
                       " lies " + place + " of the wall at " + wall.say(Quantity::Length, limit) +
                       "."});
}

void lookAbove(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    const double top = problem.WallTopElev;
    double highest = top;
    for (int load = 1; load <= problem.HLineCount; ++load) {
        highest = std::max(highest, problem.HLineElev(load));
    }
    if (problem.HDistCount > 0) {
        highest = std::max(highest, problem.HDistElev(1));
    }
    if (highest > top) {
        addLoadNote(wall, notes, highest, top, "above the top");
    }
}

void lookBelow(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    const std::vector<double> bottoms = knownBottoms(wall);
    if (bottoms.empty()) {
        return;
    }
    const double bottom = *std::max_element(bottoms.begin(), bottoms.end());
    double lowest = bottom;
    for (int load = 1; load <= problem.HLineCount; ++load) {
        lowest = std::min(lowest, problem.HLineElev(load));
    }
    if (problem.HDistCount > 0) {
        lowest = std::min(lowest, problem.HDistElev(problem.HDistCount));
    }
    if (lowest < bottom) {
        addLoadNote(wall, notes, lowest, bottom, "below the bottom");
    }
}

// ---- vertical loads ----------------------------------------------------------------------------

/// FT from the wall to which the farthest load of a side reaches; a ramp goes on level from its
/// end and counts to there.
double farthestLoad(const Problem& problem, int side) {
    double end = 0;
    const auto see = [&](const auto& ends, int count) {
        for (int load = 1; load <= count; ++load) {
            end = std::max(end, ends(side, load));
        }
    };
    see(problem.VLineDist, problem.VLineCount(side));
    see(problem.VStripEnd, problem.VStripCount(side));
    see(problem.VTriEnd, problem.VTriCount(side));
    see(problem.VVarDist, problem.VVarCount(side));
    return problem.VRampCount(side) != 0 ? std::max(end, problem.VRampEnd(side)) : end;
}

void lookBeyondGround(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    for (const int side : {Right, Left}) {
        const int points = problem.SurfacePointCount(side);
        if (points < 2) {
            continue;
        }
        const double reach = problem.SurfaceDist(side, points);
        const double end = farthestLoad(problem, side);
        if (end > reach) {
            notes.add({.side = side,
                       .quantity = Quantity::Length,
                       .value = end,
                       .limit = reach,
                       .text = std::string("A load on the ") + sideText(side) + " reaches " +
                               wall.say(Quantity::Length, end) +
                               " from the wall, beyond the last ground point at " +
                               wall.say(Quantity::Length, reach) +
                               "; the ground is taken as level there."});
        }
    }
}

// ---- anchor ------------------------------------------------------------------------------------

void lookAtAnchorForce(const Wall& wall, NoteSink& notes) {
    if (!wall.anchored()) {
        return;
    }
    for (int level = 1; level <= wall.results().levelCount; ++level) {
        const double force = wall.results().levels(level).anchorForce;
        if (force <= 0) {
            notes.add({.elev = wall.problem.AnchorElev,
                       .quantity = Quantity::Force,
                       .value = force,
                       .limit = 0,
                       .text = "The anchor force is " + wall.say(Quantity::Force, force) +
                               ": an anchor that does not pull holds no wall."});
            return;
        }
    }
}

/// True where the shear changes its sign below the anchor and above the wall's bottom.
bool shearTurnsBelow(const ResultDiagrams& diagrams, double anchorElev) {
    double last = 0;
    for (int row = 1; row < diagrams.RowCount; ++row) {
        const double shear = diagrams.ResultShear(row);
        if (diagrams.ResultElev(row) >= anchorElev) {
            last = shear; // the last value at the anchor is that just below it
            continue;
        }
        if (last != 0 && shear * last < 0) {
            return true;
        }
        last = shear != 0 ? shear : last;
    }
    return false;
}

/// In the ground it is told before a solution, which often fails there.
void lookAtAnchorPlace(const Wall& wall, NoteSink& notes) {
    if (!wall.anchored()) {
        return;
    }
    const double anchor = wall.problem.AnchorElev;
    const double dredge = dredgeLine(wall.problem);
    if (anchor <= dredge) {
        notes.add({.elev = anchor,
                   .quantity = Quantity::Length,
                   .value = anchor,
                   .limit = dredge,
                   .text = "The anchor stands at or below the ground in front at " +
                           wall.say(Quantity::Length, dredge) +
                           ": the methods take the soil above it as free."});
        return;
    }
    if (wall.hasResults() && !shearTurnsBelow(wall.results().levels(1).diagrams, anchor)) {
        notes.add({.elev = anchor,
                   .quantity = Quantity::Length,
                   .value = anchor,
                   .text = "The shear has no zero below the anchor: the largest moment stands at "
                           "the anchor or above, and the wall does not span as the methods take "
                           "it."});
    }
}

// ---- ground and layers -------------------------------------------------------------------------

void lookAtSteepGround(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    for (const int side : {Right, Left}) {
        const double friction = problem.SoilFriction(side, 1);
        if (problem.SoilDataKind(side) != SoilData::Strengths || friction <= 0) {
            continue; // the slope of a clay stands by its height, not by an angle
        }
        for (int point = 2; point <= problem.SurfacePointCount(side); ++point) {
            const double rise =
                problem.SurfaceElev(side, point) - problem.SurfaceElev(side, point - 1);
            const double run =
                problem.SurfaceDist(side, point) - problem.SurfaceDist(side, point - 1);
            const double slope = std::atan2(std::fabs(rise), run) / DegreesToRadians;
            if (slope > friction) {
                notes.add({.side = side,
                           .layer = 1,
                           .elev = problem.SurfaceElev(side, point),
                           .quantity = Quantity::Angle,
                           .value = slope,
                           .limit = friction,
                           .text = std::string("Ground on the ") + sideText(side) + " slopes at " +
                                   wall.say(Quantity::Angle, slope) +
                                   ", steeper than its friction angle of " +
                                   wall.say(Quantity::Angle, friction) + "."});
                return;
            }
        }
    }
}

/// The point at which the last stretch of ground that is not level ends; 0 where all is level.
int slopeEnd(const Problem& problem, int side) {
    int last = problem.SurfacePointCount(side);
    while (last > 1 && problem.SurfaceElev(side, last) == problem.SurfaceElev(side, last - 1)) {
        --last;
    }
    return last > 1 ? last : 0;
}

/// The problem with its last slope ending 50 % farther from the wall, and level ground beyond.
Problem withFartherSlope(Problem problem, int side, int last) {
    auto dist = [&](int point) { return problem.SurfaceDist(side, point); };
    const double rise = problem.SurfaceElev(side, last) - problem.SurfaceElev(side, last - 1);
    const double slope = divide(rise, dist(last) - dist(last - 1));
    const double farther = (FartherSlope - 1) * dist(last);
    problem.SurfaceDist(side, last) += farther;
    problem.SurfaceElev(side, last) += slope * farther;
    problem.SurfacePointCount(side) = last;
    return problem;
}

void lookAtSlopeEnd(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    for (const int side : {Right, Left}) {
        const int last = slopeEnd(problem, side);
        if (last == 0) {
            continue;
        }
        const SecondOpinion second = solveAgain(wall, withFartherSlope(problem, side, last));
        const Difference difference = compare(wall, second);
        if (!difference.speaks()) {
            continue;
        }
        notes.add(
            {.side = side,
             .elev = problem.SurfaceElev(side, last),
             .quantity = Quantity::Length,
             .value = FartherSlope * problem.SurfaceDist(side, last),
             .limit = problem.SurfaceDist(side, last),
             .text = std::string("The ground on the ") + sideText(side) +
                     " is level beyond its last slope. With the slope ending 50 percent farther, "
                     "at " +
                     wall.say(Quantity::Length, FartherSlope * problem.SurfaceDist(side, last)) +
                     ", the wall has " + outcomeText(wall, second, difference.level) + ".",
             .second = second});
    }
}

void lookAtThinLayers(const Wall& wall, NoteSink& notes) {
    for (const double bottom : knownBottoms(wall)) {
        for (const int side : {Right, Left}) {
            const int layer = layersDownTo(wall.problem, side, bottom);
            const double thickness = layerTop(wall.problem, side, layer) - bottom;
            if (layer == 1 || thickness >= ThinLayer) {
                continue;
            }
            notes.add({.side = side,
                       .layer = layer,
                       .elev = bottom,
                       .quantity = Quantity::Length,
                       .value = thickness,
                       .limit = ThinLayer,
                       .text = "The wall ends " + wall.say(Quantity::Length, thickness) +
                               " deep in layer " + std::to_string(layer) + " on the " +
                               sideText(side) +
                               ": a boundary a little lower than given changes its depth."});
            return;
        }
    }
}

constexpr const char* SheetPiles = "ASCE, Design of Sheet Pile Walls, 1996";

constexpr NoteRule Rules[] = {
    {"anchor-force", Severity::Unsafe, Needs::Results, lookAtAnchorForce, SheetPiles},
    {"load-above-top", Severity::Caution, Needs::Input, lookAbove, SheetPiles},
    {"load-below-bottom", Severity::Caution, Needs::Input, lookBelow, SheetPiles},
    {"load-beyond-ground", Severity::Caution, Needs::Input, lookBeyondGround, SheetPiles},
    {"anchor-place", Severity::Caution, Needs::Input, lookAtAnchorPlace,
     "Tschebotarioff, Soil Mechanics, Foundations and Earth Structures, 1951"},
    {"steep-ground", Severity::Caution, Needs::Input, lookAtSteepGround,
     "Taylor, Fundamentals of Soil Mechanics, 1948"},
    {"slope-end", Severity::Caution, Needs::Run, lookAtSlopeEnd, SheetPiles},
    {"thin-layer", Severity::Caution, Needs::Input, lookAtThinLayers, SheetPiles},
};

} // namespace

std::span<const NoteRule> loadRules() {
    return Rules;
}

} // namespace korvane
