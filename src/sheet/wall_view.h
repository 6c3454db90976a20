// The part of a wall's ground that a figure shows, to scale, and the shapes of its soil.
#pragma once

#include "sheet/sheet.h"
#include "sheet/svg.h"

#include <string>
#include <vector>

namespace korvane::sheet {

/// A bottom of the wall that has been found or is given.
struct WallBottom {
    std::string name; ///< "free earth"; empty where there is one alone
    double elev = 0;  ///< FT
};

/// The bottoms of the solved levels, or that of an analysis; empty where none is known.
std::vector<WallBottom> wallBottoms(const SheetRequest& request);

/// The drawing: a rectangle from (0, 0), with the same scale across and down.
struct WallView {
    double scale = 1;      ///< pixels per FT
    double high = 0;       ///< FT, elevation of the upper edge
    double low = 0;        ///< FT, elevation of the lower edge
    double wallBottom = 0; ///< FT, the deepest one; where none is known it is one that shows it all
    Array<double, 2> reach; ///< FT from the wall to the edge, by side

    double width() const { return scale * (reach(Right) + reach(Left)); }
    double height() const { return scale * (high - low); }
    double wallX() const { return scale * reach(Left); }
    double x(int side, double distance) const {
        return wallX() + (side == Right ? distance : -distance) * scale;
    }
    double y(double elev) const { return (high - elev) * scale; }
    SvgPoint at(int side, double distance, double elev) const {
        return {x(side, distance), y(elev)};
    }
    double edge(int side) const { return x(side, reach(side)); }
};

/// A view of the wall with all ground points and loads that stand no farther than about 1.3 times
/// its length away.
WallView wallView(const SheetRequest& request);

/// FT, elevation of the ground at a distance: level up to its first point and from its last one on.
double groundElev(const Problem& problem, int side, double distance);

/// FT, the highest ground of a side in view.
double highestGround(const Problem& problem, int side, double reach);

/// A soil layer within a view: its outline down to the view's lower edge or its own bottom.
struct SoilShape {
    int layer = 0;
    std::vector<SvgPoint> upper; ///< (distance FT, elevation FT), outward from the wall
    std::vector<SvgPoint> lower; ///< likewise
    /// Where its label points to: within the layer, at the edge of the view where it reaches that.
    SvgPoint mark;
};

/// The layers of a side that show in the view, from the top down.
std::vector<SoilShape> soilShapes(const Problem& problem, int side, const WallView& view);

} // namespace korvane::sheet
