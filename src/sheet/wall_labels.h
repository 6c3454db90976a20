// What the labels beside the figure of a wall say and point to.
#pragma once

#include "sheet/figure.h"
#include "sheet/wall_view.h"

#include <string>
#include <vector>

namespace korvane::sheet {

/// All labels of a side, in no order: wall, anchor, ground, water, seepage, layers, and the loads
/// on the wall.
std::vector<ColumnLabel> sideLabels(const SheetRequest& request, const WallView& view, int side);

/// Where the force of a load on the wall is drawn: its tail, from the wall's axis, in pixels.
inline constexpr double WallArrow = 34;

/// Pixels that a distributed pressure on the wall takes at its largest.
inline constexpr double WallDiagram = 34;

/// Pixels from the wall to the path of seepage.
inline constexpr double SeepageOffset = 11;

/// Share of the reach at which the anchor's block stands.
inline constexpr double AnchorBlock = 0.72;

/// True where water moves around the wall's foot.
bool hasSeepage(const Problem& problem);

/// Net pressures given as a table: elevations (FT) and PSF. Empty where there are none.
std::vector<SvgPoint> wallPressureTable(const Problem& problem);
std::vector<SvgPoint> wallLoadTable(const Problem& problem);

} // namespace korvane::sheet
