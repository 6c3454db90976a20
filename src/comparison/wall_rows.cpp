// Rows that change what holds the wall, the method of its pressures, or its water.
#include "comparison/comparison_rows.h"
#include "wall/preparation.h"

#include <algorithm>

namespace korvane {

namespace {

const char* const AsGiven = "that is the wall as given";

// ---- support
// -------------------------------------------------------------------------------------

std::string noAnchor(const Variant& told, double) {
    return told.problem.WallType == WallKind::Anchored ? "" : "the wall has no anchor";
}
void takeAnchorAway(Variant& variant, double) {
    variant.problem.WallType = WallKind::Cantilever;
}
void takeLevel(Variant& variant, double level) {
    variant.level = static_cast<int>(level);
}

// ---- methods
// -------------------------------------------------------------------------------------

bool isWedge(const Variant& told, int side) {
    return sideMethod(told.problem, side) == PressureMethod::Wedge;
}
bool hasStrengths(const Variant& told, int side) {
    return told.problem.SoilDataKind(side) == SoilData::Strengths;
}

std::string noCoefficients(const Variant& told, double) {
    bool anyWedge = false;
    for (const int side : {Right, Left}) {
        if (isWedge(told, side) && coefficientsCanFollow(told.problem, side)) {
            return {};
        }
        anyWedge = anyWedge || isWedge(told, side);
    }
    return anyWedge ? "ground, adhesion or sloping layers need a wedge" : AsGiven;
}

/// `method` is the one that the told run takes for wedges where the row would change nothing.
std::string noWedges(const Variant& told, WedgeMethod method) {
    if (hasCoefficientsAlone(told.problem)) {
        return "given coefficients need no method";
    }
    for (const int side : {Right, Left}) {
        if (hasStrengths(told, side) && (!isWedge(told, side) || told.options.wedge != method)) {
            return {};
        }
    }
    return AsGiven;
}
std::string noSweep(const Variant& told, double) {
    return noWedges(told, WedgeMethod::Sweep);
}
std::string noFixedSurface(const Variant& told, double) {
    return noWedges(told, WedgeMethod::FixedSurface);
}

/// FT that the first stretch of ground of a wedge side rises.
double firstRise(const Variant& told, int side) {
    const Problem& problem = told.problem;
    return isWedge(told, side) && problem.SurfacePointCount(side) > 1
               ? problem.SurfaceElev(side, 2) - problem.SurfaceElev(side, 1)
               : 0;
}
std::string noFallingGround(const Variant& told, double) {
    return firstRise(told, Right) < 0 || firstRise(told, Left) < 0
               ? ""
               : "no ground of a wedge side falls";
}
std::string noSlopingGround(const Variant& told, double) {
    return firstRise(told, Right) != 0 || firstRise(told, Left) != 0
               ? ""
               : "no ground of a wedge side slopes";
}
std::string noPlanes(const Variant& told, double) {
    const bool sweeps =
        told.options.wedge == WedgeMethod::Sweep && (isWedge(told, Right) || isWedge(told, Left));
    return sweeps ? "" : "no side is by the sweep";
}

template <bool Amendments::*Amendment>
void amend(Variant& variant, double) {
    variant.options.amendments.*Amendment = true;
}

// ---- water -------------------------------------------------------------------------------------

bool hasElevations(const Variant& told) {
    return told.problem.WaterDataKind == WaterData::Elevations;
}
bool seeps(const Variant& told) {
    return hasElevations(told) && told.problem.SeepageKind != Seepage::None;
}
std::string noLayersThatSeep(const Variant& told, double) {
    const auto layered = [&told](int side) {
        return isWedge(told, side) && told.problem.SoilLayerCount(side) > 1;
    };
    return !seeps(told)                      ? "no seepage is given"
           : layered(Right) || layered(Left) ? ""
                                             : "no wedge side has several layers";
}

/// FT, the lower of right water and right ground.
double entryOfSeepage(const Problem& problem) {
    return std::min(problem.WaterElev(Right), problem.SurfaceElev(Right, 1));
}

std::string noSeepageGiven(const Variant& told, double) {
    return !hasElevations(told) ? "no water is given by elevations" : !seeps(told) ? AsGiven : "";
}
void stopSeepage(Variant& variant, double) {
    variant.problem.SeepageKind = Seepage::None;
    variant.problem.SeepageGradient.fill(0);
}

std::string noHead(const Variant& told, double) {
    const Problem& problem = told.problem;
    if (!hasElevations(told)) {
        return "no water is given by elevations";
    }
    if (problem.WaterElev(Right) <= problem.WaterElev(Left)) {
        return "no head drives water to the left";
    }
    return problem.SeepageKind == Seepage::Automatic &&
                   problem.SeepageElev == entryOfSeepage(problem)
               ? AsGiven
               : "";
}
void startSeepage(Variant& variant, double) {
    variant.problem.SeepageKind = Seepage::Automatic;
    variant.problem.SeepageElev = entryOfSeepage(variant.problem);
}

constexpr ComparisonRow Rows[] = {
    {"cantilever", "without its anchor", 0, noAnchor, takeAnchorAway},
    {"free-earth", "by free earth alone", 1, noAnchor, takeLevel},
    {"fixed-earth", "by fixed earth alone", 2, noAnchor, takeLevel},
    {"method-coefficients", "by coefficients", 0, noCoefficients,
     amend<&Amendments::methodCoefficients>},
    {"method-sweep", "by the sweep", 0, noSweep, amend<&Amendments::methodSweep>},
    {"method-fixed", "by the fixed surface", 0, noFixedSurface, amend<&Amendments::methodFixed>},
    {"surface-limit", "surface slope limited downward", 0, noFallingGround,
     amend<&Amendments::surfaceLimit>},
    {"surface-slope", "true slope of the surface", 0, noSlopingGround,
     amend<&Amendments::surfaceSlope>},
    {"planes-past-horizontal", "no planes past the horizontal", 0, noPlanes,
     amend<&Amendments::planesPastHorizontal>},
    {"buoyant-layers", "all layers under buoyancy", 0, noLayersThatSeep,
     amend<&Amendments::buoyantLayers>},
    {"hydrostatic", "water without seepage", 0, noSeepageGiven, stopSeepage},
    {"seepage", "seepage from the right side", 0, noHead, startSeepage},
};

} // namespace

std::span<const ComparisonRow> wallRows() {
    return Rows;
}

} // namespace korvane
