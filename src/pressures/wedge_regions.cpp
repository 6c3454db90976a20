#include "pressures/wedge_regions.h"

#include "runtime/arithmetic.h"
#include "state/tolerances.h"

namespace korvane {

namespace {

/// How far (FT) the ground runs on level behind the last surface point.
constexpr double FarEndDistance = 200000.0;
constexpr int MaxPolygonPoints = 50;

/// A straight line from the wall outward.
struct Line {
    double atWall; ///< FT elevation at x = 0
    double slope;  ///< FT/FT

    double at(double x) const { return atWall + slope * x; }
    double distanceAt(double elevation) const { return divide(elevation - atWall, slope); }
};

Line layerBottom(const Problem& problem, int side, int layer) {
    return {problem.SoilBottomElev(side, layer), problem.SoilBottomSlope(side, layer)};
}

/// One polygon of a family, for reading and for building it point by point.
class Polygon {
  public:
    Polygon(RegionFamily& family, int side, int layer)
        : family_(family), side_(side), layer_(layer) {}

    int count() const { return family_.Count(side_, layer_); }
    double x(int point) const { return family_.X(side_, layer_, point); }
    double y(int point) const { return family_.Y(side_, layer_, point); }
    double reach() const { return x(count() + 1); }

    void keepFirst(int points) { family_.Count(side_, layer_) = points; }
    /// RuntimeError 9 beyond 50 points.
    void add(double x, double y) {
        const int point = ++family_.Count(side_, layer_);
        if (point > MaxPolygonPoints) {
            throw RuntimeError(9);
        }
        family_.X(side_, layer_, point) = finite(x);
        family_.Y(side_, layer_, point) = finite(y);
    }
    /// Stores the largest X of the points from 2 on behind the last point.
    void storeReach() {
        double largest = x(2);
        for (int point = 3; point <= count(); ++point) {
            largest = MaxOf(largest, x(point));
        }
        family_.X(side_, layer_, count() + 1) = largest;
    }
    void setKind(int kind) { family_.Kind(side_, layer_) = kind; }

  private:
    RegionFamily& family_;
    int side_;
    int layer_;
};

/// Where a poly-line first meets a line that starts below it.
struct Meeting {
    bool found = false;
    int before = 0; ///< the last point of the poly-line before the meeting
    int next = 0;   ///< the first point behind it
    double x = 0;   ///< FT
    double y = 0;   ///< FT
};

/// Walks the points 2 to `count` of a poly-line, given by x(p) and y(p), down to `line`.
template <class X, class Y>
Meeting meetLine(int count, X x, Y y, const Line& line) {
    for (int p = 2; p <= count; ++p) {
        const double height = y(p) - line.at(x(p));
        if (height == 0) {
            return {true, p - 1, p + 1, x(p), y(p)};
        }
        if (height < 0) {
            const double heightBefore = y(p - 1) - line.at(x(p - 1));
            const double share = divide(heightBefore, heightBefore - height);
            const double xCut = x(p - 1) + share * (x(p) - x(p - 1));
            return {true, p - 1, p, xCut, line.at(xCut)};
        }
    }
    return {};
}

/// The ground from the wall through the surface points to the far end; behind it one more point at
/// elevation 0, which only walks over the ground take into account.
void buildGroundLine(const Problem& problem, WedgeRegions& regions, int side) {
    auto& count = regions.WedgeSurfaceCount(side);
    const auto add = [&](double x, double y) {
        ++count;
        regions.WedgeSurfaceX(side, count) = finite(x);
        regions.WedgeSurfaceY(side, count) = finite(y);
    };
    const int last = problem.SurfacePointCount(side);
    const double farEnd = problem.SurfaceDist(side, last) + FarEndDistance;

    count = 0;
    add(0, problem.SurfaceElev(side, 1));
    for (int point = 1; point <= last; ++point) {
        if (last > 1 && problem.SurfaceDist(side, point) > 0) {
            add(problem.SurfaceDist(side, point), problem.SurfaceElev(side, point));
        }
    }
    add(farEnd, problem.SurfaceElev(side, last));
    add(farEnd + FarEndDistance, 0);
}

/// Upper edge of a layer from the wall outward: the ground for the first layer; else the bottom of
/// the layer above up to where it reaches the ground, and the ground from there on. So the second
/// point of a lower layer is the place at which its upper boundary reaches the ground, or the far
/// end.
void buildUpperEdge(const Problem& problem, WedgeRegions& regions, int side, int layer) {
    Polygon polygon(regions.Layer, side, layer);
    const auto groundX = [&](int p) { return regions.WedgeSurfaceX(side, p); };
    const auto groundY = [&](int p) { return regions.WedgeSurfaceY(side, p); };
    const int groundCount = regions.WedgeSurfaceCount(side) - 1;

    polygon.keepFirst(0);
    int next = 1;
    if (layer > 1) {
        const Line boundary = layerBottom(problem, side, layer - 1);
        const Meeting meeting = meetLine(groundCount, groundX, groundY, boundary);
        polygon.add(0, boundary.atWall);
        if (meeting.found) {
            polygon.add(meeting.x, meeting.y);
            next = meeting.next;
        } else {
            polygon.add(groundX(groundCount), boundary.at(groundX(groundCount)));
            next = groundCount + 1;
        }
    }
    for (int p = next; p <= groundCount; ++p) {
        polygon.add(groundX(p), groundY(p));
    }
}

/// Ends the upper edge where it meets the layer's own bottom, or straight above the bottom's far
/// end, and leads the polygon back to the wall along the bottom.
void closeAlongBottom(Polygon& polygon, const Line& bottom) {
    const auto x = [&](int p) { return polygon.x(p); };
    const auto y = [&](int p) { return polygon.y(p); };
    const Meeting meeting = meetLine(polygon.count(), x, y, bottom);
    if (meeting.found) {
        polygon.keepFirst(meeting.before);
        polygon.add(meeting.x, meeting.y);
    } else {
        const double farEnd = polygon.x(polygon.count());
        polygon.add(farEnd, bottom.at(farEnd));
    }
    polygon.add(0, bottom.atWall);
}

void copyPolygon(const Polygon& from, Polygon& to) {
    for (int p = 1; p <= from.count(); ++p) {
        to.add(from.x(p), from.y(p));
    }
    to.storeReach();
}

/// Fills `to` with the part of `from` below the horizontal line at `elevation` (FT); without a
/// `bottom` (the last layer) the polygon is its upper edge alone.
///
/// Over its bottom line a polygon is bounded by one upper edge, so that the part below the line has
/// the lower of edge and line as its upper edge. A bottom that rises outward cuts it off where it
/// passes the line. A bottom that stands above the line at the wall and falls outward leaves a part
/// that begins off the wall: its upper edge then follows the bottom from the wall to there.
void clipBelow(const Polygon& from, Polygon& to, double elevation, const Line* bottom) {
    const int last = bottom != nullptr ? from.count() - 1 : from.count();
    const auto above = [&](int p) { return from.y(p) > elevation; };

    to.keepFirst(0);
    to.setKind(NoRegion);
    bool cut = false;
    for (int p = 1; p <= last; ++p) {
        cut = cut || above(p);
    }
    if (!cut) {
        copyPolygon(from, to);
        to.setKind(WholeRegion);
        return;
    }
    if (bottom != nullptr && MinOf(bottom->atWall, bottom->at(from.reach())) >= elevation) {
        return;
    }

    to.setKind(CutRegion);
    if (bottom != nullptr && bottom->atWall > elevation) {
        to.add(0, bottom->atWall);
        to.add(bottom->distanceAt(elevation), elevation);
    } else {
        to.add(0, MinOf(from.y(1), elevation));
    }
    for (int p = 2; p <= last; ++p) {
        if (above(p) != above(p - 1)) {
            const double share = divide(elevation - from.y(p - 1), from.y(p) - from.y(p - 1));
            to.add(from.x(p - 1) + share * (from.x(p) - from.x(p - 1)), elevation);
        }
        if (!above(p)) {
            to.add(from.x(p), from.y(p));
        }
    }
    if (above(last)) {
        to.add(bottom != nullptr ? bottom->distanceAt(elevation) : from.x(last), elevation);
    }
    if (bottom != nullptr) {
        to.add(0, bottom->atWall);
    }
    to.storeReach();
}

/// clipBelow for one layer of two families.
void clipLayer(const Problem& problem, RegionFamily& from, RegionFamily& to, int side, int layer,
               double elevation) {
    const Polygon source(from, side, layer);
    Polygon target(to, side, layer);
    const Line bottom = layerBottom(problem, side, layer);
    clipBelow(source, target, elevation, layer < problem.SoilLayerCount(side) ? &bottom : nullptr);
}

void clearKinds(RegionFamily& family, int side) {
    for (int layer = 1; layer <= 11; ++layer) {
        family.Kind(side, layer) = NoRegion;
    }
}

} // namespace

// Describes the soil of one side as polygons: the layers, the parts of them below the water and the
// parts of those in which seepage acts. Reads the surface, the layers and the water of the problem;
// writes the side's Layer, Wet and Seep families and its ground line. Distances and elevations in
// FT. The deep regions of an earlier problem are dropped.
void BuildWedgeRegions(State& state, int side) {
    const Problem& problem = *state.problem;
    WedgeRegions& regions = state.regions;
    const int layerCount = problem.SoilLayerCount(side);

    for (auto* family : {&regions.Wet, &regions.Seep, &regions.Deep}) {
        clearKinds(*family, side);
    }
    buildGroundLine(problem, regions, side);
    for (int layer = 1; layer <= layerCount; ++layer) {
        Polygon polygon(regions.Layer, side, layer);
        buildUpperEdge(problem, regions, side, layer);
        if (layer < layerCount) {
            closeAlongBottom(polygon, layerBottom(problem, side, layer));
        }
        polygon.storeReach();

        if (problem.WaterDataKind != WaterData::Elevations) {
            continue;
        }
        clipLayer(problem, regions.Layer, regions.Wet, side, layer, problem.WaterElev(side));
        if (state.preparation.SeepageKind == Seepage::None ||
            regions.Wet.Kind(side, layer) == NoRegion) {
            continue;
        }
        // On the left water rises through all of the wet soil.
        const double seepageTop = side == Right ? problem.SeepageElev : problem.WaterElev(side);
        clipLayer(problem, regions.Wet, regions.Seep, side, layer, seepageTop);
    }
}

// Cuts the seep regions of one side at the elevation at which seepage has used up the head: the
// deep regions lie below it. To be run again whenever SeepageEndElev(level) has moved. A gradient
// of StartGradient is the start of an iteration and has no deep regions: a deliberate limit.
void BuildSeepageEndRegions(State& state, int side, int level) {
    const Problem& problem = *state.problem;
    WedgeRegions& regions = state.regions;

    clearKinds(regions.Deep, side);
    if (problem.WaterDataKind != WaterData::Elevations ||
        !(state.preparation.SeepageGradient(level) > StartGradient)) {
        return;
    }
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        if (regions.Seep.Kind(side, layer) != NoRegion) {
            clipLayer(problem, regions.Seep, regions.Deep, side, layer,
                      state.preparation.SeepageEndElev(level));
        }
    }
}

} // namespace korvane
