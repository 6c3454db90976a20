#include "sheet/figure_style.h"

namespace korvane::sheet {

namespace {

// Lines keep apart by width and dashes where colours are missing.
constexpr std::string_view Style = R"(
.tables { display: flex; flex-wrap: wrap; gap: 0 2.2rem; align-items: flex-start; }
.tables > p { flex-basis: 100%; }
.tables caption { white-space: nowrap; }
@media print { .tables .t { break-inside: avoid; } }
svg.wallfigure, svg.bending { display: block; margin: 0 auto; }
svg.wallfigure text, svg.bending text { font-size: 11px; }
svg text.name { font-weight: bold; }
svg .hatch { stroke: var(--soilline); fill: var(--soilline); stroke-width: .6; opacity: .75; }
svg .hatch circle { stroke: none; }
svg .hatch circle[fill="none"] { stroke: var(--soilline); fill: none; }
svg .hatch path[fill="none"] { fill: none; }
svg .soil { stroke: none; }
svg .wet { fill: var(--water); opacity: .13; }
svg .ground { fill: none; stroke: var(--ink); stroke-width: 2; }
svg .layer { fill: none; stroke: var(--soilline); stroke-width: 1.2; }
svg .water { fill: none; stroke: var(--water); stroke-width: 1.3; }
svg .water.shape { fill: var(--water); fill-opacity: .2; }
svg .seepage { fill: none; stroke: var(--water); stroke-width: 1.4; stroke-dasharray: 5 3; }
svg .wall { fill: var(--wall); stroke: var(--wall); stroke-width: .8; }
svg .wall.open { fill: var(--paper); stroke-dasharray: 3 2; }
svg .mark { stroke: var(--ink); stroke-width: 1.2; }
svg .anchor { stroke: var(--ink); stroke-width: 1.8; }
svg .anchor.head { fill: var(--ink); stroke: none; }
svg .load { stroke: var(--load); stroke-width: .8; fill: none; }
svg .load.shape { fill: var(--load); fill-opacity: .16; }
svg .load.strong { stroke-width: 1.8; }
svg .load.arrow { fill: var(--load); }
svg .water.head { fill: var(--water); stroke: none; }
svg .water.arrow, svg .seepage.arrow { fill: var(--water); }
svg .dropped { stroke: var(--load); stroke-width: .6; stroke-dasharray: 1 3; }
svg .leader { fill: none; stroke: var(--soft); stroke-width: .6; }
svg .axis { stroke: var(--ink); stroke-width: 1; }
svg .grid { stroke: var(--line); stroke-width: .6; }
svg .level { stroke: var(--soft); stroke-width: .7; stroke-dasharray: 4 3; }
svg .panel { fill: none; stroke: var(--line); stroke-width: 1; }
svg .curve { fill: var(--accent); fill-opacity: .13; stroke: var(--accent); stroke-width: 1.5; }
svg circle.extreme { fill: var(--paper); stroke: var(--bad); stroke-width: 1.5; }
svg text.over { paint-order: stroke; stroke: var(--paper); stroke-width: 4px;
 stroke-linejoin: round; }
svg text.axisname { fill: var(--soft); }
)";

} // namespace

std::string_view figureStyle() {
    return Style;
}

} // namespace korvane::sheet
